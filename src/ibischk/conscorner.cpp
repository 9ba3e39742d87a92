// SPDX-License-Identifier: Apache-2.0
// A model's corners against each other, and what its tables say about the rest of it.
#include "ibischk/corner.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kLeastA = 1e-3;

// --- strength ----------------------------------------------------------------------------------

struct SFixture
{
    double ohm = kAbsent;
    double volt[3] = {kAbsent, kAbsent, kAbsent};
};

/// The fixture of a waveform that pulls against the driven state, the ramp's load to the other rail
/// where there is none.
SFixture FixtureFor(const SModel& model, const CCorners& corners, bool isHigh)
{
    constexpr double kFarPart = 0.5;
    for (std::size_t i = 0; i < model.waveformCount; ++i) {
        const SWaveform& table = model.waveforms[i];
        const double rail = isHigh ? corners[0].rails.pullup : corners[0].rails.pulldown;
        const double away = isHigh ? rail - table.vFixture : table.vFixture - rail;
        if (table.rFixture > 0 && away > kFarPart * corners[0].span && !(table.rDut > 0)) {
            return {table.rFixture,
                    {table.vFixture, FixtureVoltage(table, 1), FixtureVoltage(table, 2)}};
        }
    }
    SFixture fixture{model.ramp.rLoad, {}};
    for (std::size_t c = 0; c < 3; ++c) {
        fixture.volt[c] = isHigh ? corners[c].rails.pulldown : corners[c].rails.pullup;
    }
    return fixture;
}

/// What a corner draws from the fixture in a state, ampere.
std::optional<double> DrivenCurrent(const SCorner& corner, const SFixture& fixture, bool isHigh)
{
    const double volt = fixture.volt[corner.column];
    if (!(corner.span > 0) || !(isHigh ? corner.drivesHigh : corner.drivesLow) ||
        !(fixture.ohm > 0) || !STriple::Has(volt)) {
        return std::nullopt;
    }
    const auto level = corner.Level(isHigh, fixture.ohm, volt);
    return level ? std::optional(std::abs(*level - volt) / fixture.ohm) : std::nullopt;
}

void CheckStrength(SCheck& check, const SModelInfo& info, const CCorners& corners, bool isHigh)
{
    constexpr double kTolerance = 0.02;
    const SFixture fixture = FixtureFor(check.data.model, corners, isHigh);
    const auto min = DrivenCurrent(corners[1], fixture, isHigh);
    const auto max = DrivenCurrent(corners[2], fixture, isHigh);
    if (!min || !max || *min <= (1 + kTolerance) * *max || *min < kLeastA) {
        return;
    }
    CDetails details;
    details.Add("state", isHigh ? "driven high" : "driven low").Add("r-fixture", fixture.ohm);
    for (const std::size_t c : {1U, 2U}) {
        const CPadCurrent& pad = isHigh ? corners[c].high : corners[c].low;
        const double current = c == 1 ? *min : *max;
        const double volt = fixture.volt[c] + (isHigh ? current : -current) * fixture.ohm;
        details.Add("corner", CornerName(c)).Add("v-fixture", fixture.volt[c]);
        details.Add("voltage", volt).Add("current", current);
        AddRows(details, pad, volt);
        AddSum(details, corners[c], pad);
    }
    AddPart(details, *min - *max, "part-of-max", *max);
    check.report.Emit(EReport::Note, info.place, 1514,
                      {info.name, isHigh ? "high" : "low", *min, fixture.ohm, *max}, details.All());
}

// --- ISSO --------------------------------------------------------------------------------------

