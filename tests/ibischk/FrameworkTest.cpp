// SPDX-License-Identifier: Apache-2.0
// What must hold whatever a file says: sets of keywords, blocks, and changes of a file that change
// nothing of its report.
#include "CheckSupport.h"
#include "base/Text.h"
#include "ibischk/Keywords.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {
namespace {

constexpr std::string_view kVersions[] = {"2.1", "3.2", "4.2", "5.1", "6.0",
                                          "6.1", "7.0", "7.1", "7.2"};

TEST(Framework, GoodFilesOfEveryVersionAreClean)
{
    for (const std::string_view version : kVersions) {
        EXPECT_EQ(Codes(CheckText(WholeFile(version))), "") << version;
    }
}

TEST(Framework, EveryVersionBringsItsKeywords)
{
    struct SRange
    {
        int first;
        int last;
        EVersion since;
    };
    using enum EVersion;
    constexpr SRange kRanges[] = {
        {0, 0, V21},     {2, 14, V21},    {15, 18, V70},   {19, 19, V21},   {20, 20, V71},
        {21, 21, V60},   {22, 23, V32},   {24, 31, V42},   {32, 35, V51},   {36, 37, V32},
        {38, 44, V21},   {45, 45, V32},   {46, 56, V21},   {57, 59, V32},   {60, 60, V42},
        {61, 72, V32},   {73, 80, V51},   {81, 82, V71},   {83, 83, V61},   {84, 97, V21},
        {98, 98, V32},   {99, 99, V61},   {100, 118, V32}, {119, 119, V61}, {120, 129, V42},
        {130, 135, V70}, {136, 162, V71},
    };
    int keywords = 0;
    for (const SRange& range : kRanges) {
        for (int code = range.first; code <= range.last; ++code, ++keywords) {
            const SKeyword& row = KeywordRow(static_cast<EKeyword>(code));
            EXPECT_EQ(static_cast<int>(row.code), code);
            EXPECT_EQ(row.since, range.since) << row.shown;
        }
    }
    EXPECT_EQ(keywords, 162) << "all but [Comment Char] and [End]";
}

/// A keyword that is one version too early is told; in its own version it is not.
TEST(Framework, KeywordsAreAcceptedFromTheirVersionOn)
{
    struct SRow
    {
        std::string_view section;
        std::string_view keyword;
        std::size_t first; ///< index of kVersions
    };
    constexpr SRow kRows[] = {
        {"[Component] c\n", "[Diff Pin] inv_pin vdiff tdelay_typ", 0},
        {"[Component] c\n", "[Series Pin Mapping] pin_2 model_name", 1},
        {"[Component] c\n", "[Node Declarations]", 2},
        {"[Component] c\n", "[Begin EMI Component]", 3},
        {"[Component] c\n", "[Repeater Pin] tx_non_inv_pin", 4},
        {"[Component] c\n", "[Bus Label] signal_name", 6},
        {"[Component] c\n", "[Clock Pins] clocked_pin relationship", 7},
        {"[Model] m\n", "[Series MOSFET]", 1},
        {"[Model] m\n", "[Receiver Thresholds]", 2},
        {"[Model] m\n", "[Composite Current]", 3},
        {"[Model] m\n", "[Initial Delay]", 5},
        {"", "[Submodel] s", 1},
        {"", "[Test Load] l", 2},
        {"", "[Interconnect Model Set] s", 6},
    };
    for (const SRow& row : kRows) {
        for (std::size_t v = 0; v < std::size(kVersions); ++v) {
            std::string body(row.section);
            body.append(row.keyword).append("\n");
            EXPECT_EQ(Has(CheckText(Ibs(kVersions[v], body)), 926), v < row.first)
                << kVersions[v] << " " << row.keyword;
        }
    }
}

TEST(Framework, BlocksAreOpenedAndClosedOnce)
{
    struct SRow
    {
        EFileType type;
        std::string_view section;
        std::string_view open;
        std::string_view close;
        int unclosed;
        int unopened;
        int nested;
    };
    using enum EFileType;
    constexpr std::string_view kEmd = "[Begin EMD] e\n";
    const SRow rows[] = {
        {Ibs, "[Component] c\n", "[Alternate Package Models]", "[End Alternate Package Models]",
         2790, 2791, 2792},
        {Ibs, "[Component] c\n", "[Node Declarations]", "[End Node Declarations]", 2590, 2591,
         2592},
        {Ibs, "[Component] c\n", "[Circuit Call] x", "[End Circuit Call]", 2690, 2691, 2692},
        {Ibs, "[Component] c\n", "[Begin EMI Component]", "[End EMI Component]", 4890, 4891, 4892},
        {Ibs, "[Component] c\n", "[Interconnect Model Group] g", "[End Interconnect Model Group]",
         6200, 6201, 6202},
        {Ibs, "[Component] c\n", "[PDN Domain] d", "[End PDN Domain]", 6880, 6881, 6882},
        {Ibs, "[Component] c\n[PDN Domain] d\n", "[PDN Model] m", "[End PDN Model]", 6900, 6901,
         6883},
        {Ibs, "[Model] m\n", "[External Model]", "[End External Model]", 2390, 2391, 2392},
        {Ibs, "[Model] m\n", "[Algorithmic Model]", "[End Algorithmic Model]", 4609, 4608, 4610},
        {Ibs, "[Model] m\n", "[Begin EMI Model]", "[End EMI Model]", 4895, 4896, 4897},
        {Ibs, "[Model] m\n", "[C Comp Model]", "[End C Comp Model]", 6800, 6801, 6802},
        {Ibs, "", "[External Circuit] x", "[End External Circuit]", 2490, 2491, 2492},
        {Pkg, "", "[Define Package Model] p", "[End Package Model]", 3190, 3191, 3192},
        {Pkg, "[Define Package Model] p\n", "[Model Data]", "[End Model Data]", 3193, 3194, 3195},
        {Ebd, "", "[Begin Board Description] b", "[End Board Description]", 4390, 4391, 4392},
        {Ims, "", "[Interconnect Model Set] s", "[End Interconnect Model Set]", 6000, 6001, 6002},
        {Ims, "[Interconnect Model Set] s\n", "[Interconnect Model] m", "[End Interconnect Model]",
         6050, 6051, 6052},
        {Emd, "", "[Begin EMD] e", "[End EMD]", 6500, 6501, 6502},
        {Emd, kEmd, "[EMD Pin List] signal_name", "[End EMD Pin List]", 6500, 6501, 6502},
        {Ems, "", "[EMD Set] s", "[End EMD Set]", 6650, 6651, 6652},
        {Ems, "[EMD Set] s\n", "[EMD Model] m", "[End EMD Model]", 6650, 6651, 6652},
    };
    for (const SRow& row : rows) {
        SCOPED_TRACE(row.open);
        const SCheckHow how{.type = row.type,
                            .name = std::string("test").append(ExtensionOf(row.type))};
        const std::string section(row.section);
        const std::string open = std::string(row.open) + "\n";
        const std::string close = std::string(row.close) + "\n";
        const auto check = [&](const std::string& body) {
            return CheckText(test::Ibs("7.2", section + body), how);
        };
        EXPECT_TRUE(Has(check(open), row.unclosed));
        EXPECT_TRUE(Has(check(close), row.unopened));
        EXPECT_TRUE(Has(check(open + open + close), row.nested));
        const SChecked good = check(open + close);
        EXPECT_FALSE(Has(good, row.unopened) || Has(good, row.nested)) << good.text;
    }
}

/// Changes of a file that no reader may notice: line ends, case and blanks of keywords, blanks at
/// line ends, comments behind data.
TEST(Framework, FormOfTheTextDoesNotChangeTheReport)
{
    std::string faulty = WholeFile("5.1");
    faulty = ReplaceAll(faulty, "Vinl = 0.8", "Vinl = 3.8");
    faulty = ReplaceAll(faulty, "1 s1 m", "1 s1 absent");
    faulty = ReplaceAll(faulty, "[Pullup]", "[Pull up]");
    const std::string expected = Codes(CheckText(faulty));
    ASSERT_NE(expected, "");
    struct SChange
    {
        const char* from;
        const char* to;
    };
    for (const SChange& change :
         {SChange{"\n", "\r\n"}, SChange{"\n", "  \n"}, SChange{"\n", " | remark\n"},
          SChange{"GND Clamp", "gnd_clamp"}, SChange{"[Rising Waveform]", "[RISING WAVEFORM]"}}) {
        EXPECT_EQ(Codes(CheckText(ReplaceAll(faulty, change.from, change.to))), expected)
            << change.to;
    }
    EXPECT_EQ(Codes(CheckText(faulty + "| after the end\n\n \n")), expected);
    EXPECT_EQ(Codes(CheckText(faulty + "\x1A")), expected);
}

/// A copy that broke off must be told wherever it broke, and never take the checker down.
TEST(Framework, EveryTruncatedFileIsTold)
{
    const std::string whole = WholeFile("5.1");
    const std::size_t end = whole.find("[End]");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const SChecked checked = CheckText(std::string_view(whole).substr(0, length));
        const bool complete = length >= end + std::string_view("[End]").size();
        ASSERT_EQ(checked.counts.Passed(), complete) << length;
    }
}

