// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/AssignFrm.h"

#include "app/Images.h"
#include "app/ReplayToolBar.h"
#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignmentForms.h"
#include "base/File.h"
#include "ui/EventFilters.h"
#include "ui/Prompt.h"
#include "ui/UiDialog.h"
#include "ui/replay/ReplayBar.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

namespace zov::app {
namespace {

constexpr const char* kGeometryKey = "Assignment/Geometry";
constexpr const char* kStateKey = "Assignment/State";
constexpr const char* kDesignFilter =
    "Designs (*.csv *.xlsx *.xls *.net *.kicad_net);;All files (*)";
constexpr int kToldMs = 8000;
constexpr int kOutputHeight = 110;
constexpr int kWhyWidth = 260;

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CAssignFrm, ui::CUiFrame)
ZOV_ON_COMMAND(ID_OPEN_DESIGN, OpenDesign)
ZOV_ON_COMMAND_UPDATE(ID_SAVE_LIBRARY, SaveLibrary)
ZOV_ON_COMMAND(ID_FRAME_EXIT, FrameExit)
ZOV_ON_COMMAND_UPDATE(ID_ASSIGN_TOOLBAR, ViewToolbarMain)
ZOV_ON_COMMAND_UPDATE(ID_ASSIGN_EVENT_REPLAY, ZovEventReplay)
ZOV_ON_COMMAND_UPDATE(ID_ASSIGN_PANE_OUTPUT, ViewPaneOutput)
ZOV_ON_COMMAND_UPDATE(ID_ASSIGN_PANE_WHY, ViewPaneWhy)
ZOV_ON_COMMAND(ID_VIEW_ZVMGR, ViewZvMgr)
ZOV_ON_COMMAND(ID_ASSIGN_LEGEND, Legend)
ZOV_ON_COMMAND(ID_ASSIGN_ABOUT, About)
ZOV_END_MESSAGE_MAP()

CAssignFrm::CAssignFrm(CZovSession& session, QSettings& layout, const FEnvironment& environment,
                       QWidget* parent)
    : CUiFrame(parent, AssignFrameCommands())
    , m_session(session)
    , m_layout(layout)
    , m_environment(environment)
    , m_log([this](std::string_view text) {
        m_output->Write(text);
        m_session.Log().Write(text);
    })
    , m_output(new COutputPane(this))
{
    RegisterAssignmentForms();
    setObjectName(QStringLiteral("AssignFrm"));
    setAcceptDrops(true);
    resize(1280, 760);
}

CAssignFrm::~CAssignFrm()
{
    StopIdleUpdates();
    delete m_view; // its work writes into the output pane
}

QToolBar* CAssignFrm::NewToolBar(const QString& title, const char* objectName)
{
    auto* bar = new QToolBar(title, this);
    bar->setObjectName(QLatin1String(objectName));
    bar->setIconSize({20, 20});
    addToolBar(bar);
    return bar;
}

CAssignModelView* CAssignFrm::NewView()
{
    return new CAssignModelView(m_session, m_log, m_layout, m_environment, this);
}

CResult<void> CAssignFrm::OnCreate()
{
    m_actions->SetIcons([](const QString& name) { return Images().Icon(name); });
    RETURN_IF_ERROR(MakeToolBars());
    m_view = NewView();
    if (m_view == nullptr) {
        return Fail(EErr::Unspecified, "Failed to create AssignView");
    }
    setCentralWidget(m_view);
    // The view's own menu words its commands otherwise; their shortcuts are the frame's.
    m_viewActions = new ui::CCommandActions(AssignViewCommands(), *this, *m_view);
    m_viewActions->SetIcons([](const QString& name) { return Images().Icon(name); });
    MakeFindBar();
    m_replayBar = AddReplayToolBar(*this, m_environment, m_log);
    MakePanes();
    MakeMenus();
    MakeStatusBar();
    ConnectView();
    resizeDocks({m_outputPane}, {kOutputHeight}, Qt::Vertical);
    resizeDocks({m_whyPane}, {kWhyWidth}, Qt::Horizontal);
    restoreGeometry(m_layout.value(QLatin1String(kGeometryKey)).toByteArray());
    restoreState(m_layout.value(QLatin1String(kStateKey)).toByteArray());
    ShowTitle();
    StartIdleUpdates();
    return {};
}

CResult<void> CAssignFrm::MakeToolBars()
{
    m_mainBar = NewToolBar(tr("ZOV - Main"), "AssignMain");
    if (m_mainBar == nullptr) {
        return Fail(EErr::Unspecified, "Failed to create toolbar");
    }
    m_actions->FillToolBar(*m_mainBar, {ID_OPEN_DESIGN, ID_SAVE_LIBRARY, ui::kSeparator,
                                        ID_VIEW_ZVMGR, ID_ASSIGN_PANE_OUTPUT});
    m_assignBar = NewToolBar(tr("Model Assignment"), "ModelAssignment");
    m_createBar =
        m_assignBar == nullptr ? nullptr : NewToolBar(tr("Model Creation"), "ModelCreation");
    if (m_assignBar == nullptr || m_createBar == nullptr) {
        return Fail(EErr::Unspecified, "Failed to create ZvMgr Assign toolbar");
    }
    m_actions->FillToolBar(*m_assignBar,
                           {ID_AUTO_MAPPING, ID_FIND_MODEL, ID_BROWSE_MODEL, ID_REMOVE_MODEL,
                            ui::kSeparator, ID_IMPORT_MAP_FILE, ID_EXPORT_MAP_FILE, ui::kSeparator,
                            ID_EXPAND_MODEL, ID_COLLAPSE_MODEL, ID_SWITCH_VIEW, ID_REFRESH_STATUS});
    auto* modes = new QMenu(this);
    modes->setObjectName(QStringLiteral("FindModes"));
    m_actions->FillMenu(*modes, {ID_FIND_MODEL_BY_NAME, ID_FIND_MODEL_BY_SCHEMA});
    if (auto* find = qobject_cast<QToolButton*>(
            m_assignBar->widgetForAction(m_actions->Action(ID_FIND_MODEL)))) {
        find->setMenu(modes);
        find->setPopupMode(QToolButton::MenuButtonPopup);
    }
    m_actions->FillToolBar(*m_createBar, {ID_CREATE_MODEL, ID_CREATE_DISC_MODEL});
    return {};
}

void CAssignFrm::MakeFindBar()
{
    m_findBar = new QToolBar(tr("Find Pattern"), this);
    m_findBar->setObjectName(QStringLiteral("FindPatternBar"));
    m_findBar->setIconSize({20, 20});
    addToolBarBreak();
    addToolBar(m_findBar);
    m_pattern = new QComboBox(m_findBar);
    m_pattern->setObjectName(QStringLiteral("FindPattern"));
    m_pattern->setEditable(true);
    m_pattern->setInsertPolicy(QComboBox::InsertAtTop);
    m_pattern->setMinimumContentsLength(24);
    m_pattern->setMaxCount(20);
    m_pattern->setToolTip(tr("Objects Pattern"));
    m_pattern->setAccessibleName(tr("Objects Pattern"));
    m_pattern->lineEdit()->setPlaceholderText(tr("U1, U2 C*"));
    m_findBar->addWidget(m_pattern);
    m_actions->FillToolBar(*m_findBar, {ID_ZVMGR_FIND_ALL, ID_ZVMGR_FIND_PREV, ID_ZVMGR_FIND_NEXT,
                                        ui::kSeparator, ID_AMBIGUOUS_ONLY, ID_FOUND_ONLY});
    connect(m_pattern, &QComboBox::editTextChanged, m_view, &CAssignModelView::SetFindPattern);
    connect(m_pattern, qOverload<int>(&QComboBox::activated), this, [this] {
        m_view->SetFindPattern(m_pattern->currentText());
        RouteCommand(ID_SELCHANGE_FIND_PATTERN);
    });
}

void CAssignFrm::MakeMenus()
{
    const auto menu = [this](const QString& title, const char* name) {
        QMenu* added = menuBar()->addMenu(title);
        added->setObjectName(QLatin1String(name));
        return added;
    };
    m_actions->FillMenu(*menu(tr("&File"), "FileMenu"),
                        {ID_OPEN_DESIGN, ID_SAVE_LIBRARY, ui::kSeparator, ID_FRAME_EXIT});
    m_actions->FillMenu(
        *menu(tr("&Assign"), "AssignMenu"),
        {ID_FIND_MODEL, ID_BROWSE_MODEL, ID_CREATE_MODEL, ID_IMPORT_MAP_FILE, ID_EXPORT_MAP_FILE,
         ID_EXPAND_MODEL, ID_COLLAPSE_MODEL, ID_ENABLE_SUB_MODELS, ui::kSeparator, ID_AUTO_MAPPING,
         ID_CREATE_DISC_MODEL, ID_REMOVE_MODEL, ui::kSeparator, ID_REFRESH_STATUS, ID_SWITCH_VIEW});
    QMenu* view = menu(tr("&View"), "ViewMenu");
    QMenu* bars = view->addMenu(tr("&Toolbar"));
    m_actions->FillMenu(*bars, {ID_ASSIGN_TOOLBAR});
    for (const QToolBar* bar : {m_assignBar, m_createBar, m_findBar}) {
        bars->addAction(bar->toggleViewAction());
    }
    m_actions->FillMenu(*bars, {ID_ASSIGN_EVENT_REPLAY});
    m_actions->FillMenu(*view->addMenu(tr("Pane")), {ID_ASSIGN_PANE_OUTPUT, ID_ASSIGN_PANE_WHY});
    m_actions->FillMenu(*view, {ID_VIEW_ORIGIN, ID_ASSIGN_LEGEND, ui::kSeparator, ID_VIEW_ZVMGR});
    m_actions->FillMenu(*menu(tr("&Help"), "HelpMenu"), {ID_ASSIGN_ABOUT});
}

void CAssignFrm::MakePanes()
{
    m_outputPane = AddPane(tr("Output"), "OutputPane", m_output, Qt::BottomDockWidgetArea);
    m_why = new QTextBrowser(this);
    m_why->setObjectName(QStringLiteral("Why"));
    m_why->setPlaceholderText(
        tr("Select a row to see why it has its model, and what else matches."));
    m_whyPane = AddPane(tr("Why"), "WhyPane", m_why, Qt::RightDockWidgetArea);
}

void CAssignFrm::OnZovEventReplay()
{
    m_replayBar->setVisible(m_replayBar->isHidden());
}

void CAssignFrm::OnUpdateZovEventReplay(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_replayBar->isHidden());
}

