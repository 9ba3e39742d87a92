// SPDX-License-Identifier: Apache-2.0
#include "app/Session.h"

#include "app/RecordTexts.h"
#include "app/ReleaseBeside.h"
#include "app/RunBeside.h"
#include "base/File.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::app {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kVendorSection = "ZOV Vendors";
constexpr std::string_view kVendorLibraries = "Decap Libraries";
constexpr std::string_view kCollectionSection = "ZOV Collections";
constexpr std::string_view kCollectionSets = "Sets";
/// Below this no path is relative.
constexpr const char* kNowhere = "/";
constexpr std::uint64_t kListFileLimit = std::uint64_t{64} << 20U;

/// The settings hold more than is opened when the environment says so.
std::vector<SListedLibrary> StoredLibraries(const ISettingsStore& store,
                                            const FEnvironment& environment)
{
    return ReadSettings(store,
                        [&](const char* name) {
                            return std::string_view(name) == kForgetLibraries ? std::nullopt
                                                                              : environment(name);
                        })
        .externalLibraries;
}

/// Nothing is written over the file of a library that is open, but by itself.
CResult<void> RefuseOpenFile(const CLibrarySet& set, const fs::path& path,
                             const CZovLibrary* except)
{
    const auto isThere = [&](const SLibraryEntry* entry) {
        std::error_code ignored;
        return entry->library.get() != except && fs::equivalent(entry->path, path, ignored);
    };
    if (std::ranges::any_of(set.Entries(), isThere)) {
        return Fail(EErr::Argument, "'" + PathText(path) + "' is open as another library");
    }
    return {};
}

} // namespace

CZovSession::CZovSession(ISettingsStore& store, CLogSink& log, const FEnvironment& environment)
    : m_store(store)
    , m_log(log)
    , m_settings(ReadSettings(store, environment))
    , m_set(m_settings.units)
{
    for (const SListedLibrary& listed : StoredLibraries(store, environment)) {
        m_remembered.push_back({listed, false, {}});
    }
    ReadCollections();
    connect(&m_job, &CBackgroundJob::Finished, this, &CZovSession::LoadNext);
    // Before the lists hear of it, and again behind a list that was still at work.
    for (const auto signal : {&CZovSession::LibraryAboutToChange, &CZovSession::LibraryChanged}) {
        connect(this, signal, this,
                [](CZovLibrary* library) { CRecordTextCache::Instance().Forget(*library); });
    }
    connect(&m_edits, &CLibraryEdits::AboutToChange, this, &CZovSession::LibraryAboutToChange);
    connect(&m_edits, &CLibraryEdits::AboutToChange, this, [this](CZovLibrary* changed) {
        for (const SLibraryEntry* entry : m_set.Entries()) {
            if (entry->library.get() == changed) {
                Hold(entry->library);
            }
        }
    });
    connect(&m_edits, &CLibraryEdits::Changed, this, &CZovSession::LibraryChanged);
    connect(&m_edits, &CLibraryEdits::ModifiedChanged, this, &CZovSession::ModifiedChanged);
}

void CZovSession::SetSettings(SZovSettings settings)
{
    m_settings = std::move(settings);
    m_set.SetUnits(m_settings.units);
    Q_EMIT SettingsChanged();
}

