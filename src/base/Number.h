// SPDX-License-Identifier: Apache-2.0
/// Numbers to and from text, never by the locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zov {

/// Reads a decimal number at the start of the text: sign (also +), digits with a point, exponent
/// with e, E, d or D. No hexadecimal, "inf" or "nan". Rounded correctly.
/// @param text   moved behind the number on success, untouched otherwise
/// @param shift10  the number is multiplied by 10 to this power before it is rounded once, so that
///                 "100" with -9 is exactly 1e-07
/// @return the value; none when no number stands there or it is out of a double's range
[[nodiscard]] std::optional<double> ConsumeDouble(std::string_view& text, int shift10 = 0);

/// The whole text as a number; white space at both ends is allowed, anything else makes it none.
[[nodiscard]] std::optional<double> ParseDouble(std::string_view text, int shift10 = 0);

/// The whole text as an integer, sign allowed, white space at both ends allowed.
[[nodiscard]] std::optional<std::int64_t> ParseInt(std::string_view text);

/// The way of C's atoi: leading white space, sign, digits; stops at the first other character; 0
/// when there is none; saturates at the limits of int.
[[nodiscard]] int LeadingInt(std::string_view text);

/// value * 10^power rounded as closely as one multiplication or division by an exact power of ten
/// allows (exact powers up to 10^22). Used for showing SI values in a unit.
[[nodiscard]] double ScaleByPowerOfTen(double value, int power);

/// As C's "%.{precision}g" prints it; "%g" is precision 6.
[[nodiscard]] std::string FormatG(double value, int precision = 6);
/// The same, appended to `out`.
void AppendG(std::string& out, double value, int precision = 6);
/// The same into a buffer of at least 32 characters (precision up to 17); returns the end of what
/// was written.
char* WriteG(char* out, double value, int precision = 6);
/// The shortest text that reads back to the same double.
[[nodiscard]] std::string FormatShortest(double value);

} // namespace zov
