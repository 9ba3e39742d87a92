// SPDX-License-Identifier: Apache-2.0
/// Finds the row of column titles, and the sheet that has one, when nobody names them.
#pragma once

#include "batch/ColumnMapping.h"
#include "sheet/Workbook.h"

#include <cstdint>

namespace zov::batch {

/// How far below the first row that holds something a row of titles is looked for.
constexpr std::uint32_t kTitleSearchRows = 50;

struct STitleRowFound
{
    std::uint32_t row = 0; ///< counted from 1; 0: none looks like a row of titles
    unsigned score = 0;
};

/// The best row of the selected sheet: the one that holds most of the mapping's titles, or without
/// a mapping most of the usual ones.
CResult<STitleRowFound> FindTitleRow(CWorkbook& book, const SMappingRequest& request);

/// Selects the visible sheet with the best row of titles; the selection stays when none has one.
CResult<void> SelectTitledSheet(CWorkbook& book, const SMappingRequest& request);

} // namespace zov::batch
