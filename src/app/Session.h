// SPDX-License-Identifier: Apache-2.0
/// What the windows work on: the open libraries and how they are arranged, what is modified, the
/// user's settings. The windows change it and hear of changes by its signals.
#pragma once

#include "app/BackgroundJob.h"
#include "app/LibraryEdits.h"
#include "app/OpenFiles.h"
#include "base/Sink.h"
#include "core/LibrarySet.h"
#include "core/LibraryTree.h"
#include "core/Settings.h"

#include <QObject>
#include <QStringList>

#include <deque>
#include <filesystem>
#include <vector>

namespace zov::app {

class CZovSession : public QObject
{
    Q_OBJECT

public:
    using TLibrary = std::shared_ptr<CZovLibrary>;

    /// @param store outlives the session; read now, written by StoreSettings
    /// @param log   takes what the engines say, from any thread
    CZovSession(ISettingsStore& store, CLogSink& log, const FEnvironment& environment);

    [[nodiscard]] const CLibrarySet& Set() const { return m_set; }
    [[nodiscard]] const CLibraryTree& Tree() const { return m_tree; }
    [[nodiscard]] const SZovSettings& Settings() const { return m_settings; }
    [[nodiscard]] CLogSink& Log() { return m_log; }
    [[nodiscard]] CBackgroundJob& Job() { return m_job; }
    [[nodiscard]] const CBackgroundJob& Job() const { return m_job; }
    /// Changes of records that can be undone. All changes but loading anew go through it.
    [[nodiscard]] CLibraryEdits& Edits() { return m_edits; }

    /// Changes settings and tells everybody.
    void SetSettings(SZovSettings settings);
    void StoreSettings();
    /// Where windows keep what they remember from one opening to the next, each in its section.
    [[nodiscard]] ISettingsStore& Store() { return m_store; }
    /// Makers' decap libraries, which complete generated capacitors; kept with the settings.
    [[nodiscard]] QStringList VendorLibraries() const;
    void SetVendorLibraries(const QStringList& paths);

    /// Loads beside the window, then opens: a project library (`.zov`, `.zovx`, `.xml`, `.sp`) or a
    /// project by its preference file (`.zovp`). `questions` is asked before an open project
    /// library is replaced.
    void OpenProject(const std::filesystem::path& path, CQuestions& questions);
    /// The project of a folder; the file named like the folder.
    void OpenFolder(const std::filesystem::path& folder, CQuestions& questions);
    /// An empty library, written to the path at once, as project.
    CResult<void> NewProject(const std::filesystem::path& path, CQuestions& questions);
    /// An empty library, written to the path at once, in a collection.
    CResult<void> NewExternal(const std::filesystem::path& path, CLibraryTree::TNode collection);
    /// The external libraries that the settings remember, each on or off as it was. Those that
    /// can't be opened are told to the log, see Unreachable.
    void OpenRemembered();
    /// A remembered external library that could not be opened. It stays remembered, in its place.
    struct SUnreachable
    {
        SListedLibrary listed;
        std::string why;
    };
    [[nodiscard]] std::vector<SUnreachable> Unreachable() const;
    /// Tries it once more.
    void OpenUnreachable(const std::filesystem::path& path);
    /// It is not remembered any more.
    void ForgetUnreachable(const std::filesystem::path& path);
    /// External libraries, loaded beside the window, into a collection.
    void AddExternals(const std::vector<std::filesystem::path>& paths,
                      CLibraryTree::TNode collection);
    /// The same, each on or off as listed.
    void AddListed(const std::vector<SListedLibrary>& libraries, CLibraryTree::TNode collection);
    /// The external libraries of a preference file, in a new collection of its name below `parent`.
    void ImportPreferences(const std::filesystem::path& path, CLibraryTree::TNode parent);
    /// Drops what is being loaded and what waits for it. Doesn't wait for a file that is half read.
    void CancelLoading();

    [[nodiscard]] TLibrary ProjectLibrary() const;
    [[nodiscard]] bool IsOn(const CZovLibrary& library) const;
    void SwitchOn(const CZovLibrary& library, bool on);

    CLibraryTree::TNode AddCollection(CLibraryTree::TNode parent, const std::string& name);
    bool RenameCollection(CLibraryTree::TNode node, const std::string& name);
    /// The project library stays the first of all.
    [[nodiscard]] bool CanMoveNode(CLibraryTree::TNode node, int by) const;
    void MoveNode(CLibraryTree::TNode node, int by);
    bool MoveNodeTo(CLibraryTree::TNode node, CLibraryTree::TNode collection);
    /// Closes the libraries of a node and below and takes it out of the tree.
    void RemoveNode(CLibraryTree::TNode node);

