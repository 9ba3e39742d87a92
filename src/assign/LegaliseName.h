// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace zov {

/// The name that assignment and map files use for names that other tools don't take: trimmed, with
/// `_` for every character below 32 or from 127 up, for each of space `,` `=` `\`, for every `::`
/// and every `!!`. A `.` becomes `_`, or "_dot_" with `keepDots`. A character is a code point; a
/// byte that is no UTF-8 counts as one.
[[nodiscard]] std::string LegaliseName(std::string_view text, bool keepDots);

} // namespace zov
