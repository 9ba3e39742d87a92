// SPDX-License-Identifier: Apache-2.0
/// [Series Pin Mapping] and [Series Switch Groups].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SSeriesPin
{
    std::string_view pin;
    std::string_view pin2;
    std::string_view model;
    std::string_view group; ///< empty for none
    SPlace place;
};

/// One On or Off statement; it may span lines and ends with "/".
struct SSwitchState
{
    bool on = true;
    std::vector<std::string_view> groups;
    SPlace place;
};

extern const SFamily kSswchFamily;

} // namespace zov::ibischk