QStringList CZovSession::VendorLibraries() const
{
    const std::string paths = m_store.Text(kVendorSection, kVendorLibraries).value_or("");
    return QString::fromStdString(paths).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void CZovSession::SetVendorLibraries(const QStringList& paths)
{
    m_store.SetText(kVendorSection, kVendorLibraries, paths.join(QLatin1Char('\n')).toStdString());
}

void CZovSession::StoreSettings()
{
    if (m_settings.autoSaveExternalLibrary) {
        m_settings.externalLibraries = ToRemember();
        StoreCollections();
    }
    WriteSettings(m_settings, m_store);
}

void CZovSession::Tell(const SError& error)
{
    m_log.Write("[Error] " + error.Full());
    Q_EMIT Failed(QString::fromStdString(error.text));
}

void CZovSession::Load(SLoad load)
{
    m_loads.push_back(std::move(load));
    if (!m_job.IsRunning()) {
        LoadNext();
    }
}

CZovSession::TLoaded CZovSession::Read(const TPaths& paths, const CDisplayUnits& units,
                                       CLogSink& log, CJobState& state)
{
    TLoaded loaded;
    for (std::size_t i = 0; i < paths.size() && !state.Cancelled(); ++i) {
        std::error_code ignored;
        if (FormOf(paths[i]) == ELibraryForm::Unknown || !fs::exists(paths[i], ignored)) {
            continue; // told where it is opened
        }
        std::string messages;
        CFunctionLog keep([&](std::string_view text) {
            messages += text;
            messages += '\n';
        });
        const CResult<SFileState> fileState = FileStateOf(paths[i]);
        CResult<CZovLibrary> library = LoadLibrary(paths[i], units, keep, [&](double done) {
            state.SetFraction((static_cast<double>(i) + done) / static_cast<double>(paths.size()));
            return !state.Cancelled();
        });
        if (library) {
            loaded.push_back({paths[i],
                              std::make_shared<CZovLibrary>(library.Take()),
                              fileState ? std::optional(*fileState) : std::nullopt,
                              {}});
        } else {
            loaded.push_back({paths[i], nullptr, std::nullopt, library.TakeError()});
        }
        if (!messages.empty()) {
            log.Write(messages);
        }
    }
    return loaded;
}

void CZovSession::LoadNext()
{
    if (m_loads.empty()) {
        return;
    }
    const SLoad load = std::move(m_loads.front());
    m_loads.pop_front();
    m_job.Start(load.what,
                [paths = load.paths, then = load.then, &log = m_log,
                 units = m_settings.units](CJobState& state) -> CBackgroundJob::Deliver {
                    auto loaded = std::make_shared<TLoaded>(Read(paths, units, log, state));
                    return [loaded, then] { then(std::move(*loaded)); };
                });
}

void CZovSession::LoadThen(const QString& what, TPaths paths, std::function<void()> then)
{
    Load({what, std::move(paths), [this, then = std::move(then)](const TLoaded& loaded) {
              for (const SLoaded& one : loaded) {
                  if (!one.library) {
                      m_set.TakeFailure(one.path, one.error);
                      continue;
                  }
                  m_set.TakeLoaded(one.path, one.library);
                  if (one.state) {
                      m_files.SetState(*one.library, *one.state);
                  }
              }
              then();
              m_set.ForgetFailures();
          }});
}

void CZovSession::CancelLoading()
{
    m_loads.clear();
    m_job.Abandon();
}

void CZovSession::OpenLoaded(const fs::path& path, CQuestions& questions)
{
    const CResult<EOpened> opened = m_set.Open(path, m_log, &questions);
    if (!opened) {
        Tell(opened.Error());
    } else if (*opened == EOpened::Ignored) {
        Q_EMIT Failed(tr("'%1' is no library, or it is not there.")
                          .arg(QString::fromStdString(PathText(path))));
    }
    SyncTree();
}

void CZovSession::OpenProject(const fs::path& path, CQuestions& questions)
{
    LoadThen(tr("Loading %1").arg(QString::fromStdString(PathText(path.filename()))),
             CLibrarySet::FilesOf(path), [this, path, &questions] { OpenLoaded(path, questions); });
}

void CZovSession::OpenFolder(const fs::path& folder, CQuestions& questions)
{
    LoadThen(tr("Loading %1").arg(QString::fromStdString(PathText(folder.filename()))),
             CLibrarySet::FilesOf(folder), [this, folder, &questions] {
                 if (const CResult<EOpened> opened = m_set.OpenFolder(folder, m_log, &questions);
                     !opened) {
                     Tell(opened.Error());
                 }
                 SyncTree();
             });
}

CResult<void> CZovSession::WriteEmpty(const fs::path& path)
{
    RETURN_IF_ERROR(RefuseOpenFile(m_set, path, nullptr));
    return SaveLibrary(CZovLibrary(), path, m_settings.units, m_log);
}

CResult<void> CZovSession::NewProject(const fs::path& path, CQuestions& questions)
{
    RETURN_IF_ERROR(WriteEmpty(path));
    OpenLoaded(path, questions);
    return {};
}

CResult<void> CZovSession::NewExternal(const fs::path& path, CLibraryTree::TNode collection)
{
    RETURN_IF_ERROR(WriteEmpty(path));
    ASSIGN_OR_RETURN(const EOpened opened, m_set.AddExternal(path, m_log));
    static_cast<void>(opened);
    SyncTree(collection);
    return {};
}

void CZovSession::AddExternals(const TPaths& paths, CLibraryTree::TNode collection)
{
    std::vector<SListedLibrary> listed;
    for (const fs::path& path : paths) {
        listed.push_back({path, true});
    }
    AddListed(listed, collection);
}

void CZovSession::OpenRemembered()
{
    RestoreCollections(); // they are there whatever becomes of their libraries
    const std::vector<SListedLibrary> libraries = m_settings.externalLibraries;
    TPaths paths;
    for (const SListedLibrary& listed : libraries) {
        paths.push_back(listed.path);
    }
    if (paths.empty()) {
        return;
    }
    LoadThen(tr("Loading libraries"), paths, [this, libraries] {
        for (const SListedLibrary& library : libraries) {
            const std::string why = AddOne(library);
            const auto at = std::ranges::find(m_remembered, library.path,
                                              [](const SRemembered& r) { return r.listed.path; });
            if (at != m_remembered.end()) {
                at->why = why;
                at->wasOpen = why.empty();
            }
            if (!why.empty()) {
                m_log.Write("[WARNING] the external library '" + PathText(library.path) +
                            "' could not be opened and stays remembered: " + why);
            }
        }
        SyncTree();
        RestoreCollections();
        if (!Unreachable().empty()) {
            Q_EMIT SomeUnreachable();
        }
    });
}

std::string CZovSession::AddOne(const SListedLibrary& library)
{
    const CResult<EOpened> added = m_set.AddExternal(library.path, m_log, library.on);
    if (!added) {
        return added.Error().text;
    }
    return *added == EOpened::Ignored ? tr("it is no library, or it is not there").toStdString()
                                      : std::string();
}

std::vector<CZovSession::SUnreachable> CZovSession::Unreachable() const
{
    std::vector<SUnreachable> unreachable;
    for (const SRemembered& remembered : m_remembered) {
        if (!remembered.why.empty()) {
            unreachable.push_back({remembered.listed, remembered.why});
        }
    }
    return unreachable;
}

void CZovSession::OpenUnreachable(const fs::path& path)
{
    LoadThen(tr("Loading libraries"), {path}, [this, path] {
        const auto at = std::ranges::find(m_remembered, path,
                                          [](const SRemembered& r) { return r.listed.path; });
        if (at == m_remembered.end() || at->why.empty()) {
            return;
        }
        at->why = AddOne(at->listed);
        at->wasOpen = at->why.empty();
        if (!at->wasOpen) {
            Q_EMIT Failed(
                tr("'%1' could not be opened: %2")
                    .arg(QString::fromStdString(PathText(path)), QString::fromStdString(at->why)));
        }
        SyncTree();
        PutWhereItWas(path);
        SyncTree();
    });
}

void CZovSession::ForgetUnreachable(const fs::path& path)
{
    std::erase_if(m_remembered, [&](const SRemembered& remembered) {
        return !remembered.why.empty() && remembered.listed.path == path;
    });
    Q_EMIT LibrariesChanged();
}

std::vector<SListedLibrary> CZovSession::ToRemember() const
{
    std::vector<SListedLibrary> list = m_set.Remembered();
    std::size_t at = 0; // behind the last one that was remembered before it
    for (const SRemembered& remembered : m_remembered) {
        const auto same = std::ranges::find(list, remembered.listed.path, &SListedLibrary::path);
        if (same != list.end()) {
            at = static_cast<std::size_t>(same - list.begin()) + 1;
        } else if (!remembered.wasOpen) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(at++), remembered.listed);
        }
    }
    return list;
}

