// SPDX-License-Identifier: Apache-2.0
/// What a rule means, for people: `zov check --explain`. The texts stand in explain/*.inc, by rule:
///
///     @ curve
///     * why the rules of the family matter
///     @ curve/rows-least */rows-least     one text for several rules; "*" stands for any family
///     = what it means
///     ? usual causes
///     ! what to do
///     - a wrong line of a file
///     + a right one in its place
///
/// "{family}" stands for the family's name. A rule's own entry goes before one with "*".
#pragma once

#include "ibischk/Catalogue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SExplanation
{
    std::string meaning;
    std::string why; ///< it matters
    std::string causes;
    std::string action; ///< what to do
    std::string wrong;  ///< lines of a file; empty where no short example tells anything
    std::string right;  ///< what to write in their place
};

/// The explanation of a rule "family/id".
/// @return none when nobody has written it
[[nodiscard]] std::optional<SExplanation> Explain(std::string_view rule);

/// The rule of a message: "family/id".
[[nodiscard]] std::string RuleName(const SMessage& message);

/// What a user calls a message: "E2702", "W2702" (the letter is not looked at), "2702", or the rule
/// "family/id" with all its messages, in any case.
/// @return the messages; none when there is no such number or rule
[[nodiscard]] std::vector<const SMessage*> FindMessages(std::string_view word);

} // namespace zov::ibischk
