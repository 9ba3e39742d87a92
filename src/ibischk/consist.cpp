// SPDX-License-Identifier: Apache-2.0
// The curves of a model against each other: sums, load lines, waveforms, ramp.
#include "ibischk/corner.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kEndWarning = 0.02; ///< of the swing between the load lines
constexpr double kEndError = 0.1;
constexpr double kTinyFall = 1e-3; ///< of the largest current

// --- sums --------------------------------------------------------------------------------------

void TellFall(SCheck& check, const SModelInfo& info, const SCorner& corner,
              const CPadCurrent& current, std::string_view what)
{
    if (current.Empty()) {
        return;
    }
    const SFall fall = FallsOf(corner, current);
    if (fall.count == 0) {
        return;
    }
    CDetails details;
    details.Add("corner", CornerName(corner.column))
        .Add("state", what)
        .Add("voltage", fall.voltage)
        .Add("until", fall.end)
        .Add("falls", static_cast<double>(fall.count))
        .Add("size", fall.size)
        .Add("largest-current", fall.largest);
    if (fall.largest > 0) {
        details.Add("part-of-largest", fall.size / fall.largest);
    }
    AddRows(details, current, 0.5 * (fall.voltage + fall.end));
    check.report.Path().corner = CornerName(corner.column);
    check.report.Emit(fall.size < kTinyFall * fall.largest ? EReport::Note : EReport::Warning,
                      info.place, 1505, {info.name, what, CornerName(corner.column), fall.voltage},
                      details.All());
    check.report.Path().corner = {};
}

void CheckSums(SCheck& check, const SModelInfo& info, const SCorner& corner)
{
    if (corner.drivesLow) {
        TellFall(check, info, corner, corner.low, "driven low");
    }
    if (corner.drivesHigh) {
        TellFall(check, info, corner, corner.high, "driven high");
    }
    TellFall(check, info, corner, corner.clamps, "not driven");
}

/// Without load the pad rests near the rail that it is driven to.
void CheckRest(SCheck& check, const SModelInfo& info, const SCorner& corner)
{
    constexpr double kNoLoadOhm = 1e6;
    constexpr double kNear = 0.1;
    for (const bool isHigh : {false, true}) {
        if (!(isHigh ? corner.drivesHigh : corner.drivesLow)) {
            continue;
        }
        const double rail = isHigh ? corner.rails.pullup : corner.rails.pulldown;
        const auto level = corner.Level(isHigh, kNoLoadOhm, rail);
        if (!level || std::abs(*level - rail) <= kNear * corner.span) {
            continue;
        }
        const CPadCurrent& pad = isHigh ? corner.high : corner.low;
        CDetails details;
        details.Add("corner", CornerName(corner.column))
            .Add("state", isHigh ? "driven high" : "driven low")
            .Add("voltage", *level)
            .Add("expected", rail);
        AddPart(details, std::abs(*level - rail), "part-of-supply", corner.span);
        AddRows(details, pad, *level);
        AddSum(details, corner, pad);
        check.report.Emit(
            EReport::Note, info.place, 1506,
            {info.name, isHigh ? "high" : "low", CornerName(corner.column), *level, rail},
            details.All());
    }
}

/// A driver table that was measured with its clamp in it, beside the clamp's own table.
void CheckTwice(SCheck& check, const SModelInfo& info, const SCorner& corner, EKeyword table,
                EKeyword clamp)
{
    constexpr double kLeastA = 0.01;
    constexpr double kEqual = 0.05;
    CPadCurrent driver;
    CPadCurrent alone;
    const bool down = table == EKeyword::Pulldown;
    const EReference how = down ? EReference::Below : EReference::Above;
    const SCurve* curve = check.data.model.FindCurve(table);
    driver.Add(curve, corner.column, 0.0, how);
    alone.Add(check.data.model.FindCurve(clamp), corner.column, 0.0, how);
    if (driver.Empty() || alone.Empty()) {
        return;
    }
    const double v = down ? -0.5 * corner.span : 0.5 * corner.span;
    const double a = std::abs(driver.At(v));
    const double b = std::abs(alone.At(v));
    if (a <= kLeastA || b <= kLeastA || std::abs(a - b) >= kEqual * std::max(a, b)) {
        return;
    }
    CDetails details;
    details.Add("corner", CornerName(corner.column)).Add("voltage", -0.5 * corner.span);
    AddRows(details, driver, v);
    AddRows(details, alone, v);
    details.Add("difference", std::abs(a - b));
    AddFault(details, *curve, corner.column, std::min(a, b)); // what counts twice
    AddSum(details, check, *curve, corner.column);
    check.report.Emit(EReport::Warning, info.place, 1507,
                      {info.name, KeywordText(table), KeywordText(clamp), driver.At(v), alone.At(v),
                       -0.5 * corner.span},
                      details.All());
}

