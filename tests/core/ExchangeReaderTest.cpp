// SPDX-License-Identifier: Apache-2.0
/// What the exchange reader takes: forms of XML, values that are not well-formed, broken texts.
#include "base/Text.h"
#include "core/ExchangeNumber.h"
#include "core/ExchangeScanner.h"
#include "core/ExchangeSupport.h"
#include "support/TempFolder.h"

#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <random>

namespace zov {
namespace {

std::string Cap(std::string_view attributes)
{
    return InGroup(
        "Capacitors",
        "<Capacitor ModelName=\"C1\" Size=\"0402\" SizeUnit=\"0\" ModelType=\"1\" Cnom=\"100nF\"" +
            std::string(attributes) + "></Capacitor>");
}

struct SValueCase
{
    const char* written; ///< the attribute Comment and what follows
    const char* comment;
    const char* tcc;
    bool told;
};

TEST(ExchangeReader, ReadsValuesThatTheFormCannotEscape)
{
    const SValueCase cases[] = {
        {R"( Comment="plain" TCC="X7R")", "plain", "X7R", false},
        {R"( Comment="R&D" TCC="X7R")", "R&D", "X7R", true},
        {R"( Comment="&amp;&lt;&gt;&quot;&apos;&#65;&#x42;" TCC="X7R")", "&<>\"'AB", "X7R", false},
        {R"( Comment="&nbsp; &#xD800; &#; &#1114112; &" TCC="")",
         "&nbsp; &#xD800; &#; &#1114112; &", "", true},
        {R"( Comment="<5%" TCC="X7R")", "<5%", "X7R", true},
        {R"( Comment=">5" TCC="X7R")", ">5", "X7R", false},
        {R"( Comment="5" disk" TCC="X7R")", "5\" disk", "X7R", true},
        {R"( TCC="X7R" Comment="5"")", "5\"", "X7R", true},
        {R"( TCC="X7R" Comment="3.5"  and 5"" )", "3.5\"  and 5\"", "X7R", true},
        {R"( Comment="say "yes" or =" TCC="X7R")", "say \"yes\" or =", "X7R", true},
        {R"( Comment="5">4" TCC="X7R")", "5\">4", "X7R", true},
        {R"( Comment='single "x" 5' TCC='X7R')", "single \"x\" 5", "X7R", false},
        {"\n  Comment =\t\"spaced\"\r\n  tcc = 'X7R' ", "spaced", "X7R", false},
        {" Comment=\"two\r\nlines\tand tab\" TCC=\"X7R\"", "two\r\nlines\tand tab", "X7R", false},
        {R"( Future="1" Comment="x" Other-one="2" TCC="X7R")", "x", "X7R", false},
        {R"( Comment="first" TCC="X7R" Comment="second")", "first", "X7R", true},
        {" Comment=\"\xC2\xB5 \xE2\x84\xA6\" TCC=\"X7R\"", "\xC2\xB5 \xE2\x84\xA6", "X7R", false},
        {" Comment=\"\xB5 caf\xE9\" TCC=\"X7R\"", "\xC2\xB5 caf\xC3\xA9", "X7R", true},
        {" Comment=\".SUBCKT c 1 2\r\n.param a=\"1\" b=\"2\"\r\n.ENDS\r\n\" TCC=\"X7R\"",
         ".SUBCKT c 1 2\r\n.param a=\"1\" b=\"2\"\r\n.ENDS\r\n", "X7R", true},
    };
    for (const SValueCase& c : cases) {
        const SImported in = ImportText(Cap(c.written));
        ASSERT_TRUE(in.ok) << c.written << in.error;
        ASSERT_EQ(in.library.Count(), 1U) << c.written << in.log.front();
        EXPECT_EQ(in.library.At(0).GetString(EPropId::Comment), c.comment) << c.written;
        EXPECT_EQ(in.library.At(0).GetString(EPropId::Tcc), c.tcc) << c.written;
        EXPECT_EQ(in.log.size() > 1, c.told) << c.written << in.log.front();
    }
}

