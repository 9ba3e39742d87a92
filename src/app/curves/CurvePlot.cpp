// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurvePlot.h"

#include "app/curves/CurveItem.h"
#include "app/curves/EngineeringText.h"
#include "app/curves/PlotNavigator.h"
#include "app/curves/SmithGrid.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_legenditem.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace zov::app {
namespace {

constexpr double kReachPixels = 8.0;
constexpr double kMarkerPixels = 9.0;
/// Zooming in further would show rounding, not data.
constexpr double kLeastRange = 1e-12;
constexpr int kMaxSteps = 10;
constexpr int kMinorSteps = 5;
/// Of the legend in the plot: it has to leave room for the curves, which the list names in full.
constexpr std::size_t kLegendEntries = 10;
constexpr int kLegendLetters = 32;
constexpr double kLegendScale = 0.85;
/// Points that are looked through at once; more would be felt.
constexpr std::size_t kPointsAtOnce = 50000;

QwtScaleEngine* EngineFor(bool logarithmic)
{
    return logarithmic ? static_cast<QwtScaleEngine*>(new QwtLogScaleEngine)
                       : new QwtLinearScaleEngine;
}

/// What tells curves of a file apart stands at the end of their names.
QString LegendText(const QString& title)
{
    return title.size() <= kLegendLetters ? title
                                          : title.left(kLegendLetters / 2 - 1) + QChar(0x2026) +
                                                title.right(kLegendLetters / 2);
}

QwtText AxisTitle(const QString& name, const QString& unit)
{
    return unit.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, unit);
}

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
std::pair<double, double> RoundEnds(const QwtScaleEngine& engine, double low, double high)
{
    double step = 0.0;
    engine.autoScale(kMaxSteps, low, high, step);
    return {low, high};
}

} // namespace

CCurvePlot::CCurvePlot(CCurveListModel& curves, CMarkerModel& markers, QWidget* parent)
    : QwtPlot(parent)
    , m_curves(curves)
    , m_markers(markers)
    , m_navigator(new CPlotNavigator(*this))
    , m_grid(new QwtPlotGrid)
    , m_smith(new CSmithGrid)
    , m_legend(new QwtPlotLegendItem)
    , m_more(new CMoreItem)
    , m_hint(new QwtPlotTextLabel)
{
    setObjectName(QStringLiteral("CurvePlot"));
    setFocusPolicy(Qt::StrongFocus);
    setAutoReplot(false);
    static_cast<QwtPlotCanvas*>(canvas())->setFrameStyle(QFrame::NoFrame);
    canvas()->setObjectName(QStringLiteral("CurveCanvas"));
    canvas()->setMouseTracking(true);
    // Recorded positions count in shares of the canvas, and a check point holds what is shown.
    canvas()->setProperty("GUIRecWorldCoordinate", QStringLiteral("share"));
    setProperty("GUIRecChkCustomContent", true);
    m_grid->attach(this);
    m_grid->enableXMin(true);
    m_grid->enableYMin(true);
    m_smith->attach(this);
    m_smith->setVisible(false);
    m_legend->attach(this);
    m_legend->setMaxColumns(1);
    m_legend->setBorderRadius(3);
    m_legend->setMargin(2);
    m_legend->setSpacing(0);
    m_legend->setItemMargin(2);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * kLegendScale);
    m_legend->setFont(small);
    m_more->attach(this);
    m_hint->attach(this);
    for (const int axis : {xBottom, yLeft}) {
        setAxisScaleDraw(axis, new CEngineeringScaleDraw);
        setAxisMaxMajor(axis, kMaxSteps);
        setAxisMaxMinor(axis, kMinorSteps);
    }
    m_prepare.setSingleShot(true);
    m_prepare.setInterval(0);
    connect(&m_prepare, &QTimer::timeout, this, &CCurvePlot::PrepareNext);
    connect(&m_curves, &CCurveListModel::Changed, this, &CCurvePlot::Rebuild);
    connect(&m_markers, &CMarkerModel::Changed, this, &CCurvePlot::ShowMarkers);
    ShowColors();
    Rebuild();
}

