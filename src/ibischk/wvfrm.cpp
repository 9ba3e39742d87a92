// SPDX-License-Identifier: Apache-2.0
#include "ibischk/wvfrm.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ERow : std::size_t
{
    kRFixture,
    kVFixture,
    kVFixtureMin,
    kVFixtureMax
};
constexpr SSubParameter kRows[] = {
    {"R_fixture", V21, With},     {"V_fixture", V21, With}, {"V_fixture_min", V21, With},
    {"V_fixture_max", V21, With}, {"C_fixture", V21, With}, {"L_fixture", V21, With},
    {"R_dut", V21, With},         {"L_dut", V21, With},     {"C_dut", V21, With},
};
constexpr double SWaveform::*kMembers[] = {
    &SWaveform::rFixture,    &SWaveform::vFixture, &SWaveform::vFixtureMin,
    &SWaveform::vFixtureMax, &SWaveform::cFixture, &SWaveform::lFixture,
    &SWaveform::rDut,        &SWaveform::lDut,     &SWaveform::cDut};

constexpr std::size_t kMaxRowsEarly = 100;
constexpr std::size_t kMaxRows = 1000;

SWaveform& OpenTable(SCheck& check)
{
    return check.data.model.waveforms[check.data.model.waveformCount - 1];
}

std::size_t RowLimit(const SCheck& check)
{
    return check.state.AtLeast(V42) ? kMaxRows : kMaxRowsEarly;
}

