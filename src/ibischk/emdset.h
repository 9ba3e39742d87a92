// SPDX-License-Identifier: Apache-2.0
/// [EMD Set] and [EMD Model].
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SEmdModel
{
    std::string_view name;
    SPlace place;
    SCircuitBody body;
};

struct SEmdSet
{
    std::string_view name;
    SPlace place;
    std::vector<SEmdModel> models;
    bool used = false; ///< by an [EMD Group]
};

extern const SFamily kEmdsetFamily;

} // namespace zov::ibischk
