// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "curve/CurveFile.h"
#include "curve/CurveMessages.h"
#include "curve/JournalSupport.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::curve {
namespace {

constexpr std::string_view kFrequency = "*******Frequency Domain Parameters*********\n";
constexpr std::string_view kVoltage = "*******Voltage*********\n";

std::string Block(std::string_view header, std::string_view lines)
{
    return std::string(kCurveBanner) + '\n' + std::string(header) + '\n' + std::string(lines) +
           std::string(kEndBanner) + '\n';
}

/// The file's message, or its curves as text: kind, unit, then style, names and points of each.
std::string Told(std::string_view text, EValueClass setClass = EValueClass::None)
{
    const CResult<SCurveFile> file = ReadCurveText(text, "a.cur", setClass);
    if (!file) {
        return file.Error().text;
    }
    std::string told = "kind " + std::to_string(static_cast<int>(file->kind)) + " unit " +
                       std::to_string(static_cast<int>(file->unitClass)) + " skipped " +
                       std::to_string(file->skippedLines);
    for (const TCurvePtr& curve : file->curves) {
        const SCurveHeader& h = curve->Header();
        told += " | " + h.name + ',' + h.valueName + ',' + std::string(StyleWord(h.style)) + ',' +
                h.legend + ':';
        for (std::size_t i = 0; i < curve->Points().Count(); ++i) {
            told += ' ';
            for (std::size_t c = 0; c < curve->Points().Columns(); ++c) {
                const auto column = curve->Points().Column(c);
                told += (c == 0 ? "" : "/") + std::to_string(static_cast<int>(column[i]));
            }
        }
    }
    return told;
}

TEST(CurveFileReader, FirstLineTellsTheKind)
{
    struct SCase
    {
        const char* line;
        const char* kind; ///< null: refused
    };
    for (const SCase& c : {
             SCase{"*******Voltage*********\n", "kind 7"},
             SCase{"*******voltage*********\r\n", "kind 7"},
             SCase{"*******Voltage********* of the rail\n", "kind 7"},
             SCase{"*******VSWR*********\n", "kind 14"},
             SCase{"*******ERL*********\n", "kind 9"},
             SCase{"*******Frequency Domain Parameters*********\n", "kind 0"},
             SCase{"*******FREQUENCY domain Parameters*********\r\n", "kind 0"},
             SCase{"*******Frequency Domain Parameters*********  \n", "kind 0"},
             SCase{"*******Frequency Domain Parameters********* more\n", nullptr},
             SCase{" *******Voltage*********\n", nullptr},
             SCase{"\n*******Voltage*********\n", nullptr},
             SCase{"*******Current*********\n", nullptr},
         }) {
        const std::string told = Told(c.line + Block("REAL a", "1 2 3\n"));
        if (c.kind == nullptr) {
            EXPECT_EQ(told, "File a.cur is not a valid Plenvo format curve file.") << c.line;
        } else {
            EXPECT_EQ(told.substr(0, told.find(" unit")), c.kind) << c.line;
        }
    }
    EXPECT_EQ(Told(""), "File a.cur is not a valid curve file.");
    EXPECT_EQ(Told("*******Frequency Domain Parameters*********"),
              "No valid curve found in the file :\na.cur");
    EXPECT_EQ(Told(kVoltage), "No valid curve found in the file :\na.cur");
}

TEST(CurveFileReader, HeadersGiveNamesStyleAndKind)
{
    struct SCase
    {
        std::string_view banner;
        const char* header;
        const char* told;
    };
    for (const SCase& c : {
             SCase{kFrequency, "P1 Z0_real_imag DASH leg", "kind 0|P1,Z0_real_imag,DASH,leg"},
             SCase{kFrequency, "P1\tkz_real_imag\tREAL\tleg more",
                   "kind 0|P1,Gamma_real_imag,REAL,leg"},
             SCase{kFrequency, "P1 ZC_REAL_IMAG dot leg", "kind 0|P1,Z0_real_imag,DOT,leg"},
             SCase{kFrequency, "P1 S WAVY leg", "kind 0|P1,S,REAL,Curve"},
             SCase{kFrequency, "DASHDOT leg", "kind 0|,,DASHDOT,leg"},
             SCase{kFrequency, "DASHDOTDOT", "kind 0|,,DASHDOTDOT,"},
             SCase{kFrequency, "P1 S DASH", "kind 0|,,REAL,Curve"},
             SCase{kFrequency, "", "kind 0|,,REAL,Curve"},
             SCase{kFrequency, "Diff(1) Comm(2) REAL l", "kind 2|Diff(1),Comm(2),REAL,l"},
             SCase{kFrequency, "P Comm(2) REAL l", "kind 2|P,Comm(2),REAL,l"},
             SCase{kVoltage, "Diff(1) V REAL l", "kind 8|Diff(1),V,REAL,l"},
             SCase{kVoltage, "REAL leg third", "kind 7|,,REAL,leg"},
         }) {
        const std::string told = Told(std::string(c.banner) + Block(c.header, "1 2 3\n"));
        const std::size_t curve = told.find(" | ");
        ASSERT_NE(curve, std::string::npos) << told;
        EXPECT_EQ(told.substr(0, told.find(" unit")) + '|' +
                      told.substr(curve + 3, told.rfind(':') - curve - 3),
                  c.told)
            << c.header;
    }
}

TEST(CurveFileReader, ModesFollowTheTwoNames)
{
    const char* names[] = {"x", "Diff(1)", "Comm(1)"};
    const EModePair expected[3][3] = {{EModePair::None, EModePair::None, EModePair::None},
                                      {EModePair::None, EModePair::DiffDiff, EModePair::DiffComm},
                                      {EModePair::None, EModePair::CommDiff, EModePair::CommComm}};
    for (int name = 0; name < 3; ++name) {
        for (int value = 0; value < 3; ++value) {
            EXPECT_EQ(ModesOf(names[name], names[value]), expected[name][value]);
        }
    }
}

TEST(CurveFileReader, DataLinesGivePoints)
{
    struct SCase
    {
        std::string_view banner;
        const char* lines;
        const char* told;
    };
    for (const SCase& c : {
             SCase{kFrequency, "1e3 5\n2 3 4\n", "unit 0 skipped 1 | : 2/3/4"},
             SCase{kVoltage, "1e3 5\n", "unit 0 skipped 0 | : 1000/5"},
             SCase{kFrequency, "1 2 3\n4 5 6 7\n8 9 10 11 12 13 14 15\n",
                   "unit 0 skipped 0 | : 1/2/3/0/0/0/0 4/5/6/7/0/0/0 8/9/10/11/12/13/14"},
             SCase{kVoltage, "1 2 3\n1 2 x 4 5\n", "unit 0 skipped 0 | : 1/2/0/0/0 1/2/0/4/5"},
             SCase{kFrequency, "f Real(ohm) i\n1 2 3\n", "unit 1 skipped 0 | : 1/2/3"},
             SCase{kFrequency, "\nf Real(S) i\n1 2 3\n", "unit 2 skipped 0 | : 1/2/3"},
             SCase{kFrequency, "f Real(Hz)\n1 2 3\n", "unit 0 skipped 0 | : 1/2/3"},
             SCase{kFrequency, "1 2 3\nf Real(Ohm) i\n", "unit 0 skipped 1 | : 1/2/3"},
             SCase{kFrequency, "f\ng Real(Ohm)\n1 2 3\n", "unit 0 skipped 1 | : 1/2/3"},
             SCase{kFrequency, " 1\t2 ,\n\t+1e0 -2.0 3.5D1 rest\r\n",
                   "unit 0 skipped 1 | : 1/-2/35"},
             SCase{kFrequency, "1 2 3x\n1x 2 3\n", "unit 0 skipped 2 | :"},
             SCase{kFrequency, "*[a=b]\n1 2 3\n", "unit 0 skipped 0 | : 1/2/3"},
         }) {
        std::string told = Told(std::string(c.banner) + Block("REAL a", c.lines));
        told = ReplaceAll(told.substr(told.find("unit")), ",,REAL,a", "");
        EXPECT_EQ(told, c.told) << c.lines;
    }
}

TEST(CurveFileReader, BlocksEndAtBannersAndAtTheEndOfTheFile)
{
    const std::string banner(kCurveBanner);
    const std::string end(kEndBanner);
    const std::string v(kVoltage);
    const std::string none = "No valid curve found in the file :\na.cur";
    EXPECT_EQ(Told(v + "noise\n\n" + banner + "\nREAL a\n1 2\n3 4"),
              "kind 7 unit 0 skipped 0 | ,,REAL,a: 1/2 3/4");
    EXPECT_EQ(Told(v + LowerCase(banner) + "\r\nREAL a\n1 2\n" + UpperCase(end) + "\n5 6\n"),
              "kind 7 unit 0 skipped 0 | ,,REAL,a: 1/2");
    EXPECT_EQ(Told(v + banner + "\nREAL a\n1 2\n" + banner + "\nREAL b\n3 4\n" + end),
              "kind 7 unit 0 skipped 0 | ,,REAL,a: 1/2 | ,,REAL,b: 3/4");
    EXPECT_EQ(Told(v + banner + " x\nREAL a\n1 2\n"), none);
    EXPECT_EQ(Told(v + banner), none);
    EXPECT_EQ(Told(v + banner + '\n' + end + '\n'), none);
}

TEST(CurveFileReader, LinesAreSplitAfter511Characters)
{
    const std::string v(kVoltage);
    const std::string blanks(510, ' ');
    // "1 2" and blanks up to the limit, then what is a line of its own.
    EXPECT_EQ(Told(v + Block("REAL a", "1 2" + std::string(508, ' ') + "3 4\n")),
              "kind 7 unit 0 skipped 0 | ,,REAL,a: 1/2 3/4");
    EXPECT_EQ(Told(v + Block("REAL a", "1 2" + std::string(507, ' ') + "3 4\n")),
              "kind 7 unit 0 skipped 1 | ,,REAL,a: 1/2");
    for (const char* lineEnd : {"\n", "\r\n"}) {
        // A line that just fits, and one whose line break is a line of its own.
        EXPECT_EQ(Told(v + std::string(kCurveBanner) + std::string(510 - 34, ' ') + lineEnd +
                       "REAL a\n1 2\n"),
                  "kind 7 unit 0 skipped 0 | ,,REAL,a: 1/2");
        EXPECT_EQ(Told(v + std::string(kCurveBanner) + std::string(511 - 34, ' ') + lineEnd +
                       "REAL a\n1 2\n"),
                  "No valid curve found in the file :\na.cur");
    }
}

TEST(CurveFileReader, AttributesAreKeptWithTheCurveThatFollows)
{
    const std::string text = std::string(kVoltage) + "*[a=1][b][c=x=y] rest [d=\n" + "*[e=2]\n" +
                             Block("REAL a", "1 2\n") + "*[f=3]\n" + Block("REAL b", "1 2\n");
    const auto file = ReadCurveText(text, "a.cur");
    ASSERT_TRUE(file.Ok());
    EXPECT_TRUE(file->hasAttributes);
    const std::vector<TAttributeGroup> first = {{{"a", "1"}, {"b", ""}, {"c", "x=y"}},
                                                {{"e", "2"}}};
    EXPECT_EQ(file->curves[0]->Header().attributeGroups, first);
    EXPECT_EQ(file->curves[1]->Header().attributeGroups,
              (std::vector<TAttributeGroup>{{{"f", "3"}}}));
}

TEST(CurveFileReader, ImpedanceAndPropagationDontMix)
{
    const std::string z = Block("P Zc_real_imag REAL l", "1 2 3\n");
    const std::string g = Block("P Gamma_real_imag REAL l", "1 2 3\n");
    const std::string s = Block("P S_real_imag REAL l", "1 2 3\n");
    const std::string f(kFrequency);
    const std::string noPropagation = "Cannot load the propagation curve because the impedance "
                                      "curves have already been loaded.";
    const std::string noImpedance = "Cannot load the impedance curve because the propagation "
                                    "curves have already been loaded.";
    EXPECT_EQ(Told(f + g, EValueClass::Impedance), noPropagation);
    EXPECT_EQ(Told(f + s + z, EValueClass::Propagation), noImpedance);
    EXPECT_EQ(Told(f + z + g), noPropagation);
    EXPECT_EQ(Told(f + g + s + z), noImpedance);
    EXPECT_EQ(Told(f + z + s + z, EValueClass::Impedance).substr(0, 6), "kind 0");
}

TEST(LoadCurveFile, FillsTheSetOrSaysWhyNot)
{
    const test::CTempFolder folder;
    const auto z = folder.Write("z.cur", std::string(kFrequency) +
                                             Block("P Zc_real_imag REAL l", "f Real(S)\n1 2 3\n"));
    const auto v = folder.Write("v.cur", std::string(kVoltage) + Block("P V REAL m", "1 2\n"));
    const auto g =
        folder.Write("g.cur", std::string(kFrequency) + Block("P kz_real_imag REAL l", "1 2 3\n"));
    const auto empty = folder.Write("empty.cur", "");
    const std::string root = PathText(folder.Path());

    CVectorLog messages;
    CRecordingJournal journal;
    CCurveSet set;
    int changes = 0;
    set.onChanged = [&] { ++changes; };
    LoadCurveFile(z, set, messages, journal);
    EXPECT_EQ(set.name, "Curve");
    EXPECT_EQ(set.description, "(Load from file: " + root + "/z.cur)");
    EXPECT_EQ(set.unitClass, EUnitClass::Siemens);
    EXPECT_EQ(set.ValueClass(), EValueClass::Impedance);
    LoadCurveFile(v, set, messages, journal);
    EXPECT_EQ(set.kind, EKind::VoltageFullHeader);
    EXPECT_EQ(set.Curves().size(), 2U);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(ReplaceAll(journal.told, root, "@"),
              "tavrely::open CurveFile {@/z.cur}\nload_curve_files: l\n"
              "tavrely::open CurveFile {@/v.cur}\nload_curve_files: m\n");
    EXPECT_TRUE(messages.Lines().empty());

    set.kind = EKind::Fixed;
    std::filesystem::copy(z, folder.Path() / "Z.CUR");
    for (const char* name : {"Z.CUR", "no.cur", "empty.cur", "g.cur"}) {
        LoadCurveFile(folder.Path() / name, set, messages, journal);
    }
    LoadCurveFile(folder.Path(), set, messages, journal);
    std::vector<std::string> told;
    for (const std::string& line : messages.Lines()) {
        told.push_back(ReplaceAll(line, root, "@"));
    }
    EXPECT_EQ(told,
              (std::vector<std::string>{
                  "Cannot load the file @/Z.CUR because it is already loaded.",
                  "@/no.cur cannot be opened.", "File @/empty.cur is not a valid curve file.",
                  "Cannot load the propagation curve because the impedance curves have already "
                  "been loaded.",
                  "@ cannot be opened."}));
    EXPECT_EQ(set.Curves().size(), 2U);
    EXPECT_EQ(changes, 2);

    const auto again = folder.Write("again.cur", std::string(kVoltage) + Block("REAL", "1 2\n"));
    LoadCurveFile(again, set, messages, journal);
    EXPECT_EQ(set.Curves().size(), 3U);
    EXPECT_EQ(set.kind, EKind::Fixed) << "a set of kind 15 keeps its kind";
}

} // namespace
} // namespace zov::curve
