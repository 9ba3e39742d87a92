// SPDX-License-Identifier: Apache-2.0
#include "ibischk/clockpins.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <set>
#include <utility>

namespace zov::ibischk {

namespace {

constexpr std::string_view kHeadings[] = {"clocked_pins", "relationship"};

void OpenClockPins(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 2, 6357);
}

void CheckClockPin(SCheck& check, const SLine& line, std::string_view name)
{
    const SPin* pin = TakePin(check, line, name, 6358);
    if (pin != nullptr && (pin->IsRail() || pin->kind == EPinKind::NoConnect)) {
        check.report.ErrorAt(line.Place(name), 6359, name, PinKindText(pin->kind));
    }
}

void TakeClockRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    ++component.names->table.rows;
    const SWords words(line.text);
    if (words.count != 3) {
        check.report.ErrorAt(line.Place(), 6355, words.count);
        if (words.count < 3) {
            return;
        }
    }
    const SClockPin row{words[0], words[1], words[2], line.Place()};
    CheckClockPin(check, line, row.clock);
    if (row.clock == row.clocked) {
        check.report.ErrorAt(line.Place(row.clocked), 6361, row.clock);
    } else {
        CheckClockPin(check, line, row.clocked);
    }
    if (!EqualsNoCase(row.relationship, "Unspecified")) {
        check.report.WarningAt(line.Place(row.relationship), 6364, row.relationship);
    }
    component.clockPins.push_back(row);
}

void CloseClockPins(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.WarningAt(check.state.keywordPlace, 6356);
    }
}

/// A differential pair is named by its first pin.
void CheckPair(SCheck& check, const SComponent& component, const SClockPin& row)
{
    for (const std::string_view name : {row.clock, row.clocked}) {
        const auto pair = component.diffPinNames.Find(name);
        if (!pair) {
            continue;
        }
        if (component.diffPins[*pair].place.line > row.place.line) {
            check.report.ErrorAt(row.place, 6357, KeywordText(EKeyword::ClockPins),
                                 KeywordText(EKeyword::DiffPin));
        }
        if (component.diffPins[*pair].pin != name) {
            check.report.WarningAt(row.place, 6360, name, component.diffPins[*pair].pin);
        }
    }
}

void CloseComponentClocks(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::ClockPins), {}});
    std::set<std::pair<std::string_view, std::string_view>> rows;
    CNameIndex clocked;
    for (const SClockPin& row : component.clockPins) {
        CheckPair(check, component, row);
        if (!rows.emplace(row.clock, row.clocked).second) {
            check.report.ErrorAt(row.place, 6362, row.clock, row.clocked);
        } else if (clocked.Add(row.clocked, 0)) {
            check.report.WarningAt(row.place, 6363, row.clocked);
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::ClockPins, &OpenClockPins, &TakeClockRow, &CloseClockPins},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentClocks}};

} // namespace

const SFamily kClockpinsFamily = {"clockpins", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
