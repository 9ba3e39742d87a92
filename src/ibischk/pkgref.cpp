// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pkgref.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <optional>

namespace zov::ibischk {

void OpenPackageModel(SCheck& check, const SLine& line)
{
    OpenComponent(check).packageModel = {TakeName(check, line, kNameLimit, EReserved::Refused),
                                         check.state.keywordPlace};
}

void TakeAlternative(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    CTokens tokens(line.text);
    const std::string_view name = tokens.Next();
    if (!tokens.AtEnd()) {
        check.report.ErrorAt(line.Place(tokens.Rest()), 2705, tokens.Rest());
    }
    LimitName(check, "Package model name", name, kNameLimit, line.Place());
    if (component.names->alternativeNames.Add(name, component.alternatePackageModels.size())) {
        check.report.WarningAt(line.Place(), 2707, name);
        return;
    }
    component.alternatePackageModels.push_back({name, line.Place()});
}

void ClosePackageReferences(SCheck& check, const SComponent& component)
{
    if (!check.state.Has(EKeyword::AlternatePackageModels)) {
        return;
    }
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::AlternatePackageModels), {}});
    if (!check.state.Has(EKeyword::PackageModel)) {
        check.report.ErrorAt(component.place, 2704);
    }
    if (component.alternatePackageModels.empty()) {
        check.report.ErrorAt(component.place, 2706);
    }
    for (const SNamed& alternative : component.alternatePackageModels) {
        if (alternative.name == component.packageModel.name) {
            check.report.NoteAt(alternative.place, 2708, alternative.name);
        }
    }
}

namespace {

/// Package models that files beside the checked one define; read when first needed.
class CPackageFiles
{
public:
    explicit CPackageFiles(SCheck& check)
        : m_check(check)
    {
    }

    /// Name of the file that defines the package model; empty for none.
    std::string_view FileOf(std::string_view model)
    {
        if (!m_read) {
            m_read = true;
            ReadAll();
        }
        const auto found = m_models.Find(model);
        return found ? std::string_view(m_files[*found]) : std::string_view();
    }

private:
    void ReadAll()
    {
        // A folder of a whole library is not searched: the look-up must stay cheap.
        constexpr std::size_t kMostFiles = 32;
        m_files = m_check.files.Beside(std::string(m_check.Folder()), ".pkg");
        m_files.resize(std::min(m_files.size(), kMostFiles));
        for (std::size_t i = 0; i < m_files.size(); ++i) {
            const auto entries = IndexReferenced(m_check, m_files[i]);
            if (!entries) {
                continue;
            }
            for (const SIndexEntry& entry : *entries) {
                if (entry.keyword == EKeyword::DefinePackageModel) {
                    m_models.Add(entry.text, i);
                }
            }
        }
    }

    SCheck& m_check;
    bool m_read = false;
    std::vector<std::string> m_files;
    CNameIndex m_models;
};

/// Pins that are merged into one are supply pins of the component with one signal name.
void CheckMergedPins(SCheck& check, const SComponent& component, const SPackageModel& model)
{
    for (const SMergedPins& group : model.merged) {
        const SPin* into = component.FindPin(group.pin);
        for (const std::string_view name : group.merged) {
            const SPin* pin = component.FindPin(name);
            if (pin == nullptr) {
                check.report.WarningAt(group.place, 3485, name, group.pin, component.name);
            } else if (!pin->IsRail()) {
                check.report.WarningAt(group.place, 3486, name, group.pin, PinKindText(pin->kind));
            } else if (into != nullptr && pin->signal != into->signal) {
                check.report.WarningAt(group.place, 3487, name, pin->signal, group.pin,
                                       into->signal);
            }
        }
    }
}

void CheckPinsOfModel(SCheck& check, const SComponent& component, const SPackageModel& model,
                      SPlace place)
{
    STally unknown;
    for (const std::string_view pin : model.pins) {
        if (component.FindPin(pin) == nullptr) {
            unknown.Add(pin, place);
        }
    }
    if (unknown) {
        check.report.ErrorAt(place, 2702, unknown.first, model.name, component.name, unknown.count);
    }
    CheckMergedPins(check, component, model);
    CNameIndex merged;
    for (const SMergedPins& group : model.merged) {
        for (const std::string_view pin : group.merged) {
            merged.Add(pin, 0);
        }
    }
    STally uncovered;
    for (const SPin& pin : component.pins) {
        if (pin.kind != EPinKind::NoConnect && !model.pinNames.Find(pin.name) &&
            !merged.Find(pin.name)) {
            uncovered.Add(pin.name, place);
        }
    }
    if (uncovered) {
        check.report.NoteAt(place, 2703, model.name, uncovered.first, component.name,
                            uncovered.count);
    }
}

void FinishReference(SCheck& check, const SComponent& component, const SNamed& reference,
                     CPackageFiles& files)
{
    SFileData& data = check.data;
    if (const auto model = data.packageModelNames.Find(reference.name)) {
        data.packageModels[*model].used = true;
        if (!component.pins.empty()) {
            CheckPinsOfModel(check, component, data.packageModels[*model], reference.place);
        }
        return;
    }
    if (data.packageModelNames.FindNoCase(reference.name)) {
        check.report.WarningAt(reference.place, 1950, reference.name);
        return;
    }
    const std::string_view file = files.FileOf(reference.name);
    if (file.empty()) {
        check.report.WarningAt(reference.place, 2700, reference.name);
    } else {
        check.report.NoteAt(reference.place, 2701, reference.name, file);
    }
}

} // namespace

void FinishPackageReferences(SCheck& check)
{
    CPackageFiles files(check);
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(check.report,
                               {component.name, {}, KeywordText(EKeyword::PackageModel), {}});
        if (!component.packageModel.name.empty()) {
            FinishReference(check, component, component.packageModel, files);
        }
        for (const SNamed& alternative : component.alternatePackageModels) {
            if (alternative.name != component.packageModel.name) {
                FinishReference(check, component, alternative, files);
            }
        }
    }
}

} // namespace zov::ibischk
