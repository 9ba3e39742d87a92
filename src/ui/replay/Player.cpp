// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/Player.h"

#include "base/File.h"
#include "base/Text.h"
#include "ui/replay/Brief.h"
#include "ui/replay/EventCodec.h"
#include "ui/replay/Locator.h"
#include "ui/replay/MachineFacts.h"
#include "ui/replay/Place.h"
#include "ui/replay/WidgetFacts.h"
#include "ui/replay/WorldPoint.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMenu>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr int kRetryMs = 5;
constexpr int kIdleMs = 150;           ///< in which windows have brought their commands up to date
constexpr int kUsableMs = 1500;        ///< for a target to become visible and enabled
constexpr int kCheckPointMs = 5000;    ///< for a state to become what it should be
constexpr std::size_t kMaxClosed = 10; ///< unexpected windows at one step
constexpr int kClosingMs = 20;         ///< for a window to close, or to ask whether it may
constexpr std::int64_t kLongestDelayMs = 3'600'000;

QString NameOfStep(const SRecordedEvent& event)
{
    return event.isCheckPoint ? QStringLiteral("CheckPoint")
                              : QString::fromLatin1(EventName(event.fields.type));
}

/// The release of a press that closed its own window: nobody is left to get it.
bool IsOrphan(const SRecordedEvent& event, const SRecordedEvent& before)
{
    const bool isRelease =
        event.fields.type == EEvent::KeyRelease || event.fields.type == EEvent::MouseButtonRelease;
    return isRelease && !event.isCheckPoint && event.target.widgets == before.target.widgets;
}

/// Whether a shortcut may take the key. Windows enable their commands in idle time, some ten times
/// a second, and a shortcut of a disabled command does nothing.
bool MayBeShortcut(const SRecordedEvent& event)
{
    const std::string& text = event.fields.text;
    const bool writes = !text.empty() && static_cast<unsigned char>(text[0]) >= ' ' &&
                        text[0] != 0x7F &&
                        (event.fields.modifiers & (Qt::ControlModifier | Qt::AltModifier)) == 0;
    return event.fields.type == EEvent::KeyPress && !event.isCheckPoint && !writes;
}

/// Whether the input would have gone to a pop-up, had one been open.
bool NeedsNoPopup(const SRecordedEvent& event)
{
    switch (event.fields.type) {
    case EEvent::MouseButtonPress:
    case EEvent::MouseButtonDblClick:
    case EEvent::KeyPress:
    case EEvent::Wheel:
    case EEvent::ContextMenu:
        return !event.isCheckPoint;
    default:
        return false;
    }
}

QString Waiting(const QString& what)
{
    return QStringLiteral("\n\tError: Cannot locate %1 target widget.").arg(what);
}

} // namespace

CPlayer::CPlayer(QWidget& main, FEnvironment environment, CLogSink& sink, FClock clock)
    : m_main(main)
    , m_environment(std::move(environment))
    , m_sink(sink)
    , m_clock(std::move(clock))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CPlayer::Tick);
}

CPlayer::~CPlayer() = default;

void CPlayer::Log(const QString& text)
{
    m_log->Write(text.toStdString());
}

void CPlayer::Play(SLoadedRecord loaded, double speed)
{
    if (m_playing) {
        return;
    }
    m_options = SReplayOptions::Of(m_environment);
    m_loaded = std::move(loaded);
    m_speed = speed;
    m_log = std::make_unique<CPlayLog>(m_loaded.path, m_clock, m_sink);
    m_checkPoints = std::make_unique<CCheckPoints>(m_loaded.path, m_options, *m_log, m_clock);
    m_result = {};
    m_result.events = static_cast<int>(m_loaded.record.events.size());
    m_at = 0;
    m_playing = true;
    m_mayStep = !m_options.manual;
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_log->Write("#Playing Enviroment:\n" + EnvironmentBlock(HeaderOf(m_main, m_environment)));
    m_log->Write("Play Started");
    m_log->Write("Playing " + PathText(m_loaded.path));
    for (const std::string& notice : m_loaded.notices) {
        m_log->Write(notice);
    }
    if (!m_options.toolkitLog.empty() &&
        !m_toolkitLog.emplace(TextPath(m_options.toolkitLog)).Ok()) {
        m_log->Write("Warning: The log '" + m_options.toolkitLog + "' cannot be written.");
    }
    BeginStep();
}

