// SPDX-License-Identifier: Apache-2.0
#include "cli/AssignReport.h"

#include "assign/WhyReport.h"

#include <algorithm>
#include <array>

namespace zov::cli {

namespace {

constexpr std::size_t kRunnersUp = 5;

std::string_view StateOf(const CAssignTable& table, const AssignRow& row)
{
    return table.ModelsOf(row).empty() ? "not found" : "assigned";
}

bool IsAmbiguous(const AssignRow& row)
{
    return row.candidates.value_or(0) > 1;
}

std::string FileOf(const SModelRef& model)
{
    return PathText(model.library->Path().filename());
}

/// What is wanted of a row as the design has it; the row itself has taken its model's type.
SWanted WantedOf(const CAssignTable& table, const AssignRow& row)
{
    return {row.component, table.ComponentOf(row).requiredType};
}

void PrintWhy(SAssignReport& report, const AssignRow& row, const SFound& found,
              const SStreams& streams)
{
    const auto node = report.set->ActiveLibraries();
    const SExplanation told = Explain(*report.search, node, report.options,
                                      WantedOf(*report.table, row), found, kRunnersUp);
    if (!told.how.empty()) {
        Print(streams.out, "    found  {}\n", OneLine(told.how));
    } else if (!report.table->ModelsOf(row).empty()) {
        Print(streams.out, "    found  in the map file\n");
    }
    for (const SRunnerUp& one : told.runnersUp) {
        Print(streams.out, "    lost   {} in {}: {}\n", OneLine(one.model.record->Name()),
              FileOf(one.model), one.reason);
    }
    if (told.others > told.runnersUp.size()) {
        Print(streams.out, "    lost   {} more\n", told.others - told.runnersUp.size());
    }
}

constexpr std::size_t kColumns = 5;
using TLine = std::array<std::string, kColumns>;

TLine LineOf(const CAssignTable& table, const AssignRow& row)
{
    const std::vector<SModelRef> models = table.ModelsOf(row);
    const SRecordTypeInfo* type =
        models.empty() ? nullptr : FindRecordType(static_cast<std::uint32_t>(models.front().type));
    return {OneLine(row.component), std::to_string(table.ComponentOf(row).refdes.size()),
            std::string(StateOf(table, row)) + (IsAmbiguous(row) ? ", ambiguous" : ""),
            type == nullptr ? "" : std::string(type->element),
            models.empty() ? "" : OneLine(table.CellText(row, EAssignColumn::AssignedModels))};
}

/// The line in columns, the library behind it; without blanks at the end.
std::string Padded(const TLine& line, const std::array<std::size_t, kColumns>& widths,
                   const std::string& last)
{
    std::string out;
    for (std::size_t i = 0; i < kColumns; ++i) {
        out += line[i];
        out.append(widths[i] - WidthOf(line[i]) + 2, ' ');
    }
    out += last;
    out.erase(out.find_last_not_of(' ') + 1);
    return out;
}

void PrintRows(SAssignReport& report, bool why, const SStreams& streams)
{
    const CAssignTable& table = *report.table;
    std::vector<TLine> lines;
    std::array<std::size_t, kColumns> widths{};
    for (const AssignRow* row : table.Rows()) {
        lines.push_back(LineOf(table, *row));
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], WidthOf(lines.back()[i]));
        }
    }
    for (std::size_t i = 0; i < lines.size() && streams.out.Ok(); ++i) {
        const AssignRow& row = *table.Rows()[i];
        const std::vector<SModelRef> models = table.ModelsOf(row);
        Print(streams.out, "{}\n",
              Padded(lines[i], widths, models.empty() ? "" : FileOf(models.front())));
        if (why) {
            PrintWhy(report, row, report.found[i], streams);
        }
    }
}

std::string MapModel(const SMapRow& row)
{
    return row.model + (row.subModel.empty() ? "" : " : " + row.subModel) + " in " + row.library;
}

void PrintChanges(const std::vector<SMapChange>& changes, const SStreams& streams)
{
    for (const SMapChange& change : changes) {
        const bool isNew = change.before == SMapRow();
        const bool isGone = change.after == SMapRow();
        const SMapRow& row = isGone ? change.before : change.after;
        Print(streams.out, "{} {} {}\n", isNew ? '+' : (isGone ? '-' : '~'), OneLine(row.device),
              OneLine(row.refdes));
        if (!isNew) {
            Print(streams.out, "    was {}\n", OneLine(MapModel(change.before)));
        }
        if (!isGone) {
            Print(streams.out, "    is  {}\n", OneLine(MapModel(change.after)));
        }
    }
    Print(streams.out, "{} to the earlier map file\n", Counted(changes.size(), "change"));
}