TEST(ExchangeReader, TellsToleratedPlacesByLineAndThenCounts)
{
    std::string records;
    for (int i = 0; i < 30; ++i) {
        records += "<Capacitor ModelName=\"A&B\" Size=\"0402\" ModelType=\"1\" Cnom=\"1nF\"/>\n";
    }
    const SImported in = ImportText(InGroup("Capacitors", records));
    ASSERT_EQ(in.log.size(), 22U);
    EXPECT_EQ(in.log[1], "[WARNING] 'lib.zovx' line 3: markup characters stand in a value and were "
                         "read as they stand\r\n");
    EXPECT_EQ(in.log[20], "[WARNING] 'lib.zovx': 10 more such places\r\n");
}

TEST(ExchangeReader, TakesOtherSpellingsOfTheDocument)
{
    const std::string cap = "<cAPACITOR ModelName='C1' Size='0402' ModelType='1' Cnom='1nF' "
                            "UpTolerance='5%' SizeUnit='1'></cAPACITOR>";
    const std::string group = "<capacitors>" + cap + "</capacitors>";
    const std::string texts[] = {
        "<zov_lib Version='0'><discretes>" + group + "</discretes></zov_lib>",
        "<ZOV_Lib Version='1.5'><DISCRETE>" + group + "</DISCRETE></ZOV_Lib>",
        "\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE z [<!ENTITY a \"]>\">]><!-- <x> -->\n"
        "<ZOV_Lib Version='1.5'><!--<Discretes>--><?pi <?>Text<Discretes>" +
            group + "<![CDATA[<Capacitors>]]></Discretes></ZOV_Lib>\n<!-- end -->\n",
        "<ZOV_Lib Version='1.5'><Unknown a='1'><Discretes>x</Discretes><b/></Unknown><Discretes>"
        "<Capacitors><Other><Capacitor/></Other>" +
            cap + "<Capacitor2/></Capacitors></Discretes></ZOV_Lib>",
    };
    for (const std::string& text : texts) {
        const SImported in = ImportText(text);
        ASSERT_TRUE(in.ok) << text << in.error;
        ASSERT_EQ(in.library.Count(), 1U) << text;
        EXPECT_EQ(in.library.At(0).GetString(EPropId::Size), "0402M");
        EXPECT_EQ(in.library.At(0).GetDouble(EPropId::UpTolerance), 0.05);
        EXPECT_EQ(in.log.size(), 1U) << in.log.front();
    }
}

TEST(ExchangeReader, ReadsUtf16ByItsMark)
{
    const std::string text = Cap(" Comment=\"x\"");
    for (const bool little : {true, false}) {
        std::string wide = little ? "\xFF\xFE" : "\xFE\xFF";
        for (const char c : text) {
            wide += little ? std::string{c, '\0'} : std::string{'\0', c};
        }
        const SImported in = ImportText(wide);
        ASSERT_TRUE(in.ok) << in.error;
        EXPECT_EQ(in.library.Count(), 1U);
    }
}

