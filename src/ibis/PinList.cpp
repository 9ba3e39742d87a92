// SPDX-License-Identifier: Apache-2.0
#include "ibis/PinList.h"

#include "base/Text.h"

#include <fmt/format.h>
#include <unordered_map>
#include <unordered_set>

namespace zov::ibis {

namespace {

SError Wrong(std::string text)
{
    return Fail(EErr::Format, std::move(text));
}

using TPlaces = std::unordered_map<std::string_view, std::size_t>;

TPlaces AddPins(const CIPDataPin& table, SPinList& list)
{
    TPlaces places;
    for (const CIPDataPinItem* pin : table.Pins()) {
        if (places.emplace(pin->Pin(), list.pins.size()).second) {
            SPinListRow row;
            row.pin = pin->Pin();
            row.signal = pin->Signal();
            row.model = pin->Model();
            row.r = pin->R().text;
            row.l = pin->L().text;
            row.c = pin->C().text;
            list.pins.push_back(std::move(row));
        }
    }
    return places;
}

void AddMapping(const CIPDataComponent& component, const TPlaces& places, SPinList& list)
{
    const CIPDataPinMapping* table = component.PinMapping();
    if (table == nullptr) {
        list.messages.push_back("Component: " + list.component + " has no [Pin Mapping] section.");
        return;
    }
    for (const CIPDataPinMappingItem* item : table->Pins()) {
        const auto place = places.find(item->Pin());
        if (place == places.end()) {
            list.messages.push_back(
                fmt::format("Pin: {} in the [Pin Mapping] section is not found in the [Pin] "
                            "section.",
                            item->Pin()));
            continue;
        }
        SPinListRow& row = list.pins[place->second];
        row.pulldownRef = item->PulldownRef();
        row.pullupRef = item->PullupRef();
        row.gndClampRef = item->GndClampRef();
        row.powerClampRef = item->PowerClampRef();
    }
}

void AddDiffPins(const CIPDataComponent& component, const TPlaces& places, SPinList& list)
{
    const CIPDataDiffPin* table = component.DiffPins();
    if (table == nullptr) {
        return;
    }
    for (const SIPDiffPair& pair : table->Pairs()) {
        const auto first = places.find(pair.pin);
        const auto second = places.find(pair.invPin);
        if (first == places.end() || second == places.end()) {
            list.messages.push_back(
                fmt::format("Pin: {} in the [Diff Pin] section is not found in the [Pin] section.",
                            first == places.end() ? pair.pin : pair.invPin));
            continue;
        }
        for (const auto& [own, other] : {std::pair(first, second), std::pair(second, first)}) {
            SPinListRow& row = list.pins[own->second];
            row.diffPin = other->first;
            row.inverting = own == second;
            row.vdiff = pair.vdiffV.text;
        }
    }
}

void AddSeriesPair(const SIPSeriesPair& pair, const TPlaces& places, SPinList& list)
{
    const auto missing = [&](int number, std::string_view pin) {
        if (!places.contains(pin)) {
            list.messages.push_back(
                fmt::format("Pin {} : {} in the [Series Pin Mapping] section is not found in the "
                            "[Pin] section.",
                            number, pin));
        }
    };
    missing(1, pair.pin1);
    missing(2, pair.pin2);
    if (pair.model.empty()) {
        list.messages.push_back(
            fmt::format("Series pin model is not specified for Pin pair : {} and {} in the "
                        "[Series Pin Mapping].",
                        pair.pin1, pair.pin2));
    }
    list.series.push_back({std::string(pair.pin1), std::string(pair.pin2), std::string(pair.model),
                           std::string(pair.group)});
}

void AddSeries(const CIPDataComponent& component, const TPlaces& places, SPinList& list)
{
    if (const CIPDataSeriesPinMapping* table = component.SeriesPins()) {
        for (const SIPSeriesPair& pair : table->Pairs()) {
            AddSeriesPair(pair, places, list);
        }
    }
    if (const CIPDataSeriesSwitchGroups* table = component.SwitchGroups()) {
        for (const SIPSwitchState& state : table->States()) {
            list.switchGroups.push_back({state.on, {state.groups.begin(), state.groups.end()}});
        }
    }
}

void AddModels(const CIPDataFile& file, std::string_view fileName, SPinList& list)
{
    std::unordered_set<std::string_view> names;
    for (const auto& child : file.Children()) {
        const std::string_view name = child->Value();
        if (child->Keyword() == EIPKeyword::ModelSelector) {
            list.selectors.emplace_back(name);
        } else if (child->Keyword() == EIPKeyword::DefinePackageModel) {
            list.packageModels.emplace_back(name);
        } else if (child->Keyword() == EIPKeyword::Model) {
            if (names.insert(name).second) {
                list.models.emplace_back(name);
            } else {
                list.messages.push_back(
                    fmt::format("Warning: There are more than one model {} in the file {} and the "
                                "settings of the previous one is covered.",
                                name, fileName));
            }
        }
    }
}

} // namespace

CResult<std::vector<std::string>> ComponentNames(const CIPDataFile& file, std::string_view fileName)
{
    if (Trim(file.Text()).empty()) {
        return Wrong("Empty IBIS file");
    }
    if (file.Children().empty() || file.Children().front()->Keyword() != EIPKeyword::IBISVer) {
        // A comment character may be set first.
        const bool later = file.Part(EIPKeyword::IBISVer) != nullptr && !file.Children().empty() &&
                           file.Children().front()->Keyword() == EIPKeyword::CommentChar;
        if (!later) {
            return Wrong(fmt::format("File: {} is not an IBIS file.", fileName));
        }
    }
    std::vector<std::string> names;
    for (const CIPDataComponent* component : file.Components()) {
        names.emplace_back(component->Value());
    }
    if (names.empty()) {
        return Wrong("There is no component in the file.");
    }
    return names;
}

CResult<SPinList> ReadPinList(const CIPDataFile& file, std::string_view fileName,
                              std::string_view component)
{
    if (auto names = ComponentNames(file, fileName); !names) {
        return names.TakeError();
    }
    const CIPDataComponent* found = file.FindComponent(component);
    if (found == nullptr) {
        return Fail(EErr::NotFound, fmt::format("Can not find component '{}'.", component));
    }
    SPinList list;
    list.component = component;
    list.manufacturer = found->Manufacturer();
    list.packageModel =
        found->PackageModel() != nullptr ? found->PackageModel()->Model() : std::string_view();
    if (found->Pins() == nullptr || found->Pins()->Pins().empty()) {
        return Wrong(fmt::format("Component: {} has no [Pin] section.", component));
    }
    const TPlaces places = AddPins(*found->Pins(), list);
    AddMapping(*found, places, list);
    AddDiffPins(*found, places, list);
    AddSeries(*found, places, list);
    AddModels(file, fileName, list);
    return list;
}

} // namespace zov::ibis
