// SPDX-License-Identifier: Apache-2.0
// [Model Spec].
#include "ibischk/mdlparts.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ESpec : std::size_t
{
    kVinh,
    kVinl,
    kVinhPlus,
    kVinhMinus,
    kVinlPlus,
    kVinlMinus,
    kSHigh,
    kSLow,
    kDHigh,
    kDLow,
    kDTime,
    kAreaH,
    kAreaL,
    kAmplH,
    kAmplL,
    kPulseHigh,
    kPulseLow,
    kPulseTime,
    kVmeas,
    kVref,
    kCref,
    kRref,
    kCrefRising,
    kCrefFalling,
    kRrefRising,
    kRrefFalling,
    kVrefRising,
    kVrefFalling,
    kVmeasRising,
    kVmeasFalling,
    kRrefDiff,
    kCrefDiff
};

constexpr SSubParameter kRows[] = {
    {"Vinh", V21, Without},
    {"Vinl", V21, Without},
    {"Vinh+", V21, Without},
    {"Vinh-", V21, Without},
    {"Vinl+", V21, Without},
    {"Vinl-", V21, Without},
    {"S_overshoot_high", V21, Without},
    {"S_overshoot_low", V21, Without},
    {"D_overshoot_high", V21, Without},
    {"D_overshoot_low", V21, Without},
    {"D_overshoot_time", V21, Without},
    {"D_overshoot_area_h", V42, Without},
    {"D_overshoot_area_l", V42, Without},
    {"D_overshoot_ampl_h", V42, Without},
    {"D_overshoot_ampl_l", V42, Without},
    {"Pulse_high", V21, Without},
    {"Pulse_low", V21, Without},
    {"Pulse_time", V21, Without},
    {"Vmeas", V21, Without},
    {"Vref", V42, Without},
    {"Cref", V42, Without},
    {"Rref", V42, Without},
    {"Cref_rising", V42, Without},
    {"Cref_falling", V42, Without},
    {"Rref_rising", V42, Without},
    {"Rref_falling", V42, Without},
    {"Vref_rising", V42, Without},
    {"Vref_falling", V42, Without},
    {"Vmeas_rising", V42, Without},
    {"Vmeas_falling", V42, Without},
    {"Rref_diff", V42, Without},
    {"Cref_diff", V42, Without},
};
static_assert(std::size(kRows) <= std::extent_v<decltype(SModel::spec)>);

bool Seen(const SModel& model, std::size_t row)
{
    return (model.specSeen >> row & 1U) != 0;
}

bool IsTime(std::size_t row)
{
    return row == kDTime || row == kPulseTime;
}

bool IsResistance(std::size_t row)
{
    return row == kRref || row == kRrefRising || row == kRrefFalling || row == kRrefDiff;
}

bool IsCapacitance(std::size_t row)
{
    return row == kCref || row == kCrefRising || row == kCrefFalling || row == kCrefDiff;
}

void CheckValues(SCheck& check, std::size_t row, const STriple& t, SPlace place)
{
    for (const double value : {t.typ, t.min, t.max}) {
        const bool positive = IsTime(row) || IsResistance(row);
        if ((positive && value <= 0) || (IsCapacitance(row) && value < 0)) {
            check.report.ErrorAt(place, 1808, kRows[row].name,
                                 positive ? "greater than 0" : "at least 0", value);
            return;
        }
    }
}

void CheckHysteresis(SCheck& check, const SModel& model)
{
    std::string missing;
    std::size_t found = 0;
    for (const std::size_t row : {kVinhPlus, kVinhMinus, kVinlPlus, kVinlMinus}) {
        if (Seen(model, row)) {
            ++found;
        } else {
            missing.append(missing.empty() ? "" : ", ").append(kRows[row].name);
        }
    }
    if (found != 0 && !missing.empty()) {
        check.report.ErrorAt(model.specPlace, 1802, missing);
    }
}

struct SNeed
{
    ESpec row;
    ESpec other;
    EReport severity;
};
constexpr SNeed kNeeds[] = {
    {kDHigh, kDTime, EReport::Error},
    {kDLow, kDTime, EReport::Error},
    {kPulseHigh, kPulseTime, EReport::Error},
    {kPulseLow, kPulseTime, EReport::Error},
    {kAreaH, kAmplH, EReport::Warning},
    {kAmplH, kAreaH, EReport::Warning},
    {kAreaL, kAmplL, EReport::Warning},
    {kAmplL, kAreaL, EReport::Warning},
    {kCrefRising, kCrefFalling, EReport::Warning},
    {kCrefFalling, kCrefRising, EReport::Warning},
    {kRrefRising, kRrefFalling, EReport::Warning},
    {kRrefFalling, kRrefRising, EReport::Warning},
    {kVrefRising, kVrefFalling, EReport::Warning},
    {kVrefFalling, kVrefRising, EReport::Warning},
    {kVmeasRising, kVmeasFalling, EReport::Warning},
    {kVmeasFalling, kVmeasRising, EReport::Warning},
};

