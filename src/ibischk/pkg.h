// SPDX-License-Identifier: Apache-2.0
/// [Package]: the component's package values.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>

namespace zov::ibischk {

struct SPackage
{
    STriple r; ///< ohm
    STriple l; ///< henry
    STriple c; ///< farad
    std::uint64_t seen = 0;
    SPlace place;
};

extern const SFamily kPkgFamily;

} // namespace zov::ibischk
