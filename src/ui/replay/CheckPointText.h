// SPDX-License-Identifier: Apache-2.0
/// Check point files (`.ckp`) as text: how two states compare, and how they are told apart.
#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace zov::ui::replay {

/// Between the blocks of a state.
constexpr std::string_view kBlockLine = "--------\n";

/// The lines in byte order.
[[nodiscard]] std::string WithoutOrder(std::string_view text);
/// Line ends are not compared.
[[nodiscard]] bool SameState(std::string_view golden, std::string_view result, bool anyOrder);

/// What stands in a record for the check points that are only saved.
constexpr const char* kWatchPointMark = "WatchPoint";

/// The state with %RECPATH% for every `value`, so that golden files hold no folder of one machine;
/// an empty value changes nothing.
[[nodiscard]] std::string WithRecPath(const std::string& state, const std::string& value);

struct SVerified
{
    bool passed = false;
    /// "Verifying: Passed for %s." or "Verifying: Failed for %s, compare the following two files
    /// for details:\n\t[Golden]%s\n\t[TestResult]%s"
    std::string message;
};

/// Saves the state as result and compares it with the golden file. In any order, what was compared
/// is kept beside the result: "CheckPoint1.ckp.noorder" and "CheckPoint1.golden.ckp.noorder".
/// @return an error when the golden file can't be read or the result not written
CResult<SVerified> VerifyState(const std::filesystem::path& golden,
                               const std::filesystem::path& result, std::string_view state,
                               bool anyOrder);

} // namespace zov::ui::replay
