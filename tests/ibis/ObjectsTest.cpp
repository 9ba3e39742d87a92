// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "ibis/DataParser.h"
#include "ibis/Forms.h"
#include "support/SourcePaths.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace zov::ibis {

namespace {

std::string DataText(const std::string& name)
{
    return ReadWholeFile(TextPath(test::DataFolder() + "/ibis/" + name)).Take();
}

std::unique_ptr<CIPDataFile> Parse(std::string text, bool board = false)
{
    CParserIBS ibs;
    CParserEBD ebd;
    return board ? ebd.Parse(std::move(text)) : ibs.Parse(std::move(text));
}

void CollectClasses(const CIPDataObject& object, std::set<std::string>& classes)
{
    classes.emplace(object.ClassName());
    for (const auto& child : object.Children()) {
        CollectClasses(*child, classes);
    }
}

void CollectKeywords(const CIPDataObject& object, std::set<EIPKeyword>& keywords)
{
    if (object.Form() != nullptr) {
        keywords.insert(object.Keyword());
        keywords.insert(object.Closed() ? object.Form()->closer : object.Keyword());
    }
    for (const auto& child : object.Children()) {
        CollectKeywords(*child, keywords);
    }
}

} // namespace

TEST(Keywords, StandInTheirOrderWithTheirNumbers)
{
    const auto& all = IPKeywords();
    ASSERT_EQ(all.size(), 125U);
    for (std::size_t i = 0; i < all.size(); ++i) {
        // All follow their numbers but for one that came later and one that is not given.
        const std::size_t expected = i < 113 ? i : i == 113 ? 115U : i == 114 ? 113U : i + 1;
        EXPECT_EQ(static_cast<std::size_t>(all[i].Identifier()), expected) << all[i].Text();
        EXPECT_EQ(all[i].Parent(), -1);
        EXPECT_EQ(FindIPKeyword(all[i].Text().substr(1, all[i].Text().size() - 2)),
                  all[i].Identifier());
    }
    EXPECT_EQ(all[113].Text(), "[Repeater Pin]");
    EXPECT_EQ(FindIPKeyword("pin_MAPPING"), EIPKeyword::PinMapping);
    EXPECT_EQ(FindIPKeyword("pin mappings"), EIPKeyword::None);
    EXPECT_EQ(static_cast<int>(EIPKeyword::None), 126);
}

TEST(Parser, BeginsWithTheUsualState)
{
    CParserIBS parser;
    EXPECT_EQ(parser.CommentCharacter(), '|');
    EXPECT_EQ(parser.CurrentKeyword(), EIPKeyword::None);
    EXPECT_EQ(parser.SectionKeyword(), EIPKeyword::None);
    EXPECT_EQ(parser.LineNumber(), 1U);
}

TEST(Objects, EveryKeywordAndEveryClassIsRead)
{
    std::set<std::string> classes;
    std::set<EIPKeyword> keywords;
    for (const bool board : {false, true}) {
        const auto file = Parse(DataText(board ? "board.ebd" : "all-keywords.ibs"), board);
        EXPECT_EQ(CountIPData(*file).marked, 0U);
        CollectClasses(*file, classes);
        CollectKeywords(*file, keywords);
    }
    for (const CIPKeyword& keyword : IPKeywords()) {
        EXPECT_TRUE(keywords.contains(keyword.Identifier())) << keyword.Text();
    }
    for (const char* name : {"Item",
                             "ValueRange",
                             "Number",
                             "Component",
                             "Pkg",
                             "Pin",
                             "PinItem",
                             "PinMapping",
                             "PinMappingItem",
                             "DiffPin",
                             "SeriesPinMapping",
                             "AlternatePkgMdls",
                             "PackageModel",
                             "NodeDeclarations",
                             "CircuitCall",
                             "PinEMI",
                             "PinDomainEMI",
                             "EMIComponent",
                             "EMIModel",
                             "InterconnectModelSet",
                             "InterconnectModel",
                             "InterconnectModelGroup",
                             "InterconnectModelGroupItem",
                             "BusLabel",
                             "DieSupplyPads",
                             "MdlSel",
                             "Model",
                             "MdlSpec",
                             "RcvThreshold",
                             "AddSubmodel",
                             "DrvSchedule",
                             "CCompCorner",
                             "InitialDelay",
                             "Curve",
                             "Ramp",
                             "WaveForm",
                             "TestData",
                             "TestLoad",
                             "ExternalMdl",
                             "ExternalCircuit",
                             "AlgorithmicMdl",
                             "SubMdl",
                             "SubmdlSpec",
                             "DefinePkgMdl",
                             "ModelData",
                             "RLCMatrix",
                             "Row",
                             "PinNumbers",
                             "MergedPins",
                             "BoardDescription",
                             "PinList",
                             "PathDescription",
                             "RefDesignatorMap"}) {
        EXPECT_TRUE(classes.contains(std::string("CIPData") + name)) << name;
    }
}

