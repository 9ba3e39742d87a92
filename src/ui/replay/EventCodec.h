// SPDX-License-Identifier: Apache-2.0
/// Events of the toolkit as the fields of a record, and back.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <QPoint>

#include <memory>
#include <optional>

class QEvent;
class QWidget;

namespace zov::ui::replay {

/// None for an event of a type that is not recorded.
[[nodiscard]] std::optional<SEventFields> FieldsOfEvent(const QEvent& event);

/// The position of an event in its target; the middle of the target for those without one.
[[nodiscard]] QPoint PositionOf(const SEventFields& fields, const QWidget& target);

/// The event for a target that was found, at a position in it. Null for types that are not sent:
/// losing the focus is done, composed input is not supported.
[[nodiscard]] std::unique_ptr<QEvent> MakeEvent(const SEventFields& fields, const QWidget& target,
                                                const QPoint& pos);

/// Sends it as if it came from the windowing system: the focus follows clicks, shortcuts are looked
/// up before keys. Comes back when the program has handled it, which may be after a dialog.
void SendEvent(QWidget& target, QEvent& event);

} // namespace zov::ui::replay
