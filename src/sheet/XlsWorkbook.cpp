// SPDX-License-Identifier: Apache-2.0
#include "sheet/WorkbookSource.h"
namespace zov::sheet {
CResult<std::unique_ptr<CWorkbook>> OpenXls(CSourcePtr source)
{
    return source->Failure(EErr::Unsupported, "binary workbooks (.xls) are not read");
}
} // namespace zov::sheet
