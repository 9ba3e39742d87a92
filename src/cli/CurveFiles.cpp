// SPDX-License-Identifier: Apache-2.0
#include "cli/CurveFiles.h"

#include "base/File.h"
#include "base/Text.h"
#include "cli/Reporting.h"
#include "curve/CurveCsv.h"
#include "curve/CurveMessages.h"

#include <memory>

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

bool IsCurveOutput(const std::string& path, const SStreams& streams)
{
    const std::string extension = ExtensionOf(TextPath(path));
    const bool good =
        EqualsNoCase(extension, ".csv") || EqualsNoCase(extension, curve::kCurveExtension);
    if (!good) {
        Print(streams.err, "zov: '{}' can't be written, expected a .cur or .csv file\n", path);
    }
    return good;
}

CResult<void> WriteCurves(const std::string& path, std::span<const curve::TCurvePtr> curves,
                          curve::EKind kind, curve::EDigits digits)
{
    const std::filesystem::path file = TextPath(path);
    if (!EqualsNoCase(ExtensionOf(file), ".csv")) {
        curve::SCurveWriteOptions options;
        options.digits = digits;
        return curve::SaveCurves(file, curves, kind, options);
    }
    ASSIGN_OR_RETURN(const std::unique_ptr<CAtomicFile> out, CAtomicFile::Create(file));
    curve::WriteCurveCsv(curves, *out);
    return out->Commit();
}

const std::string& NameOfCurve(const curve::CCurve& curve)
{
    return curve.Header().name.empty() ? curve.Header().legend : curve.Header().name;
}

} // namespace zov::cli
