// SPDX-License-Identifier: Apache-2.0
/// A brief that a person changed, taken over into its record.
#pragma once

#include "base/Result.h"
#include "ui/replay/Brief.h"

namespace zov::ui::replay {

/// Lines may be taken out; their delays, asynchronous marks and typed texts may be changed. What
/// else a line says names what the record holds, and has to stay.
/// @return Format with the line that is no action of the record, Limit when more is changed than
///         can be compared
CResult<SRecord> ApplyBrief(const SRecord& record, const SBrief& brief, const std::string& file);

} // namespace zov::ui::replay
