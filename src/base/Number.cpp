// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"

#include "base/DecimalScan.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace zov {

namespace {

/// Where the parts of a decimal number stand in a text.
struct SDecimal
{
    std::size_t mantissaBegin = 0; ///< behind the sign
    std::size_t mantissaEnd = 0;
    std::size_t end = 0; ///< behind the exponent
    long exponent = 0;
    bool negative = false;
    bool plain = true; ///< no D exponent: from_chars reads the text as it stands
};

std::optional<SDecimal> ScanDecimal(std::string_view text)
{
    SDecimal d;
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        d.negative = text[i] == '-';
        ++i;
    }
    d.mantissaBegin = i;
    std::size_t digits = 0;
    bool point = false;
    for (; i < text.size(); ++i) {
        if (IsDigit(text[i])) {
            ++digits;
        } else if (text[i] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    d.mantissaEnd = i;
    d.end = i;
    if (i < text.size() && (ToLower(text[i]) == 'e' || ToLower(text[i]) == 'd')) {
        const bool dExponent = ToLower(text[i]) == 'd';
        std::size_t j = i + 1;
        bool negativeExponent = false;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
            negativeExponent = text[j] == '-';
            ++j;
        }
        if (j < text.size() && IsDigit(text[j])) {
            long exponent = 0;
            for (; j < text.size() && IsDigit(text[j]); ++j) {
                exponent = std::min(exponent * 10 + (text[j] - '0'), 1000000L);
            }
            d.exponent = negativeExponent ? -exponent : exponent;
            d.end = j;
            d.plain = !dExponent;
        }
    }
    return d;
}

/// from_chars with C's answer for values too small for a double: zero instead of an error.
std::optional<double> Convert(const char* first, const char* last, bool mantissaIsZero,
                              long exponent)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error == std::errc::result_out_of_range) {
        if (mantissaIsZero || exponent < 0) {
            return 0.0;
        }
        return std::nullopt;
    }
    if (error != std::errc{} || end != last) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::optional<double> ConsumeDouble(std::string_view& text, int shift10)
{
    const char* const end = text.data() + text.size();
    SDecimalScan number;
    double exact = 0.0;
    if (ScanDecimal(text.data(), end, number) &&
        (number.end == end || ToLower(*number.end) != 'd') &&
        ExactDecimal(number, shift10, exact)) {
        text.remove_prefix(static_cast<std::size_t>(number.end - text.data()));
        return exact;
    }
    const auto decimal = ScanDecimal(text);
    if (!decimal) {
        return std::nullopt;
    }
    const SDecimal& d = *decimal;
    const std::string_view mantissa = text.substr(d.mantissaBegin, d.mantissaEnd - d.mantissaBegin);
    const bool zero = mantissa.find_first_of("123456789") == std::string_view::npos;
    std::optional<double> value;
    if (shift10 == 0 && d.plain) {
        value = Convert(text.data() + d.mantissaBegin, text.data() + d.end, zero, d.exponent);
    } else {
        std::array<char, 128> local{};
        std::string large;
        char* buffer = local.data();
        std::size_t room = local.size();
        if (mantissa.size() + 24 > room) {
            large.resize(mantissa.size() + 24);
            buffer = large.data();
            room = large.size();
        }
        std::memcpy(buffer, mantissa.data(), mantissa.size());
        char* out = buffer + mantissa.size();
        *out++ = 'e';
        out = std::to_chars(out, buffer + room, d.exponent + shift10).ptr;
        value = Convert(buffer, out, zero, d.exponent + shift10);
    }
    if (!value) {
        return std::nullopt;
    }
    text.remove_prefix(d.end);
    return d.negative ? -*value : *value;
}

std::optional<double> ParseDouble(std::string_view text, int shift10)
{
    text = Trim(text);
    const auto value = ConsumeDouble(text, shift10);
    return text.empty() ? value : std::nullopt;
}

std::optional<std::int64_t> ParseInt(std::string_view text)
{
    text = Trim(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

int LeadingInt(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && IsSpace(text[i])) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        negative = text[i] == '-';
        ++i;
    }
    std::int64_t value = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        value = std::min<std::int64_t>(value * 10 + (text[i] - '0'), std::int64_t{1} << 40U);
    }
    value = negative ? -value : value;
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

double ScaleByPowerOfTen(double value, int power)
{
    static constexpr std::array<double, 23> kPowers = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    while (power > 22) {
        value *= kPowers[22];
        power -= 22;
    }
    while (power < -22) {
        value /= kPowers[22];
        power += 22;
    }
    return power >= 0 ? value * kPowers[static_cast<std::size_t>(power)]
                      : value / kPowers[static_cast<std::size_t>(-power)];
}

char* WriteG(char* out, double value, int precision)
{
    if (std::isnan(value)) {
        std::memcpy(out, "nan", 3);
        return out + 3;
    }
    // Small whole numbers are most of what is written, and need no search for digits.
    const auto whole =
        static_cast<std::int32_t>(std::abs(value) < 100000.0 && precision >= 6 ? value : 0.0);
    if (whole != 0 && static_cast<double>(whole) == value) {
        return std::to_chars(out, out + 32, whole).ptr;
    }
    return std::to_chars(out, out + 32, value, std::chars_format::general,
                         std::clamp(precision, 1, 17))
        .ptr;
}

void AppendG(std::string& out, double value, int precision)
{
    std::array<char, 32> buffer; // NOLINT: written before it is read
    out.append(buffer.data(), WriteG(buffer.data(), value, precision));
}

std::string FormatG(double value, int precision)
{
    std::string out;
    AppendG(out, value, precision);
    return out;
}

std::string FormatShortest(double value)
{
    std::array<char, 32> buffer; // NOLINT: written before it is read
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

} // namespace zov
