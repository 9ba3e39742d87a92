// SPDX-License-Identifier: Apache-2.0
/// [Node Declarations] and [Circuit Call].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SNode
{
    std::string_view name;
    SPlace place;
};

struct SPortMap
{
    std::string_view port;
    std::string_view node; ///< node or pin
    SPlace place;
};

struct SCircuitCall
{
    std::string_view circuit;
    SPlace place;
    std::uint64_t seen = 0; ///< sub-parameters
    std::string_view signalPin;
    std::string_view diffPins[2];
    std::string_view seriesPins[2];
    std::vector<SPortMap> ports;
    CNameIndex portNames; ///< to places in `ports`
};

extern const SFamily kNodeFamily;

} // namespace zov::ibischk
