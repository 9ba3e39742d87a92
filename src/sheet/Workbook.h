// SPDX-License-Identifier: Apache-2.0
/// A workbook as the texts that a person sees in its cells, whatever program wrote it.
///
///     ASSIGN_OR_RETURN(auto book, OpenWorkbook("parts.xlsx"));
///     RETURN_IF_ERROR(book->SelectSheet("Capacitors"));
///     RETURN_IF_ERROR(book->ReadRows([&](const SSheetRow& row) { ...; return EVisit::Continue;
///     }));
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

struct SSheetInfo
{
    std::string name;
    bool hidden = false;
};

/// One row that holds at least one non-empty cell. Rows come in rising order; rows that hold
/// nothing are left out. The texts are UTF-8 and live until the visitor returns.
struct SSheetRow
{
    std::uint32_t number = 0; ///< counted from 1, as the sheet shows it
    /// cells[0] is column A; trailing empty cells may be missing
    std::span<const std::string_view> cells;
};

enum class EVisit
{
    Continue,
    Stop
};

/// Which text a number gives.
enum class EText
{
    Shown, ///< as a person sees it: 1.23456 with the format 0.00 is "1.23"
    Exact ///< the same, but a format that would drop digits is given as many decimals as the number
          ///< has: "1.23456", and "12.345%" for 0.12345 with 0%. A number that a format hides is
          ///< written plainly.
};

struct SOpenOptions
{
    EText text = EText::Shown;
};

using FRowVisitor = std::function<EVisit(const SSheetRow&)>;

/// An open workbook. A newly opened one has its first visible sheet selected (the first sheet when
/// all are hidden).
class CWorkbook
{
public:
    CWorkbook() = default;
    CWorkbook(const CWorkbook&) = delete;
    CWorkbook& operator=(const CWorkbook&) = delete;
    virtual ~CWorkbook() = default;

    /// Worksheets in the order of their tabs; chart and macro sheets are left out.
    [[nodiscard]] virtual const std::vector<SSheetInfo>& Sheets() const = 0;
    /// Index into Sheets() of the selected one.
    [[nodiscard]] virtual std::size_t SelectedSheet() const = 0;
    /// By name, exact first, then without regard to case. EErr::NotFound lists the names there are.
    virtual CResult<void> SelectSheet(std::string_view name);
    virtual CResult<void> SelectSheet(std::size_t index) = 0;

    /// Every row of the selected sheet, in one pass and in memory that does not grow with the rows
    /// (beyond what the format stores apart, such as shared strings). May be called again. Errors:
    /// Format with the place; rows visited before the fault stay visited.
    virtual CResult<void> ReadRows(const FRowVisitor& visit) = 0;

    /// Formulas met by the last ReadRows that carry no result: no spreadsheet program has
    /// calculated and saved the file since they were written. Their cells read as empty.
    [[nodiscard]] virtual std::uint64_t UncachedFormulaCount() const { return 0; }
};

/// Opens by content, not by the extension: .xlsx/.xlsm (zip), .xls (OLE container, BIFF5 or BIFF8),
/// and .csv/.txt/.tsv (only with such an extension).
/// Errors: NotFound, Access, Io: the file could not be read. Unsupported: encrypted; HTML, XML or
/// text named .xls; a format that is known but not read (.xlsb, .ods). Format: broken. Limit: a
/// part that unpacks to more than any real workbook needs.
CResult<std::unique_ptr<CWorkbook>> OpenWorkbook(const std::filesystem::path& path,
                                                 const SOpenOptions& options = {});

/// The same on bytes that are in memory already; `name` stands for the path, its extension counts.
CResult<std::unique_ptr<CWorkbook>> OpenWorkbookBytes(std::string bytes, std::string_view name,
                                                      const SOpenOptions& options = {});

/// A whole sheet, for callers that need cells in any order (previews, dialogs, tests).
class CSheetTable
{
public:
    /// Reads the selected sheet, at most `maxRows` rows.
    static CResult<CSheetTable> Read(CWorkbook& book, std::uint32_t maxRows = UINT32_MAX);

    /// Number of the last row that holds something, 0 for an empty sheet.
    [[nodiscard]] std::uint32_t RowCount() const { return m_rowCount; }
    [[nodiscard]] std::uint32_t ColumnCount() const { return m_columnCount; }
    /// Text of a cell, row and column counted from 1; empty outside.
    [[nodiscard]] std::string_view CellText(std::uint32_t row, std::uint32_t column) const;

private:
    struct SSpan
    {
        std::uint64_t offset;
        std::uint32_t length;
    };
    std::string m_text;
    std::vector<SSpan> m_cells;
    std::vector<std::uint64_t> m_rowStart; ///< by row, index of its first cell; one more at the end
    std::uint32_t m_rowCount = 0;
    std::uint32_t m_columnCount = 0;
};

/// "A", "Z", "AA" for columns counted from 1.
[[nodiscard]] std::string ColumnName(std::uint32_t column);

} // namespace zov
