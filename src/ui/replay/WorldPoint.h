// SPDX-License-Identifier: Apache-2.0
/// Positions in the coordinates of what a widget shows, for widgets that say so by
/// GUIRecWorldCoordinate.
#pragma once

#include <QPoint>
#include <QPointF>

#include <optional>

class QWidget;

namespace zov::ui::replay {

/// None for a widget that has no world. Set on a view, the property counts for its viewport.
[[nodiscard]] std::optional<QPointF> ToWorld(const QWidget& target, const QPoint& pos);
[[nodiscard]] std::optional<QPoint> FromWorld(const QWidget& target, const QPointF& world);

} // namespace zov::ui::replay
