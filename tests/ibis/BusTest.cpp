// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "ibis/BusBlock.h"
#include "ibis/IbisLoader.h"
#include "ibis/Parser.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <random>

namespace zov::ibis {

namespace {

SBusDefinitions Small()
{
    SBusDefinitions definitions;
    STimingReference reference;
    reference.name = "DQS";
    reference.edge = EEdgeType::RiseEdge;
    reference.clocks = {"CK", "CKn"};
    for (std::size_t i = 0; i < kTimingLimits; ++i) {
        reference.limits[i] = std::to_string(i + 1) + "0ps";
    }
    for (int i = 0; i < 16; ++i) {
        reference.signals.push_back("DQ" + std::to_string(i));
    }
    definitions.buses.push_back({"DQ", EBusType::Data, {"lane0", "lane1"}, {reference}});
    definitions.buses.push_back({"CA", EBusType::AddCmd, {}, {}});
    return definitions;
}

/// Any definitions that the rules allow.
SBusDefinitions Random(std::mt19937& random)
{
    const auto below = [&](std::size_t n) { return random() % n; };
    const auto names = [&](const char* stem, std::size_t most) {
        std::vector<std::string> made;
        for (std::size_t i = below(most); i > 0; --i) {
            made.push_back(stem + std::to_string(i) + std::string(below(12), '#'));
        }
        return made;
    };
    SBusDefinitions definitions;
    definitions.type = static_cast<EComponentType>(below(2));
    for (const std::string& name : names("bus", 4)) {
        SBus bus{name, static_cast<EBusType>(below(3)), names("[g]", 4), {}};
        for (const std::string& reference : names("Clock", 4)) {
            STimingReference made{reference,
                                  static_cast<EEdgeType>(below(3)),
                                  names("ck", 3),
                                  {},
                                  names("signal", 40)};
            for (std::string& limit : made.limits) {
                limit = below(2) == 0 ? "" : std::to_string(1 + below(99)) + "ps";
            }
            bus.references.push_back(std::move(made));
        }
        definitions.buses.push_back(std::move(bus));
    }
    return definitions;
}

constexpr std::string_view kFile =
    "[IBIS Ver] 5.0\r\n[Comment Char] #_char\r\n[Component] a\r\n"
    "[Pin] signal_name model_name\r\n1 x NC\r\n# about b\r\n"
    "[Component]  big b # it\r\n[Pin] signal_name model_name\r\n1 x NC\r\n"
    "#\r\n[Model] m\r\n[End]\r\n";

std::string Messages(const CVectorDiag& diag)
{
    std::string all;
    for (const SDiag& one : diag.Diags()) {
        all += std::to_string(one.pos.line) + ": " + one.text + "\n";
    }
    return all;
}

} // namespace

TEST(BusBlock, IsWrittenLineByLine)
{
    EXPECT_EQ(WriteBusBlock(Small(), '#', "\n"),
              "#**********************Component Bus Definitions ***************************\n"
              "#[Component Type]    Controller\n"
              "#[Bus Name]               DQ\n"
              "#[Bus Type]               Data\n"
              "#BusGroup                 lane0\n"
              "#BusGroup                 lane1\n"
              "#TimingRef                DQS\n"
              "#EdgeType                 RiseEdge\n"
              "#Clock                    CK\n"
              "#Clock                    CKn\n"
              "#MinTransmitSetup         10ps\n"
              "#MinTransmitHold          20ps\n"
              "#MinReceiveSetup          30ps\n"
              "#MinReceiveHold           40ps\n"
              "#MinStrobeSetup           50ps\n"
              "#MinStrobeHold            60ps\n"
              "#tDQSQ                    70ps\n"
              "#tQH                      80ps\n"
              "#MaxReceiveSkew(+)        90ps\n"
              "#MaxReceiveSkew(-)        100ps\n"
              "#MaxStrobeClockSkew(+)    110ps\n"
              "#MaxStrobeClockSkew(-)    120ps\n"
              // Sixty characters end a line.
              "#SignalName          DQ0 DQ1 DQ2 DQ3 DQ4 DQ5 DQ6 DQ7 DQ8 DQ9\n"
              "#SignalName          DQ10 DQ11 DQ12 DQ13 DQ14 DQ15\n"
              "#[Bus Name]               CA\n"
              "#[Bus Type]               AddCmd\n");
}

TEST(BusBlock, ReadsBackWhatWasPutAndLeavesTheRest)
{
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const SBusDefinitions definitions = Random(random);
        CVectorDiag diag;
        const auto once = PutBusBlock(kFile, "big b", definitions);
        ASSERT_TRUE(once.Ok());
        const auto both = PutBusBlock(*once, "a", Small());
        ASSERT_TRUE(both.Ok());
        const auto block = FindBusBlock(*both, "big b", diag);
        ASSERT_TRUE(block && block->definitions == definitions) << *both;
        EXPECT_EQ(FindBusBlock(*both, "a", diag)->definitions, Small());
        EXPECT_EQ(Messages(diag), "");
        std::string rest = *both;
        for (const SBusBlock& one : {*FindBusBlock(rest, "big b", diag)}) {
            rest.erase(one.begin, one.end - one.begin);
        }
        const auto other = *FindBusBlock(rest, "a", diag);
        rest.erase(other.begin, other.end - other.begin);
        EXPECT_EQ(rest, kFile);
        EXPECT_EQ(*PutBusBlock(*both, "big b", definitions), *both);
    }
    EXPECT_EQ(PutBusBlock(kFile, "c", {}).Error().text, "Can not find component 'c'.");
}

