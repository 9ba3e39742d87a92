// SPDX-License-Identifier: Apache-2.0
#include "core/Settings.h"

#include "base/File.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::test {

namespace {

FEnvironment Variables(std::map<std::string, std::string> values)
{
    return [values = std::move(values)](const char* name) -> std::optional<std::string> {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    };
}
const FEnvironment kNone = Variables({});
constexpr std::string_view kLibList = "<Lib Path=\"/libs/one.zov\" On=\"YES\"/>\n"
                                      "<Lib Path=\"/libs/two.zov\" On=\"NO\"/>\n";

} // namespace

TEST(Settings, DefaultsAreWrittenInTheirForms)
{
    CMemorySettings store;
    WriteSettings(ReadSettings(store, kNone), store);
    const std::pair<const char*, const char*> texts[] = {
        {"Units", "1=mOhm;2=nH;3=nF;4=V;5=A;6=ns;7=MHz;8=W;"},
        {"External Library", ""},
        {"Hide Decap with capacitance less than", "1e-10"},
        {"Hide Decap with capacitance more than", "1"},
        {"Hide Decap with voltage less than", "0.01"},
        {"Hide Decap with voltage more than", "500"},
        {"Velda Server IP", ""},
        {"Column Order", ""},
        {"Column Visibilty", ""},
        {"Search Options", "0 0 1;1 1 1;2 2 1;"},
    };
    for (const auto& [value, text] : texts) {
        EXPECT_EQ(store.Text(kZovSection, value), text) << value;
    }
    const std::pair<const char*, int> numbers[] = {
        {"Automatically Save External Library", 1},
        {"Sync Model path with Library Path", 1},
        {"Hide Decap with capacitance less", 0},
        {"Hide Decap with capacitance more", 0},
        {"Hide Decap with voltage less", 0},
        {"Hide Decap with voltage more", 0},
        {"GUI V2", 0},
        {"Velda Server PortNum", 0},
    };
    for (const auto& [value, number] : numbers) {
        EXPECT_EQ(store.Integer(kZovSection, value), number) << value;
    }
    EXPECT_EQ(store.Text(kZovSection, "External Library V2"), std::nullopt);
}

TEST(Settings, EveryValueIsReadBackFromAFile)
{
    SZovSettings written;
    written.units.Set(EQuantity::Capacitance, "pF");
    written.externalLibraries = {{"/libs/one.zov", true},
                                 {"/libs/R&D Ω.zov", false},
                                 {"/libs/4\" <x> &lt;.zov", false},
                                 {"/libs/last.zov", true}};
    written.autoSaveExternalLibrary = false;
    written.syncModelPath = false;
    written.capacitanceLess = {true, 2.2e-9};
    written.voltageMore = {true, 63.0};
    written.guiV2 = true;
    written.storedGuiV2 = true;
    written.veldaServerIp = "10.0.0.7";
    written.veldaServerPort = 5280;
    written.columnOrder = {{7, {{0, 2}, {1, 0}}}, {9, {}}};
    written.columnVisibility = {{7, {0, 1, 4}}, {4294967295U, {}}};
    written.searchOptions = CSearchOptions::InOrder({EPropId::MfgPartNumber});
    const CTempFolder folder;
    CFileSettings out;
    WriteSettings(written, out);
    ASSERT_TRUE(out.Save(folder.Path() / "settings.json").Ok());
    EXPECT_EQ(out.Text(kZovSection, "Column Order"), "7=\" 0 2 1 0\";9=\"\";");
    EXPECT_NE(out.Text(kZovSection, "External Library V2")->find("/R&D Ω.zov\""),
              std::string::npos);
    EXPECT_EQ(out.Text(kZovSection, "Column Visibilty"), "7=\"0 1 4 \";4294967295=\"\";");

    CFileSettings in;
    ASSERT_TRUE(in.Load(folder.Path() / "settings.json").Ok());
    const SZovSettings read = ReadSettings(in, kNone);
    EXPECT_EQ(FormatUnits(read.units), "1=mOhm;2=nH;3=pF;4=V;5=A;6=ns;7=MHz;8=W;");
    EXPECT_EQ(read.externalLibraries, written.externalLibraries);
    EXPECT_FALSE(read.autoSaveExternalLibrary);
    EXPECT_FALSE(read.syncModelPath);
    EXPECT_EQ(read.capacitanceLess, written.capacitanceLess);
    EXPECT_EQ(read.voltageMore, written.voltageMore);
    EXPECT_TRUE(read.guiV2);
    EXPECT_EQ(read.veldaServerIp, "10.0.0.7");
    EXPECT_EQ(read.veldaServerPort, 5280);
    EXPECT_EQ(read.columnOrder, written.columnOrder);
    EXPECT_EQ(read.columnVisibility, written.columnVisibility);
    EXPECT_EQ(read.searchOptions.EnabledKeys(), std::vector{EPropId::MfgPartNumber});

    EXPECT_TRUE(CFileSettings().Load(folder.Path() / "none.json").Ok());
    EXPECT_FALSE(CFileSettings().Load(folder.Write("bad.json", "[")).Ok());
}

