// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryArchive.h"

#include "base/File.h"
#include "base/Sha256.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"
#include "core/RecordFiles.h"

#include <deque>
#include <fmt/format.h>
#include <memory>
#include <set>
#include <zip.h>

namespace zov {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFilesFolder = "files";
constexpr const char* kSums = "SHA256SUMS";

/// Bytes in memory, for a library that goes into a zip file.
class CTextWriter final : public CByteWriter
{
public:
    void Append(std::string_view bytes) override { m_text += bytes; }
    [[nodiscard]] std::string Take() { return std::move(m_text); }

private:
    std::string m_text;
};

/// Different files of one name get "part_2.s2p", "part_3.s2p"; letters' case does not count, since
/// it does not on some systems that the archive may be opened on.
std::string FreeName(const fs::path& source, std::set<std::string>& taken)
{
    const std::string stem = PathText(source.stem());
    for (int number = 1;; ++number) {
        const std::string name =
            (number == 1 ? stem : fmt::format("{}_{}", stem, number)) + ExtensionOf(source);
        if (taken.insert(UpperCase(name)).second) {
            return fmt::format("{}/{}", kFilesFolder, name);
        }
    }
}

std::string NativeText(const CZovLibrary& library, const SArchivePlan& plan)
{
    CZovLibrary copy;
    copy.Reserve(library.Count());
    for (const CZovRcdProps* record : library.Records()) {
        VisitFiles(copy.AddCopy(*record), FFileVisitor([&](const SRecordFile& file) {
                       const auto renamed = plan.renamed.find({file.name, file.trackFolder});
                       return renamed == plan.renamed.end() ? std::string() : renamed->second;
                   }));
    }
    CTextWriter writer;
    WriteNative(copy, writer);
    return writer.Take();
}

/// Where the pieces go: a zip file or a folder.
class CArchiveTarget
{
public:
    virtual ~CArchiveTarget() = default;
    /// The bytes are kept by the caller until Finish.
    virtual CResult<void> Add(const std::string& inside, std::string_view bytes) = 0;
    virtual CResult<void> Finish() = 0;
};

class CFolderTarget final : public CArchiveTarget
{
public:
    explicit CFolderTarget(fs::path folder)
        : m_folder(std::move(folder))
    {
    }
    CResult<void> Add(const std::string& inside, std::string_view bytes) override
    {
        const fs::path path = m_folder / TextPath(inside);
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        if (error) {
            return Fail(EErr::Io, "cannot make the folder '" + PathText(path.parent_path()) +
                                      "': " + error.message());
        }
        return WriteFileAtomic(path, bytes);
    }
    CResult<void> Finish() override { return {}; }

private:
    fs::path m_folder;
};

class CZipTarget final : public CArchiveTarget
{
public:
    CZipTarget(fs::path path, std::string root)
        : m_path(std::move(path))
        , m_root(std::move(root))
        , m_zip(zip_open(PathText(m_path).c_str(), ZIP_CREATE | ZIP_TRUNCATE, &m_failure),
                zip_discard)
    {
    }
    CResult<void> Add(const std::string& inside, std::string_view bytes) override
    {
        if (!m_zip) {
            zip_error_t error;
            zip_error_init_with_code(&error, m_failure);
            const std::string reason = zip_error_strerror(&error);
            zip_error_fini(&error);
            return Fail(EErr::Io, "cannot write '" + PathText(m_path) + "': " + reason);
        }
        zip_source_t* source = zip_source_buffer(m_zip.get(), bytes.data(), bytes.size(), 0);
        const std::string name = m_root + '/' + inside;
        if (source == nullptr ||
            zip_file_add(m_zip.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8) < 0) {
            zip_source_free(source);
            return Failure();
        }
        return {};
    }
    CResult<void> Finish() override
    {
        if (zip_close(m_zip.get()) != 0) {
            return Failure();
        }
        static_cast<void>(m_zip.release());
        return {};
    }

private:
    SError Failure()
    {
        return Fail(EErr::Io,
                    "cannot write '" + PathText(m_path) + "': " + zip_strerror(m_zip.get()));
    }

    fs::path m_path;
    std::string m_root;
    int m_failure = 0;
    std::unique_ptr<zip_t, void (*)(zip_t*)> m_zip;
};

CResult<std::unique_ptr<CArchiveTarget>> NewTarget(const fs::path& target, const std::string& root)
{
    if (EqualsNoCase(ExtensionOf(target), ".zip")) {
        return std::unique_ptr<CArchiveTarget>(std::make_unique<CZipTarget>(target, root));
    }
    std::error_code ignored;
    if (fs::exists(target, ignored) && !fs::is_empty(target, ignored)) {
        return Fail(EErr::Argument, "'" + PathText(target) + "' is there already and not empty");
    }
    return std::unique_ptr<CArchiveTarget>(std::make_unique<CFolderTarget>(target));
}

} // namespace

SArchivePlan PlanArchive(const CZovLibrary& library)
{
    SArchivePlan plan;
    std::set<std::string> taken;
    std::map<fs::path, std::string> insideOf;
    std::set<std::pair<std::string, std::string>> missing;
    const fs::path folder = fs::absolute(library.Path()).parent_path();
    for (const CZovRcdProps* record : library.Records()) {
        VisitFiles(*record, [&](const SRecordFile& file) {
            const std::pair key(file.name, file.trackFolder);
            if (plan.renamed.contains(key) || missing.contains(key)) {
                return;
            }
            const fs::path found = LocateCircuitFile(folder, file.name, file.trackFolder);
            std::error_code error;
            if (found.empty() || !fs::is_regular_file(found, error)) {
                missing.insert(key);
                plan.missing.push_back({std::string(record->Name()), file.name});
                return;
            }
            const auto [at, isNew] = insideOf.try_emplace(fs::weakly_canonical(found, error));
            if (isNew) {
                at->second = FreeName(found, taken);
                plan.files.push_back({found, at->second});
            }
            plan.renamed.emplace(key, at->second);
        });
    }
    return plan;
}

CResult<void> WriteArchive(const CZovLibrary& library, const SArchivePlan& plan,
                           const fs::path& target, const FArchiveProgress& progress)
{
    const std::string root = PathText(target.stem());
    const std::string text = NativeText(library, plan);
    std::string sums;
    std::deque<CFileView> views; // before the archive, which reads them when it is finished
    ASSIGN_OR_RETURN(const std::unique_ptr<CArchiveTarget> archive, NewTarget(target, root));
    const auto add = [&](const std::string& inside, std::string_view bytes) {
        sums += Sha256Text(bytes) + "  " + inside + '\n';
        return archive->Add(inside, bytes);
    };
    const std::string name = library.Path().empty() ? root : library.Name();
    RETURN_IF_ERROR(add(name + ".zov", text));
    for (const SArchivedFile& file : plan.files) {
        const double share =
            static_cast<double>(views.size()) / static_cast<double>(plan.files.size());
        if (progress && !progress(share)) {
            return Fail(EErr::Cancelled, "the archive was not finished");
        }
        ASSIGN_OR_RETURN(CFileView view, CFileView::Open(file.source));
        views.push_back(std::move(view));
        RETURN_IF_ERROR(add(file.inside, views.back().Bytes()));
    }
    RETURN_IF_ERROR(archive->Add(kSums, sums));
    return archive->Finish();
}

} // namespace zov
