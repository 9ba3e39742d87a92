// SPDX-License-Identifier: Apache-2.0
/// The toolbar "ZOV - Replay": what the user does is recorded and played back.
///
///     m_replayBar = new CReplayBar(*this, ProcessEnvironment(), *m_output);
///     m_replayBar->SetIcons([](const QString& name) { return Images().Icon(name); });
///     addToolBar(Qt::TopToolBarArea, m_replayBar);
#pragma once

#include "base/Environment.h"
#include "base/Sink.h"
#include "ui/CommandActions.h"
#include "ui/replay/Player.h"
#include "ui/replay/Recorder.h"
#include "ui/replay/WidgetPicker.h"

#include <QToolBar>

#include <string>
#include <vector>

class QLabel;
class QMainWindow;

namespace zov::ui::replay {

class CReplayBar : public QToolBar, public CCmdTargetBase
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param main the window that records take for the main one; owns the bar
    /// @param log  takes what playing has to say; outlives the bar
    CReplayBar(QMainWindow& main, FEnvironment environment, CLogSink& log);
    /// What is being recorded is saved.
    ~CReplayBar() override;

    void SetIcons(const std::function<QIcon(const QString&)>& imageOf);
    /// Steps of a play wait while this says that work goes on beside the window.
    void SetBusy(std::function<bool()> busy);
    [[nodiscard]] CRecorder& Recorder() { return m_recorder; }
    [[nodiscard]] CPlayer& Player() { return m_player; }
    [[nodiscard]] CCommandActions& Actions() { return *m_actions; }

    /// While something is recorded or played, Stop and Cursor are reached by their keys from
    /// everywhere: over a modal dialog no button of the bar can be clicked.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnReplayRecord();
    void OnUpdateReplayRecord(CCmdUI& ui);
    void OnReplayStop();
    void OnUpdateReplayStop(CCmdUI& ui);
    void OnReplayPlay();
    void OnUpdateReplayPlay(CCmdUI& ui);
    void OnReplaySpeed();
    void OnReplayCursor();
    void OnUpdateReplayCursor(CCmdUI& ui);
    void OnReplayConvert();
    void OnUpdateReplayConvert(CCmdUI& ui);

    [[nodiscard]] std::filesystem::path AskRecordPath();
    void Picked(QWidget* widget);
    void SaveCheckPoint(QWidget& widget);
    void ShowState();
    void WatchKeys();
    void OnPlayed();
    void Report(const CResult<void>& result);
    [[nodiscard]] bool IsFree() const;

    QMainWindow& m_main;
    FEnvironment m_environment;
    CLogSink& m_log;
    /// Handed on when the play is over: a check point may be on the pane that shows the log.
    std::vector<std::string> m_played;
    CFunctionLog m_playLog;
    CRecorder m_recorder;
    CPlayer m_player;
    CWidgetPicker m_picker;
    CCommandActions* m_actions;
    QLabel* m_state;
    double m_speed = 1.0;
    bool m_watchesKeys = false;
};

} // namespace zov::ui::replay
