// SPDX-License-Identifier: Apache-2.0
/// A curve in a plot, drawn from the points where its set keeps them.
#pragma once

#include "app/curves/CurveValues.h"

#include <QPen>
#include <qwt_plot_item.h>

#include <memory>

namespace zov::app {

// The plot library's own curve can't be compiled as C++20 (a template-id names its destructor), and
// its filters for many points lose peaks.
class CCurveItem final : public QwtPlotItem
{
public:
    explicit CCurveItem(std::shared_ptr<const CCurveValues> values);

    [[nodiscard]] const CCurveValues& Values() const { return *m_values; }
    [[nodiscard]] const curve::TCurvePtr& Curve() const { return m_values->Curve(); }
    void SetPen(const QPen& pen);
    [[nodiscard]] const QPen& Pen() const { return m_pen; }

    [[nodiscard]] QRectF boundingRect() const override;
    void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
              const QRectF& canvasRect) const override;
    [[nodiscard]] QwtGraphic legendIcon(int index, const QSizeF& size) const override;

private:
    std::shared_ptr<const CCurveValues> m_values;
    QPen m_pen;
};

/// A line of the legend that stands for curves it has no room for.
class CMoreItem final : public QwtPlotItem
{
public:
    CMoreItem();
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override {}
    [[nodiscard]] QwtGraphic legendIcon(int index, const QSizeF& size) const override;
};

} // namespace zov::app