void CPlayer::Stop()
{
    if (m_playing) {
        Finish(true);
    }
}

void CPlayer::Next()
{
    if (IsWaiting()) {
        m_mayStep = true;
        BeginStep();
    }
}

const SRecordedEvent& CPlayer::Event() const
{
    return m_loaded.record.events[m_at];
}

/// The timer is set before anything is delivered: what opens a dialog comes back when that closes.
void CPlayer::BeginStep()
{
    m_closed.clear();
    m_cleared = false;
    m_sinceStep.invalidate();
    std::int64_t delay = 0;
    if (m_at < m_loaded.record.events.size() && m_speed > 0.0) {
        delay = static_cast<std::int64_t>(
            static_cast<double>(std::clamp<std::int64_t>(Event().delayMs, 0, kLongestDelayMs)) /
            m_speed);
    }
    m_timer.start(static_cast<int>(std::min(delay, kLongestDelayMs)));
}

void CPlayer::Tick()
{
    if (!m_playing) {
        return;
    }
    if (m_closing) {
        CloseRest();
        return;
    }
    if (IsWaiting()) {
        return;
    }
    if (!m_sinceStep.isValid()) {
        m_sinceStep.start();
    }
    const bool timedOut = m_sinceStep.elapsed() >= m_options.stepTimeoutMs;
    if (m_busy && m_busy() && !timedOut) {
        m_timer.start(kRetryMs);
        return;
    }
    if (m_at == m_loaded.record.events.size()) {
        Finish(false);
        return;
    }
    const SRecordedEvent& event = Event();
    if (MayBeShortcut(event) && m_sinceLast.isValid() && m_sinceLast.elapsed() < kIdleMs) {
        m_timer.start(kRetryMs);
        return;
    }
    const STarget target = LookUp(event);
    const bool isGone = !target.widget || !target.widget->isVisible();
    if (isGone && m_at > 0 && IsOrphan(event, m_loaded.record.events[m_at - 1])) {
        EndStep();
        return;
    }
    if (target.state == EState::NotYet && timedOut) {
        GiveUp(target);
    } else if (target.state == EState::NotYet ||
               (target.state == EState::Usable &&
                m_sinceStep.elapsed() < std::min(kUsableMs, m_options.stepTimeoutMs))) {
        m_timer.start(kRetryMs);
    } else if (event.isCheckPoint) {
        TakePoint(event, target);
    } else {
        Do(event, target);
    }
}

CPlayer::STarget CPlayer::LookUp(const SRecordedEvent& event)
{
    STarget target;
    SFoundWidget found = FindWidget(event.target, &m_main);
    target.widget = found.widget;
    target.notices = found.notices;
    if (found.widget == nullptr) {
        OpenMenuOf(event);
        target.error = Waiting(NameOfStep(event));
        return target;
    }
    if (!found.widget->isVisible()) {
        OpenMenuOf(event);
    }
    if (NeedsNoPopup(event)) {
        ClosePopups(found.widget);
    }
    if (IsBlocked(*found.widget) && !event.isCheckPoint) {
        target.error = Waiting(NameOfStep(event));
        return target;
    }
    target.state = EState::Ready;
    if (event.isCheckPoint || event.fields.IsKey() || event.fields.type == EEvent::FocusOut) {
        target.pos = found.widget->rect().center();
    } else if (const auto world = FromWorld(*found.widget, {event.realPos.x, event.realPos.y})) {
        target.pos = *world;
    } else {
        const SFoundPlace place =
            FindPlace(*found.widget, ParseExtraIndex(event.target.extraIndex), event.item);
        if (!place.found) {
            target.state = EState::NotYet;
            target.error = Waiting(NameOfStep(event)) + QStringLiteral("\n\t") + place.error;
            return target;
        }
        target.pos = place.pos;
        target.notices += place.warnings;
        target.missing = place.disabled.isEmpty() ? QString() : QStringLiteral("enabled");
    }
    if (!found.widget->isVisible()) {
        target.missing = QStringLiteral("visible");
    } else if (!found.widget->isEnabled() && !event.isCheckPoint) {
        target.missing = QStringLiteral("enabled");
    }
    target.state = target.missing.isEmpty() ? EState::Ready : EState::Usable;
    return target;
}

