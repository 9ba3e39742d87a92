// SPDX-License-Identifier: Apache-2.0
/// One check in progress: what every family's function is handed.
#pragma once

#include "base/Arena.h"
#include "ibischk/CheckState.h"
#include "ibischk/FileData.h"
#include "ibischk/FileSource.h"
#include "ibischk/Report.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace zov::ibischk {

/// Told of the share of the file that is checked, 0 to 1; false stops the check.
using FCheckProgress = std::function<bool(double)>;

struct SCheck
{
    SCheck(CReport& reportTo, CFileSource& filesFrom)
        : report(reportTo)
        , files(filesFrom)
    {
    }

    CReport& report;
    CFileSource& files;
    SCheckState state;
    SFileData data;
    CArena arena;
    std::string path;            ///< of the checked file, extension appended
    int depth = 0;               ///< of checks of files that files name
    SCheck* outermost = nullptr; ///< of a check that another began; null for the first
    /// Checks that this one and those that it began have made, by path; null while one goes on.
    /// Kept by the outermost check, since what they gathered is compared with it.
    std::map<std::string, std::unique_ptr<SCheck>> referenced;
    /// Of the outermost check, for all that it begins.
    const FCheckProgress* progress = nullptr; ///< null: nobody asks
    std::size_t steps = 0;                    ///< lines since it was asked
    double share = 0.0;
    bool stopped = false; ///< what is reported from now on is of no use

    [[nodiscard]] SCheck& First() { return outermost != nullptr ? *outermost : *this; }

    /// Folder of the checked file with its "/" at the end; empty for none.
    [[nodiscard]] std::string_view Folder() const;
    /// The checked file's name without folder.
    [[nodiscard]] std::string_view BaseName() const;
    /// Path of a file that the checked file names.
    [[nodiscard]] std::string PathOf(std::string_view named) const;
};

} // namespace zov::ibischk