/// Without bounce, an ISSO table carries what its driver does at the full supply.
void CheckIsso(SCheck& check, const CCorners& corners, EKeyword issoKeyword, EKeyword driverKeyword)
{
    constexpr double kTolerance = 0.1;
    const SCurve* isso = check.data.model.FindCurve(issoKeyword);
    const SCurve* driver = check.data.model.FindCurve(driverKeyword);
    for (std::size_t c = 0; c < 3 && isso != nullptr && driver != nullptr; ++c) {
        const double supply = corners[c].rails.pullup - corners[c].rails.pulldown;
        const auto found = isso->At(0.0, c);
        const auto expected = driver->At(supply, c);
        if (!found || !expected || std::abs(*expected) < kLeastA ||
            std::abs(*found - *expected) <= kTolerance * std::abs(*expected)) {
            continue;
        }
        CDetails details = AroundOf(*isso, c, 0.0);
        details.Add("supply", supply);
        details.Add("part-of-expected", std::abs(*found - *expected) / std::abs(*expected));
        AddFault(details, *isso, c, std::abs(*found - *expected));
        AddSum(details, check, *isso, c);
        check.report.Emit(EReport::Note, isso->place, 1513,
                          {KeywordText(issoKeyword), CornerName(c), *found,
                           KeywordText(driverKeyword), *expected, supply},
                          details.All());
        return;
    }
}

// --- composite current -------------------------------------------------------------------------

struct SRestCurrent
{
    double found = 0.0;
    double expected = 0.0;
    double volt = 0.0;
    std::size_t column = 0;
    std::size_t row = 0; ///< of the table of currents
    bool isHigh = false;
};

/// What flows out of the upper supply while the pad rests at a voltage.
std::optional<double> SupplyCurrent(const SModel& model, const SCorner& corner, double volt,
                                    bool isHigh)
{
    double sum = 0.0;
    const auto add = [&](EKeyword keyword, double reference) {
        const SCurve* curve = model.FindCurve(keyword);
        const auto current =
            curve == nullptr ? std::nullopt : curve->At(reference - volt, corner.column);
        sum -= current.value_or(0.0);
        return current.has_value();
    };
    if (isHigh && !add(EKeyword::Pullup, corner.rails.pullup)) {
        return std::nullopt;
    }
    add(EKeyword::POWERClamp, corner.rails.powerClamp);
    return sum;
}

bool IsOff(const SRestCurrent& rest)
{
    constexpr double kTolerance = 0.2;
    return std::abs(rest.found - rest.expected) >
           std::max(kTolerance * std::abs(rest.expected), kLeastA);
}

/// The first end of any column that does not fit.
std::optional<SRestCurrent> FindRestFault(const SModel& model, const CCorners& corners,
                                          const SWaveform& edge, const SWaveform& table)
{
    for (const SCorner& corner : corners) {
        const SEnds volt = EndsOf(edge.value[corner.column]);
        const SEnds current = EndsOf(table.value[corner.column]);
        if (!(corner.span > 0) || !volt.Good() || !current.Good()) {
            continue;
        }
        const bool rising = edge.keyword == EKeyword::RisingWaveform;
        const SRestCurrent ends[] = {
            {current.first, 0.0, volt.first, corner.column, current.firstRow, !rising},
            {current.last, 0.0, volt.last, corner.column, current.lastRow, rising}};
        for (SRestCurrent rest : ends) {
            const auto expected = SupplyCurrent(model, corner, rest.volt, rest.isHigh);
            rest.expected = expected.value_or(rest.found);
            if (IsOff(rest)) {
                return rest;
            }
        }
    }
    return std::nullopt;
}

void CheckComposite(SCheck& check, const CCorners& corners)
{
    const SModel& model = check.data.model;
    for (std::size_t i = 1; i < model.waveformCount; ++i) {
        const SWaveform& edge = model.waveforms[i - 1];
        const SWaveform& table = model.waveforms[i];
        if (table.keyword != EKeyword::CompositeCurrent ||
            edge.keyword == EKeyword::CompositeCurrent || edge.rDut > 0) {
            continue;
        }
        const auto rest = FindRestFault(model, corners, edge, table);
        if (!rest) {
            continue;
        }
        CDetails details;
        const SCorner& corner = corners[rest->column];
        const CPadCurrent& pad = rest->isHigh ? corner.high : corner.low;
        const SEnds ends = EndsOf(table.value[rest->column]);
        details.Add("table", KeywordText(table.keyword))
            .Add("corner", CornerName(rest->column))
            .Add("row", static_cast<double>(rest->row + 1))
            .Add("line", static_cast<double>(table.line[rest->row]))
            .Add("voltage", rest->volt);
        AddPart(details, std::abs(rest->found - rest->expected), "part-of-change",
                std::abs(ends.last - ends.first));
        AddRows(details, pad, rest->volt);
        AddSum(details, corner, pad);
        check.report.Emit(EReport::Note, table.place, 1515,
                          {KeywordText(edge.keyword), CornerName(rest->column), rest->found,
                           rest->isHigh ? "high" : "low", rest->expected, rest->volt},
                          details.All());
    }
}

