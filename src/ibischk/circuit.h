// SPDX-License-Identifier: Apache-2.0
/// [External Model] and [External Circuit]: the body that both share.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// A language that external models are written in.
struct SLanguage
{
    std::string_view name;
    EVersion since;
    bool analog; ///< no digital ports: converters lead to them
};

struct SExternalPort
{
    std::string_view name;
    SPlace place;
};

/// A D_to_A or A_to_D line.
struct SConverter
{
    bool toAnalog = true;
    std::string_view digital;
    std::string_view ports[2];
    std::size_t corner = 0; ///< 0 typ, 1 min, 2 max; 3 when unknown
    SPlace place;
};

/// Language, corners, ports and converters of an external model or circuit.
struct SExternal
{
    std::string_view name; ///< of the circuit; empty for a model
    SPlace place;
    std::uint64_t seen = 0; ///< sub-parameters
    const SLanguage* language = nullptr;
    bool corners[3] = {false, false, false};
    std::vector<SExternalPort> ports;
    std::vector<SConverter> converters;
    CNameIndex portNames;           ///< to places in `ports`
    CNameIndex parameters;          ///< to lines
    CNameIndex converterParameters; ///< to lines
    bool used = false;              ///< by a [Circuit Call]

    [[nodiscard]] bool HasPort(std::string_view port) const
    {
        return portNames.Find(port).has_value();
    }
};

extern const SFamily kCircuitFamily;

} // namespace zov::ibischk
