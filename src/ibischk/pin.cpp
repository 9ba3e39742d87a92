// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pin.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/pinmap.h"
#include "ibischk/table.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace zov::ibischk {

namespace {

constexpr std::string_view kHeadings[] = {"signal_name", "model_name", "R_pin", "L_pin", "C_pin"};
constexpr std::size_t kShortRow = 3;
constexpr std::size_t kLongRow = 6;

void OpenPins(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 2, 0);
}

EPinKind KindOf(std::string_view model, EVersion version)
{
    if (EqualsNoCase(model, "POWER")) {
        return EPinKind::Power;
    }
    if (EqualsNoCase(model, "GND")) {
        return EPinKind::Gnd;
    }
    if (IsNc(model)) {
        return EPinKind::NoConnect;
    }
    return version >= EVersion::V42 && EqualsNoCase(model, "CIRCUITCALL") ? EPinKind::CircuitCall
                                                                          : EPinKind::Signal;
}

double TakePinValue(SCheck& check, const SLine& line, const SPin& pin, std::string_view what,
                    std::string_view token)
{
    const SPlace place = line.Place(token);
    const double value = TakeNumberOrNa(check, what, token, place).value_or(kAbsent);
    if (value < 0.0) {
        check.report.ErrorAt(place, 605, what, pin.name, token);
    }
    if (token.size() > kColumnLimit) {
        check.report.WarningAt(place, 606, what, token, kColumnLimit);
    }
    return value;
}

void TakePinRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    const SWords words(line.text);
    CountRow(check, line, kHeadings, words.count >= kLongRow ? kLongRow : kShortRow, 602);
    if (words.count != kShortRow && words.count != kLongRow) {
        check.report.ErrorAt(line.Place(), 601, words.count);
        if (words.count < kShortRow) {
            return;
        }
    }
    const SLimits& limits = LimitsOf(check.state.version);
    SPin pin;
    pin.name = words[0];
    pin.signal = words[1];
    pin.model = words[2];
    pin.place = line.Place(pin.model);
    pin.kind = KindOf(pin.model, check.state.version);
    LimitText(check, "Pin name", pin.name, limits.pin, line.Place());
    LimitText(check, "Signal name", pin.signal, limits.signal, line.Place(pin.signal));
    LimitName(check, "Model name", pin.model, limits.model, pin.place);
    if (words.count >= kLongRow) {
        pin.r = TakePinValue(check, line, pin, kHeadings[2], words[3]);
        pin.l = TakePinValue(check, line, pin, kHeadings[3], words[4]);
        pin.c = TakePinValue(check, line, pin, kHeadings[4], words[5]);
    }
    if (const auto before = component.pinNames.Add(pin.name, component.pins.size())) {
        check.report.ErrorAt(line.Place(), 603, pin.name, component.pins[*before].place.line);
        return;
    }
    component.pins.push_back(pin);
}

void ClosePins(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.ErrorAt(check.state.keywordPlace, 617);
    }
}

// --- a component's pins together ---------------------------------------------------------------

void CheckCase(SCheck& check, const SComponent& component)
{
    for (std::size_t i = 0; i < component.pins.size(); ++i) {
        const SPin& pin = component.pins[i];
        const auto first = component.pinNames.FindNoCase(pin.name);
        if (first && *first != i) {
            check.report.WarningAt(pin.place, 604, component.pins[*first].name, pin.name);
        }
    }
}

/// The pin with the largest of one quantity, and how many are too large.
struct SWorst
{
    std::string_view what;
    double SPin::*value;
    double most;
    std::string_view unit;
    STally tally = {};
    double worst = 0.0;

    void Add(const SPin& pin)
    {
        const double found = pin.*value;
        if (!(found > most)) {
            return;
        }
        ++tally.count;
        if (found > worst) {
            worst = found;
            tally.first = pin.name;
            tally.place = pin.place;
        }
    }
};

void CheckSizes(SCheck& check, const SComponent& component)
{
    SWorst worst[] = {{"R_pin", &SPin::r, 10.0, "ohm"},
                      {"L_pin", &SPin::l, 100e-9, "H"},
                      {"C_pin", &SPin::c, 100e-12, "F"}};
    for (const SPin& pin : component.pins) {
        for (SWorst& quantity : worst) {
            quantity.Add(pin);
        }
    }
    for (const SWorst& quantity : worst) {
        if (quantity.tally) {
            check.report.Caution(quantity.tally.place, 607, component.name, quantity.what,
                                 quantity.tally.first, quantity.worst, quantity.unit, quantity.most,
                                 quantity.tally.count);
        }
    }
}

/// L and C of a pin as a piece of line: its impedance and delay tell a slip of a power of ten.
void CheckLines(SCheck& check, const SComponent& component)
{
    constexpr double kLeastOhm = 1.0;
    constexpr double kMostOhm = 1000.0;
    constexpr double kMostDelayS = 1e-9;
    STally tally;
    double ohm = 0.0;
    double delayS = 0.0;
    for (const SPin& pin : component.pins) {
        if (!(pin.l > 0.0) || !(pin.c > 0.0)) {
            continue;
        }
        const double z = std::sqrt(pin.l / pin.c);
        const double t = std::sqrt(pin.l * pin.c);
        if (z < kLeastOhm || z > kMostOhm || t > kMostDelayS) {
            ohm = tally ? ohm : z;
            delayS = tally ? delayS : t;
            tally.Add(pin.name, pin.place);
        }
    }
    if (tally) {
        check.report.Caution(tally.place, 608, component.name, tally.first, ohm, delayS,
                             tally.count);
    }
}

