// SPDX-License-Identifier: Apache-2.0
#include "ibischk/cmpnt.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/emicmpnt.h"
#include "ibischk/imgroup.h"
#include "ibischk/pkgref.h"
#include "ibischk/table.h"

namespace zov::ibischk {

namespace {

constexpr SSubParameter kLocations[] = {
    {"Si_location", EVersion::V32, EEquals::Without},
    {"Timing_location", EVersion::V32, EEquals::Without},
};

void OpenComponentKeyword(SCheck& check, const SLine& line)
{
    SFileData& data = check.data;
    SComponent component;
    component.name = TakeText(check, line, kNameLimit);
    component.place = check.state.keywordPlace;
    check.report.Path().component = component.name;
    if (component.name.find_first_of(" \t") != std::string_view::npos) {
        check.report.NoteAt(line.Place(), 200, component.name);
    }
    if (!component.name.empty()) {
        if (const auto before = data.componentNames.Add(component.name, data.components.size())) {
            check.report.ErrorAt(component.place, 201, component.name,
                                 data.components[*before].place.line);
        }
    }
    component.names = std::make_unique<SComponentNames>();
    data.components.push_back(std::move(component));
}

void TakeLocation(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    const auto row =
        TakeSubParameter(check, line, tokens, kLocations, OpenComponent(check).locations);
    if (!row) {
        return;
    }
    const std::string_view value = tokens.Next();
    if (!EqualsNoCase(value, "Pin") && !EqualsNoCase(value, "Die")) {
        check.report.ErrorAt(line.Place(), 202, kLocations[*row].name, value);
    }
    ReportExtra(check, line, tokens, kLocations[*row].name);
}

void OpenManufacturer(SCheck& check, const SLine& line)
{
    TakeText(check, line, kNameLimit);
}

void CloseComponent(SCheck& check)
{
    SComponent& component = OpenComponent(check);
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::Component), {}});
    for (const EKeyword code : {EKeyword::Manufacturer, EKeyword::Package, EKeyword::Pin}) {
        RequireKeyword(check, code);
    }
    ClosePackageReferences(check, component);
    CloseGroups(check, component);
    CloseEmi(check, component);
    component.names.reset();
}

void FinishUnused(SCheck& check)
{
    for (const SModelInfo& model : check.data.models) {
        if (!model.used) {
            const CPathScope scope(check.report,
                                   {{}, model.name, KeywordText(EKeyword::Model), {}});
            check.report.NoteAt(model.place, 618, model.name);
        }
    }
    for (const SModelSelector& selector : check.data.selectors) {
        if (!selector.used) {
            const CPathScope scope(check.report,
                                   {{}, selector.name, KeywordText(EKeyword::ModelSelector), {}});
            check.report.NoteAt(selector.place, 710, selector.name);
        }
    }
}

void FinishComponents(SCheck& check)
{
    FinishPackageReferences(check);
    FinishGroups(check);
    FinishUnused(check);
}

constexpr SHandler kHandlers[] = {
    {EKeyword::Component, &OpenComponentKeyword, &TakeLocation, nullptr},
    {EKeyword::Manufacturer, &OpenManufacturer, nullptr, nullptr},
    {EKeyword::PackageModel, &OpenPackageModel, nullptr, nullptr},
    {EKeyword::AlternatePackageModels, nullptr, &TakeAlternative, nullptr},
    {EKeyword::EndAlternatePackageModels, nullptr, nullptr, nullptr},
    {EKeyword::InterconnectModelGroup, &OpenGroup, &TakeGroupSet, &CloseGroup},
    {EKeyword::EndInterconnectModelGroup, nullptr, nullptr, nullptr},
    {EKeyword::BeginEMIComponent, &OpenEmi, &TakeEmiLine, nullptr},
    {EKeyword::EndEMIComponent, nullptr, nullptr, nullptr},
    {EKeyword::PinEMI, &OpenPinEmi, &TakePinEmiRow, nullptr},
    {EKeyword::PinDomainEMI, &OpenPinDomainEmi, &TakePinDomainRow, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponent}};

} // namespace

const SFamily kCmpntFamily = {"cmpnt", kHandlers, kSections, &FinishComponents};

} // namespace zov::ibischk
