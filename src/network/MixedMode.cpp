// SPDX-License-Identifier: Apache-2.0
#include "network/MixedMode.h"

#include "network/MixedModeOrder.h"
#include "network/TouchstoneMessages.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace zov::network {

namespace {

/// A row of a transformation: up to two elements that are not 0.
struct SRow
{
    std::array<std::uint32_t, 2> at{};
    std::array<double, 2> weight{};
    std::size_t count = 0;

    void Add(std::uint32_t index, double value)
    {
        at[count] = index;
        weight[count] = value;
        ++count;
    }
};

/// Weights of the dependent quantity of a pair's modes: V for Z, I for Y, waves for S.
struct SWeights
{
    double common;
    double differential;
};
SWeights WeightsOf(EParameter parameter)
{
    switch (parameter) {
    case EParameter::Z:
        return {0.5, 1.0};
    case EParameter::Y:
        return {1.0, 0.5};
    default:
        return {std::numbers::sqrt2 / 2, std::numbers::sqrt2 / 2};
    }
}

/// Physical ports to modes: P' = L P L^T.
std::vector<SRow> ModesOfPorts(const std::vector<SPort>& ports, EParameter parameter)
{
    const SWeights weights = WeightsOf(parameter);
    std::vector<SRow> rows(ports.size());
    for (std::size_t p = 0; p < ports.size(); ++p) {
        const SPort& port = ports[p];
        if (port.mode == EPortMode::SingleEnded) {
            rows[p].Add(port.first, 1.0);
            continue;
        }
        const bool common = port.mode == EPortMode::Common;
        const double weight = common ? weights.common : weights.differential;
        rows[p].Add(port.first, weight);
        rows[p].Add(port.second, common ? weight : -weight);
    }
    return rows;
}

/// The inverse of the same: a pair's 2 x 2 matrix [[c, c], [d, -d]] has [[1/2c, 1/2d], [1/2c,
/// -1/2d]].
std::vector<SRow> PortsOfModes(const std::vector<SPort>& ports, EParameter parameter)
{
    const SWeights weights = WeightsOf(parameter);
    std::vector<SRow> rows(ports.size());
    for (std::uint32_t p = 0; p < ports.size(); ++p) {
        const SPort& port = ports[p];
        if (port.mode == EPortMode::SingleEnded) {
            rows[port.first].Add(p, 1.0);
            continue;
        }
        const bool common = port.mode == EPortMode::Common;
        // Halves of roots are their own inverses here; the others are powers of two.
        const double weight = parameter == EParameter::S
                                  ? weights.common
                                  : 0.5 / (common ? weights.common : weights.differential);
        rows[port.first].Add(p, weight);
        rows[port.second].Add(p, common ? weight : -weight);
    }
    return rows;
}

void Transform(CNetworkData& data, const std::vector<SRow>& rows)
{
    const std::size_t count = rows.size();
    std::vector<TComplex> source(count * count);
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        const std::span<TComplex> matrix = data.Matrix(f);
        std::copy(matrix.begin(), matrix.end(), source.begin());
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t j = 0; j < count; ++j) {
                TComplex sum = 0.0;
                for (std::size_t a = 0; a < rows[i].count; ++a) {
                    for (std::size_t b = 0; b < rows[j].count; ++b) {
                        sum += rows[i].weight[a] * rows[j].weight[b] *
                               source[rows[i].at[a] * count + rows[j].at[b]];
                    }
                }
                matrix[i * count + j] = sum;
            }
        }
    }
}

bool IsPlain(const std::vector<SPort>& ports)
{
    for (std::size_t p = 0; p < ports.size(); ++p) {
        if (ports[p].mode != EPortMode::SingleEnded || ports[p].first != p) {
            return false;
        }
    }
    return true;
}

CResult<void> CheckModes(const std::vector<SPort>& ports, EParameter parameter)
{
    const EOrder order = CheckOrder(ports);
    if (order == EOrder::WrongPort || order == EOrder::WrongOrder) {
        return Fail(EErr::Argument, std::string(messages::kMixedModeOrder));
    }
    if (HasMixedMode(ports) && IsHybrid(parameter)) {
        return Fail(EErr::Argument, std::string(messages::kHybridMixedMode));
    }
    if (order == EOrder::WrongReferences && parameter == EParameter::S) {
        return Fail(EErr::Argument, std::string(messages::kMixedModeReferences));
    }
    return {};
}

} // namespace

CResult<void> ToSingleEnded(CNetworkData& data)
{
    if (IsPlain(data.Ports())) {
        return {};
    }
    RETURN_IF_ERROR(CheckModes(data.Ports(), data.Parameter()));
    Transform(data, PortsOfModes(data.Ports(), data.Parameter()));
    std::vector<SPort> plain = DefaultPorts(data.PortCount());
    for (std::size_t p = 0; p < plain.size(); ++p) {
        const SPort& port = data.Ports()[p];
        plain[p].referenceOhm = port.referenceOhm;
        if (port.mode == EPortMode::SingleEnded) {
            plain[port.first].name = port.name;
        }
    }
    data.Ports() = std::move(plain);
    return {};
}

CResult<void> ToModes(CNetworkData& data, const std::vector<SPort>& order)
{
    if (order.size() != data.PortCount() || !IsPlain(data.Ports())) {
        return Fail(EErr::Argument, std::string(messages::kMixedModeOrder));
    }
    std::vector<SPort> ports = order;
    for (std::size_t p = 0; p < ports.size(); ++p) {
        const SPort& old = data.Ports()[p];
        ports[p].referenceOhm = old.referenceOhm;
        if (ports[p].name.empty()) {
            const bool single =
                ports[p].mode == EPortMode::SingleEnded && ports[p].first < data.PortCount();
            ports[p].name = single ? data.Ports()[ports[p].first].name
                                   : DefaultPortName(static_cast<std::uint32_t>(p));
        }
    }
    RETURN_IF_ERROR(CheckModes(ports, data.Parameter()));
    const bool plain = IsPlain(ports);
    data.Ports() = std::move(ports);
    if (!plain) {
        Transform(data, ModesOfPorts(data.Ports(), data.Parameter()));
    }
    return {};
}

} // namespace zov::network
