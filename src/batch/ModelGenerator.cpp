// SPDX-License-Identifier: Apache-2.0
#include "batch/ModelGenerator.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/CircuitWrapper.h"
#include "batch/GeneratedModels.h"
#include "batch/Messages.h"
#include "batch/RowReader.h"
#include "batch/TitleSearch.h"
#include "batch/VendorLibrary.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace zov::batch {

namespace {

constexpr std::uint32_t kProgressRows = 256;

std::filesystem::path FolderOf(const std::filesystem::path& file)
{
    const std::filesystem::path folder = file.parent_path();
    return folder.empty() ? std::filesystem::path(".") : folder;
}

class CGenerator
{
public:
    CGenerator(CWorkbook& book, const SGenerateOptions& options, CZovLibrary& library,
               CLogSink& log, SImportReport& report, bool keepReport)
        : m_book(book)
        , m_options(options)
        , m_library(library)
        , m_log(log)
        , m_report(report)
        , m_keepReport(keepReport)
        , m_wrapper(FolderOf(options.destination), FolderOf(options.source))
        , m_models(options.mapping.type, options.sheetDuplicate, report, log)
    {
    }

    CResult<SImportCounts> Run()
    {
        m_report.type = Type();
        m_report.source = PathText(m_options.source);
        m_report.destination = PathText(m_options.destination);
        if (m_book.SelectedSheet() < m_book.Sheets().size()) {
            m_report.sheet = m_book.Sheets()[m_book.SelectedSheet()].name;
        }
        RETURN_IF_ERROR(LoadVendor());
        RETURN_IF_ERROR(SetHeaderRow());
        RETURN_IF_ERROR(ReadRows());
        TellFormulas();
        m_models.NameSuffixed(m_wrapper);
        m_models.AddTo(m_library, m_options);
        for (SImportFinding& finding : m_reader->ColumnFindings()) {
            m_report.counts.warnings += finding.severity == ESeverity::Warning ? 1 : 0;
            m_report.findings.push_back(std::move(finding));
        }
        return m_report.counts;
    }

private:
    [[nodiscard]] ERecordType Type() const { return m_options.mapping.type; }

    SError NotStarted(SError error, bool tell = true)
    {
        m_log.Write(Text(msg::kTaskInit, static_cast<std::uint32_t>(Type())));
        if (tell) {
            m_log.Write("    " + error.Full());
        }
        return error;
    }

    CResult<void> LoadVendor()
    {
        if (m_options.vendorLibrary.empty() || Type() != ERecordType::Capacitor) {
            return {};
        }
        auto vendor = CVendorLibrary::Load(m_options.vendorLibrary, m_log);
        if (!vendor) {
            return NotStarted(vendor.TakeError());
        }
        m_vendor.emplace(vendor.Take());
        return {};
    }

    CResult<void> SetHeaderRow()
    {
        m_report.headerRow = m_options.headerRow;
        if (m_options.headerRow != 0) {
            return {};
        }
        auto found = FindTitleRow(m_book, m_options.mapping);
        if (!found) {
            return SheetFailure(found.TakeError());
        }
        m_report.headerRow = found->row;
        if (m_report.headerRow == 0) {
            return NotStarted(Fail(
                EErr::NotFound, Text(!m_options.mapping.mapping
                                         ? "no row of column titles found in the first %d rows of "
                                           "sheet '%s'; name it, or map the columns"
                                         : "no row with the titles of the column mapping found in "
                                           "the first %d rows of sheet '%s'; compare the spelling",
                                     kTitleSearchRows, m_report.sheet)));
        }
        return {};
    }

    SError SheetFailure(SError error)
    {
        m_log.Write(std::string(msg::kExcelTask));
        m_log.Write("    " + error.Full());
        return error;
    }

    CResult<void> ReadRows()
    {
        CResult<void> outcome;
        const std::size_t limit = m_options.rowLimit == 0 ? SIZE_MAX : m_options.rowLimit;
        auto read = m_book.ReadRows([&](const SSheetRow& row) {
            outcome = Visit(row);
            return outcome.Ok() && m_report.counts.rows < limit ? EVisit::Continue : EVisit::Stop;
        });
        RETURN_IF_ERROR(std::move(outcome));
        if (!read) {
            return SheetFailure(read.TakeError());
        }
        if (!m_reader) { // the sheet ends above its row of titles
            return Start({});
        }
        return {};
    }