/// A user opens a sub-menu by letting the pointer rest on its entry, which no input tells.
void CPlayer::OpenMenuOf(const SRecordedEvent& event) const
{
    const std::string& title = event.target.widgets.back().windowTitle;
    auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (open == nullptr || event.target.widgets.size() != 1) {
        return;
    }
    for (QAction* action : open->actions()) {
        QMenu* menu = action->menu();
        if (menu != nullptr && !menu->isVisible() && TitleOf(*menu).toStdString() == title &&
            NameOf(*menu).toStdString() == event.target.widgets.back().objectName) {
            open->setActiveAction(action);
        }
    }
}

bool CPlayer::IsBlocked(const QWidget& target) const
{
    const QWidget* modal = QApplication::activeModalWidget();
    for (const QWidget* one = &target; modal != nullptr && one != nullptr;
         one = one->parentWidget()) {
        if (one == modal) {
            return false;
        }
    }
    return modal != nullptr;
}

void CPlayer::ClosePopups(const QWidget* target)
{
    for (std::size_t i = 0; i < kMaxClosed; ++i) {
        QWidget* popup = QApplication::activePopupWidget();
        // A list of completions leaves the keys to its field.
        const bool isOf =
            popup != nullptr && target != nullptr &&
            (target->window()->windowType() == Qt::Popup || popup->focusProxy() == target);
        if (popup == nullptr || isOf) {
            return;
        }
        Log(QStringLiteral("Info: Popup widget is closed: %1.").arg(Shown(*popup)));
        popup->close();
    }
}

bool CPlayer::CloseModal()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || m_closed.size() == kMaxClosed) {
        return false;
    }
    const bool again =
        std::ranges::find(m_closed, modal, &QPointer<QWidget>::data) != m_closed.end();
    if (!again) {
        Log(QStringLiteral("Warning: Unexpected modal widget is closed: %1.").arg(Shown(*modal)));
    }
    m_closed.emplace_back(modal);
    // What asks before it closes does so in an event loop of its own, in which playing goes on and
    // closes the question. What is still there then is ended without one.
    QTimer::singleShot(0, modal, [modal, again] {
        auto* dialog = qobject_cast<QDialog*>(modal);
        if (dialog == nullptr) {
            modal->close();
        } else if (again) {
            dialog->done(QDialog::Rejected);
        } else {
            dialog->reject();
        }
    });
    return true;
}

/// The step's time is over: a window in the way is closed and the step tried again, else the play
/// ends, since what follows would meet the wrong windows.
void CPlayer::GiveUp(const STarget& target)
{
    const bool inTheWay = target.widget == nullptr || IsBlocked(*target.widget);
    if (inTheWay && CloseModal()) {
        m_cleared = true;
        m_timer.start(kClosingMs);
        return;
    }
    if (std::exchange(m_cleared, false)) {
        m_sinceStep.start();
        m_timer.start(kRetryMs);
        return;
    }
    Log(BriefPathOf() + target.error);
    ++m_result.errors;
    if (Event().isCheckPoint) {
        m_checkPoints->Missed();
    }
    m_checkPoints->SaveSnapshots(m_main, QStringLiteral("error_"));
    Finish(true);
}

