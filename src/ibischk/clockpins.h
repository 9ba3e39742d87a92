// SPDX-License-Identifier: Apache-2.0
/// [Clock Pins].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct SClockPin
{
    std::string_view clock;
    std::string_view clocked;
    std::string_view relationship;
    SPlace place;
};

extern const SFamily kClockpinsFamily;

} // namespace zov::ibischk