    CResult<void> Visit(const SSheetRow& row)
    {
        if (row.number < m_report.headerRow) {
            return {};
        }
        if (!m_reader) {
            const bool titles = row.number == m_report.headerRow;
            RETURN_IF_ERROR(Start(titles ? row.cells : std::span<const std::string_view>()));
            if (titles) {
                return {};
            }
        }
        if (m_options.progress && ++m_sinceProgress == kProgressRows) {
            m_sinceProgress = 0;
            if (!m_options.progress(row.number)) {
                return Fail(EErr::Cancelled, "stopped by the user");
            }
        }
        TakeRow(row);
        return {};
    }

    CResult<void> Start(std::span<const std::string_view> titles)
    {
        auto plan = PlanColumns(m_options.mapping, titles, m_log);
        if (!plan) {
            const bool told = plan.Error().code == EErr::NotFound;
            return told ? plan.TakeError() : NotStarted(plan.TakeError());
        }
        SRowSetup setup = {.type = Type(),
                           .plan = plan.Take(),
                           .sizeSystem = m_options.sizeSystem,
                           .node = m_options.node,
                           .assumeIdeal = m_options.assumeIdeal,
                           .vendor = m_vendor ? &*m_vendor : nullptr};
        ReportColumns(setup.plan, titles);
        if (!setup.plan[EField::ModelName].Mapped()) {
            return NotStarted(
                Fail(EErr::NotFound, Text("row %d of sheet '%s' has no column for the model name "
                                          "(\"Model Name\", \"Part Number\", ...)",
                                          m_report.headerRow, m_report.sheet)));
        }
        m_reader.emplace(std::move(setup), m_wrapper, m_log);
        return {};
    }

    void ReportColumns(const CColumnPlan& plan, std::span<const std::string_view> titles)
    {
        std::vector<bool> used(titles.size());
        for (const EField field : FieldsOf(Type())) {
            const SColumn& column = plan[field];
            if (!column.Mapped()) {
                continue;
            }
            if (column.column != 0) {
                used[column.column - 1] = true;
            }
            m_report.columns.push_back(
                {field, column, column.column == 0 ? std::string() : ColumnName(column.column)});
        }
        for (std::uint32_t i = 0; i < titles.size(); ++i) {
            if (!used[i] && !TrimCell(titles[i]).empty()) {
                m_report.unused.push_back({i + 1, ColumnName(i + 1), FoldSpaces(titles[i])});
            }
        }
    }

    void TakeRow(const SSheetRow& row)
    {
        const CRowReader::EOutcome outcome = m_reader->Read(row, m_row);
        if (outcome == CRowReader::EOutcome::Blank) {
            return;
        }
        SImportCounts& counts = m_report.counts;
        ++counts.rows;
        std::vector<SImportFinding>& findings = m_reader->Findings();
        for (const SImportFinding& finding : findings) {
            counts.errors += finding.severity == ESeverity::Error ? 1 : 0;
            counts.warnings += finding.severity == ESeverity::Warning ? 1 : 0;
        }
        std::optional<std::size_t> place;
        const bool failed = outcome == CRowReader::EOutcome::Failed;
        if (m_keepReport && (m_options.keepRows || failed || !findings.empty())) {
            place = m_report.rows.size();
            m_report.rows.push_back({row.number, std::string(m_row.texts[EField::ModelName]),
                                     ERowAction::Failed, std::move(findings)});
        }
        if (failed) {
            ++counts.failed;
        } else {
            m_models.Take(m_row, row.number, place);
        }
    }

    void TellFormulas()
    {
        const std::uint64_t count = m_book.UncachedFormulaCount();
        if (count == 0) {
            return;
        }
        SImportFinding finding;
        finding.severity = ESeverity::Warning;
        finding.text = Text("%d formulas have no stored result and read as empty; open the sheet "
                            "in a spreadsheet program and save it",
                            count);
        m_log.Write("[WARNING] " + finding.text);
        ++m_report.counts.warnings;
        m_report.findings.push_back(std::move(finding));
    }

    CWorkbook& m_book;
    const SGenerateOptions& m_options;
    CZovLibrary& m_library;
    CLogSink& m_log;
    SImportReport& m_report;
    bool m_keepReport;
    CCircuitWrapper m_wrapper;
    CGeneratedModels m_models;
    std::optional<CVendorLibrary> m_vendor;
    std::optional<CRowReader> m_reader; ///< from the row of titles on
    SModelRow m_row;
    std::uint32_t m_sinceProgress = 0;
};

} // namespace

CResult<SImportCounts> GenerateModels(CWorkbook& book, const SGenerateOptions& options,
                                      CZovLibrary& library, CLogSink& log, SImportReport* report)
{
    SImportReport unwanted;
    return CGenerator(book, options, library, log, report == nullptr ? unwanted : *report,
                      report != nullptr)
        .Run();
}

} // namespace zov::batch
