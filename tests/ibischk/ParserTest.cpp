// SPDX-License-Identifier: Apache-2.0
// What holds for every file: lines, versions, keywords and where they may stand.
#include "ibischk/CheckSupport.h"
#include "ibischk/Family.h"
#include "ibischk/Keywords.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

constexpr std::string_view kComponent = "[Component] c\n[Manufacturer] m\n";

/// Findings of the parser's own block and of the common placement rules.
std::string ParserCodes(std::string_view text, const SCheckHow& how = {})
{
    const SChecked checked = CheckText(text, how);
    std::string codes = Codes(checked, 900, 999);
    for (const auto& [first, last] : {std::pair{1007, 1008},
                                      {1911, 1911},
                                      {1917, 1917},
                                      {1938, 1940},
                                      {2390, 2399},
                                      {3190, 3195},
                                      {6880, 6883},
                                      {6900, 6901}}) {
        const std::string more = Codes(checked, first, last);
        codes += (codes.empty() || more.empty() ? "" : " ") + more;
    }
    return codes;
}

TEST(Parser, VersionPicksTheRulesAndTheBanner)
{
    struct SRow
    {
        std::string_view line;
        std::string_view version; ///< empty: can't be determined
    };
    constexpr SRow kRows[] = {
        {"[IBIS Ver] 2.1", "2.1"},    {"[ibis_ver]   3.0", "3.2"},
        {"[IBIS Ver] 4.0", "4.2"},    {"[IBIS Ver] 5.0", "5.1"},
        {"  [IBIS Ver] 6", "6.0"},    {"[IBIS Ver] 6.0 | x", "6.0"},
        {"[IBIS Ver]\t6.1", "6.1"},   {"[IBIS Ver]7", "7.0"},
        {"[IBIS Ver] 7.1\r", "7.1"},  {"| [x]\n\n[IBIS Ver] 7.2", "7.2"},
        {"[IBIS Ver] 6.2", ""},       {"[IBIS Ver] 7.3", ""},
        {"[IBIS Ver] 1.1", ""},       {"[IBIS Ver]", ""},
        {"[File Name] test.ibs", ""}, {"no keyword at all", ""},
        {"[IBIS  Ver] 3.2", ""},      {"", ""},
    };
    for (const SRow& row : kRows) {
        SCOPED_TRACE(row.line);
        const SChecked checked = CheckText(std::string(row.line) + "\n[End]\n", {.progress = true});
        EXPECT_EQ(checked.read, !row.version.empty());
        if (row.version.empty()) {
            EXPECT_EQ(MessageOf(checked, 900), "Could not determine Version for file test.ibs");
            EXPECT_FALSE(Has(checked, 903));
        } else {
            EXPECT_TRUE(checked.text.starts_with("\nChecking test.ibs for IBIS " +
                                                 std::string(row.version) +
                                                 " Compatibility...\n\n"))
                << checked.text;
        }
    }
}

TEST(Parser, LineLimitGrowsWithTheVersion)
{
    struct SRow
    {
        std::string_view version;
        std::size_t length;
        std::string_view codes;
    };
    constexpr SRow kRows[] = {
        {"3.2", 80, ""},         {"3.2", 81, "E905@4"},   {"4.2", 81, ""},   {"4.2", 121, "E905@4"},
        {"7.0", 121, ""},        {"7.0", 1022, ""},       {"7.0", 1023, ""}, {"7.0", 1024, ""},
        {"7.0", 1025, "E905@4"}, {"7.1", 5000, "E905@4"},
    };
    for (const SRow& row : kRows) {
        for (const std::string_view end : {"\n", "\r\n"}) {
            const std::string comment = "|" + std::string(row.length - 1, 'x') + std::string(end);
            EXPECT_EQ(ParserCodes(Ibs(row.version, comment)), row.codes)
                << row.version << " " << row.length;
        }
    }
    EXPECT_EQ(MessageOf(CheckText(Ibs("3.2", "|" + std::string(80, 'x') + "\n")), 905),
              "Exceeds 80 chararacters.");
}

TEST(Parser, LongLineGoesOnInTheNextReadUnderItsOwnNumber)
{
    const std::string data(1500, 'x');
    const SChecked checked = CheckText(Ibs("7.0", "[Nothing]\n" + data + "\n[Else]\n"));
    EXPECT_EQ(Codes(checked, 900, 999), "E916@4 E905@5 E907@5 E907@5 E916@6");
    EXPECT_EQ(checked.findings[3].place.column, 1024U);
}

