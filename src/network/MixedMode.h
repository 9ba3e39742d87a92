// SPDX-License-Identifier: Apache-2.0
/// Single-ended ports to common and differential modes and back.
///
/// Of a pair (1, 2): Vd = V1 - V2, Id = (I1 - I2) / 2, Vc = (V1 + V2) / 2, Ic = I1 + I2. With equal
/// references R of the two, the modes' are 2 R and R / 2, and the waves are
/// ad = (a1 - a2) / sqrt(2), ac = (a1 + a2) / sqrt(2).
#pragma once

#include "base/Result.h"
#include "network/NetworkData.h"

namespace zov::network {

/// In place: matrices over the physical ports in their order. Data without mixed modes in the order
/// of its physical ports stays as it is.
/// Errors: Argument (kMixedModeOrder, kHybridMixedMode).
CResult<void> ToSingleEnded(CNetworkData& data);

/// In place, from single-ended data in the order of its physical ports: modes and physical ports of
/// `order`, one entry a port; references stay those of the data, names become those of `order`
/// where it has some.
/// Errors: Argument: kMixedModeOrder; kMixedModeReferences for S of unequal pairs;
/// kHybridMixedMode.
CResult<void> ToModes(CNetworkData& data, const std::vector<SPort>& order);

} // namespace zov::network
