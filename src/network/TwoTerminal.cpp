// SPDX-License-Identifier: Apache-2.0
#include "network/TwoTerminal.h"

#include "network/Convert.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zov::network {

namespace {

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Single-ended S-parameters of a two-port, of which most frequencies exist.
CResult<CNetworkData> ScatteringOf(const CNetworkData& data)
{
    if (data.PortCount() != 2 || data.FrequencyCount() == 0) {
        return Fail(EErr::Argument, "expected a two-port, the data has " +
                                        std::to_string(data.PortCount()) + " ports");
    }
    if (data.Parameter() == EParameter::S) {
        return data;
    }
    ASSIGN_OR_RETURN(SConverted converted, ConvertTo(data, EParameter::S));
    return std::move(converted.data);
}

/// The identities of series and shunt elements hold for equal references.
CResult<SConnectionFit> FitOfScattering(const CNetworkData& data)
{
    ASSIGN_OR_RETURN(const SConverted equal,
                     Renormalise(data, std::vector<double>(2, data.Ports()[0].referenceOhm)));
    std::vector<double> series;
    std::vector<double> shunt;
    for (std::size_t f = 0; f < equal.data.FrequencyCount(); ++f) {
        const TComplex s11 = equal.data.At(f, 0, 0);
        const TComplex s21 = equal.data.At(f, 1, 0);
        const double size = std::abs(s11) + std::abs(1.0 - s21);
        if (size > 0.0) { // 0: nothing is connected, which fits both
            series.push_back(std::abs(s11 + s21 - 1.0) / size);
            shunt.push_back(std::abs(s21 - s11 - 1.0) / size);
        }
    }
    if (series.empty()) {
        return SConnectionFit{};
    }
    return SConnectionFit{Median(std::move(series)), Median(std::move(shunt))};
}

TComplex PartOhm(const CNetworkData& data, std::size_t f, EConnection connection)
{
    if (connection == EConnection::OnePort) {
        return data.At(f, 0, 0);
    }
    const double r1 = data.Ports()[0].referenceOhm;
    const double r2 = data.Ports()[1].referenceOhm;
    const TComplex ratio = 2.0 * std::sqrt(r1 * r2) * data.At(f, 0, 0) / data.At(f, 1, 0);
    return connection == EConnection::Series ? ratio + (r1 - r2) : r1 * r2 / ((r2 - r1) - ratio);
}

STwoTerminal PartOf(const CNetworkData& data, EConnection connection)
{
    STwoTerminal part;
    part.connection = connection;
    part.hz.reserve(data.FrequencyCount());
    part.ohm.reserve(data.FrequencyCount());
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        const TComplex ohm = PartOhm(data, f, connection);
        if (std::isfinite(ohm.real()) && std::isfinite(ohm.imag())) {
            part.hz.push_back(data.FrequenciesHz()[f]);
            part.ohm.push_back(ohm);
        }
    }
    return part;
}

constexpr double kTwoPi = 2.0 * std::numbers::pi;

/// Where the reactance first changes its sign, between `below` and the point behind it.
struct SResonance
{
    std::size_t below = 0;
    double part = 0.0; ///< of the way to the next point, by the reactance
    double hz = 0.0;
};

std::optional<SResonance> ResonanceOf(const STwoTerminal& part)
{
    for (std::size_t i = 0; i + 1 < part.hz.size(); ++i) {
        const double x = part.ohm[i].imag();
        const double next = part.ohm[i + 1].imag();
        if (part.hz[i] > 0.0 && x * next < 0.0) {
            const double way = x / (x - next);
            return SResonance{i, way, part.hz[i] + way * (part.hz[i + 1] - part.hz[i])};
        }
    }
    return std::nullopt;
}

EPartKind KindOf(const STwoTerminal& part, std::size_t stop)
{
    std::array<std::size_t, 3> votes{}; // resistor, capacitor, inductor
    for (std::size_t i = 0; i < stop; ++i) {
        const TComplex ohm = part.ohm[i];
        const bool reactive = std::fabs(ohm.imag()) > std::fabs(ohm.real());
        ++votes[!reactive ? 0 : ohm.imag() < 0.0 ? 1 : 2];
    }
    const auto most = std::ranges::max_element(votes) - votes.begin();
    constexpr std::array kKinds = {EPartKind::Resistor, EPartKind::Capacitor, EPartKind::Inductor};
    return kKinds[static_cast<std::size_t>(most)];
}

