// SPDX-License-Identifier: Apache-2.0
/// Figures that say whether network data can be that of a real, passive part.
#pragma once

#include "base/Result.h"
#include "network/NetworkData.h"

namespace zov::network {

struct SWorst
{
    double value = 0.0;
    double hz = 0.0;       ///< where
    std::uint32_t row = 0; ///< element, where one is meant
    std::uint32_t column = 0;
};

struct SNetworkChecks
{
    /// Largest singular value of the S-parameters over frequency; above 1 the network gives more
    /// power than it takes.
    SWorst gain;
    /// Largest |Sij - Sji|; 0 for one-ports.
    SWorst asymmetry;
    /// Least part of the turning of an element's curve in the complex plane that goes clockwise, as
    /// delays make it: 1 of a delay, below some 0.8 a curve is suspect of an effect before its
    /// cause. Steps shorter than the data's digits do not count. 1 when there are fewer than 4
    /// frequencies.
    SWorst clockwise{1.0, 0.0, 0, 0};
    std::size_t singular = 0; ///< frequencies without S-parameters, left out
};

/// Largest gain that counts as passive: rounding of the files' digits goes beyond 1.
constexpr double kPassiveGain = 1.0 + 1e-6;

/// Of data of any type. Errors: Singular when it has no S-parameters at all; Argument.
CResult<SNetworkChecks> CheckNetwork(const CNetworkData& data);

} // namespace zov::network
