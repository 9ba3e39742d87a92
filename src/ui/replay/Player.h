// SPDX-License-Identifier: Apache-2.0
/// Plays a record in the program's windows.
///
///     m_player.SetBusy([this] { return m_session.Job().IsRunning(); });
///     connect(&m_player, &CPlayer::Finished, ...);
///     m_player.Play(std::move(*loaded), speed);
///
/// Every step is begun from a timer, so that play goes on inside the event loops of modal dialogs
/// and menus that an earlier step opened.
#pragma once

#include "base/Clock.h"
#include "base/Environment.h"
#include "base/Sink.h"
#include "ui/replay/CheckPoints.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/ReplayLog.h"
#include "ui/replay/ReplayOptions.h"
#include "ui/replay/ToolkitLog.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zov::ui::replay {

struct SPlayResult
{
    int events = 0; ///< of the record, check points included
    int played = 0;
    int checkPointsPassed = 0;
    int checkPointsFailed = 0;
    int errors = 0;       ///< steps that could not be done
    bool stopped = false; ///< before the end

    /// Everything was played and every check point passed.
    [[nodiscard]] bool Good() const { return !stopped && errors == 0 && checkPointsFailed == 0; }
};

class CPlayer : public QObject
{
    Q_OBJECT

public:
    /// @param sink takes every line of the log as well; outlives the player
    CPlayer(QWidget& main, FEnvironment environment, CLogSink& sink, FClock clock = LocalTimeNow);
    ~CPlayer() override;

    /// Steps wait while this says that work goes on beside the window.
    void SetBusy(std::function<bool()> busy) { m_busy = std::move(busy); }

    /// @param speed as many times faster than recorded; 0: without any delay
    void Play(SLoadedRecord loaded, double speed);
    void Stop();
    /// The next step when playing step by step.
    void Next();
    [[nodiscard]] bool IsPlaying() const { return m_playing; }
    /// Waits for Next.
    [[nodiscard]] bool IsWaiting() const { return m_playing && m_options.manual && !m_mayStep; }
    [[nodiscard]] const SPlayResult& Result() const { return m_result; }

Q_SIGNALS:
    void Stepped(int done, int total);
    void Finished();

private:
    /// What a step waits for.
    enum class EState
    {
        Ready,
        Usable, ///< would be ready but is hidden or disabled
        NotYet
    };
    struct STarget
    {
        EState state = EState::NotYet;
        QPointer<QWidget> widget;
        QPoint pos;
        QStringList notices;
        QString error;   ///< why it is not ready
        QString missing; ///< "visible" or "enabled"
    };

    void Tick();
    void BeginStep();
    [[nodiscard]] const SRecordedEvent& Event() const;
    [[nodiscard]] STarget LookUp(const SRecordedEvent& event);
    void OpenMenuOf(const SRecordedEvent& event) const;
    [[nodiscard]] bool IsBlocked(const QWidget& target) const;
    /// How the target was found, and what it lacks.
    void LogFound(const SRecordedEvent& event, const STarget& target);
    void TakePoint(const SRecordedEvent& event, const STarget& target);
    void Do(const SRecordedEvent& event, const STarget& target);
    void Deliver(const SRecordedEvent& event, QWidget& target, const QPoint& pos);
    void CompareInitialText(const SRecordedEvent& event, const QWidget& target);
    void ClosePopups(const QWidget* target);
    bool CloseModal();
    void GiveUp(const STarget& target);
    void EndStep();
    void Finish(bool stopped);
    void CloseRest();
    void Log(const QString& text);
    [[nodiscard]] QString BriefPathOf() const;

    QWidget& m_main;
    FEnvironment m_environment;
    CLogSink& m_sink;
    FClock m_clock;
    std::function<bool()> m_busy;
    SReplayOptions m_options;
    SLoadedRecord m_loaded;
    double m_speed = 1.0;
    std::unique_ptr<CPlayLog> m_log;
    std::unique_ptr<CCheckPoints> m_checkPoints;
    std::optional<CToolkitLog> m_toolkitLog;
    SPlayResult m_result;
    std::size_t m_at = 0;
    bool m_playing = false;
    bool m_mayStep = false;
    bool m_closing = false;
    std::vector<QPointer<QWidget>> m_closed; ///< for this step
    bool m_cleared = false;                  ///< something was closed, and the step may begin now
    QTimer m_timer;
    QElapsedTimer m_sinceStep; ///< since this step could have begun
    QElapsedTimer m_sinceLast; ///< since the one before was done
};

} // namespace zov::ui::replay
