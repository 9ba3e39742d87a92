// SPDX-License-Identifier: Apache-2.0
/// Parameter files: the driver of their check.
///
///     if (const auto text = ReadAmiText(check, bytes)) {
///         const SAmiFacts facts = CheckAmi(check, *text, EAmiSide::Open);
///     }
#pragma once

#include "ibischk/AmiFacts.h"
#include "ibischk/AmiReader.h"
#include "ibischk/Check.h"

#include <string_view>

namespace zov::ibischk {

/// Checks the joined text of the check's file; its type stands in check.state.
/// @param side  of the channel, when the model that names the file tells it
SAmiFacts CheckAmi(SCheck& check, const SAmiText& text, EAmiSide side);

/// Checks a parameter file that the checked file names, with the same report.
/// @param type  Ami or Parameters
/// @return facts with `read` false when there is no such file or it holds no tree
SAmiFacts CheckNamedAmi(SCheck& check, std::string_view name, EFileType type, EAmiSide side);

} // namespace zov::ibischk
