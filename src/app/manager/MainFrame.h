// SPDX-License-Identifier: Apache-2.0
/// The library manager's main frame: libraries are opened, arranged, browsed, searched and edited
/// here.
#pragma once

#include "app/BoxQuestions.h"
#include "app/ModelListView.h"
#include "app/OutputPane.h"
#include "app/Session.h"
#include "app/manager/HelpWindow.h"
#include "app/manager/LibraryTreeModel.h"
#include "app/manager/ZovWorkflow.h"
#include "ui/CommandActions.h"
#include "ui/IdleUpdate.h"

#include <QMainWindow>
#include <QPointer>

#include <array>
#include <functional>
#include <map>
#include <memory>

namespace zov {
struct SArchivePlan;
}
class QDockWidget;
class QProgressBar;
class QPushButton;
class QSettings;
class QStackedWidget;
class QToolBar;
class QTreeView;

namespace zov::ui::replay {
class CReplayBar;
}

namespace zov::app {

class CAutosave;
class CRecordEditor;
class CAssignFrm;
class CToolWindows;

class CZovMainFrm : public QMainWindow, public ui::CCmdTargetBase
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param layout where the window's places, theme and recent files are kept; outlives the frame
    /// @param store  the user's settings; outlives the frame
    CZovMainFrm(QSettings& layout, ISettingsStore& store, const FEnvironment& environment);
    ~CZovMainFrm() override;