/// Blanks between words, case and underscores of keywords, line ends and comments are no content.
std::string Restyled(const std::string& text, std::mt19937& random)
{
    std::string out;
    bool keyword = false;
    for (const char c : text) {
        const bool atStart = out.empty() || out.back() == '\n';
        keyword = c == '[' && atStart ? true : c == ']' ? false : keyword;
        if (keyword && c == ' ') {
            out += random() % 2 == 0 ? '_' : ' ';
        } else if (keyword && IsAlpha(c)) {
            out += random() % 2 == 0 ? ToUpper(c) : ToLower(c);
        } else if (c == ' ') {
            out.append(1 + random() % 3, random() % 3 == 0 ? '\t' : ' ');
        } else if (c == '\n') {
            out += random() % 4 == 0 ? " #\r\n#\r\n" : "\r\n";
        } else {
            out += c;
        }
    }
    return out;
}

TEST(Objects, PrintedTextReadsBackEqualInAnyStyle)
{
    std::mt19937 random(20260301);
    for (const bool board : {false, true}) {
        // A comment character that both files have from the first line on.
        const std::string text =
            "[Comment Char] #_char\n" + DataText(board ? "board.ebd" : "all-keywords.ibs");
        const auto file = Parse(text, board);
        std::string printed;
        file->Print(printed);
        EXPECT_TRUE(Parse(printed, board)->Equals(*file));
        for (int i = 0; i < 20; ++i) {
            const auto again = Parse(Restyled(printed, random), board);
            ASSERT_TRUE(again->Equals(*file)) << "round " << i;
            std::string second;
            again->Print(second);
            ASSERT_TRUE(Parse(second, board)->Equals(*file)) << "round " << i;
        }
    }
}

/// Without this the equality above could be true of anything.
TEST(Objects, EveryChangedWordMakesAnother)
{
    for (const bool board : {false, true}) {
        const auto file = Parse(DataText(board ? "board.ebd" : "all-keywords.ibs"), board);
        std::string printed;
        file->Print(printed);
        std::size_t words = 0;
        for (std::size_t at = 0; at + 1 < printed.size(); ++at) {
            const bool ends = !IsSpace(printed[at]) && IsSpace(printed[at + 1]);
            const std::size_t begin = printed.find_last_of(" \n[", at);
            const std::string_view last(printed.data() + begin + 1, at - begin);
            // What stands between words or closes something is no word.
            if (!ends || last.ends_with(']') || last == "=" || last == "/") {
                continue;
            }
            std::string changed = printed;
            changed[at] = printed[at] == '7' ? '8' : '7';
            EXPECT_FALSE(Parse(changed, board)->Equals(*file))
                << printed.substr(begin, at - begin + 1);
            ++words;
        }
        EXPECT_GT(words, board ? 40U : 500U);
    }
}

