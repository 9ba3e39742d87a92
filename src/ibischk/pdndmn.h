// SPDX-License-Identifier: Apache-2.0
/// [PDN Domain] and [PDN Model].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"
#include "ibischk/stringlist.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SPdnModel
{
    std::string_view name;
    SPlace place;
    std::uint64_t seen = 0; ///< sub-parameters
    STriple c;              ///< farad
    STriple r;              ///< ohm
    STriple leak;           ///< ohm
};

struct SPdnDomain
{
    std::string_view name;
    SPlace place;
    std::uint64_t seen = 0; ///< sub-parameters
    std::vector<std::string_view> signals;
    std::vector<std::string_view> labels;
    std::vector<SPdnModel> models;
    CNameIndex modelNames;
};

extern const SFamily kPdndmnFamily;

} // namespace zov::ibischk