TEST(Parser, RawCharacters)
{
    const std::string nul("a\0b\n", 4);
    struct SRow
    {
        std::string body;
        std::string_view codes;
        std::string_view message;
    };
    const SRow kRows[] = {
        {"| a\rb\n", "E1917@4",
         "Found illegal control character (code d).  To fix, save file in MS_DOS format and remove "
         ".txt extension."},
        {"| " + nul, "E1917@4",
         "Found illegal NUL character (code 0).  To fix, save file in MS_DOS format and remove "
         ".txt extension."},
        {"| \xC2\xB5\n", "E1917@4 E1917@4",
         "Found illegal non-7-bit ASCII character (code c2).  To fix, save file in MS_DOS format "
         "and remove .txt extension."},
        {"|" + std::string(1021, 'x') + "\x01\n", "E1917@4",
         "Found illegal control character (code 1)."},
        {"| crlf\r\n|\x7F\n", "", ""},
    };
    for (const SRow& row : kRows) {
        const SChecked checked = CheckText(Ibs("7.0", row.body));
        EXPECT_EQ(Codes(checked, 1917, 1917), row.codes);
        EXPECT_EQ(MessageOf(checked, 1917), row.message);
    }
}

TEST(Parser, CtrlZIsDroppedOnlyAtTheEndOfTheFile)
{
    EXPECT_EQ(ParserCodes(Ibs("3.2", "") + "\x1A"), "");
    EXPECT_EQ(ParserCodes(Ibs("3.2", "") + "\x1A\n"), "E1917@5");
}

TEST(Parser, TabsAreToldOnce)
{
    const SChecked checked = CheckText(Ibs("3.2", "|\tone\n|\ttwo\n"));
    EXPECT_EQ(Codes(checked, 921, 921), "W921@4");
}

struct SCodesRow
{
    std::string_view version;
    std::string body;
    std::string_view codes;
};

void ExpectCodes(std::initializer_list<SCodesRow> rows)
{
    for (const SCodesRow& row : rows) {
        SCOPED_TRACE(row.body);
        EXPECT_EQ(ParserCodes(Ibs(row.version, row.body)), row.codes);
    }
}

TEST(Parser, ClassesOfLines)
{
    ExpectCodes({
        {"3.2", "[Component] c\n  [Pin] signal_name model_name\n", "E906@5"},
        {"3.2", "[Notes]\n  [any] text\n x\n", ""},
        {"3.2", "[Date]\n  [any] text\n", "E906@5 E916@5"},
        {"3.2", "   | comment\n\n \n", ""},
        {"3.2", "[Date] today\nmore\n", "E907@5"},
        {"3.2", "[End] x\n", "E920@4 E902@5"},
        {"3.2", "[End]\n| fine\ndata\n", "E902@6 E902@7"},
        {"3.2", "[Pin\n", "E914@4"},
        {"3.2", "[]\n", "E915@4"},
        {"7.2", "[" + std::string(1022, 'x') + "]\n", "E914@4 E907@4"},
        {"3.2", "[Pin Mappin]\nx y\n", "E916@4 E907@5"},
        {"3.2", "[Not Key]\n", "E916@4"},
    });
    EXPECT_EQ(MessageOf(CheckText(Ibs("3.2", "[Pin  Map]\n")), 916), "Invalid Keyword: Pin  Map");
    EXPECT_EQ(MessageOf(CheckText(Ibs("3.2", "[X]\n a b | c\n")), 907),
              "Data for unknown keyword.\na b");
}

TEST(Parser, CommentCharacterChanges)
{
    ExpectCodes({
        {"3.2", "[Comment Char] #_char\n# x\n[Date] d # x\n", ""},
        {"3.2", "[comment_char] #_CHAR # more\n# x\n", ""},
        {"3.2", "[Comment Char] |_char | same\n| x\n", ""},
        {"3.2", "[Comment Char] #_char\n[Z]\n| x\n", "E916@5 E907@6"},
        {"3.2", "[Comment Char] #_char extra\n", "E919@4"},
        {"3.2", "[Comment Char] a_char\n| x\n", "E918@4"},
        {"3.2", "[Comment Char] #\n", "E917@4"},
        {"3.2", "[Comment Char]\n", "E917@4"},
    });
    EXPECT_EQ(MessageOf(CheckText(Ibs("3.2", "[Comment Char] =_char\n")), 918),
              "Invalid Comment Character '='.");
}

