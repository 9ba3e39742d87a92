// SPDX-License-Identifier: Apache-2.0
#include "ibischk/clockpins.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::ClockPins, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kClockpinsFamily = {"clockpins", kHandlers, {}, nullptr};

} // namespace zov::ibischk
