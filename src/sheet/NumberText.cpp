// SPDX-License-Identifier: Apache-2.0
#include "sheet/NumberText.h"

#include "base/Text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zov::sheet {
namespace {

constexpr std::array<double, 9> kPowersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
constexpr double kLargestExact = 999999999999999.0; // 15 digits

void DropTrailingZeros(SDecimal& number)
{
    while (number.count > 0 && number.digits[static_cast<std::size_t>(number.count - 1)] == '0') {
        --number.count;
    }
    if (number.count == 0) {
        number.point = 0;
        number.negative = false;
    }
}

// Most cells hold an integer over a small power of ten. Where m / 10^k (one correctly rounded
// division) gives the double back, m is its decimal, because 15 digits name one double only.
bool FromScaledInteger(double magnitude, SDecimal& number)
{
    for (std::size_t power = 0; power < kPowersOfTen.size(); ++power) {
        const double scaled = magnitude * kPowersOfTen[power];
        if (scaled > kLargestExact) {
            return false;
        }
        const double whole = std::nearbyint(scaled);
        const bool close = std::fabs(scaled - whole) <= scaled * 1e-15; // spares most divisions
        if (!close || whole / kPowersOfTen[power] != magnitude) {
            continue;
        }
        char* const begin = number.digits.data();
        const auto end = std::to_chars(begin, begin + 20, static_cast<std::uint64_t>(whole)).ptr;
        number.count = static_cast<int>(end - begin);
        number.point = number.count - static_cast<int>(power);
        return true;
    }
    return false;
}

void FromScientific(double magnitude, SDecimal& number)
{
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                   std::chars_format::scientific, SDecimal::kMaxDigits - 1)
                         .ptr;
    // "d.dddddddddddddde+xx"
    number.digits[0] = text[0];
    std::memcpy(&number.digits[1], &text[2], SDecimal::kMaxDigits - 1);
    number.count = SDecimal::kMaxDigits;
    const char* exponent = &text[SDecimal::kMaxDigits + 2];
    int power = 0;
    std::from_chars(exponent + (*exponent == '+' ? 1 : 0), end, power);
    number.point = power + 1;
}

} // namespace

SDecimal ToDecimal(double value)
{
    SDecimal number;
    if (value == 0.0 || !std::isfinite(value)) {
        return number;
    }
    number.negative = std::signbit(value);
    const double magnitude = std::fabs(value);
    if (!FromScaledInteger(magnitude, number)) {
        FromScientific(magnitude, number);
    }
    DropTrailingZeros(number);
    return number;
}

void RoundToDecimals(SDecimal& number, int decimals)
{
    const int keep = number.point + decimals;
    if (keep >= number.count) {
        return;
    }
    const bool up = keep >= 0 && number.digits[static_cast<std::size_t>(keep)] >= '5';
    number.count = keep > 0 ? keep : 0;
    if (up) {
        int i = number.count - 1;
        while (i >= 0 && number.digits[static_cast<std::size_t>(i)] == '9') {
            --i;
        }
        number.count = i + 1;
        if (i >= 0) {
            ++number.digits[static_cast<std::size_t>(i)];
        } else { // 9.99 becomes 10
            number.digits[0] = '1';
            number.count = 1;
            ++number.point;
        }
    }
    DropTrailingZeros(number);
}

void AppendGeneral(std::string& out, const SDecimal& number)
{
    if (number.IsZero()) {
        out += '0';
        return;
    }
    if (number.negative) {
        out += '-';
    }
    const std::string_view digits(number.digits.data(), static_cast<std::size_t>(number.count));
    const int exponent = number.point - 1;
    if (exponent < -4 || exponent >= SDecimal::kMaxDigits) {
        out += digits[0];
        if (digits.size() > 1) {
            out.append(".").append(digits.substr(1));
        }
        out += exponent < 0 ? "E-" : "E+";
        const int magnitude = exponent < 0 ? -exponent : exponent;
        out += magnitude < 10 ? "0" : "";
        out += std::to_string(magnitude);
    } else if (number.point <= 0) {
        out.append("0.").append(static_cast<std::size_t>(-number.point), '0').append(digits);
    } else if (number.count <= number.point) {
        out.append(digits).append(static_cast<std::size_t>(number.point - number.count), '0');
    } else {
        const auto whole = static_cast<std::size_t>(number.point);
        out.append(digits.substr(0, whole)).append(".").append(digits.substr(whole));
    }
}

void AppendGeneral(std::string& out, double value)
{
    AppendGeneral(out, ToDecimal(value));
}

bool IsGeneralText(std::string_view text)
{
    if (!text.empty() && text.front() == '-') {
        text.remove_prefix(1);
        if (text == "0") {
            return false;
        }
    }
    std::size_t whole = 0;
    while (whole < text.size() && IsDigit(text[whole])) {
        ++whole;
    }
    if (whole == 0 || (whole > 1 && text[0] == '0')) {
        return false;
    }
    if (whole == text.size()) {
        return whole <= SDecimal::kMaxDigits;
    }
    const std::string_view decimals = text.substr(whole + 1);
    if (text[whole] != '.' || decimals.empty() || decimals.back() == '0' ||
        whole + decimals.size() > SDecimal::kMaxDigits) {
        return false;
    }
    std::size_t zeros = 0;
    bool leading = true;
    for (char c : decimals) {
        if (!IsDigit(c)) {
            return false;
        }
        leading = leading && c == '0';
        zeros += leading ? 1 : 0;
    }
    return text[0] != '0' || zeros < 4;
}

} // namespace zov::sheet
