// SPDX-License-Identifier: Apache-2.0
#include "app/Autosave.h"

#include "base/File.h"
#include "core/LibraryFiles.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace zov::app {

namespace fs = std::filesystem;

namespace {

/// Lets go soon when the library is about to change: the rest of it goes nowhere.
class CStoppableWriter final : public CByteWriter
{
public:
    CStoppableWriter(CByteWriter& out, const CJobState& state)
        : m_out(out)
        , m_state(state)
    {
    }
    void Append(std::string_view bytes) override
    {
        if (!m_state.Cancelled()) {
            m_out.Append(bytes);
        }
    }

private:
    CByteWriter& m_out;
    const CJobState& m_state;
};

/// False when it was stopped or could not be written.
bool WriteCopy(const CZovLibrary& library, const fs::path& path, const CJobState& state)
{
    auto file = CAtomicFile::Create(path);
    if (!file) {
        return false;
    }
    CStoppableWriter out(**file, state);
    WriteNative(library, out);
    return !state.Cancelled() && (*file)->Commit().Ok();
}

QString TimeText(const QFileInfo& file)
{
    return file.lastModified().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

} // namespace

CAutosave::CAutosave(CZovSession& session, int delayMs)
    : m_session(session)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(delayMs);
    connect(&m_timer, &QTimer::timeout, this, &CAutosave::Write);
    connect(&session, &CZovSession::LibraryAboutToChange, this, &CAutosave::LibraryAboutToChange);
    connect(&session, &CZovSession::LibraryChanged, this, &CAutosave::LibraryChanged);
    connect(&session, &CZovSession::ModifiedChanged, this, &CAutosave::DropSaved);
    connect(&session, &CZovSession::LibrariesChanged, this, &CAutosave::LookForCopies);
}

CAutosave::~CAutosave() = default;

fs::path CAutosave::PathOf(const fs::path& library)
{
    fs::path name = ".";
    name += library.filename();
    name += ".autosave";
    return library.parent_path() / name;
}

CResult<CZovLibrary> CAutosave::Read(const fs::path& copy)
{
    ASSIGN_OR_RETURN(const CFileView view, CFileView::Open(copy));
    CZovLibrary library;
    ASSIGN_OR_RETURN(const std::vector<SOldValue> old, ReadNative(view.Bytes(), library));
    RETURN_IF_ERROR(UpgradeLibrary(library, old, {}));
    return library;
}

CZovSession::TLibrary CAutosave::Find(const CZovLibrary* library) const
{
    for (const SLibraryEntry* entry : m_session.Set().Entries()) {
        if (entry->library.get() == library) {
            return entry->library;
        }
    }
    return nullptr;
}

void CAutosave::LibraryAboutToChange(const CZovLibrary* /*library*/)
{
    m_writing.Cancel(); // what it did not get done is still dirty
    m_reading.Cancel(); // it compares with the library; LibraryChanged begins again
}

void CAutosave::LibraryChanged(const CZovLibrary* library)
{
    RestoreNext();
    const CZovSession::TLibrary open = Find(library);
    if (!open || open->Path().empty()) {
        return;
    }
    if (m_dirty.empty()) {
        m_waiting.start();
    }
    m_dirty[library] = open;
    const int left = kLongestWaitMs - static_cast<int>(m_waiting.elapsed());
    m_timer.start(std::clamp(left, 0, m_timer.interval()));
}

void CAutosave::Write()
{
    struct STask
    {
        CZovSession::TLibrary library;
        fs::path path;
        bool done = false;
    };
    auto tasks = std::make_shared<std::vector<STask>>();
    for (const auto& [key, weak] : m_dirty) {
        const CZovSession::TLibrary library = weak.lock();
        if (library && m_session.IsModified(*library)) {
            tasks->push_back({library, PathOf(library->Path())});
            m_copies[key] = tasks->back().path; // from now on it may be there
        }
    }
    if (tasks->empty()) {
        m_dirty.clear();
        return;
    }
    m_writing.Start(tr("Autosave"), [this, tasks](CJobState& state) -> CBackgroundJob::Deliver {
        for (STask& task : *tasks) {
            task.done = WriteCopy(*task.library, task.path, state);
        }
        return [this, tasks] {
            for (const STask& task : *tasks) {
                if (!task.done) {
                    m_session.Log().Write("[WARNING] '" + PathText(task.path) +
                                          "' can't be written; unsaved changes are not kept");
                }
                m_dirty.erase(task.library.get());
            }
        };
    });
}

