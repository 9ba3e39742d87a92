// SPDX-License-Identifier: Apache-2.0
/// Writes down what the user does in the program's windows.
///
///     m_recorder.Ignore(*m_replayBar);
///     RETURN_IF_ERROR(m_recorder.Start(path));
///     ...
///     m_recorder.AddCheckPoint(*widget, goldenPath);
///     const CResult<void> saved = m_recorder.Stop();
#pragma once

#include "base/Clock.h"
#include "base/Environment.h"
#include "base/Result.h"
#include "ui/replay/RecordedEvent.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <filesystem>
#include <optional>
#include <vector>

namespace zov::ui::replay {

class CRecorder : public QObject
{
    Q_OBJECT

public:
    CRecorder(QWidget& main, FEnvironment environment, FClock clock = LocalTimeNow);

    /// What happens in this widget and inside it is not recorded.
    void Ignore(QWidget& widget) { m_ignored.emplace_back(&widget); }

    /// Writes the record without events first, so that what can't be written is told before the
    /// work and not after it.
    CResult<void> Start(const std::filesystem::path& record);
    [[nodiscard]] bool IsRecording() const { return m_recording; }
    /// What happens until it is called with false is not recorded.
    void Pause(bool on) { m_paused = on; }
    /// Ends recording and writes the record and its brief.
    CResult<void> Stop();
    [[nodiscard]] const SRecord& Record() const { return m_record; }
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

    /// Where a check point's golden state goes when the user says nothing else.
    [[nodiscard]] std::filesystem::path NextGolden() const;
    /// Stores the widget's state as golden file, with its locator (`.loc`) and its picture (`.png`)
    /// beside it; while recording, playing compares with it at this point.
    CResult<void> AddCheckPoint(QWidget& widget, const std::filesystem::path& golden);
    /// Playing saves the widget's state at this point.
    void AddWatchPoint(const QWidget& widget);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void Recorded(int events);

private:
    void OnEvent(QWidget& target, const QEvent& event);
    [[nodiscard]] bool Wanted(const QWidget& target, const QEvent& event) const;
    [[nodiscard]] bool IsIgnored(const QWidget& target) const;
    /// The toolkit hands an event that a widget does not take to its parents.
    [[nodiscard]] bool WasSeenBelow(const QWidget& target, const SEventFields& fields) const;
    void Append(QWidget& target, const SEventFields& fields);
    void AppendPendingKey();
    void AppendPoint(const QWidget& widget, const std::string& extraInfo);
    void OnShow(const QWidget& widget);
    [[nodiscard]] SRecordedEvent NewEvent(const QWidget& target, const SEventFields& fields) const;

    QWidget& m_main;
    FEnvironment m_environment;
    FClock m_clock;
    std::vector<QPointer<QWidget>> m_ignored;
    std::filesystem::path m_path;
    SRecord m_record;
    bool m_recording = false;
    bool m_paused = false;
    QElapsedTimer m_sinceLast;
    QPointer<QWidget> m_lastTarget;
    SEventFields m_lastFields;
    /// A key that a shortcut may take: then no press follows.
    std::optional<SEventFields> m_pendingKey;
    QPointer<QWidget> m_pendingTarget;
};

} // namespace zov::ui::replay
