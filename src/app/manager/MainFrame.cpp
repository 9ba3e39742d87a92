// SPDX-License-Identifier: Apache-2.0
#include "app/manager/MainFrame.h"

#include "app/Images.h"
#include "app/ReplayToolBar.h"
#include "app/assignment/AssignFrm.h"
#include "app/assignment/AssignmentForms.h"
#include "app/generator/GeneratorForms.h"
#include "app/manager/ExternalLibsPane.h"
#include "app/manager/MainCommands.h"
#include "app/manager/ManagerForms.h"
#include "app/manager/OptionsDlg.h"
#include "app/manager/ToolWindows.h"
#include "app/manager/VeldaDlg.h"
#include "base/File.h"
#include "ui/EventFilters.h"
#include "ui/ListHint.h"
#include "ui/Prompt.h"
#include "ui/replay/ReplayBar.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {
namespace {

const char* const kThemeKey = "MainFrame/DarkTheme";
constexpr std::uint32_t kProjectList = 1;
constexpr std::uint32_t kSearchList = 2;
constexpr std::uint32_t kExternalList = 3;

class CLibraryTreeView final : public QTreeView
{
public:
    using QTreeView::QTreeView;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTreeView::paintEvent(event);
        ui::PaintListHint(*this, QCoreApplication::translate(
                                     "CLibraryTreeView",
                                     "No library is open. Open one with Ctrl+O or make a new one "
                                     "with Ctrl+N; the menu of the right button has more."));
    }
};

