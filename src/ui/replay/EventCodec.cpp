// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/EventCodec.h"

#include "ui/replay/WidgetFacts.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextCharFormat>
#include <QWheelEvent>
#include <QWidget>
#include <QtTest/qtestspontaneevent.h>

// Of the toolkit's own tests; the header that declares it needs the test library.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k,
                                               Qt::KeyboardModifiers mods, const QString& text,
                                               bool autorep, ushort count);
QT_END_NAMESPACE

namespace zov::ui::replay {
namespace {

SPointF PointFOf(const QPointF& point)
{
    return {point.x(), point.y()};
}

void TakeMouse(SEventFields& fields, const QMouseEvent& event)
{
    fields.pos = PointOf(event.pos());
    fields.wndPos = PointOf(event.windowPos().toPoint());
    fields.globalPos = PointOf(event.globalPos());
    fields.button = event.button();
    fields.buttons = static_cast<int>(event.buttons());
    fields.modifiers = static_cast<int>(event.modifiers());
    fields.source = event.source();
    fields.timestamp = static_cast<std::int64_t>(event.timestamp());
}

void TakeKey(SEventFields& fields, const QKeyEvent& event)
{
    fields.key = event.key();
    fields.modifiers = static_cast<int>(event.modifiers());
    fields.nativeScanCode = event.nativeScanCode();
    fields.nativeVirtualKey = event.nativeVirtualKey();
    fields.nativeModifiers = event.nativeModifiers();
    fields.text = event.text().toStdString();
    fields.autoRepeat = event.isAutoRepeat() ? 1 : 0;
    fields.count = event.count();
    fields.timestamp = static_cast<std::int64_t>(event.timestamp());
}

void TakeWheel(SEventFields& fields, const QWheelEvent& event)
{
    fields.posF = PointFOf(event.position());
    fields.globalPosF = PointFOf(event.globalPosition());
    fields.pixelDelta = PointOf(event.pixelDelta());
    fields.angleDelta = PointOf(event.angleDelta());
    const bool vertical = event.angleDelta().y() != 0 || event.angleDelta().x() == 0;
    fields.delta = vertical ? event.angleDelta().y() : event.angleDelta().x();
    fields.orientation = vertical ? Qt::Vertical : Qt::Horizontal;
    fields.buttons = static_cast<int>(event.buttons());
    fields.modifiers = static_cast<int>(event.modifiers());
    fields.phase = event.phase();
    fields.source = event.source();
    fields.inverted = event.inverted() ? 1 : 0;
    fields.timestamp = static_cast<std::int64_t>(event.timestamp());
}

void TakeInputMethod(SEventFields& fields, const QInputMethodEvent& event)
{
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        fields.attributes.push_back({attribute.type, attribute.start, attribute.length,
                                     attribute.value.toString().toStdString()});
    }
    fields.preedit = event.preeditString().toStdString();
    fields.commit = event.commitString().toStdString();
    fields.replaceStart = event.replacementStart();
    fields.replaceLength = event.replacementLength();
}

/// Numbers of a record may be anything; those of the toolkit are plain integers.
int Plain(std::int64_t number)
{
    return static_cast<int>(number);
}

Qt::KeyboardModifiers Modifiers(const SEventFields& fields)
{
    return Qt::KeyboardModifiers(QFlag(Plain(fields.modifiers)));
}

/// Events of a play come one after the other, also by their time stamp.
ulong NextTimestamp()
{
    static ulong timestamp = 0;
    return ++timestamp;
}

std::unique_ptr<QEvent> MakeMouse(const SEventFields& fields, const QWidget& target,
                                  const QPoint& pos)
{
    const QPoint global = target.mapToGlobal(pos);
    auto event = std::make_unique<QMouseEvent>(
        static_cast<QEvent::Type>(fields.type), QPointF(pos),
        QPointF(target.mapTo(target.window(), pos)), QPointF(global),
        static_cast<Qt::MouseButton>(Plain(fields.button)),
        Qt::MouseButtons(QFlag(Plain(fields.buttons))), Modifiers(fields),
        static_cast<Qt::MouseEventSource>(Plain(fields.source)));
    event->setTimestamp(NextTimestamp());
    return event;
}

std::unique_ptr<QEvent> MakeKey(const SEventFields& fields)
{
    auto event = std::make_unique<QKeyEvent>(
        static_cast<QEvent::Type>(fields.type), Plain(fields.key), Modifiers(fields),
        static_cast<quint32>(fields.nativeScanCode), static_cast<quint32>(fields.nativeVirtualKey),
        static_cast<quint32>(fields.nativeModifiers), QString::fromStdString(fields.text),
        fields.autoRepeat != 0, static_cast<ushort>(fields.count));
    event->setTimestamp(NextTimestamp());
    return event;
}

std::unique_ptr<QEvent> MakeWheel(const SEventFields& fields, const QWidget& target,
                                  const QPoint& pos)
{
    auto event = std::make_unique<QWheelEvent>(
        QPointF(pos), QPointF(target.mapToGlobal(pos)), ToQt(fields.pixelDelta),
        ToQt(fields.angleDelta), Qt::MouseButtons(QFlag(Plain(fields.buttons))), Modifiers(fields),
        static_cast<Qt::ScrollPhase>(Plain(fields.phase)), fields.inverted != 0,
        static_cast<Qt::MouseEventSource>(Plain(fields.source)));
    event->setTimestamp(NextTimestamp());
    return event;
}

} // namespace

