// SPDX-License-Identifier: Apache-2.0
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

namespace zov::test {
namespace {

using namespace std::string_literals;

enum : std::uint16_t
{
    kFormula = 0x0006,
    kContinue = 0x003C,
    kMulRk = 0x00BD,
    kXf = 0x00E0,
    kSst = 0x00FC,
    kLabelSst = 0x00FD,
    kNumber = 0x0203,
    kLabel = 0x0204,
    kBoolErr = 0x0205,
    kString = 0x0207,
    kRk = 0x027E,
    kFormat = 0x041E
};

// Characters, flags (0 narrow, 1 wide) and the text.
std::string Narrow(const std::string& text)
{
    return U16(static_cast<unsigned>(text.size())) + '\0' + text;
}

std::string Cells()
{
    return CBiff()
        .Cell(kNumber, 0, 0, F64(0.30000000000000004))
        .Cell(kNumber, 0, 1, F64(402), 1)
        .Cell(kRk, 0, 2, U32(static_cast<std::uint32_t>(-5) << 2U | 2U))
        .Cell(kRk, 0, 3, U32(1234 << 2 | 3))
        .Cell(kRk, 0, 4, U32(0x3FF00000))
        .Record(kMulRk,
                U16(1) + U16(2) + U16(0) + U32(7 << 2 | 2) + U16(1) + U32(8 << 2 | 2) + U16(3))
        .Cell(kLabelSst, 2, 0, U32(1))
        .Cell(kLabel, 2, 1, Narrow("caf\xE9"))
        .Cell(kBoolErr, 2, 2, "\x01\x00"s)
        .Cell(kBoolErr, 2, 3, "\x2A\x01")
        .Cell(kFormula, 3, 0, F64(1.5) + std::string(8, '\0'))
        .Cell(kFormula, 3, 1, "\0\0\0\0\0\0\xFF\xFF"s + std::string(8, '\0'))
        .Record(0x04BC, std::string(10, '\0'))
        .Record(kString, Narrow("from formula"))
        .Cell(kFormula, 3, 2, "\1\0\1\0\0\0\xFF\xFF"s + std::string(8, '\0'))
        .Cell(kFormula, 3, 3, "\2\0\x07\0\0\0\xFF\xFF"s + std::string(8, '\0'))
        .Cell(kFormula, 3, 4, "\0\0\0\0\0\0\xFF\xFF"s + std::string(8, '\0'))
        .Begin(0x20)
        .Cell(kNumber, 9, 9, F64(1))
        .End()
        .bytes;
}

constexpr std::string_view kShown = "1: 0.3|0402|-5|12.34|1\n"
                                    "2: ||7|0008\n"
                                    "3: µΩ|café|TRUE|#N/A\n"
                                    "4: 1.5|from formula|TRUE|#DIV/0!";

std::string Globals()
{
    return CBiff()
        .Record(kFormat, U16(164) + Narrow("0000"))
        .Record(kXf, U16(0) + U16(0) + std::string(16, '\0'))
        .Record(kXf, U16(0) + U16(164) + std::string(16, '\0'))
        .Record(kSst, U32(2) + U32(2) + Narrow("ab") + U16(2) + "\x01\xB5\0\xA9\x03"s)
        .bytes;
}

TEST(XlsWorkbook, ReadsCells)
{
    const std::string stream = XlsBytes(Globals(), Cells());
    EXPECT_EQ(DumpBytes(stream, "a.xls"), kShown);
    EXPECT_EQ(DumpBytes(OleBytes("Workbook", stream), "a.xls"), kShown);
    EXPECT_EQ(DumpBytes(OleBytes("Book", stream, 2), "a.xls"), kShown) << "scattered sectors";
    auto book = OpenWorkbookBytes(stream, "a.xls");
    ASSERT_TRUE(book.Ok());
    DumpRows(**book);
    EXPECT_EQ((*book)->UncachedFormulaCount(), 1U);
}

TEST(XlsWorkbook, ReadsSharedTextsCutAnywhere)
{
    // Rich and phonetic parts, narrow and wide, cut at each place where a Continue record may
    // begin: within characters, where flags of their own follow, and within what is behind them,
    // where none do.
    const std::string head = U32(3) + U32(3);
    const std::string rich = U16(4) + "\x08" + U16(1) + "abcd" + U32(0x01020304);
    const std::string wide = U16(3) + "\x05" + U32(2) + "x\0\xB5\0z\0"s + "ph";
    const std::string last = Narrow("end");
    const std::string all = head + rich + wide + last;
    const std::string cells = CBiff()
                                  .Cell(kLabelSst, 0, 0, U32(0))
                                  .Cell(kLabelSst, 0, 1, U32(1))
                                  .Cell(kLabelSst, 0, 2, U32(2))
                                  .bytes;
    const std::size_t richText = head.size() + 5;
    const std::size_t wideText = head.size() + rich.size() + 7;
    const std::size_t lastText = all.size() - 3;
    for (std::size_t cut = head.size(); cut <= all.size(); ++cut) {
        std::string flags;
        if (cut > richText && cut < richText + 4) {
            flags = std::string(1, '\0');
        } else if (cut >= wideText && cut < wideText + 6) {
            if ((cut - wideText) % 2 != 0) {
                continue; // a character is never cut in two
            }
            flags = cut > wideText ? "\x01" : "\x01";
        } else if (cut >= lastText && cut < all.size()) {
            flags = std::string(1, '\0');
        } else if (cut == richText) {
            flags = std::string(1, '\0');
        }
        const std::string globals = CBiff()
                                        .Record(kSst, all.substr(0, cut))
                                        .Record(kContinue, flags + all.substr(cut))
                                        .bytes;
        EXPECT_EQ(DumpBytes(XlsBytes(globals, cells), "a.xls"), "1: abcd|xµz|end") << cut;
    }
}

TEST(XlsWorkbook, DeliversRowsInOrder)
{
    const std::string cells =
        CBiff()
            .Cell(kRk, 1, 0, U32(3 << 2 | 2))
            .Cell(kRk, 0, 0, U32(1 << 2 | 2))
            .Cell(kFormula, 1, 1, "\0\0\0\0\0\0\xFF\xFF"s + std::string(8, '\0'))
            .Record(kString, Narrow("t"))
            .Cell(kRk, 0, 1, U32(2 << 2 | 2))
            .bytes;
    EXPECT_EQ(DumpBytes(XlsBytes("", cells), "a.xls"), "1: 1|2\n2: 3|t");
}

TEST(XlsWorkbook, ReadsVersion5InItsCodePage)
{
    CBiff book;
    book.Begin(5, 0x0500).Record(0x0042, U16(1251)).Record(0x0022, U16(1));
    book.Record(kFormat, U16(164) + "\x0A"
                                    "yyyy-mm-dd")
        .Record(kXf, U16(0) + U16(164) + std::string(12, '\0'));
    const auto offset = static_cast<std::uint32_t>(book.bytes.size() + 4 + 11 + 4);
    book.Record(0x0085, U32(offset) + "\0\0\x04\xD1\xE5\xF0\xE0"s).End();
    book.Begin(0x10, 0x0500)
        .Cell(kLabel, 0, 0, U16(2) + "\xCA\xE5")
        .Cell(kNumber, 0, 1, F64(43894))
        .End();
    auto opened = OpenWorkbookBytes(book.bytes, "a.xls");
    ASSERT_TRUE(opened.Ok()) << opened.Error().text;
    EXPECT_EQ((*opened)->Sheets()[0].name, "Сера");
    EXPECT_EQ(DumpRows(**opened), "1: Ке|2024-03-05");
}

TEST(XlsWorkbook, RefusesPasswordsAndDamage)
{
    const auto locked =
        OpenWorkbookBytes(XlsBytes(CBiff().Record(0x002F, "\0\0"s).bytes, ""), "a.xls");
    ASSERT_FALSE(locked.Ok());
    EXPECT_EQ(locked.Error().code, EErr::Unsupported);
    EXPECT_NE(locked.Error().text.find("password"), std::string::npos);
    EXPECT_NE(DumpBytes(XlsBytes("", CBiff().Cell(kLabelSst, 4, 0, U32(5)).bytes), "a.xls")
                  .find("sheet 'One', row 5: a cell can't be read"),
              std::string::npos);
    // A count that no file could hold.
    const std::string huge = CBiff().Record(kSst, U32(0xFFFFFFFF) + U32(0xFFFFFFFF)).bytes;
    EXPECT_EQ(DumpBytes(XlsBytes(huge, ""), "a.xls").substr(0, 6), "error:");
}

TEST(XlsWorkbook, EndsCleanlyOnDamagedFiles)
{
    const std::string stream = XlsBytes(Globals(), Cells());
    for (std::size_t size = 0; size < stream.size(); ++size) {
        const std::string seen = DumpBytes(stream.substr(0, size), "a.xls");
        EXPECT_NE(seen.find("error:"), std::string::npos) << size;
    }
    const std::string container = OleBytes("Workbook", stream);
    for (std::size_t size = 0; size < container.size(); size += 97) {
        ASSERT_TRUE(ReadsCleanly(container.substr(0, size), "a.xls")) << size;
    }
    for (const std::string* bytes : {&stream, &container}) {
        for (std::size_t bit = 0; bit < bytes->size() * 8; bit += 7) {
            std::string damaged = *bytes;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
            ASSERT_TRUE(ReadsCleanly(damaged, "a.xls")) << bit;
        }
    }
}

} // namespace
} // namespace zov::test
