// SPDX-License-Identifier: Apache-2.0
/// How a widget is known to records: class, name, title, and the properties by which the program's
/// windows steer the recorder.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <QPoint>
#include <QString>

#include <vector>

class QAction;
class QWidget;

namespace zov::ui::replay {

/// Dynamic properties that windows set on their widgets, true unless said otherwise.
constexpr const char* kRecKeyTitle = "GUIRecKeyTitle"; ///< the title identifies the widget
constexpr const char* kRecFocusOut = "GUIRecFocusOut"; ///< losing the focus is recorded
/// A click opens a pop-up: it is recorded as asynchronous, and playing does not wait for its end.
constexpr const char* kRecCausePopup = "GUIRecCausepopup";
constexpr const char* kRecMouseMove =
    "GUIRecMouseMove"; ///< moves are recorded without a button too
/// Positions count in the coordinates of what the widget shows. A graphics view gives them by
/// itself, another widget by invokable GUIRecToWorld(QPointF) and GUIRecFromWorld(QPointF), both
/// returning QPointF. kWorldIsShare in place of true: shares of the width and the height, for what
/// is drawn as large as its widget.
constexpr const char* kRecWorldCoordinate = "GUIRecWorldCoordinate";
constexpr const char* kWorldIsShare = "share";
/// Number of equal parts of an item, side by side, of which the one under the pointer is recorded.
constexpr const char* kRecItemSubIndex = "GUIRecItemSubIndex";
/// Text: what a check point holds of the widget. True: an invokable
/// QString GUIRecChkCustomContent() gives it.
constexpr const char* kRecChkCustomContent = "GUIRecChkCustomContent";
/// Rows of a tree or list are found by the titles of their path, wherever they stand.
constexpr const char* kLocRowPath = "GUILocRowPath";

[[nodiscard]] bool HasFlag(const QWidget& widget, const char* property);
/// The widget that has the property: itself, or the view whose inside it is. Null for none.
[[nodiscard]] const QWidget* FlaggedOf(const QWidget& widget, const char* property);

/// Its object name; of a button made for an action, the action's.
[[nodiscard]] QString NameOf(const QWidget& widget);
/// Its window title, or the text that it shows: of a button, label, group box or menu.
[[nodiscard]] QString TitleOf(const QWidget& widget);
/// A menu text without mnemonics and shortcut.
[[nodiscard]] QString PlainText(const QString& text);

/// From the window down to the widget.
[[nodiscard]] std::vector<const QWidget*> ChainOf(const QWidget& widget);
[[nodiscard]] SWidgetLevel LevelOf(const QWidget& widget);
/// "CModelTable ModelTable", for messages.
[[nodiscard]] QString Shown(const QWidget& widget);

/// The text of an edit field, combo box with a field, or text; null for other widgets.
[[nodiscard]] QString InputText(const QWidget& widget);

[[nodiscard]] inline SPoint PointOf(const QPoint& point)
{
    return {point.x(), point.y()};
}
[[nodiscard]] inline QPoint ToQt(const SPoint& point)
{
    return {point.x, point.y};
}

} // namespace zov::ui::replay
