// SPDX-License-Identifier: Apache-2.0
#include "base/DecimalScan.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace zov {
namespace {

/// Texts as data files hold them, and as nobody writes them: every count of digits on both sides of
/// the point, signs, exponents around the border of the exact way.
class CTexts
{
public:
    const std::string& Next()
    {
        m_text.clear();
        if (Up(3) == 0) {
            m_text += '-';
        }
        const unsigned places = Up(22);
        const unsigned whole = places == 0 ? 1 + Up(22) : Up(12);
        AddDigits(whole);
        if (places != 0 || Up(4) == 0) {
            m_text += '.';
            AddDigits(places);
        }
        if (Up(2) == 0) {
            m_text += Up(2) == 0 ? 'e' : 'E';
            m_text += Up(2) == 0 ? "-" : "";
            m_text += std::to_string(Up(Up(20) == 0 ? 340 : 45));
        }
        return m_text;
    }

private:
    unsigned Up(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }
    void AddDigits(unsigned count)
    {
        const bool zeros = Up(6) == 0;
        for (unsigned i = 0; i < count; ++i) {
            m_text += static_cast<char>('0' + (zeros && i + 1 < count ? 0 : Up(10)));
        }
    }

    std::mt19937_64 m_random{20261121};
    std::string m_text;
};

TEST(DecimalScan, AgreesBitByBitWithFromChars)
{
    CTexts texts;
    std::size_t exact = 0;
    constexpr std::size_t kCount = 500'000;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::string& text = texts.Next();
        const char* const end = text.data() + text.size();
        double expected = 0.0;
        const auto [stop, error] = std::from_chars(text.data(), end, expected);
        if (error != std::errc{}) {
            continue; // too large, or too small for a double: ConsumeDouble's own tests
        }
        double value = 0.0;
        ASSERT_EQ(ScanDouble(text.data(), end, value), stop) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected))
            << text;
        SDecimalScan parts;
        ASSERT_TRUE(ScanDecimal(text.data(), end, parts));
        exact += ExactDecimal(parts, 0, value) ? 1U : 0U;
    }
    EXPECT_GT(exact, kCount / 4) << "the exact way is hardly taken";
}

TEST(DecimalScan, ShiftsBeforeItRounds)
{
    CTexts texts;
    for (int i = 0; i < 100'000; ++i) {
        const std::string& text = texts.Next();
        const int shift = static_cast<int>(text.size() % 31) - 15;
        SDecimalScan parts;
        ASSERT_TRUE(ScanDecimal(text.data(), text.data() + text.size(), parts)) << text;
        double value = 0.0;
        if (!ExactDecimal(parts, shift, value)) {
            continue;
        }
        std::string moved = text.substr(0, text.find_first_of("eE"));
        const std::size_t point = moved.find('.');
        const auto places =
            point == std::string::npos ? 0 : static_cast<int>(moved.size() - point) - 1;
        moved += 'e' + std::to_string(parts.exponent + places + shift);
        double expected = 0.0;
        std::from_chars(moved.data(), moved.data() + moved.size(), expected);
        ASSERT_EQ(value, expected) << text << " shift " << shift;
    }
}

/// Eight characters are looked at together: what stands behind a number must not count.
TEST(DecimalScan, StopsWhereTheNumberEnds)
{
    struct SCase
    {
        const char* text;
        double value;
        const char* rest;
    };
    const SCase cases[] = {
        {"1.5", 1.5, ""},
        {"+.25 9", 0.25, " 9"},
        {"5.", 5.0, ""},
        {"1.2.3", 1.2, ".3"},
        {"1.23456789:", 1.23456789, ":"},
        {"1.2345678/12345678", 1.2345678, "/12345678"},
        {"0.1234567\xff\x39\x39", 0.1234567, "\xff\x39\x39"},
        {"1.0e", 1.0, "e"},
        {"1.0e+", 1.0, "e+"},
        {"1.0e-x", 1.0, "e-x"},
        {"2E3V", 2000.0, "V"},
        {"1D-3s", 1e-3, "s"},
        {"3dB", 3.0, "dB"},
        {"0.00000000000000000000000000001", 1e-29, ""},
        {"12345678901234567890123", 12345678901234567890123.0, ""},
        {"18446744073709551617", 18446744073709551617.0, ""},
        {"9007199254740993", 9007199254740992.0, ""},
        {"-0", -0.0, ""},
        {"1e-400", 0.0, ""},
    };
    for (const SCase& c : cases) {
        const std::string_view text = c.text;
        double value = -1.0;
        const char* after = ScanDouble(text.data(), text.data() + text.size(), value);
        ASSERT_NE(after, nullptr) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(std::signbit(value), std::signbit(c.value)) << c.text;
        EXPECT_STREQ(after, c.rest) << c.text;
    }
    for (const std::string_view text : {"", "-", "+", ".", "-.", "e5", "x", "1e400", "--1"}) {
        double value = -1.0;
        EXPECT_EQ(ScanDouble(text.data(), text.data() + text.size(), value), nullptr) << text;
        EXPECT_EQ(value, -1.0) << text;
    }
}

} // namespace
} // namespace zov
