// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisFileText.h"

#include "app/ibis/LargeTextView.h"

#include <gtest/gtest.h>
#include <random>

namespace zov::app {
namespace {

using namespace std::string_literals;

TEST(IbisFileText, OnlyEditedLinesGetNewBytes)
{
    struct SCase
    {
        const char* name;
        std::string before;
        QString find; ///< in the text that is shown
        QString put;
        std::string after;
    };
    const SCase cases[] = {
        {"most lines end in LF", "a\nb\r\nc\nd\n", QStringLiteral("c"), QStringLiteral("x\ny"),
         "a\nb\r\nx\ny\nd\n"},
        {"most lines end in CR LF", "a\r\nb\nc\r\n", QStringLiteral("a\n"),
         QStringLiteral("a\nnew\n"), "a\r\nnew\r\nb\nc\r\n"},
        {"no line end at the end", "a\nb", QStringLiteral("b"), QStringLiteral("b\n"), "a\nb\n"},
        {"first line", "a\r\nb\r\n", QStringLiteral("a"), QStringLiteral("x"), "x\r\nb\r\n"},
        {"line taken out", "a\nb\nc\n", QStringLiteral("b\n"), QString(), "a\nc\n"},
        {"everything taken out", "a\nb\n", QStringLiteral("a\nb\n"), QString(), ""},
        {"text before the first", "b\n", QStringLiteral("b"), QStringLiteral("a\nb"), "a\nb\n"},
        {"byte order mark", "\xEF\xBB\xBF[IBIS Ver]\n5\n", QStringLiteral("[IBIS Ver]"),
         QStringLiteral("[IBIS Ver] 5"), "\xEF\xBB\xBF[IBIS Ver] 5\n5\n"},
        {"lone CR elsewhere", "a\rb\nc\n", QStringLiteral("c"), QStringLiteral("d"), "a\rb\nd\n"},
        {"no-break space elsewhere", "| \xC2\xA0 x\nc\n", QStringLiteral("c"), QStringLiteral("d"),
         "| \xC2\xA0 x\nd\n"},
        {"line separators elsewhere", "\xE2\x80\xA8 \xE2\x80\xA9\nc\n", QStringLiteral("c"),
         QStringLiteral("d"), "\xE2\x80\xA8 \xE2\x80\xA9\nd\n"},
        {"Latin-1", "\xB5\xA0\nb\n", QStringLiteral("b"), QStringLiteral("\u00E9"),
         "\xB5\xA0\n\xE9\n"},
        {"more than Latin-1", "\xB5\nb\n", QStringLiteral("b"), QStringLiteral("\u03A9"),
         "\xC2\xB5\n\xCE\xA9\n"},
        {"zero byte", "a\0b\nc\n"s, QStringLiteral("c"), QStringLiteral("d"), "a\0b\nd\n"s},
    };
    for (const SCase& one : cases) {
        const CIbisFileText file(one.before);
        QString text = file.Shown();
        EXPECT_EQ(file.BytesOf(text), one.before) << one.name << ", not touched";
        const int at = text.indexOf(one.find);
        ASSERT_GE(at, 0) << one.name;
        text.replace(at, one.find.size(), one.put);
        EXPECT_EQ(file.BytesOf(text), one.after) << one.name;
    }
}

TEST(IbisFileText, AnyBytesComeBackAndCountTheSameLines)
{
    std::mt19937 random(7);
    // Bytes that matter come often.
    const std::string common = "\r\n\n\r a|[]\xC2\xA0\xE2\x80\xA9\xEF\xBB\xBF";
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 60; i > 0; --i) {
            bytes +=
                random() % 4 == 0 ? static_cast<char>(random()) : common[random() % common.size()];
        }
        const CIbisFileText file(bytes);
        const QString shown = file.Shown();
        EXPECT_EQ(file.BytesOf(shown), bytes);
        EXPECT_EQ(shown.count(QLatin1Char('\n')), std::count(bytes.begin(), bytes.end(), '\n'));
        // One more line in front leaves all others.
        const std::string longer = file.BytesOf(QStringLiteral("x\n") + shown);
        const std::size_t body = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
        EXPECT_TRUE(longer.ends_with(std::string_view(bytes).substr(body))) << round;
    }
}

TEST(IbisFileText, LongestLine)
{
    EXPECT_EQ(CIbisFileText::LongestLine(""), 0U);
    EXPECT_EQ(CIbisFileText::LongestLine("\n\nabc"), 3U);
    EXPECT_EQ(CIbisFileText::LongestLine("abcd\nabc\n"), 4U);
}

TEST(LargeText, IsSearchedWithoutCaseOnceAround)
{
    const std::string text = "[Model] a\n[model] B\n| end";
    struct SCase
    {
        const char* wanted;
        std::size_t from;
        bool backwards;
        std::size_t found;
    };
    constexpr std::size_t kNone = std::string_view::npos;
    const SCase cases[] = {
        {"[MODEL]", 0, false, 0},  {"[MODEL]", 1, false, 10}, {"[MODEL]", 11, false, 0},
        {"[Model]", 10, true, 0},  {"[Model]", 0, true, 10},  {"END", 25, true, 22},
        {"ends", 0, false, kNone}, {"", 0, false, kNone},     {"b", 18, false, 18},
    };
    for (const SCase& one : cases) {
        EXPECT_EQ(FindNoCase(text, one.wanted, one.from, one.backwards, [] { return false; }),
                  one.found)
            << one.wanted << " from " << one.from;
    }
    EXPECT_EQ(FindNoCase("ab", "abc", 0, false, [] { return false; }), kNone);
}

} // namespace
} // namespace zov::app