TEST(Objects, NumbersAreInSIUnitsWithTheirText)
{
    const auto file = Parse(DataText("all-keywords.ibs"));
    const CIPDataComponent& chip = *file->Components().at(0);
    const CIPDataPinItem& pin = *chip.Pins()->Pins().at(0);
    // The columns are headed C, R, L.
    EXPECT_EQ(pin.R().value, 55e-3);
    EXPECT_EQ(pin.L().value, 1.2e-9);
    EXPECT_EQ(pin.C().value, 0.3e-12);
    EXPECT_EQ(pin.C().text, "0.3p");
    EXPECT_TRUE(chip.Pins()->Pins().at(1)->R().text.empty());
    EXPECT_EQ(chip.Package()->LPkg()->Typ().value, 2.5e-9);
    EXPECT_FALSE(chip.Package()->LPkg()->Min().Has());
    EXPECT_EQ(chip.Package()->LPkg()->Min().text, "NA");
    EXPECT_EQ(chip.DiffPins()->Pairs().at(0).delayTypS.value, -1e-9);
    EXPECT_EQ(chip.SwitchGroups()->States().size(), 2U);
    EXPECT_EQ(chip.SwitchGroups()->States().at(1).groups.size(), 2U);
    EXPECT_EQ(chip.PinMapping()->Pins().at(0)->ExtRef(), "NC");
    EXPECT_EQ(chip.Nodes()->Nodes().size(), 3U);
    EXPECT_EQ(chip.CircuitCalls().at(0)->PortMaps().at(1).node, "C2");
    EXPECT_EQ(chip.PdnDomains().at(0)->Models().at(0)->RLeak()->Typ().value, 1e3);

    const CIPDataModel& model = *file->FindModel("io1");
    EXPECT_EQ(model.ModelType(), "I/O");
    EXPECT_EQ(model.CComp()->Max().value, 4.5e-12);
    EXPECT_EQ(model.VoltageRange()->Min().value, 3.0);
    EXPECT_EQ(model.Ramp()->DvDtR()->Slope(2).second.value, 650e-12);
    EXPECT_EQ(model.Ramp()->DvDtR()->Typ().value, 2.20 / 1.06e-9);
    EXPECT_EQ(model.Ramp()->RLoad()->Number().value, 50.0);
    const CIPDataCurve& curve = *model.Curve(EIPKeyword::Pulldown);
    ASSERT_EQ(curve.RowCount(), 3U);
    EXPECT_EQ(curve.VoltageV()[2], 3.3);
    EXPECT_EQ(curve.CurrentA(2)[2], 57.5e-3);
    EXPECT_EQ(curve.Cell(2, 3).text, "57.5m");
    EXPECT_TRUE(std::isnan(curve.CurrentA(1)[2]));
    EXPECT_FALSE(model.Curve(EIPKeyword::ISSOPD)->HasCorner(1));
    const CIPDataWaveForm& rise = *model.Waveforms().at(0);
    EXPECT_EQ(rise.VFixtureMax()->Number().value, 3.6);
    EXPECT_EQ(rise.CompositeCurrent()->RowCount(), 2U);
    EXPECT_EQ(model.Waveforms().size(), 2U);
    EXPECT_EQ(model.External()->Ports().size(), 5U);
    EXPECT_EQ(model.External()->Corners().at(1).circuit, "buffer_min");
    EXPECT_EQ(model.Algorithmic()->Executables().at(2).parameterFile, "tx.ami");
    const auto mosfets = file->FindModel("sw1")->State(EIPKeyword::On)->All<CIPDataCurve>();
    EXPECT_EQ(mosfets.at(1)->Vds()->Number().value, 2.0);

    const auto& package = *file->First<CIPDataDefinePkgMdl>();
    EXPECT_EQ(package.PinNumbers()->Pins(), (std::vector<std::string_view>{"A1", "A2", "B1"}));
    EXPECT_EQ(package.PinNumbers()->Items().at(2)->C().value, 0.5e-12);
    EXPECT_EQ(package.MergedPins().at(0)->Merged().size(), 3U);
    EXPECT_EQ(package.ModelData()->Inductance()->MatrixRows().at(0)->Count(), 3U);
    EXPECT_EQ(package.ModelData()->Capacitance()->Kind(), EIPMatrix::Sparse);
    EXPECT_EQ(package.ModelData()->Capacitance()->MatrixRows().at(0)->ColumnPin(1), "A2");
    EXPECT_EQ(package.ModelData()->Resistance()->Bandwidth()->Number().value, 0.0);
}

