// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mdl.h"

#include "base/Text.h"
#include "ibischk/cmn.h"

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

constexpr SHandler kHandlers[] = {
    {EKeyword::Model, nullptr, &PassOver, nullptr},
    {EKeyword::TemperatureRange, nullptr, nullptr, nullptr},
    {EKeyword::VoltageRange, nullptr, nullptr, nullptr},
    {EKeyword::PullupReference, nullptr, nullptr, nullptr},
    {EKeyword::PulldownReference, nullptr, nullptr, nullptr},
    {EKeyword::POWERClampReference, nullptr, nullptr, nullptr},
    {EKeyword::GNDClampReference, nullptr, nullptr, nullptr},
    {EKeyword::ExternalReference, nullptr, nullptr, nullptr},
    {EKeyword::Rgnd, nullptr, nullptr, nullptr},
    {EKeyword::Rpower, nullptr, nullptr, nullptr},
    {EKeyword::Rac, nullptr, nullptr, nullptr},
    {EKeyword::Cac, nullptr, nullptr, nullptr},
    {EKeyword::TTgnd, nullptr, nullptr, nullptr},
    {EKeyword::TTpower, nullptr, nullptr, nullptr},
    {EKeyword::ModelSpec, nullptr, &PassOver, nullptr},
    {EKeyword::DriverSchedule, nullptr, &PassOver, nullptr},
    {EKeyword::On, nullptr, nullptr, nullptr},
    {EKeyword::Off, nullptr, nullptr, nullptr},
    {EKeyword::RSeries, nullptr, nullptr, nullptr},
    {EKeyword::LSeries, nullptr, nullptr, nullptr},
    {EKeyword::RlSeries, nullptr, nullptr, nullptr},
    {EKeyword::CSeries, nullptr, nullptr, nullptr},
    {EKeyword::LcSeries, nullptr, nullptr, nullptr},
    {EKeyword::RcSeries, nullptr, nullptr, nullptr},
    {EKeyword::BeginEMIModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMIModel, nullptr, nullptr, nullptr},
    {EKeyword::CCompCorner, nullptr, &PassOver, nullptr},
    {EKeyword::CCompModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndCCompModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kMdlFamily = {"mdl", kHandlers, {}, nullptr};

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
