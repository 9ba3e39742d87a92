// SPDX-License-Identifier: Apache-2.0
#include "curve/ImpedanceCurve.h"

#include "curve/RecordNetwork.h"
#include "network/TouchstoneReader.h"
#include "network/TwoTerminal.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace zov::curve {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kValueName = "Z_real_imag";
/// Tells a reader of the saved curve that its values are in ohms.
constexpr std::string_view kTitles = "Freq(Hz)\tReal(Ohm)\tImag(Ohm)";

TCurvePtr MakeCurve(std::string_view name)
{
    auto curve = std::make_shared<CCurve>();
    SCurveHeader& header = curve->Header();
    header.name = name;
    header.valueName = kValueName;
    header.legend = name;
    header.columnTitles = kTitles;
    return curve;
}

void AddPoint(CCurve& curve, double hz, std::complex<double> ohm)
{
    curve.Points().Add(std::array{hz, ohm.real(), ohm.imag()});
}

TCurvePtr CurveOf(std::string_view name, const SSeriesRlc& part, std::span<const double> hz)
{
    TCurvePtr curve = MakeCurve(name);
    curve->Points().Reserve(hz.size(), 3);
    for (const double f : hz) {
        AddPoint(*curve, f, ImpedanceOf(part, f));
    }
    return curve;
}

SError Lacks(const CZovRcdProps& record, std::string_view what)
{
    return Fail(EErr::NotFound, fmt::format("record '{}' has no {}", record.Name(), what));
}

CResult<SSeriesRlc> PlainValues(const CZovRcdProps& record, const SDiscreteModel& model)
{
    const SSeriesRlc part{model.resistance.value_or(0.0), model.inductance.value_or(0.0),
                          model.capacitance.value_or(0.0)};
    if (record.Type() == ERecordType::Capacitor && !(part.farad > 0.0)) {
        return Lacks(record, "capacitance");
    }
    if (record.Type() == ERecordType::Inductor && !model.inductance) {
        return Lacks(record, "inductance");
    }
    if (record.Type() == ERecordType::Resistor && !model.resistance) {
        return Lacks(record, "resistance");
    }
    return part;
}

CResult<TCurvePtr> CurveOfFile(const CZovRcdProps& record, const SDiscreteModel& model,
                               const fs::path& folder, CDiagSink& diag)
{
    ASSIGN_OR_RETURN(const SNetworkFile file, NetworkFileOf(record, model, folder));
    ASSIGN_OR_RETURN(const network::CNetworkData data, network::ReadTouchstone(file.path, diag));
    CResult<network::STwoTerminal> part = network::TwoTerminalOf(data);
    if (!part && data.PortCount() == 2 && file.wired) {
        part = network::TwoTerminalOf(data, file.wired);
    }
    if (!part) {
        return part.TakeError();
    }
    TCurvePtr curve = MakeCurve(record.Name());
    curve->Points().Reserve(part->hz.size(), 3);
    for (std::size_t i = 0; i < part->hz.size(); ++i) {
        AddPoint(*curve, part->hz[i], part->ohm[i]);
    }
    return curve;
}

CResult<std::vector<TCurvePtr>> OfDiscrete(const CZovRcdProps& record, std::span<const double> hz,
                                           const fs::path& folder, CDiagSink& diag)
{
    const auto model = record.GetDiscreteModel();
    if (!model) {
        return Lacks(record, "model");
    }
    if (model->isCircuit) {
        ASSIGN_OR_RETURN(TCurvePtr curve, CurveOfFile(record, *model, folder, diag));
        return std::vector{std::move(curve)};
    }
    ASSIGN_OR_RETURN(const SSeriesRlc part, PlainValues(record, *model));
    return std::vector{CurveOf(record.Name(), part, hz)};
}

CResult<std::vector<TCurvePtr>> OfVrm(const CZovRcdProps& record, std::span<const double> hz)
{
    const auto* model = record.GetComposite<SVrmModel>();
    std::vector<TCurvePtr> curves;
    for (std::size_t i = 0; model != nullptr && i < model->rails.size(); ++i) {
        if (const auto ohm = model->rails[i].pinResistance) {
            const std::string name = model->rails.size() == 1
                                         ? std::string(record.Name())
                                         : fmt::format("{}.{}", record.Name(), i + 1);
            curves.push_back(CurveOf(name, {*ohm, 0.0, 0.0}, hz));
        }
    }
    if (curves.empty()) {
        return Lacks(record, "rail with a pin resistance");
    }
    return curves;
}

} // namespace

std::vector<double> SweepHz(const SSweep& sweep)
{
    std::vector<double> hz;
    if (!(sweep.fromHz > 0.0) || !(sweep.toHz >= sweep.fromHz) || !std::isfinite(sweep.toHz)) {
        return hz;
    }
    hz.reserve(sweep.points);
    const double steps = static_cast<double>(sweep.points) - 1.0;
    // In decades, so that decades come out as powers of ten.
    const double from = std::log10(sweep.fromHz);
    const double decades = std::log10(sweep.toHz) - from;
    for (std::size_t i = 0; i < sweep.points; ++i) {
        const bool isLast = i > 0 && i + 1 == sweep.points;
        const double exponent = from + decades * static_cast<double>(i) / steps;
        hz.push_back(i == 0 ? sweep.fromHz : isLast ? sweep.toHz : std::pow(10.0, exponent));
    }
    return hz;
}

std::complex<double> ImpedanceOf(const SSeriesRlc& part, double hz)
{
    const double w = 2.0 * std::numbers::pi * hz;
    const double capacitive = part.farad == 0.0 ? 0.0 : 1.0 / (w * part.farad);
    return {part.ohm, w * part.henry - capacitive};
}

CResult<std::vector<TCurvePtr>> ImpedancesOf(const CZovRcdProps& record, std::span<const double> hz,
                                             const fs::path& folder, CDiagSink& diag)
{
    if (IsDiscrete(record.Type())) {
        return OfDiscrete(record, hz, folder, diag);
    }
    if (record.Type() == ERecordType::Vrm) {
        return OfVrm(record, hz);
    }
    return Fail(EErr::Unsupported,
                fmt::format("record '{}' is neither a discrete part nor a VRM", record.Name()));
}

TCurvePtr MagnitudeOf(const CCurve& curve)
{
    auto magnitude = std::make_shared<CCurve>();
    magnitude->Header().legend = fmt::format("|{}|", curve.Header().legend);
    magnitude->Header().style = curve.Header().style;
    magnitude->Points().Reserve(curve.Points().Count(), 2);
    for (std::size_t i = 0; i < curve.Points().Count(); ++i) {
        const SCurvePoint point = curve.Points().At(i);
        magnitude->Points().Add(
            std::array{point.x, std::hypot(point.values[0].real(), point.values[0].imag())});
    }
    return magnitude;
}

} // namespace zov::curve