QTreeView* NewLibraryTree(CLibraryTreeModel& model, const char* objectName, QWidget* parent)
{
    auto* tree = new CLibraryTreeView(parent);
    tree->setObjectName(QLatin1String(objectName));
    tree->setModel(&model);
    tree->header()->hide();
    tree->setUniformRowHeights(true);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->setDragDropMode(QAbstractItemView::DragDrop);
    tree->setDefaultDropAction(Qt::MoveAction);
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    return tree;
}

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CZovMainFrm, ui::CUiFrame)
ZOV_ON_COMMAND_UPDATE(ID_FILE_NEW, FileNew)
ZOV_ON_COMMAND_UPDATE(ID_FILE_OPEN, FileOpen)
ZOV_ON_COMMAND_UPDATE(ID_FILE_OPEN_FOLDER, FileOpenFolder)
ZOV_ON_COMMAND_UPDATE(ID_FILE_SAVE, FileSave)
ZOV_ON_COMMAND_UPDATE(ID_FILE_SAVE_AS, FileSaveAs)
ZOV_ON_COMMAND_UPDATE(ID_ZOV_FRM_EXIT, ZovFrmExit)
ZOV_ON_COMMAND_UPDATE(ID_EDIT_UNDO, EditUndo)
ZOV_ON_COMMAND_UPDATE(ID_EDIT_REDO, EditRedo)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_TOOLBAR_MAIN, ViewToolbarMain)
ZOV_ON_COMMAND_UPDATE(ID_ZOV_EVENT_REPLAY, ZovEventReplay)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_LIBRARIES, ViewPaneLibraries)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_EDITOR, ViewPaneEditor)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_MODELS, ViewPaneModels)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_EXTERNAL, ViewPaneExternal)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_WORKFLOW, ViewPaneWorkflow)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_PANE_OUTPUT, ViewPaneOutput)
ZOV_ON_COMMAND_UPDATE(ID_THEME_DARK, ThemeDark)
ZOV_ON_COMMAND_UPDATE(ID_THEME_LIGHT, ThemeLight)
ZOV_ON_COMMAND_UPDATE(ID_NAV_PAGE_PROJECT, NavPageProject)
ZOV_ON_COMMAND_UPDATE(ID_NAV_PAGE_SEARCH, NavPageSearch)
ZOV_ON_COMMAND_UPDATE(ID_NAV_PAGE_EXT_LIBS, NavPageExtLibs)
ZOV_ON_COMMAND_UPDATE(ID_NAV_PAGE_VELDA, NavPageVelda)
ZOV_ON_COMMAND_UPDATE(ID_NAV_PAGE_OPTIONS, NavPageOptions)
ZOV_ON_COMMAND_UPDATE(ID_TOOLS_OPTIONS, ToolsOptions)
ZOV_ON_COMMAND_UPDATE(ID_VELDA_LIBRARY, VeldaLibrary)
ZOV_ON_COMMAND_UPDATE(ID_TOOLS_ASSIGN, ToolsAssign)
ZOV_ON_COMMAND_UPDATE(ID_TOOLS_GENERATE, ToolsGenerate)
ZOV_ON_COMMAND_UPDATE(ID_TOOLS_IBIS_EDITOR, ToolsIbisEditor)
ZOV_ON_COMMAND_UPDATE(ID_TOOLS_COMPOSE_IBIS, ToolsComposeIbis)
ZOV_ON_COMMAND_UPDATE_BY(ID_SHOW_IMPEDANCE, ShowImpedance, OnUpdateOfModels)
ZOV_ON_COMMAND_UPDATE_BY(ID_OPEN_MODEL_FILE, OpenModelFile, OnUpdateOfModels)
ZOV_ON_COMMAND_UPDATE(ID_APP_HELP, AppHelp)
ZOV_ON_COMMAND_UPDATE(ID_APP_ABOUT, AppAbout)
ZOV_ON_COMMAND_UPDATE(ID_NEW_ZOV_LIB_FILE, NewZovLibFile)
ZOV_ON_COMMAND_UPDATE(ID_CREATE_NEW_LIB_SET, CreateNewLibSet)
ZOV_ON_COMMAND_UPDATE(ID_RENAME_LIB_SET, RenameLibSet)
ZOV_ON_COMMAND_UPDATE_BY(ID_ARCHIVE_LIB, ArchiveLib, OnUpdateOfLibrary)
ZOV_ON_COMMAND_UPDATE_BY(ID_EXPORT_LIB, ExportLib, OnUpdateOfLibrary)
ZOV_ON_COMMAND_UPDATE(ID_ADD_LIB, AddLib)
ZOV_ON_COMMAND_UPDATE_BY(ID_EXPLORE_LIB, ExploreLib, OnUpdateOfLibrary)
ZOV_ON_COMMAND_UPDATE_BY(ID_REMOVE_LIB, RemoveLib, OnUpdateOfLibrary)
ZOV_ON_COMMAND_UPDATE_BY(ID_LIB_MOVE_UP, LibMoveUp, OnUpdateMoveLibBtn)
ZOV_ON_COMMAND_UPDATE_BY(ID_LIB_MOVE_DOWN, LibMoveDown, OnUpdateMoveLibBtn)
ZOV_ON_COMMAND_UPDATE(ID_IMPORT_LIB_FILE, ImportLibFile)
ZOV_ON_COMMAND_UPDATE(ID_IMPORT_FROM_FOLDER, ImportFromFolder)
ZOV_ON_COMMAND_UPDATE(ID_IMPORT_PREF_FILE, ImportPrefFile)
ZOV_ON_FUNCTION_UPDATE_BY(ID_REFRESH_ZOV_LIB, RefreshZovLib, OnUpdateOfLibrary)
ZOV_ON_COMMAND_UPDATE_BY(ID_OPEN_UNREACHABLE, OpenUnreachable, OnUpdateUnreachable)
ZOV_ON_COMMAND_UPDATE_BY(ID_FORGET_UNREACHABLE, ForgetUnreachable, OnUpdateUnreachable)
ZOV_ON_COMMAND_UPDATE(ID_EXPAND_ALL, ExpandAll)
ZOV_ON_COMMAND_UPDATE(ID_COLLAPSE_ALL, CollapseAll)
ZOV_ON_COMMAND_UPDATE(ID_ADD_MODEL, AddModel)
ZOV_ON_COMMAND_UPDATE_BY(ID_COPY_TO_LIBRARY, CopyToLibrary, OnUpdateOfModels)
ZOV_ON_COMMAND_UPDATE(ID_MANAGE_COLUMNS, ManageColumns)
ZOV_ON_COMMAND_UPDATE_BY(ID_EDIT_MODELS, EditModels, OnUpdateOfModels)
ZOV_ON_COMMAND_UPDATE_BY(ID_DELETE_MODELS, DeleteModels, OnUpdateOfModels)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_IC, AddIc, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_CAPACITOR, AddCapacitor, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_INDUCTOR, AddInductor, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_RESISTOR, AddResistor, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_VRM, AddVrm, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_CONNECTOR, AddConnector, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_PACKAGE, AddPackage, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_ADD_SPICE, AddSpice, OnUpdateAddModelOf)
ZOV_ON_COMMAND_UPDATE_BY(ID_VIEW_CURVES, ViewCurves, OnUpdateWindow)
ZOV_ON_COMMAND_UPDATE_BY(ID_OPEN_CURVE_FILES, OpenCurveFiles, OnUpdateWindow)
ZOV_ON_COMMAND_UPDATE_BY(ID_VENDOR_DECAP_LIBRARY, VendorDecapLibrary, OnUpdateWindow)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOAD_IBIS, LoadIbis, OnUpdateWindow)
ZOV_ON_COMMAND_UPDATE_BY(ID_CHECK_IBIS, CheckIbis, OnUpdateWindow)
ZOV_END_MESSAGE_MAP()

