// SPDX-License-Identifier: Apache-2.0
/// What components are looked up by, of one library, ready for scanning.
#pragma once

#include "assign/FoldedTexts.h"
#include "core/ZovLibrary.h"

#include <array>

namespace zov {

class CKeyIndex
{
public:
    /// The properties it holds, the order in which a candidate is matched.
    static constexpr std::array<EPropId, 3> kKeys = {EPropId::Lookup, EPropId::ModelName,
                                                     EPropId::MfgPartNumber};

    explicit CKeyIndex(const CZovLibrary& library);

    [[nodiscard]] static bool Holds(EPropId id);
    /// Of a property that it holds.
    [[nodiscard]] const CFoldedTexts& Of(EPropId id) const;
    /// False when searched texts changed since it was made.
    [[nodiscard]] bool IsCurrent(const CZovLibrary& library) const
    {
        return m_stamp == library.SearchStamp();
    }
    [[nodiscard]] std::size_t BytesHeld() const;

private:
    std::array<CFoldedTexts, kKeys.size()> m_texts;
    std::uint64_t m_stamp;
};

} // namespace zov
