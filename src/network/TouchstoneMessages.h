// SPDX-License-Identifier: Apache-2.0
/// The texts of the Touchstone writer, the reader and the conversions, as users and scripts know
/// them.
#pragma once

#include <string_view>

namespace zov::network::messages {

// Writer
constexpr std::string_view kInvalidInput = "Invalid input.";
constexpr std::string_view kInvalidSource = "Invalid data source info.";
constexpr std::string_view kHybridPorts = "G matrix or H matrix is valid for 2 port matrix only";
constexpr std::string_view kVersion1MixedMode = "Version 1 don't support mixed-mode.";
constexpr std::string_view kMixedModeType = "Incorrect mixed-mode type.";
constexpr std::string_view kMixedModePort = "Incorrect mixed-mode port number.";
constexpr std::string_view kHybridMixedMode = "G matrix or H matrix don't support mixed-mode.";
constexpr std::string_view kTransform = "Failed to transform matrix";

// Writer and reader
constexpr std::string_view kOpen = "Failed to open the file.";
constexpr std::string_view kMixedModeOrder = "Incorrect mixed-mode order.";

// Reader
constexpr std::string_view kHeader =
    "The Touchstone file's header contains an invalid character or line.";
constexpr std::string_view kVersionFirst = "[Version] should be the first keyword.";
constexpr std::string_view kOptionAfterVersion = "Option line should follow keyword [Version].";
constexpr std::string_view kOptionWord = "Unknown word in option line.";
constexpr std::string_view kKeyword = "Unknown keyword.";
constexpr std::string_view kMatrixFormat = "Unknown matrix format.";
constexpr std::string_view kReferencesMissing = "Incomplete reference impedance list.";
constexpr std::string_view kReferencesWrong = "Incorrect reference impedance list.";
constexpr std::string_view kMixedModeReferences =
    "The reference impedances are different for the mixed-mode S parameter.";
constexpr std::string_view kDifferentialType = "The diff-channel touchstone should be S|Z|Y type";
constexpr std::string_view kMatrixData = "Incomplete matrix data.";
constexpr std::string_view kPortNumber = "Fail to get port number.";
constexpr std::string_view kFrequency = "The Touchstone file contains an invalid frequency value.";

} // namespace zov::network::messages