    [[nodiscard]] CZovSession& Session() { return m_session; }
    [[nodiscard]] ui::CCommandActions& Actions() { return *m_actions; }
    /// A library, a preference file or a folder, as project.
    void Open(const QString& path);
    /// What the command line names: the first as project, further ones as external libraries;
    /// behind them the external libraries that the settings remember.
    void OpenAtStart(const QStringList& paths);
    /// Nothing is being loaded, searched or sorted.
    [[nodiscard]] bool IsIdle() const;
    void OnIdleUpdateCmdUI();
    [[nodiscard]] ui::replay::CReplayBar& ReplayBar() { return *m_replayBar; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    /// False when the user wants to stay.
    bool OnClose();
    void OnDestroy();
    /// Escape ends a load. @return whether the key was of use
    bool OnKeyDown(int key);
    // Commands, in the order of their table.
    void OnFileNew();
    void OnFileOpen();
    void OnFileOpenFolder();
    void OnFileSave();
    void OnUpdateFileSave(ui::CCmdUI& ui);
    void OnFileSaveAs();
    void OnUpdateFileSaveAs(ui::CCmdUI& ui);
    void OnZovFrmExit();
    void OnEditUndo();
    void OnUpdateEditUndo(ui::CCmdUI& ui);
    void OnEditRedo();
    void OnUpdateEditRedo(ui::CCmdUI& ui);
    void OnViewToolbarMain();
    void OnUpdateViewToolbarMain(ui::CCmdUI& ui);
    void OnZovEventReplay();
    void OnUpdateZovEventReplay(ui::CCmdUI& ui);
    void OnViewPaneLibraries();
    void OnViewPaneEditor();
    void OnViewPaneModels();
    void OnUpdateViewPaneModels(ui::CCmdUI& ui);
    void OnViewPaneExternal();
    void OnViewPaneWorkflow();
    void OnViewPaneOutput();
    void OnUpdateViewPane(ui::CCmdUI& ui);
    void OnThemeDark();
    void OnThemeLight();
    void OnUpdateTheme(ui::CCmdUI& ui);
    void OnNavPageProject();
    void OnNavPageSearch();
    void OnNavPageExtLibs();
    void OnNavPageVelda();
    void OnNavPageOptions();
    void OnUpdateNavPage(ui::CCmdUI& ui);
    void OnToolsOptions();
    void OnVeldaLibrary();
    void OnToolsAssign();
    void OnToolsGenerate();
    void OnToolsIbisEditor();
    void OnToolsComposeIbis();
    void OnShowImpedance();
    void OnOpenModelFile();
    void OnAppHelp();
    void OnAppAbout();
    void OnNewZovLibFile();
    void OnCreateNewLibSet();
    void OnRenameLibSet();
    void OnUpdateRenameLibSet(ui::CCmdUI& ui);
    void OnArchiveLib();
    void OnExploreLib();
    void OnExportLib();
    void OnAddLib();
    void OnRemoveLib();
    void OnUpdateOfLibrary(ui::CCmdUI& ui);
    void OnLibMoveUp();
    void OnLibMoveDown();
    void OnUpdateMoveLibBtn(ui::CCmdUI& ui);
    void OnImportLibFile();
    void OnImportFromFolder();
    void OnImportPrefFile();
    void RefreshZovLib();
    void OnExpandAll();
    void OnCollapseAll();
    void OnAddModel();
    void OnUpdateAddModel(ui::CCmdUI& ui);
    void OnCopyToLibrary();
    void OnManageColumns();
    void OnEditModels();
    void OnDeleteModels();
    void OnUpdateOfModels(ui::CCmdUI& ui);
    void OnAddIc();
    void OnAddCapacitor();
    void OnAddInductor();
    void OnAddResistor();
    void OnAddVrm();
    void OnAddConnector();
    void OnAddPackage();
    void OnAddSpice();
    void OnUpdateAddModelOf(ui::CCmdUI& ui);
    void OnViewCurves();
    void OnVendorDecapLibrary();
    void OnLoadIbis();
    void OnCheckIbis();
    void OnUpdateWindow(ui::CCmdUI& ui);

    /// The windows that commands open.
    void FillWindows();
    void OpenWindow(unsigned command);
    void ShowPane(QDockWidget& pane);
    void OnModelsDropped(const CZovSession::TLibrary& target,
                         const std::unordered_set<const CZovRcdProps*>& records, bool move);
    /// The list is filled beside the window: when they are in it.
    void SelectWhenShown(const std::vector<const CZovRcdProps*>& records);
    void AddModelOf(ERecordType type);
    void Archive(const CZovSession::TLibrary& library, const SArchivePlan& plan,
                 const std::filesystem::path& target);
    void ShowHelp(const QString& topic);
    /// Their sizes, until the user gives them others.
    void ArrangePanes();
    void MakeMenus();
    void MakeToolBars();
    void MakePanes();
    QDockWidget* MakePane(const QString& title, const char* objectName, QWidget* content,
                          Qt::DockWidgetArea area);
    void MakeEditorPane();
    void ShowInEditor();
    void MakeAutosave();
    void ConnectSession();
    void ShowPage(int page);
    void ShowLibraries();
    void ShowSelectedLibrary();
    void ShowTreeMenu(const QPoint& globalPos);
    void FillMoveTo(QMenu& menu);
    void ShowModelMenu(const QPoint& globalPos);
    void ShowTitle();
    void ShowTheme(bool dark);
    void RestoreLayout();
    void StoreLayout();
    void Remember(const QString& path);
    void ShowRecent();
    void Report(const CResult<void>& result);
    bool MayClose();
    /// Saves, asking for a path where there is none; false when the user cancelled or it failed.
    bool SaveLibrary(const CZovSession::TLibrary& library, bool askPath);
    /// Asks what is to be done; nothing is overwritten unasked.
    bool SaveInSpiteOf(const CZovSession::SObstacle& obstacle,
                       const CZovSession::TLibrary& library);
    void ShowInUse(const CZovSession::TLibrary& library, const QString& text, bool mayPass);

    [[nodiscard]] CLibraryTree::TNode SelectedNode() const;
    /// The collection that new libraries go to: the selected one, that of the selected library, or
    /// the root.
    [[nodiscard]] CLibraryTree::TNode SelectedCollection() const;
    [[nodiscard]] CZovSession::TLibrary SelectedLibrary() const;
    [[nodiscard]] QDockWidget* PaneOf(unsigned command) const;
    [[nodiscard]] std::array<CModelListView*, 3> Lists() const;
    [[nodiscard]] CModelListView& CurrentList() const;

    enum EPage
    {
        kProjectPage,
        kSearchPage,
        kExternalPage,
        kVeldaPage,
        kOptionsPage
    };
    /// Pages without a list are made when they are shown first.
    void MakePage(int page);

    QSettings& m_layout;
    FEnvironment m_environment;
    COutputPane* m_output;
    CZovSession m_session;
    CBoxQuestions m_questions;
    ui::CCommandActions* m_actions;
    ui::CIdleUpdate* m_idle;
    CLibraryTreeModel m_treeModel;
    QTreeView* m_tree = nullptr;
    CModelListView* m_models = nullptr;
    CModelListView* m_search = nullptr;
    CModelListView* m_external = nullptr;
    QStackedWidget* m_pages = nullptr;
    QToolBar* m_mainBar = nullptr;
    ui::replay::CReplayBar* m_replayBar = nullptr;
    QDockWidget* m_librariesPane = nullptr;
    QDockWidget* m_outputPane = nullptr;
    QDockWidget* m_externalPane = nullptr;
    CQZovWorkflow* m_workflow = nullptr;
    QPointer<CHelpWindow> m_help;
    std::map<unsigned, std::function<void()>> m_windows;
    QMetaObject::Connection m_selecting;
    CAutosave* m_autosave = nullptr;
    CRecordEditor* m_editor = nullptr;
    QDockWidget* m_editorPane = nullptr;
    QMenu* m_recentMenu = nullptr;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    bool m_dark = false;
    CToolWindows* m_toolWindows = nullptr;
    std::unique_ptr<CAssignFrm> m_assign; ///< made when it is first asked for
};

} // namespace zov::app