// --- slew --------------------------------------------------------------------------------------

/// The time at which a column first reaches a part of its swing; none for a column without one.
std::optional<double> TimeOfPart(const SWaveform& table, std::size_t column, double part)
{
    const std::vector<double>& v = table.value[column];
    const SEnds ends = EndsOf(v);
    if (!ends.Good() || std::abs(ends.last - ends.first) < kLeastSwingV) {
        return std::nullopt;
    }
    const double wanted = ends.first + part * (ends.last - ends.first);
    const bool rises = ends.last > ends.first;
    std::size_t before = ends.firstRow;
    for (std::size_t row = before; row <= ends.lastRow; ++row) {
        if (!STriple::Has(v[row])) {
            continue;
        }
        if (rises ? v[row] >= wanted : v[row] <= wanted) {
            const double step = v[row] - v[before];
            const double along = step == 0 ? 0.0 : (wanted - v[before]) / step;
            return table.time[before] + along * (table.time[row] - table.time[before]);
        }
        before = row;
    }
    return std::nullopt;
}

/// Is it the edge that [Ramp] was taken from: the same resistor, to the same rail?
bool IsRampFixture(const SWaveform& table, const SRamp& ramp, const SRails& rails,
                   const SModelType& type)
{
    constexpr double kSame = 0.01;
    const bool rise = table.keyword == EKeyword::RisingWaveform;
    const bool toSupply =
        type.drives == EDrives::DownOnly || (type.drives == EDrives::Both && !rise);
    const double rail = toSupply ? rails.pullup : rails.pulldown;
    const bool bare = !(table.cFixture > 0) && !(table.lFixture > 0) && !(table.rDut > 0) &&
                      !(table.lDut > 0) && !(table.cDut > 0);
    return bare && table.timeGood && std::abs(table.rFixture - ramp.rLoad) <= kSame * ramp.rLoad &&
           std::abs(table.vFixture - rail) <= kSame * rails.Span();
}

void CheckSlewOf(SCheck& check, const SWaveform& table)
{
    constexpr double kFactor = 2.0;
    constexpr double kFrom = 0.2;
    constexpr double kTo = 0.8;
    const SRamp& ramp = check.data.model.ramp;
    const bool rise = table.keyword == EKeyword::RisingWaveform;
    for (std::size_t c = 0; c < 3; ++c) {
        const auto from = TimeOfPart(table, c, kFrom);
        const auto to = TimeOfPart(table, c, kTo);
        const double swing = (rise ? ramp.riseSwing : ramp.fallSwing).Column(c);
        const double time = (rise ? ramp.riseTime : ramp.fallTime).Column(c);
        if (!from || !to || *to <= *from || !(swing > 0) || !(time > 0)) {
            continue;
        }
        const SEnds ends = EndsOf(table.value[c]);
        const double found = (kTo - kFrom) * std::abs(ends.last - ends.first) / (*to - *from);
        const double ratio = swing / time / found;
        if (ratio <= kFactor && ratio * kFactor >= 1) {
            continue;
        }
        CDetails details;
        details.Add("table", KeywordText(table.keyword))
            .Add("corner", CornerName(c))
            .Add("lines", FormatSpan(table.line[ends.firstRow], table.line[ends.lastRow]))
            .Add("time-20", *from)
            .Add("time-80", *to)
            .Add("size", std::abs(swing / time - found))
            .Add("ratio", ratio);
        check.report.Emit(EReport::Note, ramp.place, 1510,
                          {rise ? "dV/dt_r" : "dV/dt_f", CornerName(c), swing / time, found,
                           KeywordText(table.keyword), table.place.line},
                          details.All());
        return;
    }
}

