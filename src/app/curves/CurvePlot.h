// SPDX-License-Identifier: Apache-2.0
/// A plot of the curves of a list: views, linear and logarithmic axes, zoom with a way back,
/// markers. The windows around it only tell it what to show.
///
///     CCurveListModel curves;
///     CCurvePlot plot(curves, markers, parent);
///     plot.SetView(ECurveView::Db);
#pragma once

#include "app/BackgroundJob.h"
#include "app/curves/CurveListModel.h"
#include "app/curves/CurveValues.h"
#include "app/curves/MarkerModel.h"

#include <QTimer>
#include <qwt_plot.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QwtPlotGrid;
class QwtPlotLegendItem;
class QwtPlotMarker;
class QwtPlotTextLabel;

namespace zov::app {

class CCurveItem;
class CMoreItem;
class CPlotNavigator;
class CSmithGrid;

/// What of the plane is shown.
struct SPlotWindow
{
    double xLow = 0.0;
    double xHigh = 1.0;
    double yLow = 0.0;
    double yHigh = 1.0;
    bool operator==(const SPlotWindow&) const = default;
};

/// Names of the axes.
struct SPlotAxes
{
    QString xName;
    QString xUnit;
    QString yName;
    QString yUnit;
    bool operator==(const SPlotAxes&) const = default;
};

class CCurvePlot : public QwtPlot
{
    Q_OBJECT

public:
    enum EMouse
    {
        kZoomMouse,
        kPanMouse,
        kMarkerMouse
    };

    /// Both models outlive the plot.
    CCurvePlot(CCurveListModel& curves, CMarkerModel& markers, QWidget* parent = nullptr);
    ~CCurvePlot() override;

    void SetView(ECurveView view);
    [[nodiscard]] ECurveView View() const { return m_view; }
    void SetLogX(bool on);
    void SetLogY(bool on);
    [[nodiscard]] bool IsLogX() const { return m_logX; }
    [[nodiscard]] bool IsLogY() const { return m_logY; }
    /// @param unitOf  the unit of a curve's value where curves have different ones; without it all
    ///                have that of the axis
    void SetAxes(const SPlotAxes& axes, TUnitOf unitOf = {});
    [[nodiscard]] const SPlotAxes& Axes() const { return m_axes; }
    void SetGrid(bool on);
    [[nodiscard]] bool HasGrid() const { return m_gridWanted; }
    void SetLegend(bool on);
    [[nodiscard]] bool HasLegend() const;
    void SetMouse(EMouse mouse) { m_mouse = mouse; }
    [[nodiscard]] EMouse Mouse() const { return m_mouse; }
    /// Shown while there is no curve.
    void SetHint(const QString& hint);
    /// Curves of many points are looked through beside the window, and come into the plot one after
    /// the other.
    [[nodiscard]] bool IsPreparing() const { return !m_wanted.empty(); }
    /// Until all are in the plot; the window goes on painting.
    void WaitPrepared();

    [[nodiscard]] const SPlotWindow& Window() const { return m_window; }
    /// Shows another part; the one before can be gone back to.
    void ZoomTo(const SPlotWindow& window);
    /// The same without a step on the way back, for the steps of a drag.
    void MoveTo(const SPlotWindow& window);
    void ZoomBack();
    void ZoomForward();
    /// All of the shown curves, also those that come later.
    void ZoomFit();
    [[nodiscard]] bool CanZoomBack() const { return !m_back.empty(); }
    [[nodiscard]] bool CanZoomForward() const { return !m_forward.empty(); }
    /// Scaled about a point of the canvas; below 1 shows less.
    [[nodiscard]] SPlotWindow Scaled(const QPointF& pixel, double xFactor, double yFactor) const;
    [[nodiscard]] SPlotWindow Panned(const SPlotWindow& from, const QPointF& pixels) const;
    [[nodiscard]] SPlotWindow WindowOf(const QRectF& pixels) const;

    /// The point of a shown curve nearest to a place of the canvas; none beyond `withinPixels`.
    [[nodiscard]] std::optional<SMarker> PointAt(const QPointF& pixel, double withinPixels) const;
    /// On the marker's curve, by x alone (in the Smith view by distance).
    [[nodiscard]] SMarker PointOnCurve(const curve::TCurvePtr& curve, const QPointF& pixel) const;
    /// The marker within reach of a place; -1 for none.
    [[nodiscard]] int MarkerAt(const QPointF& pixel) const;
    [[nodiscard]] CMarkerModel& Markers() { return m_markers; }
    /// What is read at a place, for the status line.
    [[nodiscard]] QString ReadOut(const QPointF& pixel) const;

    /// For check points of records.
    Q_INVOKABLE QString GUIRecChkCustomContent() const;

Q_SIGNALS:
    /// Zoom, view or mouse: commands may look different.
    void StateChanged();
    void PointedAt(const QString& readOut);
    void ContextMenuAsked(const QPoint& globalPos);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class CPlotNavigator;

    using TValues = std::shared_ptr<const CCurveValues>;
    void Rebuild();
    void MakeItems();
    [[nodiscard]] CCurveItem* TakeItem(TValues values);
    void ForgetOldValues();
    /// Null while they are being prepared.
    [[nodiscard]] TValues ValuesOf(const SShownCurve& entry, std::size_t& room);
    void PrepareNext();
    void KeepX();
    void ShowMarkers();
    void ShowAxes();
    void ShowColors();
    void ApplyScales();
    void ShowGrid();
    void SetInLegend(QwtPlotItem& item, bool on);
    void FillLegend(std::vector<QwtPlotItem*> items);
    void PlaceLegend();
    void ApplyWindow();
    void Apply(const SPlotWindow& window);
    [[nodiscard]] SPlotWindow FitWindow() const;
    [[nodiscard]] QPointF PixelOf(const SDrawnPoint& point) const;
    [[nodiscard]] const CCurveItem* ItemOf(const curve::CCurve& curve) const;

    CCurveListModel& m_curves;
    CMarkerModel& m_markers;
    CPlotNavigator* m_navigator;
    QwtPlotGrid* m_grid;
    CSmithGrid* m_smith;
    QwtPlotLegendItem* m_legend;
    CMoreItem* m_more;
    QwtPlotTextLabel* m_hint;
    std::vector<CCurveItem*> m_items;  ///< of shown curves
    std::vector<TValues> m_values;     ///< of the list's curves, in any view they were shown in
    std::vector<SShownCurve> m_wanted; ///< shown, without values yet
    std::vector<QwtPlotItem*> m_inLegend;
    std::vector<QwtPlotMarker*> m_markerItems;
    ECurveView m_view = ECurveView::Magnitude;
    SPlotAxes m_axes;
    SPlotWindow m_window;
    std::vector<SPlotWindow> m_back;
    std::vector<SPlotWindow> m_forward;
    bool m_fitted = true;
    bool m_gridWanted = true;
    bool m_logX = false;
    bool m_logY = false;
    EMouse m_mouse = kZoomMouse;
    QString m_hintText;
    std::optional<std::pair<double, double>> m_keptX; ///< to be shown when all is prepared
    TUnitOf m_unitOf = [](const curve::CCurve&, ECurveView) { return QString(); };
    QTimer m_prepare;
    const curve::CCurve* m_preparing = nullptr; ///< what the job looks through, in m_view
    CBackgroundJob m_job;
};

} // namespace zov::app
