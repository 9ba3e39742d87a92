// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mtx.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::ModelData, nullptr, nullptr, nullptr},
    {EKeyword::EndModelData, nullptr, nullptr, nullptr},
    {EKeyword::ResistanceMatrix, nullptr, nullptr, nullptr},
    {EKeyword::InductanceMatrix, nullptr, nullptr, nullptr},
    {EKeyword::CapacitanceMatrix, nullptr, nullptr, nullptr},
    {EKeyword::Bandwidth, nullptr, nullptr, nullptr},
    {EKeyword::Row, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kMtxFamily = {"mtx", kHandlers, {}, nullptr};

} // namespace zov::ibischk