/// Median of `value(w, X, 1 - (f/f0)^2)` over the frequencies well below resonance.
template <class F>
std::optional<double> MedianBelow(const STwoTerminal& part, std::optional<double> resonanceHz,
                                  F value)
{
    const double last = part.hz.back();
    for (const double limit : {resonanceHz.value_or(last) * 0.1, resonanceHz.value_or(last) * 0.7,
                               resonanceHz ? 0.0 : last}) {
        std::vector<double> values;
        for (std::size_t i = 0; i < part.hz.size() && part.hz[i] <= limit; ++i) {
            const double ratio = resonanceHz ? part.hz[i] / *resonanceHz : 0.0;
            const double one = value(kTwoPi * part.hz[i], part.ohm[i].imag(), 1.0 - ratio * ratio);
            if (part.hz[i] > 0.0 && std::isfinite(one)) {
                values.push_back(one);
            }
        }
        if (!values.empty()) {
            return Median(std::move(values));
        }
    }
    return std::nullopt;
}

std::optional<double> IfPositive(std::optional<double> value)
{
    return value && *value > 0.0 ? value : std::nullopt;
}

} // namespace

std::string_view WordOf(EConnection connection)
{
    constexpr std::array<std::string_view, 3> kWords = {"one-port", "series", "shunt"};
    return kWords[static_cast<std::size_t>(connection)];
}

std::string_view WordOf(EPartKind kind)
{
    constexpr std::array<std::string_view, 4> kWords = {"unknown", "capacitor", "inductor",
                                                        "resistor"};
    return kWords[static_cast<std::size_t>(kind)];
}

CResult<SConnectionFit> ConnectionFitOf(const CNetworkData& data)
{
    ASSIGN_OR_RETURN(const CNetworkData scattering, ScatteringOf(data));
    return FitOfScattering(scattering);
}

std::optional<EConnection> ConnectionOf(const SConnectionFit& fit)
{
    constexpr double kLimit = 0.25;
    if (fit.series >= kLimit && fit.shunt >= kLimit) {
        return std::nullopt;
    }
    return fit.series <= fit.shunt ? EConnection::Series : EConnection::Shunt;
}

CResult<STwoTerminal> TwoTerminalOf(const CNetworkData& data, std::optional<EConnection> connection)
{
    if (data.PortCount() == 1) {
        ASSIGN_OR_RETURN(const SConverted impedance, ConvertTo(data, EParameter::Z));
        return PartOf(impedance.data, EConnection::OnePort);
    }
    ASSIGN_OR_RETURN(const CNetworkData scattering, ScatteringOf(data));
    ASSIGN_OR_RETURN(const SConnectionFit fit, FitOfScattering(scattering));
    if (!connection) {
        connection = ConnectionOf(fit);
    }
    if (!connection || *connection == EConnection::OnePort) {
        return Fail(EErr::Argument,
                    "the two-port is neither a series nor a shunt element of two terminals");
    }
    STwoTerminal part = PartOf(scattering, *connection);
    part.fit = fit;
    return part;
}

SPartValues PartValuesOf(const STwoTerminal& part, EPartKind kind)
{
    SPartValues values;
    if (part.hz.empty()) {
        return values;
    }
    const std::optional<SResonance> resonance = ResonanceOf(part);
    values.kind = kind != EPartKind::Unknown
                      ? kind
                      : KindOf(part, resonance ? resonance->below + 1 : part.hz.size());
    values.resistanceOhm = part.ohm.front().real();
    if (values.kind == EPartKind::Resistor) {
        return values;
    }
    if (resonance) {
        values.resonanceHz = resonance->hz;
    }
    if (values.kind == EPartKind::Inductor) {
        values.inductanceH = IfPositive(
            MedianBelow(part, values.resonanceHz,
                        [](double w, double x, double detuned) { return detuned * x / w; }));
        return values;
    }
    values.capacitanceF =
        IfPositive(MedianBelow(part, values.resonanceHz, [](double w, double x, double detuned) {
            return -detuned / (w * x);
        }));
    values.resistanceOhm.reset();
    if (resonance) {
        const double low = part.ohm[resonance->below].real();
        values.resistanceOhm =
            low + resonance->part * (part.ohm[resonance->below + 1].real() - low);
        if (values.capacitanceF) {
            const double w0 = kTwoPi * resonance->hz;
            values.inductanceH = 1.0 / (w0 * w0 * *values.capacitanceF);
        }
    }
    return values;
}

} // namespace zov::network
