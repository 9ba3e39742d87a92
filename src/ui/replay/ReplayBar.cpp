// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ReplayBar.h"

#include "base/File.h"
#include "ui/Prompt.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/WidgetFacts.h"

#include <QCoreApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <iterator>

namespace zov::ui::replay {
namespace {

enum EReplayCommand : unsigned
{
    ID_REPLAY_RECORD = 1,
    ID_REPLAY_STOP,
    ID_REPLAY_PLAY,
    ID_REPLAY_SPEED,
    ID_REPLAY_CURSOR,
    ID_REPLAY_CONVERT
};

constexpr SCommand kCommands[] = {
    {ID_REPLAY_RECORD, "OnReplayRecord", "Record",
     "Record what you do in the windows\nRecord what you do in the windows", "record", ""},
    {ID_REPLAY_STOP, "OnReplayStop", "Stop",
     "Stop recording or playing\nStop recording or playing (Ctrl+Shift+F9, over a dialog, too)",
     "stop", "Ctrl+Shift+F9"},
    {ID_REPLAY_PLAY, "OnReplayPlay", "Play",
     "Play a record; the next step when playing by steps\nPlay a record; the next step when "
     "playing "
     "by steps",
     "play", ""},
    {ID_REPLAY_SPEED, "OnReplaySpeed", "Speed",
     "How fast records are played\nHow fast records are played", "speed", ""},
    {ID_REPLAY_CURSOR, "OnReplayCursor", "Cursor",
     "Point at a widget whose state is to be checked\nPoint at a widget whose state is to be "
     "checked (Ctrl+Shift+F8 while recording, over a dialog, too)",
     "cursor", "Ctrl+Shift+F8"},
    {ID_REPLAY_CONVERT, "OnReplayConvert", "Convert",
     "Bring a record into its present form, with its brief\nBring a record into its present form, "
     "with its brief",
     "convert", ""},
};

const char* const kRecordFilter = "Tavrely GUI Record Files(*.xml)";
const char* const kLoadFilter = "Tavrely GUI Record Files(*.re, *.xml, *.brf)";
const char* const kCheckPointFilter = "Check Point Files(*.ckp);;All File(*.*)";
const char* const kWarning =
    "It is highly recommended that do not use mouse or keyboard while you are playing a recorded "
    "script.\nThese kinds of operations may (or may not if you're lucky) interrupt the playing "
    "process.";

constexpr std::pair<const char*, double> kSpeeds[] = {
    {"As recorded", 1.0},      {"2 times faster", 2.0}, {"5 times faster", 5.0},
    {"10 times faster", 10.0}, {"Without delays", 0.0},
};

/// What playing will be like, unless it is as usual.
QString SpeedText(double speed)
{
    const auto* at = std::ranges::find(kSpeeds, speed, [](const auto& one) { return one.second; });
    return at == std::begin(kSpeeds)
               ? CReplayBar::tr("Ready")
               : CReplayBar::tr("Ready, plays: %1").arg(CReplayBar::tr(at->first).toLower());
}

std::filesystem::path Path(const QString& text)
{
    return TextPath(text.toStdString());
}

QString Text(const std::filesystem::path& path)
{
    return QString::fromStdString(PathText(path));
}

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CReplayBar, CCmdTargetBase)
ZOV_ON_COMMAND_UPDATE(ID_REPLAY_RECORD, ReplayRecord)
ZOV_ON_COMMAND_UPDATE(ID_REPLAY_STOP, ReplayStop)
ZOV_ON_COMMAND_UPDATE(ID_REPLAY_PLAY, ReplayPlay)
ZOV_ON_COMMAND(ID_REPLAY_SPEED, ReplaySpeed)
ZOV_ON_COMMAND_UPDATE(ID_REPLAY_CURSOR, ReplayCursor)
ZOV_ON_COMMAND_UPDATE(ID_REPLAY_CONVERT, ReplayConvert)
ZOV_END_MESSAGE_MAP()

CReplayBar::CReplayBar(QMainWindow& main, FEnvironment environment, CLogSink& log)
    : QToolBar(QStringLiteral("ZOV - Replay"), &main)
    , m_main(main)
    , m_environment(std::move(environment))
    , m_log(log)
    , m_playLog([this](std::string_view text) { m_played.emplace_back(text); })
    , m_recorder(main, m_environment)
    , m_player(main, m_environment, m_playLog)
    , m_actions(new CCommandActions(kCommands, *this, *this))
    , m_state(new QLabel(this))
{
    setObjectName(QStringLiteral("ZovReplay"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_actions->FillToolBar(*this,
                           {ID_REPLAY_RECORD, ID_REPLAY_STOP, ID_REPLAY_PLAY, ID_REPLAY_SPEED,
                            kSeparator, ID_REPLAY_CURSOR, ID_REPLAY_CONVERT});
    m_state->setObjectName(QStringLiteral("ReplayState"));
    m_state->setContentsMargins(8, 0, 8, 0);
    addWidget(m_state);
    m_recorder.Ignore(*this);
    connect(&m_recorder, &CRecorder::Recorded, this, &CReplayBar::ShowState);
    connect(&m_player, &CPlayer::Stepped, this, &CReplayBar::ShowState);
    connect(&m_player, &CPlayer::Finished, this, &CReplayBar::OnPlayed);
    connect(&m_picker, &CWidgetPicker::Picked, this, &CReplayBar::Picked);
    connect(&m_picker, &CWidgetPicker::Ended, this, [this] {
        m_recorder.Pause(false);
        ShowState();
    });
    ShowState();
}

CReplayBar::~CReplayBar()
{
    static_cast<void>(m_recorder.Stop()); // with the window nobody is left to be told
}

void CReplayBar::SetIcons(const std::function<QIcon(const QString&)>& imageOf)
{
    m_actions->SetIcons(imageOf);
}

void CReplayBar::SetBusy(std::function<bool()> busy)
{
    m_player.SetBusy(std::move(busy));
}

bool CReplayBar::IsFree() const
{
    return !m_recorder.IsRecording() && !m_player.IsPlaying();
}

void CReplayBar::ShowState()
{
    QString text = SpeedText(m_speed);
    if (m_picker.IsPicking()) {
        text = tr("Click the widget to check, Esc to cancel");
    } else if (m_recorder.IsRecording()) {
        text = tr("Recording: %L1 events").arg(m_recorder.Record().events.size());
    } else if (m_player.IsPlaying()) {
        text = m_player.IsWaiting() ? tr("%L1 of %L2 played, Play does the next step")
                                    : tr("Playing: %L1 of %L2");
        text = text.arg(m_player.Result().played).arg(m_player.Result().events);
    } else if (m_player.Result().events > 0) {
        const SPlayResult& result = m_player.Result();
        text = result.Good() ? tr("Played, %L1 check points passed").arg(result.checkPointsPassed)
                             : tr("Played with failures, see the output");
    }
    m_state->setText(text);
    m_actions->UpdateAll();
}

/// Before the recorder, to which these keys are no input. Not while an input is on its way through
/// the filters: it would pass them twice.
void CReplayBar::WatchKeys()
{
    if (m_watchesKeys == IsFree()) {
        m_watchesKeys = !m_watchesKeys;
        m_watchesKeys ? QCoreApplication::instance()->installEventFilter(this)
                      : QCoreApplication::instance()->removeEventFilter(this);
    }
}

bool CReplayBar::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride;
    if (!isKey) {
        return QToolBar::eventFilter(watched, event);
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const QKeySequence pressed(key.key() | static_cast<int>(key.modifiers()));
    for (const unsigned command : {ID_REPLAY_STOP, ID_REPLAY_CURSOR}) {
        QAction& action = *m_actions->Action(command);
        if (action.shortcut() != pressed) {
            continue;
        }
        event->accept();
        if (event->type() == QEvent::KeyPress && !key.isAutoRepeat()) {
            action.trigger();
        }
        return true;
    }
    return QToolBar::eventFilter(watched, event);
}

void CReplayBar::OnPlayed()
{
    for (const std::string& line : m_played) {
        m_log.Write(line);
    }
    m_played.clear();
    WatchKeys();
    ShowState();
}

void CReplayBar::Report(const CResult<void>& result)
{
    if (!result) {
        CPrompt::Tell(&m_main, QString::fromStdString(result.Error().Full()), EIcon::Error);
    }
}

std::filesystem::path CReplayBar::AskRecordPath()
{
    const SReplayOptions options = SReplayOptions::Of(m_environment);
    if (!options.recFixPath.empty()) {
        const QString name = CPrompt::Text(&m_main, tr("Record"), tr("Name of the record:"));
        if (name.isEmpty()) {
            return {};
        }
        const std::filesystem::path path = options.recFixPath / RecordFileName(name.toStdString());
        std::error_code ignored;
        const bool replaces = std::filesystem::exists(path, ignored);
        return !replaces || CPrompt::Ask(&m_main,
                                         tr("'%1' is there already. Replace it?").arg(Text(path)),
                                         EButtons::YesNo) == EAnswer::Yes
                   ? path
                   : std::filesystem::path();
    }
    const QString file = CPrompt::SaveFile(&m_main, tr("Record"), QLatin1String(kRecordFilter),
                                           QStringLiteral("GUIReplay_new.xml"));
    if (file.isEmpty()) {
        return {};
    }
    const std::filesystem::path path = Path(file);
    return path.parent_path() / RecordFileName(PathText(path.filename()));
}

void CReplayBar::OnReplayRecord()
{
    if (const std::filesystem::path path = AskRecordPath(); !path.empty()) {
        Report(m_recorder.Start(path));
        WatchKeys();
        ShowState();
    }
}

void CReplayBar::OnUpdateReplayRecord(CCmdUI& ui)
{
    ui.Enable(IsFree());
    ui.SetCheck(m_recorder.IsRecording());
}

void CReplayBar::OnReplayStop()
{
    m_picker.Cancel();
    m_player.Stop();
    if (m_recorder.IsRecording()) {
        Report(m_recorder.Stop());
    }
    WatchKeys();
    ShowState();
}

void CReplayBar::OnUpdateReplayStop(CCmdUI& ui)
{
    ui.Enable(!IsFree());
}

void CReplayBar::OnReplayPlay()
{
    if (m_player.IsWaiting()) {
        m_player.Next();
        return;
    }
    const SReplayOptions options = SReplayOptions::Of(m_environment);
    if (!options.recFixPath.empty()) {
        CPrompt::SetFolder(Text(options.recFixPath));
    }
    const QString file =
        CPrompt::OpenFile(&m_main, tr("Load GUI Record"), QLatin1String(kLoadFilter));
    if (file.isEmpty()) {
        return;
    }
    CNullLog later; // the play's log tells it
    CResult<SLoadedRecord> loaded = LoadRecord(Path(file), options, later);
    if (!loaded) {
        Report(loaded.Error());
        return;
    }
    CPrompt::Tell(&m_main, tr(kWarning), EIcon::Warning);
    m_player.Play(loaded.Take(), m_speed);
    WatchKeys();
    ShowState();
}

void CReplayBar::OnUpdateReplayPlay(CCmdUI& ui)
{
    ui.Enable(IsFree() || m_player.IsWaiting());
}

void CReplayBar::OnReplaySpeed()
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("SpeedMenu"));
    for (const auto& [text, speed] : kSpeeds) {
        QAction* action = menu.addAction(tr(text));
        action->setCheckable(true);
        action->setChecked(speed == m_speed);
        connect(action, &QAction::triggered, this, [this, speed = speed] { m_speed = speed; });
    }
    const QWidget* button = widgetForAction(m_actions->Action(ID_REPLAY_SPEED));
    const bool isShown = button != nullptr && button->isVisible();
    menu.exec(isShown ? button->mapToGlobal(button->rect().bottomLeft()) : QCursor::pos());
    ShowState();
}

void CReplayBar::OnReplayCursor()
{
    if (m_picker.IsPicking()) {
        m_picker.Cancel();
    } else {
        m_recorder.Pause(true); // pointing is no part of the record
        m_picker.Start();
    }
    ShowState();
}

void CReplayBar::OnUpdateReplayCursor(CCmdUI& ui)
{
    ui.Enable(!m_player.IsPlaying());
    ui.SetCheck(m_picker.IsPicking());
}

void CReplayBar::Picked(QWidget* widget)
{
    const QPointer<QWidget> kept = widget;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("PickedMenu"));
    menu.addAction(Shown(*widget))->setEnabled(false);
    menu.addSeparator();
    const QAction* check = menu.addAction(tr("Save Check Point..."));
    QAction* watch = menu.addAction(tr("Watch Point"));
    watch->setEnabled(m_recorder.IsRecording());
    const QAction* chosen = menu.exec(QCursor::pos());
    if (chosen == check && kept) {
        SaveCheckPoint(*kept);
    } else if (chosen == watch && kept) {
        m_recorder.AddWatchPoint(*kept);
    }
    ShowState();
}

