// SPDX-License-Identifier: Apache-2.0
#include "ibischk/node.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::NodeDeclarations, nullptr, &PassOver, nullptr},
    {EKeyword::EndNodeDeclarations, nullptr, nullptr, nullptr},
    {EKeyword::CircuitCall, nullptr, &PassOver, nullptr},
    {EKeyword::EndCircuitCall, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kNodeFamily = {"node", kHandlers, {}, nullptr};

} // namespace zov::ibischk