void CAssignFrm::MakeStatusBar()
{
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("JobProgress"));
    m_progress->setRange(0, 1000);
    m_progress->setMaximumWidth(220);
    m_cancel = new QPushButton(tr("Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("CancelJob"));
    statusBar()->addPermanentWidget(m_progress);
    statusBar()->addPermanentWidget(m_cancel);
    m_progress->hide();
    m_cancel->hide();
    connect(m_cancel, &QPushButton::clicked, m_view, &CAssignModelView::StopWork);
    connect(&m_view->Job(), &CBackgroundJob::Progress, this,
            [this](const QString& what, int permille) {
                m_progress->setValue(permille);
                m_progress->show();
                m_cancel->show();
                statusBar()->showMessage(what);
            });
    connect(&m_view->Job(), &CBackgroundJob::Finished, this, [this] {
        if (m_progress->isVisible()) {
            statusBar()->clearMessage();
        }
        m_progress->hide();
        m_cancel->hide();
    });
}

void CAssignFrm::ConnectView()
{
    connect(m_view, &CAssignModelView::Told, this,
            [this](const QString& text) { statusBar()->showMessage(text, kToldMs); });
    connect(m_view, &CAssignModelView::WhyChanged, m_why, &QTextBrowser::setHtml);
    connect(m_view, &CAssignModelView::DesignChanged, this, &CAssignFrm::ShowTitle);
    connect(m_view, &CAssignModelView::ModifiedChanged, this, &CAssignFrm::ShowTitle);
    connect(m_view, &CAssignModelView::ContextMenuAsked, this, &CAssignFrm::ShowViewMenu);
    connect(m_view, &CAssignModelView::ViewSwitched, this, [this](bool refDes) {
        const QString text =
            refDes ? tr("Switch to Model/RefDes View") : tr("Switch to RefDes View");
        m_actions->Action(ID_SWITCH_VIEW)->setText(text);
        m_viewActions->Action(ID_SWITCH_VIEW)->setText(text);
    });
    connect(&m_session, &CZovSession::ModifiedChanged, this, &CAssignFrm::OnIdleUpdateCmdUI);
}

void CAssignFrm::ShowViewMenu(const QPoint& globalPos)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("AssignViewMenu"));
    m_viewActions->UpdateAll();
    m_viewActions->FillMenu(menu,
                            {ID_FIND_MODEL, ID_BROWSE_MODEL, ID_CREATE_MODEL, ID_REMOVE_MODEL,
                             ui::kSeparator, ID_IMPORT_MAP_FILE, ID_EXPORT_MAP_FILE, ui::kSeparator,
                             ID_EXPAND_MODEL, ID_COLLAPSE_MODEL, ID_SWITCH_VIEW});
    menu.exec(globalPos);
}

