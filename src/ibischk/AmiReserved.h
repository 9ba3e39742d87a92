// SPDX-License-Identifier: Apache-2.0
/// The reserved parameters: which there are, since when, for which side, and what each may be.
#pragma once

#include "ibischk/AmiParameter.h"

#include <array>
#include <span>
#include <string_view>

namespace zov::ibischk {

/// What only parameters of one kind have to obey.
using FAmiValueRule = void (*)(SAmiCheck& ami, const SAmiParameter& p);

/// Parameters that are checked alike have the same rules.
struct SAmiRules
{
    SAmiSets sets;
    FAmiValueRule rule; ///< null for none
};

struct SReservedRow
{
    std::string_view name;
    double lowest;  ///< first version that has it; 0: any
    double highest; ///< last version that has it; 0: any
    EAmiSide side;  ///< Open: both
    const SAmiRules* rules;
};

constexpr std::size_t kReservedRows = 62;

/// The rows in their order; two names stand twice, and the first row counts.
[[nodiscard]] std::span<const SReservedRow> ReservedTable();
/// The row of a name, exactly compared; none when it is not reserved.
[[nodiscard]] std::optional<std::size_t> FindReserved(std::string_view name);

/// What Reserved_Parameters holds, by the rows of the table.
struct SAmiReserved
{
    std::array<SAmiParameter, kReservedRows> found;
    /// Not in the table, but a rule asks for it.
    SAmiParameter useV7p1Flow;

    /// The parameter of a name of the table; absent when the file has none.
    [[nodiscard]] const SAmiParameter& operator[](std::string_view name) const;
};

/// Walks Reserved_Parameters: each child by itself, then the rules across parameters.
SAmiReserved CheckReserved(SAmiCheck& ami, std::uint32_t branch);

/// The rules across parameters.
void CheckAcrossReserved(SAmiCheck& ami, const SAmiReserved& reserved);

// --- rules of single parameters ----------------------------------------------------------------

void RuleAmiVersion(SAmiCheck& ami, const SAmiParameter& p);
void RuleCount(SAmiCheck& ami, const SAmiParameter& p);         ///< 0 or more
void RulePositiveCount(SAmiCheck& ami, const SAmiParameter& p); ///< above 0
void RuleAmount(SAmiCheck& ami, const SAmiParameter& p);        ///< by name: which may be negative
void RuleProbability(SAmiCheck& ami, const SAmiParameter& p);
void RuleSupportingFiles(SAmiCheck& ami, const SAmiParameter& p);
void RuleModulation(SAmiCheck& ami, const SAmiParameter& p);
void RuleMapping(SAmiCheck& ami, const SAmiParameter& p);
void RuleLevels(SAmiCheck& ami, const SAmiParameter& p);
void RuleNumberList(SAmiCheck& ami, const SAmiParameter& p);
void RuleProtocol(SAmiCheck& ami, const SAmiParameter& p);
void RuleState(SAmiCheck& ami, const SAmiParameter& p);
void RuleTrainingMode(SAmiCheck& ami, const SAmiParameter& p);
void RuleTouchstone(SAmiCheck& ami, const SAmiParameter& p);
void RuleRepeater(SAmiCheck& ami, const SAmiParameter& p);
void RuleClockInput(SAmiCheck& ami, const SAmiParameter& p);

} // namespace zov::ibischk
