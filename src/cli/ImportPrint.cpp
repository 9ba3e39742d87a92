// SPDX-License-Identifier: Apache-2.0
#include "cli/ImportPrint.h"

#include <algorithm>
#include <array>
#include <map>

namespace zov::cli {

using batch::ERowAction;
using batch::SImportColumn;
using batch::SImportCounts;
using batch::SImportFinding;
using batch::SImportReport;
using batch::SImportRow;

namespace {

/// A faulty list would scroll the counts away.
constexpr std::size_t kRowsShown = 50;

constexpr std::array<std::string_view, 4> kSeverityWords = {"note", "caution", "warning", "error"};

std::string_view WordOf(ESeverity severity)
{
    return kSeverityWords[static_cast<std::size_t>(severity)];
}

std::string_view KeyOf(ERowAction action)
{
    switch (action) {
    case ERowAction::Added:
        return "added";
    case ERowAction::Replaced:
        return "replaced";
    case ERowAction::SkippedDuplicate:
        return "skippedRepeated";
    case ERowAction::Superseded:
        return "superseded";
    case ERowAction::SkippedExisting:
        return "skippedExisting";
    case ERowAction::Failed:
        break;
    }
    return "failed";
}

std::string_view KeyOf(batch::EUnitSource source)
{
    switch (source) {
    case batch::EUnitSource::Default:
        return "default";
    case batch::EUnitSource::Title:
        return "title";
    case batch::EUnitSource::Option:
        return "option";
    case batch::EUnitSource::None:
        break;
    }
    return "none";
}

std::string UnitText(const batch::SColumn& column)
{
    if (column.unitText.empty()) {
        return {};
    }
    const std::string_view from = column.unitSource == batch::EUnitSource::Title ? " (by its title)"
                                  : column.unitSource == batch::EUnitSource::Option ? " (given)"
                                                                                    : "";
    return fmt::format("  {}{}", column.unitText, from);
}

void PrintColumns(const SImportReport& report, const SStreams& streams)
{
    std::size_t labels = 0;
    std::size_t letters = 0;
    std::size_t titles = 0;
    for (const SImportColumn& one : report.columns) {
        labels = std::max(labels, InfoOf(one.field).label.size());
        letters = std::max(letters, one.columnName.size());
        titles = std::max(
            titles, WidthOf(one.column.title.empty() ? one.column.constant : one.column.title));
    }
    streams.out.Write("columns\n");
    for (const SImportColumn& one : report.columns) {
        const bool constant = one.column.source == batch::EColumnSource::Constant;
        const std::string shown = OneLine(constant ? one.column.constant : one.column.title);
        std::string line =
            fmt::format("  {:<{}}  {:<{}}  '{}'", InfoOf(one.field).label, labels,
                        constant ? "=" : one.columnName, std::max(letters, 1UL), shown);
        if (const std::string unit = UnitText(one.column); !unit.empty()) {
            line.append(titles - std::min(titles, WidthOf(shown)), ' ');
            line += unit;
        }
        Print(streams.out, "{}\n", line);
    }
    if (!report.unused.empty()) {
        std::string line;
        for (const batch::SUnusedColumn& one : report.unused) {
            line += fmt::format("{}{} '{}'", line.empty() ? "" : ", ", one.columnName,
                                OneLine(one.title));
        }
        Print(streams.out, "unused columns\n  {}\n", line);
    }
}

/// "F12 Cnom: error: seen '4..7', expected a number: ..."
std::string FindingText(const SImportFinding& finding)
{
    std::string line;
    if (finding.row != 0) {
        line = finding.columnName.empty() ? fmt::format("row {}", finding.row)
                                          : fmt::format("{}{}", finding.columnName, finding.row);
    } else if (!finding.columnName.empty()) {
        line = "column " + finding.columnName;
    }
    if (!finding.property.empty()) {
        line += (line.empty() ? "" : " ") + finding.property;
    }
    line += fmt::format("{}{}: ", line.empty() ? "" : ": ", WordOf(finding.severity));
    std::string said = OneLine(finding.text);
    if (!finding.expected.empty()) {
        const std::string seen =
            finding.seen.empty() ? "an empty cell" : '\'' + OneLine(finding.seen) + '\'';
        said +=
            fmt::format("{}seen {}, expected {}", said.empty() ? "" : "; ", seen, finding.expected);
    }
    return line + said;
}

bool IsMissingColumn(const SImportFinding& finding)
{
    return finding.severity == ESeverity::Error && finding.column == 0 &&
           !finding.property.empty() && finding.seen.empty();
}

/// Properties that rows lack because no column feeds them, with the number of such rows: told once
/// instead of row by row.
std::map<std::string, std::size_t> MissingColumns(const SImportReport& report)
{
    std::map<std::string, std::size_t> missing;
    for (const SImportRow& row : report.rows) {
        for (const SImportFinding& finding : row.findings) {
            if (IsMissingColumn(finding)) {
                ++missing[finding.property];
            }
        }
    }
    return missing;
}

void PrintMissingColumns(const SImportReport& report, const SStreams& streams)
{
    const std::map<std::string, std::size_t> missing = MissingColumns(report);
    if (missing.empty()) {
        return;
    }
    streams.out.Write("missing columns\n");
    for (const auto& [property, rows] : missing) {
        Print(streams.out,
              "  {}: error: {} without it; name its column in a --map file or give every row a "
              "value by --const '{}=...'\n",
              property, Counted(rows, "row"), property);
    }
}

/// Rows that lack nothing but a whole column are not listed. A dry run is asked what would happen
/// to the library's models; after a run the count is enough.
bool IsWorthTelling(const SImportRow& row, bool dryRun)
{
    const bool touchesLibrary =
        row.action == ERowAction::Replaced || row.action == ERowAction::SkippedExisting;
    if (!row.findings.empty()) {
        return !std::ranges::all_of(row.findings, IsMissingColumn);
    }
    return touchesLibrary ? dryRun : row.action != ERowAction::Added;
}

void PrintRows(const SImportReport& report, bool allRows, bool dryRun, const SStreams& streams)
{
    std::size_t shown = 0;
    std::size_t hidden = 0;
    for (const SImportRow& row : report.rows) {
        if (!allRows && !IsWorthTelling(row, dryRun)) {
            continue;
        }
        if (!allRows && shown == kRowsShown) {
            ++hidden;
            continue;
        }
        if (shown++ == 0) {
            streams.out.Write("rows\n");
        }
        Print(streams.out, "  row {} '{}': {}\n", row.row, OneLine(row.name),
              ActionText(row.action));
        for (const SImportFinding& finding : row.findings) {
            if (!IsMissingColumn(finding)) {
                Print(streams.out, "    {}\n", FindingText(finding));
            }
        }
    }
    if (hidden != 0) {
        Print(streams.out, "  ... and {} with something to tell; --all-rows shows them\n",
              Counted(hidden, "more row"));
    }
}

void PrintCounts(const SImportCounts& counts, const SStreams& streams)
{
    Print(streams.out, "{}: {} added", Counted(counts.rows, "row"), counts.added);
    const std::array<std::pair<std::size_t, std::string_view>, 5> others = {
        {{counts.replaced, "replaced in the library"},
         {counts.skippedExisting, "skipped, the library has the name"},
         {counts.skippedDuplicate, "skipped, an earlier row has the name"},
         {counts.superseded, "superseded, a later row has the name"},
         {counts.failed, "failed"}}};
    for (const auto& [count, words] : others) {
        if (count != 0) {
            Print(streams.out, "; {} {}", count, words);
        }
    }
    streams.out.Write("\n");
}

TJson ToJson(const SImportFinding& finding)
{
    TJson out = {{"severity", WordOf(finding.severity)}};
    if (finding.row != 0) {
        out["row"] = finding.row;
    }
    if (finding.column != 0) {
        out["column"] = finding.column;
        out["columnName"] = finding.columnName;
    }
    out["property"] = finding.property;
    out["seen"] = finding.seen;
    out["expected"] = finding.expected;
    out["text"] = finding.text;
    return out;
}

TJson ToJson(const SImportColumn& one)
{
    TJson out = {{"property", InfoOf(one.field).label}};
    if (one.column.source == batch::EColumnSource::Constant) {
        out["constant"] = one.column.constant;
    } else {
        out["column"] = one.column.column;
        out["columnName"] = one.columnName;
        out["title"] = one.column.title;
    }
    if (!one.column.unitText.empty()) {
        out["unit"] = one.column.unitText;
        out["unitFrom"] = KeyOf(one.column.unitSource);
    }
    return out;
}

TJson ToJson(const SImportCounts& counts)
{
    return {{"rows", counts.rows},
            {"added", counts.added},
            {"replaced", counts.replaced},
            {"skippedExisting", counts.skippedExisting},
            {"skippedRepeated", counts.skippedDuplicate},
            {"superseded", counts.superseded},
            {"failed", counts.failed},
            {"warnings", counts.warnings},
            {"errors", counts.errors}};
}

} // namespace

void PrintImport(const SImportReport& report, bool allRows, bool dryRun, const SStreams& streams)
{
    Print(streams.out, "{}, sheet '{}', titles in row {}\n", report.source, OneLine(report.sheet),
          report.headerRow);
    PrintColumns(report, streams);
    PrintMissingColumns(report, streams);
    PrintRows(report, allRows, dryRun, streams);
    for (const SImportFinding& finding : report.findings) {
        Print(streams.out, "{}\n", FindingText(finding));
    }
    PrintCounts(report.counts, streams);
    Print(streams.out, "{} {}\n", report.destination,
          report.saved                    ? "saved"
          : report.counts.Imported() == 0 ? "left as it is: there is nothing to add"
          : dryRun                        ? "not written: this is a dry run"
                                          : "not saved");
}

void PrintImportJson(const SImportReport& report, bool dryRun, const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion},
                      {"source", report.source},
                      {"sheet", report.sheet},
                      {"headerRow", report.headerRow},
                      {"type", InfoOf(report.type).element},
                      {"destination", report.destination},
                      {"dryRun", dryRun},
                      {"saved", report.saved},
                      {"counts", ToJson(report.counts)},
                      {"columns", TJson::array()},
                      {"unused", TJson::array()},
                      {"findings", TJson::array()},
                      {"rows", TJson::array()}};
    for (const SImportColumn& one : report.columns) {
        document["columns"].push_back(ToJson(one));
    }
    for (const batch::SUnusedColumn& one : report.unused) {
        document["unused"].push_back(
            {{"column", one.column}, {"columnName", one.columnName}, {"title", one.title}});
    }
    for (const SImportFinding& finding : report.findings) {
        document["findings"].push_back(ToJson(finding));
    }
    for (const SImportRow& row : report.rows) {
        TJson item = {{"row", row.row}, {"name", row.name}, {"action", KeyOf(row.action)}};
        for (const SImportFinding& finding : row.findings) {
            item["findings"].push_back(ToJson(finding));
        }
        document["rows"].push_back(std::move(item));
    }
    PrintJson(streams, document);
}

} // namespace zov::cli