void CAssignFrm::ShowTitle()
{
    setWindowTitle(m_view->HasDesign() ? tr("%1[*] - Model Assignment").arg(m_view->Title())
                                       : tr("Model Assignment"));
    setWindowModified(m_view->IsModified());
}

void CAssignFrm::OpenDesign(const QString& path)
{
    if (m_view->MayLeave()) {
        m_view->OpenDesign(path);
    }
}

void CAssignFrm::OnOpenDesign()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Open Design"), tr(kDesignFilter));
    if (!path.isEmpty()) {
        OpenDesign(path);
    }
}

void CAssignFrm::OnSaveLibrary()
{
    const CZovSession::TLibrary library = m_session.ProjectLibrary();
    const QString path = ui::CPrompt::SaveFile(this, tr("Save Library"), tr("ZOV Library (*.zov)"),
                                               QString::fromStdString(PathText(library->Path())));
    if (path.isEmpty()) {
        return;
    }
    if (const CResult<void> saved = m_session.Save(library, TextPath(path.toStdString())); !saved) {
        ui::CPrompt::Tell(this, QString::fromStdString(saved.Error().Full()), ui::EIcon::Error);
    }
}

void CAssignFrm::OnUpdateSaveLibrary(ui::CCmdUI& ui)
{
    ui.Enable(m_session.ProjectLibrary() != nullptr);
}

