// SPDX-License-Identifier: Apache-2.0
#include "ibischk/difpin.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <cmath>

namespace zov::ibischk {

namespace {

// --- [Diff Pin] --------------------------------------------------------------------------------

constexpr std::string_view kHeadings[] = {"inv_pin", "vdiff", "tdelay_typ", "tdelay_min",
                                          "tdelay_max"};
constexpr double kMostVdiff = 3.0; ///< volt

void OpenDiffPins(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 3, 203);
}

/// Does the pin exist, and can it be one of a pair?
void CheckPairPin(SCheck& check, const SLine& line, std::string_view name)
{
    const SPin* pin = TakePin(check, line, name, 803);
    if (pin != nullptr && (pin->IsRail() || pin->kind == EPinKind::NoConnect)) {
        check.report.ErrorAt(line.Place(name), 806, name, PinKindText(pin->kind));
    }
}

double TakeColumn(SCheck& check, const SLine& line, std::size_t column, std::string_view token)
{
    const std::string_view what = kHeadings[column - 1];
    if (token.size() > kColumnLimit) {
        check.report.WarningAt(line.Place(token), 814, what, token, kColumnLimit);
    }
    return TakeNumberOrNa(check, what, token, line.Place(token)).value_or(kAbsent);
}

void TakeVdiff(SCheck& check, const SLine& line, SDiffPin& row, std::string_view token)
{
    row.vdiff = TakeColumn(check, line, 2, token);
    if (row.vdiff < 0.0) {
        check.report.WarningAt(line.Place(token), 807, token);
    }
    if (std::fabs(row.vdiff) > kMostVdiff) {
        check.report.Caution(line.Place(token), 809, OpenComponent(check).name, row.pin, row.vdiff);
    }
}

/// A delay may be negative; min and max are about its size.
void CheckDelays(SCheck& check, const SDiffPin& row)
{
    const double typ = std::fabs(row.delay.typ);
    const double min = std::fabs(row.delay.min);
    const double max = std::fabs(row.delay.max);
    if (min > typ || typ > max || min > max) {
        check.report.WarningAt(row.place, 810, row.pin, row.inverting);
    }
}

void AddPair(SCheck& check, const SLine& line, const SDiffPin& row)
{
    SComponent& component = OpenComponent(check);
    for (const std::string_view pin : {row.pin, row.inverting}) {
        const auto before = component.diffPinNames.Add(pin, component.diffPins.size());
        if (before && *before < component.diffPins.size()) {
            check.report.WarningAt(line.Place(pin), 805, pin,
                                   component.diffPins[*before].place.line);
        }
    }
    component.diffPins.push_back(row);
}

void TakeDiffPinRow(SCheck& check, const SLine& line)
{
    const SWords words(line.text);
    const bool rightCount = words.count == 4 || words.count == 6;
    if (!rightCount) {
        check.report.ErrorAt(line.Place(), 801, words.count);
    }
    CountRow(check, line, kHeadings, rightCount ? words.count : 4, 802);
    if (words.count < 2) {
        return;
    }
    SDiffPin row;
    row.pin = words[0];
    row.inverting = words[1];
    row.place = line.Place();
    CheckPairPin(check, line, row.pin);
    if (row.pin == row.inverting) {
        check.report.ErrorAt(line.Place(row.inverting), 804, row.pin);
    } else {
        CheckPairPin(check, line, row.inverting);
    }
    if (words.count >= 4) {
        TakeVdiff(check, line, row, words[2]);
        row.delay.typ = TakeColumn(check, line, 3, words[3]);
    }
    if (words.count >= 6) {
        row.delay.min = TakeColumn(check, line, 4, words[4]);
        row.delay.max = TakeColumn(check, line, 5, words[5]);
        CheckDelays(check, row);
    }
    AddPair(check, line, row);
}

void CloseDiffPins(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.NoteAt(check.state.keywordPlace, 815);
    }
}

/// What holds for the pairs of a component together, told once each.
struct SPairs
{
    SCheck& check;
    STally noVdiff;
    std::string_view noVdiffOther;
    STally modelsDiffer;
    const SDiffPin* differing = nullptr;

    void Add(const SDiffPin& row, const SPin& pin, const SPin& inverting, CReach& reach)
    {
        const SReach& one = reach.Of(pin.model);
        const SReach& two = reach.Of(inverting.model);
        if (!one.found || !two.found) {
            return;
        }
        const bool receives = one.anyReceives && two.anyReceives;
        // Without a number or with 0 there is no threshold to compare with. A differential type
        // has it in its model.
        if (receives && !one.anyDiff && (!STriple::Has(row.vdiff) || row.vdiff == 0.0)) {
            noVdiffOther = noVdiff ? noVdiffOther : row.inverting;
            noVdiff.Add(row.pin, row.place);
        }
        if (pin.model == inverting.model) {
            return;
        }
        if (one.anyDiff || two.anyDiff) {
            check.report.ErrorAt(row.place, 812, row.pin, row.inverting, pin.model,
                                 inverting.model);
            return;
        }
        differing = modelsDiffer ? differing : &row;
        modelsDiffer.Add(row.pin, row.place);
        if (one.anyReceives != two.anyReceives || one.anyDrives != two.anyDrives) {
            check.report.WarningAt(row.place, 813, row.pin, row.inverting,
                                   one.anyReceives != two.anyReceives ? "receives" : "drives");
        }
    }

