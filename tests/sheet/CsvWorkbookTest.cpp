// SPDX-License-Identifier: Apache-2.0
#include "sheet/CsvScanner.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

namespace zov::test {
namespace {

using namespace std::string_literals;

TEST(CsvWorkbook, ReadsTables)
{
    struct SCase
    {
        std::string name;
        std::string text;
        std::string rows;
    };
    const std::vector<SCase> cases{
        {"comma", "a,b\n1,2\n", "1: a|b\n2: 1|2"},
        {"no end of line", "a,b\n1,2", "1: a|b\n2: 1|2"},
        {"line ends", "a,b\r\n1,2\r3,4\n", "1: a|b\n2: 1|2\n3: 3|4"},
        {"blank rows count", "\n,,\n\r\nx,y\n", "4: x|y"},
        {"trailing empty", "a,,b,,\n", "1: a||b"},
        {"semicolon, decimal comma", "pn;c\nx;1,5\ny;2,5\n", "1: pn|c\n2: x|1,5\n3: y|2,5"},
        {"tab", "a\tb,c\n1\t2\n", "1: a|b,c\n2: 1|2"},
        {"pipe", "a|b\n1|2\n", "1: a|b\n2: 1|2"},
        {"sep line", "sep=;\r\na;b,c\n", "1: a|b,c"},
        {"list within cells", "pn,desc\nx,CAP;10u;16V\ny,RES;1k;1%\n",
         "1: pn|desc\n2: x|CAP;10u;16V\n3: y|RES;1k;1%"},
        {"quotes", "\"a\",\"b,c\",\"d \"\"e\"\"\"\n", "1: a|b,c|d \"e\""},
        {"newline in quotes", "\"a\nb\",c\nd,e\n", "1: a\nb|c\n2: d|e"},
        {"line ends in quotes", "\"a\r\nb\rc\",d\r\n", "1: a\nb\nc|d"},
        {"empty quotes", "\"\",x\n", "1: |x"},
        {"blanks behind quotes", "\"a\"  ,b\n", "1: a|b"},
        {"quote inside a cell", "5\" disk,b\n", "1: 5\" disk|b"},
        {"quote inside quotes", "\"a 5\" disk\",b\n", "1: a 5\" disk|b"},
        {"text behind quotes", "\"a\"b,c\nd,e\n", "1: ab|c\n2: d|e"},
        {"never closed", "a,b\n\"c,d\ne,f\n", "1: a|b\n2: \"c|d\n3: e|f"},
        {"protected number", "=\"0402\",\"=\"\"0603\"\"\",=A1\n", "1: 0402|0603|=A1"},
        {"mark", "\xEF\xBB\xBF\"a\",µ\n", "1: a|µ"},
        {"windows-1252",
         "name,val\nWiderstand f\xFCr Ger\xE4te,\xB1"
         "5%\n",
         "1: name|val\n2: Widerstand für Geräte|±5%"},
        {"utf-16le",
         "\xFF\xFE"
         "a\0,\0\xB5\0\n\0"s,
         "1: a|µ"},
        {"utf-16be", "\xFE\xFF\0a\0,\0\xB5"s, "1: a|µ"},
        {"utf-16 without mark", "p\0a\0r\0t\0,\0v\0a\0l\0\n\0"s, "1: part|val"},
    };
    for (const SCase& one : cases) {
        EXPECT_EQ(DumpBytes(one.text, "t.csv"), one.rows) << one.name;
    }
}

// A plain walk over every character, to be compared with the one over blocks.
std::string PlainRows(const std::string& text)
{
    std::string out;
    std::size_t row = 1;
    std::vector<std::string> cells(1);
    const auto flush = [&] {
        while (!cells.empty() && cells.back().empty()) {
            cells.pop_back();
        }
        for (std::size_t i = 0; i < cells.size(); ++i) {
            out +=
                (i > 0 ? "|" : (out.empty() ? "" : "\n") + std::to_string(row) + ": ") + cells[i];
        }
        cells.assign(1, "");
        ++row;
    };
    for (char c : text) {
        if (c == '\n') {
            flush();
        } else if (c == ',') {
            cells.emplace_back();
        } else {
            cells.back() += c;
        }
    }
    flush();
    return out;
}

TEST(CsvWorkbook, EqualsAPlainWalkAtEveryLength)
{
    std::uint32_t state = 12345;
    std::string text = "a,b\n";
    for (int i = 0; i < 400; ++i) {
        state = state * 1664525 + 1013904223;
        text += "xy,z\n,wq"[state >> 29];
        ASSERT_EQ(DumpBytes(text, "t.csv"), PlainRows(text)) << text;
    }
}

TEST(CsvWorkbook, RefusesWhatIsNoTable)
{
    EXPECT_EQ(DumpBytes("abc\0def"s, "t.csv"),
              "error: the file holds NUL characters: it is not a text table");
    EXPECT_NE(DumpBytes("a;b\n" + std::string(20000, ';') + "x", "t.csv").find("16384 columns"),
              std::string::npos);
    EXPECT_EQ(DumpBytes("", "t.csv"), "error: the file is empty");
    EXPECT_NE(DumpBytes("<!DOCTYPE html><html>", "t.csv").find("web page"), std::string::npos);
}

} // namespace
} // namespace zov::test
