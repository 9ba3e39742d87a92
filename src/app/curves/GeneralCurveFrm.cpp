// SPDX-License-Identifier: Apache-2.0
#include "app/curves/GeneralCurveFrm.h"

#include "app/Images.h"
#include "app/curves/CalcDlg.h"
#include "app/curves/CurveCommands.h"
#include "curve/CurveJournal.h"
#include "ui/ListHint.h"

#include <QDockWidget>
#include <QHeaderView>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>

#include <algorithm>
#include <numeric>

namespace zov::app {
namespace {

constexpr unsigned kViewCommands[] = {ID_CURVE_VIEW_MAGNITUDE, ID_CURVE_VIEW_DB,
                                      ID_CURVE_VIEW_PHASE,     ID_CURVE_VIEW_REAL,
                                      ID_CURVE_VIEW_IMAGINARY, ID_CURVE_VIEW_SMITH};

/// While the window has no layout yet.
constexpr int kLeastNameWidth = 260;

/// A table that says what to do while it is empty.
class CHintedTable final : public QTableView
{
public:
    CHintedTable(const QString& hint, QWidget* parent)
        : QTableView(parent)
        , m_hint(hint)
    {
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTableView::paintEvent(event);
        ui::PaintListHint(*this, m_hint);
    }

private:
    QString m_hint;
};

QTableView* NewTable(const char* objectName, const QString& hint, QWidget* parent)
{
    auto* table = new CHintedTable(hint, parent);
    table->setObjectName(QLatin1String(objectName));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideMiddle);
    table->setTabKeyNavigation(false);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}

/// Commands go to the "Output" pane.
class CJournal final : public curve::CCurveJournal
{
public:
    explicit CJournal(CLogSink& log)
        : m_log(log)
    {
    }
    void Command(std::string_view text) override { m_log.Write(text); }

private:
    CLogSink& m_log;
};

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CUiGeneralCurveFrm, ui::CUiFrame)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_OPEN, CurveOpen, OnUpdateCurveBusy)
ZOV_ON_COMMAND(ID_CURVE_NEW_SET, CurveNewSet)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_CLOSE_SET, CurveCloseSet, OnUpdateCurveBusy)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_SAVE_AS, CurveSaveAs, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_EXPORT_IMAGE, CurveExportImage, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_EXPORT_CSV, CurveExportCsv, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_PRINT, CurvePrint, OnUpdateOfCurves)
ZOV_ON_COMMAND(ID_CURVE_CLOSE, CurveClose)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_COPY_IMAGE, CurveCopyImage, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_COPY_DATA, CurveCopyData, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_COPY_MARKERS, CurveCopyMarkers, OnUpdateOfMarkers)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_SHOW_ALL, CurveShowAll, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_HIDE_OTHERS, CurveHideOthers, OnUpdateOfSelected)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_RENAME, CurveRename, OnUpdateOfSelected)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_REMOVE, CurveRemove, OnUpdateOfSelected)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_CLEAR_MARKERS, CurveClearMarkers, OnUpdateOfMarkers)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_CALCULATE, CurveCalculate, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_MAGNITUDE, CurveViewMagnitude, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_DB, CurveViewDb, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_PHASE, CurveViewPhase, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_REAL, CurveViewReal, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_IMAGINARY, CurveViewImaginary, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_VIEW_SMITH, CurveViewSmith, OnUpdateCurveView)
ZOV_ON_COMMAND_UPDATE(ID_CURVE_LOG_X, CurveLogX)
ZOV_ON_COMMAND_UPDATE(ID_CURVE_LOG_Y, CurveLogY)
ZOV_ON_COMMAND_UPDATE(ID_CURVE_GRID, CurveGrid)
ZOV_ON_COMMAND_UPDATE(ID_CURVE_LEGEND, CurveLegend)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_ZOOM_IN, CurveZoomIn, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_ZOOM_OUT, CurveZoomOut, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_ZOOM_BACK, CurveZoomBack, OnUpdateCurveZoom)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_ZOOM_FORWARD, CurveZoomForward, OnUpdateCurveZoom)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_ZOOM_FIT, CurveZoomFit, OnUpdateOfCurves)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_MOUSE_ZOOM, CurveMouseZoom, OnUpdateCurveMouse)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_MOUSE_PAN, CurveMousePan, OnUpdateCurveMouse)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_MOUSE_MARKER, CurveMouseMarker, OnUpdateCurveMouse)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_PANE_CURVES, CurvePaneCurves, OnUpdateCurvePane)
ZOV_ON_COMMAND_UPDATE_BY(ID_CURVE_PANE_MARKERS, CurvePaneMarkers, OnUpdateCurvePane)
ZOV_END_MESSAGE_MAP()

