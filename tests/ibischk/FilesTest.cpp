// SPDX-License-Identifier: Apache-2.0
// Names of files, the header, and parameter files.
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
        CVectorLog log;
        CMemoryFiles none;
        CChecker checker;
        checker.Report().SetQuietProgress(true);
        checker.SetOutputStream(&log);
        EXPECT_FALSE(checker.CheckFile(row.name, row.type, none));
        ASSERT_EQ(log.Lines().size(), 1U) << row.name;
        EXPECT_EQ(log.Lines().front(), row.report);
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

TEST(Header, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"syntax/version-once", "3.2", "[IBIS Ver] 3.2\n", "E910@4"},
        {"header/file-name-once", "3.2", "[File Name] test.ibs\n", "E1009@4"},
        {"common/keyword-once", "3.2", "[File Rev] 2\n", "E1911@4"},
        {"common/keyword-once", "3.2", "[Date] May\n[Date] May\n", "W1911@5"},
        {"common/keyword-value", "3.2", "[File Rev]\n", "E1913@4"},
        {"common/keyword-value", "3.2", "[File Name]\n", "E1913@4"},
        {"common/name-one-word", "3.2", "[File Name] test.ibs x\n", "E1939@4"},
        {"header/version-published", "4.9", "", "N1011@1"},
        {"header/version-alone", "3.2 beta", "", "W1012@1"},
        {"header/file-name-extension", "3.2", "[File Name] test.pkg\n", "E1013@4"},
        {"header/file-name-case", "6.1", "[File Name] tEst.ibs\n", "E1010@4"},
        {"header/file-name-actual", "3.2", "[File Name] other.ibs\n", "W1014@4"},
        {"common/file-name-absolute", "7.0", "[File Name] /test.ibs\n", "E1926@4"},
        {"common/file-name-sequence", "7.0", "[File Name] ../test.ibs\n", "E1928@4"},
        {"common/file-name-character", "3.2", "[File Name] te?t.ibs\n", "E1927@4"},
        {"common/file-name-form", "6.1", "[File Name] a/test.ibs\n", "W1930@4"},
        {"header/file-rev-number", "3.2", "[File Rev] new\n", "N1015@4"},
        {"header/date-ambiguous", "3.2", "[Date] 08/09/03\n", "N1016@4"},
        {"common/text-length", "3.2", "[Date] the 41st character of this text is too man\n",
         "W1912@4"},
        {"header/header-first", "3.2", "[Model] m\n[File Rev] 1\n", "E1017@5"},
        {"header/header-first", "3.2", "[Model] m\n[Source] s\n", "W1017@5"},
        {"header/header-text", "3.2", "[Source]\n[Notes]\nx\n", "N1018@4"},
        {"header/header-text", "3.2", "[Date]\n", "N1018@4"},
        {"common/keyword-required", "3.2", "", "E1915"},
    };
    for (const SRuleCase& rule : kRules) {
        ExpectRule(rule);
    }
}

TEST(Header, GoodHeaderIsSilent)
{
    const SChecked checked = CheckText(Ibs(
        "4.1", "[Date] 5 May 2003\n[Source] bench\n[Notes]\nx\n[Copyright] us\n[Component] c\n"));
    EXPECT_EQ(Codes(checked, 900, 1099), "");
    EXPECT_FALSE(Has(checked, 1915, 0) && MessageOf(checked, 1915).find("File") == 18);
}

TEST(Header, DatesThatCanBeReadOneWayAreSilent)
{
    for (const std::string_view date :
         {"2024-07-05", "23/01/2021", "6-18-2007", "5/5/96", "1999"}) {
        EXPECT_FALSE(Has(CheckText(Ibs("3.2", "[Date] " + std::string(date) + "\n")), 1016))
            << date;
    }
}

TEST(Header, MissingKeywordsAreNamed)
{
    const SChecked checked =
        CheckText("[IBIS Ver] 3.2\n[End]\n", {.type = EFileType::Pkg, .name = "test.pkg"});
    EXPECT_EQ(Codes(checked), "E1915 E1915 E1915");
    EXPECT_NE(checked.text.find("Required keyword 'Define Package Model' not found in file "
                                "'test.pkg'."),
              std::string::npos);
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
        EXPECT_EQ(checked.text, "\n... Reading test.ami\n");
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
    EXPECT_EQ(Codes(checked), "E1917@1");
    EXPECT_EQ(checked.ami->text, "(a ) ");
}

} // namespace

} // namespace zov::ibischk::test
