// SPDX-License-Identifier: Apache-2.0
#include "cli/CurveFiles.h"

#include "base/File.h"
#include "cli/Reporting.h"

namespace zov::cli {

std::optional<curve::SCurveFile> LoadCurves(const std::string& path, const SStreams& streams)
{
    CResult<curve::SCurveFile> file = curve::ReadCurveFile(TextPath(path), {});
    if (!file) {
        PrintError(streams, file.Error());
        return std::nullopt;
    }
    if (file->skippedLines != 0) {
        Print(streams.err, "{}:{}: no point in this line; {} left out\n", path,
              file->firstSkippedLine, Counted(file->skippedLines, "line"));
    }
    return file.Take();
}

const std::string& NameOfCurve(const curve::CCurve& curve)
{
    return curve.Header().name.empty() ? curve.Header().legend : curve.Header().name;
}

} // namespace zov::cli