// --- waveforms ---------------------------------------------------------------------------------

struct SEnd
{
    std::string_view where; ///< "begins", "ends"
    double found = 0.0;
    double expected = 0.0;
    std::size_t row = 0;
    bool isHigh = false;
};

void TellEnd(SCheck& check, const SWaveform& table, const SCorner& corner, const SEnd& end,
             double swing)
{
    const double part = std::abs(end.found - end.expected) / swing;
    const bool far = part > kEndError;
    CDetails details;
    details.Add("table", KeywordText(table.keyword))
        .Add("corner", CornerName(corner.column))
        .Add("row", static_cast<double>(end.row + 1))
        .Add("line", static_cast<double>(table.line[end.row]))
        .Add("r-fixture", table.rFixture)
        .Add("v-fixture", FixtureVoltage(table, corner.column))
        .Add("found", end.found)
        .Add("expected", end.expected)
        .Add("difference", end.found - end.expected)
        .Add("size", std::abs(end.found - end.expected))
        .Add("part-of-swing", part);
    const CPadCurrent& pad = end.isHigh ? corner.high : corner.low;
    AddRows(details, pad, end.expected);
    AddSum(details, corner, pad);
    check.report.Emit(
        far ? EReport::Error : EReport::Warning, table.place, far ? 1502 : 1501,
        {KeywordText(table.keyword), CornerName(corner.column), end.where, end.found, end.expected},
        details.All());
}

/// What the levels of both states were found from.
void AddLevels(CDetails& details, const SCorner& corner, double low, double high)
{
    details.Add("state", "driven low");
    AddRows(details, corner.low, low);
    AddSum(details, corner, corner.low);
    details.Add("state", "driven high");
    AddRows(details, corner.high, high);
    AddSum(details, corner, corner.high);
}

void TellNoSwing(SCheck& check, const SWaveform& table, const SCorner& corner, double low,
                 double high)
{
    CDetails details;
    details.Add("table", KeywordText(table.keyword)).Add("corner", CornerName(corner.column));
    AddExtent(details, table.line);
    details.Add("r-fixture", table.rFixture)
        .Add("v-fixture", FixtureVoltage(table, corner.column))
        .Add("voltage", low);
    AddPart(details, high - low, "part-of-supply", corner.span);
    AddLevels(details, corner, low, high);
    check.report.Emit(EReport::Note, table.place, 1503,
                      {KeywordText(table.keyword), CornerName(corner.column), low, high},
                      details.All());
}

void CheckEnds(SCheck& check, const SWaveform& table, const SCorner& corner)
{
    const SEnds ends = EndsOf(table.value[corner.column]);
    const double vFix = FixtureVoltage(table, corner.column);
    if (!ends.Good() || !(table.rFixture > 0) || !STriple::Has(vFix)) {
        return;
    }
    const auto low = corner.Level(false, table.rFixture, vFix);
    const auto high = corner.Level(true, table.rFixture, vFix);
    if (!low || !high) {
        return;
    }
    const double swing = *high - *low;
    if (swing < kLeastSwingV) {
        TellNoSwing(check, table, corner, *low, *high);
        return;
    }
    const bool rising = table.keyword == EKeyword::RisingWaveform;
    const SEnd first = {"begins", ends.first, rising ? *low : *high, ends.firstRow, !rising};
    const SEnd last = {"ends", ends.last, rising ? *high : *low, ends.lastRow, rising};
    const auto off = [](const SEnd& e) { return std::abs(e.found - e.expected); };
    const SEnd& worst = off(first) > off(last) ? first : last;
    if (off(worst) > kEndWarning * swing) {
        check.report.Path().corner = CornerName(corner.column);
        TellEnd(check, table, corner, worst, swing);
        check.report.Path().corner = {};
    }
}

