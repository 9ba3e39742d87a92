// SPDX-License-Identifier: Apache-2.0
/// [PDN Domain] and [PDN Model].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SPdnModel
{
    std::string_view name;
    SPlace place;
    STriple c;    ///< farad
    STriple r;    ///< ohm
    STriple leak; ///< ohm
};

struct SPdnDomain
{
    std::string_view name;
    SPlace place;
    std::vector<std::string_view> signals;
    std::vector<std::string_view> labels;
    std::vector<SPdnModel> models;
};

extern const SFamily kPdndmnFamily;

} // namespace zov::ibischk
