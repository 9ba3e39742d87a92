// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/Recorder.h"

#include "base/File.h"
#include "ui/replay/CheckPointText.h"
#include "ui/replay/EventCodec.h"
#include "ui/replay/Locator.h"
#include "ui/replay/MachineFacts.h"
#include "ui/replay/Place.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/RecordXml.h"
#include "ui/replay/ReplayLog.h"
#include "ui/replay/ReplayOptions.h"
#include "ui/replay/WidgetFacts.h"
#include "ui/replay/WidgetState.h"
#include "ui/replay/WorldPoint.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <fmt/format.h>

namespace zov::ui::replay {
namespace {

constexpr std::int64_t kMergeMovesMs = 15;

/// A pop-up takes the keys for the field that it belongs to.
QWidget& KeyTarget(QWidget& target)
{
    QWidget* proxy = target.window()->focusProxy();
    return proxy != nullptr && target.window()->windowType() == Qt::Popup ? *proxy : target;
}

} // namespace

CRecorder::CRecorder(QWidget& main, FEnvironment environment, FClock clock)
    : m_main(main)
    , m_environment(std::move(environment))
    , m_clock(std::move(clock))
{
}

CResult<void> CRecorder::Start(const std::filesystem::path& record)
{
    SRecord empty;
    empty.header = HeaderOf(m_main, m_environment);
    RETURN_IF_ERROR(SaveRecord(empty, record));
    m_path = record;
    m_record = std::move(empty);
    m_pendingKey.reset();
    m_lastTarget.clear();
    m_recording = true;
    m_paused = false;
    m_sinceLast.start();
    // Only the toolkit's own dialogs can be looked into.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::instance()->installEventFilter(this);
    AppendToAllLog(m_path.parent_path(), RecordingStarted(m_clock(), m_record.header, m_path));
    return {};
}

CResult<void> CRecorder::Stop()
{
    if (!m_recording) {
        return {};
    }
    AppendPendingKey();
    m_recording = false;
    QApplication::instance()->removeEventFilter(this);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
    const SReplayOptions options = SReplayOptions::Of(m_environment);
    ShortenToRecPath(m_record, options.recPath);
    AppendToAllLog(m_path.parent_path(), RecordingStopped(m_clock(), m_record.header));
    return SaveRecord(m_record, m_path);
}

bool CRecorder::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget != nullptr && !m_paused) {
        if (event->type() == QEvent::Show) {
            OnShow(*widget);
        } else if (!IsIgnored(*widget) && Wanted(*widget, *event)) {
            OnEvent(*widget, *event);
        }
    }
    return false;
}

void CRecorder::OnShow(const QWidget& widget)
{
    const bool waits = widget.isWindow() && (widget.isModal() || widget.windowType() == Qt::Popup);
    if (!waits || IsIgnored(widget)) {
        return;
    }
    AppendPendingKey(); // it was the shortcut's doing
    if (!m_record.events.empty()) {
        m_record.events.back().async = true;
    }
}

bool CRecorder::IsIgnored(const QWidget& target) const
{
    return std::ranges::any_of(m_ignored, [&](const QPointer<QWidget>& widget) {
        for (const QWidget* one = &target; one != nullptr && widget; one = one->parentWidget()) {
            if (one == widget) {
                return true;
            }
        }
        return false;
    });
}

bool CRecorder::Wanted(const QWidget& target, const QEvent& event) const
{
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
        return true;
    case QEvent::FocusOut:
        return HasFlag(target, kRecFocusOut);
    case QEvent::MouseMove:
        return event.spontaneous() &&
               (static_cast<const QMouseEvent&>(event).buttons() != Qt::NoButton ||
                FlaggedOf(target, kRecMouseMove) != nullptr);
    default:
        // What a widget passes on to another is no input of the user.
        return event.spontaneous();
    }
}

void CRecorder::OnEvent(QWidget& target, const QEvent& event)
{
    const std::optional<SEventFields> fields = FieldsOfEvent(event);
    if (!fields) {
        return;
    }
    if (event.type() == QEvent::ShortcutOverride) {
        if (!m_pendingKey || m_pendingKey->key != fields->key) {
            AppendPendingKey();
            m_pendingKey = fields;
            m_pendingTarget = &KeyTarget(target);
        }
        return;
    }
    const bool isPending =
        m_pendingKey && fields->type == EEvent::KeyPress && m_pendingKey->key == fields->key;
    if (isPending) {
        m_pendingKey.reset();
    } else {
        AppendPendingKey();
    }
    QWidget& shown = fields->IsKey() ? KeyTarget(target) : target;
    if (!WasSeenBelow(shown, *fields)) {
        Append(shown, *fields);
    }
    m_lastTarget = &shown;
    m_lastFields = *fields;
}

