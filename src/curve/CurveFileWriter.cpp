// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "curve/CurveFile.h"
#include "curve/CurveLines.h"

#include <fmt/format.h>

namespace zov::curve {

namespace {

class CTextStream final : public CCurveStream
{
public:
    [[nodiscard]] bool Write(std::string_view piece) override
    {
        text += piece;
        return true;
    }
    std::string text;
};

/// A file that is being written; what went wrong is told at its end.
class CFileStream final : public CCurveStream
{
public:
    explicit CFileStream(CAtomicFile& file)
        : m_file(file)
    {
    }
    [[nodiscard]] bool Write(std::string_view piece) override
    {
        m_file.Append(piece);
        return true;
    }

private:
    CAtomicFile& m_file;
};

CResult<void> CheckLines(std::string_view text)
{
    for (const std::string_view line : Split(text, '\n')) {
        if (line.size() >= kLineRoom) {
            return Fail(EErr::Format, fmt::format("a line of the curve would have {} characters, a "
                                                  "curve file holds {}: {}...",
                                                  line.size(), kLineRoom - 1, line.substr(0, 40)));
        }
    }
    return {};
}

/// A reader takes two numbers a line as points of a real value only.
EKind WrittenKind(EKind kind, bool pairsOnly)
{
    return pairsOnly && (HasComplexValues(kind) || kind == EKind::Fixed) ? EKind::Voltage : kind;
}

TValueMask WrittenValues(const CCurve& curve, EKind kind, const SCurveWriteOptions& options)
{
    if (options.values != 0) {
        return options.values;
    }
    const bool complex = HasComplexValues(kind) || kind == EKind::Fixed;
    return curve.StoredValues() | (complex ? kFirstValue : TValueMask{1});
}

CResult<void> WriteCurves(CCurveStream& stream, std::span<const TCurvePtr> curves, EKind kind,
                          const SCurveWriteOptions& options)
{
    const std::string_view banner = BannerOf(WrittenKind(kind, options.pairsOnly));
    bool good = stream.Write(fmt::format("{}\n", banner));
    for (const TCurvePtr& curve : curves) {
        const TValueMask values = WrittenValues(*curve, kind, options);
        RETURN_IF_ERROR(CheckLines(AttributeLines(curve->Header())));
        RETURN_IF_ERROR(CheckLines(options.pairsOnly ? curve->PairHeaderLine(options.entry, values)
                                                     : curve->HeaderLine(options.entry)));
        good =
            good && curve->Write(&stream, options.entry, values, options.pairsOnly, options.digits);
    }
    return good ? CResult<void>() : Fail(EErr::Io, "the curve could not be written");
}

} // namespace

CResult<std::string> CurveFileText(std::span<const TCurvePtr> curves, EKind kind,
                                   const SCurveWriteOptions& options)
{
    CTextStream stream;
    RETURN_IF_ERROR(WriteCurves(stream, curves, kind, options));
    return std::move(stream.text);
}

CResult<void> SaveCurves(const std::filesystem::path& path, std::span<const TCurvePtr> curves,
                         EKind kind, const SCurveWriteOptions& options)
{
    ASSIGN_OR_RETURN(const std::unique_ptr<CAtomicFile> file, CAtomicFile::Create(path));
    CFileStream stream(*file);
    RETURN_IF_ERROR(WriteCurves(stream, curves, kind, options));
    return file->Commit();
}

CResult<void> SaveCurveFile(const std::filesystem::path& path, const TCurvePtr& curve, EKind kind,
                            const SCurveWriteOptions& options, CCurveJournal& journal)
{
    RETURN_IF_ERROR(SaveCurves(path, std::span(&curve, 1), kind, options));
    const SCurveHeader& header = curve->Header();
    JournalSave(journal, {header.name.empty() ? header.legend : header.name, PathText(path),
                          options.curveGroup, options.matrixType});
    return {};
}

} // namespace zov::curve
