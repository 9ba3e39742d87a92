// SPDX-License-Identifier: Apache-2.0
#include "core/ExchangeNumber.h"

#include "base/Text.h"

#include <array>
#include <string>

namespace zov {

namespace {

constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactPower = 22;
constexpr std::uint64_t kExactMantissa = std::uint64_t{1} << 53U;
constexpr std::ptrdiff_t kDigits = 18; ///< any mantissa of so many fits 64 bits

/// The power of ten that a value is, within what units use.
std::optional<int> PowerOfTen(double value)
{
    for (int i = 0; i <= kExactPower; ++i) {
        const double power = kPowers[static_cast<std::size_t>(i)];
        if (value == power) {
            return i;
        }
        if (value == 1.0 / power) {
            return -i;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<double> CQuantityReader::Read(std::string_view text)
{
    const char* p = text.data();
    const char* end = p + text.size();
    const bool negative = p != end && *p == '-';
    p += negative ? 1 : 0;
    const char* start = p;
    std::uint64_t mantissa = 0;
    while (p != end && IsDigit(*p)) {
        mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
    }
    int exponent = 0;
    std::ptrdiff_t digits = p - start;
    if (p != end && *p == '.') {
        const char* fraction = ++p;
        while (p != end && IsDigit(*p)) {
            mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
        }
        exponent = static_cast<int>(fraction - p);
        digits += p - fraction;
    }
    if (digits == 0 || digits > kDigits) {
        return ParseQuantity(text, m_quantity);
    }
    if (end - p >= 3 && (*p == 'e' || *p == 'E') && (p[1] == '-' || p[1] == '+') && IsDigit(p[2])) {
        int written = 0;
        const bool down = p[1] == '-';
        for (p += 2; p != end && IsDigit(*p) && written < 1000; ++p) {
            written = written * 10 + (*p - '0');
        }
        exponent += down ? -written : written;
    }
    const auto suffixLength = static_cast<std::size_t>(end - p);
    if (suffixLength > 7) {
        return ParseQuantity(text, m_quantity);
    }
    std::uint64_t suffix = suffixLength;
    for (; p != end; ++p) {
        suffix = suffix << 8U | static_cast<unsigned char>(*p);
    }
    if (suffix != m_suffix) {
        return ReadSlowly(text, suffix, suffixLength);
    }
    // A mantissa and a power of ten that doubles hold exactly give a quotient or product that is
    // rounded once, which is what reading a decimal number correctly means.
    exponent += m_exponent;
    if (mantissa > kExactMantissa || exponent > kExactPower || exponent < -kExactPower) {
        return ParseQuantity(text, m_quantity);
    }
    const auto whole = static_cast<double>(mantissa);
    const double value = exponent < 0 ? whole / kPowers[static_cast<std::size_t>(-exponent)]
                                      : whole * kPowers[static_cast<std::size_t>(exponent)];
    return negative ? -value : value;
}

std::optional<double> CQuantityReader::ReadSlowly(std::string_view text, std::uint64_t suffix,
                                                  std::size_t suffixLength)
{
    const auto value = ParseQuantity(text, m_quantity);
    // Only a suffix of letters and signs is remembered: one that begins with an exponent or a digit
    // would belong to the number.
    const std::string_view unit = text.substr(text.size() - suffixLength);
    if (value && (unit.empty() || (ToLower(unit.front()) != 'e' && ToLower(unit.front()) != 'd' &&
                                   !IsDigit(unit.front()) && unit.front() != '.'))) {
        const auto one = ParseQuantity("1" + std::string(unit), m_quantity);
        if (const auto power = one ? PowerOfTen(*one) : std::nullopt) {
            m_suffix = suffix;
            m_exponent = *power;
        }
    }
    return value;
}

} // namespace zov
