// SPDX-License-Identifier: Apache-2.0
#include "ibischk/submdl.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::AddSubmodel, nullptr, &PassOver, nullptr},
    {EKeyword::Submodel, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelSpec, nullptr, &PassOver, nullptr},
    {EKeyword::GNDPulseTable, nullptr, &PassOver, nullptr},
    {EKeyword::POWERPulseTable, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kSubmdlFamily = {"submdl", kHandlers, {}, nullptr};

} // namespace zov::ibischk
