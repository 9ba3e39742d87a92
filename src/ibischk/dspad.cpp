// SPDX-License-Identifier: Apache-2.0
#include "ibischk/dspad.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

namespace zov::ibischk {

namespace {

constexpr std::string_view kHeadings[] = {"signal_name", "bus_label"};

void OpenPads(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 1, 6307);
}

void TakePadRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    const SWords words(line.text);
    const bool rightCount = words.count == 2 || words.count == 3;
    if (!rightCount) {
        check.report.ErrorAt(line.Place(), 6305, words.count);
    }
    CountRow(check, line, kHeadings, rightCount ? words.count : 2, 6313);
    if (words.count < 2) {
        return;
    }
    const SSupplyPad row{words[0], words[1], words.count >= 3 ? words[2] : "", line.Place()};
    if (component.names->padNames.Add(row.pad, component.supplyPads.size())) {
        check.report.ErrorAt(row.place, 6308, row.pad);
        return;
    }
    component.supplyPads.push_back(row);
}

void ClosePads(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.WarningAt(check.state.keywordPlace, 6306);
    }
}

/// A label that is met here for the first time belongs to the pad's signal name from then on.
void CheckPad(SCheck& check, const SComponent& component, CRails& rails, const SSupplyPad& row)
{
    if (!rails.IsRailSignal(row.signal)) {
        check.report.ErrorAt(row.place, 6309, row.signal);
    }
    if (const SPin* pin = component.FindPin(row.pad); pin != nullptr && HasBuffer(*pin)) {
        check.report.WarningAt(row.place, 6312, row.pad);
    }
    if (row.label.empty() || IsNc(row.label)) {
        return;
    }
    const std::string_view owner = rails.SignalOf(row.label);
    if (owner.empty()) {
        rails.Give(row.label, row.signal);
    } else if (owner != row.signal) {
        check.report.ErrorAt(row.place, 6311, row.label, row.pad, owner, row.signal);
    }
}

void CloseComponentPads(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    if (component.supplyPads.empty() || component.pins.empty()) {
        return;
    }
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::DieSupplyPads), {}});
    CRails rails(component);
    for (const SBusLabel& row : component.busLabels) {
        rails.Give(row.label, row.signal);
    }
    for (const SSupplyPad& row : component.supplyPads) {
        CheckPad(check, component, rails, row);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::DieSupplyPads, &OpenPads, &TakePadRow, &ClosePads},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentPads}};

} // namespace

const SFamily kDspadFamily = {"dspad", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
