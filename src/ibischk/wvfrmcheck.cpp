// SPDX-License-Identifier: Apache-2.0
// Waveforms of a model among themselves, and by its type.
#include "ibischk/evidence.h"
#include "ibischk/tables.h"
#include "ibischk/wvfrm.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr std::size_t kMaxTables = 100;
constexpr double kLongestS = 1e-6;

std::span<const SWaveform> Tables(const SCheck& check)
{
    return {check.data.model.waveforms.data(), check.data.model.waveformCount};
}

std::size_t CountOf(const SCheck& check, EKeyword keyword)
{
    return static_cast<std::size_t>(
        std::ranges::count(Tables(check), keyword, &SWaveform::keyword));
}

bool Same(double a, double b)
{
    return a == b || (!STriple::Has(a) && !STriple::Has(b));
}

bool SameFixture(const SWaveform& a, const SWaveform& b)
{
    return a.keyword == b.keyword && a.rFixture == b.rFixture && Same(a.vFixture, b.vFixture) &&
           Same(a.vFixtureMin, b.vFixtureMin) && Same(a.vFixtureMax, b.vFixtureMax) &&
           Same(a.cFixture, b.cFixture) && Same(a.lFixture, b.lFixture) && Same(a.rDut, b.rDut) &&
           Same(a.lDut, b.lDut) && Same(a.cDut, b.cDut);
}

void CheckFixtures(SCheck& check, const SModelType& type, const SWaveform& table)
{
    const SModel& model = check.data.model;
    const std::string_view keyword = KeywordText(table.keyword);
    const SRails typ = RailsOf(model, 0);
    const SRails min = RailsOf(model, 1);
    const SRails max = RailsOf(model, 2);
    const bool suppliesVary = min.pullup < typ.pullup || max.pullup > typ.pullup;
    if ((table.vFixture < 0 || table.vFixture > 0) && suppliesVary &&
        !STriple::Has(table.vFixtureMin) && !STriple::Has(table.vFixtureMax) &&
        HasNumbers(table.value[1])) {
        CDetails details = ExtentOf(table, 1);
        details.Add("v-fixture", table.vFixture)
            .Add("supply-typ", typ.pullup)
            .Add("supply-min", min.pullup)
            .Add("supply-max", max.pullup);
        check.report.Emit(EReport::Note, table.place, 1316, {keyword, table.vFixture},
                          details.All());
    }
    if (!typ.Complete()) {
        return;
    }
    constexpr double kAside = 0.2;
    const double slack = kAside * typ.Span();
    const bool inOrder = !(table.vFixtureMin > table.vFixtureMax); // told otherwise
    if (inOrder && (table.vFixtureMin - table.vFixture > slack ||
                    table.vFixture - table.vFixtureMax > slack)) {
        check.report.NoteAt(table.place, 1317, keyword, table.vFixtureMin, table.vFixture,
                            table.vFixtureMax);
    }
    const bool tooLow = type.drives == EDrives::DownOnly && table.vFixture <= typ.pulldown;
    const bool tooHigh = type.drives == EDrives::UpOnly && table.vFixture >= typ.pullup;
    if (tooLow || tooHigh) {
        check.report.WarningAt(table.place, 1319, keyword, table.vFixture, type.name);
    }
}

void CheckLength(SCheck& check, const SModelInfo& info, const SWaveform& table)
{
    constexpr double kManyRamps = 1000.0;
    const SRamp& ramp = check.data.model.ramp;
    const double end = table.time.back();
    const std::string_view keyword = KeywordText(table.keyword);
    if (end > kLongestS) {
        CDetails details = ExtentOf(table, 0);
        AddPart(details, end, "part-of-limit", kLongestS);
        check.report.Emit(EReport::Caution, table.place, 1321, {info.name, keyword, end},
                          details.All());
    }
    const double longest =
        std::max({0.0, ramp.riseTime.typ, ramp.riseTime.min, ramp.fallTime.typ, ramp.fallTime.min});
    if (longest > 0 && end > kManyRamps * longest) {
        CDetails details = ExtentOf(table, 0);
        AddPart(details, end, "part-of-ramp", longest);
        check.report.Emit(EReport::Warning, table.place, 1322, {keyword, end, longest},
                          details.All());
    }
}

