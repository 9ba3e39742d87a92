// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

TEST(Text, ComparesWithoutRegardToCase)
{
    struct SCase
    {
        const char* a;
        const char* b;
        int order;
    };
    const SCase cases[] = {
        {"GRM155r", "grm155R", 0},
        {"a", "B", -1},
        {"", "", 0},
        {"ab", "a", 1},
        {"größe", "GRÖßE", 0},
        {"Конденсатор", "КОНДЕНСАТОР", 0},
        {"ž", "Ž", 0},
        {"ň", "Ň", 0},
        {"4.7µF", "4.7μF", 0}, // the micro sign and the Greek letter
        {"\xFF", "\xFE", 1},
        {"\xFF", "\xFF", 0},
        {"ÿ", "Ÿ", 0},
        {"÷", "×", 1},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " / " + c.b);
        EXPECT_EQ(CompareNoCase(c.a, c.b), c.order);
        EXPECT_EQ(CompareNoCase(c.b, c.a), -c.order);
        EXPECT_EQ(HashNoCase(c.a) == HashNoCase(c.b), c.order == 0);
    }
    EXPECT_TRUE(StartsWithNoCase("SOURCEFILE=x", "SourceFile"));
    EXPECT_FALSE(StartsWithNoCase("Source", "SourceFile"));
    EXPECT_TRUE(EndsWithNoCase("a.XLSX", ".xlsx"));
    EXPECT_FALSE(EndsWithNoCase("xlsx", ".xlsx"));
    EXPECT_EQ(UpperCase("straße žÿ а"), "STRAßE ŽŸ А");
    EXPECT_EQ(LowerCase("ŽŸ ΑЯЀ ÄİI"), "žÿ αяѐ äİi");
}

TEST(Text, MatchesWildcards)
{
    struct SCase
    {
        const char* pattern;
        const char* text;
        bool match;
    };
    const SCase cases[] = {
        {"*", "", true},        {"", "", true},
        {"", "x", false},       {"a*c", "ABBC", true},
        {"a*c", "abcd", false}, {"*b*b*", "abcb", true},
        {"?", "ä", true},       {"??", "ä", false},
        {"*ä?", "xxÄb", true},  {"a**", "a", true},
        {"*ab", "aab", true},   {"c?1", "C11", true},
        {"[a]", "a", false},    {"*a*a*a*b", "aaaaaaaaaaaaaaaaaaaa", false},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(WildcardMatch(c.pattern, c.text), c.match) << c.pattern << " / " << c.text;
    }
}

TEST(Text, DecodesOnlyWellFormedUtf8)
{
    const char* bad[] = {"\x80", "\xC0\x80",    "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                         "\xC3", "abc\xE2\x82", "12345678\xFF"};
    for (const char* text : bad) {
        EXPECT_FALSE(IsValidUtf8(text)) << text;
    }
    EXPECT_TRUE(IsValidUtf8("12345678µ€😀"));
    EXPECT_EQ(ToValidUtf8("10\xB5"
                          "F \x80"),
              "10µF €");
    EXPECT_EQ(ToValidUtf8(std::string_view("a\0b", 3)), "ab");
    EXPECT_EQ(Utf16ToUtf8(u"µ\xD83D\xDE00\xD800x"), "µ😀\uFFFDx");
}

} // namespace
} // namespace zov