void CZovSession::AddListed(const std::vector<SListedLibrary>& libraries,
                            CLibraryTree::TNode collection)
{
    TPaths paths;
    for (const SListedLibrary& listed : libraries) {
        paths.push_back(listed.path);
    }
    if (paths.empty()) {
        return;
    }
    LoadThen(tr("Loading libraries"), paths, [this, libraries, collection] {
        for (const SListedLibrary& library : libraries) {
            const CResult<EOpened> added = m_set.AddExternal(library.path, m_log, library.on);
            if (!added) {
                Tell(added.Error());
            } else if (*added == EOpened::Ignored) {
                m_log.Write("[WARNING] '" + PathText(library.path) +
                            "' is no library, or it is not there.");
            }
        }
        SyncTree(m_tree.Has(collection) ? collection : CLibraryTree::kRoot);
    });
}

void CZovSession::ImportPreferences(const fs::path& path, CLibraryTree::TNode parent)
{
    const CResult<std::string> text = ReadWholeFile(path, kListFileLimit);
    const auto listed = text ? ParsePreferences(*text, PathText(path), path.parent_path())
                             : CResult<std::vector<SListedLibrary>>(text.Error());
    if (!listed) {
        Tell(listed.Error());
        return;
    }
    AddListed(*listed, AddCollection(parent, PathText(path.stem())));
}

