// SPDX-License-Identifier: Apache-2.0
/// [Diff Pin] and [Repeater Pin].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <string_view>

namespace zov::ibischk {

struct SDiffPin
{
    std::string_view pin;
    std::string_view inverting;
    double vdiff = kAbsent; ///< volt
    STriple delay;          ///< seconds
    SPlace place;
};

struct SRepeaterPin
{
    std::string_view receiver;
    std::string_view transmitter;
    SPlace place;
};

extern const SFamily kDifpinFamily;

} // namespace zov::ibischk
