// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveItem.h"

#include "app/curves/CurveOutline.h"

#include <QPainter>
#include <qwt_graphic.h>
#include <qwt_painter.h>

namespace zov::app {
namespace {

constexpr double kIconWidth = 24.0;

} // namespace

CCurveItem::CCurveItem(curve::TCurvePtr curve, ECurveView view, curve::EUnitClass unit)
    : m_curve(std::move(curve))
    , m_values(m_curve, view, unit)
{
    setZ(20);
    setItemAttribute(Legend, true);
    setRenderHint(RenderAntialiased, true);
    setLegendIconSize({static_cast<int>(kIconWidth), 8});
}

void CCurveItem::SetPen(const QPen& pen)
{
    m_pen = pen;
    legendChanged();
}

QRectF CCurveItem::boundingRect() const
{
    const SValueRange x = m_values.XRange();
    const SValueRange y = m_values.YRange();
    return {x.low, y.low, x.high - x.low, y.high - y.low};
}

void CCurveItem::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                      const QRectF& canvasRect) const
{
    painter->save();
    painter->setPen(m_pen);
    for (const QPolygonF& piece : OutlineOf(m_values, xMap, yMap, canvasRect)) {
        if (piece.size() == 1) {
            QwtPainter::drawPoint(painter, piece.first());
        } else {
            QwtPainter::drawPolyline(painter, piece);
        }
    }
    painter->restore();
}

QwtGraphic CCurveItem::legendIcon(int, const QSizeF& size) const
{
    QwtGraphic icon;
    icon.setDefaultSize(size);
    icon.setRenderHint(QwtGraphic::RenderPensUnscaled, true);
    QPainter painter(&icon);
    painter.setPen(m_pen);
    QwtPainter::drawLine(&painter, QPointF(0, size.height() / 2),
                         QPointF(size.width(), size.height() / 2));
    return icon;
}

} // namespace zov::app
