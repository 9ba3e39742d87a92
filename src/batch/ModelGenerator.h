// SPDX-License-Identifier: Apache-2.0
/// Turns the rows of a worksheet into models of a library.
///
///     SGenerateOptions options;
///     options.mapping.type = ERecordType::Capacitor;
///     options.headerRow = 1;
///     CZovLibrary library;
///     SImportReport report;
///     RETURN_IF_ERROR(GenerateModels(*book, options, library, log, &report));
///
/// The sheet is read once, row by row; memory grows with the models only. The library is touched
/// after the last row was read: a run that fails or is stopped leaves it as it was.
#pragma once

#include "base/Sink.h"
#include "batch/BatchOptions.h"
#include "batch/ColumnMapping.h"
#include "batch/GeneratorFields.h"
#include "batch/ImportReport.h"
#include "core/ZovLibrary.h"
#include "sheet/Workbook.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace zov::batch {

struct SGenerateOptions
{
    SMappingRequest mapping;     ///< type, columns, units, constants
    std::uint32_t headerRow = 0; ///< row of the titles, counted from 1; 0: found by its titles
    ESizeSystem sizeSystem = ESizeSystem::FromFile;
    ENodeAssignment node = ENodeAssignment::Series;
    bool assumeIdeal = false; ///< see SRowSetup
    ESheetDuplicate sheetDuplicate = ESheetDuplicate::KeepTheFirst;
    ELibraryDuplicate libraryDuplicate = ELibraryDuplicate::KeepTheFirst;
    /// When set, asked once, at the first model that the library has already; true replaces.
    std::function<bool()> askReplace;
    std::filesystem::path vendorLibrary; ///< empty: none
    std::filesystem::path source;        ///< for files beside the part list
    std::filesystem::path destination;   ///< for file names relative to the library, and messages
    /// Called every few hundred rows with the row's number; false stops the run.
    std::function<bool(std::uint32_t row)> progress;
    std::uint32_t rowLimit = 0; ///< rows that hold something are read up to this many; 0: all
    bool keepRows = true; ///< the report lists every row; else only rows with something to tell
};

/// @param library  added to; when it is empty the new models become its content in one step
/// @param report   filled as far as the run came; may be null
/// Errors are told to `log` before they are returned: NotFound (a mapped title, or no row of
/// titles), Argument, Cancelled, and those of the sheet and of the vendor library.
CResult<SImportCounts> GenerateModels(CWorkbook& book, const SGenerateOptions& options,
                                      CZovLibrary& library, CLogSink& log, SImportReport* report);

} // namespace zov::batch
