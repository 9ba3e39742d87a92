// SPDX-License-Identifier: Apache-2.0
// Terminators and elements of series models.
#include "ibischk/mdlparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr EKeyword kElements[] = {
    EKeyword::RSeries,  EKeyword::LSeries,  EKeyword::RlSeries,      EKeyword::CSeries,
    EKeyword::LcSeries, EKeyword::RcSeries, EKeyword::SeriesCurrent, EKeyword::SeriesMOSFET};
constexpr std::size_t kMaxMosfets = 100;
constexpr double kSwitchOhm = 1000.0;

std::uint32_t BitOf(EKeyword code)
{
    const auto at = std::ranges::find(kElements, code) - std::begin(kElements);
    return 1U << static_cast<unsigned>(at);
}

SSeriesState& CurrentState(SCheck& check)
{
    auto& states = check.data.model.series;
    if (states.empty()) {
        states.push_back({});
        states.back().place = check.state.keywordPlace;
    }
    return states.back();
}

void CheckPairs(SCheck& check, const SSeriesState& state)
{
    constexpr std::pair<EKeyword, EKeyword> kPairs[] = {{EKeyword::RlSeries, EKeyword::LSeries},
                                                        {EKeyword::LcSeries, EKeyword::CSeries},
                                                        {EKeyword::RcSeries, EKeyword::CSeries}};
    for (const auto& [code, needed] : kPairs) {
        if ((state.seen & BitOf(code)) != 0 && (state.seen & BitOf(needed)) == 0) {
            check.report.WarningAt(state.place, 2810, KeywordText(code), KeywordText(needed));
        }
    }
}

void CheckState(SCheck& check, const SModelInfo& info, const SSeriesState& state)
{
    CheckPairs(check, state);
    const bool on = state.state == EKeyword::On;
    if (state.state == EKeyword::NotKey) {
        return;
    }
    if (state.seen == 0) {
        check.report.ErrorAt(state.place, 2804, KeywordText(state.state));
    }
    if (on ? state.rSeries > kSwitchOhm : state.rSeries < kSwitchOhm) {
        check.report.Caution(state.place, 2811, info.name, state.rSeries, KeywordText(state.state));
    }
}

void CheckSwitch(SCheck& check, const SModelInfo& info)
{
    const auto& states = check.data.model.series;
    const auto count = [&states](EKeyword code) {
        return std::ranges::count(states, code, &SSeriesState::state);
    };
    if (count(EKeyword::On) != 1 || count(EKeyword::Off) != 1) {
        check.report.ErrorAt(info.place, 2803, info.name);
    }
    for (const SSeriesState& state : states) {
        if (state.state != EKeyword::NotKey) {
            continue;
        }
        for (const EKeyword code : kElements) {
            if ((state.seen & BitOf(code)) != 0) {
                check.report.ErrorAt(state.place, 2805, KeywordText(code));
            }
        }
    }
}

/// Series keywords in other models, and what has no place in a series model.
void CheckForeign(SCheck& check, const SModelInfo& info)
{
    const SModelType& type = info.Type();
    if (!type.IsSeries()) {
        for (const EKeyword code : kElements) {
            if (check.state.Has(code)) {
                check.report.ErrorAt(info.place, 2801, KeywordText(code), info.name, type.name);
            }
        }
        return;
    }
    constexpr EKeyword kForeign[] = {EKeyword::Pulldown,
                                     EKeyword::Pullup,
                                     EKeyword::GNDClamp,
                                     EKeyword::POWERClamp,
                                     EKeyword::Ramp,
                                     EKeyword::RisingWaveform,
                                     EKeyword::FallingWaveform,
                                     EKeyword::ReceiverThresholds,
                                     EKeyword::DriverSchedule,
                                     EKeyword::AddSubmodel};
    for (const EKeyword code : kForeign) {
        if (check.state.Has(code)) {
            check.report.ErrorAt(info.place, 2812, KeywordText(code), info.name, type.name);
        }
    }
}

void CheckTerminators(SCheck& check, const SModelInfo& info)
{
    constexpr EKeyword kCodes[] = {EKeyword::Rgnd, EKeyword::Rpower, EKeyword::Rac, EKeyword::Cac};
    for (const EKeyword code : kCodes) {
        if (check.state.Has(code) && info.type != EModelType::Terminator) {
            check.report.ErrorAt(info.place, 2901, KeywordText(code), info.name, info.Type().name);
        }
    }
    const bool rac = check.state.Has(EKeyword::Rac);
    const bool cac = check.state.Has(EKeyword::Cac);
    if (rac != cac) {
        check.report.ErrorAt(info.place, 2904, rac ? "Rac" : "Cac", rac ? "Cac" : "Rac");
    }
}

} // namespace

void OpenTerminator(SCheck& check, const SLine& line)
{
    check.data.model.hasTerminator = true;
    const auto triple = TakeKeywordTriple(check, line, 2902);
    if (!triple) {
        return;
    }
    for (const double value : {triple->typ, triple->min, triple->max}) {
        if (value <= 0) {
            check.report.ErrorAt(line.Place(), 2903, KeywordText(check.state.current), value);
            return;
        }
    }
}

void OpenState(SCheck& check, const SLine& /*line*/)
{
    SSeriesState state;
    state.state = check.state.current;
    state.place = check.state.keywordPlace;
    check.data.model.series.push_back(std::move(state));
    const SModelInfo& info = OpenModel(check);
    if (info.type != EModelType::Unknown && info.type != EModelType::SeriesSwitch) {
        check.report.ErrorAt(check.state.keywordPlace, 2802, KeywordText(check.state.current),
                             info.name, info.Type().name);
    }
}

void NoteSeriesElement(SCheck& check, EKeyword code)
{
    SSeriesState& state = CurrentState(check);
    const SPlace place = check.state.keywordPlace;
    if (code == EKeyword::SeriesMOSFET) {
        if (++state.tables == kMaxMosfets + 1) {
            check.report.ErrorAt(place, 2855);
        }
        if (state.state == EKeyword::Off) {
            check.report.WarningAt(place, 2856);
        }
    } else if ((state.seen & BitOf(code)) != 0) {
        check.report.At(check.state.AtLeast(EVersion::V42) ? EReport::Error : EReport::Warning,
                        place, 2807, KeywordText(code));
    }
    state.seen |= BitOf(code);
}

void OpenSeriesElement(SCheck& check, const SLine& line)
{
    const EKeyword code = check.state.current;
    NoteSeriesElement(check, code);
    const auto triple = TakeKeywordTriple(check, line, 2808);
    if (!triple) {
        return;
    }
    if (code == EKeyword::RSeries) {
        CurrentState(check).rSeries = triple->typ;
    }
    const bool positive = code == EKeyword::CSeries || code == EKeyword::LSeries;
    for (const double value : {triple->typ, triple->min, triple->max}) {
        if (value < 0 || (positive && value == 0)) {
            check.report.ErrorAt(line.Place(), 2809, KeywordText(code),
                                 positive ? "greater than 0" : "at least 0", value);
            return;
        }
    }
}

void CheckSeries(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    if (info.type == EModelType::Unknown) {
        return;
    }
    CheckForeign(check, info);
    CheckTerminators(check, info);
    const auto& states = check.data.model.series;
    for (const SSeriesState& state : states) {
        CheckState(check, info, state);
    }
    if (info.type == EModelType::SeriesSwitch) {
        CheckSwitch(check, info);
    } else if (info.type == EModelType::Series && states.empty()) {
        check.report.ErrorAt(info.place, 2806, info.name);
    }
}

} // namespace zov::ibischk
