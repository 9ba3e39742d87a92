// SPDX-License-Identifier: Apache-2.0
/// The report of an import, for people and as JSON.
#pragma once

#include "batch/ImportReport.h"
#include "cli/Reporting.h"

namespace zov::cli {

/// @param allRows  every row, also those with nothing to tell and beyond the first fifty
/// @param dryRun   says what would be done instead of what was
void PrintImport(const batch::SImportReport& report, bool allRows, bool dryRun,
                 const SStreams& streams);
void PrintImportJson(const batch::SImportReport& report, bool dryRun, const SStreams& streams);

} // namespace zov::cli