CCurvePlot::~CCurvePlot()
{
    // It watches the canvas, which goes after the plot around it.
    delete m_navigator;
}

QString CCurvePlot::GUIRecChkCustomContent() const
{
    const auto text = [](double value) { return QString::number(value, 'g', 3); };
    return QStringLiteral("CurvePlot: x=%1..%2 y=%3..%4 markers=%5")
        .arg(text(m_window.xLow), text(m_window.xHigh), text(m_window.yLow), text(m_window.yHigh))
        .arg(m_markers.rowCount());
}

void CCurvePlot::SetView(ECurveView view)
{
    if (view == m_view) {
        return;
    }
    const bool sameX = view != ECurveView::Smith && m_view != ECurveView::Smith;
    if (!sameX) {
        m_keptX.reset();
    } else if (!m_fitted) { // the stretch of x that was looked at stays
        m_keptX = {m_window.xLow, m_window.xHigh};
    }
    m_view = view;
    m_fitted = true;
    m_back.clear();
    m_forward.clear();
    m_job.Abandon();
    m_preparing = nullptr;
    ApplyScales();
    Rebuild();
    Q_EMIT StateChanged();
}

void CCurvePlot::KeepX()
{
    if (m_keptX && !IsPreparing()) {
        const SPlotWindow window = {m_keptX->first, m_keptX->second, m_window.yLow, m_window.yHigh};
        m_keptX.reset();
        ZoomTo(window);
    }
}

void CCurvePlot::SetLogX(bool on)
{
    m_logX = on;
    ApplyScales();
    ZoomFit();
}

void CCurvePlot::SetLogY(bool on)
{
    m_logY = on;
    ApplyScales();
    ZoomFit();
}

void CCurvePlot::ApplyScales()
{
    const bool isSmith = m_view == ECurveView::Smith;
    const bool mayLogY = m_view == ECurveView::Magnitude || m_view == ECurveView::Real ||
                         m_view == ECurveView::Imaginary;
    setAxisScaleEngine(xBottom, EngineFor(m_logX && !isSmith));
    setAxisScaleEngine(yLeft, EngineFor(m_logY && mayLogY));
}

void CCurvePlot::ShowGrid()
{
    const bool isSmith = m_view == ECurveView::Smith;
    const bool hasAxes = !isSmith && !m_items.empty();
    enableAxis(xBottom, hasAxes);
    enableAxis(yLeft, hasAxes);
    m_smith->setVisible(isSmith);
    m_grid->setVisible(hasAxes && m_gridWanted);
}

void CCurvePlot::SetAxes(const SPlotAxes& axes, TUnitOf unitOf)
{
    m_axes = axes;
    m_unitOf = unitOf ? std::move(unitOf)
                      : [unit = axes.yUnit](const curve::CCurve&, ECurveView) { return unit; };
    ShowAxes();
}

void CCurvePlot::ShowAxes()
{
    setAxisTitle(xBottom, AxisTitle(m_axes.xName, m_axes.xUnit));
    setAxisTitle(yLeft, AxisTitle(m_axes.yName, m_axes.yUnit));
    m_markers.SetView(m_view, m_axes.xUnit, m_unitOf);
}

void CCurvePlot::SetGrid(bool on)
{
    m_gridWanted = on;
    ShowGrid();
    replot();
}

void CCurvePlot::SetLegend(bool on)
{
    m_legend->setVisible(on);
    ApplyWindow();
    replot();
}

bool CCurvePlot::HasLegend() const
{
    return m_legend->isVisible();
}

void CCurvePlot::SetHint(const QString& hint)
{
    m_hintText = hint;
    Rebuild();
}

void CCurvePlot::ShowColors()
{
    const QPalette colors = palette();
    const QColor text = colors.color(QPalette::Text);
    QColor line = text;
    line.setAlphaF(0.22);
    QColor fine = text;
    fine.setAlphaF(0.08);
    m_grid->setMajorPen(line, 0);
    m_grid->setMinorPen(fine, 0);
    QColor strong = text;
    strong.setAlphaF(0.4);
    m_smith->SetColors(strong, text);
    setCanvasBackground(colors.color(QPalette::Base));
    QColor ground = colors.color(QPalette::Base);
    ground.setAlphaF(0.85);
    m_legend->setBackgroundBrush(ground);
    m_legend->setBorderPen(line);
    m_legend->setTextPen(text);
}

