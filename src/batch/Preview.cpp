// SPDX-License-Identifier: Apache-2.0
#include "batch/Preview.h"

#include "batch/ModelGenerator.h"

#include <algorithm>

namespace zov::batch {

namespace {

std::string Quantity(const std::optional<double>& value, EQuantity quantity,
                     const CDisplayUnits& units)
{
    return value ? FormatQuantity(*value, quantity, units) : std::string();
}

/// What a record holds of a field; empty when the field has no property of its own.
std::string StoredText(const CZovRcdProps& record, EField field, const CDisplayUnits& units)
{
    const SFieldInfo& info = InfoOf(field);
    const SDiscreteModel model = record.GetDiscreteModel().value_or(SDiscreteModel());
    switch (field) {
    case EField::Resistance:
        return Quantity(model.resistance, info.quantity, units);
    case EField::Inductance:
        return Quantity(model.inductance, info.quantity, units);
    case EField::Cact:
        return Quantity(model.capacitance, info.quantity, units);
    case EField::ModelType:
        return model.isCircuit ? "SPICE" : std::string(kModelKindWords[0]);
    case EField::SizeUnit:
    case EField::FileName:
    case EField::FilePath:
    case EField::NodeAssignment:
        return {};
    default:
        return FindProperty(info.id)->kind == EPropKind::Double
                   ? Quantity(record.GetDouble(info.id), info.quantity, units)
                   : std::string(record.GetString(info.id));
    }
}

std::string FindingText(const SImportFinding& finding)
{
    std::string text = finding.text;
    if (!finding.seen.empty()) {
        text += (text.empty() ? "" : "\n") + ("seen: " + finding.seen);
    }
    if (!finding.expected.empty()) {
        text += (text.empty() ? "" : "\n") + ("expected: " + finding.expected);
    }
    return text;
}

class CPreviewer
{
public:
    CPreviewer(const SImportReport& report, const CZovLibrary& library, const CSheetTable& sheet,
               const CDisplayUnits& units)
        : m_report(report)
        , m_library(library)
        , m_sheet(sheet)
        , m_units(units)
    {
    }

    SPreview Run() const
    {
        SPreview preview;
        for (const SImportColumn& column : m_report.columns) {
            preview.fields.push_back(column.field);
        }
        for (const SImportRow& row : m_report.rows) {
            preview.rows.push_back(RowOf(row));
        }
        for (const SImportFinding& finding : m_report.findings) {
            preview.findings.push_back(FindingText(finding));
        }
        return preview;
    }

private:
    SPreviewRow RowOf(const SImportRow& row) const
    {
        SPreviewRow shown{
            row.row, std::string(ActionText(row.action)), row.action == ERowAction::Failed, {}};
        const CZovRcdProps* record =
            row.action == ERowAction::Added ? m_library.Find(m_report.type, row.name) : nullptr;
        for (const SImportColumn& column : m_report.columns) {
            SPreviewCell cell;
            if (record != nullptr) {
                cell.text = StoredText(*record, column.field, m_units);
            }
            if (cell.text.empty()) {
                cell.text = column.column.column == 0
                                ? column.column.constant
                                : std::string(m_sheet.CellText(row.row, column.column.column));
            }
            shown.cells.push_back(std::move(cell));
        }
        for (const SImportFinding& finding : row.findings) {
            Mark(finding, shown);
        }
        return shown;
    }

    void Mark(const SImportFinding& finding, SPreviewRow& row) const
    {
        const auto at = std::ranges::find_if(m_report.columns, [&](const SImportColumn& column) {
            return InfoOf(column.field).label == finding.property;
        });
        const std::string text = FindingText(finding);
        if (at == m_report.columns.end()) {
            row.action += ": " + (finding.property.empty() ? "" : finding.property + ": ") + text;
            return;
        }
        SPreviewCell& cell = row.cells[static_cast<std::size_t>(at - m_report.columns.begin())];
        cell.finding += (cell.finding.empty() ? "" : "\n") + text;
        cell.faulty = cell.faulty || finding.severity == ESeverity::Error;
    }

    const SImportReport& m_report;
    const CZovLibrary& m_library;
    const CSheetTable& m_sheet;
    const CDisplayUnits& m_units;
};

} // namespace

CResult<SPreview> PreviewTab(const SDialogTab& tab, CWorkbook& book, std::uint32_t rows,
                             const CDisplayUnits& units, CLogSink& log)
{
    SGenerateOptions options = JobOf(tab).generate;
    options.rowLimit = rows;
    CZovLibrary library;
    SImportReport report;
    RETURN_IF_ERROR(GenerateModels(book, options, library, log, &report));
    const std::uint32_t last = report.rows.empty() ? 0 : report.rows.back().row;
    ASSIGN_OR_RETURN(const CSheetTable sheet, CSheetTable::Read(book, last));
    return CPreviewer(report, library, sheet, units).Run();
}

} // namespace zov::batch
