// SPDX-License-Identifier: Apache-2.0
#include "ibischk/msel.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

void OpenSelector(SCheck& check, const SLine& line)
{
    SFileData& data = check.data;
    SModelSelector selector;
    selector.name = TakeName(check, line, LimitsOf(check.state.version).model, EReserved::Refused);
    selector.place = check.state.keywordPlace;
    check.report.Path().model = selector.name;
    if (!selector.name.empty()) {
        if (const auto before = data.selectorNames.Add(selector.name, data.selectors.size())) {
            check.report.ErrorAt(selector.place, 701, selector.name,
                                 data.selectors[*before].place.line);
        }
    }
    data.selectors.push_back(std::move(selector));
}

void TakeSelectorRow(SCheck& check, const SLine& line)
{
    SModelSelector& selector = check.data.selectors.back();
    CTokens tokens(line.text);
    SSelectorRow row;
    row.model = tokens.Next();
    row.place = line.Place();
    LimitName(check, "Model name", row.model, LimitsOf(check.state.version).model, row.place);
    if (tokens.AtEnd()) {
        check.report.WarningAt(row.place, 707, row.model, selector.name);
    } else {
        row.description = LimitText(check, "Description", tokens.Rest(), kDescriptionLimit,
                                    line.Place(tokens.Rest()));
    }
    if (selector.models.Add(row.model, selector.rows.size())) {
        check.report.WarningAt(row.place, 706, selector.name, row.model);
    }
    selector.rows.push_back(row);
}

void CloseSelector(SCheck& check)
{
    const SModelSelector& selector = check.data.selectors.back();
    if (selector.rows.empty()) {
        check.report.ErrorAt(selector.place, 703, selector.name);
    }
}

/// What the models of a selector are for, each with the first model that is.
struct SUses
{
    std::string_view series;
    std::string_view other;
    std::string_view receives;
    std::string_view drives;

    void Add(const SModelInfo& model)
    {
        const SModelType& type = model.Type();
        if (model.type == EModelType::Unknown) {
            return;
        }
        Set(type.IsSeries() ? series : other, model.name);
        if (type.receives && !type.Drives()) {
            Set(receives, model.name);
        }
        if (type.Drives() && !type.receives) {
            Set(drives, model.name);
        }
    }
    static void Set(std::string_view& first, std::string_view name)
    {
        first = first.empty() ? name : first;
    }
};

void FinishRow(SCheck& check, const SSelectorRow& row, SUses& uses)
{
    SFileData& data = check.data;
    if (const auto model = data.modelNames.Find(row.model)) {
        data.models[*model].used = true;
        uses.Add(data.models[*model]);
    } else if (data.selectorNames.Find(row.model)) {
        check.report.ErrorAt(row.place, 705, row.model);
    } else {
        ReportUnresolved(check, data.modelNames, row.model, row.place, 704);
    }
}

void FinishSelectors(SCheck& check)
{
    for (const SModelSelector& selector : check.data.selectors) {
        const CPathScope scope(check.report,
                               {{}, selector.name, KeywordText(EKeyword::ModelSelector), {}});
        if (check.data.modelNames.Find(selector.name)) {
            check.report.ErrorAt(selector.place, 702, selector.name);
        }
        SUses uses;
        for (const SSelectorRow& row : selector.rows) {
            FinishRow(check, row, uses);
        }
        if (!uses.series.empty() && !uses.other.empty()) {
            check.report.ErrorAt(selector.place, 708, selector.name, uses.series, uses.other);
        }
        if (!uses.receives.empty() && !uses.drives.empty()) {
            check.report.NoteAt(selector.place, 709, selector.name, uses.receives, uses.drives);
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::ModelSelector, &OpenSelector, &TakeSelectorRow, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::ModelSelector, &CloseSelector}};

} // namespace

namespace {

void AddModel(SReach& reach, const SModelInfo& model)
{
    const SModelType& type = model.Type();
    const bool isFirst = reach.first == nullptr;
    reach.first = isFirst ? &model : reach.first;
    std::string_view& named = type.IsSeries() ? reach.series : reach.other;
    named = named.empty() ? model.name : named;
    reach.anyDiff = reach.anyDiff || type.IsDiff();
    reach.anyReceives = reach.anyReceives || type.receives;
    reach.anyDrives = reach.anyDrives || type.Drives();
    reach.anySwitch = reach.anySwitch || type.type == EModelType::SeriesSwitch;
    reach.anyAlgorithmic = reach.anyAlgorithmic || model.hasAlgorithmicModel;
    reach.anyExternalReference = reach.anyExternalReference || model.hasExternalReference;
    reach.anyGndClamp = reach.anyGndClamp || model.hasGndClamp;
    reach.anyPowerClamp = reach.anyPowerClamp || model.hasPowerClamp;
    const bool up = type.drives == EDrives::Both || type.drives == EDrives::UpOnly;
    const bool down = type.drives == EDrives::Both || type.drives == EDrives::DownOnly;
    reach.allDriveUp = up && (isFirst || reach.allDriveUp);
    reach.allDriveDown = down && (isFirst || reach.allDriveDown);
}

SReach LookUp(const SFileData& data, std::string_view name)
{
    SReach reach;
    if (const auto model = data.modelNames.Find(name)) {
        reach.found = true;
        AddModel(reach, data.models[*model]);
        return reach;
    }
    const auto selector = data.selectorNames.Find(name);
    if (!selector) {
        return reach;
    }
    reach.found = true;
    for (const SSelectorRow& row : data.selectors[*selector].rows) {
        if (const auto model = data.modelNames.Find(row.model)) {
            AddModel(reach, data.models[*model]);
        }
    }
    return reach;
}

} // namespace

const SReach& CReach::Of(std::string_view name)
{
    const auto [entry, isNew] = m_known.try_emplace(name);
    if (isNew) {
        entry->second = LookUp(m_data, name);
    }
    return entry->second;
}

void MarkUsed(SFileData& data, std::string_view name)
{
    if (const auto selector = data.selectorNames.Find(name)) {
        data.selectors[*selector].used = true;
    }
    if (const auto model = data.modelNames.Find(name)) {
        data.models[*model].used = true;
    }
}

const SFamily kMselFamily = {"msel", kHandlers, kSections, &FinishSelectors};

} // namespace zov::ibischk
