// SPDX-License-Identifier: Apache-2.0
/// What tables of numbers with typ, min and max columns have in common.
#pragma once

#include "ibischk/cmn.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// Reads a row of four numbers; NA may stand in the last three.
/// @param naCode  the report (with the keyword) when the first is NA
/// @return false when the row can't be used
bool TakeTableRow(SCheck& check, const SLine& line, SRow& row, int naCode);

/// The first column of a table that is closed, and where its rows stand.
struct STableAxis
{
    std::string_view name; ///< "voltage", "time"
    SPlace place;
    std::span<const double> value;
    std::span<const std::uint32_t> line;
};

/// Reports too few or too many rows (with keyword, count and limit).
void CheckRowCount(SCheck& check, const STableAxis& axis, std::size_t most, int fewCode,
                   int manyCode);

/// Reports `code` (with keyword and column) when typ, or another column that has any number,
/// begins or ends with NA.
void CheckColumnEnds(SCheck& check, const STableAxis& axis, const std::vector<double> (&columns)[3],
                     int code);

/// Has the column a number at all?
[[nodiscard]] bool HasNumbers(const std::vector<double>& column);
/// All that are numbers, and the place of the first and last of them; false when there are none.
struct SEnds
{
    double first = kAbsent;
    double last = kAbsent;
    std::size_t firstRow = 0;
    std::size_t lastRow = 0;

    [[nodiscard]] bool Good() const { return STriple::Has(first) && lastRow > firstRow; }
};
[[nodiscard]] SEnds EndsOf(const std::vector<double>& column);

/// What one unit in the last written digit of a number is worth; 0 when the word is no number.
[[nodiscard]] double LastDigitOf(std::string_view token);

} // namespace zov::ibischk
