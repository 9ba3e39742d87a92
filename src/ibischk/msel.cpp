// SPDX-License-Identifier: Apache-2.0
#include "ibischk/msel.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::ModelSelector, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kMselFamily = {"msel", kHandlers, {}, nullptr};

} // namespace zov::ibischk
