// SPDX-License-Identifier: Apache-2.0
#include "network/NumberText.h"

#include "base/Number.h"
#include "network/Polar.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>
#include <string>

namespace zov::network {
namespace {

std::string ScannedText(const std::string& text, int shift)
{
    double value = 0.0;
    const char* end = ScanNumber(text.data(), text.data() + text.size(), shift, value);
    return end == nullptr
               ? "none"
               : FormatShortest(value) + "|" + std::string(end, text.data() + text.size());
}

std::string ConsumedText(const std::string& text, int shift)
{
    std::string_view rest = text;
    const std::optional<double> value = ConsumeDouble(rest, shift);
    return value ? FormatShortest(*value) + "|" + std::string(rest) : "none";
}

TEST(NumberText, ScansAsTheLibraryDoes)
{
    for (const char* text : {"",
                             "-",
                             ".",
                             "+.",
                             "e5",
                             "1e",
                             "1e+",
                             "1d-3x",
                             "0",
                             "-0",
                             "-0.0e99",
                             "00000000000000000000001",
                             "0.00000000000000000000000123456789012345678",
                             "9007199254740993",
                             "9007199254740993e22",
                             "18446744073709551615",
                             "18446744073709551616",
                             "12345678",
                             "1234567.8",
                             "123456789.12345678,",
                             "1e400",
                             "1e-400",
                             "-1E-320",
                             "5e-324",
                             "2.4703282292062327e-324",
                             "1.7976931348623158e308",
                             "9.5367431640625e-07!",
                             "0x10",
                             "1..2",
                             "1.5.3",
                             "12345678\x80",
                             "1\xFF",
                             "7205759403792793.5",
                             "1e99999999999999999999",
                             "0.500000000000000166533453693773481063544750213623046875"}) {
        for (const int shift : {0, 3, 9}) {
            EXPECT_EQ(ScannedText(text, shift), ConsumedText(text, shift)) << text;
        }
    }
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i) {
        std::string text(i % 3 == 0 ? "-" : "");
        const std::uint64_t digits = random() >> (random() % 64);
        text += std::to_string(digits);
        if (const std::size_t point = random() % 22; point < text.size()) {
            text.insert(text.size() - point, ".");
        }
        if (i % 2 == 0) {
            text += "e" + std::to_string(static_cast<int>(random() % 80) - 45);
        }
        text += ' ';
        ASSERT_EQ(ScannedText(text, 0), ConsumedText(text, 0)) << text;
    }
}

TEST(NumberText, WritesAsTheLibraryDoes)
{
    const auto written = [](double value) {
        char buffer[40];
        return std::string(buffer, WriteG15(buffer, value));
    };
    for (const double value : {0.0,
                               -0.0,
                               1.0,
                               -1.0,
                               0.1,
                               123456789012345.0,
                               999999999999999.0,
                               999999999999998.9,
                               1e15,
                               1e14,
                               99999999999999.95,
                               0.5,
                               0.0001,
                               0.00001,
                               9.99999999999999949e-05,
                               0.000099999999999999995,
                               1e-13,
                               9.99999e-14,
                               1e300,
                               5e-324,
                               2.5,
                               1.000000000000005,
                               1.000000000000015,
                               1e22,
                               0.99999999999999944,
                               0.999999999999999556,
                               12345.678901234567}) {
        EXPECT_EQ(written(value), FormatG(value, 15));
    }
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i) {
        const double value = std::ldexp(static_cast<double>(random() >> (random() % 40)),
                                        -static_cast<int>(random() % 110));
        ASSERT_EQ(written(value), FormatG(value, 15));
        const double decimal = std::round(value * 1000.0) / 1000.0;
        ASSERT_EQ(written(-decimal), FormatG(-decimal, 15));
    }
}

/// Largest distance from the exact values in units of the last place of the magnitude.
double LargestUlp(EDataFormat format, double from, double to)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> first(from, to);
    std::uniform_real_distribution<double> angle(-400.0, 400.0);
    double largest = 0.0;
    for (int i = 0; i < 100000; ++i) {
        double pair[2] = {first(random), angle(random)};
        const long double magnitude = format == EDataFormat::Ma
                                          ? pair[0]
                                          : std::pow(10.0L, static_cast<long double>(pair[0]) / 20);
        const long double radians = pair[1] * (std::numbers::pi_v<long double> / 180);
        const long double re = magnitude * std::cos(radians);
        const long double im = magnitude * std::sin(radians);
        ToRectangular(format, pair, 1);
        const auto ulp = static_cast<long double>(
            std::nextafter(static_cast<double>(magnitude), 1e300) - static_cast<double>(magnitude));
        largest = std::max({largest, static_cast<double>(std::abs(pair[0] - re) / ulp),
                            static_cast<double>(std::abs(pair[1] - im) / ulp)});
    }
    return largest;
}

TEST(Polar, StaysNearTheExactValue)
{
    EXPECT_LT(LargestUlp(EDataFormat::Ma, 0.001, 2.0), 1.5);
    EXPECT_LT(LargestUlp(EDataFormat::Db, -200.0, 60.0), 3.0);
    double exact[] = {2, 90, 2, 180, 2, -90, 2, 360, 2, -270, 1, 1e12, -3, 0};
    ToRectangular(EDataFormat::Ma, exact, 7);
    EXPECT_EQ(std::vector<double>(exact, exact + 10),
              (std::vector<double>{0, 2, -2, 0, 0, -2, 2, 0, 0, 2}));
    EXPECT_NEAR(exact[10], std::cos(std::fmod(1e12, 360.0) * std::numbers::pi / 180), 1e-15);
    EXPECT_EQ(exact[12], -3.0);
    double far[] = {kZeroDb, 10, -20, 0, 5990, 0};
    ToRectangular(EDataFormat::Db, far, 3);
    EXPECT_EQ(far[0], 0.0);
    EXPECT_DOUBLE_EQ(far[2], 0.1);
    EXPECT_NEAR(far[4] / std::pow(10.0, 299.5), 1.0, 1e-13);
    for (const EDataFormat format : {EDataFormat::Ma, EDataFormat::Db}) {
        for (const TComplex value : {TComplex(0, 0), TComplex(-1, 0), TComplex(0.3, -0.4)}) {
            const TComplex polar = FromRectangular(format, value);
            double pair[] = {polar.real(), polar.imag()};
            ToRectangular(format, pair, 1);
            EXPECT_NEAR(std::abs(TComplex(pair[0], pair[1]) - value), 0.0, 3e-16);
        }
    }
}

} // namespace
} // namespace zov::network
