// SPDX-License-Identifier: Apache-2.0
/// Recognises the titles that part lists usually have, and units in titles ("Cnom(nF)", "DCR
/// [mOhm]", "Current, A"). The titles known are one table in ColumnTitles.cpp; a new one is a new
/// row there.
#pragma once

#include "batch/CellTolerance.h"
#include "batch/CellValue.h"
#include "batch/GeneratorFields.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov::batch {

/// A unit that stands in a title, with what it means for the cells below.
struct STitleUnit
{
    std::string_view text; ///< into the title
    int exponent = 0;
    SToleranceUnit tolerance; ///< for tolerances
};

/// The unit in a title's brackets, wherever they stand, or behind its last separator when it is one
/// of the field's quantity.
[[nodiscard]] std::optional<STitleUnit> UnitInTitle(std::string_view title, EField field);

/// Columns by field, counted from 1; 0 where no title was recognised. One column feeds one field,
/// except that a title for both tolerances feeds both, and that a list without a column for the
/// model name takes it from the maker's part number.
using CRecognised = CPerField<std::uint32_t>;
[[nodiscard]] CRecognised RecogniseTitles(std::span<const std::string_view> titles,
                                          ERecordType type);

/// How much a row looks like a row of titles: fields recognised, sure ones count twice; 0 when it
/// names no model.
[[nodiscard]] unsigned TitleScore(std::span<const std::string_view> cells, ERecordType type);

} // namespace zov::batch
