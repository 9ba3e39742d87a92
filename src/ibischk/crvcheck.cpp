// SPDX-License-Identifier: Apache-2.0
// Which tables a model type has.
#include "ibischk/crvshape.h"

namespace zov::ibischk {

namespace {

/// A table of the side that an open type does not drive.
void CheckOpenSide(SCheck& check, const SModelInfo& info, EKeyword keyword)
{
    const SCurve* curve = check.data.model.FindCurve(keyword);
    if (curve != nullptr) {
        check.report.At(AllZero(*curve) ? EReport::Note : EReport::Error, curve->place, 1422,
                        info.name, info.Type().name, KeywordText(keyword));
    }
}

void CheckDriverTables(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const bool needsDown = type.drives != EDrives::UpOnly;
    const bool needsUp = type.drives != EDrives::DownOnly;
    if (!needsDown) {
        CheckOpenSide(check, info, EKeyword::Pulldown);
    } else if (!needsUp) {
        CheckOpenSide(check, info, EKeyword::Pullup);
    }
    if (info.hasExternalModel) {
        return;
    }
    const bool lacksDown = needsDown && !info.hasPulldown;
    const bool lacksUp = needsUp && !info.hasPullup;
    if ((lacksDown || !needsDown) && (lacksUp || !needsUp)) {
        check.report.ErrorAt(info.place, 1420, info.name, type.name,
                             needsDown && needsUp ? "[Pulldown] and [Pullup]"
                             : needsDown          ? "[Pulldown]"
                                                  : "[Pullup]");
    } else if (lacksDown || lacksUp) {
        check.report.WarningAt(info.place, 1421, info.name, type.name,
                               lacksDown ? "Pulldown" : "Pullup");
    }
}

void CheckForeignTables(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    for (const EKeyword code : {EKeyword::Pulldown, EKeyword::Pullup, EKeyword::RisingWaveform,
                                EKeyword::FallingWaveform}) {
        if (check.state.Has(code)) {
            check.report.ErrorAt(info.place, 1423, KeywordText(code), info.name, type.name);
        }
    }
    const bool hasPath = info.hasGndClamp || info.hasPowerClamp || info.hasExternalModel ||
                         check.data.model.hasTerminator || check.state.Has(EKeyword::AddSubmodel);
    if (!hasPath && !type.IsDiff()) {
        check.report.WarningAt(info.place, 1424, info.name, type.name);
    }
}

void CheckIsso(SCheck& check, const SModelInfo& info, const SModelType& type, EKeyword isso,
               EKeyword table, EDrives otherSide)
{
    const SCurve* curve = check.data.model.FindCurve(isso);
    if (curve == nullptr) {
        return;
    }
    const std::string_view keyword = KeywordText(isso);
    if (!type.Drives()) {
        check.report.ErrorAt(curve->place, 1451, keyword, info.name, type.name);
    } else if (type.drives == otherSide) {
        check.report.WarningAt(curve->place, 1454, keyword, info.name, type.name);
    } else if (!check.state.Has(table)) {
        check.report.WarningAt(curve->place, 1452, keyword, KeywordText(table));
    }
}

void CheckIssoPair(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    CheckIsso(check, info, type, EKeyword::ISSOPD, EKeyword::Pulldown, EDrives::UpOnly);
    CheckIsso(check, info, type, EKeyword::ISSOPU, EKeyword::Pullup, EDrives::DownOnly);
    const bool down = check.state.Has(EKeyword::ISSOPD);
    const bool up = check.state.Has(EKeyword::ISSOPU);
    if (type.drives == EDrives::Both && down != up) {
        check.report.WarningAt(info.place, 1453, info.name, down ? "ISSO PD" : "ISSO PU",
                               down ? "ISSO PU" : "ISSO PD");
    }
}

} // namespace

void CheckModelTables(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SModelType& type = info.Type();
    if (info.type == EModelType::Unknown || type.IsSeries()) {
        return;
    }
    if (!type.Drives()) {
        CheckForeignTables(check, info, type);
    } else if (!type.IsDiff()) {
        CheckDriverTables(check, info, type);
    }
    CheckIssoPair(check, info, type);
}

} // namespace zov::ibischk
