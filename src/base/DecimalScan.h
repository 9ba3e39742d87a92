// SPDX-License-Identifier: Apache-2.0
/// The fast way through decimal numbers, for the inner loop of readers whose files are mostly
/// numbers: digits are taken eight at a time into one integer, and where that and the power of ten
/// are exact as doubles, one multiplication or division gives the correctly rounded value. All
/// other numbers go the way of ConsumeDouble, so the value is always the one that it gives.
///
///     double value = 0.0;
///     if (const char* after = ScanDouble(at, end, value)) { at = after; }
///
/// Everything is inline; base/Number.h has the plain functions.
#pragma once

#include "base/Number.h"
#include "base/Text.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zov {

/// The parts of a number: value = mantissa * 10^exponent, when `digits` is at most
/// kDecimalSafeDigits; with more digits the mantissa has overflowed and means nothing.
struct SDecimalScan
{
    std::uint64_t mantissa = 0;
    std::size_t digits = 0; ///< all that were written, leading zeros too
    int exponent = 0;       ///< the written one less the places behind the point
    bool negative = false;
    bool hasExponent = false;
    const char* end = nullptr; ///< behind the number
};

constexpr std::size_t kDecimalSafeDigits = 19; ///< fit an unsigned 64-bit number

namespace decimal {

// Not inside the functions, where a table may be built anew at every call.
inline constexpr std::uint64_t kScale[] = {1,      10,      100,      1000,     10000,
                                           100000, 1000000, 10000000, 100000000};
inline constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Eight characters with the first in the lowest byte.
inline std::uint64_t LoadEight(const char* at)
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

constexpr std::uint64_t kZeroDigits = 0x3030303030303030U;

/// Marks (0x80) of characters that are no digits; exact up to and including the first of them.
constexpr std::uint64_t NonDigits(std::uint64_t chunk)
{
    return ((chunk + 0x4646464646464646U) | (chunk - kZeroDigits)) & 0x8080808080808080U;
}

/// Eight digit values as a number: pairs, then fours, then all.
constexpr std::uint64_t EightDigits(std::uint64_t digits)
{
    constexpr std::uint64_t kMask = 0x000000FF000000FFU;
    constexpr std::uint64_t kFirst = 0x000F424000000064U;  // 100 + (1000000 << 32)
    constexpr std::uint64_t kSecond = 0x0000271000000001U; // 1 + (10000 << 32)
    digits = digits * 10 + (digits >> 8U);
    return (((digits & kMask) * kFirst) + (((digits >> 16U) & kMask) * kSecond)) >> 32U;
}

/// Appends digits to the mantissa; overflow is for the caller to see from their number.
inline const char* TakeDigits(const char* at, const char* end, std::uint64_t& mantissa)
{
    while (end - at >= 8) {
        const std::uint64_t chunk = LoadEight(at);
        const std::uint64_t others = NonDigits(chunk);
        if (others == 0) {
            mantissa = mantissa * kScale[8] + EightDigits(chunk - kZeroDigits);
            at += 8;
            continue;
        }
        const auto digits = static_cast<unsigned>(std::countr_zero(others)) / 8U;
        if (digits != 0) {
            // Shifted up, the missing digits become zeros in front.
            mantissa = mantissa * kScale[digits] +
                       EightDigits((chunk - kZeroDigits) << (64U - 8U * digits));
        }
        return at + digits;
    }
    unsigned digit = 0;
    for (; at != end && (digit = static_cast<unsigned char>(*at) - 48U) < 10; ++at) {
        mantissa = mantissa * 10 + digit;
    }
    return at;
}

/// The exponent at "e"; returns `at` when no digit follows: then it is a letter of something else.
inline const char* TakeExponent(const char* at, const char* end, SDecimalScan& out)
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
    for (; look != end && IsDigit(*look); ++look) {
        exponent = exponent < 100000 ? exponent * 10 + (*look - '0') : exponent;
    }
    out.exponent += negative ? -exponent : exponent;
    out.hasExponent = true;
    return look;
}

} // namespace decimal

/// Takes a number apart: sign (also +), digits with at most one point, exponent with e or E.
/// @return false when no number stands at `at`; `out` then means nothing
inline bool ScanDecimal(const char* at, const char* end, SDecimalScan& out)
{
    out = {};
    if (at != end && (*at == '-' || *at == '+')) {
        out.negative = *at == '-';
        ++at;
    }
    // In front of the point there are mostly one or two digits.
    const char* const first = at;
    unsigned digit = 0;
    for (; at != end && (digit = static_cast<unsigned char>(*at) - 48U) < 10; ++at) {
        out.mantissa = out.mantissa * 10 + digit;
    }
    out.digits = static_cast<std::size_t>(at - first);
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = decimal::TakeDigits(at, end, out.mantissa);
        const auto places = static_cast<std::size_t>(at - fraction);
        out.digits += places;
        out.exponent = -static_cast<int>(places);
    }
    if (out.digits == 0) {
        return false;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        at = decimal::TakeExponent(at, end, out);
    }
    out.end = at;
    return true;
}

/// The value times 10^shift10, correctly rounded, when one operation on exact doubles gives it.
/// @return false when it does not; `out` is then untouched
inline bool ExactDecimal(const SDecimalScan& number, int shift10, double& out)
{
    constexpr std::uint64_t kExactMantissa = std::uint64_t{1} << 53U;
    const int power = number.exponent + shift10;
    if (number.digits > kDecimalSafeDigits || number.mantissa > kExactMantissa || power < -22 ||
        power > 22) {
        return false;
    }
    const auto mantissa = static_cast<double>(number.mantissa);
    const double value =
        power < 0 ? mantissa / decimal::kPowers[-power] : mantissa * decimal::kPowers[power];
    out = number.negative ? -value : value;
    return true;
}

/// A number as ConsumeDouble reads it (with D exponents too).
/// @return the place behind the number; null when none stands there or it is out of range, and
///         `out` is untouched
inline const char* ScanDouble(const char* at, const char* end, double& out)
{
    SDecimalScan number;
    if (!ScanDecimal(at, end, number)) {
        return nullptr;
    }
    const bool maybeD = number.end != end && (*number.end == 'D' || *number.end == 'd');
    if (!maybeD && ExactDecimal(number, 0, out)) {
        return number.end;
    }
    std::string_view text(at, static_cast<std::size_t>(end - at));
    const auto value = ConsumeDouble(text);
    if (!value) {
        return nullptr;
    }
    out = *value;
    return text.data();
}

} // namespace zov
