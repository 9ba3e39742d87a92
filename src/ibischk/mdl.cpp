// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mdl.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/mdlparts.h"

#include <algorithm>
#include <utility>

namespace zov::ibischk {

namespace {

using enum EModelType;
using enum EVersion;
constexpr SModelType kTypes[] = {
    {Unknown, "", V21, false, EDrives::Nothing, false, 0.8, 2.0},
    {Input, "Input", V21, true, EDrives::Nothing, false, 0.8, 2.0},
    {Output, "Output", V21, false, EDrives::Both, false, 0.8, 2.0},
    {InOut, "I/O", V21, true, EDrives::Both, true, 0.8, 2.0},
    {ThreeState, "3-state", V21, false, EDrives::Both, true, 0.8, 2.0},
    {OpenDrain, "Open_drain", V21, false, EDrives::DownOnly, false, 0.8, 2.0},
    {InOutOpenDrain, "I/O_open_drain", V21, true, EDrives::DownOnly, true, 0.8, 2.0},
    {OpenSink, "Open_sink", V21, false, EDrives::DownOnly, false, 0.8, 2.0},
    {InOutOpenSink, "I/O_open_sink", V21, true, EDrives::DownOnly, true, 0.8, 2.0},
    {OpenSource, "Open_source", V21, false, EDrives::UpOnly, false, 0.8, 2.0},
    {InOutOpenSource, "I/O_open_source", V21, true, EDrives::UpOnly, true, 0.8, 2.0},
    {InputEcl, "Input_ECL", V21, true, EDrives::Nothing, false, -1.475, -1.165},
    {OutputEcl, "Output_ECL", V21, false, EDrives::Both, false, -1.475, -1.165},
    {InOutEcl, "I/O_ECL", V21, true, EDrives::Both, true, -1.475, -1.165},
    {ThreeStateEcl, "3-state_ECL", V32, false, EDrives::Both, true, -1.475, -1.165},
    {Terminator, "Terminator", V21, false, EDrives::Nothing, false, 0.8, 2.0},
    {Series, "Series", V32, false, EDrives::Nothing, false, 0.8, 2.0},
    {SeriesSwitch, "Series_switch", V32, false, EDrives::Nothing, true, 0.8, 2.0},
    {InputDiff, "Input_diff", V42, true, EDrives::Nothing, false, 0.8, 2.0},
    {OutputDiff, "Output_diff", V42, false, EDrives::External, false, 0.8, 2.0},
    {InOutDiff, "I/O_diff", V42, true, EDrives::External, true, 0.8, 2.0},
    {ThreeStateDiff, "3-state_diff", V42, false, EDrives::External, true, 0.8, 2.0},
};

// --- sub-parameters ----------------------------------------------------------------------------

enum ESub : std::size_t
{
    kModelType,
    kPolarity,
    kEnable,
    kVinl,
    kVinh,
    kCComp,
    kCCompPullup,
    kCCompPulldown,
    kCCompPowerClamp,
    kCCompGndClamp,
    kVmeas,
    kCref,
    kRref,
    kVref,
    kRrefDiff,
    kCrefDiff
};

using enum EEquals;
constexpr SSubParameter kSubs[] = {
    {"Model_type", V21, Without},
    {"Polarity", V21, Without},
    {"Enable", V21, Without},
    {"Vinl", V21, With},
    {"Vinh", V21, With},
    {"C_comp", V21, Without},
    {"C_comp_pullup", V42, Without, EOccurs::Once, 170},
    {"C_comp_pulldown", V42, Without, EOccurs::Once, 171},
    {"C_comp_power_clamp", V42, Without, EOccurs::Once, 172},
    {"C_comp_gnd_clamp", V42, Without, EOccurs::Once, 173},
    {"Vmeas", V21, With},
    {"Cref", V21, With},
    {"Rref", V21, With},
    {"Vref", V21, With},
    {"Rref_diff", V42, With, EOccurs::Once, 161},
    {"Cref_diff", V42, With, EOccurs::Once, 162},
};

double* NumberOf(SModel& model, std::size_t sub)
{
    switch (sub) {
    case kVinl:
        return &model.vinl;
    case kVinh:
        return &model.vinh;
    case kVmeas:
        return &model.vmeas;
    case kCref:
        return &model.cref;
    case kRref:
        return &model.rref;
    case kVref:
        return &model.vref;
    case kRrefDiff:
        return &model.rrefDiff;
    default:
        return &model.crefDiff;
    }
}

void TakeModelType(SCheck& check, const SLine& line, CTokens& tokens)
{
    const std::string_view word = TakeWord(check, line, tokens, "Model_type");
    if (word.empty()) {
        return;
    }
    const SModelType* row = FindModelType(word);
    if (row == nullptr) {
        check.report.ErrorAt(line.Place(word), 103, word);
        return;
    }
    if (!check.state.AtLeast(row->since)) {
        check.report.ErrorAt(line.Place(word), 104, word, VersionText(row->since));
    }
    OpenModel(check).type = row->type;
}

void TakeOneOfTwo(SCheck& check, const SLine& line, CTokens& tokens, std::string_view name,
                  std::string_view first, std::string_view second)
{
    const std::string_view word = TakeWord(check, line, tokens, name);
    if (!word.empty() && !EqualsNoCase(word, first) && !EqualsNoCase(word, second)) {
        check.report.ErrorAt(line.Place(word), 105, name, first, second, word);
    }
}

constexpr double kCCompUsual = 50e-12;
constexpr double kCCompSlip = 1e-6;

void TakeCapacitance(SCheck& check, const SLine& line, CTokens& tokens, std::size_t sub)
{
    const std::string_view name = kSubs[sub].name;
    const auto triple = TakeNamedTriple(check, line, tokens, name, 106);
    if (!triple) {
        return;
    }
    check.data.model.cComp[sub - kCComp] = *triple;
    const double low = std::min({triple->typ, triple->min, triple->max});
    const double lowest = low == low ? low : triple->typ;
    if (lowest < 0 || triple->min < 0 || triple->max < 0) {
        check.report.ErrorAt(line.Place(), 113, name, lowest);
    }
    CheckMagnitudeOrder(check, *triple, name, line.Place());
    if (triple->typ > kCCompUsual) {
        check.report.At(triple->typ > kCCompSlip ? EReport::Warning : EReport::Caution,
                        line.Place(), 114, name, triple->typ);
    }
}

void TakeLevel(SCheck& check, const SLine& line, CTokens& tokens, std::size_t sub)
{
    const std::string_view name = kSubs[sub].name;
    const auto value = TakeSingle(check, line, tokens, name);
    if (!value) {
        return;
    }
    *NumberOf(check.data.model, sub) = *value;
    if ((sub == kRref || sub == kRrefDiff) && *value <= 0) {
        check.report.ErrorAt(line.Place(), 122, name, *value);
    } else if ((sub == kCref || sub == kCrefDiff) && *value < 0) {
        check.report.ErrorAt(line.Place(), 113, name, *value);
    } else if (sub == kRref && (*value < 1 || *value > 1e6)) {
        check.report.Caution(line.Place(), 125, OpenModel(check).name, name, *value,
                             "1 ohm to 1 Mohm");
    } else if (sub == kCref && *value > 1e-9) {
        check.report.Caution(line.Place(), 125, OpenModel(check).name, name, *value, "0 to 1 nF");
    }
}

void TakeModelData(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    const auto sub = TakeSubParameter(check, line, tokens, kSubs, check.data.model.seen);
    if (!sub) {
        return;
    }
    switch (*sub) {
    case kModelType:
        TakeModelType(check, line, tokens);
        break;
    case kPolarity:
        TakeOneOfTwo(check, line, tokens, "Polarity", "Non-Inverting", "Inverting");
        break;
    case kEnable:
        check.data.model.enable = true;
        TakeOneOfTwo(check, line, tokens, "Enable", "Active-High", "Active-Low");
        break;
    case kCComp:
    case kCCompPullup:
    case kCCompPulldown:
    case kCCompPowerClamp:
    case kCCompGndClamp:
        TakeCapacitance(check, line, tokens, *sub);
        break;
    default:
        TakeLevel(check, line, tokens, *sub);
        break;
    }
}

// --- the section -------------------------------------------------------------------------------

void OpenModelSection(SCheck& check, const SLine& line)
{
    check.data.model.Clear();
    const std::string_view name =
        TakeName(check, line, LimitsOf(check.state.version).model, EReserved::Refused);
    SModelInfo info;
    info.name = name;
    info.place = check.state.keywordPlace;
    if (!name.empty() && check.data.modelNames.Add(name, check.data.models.size())) {
        check.report.ErrorAt(line.Place(name), 101, name);
    }
    check.data.models.push_back(std::move(info));
    check.report.Path().model = name;
}

/// What checks of the whole file want to know of the model.
void KeepFacts(SCheck& check, SModelInfo& info)
{
    const SModel& model = check.data.model;
    info.hasExternalModel = check.state.Has(EKeyword::ExternalModel);
    info.hasExternalReference = check.state.Has(EKeyword::ExternalReference);
    info.hasAlgorithmicModel = check.state.Has(EKeyword::AlgorithmicModel);
    info.hasThresholds = check.state.Has(EKeyword::ReceiverThresholds);
    info.hasGndClamp = check.state.Has(EKeyword::GNDClamp);
    info.hasPowerClamp = check.state.Has(EKeyword::POWERClamp);
    info.hasPulldown = check.state.Has(EKeyword::Pulldown);
    info.hasPullup = check.state.Has(EKeyword::Pullup);
    info.cCompTyp = model.cComp[0].typ;
    info.voltage = model.voltageRange;
    info.vinl = model.vinl;
    info.vinh = model.vinh;
}

void CloseModelSection(SCheck& check)
{
    SModelInfo& info = OpenModel(check);
    KeepFacts(check, info);
    const CPathScope path(check.report, {{}, info.name, KeywordText(EKeyword::Model), {}});
    CheckModelRules(check);
    CheckSupplies(check);
    CheckModelTables(check);
    CheckCurveShapes(check);
    CheckRamp(check);
    CheckWaveforms(check);
    CheckInitialDelay(check, EKeyword::RisingWaveform, EKeyword::FallingWaveform);
    CheckSeries(check);
    CheckSpec(check);
    CheckCornerCapacitance(check);
    CheckCCompModels(check);
    CheckConsistency(check);
}

/// Thresholds may also come from [Diff Pin], which may stand behind the model.
void FinishModels(SCheck& check)
{
    for (const SModelInfo& info : check.data.models) {
        const SModelType& type = info.Type();
        if (info.bothThresholds.line != 0 && !type.IsDiff() && !InDiffPair(check, info.name)) {
            const CPathScope path(check.report,
                                  {{}, info.name, KeywordText(EKeyword::ReceiverThresholds), {}});
            check.report.NoteAt(info.bothThresholds, 2012, info.name);
        }
        if (!type.receives || info.hasThresholds || type.IsDiff()) {
            continue;
        }
        const CPathScope path(check.report, {{}, info.name, KeywordText(EKeyword::Model), {}});
        const bool lacksLow = !STriple::Has(info.vinl);
        const bool lacksHigh = !STriple::Has(info.vinh);
        if ((lacksLow || lacksHigh) && InDiffPair(check, info.name)) {
            continue;
        }
        if (lacksLow) {
            check.report.WarningAt(info.place, 108, info.name, "Vinl", type.vinl);
        }
        if (lacksHigh) {
            check.report.WarningAt(info.place, 108, info.name, "Vinh", type.vinh);
        }
    }
    FinishSchedules(check);
}

constexpr SSectionHandler kSections[] = {{EScope::Model, &CloseModelSection}};

constexpr SHandler kHandlers[] = {
    {EKeyword::Model, &OpenModelSection, &TakeModelData, nullptr},
    {EKeyword::TemperatureRange, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::VoltageRange, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::PullupReference, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::PulldownReference, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::POWERClampReference, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::GNDClampReference, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::ExternalReference, &OpenSupply, &RefuseData, nullptr},
    {EKeyword::Rgnd, &OpenTerminator, &RefuseData, nullptr},
    {EKeyword::Rpower, &OpenTerminator, &RefuseData, nullptr},
    {EKeyword::Rac, &OpenTerminator, &RefuseData, nullptr},
    {EKeyword::Cac, &OpenTerminator, &RefuseData, nullptr},
    {EKeyword::TTgnd, &OpenTransit, &RefuseData, nullptr},
    {EKeyword::TTpower, &OpenTransit, &RefuseData, nullptr},
    {EKeyword::ModelSpec, &OpenSpec, &TakeSpec, nullptr},
    {EKeyword::DriverSchedule, &OpenSchedule, &TakeSchedule, &CloseSchedule},
    {EKeyword::On, &OpenState, nullptr, nullptr},
    {EKeyword::Off, &OpenState, nullptr, nullptr},
    {EKeyword::RSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::LSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::RlSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::CSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::LcSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::RcSeries, &OpenSeriesElement, &RefuseData, nullptr},
    {EKeyword::BeginEMIModel, &OpenEmiModel, &TakeEmiModel, &CloseEmiModel},
    {EKeyword::EndEMIModel, nullptr, nullptr, nullptr},
    {EKeyword::CCompCorner, nullptr, &TakeCornerCapacitance, nullptr},
    {EKeyword::CCompModel, &OpenCCompModel, &TakeCCompModelLine, &CloseCCompModel},
    {EKeyword::EndCCompModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kMdlFamily = {"mdl", kHandlers, kSections, &FinishModels};

const SModelType& ModelTypeRow(EModelType type)
{
    return kTypes[static_cast<std::size_t>(type)];
}

const SModelType* FindModelType(std::string_view name)
{
    for (const SModelType& row : kTypes) {
        if (!row.name.empty() && EqualsNoCase(row.name, name)) {
            return &row;
        }
    }
    return nullptr;
}

void SModel::Clear()
{
    SModel fresh;
    fresh.curves.swap(curves);
    fresh.waveforms.swap(waveforms);
    executables.clear();
    fresh.executables.swap(executables);
    fresh.diffModels = std::move(diffModels);
    *this = std::move(fresh);
}

SCurve& SModel::NewCurve(EKeyword keyword, SPlace place)
{
    if (curveCount == curves.size()) {
        curves.emplace_back();
    }
    SCurve& curve = curves[curveCount++];
    curve.Clear(keyword, place);
    return curve;
}

SWaveform& SModel::NewWaveform(EKeyword keyword, SPlace place)
{
    if (waveformCount == waveforms.size()) {
        waveforms.emplace_back();
    }
    SWaveform& waveform = waveforms[waveformCount++];
    waveform.Clear(keyword, place);
    return waveform;
}

const SCurve* SModel::FindCurve(EKeyword keyword) const
{
    for (std::size_t i = 0; i < curveCount; ++i) {
        if (curves[i].keyword == keyword) {
            return &curves[i];
        }
    }
    return nullptr;
}

} // namespace zov::ibischk
