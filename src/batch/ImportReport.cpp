// SPDX-License-Identifier: Apache-2.0
#include "batch/ImportReport.h"

namespace zov::batch {

std::string_view ActionText(ERowAction action)
{
    switch (action) {
    case ERowAction::Added:
        return "added";
    case ERowAction::Replaced:
        return "replaced";
    case ERowAction::SkippedDuplicate:
        return "skipped: an earlier row has the name";
    case ERowAction::Superseded:
        return "superseded: a later row has the name";
    case ERowAction::SkippedExisting:
        return "skipped: the library has the name";
    case ERowAction::Failed:
        break;
    }
    return "failed";
}

} // namespace zov::batch
