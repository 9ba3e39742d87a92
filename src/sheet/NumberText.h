// SPDX-License-Identifier: Apache-2.0
/// Numbers as decimal digits, the way spreadsheets see them: 15 significant digits, rounded half
/// away from zero in decimal (1.005 with two decimals is 1.01, though the double lies below it).
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zov::sheet {

/// 0.d1 d2 d3 ... x 10^point, without leading or trailing zero digits; no digit at all for zero.
struct SDecimal
{
    static constexpr int kMaxDigits = 15;

    std::array<char, 24> digits{}; ///< '0' to '9'
    int count = 0;
    int point = 0;
    bool negative = false;

    [[nodiscard]] bool IsZero() const { return count == 0; }
    /// Digit of weight 10^power, '0' outside.
    [[nodiscard]] char DigitAt(int power) const
    {
        const int index = point - 1 - power;
        return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0';
    }
    /// Digits behind the decimal point that are needed to write it in full.
    [[nodiscard]] int DecimalsNeeded() const { return count > point ? count - point : 0; }
};

/// A finite double at 15 significant digits.
[[nodiscard]] SDecimal ToDecimal(double value);

/// Rounds to so many digits behind the decimal point (negative: before it), half away from zero.
/// A result of zero loses its sign.
void RoundToDecimals(SDecimal& number, int decimals);

/// The format General without regard to a column's width: the shortest text of at most 15
/// significant digits, with an exponent below 0.0001 and from 1E+15 ("0.3", "402", "1E-07").
void AppendGeneral(std::string& out, const SDecimal& number);
void AppendGeneral(std::string& out, double value);

/// True for a decimal text that General would write character by character the same.
[[nodiscard]] bool IsGeneralText(std::string_view text);

} // namespace zov::sheet
