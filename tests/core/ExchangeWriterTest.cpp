// SPDX-License-Identifier: Apache-2.0
/// The exchange text to the letter, and what comes back from it.
#include "base/Number.h"
#include "core/ExchangeBuffer.h"
#include "core/ExchangeSupport.h"
#include "support/TempFolder.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace zov {
namespace {

constexpr std::string_view kStart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ZOV_Lib Version = \"1.5\">\n";

/// The document around records of one type.
std::string Document(ERecordType type, const std::string& records)
{
    const auto in = [&](ERecordType wanted) { return wanted == type ? records : std::string(); };
    return std::string(kStart) + "\n<ICs>\n" + in(ERecordType::Ic) +
           "</ICs>\n\n<Discretes>\n<Capacitors>\n" + in(ERecordType::Capacitor) +
           "</Capacitors>\n\n<Inductors>\n" + in(ERecordType::Inductor) +
           "\n</Inductors>\n\n<Resistors>\n" + in(ERecordType::Resistor) +
           "\n</Resistors>\n</Discretes>\n\n<VRMs>\n" + in(ERecordType::Vrm) +
           "</VRMs>\n\n<GeneralSPICE>\n" + in(ERecordType::Spice) +
           "</GeneralSPICE>\n\n<Packages>\n" + in(ERecordType::Package) +
           "</Packages>\n\n<Connectors>\n" + in(ERecordType::Connector) +
           "</Connectors>\n</ZOV_Lib>\n";
}

struct SCase
{
    ERecordType type;
    std::function<void(CZovRcdProps&)> fill;
    const char* records;
};

const char* const kHead =
    " ModelName=\"N\" SubModel=\"\" Manuf=\"\" MfgPartNumber=\"\" Lookup=\"\"";

std::vector<SCase> Cases()
{
    return {
        {ERecordType::Any, {}, ""},
        {ERecordType::Capacitor,
         [](CZovRcdProps& r) {
             r.SetString(EPropId::Size, "0402E");
             r.SetDouble(EPropId::UpTolerance, 0.05);
             r.SetDouble(EPropId::Cnom, 100e-9);
             r.SetDiscreteModel({false, "", "", 0.0123, 1e-9, std::nullopt});
             r.SetComposite(SThroughModel{true, {{"1", "2", 1e-9, 0.5}}});
         },
         "<Capacitor{} Size=\"0402\" SizeUnit=\"0\" ModelType=\"1\" Rv=\"12.3mOhm\" Lv=\"1nH\" "
         "Cv=\"0nF\" "
         "Cnom=\"100nF\" UpTolerance=\"5%\" LowTolerance=\"0%\" Volt=\"0V\" TCC=\"\" Prefer=\"\" "
         "PriceA=\"0\" "
         "PriceB=\"0\" PriceC=\"0\" PriceBook=\"\" Comment=\"\">\n\n<Through "
         "NotThrough=\"Yes\">\n<ThroughInfo "
         "Pin1=\"1\" Pin2=\"2\" Inductance=\"1e-09\" Resistance=\"0.5\" "
         "/>\n</Through>\n</Capacitor>\n"},
        {ERecordType::Capacitor,
         [](CZovRcdProps& r) {
             r.SetString(EPropId::Size, "1005M");
             r.SetDiscreteModel({true, "a.s2p", "sub", {}, {}, {}});
             r.SetString(EPropId::DcBias, "b");
             r.SetString(EPropId::Temperature, "t");
         },
         "<Capacitor{} Size=\"1005\" SizeUnit=\"1\" ModelType=\"0\" CktDef=\"a.s2p\" "
         "TrackFolder=\"sub\" Cnom=\"0nF\" "
         "UpTolerance=\"0%\" LowTolerance=\"0%\" Volt=\"0V\" TCC=\"\" Prefer=\"\" PriceA=\"0\" "
         "PriceB=\"0\" "
         "PriceC=\"0\" PriceBook=\"\" Comment=\"\" DCBias=\"b\" "
         "Temperature=\"t\">\n</Capacitor>\n"},
        {ERecordType::Inductor,
         [](CZovRcdProps& r) {
             r.SetString(EPropId::Comment, "c");
             r.SetDouble(EPropId::MaxCurrent, 2);
             r.SetDiscreteModel({false, "", "", 0.1, 2.2e-6, {}});
         },
         "<Inductor{} Comment=\"c\" ModelType=\"RL\" Inductance=\"2200nH\" Resistance=\"100mOhm\" "
         "MaxCurrent=\"2A\">\n</Inductor>\n"},
        {ERecordType::Resistor,
         [](CZovRcdProps& r) {
             r.SetDiscreteModel({true, "r.sp", "", {}, {}, {}});
         },
         "<Resistor{} Comment=\"\" ModelType=\"SPICE\" CktDef=\"r.sp\" "
         "MaxCurrent=\"0A\">\n</Resistor>\n"},
        {ERecordType::Resistor,
         [](CZovRcdProps& r) {
             r.SetDiscreteModel({false, "", "", 1e6, {}, {}});
         },
         "<Resistor{} Comment=\"\" ModelType=\"R\" Resistance=\"1e+09mOhm\" "
         "MaxCurrent=\"0A\">\n</Resistor>\n"},
        {ERecordType::Connector,
         [](CZovRcdProps& r) {
             r.SetComposite(SCircuitRef{"m", "f.sp", ""});
         },
         "<Connector{} Description=\"\" Model=\"m\" SPICE_File=\"f.sp\">\n</Connector>\n"},
        {ERecordType::Package,
         [](CZovRcdProps& r) {
             r.SetComposite(SCircuitRef{"m", "", "R1 1 2 5\r\n"});
             r.SetComposite(SThroughModel{});
         },
         "<Package{} Description=\"\" Model=\"m\"  >\n\"R1 1 2 5\r\n\"\n<Through "
         "NotThrough=\"No\">\n</Through>\n"
         "</Package>\n"},
        {ERecordType::Spice, [](CZovRcdProps& r) { r.SetString(EPropId::Description, "d"); },
         "<SPICE{} Description=\"d\" Model=\"\"  >\n\"\"</SPICE>\n"},
        {ERecordType::Vrm,
         [](CZovRcdProps& r) {
             r.SetComposite(
                 SVrmModel{SSpiceRef{"v.sp", "m"}, {{1.2, 0.03, 10.0, 0.001, {"A1", "A2"}}}});
         },
         "\n<VRM{} Description=\"\">\n\n<VRM>\n<SPICE File=\"v.sp\" model =\"m\"/><PowerRail "
         "NominalVoltage=\"1.2V\" "
         "OutputTolerance=\"3%\" OutputCurrent=\"10A\" PinResistance=\"1mOhm\">\n<Pin name=\"A1\" "
         "/>\n<Pin "
         "name=\"A2\" />\n</PowerRail>\n</VRM>\n</VRM>\n"},
        {ERecordType::Ic,
         [](CZovRcdProps& r) {
             r.SetComposite(SThermalModel{1.5, 0.001, 10, 20, 125});
             r.SetComposite(
                 SAcModel{{}, {{true, 0.05, 2.0, 1e-9, "1 2", "3", "VDD", "GND", {{1e6, 0.5}}}}});
             r.SetComposite(
                 SDcConvModel{true, {{"P", EConvPin::Input, "Q", 5.0, 1.0, 0.9, 0.1, 0.2}}});
             r.SetComposite(SDcModel{true, {}, {{0.9, 0.05, 0.04, 3.0, {"A", "B"}}}});
             r.SetComposite(SIoModel{"u.ibs",
                                     "c1",
                                     true,
                                     {{"g",
                                       EBusType::Ctrl,
                                       EEdgeType::FallEdge,
                                       {{"a", "b"}},
                                       {"s", "t"},
                                       {{"c", "d"}}}}});
         },
         "\n<IC{} Description=\"\">\n\n<IO_MODEL IBIS=\"u.ibs\" Components=\"c1\" "
         "ExpIOAndGNDTerm=\"Yes\">\n"
         "<BusDefinition BusGroup=\"g\" BusType=\"Ctrl\" EdgeType=\"FallEdge\">\n<TimingRef>\na "
         "b\n</TimingRef>\n"
         "<Signal>s t </Signal>\n<Clock>\nc "
         "d\n</Clock>\n</BusDefinition>\n</IO_MODEL>\n\n<DC_MODEL PFMode=\"Worst\">\n"
         "<PowerRail NominalVoltage=\"0.9V\" UpperTolerance=\"5%\" "
         "LowerTolerance=\"4%\">\n<EqualCurrent "
         "TotalCurrent=\"3A\"/>\n<PIN>A B </PIN>\n</PowerRail>\n</DC_MODEL>\n\n<DCCONV_MODEL "
         "UseCurrentForInputPins=\"Yes\">\n<Pin Name=\"P\" Type=\"INPUT\" PinPair=\"Q\" "
         "Voltage=\"5V\" Current=\"1A\" "
         "ConvertRate=\"0.9\" UpperTolerance=\"10%\" LowerTolerance=\"20%\" "
         "/>\n</DCCONV_MODEL>\n\n<AC_MODEL>\n"
         "<PowerRail Type=\"PWL Model\" MaxPeakRipple=\"0.05V\" TransCurDelta=\"2A\" "
         "ShortRiseTimeDelta=\"1ns\" "
         "PositivePins=\"1 2\" NegativePins=\"3\" PositiveNet=\"VDD\" "
         "NegativeNet=\"GND\">\n<FeqImp "
         "Frequency=\"1MHz\" Impedance=\"500mOhm\"/>\n</PowerRail>\n</AC_MODEL>\n\n<Thermal "
         "PowerDissipation=\"1.5\" "
         "Thickness=\"0.001\" Theta_JB=\"10\" Theta_JC=\"20\" MaxDieTemperature=\"125\" "
         "/>\n</IC>\n"},
    };
}

TEST(ExchangeWriter, WritesTheFormToTheLetterAndReadsItBack)
{
    SImportOptions options;
    options.locateFiles = false;
    for (const SCase& c : Cases()) {
        CZovLibrary library;
        std::string records = c.records;
        if (c.type != ERecordType::Any) {
            CZovRcdProps& record = library.Add(c.type);
            record.SetString(EPropId::ModelName, "N");
            c.fill(record);
            records.replace(records.find("{}"), 2, kHead);
        }
        CVectorLog log;
        const std::string text = Export(library, log);
        EXPECT_EQ(text, Document(c.type, records));
        EXPECT_TRUE(log.Lines().empty());
        const SImported in = ImportText(text, options);
        ASSERT_EQ(in.library.Count(), library.Count()) << in.error << in.log.front();
        EXPECT_EQ(in.log.size(), 1U) << in.log.front();
        EXPECT_EQ(Export(in.library, log), text);
    }
}

TEST(ExchangeWriter, SaysWhichValuesTheFormCannotEscape)
{
    CZovLibrary library;
    CZovRcdProps& cap = library.Add(ERecordType::Capacitor);
    cap.SetString(EPropId::ModelName, "C1");
    cap.SetString(EPropId::Comment, "R&D 5\" <x>");
    cap.SetString(EPropId::Prefer, "caf\xC3\xA9");
    cap.SetString(EPropId::PriceBook, "12345678901234567890\"");
    CZovRcdProps& ic = library.Add(ERecordType::Ic);
    ic.SetString(EPropId::ModelName, "U1");
    ic.SetString(EPropId::Comment, "x");
    ic.SetComposite(SIoModel{"", "", false, {{"", {}, {}, {}, {"a b", ">"}, {}}}});
    CVectorLog log;
    const std::string text = Export(library, log);
    const std::string held = "holds characters that the exchange form cannot escape: ";
    EXPECT_EQ(log.Lines(),
              (std::vector<std::string>{
                  "[WARNING] 'U1' IC: the exchange form does not hold 'Comment'\r\n",
                  "[WARNING] 'U1' IC: 'Signal' " + held + "a b\r\n",
                  "[WARNING] 'U1' IC: 'Signal' " + held + ">\r\n",
                  "[WARNING] 'C1' Capacitor: 'PriceBook' " + held + "12345678901234567890\"\r\n",
                  "[WARNING] 'C1' Capacitor: 'Comment' " + held + "R&D 5\" <x>\r\n",
              }));
    EXPECT_NE(text.find("Comment=\"R&D 5\" <x>\""), std::string::npos);
}

TEST(ExchangeWriter, ShortNumbersAreThoseOfPrintf)
{
    std::mt19937_64 random(11);
    const auto check = [](double value) {
        if (std::isnan(value)) {
            return; // its sign is not told
        }
        char expected[64];
        char written[64];
        std::snprintf(expected, sizeof expected, "%g", value);
        *WriteShortG(written, value) = '\0';
        ASSERT_STREQ(written, expected) << FormatG(value, 17);
    };
    for (int i = 0; i < 500000; ++i) {
        check(std::bit_cast<double>(random())); // any double, infinities among them
        const double mantissa =
            static_cast<double>(random() % 20000001) / (random() % 2 == 0 ? 1.0 : 2.0);
        check(mantissa *
              std::pow(10.0, static_cast<int>(random() % 40) - 20)); // ties and near them
        check(
            std::nextafter(std::pow(10.0, static_cast<int>(i % 40) - 20), i % 3 == 0 ? 0.0 : 1e30));
    }
    for (const double value :
         {0.0, -0.0, 999999.5, 999999.4999999999, 0.5, 1e-5, 0.0001, 123456.5, 1e15, 1e-15}) {
        check(value);
    }
}

TEST(ExchangeWriter, WritesFilesOrSaysNo)
{
    const test::CTempFolder folder;
    CZovLibrary library;
    CVectorLog log;
    EXPECT_FALSE(WriteLibrary(library, "", {}, log));
    EXPECT_FALSE(WriteLibrary(library, folder.Path() / "no" / "a.zovx", {}, log));
    EXPECT_TRUE(WriteLibrary(library, folder.Path() / "a.zovx", {}, log));
    EXPECT_EQ(folder.Read("a.zovx"), Document(ERecordType::Any, ""));
}

// --- properties
// -----------------------------------------------------------------------------------

/// Random records that are complete enough to be read back. Numbers have at most six digits in any
/// unit, so the text holds them whole.
class CRandomLibrary
{
public:
    explicit CRandomLibrary(unsigned seed)
        : m_random(seed)
    {
    }

