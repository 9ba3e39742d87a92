// SPDX-License-Identifier: Apache-2.0
// The main frame's commands on files, its layout between two runs, and its views.
#include "app/Autosave.h"
#include "app/Theme.h"
#include "app/assignment/AssignFrm.h"
#include "app/editor/RecordEditor.h"
#include "app/manager/AboutDlg.h"
#include "app/manager/CommandIds.h"
#include "app/manager/MainFrame.h"
#include "app/manager/OptionsDlg.h"
#include "app/manager/ToolWindows.h"
#include "app/manager/VeldaDlg.h"
#include "base/File.h"
#include "ui/Prompt.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QStackedWidget>
#include <QToolBar>
#include <QUrl>

namespace zov::app {
namespace {

constexpr int kRecentFiles = 8;
const char* const kGeometryKey = "MainFrame/Geometry";
const char* const kStateKey = "MainFrame/State";
const char* const kModelsKey = "MainFrame/ModelsState";
const char* const kThemeKey = "MainFrame/DarkTheme";
const char* const kRecentKey = "MainFrame/RecentFiles";

const char* const kLibraryFilter = "ZOV Library (*.zov)";
const char* const kOpenFilter = "Libraries and projects (*.zov *.zovx *.xml *.sp *.zovp);;"
                                "ZOV Library (*.zov);;All files (*)";

std::filesystem::path PathOf(const QString& text)
{
    return TextPath(text.toStdString());
}

} // namespace

void CZovMainFrm::Report(const CResult<void>& result)
{
    if (!result && result.Error().code != EErr::Cancelled) {
        m_session.Log().Write("[Error] " + result.Error().Full());
        ui::CPrompt::Tell(this, QString::fromStdString(result.Error().text), ui::EIcon::Error);
    }
}

void CZovMainFrm::OnFileNew()
{
    const QString path = ui::CPrompt::SaveFile(this, tr("New ZOV Library"), tr(kLibraryFilter),
                                               QStringLiteral("new_lib_file"));
    if (!path.isEmpty()) {
        Report(m_session.NewProject(PathOf(path), m_questions));
        SelectLibraryAt(PathOf(path));
        Remember(path);
    }
}

void CZovMainFrm::OnFileOpen()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Open Library"), tr(kOpenFilter));
    if (!path.isEmpty()) {
        Open(path);
    }
}

void CZovMainFrm::OnFileOpenFolder()
{
    const QString folder = ui::CPrompt::Folder(this, tr("Open Folder"));
    if (!folder.isEmpty()) {
        Open(folder);
    }
}

bool CZovMainFrm::SaveLibrary(const CZovSession::TLibrary& library, bool askPath)
{
    QString path;
    if (askPath || library->Path().empty()) {
        path = ui::CPrompt::SaveFile(this, tr("Save Library"), tr(kLibraryFilter),
                                     QString::fromStdString(PathText(library->Path())));
        if (path.isEmpty()) {
            return false;
        }
    }
    if (path.isEmpty()) {
        const CZovSession::SObstacle obstacle = m_session.ObstacleTo(library);
        if (obstacle.kind != CZovSession::EObstacle::None) {
            return SaveInSpiteOf(obstacle, library);
        }
    }
    const CResult<void> saved = m_session.Save(library, PathOf(path));
    Report(saved);
    if (saved && !path.isEmpty()) {
        Remember(path);
    }
    return saved.Ok();
}

bool CZovMainFrm::SaveInSpiteOf(const CZovSession::SObstacle& obstacle,
                                const CZovSession::TLibrary& library)
{
    const QString overwrite = tr("Overwrite");
    const QString saveAs = tr("Save As...");
    const QString reload = tr("Reload");
    const QString word =
        ui::CPrompt::Choose(this, obstacle.text, {saveAs, overwrite, reload}, ui::EIcon::Warning);
    if (word == saveAs) {
        return SaveLibrary(library, true);
    }
    if (word == overwrite) {
        m_session.PassLock(library);
        const CResult<void> saved = m_session.Save(library, {}, CZovSession::ESave::EvenSo);
        Report(saved);
        return saved.Ok();
    }
    if (word == reload) {
        m_session.Reload(library);
    }
    return false;
}

void CZovMainFrm::ShowInUse(const CZovSession::TLibrary& library, const QString& text, bool mayPass)
{
    const QString readOn = tr("You can look at it and change it; before it is saved you are asked "
                              "again.");
    if (!mayPass) {
        ui::CPrompt::Tell(this, text + QLatin1Char('\n') + readOn, ui::EIcon::Warning);
        return;
    }
    const QString question = tr("Has that work ended? Then take it over for writing.");
    if (ui::CPrompt::Ask(this, text + QLatin1Char('\n') + readOn + QLatin1Char('\n') + question,
                         ui::EButtons::YesNo) == ui::EAnswer::Yes) {
        m_session.PassLock(library);
    }
}

