// SPDX-License-Identifier: Apache-2.0
/// What interconnect model sets, EMD sets and modules share: maker and description, kinds of
/// terminals.
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Report.h"
#include "ibischk/Tokens.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// A model of a set: [Interconnect Model], [EMD Model].
struct SSetModel
{
    std::string_view name;
    SPlace place;
    SCircuitBody body;
};

/// [Interconnect Model Set], [EMD Set].
struct SModelSet
{
    std::string_view name;
    SPlace place;
    std::vector<SSetModel> models;
    CNameIndex modelNames; ///< to places in `models`
    bool used = false;     ///< by a group
};

/// Begins a set with the name behind the current keyword; `onceCode` when a set has it already.
void OpenModelSet(SCheck& check, const SLine& line, std::vector<SModelSet>& sets, CNameIndex& names,
                  int onceCode);
/// Begins a model of a set; `onceCode` when one of the set's models has its name.
/// @param base  first code of the rules of its body
void OpenSetModel(SCheck& check, const SLine& line, SModelSet& set, int base, int onceCode);

/// [Manufacturer] or [Description]: `code` (a warning) when it is empty, longer than the limit or
/// not the first of its section.
/// @param owner  name of the set or module
void TakeSetText(SCheck& check, const SLine& line, std::size_t limit, int code,
                 std::string_view owner);

/// What an entry of a terminal line names.
enum EQualifier : unsigned
{
    kNoQualifier = 1, ///< two fields only
    kPinName = 2,
    kSignalName = 4,
    kBusLabel = 8,
    kPadName = 16
};
/// 0 for a word that is none.
[[nodiscard]] unsigned QualifierOf(const STerminal& terminal);

/// Where a terminal stands; bits, so that places of a model can be gathered.
enum EPlaceBit : unsigned
{
    kAtNothing = 0,
    kAtPin = 1,
    kAtPad = 2,
    kAtBuffer = 4
};

enum class EJoins : std::uint8_t
{
    Signal,
    Rail,
    Reference, ///< supply terminal of one buffer
    Ground     ///< the simulator's
};

struct STerminalKind
{
    std::string_view name;
    EJoins joins;
    unsigned place;
    unsigned qualifiers; ///< EQualifier bits that may stand with it
};
/// Exact case; null when there is none.
[[nodiscard]] const STerminalKind* FindKind(std::span<const STerminalKind> kinds,
                                            std::string_view name);

/// Codes of the rules that every table of terminals has.
struct STerminalRules
{
    int type;      ///< the type is not known
    int qualifier; ///< the qualifier does not suit the type
    int ground;    ///< the simulator's ground takes no qualifier
    int aggressor; ///< Aggressor_Only does not suit the type
    int once;      ///< a signal's terminal stands twice, error
    int railOnce;  ///< another terminal stands twice
    EReport railSeverity;
};
/// Checks type, qualifier and mark of each terminal, and that none stands twice.
void CheckTerminals(SCheck& check, const SCircuitBody& body, std::span<const STerminalKind> kinds,
                    const STerminalRules& rules);

} // namespace zov::ibischk
