// SPDX-License-Identifier: Apache-2.0
#include "sheet/Workbook.h"

#include "base/Text.h"

#include <algorithm>

namespace zov {
namespace {

// A preview of a whole sheet that holds more than this is a mistake of the caller.
constexpr std::size_t kMaxTableCells = std::size_t{1} << 28U;

std::string QuotedNames(const std::vector<SSheetInfo>& sheets)
{
    constexpr std::size_t kMaxNames = 20;
    std::string out;
    for (std::size_t i = 0; i < sheets.size() && i < kMaxNames; ++i) {
        out += (i == 0 ? "'" : ", '") + sheets[i].name + '\'';
    }
    return sheets.size() > kMaxNames ? out + ", ..." : out;
}

} // namespace

CResult<void> CWorkbook::SelectSheet(std::string_view name)
{
    const std::vector<SSheetInfo>& sheets = Sheets();
    auto found = std::find_if(sheets.begin(), sheets.end(),
                              [&](const SSheetInfo& sheet) { return sheet.name == name; });
    if (found == sheets.end()) {
        found = std::find_if(sheets.begin(), sheets.end(), [&](const SSheetInfo& sheet) {
            return EqualsNoCase(sheet.name, name);
        });
    }
    if (found == sheets.end()) {
        return Fail(EErr::NotFound, "no sheet '" + std::string(name) +
                                        "', the workbook has: " + QuotedNames(sheets));
    }
    return SelectSheet(static_cast<std::size_t>(found - sheets.begin()));
}

CResult<CSheetTable> CSheetTable::Read(CWorkbook& book, std::uint32_t maxRows)
{
    CSheetTable table;
    bool tooLarge = false;
    auto keep = [&](const SSheetRow& row) {
        if (row.number > maxRows) {
            return EVisit::Stop;
        }
        if (table.m_cells.size() + row.cells.size() > kMaxTableCells) {
            tooLarge = true;
            return EVisit::Stop;
        }
        table.m_rowStart.resize(row.number, table.m_cells.size());
        table.m_rowCount = row.number;
        table.m_columnCount =
            std::max(table.m_columnCount, static_cast<std::uint32_t>(row.cells.size()));
        for (std::string_view cell : row.cells) {
            table.m_cells.push_back({table.m_text.size(), static_cast<std::uint32_t>(cell.size())});
            table.m_text += cell;
        }
        return EVisit::Continue;
    };
    RETURN_IF_ERROR(book.ReadRows(keep));
    if (tooLarge) {
        return Fail(EErr::Limit, "the sheet has too many cells to be held as a whole");
    }
    table.m_rowStart.push_back(table.m_cells.size());
    return table;
}

std::string_view CSheetTable::CellText(std::uint32_t row, std::uint32_t column) const
{
    if (row == 0 || row > m_rowCount || column == 0) {
        return {};
    }
    const std::uint64_t index = m_rowStart[row - 1] + (column - 1);
    if (index >= m_rowStart[row]) {
        return {};
    }
    const SSpan span = m_cells[index];
    return std::string_view(m_text).substr(span.offset, span.length);
}

std::string ColumnName(std::uint32_t column)
{
    std::string name;
    for (; column != 0; column = (column - 1) / 26) {
        name.insert(name.begin(), static_cast<char>('A' + (column - 1) % 26));
    }
    return name;
}

} // namespace zov