TEST(Parser, KeepsAndMarksWhatItCantRead)
{
    struct SCase
    {
        const char* text;
        const char* value; ///< of the marked object
        EIPMark mark;
    };
    for (const SCase& c : {
             SCase{"[Model] m\nC_cmp 1p 2p 3p\n", "C_cmp 1p 2p 3p", EIPMark::Unread},
             SCase{"[Model] m\nC_comp 1p\n", "1p", EIPMark::Missing},
             SCase{"[Model] m\nVinl = x\n", "x", EIPMark::Unread},
             SCase{"[Model] m\nVinl = 1 2\n", "1 2", EIPMark::Extra},
             SCase{"[Model] m\n[Pulldown]\n0 1 x 3\n1 2 3 4\n", "0 1 x 3", EIPMark::Unread},
             SCase{"[Model] m\n[Pulldown]\n1 2 3\n", "", EIPMark::Missing},
             SCase{"[Component] c\n[Pin]\n1 a\n", "a", EIPMark::Missing},
             SCase{"[Component] c\n[Pin]\n1 a b 1 2 x\n", "a b 1 2 x", EIPMark::Unread},
             SCase{"[Pin]\n1 a b\n", "", EIPMark::Misplaced},
             SCase{"[Component] c\n[Ramp]\n", "", EIPMark::Misplaced},
             SCase{"[Begin Board Description] b\n[End Board Description]\n", "b",
                   EIPMark::Misplaced},
             SCase{"[Model] m\n[Clock Pins] a b\ntext\n", "a b", EIPMark::UnknownKeyword},
             SCase{"[Model\n", "", EIPMark::UnknownKeyword},
             SCase{"[Component] c\n[Circuit Call] x\n[Model] m\n", "x", EIPMark::Unclosed},
             SCase{"[Component] c\n[End Circuit Call]\n", "", EIPMark::Unopened},
             SCase{"[End]\nmore\n", "more", EIPMark::AfterEnd},
             SCase{"[Comment Char] a_char\n", "a_char", EIPMark::Unread},
             SCase{"text\n", "text", EIPMark::Unread},
         }) {
        const auto file = Parse(c.text);
        const CIPDataObject* marked = nullptr;
        const auto find = [&](const CIPDataObject& object, const auto& self) -> void {
            marked = marked == nullptr && object.Has(c.mark) ? &object : marked;
            for (const auto& child : object.Children()) {
                self(*child, self);
            }
        };
        find(*file, find);
        ASSERT_NE(marked, nullptr) << c.text;
        EXPECT_EQ(marked->Value(), c.value) << c.text;
        std::string printed;
        file->Print(printed);
        EXPECT_TRUE(Parse(printed)->Equals(*file)) << c.text;
    }
}

std::size_t ObjectsIn(const CIPDataObject& object)
{
    std::size_t count = 1;
    for (const auto& child : object.Children()) {
        count += ObjectsIn(*child);
    }
    return count;
}