TEST(ExchangeReader, NamesPlaceAndReasonOfABrokenText)
{
    const std::string importable =
        "Cannot import models from 'lib.zovx'. Ensure that the selected file is correct "
        "and try again. | ";
    const std::string refused =
        "Cannot load the zovx file 'lib.zovx' to ZOV because the format of the file is "
        "invalid. Ensure that the format of the zovx file is correct and try again. | ";
    const std::string root = "<ZOV_Lib Version=\"1\">";
    const struct
    {
        std::string text;
        std::string error;
    } cases[] = {
        {"", refused + "the file has no root element"},
        {"text", refused + "line 1, column 1: text outside of the root element"},
        {"<DecapLib/>", refused + "line 1: a decap list is read from a .xml file only"},
        {"<Other/>", refused + "line 1: the root element is 'Other', expected 'ZOV_Lib'"},
        {"<ZOV_Lib/>",
         refused + "line 1: 'Version' of ZOV_Lib is '', expected a number that is not negative"},
        {"<ZOV_Lib Version='-1'/>",
         refused + "line 1: 'Version' of ZOV_Lib is '-1', expected a number that is not negative"},
        {"<ZOV_Lib Version='x'/>",
         refused + "line 1: 'Version' of ZOV_Lib is 'x', expected a number that is not negative"},
        {root + "\n<ICs>\n", refused + "line 3, column 1: the file ends inside the element 'ICs'"},
        {root + "<ICs></VRMs></ZOV_Lib>",
         refused + "line 1, column 27: end tag 'VRMs' found, 'ICs' expected"},
        {root + "<ICs>\n<IC a></ICs></ZOV_Lib>",
         refused + "line 2, column 5: attribute 'a' of 'IC' has no value"},
        {root + "<ICs>\n<IC a=1/></ICs></ZOV_Lib>",
         refused + "line 2, column 5: the value of 'a' of 'IC' is not in quotes"},
        {root + "<ICs>\n<IC a=\"1/></ICs></ZOV_Lib>",
         refused + "line 2, column 8: a value in quotes has no end"},
        {root + "<!-- ", refused + "line 1, column 22: a comment is not finished"},
        {root + "</ZOV_Lib>\n<x/>", refused + "line 2, column 1: a second root element"},
        {root + "</ZOV_Lib>\nx", refused + "line 2, column 1: text outside of the root element"},
        {root + std::string("<ICs>a\0</ICs></ZOV_Lib>", 23),
         refused + "line 1, column 27: the text holds a NUL byte"},
        {root + std::string("<ICs><IC ModelName=\"\0\"/></ICs></ZOV_Lib>", 40),
         refused + "line 1, column 42: the text holds a NUL byte"},
        {root + "<SPICE><GeneralSPICE><SPICE "
                "ModelName=\"a\">\"x</SPICE></GeneralSPICE></SPICE></ZOV_Lib>",
         importable + "line 1, column 65: the circuit text of 'SPICE' has no end"},
    };
    for (const auto& c : cases) {
        const SImported in = ImportText(c.text);
        EXPECT_FALSE(in.ok) << c.text;
        EXPECT_EQ(in.error.substr(0, c.error.size()), c.error) << c.text;
        EXPECT_EQ(in.library.Count(), 0U);
    }
}

TEST(ExchangeReader, RefusesDepthAndTakesManyAttributes)
{
    std::string deep = "<ZOV_Lib Version=\"1\">";
    for (int i = 0; i < 10000; ++i) {
        deep += "<a>";
    }
    EXPECT_NE(ImportText(deep).error.find("elements are nested more than 64 deep"),
              std::string::npos);

    std::string many;
    for (int i = 0; i < 100000; ++i) {
        many += " a" + std::to_string(i) + "=\"1\"";
    }
    EXPECT_EQ(ImportText(Cap(many)).library.Count(), 1U);
    // Quotes without number must not cost the square of their number.
    std::string quotes = " Comment=\".SUBCKT ";
    for (int i = 0; i < 200000; ++i) {
        quotes += "\" a =\"";
    }
    EXPECT_EQ(ImportText(Cap(quotes)).library.Count(), 1U);
}

