// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Commands.h"
#include "cli/Reporting.h"
#include "sheet/Workbook.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Shows the texts that 'zov import' and the batch generator get, which are those that a person sees in
the cells. The first column is the row's number; rows that hold nothing are left out.

Examples:
  zov sheet parts.xlsx
  zov sheet parts.xls --sheet Resistors --rows 5 --json)";

struct SOptions
{
    std::string file;
    std::string sheet;
    std::uint32_t rows = 20;
    std::uint32_t width = 24;
    bool json = false;
};

struct SRow
{
    std::uint32_t number = 0;
    std::vector<std::string> cells;
};

/// Rows shown at once: widths of columns come from these.
constexpr std::size_t kTableRows = 1000;

std::string Cut(std::string_view cell, std::uint32_t width)
{
    std::string text = OneLine(cell);
    if (width == 0 || WidthOf(text) <= width) {
        return text;
    }
    std::size_t end = 0;
    for (std::uint32_t i = 0; i + 1 < width && end < text.size(); ++i) {
        do {
            ++end;
        } while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U);
    }
    return text.substr(0, end) + "…";
}

class CTable
{
public:
    CTable(const SStreams& streams, std::uint32_t width)
        : m_streams(streams)
        , m_width(width)
    {
    }
    void Add(const SSheetRow& row)
    {
        SRow kept{row.number, {}};
        for (const std::string_view cell : row.cells) {
            kept.cells.push_back(Cut(cell, m_width));
        }
        m_rows.push_back(std::move(kept));
        if (m_rows.size() == kTableRows) {
            Flush();
        }
    }
    void Flush()
    {
        std::size_t numbers = m_rows.empty() ? 0 : std::to_string(m_rows.back().number).size();
        for (const SRow& row : m_rows) {
            m_widths.resize(std::max(m_widths.size(), row.cells.size()), 1);
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                m_widths[i] = std::max(m_widths[i], WidthOf(row.cells[i]));
            }
        }
        numbers = std::max<std::size_t>(numbers, 1);
        if (!m_titled && !m_rows.empty()) {
            std::vector<std::string> names;
            for (std::size_t i = 0; i < m_widths.size(); ++i) {
                names.push_back(ColumnName(static_cast<std::uint32_t>(i + 1)));
            }
            PrintLine(std::string(numbers, ' '), names);
            m_titled = true;
        }
        for (const SRow& row : m_rows) {
            const std::string number = std::to_string(row.number);
            PrintLine(std::string(numbers - number.size(), ' ') + number, row.cells);
        }
        m_rows.clear();
    }

private:
    void PrintLine(std::string line, const std::vector<std::string>& cells)
    {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line += "  " + cells[i];
            line.append(m_widths[i] - std::min(m_widths[i], WidthOf(cells[i])), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        line += '\n';
        m_streams.out.Write(line);
    }

    const SStreams& m_streams;
    std::uint32_t m_width;
    std::vector<SRow> m_rows;
    std::vector<std::size_t> m_widths;
    bool m_titled = false;
};

/// Visits up to `limit` rows (0: all); true when there are more.
CResult<bool> VisitRows(CWorkbook& book, std::uint32_t limit,
                        const std::function<bool(const SSheetRow&)>& visit)
{
    std::uint32_t count = 0;
    bool more = false;
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        if (limit != 0 && count == limit) {
            more = true;
            return EVisit::Stop;
        }
        ++count;
        return visit(row) ? EVisit::Continue : EVisit::Stop;
    }));
    return more;
}

CResult<void> PrintText(const SOptions& options, CWorkbook& book, const SStreams& streams)
{
    for (std::size_t i = 0; i < book.Sheets().size(); ++i) {
        const SSheetInfo& sheet = book.Sheets()[i];
        Print(streams.out, "{} sheet '{}'{}\n", i == book.SelectedSheet() ? '*' : ' ',
              OneLine(sheet.name), sheet.hidden ? " (hidden)" : "");
    }
    CTable table(streams, options.width);
    CResult<bool> more = VisitRows(book, options.rows, [&](const SSheetRow& row) {
        table.Add(row);
        return streams.out.Ok();
    });
    table.Flush();
    if (!more) {
        return more.TakeError();
    }
    if (*more) {
        Print(streams.out, "... more rows; --rows 0 shows all\n");
    }
    return {};
}

CResult<void> PrintSheetJson(const SOptions& options, CWorkbook& book, const SStreams& streams)
{
    TJson sheets = TJson::array();
    for (const SSheetInfo& sheet : book.Sheets()) {
        sheets.push_back({{"name", sheet.name}, {"hidden", sheet.hidden}});
    }
    const auto dump = [](const TJson& json) {
        return json.dump(-1, ' ', false, TJson::error_handler_t::replace);
    };
    Print(streams.out, "{{\"version\":{},\"file\":{},\"sheets\":{},\"selected\":{},\"rows\":[",
          kJsonVersion, dump(options.file), dump(sheets), book.SelectedSheet());
    std::string_view separator = "\n";
    CResult<bool> more = VisitRows(book, options.rows, [&](const SSheetRow& row) {
        TJson cells = TJson::array();
        for (const std::string_view cell : row.cells) {
            cells.push_back(cell);
        }
        streams.out.Write(separator);
        streams.out.Write(dump({{"row", row.number}, {"cells", cells}}));
        separator = ",\n";
        return streams.out.Ok();
    });
    Print(streams.out, "\n],\"complete\":{}}}\n", more.Ok() && !*more);
    if (!more) {
        return more.TakeError();
    }
    return {};
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CResult<std::unique_ptr<CWorkbook>> book = OpenWorkbook(TextPath(options.file));
    if (!book) {
        PrintError(streams, book.Error());
        return kExitFile;
    }
    if (!options.sheet.empty()) {
        if (const CResult<void> selected = (*book)->SelectSheet(options.sheet); !selected) {
            PrintError(streams, selected.Error());
            return kExitFile;
        }
    }
    const CResult<void> printed =
        (options.json ? PrintSheetJson : PrintText)(options, **book, streams);
    if (!printed) {
        PrintError(streams, printed.Error());
        return kExitFile;
    }
    if ((*book)->UncachedFormulaCount() != 0) {
        Print(streams.err,
              "zov: {} without a saved result; open and save the file in a "
              "spreadsheet program\n",
              Counted((*book)->UncachedFormulaCount(), "formula"));
        return kExitInPart;
    }
    return kExitGood;
}

} // namespace

void AddSheet(CLI::App& zov, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        zov.add_subcommand("sheet", "What is read from a spreadsheet: sheets, cells");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "Workbook: .xlsx, .xls, .csv")
        ->required()
        ->type_name("");
    command
        ->add_option("--sheet", options->sheet, "Sheet to show; the first visible one if not given")
        ->type_name("NAME");
    command->add_option("--rows", options->rows, "Rows to show, 0 for all; 20 if not given")
        ->type_name("N");
    command
        ->add_option("--width", options->width,
                     "Characters of a cell to show, 0 for all; 24 if not given")
        ->type_name("N");
    command->add_flag("--json", options->json, "Report as JSON, one row a line");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
