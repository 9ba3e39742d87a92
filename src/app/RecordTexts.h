// SPDX-License-Identifier: Apache-2.0
/// The texts of a library's records in one block, upper-cased, so that a word among a million
/// records is found while the user types. Made beside the window on first need; a changed library
/// gets a new one.
#pragma once

#include "assign/FoldedTexts.h"
#include "core/RecordQuery.h"
#include "core/ZovLibrary.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace zov::app {

/// Asked every few thousand records; false ends the work.
using FGoOn = std::function<bool()>;

class CRecordTexts
{
public:
    /// Null when the work was ended.
    static std::shared_ptr<const CRecordTexts> Make(const CZovLibrary& library, const FGoOn& goOn);

    /// Whether the block narrows a search: it has a word that is not negated.
    /// The library was not changed in its names since.
    [[nodiscard]] bool IsOf(const CZovLibrary& library) const
    {
        return m_stamp == library.SearchStamp();
    }
    [[nodiscard]] static bool Helps(const CRecordQuery& query);
    /// A byte per record: not 0 for those that the query matches.
    [[nodiscard]] std::vector<std::uint8_t> Matches(const CZovLibrary& library,
                                                    const CRecordQuery& query) const;

private:
    CFoldedTexts m_texts;
    std::vector<std::uint32_t> m_odd; ///< records whose texts are no valid UTF-8
    std::size_t m_count = 0;
    std::uint64_t m_stamp = 0;
};

/// The blocks of the open libraries, shared by all lists. For any thread.
class CRecordTextCache
{
public:
    /// Makes the block when there is none; null when that was ended.
    std::shared_ptr<const CRecordTexts> Of(const CZovLibrary& library, const FGoOn& goOn);
    /// The library is about to change or to go.
    void Forget(const CZovLibrary& library);

    /// The one of the program.
    static CRecordTextCache& Instance();

private:
    std::timed_mutex m_making;
    std::mutex m_mutex;
    std::unordered_map<const CZovLibrary*, std::shared_ptr<const CRecordTexts>> m_blocks;
};

} // namespace zov::app
