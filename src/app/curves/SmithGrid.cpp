// SPDX-License-Identifier: Apache-2.0
#include "app/curves/SmithGrid.h"

#include <QPainter>
#include <QPainterPath>
#include <qwt_scale_map.h>

namespace zov::app {
namespace {

constexpr double kNormalised[] = {0.2, 0.5, 1.0, 2.0, 5.0};
constexpr double kEdge = 1.1;

QRectF Circle(double x, double y, double radius)
{
    return {x - radius, y - radius, 2 * radius, 2 * radius};
}

} // namespace

CSmithGrid::CSmithGrid()
{
    setZ(0);
    setItemAttribute(AutoScale, true);
    setRenderHint(RenderAntialiased, true);
}

void CSmithGrid::SetColors(const QColor& line, const QColor& text)
{
    m_line = line;
    m_text = text;
}

QRectF CSmithGrid::boundingRect() const
{
    return {-kEdge, -kEdge, 2 * kEdge, 2 * kEdge};
}

void CSmithGrid::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                      const QRectF&) const
{
    const auto map = [&](const QRectF& rect) { return QwtScaleMap::transform(xMap, yMap, rect); };
    const auto at = [&](double x, double y) {
        return QPointF(xMap.transform(x), yMap.transform(y));
    };
    painter->save();
    painter->setPen(QPen(m_line, 0));
    painter->drawLine(at(-1, 0), at(1, 0));
    QPainterPath disc;
    disc.addEllipse(map(Circle(0, 0, 1)));
    painter->drawPath(disc);
    painter->save();
    painter->setClipPath(disc, Qt::IntersectClip);
    for (const double value : kNormalised) {
        painter->drawEllipse(map(Circle(value / (1 + value), 0, 1 / (1 + value))));
        painter->drawEllipse(map(Circle(1, 1 / value, 1 / value)));
        painter->drawEllipse(map(Circle(1, -1 / value, 1 / value)));
    }
    painter->restore();
    painter->setPen(m_text);
    for (const double value : kNormalised) {
        const QString label = QString::number(value);
        painter->drawText(at((value - 1) / (value + 1), 0) + QPointF(2, -2), label);
        // The reactance circle meets the unit circle there.
        const double square = value * value;
        const double x = (square - 1) / (square + 1);
        const double y = 2 * value / (square + 1);
        painter->drawText(at(x * 1.05, y * 1.05), QLatin1Char('j') + label);
        painter->drawText(at(x * 1.05, -y * 1.05), QStringLiteral("-j") + label);
    }
    painter->restore();
}

} // namespace zov::app