TEST(Settings, UnreadableThresholdsCountAsTheirDefaults)
{
    CMemorySettings store;
    store.SetText(kZovSection, "Hide Decap with capacitance less than", "abc");
    store.SetText(kZovSection, "Hide Decap with capacitance more than", "");
    store.SetText(kZovSection, "Hide Decap with voltage less than", "2.5e-1");
    WriteSettings(ReadSettings(store, kNone), store);
    EXPECT_EQ(store.Text(kZovSection, "Hide Decap with capacitance less than"), "1e-10");
    EXPECT_EQ(store.Text(kZovSection, "Hide Decap with capacitance more than"), "1");
    EXPECT_EQ(store.Text(kZovSection, "Hide Decap with voltage less than"), "0.25");
}

TEST(Settings, TheEnvironmentChoosesTheInterfaceAndForgetsLibraries)
{
    CMemorySettings store;
    store.SetText(kZovSection, "External Library", std::string(kLibList));
    EXPECT_EQ(ReadSettings(store, kNone).externalLibraries.size(), 2U);
    const FEnvironment forced = Variables({{"KVE_TAVRELY_ZOV_V2", "1"}});
    SZovSettings v2 = ReadSettings(store, forced);
    EXPECT_TRUE(v2.guiV2);
    EXPECT_TRUE(v2.externalLibraries.empty());
    v2.externalLibraries = {{"/libs/three.zov", true}};
    WriteSettings(v2, store);
    EXPECT_EQ(store.Integer(kZovSection, "GUI V2"), 0);
    EXPECT_EQ(store.Text(kZovSection, "External Library"), kLibList);
    EXPECT_EQ(ReadSettings(store, forced).externalLibraries.size(), 1U);
    EXPECT_FALSE(ReadSettings(store, Variables({{"KVE_TAVRELY_ZOV_V2", "2"}})).guiV2);

    constexpr const char* kForget = "KVE_TAVRELY_REMEMBER_EXTERNAL_LIB_DISABLE";
    EXPECT_TRUE(ReadSettings(store, Variables({{kForget, "1"}})).externalLibraries.empty());
    EXPECT_EQ(ReadSettings(store, Variables({{kForget, "yes"}})).externalLibraries.size(), 2U);
}

TEST(Settings, SearchOptionsFollowTheOrderOfTheirGroups)
{
    using enum EPropId;
    struct SCase
    {
        const char* text;
        std::vector<EPropId> keys;
        const char* printed;
    };
    const SCase cases[] = {
        {"", {Lookup, ModelName, MfgPartNumber}, "0 0 1;1 1 1;2 2 1;"},
        {"2 2 1;0 0 0;1 1 1;", {MfgPartNumber, ModelName}, "2 2 1;0 0 0;1 1 1;"},
        {"0 1 1", {ModelName, Lookup, MfgPartNumber}, "0 1 1;0 0 1;2 2 1;"},
        {"0 9 1;x;0 2;;0 0 0;1 0 1;300 1 0;", {ModelName, MfgPartNumber}, "0 0 0;1 1 1;2 2 1;"},
    };
    for (const SCase& one : cases) {
        const CSearchOptions options = CSearchOptions::Parse(one.text);
        EXPECT_EQ(options.EnabledKeys(), one.keys) << one.text;
        EXPECT_EQ(options.Format(), one.printed) << one.text;
    }
}

TEST(Settings, BrokenListsEndWhereTheyBreak)
{
    EXPECT_EQ(ParseColumnOrder("1=\" 0 1\";2=\" 3 x\";4=\"\";").size(), 1U);
    EXPECT_EQ(ParseColumnVisibility("1=\"0 1 \";99999999999=\"\";").size(), 1U);
    EXPECT_EQ(ParseColumnVisibility("1=\"0 1").size(), 0U);
    EXPECT_EQ(FormatUnits(ParseUnits("3=furlong;99=V;x=y;=;1=kOhm;")),
              "1=kOhm;2=nH;3=nF;4=V;5=A;6=ns;7=MHz;8=W;");
}

} // namespace zov::test