void OpenWaveform(SCheck& check, const SLine& line)
{
    check.data.model.NewWaveform(check.state.current, check.state.keywordPlace);
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

void TakeFixture(SCheck& check, const SLine& line, SWaveform& table)
{
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, table.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    if (!table.time.empty()) {
        check.report.ErrorAt(line.Place(), 1947, name, KeywordText(check.state.current));
    }
    const auto value = TakeSingle(check, line, tokens, name);
    if (!value) {
        return;
    }
    table.*kMembers[*row] = *value;
    if (*row == kRFixture && *value <= 0) {
        check.report.ErrorAt(line.Place(), 1303, name, *value);
    } else if (*row > kVFixtureMax && *value < 0) {
        check.report.ErrorAt(line.Place(), 1302, name, *value);
    }
}

void TakeWaveform(SCheck& check, const SLine& line)
{
    SWaveform& table = OpenTable(check);
    if (IsAlpha(line.text.front()) && !IsNa(CTokens(line.text).Next())) {
        TakeFixture(check, line, table);
    } else {
        TakeTimeRow(check, line, table);
    }
}

void CheckFixture(SCheck& check, const SWaveform& table)
{
    const std::string_view keyword = check.report.Path().table;
    for (const std::size_t row : {kRFixture, kVFixture}) {
        if ((table.seen >> row & 1U) == 0) {
            check.report.ErrorAt(table.place, 1301, keyword, kRows[row].name);
        }
    }
    if (table.rDut > 0 || table.lDut > 0 || table.cDut > 0) {
        check.report.NoteAt(table.place, 1312, keyword);
    }
    if (table.cFixture > 0 || table.lFixture > 0) {
        check.report.NoteAt(table.place, 1313, keyword);
    }
    if (table.vFixtureMin > table.vFixtureMax) {
        check.report.NoteAt(table.place, 1317, keyword, table.vFixtureMin, table.vFixture,
                            table.vFixtureMax);
    }
}

/// An edge that begins in the first row or goes on in the last is cut off. The columns share one
/// time axis, so a slow one rules how far the others must go; typ alone is judged.
void CheckSettled(SCheck& check, const SWaveform& table)
{
    constexpr double kStill = 0.02;
    const std::vector<double>& v = table.value[0];
    if (v.size() < 3) {
        return;
    }
    const std::size_t last = v.size() - 1;
    const double swing = std::abs(v[last] - v[0]);
    const double atStart = std::abs(v[1] - v[0]);
    const double atEnd = std::abs(v[last] - v[last - 1]);
    const auto tell = [&](std::string_view where, double step, std::size_t row) {
        CDetails details = ExtentOf(table, 0);
        details.Add("row", FormatSpan(row + 1, row + 2))
            .Add("line", FormatSpan(table.line[row], table.line[row + 1]))
            .Add("voltage", v[row])
            .Add("voltage-next", v[row + 1]);
        AddPart(details, step, "part-of-swing", swing);
        check.report.Emit(EReport::Note, table.place, 1310,
                          {check.report.Path().table, "typ", where, step, swing}, details.All());
    };
    if (atStart > kStill * swing && swing > 0) {
        tell("start", atStart, 0);
    }
    if (atEnd > kStill * swing && swing > 0) {
        tell("end", atEnd, last - 1);
    }
}

void CheckSwing(SCheck& check, const SWaveform& table)
{
    constexpr double kNoSwing = 1e-3;
    const SEnds ends = EndsOf(table.value[0]);
    if (!ends.Good()) {
        return;
    }
    const bool rising = table.keyword == EKeyword::RisingWaveform ||
                        table.keyword == EKeyword::SubmodelRisingWaveform;
    const double swing = rising ? ends.last - ends.first : ends.first - ends.last;
    if (swing < kNoSwing) {
        CDetails details = ExtentOf(table, 0);
        details.Add("voltage", ends.first)
            .Add("voltage-last", ends.last)
            .Add("size", std::abs(swing));
        check.report.Emit(EReport::Warning, table.place, 1311,
                          {check.report.Path().table, ends.first, ends.last}, details.All());
    }
}

void CloseWaveform(SCheck& check)
{
    SWaveform& table = OpenTable(check);
    CheckTimeTable(check, table, RowLimit(check));
    CheckFixture(check, table);
    CheckSwing(check, table);
    CheckSettled(check, table);
}

// --- composite current -------------------------------------------------------------------------

bool IsEdge(EKeyword keyword)
{
    return keyword == EKeyword::RisingWaveform || keyword == EKeyword::FallingWaveform;
}

void OpenComposite(SCheck& check, const SLine& line)
{
    const SModel& model = check.data.model;
    if (model.waveformCount == 0 || !IsEdge(model.waveforms[model.waveformCount - 1].keyword)) {
        check.report.ErrorAt(check.state.keywordPlace, 5101);
    }
    OpenWaveform(check, line);
}

void TakeComposite(SCheck& check, const SLine& line)
{
    TakeTimeRow(check, line, OpenTable(check));
}

void CloseComposite(SCheck& check)
{
    constexpr double kSpanTolerance = 0.1;
    SModel& model = check.data.model;
    SWaveform& table = OpenTable(check);
    CheckTimeTable(check, table, kMaxRows);
    if (model.waveformCount < 2 || table.time.empty()) {
        return;
    }
    const SWaveform& voltage = model.waveforms[model.waveformCount - 2];
    if (!IsEdge(voltage.keyword) || voltage.time.empty()) {
        return;
    }
    const double difference = std::abs(voltage.time.back() - table.time.back());
    if (difference > kSpanTolerance * std::abs(voltage.time.back())) {
        CDetails details = ExtentOf(table, 0);
        details.Add("waveform-line", static_cast<double>(voltage.place.line));
        AddPart(details, difference, "part-of-waveform", std::abs(voltage.time.back()));
        check.report.Emit(EReport::Note, table.place, 5105,
                          {table.time.back(), voltage.time.back()}, details.All());
    }
}

// --- initial delay -----------------------------------------------------------------------------

constexpr SSubParameter kDelayRows[] = {{"V-T", V21, Without}, {"I-T", V21, Without}};

void OpenDelay(SCheck& check, const SLine& line)
{
    check.data.model.initialDelay = {};
    check.data.model.initialDelay.place = check.state.keywordPlace;
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

void TakeDelay(SCheck& check, const SLine& line)
{
    SInitialDelay& delay = check.data.model.initialDelay;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kDelayRows, delay.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kDelayRows[*row].name;
    const auto triple = TakeNamedTriple(check, line, tokens, name, 5151);
    if (!triple) {
        return;
    }
    (*row == 0 ? delay.voltage : delay.current) = *triple;
    for (const double value : {triple->typ, triple->min, triple->max}) {
        if (value < 0) {
            check.report.ErrorAt(line.Place(), 5152, name, value);
            return;
        }
    }
}

void CloseDelay(SCheck& check)
{
    if (check.data.model.initialDelay.seen == 0) {
        check.report.ErrorAt(check.data.model.initialDelay.place, 5150);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::RisingWaveform, &OpenWaveform, &TakeWaveform, &CloseWaveform},
    {EKeyword::FallingWaveform, &OpenWaveform, &TakeWaveform, &CloseWaveform},
    {EKeyword::CompositeCurrent, &OpenComposite, &TakeComposite, &CloseComposite},
    {EKeyword::InitialDelay, &OpenDelay, &TakeDelay, &CloseDelay},
    {EKeyword::SubmodelRisingWaveform, &OpenWaveform, &TakeWaveform, &CloseWaveform},
    {EKeyword::SubmodelFallingWaveform, &OpenWaveform, &TakeWaveform, &CloseWaveform},
    {EKeyword::SubmodelInitialDelay, &OpenDelay, &TakeDelay, &CloseDelay},
};

} // namespace

const SFamily kWvfrmFamily = {"wvfrm", kHandlers, {}, nullptr};

void TakeTimeRow(SCheck& check, const SLine& line, SWaveform& table)
{
    SRow row;
    if (!TakeTableRow(check, line, row, 1304)) {
        return;
    }
    const double time = row.value[0];
    if (!table.time.empty() && time <= table.time.back() && table.timeGood) {
        table.timeGood = false;
        CDetails details;
        details.Add("table", check.report.Path().table)
            .Add("row", static_cast<double>(table.time.size() + 1))
            .Add("line", static_cast<double>(line.line))
            .Add("time", time)
            .Add("before", table.time.back())
            .Add("size", table.time.back() - time);
        check.report.Emit(EReport::Error, line.Place(), 1307,
                          {check.report.Path().table, time, table.time.back()}, details.All());
    }
    table.time.push_back(time);
    for (std::size_t c = 0; c < 3; ++c) {
        table.value[c].push_back(row.value[c + 1]);
    }
    table.line.push_back(static_cast<std::uint32_t>(line.line));
}

void CheckTimeTable(SCheck& check, SWaveform& table, std::size_t mostRows)
{
    const STableAxis axis = {"time", table.place, table.time, table.line};
    CheckRowCount(check, axis, mostRows, 1305, 1306);
    CheckColumnEnds(check, axis, table.value, 1309);
    if (!table.time.empty() && table.time.front() < 0) {
        check.report.WarningAt(table.place, 1308, check.report.Path().table, table.time.front());
    }
}

void SWaveform::Clear(EKeyword of, SPlace at)
{
    // The vectors go through the reset with their memory.
    SWaveform fresh;
    fresh.keyword = of;
    fresh.place = at;
    time.clear();
    line.clear();
    fresh.time.swap(time);
    fresh.line.swap(line);
    for (std::size_t i = 0; i < 3; ++i) {
        value[i].clear();
        fresh.value[i].swap(value[i]);
    }
    *this = std::move(fresh);
}

} // namespace zov::ibischk