TEST(Parser, MissingEndStillClosesAndFinishes)
{
    const SChecked checked = CheckText(Header("3.2") + "[Notes]\n");
    EXPECT_EQ(Codes(checked), "E903 N1018@4 E1915");
}

TEST(Parser, KeywordsOutsideTheVersionNameTheOneThatBringsThem)
{
    const SChecked checked = CheckText(Ibs("2.1", "[Model Selector] s\nm text\n[Add Submodel]\n"
                                                  "[Model] m\n[Add Submodel]\nx y\n"));
    EXPECT_EQ(Codes(checked, 900, 999), "E926@4 E926@8");
    EXPECT_EQ(MessageOf(checked, 926), "Keyword [Model Selector] is not valid for IBIS version "
                                       "2.1: it was introduced in IBIS 3.2.");
    struct SRow
    {
        EKeyword code;
        std::string_view since;
    };
    constexpr SRow kRows[] = {{EKeyword::CompositeCurrent, "5.1"},
                              {EKeyword::RepeaterPin, "6.0"},
                              {EKeyword::SubmodelInitialDelay, "6.1"},
                              {EKeyword::BusLabel, "7.0"},
                              {EKeyword::PDNModel, "7.1"},
                              {EKeyword::ExternalModel, "3.2"},
                              {EKeyword::TestLoad, "4.2"},
                              {EKeyword::Rac, "2.1"}};
    for (const SRow& row : kRows) {
        EXPECT_EQ(VersionText(KeywordRow(row.code).since), row.since) << KeywordText(row.code);
    }
}

TEST(Parser, NamesAreMappedByWhereTheyStand)
{
    using enum EKeyword;
    struct SRow
    {
        std::string_view name;
        EKeyword current;
        EFileType type;
        bool submodel;
        EKeyword code;
    };
    constexpr SRow kRows[] = {
        {"MANUFACTURER", Component, EFileType::Ibs, false, Manufacturer},
        {"Manufacturer", DefinePackageModel, EFileType::Pkg, false, PackageManufacturer},
        {"Manufacturer", PackageNumberOfPins, EFileType::Pkg, false, Manufacturer},
        {"Manufacturer", BeginBoardDescription, EFileType::Ebd, false, BoardManufacturer},
        {"Manufacturer", EndInterconnectModel, EFileType::Ims, false, InterconnectManufacturer},
        {"Manufacturer", BeginEMD, EFileType::Emd, false, EmdManufacturer},
        {"Manufacturer", EMDSet, EFileType::Ems, false, EmdSetManufacturer},
        {"description", OEM, EFileType::Ibs, false, PackageDescription},
        {"description", InterconnectModelSet, EFileType::Ibs, false, InterconnectDescription},
        {"number of pins", OEM, EFileType::Pkg, false, PackageNumberOfPins},
        {"Number_Of_Pins", BoardManufacturer, EFileType::Ebd, false, BoardNumberOfPins},
        {"GND Clamp", SubmodelSpec, EFileType::Ibs, true, SubmodelGNDClamp},
        {"gnd_clamp", Model, EFileType::Ibs, false, GNDClamp},
        {"Initial Delay", Submodel, EFileType::Ibs, true, SubmodelInitialDelay},
    };
    for (const SRow& row : kRows) {
        EXPECT_EQ(MapByContext(FindKeyword(row.name), row.current, row.type, row.submodel),
                  row.code)
            << row.name << " " << KeywordText(row.current);
    }
    EXPECT_EQ(static_cast<int>(EndPDNModel), 162);
    EXPECT_EQ(static_cast<int>(SubmodelInitialDelay), 119);
    EXPECT_EQ(static_cast<int>(EMDGroup), 150);
}

TEST(Parser, SectionsStandInTheirFiles)
{
    struct SRow
    {
        EFileType type;
        std::string_view keyword;
        std::string_view codes;
    };
    constexpr SRow kRows[] = {
        {EFileType::Pkg, "[Component] c\n[Pin] x\n1 2 3", "E911@4"},
        {EFileType::Ebd, "[Model] m", "E912@4"},
        {EFileType::Ims, "[Submodel] m\n[Ramp]\nx", "E913@4"},
        {EFileType::Emd, "[External Circuit] m\n[End External Circuit]", "E911@4"},
        {EFileType::Ibs, "[Begin Board Description] b\n[Pin List] signal_name\n1 A", "E913@4"},
        {EFileType::Ems, "[EMD Set] s\n[End EMD Set]", ""},
        {EFileType::Pkg, "[Define Package Model] p\n[End Package Model]", ""},
        {EFileType::Ibs, "[Interconnect Model Set] p\n[End Interconnect Model Set]", ""},
    };
    for (const SRow& row : kRows) {
        const std::string name = "test" + std::string(ExtensionOf(row.type));
        EXPECT_EQ(ParserCodes(Ibs("7.2", std::string(row.keyword) + "\n"),
                              {.type = row.type, .name = name}),
                  row.codes)
            << row.keyword;
    }
}