void CheckCounts(SCheck& check, const SModelInfo& info, const SModelType& type)
{
    const std::size_t rising = CountOf(check, EKeyword::RisingWaveform);
    const std::size_t falling = CountOf(check, EKeyword::FallingWaveform);
    if ((rising == 0) != (falling == 0)) {
        check.report.WarningAt(info.place, 1320, info.name,
                               rising != 0 ? "Rising Waveform" : "Falling Waveform",
                               rising != 0 ? "Falling Waveform" : "Rising Waveform");
    }
    if (rising > kMaxTables) {
        check.report.ErrorAt(info.place, 1314, info.name, rising, "Rising Waveform", kMaxTables);
    }
    if (falling > kMaxTables) {
        check.report.ErrorAt(info.place, 1314, info.name, falling, "Falling Waveform", kMaxTables);
    }
    if (check.report.Verbose() && type.drives == EDrives::Both && (rising < 2 || falling < 2)) {
        check.report.NoteAt(info.place, 1318, info.name, type.name, rising, falling);
    }
    const std::size_t currents = CountOf(check, EKeyword::CompositeCurrent);
    if (currents != 0 && currents < rising + falling) {
        check.report.NoteAt(info.place, 5104, info.name, currents, rising + falling);
    }
}

/// How far a column moves before a time.
double MovedBefore(const SWaveform& table, std::size_t column, double time)
{
    const std::vector<double>& v = table.value[column];
    double moved = 0.0;
    for (std::size_t i = 1; i < v.size() && table.time[i] <= time; ++i) {
        moved = std::max(moved, std::abs(v[i] - v[0]));
    }
    return moved;
}

void CheckDelayOf(SCheck& check, const STriple& delay, std::string_view name,
                  const SWaveform& table)
{
    constexpr double kStill = 0.02;
    if (table.time.empty()) {
        return;
    }
    const std::string_view keyword = KeywordText(table.keyword);
    for (std::size_t c = 0; c < 3; ++c) {
        const double time = delay.Column(c);
        if (time > table.time.back()) {
            check.report.ErrorAt(check.data.model.initialDelay.place, 5154, name, time, keyword,
                                 table.place.line, table.time.back());
            return;
        }
        const SEnds ends = EndsOf(table.value[c]);
        const double swing = std::abs(ends.last - ends.first);
        const double moved = MovedBefore(table, c, time);
        if (ends.Good() && swing > 0 && moved > kStill * swing && name == "V-T") {
            CDetails details = ExtentOf(table, c);
            details.Add("delay", time);
            AddPart(details, moved, "part-of-swing", swing);
            check.report.Emit(EReport::Warning, check.data.model.initialDelay.place, 5155,
                              {keyword, table.place.line, moved, name, time}, details.All());
            return;
        }
    }
}

} // namespace

void CheckWaveforms(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SModelType& type = info.Type();
    if (!type.Drives()) {
        return;
    }
    CheckCounts(check, info, type);
    const auto tables = Tables(check);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const SWaveform& table = tables[i];
        if (table.keyword == EKeyword::CompositeCurrent || table.time.empty()) {
            continue;
        }
        check.report.Path().table = KeywordText(table.keyword);
        // More tables than are allowed were told already.
        for (std::size_t j = 0; j < std::min(i, 2 * kMaxTables); ++j) {
            if (SameFixture(tables[j], table)) {
                check.report.WarningAt(table.place, 1315, KeywordText(table.keyword),
                                       tables[j].place.line);
                break;
            }
        }
        CheckFixtures(check, type, table);
        CheckLength(check, info, table);
    }
    check.report.Path().table = KeywordText(EKeyword::Model);
}

void CheckInitialDelay(SCheck& check, EKeyword rising, EKeyword falling)
{
    const SInitialDelay& delay = check.data.model.initialDelay;
    if (delay.seen == 0) {
        return;
    }
    bool waveforms = false;
    bool currents = false;
    for (const SWaveform& table : Tables(check)) {
        if (table.keyword == rising || table.keyword == falling) {
            waveforms = true;
            CheckDelayOf(check, delay.voltage, "V-T", table);
        } else if (table.keyword == EKeyword::CompositeCurrent) {
            currents = true;
            CheckDelayOf(check, delay.current, "I-T", table);
        }
    }
    if ((delay.seen & 1U) != 0 && !waveforms) {
        check.report.ErrorAt(delay.place, 5153, "V-T", KeywordText(rising));
    }
    if ((delay.seen & 2U) != 0 && !currents) {
        check.report.WarningAt(delay.place, 5153, "I-T", "Composite Current");
    }
}

} // namespace zov::ibischk