    [[nodiscard]] bool IsModified(const CZovLibrary& library) const;
    [[nodiscard]] std::vector<TLibrary> ModifiedLibraries() const;
    /// Around a change of a library's records that can't be undone; what was done to it before
    /// can't be undone any more either. See Edits for all others.
    void BeginChange(const TLibrary& library);
    void EndChange(const TLibrary& library);
    /// Reads an external library's or the project's file again, beside the window; its records are
    /// then replaced where the library stands.
    void Reload(const TLibrary& library);
    /// Why saving a library under its path would harm somebody; empty when it would not.
    enum class EObstacle
    {
        None,
        Changed, ///< another program wrote the file since it was read
        InUse    ///< somebody else has it for writing
    };
    struct SObstacle
    {
        EObstacle kind = EObstacle::None;
        QString text; ///< for the user
    };
    [[nodiscard]] SObstacle ObstacleTo(const TLibrary& library);
    /// Saves under its path, or under another one, which is then its path. The window goes on
    /// painting meanwhile. Errors: Access for an obstacle, which only `evenSo` goes past; as
    /// SaveLibrary.
    enum class ESave
    {
        Careful,
        EvenSo
    };
    CResult<void> Save(const TLibrary& library, const std::filesystem::path& path = {},
                       ESave how = ESave::Careful);
    /// Writes a library to a path that is not its own afterwards. The window goes on painting.
    /// @param state takes what the file is like then; may be null
    CResult<void> SaveCopy(const CZovLibrary& library, const std::filesystem::path& path,
                           std::optional<SFileState>* state = nullptr);
    /// Takes the lock that somebody else holds.
    void PassLock(const TLibrary& library);

Q_SIGNALS:
    /// Libraries were opened, closed, moved, switched or renamed; what is Unreachable changed.
    void LibrariesChanged();
    /// Remembered libraries could not be opened at the start.
    void SomeUnreachable();
    /// A library was closed: nobody may wait for LibraryChanged of it any more.
    void LibraryClosed(zov::CZovLibrary* library);
    /// Records of a library are about to change: workers have to let go of it.
    void LibraryAboutToChange(zov::CZovLibrary* library);
    void LibraryChanged(zov::CZovLibrary* library);
    void ModifiedChanged();
    void SettingsChanged();
    /// Somebody else has a library for writing that this session opened for it, too.
    /// @param mayPass the owner is on another machine and may be gone
    void InUse(const zov::app::CZovSession::TLibrary& library, const QString& text, bool mayPass);
    /// Something the user asked for could not be done.
    void Failed(const QString& text);

private:
    using TPaths = std::vector<std::filesystem::path>;
    struct SLoaded
    {
        std::filesystem::path path;
        TLibrary library;
        std::optional<SFileState> state; ///< of the file before it was read
        SError error;                    ///< why there is no library
    };
    using TLoaded = std::vector<SLoaded>;
    /// Files to read beside the window, and what is done then; one after the other.
    struct SLoad
    {
        QString what;
        TPaths paths;
        std::function<void(TLoaded)> then;
    };
    void Load(SLoad load);
    void LoadNext();
    /// Calls back when the files wait to be opened.
    void LoadThen(const QString& what, TPaths paths, std::function<void()> then);
    static TLoaded Read(const TPaths& paths, const CDisplayUnits& units, CLogSink& log,
                        CJobState& state);
    void Tell(const SError& error);
    /// @return why it could not be opened; empty when it was
    std::string AddOne(const SListedLibrary& library);
    /// The open external libraries and, each behind what it stood behind, the remembered ones that
    /// are not open.
    [[nodiscard]] std::vector<SListedLibrary> ToRemember() const;
    /// Collections are kept with the settings, as a configuration keeps sets.
    void ReadCollections();
    void StoreCollections();
    void RestoreCollections();
    /// An external library into the collection that it was in.
    void PutWhereItWas(const std::filesystem::path& path);
    /// For writing; tells when somebody else has it.
    void Hold(const TLibrary& library);
    /// Files of new libraries are looked at, those of closed ones given back.
    void SyncFiles();
    void OpenLoaded(const std::filesystem::path& path, CQuestions& questions);
    /// The tree follows the set: new libraries come in, closed ones go.
    void SyncTree(CLibraryTree::TNode newOnesTo = CLibraryTree::kRoot);
    CResult<void> WriteEmpty(const std::filesystem::path& path);

    ISettingsStore& m_store;
    CLogSink& m_log;
    SZovSettings m_settings;
    CLibrarySet m_set;
    CLibraryTree m_tree;
    COpenFiles m_files;
    std::weak_ptr<CZovLibrary> m_heldProject;
    std::deque<SLoad> m_loads;
    /// What the settings held at the start, in its order.
    struct SRemembered
    {
        SListedLibrary listed;
        bool wasOpen = false; ///< from then on what is open counts
        std::string why;      ///< it was tried and could not be opened
    };
    std::vector<SRemembered> m_remembered;
    std::vector<SExternalLibSet> m_rememberedSets; ///< the collections then
    CLibraryEdits m_edits;
    CBackgroundJob m_job;
};

} // namespace zov::app
