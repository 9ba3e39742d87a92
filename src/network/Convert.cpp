// SPDX-License-Identifier: Apache-2.0
#include "network/Convert.h"

#include "network/MixedMode.h"
#include "network/TouchstoneMessages.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <thread>

namespace zov::network {

namespace {

/// Frequencies [begin, end) in place; `keep` gets 0 where the parameters do not exist.
void ConvertRange(CNetworkData& data, CFormMap& map, std::size_t begin, std::size_t end,
                  std::vector<char>& keep)
{
    const std::size_t size = data.MatrixSize();
    map.ApplyAll({data.Values().data() + begin * size, (end - begin) * size},
                 {keep.data() + begin, end - begin});
}

/// Marks of the frequencies that could be converted.
std::vector<char> ConvertAll(CNetworkData& data, const CFormMap& map)
{
    const std::size_t points = data.FrequencyCount();
    std::vector<char> keep(points, 1);
    const double ports = data.PortCount();
    const std::size_t threads = ThreadsFor(static_cast<double>(points) * ports * ports *
                                           (data.PortCount() > 2 ? ports / 2 : 1.0));
    const auto bound = [&](std::size_t i) { return points * i / threads; };
    std::vector<std::jthread> helpers;
    for (std::size_t i = 1; i < threads; ++i) {
        helpers.emplace_back(
            [&data, &keep, own = map, begin = bound(i), end = bound(i + 1)]() mutable {
                ConvertRange(data, own, begin, end, keep);
            });
    }
    CFormMap own = map;
    ConvertRange(data, own, 0, bound(1), keep);
    return keep;
}

CResult<void> CheckForm(const CNetworkData& data, const SForm& to)
{
    const auto isReference = [](double ohm) { return std::isfinite(ohm) && ohm > 0.0; };
    if (to.referencesOhm.size() != data.PortCount() ||
        !std::ranges::all_of(to.referencesOhm, isReference) ||
        !std::ranges::all_of(data.ReferencesOhm(), isReference)) {
        return Fail(EErr::Argument, std::string(messages::kReferencesWrong));
    }
    if (IsHybrid(to.parameter) && data.PortCount() != 2) {
        return Fail(EErr::Argument, std::string(messages::kHybridPorts));
    }
    if (IsHybrid(to.parameter) && HasMixedMode(data.Ports())) {
        return Fail(EErr::Argument, std::string(messages::kHybridMixedMode));
    }
    return {};
}

} // namespace

std::string SingularText(EParameter parameter, const std::vector<double>& hz)
{
    constexpr std::size_t kShown = 8;
    std::string list;
    for (std::size_t i = 0; i < std::min(hz.size(), kShown); ++i) {
        list += fmt::format("{}{:f}", i == 0 ? "" : ", ", hz[i]);
    }
    if (hz.size() > kShown) {
        list += fmt::format(" and {} more", hz.size() - kShown);
    }
    return fmt::format("The derived {}-parameters are singular at frequencies: {}.",
                       LetterOf(parameter), list);
}

SForm FormOf(const CNetworkData& data)
{
    return {data.Parameter(), data.Normalised(), data.ReferencesOhm()};
}

unsigned ThreadsFor(double work)
{
    constexpr double kWorthOne = 2e7; // 20 ms: below, a thread costs about what it saves
    const double wanted = std::min(work / kWorthOne, 64.0);
    const unsigned have = std::max(1U, std::thread::hardware_concurrency());
    return std::clamp(static_cast<unsigned>(wanted), 1U, have);
}

CResult<SConverted> Convert(CNetworkData data, const SForm& to)
{
    RETURN_IF_ERROR(CheckForm(data, to));
    SConverted result{std::move(data), {}};
    CNetworkData& out = result.data;
    const CFormMap map(FormOf(out), to);
    if (!map.IsIdentity()) {
        const std::vector<SPort> modes = out.Ports();
        RETURN_IF_ERROR(ToSingleEnded(out));
        const std::vector<char> kept = ConvertAll(out, map);
        for (std::size_t f = 0; f < kept.size(); ++f) {
            if (kept[f] == 0) {
                result.singularHz.push_back(out.FrequenciesHz()[f]);
            }
        }
        if (!result.singularHz.empty()) {
            out.Keep({kept.begin(), kept.end()});
        }
        out.Declare(to.parameter, to.normalised);
        for (std::size_t p = 0; p < to.referencesOhm.size(); ++p) {
            out.Ports()[p].referenceOhm = to.referencesOhm[p];
        }
        RETURN_IF_ERROR(ToModes(out, modes));
    }
    for (std::size_t p = 0; p < to.referencesOhm.size(); ++p) {
        out.Ports()[p].referenceOhm = to.referencesOhm[p];
    }
    if (out.FrequencyCount() == 0 && !result.singularHz.empty()) {
        return Fail(EErr::Singular, SingularText(to.parameter, result.singularHz));
    }
    return result;
}

CResult<SConverted> ConvertTo(CNetworkData data, EParameter parameter)
{
    const SForm to{parameter, ENormalised::No, data.ReferencesOhm()};
    return Convert(std::move(data), to);
}

CResult<SConverted> Normalise(CNetworkData data, ENormalised normalised)
{
    SForm to = FormOf(data);
    to.normalised = to.parameter == EParameter::S ? ENormalised::No : normalised;
    return Convert(std::move(data), to);
}

CResult<SConverted> Renormalise(CNetworkData data, std::vector<double> referencesOhm)
{
    const SForm to{data.Parameter(), data.Normalised(), std::move(referencesOhm)};
    return Convert(std::move(data), to);
}

} // namespace zov::network
