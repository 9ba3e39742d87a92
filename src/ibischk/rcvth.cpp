// SPDX-License-Identifier: Apache-2.0
#include "ibischk/rcvth.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ERow : std::size_t
{
    kVth,
    kVthMin,
    kVthMax,
    kVinhAc,
    kVinhDc,
    kVinlAc,
    kVinlDc,
    kTslewAc,
    kSensitivity,
    kVcrossLow,
    kVcrossHigh,
    kVdiffAc,
    kVdiffDc,
    kTdiffslewAc,
    kReferenceSupply
};
constexpr SSubParameter kRows[] = {
    {"Vth", V21, With},        {"Vth_min", V21, With},      {"Vth_max", V21, With},
    {"Vinh_ac", V21, With},    {"Vinh_dc", V21, With},      {"Vinl_ac", V21, With},
    {"Vinl_dc", V21, With},    {"Tslew_ac", V21, With},     {"Threshold_sensitivity", V21, With},
    {"Vcross_low", V21, With}, {"Vcross_high", V21, With},  {"Vdiff_ac", V21, With},
    {"Vdiff_dc", V21, With},   {"Tdiffslew_ac", V21, With}, {"Reference_supply", V21, Either},
};
constexpr double SReceiverThresholds::*kMembers[] = {
    &SReceiverThresholds::vth,         &SReceiverThresholds::vthMin,
    &SReceiverThresholds::vthMax,      &SReceiverThresholds::vinhAc,
    &SReceiverThresholds::vinhDc,      &SReceiverThresholds::vinlAc,
    &SReceiverThresholds::vinlDc,      &SReceiverThresholds::tslewAc,
    &SReceiverThresholds::sensitivity, &SReceiverThresholds::vcrossLow,
    &SReceiverThresholds::vcrossHigh,  &SReceiverThresholds::vdiffAc,
    &SReceiverThresholds::vdiffDc,     &SReceiverThresholds::tdiffslewAc};

constexpr std::size_t kSingleEnded[] = {kVth, kVinhAc, kVinhDc, kVinlAc, kVinlDc, kTslewAc};
constexpr std::size_t kDifferential[] = {kVcrossLow, kVcrossHigh, kVdiffAc, kVdiffDc, kTdiffslewAc};

struct SSupply
{
    std::string_view name;
    EKeyword reference;
    EKeyword otherwise; ///< gives the reference too
};
constexpr SSupply kSupplies[] = {
    {"Power_clamp_ref", EKeyword::POWERClampReference, EKeyword::VoltageRange},
    {"Gnd_clamp_ref", EKeyword::GNDClampReference, EKeyword::VoltageRange},
    {"Pullup_ref", EKeyword::PullupReference, EKeyword::VoltageRange},
    {"Pulldown_ref", EKeyword::PulldownReference, EKeyword::VoltageRange},
    {"Ext_ref", EKeyword::ExternalReference, EKeyword::ExternalReference},
};

void OpenThresholds(SCheck& check, const SLine& /*line*/)
{
    check.data.model.thresholds = {};
    check.data.model.thresholds.place = check.state.keywordPlace;
}

void TakeThreshold(SCheck& check, const SLine& line)
{
    SReceiverThresholds& t = check.data.model.thresholds;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, t.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    if (*row == kReferenceSupply) {
        t.referenceSupply = TakeWord(check, line, tokens, name);
        const auto* known = std::ranges::find_if(
            kSupplies, [&t](const SSupply& s) { return EqualsNoCase(s.name, t.referenceSupply); });
        if (!t.referenceSupply.empty() && known == std::end(kSupplies)) {
            check.report.ErrorAt(line.Place(), 2004, t.referenceSupply);
        }
        return;
    }
    const auto value = TakeSingle(check, line, tokens, name);
    if (!value) {
        return;
    }
    t.*kMembers[*row] = *value;
    const bool positive =
        *row == kTslewAc || *row == kTdiffslewAc || *row == kVdiffAc || *row == kVdiffDc;
    if (positive && *value <= 0) {
        check.report.ErrorAt(line.Place(), 2010, name, *value);
    }
}

