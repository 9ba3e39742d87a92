// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

namespace zov::test {
namespace {

using namespace std::string_literals;

struct SCase
{
    std::string name;
    std::string rows;
    std::string shown;
};

TEST(XlsxWorkbook, ReadsCells)
{
    const std::vector<SCase> cases{
        {"numbers", R"(<row r="2"><c r="A2"><v>1</v></c><c r="C2"><v>1.5e-9</v></c></row>)",
         "2: 1||1.5E-09"},
        {"no positions",
         "<row><c><v>1</v></c><c/><c><v>2</v></c></row><row/><row><c><v>3</v></c></row>",
         "1: 1||2\n3: 3"},
        {"positions begin late", R"(<row><c r="B1"><v>1</v></c><c><v>2</v></c></row>)", "1: |1|2"},
        {"shared", R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>)",
         "1: plain|rich text"},
        {"formatted",
         R"(<row r="1"><c r="A1" s="1"><v>402</v></c><c s="2" r="B1"><v>0.1</v></c></row>)",
         "1: 0402|10%"},
        {"inline",
         "<row><c t=\"inlineStr\"><is><t>a</t></is></c><c t=\"inlineStr\"><is><r><t "
         "xml:space=\"preserve\">b </t></r><r><t>c</t></r><rPh><t>no</t></rPh></is></c></row>",
         "1: a|b c"},
        {"formulas", "<row><c><f>1+1</f><v>2</v></c><c t=\"str\"><f>x</f><v>t&amp;u</v></c></row>",
         "1: 2|t&u"},
        {"booleans and errors",
         "<row><c t=\"b\"><v>1</v></c><c t=\"b\"><v>0</v></c><c t=\"e\"><v>#N/A</v></c></row>",
         "1: TRUE|FALSE|#N/A"},
        {"iso dates",
         R"(<row><c t="d" s="3"><v>2024-03-05T00:00:00</v></c><c t="d"><v>2024-03-05</v></c></row>)",
         "1: 05.03.24|2024-03-05"},
        {"text format", R"(<row><c t="s" s="4"><v>0</v></c></row>)", "1: <plain>"},
        {"entities", "<row><c t=\"str\"><v>&lt;&#181;&#x3A9;&quot;&nbsp;&amp;amp;</v></c></row>",
         "1: <µΩ\"&nbsp;&amp;"},
        {"escapes", "<row><c t=\"str\"><v>a_x000A_b_x005F_x000A__xZZZZ_</v></c></row>",
         "1: a\nb_x000A__xZZZZ_"},
        {"cdata and comments",
         "<!-- <row> --><row><?pi <c>?><c t=\"str\"><v><![CDATA[<a>&amp;]]>b<!-- x "
         "-->c</v></c></row>",
         "1: <a>&amp;bc"},
        {"quotes and order of attributes",
         "<row spans='1:2' r='3' ><c  t='str'\n r = 'B3' ><v>></v></c></row>", "3: |>"},
        {"extra elements", "<row><extLst><ext><c><v>9</v></c></ext></extLst><c><v>1</v></c></row>",
         "1: 1"},
        {"empty rows and cells",
         "<row r=\"1\"><c r=\"A1\" s=\"1\"/></row><row r=\"5\"><c><v/></c></row>", ""},
        {"merged cells show their first",
         R"(<row><c><v>1</v></c><c s="1"/></row><row><c s="1"/></row>)", "1: 1"},
        {"17 digits",
         "<row><c><v>0.30000000000000004</v></c><c><v>1E-07</v></c><c><v>4.70</v></c></row>",
         "1: 0.3|1E-07|4.7"},
        {"numbers beyond a double", "<row><c><v>1e999</v></c><c><v>INF</v></c></row>",
         "1: 1e999|INF"},
    };
    for (const SCase& one : cases) {
        SXlsx content;
        content.rows = one.rows;
        content.numberFormats = "0000\n0%\ndd.mm.yy\n0;0;0;\"<\"@\">\"";
        content.sharedStrings = "<si><t>plain</t></si><si><r><t>rich </t></r><r><t>text</t></r>"
                                "<rPh sb=\"0\" eb=\"1\"><t>phonetic</t></rPh></si>";
        EXPECT_EQ(DumpBytes(XlsxBytes(content)), one.shown) << one.name;
        // The same under prefixed names, and in UTF-16.
        FParts parts = XlsxParts(content);
        std::string prefixed = one.rows;
        for (std::string_view name : {"row", "c", "v", "is", "t", "f", "r", "rPh"}) {
            for (std::string_view end : {">", " ", "/", "\n"}) {
                for (std::string_view open : {"<", "</"}) {
                    prefixed = ReplaceAll(
                        prefixed, std::string(open) + std::string(name) + std::string(end),
                        std::string(open) + "x:" + std::string(name) + std::string(end));
                }
            }
        }
        parts[4].second =
            "<x:worksheet xmlns:x=\"u\"><x:sheetData>" + prefixed + "</x:sheetData></x:worksheet>";
        EXPECT_EQ(DumpBytes(ZipBytes(parts)), one.shown) << one.name << " with prefixes";
        std::string wide = "\xFF\xFE";
        std::size_t pos = 0;
        const std::string plain = XlsxParts(content)[4].second;
        while (pos < plain.size()) {
            const auto unit = static_cast<char16_t>(DecodeUtf8(plain, pos));
            wide += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        }
        parts[4].second = wide;
        EXPECT_EQ(DumpBytes(ZipBytes(parts)), one.shown) << one.name << " in UTF-16";
    }
}

TEST(XlsxWorkbook, ReadsAcrossTheBuffersEnd)
{
    // Cells of every kind and varied length, so that each token is cut somewhere by the buffer's
    // end.
    SXlsx content;
    std::string expected;
    content.sharedStrings = "<si><t>shared</t></si>";
    for (int row = 1; row <= 6000; ++row) {
        const std::string number = std::to_string(row);
        const std::string padding(static_cast<std::size_t>(row % 61), 'x');
        content.rows += "<row r=\"" + number + "\"><c r=\"A" + number + "\"><v>" + number +
                        "</v></c><c r=\"B" + number + "\" t=\"s\"><v>0</v></c><c r=\"C" + number +
                        "\" t=\"inlineStr\"><is><t>" + padding + "&amp;</t></is></c><c r=\"E" +
                        number + "\"><f>A1</f><v>0.5</v></c></row>";
        expected +=
            (row > 1 ? "\n" : "") + number + ": " + number + "|shared|" + padding + "&||0.5";
    }
    EXPECT_EQ(DumpBytes(XlsxBytes(content)), expected);
}

TEST(XlsxWorkbook, FindsPartsInAnySpelling)
{
    SXlsx content;
    content.rows = "<row><c t=\"s\"><v>0</v></c></row>";
    content.sharedStrings = "<si><t>x</t></si>";
    const FParts parts = XlsxParts(content);
    struct SSpelling
    {
        std::string from;
        std::string to;
    };
    for (const SSpelling& spelling :
         std::vector<SSpelling>{{"Target=\"worksheets/", "Target=\"/xl/worksheets/"},
                                {"Target=\"worksheets/", "Target=\"WORKSHEETS\\"},
                                {"Target=\"xl/", "Target=\"/XL/"},
                                {"Target=\"worksheets/", "Target=\"./x/../worksheets/"},
                                {"schemas.openxmlformats.org/spreadsheetml/2006/main",
                                 "purl.oclc.org/ooxml/spreadsheetml/main"},
                                {"schemas.openxmlformats.org/officeDocument/2006",
                                 "purl.oclc.org/ooxml/officeDocument"}}) {
        FParts changed = parts;
        for (auto& [name, text] : changed) {
            text = ReplaceAll(text, spelling.from, spelling.to);
        }
        EXPECT_EQ(DumpBytes(ZipBytes(changed)), "1: x") << spelling.to;
    }
    FParts folders = parts;
    for (auto& [name, text] : folders) {
        name = name.starts_with("xl/") ? ReplaceAll(name, "/", "\\") : name;
    }
    EXPECT_EQ(DumpBytes(ZipBytes(folders)), "1: x");
}

TEST(XlsxWorkbook, ListsAndSelectsSheets)
{
    SXlsx content;
    content.rows = "<row><c><v>1</v></c></row>";
    content.sheets =
        R"(<sheet name="Secret" sheetId="1" state="veryHidden" r:id="rId1"/>)"
        R"(<sheet name="Chart" sheetId="2" r:id="rId8"/><sheet name="Parts &amp; µ" sheetId="3" r:id="rId9"/>)";
    FParts parts = XlsxParts(content);
    parts[1].second = ReplaceAll(
        parts[1].second, "</Relationships>",
        "<Relationship Id=\"rId8\" Type=\"x/chartsheet\" Target=\"c.xml\"/><Relationship "
        "Id=\"rId9\" Type=\"x/worksheet\" Target=\"worksheets/s.xml\"/></Relationships>");
    parts.emplace_back("xl/worksheets/s.xml",
                       "<worksheet><sheetData><row><c><f>A2</f></c><c><f>A3</f><v></v></c><c "
                       "t=\"str\"><f>A4</f><v></v></c></row></sheetData></worksheet>");
    auto opened = OpenWorkbookBytes(ZipBytes(parts), "a.xlsx");
    ASSERT_TRUE(opened.Ok()) << opened.Error().text;
    CWorkbook& book = **opened;
    ASSERT_EQ(book.Sheets().size(), 2U);
    EXPECT_TRUE(book.Sheets()[0].hidden);
    EXPECT_EQ(book.Sheets()[1].name, "Parts & µ");
    EXPECT_EQ(book.SelectedSheet(), 1U);
    EXPECT_EQ(DumpRows(book), "");
    EXPECT_EQ(book.UncachedFormulaCount(), 2U);
    ASSERT_TRUE(book.SelectSheet("SECRET").Ok());
    EXPECT_EQ(DumpRows(book), "1: 1");
    EXPECT_EQ(book.UncachedFormulaCount(), 0U);
    const CResult<void> missing = book.SelectSheet("None");
    ASSERT_FALSE(missing.Ok());
    EXPECT_EQ(missing.Error().code, EErr::NotFound);
    EXPECT_EQ(missing.Error().text, "no sheet 'None', the workbook has: 'Secret', 'Parts & µ'");
    EXPECT_FALSE(book.SelectSheet(7).Ok());
}

TEST(XlsxWorkbook, CountsDaysFrom1904)
{
    SXlsx content;
    content.rows = R"(<row><c s="1"><v>43894</v></c></row>)";
    content.numberFormats = "yyyy-mm-dd";
    content.workbookAttributes = "date1904=\"true\"";
    EXPECT_EQ(DumpBytes(XlsxBytes(content)), "1: 2024-03-05");
}

TEST(XlsxWorkbook, TellsWhereASheetIsBroken)
{
    const std::vector<SCase> cases{
        {"shared text", R"(<row r="7"><c r="B7" t="s"><v>3</v></c></row>)",
         "cell B7: refers to the shared text '3', the workbook has 0"},
        {"falling rows", "<row r=\"3\"/><row r=\"2\"/>", "row 3: row 2 follows, rows must rise"},
        {"row too large", "<row r=\"1048577\"/>", "a sheet has rows 1 to 1048576"},
        {"column too large", R"(<row><c r="XFE1"><v>1</v></c></row>)",
         "row 1: 'XFE1' is no cell of a sheet"},
        {"another row", R"(<row><c r="A2"><v>1</v></c></row>)",
         "row 1: holds the cell A2 of another row"},
        {"document type", "<!DOCTYPE x>", "a document type is not allowed"},
        {"not closed", "<row><c>", "ends within an element"},
    };
    for (const SCase& one : cases) {
        SXlsx content;
        content.rows = one.rows;
        const std::string seen = DumpBytes(XlsxBytes(content));
        EXPECT_NE(seen.find(one.shown), std::string::npos) << one.name << ": " << seen;
        EXPECT_NE(seen.find("sheet 'One'"), std::string::npos) << seen;
    }
    SXlsx deep;
    for (int i = 0; i < 10000; ++i) {
        deep.rows += "<row>";
    }
    EXPECT_NE(DumpBytes(XlsxBytes(deep)).find("nested more than 256 deep"), std::string::npos);
}

TEST(XlsxWorkbook, BoundsWhatItUnpacks)
{
    SXlsx content;
    content.rows = std::string(std::size_t{80} << 20U, ' ');
    auto book = OpenWorkbookBytes(XlsxBytes(content), "a.xlsx");
    ASSERT_TRUE(book.Ok());
    const CResult<void> read = (*book)->ReadRows([](const SSheetRow&) { return EVisit::Continue; });
    ASSERT_FALSE(read.Ok());
    EXPECT_EQ(read.Error().code, EErr::Limit);
}

// Parts that are large enough to be unpacked ahead.
TEST(XlsxWorkbook, ReadsLargeParts)
{
    std::uint32_t state = 1;
    const auto noise = [&] {
        std::string text;
        for (int i = 0; i < 40; ++i) {
            state = state * 1664525 + 1013904223;
            text += static_cast<char>('A' + (state >> 24) % 26);
        }
        return text;
    };
    SXlsx content;
    std::string expected;
    for (int row = 1; row <= 30000; ++row) {
        const std::string shared = noise();
        const std::string own = noise();
        content.sharedStrings += "<si><t>" + shared + "</t></si>";
        content.rows += "<row><c t=\"s\" s=\"1\"><v>" + std::to_string(row - 1) +
                        "</v></c><c t=\"str\"><v>" + own + "</v></c></row>";
        expected += (row > 1 ? "\n" : "") + std::to_string(row) + ": <" + shared + ">|" + own;
    }
    content.numberFormats = "0;0;0;\"<\"@\">\"";
    FParts parts = XlsxParts(content);
    for (int i = 0; i < 30000; ++i) {
        parts[3].second += "<!--" + noise() + "-->";
    }
    const std::string bytes = ZipBytes(parts);
    EXPECT_TRUE(DumpBytes(bytes) == expected);
    auto book = OpenWorkbookBytes(bytes, "a.xlsx");
    ASSERT_TRUE(book.Ok());
    for (int round = 0; round < 3; ++round) { // left early, and begun again
        int rows = 0;
        const auto visit = [&](const SSheetRow&) {
            return ++rows == 100 ? EVisit::Stop : EVisit::Continue;
        };
        EXPECT_TRUE((*book)->ReadRows(visit).Ok());
        EXPECT_EQ(rows, 100);
    }
    // Damage far behind, in the packed bytes of the sheet.
    std::string damaged = bytes;
    const std::size_t at = bytes.find("xl/worksheets/sheet1.xml") + 700000;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
    const std::string seen = DumpBytes(damaged);
    EXPECT_NE(seen.find("error: sheet 'One', after row"), std::string::npos) << seen.substr(0, 200);
}

TEST(XlsxWorkbook, StopsWhenTheVisitorAsks)
{
    SXlsx content;
    content.rows = "<row><c><v>1</v></c></row><row><c><v>2</v></c></row><row><broken";
    auto book = OpenWorkbookBytes(XlsxBytes(content), "a.xlsx");
    ASSERT_TRUE(book.Ok());
    int rows = 0;
    const auto visit = [&](const SSheetRow&) {
        return ++rows == 2 ? EVisit::Stop : EVisit::Continue;
    };
    EXPECT_TRUE((*book)->ReadRows(visit).Ok());
    EXPECT_EQ(rows, 2);
}

TEST(XlsxWorkbook, EndsCleanlyOnDamagedFiles)
{
    SXlsx content;
    content.rows = R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" s="1"><v>402</v></c></row>)";
    content.sharedStrings = "<si><t>x</t></si>";
    content.numberFormats = "0000";
    const std::string bytes = XlsxBytes(content);
    ASSERT_EQ(DumpBytes(bytes), "1: x|0402");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(DumpBytes(bytes.substr(0, size)).substr(0, 6), "error:") << size;
    }
    for (std::size_t bit = 0; bit < bytes.size() * 8; bit += 3) {
        std::string damaged = bytes;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        ASSERT_TRUE(ReadsCleanly(damaged, "a.xlsx")) << bit;
    }
}