std::optional<SEventFields> FieldsOfEvent(const QEvent& event)
{
    SEventFields fields;
    fields.type = static_cast<EEvent>(event.type());
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        TakeMouse(fields, static_cast<const QMouseEvent&>(event));
        return fields;
    case QEvent::ShortcutOverride: // a key that a shortcut takes gives nothing else
        fields.type = EEvent::KeyPress;
        TakeKey(fields, static_cast<const QKeyEvent&>(event));
        return fields;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        TakeKey(fields, static_cast<const QKeyEvent&>(event));
        return fields;
    case QEvent::FocusOut:
        fields.focusReason = static_cast<const QFocusEvent&>(event).reason();
        return fields;
    case QEvent::Wheel:
        TakeWheel(fields, static_cast<const QWheelEvent&>(event));
        return fields;
    case QEvent::ContextMenu: {
        const auto& menu = static_cast<const QContextMenuEvent&>(event);
        fields.pos = PointOf(menu.pos());
        fields.globalPos = PointOf(menu.globalPos());
        fields.reason = menu.reason();
        fields.modifiers = static_cast<int>(menu.modifiers());
        fields.timestamp = static_cast<std::int64_t>(menu.timestamp());
        return fields;
    }
    case QEvent::InputMethod:
        TakeInputMethod(fields, static_cast<const QInputMethodEvent&>(event));
        return fields;
    default:
        return std::nullopt;
    }
}

QPoint PositionOf(const SEventFields& fields, const QWidget& target)
{
    if (fields.type == EEvent::Wheel) {
        return QPointF(fields.posF.x, fields.posF.y).toPoint();
    }
    if (fields.IsMouse() || fields.type == EEvent::ContextMenu) {
        return ToQt(fields.pos);
    }
    return target.rect().center();
}

std::unique_ptr<QEvent> MakeEvent(const SEventFields& fields, const QWidget& target,
                                  const QPoint& pos)
{
    switch (fields.type) {
    case EEvent::MouseButtonPress:
    case EEvent::MouseButtonRelease:
    case EEvent::MouseButtonDblClick:
    case EEvent::MouseMove:
        return MakeMouse(fields, target, pos);
    case EEvent::KeyPress:
    case EEvent::KeyRelease:
        return MakeKey(fields);
    case EEvent::Wheel:
        return MakeWheel(fields, target, pos);
    case EEvent::ContextMenu: {
        auto event = std::make_unique<QContextMenuEvent>(
            static_cast<QContextMenuEvent::Reason>(Plain(fields.reason)), pos,
            target.mapToGlobal(pos), Modifiers(fields));
        event->setTimestamp(NextTimestamp());
        return event;
    }
    case EEvent::FocusOut:
    case EEvent::InputMethod:
        break;
    }
    return nullptr;
}

void SendEvent(QWidget& target, QEvent& event)
{
    if (event.type() == QEvent::KeyPress) {
        auto& key = static_cast<QKeyEvent&>(event);
        if (qt_sendShortcutOverrideEvent(&target, key.timestamp(), key.key(), key.modifiers(),
                                         key.text(), key.isAutoRepeat(),
                                         static_cast<ushort>(key.count()))) {
            return;
        }
    }
    QSpontaneKeyEvent::setSpontaneous(&event);
    QApplication::instance()->notify(&target, &event);
}

} // namespace zov::ui::replay