TJson MapJson(const SMapRow& row)
{
    if (row == SMapRow()) {
        return nullptr;
    }
    return {{"device", row.device},
            {"refdes", row.refdes},
            {"model", row.model},
            {"library", row.library},
            {"subModel", row.subModel}};
}

TJson ModelJson(const SModelRef& model)
{
    return {{"model", model.record->Name()},
            {"subModel", model.record->GetString(EPropId::SubModel)},
            {"type", InfoOf(model.type).element},
            {"library", PathText(model.library->Path())}};
}

TJson WhyJson(SAssignReport& report, const AssignRow& row, const SFound& found)
{
    const SExplanation told = Explain(*report.search, report.set->ActiveLibraries(), report.options,
                                      WantedOf(*report.table, row), found, kRunnersUp);
    TJson why = {{"how", told.how}, {"others", told.others}, {"runnersUp", TJson::array()}};
    for (const SRunnerUp& one : told.runnersUp) {
        TJson model = ModelJson(one.model);
        model["reason"] = one.reason;
        why["runnersUp"].push_back(std::move(model));
    }
    return why;
}

TJson RowJson(SAssignReport& report, std::size_t i, bool why)
{
    const CAssignTable& table = *report.table;
    const AssignRow& row = *table.Rows()[i];
    const SFound& found = report.found[i];
    TJson json = {{"component", row.component},
                  {"refdes", table.ComponentOf(row).refdes},
                  {"state", StateOf(table, row)},
                  {"ambiguous", IsAmbiguous(row)},
                  {"status", table.CellText(row, EAssignColumn::Status)},
                  {"assigned", TJson::array()}};
    for (const SModelRef& model : table.ModelsOf(row)) {
        json["assigned"].push_back(ModelJson(model));
    }
    if (found.model) {
        json["found"] = {
            {"key", LabelOf(found.key)}, {"exact", found.exact}, {"legalised", found.legalised}};
    }
    if (why) {
        json["why"] = WhyJson(report, row, found);
    }
    return json;
}

} // namespace

SAssignCounts CountRows(const SAssignReport& report)
{
    SAssignCounts counts;
    for (const AssignRow* row : report.table->Rows()) {
        ++counts.components;
        ++(report.table->ModelsOf(*row).empty() ? counts.notFound : counts.assigned);
        counts.ambiguous += IsAmbiguous(*row) ? 1U : 0U;
    }
    return counts;
}

void PrintAssignText(SAssignReport& report, const SAssignCounts& counts, bool why,
                     const SStreams& streams)
{
    PrintRows(report, why, streams);
    if (report.imported) {
        Print(streams.out, "{} out of the map file\n", Counted(*report.imported, "assignment"));
    }
    if (report.changes) {
        PrintChanges(*report.changes, streams);
    }
    const std::string named = report.columns.empty()
                                  ? std::string()
                                  : fmt::format(" by '{}'", OneLine(report.columns.front().title));
    Print(streams.out, "{}{}: {} assigned, {} ambiguous, {} not found\n",
          Counted(counts.components, "component"), named, counts.assigned, counts.ambiguous,
          counts.notFound);
}

void PrintAssignJson(SAssignReport& report, const SAssignCounts& counts, bool why,
                     const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion},
                      {"design", report.design},
                      {"form", report.form},
                      {"columns", TJson::array()},
                      {"components", counts.components},
                      {"assigned", counts.assigned},
                      {"ambiguous", counts.ambiguous},
                      {"notFound", counts.notFound}};
    for (const SDesignColumn& column : report.columns) {
        document["columns"].push_back(
            {{"use", column.use}, {"title", column.title}, {"column", column.column}});
    }
    if (report.imported) {
        document["imported"] = *report.imported;
    }
    if (report.changes) {
        TJson& changes = document["changes"] = TJson::array();
        for (const SMapChange& change : *report.changes) {
            changes.push_back(
                {{"before", MapJson(change.before)}, {"after", MapJson(change.after)}});
        }
    }
    TJson& rows = document["rows"] = TJson::array();
    for (std::size_t i = 0; i < report.table->Rows().size(); ++i) {
        rows.push_back(RowJson(report, i, why));
    }
    PrintJson(streams, document);
}

} // namespace zov::cli