CUiGeneralCurveFrm::CUiGeneralCurveFrm(CLogSink& log, QWidget* parent)
    : CUiFrame(parent, CurveCommands())
    , m_log(log)
    , m_journal(std::make_unique<CJournal>(log))
    , m_tabs(new QTabWidget(this))
{
    setObjectName(QStringLiteral("GeneralCurveFrm"));
    setWindowTitle(tr("Curves"));
    setAcceptDrops(true);
    resize(1100, 720);
    m_actions->SetIcons([](const QString& name) { return Images().Icon(name); });
    m_tabs->setObjectName(QStringLiteral("CurveSets"));
    m_tabs->setDocumentMode(true);
    m_tabs->setTabBarAutoHide(true);
    setCentralWidget(m_tabs);
    m_fitColumns.setSingleShot(true);
    m_fitColumns.setInterval(0);
    connect(&m_fitColumns, &QTimer::timeout, this, [this] {
        for (QTableView* table : {m_curveList, m_markerList}) {
            table->resizeColumnsToContents();
            // Names that differ at their end are not to be cut there.
            const int most = std::max(table->viewport()->width(), kLeastNameWidth);
            table->setColumnWidth(0, std::min(table->columnWidth(0), most));
            // Asked for anew, since the last column has just got a width of its own.
            table->horizontalHeader()->setStretchLastSection(false);
            table->horizontalHeader()->setStretchLastSection(true);
        }
    });
    MakePanes();
    MakeMenus();
    MakeToolBar();
    MakeStatus();
    connect(m_tabs, &QTabWidget::currentChanged, this, &CUiGeneralCurveFrm::ShowPage);
    AddPage(tr("Curve"));
    StartIdleUpdates();
}

CUiGeneralCurveFrm::~CUiGeneralCurveFrm()
{
    disconnect(m_tabs, nullptr, this, nullptr);
    m_curveList->setModel(nullptr);
    m_markerList->setModel(nullptr);
}

void CUiGeneralCurveFrm::MakePanes()
{
    m_curveList =
        NewTable("CurveList", tr("Open a file with Ctrl+O, or drop files on the window."), this);
    m_curveList->setEditTriggers(QAbstractItemView::EditKeyPressed |
                                 QAbstractItemView::DoubleClicked);
    m_markerList =
        NewTable("MarkerList", tr("Choose the marker mouse with M, then click on a curve."), this);
    m_curvesPane = AddPane(tr("Curves"), "CurvesPane", m_curveList, Qt::RightDockWidgetArea);
    m_markersPane = AddPane(tr("Markers"), "MarkersPane", m_markerList, Qt::BottomDockWidgetArea);
    resizeDocks({m_curvesPane}, {300}, Qt::Horizontal);
    resizeDocks({m_markersPane}, {130}, Qt::Vertical);
    connect(m_curveList, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        ShowCurveMenu(m_curveList->viewport()->mapToGlobal(pos));
    });
    connect(m_markerList, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        QMenu menu;
        menu.setObjectName(QStringLiteral("MarkerMenu"));
        m_actions->FillMenu(menu, {ID_CURVE_COPY_MARKERS, ID_CURVE_CLEAR_MARKERS});
        const int row = m_markerList->indexAt(pos).row();
        if (row >= 0) {
            menu.addAction(tr("Remove Marker"), this,
                           [this, row] { Page().Markers().Remove(row); });
        }
        menu.exec(m_markerList->viewport()->mapToGlobal(pos));
    });
}