TEST(Parser, KeywordsStandInTheirSectionsAndBlocks)
{
    const std::string component(kComponent);
    ExpectCodes({
        {"7.2", "[Model] m\n[Pin] x\n", "E1940@5"},
        {"7.2", "[Pulldown]\n1 2 3 4\n", "E1940@4"},
        {"7.2", "[Submodel] s\n[GND Clamp]\n[Voltage Range] 1 1 1\n[POWER Clamp]\n", ""},
        {"7.2", "[Submodel] s\n[Composite Current]\n", "E1940@5"},
        {"7.2", component + "[Package]\n[Notes]\nx\n[Package]\n", "E1911@9"},
        {"7.2", "[Model] m\n[External Model] x\n[End External Model]\n", "W1938@5"},
        {"7.2", "[Model] m\n[External Model]\n[Ramp]\n", "E2390@5"},
        {"7.2", "[Model] m\n[End External Model]\n", "E2391@5"},
        {"7.2", "[Model] m\n[External Model]\n[External Model]\n[End External Model]\n",
         "E1911@6 E2392@6"},
        {"7.2", component + "[PDN Model] x\n", "E1940@6"},
        {"7.2", component + "[PDN Domain]\n[PDN Model] x\n[PDN Model] y\n[End PDN Domain]\n",
         "E6883@8 E6900@8"},
        {"7.2", "[Define Package Model] p\n[Row] 1\n[End Package Model]\n[OEM] x\n",
         "E1940@5 E1940@7"},
        {"7.2", "[Define Package Model] p\n[Define Package Model] q\n", "E3192@5 E3190@5"},
        {"7.2", "[End Package Model]\n", "E3191@4"},
    });
}

TEST(Parser, EveryKeywordHasAFamily)
{
    for (int code = 0; code < static_cast<int>(EKeyword::End); ++code) {
        const auto keyword = static_cast<EKeyword>(code);
        if (keyword != EKeyword::CommentChar) {
            EXPECT_EQ(HandlerOf(keyword).keyword, keyword) << KeywordText(keyword);
        }
    }
}

TEST(Parser, OneCheckLeavesNothingForTheNext)
{
    const std::string first = Ibs("7.2", "[Comment Char] #_char\n|\t\n[Submodel] s\n[Date] x\n");
    const std::string second = Ibs("3.2", "| comment\n|\tx\n[Pulldown]\n");
    CMemoryFiles files;
    files.Add("a.ibs", first);
    files.Add("b.ibs", second);
    CChecker& checker = ProcessChecker();
    CVectorLog alone;
    checker.SetOutputStream(&alone);
    EXPECT_TRUE(checker.CheckFile("b.ibs", EFileType::Ibs, files));
    EXPECT_TRUE(checker.CheckFile("a.ibs", EFileType::Ibs, files));
    CVectorLog after;
    checker.SetOutputStream(&after);
    EXPECT_TRUE(checker.CheckFile("b", EFileType::Ibs, files));
    checker.SetOutputStream(nullptr);
    ASSERT_LT(after.Lines().size(), alone.Lines().size());
    EXPECT_TRUE(std::equal(after.Lines().begin(), after.Lines().end(), alone.Lines().begin()));
    std::uint32_t errors = 99;
    checker.GetCounts(nullptr, &errors, nullptr);
    EXPECT_EQ(errors, checker.Counts().errors);
}

TEST(Parser, HugeLinesAndFilesEnd)
{
    std::string line(3'000'000, 'x');
    line[1'000'000] = '\x01';
    EXPECT_TRUE(CheckText(Ibs("7.2", "[Notes]\n" + line + "\n")).read);
    EXPECT_TRUE(CheckText(Ibs("7.2", "|" + line + "\n")).read);
    EXPECT_TRUE(CheckText(Header("7.2") + std::string(100'000, '[')).read);
}

} // namespace

} // namespace zov::ibischk::test