bool CRecorder::WasSeenBelow(const QWidget& target, const SEventFields& fields) const
{
    return m_lastTarget && m_lastTarget != &target && target.isAncestorOf(m_lastTarget) &&
           m_lastFields.type == fields.type && m_lastFields.timestamp == fields.timestamp &&
           m_lastFields.globalPos == fields.globalPos && m_lastFields.key == fields.key &&
           m_lastFields.globalPosF == fields.globalPosF;
}

void CRecorder::AppendPendingKey()
{
    if (m_pendingKey) {
        const SEventFields key = *m_pendingKey;
        m_pendingKey.reset();
        if (m_pendingTarget) {
            Append(*m_pendingTarget, key);
        }
    }
}

SRecordedEvent CRecorder::NewEvent(const QWidget& target, const SEventFields& fields) const
{
    const QPoint pos = PositionOf(fields, target);
    SRecordedEvent event;
    event.fields = fields;
    event.target = MakeLocator(target, pos, &m_main);
    if (!fields.IsKey() && fields.type != EEvent::FocusOut) {
        SPlace place = DescribePlace(target, pos);
        event.target.extraIndex = FormatExtraIndex(place.index);
        event.item = std::move(place.item);
    }
    const QPointF real = ToWorld(target, pos).value_or(pos);
    event.realPos = {real.x(), real.y()};
    event.async = FlaggedOf(target, kRecCausePopup) != nullptr;
    return event;
}

void CRecorder::Append(QWidget& target, const SEventFields& fields)
{
    SRecordedEvent event = NewEvent(target, fields);
    event.delayMs = m_sinceLast.restart();
    std::vector<SRecordedEvent>& events = m_record.events;
    const bool sameTarget = !events.empty() && events.back().target.widgets == event.target.widgets;
    const bool wasKey = !events.empty() && events.back().fields.IsKey();
    if (fields.type == EEvent::KeyPress && !(sameTarget && wasKey)) {
        if (const QString text = InputText(target); !text.isNull()) {
            event.hasExtraInfo = true;
            event.extraInfo = text.toStdString();
        }
    }
    if (sameTarget && fields.type == EEvent::MouseMove && event.delayMs < kMergeMovesMs &&
        events.back().fields.type == EEvent::MouseMove) {
        event.delayMs += events.back().delayMs;
        events.pop_back();
    }
    events.push_back(std::move(event));
    Q_EMIT Recorded(static_cast<int>(events.size()));
}

std::filesystem::path CRecorder::NextGolden() const
{
    const auto count = std::ranges::count_if(m_record.events, &SRecordedEvent::isCheckPoint);
    return m_path.parent_path() /
           fmt::format("{}_CheckPoint{}.ckp", PathText(m_path.stem()), count + 1);
}

CResult<void> CRecorder::AddCheckPoint(QWidget& widget, const std::filesystem::path& golden)
{
    const SReplayOptions options = SReplayOptions::Of(m_environment);
    const QRect all = widget.rect();
    const SLocatedWidget located{MakeLocator(widget, all.center(), &m_main), {}};
    RETURN_IF_ERROR(
        WriteFileAtomic(golden, WithRecPath(StateOf(widget).toStdString(), options.recPath)));
    RETURN_IF_ERROR(WriteFileAtomic(TwinOf(golden, ".loc"), FormatLocator(located)));
    if (!widget.grab().save(QString::fromStdString(PathText(TwinOf(golden, ".png"))), "PNG")) {
        return Fail(EErr::Io,
                    "the picture '" + PathText(TwinOf(golden, ".png")) + "' cannot be written");
    }
    if (m_recording) {
        // Beside the record the name is enough, and the folder can be moved.
        const bool beside = golden.parent_path() == m_path.parent_path();
        AppendPoint(widget, PathText(beside ? golden.filename() : golden));
    }
    return {};
}

void CRecorder::AddWatchPoint(const QWidget& widget)
{
    if (m_recording) {
        AppendPoint(widget, kWatchPointMark);
    }
}

void CRecorder::AppendPoint(const QWidget& widget, const std::string& extraInfo)
{
    AppendPendingKey();
    SEventFields fields;
    fields.type = EEvent::FocusOut;
    SRecordedEvent event = NewEvent(widget, fields);
    event.isCheckPoint = true;
    event.hasExtraInfo = true;
    event.extraInfo = extraInfo;
    event.delayMs = m_sinceLast.restart();
    m_record.events.push_back(std::move(event));
    Q_EMIT Recorded(static_cast<int>(m_record.events.size()));
}

} // namespace zov::ui::replay
