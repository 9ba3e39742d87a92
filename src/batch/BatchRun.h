// SPDX-License-Identifier: Apache-2.0
/// The batch run: one spreadsheet becomes one library file.
#pragma once

#include "base/Sink.h"
#include "batch/BatchOptions.h"

namespace zov::batch {

/// The run's steps in their fixed order; each failure is a line of the log and ends the run.
/// Nothing happens unless options.batch is set.
/// A destination that is to be replaced stays in place until the new library is complete and takes
/// its place in one step, so that a run that fails loses nothing.
/// @return true when the library was written
[[nodiscard]] bool BatchZvLibGen(const SBatchOptions& options, CLogSink& log);

} // namespace zov::batch
