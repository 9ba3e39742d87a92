// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

std::string Model(std::string_view type, std::string_view tables)
{
    return "[Model] m\nModel_type " + std::string(type) + "\n[Voltage Range] 3 2 4\n" +
           std::string(tables);
}

constexpr std::string_view kTurn =
    "[Pulldown]\n-3 -0.3 NA NA\n0 0 NA NA\n3 0.300 NA NA\n6 0.200 NA NA\n";

TEST(CurveShape, EveryRuleFires)
{
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"monotonic", Model("Output", kTurn), "N1408@11"},
        {"monotonic",
         "[Model] m\nModel_type Series\n[Series Current]\n-3 -1.0 NA NA\n0 0 NA NA\n3 -1.0 NA NA\n",
         "N1408@9"},
        {"monotonic",
         "[Submodel] s\nSubmodel_type Dynamic_clamp\n[GND Clamp]\n-3 -1 NA NA\n0 0 NA NA\n"
         "1 -0.50 NA NA\n",
         "N1408@9"},
        {"direction", Model("Output", "[Pulldown]\n-3 0.3 NA NA\n6 -0.6 NA NA\n"), "W1409@7"},
        {"direction", Model("Output", "[Pullup]\n-3 -0.3 NA NA\n6 0.6 NA NA\n"), "W1409@7"},
        {"current-at-zero", Model("Output", "[Pulldown]\n-3 -0.3 NA NA\n0 0.1 NA NA\n6 1 NA NA\n"),
         "N1410@7"},
        {"sweep-range", Model("Output", "[Pulldown]\n0 0 NA NA\n3 0.3 NA NA\n"), "N1411@7"},
        {"all-zero", Model("Output", "[Pulldown]\n-3 0 0 0\n6 0 0 0\n"), "N1412@7"},
        {"current-inside", Model("Output", "[Pulldown]\n-3 -3 NA NA\n3 3 NA NA\n6 4 NA NA\n"),
         "C1413@9"},
        {"current-size", Model("Output", "[Pulldown]\n-3 -3000 NA NA\n6 6000 NA NA\n"), "C1414@9"},
        {"clamp-inside", Model("Input", "[GND Clamp]\n-3 -0.3 NA NA\n3 0.3 NA NA\n"), "N1415@7"},
        {"corners-equal",
         Model("Output", "[Pulldown]\n-3 -0.3 -0.3 -0.3\n0 0 0 0\n6 0.6 0.6 0.6\n"), "N1416@7"},
        {"corner-strength", Model("Output", "[Pulldown]\n-3 -0.3 -0.4 -0.2\n6 0.6 0.8 0.4\n"),
         "W1417@7"},
    };
    for (const auto& c : kCases) {
        ExpectRule({"curve/" + std::string(c.rule), "3.2", c.body, c.expected});
    }
}

TEST(CurveShape, SoundTablesAreSilent)
{
    const std::string_view tables[] = {
        // A driver with clamps, in both directions of the voltage, with NA inside a column.
        "[Pulldown]\n6 0.6 0.4 0.8\n3 0.3 NA 0.4\n-3 -0.3 -0.2 -0.4\n"
        "[Pullup]\n-3 0.3 0.2 0.4\n6 -0.6 -0.4 -0.8\n"
        "[GND Clamp]\n-3 -0.9 -0.8 -1.0\n0 0 0 0\n3 0 0 0\n"
        "[POWER Clamp]\n-3 0.9 0.8 1.0\n0 0 0 0\n",
        // Falls by one unit in the last digit that the file shows.
        "[Pulldown]\n-3 -0.30 NA NA\n0 0.00 NA NA\n3 0.31 NA NA\n6 0.30 NA NA\n"
        "[Pullup]\n-3 0.3 NA NA\n6 -0.6 NA NA\n",
    };
    for (const std::string_view text : tables) {
        const SChecked checked = CheckText(Ibs("3.2", Model("Output", text)));
        EXPECT_EQ(Codes(checked, 1408, 1417), "") << checked.text;
    }
    // The lower table of an ECL output counts down from the supply, as the upper one.
    const SChecked ecl =
        CheckText(Ibs("3.2", Model("Output_ECL", "[Pulldown]\n0 0.02 NA NA\n2.2 -0.02 NA NA\n")));
    EXPECT_EQ(Codes(ecl, 1408, 1417), "") << ecl.text;
}

