// SPDX-License-Identifier: Apache-2.0
/// [Add Submodel], [Submodel], [Submodel Spec] and pulse tables.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"
#include "ibischk/crv.h"
#include "ibischk/ramp.h"
#include "ibischk/wvfrm.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SAddSubmodel
{
    std::string_view submodel;
    std::string_view mode;
    SPlace place;
};

/// The submodel that is open; its tables are gone when it closes.
struct SSubmodel
{
    std::string_view name;
    std::string_view type;
    SPlace place;
    STriple triggerRise; ///< volt
    STriple triggerFall; ///< volt
    STriple offDelay;    ///< seconds
};

/// What is kept of a submodel.
struct SSubmodelInfo
{
    std::string_view name;
    std::string_view type;
    SPlace place;
    bool used = false; ///< by an [Add Submodel]
};

extern const SFamily kSubmdlFamily;

} // namespace zov::ibischk
