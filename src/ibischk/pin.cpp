// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pin.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::Pin, nullptr, &PassOver, nullptr},
    {EKeyword::PinMapping, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kPinFamily = {"pin", kHandlers, {}, nullptr};

} // namespace zov::ibischk
