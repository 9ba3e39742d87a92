// SPDX-License-Identifier: Apache-2.0
/// [Die Supply Pads].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct SSupplyPad
{
    std::string_view pad;
    std::string_view signal;
    std::string_view label; ///< empty for none
    SPlace place;
};

extern const SFamily kDspadFamily;

} // namespace zov::ibischk
