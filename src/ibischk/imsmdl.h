// SPDX-License-Identifier: Apache-2.0
/// [Interconnect Model Set] and [Interconnect Model].
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SInterconnectModel
{
    std::string_view name;
    SPlace place;
    SCircuitBody body;
};

struct SInterconnectSet
{
    std::string_view name;
    SPlace place;
    std::vector<SInterconnectModel> models;
    bool used = false; ///< by an [Interconnect Model Group]
};

extern const SFamily kImsmdlFamily;

} // namespace zov::ibischk