CZovMainFrm::CZovMainFrm(QSettings& layout, ISettingsStore& store, const FEnvironment& environment)
    : CUiFrame(nullptr, MainCommands())
    , m_layout(layout)
    , m_environment(environment)
    , m_output(new COutputPane(this))
    , m_session(store, *m_output, environment)
    , m_questions(*this)
    , m_treeModel(m_session)
    , m_progress(new QProgressBar(this))
    , m_cancel(new QPushButton(tr("Cancel"), this))
{
    setObjectName(QStringLiteral("ZovMainFrm"));
    RegisterManagerForms();
    RegisterAssignmentForms();
    RegisterGeneratorForms();
    setAcceptDrops(true);
    setDockNestingEnabled(true);
    resize(1280, 800);
    // The columns at the sides reach down to the window's edge.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    // Before there are widgets that would have to be painted anew.
    ShowTheme(m_layout.value(QLatin1String(kThemeKey), false).toBool());
    m_actions->SetIcons([](const QString& name) { return Images().Icon(name); });
    m_toolWindows = new CToolWindows(*this, *m_output);
    MakePanes();
    MakeMenus();
    MakeToolBars();
    m_replayBar = AddReplayToolBar(*this, m_environment, *m_output);
    m_progress->setMaximumWidth(220);
    m_cancel->setObjectName(QStringLiteral("CancelJob"));
    statusBar()->addPermanentWidget(m_progress);
    statusBar()->addPermanentWidget(m_cancel);
    m_progress->hide();
    m_cancel->hide();
    ConnectSession();
    FillWindows();
    new ui::CQtHelpTopicEventFilter(*this, [this](const QString& topic) { ShowHelp(topic); });
    ArrangePanes();
    MakeAutosave();
    RestoreLayout();
    LimitShortcuts();
    ShowLibraries();
    ShowTitle();
    StartIdleUpdates();
}

CZovMainFrm::~CZovMainFrm()
{
    OnDestroy();
}

