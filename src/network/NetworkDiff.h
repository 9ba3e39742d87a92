// SPDX-License-Identifier: Apache-2.0
/// Two sets of network data compared.
#pragma once

#include "base/Result.h"
#include "network/NetworkChecks.h"

namespace zov::network {

struct SNetworkDiff
{
    std::vector<std::string> facts; ///< "ports: 2, 3" and the like that differ besides the values
    std::size_t compared = 0;       ///< frequencies that both have
    std::size_t onlyA = 0;
    std::size_t onlyB = 0;
    std::size_t above = 0; ///< elements whose difference is above the tolerance
    SWorst largest;        ///< difference of an element; row and column from 0
    TComplex a;            ///< the two values there
    TComplex b;
};

/// Compares as the type of A, in ohm and siemens, single-ended; B is converted when its type
/// differs, and brought to A's references. Frequencies count as the same within 1e-9 of them.
/// @param tolerance  largest |difference| that is none
/// Errors: Singular or Argument when one of them cannot be converted.
CResult<SNetworkDiff> CompareNetworks(const CNetworkData& a, const CNetworkData& b,
                                      double tolerance);

} // namespace zov::network
