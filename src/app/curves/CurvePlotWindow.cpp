// SPDX-License-Identifier: Apache-2.0
// What part of the plane a plot shows, and what is found at a place of it.
#include "app/curves/CurveItem.h"
#include "app/curves/CurvePlot.h"
#include "app/curves/EngineeringText.h"
#include "app/curves/SmithGrid.h"

#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>

namespace zov::app {
namespace {

constexpr double kReachPixels = 8.0;
constexpr double kMarkerPixels = 9.0;
/// Zooming in further would show rounding, not data.
constexpr double kLeastRange = 1e-12;
/// Beyond, differences of ends are no numbers any more.
constexpr double kMost = 1e150;

/// Within what axes can show; a range of nothing but rounding is one value.
SValueRange Showable(SValueRange range)
{
    range = {std::clamp(range.low, -kMost, kMost), std::clamp(range.high, -kMost, kMost)};
    const double width = range.high - range.low;
    if (width <= kLeastRange * std::max(std::abs(range.low), std::abs(range.high)) ||
        width < 1.0 / kMost) {
        const double value = std::abs(range.low) < 1.0 / kMost ? 0.0 : range.low;
        return {value, value};
    }
    return range;
}

/// Ends of an axis on round numbers around a range.
std::pair<double, double> RoundEnds(const QwtPlot& plot, int axis, double low, double high)
{
    double step = 0.0;
    plot.axisScaleEngine(axis)->autoScale(plot.axisMaxMajor(axis), low, high, step);
    return {low, high};
}

} // namespace

SPlotWindow CCurvePlot::FitWindow() const
{
    if (m_view == ECurveView::Smith) {
        const QRectF all = m_smith->boundingRect();
        return {all.left(), all.right(), all.top(), all.bottom()};
    }
    SValueRange x;
    SValueRange y;
    const bool logX = dynamic_cast<const QwtLogScaleEngine*>(axisScaleEngine(xBottom)) != nullptr;
    const bool logY = dynamic_cast<const QwtLogScaleEngine*>(axisScaleEngine(yLeft)) != nullptr;
    const auto take = [](SValueRange& all, SValueRange one, bool log, double least) {
        if (log && one.low <= 0.0) {
            one.low = least;
        }
        if (!one.Empty() && !(log && least == 0.0)) {
            all.Include(one);
        }
    };
    for (const CCurveItem* item : m_items) {
        const CCurveValues& values = item->Values();
        take(x, values.XRange(), logX, values.LeastPositiveX());
        take(y, values.YRange(), logY, values.LeastPositiveY());
    }
    if (x.Empty() || y.Empty()) {
        return {logX ? 1.0 : 0.0, logX ? 10.0 : 1.0, logY ? 1.0 : 0.0, logY ? 10.0 : 1.0};
    }
    x = Showable(x);
    y = Showable(y);
    if (x.low == x.high) {
        std::tie(x.low, x.high) = RoundEnds(*this, xBottom, x.low, x.high);
    }
    const auto [yLow, yHigh] = RoundEnds(*this, yLeft, y.low, y.high);
    return {x.low, x.high, yLow, yHigh};
}

void CCurvePlot::Apply(const SPlotWindow& window)
{
    const bool good = std::abs(window.xHigh) + std::abs(window.xLow) < kMost * kMost &&
                      std::abs(window.yHigh) + std::abs(window.yLow) < kMost * kMost &&
                      window.xHigh - window.xLow > kLeastRange * std::abs(window.xHigh) &&
                      window.yHigh - window.yLow > kLeastRange * std::abs(window.yHigh);
    if (good) {
        m_window = window;
        ApplyWindow();
        ShowMarkers();
        Q_EMIT StateChanged();
    }
}

void CCurvePlot::ApplyWindow()
{
    SPlotWindow shown = m_window;
    if (m_view == ECurveView::Smith) { // circles stay circles
        const QSizeF size = canvas()->contentsRect().size();
        const double width = shown.xHigh - shown.xLow;
        const double height = shown.yHigh - shown.yLow;
        if (size.width() > 0 && size.height() > 0) {
            const double perPixel = std::max(width / size.width(), height / size.height());
            const double moreX = perPixel * size.width() - width;
            const double moreY = (perPixel * size.height() - height) / 2;
            // The chart leaves the room beside it to the legend.
            const double left = HasLegend() && !m_items.empty() ? 0.0 : moreX / 2;
            shown = {shown.xLow - left, shown.xHigh + moreX - left, shown.yLow - moreY,
                     shown.yHigh + moreY};
        }
    }
    setAxisScale(xBottom, shown.xLow, shown.xHigh);
    setAxisScale(yLeft, shown.yLow, shown.yHigh);
    updateAxes();
}

void CCurvePlot::resizeEvent(QResizeEvent* event)
{
    QwtPlot::resizeEvent(event);
    if (m_view == ECurveView::Smith) {
        ApplyWindow();
    }
    PlaceLegend();
    replot();
}

void CCurvePlot::MoveTo(const SPlotWindow& window)
{
    m_fitted = false;
    m_keptX.reset();
    Apply(window);
}

void CCurvePlot::ZoomTo(const SPlotWindow& window)
{
    const SPlotWindow before = m_window;
    MoveTo(window);
    if (m_window != before) {
        m_back.push_back(before);
        m_forward.clear();
        Q_EMIT StateChanged();
    }
}

void CCurvePlot::ZoomBack()
{
    if (CanZoomBack()) {
        m_forward.push_back(m_window);
        const SPlotWindow window = m_back.back();
        m_back.pop_back();
        m_fitted = m_back.empty() && window == FitWindow();
        Apply(window);
    }
}

void CCurvePlot::ZoomForward()
{
    if (CanZoomForward()) {
        m_back.push_back(m_window);
        const SPlotWindow window = m_forward.back();
        m_forward.pop_back();
        MoveTo(window);
    }
}

void CCurvePlot::ZoomFit()
{
    m_back.clear();
    m_forward.clear();
    m_fitted = true;
    m_keptX.reset();
    Apply(FitWindow());
    PlaceLegend();
}

SPlotWindow CCurvePlot::WindowOf(const QRectF& pixels) const
{
    const QwtScaleMap x = canvasMap(xBottom);
    const QwtScaleMap y = canvasMap(yLeft);
    return {x.invTransform(pixels.left()), x.invTransform(pixels.right()),
            y.invTransform(pixels.bottom()), y.invTransform(pixels.top())};
}

SPlotWindow CCurvePlot::Scaled(const QPointF& pixel, double xFactor, double yFactor) const
{
    const QRectF area = canvas()->contentsRect();
    const auto about = [](double center, double edge, double factor) {
        return center + (edge - center) * factor;
    };
    return WindowOf(QRectF(
        QPointF(about(pixel.x(), area.left(), xFactor), about(pixel.y(), area.top(), yFactor)),
        QPointF(about(pixel.x(), area.left() + area.width(), xFactor),
                about(pixel.y(), area.top() + area.height(), yFactor))));
}

SPlotWindow CCurvePlot::Panned(const SPlotWindow& from, const QPointF& pixels) const
{
    QwtScaleMap x = canvasMap(xBottom);
    QwtScaleMap y = canvasMap(yLeft);
    x.setScaleInterval(from.xLow, from.xHigh);
    y.setScaleInterval(from.yLow, from.yHigh);
    return {x.invTransform(x.p1() - pixels.x()), x.invTransform(x.p2() - pixels.x()),
            y.invTransform(y.p1() - pixels.y()), y.invTransform(y.p2() - pixels.y())};
}

QPointF CCurvePlot::PixelOf(const SDrawnPoint& point) const
{
    return {transform(xBottom, point.x), transform(yLeft, point.y)};
}

SMarker CCurvePlot::PointOnCurve(const curve::TCurvePtr& curve, const QPointF& pixel) const
{
    const CCurveItem* item = ItemOf(*curve);
    if (item == nullptr || item->Values().Count() == 0) {
        return {curve, 0};
    }
    const CCurveValues& values = item->Values();
    const QwtScaleMap xMap = canvasMap(xBottom);
    const double x = xMap.invTransform(pixel.x());
    if (m_view != ECurveView::Smith) {
        return {curve, values.Nearest(x)};
    }
    const QwtScaleMap yMap = canvasMap(yLeft);
    const std::size_t nearest =
        values.Nearest({x, yMap.invTransform(pixel.y())}, xMap.pDist() / xMap.sDist(),
                       yMap.pDist() / yMap.sDist());
    return {curve, nearest < values.Count() ? nearest : 0};
}

std::optional<SMarker> CCurvePlot::PointAt(const QPointF& pixel, double withinPixels) const
{
    std::optional<SMarker> nearest;
    double least = withinPixels;
    for (const CCurveItem* item : m_items) {
        if (item->Values().Count() == 0) {
            continue;
        }
        const SMarker found = PointOnCurve(item->Curve(), pixel);
        const QPointF away = PixelOf(item->Values().At(found.point)) - pixel;
        const double distance =
            m_view == ECurveView::Smith ? std::hypot(away.x(), away.y()) : std::abs(away.y());
        if (distance <= least) {
            least = distance;
            nearest = found;
        }
    }
    return nearest;
}

int CCurvePlot::MarkerAt(const QPointF& pixel) const
{
    const std::vector<SMarker>& markers = m_markers.Markers();
    for (std::size_t i = markers.size(); i-- > 0;) {
        const CCurveItem* item = ItemOf(*markers[i].curve);
        if (item != nullptr) {
            const QPointF away = PixelOf(item->Values().At(markers[i].point)) - pixel;
            if (std::hypot(away.x(), away.y()) <= kMarkerPixels) {
                return static_cast<int>(i);
            }
        }
    }
    return -1;
}

QString CCurvePlot::ReadOut(const QPointF& pixel) const
{
    if (m_items.empty()) {
        return {};
    }
    if (m_view == ECurveView::Smith) {
        return {};
    }
    QString text = QStringLiteral("%1 = %2   %3 = %4")
                       .arg(m_axes.xName,
                            EngineeringText(invTransform(xBottom, qRound(pixel.x())), m_axes.xUnit),
                            m_axes.yName,
                            EngineeringText(invTransform(yLeft, qRound(pixel.y())), m_axes.yUnit));
    if (const auto near = PointAt(pixel, kReachPixels)) {
        const SDrawnPoint at = ItemOf(*near->curve)->Values().At(near->point);
        text += QStringLiteral("   %1: %2, %3")
                    .arg(CurveTitle(*near->curve), EngineeringText(at.x, m_axes.xUnit),
                         EngineeringText(at.y, m_unitOf(*near->curve, m_view)));
    }
    return text;
}

} // namespace zov::app
