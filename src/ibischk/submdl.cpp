// SPDX-License-Identifier: Apache-2.0
#include "ibischk/submdl.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

struct SSubmodelType
{
    std::string_view name;
    EVersion since;
    bool clamps; ///< else it drives
};
constexpr SSubmodelType kTypes[] = {
    {"Dynamic_clamp", V32, true},
    {"Bus_hold", V32, false},
    {"Fall_back", V42, false},
};
constexpr std::string_view kFallBack = "Fall_back";

constexpr SSubParameter kTypeRows[] = {{"Submodel_type", V21, Without}};
constexpr SSubParameter kSpecRows[] = {
    {"V_trigger_r", V21, Without},
    {"V_trigger_f", V21, Without},
    {"Off_delay", V21, Without},
};
constexpr std::size_t kMaxPulseRows = 100;

const SSubmodelType* FindType(std::string_view name)
{
    const auto* row = std::ranges::find_if(
        kTypes, [name](const SSubmodelType& t) { return EqualsNoCase(t.name, name); });
    return row == std::end(kTypes) ? nullptr : row;
}

// --- [Add Submodel] ----------------------------------------------------------------------------

void OpenAdd(SCheck& check, const SLine& line)
{
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

void TakeAdd(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    const std::string_view name = tokens.Next();
    const std::string_view mode = tokens.Next();
    if (mode.empty()) {
        check.report.ErrorAt(line.Place(), 1944, KeywordText(check.state.current), 1, "2");
        return;
    }
    ReportExtra(check, line, tokens, "mode");
    constexpr std::string_view kModes[] = {"Driving", "Non-Driving", "All"};
    if (std::ranges::none_of(kModes, [mode](auto m) { return EqualsNoCase(m, mode); })) {
        check.report.ErrorAt(line.Place(mode), 1702, mode);
    }
    auto& rows = OpenModel(check).submodels;
    if (std::ranges::find(rows, name, &SAddSubmodel::submodel) != rows.end()) {
        check.report.WarningAt(line.Place(name), 1705, name);
    }
    rows.push_back({name, mode, line.Place(name)});
}

void CloseAdd(SCheck& check)
{
    if (OpenModel(check).submodels.empty()) {
        check.report.ErrorAt(check.state.sectionPlace, 1706);
    }
}

void CheckMode(SCheck& check, const SModelType& type, const SAddSubmodel& row)
{
    const bool driving = EqualsNoCase(row.mode, "Driving");
    const bool idle = EqualsNoCase(row.mode, "Non-Driving");
    const bool stopsDriving = !type.Drives() || type.canDisable;
    if ((driving && !type.Drives()) || (idle && !stopsDriving)) {
        check.report.ErrorAt(row.place, 1703, row.mode, type.name);
    }
}

void ResolveAdd(SCheck& check, const SModelInfo& info, const SAddSubmodel& row)
{
    const auto at = check.data.submodelNames.Find(row.submodel);
    if (!at) {
        ReportUnresolved(check, check.data.submodelNames, row.submodel, row.place, 1701);
        return;
    }
    SSubmodelInfo& target = check.data.submodels[*at];
    target.used = true;
    if (info.type == EModelType::Unknown) {
        return;
    }
    CheckMode(check, info.Type(), row);
    if (EqualsNoCase(target.type, kFallBack) &&
        (!info.Type().Drives() || !EqualsNoCase(row.mode, "Driving"))) {
        check.report.ErrorAt(row.place, 1704, row.submodel);
    }
}

// --- [Submodel] --------------------------------------------------------------------------------

void OpenSubmodel(SCheck& check, const SLine& line)
{
    check.data.model.Clear();
    check.data.submodel = {};
    const std::string_view name = TakeName(check, line, kNameLimit, EReserved::Refused);
    check.data.submodel.name = name;
    check.data.submodel.place = check.state.keywordPlace;
    if (!name.empty() && check.data.submodelNames.Add(name, check.data.submodels.size())) {
        check.report.ErrorAt(line.Place(name), 1711, name);
    }
    check.data.submodels.push_back({name, {}, check.state.keywordPlace, false});
    check.report.Path().model = name;
}

void TakeSubmodel(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    if (!TakeSubParameter(check, line, tokens, kTypeRows, check.data.model.seen)) {
        return;
    }
    const std::string_view word = TakeWord(check, line, tokens, "Submodel_type");
    const SSubmodelType* type = FindType(word);
    if (type == nullptr) {
        if (!word.empty()) {
            check.report.ErrorAt(line.Place(word), 1714, word);
        }
        return;
    }
    if (!check.state.AtLeast(type->since)) {
        check.report.ErrorAt(line.Place(word), 1715, word, VersionText(type->since));
    }
    check.data.submodel.type = type->name;
    check.data.submodels.back().type = type->name;
}

void TakeSpecRow(SCheck& check, const SLine& line)
{
    SSubmodel& submodel = check.data.submodel;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kSpecRows, check.data.model.specSeen);
    if (!row) {
        return;
    }
    const auto triple = TakeNamedTriple(check, line, tokens, kSpecRows[*row].name, 1718);
    if (!triple) {
        return;
    }
    STriple* const members[] = {&submodel.triggerRise, &submodel.triggerFall, &submodel.offDelay};
    *members[*row] = *triple;
    for (const double value : {triple->typ, triple->min, triple->max}) {
        if (*row == 2 && value <= 0) {
            check.report.ErrorAt(line.Place(), 1719, value);
            return;
        }
    }
}

