// SPDX-License-Identifier: Apache-2.0
/// Cell texts before they are understood: what counts as empty, which signs mean the same.
#pragma once

#include <string>
#include <string_view>

namespace zov::batch {

/// Without white space at both ends, no-break and thin spaces included.
[[nodiscard]] std::string_view TrimCell(std::string_view text);

/// Nothing, or a word that people write for nothing: "-", "--", "N/A", "NA", "n.a.", "NULL",
/// "none". Expects trimmed text.
[[nodiscard]] bool IsEmptyWord(std::string_view text);

/// An error that a spreadsheet shows in place of a result: "#N/A", "#REF!", "#DIV/0!", ...
[[nodiscard]] bool IsErrorValue(std::string_view text);

/// The signs of numbers and units in ASCII: micro as "u", ohm as "Ohm", the minus sign as "-", the
/// plus-minus sign as "+-", any space as " ". Other characters stay.
[[nodiscard]] std::string PlainSigns(std::string_view text);

/// White space at both ends gone, runs of it inside (line breaks in a title) made one blank.
[[nodiscard]] std::string FoldSpaces(std::string_view text);

} // namespace zov::batch