    CZovLibrary Make(std::size_t count)
    {
        CZovLibrary library;
        for (std::size_t i = 0; i < count; ++i) {
            const ERecordType type = RecordTypes()[m_random() % RecordTypes().size()].type;
            CZovRcdProps& r = library.Add(type);
            for (const EPropId id : PropertiesOf(type)) {
                const SPropInfo* info = FindProperty(id);
                if (id == (IsDiscrete(type) ? EPropId::Description : EPropId::Comment)) {
                    continue; // the form has no place for it
                }
                if (info->kind == EPropKind::Double && !IsModelPart(id)) {
                    r.SetDouble(id, Number());
                } else if (info->kind != EPropKind::Composite && !IsModelPart(id)) {
                    r.SetString(id, Maybe() ? Text() : "");
                }
            }
            r.SetString(EPropId::ModelName, Name());
            Fill(r, type);
            if (Maybe()) {
                SThroughModel through{Maybe(), {}};
                through.connections.resize(m_random() % 3, {Name(), Name(), Number(), Number()});
                r.SetComposite(through);
            }
        }
        return library;
    }

private:
    static bool IsModelPart(EPropId id)
    {
        return id >= EPropId::ModelIsCircuit || id == EPropId::Size || id == EPropId::Resistance ||
               id == EPropId::Inductance;
    }
    bool Maybe() { return m_random() % 2 == 0; }
    double Number()
    {
        const int digits = static_cast<int>(m_random() % 100000);
        return *ParseDouble(std::to_string(digits) + "e" +
                            std::to_string(static_cast<int>(m_random() % 12) - 14));
    }
    std::string Name() { return "N" + std::to_string(m_random() % 1000); }
    std::string Text()
    {
        static const char* const kPieces[] = {
            "a", " ", "=", "'", "\n", "\xC2\xB5", "/", ";", "x1", "\xE2\x84\xA6", "%"};
        std::string text;
        for (auto i = m_random() % 30; i > 0; --i) {
            text += kPieces[m_random() % std::size(kPieces)];
        }
        return text;
    }
    std::vector<std::string> Names() { return std::vector<std::string>(m_random() % 4, Name()); }
    std::optional<SSpiceRef> Spice()
    {
        return Maybe() ? std::optional(SSpiceRef{Name(), Name()}) : std::nullopt;
    }
    SVrmModel Vrm() { return {Spice(), {{Number(), Number(), Number(), Number(), Names()}}}; }