/// Files of rubbish become few objects that still hold every line of it.
TEST(Parser, JoinsRunsOfLinesOfNoUse)
{
    constexpr std::size_t kRepeats = 20'000;
    struct SCase
    {
        const char* head;
        const char* line;
    };
    for (const SCase& c :
         {SCase{"", "xq\n"}, SCase{"", "xq\r\n| comment [x]\n\n"}, SCase{"[Notes] n\n", "xq\n"},
          SCase{"", "[xq]\n"}, SCase{"", "[xq] word\n a\n"}, SCase{"", "[End Circuit Call] xq\n"},
          SCase{"[Model] m\n", "xq 1 2 3\n"}, SCase{"[End]\n", "xq\n"},
          SCase{"[Component] c\n[Pin]\n", "xq\n"},
          SCase{"[Component] c\n[Diff Pin]\n", "xq 1 2 3 4 5 6 7\n"}}) {
        std::string text = c.head;
        for (std::size_t i = 0; i < kRepeats; ++i) {
            text += c.line;
        }
        const auto file = Parse(text);
        EXPECT_LT(ObjectsIn(*file), 4'000U) << c.line;
        std::string printed;
        file->Print(printed);
        EXPECT_TRUE(Parse(printed)->Equals(*file)) << c.line;
        std::size_t kept = 0;
        for (std::size_t at = 0; (at = printed.find("xq", at)) != std::string::npos; ++at) {
            ++kept;
        }
        EXPECT_EQ(kept, kRepeats) << c.line;
    }
    std::string text = "[Model] m\n";
    for (std::size_t i = 0; i < 1005; ++i) {
        text += "odd\n";
    }
    // A keyword ends the run.
    const auto file = Parse(text + "[Comment Char] #_char\nodd # c\nodd\n");
    const auto children = file->FindModel("m")->Children();
    ASSERT_EQ(children.size(), 1001U);
    EXPECT_EQ(children[999]->Line(), 1001U);
    EXPECT_EQ(children[999]->LastLine(), 1006U);
    EXPECT_EQ(children[1000]->Value(), "odd # c\nodd");
    EXPECT_EQ(children[1000]->Marks().size(), 1U);
}

TEST(Parser, RowsOfTablesKnowTheirTextAndLine)
{
    constexpr std::size_t kRows = 3000;
    std::string text = "[Model] m\n[Pulldown]\n| volt\n x 1\n 0 1 NA 2 | first\n\nodd\n";
    for (std::size_t i = 1; i < kRows; ++i) {
        text += "1 2\r\n";
    }
    const auto file = Parse(text + "1 2 3 4 5\n");
    const CIPDataCurve& table = *file->FindModel("m")->Curve(EIPKeyword::Pulldown);
    ASSERT_EQ(table.RowCount(), kRows + 1);
    EXPECT_EQ(table.RowText(0), "0 1 NA 2");
    EXPECT_EQ(table.RowLine(0), 5U);
    EXPECT_EQ(table.RowText(1), "1 2");
    EXPECT_EQ(table.RowLine(1), 8U);
    EXPECT_EQ(table.RowText(kRows), "1 2 3 4 5");
    EXPECT_EQ(table.RowLine(kRows), 7U + kRows);
    EXPECT_EQ(table.Marks().size(), 1001U); // rows that lack words, and the last
    EXPECT_TRUE(table.Has(EIPMark::Extra));
    EXPECT_FALSE(table.Has(EIPMark::Checker));
}

TEST(Parser, TakesTextAsFilesHaveIt)
{
    const auto file = Parse("[IBIS Ver] 4.0 | comment\r\n[comment_char] #_char | old\r\n"
                            "[Source] one | two # gone\r\n [Pin] text\r\n\t\r\n[Component] c#\r\n"
                            "[Pin]\r\n1\tdq\tNC\r\n\x1a");
    EXPECT_EQ(file->Header(EIPKeyword::IBISVer), "4.0");
    EXPECT_EQ(file->CommentCharacter(), '#');
    const auto* source = file->Part<CIPDataItem>(EIPKeyword::Source);
    EXPECT_EQ(source->Text(), "one | two\n[Pin] text");
    ASSERT_NE(file->FindComponent("c"), nullptr);
    EXPECT_EQ(file->FindComponent("c")->Pins()->Line(), 7U);
    EXPECT_EQ(file->FindComponent("c")->Pins()->Pins().at(0)->Line(), 8U);
    EXPECT_EQ(CountIPData(*file).marked, 0U);
}

} // namespace zov::ibis
