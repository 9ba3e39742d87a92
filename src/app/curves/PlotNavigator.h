// SPDX-License-Identifier: Apache-2.0
/// Mouse and keys in a plot. The left button does what is chosen: draws a rectangle to zoom into,
/// pans, or sets and drags markers. The middle button always pans, the wheel zooms about the
/// pointer (with Ctrl along x only, with Shift along y only), a double click shows all. Keys:
/// arrows pan, + and - zoom, Home shows all, Backspace goes back.
#pragma once

#include "app/curves/CurvePlot.h"

#include <QElapsedTimer>
#include <QObject>

class QKeyEvent;
class QMouseEvent;
class QRubberBand;
class QWheelEvent;

namespace zov::app {

class CPlotNavigator final : public QObject
{
    Q_OBJECT

public:
    explicit CPlotNavigator(CCurvePlot& plot);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum EDrag
    {
        kNone,
        kZoom,
        kPan,
        kMarker
    };
    bool Press(const QMouseEvent& event);
    void Move(const QPoint& pos);
    void Release(const QPoint& pos);
    void Wheel(const QWheelEvent& event);
    bool Key(const QKeyEvent& event);
    void PanBy(double xPart, double yPart);
    void ZoomBy(double factor);

    CCurvePlot& m_plot;
    QRubberBand* m_band = nullptr;
    EDrag m_drag = kNone;
    QPoint m_start;
    SPlotWindow m_startWindow;
    int m_marker = -1;
    QElapsedTimer m_sinceWheel;
};

} // namespace zov::app