    void Fill(CZovRcdProps& r, ERecordType type)
    {
        if (IsDiscrete(type)) {
            FillDiscrete(r, type);
        } else if (type == ERecordType::Vrm) {
            r.SetComposite(Vrm());
        } else if (type == ERecordType::Ic) {
            FillIc(r);
        } else if (Maybe()) {
            r.SetComposite(SCircuitRef{Name(), Name(), ""});
        } else {
            r.SetComposite(SCircuitRef{Name(), "", "R1 \"1\" <2>\r\n" + Text()});
        }
    }
    void FillDiscrete(CZovRcdProps& r, ERecordType type)
    {
        if (type == ERecordType::Capacitor) {
            r.SetString(EPropId::Size, Maybe() ? "0402E" : "1005M");
        }
        if (Maybe()) {
            const std::string circuit = ".SUBCKT c 1 2\r\n.param a=\"1\" b=\"<\"\r\n.ENDS\r\n";
            r.SetDiscreteModel(
                {true, Maybe() ? circuit : Name(), Maybe() ? Name() : "", {}, {}, {}});
        } else if (type == ERecordType::Resistor) {
            r.SetDiscreteModel({false, "", "", Number(), {}, {}});
        } else if (type == ERecordType::Inductor) {
            r.SetDiscreteModel({false, "", "", Number(), Number(), {}});
        } else {
            r.SetDiscreteModel({false, "", "", Number(), Number(), Number()});
        }
    }
    void FillIc(CZovRcdProps& r)
    {
        if (Maybe()) {
            r.SetComposite(SIoModel{
                Name(),
                Text(),
                Maybe(),
                {{Text(), EBusType::Data, EEdgeType::RiseEdge, {{Name(), Name()}}, Names(), {}}}});
        }
        if (Maybe()) {
            r.SetComposite(
                SDcModel{Maybe(), Spice(), {{Number(), Number(), Number(), Number(), Names()}}});
        }
        if (Maybe()) {
            r.SetComposite(SDcConvModel{Maybe(),
                                        {{Name(), EConvPin::Gnd, Text(), Number(), Number(),
                                          Number(), Number(), Number()}}});
        }
        if (Maybe()) {
            r.SetComposite(
                SAcModel{Spice(),
                         {{Maybe(), Number(), Number(), Number(), Text(), Text(), Text(), Text(),
                           std::vector<SFeqImp>(m_random() % 3, {Number(), Number()})}}});
        }
        if (Maybe()) {
            r.SetComposite(Vrm());
            r.SetComposite(SThermalModel{Number(), Number(), Number(), Number(), Number()});
        }
    }

