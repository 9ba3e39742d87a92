// SPDX-License-Identifier: Apache-2.0
/// [EMD Set] and [EMD Model].
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct STerminalKind;

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
    CNameIndex modelNames;
};

/// The kind of a terminal of an EMD model; null when there is none of the name.
[[nodiscard]] const STerminalKind* EmdKind(std::string_view type);

extern const SFamily kEmdsetFamily;

} // namespace zov::ibischk
