// SPDX-License-Identifier: Apache-2.0
#include "ibischk/sswch.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::SeriesPinMapping, nullptr, &PassOver, nullptr},
    {EKeyword::SeriesSwitchGroups, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kSswchFamily = {"sswch", kHandlers, {}, nullptr};

} // namespace zov::ibischk
