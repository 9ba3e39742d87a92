// SPDX-License-Identifier: Apache-2.0
/// Case-size codes in cells: "0402", "0402E", "1005M", "C_0402_1005Metric", "0603 (1608 Metric)".
#pragma once

#include "batch/CellValue.h"
#include "batch/GeneratorFields.h"

#include <string>
#include <string_view>

namespace zov::batch {

/// A code of a library record is at least so long.
constexpr std::size_t kMinSizeLength = 4;

struct SSizeReading
{
    ECell state = ECell::Empty;
    std::string size = {};     ///< code with its system letter: "0402E", "1005M"
    std::string_view why = {}; ///< for Bad
    bool completed = false;    ///< a leading zero that the sheet had lost was put back: 402 is 0402
    bool unknown = false;      ///< no case-size code was recognised in it; kept as it stands
};

/// @param system  FromFile: a letter in the cell decides, else a code that only the metric system
///                has is metric, and every other English
[[nodiscard]] SSizeReading ReadSize(std::string_view text, ESizeSystem system);

} // namespace zov::batch