void CZovMainFrm::OnFileSave()
{
    if (!m_editor->MayLeave()) {
        return;
    }
    for (const CZovSession::TLibrary& library : m_session.ModifiedLibraries()) {
        if (!SaveLibrary(library, false)) {
            return;
        }
    }
}

void CZovMainFrm::OnUpdateFileSave(ui::CCmdUI& ui)
{
    ui.Enable(!m_session.ModifiedLibraries().empty() || m_editor->IsTouched());
}

void CZovMainFrm::OnFileSaveAs()
{
    SaveLibrary(SelectedLibrary(), true);
}

void CZovMainFrm::OnUpdateFileSaveAs(ui::CCmdUI& ui)
{
    ui.Enable(SelectedLibrary() != nullptr);
}

void CZovMainFrm::OnZovFrmExit()
{
    close();
}

bool CZovMainFrm::MayClose()
{
    if (!m_editor->MayLeave()) {
        return false;
    }
    const auto modified = m_session.ModifiedLibraries();
    if (modified.empty()) {
        return true;
    }
    const ui::EAnswer answer = ui::CPrompt::Ask(
        this,
        modified.size() == 1
            ? tr("'%1' is modified. Save it?").arg(QString::fromStdString(modified.front()->Name()))
            : tr("%1 libraries are modified. Save them?").arg(modified.size()),
        ui::EButtons::YesNoCancel);
    if (answer == ui::EAnswer::Yes) {
        OnFileSave();
        return m_session.ModifiedLibraries().empty();
    }
    return answer == ui::EAnswer::No;
}

void CZovMainFrm::closeEvent(QCloseEvent* event)
{
    event->setAccepted(OnClose());
}

bool CZovMainFrm::OnClose()
{
    if ((m_assign && m_assign->isVisible() && !m_assign->close()) || !m_toolWindows->MayClose() ||
        !MayClose()) {
        return false;
    }
    m_session.CancelLoading();
    m_session.StoreSettings();
    m_autosave->Close();
    StoreLayout();
    return true;
}

void CZovMainFrm::OnDestroy()
{
    // Its list reads the session, which goes before the frame's own widgets do.
    delete m_externalPane;
    // Other windows work on the session.
    delete m_toolWindows;
}

void CZovMainFrm::keyPressEvent(QKeyEvent* event)
{
    if (!OnKeyDown(event->key())) {
        QMainWindow::keyPressEvent(event);
    }
}

bool CZovMainFrm::OnKeyDown(int key)
{
    if (key == Qt::Key_Escape && m_session.Job().IsRunning()) {
        m_session.CancelLoading();
        return true;
    }
    return false;
}

void CZovMainFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void CZovMainFrm::dropEvent(QDropEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            Open(url.toLocalFile());
            return; // one project at a time
        }
    }
}

void CZovMainFrm::Remember(const QString& path)
{
    QStringList recent = m_layout.value(QLatin1String(kRecentKey)).toStringList();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    recent.removeAll(absolute);
    recent.prepend(absolute);
    while (recent.size() > kRecentFiles) {
        recent.removeLast();
    }
    m_layout.setValue(QLatin1String(kRecentKey), recent);
    m_layout.sync();
    ShowRecent();
}

void CZovMainFrm::ShowRecent()
{
    m_recentMenu->clear();
    const QStringList recent = m_layout.value(QLatin1String(kRecentKey)).toStringList();
    for (const QString& path : recent) {
        QAction* action = m_recentMenu->addAction(path);
        action->setEnabled(QFileInfo::exists(path));
        connect(action, &QAction::triggered, this, [this, path] { Open(path); });
    }
    m_recentMenu->setEnabled(!recent.isEmpty());
}

void CZovMainFrm::RestoreLayout()
{
    restoreGeometry(m_layout.value(QLatin1String(kGeometryKey)).toByteArray());
    restoreState(m_layout.value(QLatin1String(kStateKey)).toByteArray());
    m_projectPage->restoreState(m_layout.value(QLatin1String(kModelsKey)).toByteArray());
}

void CZovMainFrm::StoreLayout()
{
    m_layout.setValue(QLatin1String(kGeometryKey), saveGeometry());
    m_layout.setValue(QLatin1String(kStateKey), saveState());
    m_layout.setValue(QLatin1String(kModelsKey), m_projectPage->saveState());
}

