// SPDX-License-Identifier: Apache-2.0
#include "ibischk/ramp.h"

#include "ibischk/cmn.h"
#include "ibischk/mdlparts.h"

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ERow : std::size_t
{
    kRise,
    kFall,
    kLoad
};
constexpr SSubParameter kRows[] = {
    {"dV/dt_r", V21, Without},
    {"dV/dt_f", V21, Without},
    {"R_load", V21, With},
};

constexpr double kShortestS = 1e-12;
constexpr double kLongestS = 1e-6;
constexpr double kSlowestVPerS = 1e6;
constexpr double kFastestVPerS = 1e12;

struct SFraction
{
    double volt = kAbsent;
    double seconds = kAbsent;
};

/// One column; none after a report.
std::optional<SFraction> TakeFraction(SCheck& check, const SLine& line, std::string_view name,
                                      std::string_view word)
{
    if (IsNa(word)) {
        return SFraction{};
    }
    const std::size_t slash = word.find('/');
    if (slash == std::string_view::npos || slash == 0 || slash + 1 == word.size()) {
        check.report.ErrorAt(line.Place(word), 1104, name, word);
        return std::nullopt;
    }
    const std::string_view above = word.substr(0, slash);
    const std::string_view below = word.substr(slash + 1);
    const auto volt = TakeNumber(check, name, above, line.Place(above));
    const auto seconds = TakeNumber(check, name, below, line.Place(below));
    if (!volt || !seconds) {
        return std::nullopt;
    }
    if (*volt <= 0 || *seconds <= 0) {
        check.report.ErrorAt(line.Place(word), 1106, name, word);
        return std::nullopt;
    }
    return SFraction{*volt, *seconds};
}

void CheckSlew(SCheck& check, SPlace place, std::string_view name, const STriple& swing,
               const STriple& time)
{
    const double slow = swing.min / time.min;
    const double fast = swing.max / time.max;
    if (slow > fast) {
        check.report.NoteAt(place, 1108, name, slow, fast);
    }
    for (std::size_t c = 0; c < 3; ++c) {
        const double t = time.Column(c);
        const double slew = swing.Column(c) / t;
        if (t < kShortestS || t > kLongestS) {
            check.report.Caution(place, 1109, check.report.Path().model, t, name);
            return;
        }
        if (slew < kSlowestVPerS || slew > kFastestVPerS) {
            check.report.Caution(place, 1111, check.report.Path().model, slew, name);
            return;
        }
    }
}

void TakeSlew(SCheck& check, const SLine& line, CTokens& tokens, std::string_view name,
              STriple& swing, STriple& time)
{
    double volt[3] = {kAbsent, kAbsent, kAbsent};
    double seconds[3] = {kAbsent, kAbsent, kAbsent};
    for (std::size_t c = 0; c < 3; ++c) {
        const std::string_view word = tokens.Next();
        if (word.empty()) {
            check.report.ErrorAt(line.Place(), 1933, name);
            return;
        }
        const auto fraction = TakeFraction(check, line, name, word);
        if (!fraction) {
            return;
        }
        volt[c] = fraction->volt;
        seconds[c] = fraction->seconds;
    }
    ReportExtra(check, line, tokens, name);
    swing = {volt[0], volt[1], volt[2]};
    time = {seconds[0], seconds[1], seconds[2]};
    if (!swing.HasTyp()) {
        check.report.ErrorAt(line.Place(), 1105, name);
    }
    CheckSlew(check, line.Place(), name, swing, time);
}

void OpenRamp(SCheck& check, const SLine& line)
{
    SRamp& ramp = check.data.model.ramp;
    ramp = {};
    ramp.place = check.state.keywordPlace;
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

void TakeRamp(SCheck& check, const SLine& line)
{
    SRamp& ramp = check.data.model.ramp;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, ramp.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    if (*row == kRise) {
        TakeSlew(check, line, tokens, name, ramp.riseSwing, ramp.riseTime);
    } else if (*row == kFall) {
        TakeSlew(check, line, tokens, name, ramp.fallSwing, ramp.fallTime);
    } else if (const auto load = TakeSingle(check, line, tokens, name)) {
        ramp.rLoad = *load;
        if (*load <= 0) {
            check.report.ErrorAt(line.Place(), 1107, *load);
        }
    }
}

void CloseRamp(SCheck& check)
{
    const SRamp& ramp = check.data.model.ramp;
    for (const std::size_t row : {kRise, kFall}) {
        if ((ramp.seen >> row & 1U) == 0) {
            check.report.ErrorAt(ramp.place, 1103, kRows[row].name);
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::Ramp, &OpenRamp, &TakeRamp, &CloseRamp},
    {EKeyword::SubmodelRamp, &OpenRamp, &TakeRamp, &CloseRamp},
};

void CheckSwing(SCheck& check, std::string_view name, const STriple& swing)
{
    for (std::size_t c = 0; c < 3; ++c) {
        const SRails rails = RailsOf(check.data.model, c);
        // A buffer whose supplies are unknown, or whose clamps refer beyond them, is not judged.
        if (rails.Complete() && rails.Span() > 0 && swing.Column(c) > rails.Span()) {
            check.report.WarningAt(check.data.model.ramp.place, 1110, name, swing.Column(c),
                                   CornerName(c), rails.Span());
            return;
        }
    }
}

} // namespace

const SFamily kRampFamily = {"ramp", kHandlers, {}, nullptr};

void CheckRamp(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SModelType& type = info.Type();
    if (info.type == EModelType::Unknown || type.IsSeries()) {
        return;
    }
    const bool has = check.state.Has(EKeyword::Ramp);
    if (!has) {
        if (type.Drives() && !type.IsDiff() && !info.hasExternalModel) {
            check.report.ErrorAt(info.place, 1101, info.name, type.name);
        }
        return;
    }
    const SRamp& ramp = check.data.model.ramp;
    if (!type.Drives()) {
        check.report.WarningAt(ramp.place, 1102, info.name, type.name);
    }
    CheckSwing(check, kRows[kRise].name, ramp.riseSwing);
    CheckSwing(check, kRows[kFall].name, ramp.fallSwing);
}

} // namespace zov::ibischk