void CZovSession::ReadCollections()
{
    const std::string text = m_store.Text(kCollectionSection, kCollectionSets).value_or("");
    auto sets = ParseSetConfiguration(text, std::string(kCollectionSection), kNowhere);
    if (sets && *sets) {
        m_rememberedSets = std::move(**sets);
    }
}

void CZovSession::PutWhereItWas(const fs::path& path)
{
    const auto opened = std::ranges::find(m_set.Externals(), path, &SLibraryEntry::path);
    if (opened == m_set.Externals().end()) {
        return;
    }
    for (const SExternalLibSet& set : m_rememberedSets) {
        if (std::ranges::find(set.libraries, path, &SListedLibrary::path) != set.libraries.end()) {
            m_tree.MoveTo(m_tree.Find(*opened->library), m_tree.CollectionAt(set.name));
        }
    }
}

void CZovSession::RestoreCollections()
{
    for (const SExternalLibSet& set : m_rememberedSets) {
        m_tree.CollectionAt(set.name);
        for (const SListedLibrary& listed : set.libraries) {
            PutWhereItWas(listed.path);
        }
    }
    SyncTree();
}

void CZovSession::StoreCollections()
{
    std::vector<SExternalLibSet> sets =
        m_tree.ToSets([this](const CZovLibrary& library) { return IsOn(library); });
    // Libraries that were not opened go back to where they were.
    for (const SExternalLibSet& old : m_rememberedSets) {
        for (const SListedLibrary& listed : old.libraries) {
            const bool isAway = std::ranges::any_of(m_remembered, [&](const SRemembered& one) {
                return !one.wasOpen && one.listed.path == listed.path;
            });
            if (!isAway) {
                continue;
            }
            auto at = std::ranges::find(sets, old.name, &SExternalLibSet::name);
            if (at == sets.end()) {
                at = sets.insert(at, {old.name, true, {}});
            }
            at->libraries.push_back(listed);
        }
    }
    m_store.SetText(kCollectionSection, kCollectionSets, FormatSetConfiguration(sets, kNowhere));
}

CZovSession::TLibrary CZovSession::ProjectLibrary() const
{
    return m_set.Project() == nullptr ? nullptr : m_set.Project()->library;
}

bool CZovSession::IsOn(const CZovLibrary& library) const
{
    return std::ranges::any_of(m_set.Entries(), [&](const SLibraryEntry* entry) {
        return entry->library.get() == &library && entry->on;
    });
}

void CZovSession::SwitchOn(const CZovLibrary& library, bool on)
{
    const auto& externals = m_set.Externals();
    for (std::size_t i = 0; i < externals.size(); ++i) {
        if (externals[i].library.get() == &library) {
            m_set.SwitchExternal(i, on);
        }
    }
    Q_EMIT LibrariesChanged();
}

CLibraryTree::TNode CZovSession::AddCollection(CLibraryTree::TNode parent, const std::string& name)
{
    const CLibraryTree::TNode added = m_tree.AddCollection(parent, name);
    Q_EMIT LibrariesChanged();
    return added;
}

bool CZovSession::RenameCollection(CLibraryTree::TNode node, const std::string& name)
{
    const bool renamed = m_tree.Rename(node, name);
    Q_EMIT LibrariesChanged();
    return renamed;
}