void CUiGeneralCurveFrm::MakeMenus()
{
    const auto menu = [this](const QString& title, const char* name,
                             std::initializer_list<unsigned> commands) {
        QMenu* made = menuBar()->addMenu(title);
        made->setObjectName(QLatin1String(name));
        m_actions->FillMenu(*made, commands);
        return made;
    };
    menu(tr("&File"), "CurveFileMenu",
         {ID_CURVE_OPEN, ID_CURVE_NEW_SET, ID_CURVE_CLOSE_SET, ui::kSeparator, ID_CURVE_SAVE_AS,
          ID_CURVE_EXPORT_IMAGE, ID_CURVE_EXPORT_CSV, ID_CURVE_PRINT, ui::kSeparator,
          ID_CURVE_CLOSE});
    menu(tr("&Edit"), "CurveEditMenu",
         {ID_CURVE_COPY_IMAGE, ID_CURVE_COPY_DATA, ID_CURVE_COPY_MARKERS, ui::kSeparator,
          ID_CURVE_RENAME, ID_CURVE_REMOVE, ID_CURVE_SHOW_ALL, ID_CURVE_HIDE_OTHERS, ui::kSeparator,
          ID_CURVE_CLEAR_MARKERS});
    QMenu* view = menu(
        tr("&View"), "CurveViewMenu",
        {ID_CURVE_VIEW_MAGNITUDE, ID_CURVE_VIEW_DB,    ID_CURVE_VIEW_PHASE, ID_CURVE_VIEW_REAL,
         ID_CURVE_VIEW_IMAGINARY, ID_CURVE_VIEW_SMITH, ui::kSeparator,      ID_CURVE_LOG_X,
         ID_CURVE_LOG_Y,          ID_CURVE_GRID,       ID_CURVE_LEGEND,     ui::kSeparator,
         ID_CURVE_ZOOM_IN,        ID_CURVE_ZOOM_OUT,   ID_CURVE_ZOOM_BACK,  ID_CURVE_ZOOM_FORWARD,
         ID_CURVE_ZOOM_FIT,       ui::kSeparator,      ID_CURVE_MOUSE_ZOOM, ID_CURVE_MOUSE_PAN,
         ID_CURVE_MOUSE_MARKER,   ui::kSeparator});
    QMenu* panes = view->addMenu(tr("Pane"));
    m_actions->FillMenu(*panes, {ID_CURVE_PANE_CURVES, ID_CURVE_PANE_MARKERS});
    menu(tr("&Tools"), "CurveToolsMenu", {ID_CURVE_CALCULATE});
}

void CUiGeneralCurveFrm::MakeToolBar()
{
    auto* bar = new QToolBar(tr("Curves"), this);
    bar->setObjectName(QStringLiteral("CurveToolBar"));
    bar->setIconSize({20, 20});
    addToolBar(bar);
    m_actions->FillToolBar(
        *bar,
        {ID_CURVE_OPEN,      ID_CURVE_SAVE_AS,        ID_CURVE_EXPORT_IMAGE, ID_CURVE_COPY_IMAGE,
         ui::kSeparator,     ID_CURVE_MOUSE_ZOOM,     ID_CURVE_MOUSE_PAN,    ID_CURVE_MOUSE_MARKER,
         ui::kSeparator,     ID_CURVE_ZOOM_BACK,      ID_CURVE_ZOOM_FORWARD, ID_CURVE_ZOOM_FIT,
         ui::kSeparator,     ID_CURVE_VIEW_MAGNITUDE, ID_CURVE_VIEW_DB,      ID_CURVE_VIEW_PHASE,
         ID_CURVE_VIEW_REAL, ID_CURVE_VIEW_IMAGINARY, ID_CURVE_VIEW_SMITH,   ui::kSeparator,
         ID_CURVE_LOG_X,     ID_CURVE_LOG_Y,          ui::kSeparator,        ID_CURVE_CALCULATE});
}

