// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveItem.h"

#include "app/curves/CurveOutline.h"

#include <QPainter>
#include <qwt_graphic.h>
#include <qwt_painter.h>

#include <numeric>
#include <vector>

namespace zov::app {
namespace {

constexpr double kIconWidth = 24.0;
/// Above, smooth and wide lines take long and look like plain ones.
constexpr int kSmoothPoints = 20000;
/// A point without neighbours would not be seen as a line's width.
constexpr double kDotRadius = 2.5;

} // namespace

CCurveItem::CCurveItem(std::shared_ptr<const CCurveValues> values)
    : m_values(std::move(values))
{
    setZ(20);
    setRenderHint(RenderAntialiased, true);
    setLegendIconSize({static_cast<int>(kIconWidth), 8});
}

void CCurveItem::SetPen(const QPen& pen)
{
    if (pen != m_pen) {
        m_pen = pen;
        legendChanged();
    }
}

QRectF CCurveItem::boundingRect() const
{
    const SValueRange x = m_values->XRange();
    const SValueRange y = m_values->YRange();
    return {x.low, y.low, x.high - x.low, y.high - y.low};
}

void CCurveItem::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                      const QRectF& canvasRect) const
{
    painter->save();
    painter->setPen(m_pen);
    painter->setBrush(Qt::NoBrush);
    const std::vector<QPolygonF> outline = OutlineOf(*m_values, xMap, yMap, canvasRect);
    const auto count =
        std::accumulate(outline.begin(), outline.end(), 0, [](int sum, const QPolygonF& piece) {
            return sum + static_cast<int>(piece.size());
        });
    if (count > kSmoothPoints) {
        painter->setRenderHint(QPainter::Antialiasing, false);
        QPen fine = m_pen;
        fine.setWidth(0);
        painter->setPen(fine);
    }
    for (const QPolygonF& piece : outline) {
        const QSizeF size = piece.boundingRect().size();
        if (size.width() < 1.0 && size.height() < 1.0) {
            painter->setBrush(m_pen.color());
            QwtPainter::drawEllipse(painter, QRectF(piece.first().x() - kDotRadius,
                                                    piece.first().y() - kDotRadius, 2 * kDotRadius,
                                                    2 * kDotRadius));
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

CMoreItem::CMoreItem()
{
    setZ(21); // behind the curves in the legend
    setLegendIconSize({static_cast<int>(kIconWidth), 8});
}

QwtGraphic CMoreItem::legendIcon(int, const QSizeF& size) const
{
    QwtGraphic icon;
    icon.setDefaultSize(size);
    return icon;
}

} // namespace zov::app