void CheckNeeds(SCheck& check, const SModel& model)
{
    for (const SNeed& need : kNeeds) {
        if (Seen(model, need.row) && !Seen(model, need.other)) {
            check.report.At(need.severity, model.specPlace, 1803, kRows[need.row].name,
                            kRows[need.other].name);
        }
    }
    if (Seen(model, kDTime) && !Seen(model, kDHigh) && !Seen(model, kDLow)) {
        check.report.ErrorAt(model.specPlace, 1803, "D_overshoot_time",
                             "D_overshoot_high or D_overshoot_low");
    }
    if (Seen(model, kPulseTime) && !Seen(model, kPulseHigh) && !Seen(model, kPulseLow)) {
        check.report.ErrorAt(model.specPlace, 1803, "Pulse_time", "Pulse_high or Pulse_low");
    }
}

void CheckLevels(SCheck& check, const SModel& model)
{
    constexpr std::pair<ESpec, ESpec> kOrders[] = {{kVinl, kVinh},
                                                   {kVinhMinus, kVinhPlus},
                                                   {kVinlMinus, kVinlPlus},
                                                   {kVinlPlus, kVinhPlus},
                                                   {kVinlMinus, kVinhMinus}};
    for (const auto& [low, high] : kOrders) {
        for (std::size_t c = 0; c < 3; ++c) {
            const double below = model.spec[low].Column(c);
            const double above = model.spec[high].Column(c);
            if (below > above || (low == kVinl && below == above)) {
                check.report.WarningAt(model.specPlace, 1804, kRows[low].name, below,
                                       kRows[high].name, above, CornerName(c));
                break;
            }
        }
    }
}

void CheckOvershoots(SCheck& check, const SModel& model)
{
    const STriple* const s = model.spec;
    const SRails rails = RailsOf(model, 0);
    if (rails.Complete()) {
        for (const auto row : {kSHigh, kSLow}) {
            const double value = s[row].typ;
            if (row == kSHigh ? value < rails.High() : value > rails.Low()) {
                check.report.WarningAt(model.specPlace, 1806, kRows[row].name, value, rails.Low(),
                                       rails.High());
            }
        }
    }
    if (s[kDHigh].typ < s[kSHigh].typ) {
        check.report.WarningAt(model.specPlace, 1807, kRows[kDHigh].name, s[kDHigh].typ,
                               kRows[kSHigh].name, s[kSHigh].typ);
    }
    if (s[kDLow].typ > s[kSLow].typ) {
        check.report.WarningAt(model.specPlace, 1807, kRows[kDLow].name, s[kDLow].typ,
                               kRows[kSLow].name, s[kSLow].typ);
    }
}

void CheckOverrides(SCheck& check, const SModel& model)
{
    const std::pair<ESpec, double> kPairs[] = {{kVinh, model.vinh},   {kVinl, model.vinl},
                                               {kVmeas, model.vmeas}, {kVref, model.vref},
                                               {kRref, model.rref},   {kCref, model.cref}};
    for (const auto& [row, own] : kPairs) {
        const double typ = model.spec[row].typ;
        if (std::abs(typ - own) > 0.01 * std::max(std::abs(typ), std::abs(own))) {
            check.report.NoteAt(model.specPlace, 1809, kRows[row].name, typ, own);
        }
    }
}

void CheckSpecType(SCheck& check, const SModel& model, const SModelType& type)
{
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        const bool ofDriver = row >= kVmeas;
        if (Seen(model, row) && !(ofDriver ? type.Drives() : type.receives)) {
            // Limits of overshoot hold for the pad of any buffer in practice.
            if (ofDriver || row <= kVinlMinus) {
                check.report.WarningAt(model.specPlace, 1805, kRows[row].name, type.name);
            }
        }
    }
}

} // namespace

void OpenSpec(SCheck& check, const SLine& /*line*/)
{
    check.data.model.specPlace = check.state.keywordPlace;
}

void TakeSpec(SCheck& check, const SLine& line)
{
    SModel& model = check.data.model;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, model.specSeen);
    if (!row) {
        return;
    }
    const auto triple = TakeNamedTriple(check, line, tokens, kRows[*row].name, 1801);
    if (triple) {
        model.spec[*row] = *triple;
        CheckValues(check, *row, *triple, line.Place());
    }
}

void CheckSpec(SCheck& check)
{
    if (!check.state.Has(EKeyword::ModelSpec)) {
        return;
    }
    const SModel& model = check.data.model;
    if (model.specSeen == 0) {
        check.report.WarningAt(model.specPlace, 1810);
        return;
    }
    CheckHysteresis(check, model);
    CheckNeeds(check, model);
    CheckLevels(check, model);
    CheckOvershoots(check, model);
    CheckOverrides(check, model);
    const SModelType& type = OpenModel(check).Type();
    if (type.type != EModelType::Unknown) {
        CheckSpecType(check, model, type);
    }
}

} // namespace zov::ibischk
