// SPDX-License-Identifier: Apache-2.0
/// Elements of network data as curves.
#pragma once

#include "base/Result.h"
#include "curve/CurveSet.h"
#include "network/NetworkData.h"

#include <string>
#include <vector>

namespace zov::app {

struct SMatrixChoice
{
    network::EParameter parameter = network::EParameter::S;
    /// The ports of the result; empty keeps those of the data.
    std::vector<network::SPort> order;
    std::vector<curve::SMatrixEntry> entries; ///< from 1, by the ports of the result
};

struct SNetworkCurves
{
    std::vector<curve::TCurvePtr> curves;
    curve::EUnitClass unit = curve::EUnitClass::None;
    curve::EKind kind = curve::EKind::FrequencyDomain;
    std::string note; ///< frequencies left out; empty for none
};

/// Converts, changes modes and takes elements out. Curves are named "S21" ("S2_11" when there are
/// more than 9 ports), mixed-mode ones "Sdc21_Diff(2)" with the other port's mode in the name of
/// their value, so that a saved file tells them; their legend begins with `origin`.
/// Errors: those of the conversions.
CResult<SNetworkCurves> CurvesOf(const network::CNetworkData& data, const SMatrixChoice& choice,
                                 const std::string& origin);

/// "S21", "Sdc21", "Z11"
[[nodiscard]] std::string EntryName(network::EParameter parameter,
                                    const std::vector<network::SPort>& ports,
                                    curve::SMatrixEntry entry);

} // namespace zov::app