void CheckWaveformEnds(SCheck& check, const SCorner& corner)
{
    const SModel& model = check.data.model;
    for (std::size_t i = 0; i < model.waveformCount; ++i) {
        const SWaveform& table = model.waveforms[i];
        const bool edge =
            table.keyword == EKeyword::RisingWaveform || table.keyword == EKeyword::FallingWaveform;
        if (edge && table.timeGood && !(table.rDut > 0)) {
            check.report.Path().table = KeywordText(table.keyword);
            CheckEnds(check, table, corner);
            check.report.Path().table = KeywordText(EKeyword::Model);
        }
    }
}

// --- ramp and Vmeas ----------------------------------------------------------------------------

/// The part of the full swing that the ramp's 20 % to 80 % cover.
constexpr double kRampPart = 0.6;
constexpr double kRampNote = 0.25;
constexpr double kRampSlip = 3.0;

void CheckRampSwing(SCheck& check, const SCorner& corner, const SModelType& type, bool rise)
{
    const SRamp& ramp = check.data.model.ramp;
    const double found = (rise ? ramp.riseSwing : ramp.fallSwing).typ;
    const bool toSupply =
        type.drives == EDrives::DownOnly || (type.drives == EDrives::Both && !rise);
    const double vFix = toSupply ? corner.rails.pullup : corner.rails.pulldown;
    const auto low = corner.Level(false, ramp.rLoad, vFix);
    const auto high = corner.Level(true, ramp.rLoad, vFix);
    if (!low || !high || *high - *low < kLeastSwingV || !STriple::Has(found) || ramp.rLoad <= 0) {
        return;
    }
    const double expected = kRampPart * (*high - *low);
    const double ratio = found / expected;
    if (std::abs(ratio - 1) <= kRampNote) {
        return;
    }
    const bool slip = ratio > kRampSlip || ratio * kRampSlip < 1;
    CDetails details;
    details.Add("corner", CornerName(corner.column))
        .Add("r-load", ramp.rLoad)
        .Add("low", *low)
        .Add("high", *high)
        .Add("ratio", ratio);
    AddPart(details, std::abs(found - expected), "part-of-swing", *high - *low);
    AddLevels(details, corner, *low, *high);
    check.report.Emit(slip ? EReport::Warning : EReport::Note, ramp.place, 1509,
                      {rise ? "dV/dt_r" : "dV/dt_f", found, expected}, details.All());
}

void CheckVmeas(SCheck& check, const SModelInfo& info, const SCorner& corner)
{
    const SModel& model = check.data.model;
    if (!(model.rref > 0) || !STriple::Has(model.vref) || !STriple::Has(model.vmeas)) {
        return;
    }
    const auto low = corner.Level(false, model.rref, model.vref);
    const auto high = corner.Level(true, model.rref, model.vref);
    if (!low || !high || (model.vmeas > *low && model.vmeas < *high)) {
        return;
    }
    CDetails details;
    details.Add("corner", CornerName(corner.column))
        .Add("voltage", model.vmeas)
        .Add("r-load", model.rref)
        .Add("v-load", model.vref);
    AddPart(details, std::max(*low - model.vmeas, model.vmeas - *high), "part-of-swing",
            *high - *low);
    AddLevels(details, corner, *low, *high);
    check.report.Emit(EReport::Warning, info.place, 1504, {info.name, model.vmeas, *low, *high},
                      details.All());
}

} // namespace

void CheckConsistency(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SModelType& type = info.Type();
    if (info.type == EModelType::Unknown || type.IsSeries() || type.IsDiff() ||
        info.hasExternalModel || !info.schedule.empty()) {
        return;
    }
    CheckColumns(check, info);
    const SModel& model = check.data.model;
    const CCorners corners = {MakeCorner(model, type, 0), MakeCorner(model, type, 1),
                              MakeCorner(model, type, 2)};
    for (const SCorner& corner : corners) {
        if (!(corner.span > 0)) {
            continue;
        }
        CheckSums(check, info, corner);
        if (type.Drives() && !type.IsEcl() && (corner.drivesLow || corner.drivesHigh)) {
            CheckWaveformEnds(check, corner);
        }
        if (corner.column == 0 && type.Drives() && !type.IsEcl()) {
            CheckRest(check, info, corner);
            CheckTwice(check, info, corner, EKeyword::Pulldown, EKeyword::GNDClamp);
            CheckTwice(check, info, corner, EKeyword::Pullup, EKeyword::POWERClamp);
            CheckRampSwing(check, corner, type, true);
            CheckRampSwing(check, corner, type, false);
            CheckVmeas(check, info, corner);
        }
    }
    CheckCornersTogether(check, info, corners);
}

} // namespace zov::ibischk
