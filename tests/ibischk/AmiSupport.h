// SPDX-License-Identifier: Apache-2.0
/// Parameter files for tests, short enough to stand in one line of a table.
#pragma once

#include "ibischk/CheckSupport.h"

#include <string>
#include <string_view>

namespace zov::ibischk::test {

/// Where the text of a row stands.
enum class EAmiPart
{
    Reserved, ///< behind the mandatory parameters
    Specific,
    Whole
};

/// `<Info Float>` becomes `(Usage Info)(Type Float)`.
std::string Expand(std::string_view text);

/// A file of the version with everything that is mandatory; "" for none declared.
std::string AmiFile(std::string_view version, std::string_view reserved,
                    std::string_view specific = "");

struct SAmiCase
{
    std::string_view rule; ///< "id" in the family ami
    EAmiPart part;
    std::string_view version;
    std::string_view bad;
    std::string_view good;     ///< silent; "" for none
    std::string_view expected; ///< "E4625", among the findings of the bad one
};
/// Runs a row: the bad text draws the finding, by the rule's name; the good one draws nothing.
void ExpectAmiRule(const SAmiCase& row,
                   const SCheckHow& how = {.type = EFileType::Ami, .name = "test.ami"});

} // namespace zov::ibischk::test
