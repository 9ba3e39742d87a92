// SPDX-License-Identifier: Apache-2.0
/// The body that [Interconnect Model], [EMD Model] and [C Comp Model] share: circuit file,
/// parameters, terminals.
#pragma once

#include "ibischk/KeywordCodes.h"
#include "ibischk/Types.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct STerminal
{
    std::size_t number = 0;
    std::string_view type;
    std::string_view qualifier; ///< empty for none
    std::string_view entry;     ///< empty for none
    bool aggressorOnly = false;
    SPlace place;
};

struct SCircuitBody
{
    EKeyword keyword = EKeyword::NotKey;
    int base = 0;          ///< code of the body's rules: base + 5 and on
    std::string_view name; ///< of the model that holds it
    SPlace place;
    std::string_view fileKind; ///< File_TS, File_TS0, File_IBIS-ISS; empty before it is met
    std::string_view file;
    std::string_view subckt;
    std::size_t terminalCount = 0; ///< as declared; 0 before it is met
    std::vector<std::string_view> parameters;
    std::vector<STerminal> terminals;
};

} // namespace zov::ibischk
