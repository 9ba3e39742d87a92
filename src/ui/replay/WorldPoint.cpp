// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/WorldPoint.h"

#include "ui/replay/WidgetFacts.h"

#include <QGraphicsView>
#include <QMetaObject>

namespace zov::ui::replay {
namespace {

const QWidget* WorldOf(const QWidget& target)
{
    if (HasFlag(target, kRecWorldCoordinate)) {
        return &target;
    }
    const auto* area = qobject_cast<const QAbstractScrollArea*>(target.parentWidget());
    return area != nullptr && area->viewport() == &target && HasFlag(*area, kRecWorldCoordinate)
               ? area
               : nullptr;
}

std::optional<QPointF> Ask(const QWidget& world, const char* method, const QPointF& point)
{
    QPointF answer;
    // Both only compute; the meta-object has no way to say so.
    const bool known =
        QMetaObject::invokeMethod(const_cast<QWidget*>(&world), method, Qt::DirectConnection,
                                  Q_RETURN_ARG(QPointF, answer), Q_ARG(QPointF, point));
    return known ? std::optional(answer) : std::nullopt;
}

} // namespace

std::optional<QPointF> ToWorld(const QWidget& target, const QPoint& pos)
{
    const QWidget* world = WorldOf(target);
    if (const auto* view = qobject_cast<const QGraphicsView*>(world)) {
        return view->mapToScene(pos);
    }
    return world == nullptr ? std::nullopt : Ask(*world, "GUIRecToWorld", pos);
}

std::optional<QPoint> FromWorld(const QWidget& target, const QPointF& point)
{
    const QWidget* world = WorldOf(target);
    if (const auto* view = qobject_cast<const QGraphicsView*>(world)) {
        return view->mapFromScene(point);
    }
    const auto pos = world == nullptr ? std::nullopt : Ask(*world, "GUIRecFromWorld", point);
    return pos ? std::optional(pos->toPoint()) : std::nullopt;
}

} // namespace zov::ui::replay
