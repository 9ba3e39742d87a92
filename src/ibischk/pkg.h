// SPDX-License-Identifier: Apache-2.0
/// [Package]: the component's package values.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Values.h"

namespace zov::ibischk {

struct SPackage
{
    STriple r; ///< ohm
    STriple l; ///< henry
    STriple c; ///< farad
};

extern const SFamily kPkgFamily;

} // namespace zov::ibischk