/// A library with one of everything, for tests that damage its text.
std::string OneOfEverything()
{
    return "<?xml version=\"1.0\"?>\n<ZOV_Lib Version = \"1.5\">\n<ICs><IC "
           "ModelName=\"U\"><IO_MODEL "
           "IBIS=\"\"><BusDefinition BusGroup=\"g\" BusType=\"Data\" "
           "EdgeType=\"RiseEdge\"><TimingRef>\na b\n"
           "</TimingRef><Signal>a b </Signal></BusDefinition></IO_MODEL><DC_MODEL><PowerRail "
           "NominalVoltage=\"1V\"><EqualCurrent TotalCurrent=\"1A\"/><PIN>1 "
           "</PIN></PowerRail></DC_MODEL>"
           "<Through NotThrough=\"No\"><ThroughInfo Pin1=\"1\" Pin2=\"2\"/></Through></IC></ICs>\n"
           "<Discretes><Capacitors><Capacitor ModelName=\"C&amp;\" Size=\"0402\" SizeUnit=\"0\" "
           "ModelType=\"1\" "
           "Rv=\"1mOhm\" Cnom=\"1e-3nF\" Comment=\"a\xC2\xB5 5\" "
           "b\"/></Capacitors></Discretes>\n<GeneralSPICE><SPICE "
           "ModelName=\"S\" Model=\"m\"  >\n\"R1 1 2 \"x\" "
           "<5\"\n</SPICE></GeneralSPICE>\n</ZOV_Lib>\n";
}

TEST(ExchangeReader, ATextCutAnywhereIsRefusedAndTheLibraryStays)
{
    const std::string text = OneOfEverything();
    ASSERT_EQ(ImportText(text).library.Count(), 3U) << ImportText(text).error;
    for (std::size_t size = 0; size + 1 < text.size(); ++size) {
        const SImported in = ImportText(text.substr(0, size));
        EXPECT_FALSE(in.ok) << size;
        EXPECT_EQ(in.library.Count(), 0U) << size;
    }
}

TEST(ExchangeReader, FlippedBitsNeverCrashAndWhatIsReadIsValidText)
{
    const std::string text = OneOfEverything();
    for (std::size_t i = 0; i < text.size() * 8; ++i) {
        std::string damaged = text;
        damaged[i / 8] = static_cast<char>(damaged[i / 8] ^ (1 << (i % 8)));
        const SImported in = ImportText(damaged);
        EXPECT_EQ(in.ok, in.error.empty());
        for (const CZovRcdProps* record : in.library.Records()) {
            EXPECT_TRUE(IsValidUtf8(record->GetString(EPropId::Comment))) << i;
        }
    }
}

TEST(ExchangeReader, AcReaderTakesBothSpellingsOfNets)
{
    const SImported in = ImportText(InGroup(
        "ICs", "<IC ModelName='U'><AC_MODEL><PowerRail Type='r-l model' MaxPeakRipple='50mV' "
               "TransCurDelta='2A' "
               "ShortRiseTimeDelta='1.5ns' PositivePins='1' NegativePins='' PositiveNets='VDD' "
               "NegativeNets='GND'>"
               "<FeqImp Frequency='10MHz' Impedance='0.2Ohm'/></PowerRail></AC_MODEL></IC>"));
    ASSERT_EQ(in.library.Count(), 1U) << in.log.front();
    const SAcRail& rail = in.library.At(0).GetComposite<SAcModel>()->rails.at(0);
    EXPECT_EQ(rail.positiveNet, "VDD");
    EXPECT_EQ(rail.negativeNet, "GND");
    EXPECT_EQ(rail.shortRiseTimeDelta, 1.5e-9);
    EXPECT_EQ(rail.points, (std::vector<SFeqImp>{{10e6, 0.2}}));
}

TEST(ExchangeReader, NumbersAreThoseOfTheGeneralReader)
{
    std::mt19937_64 random(7);
    const char* const suffixes[] = {"nF",
                                    "uF",
                                    "pF",
                                    "F",
                                    "n",
                                    "",
                                    " nF",
                                    "mF",
                                    "\xC2\xB5"
                                    "F",
                                    "H",
                                    "%",
                                    "e",
                                    "nF "};
    CQuantityReader reader(EQuantity::Capacitance);
    for (int i = 0; i < 200000; ++i) {
        std::string text = random() % 8 == 0 ? "-" : random() % 16 == 0 ? "+" : "";
        text += std::to_string(random() >> (random() % 64));
        text += random() % 2 == 0 ? "." + std::to_string(random() >> (random() % 64)) : "";
        text +=
            random() % 4 == 0 ? fmt::format("e{:+03}", static_cast<int>(random() % 60) - 30) : "";
        text += random() % 64 == 0 ? "e5" : "";
        text += suffixes[i / 500 % std::size(suffixes)];
        EXPECT_EQ(reader.Read(text), ParseQuantity(text, EQuantity::Capacitance)) << text;
    }
    EXPECT_EQ(reader.Read("100nF"), 1e-07);
    EXPECT_EQ(reader.Read(""), std::nullopt);
}

