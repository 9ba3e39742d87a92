// SPDX-License-Identifier: Apache-2.0
#include "ibischk/rcvth.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::ReceiverThresholds, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kRcvthFamily = {"rcvth", kHandlers, {}, nullptr};

} // namespace zov::ibischk
