// SPDX-License-Identifier: Apache-2.0
#include "assign/KeyIndex.h"

#include <algorithm>

namespace zov {

CKeyIndex::CKeyIndex(const CZovLibrary& library)
    : m_stamp(library.SearchStamp())
{
    for (const CZovRcdProps* record : library.Records()) {
        for (std::size_t i = 0; i < kKeys.size(); ++i) {
            m_texts[i].Add(record->GetString(kKeys[i]));
        }
    }
    for (CFoldedTexts& texts : m_texts) {
        texts.Finish();
    }
}

bool CKeyIndex::Holds(EPropId id)
{
    return std::ranges::find(kKeys, id) != kKeys.end();
}

const CFoldedTexts& CKeyIndex::Of(EPropId id) const
{
    return m_texts[static_cast<std::size_t>(std::ranges::find(kKeys, id) - kKeys.begin())];
}

std::size_t CKeyIndex::BytesHeld() const
{
    std::size_t bytes = sizeof *this;
    for (const CFoldedTexts& texts : m_texts) {
        bytes += texts.BytesHeld();
    }
    return bytes;
}

} // namespace zov