void CAutosave::RemoveCopy(const CZovLibrary* library)
{
    m_dirty.erase(library);
    const auto at = m_copies.find(library);
    if (at != m_copies.end()) {
        std::error_code ignored;
        fs::remove(at->second, ignored);
        m_copies.erase(at);
    }
}

/// Saved, or undone to what was saved.
void CAutosave::DropSaved()
{
    std::vector<const CZovLibrary*> saved;
    for (const auto& [library, path] : m_copies) {
        const CZovSession::TLibrary open = Find(library);
        if (open && !m_session.IsModified(*open)) {
            saved.push_back(library);
        }
    }
    if (!saved.empty()) {
        m_writing.Cancel();
    }
    std::ranges::for_each(saved, [this](const CZovLibrary* library) { RemoveCopy(library); });
}

void CAutosave::LookForCopies()
{
    std::vector<const CZovLibrary*> closed;
    for (const auto& [library, weak] : m_known) {
        if (weak.expired() || !Find(library)) {
            closed.push_back(library);
        }
    }
    for (const CZovLibrary* library : closed) {
        m_writing.Cancel();
        RemoveCopy(library);
        m_known.erase(library);
    }
    for (const SLibraryEntry* entry : m_session.Set().Entries()) {
        const CZovSession::TLibrary library = entry->library;
        if (library->Path().empty() || !m_known.emplace(library.get(), library).second) {
            continue;
        }
        const QFileInfo copy(QString::fromStdString(PathText(PathOf(library->Path()))));
        // Of another run that still lives it is no leftover.
        if (!copy.exists() || m_session.ObstacleTo(library).kind == CZovSession::EObstacle::InUse) {
            continue;
        }
        // Killed right behind a save, or the file was written by somebody else since.
        const QFileInfo file(QString::fromStdString(PathText(library->Path())));
        const QString later =
            file.lastModified() > copy.lastModified()
                ? tr("\nThe file itself was written later, at %1: what it got by then is undone by "
                     "restoring.")
                      .arg(TimeText(file))
                : QString();
        const QString text =
            tr("'%1' holds changes of %2 that were not saved, the program ended before. Restore "
               "them?")
                .arg(QString::fromStdString(library->Name()), TimeText(copy)) +
            later;
        // Not from within the opening itself.
        QTimer::singleShot(0, this, [this, library, text] { Q_EMIT Offered(library, text); });
    }
}

void CAutosave::Restore(const CZovSession::TLibrary& library)
{
    m_toRestore.push_back(library);
    RestoreNext();
}

void CAutosave::RestoreNext()
{
    while (!m_toRestore.empty() && !Find(m_toRestore.front().lock().get())) {
        m_toRestore.pop_front(); // closed meanwhile
    }
    if (m_toRestore.empty() || m_reading.IsRunning()) {
        return;
    }
    const CZovSession::TLibrary library = m_toRestore.front().lock();
    const fs::path path = PathOf(library->Path());
    m_reading.Start(tr("Restoring"), [this, library, path](CJobState& /*state*/) {
        const auto read = std::make_shared<CResult<CZovLibrary>>(Read(path));
        const auto change = std::make_shared<CLibraryChange>(library);
        if (*read) {
            change->ReplaceAllBy(**read);
        }
        return [this, library, path, read, change] {
            m_toRestore.pop_front();
            if (*read) {
                m_copies[library.get()] = path;
                m_session.Edits().Apply(*change, tr("Restore Unsaved Changes"));
                if (!m_session.IsModified(*library)) {
                    RemoveCopy(library.get()); // it held nothing new
                }
            } else {
                m_session.Log().Write("[Error] " + read->Error().Full());
                Q_EMIT m_session.Failed(tr("'%1' can't be read, nothing is restored: %2")
                                            .arg(QString::fromStdString(PathText(path)),
                                                 QString::fromStdString(read->Error().text)));
            }
            RestoreNext();
        };
    });
}

void CAutosave::Discard(const CZovSession::TLibrary& library)
{
    std::error_code ignored;
    fs::remove(PathOf(library->Path()), ignored);
}

void CAutosave::Close()
{
    m_timer.stop();
    m_writing.Cancel();
    while (!m_copies.empty()) {
        RemoveCopy(m_copies.begin()->first);
    }
}

} // namespace zov::app
