// SPDX-License-Identifier: Apache-2.0
/// [External Model] and [External Circuit]: the body that both share.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SExternalPort
{
    std::string_view name;
    SPlace place;
};

/// Language, corners, ports and converters of an external model or circuit.
struct SExternal
{
    std::string_view name; ///< of the circuit; empty for a model
    SPlace place;
    std::string_view language;
    std::vector<SExternalPort> ports;
    std::vector<SExternalPort> converters; ///< d_port of each D_to_A and A_to_D line
    bool used = false;                     ///< by a [Circuit Call]
};

extern const SFamily kCircuitFamily;

} // namespace zov::ibischk