void CUiGeneralCurveFrm::MakeStatus()
{
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("JobProgress"));
    m_progress->setMaximumWidth(220);
    m_cancel = new QPushButton(tr("Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("CancelJob"));
    for (QWidget* widget : {static_cast<QWidget*>(m_progress), static_cast<QWidget*>(m_cancel)}) {
        statusBar()->addPermanentWidget(widget);
        widget->hide();
    }
    connect(&m_job, &CBackgroundJob::Progress, this, [this](const QString& what, int permille) {
        statusBar()->showMessage(what);
        m_progress->setRange(0, permille == 0 ? 0 : 1000);
        m_progress->setValue(permille);
        m_progress->show();
        m_cancel->show();
    });
    connect(&m_job, &CBackgroundJob::Finished, this, [this] {
        m_progress->hide();
        m_cancel->hide();
        statusBar()->clearMessage();
        if (!m_waiting.empty()) {
            const std::function<void()> next = std::move(m_waiting.front());
            m_waiting.pop_front();
            next();
        }
    });
    connect(m_cancel, &QPushButton::clicked, &m_job, &CBackgroundJob::Cancel);
}

void CUiGeneralCurveFrm::RunWhenIdle(std::function<void()> start)
{
    if (m_job.IsRunning()) {
        m_waiting.push_back(std::move(start));
    } else {
        start();
    }
}

CCurvePage& CUiGeneralCurveFrm::AddPage(const QString& title)
{
    auto* page = new CCurvePage(m_tabs);
    page->setObjectName(QStringLiteral("CurvePage%1").arg(m_tabs->count() + 1));
    page->Set().name = title.toStdString();
    connect(&page->Curves(), &QAbstractItemModel::rowsInserted, &m_fitColumns,
            qOverload<>(&QTimer::start));
    connect(&page->Markers(), &CMarkerModel::Changed, &m_fitColumns, qOverload<>(&QTimer::start));
    connect(&page->Plot(), &CCurvePlot::StateChanged, m_actions, &ui::CCommandActions::UpdateAll);
    connect(&page->Plot(), &CCurvePlot::PointedAt, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(&page->Plot(), &CCurvePlot::ContextMenuAsked, this, &CUiGeneralCurveFrm::ShowCurveMenu);
    m_tabs->setCurrentIndex(m_tabs->addTab(page, title));
    ShowPage();
    return *page;
}

CCurvePage& CUiGeneralCurveFrm::Page() const
{
    return *static_cast<CCurvePage*>(m_tabs->currentWidget());
}

void CUiGeneralCurveFrm::ShowPage()
{
    if (m_tabs->currentWidget() == nullptr || m_curveList->model() == &Page().Curves()) {
        return;
    }
    for (const auto& [view, model] :
         {std::pair<QTableView*, QAbstractItemModel*>{m_curveList, &Page().Curves()},
          {m_markerList, &Page().Markers()}}) {
        // A view leaves the selection of its old model behind.
        const std::unique_ptr<QItemSelectionModel> old(view->selectionModel());
        view->setModel(model);
    }
    m_fitColumns.start();
    m_actions->UpdateAll();
}

std::vector<int> CUiGeneralCurveFrm::Selected() const
{
    std::vector<int> rows;
    for (const QModelIndex& index : m_curveList->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::ranges::sort(rows);
    return rows;
}

std::vector<int> CUiGeneralCurveFrm::SelectedOrAll() const
{
    std::vector<int> rows = Selected();
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(Page().Curves().rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    return rows;
}

std::vector<curve::TCurvePtr> CUiGeneralCurveFrm::CurvesOfRows(const std::vector<int>& rows) const
{
    std::vector<curve::TCurvePtr> curves;
    for (const int row : rows) {
        curves.push_back(Page().Curves().At(row).curve);
    }
    return curves;
}

void CUiGeneralCurveFrm::ShowCurveMenu(const QPoint& globalPos)
{
    QMenu menu;
    menu.setObjectName(QStringLiteral("CurveMenu"));
    if (!Selected().empty()) {
        QMenu* styles = menu.addMenu(tr("Line &Style"));
        const QString names[] = {tr("Solid"), tr("Dash"), tr("Dot"), tr("Dash Dot"),
                                 tr("Dash Dot Dot")};
        for (std::size_t i = 0; i < std::size(names); ++i) {
            styles->addAction(names[i], this, [this, i] {
                for (const int row : Selected()) {
                    Page().Curves().SetStyle(row, static_cast<curve::ELineStyle>(i));
                }
            });
        }
        QMenu* colors = menu.addMenu(tr("&Color"));
        const QString colorNames[] = {tr("Blue"),   tr("Orange"), tr("Green"), tr("Red"),
                                      tr("Violet"), tr("Brown"),  tr("Pink"),  tr("Grey"),
                                      tr("Olive"),  tr("Cyan")};
        for (std::size_t i = 0; i < std::size(colorNames); ++i) {
            QPixmap square(14, 14);
            square.fill(CurveColor(i));
            colors->addAction(square, colorNames[i], this, [this, i] {
                for (const int row : Selected()) {
                    Page().Curves().SetColor(row, CurveColor(i));
                }
            });
        }
    }
    m_actions->FillMenu(menu, {ID_CURVE_RENAME, ID_CURVE_REMOVE, ID_CURVE_HIDE_OTHERS,
                               ID_CURVE_SHOW_ALL, ui::kSeparator, ID_CURVE_CALCULATE,
                               ui::kSeparator, ID_CURVE_ZOOM_BACK, ID_CURVE_ZOOM_FIT});
    menu.exec(globalPos);
}

void CUiGeneralCurveFrm::OnCurveNewSet()
{
    AddPage(tr("Curve %1").arg(m_tabs->count() + 1));
}

void CUiGeneralCurveFrm::OnCurveCloseSet()
{
    CCurvePage* page = &Page();
    if (m_tabs->count() == 1) {
        AddPage(tr("Curve"));
    } else {
        m_tabs->setCurrentIndex(m_tabs->currentIndex() == 0 ? 1 : m_tabs->currentIndex() - 1);
    }
    m_tabs->removeTab(m_tabs->indexOf(page));
    delete page;
    ShowPage();
}

void CUiGeneralCurveFrm::OnCurveClose()
{
    close();
}

void CUiGeneralCurveFrm::OnCurveShowAll()
{
    for (int row = 0; row < Page().Curves().rowCount(); ++row) {
        Page().Curves().SetShown(row, true);
    }
}

void CUiGeneralCurveFrm::OnCurveHideOthers()
{
    const std::vector<int> selected = Selected();
    for (int row = 0; row < Page().Curves().rowCount(); ++row) {
        Page().Curves().SetShown(row, std::ranges::binary_search(selected, row));
    }
}

void CUiGeneralCurveFrm::OnCurveRename()
{
    m_curveList->edit(Page().Curves().index(Selected().front(), CCurveListModel::kTitle));
}

void CUiGeneralCurveFrm::OnCurveRemove()
{
    std::vector<int> rows = Selected();
    std::ranges::reverse(rows);
    for (const int row : rows) {
        Page().Remove(row);
    }
}

void CUiGeneralCurveFrm::OnCurveClearMarkers()
{
    Page().Markers().Clear();
}

void CUiGeneralCurveFrm::OnCurveLogX()
{
    Page().Plot().SetLogX(!Page().Plot().IsLogX());
}

void CUiGeneralCurveFrm::OnCurveLogY()
{
    Page().Plot().SetLogY(!Page().Plot().IsLogY());
}

void CUiGeneralCurveFrm::OnCurveGrid()
{
    Page().Plot().SetGrid(!Page().Plot().HasGrid());
}

void CUiGeneralCurveFrm::OnCurveLegend()
{
    Page().Plot().SetLegend(!Page().Plot().HasLegend());
}

void CUiGeneralCurveFrm::ZoomBy(double factor)
{
    CCurvePlot& plot = Page().Plot();
    plot.ZoomTo(plot.Scaled(QRectF(plot.canvas()->contentsRect()).center(), factor, factor));
}

void CUiGeneralCurveFrm::OnCurveZoomBack()
{
    Page().Plot().ZoomBack();
}

void CUiGeneralCurveFrm::OnCurveZoomForward()
{
    Page().Plot().ZoomForward();
}

void CUiGeneralCurveFrm::OnCurveZoomFit()
{
    Page().Plot().ZoomFit();
}

void CUiGeneralCurveFrm::SetMouse(CCurvePlot::EMouse mouse)
{
    for (int i = 0; i < m_tabs->count(); ++i) {
        static_cast<CCurvePage*>(m_tabs->widget(i))->Plot().SetMouse(mouse);
    }
}

void CUiGeneralCurveFrm::OnCurveMouseZoom()
{
    SetMouse(CCurvePlot::kZoomMouse);
}

void CUiGeneralCurveFrm::OnCurveMousePan()
{
    SetMouse(CCurvePlot::kPanMouse);
}

void CUiGeneralCurveFrm::OnCurveMouseMarker()
{
    SetMouse(CCurvePlot::kMarkerMouse);
}

QDockWidget* CUiGeneralCurveFrm::PaneOf(unsigned command) const
{
    return command == ID_CURVE_PANE_CURVES ? m_curvesPane : m_markersPane;
}

void CUiGeneralCurveFrm::OnCurvePaneCurves()
{
    m_curvesPane->setVisible(m_curvesPane->isHidden());
}

void CUiGeneralCurveFrm::OnCurvePaneMarkers()
{
    m_markersPane->setVisible(m_markersPane->isHidden());
}

void CUiGeneralCurveFrm::OnUpdateCurveBusy(ui::CCmdUI& ui)
{
    ui.Enable(!m_job.IsRunning());
}

void CUiGeneralCurveFrm::OnUpdateOfCurves(ui::CCmdUI& ui)
{
    ui.Enable(Page().Curves().rowCount() > 0);
}

void CUiGeneralCurveFrm::OnUpdateOfSelected(ui::CCmdUI& ui)
{
    ui.Enable(m_curveList->selectionModel()->hasSelection());
}

void CUiGeneralCurveFrm::OnUpdateOfMarkers(ui::CCmdUI& ui)
{
    ui.Enable(Page().Markers().rowCount() > 0);
}

void CUiGeneralCurveFrm::OnUpdateCurveView(ui::CCmdUI& ui)
{
    const auto view = std::ranges::find(kViewCommands, ui.Command()) - std::begin(kViewCommands);
    ui.SetCheck(static_cast<ECurveView>(view) == Page().Plot().View());
    ui.Enable(Page().HasComplex());
}

void CUiGeneralCurveFrm::OnUpdateCurveLogX(ui::CCmdUI& ui)
{
    ui.SetCheck(Page().Plot().IsLogX());
    ui.Enable(Page().Plot().View() != ECurveView::Smith);
}

void CUiGeneralCurveFrm::OnUpdateCurveLogY(ui::CCmdUI& ui)
{
    const ECurveView view = Page().Plot().View();
    ui.SetCheck(Page().Plot().IsLogY());
    ui.Enable(view == ECurveView::Magnitude || view == ECurveView::Real ||
              view == ECurveView::Imaginary);
}

void CUiGeneralCurveFrm::OnUpdateCurveGrid(ui::CCmdUI& ui)
{
    ui.SetCheck(Page().Plot().HasGrid());
}

void CUiGeneralCurveFrm::OnUpdateCurveLegend(ui::CCmdUI& ui)
{
    ui.SetCheck(Page().Plot().HasLegend());
}

void CUiGeneralCurveFrm::OnUpdateCurveZoom(ui::CCmdUI& ui)
{
    ui.Enable(ui.Command() == ID_CURVE_ZOOM_BACK ? Page().Plot().CanZoomBack()
                                                 : Page().Plot().CanZoomForward());
}

void CUiGeneralCurveFrm::OnUpdateCurveMouse(ui::CCmdUI& ui)
{
    const auto mouse = static_cast<CCurvePlot::EMouse>(ui.Command() - ID_CURVE_MOUSE_ZOOM);
    ui.SetCheck(Page().Plot().Mouse() == mouse);
}

void CUiGeneralCurveFrm::OnUpdateCurvePane(ui::CCmdUI& ui)
{
    ui.SetCheck(!PaneOf(ui.Command())->isHidden());
}

} // namespace zov::app
