// SPDX-License-Identifier: Apache-2.0
/// The general curve frame: curve files and Touchstone files seen, compared, measured, computed
/// with and saved. docs/curves-window.md is its page for users.
///
///     auto* frame = new CUiGeneralCurveFrm(session.Log());
///     frame->OpenFiles({path});
///     frame->show();
#pragma once

#include "app/BackgroundJob.h"
#include "app/curves/CurvePage.h"
#include "app/curves/TouchstoneCurves.h"
#include "base/Sink.h"
#include "core/ZovRcdProps.h"
#include "ui/CommandActions.h"
#include "ui/Prompt.h"
#include "ui/UiFrame.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <memory>

class QDockWidget;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTableView;

namespace zov::app {

struct SCalcParameter;

/// A record whose impedance is shown, and the folder that its file names start from.
struct SImpedanceOf
{
    const CZovRcdProps* record;
    std::filesystem::path folder;
};

class CUiGeneralCurveFrm : public ui::CUiFrame
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param log outlives the frame; the "Output" pane: journal lines and remarks
    explicit CUiGeneralCurveFrm(CLogSink& log, QWidget* parent = nullptr);
    ~CUiGeneralCurveFrm() override;

    /// Curve and Touchstone files into the current set, read beside the window.
    void OpenFiles(const QStringList& paths);
    /// Can this frame open such a file?
    [[nodiscard]] static bool IsCurveFile(const QString& path);
    /// Impedances of library records in a new set. The records are copied before this returns.
    void ShowImpedances(const std::vector<SImpedanceOf>& records);

    [[nodiscard]] CCurvePage& Page() const;
    CCurvePage& AddPage(const QString& title);
    [[nodiscard]] CBackgroundJob& Job() { return m_job; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    [[nodiscard]] QString PlotFileName() const;
    void OnCurveOpen();
    void OnCurveNewSet();
    void OnCurveCloseSet();
    void OnCurveSaveAs();
    void OnCurveExportImage();
    void OnCurveExportCsv();
    void OnCurvePrint();
    void OnCurveClose();
    void OnCurveCopyImage();
    void OnCurveCopyData();
    void OnCurveCopyMarkers();
    void OnCurveShowAll();
    void OnCurveHideOthers();
    void OnCurveRename();
    void OnCurveRemove();
    void OnCurveClearMarkers();
    void OnCurveCalculate();
    void OnCurveViewMagnitude() { Page().SetView(ECurveView::Magnitude); }
    void OnCurveViewDb() { Page().SetView(ECurveView::Db); }
    void OnCurveViewPhase() { Page().SetView(ECurveView::Phase); }
    void OnCurveViewReal() { Page().SetView(ECurveView::Real); }
    void OnCurveViewImaginary() { Page().SetView(ECurveView::Imaginary); }
    void OnCurveViewSmith() { Page().SetView(ECurveView::Smith); }
    void OnCurveLogX();
    void OnCurveLogY();
    void OnCurveGrid();
    void OnCurveLegend();
    void OnCurveZoomIn() { ZoomBy(0.5); }
    void OnCurveZoomOut() { ZoomBy(2.0); }
    void OnCurveZoomBack();
    void OnCurveZoomForward();
    void OnCurveZoomFit();
    void OnCurveMouseZoom();
    void OnCurveMousePan();
    void OnCurveMouseMarker();
    void OnCurvePaneCurves();
    void OnCurvePaneMarkers();

    void OnUpdateCurveBusy(ui::CCmdUI& ui);
    void OnUpdateOfCurves(ui::CCmdUI& ui);
    void OnUpdateOfSelected(ui::CCmdUI& ui);
    void OnUpdateOfMarkers(ui::CCmdUI& ui);
    void OnUpdateCurveView(ui::CCmdUI& ui);
    void OnUpdateCurveLogX(ui::CCmdUI& ui);
    void OnUpdateCurveLogY(ui::CCmdUI& ui);
    void OnUpdateCurveGrid(ui::CCmdUI& ui);
    void OnUpdateCurveLegend(ui::CCmdUI& ui);
    void OnUpdateCurveZoom(ui::CCmdUI& ui);
    void OnUpdateCurveMouse(ui::CCmdUI& ui);
    void OnUpdateCurvePane(ui::CCmdUI& ui);

    struct SOpened;
    struct SImpedances;
    void MakePanes();
    void MakeMenus();
    void MakeToolBar();
    void MakeStatus();
    void ShowPage();
    void ShowCurveMenu(const QPoint& globalPos);
    void ZoomBy(double factor);
    /// At once, or behind the work that goes on.
    void RunWhenIdle(std::function<void()> start);
    void SetMouse(CCurvePlot::EMouse mouse);
    void StartOpening(const QStringList& paths, CCurvePage& page);
    void TakeOpened(SOpened& opened);
    void TakeImpedances(const SImpedances& work);
    void TakeTouchstone(const QString& path, const network::CNetworkData& matrices);
    void TellFault(const QString& text, ui::EIcon icon = ui::EIcon::Error);
    [[nodiscard]] QDockWidget* PaneOf(unsigned command) const;
    /// Rows that are selected in the list, in their order; all when none is.
    [[nodiscard]] std::vector<int> Selected() const;
    [[nodiscard]] std::vector<int> SelectedOrAll() const;
    [[nodiscard]] std::vector<curve::TCurvePtr> CurvesOfRows(const std::vector<int>& rows) const;

    CLogSink& m_log;
    std::unique_ptr<curve::CCurveJournal> m_journal;
    QTabWidget* m_tabs;
    QTableView* m_curveList = nullptr;
    QTableView* m_markerList = nullptr;
    QDockWidget* m_curvesPane = nullptr;
    QDockWidget* m_markersPane = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    std::vector<SCalcParameter> m_parameters; ///< of the calculator, for the next time
    std::deque<std::function<void()>> m_waiting;
    QTimer m_fitColumns; ///< once for any number of new rows
    CBackgroundJob m_job;
};

} // namespace zov::app