void CZovMainFrm::MakePanes()
{
    m_tree = NewLibraryTree(m_treeModel, "LibraryTree", this);
    m_librariesPane =
        AddPane(tr("Opened Libraries"), "OpenedLibraries", m_tree, Qt::LeftDockWidgetArea);
    m_workflow = new CQZovWorkflow(*m_actions, this);
    addDockWidget(Qt::LeftDockWidgetArea, m_workflow);
    m_externals = new CExternalLibsPane(m_session, this);
    ui::CQtHelpTopicEventFilter::SetTopic(*m_externals, QStringLiteral("ExternalLibraries"));
    connect(m_externals, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        ShowExternalMenu(m_externals->viewport()->mapToGlobal(pos));
    });
    m_externalPane = AddPane(tr("External Libraries"), "ExternalLibrariesPane", m_externals,
                             Qt::LeftDockWidgetArea);
    tabifyDockWidget(m_workflow, m_externalPane);
    m_workflow->raise();
    connect(m_externals, &CExternalLibsPane::LibraryChosen, this,
            [this](const CZovLibrary& library) {
                m_tree->setCurrentIndex(m_treeModel.IndexOf(m_session.Tree().Find(library)));
            });
    m_outputPane = AddPane(tr("Output"), "OutputPane", m_output, Qt::BottomDockWidgetArea);

    m_models = new CModelListView(kProjectList, this);
    m_models->setObjectName(QStringLiteral("Models"));
    m_search = new CModelListView(kSearchList, this);
    m_search->setObjectName(QStringLiteral("SearchModels"));
    m_search->SetEmptyHint(tr("All libraries that are switched on are searched here. Open a "
                              "library, or import external ones into the tree at the left."));
    m_external = new CModelListView(kExternalList, this);
    m_external->setObjectName(QStringLiteral("ExternalModels"));
    m_external->SetEmptyHint(tr("No external library is open. Import one into the tree at the "
                                "left."));
    m_pages = new QStackedWidget(this);
    m_pages->setObjectName(QStringLiteral("Pages"));
    m_pages->addWidget(NewProjectPage());
    m_pages->addWidget(m_search);
    m_pages->addWidget(m_external);
    for (const int page : {kVeldaPage, kOptionsPage}) {
        m_pages->insertWidget(page, new QWidget(m_pages));
    }
    setCentralWidget(m_pages);
    MakeEditorPane();

    connect(m_tree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pos) { ShowTreeMenu(m_tree->viewport()->mapToGlobal(pos)); });
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CZovMainFrm::ShowSelectedLibrary);
    ui::CQtHelpTopicEventFilter::SetTopic(*m_tree, QStringLiteral("LibraryTree"));
    for (CModelListView* list : Lists()) {
        ui::CQtHelpTopicEventFilter::SetTopic(*list, QStringLiteral("ModelList"));
        list->Take(m_session.Settings());
        list->Table().setDragDropMode(QAbstractItemView::DragOnly);
        list->Table().setDefaultDropAction(Qt::CopyAction);
        list->Table().setDragDropOverwriteMode(false);
        connect(list, &CModelListView::ContextMenuAsked, this, &CZovMainFrm::ShowModelMenu);
        connect(list, &CModelListView::ColumnsChanged, this, [this, list] {
            SZovSettings settings = m_session.Settings();
            list->Store(settings);
            m_session.SetSettings(std::move(settings));
        });
    }
}

QWidget* CZovMainFrm::NewProjectPage()
{
    m_projectPage = new QMainWindow(m_pages);
    m_projectPage->setWindowFlags(Qt::Widget); // a page, though it can hold panes
    m_projectPage->setObjectName(QStringLiteral("ProjectPage"));
    m_modelsPane = new QDockWidget(tr("Models"), m_projectPage);
    m_modelsPane->setObjectName(QStringLiteral("ModelsPane"));
    m_modelsPane->setWidget(m_models);
    m_projectPage->addDockWidget(Qt::TopDockWidgetArea, m_modelsPane);
    auto* hint = new QLabel(tr("The pane 'Models' is closed. The menu View, Pane brings it back."),
                            m_projectPage);
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->hide();
    m_projectPage->setCentralWidget(hint);
    const auto showHint = [pane = m_modelsPane, hint] { // told to the last, when the frame is none
        hint->setVisible(pane->isHidden() || pane->isFloating());
    };
    connect(m_modelsPane, &QDockWidget::visibilityChanged, hint, showHint);
    connect(m_modelsPane, &QDockWidget::topLevelChanged, hint, showHint);
    return m_projectPage;
}

void CZovMainFrm::ArrangePanes()
{
    const int unit = fontMetrics().height();
    resizeDocks({m_librariesPane, m_editorPane}, {17 * unit, 21 * unit}, Qt::Horizontal);
    resizeDocks({m_librariesPane, m_workflow}, {12 * unit, 26 * unit}, Qt::Vertical);
    resizeDocks({m_outputPane}, {7 * unit}, Qt::Vertical);
}

