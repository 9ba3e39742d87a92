// SPDX-License-Identifier: Apache-2.0
#include "network/NetworkDiff.h"

#include "network/Convert.h"
#include "network/MixedMode.h"
#include "network/MixedModeOrder.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace zov::network {

namespace {

constexpr double kSameFrequency = 1e-9;

std::string ReferenceText(const CNetworkData& data)
{
    std::string text;
    const bool equal = EqualReferences(data.Ports()) == data.PortCount();
    for (const SPort& port : data.Ports()) {
        text += fmt::format("{}{:.8g}", text.empty() ? "" : " ", port.referenceOhm);
        if (equal) {
            break;
        }
    }
    return text + " ohm";
}

std::string OrderText(const CNetworkData& data)
{
    std::string text;
    for (const SPort& port : data.Ports()) {
        text += (text.empty() ? "" : " ") + PortDescriptor(port);
    }
    return text;
}

void AddFact(std::vector<std::string>& facts, std::string_view what, const std::string& a,
             const std::string& b)
{
    if (a != b) {
        facts.push_back(fmt::format("{}: {} and {}", what, a, b));
    }
}

/// Elements of one frequency that both have.
void CompareMatrices(const CNetworkData& a, const CNetworkData& b, std::size_t fa, std::size_t fb,
                     double tolerance, SNetworkDiff& diff)
{
    const std::uint32_t ports = a.PortCount();
    for (std::uint32_t row = 0; row < ports; ++row) {
        for (std::uint32_t column = 0; column < ports; ++column) {
            const TComplex left = a.At(fa, row, column);
            const TComplex right = b.At(fb, row, column);
            const double apart = left == right ? 0.0 : std::abs(left - right);
            diff.above += apart <= tolerance ? 0 : 1;
            if (apart > diff.largest.value || std::isnan(apart)) {
                diff.largest = {apart, a.FrequenciesHz()[fa], row, column};
                diff.a = left;
                diff.b = right;
            }
        }
    }
}

CResult<CNetworkData> Comparable(const CNetworkData& data, const SForm& form)
{
    ASSIGN_OR_RETURN(SConverted converted, Convert(data, form));
    RETURN_IF_ERROR(ToSingleEnded(converted.data));
    return std::move(converted.data);
}

} // namespace

CResult<SNetworkDiff> CompareNetworks(const CNetworkData& a, const CNetworkData& b,
                                      double tolerance)
{
    SNetworkDiff diff;
    AddFact(diff.facts, "ports", std::to_string(a.PortCount()), std::to_string(b.PortCount()));
    AddFact(diff.facts, "type", std::string(1, LetterOf(a.Parameter())),
            std::string(1, LetterOf(b.Parameter())));
    if (a.PortCount() != b.PortCount()) {
        return diff;
    }
    AddFact(diff.facts, "references", ReferenceText(a), ReferenceText(b));
    AddFact(diff.facts, "order", OrderText(a), OrderText(b));
    const SForm form{a.Parameter(), ENormalised::No, a.ReferencesOhm()};
    ASSIGN_OR_RETURN(const CNetworkData left, Comparable(a, form));
    ASSIGN_OR_RETURN(const CNetworkData right, Comparable(b, form));
    const std::vector<double>& hzA = left.FrequenciesHz();
    const std::vector<double>& hzB = right.FrequenciesHz();
    std::size_t fa = 0;
    std::size_t fb = 0;
    while (fa < hzA.size() && fb < hzB.size()) {
        if (std::fabs(hzA[fa] - hzB[fb]) <= kSameFrequency * hzA[fa]) {
            CompareMatrices(left, right, fa++, fb++, tolerance, diff);
            ++diff.compared;
        } else {
            ++(hzA[fa] < hzB[fb] ? fa : fb);
        }
    }
    diff.onlyA = hzA.size() - diff.compared;
    diff.onlyB = hzB.size() - diff.compared;
    return diff;
}

} // namespace zov::network
