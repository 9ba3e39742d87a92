// SPDX-License-Identifier: Apache-2.0
// The quick ways against slow and plain ones.
#include "sheet/NumberText.h"

#include "sheet/NumberFormat.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace zov::sheet {
namespace {

// 15 digits as the standard library writes them, "d.dddddddddddddde+xx".
SDecimal PlainDecimal(double value)
{
    char text[40];
    const auto end =
        std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific, 14)
            .ptr;
    SDecimal number;
    number.negative = value < 0;
    for (const char* at = text; *at != 'e'; ++at) {
        if (*at != '.') {
            number.digits[static_cast<std::size_t>(number.count++)] = *at;
        }
    }
    const char* exponent = text + 17;
    std::from_chars(exponent + (*exponent == '+' ? 1 : 0), end, number.point);
    ++number.point;
    while (number.count > 0 && number.digits[static_cast<std::size_t>(number.count - 1)] == '0') {
        --number.count;
    }
    return number;
}

std::string Text(const SDecimal& number)
{
    return (number.negative ? "-" : "") +
           std::string(number.digits.data(), static_cast<std::size_t>(number.count)) + "@" +
           std::to_string(number.point);
}

std::vector<double> Samples()
{
    std::mt19937_64 random(20240305);
    std::vector<double> values;
    for (int i = 0; i < 20000; ++i) {
        const double any = std::bit_cast<double>(random());
        const auto whole = static_cast<double>(random() >> (random() % 50 + 10));
        values.push_back(whole);
        values.push_back(-whole / std::pow(10.0, static_cast<double>(random() % 20)));
        values.push_back(std::nextafter(whole / 1000, 1e300));
        if (std::isfinite(any) && any != 0) {
            values.push_back(any);
        }
    }
    return values;
}

TEST(NumberText, MakesTheDigitsOfTheStandardLibrary)
{
    for (double value : Samples()) {
        if (value != 0) {
            ASSERT_EQ(Text(ToDecimal(value)), Text(PlainDecimal(value)))
                << std::bit_cast<std::uint64_t>(value);
        }
    }
}

TEST(NumberText, GeneralReadsBackTheFifteenDigits)
{
    for (double value : Samples()) {
        std::string text;
        AppendGeneral(text, value);
        double back = 0;
        std::from_chars(text.data(), text.data() + text.size(), back);
        ASSERT_EQ(Text(ToDecimal(back)), Text(ToDecimal(value))) << text;
        if (IsGeneralText(text)) {
            std::string again;
            AppendGeneral(again, back);
            ASSERT_EQ(again, text);
        }
    }
}

TEST(NumberText, RoundsHalfAwayFromZero)
{
    struct SCase
    {
        double value;
        int decimals;
        std::string_view text;
    };
    for (const SCase& one : std::vector<SCase>{{2.5, 0, "3"},
                                               {-2.5, 0, "-3"},
                                               {1.005, 2, "1.01"},
                                               {0.49999, 0, "0"},
                                               {0.5, 0, "1"},
                                               {9.995, 2, "10"},
                                               {99.5, 0, "100"},
                                               {1234, -2, "1200"},
                                               {1250, -2, "1300"},
                                               {4, -1, "0"},
                                               {5, -1, "10"},
                                               {4, -2, "0"},
                                               {-0.001, 2, "0"},
                                               {0.05, 1, "0.1"},
                                               {0.04, 1, "0"},
                                               {1.5, 20, "1.5"},
                                               {1e-300, 2, "0"},
                                               {0.95, 1, "1"},
                                               {0.0999, 2, "0.1"}}) {
        SDecimal number = ToDecimal(one.value);
        RoundToDecimals(number, one.decimals);
        std::string text;
        AppendGeneral(text, number);
        EXPECT_EQ(text, one.text) << one.value << " to " << one.decimals;
    }
}

// Day by day over the whole calendar, by counting.
TEST(DateFormat, KnowsEveryDay)
{
    const CNumberFormat format = CNumberFormat::Parse("yyyy-m-d");
    int year = 1900;
    int month = 1;
    int day = 1;
    for (int serial = 1; serial <= 2958465; ++serial) {
        if (serial < 80000 || serial % 97 == 0) {
            std::string text;
            format.AppendNumber(text, serial, {});
            const std::string expected =
                std::to_string(year) + "-" + std::to_string(month) + "-" + std::to_string(day);
            ASSERT_EQ(text, expected) << serial;
            double back = 0;
            std::string iso;
            CNumberFormat::Parse("yyyy-mm-dd").AppendNumber(iso, serial, {});
            if (serial != 60) {
                ASSERT_TRUE(ParseIsoDate(iso, false, back)) << iso;
                ASSERT_EQ(back, serial) << iso;
            }
        }
        constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 || year == 1900;
        if (++day > kDays[month - 1] + (month == 2 && leap ? 1 : 0)) {
            day = 1;
            if (++month > 12) {
                month = 1;
                ++year;
            }
        }
    }
    EXPECT_EQ(year, 10000);
}

TEST(DateFormat, ReadsIsoDates)
{
    struct SCase
    {
        std::string_view text;
        double serial;
    };
    for (const SCase& one : std::vector<SCase>{{"2024-03-05", 45356},
                                               {"2024-03-05T18:00:00", 45356.75},
                                               {"2024-03-05T12:00:00.000Z", 45356.5},
                                               {"1900-01-01", 1},
                                               {"06:00", 0.25},
                                               {" 12:00:00 ", 0.5}}) {
        double serial = -1;
        EXPECT_TRUE(ParseIsoDate(one.text, false, serial)) << one.text;
        EXPECT_DOUBLE_EQ(serial, one.serial) << one.text;
    }
    for (std::string_view text : {"", "2024", "2024-13-01", "2024-03-32", "2024-03-05T", "24:00",
                                  "12:60", "2024-03-05x", "1899-01-01", "ab:cd"}) {
        double serial = 0;
        EXPECT_FALSE(ParseIsoDate(text, false, serial)) << text;
    }
}

} // namespace
} // namespace zov::sheet