void OpenPulse(SCheck& check, const SLine& line)
{
    check.data.model.NewWaveform(check.state.current, check.state.keywordPlace);
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

SWaveform& OpenTable(SCheck& check)
{
    return check.data.model.waveforms[check.data.model.waveformCount - 1];
}

void TakePulse(SCheck& check, const SLine& line)
{
    TakeTimeRow(check, line, OpenTable(check));
}

/// The clamp's offset comes back to where it was.
void ClosePulse(SCheck& check)
{
    constexpr double kSameV = 1e-6;
    SWaveform& table = OpenTable(check);
    CheckTimeTable(check, table, kMaxPulseRows);
    for (std::size_t c = 0; c < 3; ++c) {
        const SEnds ends = EndsOf(table.value[c]);
        if (ends.Good() && std::abs(ends.first - ends.last) > kSameV) {
            check.report.WarningAt(table.place, 1723, KeywordText(table.keyword), CornerName(c),
                                   ends.first, ends.last);
            return;
        }
    }
}

// --- when it ends ------------------------------------------------------------------------------

constexpr EKeyword kClampTables[] = {EKeyword::SubmodelGNDClamp, EKeyword::SubmodelPOWERClamp,
                                     EKeyword::GNDPulseTable, EKeyword::POWERPulseTable};
constexpr EKeyword kDriverTables[] = {EKeyword::SubmodelPulldown,
                                      EKeyword::SubmodelPullup,
                                      EKeyword::SubmodelRamp,
                                      EKeyword::SubmodelRisingWaveform,
                                      EKeyword::SubmodelFallingWaveform,
                                      EKeyword::SubmodelInitialDelay};

void RefuseTables(SCheck& check, std::span<const EKeyword> tables)
{
    for (const EKeyword code : tables) {
        if (check.state.Has(code)) {
            check.report.ErrorAt(check.data.submodel.place, 1716, KeywordText(code),
                                 check.data.submodel.type);
        }
    }
}

void CheckClampTables(SCheck& check)
{
    const SSubmodel& submodel = check.data.submodel;
    RefuseTables(check, kDriverTables);
    const bool gnd = check.state.Has(EKeyword::SubmodelGNDClamp);
    const bool power = check.state.Has(EKeyword::SubmodelPOWERClamp);
    if (!gnd && !power) {
        check.report.ErrorAt(submodel.place, 1717, submodel.name, submodel.type,
                             "[GND Clamp] or [POWER Clamp]");
    }
    const auto need = [&check, &submodel](EKeyword pulse, bool met, std::string_view what) {
        if (check.state.Has(pulse) && !met) {
            check.report.WarningAt(submodel.place, 1721, KeywordText(pulse), what);
        }
    };
    need(EKeyword::GNDPulseTable, gnd, "[GND Clamp]");
    need(EKeyword::GNDPulseTable, submodel.triggerFall.HasTyp(), "V_trigger_f");
    need(EKeyword::POWERPulseTable, power, "[POWER Clamp]");
    need(EKeyword::POWERPulseTable, submodel.triggerRise.HasTyp(), "V_trigger_r");
}

void CheckDriverTables(SCheck& check)
{
    const SSubmodel& submodel = check.data.submodel;
    RefuseTables(check, kClampTables);
    if (!check.state.Has(EKeyword::SubmodelRamp)) {
        check.report.ErrorAt(submodel.place, 1717, submodel.name, submodel.type, "[Ramp]");
    }
    if (!check.state.Has(EKeyword::SubmodelPulldown) &&
        !check.state.Has(EKeyword::SubmodelPullup)) {
        check.report.ErrorAt(submodel.place, 1717, submodel.name, submodel.type,
                             "[Pulldown] or [Pullup]");
    }
    for (const std::size_t row : {0U, 1U}) {
        if ((check.data.model.specSeen >> row & 1U) == 0) {
            check.report.ErrorAt(submodel.place, 1720, submodel.name, submodel.type,
                                 kSpecRows[row].name);
        }
    }
    if (submodel.type != kFallBack && submodel.triggerFall.typ > submodel.triggerRise.typ) {
        check.report.NoteAt(submodel.place, 1724, submodel.name, submodel.triggerFall.typ,
                            submodel.triggerRise.typ);
    }
}

void CloseSubmodel(SCheck& check)
{
    const SSubmodel& submodel = check.data.submodel;
    const CPathScope path(check.report, {{}, submodel.name, KeywordText(EKeyword::Submodel), {}});
    const SSubmodelType* type = FindType(submodel.type);
    if (type != nullptr) {
        type->clamps ? CheckClampTables(check) : CheckDriverTables(check);
    } else if (check.data.model.seen == 0) {
        check.report.ErrorAt(submodel.place, 1713, submodel.name);
    }
    CheckCurveShapes(check);
    CheckTransits(check, check.state.Has(EKeyword::SubmodelGNDClamp),
                  check.state.Has(EKeyword::SubmodelPOWERClamp));
    CheckInitialDelay(check, EKeyword::SubmodelRisingWaveform, EKeyword::SubmodelFallingWaveform);
}

void FinishSubmodels(SCheck& check)
{
    for (const SModelInfo& info : check.data.models) {
        const CPathScope path(check.report,
                              {{}, info.name, KeywordText(EKeyword::AddSubmodel), {}});
        for (const SAddSubmodel& row : info.submodels) {
            ResolveAdd(check, info, row);
        }
    }
    for (const SSubmodelInfo& submodel : check.data.submodels) {
        const CPathScope path(check.report,
                              {{}, submodel.name, KeywordText(EKeyword::Submodel), {}});
        if (!submodel.used) {
            check.report.WarningAt(submodel.place, 1725, submodel.name);
        }
        if (check.data.modelNames.Find(submodel.name)) {
            check.report.WarningAt(submodel.place, 1712, submodel.name);
        }
    }
}

constexpr SSectionHandler kSections[] = {{EScope::Submodel, &CloseSubmodel}};

constexpr SHandler kHandlers[] = {
    {EKeyword::AddSubmodel, &OpenAdd, &TakeAdd, &CloseAdd},
    {EKeyword::Submodel, &OpenSubmodel, &TakeSubmodel, nullptr},
    {EKeyword::SubmodelSpec, nullptr, &TakeSpecRow, nullptr},
    {EKeyword::GNDPulseTable, &OpenPulse, &TakePulse, &ClosePulse},
    {EKeyword::POWERPulseTable, &OpenPulse, &TakePulse, &ClosePulse},
};

} // namespace

const SFamily kSubmdlFamily = {"submdl", kHandlers, kSections, &FinishSubmodels};

} // namespace zov::ibischk