TEST(BusBlock, IsReadTolerantly)
{
    const std::string text =
        "[IBIS Ver] 5.0\n|*** Component Bus Definitions ***\n| Component Type x\n"
        "|component_type Memory\n|Bus Type Ctrl\n|Bus Name CS\n|remark\n|[BusGroup] g\n"
        "|Clock c\n|[Bus Name] DQ\n|bus type Dat\n|TimingRef t\n|tqh  -1\n|MAXRECEIVESKEW(-) 2n\n"
        "|SIGNALNAME a b\n|SignalName c\n|EdgeType\n|remark behind\n[Component] only\n";
    CVectorDiag diag;
    const auto block = FindBusBlock(text, "only", diag);
    ASSERT_TRUE(block);
    const SBusDefinitions& read = block->definitions;
    EXPECT_EQ(read.type, EComponentType::Memory);
    ASSERT_EQ(read.buses.size(), 2U);
    EXPECT_EQ(read.buses[0].name, "CS");
    EXPECT_EQ(read.buses[0].type, EBusType::Ctrl);
    EXPECT_EQ(read.buses[0].groups, std::vector<std::string>{"g"});
    EXPECT_EQ(read.buses[1].references.at(0).signals.size(), 3U);
    EXPECT_EQ(read.buses[1].references.at(0).Limit(ETimingLimit::MaxReceiveSkewMinus), "2n");
    EXPECT_EQ(block->notRead, "|remark\n");
    EXPECT_EQ(Messages(diag), "3: 'x' is no component type, expected Controller or Memory\n9: "
                              "Clock stands before any timing reference of its bus\n"
                              "11: 'Dat' is no bus type, expected Data, Ctrl or AddCmd\n"
                              "13: tQH should be positive number.\n17: EdgeType has no value\n");
}

TEST(BusEditor, RefusesWithItsMessages)
{
    SBusDefinitions definitions = Small();
    CIBISLoader listener;
    CBusDefinitionEditor editor(definitions, &listener);
    const auto text = [](const CResult<void>& result) {
        return result.Ok() ? std::string() : result.Error().text;
    };
    EXPECT_EQ(text(editor.AddBus("DQ", EBusType::Data)), "'DQ' is already in use.");
    EXPECT_EQ(text(editor.RenameBus(1, "DQ")), "'DQ' is already in use.");
    EXPECT_EQ(text(editor.AddReference(0, "DQS", EEdgeType::BothEdges)),
              "'DQS' is already in use.");
    EXPECT_EQ(text(editor.AddSignal(0, 0, "DQ3")), "'DQ3' is already in use.");
    EXPECT_EQ(text(editor.AddGroup(0, "a b")), "'a b' is no name: it is one word");
    for (const char* bad : {"0", "-1", "x", "1ps 2"}) {
        EXPECT_EQ(text(editor.SetLimit(0, 0, ETimingLimit::MaxReceiveSkewPlus, bad)),
                  "Max Receive Skew (+) should be positive number.");
    }
    EXPECT_EQ(definitions, Small());
    EXPECT_FALSE(listener.Changed());
    EXPECT_EQ(text(editor.RenameBus(0, "DQ")), "");
    EXPECT_EQ(text(editor.SetLimit(0, 0, ETimingLimit::TQh, " 0.3n ")), "");
    EXPECT_EQ(definitions.buses[0].references[0].Limit(ETimingLimit::TQh), "0.3n");
    EXPECT_TRUE(listener.Changed());
    EXPECT_EQ(text(CheckControllerSide("u1", EComponentType::Memory)),
              "The component 'u1' is not a Controller component.");
    EXPECT_EQ(text(CheckMemorySide("u1", EComponentType::Controller)),
              "The component 'u1' is not a Memory component.");
    EXPECT_EQ(WriteBusJson(*ReadBusJson(WriteBusJson(definitions))), WriteBusJson(definitions));
}

