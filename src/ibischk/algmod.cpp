// SPDX-License-Identifier: Apache-2.0
#include "ibischk/algmod.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::AlgorithmicModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndAlgorithmicModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kAlgmodFamily = {"algmod", kHandlers, {}, nullptr};

} // namespace zov::ibischk
