// SPDX-License-Identifier: Apache-2.0
/// What stands before the sheets of a binary workbook: their list, number formats, shared texts.
#pragma once

#include "base/Arena.h"
#include "sheet/NumberFormat.h"
#include "sheet/WorkbookSource.h"
#include "sheet/XlsRecords.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

struct SXlsGlobals
{
    SXlsDialect dialect;
    bool date1904 = false;
    bool calculated = false; ///< a spreadsheet program has worked out the formulas
    std::vector<SSheetInfo> sheets;
    std::vector<std::uint32_t> sheetOffsets;             ///< by sheet, into the stream
    std::vector<CNumberFormat> formats{CNumberFormat()}; ///< [0] is General
    std::vector<std::uint32_t> formatOfStyle;            ///< by the index that cells carry
    std::vector<std::string_view> texts;                 ///< into the stream or the arena
    CArena arena;

    [[nodiscard]] std::uint32_t FormatIndex(std::uint16_t style) const
    {
        return style < formatOfStyle.size() ? formatOfStyle[style] : 0;
    }
};

/// Errors: Unsupported: a password, or a version before 5. Format with the offset.
CResult<SXlsGlobals> ReadXlsGlobals(std::string_view stream, const SSource& source);

} // namespace zov::sheet
