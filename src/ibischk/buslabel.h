// SPDX-License-Identifier: Apache-2.0
/// [Bus Label], and the labels that a component's rails carry.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>

namespace zov::ibischk {

struct SBusLabel
{
    std::string_view label;
    std::string_view signal;
    SPlace place;
};

extern const SFamily kBuslabelFamily;

} // namespace zov::ibischk