void CReplayBar::SaveCheckPoint(QWidget& widget)
{
    m_recorder.Pause(true); // the dialog is no part of the record
    const QPointer<QWidget> kept = &widget;
    const QString file =
        CPrompt::SaveFile(&m_main, tr("Save Check Point"), QLatin1String(kCheckPointFilter),
                          Text(m_recorder.NextGolden()));
    m_recorder.Pause(false);
    if (!file.isEmpty() && kept) {
        Report(m_recorder.AddCheckPoint(*kept, Path(file)));
    }
}

void CReplayBar::OnReplayConvert()
{
    const QString file = CPrompt::OpenFile(&m_main, tr("choose GUI Record"),
                                           QLatin1String(kRecordFilter) + QLatin1String(";;") +
                                               QLatin1String(kLoadFilter));
    if (file.isEmpty()) {
        return;
    }
    const CResult<std::vector<std::filesystem::path>> written =
        ConvertRecord(Path(file), SReplayOptions::Of(m_environment), m_log);
    if (!written) {
        Report(written.Error());
        return;
    }
    QStringList names;
    for (const std::filesystem::path& path : *written) {
        names += Text(path);
    }
    CPrompt::Tell(&m_main, tr("Written:\n%1").arg(names.join(QLatin1Char('\n'))));
}

void CReplayBar::OnUpdateReplayConvert(CCmdUI& ui)
{
    ui.Enable(IsFree());
}

} // namespace zov::ui::replay