TEST(WorkbookOpen, TellsWhatItDoesNotRead)
{
    struct SForeign
    {
        std::string name;
        std::string bytes;
        EErr code;
        std::string words;
    };
    const FParts binary{{"_rels/.rels",
                         "<Relationships><Relationship Id=\"a\" Type=\"x/officeDocument\" "
                         "Target=\"xl/workbook.bin\"/></Relationships>"},
                        {"xl/workbook.bin", "x"}};
    const std::vector<SForeign> cases{
        {"a.xls", "<html><table>", EErr::Unsupported, "a web page (HTML) named .xls"},
        {"a.xls", "\xEF\xBB\xBF  <TABLE border=1>", EErr::Unsupported, "a web page"},
        {"a.xls",
         "<?xml version=\"1.0\"?><Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\">",
         EErr::Unsupported, "XML spreadsheet of 2003"},
        {"a.xls", "MIME-Version: 1.0\r\n", EErr::Unsupported, "web archive"},
        {"a.xlsx", "a,b\n1,2\n", EErr::Unsupported, "plain text named .xlsx"},
        {"a.xls", "a\tb\n", EErr::Unsupported, "name it .csv"},
        {"a.xlsx", "\x01\x02\x03", EErr::Format, "neither a workbook nor"},
        {"a.xlsx", "", EErr::Format, "the file is empty"},
        {"a.ods", ZipBytes({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}),
         EErr::Unsupported, "(.ods)"},
        {"a.xlsb", ZipBytes(binary), EErr::Unsupported, "(.xlsb)"},
        {"a.zip", ZipBytes({{"x", "y"}}), EErr::Format, "without a workbook"},
        {"a.xlsx", OleBytes("EncryptedPackage", "x"), EErr::Unsupported, "remove the password"},
        {"a.xls", OleBytes("WordDocument", "x"), EErr::Format, "without a workbook"},
        {"a.xls", "\x09\x02\x06\x00\x00\x00\x10\x00\x00\x00"s, EErr::Unsupported,
         "version before 5"},
    };
    for (const SForeign& one : cases) {
        const auto book = OpenWorkbookBytes(one.bytes, one.name);
        ASSERT_FALSE(book.Ok()) << one.words;
        EXPECT_EQ(book.Error().code, one.code) << one.words;
        EXPECT_NE(book.Error().text.find(one.words), std::string::npos) << book.Error().text;
        EXPECT_EQ(book.Error().pos.file, one.name);
    }
    EXPECT_EQ(OpenWorkbook("no/such/file.xlsx").Error().code, EErr::NotFound);
    EXPECT_EQ(OpenWorkbook(".").Error().code, EErr::Io);
}

} // namespace
} // namespace zov::test