    void Report(const SComponent& component)
    {
        if (noVdiff) {
            check.report.NoteAt(noVdiff.place, 808, noVdiff.first, noVdiffOther, noVdiff.count);
        }
        if (modelsDiffer) {
            check.report.NoteAt(modelsDiffer.place, 811, differing->pin, differing->inverting,
                                component.FindPin(differing->pin)->model,
                                component.FindPin(differing->inverting)->model, modelsDiffer.count);
        }
    }
};

void FinishPairs(SCheck& check, const SComponent& component, CReach& reach)
{
    const CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::DiffPin), {}});
    SPairs pairs{check, {}, {}, {}};
    for (const SDiffPin& row : component.diffPins) {
        const SPin* pin = component.FindPin(row.pin);
        const SPin* inverting = component.FindPin(row.inverting);
        if (pin != nullptr && inverting != nullptr && HasBuffer(*pin) && HasBuffer(*inverting)) {
            pairs.Add(row, *pin, *inverting, reach);
        }
    }
    pairs.Report(component);
}

// --- [Repeater Pin] ----------------------------------------------------------------------------

constexpr std::string_view kRepeaterHeadings[] = {"tx_non_inv_pin"};

void OpenRepeaters(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kRepeaterHeadings, 1, 6407);
    if (check.state.Has(EKeyword::Pin)) {
        RequireEarlier(check, EKeyword::DiffPin, 6407);
    }
}

void CheckRepeaterPin(SCheck& check, const SLine& line, std::string_view pin)
{
    const SComponent& component = OpenComponent(check);
    if (!check.state.Has(EKeyword::DiffPin)) {
        return;
    }
    const auto pair = component.diffPinNames.Find(pin);
    if (!pair || component.diffPins[*pair].pin != pin) {
        check.report.ErrorAt(line.Place(pin), 6408, pin);
    }
}

void TakeRepeaterRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    ++component.names->table.rows;
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6405, words.count);
        if (words.count < 2) {
            return;
        }
    }
    const SRepeaterPin row{words[0], words[1], line.Place()};
    if (row.receiver == row.transmitter) {
        check.report.ErrorAt(line.Place(row.transmitter), 6412, row.receiver);
    }
    CheckRepeaterPin(check, line, row.receiver);
    if (row.receiver != row.transmitter) {
        CheckRepeaterPin(check, line, row.transmitter);
    }
    if (component.names->repeaterReceivers.Add(row.receiver, 0)) {
        check.report.ErrorAt(line.Place(row.receiver), 6411, row.receiver, "receiving");
    }
    if (component.names->repeaterTransmitters.Add(row.transmitter, 0)) {
        check.report.ErrorAt(line.Place(row.transmitter), 6411, row.transmitter, "driving");
    }
    component.repeaterPins.push_back(row);
}

void CloseRepeaters(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.WarningAt(check.state.keywordPlace, 6415);
    }
}

void FinishRepeaterPin(SCheck& check, const SComponent& component, std::string_view name,
                       SPlace place, bool receiver, CReach& reach)
{
    const SPin* pin = component.FindPin(name);
    if (pin == nullptr || !HasBuffer(*pin)) {
        return;
    }
    const SReach& models = reach.Of(pin->model);
    if (!models.found) {
        return;
    }
    if (receiver ? !models.anyReceives : !models.anyDrives) {
        check.report.ErrorAt(place, receiver ? 6409 : 6410, name);
    }
    if (!models.anyAlgorithmic) {
        check.report.WarningAt(place, 6414, name);
    }
}

void FinishRepeaters(SCheck& check, const SComponent& component, CReach& reach)
{
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::RepeaterPin), {}});
    for (const SRepeaterPin& row : component.repeaterPins) {
        FinishRepeaterPin(check, component, row.receiver, row.place, true, reach);
        FinishRepeaterPin(check, component, row.transmitter, row.place, false, reach);
    }
}

void FinishDifpin(SCheck& check)
{
    CReach reach(check.data);
    for (const SComponent& component : check.data.components) {
        FinishPairs(check, component, reach);
        FinishRepeaters(check, component, reach);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::DiffPin, &OpenDiffPins, &TakeDiffPinRow, &CloseDiffPins},
    {EKeyword::RepeaterPin, &OpenRepeaters, &TakeRepeaterRow, &CloseRepeaters},
};

} // namespace

const SFamily kDifpinFamily = {"difpin", kHandlers, {}, &FinishDifpin};

} // namespace zov::ibischk
