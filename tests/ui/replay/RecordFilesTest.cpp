// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "support/TempFolder.h"
#include "ui/replay/Brief.h"
#include "ui/replay/CheckPointText.h"
#include "ui/replay/ExtraIndex.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/RecordXml.h"
#include "ui/replay/ReplayLog.h"
#include "ui/replay/XmlText.h"

#include <gtest/gtest.h>

namespace zov::ui::replay {
namespace {

FEnvironment Environment(std::vector<std::pair<std::string, std::string>> values)
{
    return [values = std::move(values)](const char* name) -> std::optional<std::string> {
        for (const auto& [key, value] : values) {
            if (key == name) {
                return value;
            }
        }
        return std::nullopt;
    };
}

SRecordedEvent Event(EEvent type, const std::string& widget, SPoint at = {})
{
    SRecordedEvent event;
    event.fields.type = type;
    event.fields.globalPos = at;
    event.target.topIsMain = true;
    event.target.widgets = {{"CZovMainFrm", "ZovMainFrm", "Zovra", {}, false},
                            {"QWidget", widget, "", {3, 4}, false}};
    return event;
}

SRecordedEvent Key(std::int64_t key, const std::string& text, std::int64_t modifiers = 0)
{
    SRecordedEvent event = Event(EEvent::KeyPress, "Edit");
    event.fields.key = key;
    event.fields.text = text;
    event.fields.modifiers = modifiers;
    return event;
}

/// One event of each type with every field set.
SRecord FullRecord()
{
    SRecord record;
    record.header = {0,       "Linux",    2, 8ULL << 30U, {96, 96}, {1920, 1080}, "RECPATH=/x;",
                     "0.1.0", {1280, 800}};
    for (const EEvent type :
         {EEvent::MouseButtonPress, EEvent::MouseButtonRelease, EEvent::MouseButtonDblClick,
          EEvent::MouseMove, EEvent::KeyPress, EEvent::KeyRelease, EEvent::FocusOut, EEvent::Wheel,
          EEvent::ContextMenu, EEvent::InputMethod}) {
        SRecordedEvent event = Event(type, "List<&>\"");
        SEventFields& f = event.fields;
        if (f.IsMouse()) {
            f.pos = {1, -2};
            f.wndPos = {3, 4};
            f.button = 1;
            f.buttons = 2;
            f.source = 1;
        } else if (f.IsKey()) {
            f.key = 0x01000004;
            f.nativeScanCode = 36;
            f.text = "\r\n;A\x01 &#x0A é";
            f.autoRepeat = 1;
            f.count = 2;
        } else if (type == EEvent::Wheel) {
            f.posF = {1.5, 2.25};
            f.angleDelta = {0, -120};
            f.delta = -120;
            f.orientation = 2;
        } else if (type == EEvent::InputMethod) {
            f.attributes = {{1, 2, 3, "underline"}};
            f.preedit = "か";
            f.commit = " ";
        }
        event.delayMs = 125;
        event.hasExtraInfo = true;
        event.extraInfo = "two\nlines";
        event.realPos = {1.0 / 4.0, -3.0};
        event.async = true;
        event.target.widgets[1].keyTitle = true;
        event.target.extraIndex = "Item (1,0) @1,2/3x4";
        event.item = {{"Name", "Value"}, {{1, "caps"}, {2, "C \"1\""}}};
        record.events.push_back(event);
    }
    record.events.back().isCheckPoint = true;
    return record;
}

TEST(RecordXml, EveryFieldComesBack)
{
    SRecord record = FullRecord();
    for (SRecordedEvent& event : record.events) {
        event.fields.globalPos = {};
    }
    const std::string text = FormatRecord(record);
    const auto read = ParseRecord(text, "x.xml");
    ASSERT_TRUE(read.Ok()) << read.Error().Full();
    EXPECT_EQ(read->header, record.header);
    ASSERT_EQ(read->events.size(), record.events.size());
    for (std::size_t i = 0; i < record.events.size(); ++i) {
        EXPECT_EQ(read->events[i], record.events[i]) << EventName(record.events[i].fields.type);
    }
    EXPECT_EQ(FormatRecord(*read), text);
}

TEST(RecordXml, IsWrittenToTheLetter)
{
    SRecord record;
    record.header.osPrettyName = "a\r\nb";
    record.header.dpi = {96, 96};
    SRecordedEvent event = Event(EEvent::FocusOut, "Edit");
    event.target.widgets.pop_back();
    event.target.widgets[0].keyTitle = true;
    event.fields.focusReason = 7;
    event.realPos = {0.5, 0};
    event.item = {{"Name"}, {{0, "a"}, {1, "b"}}};
    record.events = {event};
    const std::string text = FormatRecord(record);
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<GUI_Record version = \"5\">\n"
                             "\t<Header version = \"4\">\n"
                             "\t\t<OSVersion>0</OSVersion>\n"
                             "\t\t<OSPrettyName>a&#x0D&#x0Ab</OSPrettyName>\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_EQ(text.substr(text.find("\t<EventInfo>")),
              "\t<EventInfo>\n"
              "\t\t<Event Type=\"9\">\n"
              "\t\t\t<FocusReason>7</FocusReason>\n"
              "\t\t</Event>\n"
              "\t\t<Delay>0</Delay>\n"
              "\t\t<HasExtraInfo>0</HasExtraInfo>\n"
              "\t\t<ExtraInfo></ExtraInfo>\n"
              "\t\t<RealPos>5.000000000e-01,0.000000000e+00</RealPos>\n"
              "\t\t<ASync>0</ASync>\n"
              "\t\t<LocateWidget TopisMain=\"1\">\n"
              "\t\t\t<WidgetList>\n"
              "\t\t\t\t<Widget KeyTitle=\"1\">\n"
              "\t\t\t\t\t<ClassName>CZovMainFrm</ClassName>\n"
              "\t\t\t\t\t<ObjectName>ZovMainFrm</ObjectName>\n"
              "\t\t\t\t\t<WindowTitle>Zovra</WindowTitle>\n"
              "\t\t\t\t\t<Pos>0,0</Pos>\n"
              "\t\t\t\t</Widget>\n"
              "\t\t\t</WidgetList>\n"
              "\t\t\t<PtRefToTop>0,0</PtRefToTop>\n"
              "\t\t\t<ExtraIndex></ExtraIndex>\n"
              "\t\t</LocateWidget>\n"
              "\t\t<InsideItemView>\n"
              "\t\t\t<Header>\n"
              "\t\t\t\t<Col Title=\"Name\"/>\n"
              "\t\t\t</Header>\n"
              "\t\t\t<Tree>\n"
              "\t\t\t\t<TreeNode Row=\"0\" Title=\"a\">\n"
              "\t\t\t\t\t<TreeNode Row=\"1\" Title=\"b\">\n"
              "\t\t\t\t\t</TreeNode>\n"
              "\t\t\t\t</TreeNode>\n"
              "\t\t\t</Tree>\n"
              "\t\t</InsideItemView>\n"
              "\t</EventInfo>\n"
              "</GUI_Record>\n");
    EXPECT_EQ(FormatFixed(SPointF{1.5, -2}), "1.500000,-2.000000");
}

TEST(RecordXml, BadFilesAreRefusedWithTheLine)
{
    const std::string event = "<EventInfo><Event Type=\"2\"/><LocateWidget><WidgetList><Widget/>"
                              "</WidgetList></LocateWidget></EventInfo>";
    std::string deep = "<EventInfo><Event Type=\"2\"/><LocateWidget><WidgetList><Widget/>"
                       "</WidgetList></LocateWidget><InsideItemView><Tree>";
    std::string nested;
    for (int i = 0; i < 300; ++i) {
        deep += "<TreeNode Row=\"0\" Title=\"\">";
        nested += "<a>";
    }
    for (int i = 0; i < 300; ++i) {
        deep += "</TreeNode>";
        nested += "</a>";
    }
    deep += "</Tree></InsideItemView></EventInfo>";
    const auto in = [](const std::string& body) {
        return "<GUI_Record version = \"5\">\n" + body + "\n</GUI_Record>";
    };
    const struct
    {
        std::string text;
        std::string expected; ///< empty: is read
    } cases[] = {
        {in(event), ""},
        {in(nested), ""},
        {"", "the XML is broken"},
        {in(event).substr(0, 60), "the XML is broken"},
        {"<Other/>", "the root element is 'Other', expected 'GUI_Record'"},
        {"<GUI_Record/>", "x.xml:1: the version of GUI_Record is '', expected a number"},
        {"<GUI_Record version=\"6\"/>", "GUI_Record is of version 6; this program reads versions "
                                        "up to 5"},
        {in("<Header version=\"5\"/>"), "x.xml:2: Header is of version 5"},
        {in("<Header version=\"4\"><DPI>96</DPI></Header>"),
         "DPI is '96', expected two whole numbers with a comma between them"},
        {in("<Header version=\"4\"><DPI>96,99999999999</DPI></Header>"), "DPI is '96,99999999999'"},
        {in("<EventInfo/>"), "EventInfo has no Event"},
        {in("<EventInfo><Event Type=\"1\"/></EventInfo>"),
         "the event type '1' is none that is recorded"},
        {in("<EventInfo><Event Type=\"2\"><Button>x</Button></Event></EventInfo>"),
         "x.xml:2: Button is 'x', expected a whole number"},
        {in("<EventInfo><Event Type=\"2\"/></EventInfo>"), "EventInfo has no LocateWidget"},
        {in("<EventInfo><Event Type=\"2\"/><LocateWidget/></EventInfo>"),
         "LocateWidget names no widget"},
        {in(deep), "items nested deeper than 256"},
    };
    for (const auto& [text, expected] : cases) {
        const auto read = ParseRecord(text, "x.xml");
        ASSERT_EQ(read.Ok(), expected.empty()) << text.substr(0, 200);
        if (!read.Ok()) {
            EXPECT_NE(read.Error().Full().find(expected), std::string::npos) << read.Error().Full();
        }
    }
}

std::string Repeated(std::size_t times, std::string_view text)
{
    std::string out;
    out.reserve(times * text.size());
    for (std::size_t i = 0; i < times; ++i) {
        out += text;
    }
    return out;
}

TEST(RecordXml, HostileFilesEndWithAClearError)
{
    const std::string widget = "<LocateWidget><WidgetList><Widget/></WidgetList></LocateWidget>";
    const std::string head = "<GUI_Record version = \"5\">\n";
    const auto in = [&](const std::string& body) { return head + body + "\n</GUI_Record>"; };
    const auto event = [&](const std::string& fields, const std::string& rest) {
        return "<EventInfo><Event Type=\"83\">" + fields + "</Event>" + rest + "</EventInfo>";
    };
    const std::string deep =
        Repeated(100'000, "<TreeNode Row=\"0\" Title=\"\">") + Repeated(100'000, "</TreeNode>");
    const struct
    {
        std::string text;
        const char* expected;
    } cases[] = {
        {in(event("", widget + "<InsideItemView><Tree>" + deep + "</Tree></InsideItemView>")),
         "x.xml:2: items nested deeper than 256"},
        {in(Repeated(100'000, "<a>")), "the XML is broken"},
        {in(Repeated(16'000'000, "<a/>")), "x.xml: more than 16000000 tags"},
        {in(Repeated(250'001, event("", widget))), "x.xml:2: more than 250000 events"},
        {in(event(Repeated(4097, "<Attribute/>"), widget)), "more than 4096 attributes"},
        {in(event("", "<LocateWidget><WidgetList>" + Repeated(257, "<Widget/>") +
                          "</WidgetList></LocateWidget>")),
         "more than 256 widgets in a chain"},
        {in(event("", widget + "<InsideItemView><Header>" + Repeated(4097, "<Col/>") +
                          "</Header></InsideItemView>")),
         "more than 4096 columns"},
        {in("<Header version=\"4\"><CPUCount>99999999999999999999</CPUCount></Header>"),
         "CPUCount is '99999999999999999999', expected a whole number"},
        {in("\n<Header version=\"4\"><OSPrettyName>\xC4rger</OSPrettyName></Header>"),
         "x.xml:3: the text is not UTF-8"},
        {"\xFF\xFE<\0G\0U\0I\0", "x.xml:1: the text is not UTF-8"},
        {std::string("\0\0\0\0", 4), "the XML is broken"},
    };
    for (const auto& [text, expected] : cases) {
        const auto read = ParseRecord(text, "x.xml");
        ASSERT_FALSE(read.Ok()) << expected;
        EXPECT_NE(read.Error().Full().find(expected), std::string::npos) << expected << '\n'
                                                                         << read.Error().Full();
    }

    // Entities are text: nothing is expanded, nothing is fetched.
    const std::string bomb = "<!DOCTYPE x [<!ENTITY a \"" + std::string(100, 'a') +
                             "\"><!ENTITY b \"" + Repeated(100, "&a;") +
                             "\"><!ENTITY f SYSTEM \"file:///etc/passwd\">]>";
    const auto read = ParseRecord(bomb + in(event("<Preedit>&b;&f;</Preedit><Commit>" +
                                                      std::string(5'000'000, 'x') + "</Commit>",
                                                  widget)),
                                  "x.xml");
    ASSERT_TRUE(read.Ok()) << read.Error().Full();
    EXPECT_EQ(read->events[0].fields.preedit, "&b;&f;");
    EXPECT_EQ(read->events[0].fields.commit.size(), 5'000'000U);
}

TEST(RecordXml, TextsSurviveTheirEscapes)
{
    for (const std::string text :
         {"\n", "\n;", "\r\n", ";\n;", "&#x0A", "&#x0A;", "&amp;", "\x1B\t\x7F", "a&b", "\nAB;"}) {
        std::string written;
        AppendXmlText(written, text);
        EXPECT_EQ(DecodeXmlText(written), text) << written;
    }
    EXPECT_EQ(DecodeXmlText("a&#x0D;&#x0A;b&#65;&nope;&#x110000;&"), "a\r\nbA&nope;&#x110000;&");
}

TEST(RecordXml, LocatorsHaveAFileOfTheirOwn)
{
    const SRecordedEvent event = FullRecord().events.front();
    const auto read = ParseLocator(FormatLocator({event.target, event.item}), "x.loc");
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ(read->target, event.target);
    EXPECT_EQ(read->item, event.item);
}

TEST(ExtraIndex, IsReadAsItIsWritten)
{
    const SExtraIndex cases[] = {
        {EPlace::Widget, {}, -1, "", -1, {12, 8}, {80, 24}},
        {EPlace::Item, {{1, 0}, {3, 2}}, -1, "", 1, {-1, 2}, {200, 18}},
        {EPlace::Menu, {}, 3, "&Open \"Library\"...", -1, {}, {}},
        {EPlace::Tab, {}, 0, "", -1, {5, 6}, {7, 8}},
        {EPlace::Header, {}, 2, "Name", -1, {5, 6}, {7, 8}},
    };
    for (const SExtraIndex& index : cases) {
        EXPECT_EQ(ParseExtraIndex(FormatExtraIndex(index)), index) << FormatExtraIndex(index);
    }
    EXPECT_EQ(FormatExtraIndex(cases[1]), "Item (1,0)/(3,2) #1 @-1,2/200x18");
    for (const char* broken : {"", "Item", "Item (1,0", "Item (1)/(2,3) @", "Menu x @1/2", "@1,2",
                               "Tab 99999999999 \"", "Header  @1,2/-3x4"}) {
        EXPECT_EQ(ParseExtraIndex(broken).size, SPoint()) << broken;
    }
    const SExtraIndex box{EPlace::Item, {}, -1, "", -1, {10, 9}, {200, 18}};
    EXPECT_EQ(FitOffset(box, {300, 36}), (SPoint{10, 18})) << "a check mark keeps its distance";
    EXPECT_EQ(FitOffset({EPlace::Widget, {}, -1, "", -1, {150, 9}, {200, 18}}, {100, 18}),
              (SPoint{75, 9}));
    EXPECT_EQ(FitOffset({}, {100, 20}), (SPoint{50, 10})) << "size unknown: the middle";
}

TEST(Brief, ActionsArePutTogether)
{
    SRecord record;
    record.events = {Event(EEvent::MouseButtonPress, "Ok"),
                     Event(EEvent::MouseButtonRelease, "Ok", {2, 2}),
                     Event(EEvent::MouseButtonPress, "List"),
                     Event(EEvent::MouseMove, "List"),
                     Event(EEvent::MouseButtonRelease, "List", {90, 0}),
                     Event(EEvent::MouseButtonDblClick, "List"),
                     Event(EEvent::MouseButtonRelease, "List"),
                     Event(EEvent::MouseMove, "List"),
                     Event(EEvent::MouseMove, "List"),
                     Key(0x43, "c"),
                     Key(0x22, "\""),
                     Key(0x01000021, "", 0x04000000),
                     Key(0x53, "\x13", 0x04000000),
                     Key(0x01000004, "\r"),
                     Event(EEvent::Wheel, "Edit"),
                     Event(EEvent::FocusOut, "Edit")};
    record.events[1].async = true;
    record.events[0].delayMs = 1250;
    record.events.back().isCheckPoint = true;
    const std::string text = FormatBrief(MakeBrief(record));
    const std::string at = " [#ZovMainFrm, \"Zovra\"] -> ";
    EXPECT_EQ(text, "##Version=1\n"
                    "\nWidget: [#Ok]\n"
                    "Event:<Delay=1.250><Async> MouseClick" +
                        at +
                        "[#Ok]\n"
                        "\nWidget: [#List]\n"
                        "Event:<Delay=0.000> MouseDrag" +
                        at +
                        "[#List]\n"
                        "Event:<Delay=0.000> MouseDblClick" +
                        at +
                        "[#List]\n"
                        "Event:<Delay=0.000> Group" +
                        at +
                        "[#List]\n"
                        "\nWidget: [#Edit]\n"
                        "Event:<Delay=0.000> KeyInputs \"c\\\"<Ctrl+S><Return>\"" +
                        at +
                        "[#Edit]\n"
                        "Event:<Delay=0.000> Wheel" +
                        at +
                        "[#Edit]\n"
                        "CheckPoint:<Delay=0.000>" +
                        at + "[#Edit]\n");
    const auto read = ParseBrief(text, "x.brf");
    ASSERT_TRUE(read.Ok()) << read.Error().Full();
    EXPECT_EQ(*read, MakeBrief(record));
    EXPECT_EQ(BriefLevel({"QLabel", "", "a] -> \"b\"", {}, false}), "[\"a] -> \\\"b\\\"\"]");
    for (const char* bad :
         {"", "##Version=2\n", "##Version=1\nclick [#a]\n",
          "##Version=1\nEvent:<Delay=x> MouseClick [#a]", "##Version=1\nEvent:<Delay=1> MouseClick",
          "##Version=1\nEvent:<Delay=1> MouseClick [#a"}) {
        EXPECT_FALSE(ParseBrief(bad, "x.brf").Ok()) << bad;
    }
}

struct RecordFileTest : testing::Test
{
    CResult<SLoadedRecord> Load(const std::string& name)
    {
        return LoadRecord(folder.Path() / name, options, log);
    }
    test::CTempFolder folder;
    SReplayOptions options;
    CVectorLog log;
};

TEST_F(RecordFileTest, ABriefPlaysTheRecordBesideIt)
{
    ASSERT_TRUE(SaveRecord(FullRecord(), folder.Path() / "GUIReplay_a.xml").Ok());
    EXPECT_TRUE(folder.Read("GUIReplay_a.brf").starts_with("##Version=1\n"));
    const auto loaded = Load("GUIReplay_a.brf");
    ASSERT_TRUE(loaded.Ok()) << loaded.Error().Full();
    EXPECT_EQ(loaded->path.filename(), "GUIReplay_a.xml");
    EXPECT_TRUE(log.Lines().empty());

    folder.Write("GUIReplay_a.brf", "##Version=1\n");
    ASSERT_TRUE(Load("GUIReplay_a.brf").Ok());
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>{"Warning: The .brf file may not match the .xml file.\n"});
    std::filesystem::rename(folder.Path() / "GUIReplay_a.xml", folder.Path() / "GUIReplay_a.re");
    EXPECT_TRUE(Load("GUIReplay_a.re").Ok());
    EXPECT_EQ(Load("GUIReplay_a.brf")->path.extension(), ".re");
    std::filesystem::remove(folder.Path() / "GUIReplay_a.re");
    EXPECT_EQ(Load("GUIReplay_a.brf").Error().code, EErr::NotFound);
    EXPECT_EQ(RecordFileName("a"), "GUIReplay_a.xml");
    EXPECT_EQ(RecordFileName("GUIReplay_a.xml"), "GUIReplay_a.xml");
}

TEST_F(RecordFileTest, AnEditedBriefIsConvertedIntoItsRecord)
{
    const auto click = [](const char* widget, std::int64_t x) {
        SRecordedEvent press = Event(EEvent::MouseButtonPress, widget);
        press.fields.pos.x = static_cast<int>(x);
        SRecordedEvent release = press;
        release.fields.type = EEvent::MouseButtonRelease;
        return std::vector{press, release};
    };
    SRecord record;
    for (const auto& run : {click("List", 1), click("List", 2), click("List", 3),
                            std::vector{Key(0x41, "a"), Key(0x01000004, "\r")}, click("Ok", 4)}) {
        record.events.insert(record.events.end(), run.begin(), run.end());
    }
    record.events[2].delayMs = 500; // the second click
    record.events[6].hasExtraInfo = true;
    record.events[6].extraInfo = "before";
    ASSERT_TRUE(SaveRecord(record, folder.Path() / "r.xml").Ok());
    const std::string brief = folder.Read("r.brf");
    const std::string old = folder.Read("r.xml");
    const auto convert = [&](const std::string& text) {
        folder.Write("r.xml", old);
        folder.Write("r.brf", text);
        std::filesystem::remove(folder.Path() / "r.xml_5.bak");
        return ConvertRecord(folder.Path() / "r.brf", options, log);
    };
    const auto without = [&](const std::string& piece) { return ReplaceAll(brief, piece, ""); };
    const auto positions = [&] {
        std::string all;
        const SRecord now = Load("r.xml")->record;
        for (const SRecordedEvent& event : now.events) {
            if (event.fields.type == EEvent::MouseButtonPress) {
                all += std::to_string(event.fields.pos.x);
            }
        }
        return all;
    };

    ASSERT_TRUE(convert(brief).Ok());
    EXPECT_EQ(folder.Read("r.xml"), old) << "nothing was changed";
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "r.xml_5.bak"));

    const std::string second =
        "Event:<Delay=0.500> MouseClick [#ZovMainFrm, \"Zovra\"] -> [#List]\n";
    ASSERT_NE(brief.find(second), std::string::npos) << brief;
    ASSERT_TRUE(convert(without(second)).Ok());
    EXPECT_EQ(positions(), "134") << "of three alike the one with that delay";
    EXPECT_EQ(folder.Read("r.xml_5.bak"), old);
    EXPECT_EQ(folder.Read("r.brf"), without(second));

    ASSERT_TRUE(convert(ReplaceAll(ReplaceAll(brief, "<Delay=0.500>", "<Delay=2.250><Async>"),
                                   "\"a<Return>\"", "\"B\\\"<Ctrl+S><F5>%RECPATH%/é<x>\""))
                    .Ok());
    EXPECT_EQ(positions(), "1234");
    const SRecord typed = Load("r.xml")->record;
    EXPECT_EQ(typed.events[2].delayMs, 2250);
    EXPECT_TRUE(typed.events[3].async);
    std::string texts;
    for (const SRecordedEvent& event : typed.events) {
        if (event.fields.type == EEvent::KeyPress) {
            texts += event.fields.text + '|' + std::to_string(event.fields.key) + ' ';
            EXPECT_EQ(event.target, record.events[6].target);
            EXPECT_EQ(event.extraInfo, texts.size() < 6 ? "before" : "");
        }
    }
    EXPECT_EQ(texts, "B|66 \"|34 \x13|83 |16777268 %RECPATH%|0 /|47 é|233 <|60 x|88 >|62 ");
    EXPECT_TRUE(convert(folder.Read("r.brf")).Ok()) << "what was written is read again";

    for (const std::string& bad :
         {ReplaceAll(brief, "[#Ok]", "[#Cancel]"), brief + second,
          ReplaceAll(brief, "MouseClick", "MouseDrag"), std::string("##Version=1\nclick")}) {
        const auto refused = convert(bad);
        ASSERT_FALSE(refused.Ok()) << bad;
        EXPECT_NE(refused.Error().Full().find("r.brf"), std::string::npos);
        EXPECT_EQ(folder.Read("r.xml"), old);
        EXPECT_EQ(folder.Read("r.brf"), bad);
    }
    EXPECT_TRUE(ConvertRecord(folder.Path() / "r.xml", options, log).Ok());
    EXPECT_EQ(folder.Read("r.brf"), brief) << "the other way: from the record its brief";
}

TEST_F(RecordFileTest, FilesThatAreTooLargeAreNotRead)
{
    const std::filesystem::path path = folder.Write("r.xml", "<GUI_Record");
    std::filesystem::resize_file(path, kMaxRecordBytes + 1); // a hole, no bytes on the disk
    const auto loaded = Load("r.xml");
    ASSERT_FALSE(loaded.Ok());
    EXPECT_NE(loaded.Error().Full().find("r.xml"), std::string::npos);
    EXPECT_EQ(loaded.Error().code, EErr::Limit);
}

TEST_F(RecordFileTest, OlderRecordsAreUpgradedAndKept)
{
    const std::string old = "<GUI_Record version=\"3\"><Header version=\"2\"/><EventInfo>"
                            "<Event Type=\"5\"/><ExtraInfo>x</ExtraInfo><LocateWidget><WidgetList>"
                            "<Widget/></WidgetList></LocateWidget></EventInfo></GUI_Record>";
    folder.Write("r.xml", old);
    const auto loaded = Load("r.xml");
    ASSERT_TRUE(loaded.Ok());
    EXPECT_EQ(loaded->record.version, kRecordVersion);
    EXPECT_TRUE(loaded->record.events[0].hasExtraInfo);
    EXPECT_EQ(folder.Read("r.xml_3.bak"), old);
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_NE(folder.Read("r.xml").find("<GUI_Record version = \"5\">"), std::string::npos);
    EXPECT_TRUE(Load("r.xml").Ok());

    const std::filesystem::path locked = folder.Write("locked/r.xml", old);
    std::filesystem::create_directories(folder.Path() / "locked/r.xml_3.bak"); // in the way
    EXPECT_TRUE(Load("locked/r.xml").Ok());
    EXPECT_EQ(log.Lines(), std::vector<std::string>{"Warning: Upgrading failed."});
    EXPECT_EQ(folder.Read("locked/r.xml"), old);
}

TEST_F(RecordFileTest, RecPathStandsForAFolder)
{
    SRecord record;
    record.events = {Key(0, "%RECPATH%/caps.zov")};
    record.events[0].extraInfo = "%RECPATH%";
    ASSERT_TRUE(SaveRecord(record, folder.Path() / "r.xml").Ok());
    options = SReplayOptions::Of(
        Environment({{"RECPATH", "/data"}, {"RECFIXPATH", PathText(folder.Path())}}));
    const auto loaded = LoadRecord("r.xml", options, log);
    ASSERT_TRUE(loaded.Ok()) << loaded.Error().Full();
    EXPECT_EQ(loaded->record.events[0].fields.text, "/data/caps.zov");
    EXPECT_EQ(loaded->record.events[0].extraInfo, "/data");
}

TEST(ReplayOptions, TimeoutsThatSayNothingKeepTheBuiltIn)
{
    const std::pair<const char*, int> cases[] = {
        {"", kDefaultStepTimeoutMs},
        {"0", kDefaultStepTimeoutMs},
        {"abc", kDefaultStepTimeoutMs},
        {"-3", kDefaultStepTimeoutMs},
        {"1e-20", kDefaultStepTimeoutMs},
        {"2.5", 2500},
        {"0.0004", 1},
        {"1e300", 86'400'000},
    };
    for (const auto& [text, expected] : cases) {
        const auto options =
            SReplayOptions::Of(Environment({{"VRSHL_GUIREPLAY_STEP_TIMEOUT", text}}));
        EXPECT_EQ(options.stepTimeoutMs, expected) << text;
    }
    EXPECT_EQ(SReplayOptions::Of(Environment({})).stepTimeoutMs, kDefaultStepTimeoutMs);
    EXPECT_TRUE(SReplayOptions::Of(Environment({{"VRSHL_GUIREPLAY_CHKNOORDER", "1"}})).noOrder);
    EXPECT_FALSE(SReplayOptions::Of(Environment({{"VRSHL_GUIREPLAY_MANUAL", "no"}})).manual);
}

TEST(CheckPoints, CompareInOrderOrWithout)
{
    test::CTempFolder folder;
    const auto golden = folder.Write("gold.ckp", "b: 1\r\na: 2\r\n");
    const auto result = CheckPointResult(folder.Path() / "r.xml", 3);
    const auto verify = [&](std::string_view state, bool anyOrder) {
        return VerifyState(golden, result, state, anyOrder);
    };
    EXPECT_EQ(verify("b: 1\na: 2\n", false)->message, "Verifying: Passed for CheckPoint3.");
    const auto failed = verify("a: 2\nb: 1\n", false);
    EXPECT_FALSE(failed->passed);
    EXPECT_EQ(failed->message, "Verifying: Failed for CheckPoint3, compare the following two files "
                               "for details:\n\t[Golden]" +
                                   PathText(golden) + "\n\t[TestResult]" + PathText(result));
    EXPECT_TRUE(verify("a: 2\nb: 1\n", true)->passed);
    EXPECT_EQ(folder.Read("CheckPointFiles/CheckPoint3.ckp.noorder"), "a: 2\nb: 1\n");
    EXPECT_FALSE(verify("a: 2\na: 2\nb: 1\n", true)->passed) << "a line twice is not one line";
    EXPECT_FALSE(VerifyState(folder.Path() / "absent", result, "", false).Ok());
}

TEST(ReplayLog, LinesCarryTheTime)
{
    test::CTempFolder folder;
    CVectorLog sink;
    const FClock clock = [] { return SLocalTime{2026, 3, 4, 5, 6, 7}; };
    SRecordHeader header{29, "", 4, 3ULL << 29U, {96, 120}, {800, 600}, "", "0.1.0", {640, 480}};
    {
        CPlayLog log(folder.Path() / "r.xml", clock, sink);
        log.Write("#Playing Enviroment:\n" + EnvironmentBlock(header));
        log.Write("Play Started");
    }
    const std::string time = "[2026/03/04-05:06:07]--";
    EXPECT_EQ(folder.Read("r.playlog"),
              time + "#Playing Enviroment:\n" + time + "#Number of Processer:4\n" + time +
                  "#Memory Size:1.500000GB\n" + time + "#OS:Windows 10\n" + time + "#DPI:96,120\n" +
                  time + "#Resolution:800x600\n" + time + "#Tool Version:0.1.0\n" + time +
                  "#MainWindow Size:640x480\n" + time + "Play Started\n");
    EXPECT_EQ(folder.Read("GUIReplay_All.log"), folder.Read("r.playlog"));
    std::filesystem::create_directories(folder.Path() / "locked.playlog"); // in the way
    const CPlayLog locked(folder.Path() / "locked.xml", clock, sink);
    EXPECT_EQ(sink.Lines().back(), "Warning: The log '" +
                                       PathText(folder.Path() / "locked.playlog") +
                                       "' cannot be written.");
    sink.Write("Play Started");
    EXPECT_EQ(sink.Lines().back(), "Play Started");
    EXPECT_EQ(RecordingStarted(clock(), header, "/x/r.xml"),
              "2026/03/04-05:06:07:Recording started. #Tool Version:0.1.0\n"
              "2026/03/04-05:06:07:Recording path:/x/r.xml.\n");
    EXPECT_TRUE(RecordingStopped(clock(), header)
                    .starts_with("2026/03/04-05:06:07:Recording stopped.\n#Number of Processer:4"));
    EXPECT_EQ(WindowSnapshotName("p_", clock()), "p_window_live_03042026_050607.png");
    for (const auto& [code, name] :
         {std::pair{0, "LINUX/UNIX"},
          std::pair{21, "Old version "
                        "Windows"},
          std::pair{30, "Windows Server 2016"}, std::pair{31, "New version Windows"}}) {
        EXPECT_STREQ(OsName(code), name);
    }
}

} // namespace
} // namespace zov::ui::replay