void CZovMainFrm::MakeMenus()
{
    QMenu* library = menuBar()->addMenu(tr("&Library"));
    library->setObjectName(QStringLiteral("LibraryMenu"));
    m_actions->FillMenu(*library, {ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_OPEN_FOLDER});
    m_recentMenu = library->addMenu(tr("Open &Recent"));
    m_recentMenu->setObjectName(QStringLiteral("RecentMenu"));
    m_actions->FillMenu(*library, {ID_VELDA_LIBRARY, ui::kSeparator, ID_FILE_SAVE, ID_FILE_SAVE_AS,
                                   ui::kSeparator, ID_ZOV_FRM_EXIT});
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->setObjectName(QStringLiteral("EditMenu"));
    m_actions->FillMenu(*edit,
                        {ID_EDIT_UNDO, ID_EDIT_REDO, ui::kSeparator, ID_ADD_MODEL, ID_EDIT_MODELS,
                         ID_COPY_TO_LIBRARY, ID_DELETE_MODELS, ui::kSeparator, ID_MANAGE_COLUMNS});
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->setObjectName(QStringLiteral("ViewMenu"));
    QMenu* bars = view->addMenu(tr("&Toolbar"));
    m_actions->FillMenu(*bars, {ID_VIEW_TOOLBAR_MAIN, ID_ZOV_EVENT_REPLAY});
    QMenu* theme = view->addMenu(tr("&Theme"));
    m_actions->FillMenu(*theme, {ID_THEME_DARK, ID_THEME_LIGHT});
    QMenu* panes = view->addMenu(tr("Pane"));
    m_actions->FillMenu(*panes,
                        {ID_VIEW_PANE_LIBRARIES, ID_VIEW_PANE_MODELS, ID_VIEW_PANE_EDITOR,
                         ID_VIEW_PANE_EXTERNAL, ID_VIEW_PANE_WORKFLOW, ID_VIEW_PANE_OUTPUT});
    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    m_actions->FillMenu(*tools, {ID_TOOLS_OPTIONS, ui::kSeparator, ID_TOOLS_ASSIGN, ID_VIEW_CURVES,
                                 ID_OPEN_CURVE_FILES, ID_TOOLS_GENERATE, ID_VENDOR_DECAP_LIBRARY,
                                 ui::kSeparator, ID_TOOLS_IBIS_EDITOR, ID_LOAD_IBIS, ID_CHECK_IBIS,
                                 ID_TOOLS_COMPOSE_IBIS});
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    m_actions->FillMenu(*help, {ID_APP_HELP, ID_APP_ABOUT});
    ShowRecent();
}

void CZovMainFrm::LimitShortcuts()
{
    const auto limit = [this](unsigned command, std::initializer_list<QWidget*> widgets) {
        QAction* action = m_actions->Action(command);
        action->setShortcutContext(Qt::WidgetShortcut);
        for (QWidget* widget : widgets) {
            widget->addAction(action);
        }
    };
    limit(ID_DELETE_MODELS, {&m_models->Table(), &m_search->Table(), &m_external->Table()});
    limit(ID_RENAME_LIB_SET, {m_tree});
    limit(ID_REMOVE_LIB, {m_tree});
    limit(ID_LIB_MOVE_UP, {m_tree, m_externals});
    limit(ID_LIB_MOVE_DOWN, {m_tree, m_externals});
    limit(ID_FORGET_UNREACHABLE, {m_externals});
}

void CZovMainFrm::MakeToolBars()
{
    const auto newBar = [this](const QString& title, const char* name, Qt::ToolBarArea area) {
        auto* bar = new QToolBar(title, this);
        bar->setObjectName(QLatin1String(name));
        bar->setIconSize({20, 20});
        addToolBar(area, bar);
        return bar;
    };
    m_mainBar = newBar(tr("ZOV - Main"), "ZovMain", Qt::TopToolBarArea);
    m_actions->FillToolBar(*m_mainBar, {ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_SAVE, ui::kSeparator,
                                        ID_EDIT_UNDO, ID_EDIT_REDO, ui::kSeparator, ID_APP_HELP});
    QToolBar* pages = newBar(tr("ZOV Navigation"), "ZovNavigation", Qt::LeftToolBarArea);
    pages->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_actions->FillToolBar(*pages, {ID_NAV_PAGE_PROJECT, ID_NAV_PAGE_SEARCH, ID_NAV_PAGE_EXT_LIBS,
                                    ID_NAV_PAGE_VELDA, ID_NAV_PAGE_OPTIONS});
    QToolBar* assignment = newBar(tr("Model Assignment"), "ZovModelAssignment", Qt::TopToolBarArea);
    m_actions->FillToolBar(*assignment, {ID_TOOLS_ASSIGN, ID_VIEW_CURVES});
    QToolBar* creation = newBar(tr("Model Creation"), "ZovModelCreation", Qt::TopToolBarArea);
    m_actions->FillToolBar(*creation, {ID_ADD_MODEL, ID_COPY_TO_LIBRARY, ID_DELETE_MODELS,
                                       ui::kSeparator, ID_TOOLS_GENERATE, ID_LOAD_IBIS});
    QToolBar* external = newBar(tr("ZOV External Lib"), "ZovExternalLib", Qt::TopToolBarArea);
    m_actions->FillToolBar(*external, {ID_ADD_LIB, ID_IMPORT_LIB_FILE, ID_CREATE_NEW_LIB_SET,
                                       ID_LIB_MOVE_UP, ID_LIB_MOVE_DOWN, ID_REMOVE_LIB});
}

