// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/WorldPoint.h"

#include "ui/replay/WidgetFacts.h"

#include <QGraphicsView>
#include <QMetaObject>
#include <QVariant>

#include <algorithm>

namespace zov::ui::replay {
namespace {

std::optional<QPointF> Ask(const QWidget& world, const char* method, const QPointF& point)
{
    QPointF answer;
    // Both only compute; the meta-object has no way to say so.
    const bool known =
        QMetaObject::invokeMethod(const_cast<QWidget*>(&world), method, Qt::DirectConnection,
                                  Q_RETURN_ARG(QPointF, answer), Q_ARG(QPointF, point));
    return known ? std::optional(answer) : std::nullopt;
}

bool IsShare(const QWidget& world)
{
    return world.property(kRecWorldCoordinate).toString() == QLatin1String(kWorldIsShare);
}

} // namespace

std::optional<QPointF> ToWorld(const QWidget& target, const QPoint& pos)
{
    const QWidget* world = FlaggedOf(target, kRecWorldCoordinate);
    if (const auto* view = qobject_cast<const QGraphicsView*>(world)) {
        return view->mapToScene(pos);
    }
    if (world != nullptr && IsShare(*world)) {
        return QPointF(double(pos.x()) / std::max(target.width(), 1),
                       double(pos.y()) / std::max(target.height(), 1));
    }
    return world == nullptr ? std::nullopt : Ask(*world, "GUIRecToWorld", pos);
}

std::optional<QPoint> FromWorld(const QWidget& target, const QPointF& point)
{
    const QWidget* world = FlaggedOf(target, kRecWorldCoordinate);
    if (const auto* view = qobject_cast<const QGraphicsView*>(world)) {
        return view->mapFromScene(point);
    }
    if (world != nullptr && IsShare(*world)) {
        return QPointF(point.x() * target.width(), point.y() * target.height()).toPoint();
    }
    const auto pos = world == nullptr ? std::nullopt : Ask(*world, "GUIRecFromWorld", point);
    return pos ? std::optional(pos->toPoint()) : std::nullopt;
}

} // namespace zov::ui::replay