void CAssignFrm::OnFrameExit()
{
    close();
}

bool CAssignFrm::OnClose()
{
    if (m_view != nullptr && !m_view->MayLeave()) {
        return false;
    }
    m_layout.setValue(QLatin1String(kGeometryKey), saveGeometry());
    m_layout.setValue(QLatin1String(kStateKey), saveState());
    return true;
}

void CAssignFrm::closeEvent(QCloseEvent* event)
{
    event->setAccepted(OnClose());
}

bool CAssignFrm::OnKeyDown(int key)
{
    if (key == Qt::Key_Escape && m_view->IsBusy()) {
        m_view->StopWork();
        return true;
    }
    return false;
}

void CAssignFrm::keyPressEvent(QKeyEvent* event)
{
    if (!OnKeyDown(event->key())) {
        QMainWindow::keyPressEvent(event);
    }
}

void CAssignFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void CAssignFrm::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile()) {
        OpenDesign(urls.first().toLocalFile());
    }
}

void CAssignFrm::OnViewToolbarMain()
{
    m_mainBar->setVisible(m_mainBar->isHidden());
}

void CAssignFrm::OnUpdateViewToolbarMain(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_mainBar->isHidden());
}

void CAssignFrm::OnViewPaneOutput()
{
    m_outputPane->setVisible(m_outputPane->isHidden());
}

void CAssignFrm::OnUpdateViewPaneOutput(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_outputPane->isHidden());
}

void CAssignFrm::OnViewPaneWhy()
{
    m_whyPane->setVisible(m_whyPane->isHidden());
}

void CAssignFrm::OnUpdateViewPaneWhy(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_whyPane->isHidden());
}

void CAssignFrm::OnViewZvMgr()
{
    Q_EMIT ZvMgrAsked();
}

void CAssignFrm::ShowForm(const char* name)
{
    if (const auto dialog = ui::CDialogForms::Create(QLatin1String(name), this)) {
        dialog->DoModal();
    }
}

void CAssignFrm::OnLegend()
{
    ShowForm("dlg_IDD_ZOV_DLG_LEGEND");
}

void CAssignFrm::OnAbout()
{
    ShowForm("dlg_IDD_ZOV_ABOUTBOX");
}

} // namespace zov::app
