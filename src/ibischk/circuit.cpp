// SPDX-License-Identifier: Apache-2.0
#include "ibischk/circuit.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::ExternalModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndExternalModel, nullptr, nullptr, nullptr},
    {EKeyword::ExternalCircuit, nullptr, &PassOver, nullptr},
    {EKeyword::EndExternalCircuit, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kCircuitFamily = {"circuit", kHandlers, {}, nullptr};

} // namespace zov::ibischk
