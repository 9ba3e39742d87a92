// SPDX-License-Identifier: Apache-2.0
/// Texts of fixed wording about curve files: what a user reads, what is journaled.
#pragma once

#include <string>
#include <string_view>

namespace zov::curve {

// What stands before and behind a path.
constexpr std::string_view kCannotBeOpened = " cannot be opened.";
constexpr std::string_view kCannotLoad = "Cannot load the file ";
constexpr std::string_view kAlreadyLoaded = " because it is already loaded.";
constexpr std::string_view kFile = "File ";
constexpr std::string_view kNotValid = " is not a valid curve file.";
constexpr std::string_view kNotPlenvo = " is not a valid Plenvo format curve file.";
constexpr std::string_view kNoValidCurve = "No valid curve found in the file :\n";

constexpr std::string_view kNoPropagation =
    "Cannot load the propagation curve because the impedance curves have already been loaded.";
constexpr std::string_view kNoImpedance =
    "Cannot load the impedance curve because the propagation curves have already been loaded.";

/// Prefix of every journaled command.
constexpr std::string_view kJournalPrefix = "tavrely::";

/// Offered in file dialogs.
constexpr std::string_view kCurveFileFilter = "Curve File(*.cur)";
constexpr std::string_view kCurveExtension = ".cur";

} // namespace zov::curve
