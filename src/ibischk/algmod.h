// SPDX-License-Identifier: Apache-2.0
/// [Algorithmic Model]: the lines that name executables and parameter files.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct SExecutable
{
    std::string_view kind; ///< Executable, Executable_Rx, Executable_Tx
    std::string_view platform;
    std::string_view file;
    std::string_view parameters;
    SPlace place;
};

extern const SFamily kAlgmodFamily;

} // namespace zov::ibischk
