// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"
#include "ibischk/loadline.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

// A driver of 10 ohm to either rail of 3 V: into 50 ohm to ground it swings from 0 to 2.5 V.
constexpr std::string_view kDriver =
    "[Model] m\nModel_type Output\nVmeas = 1.5\nVref = 0\nRref = 50\nC_comp 5p NA NA\n"
    "[Voltage Range] 3 NA NA\n[Pulldown]\n-3 -0.3 NA NA\n6 0.6 NA NA\n"
    "[Pullup]\n-3 0.3 NA NA\n6 -0.6 NA NA\n"
    "[Ramp]\ndV/dt_r 1.5/0.5n NA NA\ndV/dt_f 1.5/0.5n NA NA\n";

std::string Wave(std::string_view rows)
{
    return std::string(kDriver) + "[Rising Waveform]\nR_fixture = 50\nV_fixture = 0\n" +
           std::string(rows);
}

std::string Swapped(std::string_view from, std::string_view to)
{
    std::string body(kDriver);
    return body.replace(body.find(from), from.size(), to);
}

/// The edge with the supply current at its end.
std::string Current(std::string_view last)
{
    return Wave("0 0 NA NA\n1n 0 NA NA\n2n 2.5 NA NA\n3n 2.5 NA NA\n[Composite Current]\n"
                "0 0 NA NA\n3n ") +
           std::string(last) + " NA NA\n";
}

/// With all corners, and these rows of the pulldown.
std::string Corners(std::string_view pulldown)
{
    return "[Model] m\nModel_type Output\n[Voltage Range] 3 3 3\n[Pulldown]\n" +
           std::string(pulldown) + "[Pullup]\n-3 0.3 0.2 0.4\n6 -0.6 -0.4 -0.8\n";
}

TEST(Consistency, GoodDriverIsSilent)
{
    const SChecked checked = CheckText(Ibs("3.2", Wave("0 0 NA NA\n1n 0 NA NA\n2n 2.5 NA NA\n"
                                                       "3n 2.5 NA NA\n")));
    EXPECT_EQ(Codes(checked, 1500, 1599), "");
    const std::string silent[] = {
        Current("0.05"),
        std::string(kDriver) + "[ISSO PD]\n-3 0.3 NA NA\n3 0.3 NA NA\n",
        Corners("-3 -0.3 -0.2 -0.4\n6 0.6 0.4 0.8\n"),
        // A termination of 5 kohm runs through both rails.
        std::string(kDriver) + "[POWER Clamp]\n-3 0.0006 NA NA\n9 -0.0018 NA NA\n",
    };
    for (const std::string& body : silent) {
        const SChecked good = CheckText(Ibs("5.1", body));
        EXPECT_EQ(Codes(good, 1500, 1599), "") << good.text;
    }
}

TEST(Consistency, EveryRuleFires)
{
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"waveform-end", Wave("0 0 NA NA\n2n 2.4 NA NA\n"), "W1501@20"},
        {"waveform-end-far", Wave("0 0 NA NA\n2n 2.0 NA NA\n"), "E1502@20"},
        {"fixture-swing",
         std::string(kDriver) + "[Rising Waveform]\nR_fixture = 1m\n"
                                "V_fixture = 0\n0 0 NA NA\n1n 1 NA NA\n",
         "N1503@20"},
        {"vmeas-reach", Swapped("Vmeas = 1.5", "Vmeas = 2.8"), "W1504@4"},
        {"sum-monotonic", Swapped("6 0.6 NA", "3 0.300 NA NA\n6 0.200 NA"), "W1505@4"},
        {"sum-monotonic", Swapped("6 0.6 NA", "3 0.30000 NA NA\n6 0.29990 NA"), "N1505@4"},
        {"rest-level", Swapped("-3 -0.3 NA NA\n6 0.6", "-3 -0.5 NA NA\n6 0.4"), "N1506@4"},
        {"clamps-twice",
         std::string(kDriver) + "[GND Clamp]\n-3 -0.3 NA NA\n0 0 NA NA\n3 0 NA NA\n", "W1507@4"},
        {"ramp-swing", Swapped("dV/dt_r 1.5", "dV/dt_r 1.0"), "N1509@17"},
        {"ramp-swing", Swapped("dV/dt_r 1.5", "dV/dt_r 0.1"), "W1509@17"},
        {"corner-supply", Swapped("6 0.6 NA", "6 0.6 0.5"), "W1511@4"},
        {"corner-tables", Wave("0 0 0 NA\n2n 2.5 2.5 NA\n"), "N1512@20"},
        {"corner-supply", Swapped("dV/dt_r 1.5/0.5n NA", "dV/dt_r 1.5/0.5n 1/1n"), "W1511@4"},
        {"clamp-foreign",
         std::string(kDriver) + "[POWER Clamp]\n-3 0.1 NA NA\n0 0 NA NA\n3 0 NA NA\n4 -0.1 NA NA\n",
         "N1508@24"},
        {"ramp-slew", Wave("0 0 NA NA\n1n 0 NA NA\n11n 2.5 NA NA\n12n 2.5 NA NA\n"), "N1510@17"},
        {"isso-saturation", std::string(kDriver) + "[ISSO PD]\n-3 0.5 NA NA\n3 0.5 NA NA\n",
         "N1513@20"},
        {"corner-strength", Corners("-3 -0.3 -0.4 -0.2\n6 0.6 0.8 0.4\n"), "N1514@4"},
        {"current-rest", Current("0.2"), "N1515@27"},
        {"threshold-rails",
         "[Model] m\nModel_type Input\nVinl = 0.8\nVinh = 3.5\n[Voltage Range] 3 NA NA\n",
         "C1516@4"},
    };
    for (const auto& c : kCases) {
        const bool late = c.rule == "isso-saturation" || c.rule == "current-rest";
        ExpectRule(
            {"consistency/" + std::string(c.rule), late ? "5.1" : "3.2", c.body, c.expected});
    }
}