TEST(Framework, OneCheckerGivesTheReportsOfMany)
{
    std::vector<std::string> texts = {WholeFile("2.1"),
                                      WholeFile("7.2").substr(0, 700),
                                      "",
                                      Ibs("7.2", "[Comment Char] #_char\n|\t\n[Submodel] s\n"),
                                      Ibs("3.2", "[Component] c\n[Series Switch Groups]\nOn a\n"),
                                      Ibs("4.2", "[Notes]\n\"open\n[Model] m\n\x01\n")};
    CMemoryFiles files;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        files.Add("t" + std::to_string(i) + ".ibs", texts[i]);
    }
    const auto reportOf = [&](CChecker& checker, std::size_t i) {
        CVectorLog log;
        checker.SetOutputStream(&log);
        checker.CheckFile("t" + std::to_string(i) + ".ibs", EFileType::Ibs, files);
        checker.PrintSummary();
        checker.SetOutputStream(nullptr);
        return log.Lines();
    };
    CChecker shared;
    for (std::size_t first = 0; first < texts.size(); ++first) {
        for (std::size_t second = 0; second < texts.size(); ++second) {
            CChecker own;
            reportOf(shared, first);
            EXPECT_EQ(reportOf(shared, second), reportOf(own, second)) << first << " " << second;
        }
    }
}

} // namespace
} // namespace zov::ibischk::test
