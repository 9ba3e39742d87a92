// SPDX-License-Identifier: Apache-2.0
/// [Ramp], also that of a submodel.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>

namespace zov::ibischk {

struct SRamp
{
    SPlace place;
    STriple riseSwing; ///< volt
    STriple riseTime;  ///< seconds
    STriple fallSwing;
    STriple fallTime;
    double rLoad = 50.0; ///< ohm
    std::uint64_t seen = 0;
};

struct SCheck;
/// Is it there by the model's type, and within the supplies? When a model ends.
void CheckRamp(SCheck& check);

extern const SFamily kRampFamily;

} // namespace zov::ibischk
