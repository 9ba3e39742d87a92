// SPDX-License-Identifier: Apache-2.0
/// The assignment frame: the view of a design's components with its menus, toolbars and panes.
///
///     auto frame = std::make_unique<CAssignFrm>(session, layout, environment);
///     if (CResult<void> made = frame->OnCreate(); !made) ... // the text says what failed
///     frame->show();
#pragma once

#include "app/OutputPane.h"
#include "app/assignment/AssignModelView.h"
#include "ui/CommandActions.h"
#include "ui/UiFrame.h"

#include <initializer_list>

class QComboBox;
class QDockWidget;
class QProgressBar;
class QPushButton;
class QTextBrowser;
class QToolBar;

namespace zov::ui::replay {
class CReplayBar;
}

namespace zov::app {

class CAssignFrm : public ui::CUiFrame
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// All outlive the frame.
    CAssignFrm(CZovSession& session, QSettings& layout, const FEnvironment& environment,
               QWidget* parent = nullptr);
    ~CAssignFrm() override;

    /// Makes toolbars, view and panes. Errors: "Failed to create toolbar", "Failed to create ZvMgr
    /// Assign toolbar", "Failed to create AssignView"; the frame is of no use then.
    CResult<void> OnCreate();

    [[nodiscard]] CAssignModelView& View() { return *m_view; }
    /// Shows a component list or a netlist in place of the design that is open.
    void OpenDesign(const QString& path);

Q_SIGNALS:
    /// The library manager is to be shown.
    void ZvMgrAsked();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    /// Null: it could not be made.
    virtual QToolBar* NewToolBar(const QString& title, const char* objectName);
    virtual CAssignModelView* NewView();

    [[nodiscard]] ui::CCmdTargetBase* FirstTarget() override { return m_view; }

private:
    bool OnClose();
    bool OnKeyDown(int key);
    void OnOpenDesign();
    void OnSaveLibrary();
    void OnUpdateSaveLibrary(ui::CCmdUI& ui);
    void OnFrameExit();
    void OnViewToolbarMain();
    void OnUpdateViewToolbarMain(ui::CCmdUI& ui);
    void OnZovEventReplay();
    void OnUpdateZovEventReplay(ui::CCmdUI& ui);
    void OnViewPaneOutput();
    void OnUpdateViewPaneOutput(ui::CCmdUI& ui);
    void OnViewPaneWhy();
    void OnUpdateViewPaneWhy(ui::CCmdUI& ui);
    void OnViewZvMgr();
    void OnAbout();
    void OnLegend();
    void ShowForm(const char* name);

    CResult<void> MakeToolBars();
    void MakeFindBar();
    void MakeMenus();
    void MakePanes();
    void MakeStatusBar();
    void ConnectView();
    void ShowViewMenu(const QPoint& globalPos);
    void ShowTitle();

    CZovSession& m_session;
    QSettings& m_layout;
    FEnvironment m_environment;
    CFunctionLog m_log;
    COutputPane* m_output;
    CAssignModelView* m_view = nullptr;
    ui::CCommandActions* m_viewActions = nullptr;
    QToolBar* m_mainBar = nullptr;
    ui::replay::CReplayBar* m_replayBar = nullptr;
    QToolBar* m_assignBar = nullptr;
    QToolBar* m_createBar = nullptr;
    QToolBar* m_findBar = nullptr;
    QComboBox* m_pattern = nullptr;
    QDockWidget* m_outputPane = nullptr;
    QDockWidget* m_whyPane = nullptr;
    QTextBrowser* m_why = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
};

} // namespace zov::app
