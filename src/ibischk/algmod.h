// SPDX-License-Identifier: Apache-2.0
/// [Algorithmic Model]: the lines that name executables and parameter files.
#pragma once

#include "ibischk/AmiFacts.h"
#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace zov::ibischk {

struct SExecutable
{
    std::string_view kind; ///< Executable, Executable_Rx, Executable_Tx
    std::string_view platform;
    std::string_view file;
    std::string_view parameters;
    SPlace place;
};

/// What became of the check of a code file.
enum class ECodeStatus : std::uint8_t
{
    NotChecked,
    Checked,
    CannotRun ///< checked, and not what this platform can load and use
};

/// The parts of `system_compiler_bits`.
struct SPlatform
{
    std::string_view system;
    int bits = 0; ///< 32, 64, or 0 for anything else
};
[[nodiscard]] SPlatform SplitPlatform(std::string_view word);

/// Files that the executables of all models name, each looked at once.
struct SAlgorithmicFiles
{
    std::unordered_set<std::string_view> told; ///< names that something was reported of
    std::unordered_map<std::string_view, SAmiFacts> parameters;
    std::unordered_map<std::string, ECodeStatus> code; ///< by platform, file and parameter file
    /// Models with a parameter file that was read: does one of them give Repeater_Type?
    std::unordered_map<std::string_view, bool> repeaters;
};

/// Looks at the files of the open model's executables and prints their status.
void CheckExecutableFiles(SCheck& check);
/// Receiving pins of repeaters against the parameter files of their models.
void CheckRepeaterTypes(SCheck& check);

extern const SFamily kAlgmodFamily;

} // namespace zov::ibischk
