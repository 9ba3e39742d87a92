// SPDX-License-Identifier: Apache-2.0
// One small part list as several programs write it: a spreadsheet office program, and Python's
// writers in their usual, streaming and binary ways. The files are kept in tests/data/sheet.
#include "sheet/SheetTestSupport.h"
#include "support/SourcePaths.h"

#include <gtest/gtest.h>

namespace zov::test {
namespace {

constexpr std::string_view kTable =
    "3: Part Number|Size|Tol|Cnom(nF)|Date|Ok|Note\n"
    "4: GRM155R71C104KA88|0402|10%|100|2024-03-05|TRUE|µΩ <&> \"q\"\n"
    "5: CL05A105|0603|5%|1E-07|1999-12-31|FALSE|two\nlines";
constexpr std::string_view kResults = "\n6: 200|ab|#DIV/0!";
constexpr std::string_view kMerged = "\n8: merged";

TEST(Writers, GiveTheSameTexts)
{
    struct SFile
    {
        std::string_view name;
        std::string rows;
        std::uint64_t uncached;
    };
    const std::string table(kTable);
    const std::vector<SFile> files{
        {"office.xlsx", table + std::string(kResults) + std::string(kMerged), 0},
        {"office.xls", table + std::string(kResults) + std::string(kMerged), 0},
        {"xlsxwriter.xlsx", table + std::string(kResults) + std::string(kMerged), 0},
        {"xlsxwriter_stream.xlsx", table + std::string(kResults), 0},
        {"xlsxwriter_uncached.xlsx", table + std::string(kMerged), 3},
        {"openpyxl.xlsx", table + std::string(kMerged), 3},
        {"openpyxl_writeonly.xlsx", table, 3},
        {"xlwt.xls", table + std::string(kMerged), 3},
    };
    for (const SFile& file : files) {
        auto book = OpenWorkbook(DataFolder() + "/sheet/" + std::string(file.name));
        ASSERT_TRUE(book.Ok()) << file.name << ": " << book.Error().text;
        ASSERT_EQ((*book)->Sheets().size(), 2U) << file.name;
        EXPECT_TRUE((*book)->Sheets()[0].hidden) << file.name;
        EXPECT_EQ((*book)->SelectedSheet(), 1U) << file.name;
        EXPECT_EQ(DumpRows(**book), file.rows) << file.name;
        EXPECT_EQ((*book)->UncachedFormulaCount(), file.uncached) << file.name;
        ASSERT_TRUE((*book)->SelectSheet("hidden").Ok());
        EXPECT_EQ(DumpRows(**book), "1: secret") << file.name;
    }
}

TEST(SheetTable, GivesCellsInAnyOrder)
{
    auto book = OpenWorkbookBytes("\na,b\n\n,,c\n", "t.csv");
    ASSERT_TRUE(book.Ok());
    const CResult<CSheetTable> table = CSheetTable::Read(**book);
    ASSERT_TRUE(table.Ok());
    EXPECT_EQ(table->RowCount(), 4U);
    EXPECT_EQ(table->ColumnCount(), 3U);
    EXPECT_EQ(table->CellText(4, 3), "c");
    EXPECT_EQ(table->CellText(2, 2), "b");
    for (const auto& [row, column] : std::vector<std::pair<std::uint32_t, std::uint32_t>>{
             {1, 1}, {3, 1}, {2, 3}, {4, 4}, {5, 1}, {0, 1}, {2, 0}}) {
        EXPECT_EQ(table->CellText(row, column), "") << row << "," << column;
    }
    EXPECT_EQ(CSheetTable::Read(**book, 2)->RowCount(), 2U);
    for (const auto& [column, name] : std::vector<std::pair<std::uint32_t, std::string>>{
             {1, "A"}, {26, "Z"}, {27, "AA"}, {702, "ZZ"}, {703, "AAA"}, {16384, "XFD"}}) {
        EXPECT_EQ(ColumnName(column), name);
    }
}

} // namespace
} // namespace zov::test
