// SPDX-License-Identifier: Apache-2.0
#include "batch/CellValue.h"

#include "batch/CaseSize.h"
#include "batch/CellTolerance.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace zov::batch {
namespace {

using enum EQuantity;

constexpr SColumnUnit kSi{0, false};
constexpr SColumnUnit kNano{-9, false};
constexpr SColumnUnit kMilli{-3, false};
constexpr SColumnUnit kFromCell{0, true};

TEST(CellValue, ReadsWhatPeopleWrite)
{
    struct SCase
    {
        std::string_view text;
        EQuantity quantity;
        SColumnUnit unit;
        double value;
    };
    const std::vector<SCase> cases = {
        {"100", Capacitance, kNano, 100e-9},
        {"0.1", Capacitance, kNano, 1e-10},
        {"1E-07", Capacitance, kSi, 1e-7},
        {" 4.7uF ", Capacitance, kNano, 4.7e-6},
        {"4u7", Capacitance, kNano, 4.7e-6},
        {"4u7F", Capacitance, kNano, 4.7e-6},
        {"p47", Capacitance, kNano, 0.47e-12},
        {"100 nF", Capacitance, kSi, 100e-9},
        {"100N", Capacitance, kSi, 100e-9},
        {"2.2UF", Capacitance, kSi, 2.2e-6},
        {"10 \xC2\xB5"
         "F",
         Capacitance, kNano, 10e-6},
        {"10\xCE\xBC", Capacitance, kNano, 10e-6},
        {"0.1 microfarads", Capacitance, kNano, 0.1e-6},
        {"22pF (C0G)", Capacitance, kNano, 22e-12},
        {"\xC2\xA0"
         "33\xC2\xA0nF\xE2\x80\xAF",
         Capacitance, kNano, 33e-9},
        {"1,000", Capacitance, kNano, 1e-6},
        {"1,234,567.5", Resistance, kSi, 1234567.5},
        {"1.234.567,5", Resistance, kSi, 1234567.5},
        {"1 000 000", Resistance, kSi, 1e6},
        {"1'500", Resistance, kSi, 1500},
        {"0,1", Capacitance, kNano, 1e-10},
        {"0,100", Capacitance, kNano, 1e-10},
        {"4,7uF", Capacitance, kNano, 4.7e-6},
        {"10k", Resistance, kMilli, 1e4},
        {"10 k\xE2\x84\xA6", Resistance, kMilli, 1e4},
        {"10 k Ohm", Resistance, kMilli, 1e4},
        {"4K7", Resistance, kMilli, 4700},
        {"0R1", Resistance, kMilli, 0.1},
        {"R047", Resistance, kMilli, 0.047},
        {"1R", Resistance, kMilli, 1},
        {"47E", Resistance, kMilli, 47},
        {"47E3", Resistance, kSi, 47000},
        {"0", Resistance, kMilli, 0},
        {"1M", Resistance, kSi, 1e6},
        {"2.2MEG", Resistance, kSi, 2.2e6},
        {"20 m\xCE\xA9 max", Resistance, kSi, 0.02},
        {"5 mOhms", Resistance, kSi, 0.005},
        {"100", Resistance, kMilli, 0.1},
        {"2.2uH", Inductance, kNano, 2.2e-6},
        {"4n7", Inductance, kNano, 4.7e-9},
        {"1MH", Inductance, kNano, 1e-3},
        {"6V3", Voltage, kSi, 6.3},
        {"50 VDC", Voltage, kSi, 50},
        {"2kV", Voltage, kSi, 2000},
        {"500MA", Current, kSi, 0.5},
        {"1.2 A", Current, kMilli, 1.2},
        {"350", Current, kMilli, 0.35},
        {"10 nF", Capacitance, kFromCell, 10e-9},
        {"$0.28", None, kSi, 0.28},
        {"0,05 EUR", None, kSi, 0.05},
    };
    for (const SCase& c : cases) {
        const SCellReading reading = ReadQuantity(c.text, c.quantity, c.unit);
        EXPECT_EQ(reading.state, ECell::Value) << c.text << ": " << reading.why;
        EXPECT_EQ(reading.value, c.value) << c.text;
    }
}

TEST(CellValue, WordsForNothingAreEmptyAndTheRestIsNeverZero)
{
    for (const char* text : {"", "  ", "-", "--", "N/A", "na", "NULL", "n.a.", "None"}) {
        EXPECT_EQ(ReadQuantity(text, Capacitance, kNano).state, ECell::Empty) << text;
    }
    struct SBad
    {
        std::string_view text;
        EQuantity quantity;
        SColumnUnit unit;
    };
    const std::vector<SBad> cases = {
        {"abc", Capacitance, kNano},     {"100nF/50V", Capacitance, kNano},
        {"3A 22uH", Inductance, kNano},  {"10mA", Resistance, kMilli},
        {"10 MOHM", Resistance, kMilli}, {"10MF", Capacitance, kNano},
        {"10", Capacitance, kFromCell},  {"-5", Resistance, kMilli},
        {"1,23,4", Resistance, kMilli},  {"1,000.000,5", Resistance, kMilli},
        {"#N/A", Capacitance, kNano},    {"#REF!", None, kSi},
        {"4R7", Inductance, kNano},      {"1e999", Resistance, kMilli},
        {"1e-400", Resistance, kMilli},  {"5e-324", Capacitance, kNano},
        {"10 20", Resistance, kMilli},   {"<10", Resistance, kMilli},
        {"0x10", Resistance, kMilli},    {"inf", Resistance, kMilli},
        {".", Resistance, kMilli},       {"u", Capacitance, kNano},
        {"10k", Capacitance, kNano},     {"4.7 kH", Inductance, kNano},
    };
    for (const SBad& c : cases) {
        const SCellReading reading = ReadQuantity(c.text, c.quantity, c.unit);
        EXPECT_EQ(reading.state, ECell::Bad) << c.text << " gave " << reading.value;
        EXPECT_FALSE(reading.why.empty()) << c.text;
    }
}

TEST(CellTolerance, ReadsBothSides)
{
    using enum SToleranceUnit::EKind;
    struct SCase
    {
        std::string_view text;
        SToleranceUnit unit;
        std::optional<double> up;
        std::optional<double> low;
    };
    const SToleranceUnit unknown;
    const SToleranceUnit percent{Percent, -2};
    const SToleranceUnit picofarads{Absolute, -12};
    const std::vector<SCase> cases = {
        {"10%", unknown, 0.1, 0.1},
        {"10", unknown, 0.1, 0.1},
        {"0.1", unknown, 0.1, 0.1},
        {"0.1", percent, 0.001, 0.001},
        {"0.5", picofarads, 0.05, 0.05},
        {"\xC2\xB1"
         "5%",
         unknown, 0.05, 0.05},
        {"+/-2.5 %", unknown, 0.025, 0.025},
        {"+-20%", unknown, 0.2, 0.2},
        {"-20%/+80%", unknown, 0.8, 0.2},
        {"+80/-20%", unknown, 0.8, 0.2},
        {"+80% -20%", unknown, 0.8, 0.2},
        {"80%, -20%", unknown, 0.8, 0.2},
        {"+80%", unknown, 0.8, std::nullopt},
        {"-20%", unknown, std::nullopt, 0.2},
        {"K", unknown, 0.1, 0.1},
        {"z", unknown, 0.8, 0.2},
        {"K (\xC2\xB1"
         "10%)",
         unknown, 0.1, 0.1},
        {"\xC2\xB1"
         "10% (K)",
         unknown, 0.1, 0.1},
        {"J \xC2\xB1"
         "5%",
         unknown, 0.05, 0.05},
        {"\xC2\xB1"
         "0.1pF",
         unknown, 0.01, 0.01},
        {"C", unknown, 0.025, 0.025},
        {"0,5%", unknown, 0.005, 0.005},
    };
    for (const SCase& c : cases) {
        const SToleranceReading reading = ReadTolerance(c.text, Capacitance, 10e-12, c.unit);
        ASSERT_EQ(reading.state, ECell::Value) << c.text << ": " << reading.why;
        ASSERT_EQ(reading.up.has_value(), c.up.has_value()) << c.text;
        ASSERT_EQ(reading.low.has_value(), c.low.has_value()) << c.text;
        EXPECT_DOUBLE_EQ(reading.up.value_or(-1), c.up.value_or(-1)) << c.text;
        EXPECT_DOUBLE_EQ(reading.low.value_or(-1), c.low.value_or(-1)) << c.text;
    }
    for (const char* text : {"80/20", "10% 50V", "Q", "tight", "+", "-10%/-20%", "5 V", "1e999%"}) {
        EXPECT_EQ(ReadTolerance(text, Capacitance, 10e-12, unknown).state, ECell::Bad) << text;
    }
    EXPECT_EQ(ReadTolerance("\xC2\xB1"
                            "0.1pF",
                            Capacitance, std::nullopt, unknown)
                  .state,
              ECell::Bad);
    EXPECT_TRUE(ReadTolerance("0.1", Capacitance, 1e-9, unknown).takenAsFraction);
}

TEST(CaseSize, FindsTheCode)
{
    using enum ESizeSystem;
    struct SCase
    {
        std::string_view text;
        ESizeSystem system;
        std::string_view size;
    };
    const std::vector<SCase> cases = {
        {"0603", FromFile, "0603E"},
        {"0402E", FromFile, "0402E"},
        {"0402e", Metric, "0402E"},
        {"1005M", FromFile, "1005M"},
        {"1005", FromFile, "1005M"},
        {"3216", FromFile, "3216M"},
        {"0603", Metric, "0603M"},
        {"1206", English, "1206E"},
        {"402", FromFile, "0402E"},
        {"805", English, "0805E"},
        {"01005", FromFile, "01005E"},
        {"_0603", FromFile, "0603E"},
        {"C_0402_1005Metric", FromFile, "0402E"},
        {"C_0402_1005Metric", Metric, "1005M"},
        {"0603 (1608 Metric)", FromFile, "0603E"},
        {"01005 (0402 Metric)", FromFile, "01005E"},
        {"CAP 0402/1005", FromFile, "0402E"},
        {"R0603", FromFile, "0603E"},
        {"1608 metric", FromFile, "1608M"},
        {"7343", English, "7343E"},
        {"Radial, Can", English, "Radial, CanE"},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(ReadSize(c.text, c.system).size, c.size) << c.text;
    }
    EXPECT_TRUE(ReadSize("402", FromFile).completed);
    EXPECT_TRUE(ReadSize("Radial, Can", FromFile).unknown);
    EXPECT_EQ(ReadSize("", FromFile).state, ECell::Empty);
    for (const char* text : {"THT", "123", "A", "#REF!"}) {
        EXPECT_EQ(ReadSize(text, FromFile).state, ECell::Bad) << text;
    }
}

} // namespace
} // namespace zov::batch