bool CZovSession::CanMoveNode(CLibraryTree::TNode node, int by) const
{
    if (!m_tree.CanMove(node, by)) {
        return false;
    }
    const TLibrary project = ProjectLibrary();
    if (!project || m_tree.ParentOf(node) != CLibraryTree::kRoot) {
        return true;
    }
    return m_tree.LibraryOf(node) != project && (by > 0 || m_tree.PlaceOf(node) > 1);
}

void CZovSession::MoveNode(CLibraryTree::TNode node, int by)
{
    m_tree.Move(node, by);
    SyncTree();
}

bool CZovSession::MoveNodeTo(CLibraryTree::TNode node, CLibraryTree::TNode collection)
{
    const bool moved = m_tree.MoveTo(node, collection);
    SyncTree();
    return moved;
}

void CZovSession::RemoveNode(CLibraryTree::TNode node)
{
    std::vector<TLibrary> closed = m_tree.LibrariesOf(node);
    for (const TLibrary& library : closed) {
        Q_EMIT LibraryAboutToChange(library.get());
        m_edits.Drop(*library);
        if (library == ProjectLibrary()) {
            m_set.CloseProject();
            continue;
        }
        const auto& externals = m_set.Externals();
        const auto at = std::ranges::find(externals, library, &SLibraryEntry::library);
        m_set.RemoveExternal(static_cast<std::size_t>(at - externals.begin()));
    }
    m_tree.Remove(node);
    for (const TLibrary& library : closed) {
        Q_EMIT LibraryClosed(library.get());
    }
    SyncTree();
    for (TLibrary& library : closed) {
        ReleaseBeside(std::move(library));
    }
}

void CZovSession::SyncTree(CLibraryTree::TNode newOnesTo)
{
    for (const SLibraryEntry* entry : m_set.Entries()) {
        m_tree.AddLibrary(entry->project ? CLibraryTree::kRoot : newOnesTo, entry->library);
    }
    const std::vector<const SLibraryEntry*> entries = m_set.Entries();
    for (SRemembered& remembered : m_remembered) {
        const bool isOpen = std::ranges::any_of(entries, [&](const SLibraryEntry* entry) {
            return !entry->project && entry->path == remembered.listed.path;
        });
        if (isOpen) {
            remembered.wasOpen = true;
            remembered.why.clear();
        }
    }
    for (const TLibrary& library : m_tree.LibrariesOf(CLibraryTree::kRoot)) {
        const bool isOpen = std::ranges::any_of(
            entries, [&](const SLibraryEntry* entry) { return entry->library == library; });
        if (!isOpen) {
            m_tree.Remove(m_tree.Find(*library));
            m_edits.Drop(*library);
            Q_EMIT LibraryClosed(library.get());
        }
    }
    // The project library stands first, whatever was open before it.
    if (const TLibrary project = ProjectLibrary()) {
        while (m_tree.Move(m_tree.Find(*project), -1)) {
        }
    }
    m_set.OrderExternals(m_tree.LibrariesOf(CLibraryTree::kRoot));
    Q_EMIT LibrariesChanged();
    SyncFiles();
}

void CZovSession::SyncFiles()
{
    const std::vector<const SLibraryEntry*> entries = m_set.Entries();
    m_files.KeepOnly([&](const CZovLibrary& library) {
        return std::ranges::any_of(
            entries, [&](const SLibraryEntry* entry) { return entry->library.get() == &library; });
    });
    for (const SLibraryEntry* entry : entries) {
        m_files.LookAt(*entry->library);
    }
    // The project library is there to be written; others are held from their first change on.
    if (const TLibrary project = ProjectLibrary(); project && project != m_heldProject.lock()) {
        m_heldProject = project;
        Hold(project);
    }
}

void CZovSession::Hold(const TLibrary& library)
{
    const bool wasKnown = m_files.HolderOf(*library).has_value();
    const auto holder = m_files.Hold(*library);
    if (!holder || wasKnown) {
        return;
    }
    const QString text = tr("'%1' is opened for writing by %2.")
                             .arg(QString::fromStdString(library->Name()),
                                  QString::fromStdString(OwnerText(holder->owner)));
    // Whoever is told may show a box; what goes on now is finished first.
    QMetaObject::invokeMethod(
        this,
        [this, library, text, mayPass = holder->mayBeOld] { Q_EMIT InUse(library, text, mayPass); },
        Qt::QueuedConnection);
}

