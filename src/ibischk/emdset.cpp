// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emdset.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::EMDSet, nullptr, nullptr, nullptr},
    {EKeyword::EmdSetManufacturer, nullptr, nullptr, nullptr},
    {EKeyword::EmdSetDescription, nullptr, nullptr, nullptr},
    {EKeyword::EMDModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndEMDModel, nullptr, nullptr, nullptr},
    {EKeyword::EndEMDSet, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kEmdsetFamily = {"emdset", kHandlers, {}, nullptr};

} // namespace zov::ibischk
