// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveNumber.h"

#include <array>
#include <charconv>

namespace zov::curve {

namespace {

constexpr int kDigits = 15;
constexpr int kLongDigits = 30;

bool ReadsBack(const char* first, const char* last, double value)
{
    double back = 0.0;
    return std::from_chars(first, last, back).ec == std::errc{} && back == value;
}

} // namespace

char* WriteExponentForm(char* out, double value, bool sameDouble)
{
    constexpr std::size_t kRoom = 32;
    char* const end =
        std::to_chars(out, out + kRoom, value, std::chars_format::scientific, kDigits).ptr;
    if (!sameDouble || ReadsBack(out, end, value) || value != value) {
        return end;
    }
    return std::to_chars(out, out + kRoom, value, std::chars_format::scientific, kDigits + 1).ptr;
}

std::string LongNumberText(double value)
{
    std::array<char, 64> buffer; // NOLINT: written before it is read
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                         std::chars_format::scientific, kLongDigits)
                               .ptr};
}

} // namespace zov::curve
