// SPDX-License-Identifier: Apache-2.0
// Names of files, and parameter files.
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

TEST(FileName, ExtensionIsAppendedOrRefused)
{
    struct SRow
    {
        std::string name;
        EFileType type;
        std::string_view report;
    };
    const SRow kRows[] = {
        {"x.txt", EFileType::Ibs, "E1900 - File Name Requires '.ibs' Extension.\n"},
        {"x.ibs", EFileType::Pkg, "E1903 - File Name Requires '.pkg' Extension.\n"},
        {"x.", EFileType::Ebd, "E1902 - File Name Requires '.ebd' Extension.\n"},
        {"x.ibs", EFileType::Ami, "E1924 - File Name 'x.ibs' requires a '.ami' Extension.\n"},
        {"x.emd", EFileType::Ems, "E1924 - File Name 'x.emd' requires a '.ems' Extension.\n"},
        {std::string(1021, 'x'), EFileType::Ibs, "E1901 - Unable to append filename extension.\n"},
        {"x", EFileType::Ims, "E1905 - Unable To Open File 'x.ims'\n"},
        {"a/x.IBS", EFileType::Ibs, "E1905 - Unable To Open File 'a/x.IBS'\n"},
    };
    for (const SRow& row : kRows) {
        const SChecked checked =
            CheckText("", {.type = row.type, .name = row.name, .absent = true});
        EXPECT_FALSE(checked.read);
        EXPECT_EQ(checked.text, row.report);
    }
}

TEST(FileName, RulesFollowTheVersion)
{
    struct SRow
    {
        std::string_view version;
        std::string name;
        std::string_view codes;
    };
    const SRow kRows[] = {
        {"2.1", "abcdefgh.ibs", ""},
        {"2.1", "abcdefghi.ibs", "W1925 W1925@2"},
        {"3.2", "Upper.ibs", "W901 E1010@2"},
        {"3.2", "two.points.ibs", "W1930 W1930@2"},
        {"3.2", "a b.ibs", "E1927 E1939@2 W1930@2"},
        {"3.2", "a*b.ibs", "E1927 E1927@2"},
        {"7.0", "Upper.and.point.ibs", ""},
        {"7.0", ".ibs", "E1929 E1929@2"},
        {"7.0", std::string(70, 'x') + ".ibs", "W1925 W1925@2"},
    };
    for (const SRow& row : kRows) {
        SCOPED_TRACE(row.name);
        const SChecked checked =
            CheckText(Header(row.version, row.name) + "[End]\n", {.name = row.name});
        std::string codes = Codes(checked, 901, 901);
        for (const auto& [first, last] : {std::pair{1010, 1010}, {1925, 1939}}) {
            const std::string more = Codes(checked, first, last);
            codes += (codes.empty() || more.empty() ? "" : " ") + more;
        }
        EXPECT_EQ(codes, row.codes);
    }
}

SChecked CheckTree(std::string_view text)
{
    return CheckText(text, {.type = EFileType::Ami, .name = "test.ami", .progress = true});
}

TEST(ParameterFile, JoinsLinesAndKeepsStrings)
{
    struct SRow
    {
        std::string_view file;
        std::string_view text;
    };
    constexpr SRow kRows[] = {
        {"(a\r\n(b 1) | note\n)\n", "(a (b 1)  ) "},
        {"(a \"x | y\")\n", "(a \"x | y\") "},
        {"(a \"x\ny | z\" | c\n)", "(a \"x y | z\"  )"},
        {"", ""},
        {"(a\tb)\n", "(a\tb) "},
    };
    for (const SRow& row : kRows) {
        const SChecked checked = CheckTree(row.file);
        ASSERT_TRUE(checked.read && checked.ami);
        EXPECT_EQ(checked.ami->text, row.text);
        EXPECT_TRUE(checked.text.starts_with("\n... Reading test.ami\n"));
    }
}

TEST(ParameterFile, KnowsTheLineOfEachPart)
{
    const SChecked checked = CheckTree("(a | x\n| comment\n(b 1)\n(c))\n");
    ASSERT_TRUE(checked.ami);
    const SAmiText& ami = *checked.ami;
    const std::string_view text = ami.text;
    EXPECT_EQ(ami.LineAt(0), 1U);
    EXPECT_EQ(ami.Place(text.substr(text.find('b'))).line, 3U);
    EXPECT_EQ(ami.Place(text.substr(text.find('b'))).column, 2U);
    EXPECT_EQ(ami.LineAt(text.find('c')), 4U);
    EXPECT_EQ(ami.LineAt(text.size() + 5), 4U);
}

TEST(ParameterFile, LongCommentsAndLinesStayOneLine)
{
    const SChecked checked =
        CheckTree("(a |" + std::string(5000, 'x') + "\n" + std::string(3000, 'b') + ")\n(c)");
    ASSERT_TRUE(checked.ami);
    EXPECT_EQ(checked.ami->text, "(a  " + std::string(3000, 'b') + ") (c)");
    EXPECT_EQ(checked.ami->lineStarts.size(), 3U);
}

TEST(ParameterFile, OpenStringDiscardsTheText)
{
    const SChecked checked = CheckTree("(a \"x\"\n\"y\n)\n");
    EXPECT_FALSE(checked.read);
    EXPECT_FALSE(checked.ami);
    EXPECT_EQ(Codes(checked), "E924 E925");
    EXPECT_EQ(MessageOf(checked, 924), "Unterminated string detected. Possibly started at line 2");
}

TEST(ParameterFile, IllegalCharactersBecomeBlanks)
{
    const SChecked checked = CheckTree("(a\x02)\n");
    EXPECT_EQ(Codes(checked, 900, 1999), "E1917@1");
    EXPECT_EQ(checked.ami->text, "(a ) ");
}

} // namespace

} // namespace zov::ibischk::test
