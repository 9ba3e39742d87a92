// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryFiles.h"

#include "base/File.h"
#include "base/Text.h"

#include <fmt/format.h>

namespace zov {

namespace fs = std::filesystem;

namespace {

SError WithNote(EErr code, std::string text, const SError& cause)
{
    SError error = Fail(code, std::move(text));
    error.notes.push_back(cause.Full());
    error.notes.insert(error.notes.end(), cause.notes.begin(), cause.notes.end());
    return error;
}

CResult<CZovLibrary> LoadNative(const fs::path& path, std::vector<SOldValue>& oldValues,
                                CLogSink& log, const FLibraryProgress& progress)
{
    CZovLibrary library;
    CResult<std::vector<SOldValue>> read = Fail(EErr::Format, "the file is not a ZOV library");
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        read = view.TakeError();
    } else if (IsNativeHeader(view->Bytes(), EHeaderTest::FirstOpening)) {
        read = ReadNative(view->Bytes(), library, progress);
    }
    if (read) {
        oldValues = read.Take();
        return library;
    }
    if (read.Error().code == EErr::Cancelled) {
        return read.TakeError();
    }
    // Folder and name as the file name is composed: "%s%s.%s" of folder, name and "zov".
    const std::string folder = PathText(path.parent_path() / "");
    log.Write(
        fmt::format("[Error] failed to load: '{}{}.{}'", folder, PathText(path.stem()), "zov"));
    return WithNote(
        read.Error().code,
        fmt::format("Cannot load the ZOV library file '{}' because the file is invalid. Ensure "
                    "that the library file is valid and try again.",
                    PathText(path)),
        read.Error());
}

CResult<CZovLibrary> LoadSpice(const fs::path& path)
{
    CZovLibrary library;
    CResult<CFileView> view = CFileView::Open(path);
    CResult<std::size_t> read = view ? ImportSpice(library, view->Bytes()) : view.TakeError();
    if (!read) {
        return WithNote(
            read.Error().code,
            fmt::format("Cannot import models from '{}'. Ensure that the selected file is correct "
                        "and try again.",
                        PathText(path)),
            read.Error());
    }
    return library;
}

CResult<CZovLibrary> LoadExchange(const fs::path& path, CLogSink& log,
                                  const FLibraryProgress& progress)
{
    CZovLibrary library;
    RETURN_IF_ERROR(ImportLibrary(library, path, log, progress));
    return library;
}

/// Passes bytes on until somebody wants the work to end.
class CStoppableWriter final : public CByteWriter
{
public:
    CStoppableWriter(CByteWriter& out, const std::function<bool()>& goOn)
        : m_out(out)
        , m_goOn(goOn)
    {
    }
    void Append(std::string_view bytes) override
    {
        m_stopped = m_stopped || (m_goOn && !m_goOn());
        if (!m_stopped) {
            m_out.Append(bytes);
        }
    }
    [[nodiscard]] bool Stopped() const { return m_stopped; }

private:
    CByteWriter& m_out;
    const std::function<bool()>& m_goOn;
    bool m_stopped = false;
};

} // namespace

ELibraryForm FormOf(const fs::path& path)
{
    const std::string extension = ExtensionOf(path);
    if (EqualsNoCase(extension, ".zov")) {
        return ELibraryForm::Native;
    }
    if (EqualsNoCase(extension, ".zovx")) {
        return ELibraryForm::Exchange;
    }
    if (EqualsNoCase(extension, ".xml")) {
        return ELibraryForm::Xml;
    }
    return EqualsNoCase(extension, ".sp") ? ELibraryForm::Spice : ELibraryForm::Unknown;
}

CResult<CZovLibrary> LoadLibrary(const fs::path& path, const CDisplayUnits& units, CLogSink& log,
                                 const FLibraryProgress& progress)
{
    if (path.empty()) {
        return Fail(EErr::Argument, "Invalid ZOV file path: " + PathText(path));
    }
    std::vector<SOldValue> oldValues;
    CResult<CZovLibrary> library = [&]() -> CResult<CZovLibrary> {
        switch (FormOf(path)) {
        case ELibraryForm::Native:
            return LoadNative(path, oldValues, log, progress);
        case ELibraryForm::Exchange:
        case ELibraryForm::Xml:
            return LoadExchange(path, log, progress);
        case ELibraryForm::Spice:
            return LoadSpice(path);
        case ELibraryForm::Unknown:
            break;
        }
        return Fail(EErr::Unsupported,
                    fmt::format("cannot load '{}': its extension is '{}', expected .zov, "
                                ".zovx, .xml or .sp",
                                PathText(path), ExtensionOf(path)));
    }();
    if (!library) {
        return library;
    }
    if (CResult<void> upgraded = UpgradeLibrary(*library, oldValues, units); !upgraded) {
        return WithNote(
            EErr::Format,
            fmt::format("Cannot upgrade the old ZOV library file '{}' with the new version of ZOV "
                        "because the file is invalid. Ensure that the library file is valid and "
                        "try again.",
                        PathText(path)),
            upgraded.Error());
    }
    library->SetPath(path);
    return library;
}

CResult<void> SaveLibrary(const CZovLibrary& library, const fs::path& path,
                          const CDisplayUnits& units, CLogSink& log,
                          const std::function<bool()>& goOn)
{
    const ELibraryForm form = FormOf(path);
    if (form != ELibraryForm::Native && form != ELibraryForm::Exchange) {
        return Fail(EErr::Unsupported,
                    fmt::format("cannot save '{}': its extension is '{}', expected .zov or "
                                ".zovx",
                                PathText(path), ExtensionOf(path)));
    }
    ASSIGN_OR_RETURN(const std::unique_ptr<CAtomicFile> file, CAtomicFile::Create(path));
    CStoppableWriter out(*file, goOn);
    if (form == ELibraryForm::Native) {
        WriteNative(library, out);
    } else {
        WriteExchange(library, units, out, log);
    }
    if (out.Stopped()) {
        return Fail(EErr::Cancelled, "cancelled");
    }
    return file->Commit();
}

} // namespace zov