TEST(Consistency, FindingsCarryTheirNumbers)
{
    const SChecked checked = CheckText(Ibs("3.2", Wave("0 0 NA NA\n2n 2.4 NA NA\n")));
    const auto found = std::ranges::find(checked.findings, 1501, &STaken::code);
    ASSERT_NE(found, checked.findings.end());
    EXPECT_EQ(found->corner, "typ");
    EXPECT_EQ(found->table, "Rising Waveform");
    const std::pair<std::string, std::string> part{"part-of-swing", "0.04"};
    EXPECT_NE(std::ranges::find(found->details, part), found->details.end());

    using TDetails = std::vector<std::pair<std::string_view, std::string_view>>;
    const struct
    {
        int code;
        std::string body;
        TDetails details;
    } kCases[] = {
        {1506,
         Swapped("-3 -0.3 NA NA\n6 0.6", "-3 -0.5 NA NA\n6 0.4"),
         {{"state", "driven low"},
          {"voltage", "1.99998"},
          {"expected", "0"},
          {"part-of-supply", "0.66666"},
          {"rows", "1 to 2"},
          {"lines", "12 to 13"},
          {"sum-with-clamps", "monotonic"}}},
        {1507,
         std::string(kDriver) + "[GND Clamp]\n-3 -0.3 NA NA\n0 0 NA NA\n3 0 NA NA\n",
         {{"corner", "typ"},
          {"voltage", "-1.5"},
          {"lines", "12 to 13"},
          {"size", "0.15"},
          {"part-of-span", "0.166666667"},
          {"sum-with-clamps", "monotonic"}}},
        {1511,
         Swapped("dV/dt_r 1.5/0.5n NA NA", "dV/dt_r 1.5/0.5n 1.2/1n 1.8/1n"),
         {{"corner", "min"},
          {"supplies-na", "pullup, power clamp"},
          {"table", "Ramp"},
          {"line", "17"},
          {"size", "1.2"},
          {"sum-with-clamps", "not built: a supply of the corner is NA or not given"}}},
        {1512,
         Wave("0 0 0 NA\n2n 2.5 2.5 NA\n"),
         {{"table", "Rising Waveform"},
          {"corner", "min"},
          {"lines", "23 to 24"},
          {"size", "2.5"},
          {"table-na", "Pulldown"}}},
        {1310,
         Wave("0 0 NA NA\n1n 1 NA NA\n2n 2.5 NA NA\n3n 2.5 NA NA\n"),
         {{"row", "1 to 2"}, {"line", "23 to 24"}, {"until", "3e-09"}, {"part-of-swing", "0.4"}}},
        {1307,
         Wave("0 0 NA NA\n2n 2.5 NA NA\n1n 2.5 NA NA\n"),
         {{"table", "Rising Waveform"}, {"row", "3"}, {"line", "25"}, {"size", "1e-09"}}},
        {1501,
         Wave("0 0 NA NA\n2n 2.4 NA NA\n"),
         {{"row", "2"}, {"line", "24"}, {"size", "0.1"}, {"sum-with-clamps", "monotonic"}}},
    };
    for (const auto& c : kCases) {
        const SChecked one = CheckText(Ibs("3.2", c.body));
        for (const auto& [name, value] : c.details) {
            EXPECT_EQ(DetailOf(one, c.code, name), value) << c.code << ' ' << name;
        }
    }
    // Both corners in one finding.
    EXPECT_EQ(Codes(CheckText(Ibs("3.2", kCases[2].body)), 1511, 1511), "W1511@4");
}

TEST(LoadLine, RoundingOfTheFileIsNoFall)
{
    // Each current is right to its last digit; the sum falls by one of them.
    const std::string body = "[Model] m\nModel_type Input\nVinl = 0.8\nVinh = 2\nC_comp 5p NA NA\n"
                             "[Voltage Range] 3 NA NA\n[GND Clamp]\n-3 -0.10 NA NA\n0 0.00 NA NA\n"
                             "1 0.00 NA NA\n2 0.01 NA NA\n3 0.01 NA NA\n[POWER Clamp]\n"
                             "-3 0.30 NA NA\n1 0.02 NA NA\n2 0.03 NA NA\n6 0.03 NA NA\n";
    EXPECT_FALSE(Has(CheckText(Ibs("3.2", body)), 1505));
    EXPECT_DOUBLE_EQ(LastDigitOf("-12.50mA"), 1e-5);
    EXPECT_DOUBLE_EQ(LastDigitOf("1.5e-3"), 1e-4);
    EXPECT_EQ(LastDigitOf("NA"), 0.0);
}

} // namespace

} // namespace zov::ibischk::test
