// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveJournal.h"

#include "curve/CurveMessages.h"

#include <fmt/format.h>

namespace zov::curve {

namespace {

constexpr std::string_view kFileType = "CUR";

} // namespace

void JournalLoad(CCurveJournal& journal, std::string_view path, std::span<const TCurvePtr> curves)
{
    journal.Command(fmt::format("{}open CurveFile {{{}}}", kJournalPrefix, path));
    journal.Hook({"load_curve_files", {}, curves});
}

void JournalSave(CCurveJournal& journal, const SCurveSaving& saving)
{
    journal.Command(fmt::format("{}save Curve -Name {{{}}} -FileName {{{}}} -CurveGroup {{{}}} "
                                "-CurveFileType {{CUR}} -MatrixTypeToSave {{{}}}",
                                kJournalPrefix, saving.curveName, saving.fileName,
                                saving.curveGroup, saving.matrixType));
    journal.Hook({"save_curve",
                  {{"CurveName", saving.curveName},
                   {"FileName", saving.fileName},
                   {"CurveGroup", saving.curveGroup},
                   {"CurveFileType", std::string(kFileType)},
                   {"MatrixType", saving.matrixType}},
                  {}});
}

} // namespace zov::curve
