// SPDX-License-Identifier: Apache-2.0
#include "batch/ColumnMapping.h"
#include "batch/ColumnTitles.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace zov::batch {
namespace {

using enum EField;
using enum ERecordType;

TEST(ColumnTitles, RecognisesUsualTitles)
{
    struct SCase
    {
        ERecordType type;
        std::vector<std::string_view> titles;
        std::map<EField, std::uint32_t> columns; ///< the fields that are found, and no others
    };
    const std::vector<SCase> cases = {
        {Capacitor,
         {"PartNo.", "Cnom(nF)", "Tolerance(upper)", "Tolerance(lower)", "S-ParameterFile"},
         {{ModelName, 1}, {Cnom, 2}, {UpperTolerance, 3}, {LowerTolerance, 4}, {FileName, 5}}},
        {Capacitor,
         {"MPN", "Manufacturer", "Capacitance", "Tolerance", "Rated Voltage", "Case Code"},
         {{ModelName, 1},
          {MfgPartNo, 1},
          {Manufacturer, 2},
          {Cnom, 3},
          {UpperTolerance, 4},
          {LowerTolerance, 4},
          {Volt, 5},
          {Size, 6}}},
        {Capacitor,
         {"Part Number", "Size\n (inch)", "Cap, uF"},
         {{ModelName, 1}, {Size, 2}, {Cnom, 3}}},
        {Inductor,
         {"Name", "Value (lower bound)", "Value", "DC Resistance (ohm)", "Current (A)",
          "Manufacturer Part Number"},
         {{ModelName, 6}, {MfgPartNo, 6}, {Inductance, 3}, {Resistance, 4}, {MaxCurrent, 5}}},
        {Resistor,
         {"value", "mfg #1", "P/N #1", "Unit Price (USD)"},
         {{Resistance, 1}, {Manufacturer, 2}, {MfgPartNo, 3}, {ModelName, 3}}},
        {Inductor,
         {"Model Name", "Part No.", "DCR (Ohm) max", "L [uH] typ"},
         {{ModelName, 1}, {MfgPartNo, 2}, {Resistance, 3}}},
        {Capacitor, {"References", "Footprint"}, {{Size, 2}}},
    };
    for (const SCase& c : cases) {
        const CRecognised found = RecogniseTitles(c.titles, c.type);
        for (const SFieldInfo& info : Fields()) {
            const auto wanted = c.columns.find(info.field);
            EXPECT_EQ(found[info.field], wanted == c.columns.end() ? 0 : wanted->second)
                << info.label << " among " << c.titles[0];
        }
    }
}

TEST(ColumnTitles, HonoursUnits)
{
    struct SCase
    {
        std::string_view title;
        EField field;
        std::optional<int> exponent;
    };
    const std::vector<SCase> cases = {
        {"Cnom(nF)", Cnom, -9},
        {"Capacitance [uF]", Cnom, -6},
        {"DC Resistance (ohm)", Resistance, 0},
        {"Current, A", MaxCurrent, 0},
        {"DCR_mOhm", Resistance, -3},
        {"Cap (\xC2\xB5"
         "F)",
         Cnom, -6},
        {"Capacitance in pF", Cnom, -12},
        {"DC Resistance (\xCE\xA9) max.", Resistance, 0},
        {"DCR (max) mOhm", Resistance, -3},
        {"Cap [uF] (typ)", Cnom, -6},
        {"Cap uF (typ)", Cnom, -6},
        {"Value (lower bound)", Inductance, std::nullopt},
        {"R (MOHM)", Resistance, std::nullopt},
        {"Voltage K", Volt, std::nullopt},
        {"Part Number (F)", ModelName, std::nullopt},
    };
    for (const SCase& c : cases) {
        const auto unit = UnitInTitle(c.title, c.field);
        ASSERT_EQ(unit.has_value(), c.exponent.has_value()) << c.title;
        EXPECT_EQ(unit ? unit->exponent : 0, c.exponent.value_or(0)) << c.title;
    }
    EXPECT_EQ(UnitInTitle("Tolerance (%)", UpperTolerance)->tolerance.kind,
              SToleranceUnit::EKind::Percent);
    EXPECT_EQ(UnitInTitle("Tol (pF)", UpperTolerance)->tolerance.kind,
              SToleranceUnit::EKind::Absolute);
}

TEST(ColumnMapping, ReadsLines)
{
    const auto lines = ParseColumnMapping("\xEF\xBB\xBF# columns\r\n"
                                          "Part NO.,PartNumber\r\n"
                                          "\r\n"
                                          " cnom , Cap, nominal \r\n"
                                          "TCC\r\n"
                                          "MfgPartNumber,old\n"
                                          "Mfg.Part No.,Best\xE4tigt",
                                          "m.txt");
    ASSERT_TRUE(lines.Ok()) << lines.Error().Full();
    ASSERT_EQ(lines->size(), 4U);
    EXPECT_EQ((*lines)[0].property, "model name");
    EXPECT_EQ((*lines)[0].field, ModelName);
    EXPECT_EQ((*lines)[0].title, "PartNumber");
    EXPECT_EQ((*lines)[1].title, "Cap, nominal");
    EXPECT_EQ((*lines)[2].field, Tcc);
    EXPECT_EQ((*lines)[2].title, "");
    EXPECT_EQ((*lines)[3].title, "Best\xC3\xA4tigt"); // the later line of a property counts
}

TEST(ColumnMapping, RefusesWhatItDoesNotKnow)
{
    const auto comma = ParseColumnMapping("Cnom,C\n,Size\n", "m.txt");
    ASSERT_FALSE(comma.Ok());
    EXPECT_EQ(comma.Error().text, "Column map file format is wrong,can not start with ',' ");
    EXPECT_EQ(comma.Error().pos.line, 2U);
    EXPECT_TRUE(ParseColumnMapping("Colour\nColour,\n", "m.txt").Ok()); // it maps nothing
    const auto unknown = ParseColumnMapping("Colour,Color\n", "m.txt");
    ASSERT_FALSE(unknown.Ok());
    EXPECT_EQ(unknown.Error().Full().rfind("m.txt:1: unknown property 'Colour'", 0), 0U)
        << unknown.Error().Full();
    EXPECT_NE(unknown.Error().text.find("Upper Tolerance"), std::string::npos);
}

TEST(ColumnMapping, PlansColumnsAndUnits)
{
    SMappingRequest request;
    request.mapping =
        ParseColumnMapping("Part NO.,part  number\nCnom,cap (uF)\nResistance,ESR (Ohm)\n"
                           "Inductance,ESL\nMax Current,I\nSize,CASE SIZE\n",
                           "m")
            .Take();
    request.units[Resistance] = "mOhm";
    request.constants[ModelType] = "RLC";
    const std::vector<std::string_view> titles = {"Case\nSize", "Part Number", "Cap (uF)",
                                                  "ESR (Ohm)", "ESL"};
    CVectorLog log;
    const auto plan = PlanColumns(request, titles, log);
    ASSERT_TRUE(plan.Ok()) << plan.Error().Full(); // "Max Current" is no capacitor's property
    EXPECT_EQ((*plan)[ModelName].column, 2U);
    EXPECT_EQ((*plan)[Cnom].unit.exponent, -6);
    EXPECT_EQ((*plan)[Cnom].unitSource, EUnitSource::Title);
    EXPECT_EQ((*plan)[Resistance].unit.exponent, -3);
    EXPECT_EQ((*plan)[Resistance].unitSource, EUnitSource::Option);
    EXPECT_EQ((*plan)[Inductance].unit.exponent, -9);
    EXPECT_EQ((*plan)[Inductance].unitSource, EUnitSource::Default);
    EXPECT_EQ((*plan)[ModelType].constant, "RLC");
    const std::vector<std::string> expected = {
        "model name <-> part number; column index:2",
        "Cnom <-> cap (uF); column index:3",
        "Resistance <-> ESR (Ohm); column index:4",
        "Inductance <-> ESL; column index:5",
        "Size <-> CASE SIZE; column index:1",
        "[WARNING] Resistance: the title 'ESR (Ohm)' says Ohm, but the option mOhm is used"};
    EXPECT_EQ(log.Lines(), expected);
}

TEST(GeneratorFields, EveryLabelIsFound)
{
    for (const SFieldInfo& info : Fields()) {
        EXPECT_EQ(FindField(info.label), info.field) << info.label;
    }
    EXPECT_EQ(FindField("part no."), ModelName);
    EXPECT_EQ(FindField("UpTolerance"), UpperTolerance);
    EXPECT_EQ(FindField("mfg. part no"), MfgPartNo);
    EXPECT_FALSE(FindField("").has_value());
}

} // namespace
} // namespace zov::batch
