// SPDX-License-Identifier: Apache-2.0
/// What a generation saw and did, row by row: what `zov import` prints and what the dialog shows.
#pragma once

#include "base/Sink.h"
#include "batch/ColumnMapping.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::batch {

/// Something to tell about a cell, a row, a column or the sheet; rows and columns count from 1, 0
/// where none is meant.
struct SImportFinding
{
    ESeverity severity = ESeverity::Error;
    std::uint32_t row = 0;
    std::uint32_t column = 0;
    std::string columnName; ///< "C"; empty without a column
    std::string property;   ///< label; empty when none is meant
    std::string seen;       ///< text of the cell
    std::string expected;
    std::string text; ///< what is wrong, in words
};

enum class ERowAction : std::uint8_t
{
    Added,
    Replaced,         ///< took the place of a model of that name in the library
    SkippedDuplicate, ///< an earlier row has the name
    Superseded,       ///< a later row has the name and replaced it
    SkippedExisting,  ///< the library has a model of that name
    Failed
};
/// "added", "replaced", "skipped: ...", in words.
[[nodiscard]] std::string_view ActionText(ERowAction action);

struct SImportRow
{
    std::uint32_t row = 0;
    std::string name;
    ERowAction action = ERowAction::Failed;
    std::vector<SImportFinding> findings;
};

struct SImportColumn
{
    EField field = EField::ModelName;
    SColumn column;
    std::string columnName;
};
struct SUnusedColumn
{
    std::uint32_t column = 0;
    std::string columnName;
    std::string title;
};

struct SImportCounts
{
    std::size_t rows = 0; ///< rows below the titles that hold something
    std::size_t added = 0;
    std::size_t replaced = 0;
    std::size_t skippedDuplicate = 0;
    std::size_t superseded = 0;
    std::size_t skippedExisting = 0;
    std::size_t failed = 0;
    std::size_t warnings = 0;
    std::size_t errors = 0;

    /// Models that went into the library.
    [[nodiscard]] std::size_t Imported() const { return added + replaced; }
};

struct SImportReport
{
    std::string source;
    std::string sheet;
    std::string destination;
    ERecordType type = ERecordType::Any;
    std::uint32_t headerRow = 0;
    std::vector<SImportColumn> columns; ///< in the order of the mapping table
    std::vector<SUnusedColumn> unused;
    std::vector<SImportRow> rows;
    std::vector<SImportFinding> findings; ///< of columns and the sheet as a whole
    SImportCounts counts;
    bool saved = false;
};

} // namespace zov::batch
