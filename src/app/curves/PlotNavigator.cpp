// SPDX-License-Identifier: Apache-2.0
#include "app/curves/PlotNavigator.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include <cmath>

namespace zov::app {
namespace {

constexpr int kLeastDragPixels = 5;
constexpr double kWheelStep = 1.25;
constexpr double kNotch = 120.0;
constexpr double kKeyStep = 0.1;
constexpr double kMarkerReachPixels = 40.0;
/// Turns of the wheel that follow each other this closely are one step on the way back.
constexpr qint64 kOneGestureMs = 700;

} // namespace

CPlotNavigator::CPlotNavigator(CCurvePlot& plot)
    : QObject(&plot)
    , m_plot(plot)
{
    plot.canvas()->installEventFilter(this);
    plot.installEventFilter(this);
}

bool CPlotNavigator::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched == &m_plot) {
        return Key(*static_cast<QKeyEvent*>(event));
    }
    if (watched != m_plot.canvas()) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        Move(static_cast<QMouseEvent*>(event)->pos());
        return false;
    case QEvent::MouseButtonRelease:
        Release(static_cast<QMouseEvent*>(event)->pos());
        return false;
    case QEvent::MouseButtonDblClick:
        if (m_plot.m_mouse != CCurvePlot::kMarkerMouse) {
            m_plot.ZoomFit();
        }
        return true;
    case QEvent::Wheel:
        Wheel(*static_cast<QWheelEvent*>(event));
        return true;
    case QEvent::ContextMenu:
        Q_EMIT m_plot.ContextMenuAsked(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    case QEvent::Leave:
        Q_EMIT m_plot.PointedAt({});
        return false;
    default:
        return false;
    }
}

bool CPlotNavigator::Press(const QMouseEvent& event)
{
    m_plot.setFocus();
    m_start = event.pos();
    m_startWindow = m_plot.Window();
    m_marker = m_plot.MarkerAt(event.pos());
    if (event.button() == Qt::MiddleButton) {
        m_drag = kPan;
    } else if (event.button() != Qt::LeftButton) {
        return false;
    } else if (m_marker >= 0) {
        m_drag = kMarker;
    } else if (m_plot.m_mouse == CCurvePlot::kMarkerMouse) {
        if (const auto point = m_plot.PointAt(event.pos(), kMarkerReachPixels)) {
            m_plot.Markers().Add(*point);
            m_marker = m_plot.Markers().rowCount() - 1;
            m_drag = kMarker;
        }
    } else {
        m_drag = m_plot.m_mouse == CCurvePlot::kPanMouse ? kPan : kZoom;
    }
    if (m_drag == kZoom) {
        if (m_band == nullptr) {
            m_band = new QRubberBand(QRubberBand::Rectangle, m_plot.canvas());
        }
        m_band->setGeometry(QRect(m_start, QSize()));
        m_band->show();
    }
    return true;
}

void CPlotNavigator::Move(const QPoint& pos)
{
    switch (m_drag) {
    case kZoom:
        m_band->setGeometry(QRect(m_start, pos).normalized());
        break;
    case kPan:
        m_plot.MoveTo(m_plot.Panned(m_startWindow, pos - m_start));
        break;
    case kMarker: {
        const SMarker& marker = m_plot.Markers().Markers()[static_cast<std::size_t>(m_marker)];
        m_plot.Markers().MoveTo(m_marker, m_plot.PointOnCurve(marker.curve, pos));
        break;
    }
    case kNone:
        break;
    }
    Q_EMIT m_plot.PointedAt(m_plot.ReadOut(pos));
}

void CPlotNavigator::Release(const QPoint& pos)
{
    Move(pos);
    if (m_drag == kZoom) {
        m_band->hide();
        const QRect box = QRect(m_start, pos).normalized();
        if (box.width() >= kLeastDragPixels && box.height() >= kLeastDragPixels) {
            m_plot.ZoomTo(m_plot.WindowOf(box));
        }
    } else if (m_drag == kPan && m_plot.Window() != m_startWindow) {
        m_plot.m_back.push_back(m_startWindow);
        m_plot.m_forward.clear();
        Q_EMIT m_plot.StateChanged();
    }
    m_drag = kNone;
}

void CPlotNavigator::Wheel(const QWheelEvent& event)
{
    const double factor = std::pow(kWheelStep, -event.angleDelta().y() / kNotch);
    const double xFactor = event.modifiers() & Qt::ShiftModifier ? 1.0 : factor;
    const double yFactor = event.modifiers() & Qt::ControlModifier ? 1.0 : factor;
    const SPlotWindow window = m_plot.Scaled(event.position(), xFactor, yFactor);
    if (m_sinceWheel.isValid() && m_sinceWheel.elapsed() < kOneGestureMs) {
        m_plot.MoveTo(window);
    } else {
        m_plot.ZoomTo(window);
    }
    m_sinceWheel.start();
}

void CPlotNavigator::PanBy(double xPart, double yPart)
{
    const QSizeF size = m_plot.canvas()->contentsRect().size();
    m_plot.ZoomTo(m_plot.Panned(m_plot.Window(), {-xPart * size.width(), yPart * size.height()}));
}

void CPlotNavigator::ZoomBy(double factor)
{
    m_plot.ZoomTo(m_plot.Scaled(QRectF(m_plot.canvas()->contentsRect()).center(), factor, factor));
}

bool CPlotNavigator::Key(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Left:
        PanBy(-kKeyStep, 0);
        break;
    case Qt::Key_Right:
        PanBy(kKeyStep, 0);
        break;
    case Qt::Key_Up:
        PanBy(0, kKeyStep);
        break;
    case Qt::Key_Down:
        PanBy(0, -kKeyStep);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        ZoomBy(1 / kWheelStep);
        break;
    case Qt::Key_Minus:
        ZoomBy(kWheelStep);
        break;
    case Qt::Key_Home:
        m_plot.ZoomFit();
        break;
    case Qt::Key_Backspace:
        m_plot.ZoomBack();
        break;
    case Qt::Key_Escape:
        if (m_band != nullptr) {
            m_band->hide();
        }
        m_drag = kNone;
        break;
    default:
        return false;
    }
    return true;
}

} // namespace zov::app
