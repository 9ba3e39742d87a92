// SPDX-License-Identifier: Apache-2.0
/// What was edited and not saved outlives a crash: a copy ".NAME.zov.autosave" beside the library,
/// written beside the window a few seconds after an edit, gone when the library is saved or closed.
/// One that is there when a library is opened was left by a run that ended badly, and is offered.
#pragma once

#include "app/Session.h"

#include <QElapsedTimer>
#include <QTimer>

#include <deque>
#include <map>

namespace zov::app {

class CAutosave : public QObject
{
    Q_OBJECT

public:
    static constexpr int kDelayMs = 3000;
    static constexpr int kLongestWaitMs = 15'000; ///< while edits go on and on

    /// @param session outlives this
    explicit CAutosave(CZovSession& session, int delayMs = kDelayMs);
    ~CAutosave() override;

    [[nodiscard]] static std::filesystem::path PathOf(const std::filesystem::path& library);
    /// The library as the copy holds it. Errors: as ReadNative, of the file.
    static CResult<CZovLibrary> Read(const std::filesystem::path& copy);

    /// Takes over what a copy holds, as one undoable step, beside the window.
    void Restore(const CZovSession::TLibrary& library);
    /// The user does not want it.
    void Discard(const CZovSession::TLibrary& library);
    /// The user has decided about everything that was edited: no copy of this run stays.
    void Close();

Q_SIGNALS:
    /// Changes of a run that ended badly are there.
    /// @param text "'board' holds changes of ... that were not saved. Restore them?"
    void Offered(const zov::app::CZovSession::TLibrary& library, const QString& text);

private:
    void LibraryAboutToChange(const CZovLibrary* library);
    void LibraryChanged(const CZovLibrary* library);
    void DropSaved();
    void LookForCopies();
    void RestoreNext();
    void Write();
    [[nodiscard]] CZovSession::TLibrary Find(const CZovLibrary* library) const;
    void RemoveCopy(const CZovLibrary* library);

    CZovSession& m_session;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    /// Libraries with edits that no copy holds yet.
    std::map<const CZovLibrary*, std::weak_ptr<CZovLibrary>> m_dirty;
    /// Copies of this run, and libraries that were looked at when they were opened.
    std::map<const CZovLibrary*, std::filesystem::path> m_copies;
    std::map<const CZovLibrary*, std::weak_ptr<CZovLibrary>> m_known;
    std::deque<std::weak_ptr<CZovLibrary>> m_toRestore; ///< the first is being read
    CBackgroundJob m_writing;
    CBackgroundJob m_reading;
};

} // namespace zov::app
