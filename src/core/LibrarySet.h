// SPDX-License-Identifier: Apache-2.0
/// The open libraries: at most one project library, and external ones in order, each on or off.
///
///     CLibrarySet set;
///     RETURN_IF_ERROR(set.Open("board.zovp", log, questions));
///     for (const auto& library : set.ActiveLibraries()) ...
#pragma once

#include "base/Questions.h"
#include "core/LibraryFiles.h"
#include "core/SetConfiguration.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zov {

struct SLibraryEntry
{
    std::shared_ptr<CZovLibrary> library;
    std::filesystem::path path; ///< empty for a library that was never saved
    bool project = false;
    bool on = true;
    bool remember = true; ///< external: it is written to the preference file

    /// "*New Library*" for one that was never saved, else the file's name without extension.
    [[nodiscard]] std::string DisplayName() const;
    /// As lists show it: "%s (%s)" of name and path; the name alone without a path.
    [[nodiscard]] std::string Listed() const;
};

enum class EOpened
{
    Ignored, ///< another extension, or no such file
    Opened,
    Refused ///< a project library is open and was not to be replaced; the log has the message
};

class CLibrarySet
{
public:
    explicit CLibrarySet(CDisplayUnits units = {})
        : m_units(units)
        , m_cache(units)
    {
    }

    /// Null when there is none.
    [[nodiscard]] const SLibraryEntry* Project() const;
    [[nodiscard]] const std::vector<SLibraryEntry>& Externals() const { return m_externals; }
    /// The project library, then the external ones in order.
    [[nodiscard]] std::vector<const SLibraryEntry*> Entries() const;
    /// The libraries that a search looks into: those of Entries() that are switched on.
    [[nodiscard]] std::vector<std::shared_ptr<CZovLibrary>> ActiveLibraries() const;
    /// The sets of the configuration loaded last.
    [[nodiscard]] const std::vector<SExternalLibSet>& ExternalLibSets() const { return m_sets; }

    /// By extension, without regard to case: ".zovp" opens the external libraries that it lists and
    /// the project library beside it (a ".zov" of the same name, else one named like the folder);
    /// ".zov", ".zovx", ".xml" and ".sp" open a project library. Anything else is ignored, and so
    /// is a path that does not exist.
    /// @param questions  asked before a project library is replaced; null: refused instead
    /// Errors: as LoadLibrary and ParsePreferences; the set is then as it was.
    CResult<EOpened> Open(const std::filesystem::path& path, CLogSink& log,
                          CQuestions* questions = nullptr);
    /// The project in a folder: its ".zov" file of the folder's name, and the preference file of
    /// that name when there is one. NotFound when the folder has no such library.
    CResult<EOpened> OpenFolder(const std::filesystem::path& folder, CLogSink& log,
                                CQuestions* questions = nullptr);
    /// A library that was loaded beforehand: opening its path takes this one instead of reading the
    /// file.
    void TakeLoaded(const std::filesystem::path& path, std::shared_ptr<CZovLibrary> library)
    {
        m_cache.Put(path, std::move(library));
    }
    /// A file that was tried beforehand: opening it gives this error instead of reading it again,
    /// until ForgetFailures.
    void TakeFailure(const std::filesystem::path& path, SError error)
    {
        m_cache.PutFailure(path, std::move(error));
    }
    void ForgetFailures() { m_cache.ForgetFailures(); }
    /// The files that Open or, for a folder, OpenFolder would read: for loading them beforehand.
    [[nodiscard]] static std::vector<std::filesystem::path>
    FilesOf(const std::filesystem::path& path);
    /// The external libraries in the order of `libraries`; those that it lacks keep their order
    /// behind them.
    void OrderExternals(const std::vector<std::shared_ptr<CZovLibrary>>& libraries);
    /// A project library without a path; asks as Open does.
    EOpened NewProject(CLogSink& log, CQuestions* questions = nullptr);
    /// A file dropped on the project library: refused in the log while one is open, else opened.
    CResult<EOpened> AddToProject(const std::filesystem::path& path, CLogSink& log);
    void CloseProject();
    /// Saves the project library; with a path under that path from then on. Argument without a
    /// project library, or without any path.
    CResult<void> SaveProject(const std::filesystem::path& path, CLogSink& log);

    /// For libraries that are loaded from now on.
    void SetUnits(const CDisplayUnits& units);

    /// A library of the set was written to that path: its entry has it from now on.
    void SavedAs(const CZovLibrary& library, const std::filesystem::path& path);

    /// Adds behind the others; one that is there already is only switched. Errors: as LoadLibrary.
    CResult<EOpened> AddExternal(const std::filesystem::path& path, CLogSink& log, bool on = true,
                                 bool remember = true);
    /// False, and nothing changed, for an index that is out of range.
    bool SwitchExternal(std::size_t index, bool on);
    bool RememberExternal(std::size_t index, bool remember);
    bool RemoveExternal(std::size_t index);
    bool MoveExternal(std::size_t from, std::size_t to);

    /// The external libraries that are to be remembered.
    [[nodiscard]] std::vector<SListedLibrary> Remembered() const;
    /// Errors: as FormatPreferences, before anything is written; Io, Access.
    CResult<void> SavePreferences(const std::filesystem::path& path) const;
    /// Replaces the external libraries by those of a JSON configuration; one without
    /// `ExternalLibSets` changes nothing. Errors: "Invalid ZOV config file path: %s",
    /// "Unsupported ZOV config file version: %d", others of ParseSetConfiguration; the set is then
    /// as it was. A library of the configuration that can't be opened is told and left out.
    CResult<void> LoadConfiguration(const std::filesystem::path& path, CLogSink& log);

private:
    CResult<EOpened> OpenProject(const std::filesystem::path& path, CLogSink& log,
                                 CQuestions* questions);
    CResult<EOpened> OpenPreferences(const std::filesystem::path& path, CLogSink& log,
                                     CQuestions* questions);
    [[nodiscard]] bool MayReplaceProject(const std::string& by, CLogSink& log,
                                         CQuestions* questions) const;
    CResult<std::shared_ptr<CZovLibrary>> Load(const std::filesystem::path& path, CLogSink& log);
    /// The project library that goes with a preference file; empty when there is none.
    static std::filesystem::path ProjectBeside(const std::filesystem::path& preferences);
    void AddListed(const std::vector<SListedLibrary>& entries, CLogSink& log);
    void SetProject(std::vector<SLibraryEntry> project);
    /// Libraries that no entry has any more are read from their files when they are opened again.
    void Forget(const std::vector<SLibraryEntry>& gone);

    CDisplayUnits m_units;
    CLibraryCache m_cache;
    std::vector<SLibraryEntry> m_project; ///< empty or one
    std::vector<SLibraryEntry> m_externals;
    std::vector<SExternalLibSet> m_sets;
};

} // namespace zov