TEST(PinList, TellsWhatDoesNotFit)
{
    struct SCase
    {
        const char* text;
        const char* problem;  ///< that ends the reading
        const char* messages; ///< of one that goes on
    };
    constexpr const char* kPins = "[IBIS Ver] 5.0\n[Component] c\n[Pin]\n1 a m\n2 b m\n";
    for (const SCase& c : {
             SCase{" \n", "Empty IBIS file", ""},
             SCase{"[File Name] x\n", "File: f.ibs is not an IBIS file.", ""},
             SCase{"[IBIS Ver] 5.0\n", "There is no component in the file.", ""},
             SCase{"[IBIS Ver] 5.0\n[Component] d\n", "Can not find component 'c'.", ""},
             SCase{"[IBIS Ver] 5.0\n[Component] c\n", "Component: c has no [Pin] section.", ""},
             SCase{kPins, "", "Component: c has no [Pin Mapping] section.\n"},
             SCase{"[IBIS_Ver] 5.0\n[Component] c\n[Pin]\n1 a m\n[Pin_Mapping]\n1 g p\n3 g p\n"
                   "[Series_Pin_Mapping]\n1 4\n5 1 rs\n[Model]m\n[Model] m\n",
                   "",
                   "Pin: 3 in the [Pin Mapping] section is not found in the [Pin] section.\n"
                   "Pin 2 : 4 in the [Series Pin Mapping] section is not found in the [Pin] "
                   "section.\n"
                   "Series pin model is not specified for Pin pair : 1 and 4 in the [Series Pin "
                   "Mapping].\n"
                   "Pin 1 : 5 in the [Series Pin Mapping] section is not found in the [Pin] "
                   "section.\n"
                   "Warning: There are more than one model m in the file f.ibs and the settings of "
                   "the previous one is covered.\n"},
         }) {
        const auto file = CParserIBS().Parse(c.text);
        const auto list = ReadPinList(*file, "f.ibs", "c");
        EXPECT_EQ(list.Ok() ? "" : list.Error().text, c.problem) << c.text;
        std::string messages;
        for (const std::string& message : list.Ok() ? list->messages : std::vector<std::string>()) {
            messages += message + "\n";
        }
        EXPECT_EQ(messages, c.messages) << c.text;
    }
}

TEST(Loader, CopiesDontGrow)
{
    const test::CTempFolder folder;
    const auto source = folder.Write("chip.ibs", kFile);
    EXPECT_EQ(NextCopyPath(source).filename(), "chip_Copy1.ibs");
    CIBISLoader loader;
    ASSERT_TRUE(loader.Open(source).Ok());
    EXPECT_EQ(loader.Components(), (std::vector<std::string>{"a", "big b"}));
    ASSERT_TRUE(loader.Select("big b").Ok());
    EXPECT_FALSE(loader.HadDefinitions());
    loader.SetDefinitions(Small());
    EXPECT_EQ(loader.AssignMemory().Error().text,
              "The component 'big b' is not a Memory component.");
    EXPECT_TRUE(loader.AssignController().Ok());
    const auto copy = loader.SaveCopy();
    ASSERT_TRUE(copy.Ok());
    EXPECT_EQ(copy->filename(), "chip_Copy1.ibs");
    EXPECT_EQ(folder.Read("chip.ibs"), kFile);
    ASSERT_TRUE(loader.Open(*copy).Ok());
    ASSERT_TRUE(loader.Select("big b").Ok());
    EXPECT_EQ(loader.Definitions(), Small());
    EXPECT_EQ(NextCopyPath(*copy).filename(), "chip_Copy2.ibs");
    EXPECT_EQ(NextCopyPath(folder.Path() / "chip_COPY17x.ibs").filename(), "chip_Copy2.ibs");
    CIBISLoader orphan;
    folder.Write("y.ibs", kFile);
    ASSERT_TRUE(orphan.Open(folder.Path() / "y.ibs").Ok());
    ASSERT_TRUE(orphan.Select("a").Ok());
    std::filesystem::remove_all(folder.Path());
    EXPECT_EQ(orphan.SaveCopy().Error().text, "Cannot make a copy of the IBIS file.");
}

} // namespace zov::ibis