void CZovMainFrm::OnZovEventReplay()
{
    m_replayBar->setVisible(m_replayBar->isHidden());
}

void CZovMainFrm::OnUpdateZovEventReplay(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_replayBar->isHidden());
}

void CZovMainFrm::ConnectSession()
{
    connect(&m_session, &CZovSession::LibrariesChanged, this, &CZovMainFrm::ShowLibraries);
    connect(&m_session, &CZovSession::ModifiedChanged, this, &CZovMainFrm::ShowTitle);
    connect(&m_session, &CZovSession::LibraryAboutToChange, this, [this](CZovLibrary* library) {
        for (CModelListView* list : Lists()) {
            if (list->Model().Holds(*library)) {
                list->Model().BeginChange();
            }
        }
    });
    connect(&m_session, &CZovSession::LibraryChanged, this, [this](CZovLibrary* library) {
        for (CModelListView* list : Lists()) {
            if (list->Model().Holds(*library)) {
                list->Model().EndChange();
            }
        }
    });
    connect(&m_session, &CZovSession::LibraryClosed, this, [this](CZovLibrary* library) {
        for (CModelListView* list : Lists()) {
            list->Model().DropLibrary(*library);
        }
    });
    // Behind the end of the loading, which clears the status bar.
    connect(&m_session, &CZovSession::SomeUnreachable, this, &CZovMainFrm::ShowUnreachable,
            Qt::QueuedConnection);
    connect(&m_session, &CZovSession::SettingsChanged, this, [this] {
        for (CModelListView* list : Lists()) {
            list->Take(m_session.Settings());
        }
    });
    connect(&m_session, &CZovSession::Failed, this,
            [this](const QString& text) { ui::CPrompt::Tell(this, text, ui::EIcon::Error); });
    connect(&m_session, &CZovSession::InUse, this, &CZovMainFrm::ShowInUse);
    connect(&m_treeModel, &CLibraryTreeModel::ModelsDropped, this, &CZovMainFrm::OnModelsDropped);
    connect(&m_treeModel, &CLibraryTreeModel::FilesDropped, this,
            [this](const QStringList& paths, CLibraryTree::TNode collection) {
                std::vector<std::filesystem::path> files;
                for (const QString& path : paths) {
                    files.push_back(TextPath(path.toStdString()));
                }
                m_session.AddExternals(files, collection);
            });
    CBackgroundJob& job = m_session.Job();
    connect(&job, &CBackgroundJob::Progress, this, [this](const QString& what, int permille) {
        statusBar()->showMessage(what);
        m_progress->setRange(0, permille == 0 ? 0 : 1000);
        m_progress->setValue(permille);
        m_progress->show();
        m_cancel->show();
    });
    connect(&job, &CBackgroundJob::Finished, this, [this] {
        statusBar()->clearMessage();
        m_progress->hide();
        m_cancel->hide();
    });
    connect(m_cancel, &QPushButton::clicked, &m_session, &CZovSession::CancelLoading);
}

void CZovMainFrm::Open(const QString& path)
{
    const std::filesystem::path file = TextPath(path.toStdString());
    if (QFileInfo(path).isDir()) {
        m_session.OpenFolder(file, m_questions);
    } else {
        m_session.OpenProject(file, m_questions);
    }
    Remember(path);
}

void CZovMainFrm::OpenAtStart(const QStringList& paths)
{
    if (!paths.isEmpty()) {
        Open(paths.first());
    }
    std::vector<std::filesystem::path> externals;
    for (const QString& path : paths.mid(1)) {
        externals.push_back(TextPath(path.toStdString()));
    }
    if (!externals.empty()) {
        m_session.AddExternals(externals, CLibraryTree::kRoot);
    }
    m_session.OpenRemembered();
}

bool CZovMainFrm::IsIdle() const
{
    return !m_session.Job().IsRunning() && std::ranges::none_of(Lists(), [](CModelListView* list) {
        return list->Model().IsFilling();
    });
}

