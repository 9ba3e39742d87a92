// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "core/ZovLibrary.h"
#include "support/Libraries.h"

#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace zov {
namespace {

TEST(RecordTypes, TablesHoldTogether)
{
    for (const SRecordTypeInfo& info : RecordTypes()) {
        EXPECT_EQ(FindRecordType(static_cast<std::uint32_t>(info.type)), &info);
        EXPECT_EQ(FindRecordType(info.element), &info);
        std::set<EPropId> seen;
        for (const EPropId id : PropertiesOf(info.type)) {
            EXPECT_NE(FindProperty(id), nullptr) << static_cast<int>(id);
            EXPECT_TRUE(seen.insert(id).second)
                << info.name << " lists " << static_cast<int>(id) << " twice";
        }
    }
    EXPECT_EQ(FindRecordType(0x2000003U), nullptr);
    EXPECT_EQ(FindProperty(static_cast<EPropId>(4)), nullptr);
    EXPECT_EQ(FindProperty(static_cast<EPropId>(-1)), nullptr);
    EXPECT_EQ(HelpTopicOf(EModelPage::Impedance), "ZOVImpedancesModels");
    EXPECT_EQ(HelpTopicOf(static_cast<EModelPage>(99)), "firstpage");
}

/// The property table against a plain map, through a long random history.
TEST(Record, PropertyTableBehavesLikeAMap)
{
    test::CRandomLibrary random(11);
    CZovLibrary library;
    CZovRcdProps& record = library.Add(ERecordType::Capacitor);
    std::map<EPropId, std::string> texts;
    std::map<EPropId, double> numbers;
    for (int step = 0; step < 5000; ++step) {
        const SPropInfo& info = Properties()[random.Below(Properties().size())];
        if (info.kind == EPropKind::Composite) {
            continue;
        }
        if (random.Below(3) == 0) {
            record.Remove(info.id);
            texts.erase(info.id);
            numbers.erase(info.id);
        } else if (info.kind == EPropKind::Double) {
            const double value = random.Value();
            record.SetDouble(info.id, value);
            numbers[info.id] = value;
        } else {
            const std::string text = random.Word();
            record.SetString(info.id, text);
            texts[info.id] = text;
        }
        for (const SPropInfo& other : Properties()) {
            if (other.kind == EPropKind::Double) {
                const auto found = numbers.find(other.id);
                ASSERT_EQ(record.GetDouble(other.id),
                          found == numbers.end() ? std::nullopt : std::optional(found->second));
            } else if (other.kind != EPropKind::Composite) {
                ASSERT_EQ(record.GetString(other.id), texts[other.id]) << other.name;
            }
        }
    }
}

TEST(Record, TextsAreCleaned)
{
    CZovLibrary library;
    CZovRcdProps& record = library.Add(ERecordType::Ic);
    record.SetString(EPropId::Manuf, "W\xFCrfel");
    EXPECT_EQ(record.GetString(EPropId::Manuf), "Würfel");
    record.SetString(EPropId::Manuf, std::string_view("a\0b", 3));
    EXPECT_EQ(record.GetString(EPropId::Manuf), "ab");
    record.SetString(EPropId::Manuf, "");
    EXPECT_FALSE(record.Has(EPropId::Manuf));
}

TEST(Record, Summaries)
{
    CZovLibrary library;
    CDisplayUnits units;
    units.Set(EQuantity::Capacitance, "pF");
    const SDiscreteModel plain{false, "", "", 0.005, 4e-10, 1e-7};
    CZovRcdProps& c = library.Add(ERecordType::Capacitor);
    c.SetDiscreteModel(plain);
    c.SetDouble(EPropId::Cnom, 1e-7);
    EXPECT_EQ(SummaryOf(c, {}), "R:5mOhm L:0.4nH C:100nF");
    EXPECT_EQ(SummaryOf(c, units), "R:5mOhm L:0.4nH C:100000pF");
    EXPECT_EQ(SearchSummaryOf(c, {}), "Cnom:100nF");
    CZovRcdProps& l = library.Add(ERecordType::Inductor);
    l.SetDiscreteModel({false, "", "", 0.25, 1e-6, {}});
    EXPECT_EQ(SummaryOf(l, {}), "R:250mOhm L:1000nH");
    EXPECT_EQ(l.GetDouble(EPropId::Inductance), 1e-6);
    CZovRcdProps& r = library.Add(ERecordType::Resistor);
    r.SetDiscreteModel({false, "", "", 10.0, {}, {}});
    EXPECT_EQ(SummaryOf(r, {}), "R:10000mOhm");
    r.SetDiscreteModel({true, "r.s2p", "", {}, {}, {}});
    EXPECT_EQ(SummaryOf(r, {}), "");
    EXPECT_FALSE(r.Has(EPropId::Resistance));
    EXPECT_EQ(SummaryOf(SThermalModel{2.5, 0, 0, 0, 0}, {}), "Power Dissipation: 2.5W");
}

TEST(Record, SizeCodes)
{
    struct SCase
    {
        const char* size;
        const char* code;
        const char* unit;
    };
    for (const SCase& c :
         {SCase{"0402E", "0402", "0"}, SCase{"1005M", "1005", "1"}, SCase{"0402", "0402", "1"},
          SCase{"0402e", "0402", "0"}, SCase{"", "", "1"}}) {
        EXPECT_EQ(SplitSize(c.size).code, c.code);
        EXPECT_EQ(SplitSize(c.size).unit, c.unit);
    }
    EXPECT_EQ(JoinSize("0402", "0"), "0402E");
    EXPECT_EQ(JoinSize("1005", "1"), "1005M");
    EXPECT_EQ(JoinSize("1005", ""), "1005");
}

TEST(Units, ReadsAndShowsQuantities)
{
    struct SCase
    {
        EQuantity quantity;
        const char* text;
        std::optional<double> value;
    };
    using enum EQuantity;
    const SCase cases[] = {
        {Capacitance, "100nF", 1e-7},
        {Capacitance, "2.2 uF", 2.2e-6},
        {Capacitance, "4.7µF", 4.7e-6},
        {Capacitance, "1e-9", 1e-9},
        {Capacitance, "10p", 1e-11},
        {Capacitance, "10PF", 1e-11},
        {Capacitance, "10H", {}},
        {Capacitance, "nF", {}},
        {Resistance, "5mOhm", 5e-3},
        {Resistance, "5MOhm", 5e6},
        {Resistance, "5MOHM", {}},
        {Resistance, "5OHM", 5.0},
        {Resistance, "5Ω", 5.0},
        {Resistance, "5mΩ", 5e-3},
        {Resistance, "4.7 kOhms", 4700.0},
        {Tolerance, "5%", 0.05},
        {Tolerance, "5", 0.05},
        {Tolerance, "5 pF", {}},
        {None, "5", 5.0},
        {None, "5x", {}},
        {Time, "20ps", 2e-11},
        {Frequency, "1.5GHz", 1.5e9},
        {Inductance, "0.4nH", 4e-10},
        {Voltage, "-3.3V", -3.3},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(ParseQuantity(c.text, c.quantity), c.value) << c.text;
    }
    EXPECT_EQ(FormatQuantity(0.05, Tolerance, {}), "5%");
    EXPECT_EQ(FormatQuantity(1e-7, Capacitance, {}), "100nF");
    for (const EQuantity quantity :
         {Resistance, Inductance, Capacitance, Voltage, Current, Time, Frequency, Power}) {
        for (const SUnit& unit : UnitsOf(quantity)) {
            CDisplayUnits units;
            ASSERT_TRUE(units.Set(quantity, unit.suffix));
            for (const double value : {1.0, 4.7e-6, 123.456, 1e-12}) {
                const std::string shown = FormatQuantity(value, quantity, units);
                EXPECT_EQ(FormatQuantity(ParseQuantity(shown, quantity).value(), quantity, units),
                          shown);
            }
        }
    }
}

TEST(Library, FindsByNameAndTypeThroughEveryChange)
{
    CZovLibrary library;
    test::CRandomLibrary random(5);
    const auto scan = [&](ERecordType type, const std::string& name) -> const CZovRcdProps* {
        for (const CZovRcdProps* record : library.Records()) {
            if ((type == ERecordType::Any || record->Type() == type) &&
                EqualsNoCase(record->Name(), name)) {
                return record;
            }
        }
        return nullptr;
    };
    for (int step = 0; step < 3000; ++step) {
        const std::string name = (random.Maybe() ? "C" : "c") + std::to_string(random.Below(40));
        const ERecordType type = RecordTypes()[random.Below(8)].type;
        switch (random.Below(8)) {
        case 0:
            if (library.Count() > 60) {
                library.Remove(library.At(random.Below(library.Count())));
            }
            break;
        case 1:
            if (library.Count() != 0) {
                library.At(random.Below(library.Count())).SetString(EPropId::ModelName, name);
            }
            break;
        case 2:
        case 3:
            library.Add(type).SetString(EPropId::ModelName, name);
            break;
        default:
            ASSERT_EQ(library.Find(type, name), scan(type, name)) << "step " << step;
            ASSERT_EQ(library.Find(ERecordType::Any, name), scan(ERecordType::Any, name))
                << "step " << step;
        }
    }
}

TEST(Library, ReplacingRecordsUnderTheirNamesCostsNoNewIndexEach)
{
    constexpr int kCount = 20'000; // with an index each this takes minutes
    CZovLibrary library;
    CZovLibrary imported;
    for (int i = 0; i < kCount; ++i) {
        library.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "r-" + std::to_string(i));
        imported.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "R-" + std::to_string(i));
    }
    const auto start = std::chrono::steady_clock::now();
    for (const CZovRcdProps* record : imported.Records()) {
        CZovRcdProps* found = library.Find(ERecordType::Resistor, record->Name());
        ASSERT_NE(found, nullptr);
        library.Replace(*found, *record);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(library.At(7).Name(), "R-7");
    library.At(7).SetString(EPropId::ModelName, "other");
    EXPECT_EQ(library.Find(ERecordType::Resistor, "R-7"), nullptr);
    EXPECT_EQ(library.Find(ERecordType::Resistor, "OTHER"), &library.At(7));
}

TEST(Library, CopiesBetweenLibraries)
{
    const CZovLibrary source = test::CRandomLibrary(9).Make(50, true);
    CZovLibrary target;
    for (const CZovRcdProps* record : source.Records()) {
        EXPECT_TRUE(SameProperties(target.AddCopy(*record), *record));
    }
    CZovRcdProps& first = target.At(0);
    CZovRcdProps& other = target.Add(first.Type());
    other.SetString(EPropId::Lookup, "gone after the replacement");
    target.Replace(other, source.At(0));
    EXPECT_TRUE(SameProperties(other, source.At(0)));
}

} // namespace
} // namespace zov