void CCurvePlot::changeEvent(QEvent* event)
{
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        ShowColors();
        Rebuild();
    }
}

void CCurvePlot::Rebuild()
{
    ForgetOldValues();
    MakeItems();
    ShowGrid();
    m_hint->setVisible(m_items.empty());
    QwtText hint(IsPreparing() ? tr("The curves come in a moment.") : m_hintText);
    hint.setColor(palette().color(QPalette::Disabled, QPalette::Text));
    hint.setRenderFlags(Qt::AlignCenter | Qt::TextWordWrap);
    m_hint->setText(hint);
    if (m_fitted) {
        m_window = FitWindow();
    }
    ApplyWindow();
    KeepX();
    PlaceLegend();
    ShowMarkers();
}

void CCurvePlot::MakeItems()
{
    // A curve that only looks different keeps its item.
    std::vector<CCurveItem*> items;
    std::size_t room = kPointsAtOnce;
    std::vector<QwtPlotItem*> inLegend;
    int more = 0;
    m_wanted.clear();
    for (const SShownCurve& entry : m_curves.Entries()) {
        if (!entry.shown) {
            continue;
        }
        TValues values = ValuesOf(entry, room);
        if (!values) {
            m_wanted.push_back(entry);
            continue;
        }
        const auto old = std::ranges::find_if(m_items, [&](const CCurveItem* item) {
            return item != nullptr && &item->Values() == values.get();
        });
        CCurveItem* item = nullptr;
        if (old != m_items.end()) {
            item = std::exchange(*old, nullptr);
        } else {
            item = new CCurveItem(std::move(values));
            item->attach(this);
        }
        item->SetPen(m_curves.PenOf(entry));
        item->setTitle(LegendText(CurveTitle(*entry.curve)));
        if (entry.inLegend && inLegend.size() < kLegendEntries) {
            inLegend.push_back(item);
        } else {
            more += entry.inLegend ? 1 : 0;
        }
        items.push_back(item);
    }
    if (more > 0) {
        m_more->setTitle(tr("and %1 more").arg(more));
        inLegend.push_back(m_more);
    }
    FillLegend(std::move(inLegend));
    for (CCurveItem* gone : m_items) {
        delete gone;
    }
    m_items = std::move(items);
    if (IsPreparing()) {
        m_prepare.start();
    }
}

void CCurvePlot::SetInLegend(QwtPlotItem& item, bool on)
{
    if (item.testItemAttribute(QwtPlotItem::Legend) != on) {
        item.setItemAttribute(QwtPlotItem::Legend, on);
        updateLegend(&item); // which the item itself does only for what comes in
    }
}

/// In the order of the list, which is not that in which curves come and go.
void CCurvePlot::FillLegend(std::vector<QwtPlotItem*> items)
{
    if (items == m_inLegend) {
        return;
    }
    for (QwtPlotItem* item : m_inLegend) {
        SetInLegend(*item, false);
    }
    for (QwtPlotItem* item : items) {
        SetInLegend(*item, true);
    }
    m_inLegend = std::move(items);
}

void CCurvePlot::ForgetOldValues()
{
    std::erase_if(m_values, [this](const TValues& values) {
        return std::ranges::none_of(m_curves.Entries(), [&](const SShownCurve& entry) {
            return entry.curve == values->Curve();
        });
    });
}

CCurvePlot::TValues CCurvePlot::ValuesOf(const SShownCurve& entry, std::size_t& room)
{
    const auto made = std::ranges::find_if(m_values, [&](const TValues& values) {
        return values->Curve() == entry.curve && values->View() == m_view &&
               values->Unit() == entry.unit;
    });
    if (made != m_values.end()) {
        return *made;
    }
    const std::size_t count = entry.curve->Points().Count();
    if (count > room) {
        return nullptr;
    }
    room -= count;
    m_values.push_back(std::make_shared<CCurveValues>(entry.curve, m_view, entry.unit));
    return m_values.back();
}

