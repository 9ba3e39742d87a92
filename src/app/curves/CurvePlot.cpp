// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurvePlot.h"

#include "app/curves/CurveItem.h"
#include "app/curves/EngineeringText.h"
#include "app/curves/PlotNavigator.h"
#include "app/curves/SmithGrid.h"

#include <QEvent>
#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_legenditem.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

namespace zov::app {
namespace {

constexpr int kMaxSteps = 10;
constexpr int kMinorSteps = 5;
/// Of the letters in the plot's legend.
constexpr double kLegendScale = 0.85;
QwtScaleEngine* EngineFor(bool logarithmic)
{
    return logarithmic ? static_cast<QwtScaleEngine*>(new QwtLogScaleEngine)
                       : new QwtLinearScaleEngine;
}

QwtText AxisTitle(const QString& name, const QString& unit)
{
    return unit.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, unit);
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
    const auto text = [](double value) { return QString::number(value, 'g', 2); };
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
    Q_EMIT PointedAt({}); // what was read off was of the other view
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

} // namespace zov::app
