// SPDX-License-Identifier: Apache-2.0
/// Network data at other frequencies.
#pragma once

#include "base/Result.h"
#include "network/NetworkData.h"

namespace zov::network {

/// Real and imaginary parts on straight lines between the neighbours; a frequency of the data gives
/// its values to the bit. Nothing is made up beyond the ends.
/// @param hz  rising
/// Errors: Argument: a frequency outside the data's, or not above the one before.
CResult<CNetworkData> Interpolate(const CNetworkData& data, const std::vector<double>& hz);

enum class ESpacing
{
    Linear,
    Logarithmic
};
/// `count` frequencies from the first to the last, both exactly there.
/// Errors: Argument: fewer than 2, not rising, or a logarithmic one from 0.
CResult<std::vector<double>> FrequencyList(double firstHz, double lastHz, std::size_t count,
                                           ESpacing spacing);

} // namespace zov::network