void CZovMainFrm::ShowTheme(bool dark)
{
    m_dark = dark;
    ApplyTheme(*qApp, dark ? ETheme::Dark : ETheme::Light);
}

void CZovMainFrm::ChooseTheme(bool dark)
{
    ShowTheme(dark);
    // Now: the program may not come to an orderly end.
    m_layout.setValue(QLatin1String(kThemeKey), m_dark);
    m_layout.sync();
}

void CZovMainFrm::OnThemeDark()
{
    ChooseTheme(true);
}

void CZovMainFrm::OnThemeLight()
{
    ChooseTheme(false);
}

void CZovMainFrm::OnUpdateThemeDark(ui::CCmdUI& ui)
{
    ui.SetCheck(m_dark);
}

void CZovMainFrm::OnUpdateThemeLight(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_dark);
}

void CZovMainFrm::OnViewToolbarMain()
{
    m_mainBar->setVisible(m_mainBar->isHidden());
}

void CZovMainFrm::OnUpdateViewToolbarMain(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_mainBar->isHidden());
}

void CZovMainFrm::OnViewPaneLibraries()
{
    m_librariesPane->setVisible(m_librariesPane->isHidden());
}

void CZovMainFrm::OnViewPaneModels()
{
    const bool isShown = !m_modelsPane->isHidden() && m_pages->currentIndex() == kProjectPage;
    ShowPage(kProjectPage);
    m_modelsPane->setVisible(!isShown);
    m_models->Table().setFocus();
}

void CZovMainFrm::OnUpdateViewPaneModels(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_modelsPane->isHidden() && m_pages->currentIndex() == kProjectPage);
}

/// A pane behind another one in the same place comes to the front first.
void CZovMainFrm::ShowPane(QDockWidget& pane)
{
    const bool isBehind = pane.isVisible() && pane.visibleRegion().isEmpty();
    pane.setVisible(pane.isHidden() || isBehind);
    if (!pane.isHidden()) {
        pane.raise();
    }
}

void CZovMainFrm::OnViewPaneExternal()
{
    ShowPane(*m_externalPane);
}

void CZovMainFrm::OnViewPaneWorkflow()
{
    ShowPane(*m_workflow);
}

void CZovMainFrm::OnViewPaneOutput()
{
    m_outputPane->setVisible(m_outputPane->isHidden());
}

void CZovMainFrm::OnUpdateViewPaneLibraries(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_librariesPane->isHidden());
}

void CZovMainFrm::OnUpdateViewPaneEditor(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_editorPane->isHidden());
}

void CZovMainFrm::OnUpdateViewPaneExternal(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_externalPane->isHidden());
}

void CZovMainFrm::OnUpdateViewPaneWorkflow(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_workflow->isHidden());
}

void CZovMainFrm::OnUpdateViewPaneOutput(ui::CCmdUI& ui)
{
    ui.SetCheck(!m_outputPane->isHidden());
}

void CZovMainFrm::OnNavPageProject()
{
    ShowPage(kProjectPage);
}

void CZovMainFrm::OnNavPageSearch()
{
    ShowPage(kSearchPage);
}

void CZovMainFrm::OnNavPageExtLibs()
{
    ShowPage(kExternalPage);
}

void CZovMainFrm::OnNavPageVelda()
{
    ShowPage(kVeldaPage);
}

void CZovMainFrm::OnNavPageOptions()
{
    ShowPage(kOptionsPage);
}

void CZovMainFrm::OnUpdateNavPageProject(ui::CCmdUI& ui)
{
    ui.SetCheck(m_pages->currentIndex() == kProjectPage);
}

void CZovMainFrm::OnUpdateNavPageSearch(ui::CCmdUI& ui)
{
    ui.SetCheck(m_pages->currentIndex() == kSearchPage);
}

void CZovMainFrm::OnUpdateNavPageExtLibs(ui::CCmdUI& ui)
{
    ui.SetCheck(m_pages->currentIndex() == kExternalPage);
}

void CZovMainFrm::OnUpdateNavPageVelda(ui::CCmdUI& ui)
{
    ui.SetCheck(m_pages->currentIndex() == kVeldaPage);
}

void CZovMainFrm::OnUpdateNavPageOptions(ui::CCmdUI& ui)
{
    ui.SetCheck(m_pages->currentIndex() == kOptionsPage);
}

void CZovMainFrm::OnToolsOptions()
{
    COptionsDlg(m_session, this).DoModal();
}

void CZovMainFrm::OnVeldaLibrary()
{
    CVeldaDlg(m_session, this).DoModal();
}

void CZovMainFrm::OnAppAbout()
{
    CAboutDlg(this).DoModal();
}

} // namespace zov::app
