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
#include "ui/UiFrame.h"

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
class CExternalLibsPane;
class CRecordEditor;
class CAssignFrm;
class CToolWindows;

class CZovMainFrm : public ui::CUiFrame
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param layout where the window's places, theme and recent files are kept; outlives the frame
    /// @param store  the user's settings; outlives the frame
    CZovMainFrm(QSettings& layout, ISettingsStore& store, const FEnvironment& environment);
    ~CZovMainFrm() override;

    [[nodiscard]] CZovSession& Session() { return m_session; }
    /// A library, a preference file or a folder, as project.
    void Open(const QString& path);
    /// What the command line names: the first as project, further ones as external libraries;
    /// behind them the external libraries that the settings remember.
    void OpenAtStart(const QStringList& paths);
    /// Nothing is being loaded, searched or sorted.
    [[nodiscard]] bool IsIdle() const;
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
    void OnUpdateFileNew(ui::CCmdUI& ui) { ui.Enable(); }
    void OnFileOpen();
    void OnUpdateFileOpen(ui::CCmdUI& ui) { ui.Enable(); }
    void OnFileOpenFolder();
    void OnUpdateFileOpenFolder(ui::CCmdUI& ui) { ui.Enable(); }
    void OnFileSave();
    void OnUpdateFileSave(ui::CCmdUI& ui);
    void OnFileSaveAs();
    void OnUpdateFileSaveAs(ui::CCmdUI& ui);
    void OnZovFrmExit();
    void OnUpdateZovFrmExit(ui::CCmdUI& ui) { ui.Enable(); }
    void OnEditUndo();
    void OnUpdateEditUndo(ui::CCmdUI& ui);
    void OnEditRedo();
    void OnUpdateEditRedo(ui::CCmdUI& ui);
    void OnViewToolbarMain();
    void OnUpdateViewToolbarMain(ui::CCmdUI& ui);
    void OnZovEventReplay();
    void OnUpdateZovEventReplay(ui::CCmdUI& ui);
    void OnViewPaneLibraries();
    void OnUpdateViewPaneLibraries(ui::CCmdUI& ui);
    void OnViewPaneEditor();
    void OnUpdateViewPaneEditor(ui::CCmdUI& ui);
    void OnViewPaneModels();
    void OnUpdateViewPaneModels(ui::CCmdUI& ui);
    void OnViewPaneExternal();
    void OnUpdateViewPaneExternal(ui::CCmdUI& ui);
    void OnViewPaneWorkflow();
    void OnUpdateViewPaneWorkflow(ui::CCmdUI& ui);
    void OnViewPaneOutput();
    void OnUpdateViewPaneOutput(ui::CCmdUI& ui);
    void OnThemeDark();
    void OnUpdateThemeDark(ui::CCmdUI& ui);
    void OnThemeLight();
    void OnUpdateThemeLight(ui::CCmdUI& ui);
    void OnNavPageProject();
    void OnUpdateNavPageProject(ui::CCmdUI& ui);
    void OnNavPageSearch();
    void OnUpdateNavPageSearch(ui::CCmdUI& ui);
    void OnNavPageExtLibs();
    void OnUpdateNavPageExtLibs(ui::CCmdUI& ui);
    void OnNavPageVelda();
    void OnUpdateNavPageVelda(ui::CCmdUI& ui);
    void OnNavPageOptions();
    void OnUpdateNavPageOptions(ui::CCmdUI& ui);
    void OnToolsOptions();
    void OnUpdateToolsOptions(ui::CCmdUI& ui) { ui.Enable(); }
    void OnVeldaLibrary();
    void OnUpdateVeldaLibrary(ui::CCmdUI& ui) { ui.Enable(); }
    void OnToolsAssign();
    void OnUpdateToolsAssign(ui::CCmdUI& ui) { ui.Enable(); }
    void OnToolsGenerate();
    void OnUpdateToolsGenerate(ui::CCmdUI& ui) { ui.Enable(); }
    void OnToolsIbisEditor();
    void OnUpdateToolsIbisEditor(ui::CCmdUI& ui) { ui.Enable(); }
    void OnToolsComposeIbis();
    void OnUpdateToolsComposeIbis(ui::CCmdUI& ui) { ui.Enable(); }
    void OnShowImpedance();
    void OnOpenModelFile();
    void OnAppHelp();
    void OnUpdateAppHelp(ui::CCmdUI& ui) { ui.Enable(); }
    void OnAppAbout();
    void OnUpdateAppAbout(ui::CCmdUI& ui) { ui.Enable(); }
    void OnNewZovLibFile();
    void OnUpdateNewZovLibFile(ui::CCmdUI& ui) { ui.Enable(); }
    void OnCreateNewLibSet();
    void OnUpdateCreateNewLibSet(ui::CCmdUI& ui) { ui.Enable(); }
    void OnRenameLibSet();
    void OnUpdateRenameLibSet(ui::CCmdUI& ui);
    void OnArchiveLib();
    void OnExploreLib();
    void OnExportLib();
    void OnAddLib();
    void OnUpdateAddLib(ui::CCmdUI& ui) { ui.Enable(); }
    void OnRemoveLib();
    void OnUpdateOfLibrary(ui::CCmdUI& ui);
    void OnLibMoveUp();
    void OnLibMoveDown();
    void OnUpdateMoveLibBtn(ui::CCmdUI& ui);
    void OnImportLibFile();
    void OnUpdateImportLibFile(ui::CCmdUI& ui) { ui.Enable(); }
    void OnImportFromFolder();
    void OnUpdateImportFromFolder(ui::CCmdUI& ui) { ui.Enable(); }
    void OnImportPrefFile();
    void OnUpdateImportPrefFile(ui::CCmdUI& ui) { ui.Enable(); }
    void RefreshZovLib();
    void OnOpenUnreachable();
    void OnForgetUnreachable();
    void OnUpdateUnreachable(ui::CCmdUI& ui);
    void OnExpandAll();
    void OnUpdateExpandAll(ui::CCmdUI& ui);
    void OnCollapseAll();
    void OnUpdateCollapseAll(ui::CCmdUI& ui);
    void OnAddModel();
    void OnUpdateAddModel(ui::CCmdUI& ui);
    void OnCopyToLibrary();
    void OnManageColumns();
    void OnUpdateManageColumns(ui::CCmdUI& ui);
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
    void OnOpenCurveFiles();
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
    /// Keys of models work in the lists, those of libraries in the tree.
    void LimitShortcuts();
    void MakePanes();
    void MakeEditorPane();
    /// The page "Project": the pane "Models", or where it is when it was closed.
    QWidget* NewProjectPage();
    void ShowInEditor();
    void MakeAutosave();
    void ConnectSession();
    void ShowPage(int page);
    void ShowLibraries();
    void ShowSelectedLibrary();
    /// What to do while the list of models has no row.
    [[nodiscard]] QString EmptyHint(bool hasLibrary) const;
    void SelectLibraryAt(const std::filesystem::path& path);
    void ShowTreeMenu(const QPoint& globalPos);
    void FillMoveTo(QMenu& menu);
    void ShowModelMenu(const QPoint& globalPos);
    void ShowExternalMenu(const QPoint& globalPos);
    /// Remembered libraries that could not be opened are told without a box.
    void ShowUnreachable();
    void ShowTitle();
    void ShowTheme(bool dark);
    void ChooseTheme(bool dark);
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
    CLibraryTreeModel m_treeModel;
    QTreeView* m_tree = nullptr;
    CModelListView* m_models = nullptr;
    CModelListView* m_search = nullptr;
    CModelListView* m_external = nullptr;
    QStackedWidget* m_pages = nullptr;
    QToolBar* m_mainBar = nullptr;
    ui::replay::CReplayBar* m_replayBar = nullptr;
    QDockWidget* m_librariesPane = nullptr;
    QMainWindow* m_projectPage = nullptr;
    QDockWidget* m_modelsPane = nullptr;
    QDockWidget* m_outputPane = nullptr;
    QDockWidget* m_externalPane = nullptr;
    CExternalLibsPane* m_externals = nullptr;
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
