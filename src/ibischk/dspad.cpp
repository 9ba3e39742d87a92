// SPDX-License-Identifier: Apache-2.0
#include "ibischk/dspad.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::DieSupplyPads, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kDspadFamily = {"dspad", kHandlers, {}, nullptr};

} // namespace zov::ibischk
