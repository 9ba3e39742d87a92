// SPDX-License-Identifier: Apache-2.0
#include "batch/GeneratedModels.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/Messages.h"
#include "batch/ModelGenerator.h"

namespace zov::batch {

namespace {

constexpr std::string_view kSuffixForm = "%s_%d";
constexpr std::string_view kRepeatSkipped =
    "[WARNING] '%s' from (Row:%d) repeats an earlier row...skip";
constexpr std::string_view kRepeatReplaces =
    "[WARNING] '%s' from (Row:%d) repeats row %d,updating...";
constexpr std::string_view kRepeatRenamed =
    "[WARNING] '%s' from (Row:%d) repeats an earlier row...renamed to '%s'";

} // namespace

CGeneratedModels::CGeneratedModels(ERecordType type, ESheetDuplicate policy, SImportReport& report,
                                   CLogSink& log)
    : m_type(type)
    , m_policy(policy)
    , m_report(report)
    , m_log(log)
    , m_builder(m_staging.Store())
{
}

void CGeneratedModels::SetAction(const SModel& model, ERowAction action)
{
    if (model.place != kUnlisted) {
        m_report.rows[model.place].action = action;
    }
}

std::size_t CGeneratedModels::IndexOf(const CZovRcdProps& record)
{
    for (std::size_t i = m_indexOf.size(); i < m_models.size(); ++i) {
        m_indexOf.emplace(m_models[i].record, i);
    }
    return m_indexOf.at(&record);
}

void CGeneratedModels::Take(const SModelRow& row, std::uint32_t number,
                            std::optional<std::size_t> place)
{
    const std::string_view name = row.texts[EField::ModelName];
    SModel model = {nullptr, number, place ? static_cast<std::uint32_t>(*place) : kUnlisted};
    CZovRcdProps* earlier = m_staging.Find(m_type, name);
    if (earlier != nullptr && m_policy == ESheetDuplicate::KeepTheFirst) {
        m_log.Write(Text(kRepeatSkipped, name, number));
        SetAction(model, ERowAction::SkippedDuplicate);
        ++m_report.counts.skippedDuplicate;
        return;
    }
    if (earlier != nullptr && m_policy == ESheetDuplicate::ReplaceWithNew) {
        ReplaceEarlier(*earlier, row, model);
        return;
    }
    model.record = BuildRecord(row, m_type, m_builder);
    if (earlier != nullptr) {
        m_suffixed.push_back({m_models.size(), row.wrappedFile, row.node});
    } else {
        // Rows to be renamed stay out until their names are known.
        m_staging.Append(model.record);
    }
    m_models.push_back(model);
}

void CGeneratedModels::ReplaceEarlier(CZovRcdProps& earlier, const SModelRow& row,
                                      const SModel& model)
{
    SModel& entry = m_models[IndexOf(earlier)];
    m_log.Write(Text(kRepeatReplaces, row.texts[EField::ModelName], model.row, entry.row));
    SetAction(entry, ERowAction::Superseded);
    ++m_report.counts.superseded;
    m_staging.Replace(earlier, *BuildRecord(row, m_type, m_builder));
    entry.row = model.row;
    entry.place = model.place;
}

void CGeneratedModels::NameSuffixed(CCircuitWrapper& wrapper)
{
    if (m_suffixed.empty()) {
        return;
    }
    std::unordered_map<std::string, int> next; // by upper-cased name, so that a run of equal names
                                               // is not counted from 1 each time
    for (const SSuffixed& suffixed : m_suffixed) {
        SModel& model = m_models[suffixed.model];
        const std::string base(model.record->Name());
        int& number = next.try_emplace(UpperCase(base), 1).first->second;
        std::string name = Text(kSuffixForm, base, number);
        while (m_staging.Find(m_type, name) != nullptr) {
            name = Text(kSuffixForm, base, ++number);
        }
        ++number;
        m_log.Write(Text(kRepeatRenamed, base, model.row, name));
        model.record->SetString(EPropId::ModelName, name);
        if (!suffixed.wrappedFile.empty()) {
            const SCircuit circuit = wrapper.Wrap(name, suffixed.wrappedFile, suffixed.node);
            model.record->SetString(EPropId::CktDef, circuit.text);
        }
        m_staging.Append(model.record);
        if (model.place != kUnlisted) {
            m_report.rows[model.place].name = name;
        }
    }
}

void CGeneratedModels::AddTo(CZovLibrary& library, const SGenerateOptions& options)
{
    if (library.Count() == 0) {
        AddAll(library);
    } else {
        AddOneByOne(library, options);
    }
    m_log.Write(Text(msg::kImported, m_report.counts.Imported(), PathText(options.destination)));
}

void CGeneratedModels::AddAll(CZovLibrary& library)
{
    for (const SModel& model : m_models) {
        SetAction(model, ERowAction::Added);
    }
    m_report.counts.added += m_models.size();
    std::filesystem::path path = library.Path();
    if (m_suffixed.empty()) {
        library = std::move(m_staging);
    } else { // the order of the sheet, not that of naming
        library.Reserve(m_models.size());
        for (const SModel& model : m_models) {
            library.AddCopy(*model.record);
        }
    }
    library.SetPath(std::move(path));
}

void CGeneratedModels::AddOneByOne(CZovLibrary& library, const SGenerateOptions& options)
{
    SImportCounts& counts = m_report.counts;
    std::optional<bool> replace;
    for (const SModel& model : m_models) {
        const std::string_view name = model.record->Name();
        CZovRcdProps* existing = library.Find(m_type, name);
        if (existing == nullptr) {
            library.AddCopy(*model.record);
            SetAction(model, ERowAction::Added);
            ++counts.added;
            continue;
        }
        if (!replace) {
            replace = options.askReplace
                          ? options.askReplace()
                          : options.libraryDuplicate == ELibraryDuplicate::ReplaceWithNew;
        }
        m_log.Write(Text(*replace ? msg::kUpdating : msg::kSkip, name));
        if (*replace) {
            library.Replace(*existing, *model.record);
        }
        SetAction(model, *replace ? ERowAction::Replaced : ERowAction::SkippedExisting);
        ++(*replace ? counts.replaced : counts.skippedExisting);
    }
}

} // namespace zov::batch
