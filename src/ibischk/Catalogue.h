// SPDX-License-Identifier: Apache-2.0
/// Every message of the checker, by number. The texts stand in catalogue/*.inc, one file per
/// subject, in rows
///
///     ZOV_MESSAGE(1009, Error, "file-name-once", "Duplicate File_name keyword.")
///
/// with the number, the usual severity, the id of the rule (its explanation is filed under
/// "family/id") and the text with %s %d %u %c %x %g conversions. Rows may stand in any order;
/// numbers must be unique and lie in a block that Catalogue.cpp knows. Both are proved by the
/// compiler.
#pragma once

#include "ibischk/Report.h"

#include <span>
#include <string_view>

namespace zov::ibischk {

struct SMessage
{
    int code;
    EReport severity; ///< what the rule usually is; a report may choose another
    std::string_view rule;
    std::string_view text;
};

/// All rows, sorted by code.
[[nodiscard]] std::span<const SMessage> Catalogue();

/// The row of a code by binary search; null when there is none.
[[nodiscard]] const SMessage* FindMessage(int code);

/// The family that owns the block of a code: "header", "pin", "curve" ...; empty outside all
/// blocks.
[[nodiscard]] std::string_view FamilyOf(int code);

} // namespace zov::ibischk
