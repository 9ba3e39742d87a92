// SPDX-License-Identifier: Apache-2.0
#include "batch/DialogRun.h"

#include "base/File.h"
#include "batch/Messages.h"

namespace zov::batch {

SImportJob JobOf(const SDialogTab& tab)
{
    SImportJob job;
    job.sheet = tab.workSheet;
    SGenerateOptions& options = job.generate;
    options.mapping.type = tab.type;
    options.mapping.mapping.emplace();
    for (const SDialogMapping& row : tab.mapping) {
        const std::string label(InfoOf(row.field).label);
        options.mapping.mapping->push_back({row.field, label, row.title, 0});
        if (!row.constant.empty()) {
            options.mapping.constants[row.field] = row.constant;
        }
        options.mapping.units[row.field] = row.unit;
        if (row.field == EField::SizeUnit) {
            options.sizeSystem = FindSizeSystem(row.unit).value_or(ESizeSystem::FromFile);
        } else if (row.field == EField::NodeAssignment) {
            options.node = FindNodeAssignment(row.unit).value_or(ENodeAssignment::Series);
        }
    }
    options.headerRow = tab.headerRow;
    options.sheetDuplicate = tab.duplicates;
    options.vendorLibrary = TextPath(tab.vendorLibrary);
    options.source = TextPath(tab.sourceFile);
    options.destination = TextPath(tab.destination);
    return job;
}

std::vector<std::string> CheckTab(const SDialogTab& tab)
{
    std::vector<std::string> missing;
    const std::string_view type = zov::InfoOf(tab.type).name;
    if (tab.sourceFile.empty()) {
        missing.emplace_back(msg::kSourceRequired);
    }
    if (tab.destination.empty()) {
        missing.push_back(Text(msg::kDestinationRequired, type));
    }
    for (const SDialogMapping& row : tab.mapping) {
        const SFieldInfo& info = InfoOf(row.field);
        // A field that only has choices (size system, nodes) may go without a column.
        const bool noColumn = row.title.empty() && row.constant.empty();
        if (noColumn && info.quantity == EQuantity::None && !info.units.empty()) {
            if (row.unit.empty()) {
                missing.push_back(Text(msg::kUnitRequired, type, info.label));
            }
            continue;
        }
        if (noColumn) {
            missing.push_back(Text(msg::kColumnRequired, type, info.label));
        }
        if (row.unit.empty() && info.quantity != EQuantity::None && !info.units.empty()) {
            missing.push_back(Text(msg::kUnitRequired, type, info.label));
        }
    }
    return missing;
}

CResult<void> RunTab(const SDialogTab& tab, const FClock& clock, CGeneratorQuestions& questions,
                     const std::function<bool(std::uint32_t)>& progress, CLogSink& log,
                     SImportReport& report, const SOpenDestination& open)
{
    log.Write(Text(msg::kStart, FormatTime(clock())));
    log.Write(Text(msg::kGenerating, zov::InfoOf(tab.type).name));
    SImportJob job = JobOf(tab);
    job.load = open.load;
    job.save = open.save;
    std::error_code ignored;
    if (std::filesystem::exists(job.generate.destination, ignored) &&
        questions.Ask(msg::kAskReplaceFile)) {
        job.existing = EDestination::Replace;
    }
    if (progress && !progress(0)) { // given up at the question
        log.Write(msg::kStopped);
        return Fail(EErr::Cancelled, "stopped by the user");
    }
    job.generate.askReplace = [&] { return questions.Ask(msg::kAskReplaceModels); };
    job.generate.progress = progress;
    auto outcome = RunImport(job, log, report);
    log.Write(outcome.Ok() ? msg::kCompleted : msg::kStopped);
    return outcome;
}

std::string_view SheetFailureText(EErr code)
{
    return code == EErr::Unspecified ? msg::kNoExcel : msg::kCorrupted;
}

} // namespace zov::batch
