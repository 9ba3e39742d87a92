// SPDX-License-Identifier: Apache-2.0
#include "ibischk/ramp.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::Ramp, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelRamp, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kRampFamily = {"ramp", kHandlers, {}, nullptr};

} // namespace zov::ibischk