void CheckSlew(SCheck& check, const SModelType& type, const SCorner& typ)
{
    const SModel& model = check.data.model;
    bool told[2] = {false, false};
    for (std::size_t i = 0; i < model.waveformCount; ++i) {
        const SWaveform& table = model.waveforms[i];
        const bool rise = table.keyword == EKeyword::RisingWaveform;
        if ((rise || table.keyword == EKeyword::FallingWaveform) && !told[rise ? 1 : 0] &&
            IsRampFixture(table, model.ramp, typ.rails, type)) {
            CheckSlewOf(check, table);
            told[rise ? 1 : 0] = true;
        }
    }
}

// --- clamps and thresholds ---------------------------------------------------------------------

/// A clamp conducts beyond its own rail. What grows beyond the other one is the other's current,
/// unless a termination runs through both.
void CheckForeignClamp(SCheck& check, const SCorner& typ, EKeyword keyword)
{
    const SCurve* curve = check.data.model.FindCurve(keyword);
    const double s = typ.rails.powerClamp - typ.rails.gndClamp;
    const auto inside = [&](double v) { return std::abs(curve->At(v, typ.column).value_or(0.0)); };
    if (curve == nullptr || !(s > 0) || inside(0.5 * s) > kLeastA) {
        return;
    }
    const double atRail = inside(s);
    for (std::size_t row = 0; row < curve->voltage.size(); ++row) {
        const double current = curve->current[typ.column][row];
        if (!(curve->voltage[row] > s) ||
            !(std::abs(current) - atRail * curve->voltage[row] / s > kLeastA)) {
            continue;
        }
        CDetails details = PointOf(*curve, typ.column, row);
        AddFault(details, *curve, typ.column, std::abs(current));
        AddSum(details, check, *curve, typ.column);
        check.report.Emit(EReport::Note, {curve->line[row], 1}, 1508,
                          {KeywordText(keyword), current, curve->voltage[row],
                           keyword == EKeyword::POWERClamp ? "GND Clamp" : "POWER Clamp"},
                          details.All());
        return;
    }
}

void CheckThresholdRails(SCheck& check, const SModelInfo& info, const SCorner& typ)
{
    constexpr double kFarV = 1.0; // from there on it was told as out of all range
    const SModel& model = check.data.model;
    const std::pair<std::string_view, double> kLevels[] = {
        {"Vinl", model.vinl}, {"Vinh", model.vinh}, {"Vth", model.thresholds.vth}};
    const double low = typ.rails.Low();
    const double high = typ.rails.High();
    for (const auto& [name, level] : kLevels) {
        const bool outside = level < low || level > high;
        const bool told = name != "Vth" && (level < low - kFarV || level > high + kFarV);
        if (info.Type().receives && outside && !told) {
            check.report.Caution(info.place, 1516, info.name, name, level, low, high);
        }
    }
}

} // namespace

void CheckCornersTogether(SCheck& check, const SModelInfo& info, const CCorners& corners)
{
    const SModelType& type = info.Type();
    if (!(corners[0].span > 0)) {
        return;
    }
    CheckThresholdRails(check, info, corners[0]);
    CheckForeignClamp(check, corners[0], EKeyword::POWERClamp);
    CheckForeignClamp(check, corners[0], EKeyword::GNDClamp);
    if (!type.Drives() || type.IsEcl()) {
        return;
    }
    CheckStrength(check, info, corners, false);
    CheckStrength(check, info, corners, true);
    CheckIsso(check, corners, EKeyword::ISSOPD, EKeyword::Pulldown);
    CheckIsso(check, corners, EKeyword::ISSOPU, EKeyword::Pullup);
    CheckComposite(check, corners);
    CheckSlew(check, type, corners[0]);
}

} // namespace zov::ibischk
