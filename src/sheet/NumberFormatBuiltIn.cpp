// SPDX-License-Identifier: Apache-2.0
#include "sheet/NumberFormat.h"

#include <algorithm>

namespace zov::sheet {

CNumberFormat CNumberFormat::BuiltIn(int id)
{
    struct SBuiltIn
    {
        int id;
        std::string_view code;
    };
    // 27 to 36 and 50 to 58 are dates and times of East Asian editions; their order of day, month
    // and year is the same everywhere, their words are not.
    static constexpr SBuiltIn kBuiltIn[] = {
        {1, "0"},
        {2, "0.00"},
        {3, "#,##0"},
        {4, "#,##0.00"},
        {5, "\"$\"#,##0_);(\"$\"#,##0)"},
        {6, "\"$\"#,##0_);[Red](\"$\"#,##0)"},
        {7, "\"$\"#,##0.00_);(\"$\"#,##0.00)"},
        {8, "\"$\"#,##0.00_);[Red](\"$\"#,##0.00)"},
        {9, "0%"},
        {10, "0.00%"},
        {11, "0.00E+00"},
        {12, "# ?/?"},
        {13, "# ?\?/??"},
        {14, "m/d/yyyy"},
        {15, "d-mmm-yy"},
        {16, "d-mmm"},
        {17, "mmm-yy"},
        {18, "h:mm AM/PM"},
        {19, "h:mm:ss AM/PM"},
        {20, "h:mm"},
        {21, "h:mm:ss"},
        {22, "m/d/yyyy h:mm"},
        {27, "yyyy-mm"},
        {28, "mm-dd"},
        {29, "mm-dd"},
        {30, "m-d-yy"},
        {31, "yyyy-mm-dd"},
        {32, "h:mm"},
        {33, "h:mm:ss"},
        {34, "h:mm AM/PM"},
        {35, "h:mm:ss AM/PM"},
        {36, "yyyy-mm"},
        {37, "#,##0_);(#,##0)"},
        {38, "#,##0_);[Red](#,##0)"},
        {39, "#,##0.00_);(#,##0.00)"},
        {40, "#,##0.00_);[Red](#,##0.00)"},
        {41, "_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)"},
        {42, "_(\"$\"* #,##0_);_(\"$\"* (#,##0);_(\"$\"* \"-\"_);_(@_)"},
        {43, "_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"?\?_);_(@_)"},
        {44, "_(\"$\"* #,##0.00_);_(\"$\"* (#,##0.00);_(\"$\"* \"-\"?\?_);_(@_)"},
        {45, "mm:ss"},
        {46, "[h]:mm:ss"},
        {47, "mm:ss.0"},
        {48, "##0.0E+0"},
        {50, "yyyy-mm"},
        {51, "mm-dd"},
        {52, "yyyy-mm"},
        {53, "mm-dd"},
        {54, "mm-dd"},
        {55, "h:mm AM/PM"},
        {56, "h:mm:ss AM/PM"},
        {57, "yyyy-mm"},
        {58, "mm-dd"},
    };
    const auto* found = std::find_if(std::begin(kBuiltIn), std::end(kBuiltIn),
                                     [&](const SBuiltIn& entry) { return entry.id == id; });
    return found == std::end(kBuiltIn) ? CNumberFormat() : Parse(found->code);
}

} // namespace zov::sheet
