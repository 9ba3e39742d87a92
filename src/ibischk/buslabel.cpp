// SPDX-License-Identifier: Apache-2.0
#include "ibischk/buslabel.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

namespace zov::ibischk {

CRails::CRails(const SComponent& component)
{
    for (const SPin& pin : component.pins) {
        if (pin.IsRail()) {
            m_signals.insert(pin.signal);
        }
    }
    for (const SPinMapping& row : component.mapping) {
        const SPin* pin = component.FindPin(row.pin);
        if (pin == nullptr || !pin->IsRail()) {
            continue;
        }
        for (const std::string_view label : {row.pulldown, row.pullup}) {
            if (!IsNc(label)) {
                m_mapped.try_emplace(label, pin->signal);
            }
        }
    }
}

bool CRails::IsRailSignal(std::string_view signal) const
{
    return m_signals.contains(signal);
}

std::string_view CRails::MappedSignal(std::string_view label) const
{
    const auto found = m_mapped.find(label);
    return found == m_mapped.end() ? std::string_view() : found->second;
}

std::string_view CRails::SignalOf(std::string_view label) const
{
    const std::string_view mapped = MappedSignal(label);
    if (!mapped.empty()) {
        return mapped;
    }
    const auto given = m_given.find(label);
    if (given != m_given.end()) {
        return given->second;
    }
    return IsRailSignal(label) ? label : std::string_view();
}

bool CRails::IsLabel(std::string_view label) const
{
    return !SignalOf(label).empty();
}

void CRails::Give(std::string_view label, std::string_view signal)
{
    m_given.try_emplace(label, signal);
}

namespace {

constexpr std::string_view kHeadings[] = {"signal_name"};

void OpenLabels(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 1, 6257);
}

void TakeLabelRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    ++component.names->table.rows;
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6255, words.count);
        if (words.count < 2) {
            return;
        }
    }
    const SBusLabel row{words[0], words[1], line.Place()};
    if (IsReservedWord(row.label, check.state.version)) {
        check.report.WarningAt(row.place, 6262, row.label);
    }
    if (row.label.size() > LimitsOf(check.state.version).busLabel) {
        check.report.Caution(row.place, 6263, row.label, LimitsOf(check.state.version).busLabel);
    }
    if (component.names->busLabelNames.Add(row.label, component.busLabels.size())) {
        check.report.ErrorAt(row.place, 6259, row.label);
        return;
    }
    component.busLabels.push_back(row);
}

void CloseLabels(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.WarningAt(check.state.keywordPlace, 6256);
    }
}

void CheckLabel(SCheck& check, const CRails& rails, const SBusLabel& row)
{
    if (!rails.IsRailSignal(row.signal)) {
        check.report.ErrorAt(row.place, 6258, row.signal);
    }
    const std::string_view mapped = rails.MappedSignal(row.label);
    if (!mapped.empty() && mapped != row.signal) {
        check.report.ErrorAt(row.place, 6261, row.label, row.signal, mapped);
    } else if (row.label != row.signal && rails.IsRailSignal(row.label)) {
        check.report.ErrorAt(row.place, 6260, row.label, row.signal);
    }
}

void CloseComponentLabels(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    if (component.busLabels.empty() || component.pins.empty()) {
        return;
    }
    const CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::BusLabel), {}});
    const CRails rails(component);
    for (const SBusLabel& row : component.busLabels) {
        CheckLabel(check, rails, row);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::BusLabel, &OpenLabels, &TakeLabelRow, &CloseLabels},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentLabels}};

} // namespace

const SFamily kBuslabelFamily = {"buslabel", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
