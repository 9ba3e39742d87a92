// SPDX-License-Identifier: Apache-2.0
/// Numbers as the format writes them: "4.0pF", "1.2e-3", "NA"; triples; rows of tables.
///
/// This header only reads. What is reported about a value is in cmn.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace zov::ibischk {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

/// "NA" in any case.
[[nodiscard]] constexpr bool IsNa(std::string_view token)
{
    return token.size() == 2 && (token[0] == 'N' || token[0] == 'n') &&
           (token[1] == 'A' || token[1] == 'a');
}

enum class ENumber : std::uint8_t
{
    Good,
    NoNumber,  ///< does not begin with a number, or goes on with something that is no suffix
    OutOfRange ///< too large for a double
};

/// Oddities of a number that was read.
enum ENumberFlag : std::uint8_t
{
    kDigitsInScale = 1,    ///< "2.2n3"
    kCapitalScale = 2,     ///< K, N, P or U where only the small letter scales
    kExponentAndScale = 4, ///< "1.2e-3m"
};

struct SNumber
{
    double value = 0.0;
    std::uint8_t flags = 0;
};

/// Takes a number with its suffix off the front of a text: sign, digits with a point, exponent,
/// then letters, of which the first scales when it is one of T G M k m u n p f. The scaled value
/// is rounded once: "4.0p" is exactly 4e-12. The text is left as it was unless the result is Good.
ENumber ConsumeNumber(std::string_view& text, SNumber& out);

/// A whole word as a number.
ENumber ReadNumber(std::string_view token, SNumber& out);

/// A row of numbers, as curves have them.
struct SRow
{
    static constexpr std::size_t kMax = 4;
    std::array<double, kMax> value{}; ///< kAbsent for NA
    std::array<std::string_view, kMax> token{};
    std::size_t count = 0;    ///< words on the line; kMax + 1 for more
    std::uint8_t naMask = 0;  ///< bit i: word i is NA
    std::uint8_t badMask = 0; ///< bit i: word i is no number
    std::uint8_t flags = 0;   ///< ENumberFlag of any word

    /// `count` words, all numbers or NA, nothing odd.
    [[nodiscard]] bool Clean(std::size_t words) const
    {
        return count == words && badMask == 0 && flags == 0;
    }
};

/// Splits a row and converts its words in one pass. This is where most of a file's bytes go
/// through.
void ScanRow(std::string_view text, SRow& row);

/// typ, min, max; absent columns are kAbsent.
struct STriple
{
    double typ = kAbsent;
    double min = kAbsent;
    double max = kAbsent;

    [[nodiscard]] static bool Has(double value) { return value == value; }
    [[nodiscard]] bool HasTyp() const { return Has(typ); }
    [[nodiscard]] bool HasMin() const { return Has(min); }
    [[nodiscard]] bool HasMax() const { return Has(max); }
    /// By column: 0 typ, 1 min, 2 max.
    [[nodiscard]] double Column(std::size_t i) const { return i == 0 ? typ : i == 1 ? min : max; }
};

} // namespace zov::ibischk
