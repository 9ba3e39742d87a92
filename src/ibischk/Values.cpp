// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Values.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/Tokens.h"

#include <bit>
#include <cstring>

namespace zov::ibischk {

namespace {

constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::uint64_t kExactMantissa = std::uint64_t{1} << 53U;
constexpr std::size_t kSafeDigits = 19; ///< fit an unsigned 64-bit number

int ScaleOf(char suffix)
{
    switch (suffix) {
    case 'T':
        return 12;
    case 'G':
        return 9;
    case 'M':
        return 6;
    case 'k':
        return 3;
    case 'm':
        return -3;
    case 'u':
        return -6;
    case 'n':
        return -9;
    case 'p':
        return -12;
    case 'f':
        return -15;
    default:
        return 0;
    }
}

constexpr unsigned DigitOf(char c)
{
    return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0';
}

/// Digits of a number before they are put together.
struct SDigits
{
    std::uint64_t mantissa = 0;
    std::size_t count = 0; ///< all digits, leading zeros too
    int exponent = 0;
    bool negative = false;
    bool hasExponent = false;
    const char* end = nullptr;
};

/// Eight characters with the first in the lowest byte.
std::uint64_t LoadEight(const char* at)
{
    std::uint64_t chunk = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&chunk, at, sizeof chunk);
    } else {
        for (unsigned i = 0; i < 8; ++i) {
            chunk |= std::uint64_t{static_cast<unsigned char>(at[i])} << (8U * i);
        }
    }
    return chunk;
}

/// How many of eight characters are digits before the first that is none.
unsigned LeadingDigits(std::uint64_t chunk)
{
    // A digit's high half is 3, also after 6 is added to it; each byte that fails keeps a bit.
    constexpr std::uint64_t kHigh = 0xF0F0F0F0F0F0F0F0U;
    constexpr std::uint64_t kThrees = 0x3030303030303030U;
    constexpr std::uint64_t kSixes = 0x0606060606060606U;
    const std::uint64_t fails =
        ((chunk & kHigh) ^ kThrees) | (((chunk + kSixes) & kHigh) ^ kThrees);
    return fails == 0 ? 8U : static_cast<unsigned>(std::countr_zero(fails)) / 8U;
}

/// Eight digits as a number: pairs, then fours, then all.
std::uint64_t EightDigits(std::uint64_t chunk)
{
    constexpr std::uint64_t kMask = 0x000000FF000000FFU;
    constexpr std::uint64_t kFirst = 0x000F424000000064U;  // 100 + (1000000 << 32)
    constexpr std::uint64_t kSecond = 0x0000271000000001U; // 1 + (10000 << 32)
    chunk -= 0x3030303030303030U;
    chunk = chunk * 10 + (chunk >> 8U);
    return (((chunk & kMask) * kFirst) + (((chunk >> 16U) & kMask) * kSecond)) >> 32U;
}

/// Appends digits to the mantissa; overflow is for the caller to see from the count.
const char* TakeDigits(const char* at, const char* end, std::uint64_t& mantissa)
{
    constexpr std::uint64_t kScale[] = {1,      10,      100,      1000,     10000,
                                        100000, 1000000, 10000000, 100000000};
    while (end - at >= 8) {
        const std::uint64_t chunk = LoadEight(at);
        const unsigned digits = LeadingDigits(chunk);
        if (digits == 0) {
            return at;
        }
        // The digits are moved to the end and zeros stand in front of them.
        const unsigned shift = 64U - 8U * digits;
        const std::uint64_t zeros = digits == 8 ? 0 : 0x3030303030303030U >> (8U * digits);
        mantissa = mantissa * kScale[digits] + EightDigits((chunk << shift) | zeros);
        at += digits;
        if (digits < 8) {
            return at;
        }
    }
    unsigned digit = 0;
    for (; at != end && (digit = DigitOf(*at)) < 10; ++at) {
        mantissa = mantissa * 10 + digit;
    }
    return at;
}

/// The exponent at "e"; `at` stays when it is none but the first letter of a unit.
const char* TakeExponent(const char* at, const char* end, SDigits& d)
{
    const char* look = at + 1;
    const bool negative = look != end && *look == '-';
    if (look != end && (*look == '-' || *look == '+')) {
        ++look;
    }
    if (look == end || !IsDigit(*look)) {
        return at;
    }
    int exponent = 0;
    unsigned digit = 0;
    for (; look != end && (digit = DigitOf(*look)) < 10; ++look) {
        exponent = exponent < 100000 ? exponent * 10 + static_cast<int>(digit) : exponent;
    }
    d.exponent += negative ? -exponent : exponent;
    d.hasExponent = true;
    return look;
}

