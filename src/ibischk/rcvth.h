// SPDX-License-Identifier: Apache-2.0
/// [Receiver Thresholds].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <string_view>

namespace zov::ibischk {

struct SReceiverThresholds
{
    SPlace place;
    double vth = kAbsent;
    double vthMin = kAbsent;
    double vthMax = kAbsent;
    double vinhAc = kAbsent;
    double vinhDc = kAbsent;
    double vinlAc = kAbsent;
    double vinlDc = kAbsent;
    double tslewAc = kAbsent;
    double sensitivity = kAbsent;
    std::string_view referenceSupply;
    double vcrossLow = kAbsent;
    double vcrossHigh = kAbsent;
    double vdiffAc = kAbsent;
    double vdiffDc = kAbsent;
    double tdiffslewAc = kAbsent;
    std::uint64_t seen = 0;
};

extern const SFamily kRcvthFamily;

} // namespace zov::ibischk
