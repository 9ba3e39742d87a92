// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace zov {
namespace {

TEST(Number, ReadsWholeTexts)
{
    struct SCase
    {
        const char* text;
        int shift;
        std::optional<double> value;
    };
    const SCase cases[] = {
        {"1", 0, 1.0},
        {"+1.5", 0, 1.5},
        {" -2e3 ", 0, -2000.0},
        {"1D-3", 0, 1e-3},
        {".5", 0, 0.5},
        {"5.", 0, 5.0},
        {"100", -9, 1e-07},
        {"0.1", -2, 1e-3},
        {"4.7", -6, 4.7e-6},
        {"1e400", 0, {}},
        {"1e-400", 0, 0.0},
        {"0e999999999", 0, 0.0},
        {"1e5", 400, {}},
        {"", 0, {}},
        {"-", 0, {}},
        {".", 0, {}},
        {"1e", 0, {}},
        {"0x10", 0, {}},
        {"inf", 0, {}},
        {"nan", 0, {}},
        {"1 2", 0, {}},
        {"--1", 0, {}},
        {"1.2.3", 0, {}},
        {"1,5", 0, {}},
        {"123456789012345678901234567890", -29, 1.2345678901234567890123456789},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(ParseDouble(c.text, c.shift), c.value) << c.text << " shift " << c.shift;
    }
    EXPECT_EQ(ParseInt(" +12 "), 12);
    EXPECT_EQ(ParseInt("+-12"), std::nullopt);
    EXPECT_EQ(ParseInt("99999999999999999999"), std::nullopt);
    EXPECT_EQ(LeadingInt(" 12abc"), 12);
    EXPECT_EQ(LeadingInt("x"), 0);
    EXPECT_EQ(LeadingInt("-99999999999999"), std::numeric_limits<int>::min());
}

TEST(Number, ConsumesWhatBelongsToTheNumber)
{
    std::string_view text = "4.7e-6F";
    EXPECT_EQ(ConsumeDouble(text), 4.7e-6);
    EXPECT_EQ(text, "F");
    text = "3dB"; // not an exponent: no digit follows
    EXPECT_EQ(ConsumeDouble(text), 3.0);
    EXPECT_EQ(text, "dB");
    text = "nF";
    EXPECT_EQ(ConsumeDouble(text), std::nullopt);
    EXPECT_EQ(text, "nF");
}

/// The C library is the oracle for both directions, over bit patterns of every size.
TEST(Number, AgreesWithTheCLibrary)
{
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i) {
        double value = std::bit_cast<double>(random());
        if (i % 3 == 0) {
            value = static_cast<double>(static_cast<std::int64_t>(random() % 2000000) - 1000000) /
                    1000.0;
        }
        if (!std::isfinite(value)) {
            continue;
        }
        for (const int precision : {6, 15, 17}) {
            char printed[64];
            std::snprintf(printed, sizeof printed, "%.*g", precision, value);
            ASSERT_EQ(FormatG(value, precision), printed);
            const auto read = ParseDouble(printed);
            const double expected = std::strtod(printed, nullptr);
            if (std::isfinite(expected)) {
                ASSERT_EQ(read, expected) << printed;
            }
        }
        ASSERT_EQ(ParseDouble(FormatShortest(value)), value);
    }
    EXPECT_EQ(FormatG(-0.0), "-0");
}

TEST(Number, ScalesByExactPowers)
{
    EXPECT_EQ(FormatG(ScaleByPowerOfTen(100e-9, 9), 17), "100");
    EXPECT_EQ(FormatG(ScaleByPowerOfTen(4.7e-6, 9)), "4700");
    EXPECT_EQ(ScaleByPowerOfTen(1e-300, -30), 0.0);
    EXPECT_EQ(ScaleByPowerOfTen(5.0, -3), 0.005);
}

} // namespace
} // namespace zov