void CCurvePlot::PrepareNext()
{
    if (m_wanted.empty()) {
        m_job.Abandon();
        m_preparing = nullptr;
        return;
    }
    const SShownCurve& next = m_wanted.front();
    if (m_preparing == next.curve.get()) {
        return;
    }
    m_job.Abandon();
    m_preparing = next.curve.get();
    m_job.Start({},
                [this, curve = next.curve, unit = next.unit,
                 view = m_view](CJobState& state) -> CBackgroundJob::Deliver {
                    TValues values = std::make_shared<CCurveValues>(
                        curve, view, unit, [&] { return state.Cancelled(); });
                    return [this, values = std::move(values)] {
                        m_preparing = nullptr;
                        m_values.push_back(values);
                        Rebuild();
                        Q_EMIT StateChanged();
                    };
                });
}

void CCurvePlot::WaitPrepared()
{
    while (IsPreparing()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    }
}

const CCurveItem* CCurvePlot::ItemOf(const curve::CCurve& curve) const
{
    const auto at = std::ranges::find_if(
        m_items, [&](const CCurveItem* item) { return item->Curve().get() == &curve; });
    return at == m_items.end() ? nullptr : *at;
}

void CCurvePlot::ShowMarkers()
{
    for (QwtPlotMarker* item : m_markerItems) {
        delete item;
    }
    m_markerItems.clear();
    const QColor color = palette().color(QPalette::Text);
    const std::vector<SMarker>& markers = m_markers.Markers();
    for (std::size_t i = 0; i < markers.size(); ++i) {
        const CCurveItem* item = ItemOf(*markers[i].curve);
        if (item == nullptr) {
            continue;
        }
        const SDrawnPoint at = item->Values().At(markers[i].point);
        auto* shown = new QwtPlotMarker;
        shown->setValue(at.x, at.y);
        shown->setSymbol(
            new QwtSymbol(QwtSymbol::Diamond, item->Pen().color(), QPen(color), QSize(9, 9)));
        QwtText label(QStringLiteral("M%1").arg(i + 1));
        label.setColor(color);
        shown->setLabel(label);
        shown->setLabelAlignment(Qt::AlignRight | Qt::AlignTop);
        shown->attach(this);
        m_markerItems.push_back(shown);
    }
    replot();
}

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
        std::tie(x.low, x.high) = RoundEnds(*axisScaleEngine(xBottom), x.low, x.high);
    }
    const auto [yLow, yHigh] = RoundEnds(*axisScaleEngine(yLeft), y.low, y.high);
    return {x.low, x.high, yLow, yHigh};
}

/// Into the corner that the fewest points are in.
void CCurvePlot::PlaceLegend()
{
    constexpr std::size_t kSamples = 100;
    constexpr Qt::Alignment kCorners[] = {
        Qt::AlignRight | Qt::AlignTop, Qt::AlignLeft | Qt::AlignTop,
        Qt::AlignRight | Qt::AlignBottom, Qt::AlignLeft | Qt::AlignBottom};
    if (m_view == ECurveView::Smith) { // the corners beside the chart are empty
        m_legend->setAlignment(kCorners[0]);
        return;
    }
    std::size_t counts[std::size(kCorners)] = {};
    const QPointF middle = QRectF(canvas()->contentsRect()).center();
    for (const CCurveItem* item : m_items) {
        const CCurveValues& values = item->Values();
        const std::size_t step = values.Count() / kSamples + 1;
        for (std::size_t i = 0; i < values.Count(); i += step) {
            const QPointF at = PixelOf(values.At(i));
            ++counts[(at.x() < middle.x() ? 1 : 0) + (at.y() > middle.y() ? 2 : 0)];
        }
    }
    m_legend->setAlignment(kCorners[std::ranges::min_element(counts) - counts]);
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
        replot();
    }
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
