// SPDX-License-Identifier: Apache-2.0
#include "ibischk/buslabel.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::BusLabel, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kBuslabelFamily = {"buslabel", kHandlers, {}, nullptr};

} // namespace zov::ibischk