void CPlayer::TakePoint(const SRecordedEvent& event, const STarget& target)
{
    const bool isWatch = CCheckPoints::IsWatchPoint(event);
    if (!isWatch && !m_checkPoints->Holds(event, *target.widget) &&
        m_sinceStep.elapsed() < std::min(kCheckPointMs, m_options.stepTimeoutMs)) {
        m_timer.start(kRetryMs);
        return;
    }
    LogFound(event, target);
    if (isWatch) {
        m_checkPoints->Watch(*target.widget);
    } else {
        m_checkPoints->Verify(event, *target.widget);
    }
    EndStep();
}

void CPlayer::LogFound(const SRecordedEvent& event, const STarget& target)
{
    for (const QString& notice : target.notices) {
        Log(notice);
    }
    if (!target.missing.isEmpty()) {
        Log(QStringLiteral("\n\tWarning: %1 target widget is not %2.")
                .arg(NameOfStep(event), target.missing));
    }
    if (m_options.fullLog) {
        Log(QStringLiteral("Playing %1 %2").arg(NameOfStep(event), BriefPathOf()));
    }
}

void CPlayer::Do(const SRecordedEvent& event, const STarget& target)
{
    LogFound(event, target);
    CompareInitialText(event, *target.widget);
    const SRecordedEvent copy = event; // the record may be gone when a nested loop ends
    EndStep();
    Deliver(copy, *target.widget, target.pos);
}

void CPlayer::CompareInitialText(const SRecordedEvent& event, const QWidget& target)
{
    const QString now = InputText(target);
    const QString then = QString::fromStdString(event.extraInfo);
    if (event.hasExtraInfo && event.fields.IsKey() && !now.isNull() && now != then) {
        Log(QStringLiteral("Warning: The initial text of the input widget is changed from \"%1\" "
                           "to \"%2\".")
                .arg(then, now));
    }
}

void CPlayer::Deliver(const SRecordedEvent& event, QWidget& target, const QPoint& pos)
{
    QWidget* window = target.window();
    if (window->windowType() != Qt::Popup && !window->isActiveWindow()) {
        window->activateWindow();
        QApplication::setActiveWindow(window);
    }
    if (event.fields.type == EEvent::InputMethod) {
        Log(QStringLiteral("Error: InputMethod is not yet fully supported. It would be better to "
                           "use default english input when recording."));
        ++m_result.errors;
        return;
    }
    if (event.fields.type == EEvent::FocusOut) {
        target.clearFocus();
        return;
    }
    if (event.fields.IsKey() && window->windowType() != Qt::Popup && !target.hasFocus()) {
        target.setFocus(Qt::OtherFocusReason);
    }
    const std::unique_ptr<QEvent> input = MakeEvent(event.fields, target, pos);
    SendEvent(target, *input);
}

void CPlayer::EndStep()
{
    ++m_at;
    ++m_result.played;
    m_sinceLast.start();
    m_mayStep = !m_options.manual;
    Q_EMIT Stepped(static_cast<int>(m_at), m_result.events);
    BeginStep();
}

void CPlayer::Finish(bool stopped)
{
    m_timer.stop();
    m_result.stopped = stopped;
    m_closing = true;
    m_closed.clear();
    CloseRest();
}

/// What the record left open would keep its event loop, and the program, waiting.
void CPlayer::CloseRest()
{
    ClosePopups(nullptr);
    if (!m_result.stopped && CloseModal()) {
        m_timer.start(kClosingMs);
        return;
    }
    m_closing = false;
    m_result.checkPointsPassed = m_checkPoints->Passed();
    m_result.checkPointsFailed = m_checkPoints->Failed();
    m_log->Write(m_result.stopped ? "Play Stopped" : "Play Ended");
    m_playing = false;
    m_toolkitLog.reset();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
    Q_EMIT Finished();
}

QString CPlayer::BriefPathOf() const
{
    return QString::fromStdString(BriefPath(Event().target));
}

} // namespace zov::ui::replay
