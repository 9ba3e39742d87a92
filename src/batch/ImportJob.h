// SPDX-License-Identifier: Apache-2.0
/// A whole import: open the part list, read the mapping, generate, save. For callers that are not
/// bound to the batch command line.
#pragma once

#include "batch/ModelGenerator.h"

#include <filesystem>
#include <functional>
#include <string>

namespace zov::batch {

enum class EDestination : std::uint8_t
{
    Append, ///< an existing library is added to
    Replace ///< an existing library is replaced when the new one is complete
};

struct SImportJob
{
    SGenerateOptions generate; ///< source and destination among them
    std::string sheet; ///< empty: the visible one with the best row of titles, or the first when
                       ///< generate.headerRow names the row
    std::filesystem::path mappingFile; ///< empty: generate.mapping.mapping as it is
    EDestination existing = EDestination::Append;
    bool dryRun = false; ///< everything but the saving
    /// When set, take the place of LoadDestination and SaveDestination: for a destination that is
    /// open in the program.
    std::function<CResult<CZovLibrary>()> load;
    std::function<CResult<void>(CZovLibrary library)> save;
};

/// @param report  filled as far as the run came
/// Errors are told to `log` before they are returned.
CResult<void> RunImport(const SImportJob& job, CLogSink& log, SImportReport& report);

/// The library that a run adds to: the file's content, or an empty one when there is no such file.
/// A file that can't be read, or of which a record would be lost, is told to `log` in its fixed
/// words.
CResult<CZovLibrary> LoadDestination(const std::filesystem::path& path, CLogSink& log);

/// Saves, and tells a failure to `log` in its fixed words.
CResult<void> SaveDestination(const CZovLibrary& library, const std::filesystem::path& path,
                              CLogSink& log);

/// The part list, with numbers at their full precision. A failure is told to `log` in its fixed
/// words: one for a file that can't be had, another for one that is no usable workbook.
CResult<std::unique_ptr<CWorkbook>> OpenSource(const std::filesystem::path& path, CLogSink& log);
/// The sheet of that name. A failure is told to `log` in its fixed words.
CResult<void> SelectSource(CWorkbook& book, const std::string& sheet, CLogSink& log);

} // namespace zov::batch
