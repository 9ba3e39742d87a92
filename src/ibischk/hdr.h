// SPDX-License-Identifier: Apache-2.0
/// The header of every file: [IBIS Ver] to [Copyright].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct SHeader
{
    std::string_view version; ///< as written
    std::string_view fileName;
    std::string_view fileRev;
    std::string_view date;
    SPlace fileNamePlace;
    bool textFound = false; ///< the open one of [Source] to [Copyright] has text
};

extern const SFamily kHdrFamily;

} // namespace zov::ibischk
