// SPDX-License-Identifier: Apache-2.0
/// The circles of constant resistance and reactance behind reflections in the complex plane.
#pragma once

#include <qwt_plot_item.h>

namespace zov::app {

class CSmithGrid final : public QwtPlotItem
{
public:
    CSmithGrid();
    void SetColors(const QColor& line, const QColor& text);

    [[nodiscard]] QRectF boundingRect() const override;
    void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
              const QRectF& canvasRect) const override;

private:
    QColor m_line;
    QColor m_text;
};

} // namespace zov::app