/// First pin of each kind that carries a signal name.
struct SSignalUse
{
    const SPin* power = nullptr;
    const SPin* gnd = nullptr;
    const SPin* buffer = nullptr;
    bool railsTold = false;
    bool bufferTold = false;
};

const SPin*& SlotOf(SSignalUse& use, EPinKind kind)
{
    return kind == EPinKind::Power ? use.power : kind == EPinKind::Gnd ? use.gnd : use.buffer;
}

void CheckSignals(SCheck& check, const SComponent& component)
{
    std::unordered_map<std::string_view, SSignalUse> uses;
    uses.reserve(component.pins.size());
    const EReport severity = check.state.AtLeast(EVersion::V70) ? EReport::Error : EReport::Warning;
    for (const SPin& pin : component.pins) {
        // "NC" as a signal name says that there is no signal.
        if ((!pin.IsRail() && !HasBuffer(pin)) || IsNc(pin.signal)) {
            continue;
        }
        SSignalUse& use = uses[pin.signal];
        const SPin*& slot = SlotOf(use, pin.kind);
        slot = slot == nullptr ? &pin : slot;
        if (use.power != nullptr && use.gnd != nullptr && !use.railsTold) {
            use.railsTold = true;
            check.report.At(severity, pin.place, 614, pin.signal, use.power->name, use.gnd->name);
        }
        const SPin* rail = use.power != nullptr ? use.power : use.gnd;
        if (rail != nullptr && use.buffer != nullptr && !use.bufferTold) {
            use.bufferTold = true;
            check.report.At(severity, pin.place, 615, pin.signal, rail->name, use.buffer->name);
        }
    }
}

/// CIRCUITCALL pins that a [Circuit Call] names.
void CheckCalls(SCheck& check, const SComponent& component)
{
    CNameIndex called;
    for (const SCircuitCall& call : component.calls) {
        for (const std::string_view pin : {call.signalPin, call.diffPins[0], call.diffPins[1],
                                           call.seriesPins[0], call.seriesPins[1]}) {
            called.Add(pin, 0);
        }
        for (const SPortMap& port : call.ports) {
            called.Add(port.node, 0);
        }
    }
    for (const SPin& pin : component.pins) {
        if (pin.kind == EPinKind::CircuitCall && !called.Find(pin.name)) {
            check.report.WarningAt(pin.place, 612, pin.name);
        }
    }
}

void CloseComponentPins(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    const CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::Pin), {}});
    CheckCase(check, component);
    CheckSizes(check, component);
    CheckLines(check, component);
    CheckSignals(check, component);
    CheckCalls(check, component);
    if (!component.pins.empty() && std::ranges::none_of(component.pins, &SPin::IsRail)) {
        check.report.NoteAt(component.place, 616, component.name);
    }
    ClosePinMapping(check, component);
}

// --- pins against the models of the file -------------------------------------------------------

void ReportUndefined(SCheck& check, const STally& tally, std::string_view model)
{
    const bool caseDiffers =
        check.data.modelNames.FindNoCase(model) || check.data.selectorNames.FindNoCase(model);
    check.report.ErrorAt(tally.place, caseDiffers ? 610 : 609, tally.first, model, tally.count);
}

/// Each model name is reported once, however many pins have it.
void FinishModels(SCheck& check, const SComponent& component, CReach& reach)
{
    std::vector<std::pair<std::string_view, STally>> undefined;
    CNameIndex places;
    CNameIndex seriesTold;
    for (const SPin& pin : component.pins) {
        if (!HasBuffer(pin)) {
            continue;
        }
        MarkUsed(check.data, pin.model);
        const SReach& found = reach.Of(pin.model);
        if (!found.found) {
            const auto before = places.Add(pin.model, undefined.size());
            if (!before) {
                undefined.push_back({pin.model, {}});
            }
            undefined[before.value_or(undefined.size() - 1)].second.Add(pin.name, pin.place);
        } else if (!found.series.empty() && !seriesTold.Add(pin.model, 0)) {
            check.report.At(check.state.AtLeast(EVersion::V42) ? EReport::Error : EReport::Warning,
                            pin.place, 611, pin.name, pin.model);
        }
        if (found.anyDiff && !component.diffPinNames.Find(pin.name)) {
            check.report.ErrorAt(pin.place, 613, pin.name, pin.model);
        }
    }
    for (const auto& [model, tally] : undefined) {
        ReportUndefined(check, tally, model);
    }
}

void FinishPins(SCheck& check)
{
    CReach reach(check.data);
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::Pin), {}});
        FinishModels(check, component, reach);
        FinishPinMapping(check, component, reach);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::Pin, &OpenPins, &TakePinRow, &ClosePins},
    {EKeyword::PinMapping, &OpenPinMapping, &TakePinMappingRow, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentPins}};

} // namespace

std::string_view PinKindText(EPinKind kind)
{
    switch (kind) {
    case EPinKind::Power:
        return "POWER";
    case EPinKind::Gnd:
        return "GND";
    case EPinKind::NoConnect:
        return "NC";
    case EPinKind::CircuitCall:
        return "CIRCUITCALL";
    default:
        return "a signal";
    }
}

const SFamily kPinFamily = {"pin", kHandlers, kSections, &FinishPins};

} // namespace zov::ibischk