TEST(CurveShape, FindingsCarryTheirEvidence)
{
    const SChecked alone = CheckText(Ibs("3.2", Model("Output", kTurn)));
    constexpr std::pair<std::string_view, std::string_view> kExpected[] = {
        {"table", "Pulldown"},
        {"corner", "typ"},
        {"row", "4"},
        {"line", "11"},
        {"line-before", "10"},
        {"voltage", "6"},
        {"size", "0.1"},
        {"table-span", "0.6"},
        {"part-of-span", "0.166666667"},
        {"turns", "1"},
        {"sum-with-clamps", "not monotonic"}};
    for (const auto& [name, value] : kExpected) {
        EXPECT_EQ(DetailOf(alone, 1408, name), value) << name;
    }
    EXPECT_EQ(DetailOf(alone, 1505, "lines"), "10 to 11");
    // The clamp takes over where the driver falls.
    const SChecked saved = CheckText(Ibs(
        "3.2", Model("Output", std::string(kTurn) + "[POWER Clamp]\n-3 0.5 NA NA\n0 0 NA NA\n")));
    EXPECT_EQ(DetailOf(saved, 1408, "sum-with-clamps"), "monotonic");
    EXPECT_FALSE(Has(saved, 1505));
}

TEST(CurveShape, EvidenceTellsPlaceSizeAndSum)
{
    std::string many = "[Pulldown]\n";
    for (int i = 0; i < 101; ++i) {
        many += std::to_string(i) + " " + std::to_string(i) + " NA NA\n";
    }
    using TDetails = std::vector<std::pair<std::string_view, std::string_view>>;
    const struct
    {
        int code;
        std::string body;
        TDetails details;
    } kCases[] = {
        {1403,
         "[Pulldown]\n0 0 NA NA\n",
         {{"table", "Pulldown"},
          {"rows", "1"},
          {"lines", "8"},
          {"size", "1 rows"},
          {"part-of-limit", "0.5"},
          {"sum-with-clamps", "built without this table: one row is no curve"}}},
        {1404,
         many,
         {{"rows", "101"}, {"lines", "8 to 108"}, {"line-surplus", "108"}, {"voltage", "100"}}},
        {1405,
         "[Pulldown]\n-3 NA NA NA\n0 0 NA NA\n6 0.6 NA NA\n",
         {{"corner", "typ"},
          {"lines", "8 to 10"},
          {"line", "8"},
          {"voltage", "-3"},
          {"numbers-from", "0"},
          {"size", "3"},
          {"part-of-sweep", "0.333333333"}}},
        {1406,
         "[Pulldown]\n-3 -0.3 NA NA\n0 0 NA NA\n0 0.1 NA NA\n6 0.6 NA NA\n",
         {{"corner", "typ"},
          {"row", "3"},
          {"line", "10"},
          {"voltage", "0"},
          {"size", "0.1"},
          {"part-of-span", "0.111111111"},
          {"sum-with-clamps", "monotonic"}}},
        {1407,
         "[Pulldown]\n-3 -0.3 NA NA\n0 0 NA NA\n-1 0.1 NA NA\n6 0.6 NA NA\n",
         {{"row", "3"},
          {"line-before", "9"},
          {"size", "1"},
          {"part-of-sweep", "0.111111111"},
          {"sum-with-clamps", "built without this table: its voltages don't go one way"}}},
        {1411,
         "[Pulldown]\n0 0 NA NA\n4 0.4 NA NA\n",
         {{"lines", "8 to 9"},
          {"voltage", "0"},
          {"missing-above", "2"},
          {"size", "3"},
          {"part-of-sweep", "0.75"},
          {"sum-with-clamps", "monotonic"}}},
        {1416,
         "[Pulldown]\n-3 -0.3 -0.3 -0.3\n0 0 0 0\n6 0.6 0.6 0.6\n",
         {{"rows", "3"},
          {"lines", "8 to 10"},
          {"voltage", "3"},
          {"current", "0.3"},
          {"supplies-min", "2"},
          {"supplies-max", "4"},
          {"table-span", "0.9"},
          {"sum-with-clamps", "monotonic"}}},
        {1417,
         "[Pulldown]\n-3 -0.3 -0.4 -0.2\n6 0.6 0.8 0.4\n",
         {{"lines", "8 to 9"}, {"voltage", "3"}, {"sum-with-clamps", "monotonic"}}},
    };
    for (const auto& c : kCases) {
        const SChecked checked = CheckText(Ibs("3.2", Model("Output", c.body)));
        for (const auto& [name, value] : c.details) {
            EXPECT_EQ(DetailOf(checked, c.code, name), value) << c.code << ' ' << name;
        }
    }
    const SChecked submodel =
        CheckText(Ibs("3.2", "[Submodel] s\nSubmodel_type Dynamic_clamp\n[GND Clamp]\n-3 -1 NA NA\n"
                             "0 0 NA NA\n1 -0.50 NA NA\n"));
    EXPECT_EQ(DetailOf(submodel, 1408, "sum-with-clamps"),
              "not built: the supplies are those of the models that use the submodel");
}

} // namespace

} // namespace zov::ibischk::test