    std::mt19937 m_random;
};

TEST(ExchangeRoundTrip, WhatIsWrittenIsReadBackInAnyUnits)
{
    SImportOptions options;
    options.locateFiles = false;
    CDisplayUnits other;
    EXPECT_TRUE(other.Set(EQuantity::Capacitance, "uF") &&
                other.Set(EQuantity::Resistance, "Ohm") && other.Set(EQuantity::Inductance, "pH") &&
                other.Set(EQuantity::Voltage, "mV") && other.Set(EQuantity::Current, "mA") &&
                other.Set(EQuantity::Time, "ps") && other.Set(EQuantity::Frequency, "Hz"));
    for (unsigned seed = 0; seed < 40; ++seed) {
        const CZovLibrary library = CRandomLibrary(seed).Make(60);
        // Records come back by type; within a type the order is the library's own.
        std::vector<const CZovRcdProps*> expected;
        for (const ERecordType type :
             {ERecordType::Ic, ERecordType::Capacitor, ERecordType::Inductor, ERecordType::Resistor,
              ERecordType::Vrm, ERecordType::Spice, ERecordType::Package, ERecordType::Connector}) {
            std::copy_if(library.Records().begin(), library.Records().end(),
                         std::back_inserter(expected),
                         [&](const CZovRcdProps* r) { return r->Type() == type; });
        }
        for (const CDisplayUnits& units : {CDisplayUnits(), other}) {
            CVectorLog log;
            const std::string text = Export(library, log, units);
            const SImported in = ImportText(text, options);
            ASSERT_EQ(in.library.Count(), library.Count()) << seed << in.error << in.log.front();
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_TRUE(SameProperties(in.library.At(i), *expected[i]))
                    << seed << ' ' << expected[i]->Name();
            }
        }
    }
}

} // namespace
} // namespace zov
