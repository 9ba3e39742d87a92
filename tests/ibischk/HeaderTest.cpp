// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

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

} // namespace

} // namespace zov::ibischk::test
