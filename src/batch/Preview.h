// SPDX-License-Identifier: Apache-2.0
/// The first rows of a part list as they would be imported.
#pragma once

#include "batch/DialogRun.h"
#include "core/Units.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zov::batch {

struct SPreviewCell
{
    std::string text;    ///< the value as it would be stored, with its unit; of a row that is left
                         ///< out the cell as it stands
    std::string finding; ///< what is to be told of it; empty when nothing is
    bool faulty = false; ///< the row is left out because of it
};

struct SPreviewRow
{
    std::uint32_t number = 0; ///< as the sheet shows it
    std::string action;       ///< "added", "failed", ..., with what is told of the row as a whole
    bool failed = false;
    std::vector<SPreviewCell> cells; ///< by SPreview::fields
};

struct SPreview
{
    std::vector<EField> fields; ///< that are mapped, in the order of the mapping table
    std::vector<SPreviewRow> rows;
    std::vector<std::string> findings; ///< of columns and the sheet
};

/// Generates from at most `rows` rows of the selected sheet into nothing. Errors: as
/// GenerateModels; they are told to `log`.
CResult<SPreview> PreviewTab(const SDialogTab& tab, CWorkbook& book, std::uint32_t rows,
                             const CDisplayUnits& units, CLogSink& log);

} // namespace zov::batch
