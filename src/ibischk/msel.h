// SPDX-License-Identifier: Apache-2.0
/// [Model Selector].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SSelectorRow
{
    std::string_view model;
    std::string_view description;
    SPlace place;
};

struct SModelSelector
{
    std::string_view name;
    SPlace place;
    std::vector<SSelectorRow> rows;
    bool used = false; ///< named by a pin or a series row
};

extern const SFamily kMselFamily;

} // namespace zov::ibischk