void CZovMainFrm::ShowLibraries()
{
    m_tree->expandAll();
    m_search->Model().SetLibraries(m_session.Set().ActiveLibraries());
    CModelListModel::TLibraries externals;
    for (const SLibraryEntry& entry : m_session.Set().Externals()) {
        externals.push_back(entry.library);
    }
    m_external->Model().SetLibraries(std::move(externals));
    ShowSelectedLibrary();
    ShowTitle();
}

void CZovMainFrm::ShowSelectedLibrary()
{
    const CLibraryTree::TNode node = SelectedNode();
    std::vector<CZovSession::TLibrary> libraries;
    if (node != CLibraryTree::kRoot) {
        libraries = m_session.Tree().LibrariesOf(node);
    } else if (const CZovSession::TLibrary project = m_session.ProjectLibrary()) {
        libraries = {project};
    }
    if (libraries != m_models->Model().Libraries()) {
        m_models->Model().SetLibraries(libraries);
    }
    m_models->SetEmptyHint(EmptyHint(!libraries.empty()));
    m_session.Edits().SetActive(SelectedLibrary());
}

QString CZovMainFrm::EmptyHint(bool hasLibrary) const
{
    if (hasLibrary) {
        return tr("This library is empty. Ins adds a model, Ctrl+G makes models of a part list.");
    }
    if (!m_session.Set().Entries().empty()) {
        return tr("No library is selected. Choose one in the tree at the left.");
    }
    return tr("No library is open. Open one with Ctrl+O, make a new one with Ctrl+N, or drop a "
              "library file here.");
}

void CZovMainFrm::SelectLibraryAt(const std::filesystem::path& path)
{
    for (const SLibraryEntry* entry : m_session.Set().Entries()) {
        std::error_code ignored;
        if (std::filesystem::equivalent(entry->path, path, ignored)) {
            m_tree->setCurrentIndex(m_treeModel.IndexOf(m_session.Tree().Find(*entry->library)));
        }
    }
}

void CZovMainFrm::ShowTitle()
{
    const SLibraryEntry* project = m_session.Set().Project();
    QString title = ui::CPrompt::ProgramName();
    if (project != nullptr) {
        title = QString::fromStdString(project->Listed()) + QStringLiteral("[*] - ") + title;
    }
    setWindowTitle(title);
    setWindowModified(!m_session.ModifiedLibraries().empty() && project != nullptr);
}

CLibraryTree::TNode CZovMainFrm::SelectedNode() const
{
    return m_treeModel.NodeAt(m_tree->currentIndex());
}

CLibraryTree::TNode CZovMainFrm::SelectedCollection() const
{
    const CLibraryTree::TNode node = SelectedNode();
    return m_session.Tree().IsCollection(node) ? node : m_session.Tree().ParentOf(node);
}

CZovSession::TLibrary CZovMainFrm::SelectedLibrary() const
{
    const CZovSession::TLibrary selected = m_session.Tree().LibraryOf(SelectedNode());
    return selected ? selected : m_session.ProjectLibrary();
}

void CZovMainFrm::MakePage(int page)
{
    QWidget* empty = m_pages->widget(page);
    if (page < kVeldaPage || empty->layout() != nullptr) {
        return;
    }
    auto* layout = new QVBoxLayout(empty);
    if (page == kOptionsPage) {
        layout->addWidget(new COptionsDlg(m_session, empty, COptionsDlg::EUse::Page));
        ui::CQtHelpTopicEventFilter::SetTopic(*empty, QStringLiteral("Options"));
        return;
    }
    auto* velda = new CVeldaMgr(m_session, empty);
    velda->setWindowFlags(Qt::Widget);
    ui::CQtHelpTopicEventFilter::SetTopic(*empty, QStringLiteral("Velda"));
    connect(velda, &CVeldaMgr::ImportAsked, this, &CZovMainFrm::OnImportLibFile);
    layout->addWidget(velda);
}

void CZovMainFrm::ShowPage(int page)
{
    MakePage(page);
    m_pages->setCurrentIndex(page);
    ShowInEditor();
    if (page == kSearchPage) {
        m_search->SearchField().setFocus();
        m_search->SearchField().selectAll();
    }
}

std::array<CModelListView*, 3> CZovMainFrm::Lists() const
{
    return {m_models, m_search, m_external};
}

CModelListView& CZovMainFrm::CurrentList() const
{
    const int page = m_pages->currentIndex();
    return *Lists()[static_cast<std::size_t>(page < kVeldaPage ? page : kProjectPage)];
}

} // namespace zov::app
