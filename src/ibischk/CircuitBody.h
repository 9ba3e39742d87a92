// SPDX-License-Identifier: Apache-2.0
/// The body that [Interconnect Model], [EMD Model] and [C Comp Model] share: circuit file,
/// parameters, terminals.
///
///     BeginBody(body, EKeyword::EMDModel, kEmdBody, name, place);
///     TakeBodyLine(check, line, body);   // every data line
///     CloseBody(check, body);            // body.terminals is complete
#pragma once

#include "ibischk/KeywordCodes.h"
#include "ibischk/Tokens.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SCheck;

/// First numbers of the body's rules.
constexpr int kInterconnectBody = 6100;
constexpr int kEmdBody = 6700;
constexpr int kCCompBody = 6830;

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
    SPlace filePlace;
    CNameIndex parameters;
    std::string_view lastParameter;
    std::vector<STerminal> terminals; ///< those that could be read
    bool countSeen = false;           ///< Number_of_terminals, good or not
    bool terminationSeen = false;
    bool spoiled = false; ///< a terminal was refused: which are missing is not told
    SPlace countPlace;
    SPlace parameterPlace;
    SPlace terminationPlace;
};

/// Ready for the lines of a body.
void BeginBody(SCircuitBody& body, EKeyword keyword, int base, std::string_view name, SPlace place);
/// Takes a data line of the body.
void TakeBodyLine(SCheck& check, const SLine& line, SCircuitBody& body);
/// What needs the whole body.
void CloseBody(SCheck& check, SCircuitBody& body);

} // namespace zov::ibischk
