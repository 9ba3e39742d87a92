// SPDX-License-Identifier: Apache-2.0
// What a model must hold by its type, told when it ends.
#include "ibischk/mdlparts.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kLevelMarginV = 1.0;
constexpr double kPartsTolerance = 0.1;

void CheckLevel(SCheck& check, const SModelInfo& info, std::string_view name, double value)
{
    const SRails rails = RailsOf(check.data.model, 0);
    if (rails.Complete() &&
        (value < rails.Low() - kLevelMarginV || value > rails.High() + kLevelMarginV)) {
        check.report.Caution(info.place, 111, info.name, name, value, rails.Low(), rails.High());
    }
}

void CheckThresholds(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const SModel& model = check.data.model;
    if (!type.receives) {
        if (STriple::Has(model.vinl) || STriple::Has(model.vinh)) {
            check.report.NoteAt(info.place, 110, info.name, "Vinl or Vinh", type.name);
        }
        return;
    }
    if (model.vinl >= model.vinh) {
        check.report.WarningAt(info.place, 109, info.name, model.vinl, model.vinh);
    }
    CheckLevel(check, info, "Vinl", model.vinl);
    CheckLevel(check, info, "Vinh", model.vinh);
}

void CheckCapacitances(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const STriple* const c = check.data.model.cComp;
    // Makers of memories give the parts alone, and tools take their sum.
    constexpr std::uint64_t kCCompBits = std::uint64_t{0x1F} << 5U;
    if ((check.data.model.seen & kCCompBits) == 0 && !type.IsSeries()) {
        check.report.ErrorAt(info.place, 112, info.name);
    }
    double sum = 0.0;
    bool any = false;
    for (std::size_t i = 1; i < 5; ++i) {
        any = any || c[i].HasTyp();
        sum += c[i].HasTyp() ? c[i].typ : 0.0;
    }
    if (!any) {
        return;
    }
    if (type.IsSeries()) {
        check.report.WarningAt(info.place, 116, info.name, type.name);
    } else if (std::abs(sum - c[0].typ) > kPartsTolerance * std::max(sum, c[0].typ)) {
        check.report.NoteAt(info.place, 115, info.name, sum, c[0].typ);
    }
}

bool SwitchesByLoad(const SModelType& type)
{
    return type.drives == EDrives::DownOnly || type.drives == EDrives::UpOnly || type.IsEcl();
}

void CheckLoad(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const SModel& model = check.data.model;
    const bool hasRref = STriple::Has(model.rref);
    const bool hasVref = STriple::Has(model.vref);
    if (!STriple::Has(model.vmeas) && !type.IsDiff()) {
        check.report.WarningAt(info.place, 117, info.name);
    }
    CheckLevel(check, info, "Vmeas", model.vmeas);
    if (hasVref && !hasRref) {
        check.report.WarningAt(info.place, 119, info.name, "Vref", "Rref");
    } else if (hasRref && !hasVref) {
        check.report.WarningAt(info.place, 119, info.name, "Rref", "Vref (0 V is taken)");
    } else if (!hasRref && SwitchesByLoad(type)) {
        check.report.WarningAt(info.place, 120, info.name, type.name);
    } else if (!hasRref && !STriple::Has(model.cref) && !type.IsDiff()) {
        check.report.NoteAt(info.place, 118, info.name);
    }
    const bool hasDiff = STriple::Has(model.rrefDiff) || STriple::Has(model.crefDiff);
    if (hasDiff && !type.IsDiff() && !InDiffPair(check, info.name)) {
        check.report.NoteAt(info.place, 123, info.name, "Rref_diff or Cref_diff");
    }
}

void CheckUselessLoad(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const SModel& model = check.data.model;
    const std::pair<std::string_view, double> kValues[] = {
        {"Vmeas", model.vmeas}, {"Cref", model.cref},          {"Rref", model.rref},
        {"Vref", model.vref},   {"Rref_diff", model.rrefDiff}, {"Cref_diff", model.crefDiff}};
    std::string found;
    for (const auto& [name, value] : kValues) {
        if (STriple::Has(value)) {
            found.append(found.empty() ? "" : ", ").append(name);
        }
    }
    if (!found.empty()) {
        check.report.NoteAt(info.place, 121, info.name, found, type.name);
    }
}

} // namespace

void CheckModelRules(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SModelType& type = info.Type();
    CheckCapacitances(check, info, type);
    constexpr std::uint64_t kTypeBit = 1;
    if ((check.data.model.seen & kTypeBit) == 0) {
        check.report.ErrorAt(info.place, 102, info.name);
    }
    if (info.type == EModelType::Unknown) {
        return;
    }
    if (check.data.model.enable && !type.canDisable) {
        check.report.NoteAt(info.place, 107, info.name, type.name);
    }
    CheckThresholds(check, info, type);
    if (type.Drives()) {
        CheckLoad(check, info, type);
    } else {
        CheckUselessLoad(check, info, type);
    }
    if (type.IsDiff() && !info.hasExternalModel) {
        check.report.ErrorAt(info.place, 124, info.name, type.name);
    }
}

} // namespace zov::ibischk
