// SPDX-License-Identifier: Apache-2.0
/// [Ramp], also that of a submodel.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

namespace zov::ibischk {

struct SRamp
{
    SPlace place;
    STriple riseSwing; ///< volt
    STriple riseTime;  ///< seconds
    STriple fallSwing;
    STriple fallTime;
    double rLoad = 50.0; ///< ohm
};

extern const SFamily kRampFamily;

} // namespace zov::ibischk
