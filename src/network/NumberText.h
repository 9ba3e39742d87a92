// SPDX-License-Identifier: Apache-2.0
/// Numbers of data files at the speed of a scan: the same values and texts as base/Number.h gives,
/// without its generality on the common path.
#pragma once

#include <array>
#include <bit>
#include <cfloat>
#include <cstdint>
#include <cstring>

namespace zov::network {

namespace detail {

constexpr std::uint64_t kZeros = 0x3030303030303030ULL;

/// Marks (0x80) of bytes that are no digits; exact up to and including the first of them.
[[nodiscard]] constexpr std::uint64_t NonDigits(std::uint64_t chunk)
{
    return ((chunk + 0x4646464646464646ULL) | (chunk - kZeros)) & 0x8080808080808080ULL;
}

/// Eight digit values, the first in the lowest byte, as one number.
[[nodiscard]] constexpr std::uint64_t EightDigits(std::uint64_t digits)
{
    digits = digits * 10 + (digits >> 8U);
    return ((digits & 0x000000FF000000FFULL) * 0x000F424000000064ULL +
            (digits >> 16U & 0x000000FF000000FFULL) * 0x0000271000000001ULL) >>
           32U;
}

constexpr std::array<std::uint64_t, 8> kSmallPowers = {1,     10,     100,     1000,
                                                       10000, 100000, 1000000, 10000000};

/// Digits at p go into `value` (modulo 2^64); returns what is behind them.
[[nodiscard]] inline const char* ScanDigits(const char* p, const char* end, std::uint64_t& value)
{
    if constexpr (std::endian::native == std::endian::little) {
        while (end - p >= 8) {
            std::uint64_t chunk = 0;
            std::memcpy(&chunk, p, 8);
            const std::uint64_t others = NonDigits(chunk);
            if (others == 0) {
                value = value * 100000000 + EightDigits(chunk - kZeros);
                p += 8;
                continue;
            }
            const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8;
            if (count != 0) {
                // Shifted up, the missing digits become zeros in front.
                value =
                    value * kSmallPowers[count] + EightDigits((chunk - kZeros) << (64 - 8 * count));
            }
            return p + count;
        }
    }
    while (p < end && static_cast<unsigned char>(*p - '0') < 10) {
        value = value * 10 + static_cast<unsigned>(*p - '0');
        ++p;
    }
    return p;
}

/// An exponent at p ("e-03", "D+5") moved behind, its value in `exponent`; p itself when none
/// stands there.
[[nodiscard]] inline const char* ScanExponent(const char* p, const char* end, int& exponent)
{
    const char* q = p + 1;
    bool negative = false;
    if (q < end && (*q == '+' || *q == '-')) {
        negative = *q == '-';
        ++q;
    }
    if (q >= end || static_cast<unsigned char>(*q - '0') >= 10) {
        return p;
    }
    int value = 0;
    for (; q < end && static_cast<unsigned char>(*q - '0') < 10; ++q) {
        value = value < 100000 ? value * 10 + (*q - '0') : value;
    }
    exponent = negative ? -value : value;
    return q;
}

/// mantissa * 10^exponent when that is known to be rounded correctly; false otherwise.
[[nodiscard]] bool ExactDecimal(std::uint64_t mantissa, int exponent, double& value);

/// The way of base/Number.h over [p, end); null when no number stands there.
[[nodiscard]] const char* ScanByLibrary(const char* p, const char* end, int shift10, double& value);

} // namespace detail

/// Reads a number as ConsumeDouble does (same grammar, same rounding).
/// @param shift10  power of ten that the number is multiplied by before it is rounded
/// @return behind the number, or null when none stands at p or it is out of range
[[nodiscard]] inline const char* ScanNumber(const char* p, const char* end, int shift10,
                                            double& value)
{
    const char* const begin = p;
    bool negative = false;
    if (p < end && (*p == '-' || *p == '+')) {
        negative = *p == '-';
        ++p;
    }
    const char* const digits = p;
    std::uint64_t mantissa = 0;
    p = detail::ScanDigits(p, end, mantissa);
    auto count = p - digits;
    int exponent = shift10;
    if (p < end && *p == '.') {
        const char* const fraction = ++p;
        p = detail::ScanDigits(p, end, mantissa);
        count += p - fraction;
        exponent -= static_cast<int>(p - fraction);
    }
    if (count == 0) {
        return nullptr;
    }
    if (p < end && ((*p | 0x20) == 'e' || (*p | 0x20) == 'd')) {
        int written = 0;
        p = detail::ScanExponent(p, end, written);
        exponent += written;
    }
    if (count > 19) { // up to 19 digits fit; leading zeros take no room
        const char* first = digits;
        while (count > 19 && (*first == '0' || *first == '.')) {
            count -= *first == '0' ? 1 : 0;
            ++first;
        }
    }
    if (count > 19 || !detail::ExactDecimal(mantissa, exponent, value)) {
        return detail::ScanByLibrary(begin, end, shift10, value);
    }
    value = negative ? -value : value;
    return p;
}

/// As WriteG(out, value, 15): the text of "%.15lg", into at least 32 characters.
char* WriteG15(char* out, double value);

} // namespace zov::network