void CZovSession::PassLock(const TLibrary& library)
{
    m_files.Hold(*library, CLibraryLock::ETake::Anyway);
}

bool CZovSession::IsModified(const CZovLibrary& library) const
{
    return m_edits.IsModified(library);
}

std::vector<CZovSession::TLibrary> CZovSession::ModifiedLibraries() const
{
    std::vector<TLibrary> modified;
    for (const SLibraryEntry* entry : m_set.Entries()) {
        if (IsModified(*entry->library)) {
            modified.push_back(entry->library);
        }
    }
    return modified;
}

void CZovSession::BeginChange(const TLibrary& library)
{
    Hold(library);
    Q_EMIT LibraryAboutToChange(library.get());
}

void CZovSession::EndChange(const TLibrary& library)
{
    m_edits.Forget(library, true);
    Q_EMIT LibraryChanged(library.get());
}

void CZovSession::Reload(const TLibrary& library)
{
    Load({tr("Loading %1").arg(QString::fromStdString(library->Name())),
          {library->Path()},
          [this, library](TLoaded loaded) {
              if (loaded.empty() || !loaded.front().library) {
                  Tell(loaded.empty() ? Fail(EErr::NotFound, "'" + PathText(library->Path()) +
                                                                 "' is not there any more")
                                      : loaded.front().error);
                  return;
              }
              BeginChange(library);
              std::swap(*library, *loaded.front().library);
              if (loaded.front().state) {
                  m_files.SetState(*library, *loaded.front().state);
              }
              m_edits.Forget(library, false);
              Q_EMIT LibraryChanged(library.get());
              ReleaseBeside(std::move(loaded.front().library));
          }});
}

CZovSession::SObstacle CZovSession::ObstacleTo(const TLibrary& library)
{
    const QString name = QString::fromStdString(library->Name());
    if (const auto holder = m_files.Hold(*library)) {
        return {EObstacle::InUse,
                tr("'%1' is opened for writing by %2. What is saved now may be lost when they "
                   "save.")
                    .arg(name, QString::fromStdString(OwnerText(holder->owner)))};
    }
    if (m_files.ChangeOf(*library) == EFileChange::Changed) {
        return {EObstacle::Changed,
                tr("The file of '%1' was changed by another program since it was loaded.\n%2")
                    .arg(name, QString::fromStdString(PathText(library->Path())))};
    }
    return {};
}

CResult<void> CZovSession::Save(const TLibrary& library, const fs::path& path, ESave how)
{
    const fs::path target = path.empty() ? library->Path() : path;
    RETURN_IF_ERROR(RefuseOpenFile(m_set, target, library.get()));
    if (path.empty() && how == ESave::Careful) {
        if (const SObstacle obstacle = ObstacleTo(library); obstacle.kind != EObstacle::None) {
            return Fail(EErr::Access, obstacle.text.toStdString());
        }
    }
    std::optional<SFileState> state;
    RETURN_IF_ERROR(SaveCopy(*library, target, &state));
    m_set.SavedAs(*library, target);
    if (state) {
        m_files.SetState(*library, *state);
    }
    Hold(library);
    m_edits.SetSaved(library);
    m_log.Write("'" + library->Name() + "' was saved to '" + PathText(target) + "'.");
    Q_EMIT LibrariesChanged();
    return {};
}

CResult<void> CZovSession::SaveCopy(const CZovLibrary& library, const fs::path& path,
                                    std::optional<SFileState>* state)
{
    CResult<void> saved;
    RunBeside(tr("Saving %1").arg(QString::fromStdString(PathText(path.filename()))),
              [&](CJobState& job) {
                  saved = SaveLibrary(library, path, m_settings.units, m_log,
                                      [&job] { return !job.Cancelled(); });
                  if (CResult<SFileState> now = FileStateOf(path); state && saved && now) {
                      *state = now.Take();
                  }
              });
    return saved;
}

} // namespace zov::app
