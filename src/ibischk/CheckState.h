// SPDX-License-Identifier: Apache-2.0
/// Everything that changes while lines of one file are read. One value, so that starting anew is
/// assigning a fresh one: nothing of an earlier check can stay behind.
#pragma once

#include "ibischk/Keywords.h"
#include "ibischk/Types.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zov::ibischk {

/// Open blocks nest two deep in every version; one more leaves room for a faulty file.
constexpr std::size_t kMaxBlockDepth = 4;

struct SCheckState
{
    EFileType fileType = EFileType::Ibs;
    EVersion version = EVersion::None;

    char comment = '|';
    std::size_t line = 1;
    EKeyword current = EKeyword::NotKey;
    SPlace keywordPlace;  ///< of the current keyword
    bool endSeen = false; ///< [End] was dispatched
    bool tabReported = false;
    bool versionSeen = false; ///< [IBIS Ver] was dispatched
    bool submodelOpen = false;
    bool unterminated = false; ///< set by a family whose statement awaits its closing "/"
    bool inQuotes = false;     ///< of the parameter tree reader
    bool wholeFile = false;    ///< a parameter tree is read: no line limit
    bool bodySeen = false;     ///< a section was opened: the header is over

    EScope scope = EScope::None;
    SPlace sectionPlace;           ///< of the keyword that opened the section
    EScope refused = EScope::None; ///< a section that may not be here: its keywords are passed over
    std::array<EKeyword, kMaxBlockDepth> blocks{};
    std::array<SPlace, kMaxBlockDepth> blockPlaces{};
    std::size_t blockDepth = 0;

    std::array<std::uint32_t, kKeywordCount> seenInSection{};
    std::array<std::uint32_t, kKeywordCount> seenInFile{};

    /// Did the keyword occur in the open section?
    [[nodiscard]] bool Has(EKeyword code) const
    {
        return seenInSection[static_cast<std::size_t>(code)] != 0;
    }
    [[nodiscard]] std::uint32_t CountInFile(EKeyword code) const
    {
        return seenInFile[static_cast<std::size_t>(code)];
    }
    [[nodiscard]] bool AtLeast(EVersion first) const { return version >= first; }
};

} // namespace zov::ibischk