TEST(ExchangeFiles, ImportableByExtensionAndRoot)
{
    const test::CTempFolder folder;
    const struct
    {
        const char* name;
        std::string text;
        bool importable;
    } cases[] = {
        {"a.zovx", Cap(""), true},
        {"a.XML", Cap(""), true},
        {"b.xml", "<decaplib></decaplib>", true},
        {"b.zovx", "<DecapLib></DecapLib>", false},
        {"c.xml", "<PopDecapLib/>", true},
        {"d.txt", Cap(""), false},
        {"e.zovx", Cap("").substr(0, 100), false},
        {"e2.zovx", "<ZOV_Lib Version='1'><SPICE>\"x</SPICE></ZOV_Lib>", true},
        {"f.zovx", "<ZOV_Lib Version='-1'/>", false},
        {"g.zovx", "", false},
    };
    for (const auto& c : cases) {
        folder.Write(c.name, c.text);
        EXPECT_EQ(IsImportable(folder.Path() / c.name), c.importable) << c.name;
    }
    CZovLibrary library;
    CVectorLog log;
    EXPECT_EQ(*ImportLibrary(library, folder.Path() / "a.XML", log), 1U);
    const auto missing = ImportLibrary(library, folder.Path() / "none.zovx", log);
    ASSERT_FALSE(missing.Ok());
    EXPECT_EQ(missing.Error().code, EErr::NotFound);
    EXPECT_TRUE(missing.Error().text.starts_with("Cannot load the zovx file '"))
        << missing.Error().text;
    EXPECT_FALSE(ImportLibrary(library, folder.Path(), log).Ok());
}

TEST(ExchangeFiles, LocatesCircuitFilesInTheirFourPlaces)
{
    const test::CTempFolder temp;
    const std::filesystem::path folder = temp.Path();
    const char* const places[] = {"t/a.s2p", "Tavrely S-Parameter File/a.s2p",
                                  "S-Parameter File/a.s2p", "a.s2p"};
    for (const char* place : places) {
        temp.Write(place, "x");
        EXPECT_EQ(LocateCircuitFile(folder, "a.s2p", "t"), folder / place);
    }
    EXPECT_EQ(LocateCircuitFile("elsewhere", PathText(folder / "a.s2p"), ""), folder / "a.s2p");
    EXPECT_EQ(LocateCircuitFile(folder, "t\\a.s2p", ""), folder / "t/a.s2p");
    EXPECT_EQ(LocateCircuitFile(folder, "t", ""), "") << "a folder is no circuit";
    EXPECT_EQ(LocateCircuitFile(folder, "", "t"), "");
    EXPECT_EQ(LocateCircuitFile(folder, PathText(folder / "b.s2p"), ""), "");

    SImportOptions options;
    options.folder = folder;
    const std::string cap =
        "<Capacitor ModelName='C' Size='0402' ModelType='0' Cnom='1nF' CktDef='";
    const SImported in =
        ImportText(InGroup("Capacitors",
                           cap + "a.s2p'/>" + cap + "a.s2p' TrackFolder='t'/>" + cap + "b.s2p'/>"),
                   options);
    ASSERT_EQ(in.library.Count(), 3U);
    EXPECT_EQ(in.log.size(), 2U);
    EXPECT_EQ(in.library.At(0).GetDiscreteModel()->cktDef, "a.s2p") << "the name stays as written";
}

} // namespace
} // namespace zov