bool ScanDigits(const char* at, const char* end, SDigits& d)
{
    if (at != end && (*at == '-' || *at == '+')) {
        d.negative = *at == '-';
        ++at;
    }
    // In front of the point there are mostly one or two digits.
    const char* const first = at;
    unsigned digit = 0;
    for (; at != end && (digit = DigitOf(*at)) < 10; ++at) {
        d.mantissa = d.mantissa * 10 + digit;
    }
    d.count = static_cast<std::size_t>(at - first);
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = TakeDigits(at, end, d.mantissa);
        const auto places = static_cast<std::size_t>(at - fraction);
        d.count += places;
        d.exponent = -static_cast<int>(places);
    }
    if (d.count == 0) {
        return false;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        at = TakeExponent(at, end, d);
    }
    d.end = at;
    return true;
}

/// Scale and oddities of the letters behind a number; returns their end.
const char* ScanSuffix(const char* at, const char* end, bool hasExponent, int& scale, SNumber& out)
{
    if (at == end || !IsAlpha(*at)) {
        return at;
    }
    const char first = *at;
    scale = ScaleOf(first);
    if (first == 'K' || first == 'N' || first == 'P' || first == 'U') {
        out.flags |= kCapitalScale;
    }
    if (scale != 0 && hasExponent) {
        out.flags |= kExponentAndScale;
    }
    for (; at != end && (IsAlpha(*at) || IsDigit(*at)); ++at) {
        if (IsDigit(*at)) {
            out.flags |= kDigitsInScale;
        }
    }
    return at;
}

/// The number at `at`, its end in `after`; null there when no number stands at `at`.
ENumber ScanNumber(const char* at, const char* end, SNumber& out, const char*& after)
{
    SDigits d;
    out.flags = 0;
    if (!ScanDigits(at, end, d)) {
        return ENumber::NoNumber;
    }
    int scale = 0;
    const char* const suffixEnd = ScanSuffix(d.end, end, d.hasExponent, scale, out);
    const int power = d.exponent + scale;
    if (d.count <= kSafeDigits && d.mantissa <= kExactMantissa && power >= -22 && power <= 22) {
        // Both are exact doubles, so one operation rounds correctly.
        const auto mantissa = static_cast<double>(d.mantissa);
        const double value = power < 0 ? mantissa / kPowers[-power] : mantissa * kPowers[power];
        out.value = d.negative ? -value : value;
    } else {
        std::string_view digits(at, static_cast<std::size_t>(d.end - at));
        const auto value = ConsumeDouble(digits, scale);
        if (!value) {
            return ENumber::OutOfRange;
        }
        out.value = *value;
    }
    after = suffixEnd;
    return ENumber::Good;
}

} // namespace

ENumber ConsumeNumber(std::string_view& text, SNumber& out)
{
    const char* after = nullptr;
    const ENumber result = ScanNumber(text.data(), text.data() + text.size(), out, after);
    if (result == ENumber::Good) {
        text.remove_prefix(static_cast<std::size_t>(after - text.data()));
    }
    return result;
}

ENumber ReadNumber(std::string_view token, SNumber& out)
{
    const ENumber result = ConsumeNumber(token, out);
    return result == ENumber::Good && !token.empty() ? ENumber::NoNumber : result;
}

void ScanRow(std::string_view text, SRow& row)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    row.naMask = 0;
    row.badMask = 0;
    row.flags = 0;
    std::size_t count = 0;
    for (;; ++count) {
        while (at != end && IsSpaceOrTab(*at)) {
            ++at;
        }
        if (at == end) {
            break;
        }
        if (count == SRow::kMax) {
            ++count;
            break;
        }
        const char* const start = at;
        const char* after = nullptr;
        SNumber number;
        ENumber result = ScanNumber(start, end, number, after);
        if (result == ENumber::Good && (after == end || IsSpaceOrTab(*after))) {
            at = after;
        } else {
            while (at != end && !IsSpaceOrTab(*at)) {
                ++at;
            }
            const bool na = IsNa({start, static_cast<std::size_t>(at - start)});
            const auto bit = static_cast<std::uint8_t>(1U << count);
            row.naMask = na ? static_cast<std::uint8_t>(row.naMask | bit) : row.naMask;
            row.badMask = na ? row.badMask : static_cast<std::uint8_t>(row.badMask | bit);
            number.value = kAbsent;
            number.flags = 0;
        }
        row.token[count] = {start, static_cast<std::size_t>(at - start)};
        row.value[count] = number.value;
        row.flags = static_cast<std::uint8_t>(row.flags | number.flags);
    }
    row.count = count;
}

} // namespace zov::ibischk
