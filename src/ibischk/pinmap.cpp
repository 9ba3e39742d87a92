// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pinmap.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <unordered_map>

namespace zov::ibischk {

namespace {

constexpr std::string_view kHeadings[] = {"pulldown_ref", "pullup_ref", "gnd_clamp_ref",
                                          "power_clamp_ref", "ext_ref"};

std::span<const std::string_view> HeadingsOf(EVersion version)
{
    const std::span<const std::string_view> all(kHeadings);
    return version >= EVersion::V42 ? all : all.first(4);
}

/// A label, which is not there in a short row and is none as NC.
bool IsLabel(std::string_view column)
{
    return !column.empty() && !IsNc(column);
}

void CheckRailRow(SCheck& check, const SPinMapping& row, const SPin& pin)
{
    const bool isGnd = pin.kind == EPinKind::Gnd;
    const std::string_view label = isGnd ? row.pulldown : row.pullup;
    const std::string_view other = isGnd ? row.pullup : row.pulldown;
    if (!IsLabel(label) || IsLabel(other)) {
        check.report.ErrorAt(row.place, 306, PinKindText(pin.kind), pin.name,
                             isGnd ? "a label" : "NC", isGnd ? "NC" : "a label");
    }
    if (IsLabel(row.gndClamp) || IsLabel(row.powerClamp) || IsLabel(row.extRef)) {
        check.report.WarningAt(row.place, 307, PinKindText(pin.kind), pin.name);
    }
}

void CheckRowOfPin(SCheck& check, const SPinMapping& row, const SPin& pin)
{
    if (pin.IsRail()) {
        CheckRailRow(check, row, pin);
    } else if (pin.kind == EPinKind::NoConnect &&
               (IsLabel(row.pulldown) || IsLabel(row.pullup) || IsLabel(row.gndClamp) ||
                IsLabel(row.powerClamp) || IsLabel(row.extRef))) {
        check.report.WarningAt(row.place, 308, pin.name);
    }
}

} // namespace

void OpenPinMapping(SCheck& check, const SLine& line)
{
    BeginTable(check, line, HeadingsOf(check.state.version), 2, 203);
    OpenComponent(check).mappingPlace = check.state.keywordPlace;
}

void TakePinMappingRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    const SWords words(line.text);
    const bool hasExtRef = check.state.AtLeast(EVersion::V42);
    const bool rightCount = words.count == 3 || words.count == 5 || (hasExtRef && words.count == 6);
    if (!rightCount) {
        check.report.ErrorAt(line.Place(), 301, words.count, hasExtRef ? "3, 5 or 6" : "3 or 5");
    }
    if (words.count < 3) {
        return;
    }
    CountRow(check, line, HeadingsOf(check.state.version), rightCount ? words.count : 3, 302);
    const SPinMapping row{words[0],
                          words[1],
                          words[2],
                          words.count >= 5 ? words[3] : "",
                          words.count >= 5 ? words[4] : "",
                          hasExtRef && words.count >= 6 ? words[5] : "",
                          line.Place()};
    for (const std::string_view label :
         {row.pulldown, row.pullup, row.gndClamp, row.powerClamp, row.extRef}) {
        if (!label.empty()) {
            LimitText(check, "Bus label", label, LimitsOf(check.state.version).busLabel,
                      line.Place(label));
        }
    }
    if (const auto before = component.names->mappingPins.Add(row.pin, component.mapping.size())) {
        check.report.ErrorAt(row.place, 304, row.pin, component.mapping[*before].place.line);
        return;
    }
    if (const SPin* pin = TakePin(check, line, row.pin, 303)) {
        CheckRowOfPin(check, row, *pin);
    }
    component.mapping.push_back(row);
}