/// @return true when any member of the set is there
bool CheckSet(SCheck& check, std::span<const std::size_t> set, std::string_view what)
{
    const SReceiverThresholds& t = check.data.model.thresholds;
    std::string missing;
    bool any = false;
    for (const std::size_t row : set) {
        if ((t.seen >> row & 1U) != 0) {
            any = true;
        } else {
            missing.append(missing.empty() ? "" : ", ").append(kRows[row].name);
        }
    }
    if (any && !missing.empty()) {
        check.report.ErrorAt(t.place, 2002, what, missing);
    }
    return any;
}

void CheckSupply(SCheck& check, const SReceiverThresholds& t)
{
    const bool sensitivity = STriple::Has(t.sensitivity);
    const bool supply = !t.referenceSupply.empty();
    if (sensitivity != supply) {
        check.report.ErrorAt(t.place, 2003,
                             sensitivity ? "Threshold_sensitivity" : "Reference_supply",
                             sensitivity ? "Reference_supply" : "Threshold_sensitivity");
    }
    for (const SSupply& row : kSupplies) {
        if (EqualsNoCase(row.name, t.referenceSupply) && !check.state.Has(row.reference) &&
            !check.state.Has(row.otherwise)) {
            check.report.ErrorAt(t.place, 2005, row.name, KeywordText(row.reference));
        }
    }
}

void CheckOrder(SCheck& check, const SReceiverThresholds& t)
{
    if (t.vinhAc < t.vinhDc || t.vinhDc < 0 || t.vinlDc > 0 || t.vinlAc > t.vinlDc) {
        check.report.WarningAt(t.place, 2006, t.vinhAc, t.vinhDc, t.vinlDc, t.vinlAc);
    }
    const SRails rails = RailsOf(check.data.model, 0);
    if (rails.Complete() && t.vth + t.vinhAc > rails.High()) {
        check.report.WarningAt(t.place, 2007, "Vinh_ac", t.vth + t.vinhAc, rails.High());
    }
    if (STriple::Has(t.vthMin) != STriple::Has(t.vthMax)) {
        check.report.WarningAt(t.place, 2008, "Vth_min and Vth_max must stand together.");
    } else if (t.vthMin > t.vth || t.vth > t.vthMax) {
        check.report.WarningAt(t.place, 2008, "Vth does not lie between Vth_min and Vth_max.");
    }
    if (t.vcrossLow >= t.vcrossHigh) {
        check.report.WarningAt(t.place, 2009, "Vcross_high", t.vcrossHigh, "Vcross_low",
                               t.vcrossLow);
    }
    if (t.vdiffAc < t.vdiffDc) {
        check.report.WarningAt(t.place, 2009, "Vdiff_ac", t.vdiffAc, "Vdiff_dc", t.vdiffDc);
    }
}

void CheckThresholds(SCheck& check)
{
    if (!check.state.Has(EKeyword::ReceiverThresholds)) {
        return;
    }
    SModelInfo& info = OpenModel(check);
    const SReceiverThresholds& t = check.data.model.thresholds;
    const CPathScope path(check.report,
                          {{}, info.name, KeywordText(EKeyword::ReceiverThresholds), {}});
    if (info.type != EModelType::Unknown && !info.Type().receives) {
        check.report.ErrorAt(t.place, 2001, info.name, info.Type().name);
    }
    const bool single = CheckSet(check, kSingleEnded, "single-ended");
    const bool differential = CheckSet(check, kDifferential, "differential");
    if (single && differential) {
        info.bothThresholds = t.place;
    } else if (!single && !differential) {
        check.report.ErrorAt(t.place, 2011);
    }
    CheckSupply(check, t);
    CheckOrder(check, t);
}

constexpr SSectionHandler kSections[] = {{EScope::Model, &CheckThresholds}};

constexpr SHandler kHandlers[] = {
    {EKeyword::ReceiverThresholds, &OpenThresholds, &TakeThreshold, nullptr},
};

} // namespace

const SFamily kRcvthFamily = {"rcvth", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
