// SPDX-License-Identifier: Apache-2.0
#include "batch/ImportJob.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/Messages.h"
#include "batch/TitleSearch.h"
#include "core/LibraryFiles.h"

namespace zov::batch {

namespace {

void TellDetail(const SError& error, CLogSink& log)
{
    log.Write("    " + error.Full());
    for (const std::string& note : error.notes) {
        log.Write("    " + note);
    }
}

/// What was wrong, without the advice that stands around it.
std::string ReasonOf(const SError& error)
{
    std::string reason;
    for (const std::string& note : error.notes) {
        reason += reason.empty() ? "" : "; ";
        reason += note;
    }
    return reason.empty() ? error.Full() : reason;
}

/// Passes everything on and remembers whether a record was left out.
class CRecordLog final : public CLogSink
{
public:
    explicit CRecordLog(CLogSink& log)
        : m_log(log)
    {
    }
    void Write(std::string_view text) override
    {
        leftOut = leftOut || StartsWithNoCase(text, "[Error]");
        m_log.Write(text);
    }
    bool leftOut = false;

private:
    CLogSink& m_log;
};

CResult<void> SelectSheet(CWorkbook& book, const SImportJob& job, const SMappingRequest& mapping,
                          CLogSink& log)
{
    if (!job.sheet.empty()) {
        return SelectSource(book, job.sheet, log);
    }
    if (job.generate.headerRow != 0) {
        return {};
    }
    auto selected = SelectTitledSheet(book, mapping);
    if (!selected) {
        log.Write(std::string(msg::kExcelTask));
        TellDetail(selected.Error(), log);
    }
    return selected;
}

} // namespace

CResult<CZovLibrary> LoadDestination(const std::filesystem::path& path, CLogSink& log)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        CZovLibrary library;
        library.SetPath(path);
        return library;
    }
    CRecordLog records(log);
    auto library = LoadLibrary(path, {}, records);
    if (library && records.leftOut) {
        // Saving would lose what could not be read.
        library =
            Fail(EErr::Format,
                 Text("'%s' is left as it is: not all of its records can be read", PathText(path)));
    }
    if (!library) {
        log.Write(Text(msg::kLoadFailed, PathText(path), ReasonOf(library.Error())));
    }
    return library;
}

CResult<void> SaveDestination(const CZovLibrary& library, const std::filesystem::path& path,
                              CLogSink& log)
{
    auto saved = SaveLibrary(library, path, {}, log);
    if (!saved) {
        log.Write(Text(msg::kSaveFailed, PathText(path)));
        TellDetail(saved.Error(), log);
    }
    return saved;
}

CResult<std::unique_ptr<CWorkbook>> OpenSource(const std::filesystem::path& path, CLogSink& log)
{
    auto book = OpenWorkbook(path, {.text = EText::Exact});
    if (!book) {
        const EErr code = book.Error().code;
        const bool unreachable = code == EErr::NotFound || code == EErr::Access || code == EErr::Io;
        log.Write(std::string(unreachable ? msg::kExcelInit : msg::kExcelTask));
        log.Write(Text(msg::kOpenFailed, PathText(path)));
        TellDetail(book.Error(), log);
    }
    return book;
}

CResult<void> SelectSource(CWorkbook& book, const std::string& sheet, CLogSink& log)
{
    auto selected = book.SelectSheet(sheet);
    if (!selected) {
        log.Write(Text(msg::kWorksheet, sheet));
        TellDetail(selected.Error(), log);
    }
    return selected;
}

CResult<void> RunImport(const SImportJob& job, CLogSink& log, SImportReport& report)
{
    SGenerateOptions options = job.generate;
    if (!job.mappingFile.empty()) {
        ASSIGN_OR_RETURN(options.mapping.mapping, ReadColumnMapping(job.mappingFile, log));
    }
    ASSIGN_OR_RETURN(const auto book, OpenSource(options.source, log));
    RETURN_IF_ERROR(SelectSheet(*book, job, options.mapping, log));
    CZovLibrary library;
    library.SetPath(options.destination);
    if (job.existing == EDestination::Append) {
        ASSIGN_OR_RETURN(library,
                         job.load ? job.load() : LoadDestination(options.destination, log));
    }
    RETURN_IF_ERROR(GenerateModels(*book, options, library, log, &report));
    if (job.dryRun) {
        return {};
    }
    RETURN_IF_ERROR(job.save ? job.save(std::move(library))
                             : SaveDestination(library, options.destination, log));
    report.saved = true;
    return {};
}

} // namespace zov::batch