namespace {

/// The rail pins that carry a bus label.
struct SLabelUse
{
    const SPin* power = nullptr;
    const SPin* gnd = nullptr;
    bool otherRail = false; ///< by [Bus Label], [Die Supply Pads] or a signal_name
    bool used = false;      ///< by a pin that is no rail
    bool told = false;
};
using CLabels = std::unordered_map<std::string_view, SLabelUse>;

void CheckMissingPins(SCheck& check, const SComponent& component)
{
    // From 7.0 a rail that is not listed has its signal_name as label.
    const bool railsMayMiss = check.state.AtLeast(EVersion::V70);
    STally missing;
    for (const SPin& pin : component.pins) {
        const bool mayMiss = railsMayMiss && (pin.IsRail() || pin.kind == EPinKind::NoConnect);
        if (!mayMiss && !component.names->mappingPins.Find(pin.name)) {
            missing.Add(pin.name, component.mappingPlace);
        }
    }
    if (missing) {
        check.report.ErrorAt(missing.place, 305, missing.first, missing.count);
    }
}

void AddRailLabels(SCheck& check, const SComponent& component, CLabels& labels)
{
    for (const SPinMapping& row : component.mapping) {
        const SPin* pin = component.FindPin(row.pin);
        if (pin == nullptr || !pin->IsRail()) {
            continue;
        }
        for (const std::string_view label : {row.pulldown, row.pullup}) {
            if (!IsLabel(label)) {
                continue;
            }
            SLabelUse& use = labels[label];
            const SPin*& first = pin->kind == EPinKind::Power ? use.power : use.gnd;
            first = first == nullptr ? pin : first;
            if (use.power != nullptr && use.gnd != nullptr && !use.told) {
                use.told = true;
                check.report.WarningAt(row.place, 310, label, use.power->name, use.gnd->name);
            }
        }
    }
    if (!check.state.AtLeast(EVersion::V70)) {
        return;
    }
    for (const SPin& pin : component.pins) {
        if (pin.IsRail()) {
            labels[pin.signal].otherRail = true;
        }
    }
    for (const SBusLabel& row : component.busLabels) {
        labels[row.label].otherRail = true;
    }
    for (const SSupplyPad& row : component.supplyPads) {
        labels[row.label.empty() ? row.signal : row.label].otherRail = true;
    }
}

/// Each label without rail is told once.
void CheckUsedLabels(SCheck& check, const SComponent& component, CLabels& labels)
{
    for (const SPinMapping& row : component.mapping) {
        const SPin* pin = component.FindPin(row.pin);
        if (pin == nullptr || pin->IsRail()) {
            continue;
        }
        for (const std::string_view label :
             {row.pulldown, row.pullup, row.gndClamp, row.powerClamp, row.extRef}) {
            if (!IsLabel(label)) {
                continue;
            }
            SLabelUse& use = labels[label];
            use.used = true;
            if (use.power == nullptr && use.gnd == nullptr && !use.otherRail && !use.told) {
                use.told = true;
                check.report.ErrorAt(row.place, 309, label, pin->name);
            }
        }
    }
}

/// Supplies of the core are labels that no buffer uses: worth a note only to who asks for all.
void CheckUnusedLabels(SCheck& check, const SComponent& component, CLabels& labels)
{
    for (const SPinMapping& row : component.mapping) {
        const SPin* pin = component.FindPin(row.pin);
        const std::string_view label = IsLabel(row.pulldown) ? row.pulldown : row.pullup;
        if (pin == nullptr || !pin->IsRail() || !IsLabel(label)) {
            continue;
        }
        SLabelUse& use = labels[label];
        if (!use.used && !use.told) {
            use.told = true;
            check.report.NoteAt(row.place, 315, label, pin->name);
        }
    }
}

} // namespace

void ClosePinMapping(SCheck& check, const SComponent& component)
{
    if (!check.state.Has(EKeyword::PinMapping) || component.pins.empty()) {
        return;
    }
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::PinMapping), {}});
    if (component.mapping.empty()) {
        check.report.NoteAt(component.mappingPlace, 316);
        return;
    }
    CheckMissingPins(check, component);
    CLabels labels;
    AddRailLabels(check, component, labels);
    CheckUsedLabels(check, component, labels);
    if (check.report.Verbose()) {
        CheckUnusedLabels(check, component, labels);
    }
}

namespace {

/// A column that is NC although the model connects something there, over all pins.
struct SOpenColumn
{
    int code;
    std::string_view heading;
    std::string_view what; ///< that the model has
    std::string_view model = {};
    STally tally = {};

    void Add(const SPin& pin, SPlace place)
    {
        model = tally ? model : pin.model;
        tally.Add(pin.name, place);
    }
};

struct SOpenColumns
{
    SOpenColumn pulldown{312, kHeadings[0], "low"};
    SOpenColumn pullup{312, kHeadings[1], "high"};
    SOpenColumn gndClamp{311, kHeadings[2], "GND Clamp"};
    SOpenColumn powerClamp{311, kHeadings[3], "POWER Clamp"};

    void Add(const SPinMapping& row, const SPin& pin, const SReach& models)
    {
        if (IsNc(row.pulldown) && models.allDriveDown) {
            pulldown.Add(pin, row.place);
        }
        if (IsNc(row.pullup) && models.allDriveUp) {
            pullup.Add(pin, row.place);
        }
        // A short row connects the clamps where the drivers are.
        if (IsNc(row.gndClamp.empty() ? row.pulldown : row.gndClamp) && models.anyGndClamp) {
            gndClamp.Add(pin, row.place);
        }
        if (IsNc(row.powerClamp.empty() ? row.pullup : row.powerClamp) && models.anyPowerClamp) {
            powerClamp.Add(pin, row.place);
        }
    }
};

void CheckExtRef(SCheck& check, const SPinMapping& row, const SPin& pin, const SReach& models)
{
    if (!check.state.AtLeast(EVersion::V42)) {
        return;
    }
    if (models.anyExternalReference && !IsLabel(row.extRef)) {
        check.report.WarningAt(row.place, 313, pin.name, pin.model);
    } else if (!models.anyExternalReference && IsLabel(row.extRef)) {
        check.report.NoteAt(row.place, 314, pin.name, pin.model);
    }
}

} // namespace

void FinishPinMapping(SCheck& check, const SComponent& component, CReach& reach)
{
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::PinMapping), {}});
    SOpenColumns open;
    for (const SPinMapping& row : component.mapping) {
        const SPin* pin = component.FindPin(row.pin);
        if (pin == nullptr || !HasBuffer(*pin)) {
            continue;
        }
        const SReach& models = reach.Of(pin->model);
        if (models.found) {
            open.Add(row, *pin, models);
            CheckExtRef(check, row, *pin, models);
        }
    }
    for (const SOpenColumn* column :
         {&open.pulldown, &open.pullup, &open.gndClamp, &open.powerClamp}) {
        if (column->tally) {
            check.report.At(column->code == 312 ? EReport::Warning : EReport::Note,
                            column->tally.place, column->code, column->tally.first, column->heading,
                            column->model, column->what, column->tally.count);
        }
    }
}

} // namespace zov::ibischk
