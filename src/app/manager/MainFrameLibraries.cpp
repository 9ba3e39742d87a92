// SPDX-License-Identifier: Apache-2.0
// The main frame's commands on the library tree and on the models of a list.
#include "app/BackgroundJob.h"
#include "app/RunBeside.h"
#include "app/editor/RecordEditor.h"
#include "app/manager/AddLibDlg.h"
#include "app/manager/CommandIds.h"
#include "app/manager/ExternalLibsPane.h"
#include "app/manager/MainFrame.h"
#include "base/File.h"
#include "base/Text.h"
#include "core/LibraryArchive.h"
#include "core/LibraryFiles.h"
#include "ui/Prompt.h"

#include <QDockWidget>
#include <QMenu>
#include <QStatusBar>
#include <QTreeView>

#include <algorithm>

namespace zov::app {
namespace {

const char* const kLibraryFilter = "ZOV Library (*.zov)";
const char* const kExportFilter = "Exchange file (*.zovx);;ZOV Library (*.zov)";
constexpr int kShownMissing = 10;
const char* const kImportFilter = "Libraries (*.zov *.zovx *.xml *.sp);;All files (*)";

std::vector<std::filesystem::path> LibrariesIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> paths;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
        const std::string extension = ExtensionOf(entry.path());
        if (EqualsNoCase(extension, ".zov") || EqualsNoCase(extension, ".zovx")) {
            paths.push_back(entry.path());
        }
    }
    std::ranges::sort(paths);
    return paths;
}

} // namespace

void CZovMainFrm::OnNewZovLibFile()
{
    const CLibraryTree::TNode collection = SelectedCollection();
    const QString path = ui::CPrompt::SaveFile(this, tr("New ZOV Library"), tr(kLibraryFilter),
                                               QStringLiteral("new_lib_file"));
    if (!path.isEmpty()) {
        Report(m_session.NewExternal(TextPath(path.toStdString()), collection));
        SelectLibraryAt(TextPath(path.toStdString()));
    }
}

void CZovMainFrm::OnCreateNewLibSet()
{
    const CLibraryTree::TNode added =
        m_session.AddCollection(SelectedCollection(), CLibraryTree::kNewCollection);
    const QModelIndex index = m_treeModel.IndexOf(added);
    m_tree->setCurrentIndex(index);
    m_tree->edit(index);
}

void CZovMainFrm::OnRenameLibSet()
{
    m_tree->edit(m_tree->currentIndex());
}

void CZovMainFrm::OnUpdateRenameLibSet(ui::CCmdUI& ui)
{
    const CLibraryTree::TNode node = SelectedNode();
    ui.Enable(node != CLibraryTree::kRoot && m_session.Tree().IsCollection(node));
}

void CZovMainFrm::OnArchiveLib()
{
    const CZovSession::TLibrary library = m_session.Tree().LibraryOf(SelectedNode());
    SArchivePlan plan;
    RunBeside([&] { plan = PlanArchive(*library); });
    if (!plan.missing.empty()) {
        QStringList names;
        for (const SMissingFile& missing : plan.missing) {
            if (names.size() == kShownMissing) {
                names += QStringLiteral("...");
                break;
            }
            names += tr("%1 (model %2)")
                         .arg(QString::fromStdString(missing.name),
                              QString::fromStdString(missing.record));
        }
        const QString text = tr("%n files that '%1' names are missing:", nullptr,
                                static_cast<int>(plan.missing.size()))
                                 .arg(QString::fromStdString(library->Name()));
        if (ui::CPrompt::Ask(this,
                             text + QLatin1Char('\n') + names.join(QLatin1Char('\n')) +
                                 tr("\n\nArchive the library without them?"),
                             ui::EButtons::YesNo, ui::EIcon::Warning) != ui::EAnswer::Yes) {
            return;
        }
    }
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Archive Library"), tr("Archive (*.zip);;Folder (*)"),
                              QString::fromStdString(library->Name()));
    if (!path.isEmpty()) {
        Archive(library, plan, TextPath(path.toStdString()));
    }
}

void CZovMainFrm::Archive(const CZovSession::TLibrary& library, const SArchivePlan& plan,
                          const std::filesystem::path& target)
{
    CResult<void> written;
    RunBeside(tr("Archiving %1").arg(QString::fromStdString(library->Name())),
              [&](CJobState& state) {
                  written = WriteArchive(*library, plan, target, [&state](double done) {
                      state.SetFraction(done);
                      return !state.Cancelled();
                  });
              });
    Report(written);
    if (written) {
        m_session.Log().Write("'" + library->Name() + "' was archived with " +
                              std::to_string(plan.files.size()) + " files to '" + PathText(target) +
                              "'.");
    }
}

void CZovMainFrm::OnExportLib()
{
    const CZovSession::TLibrary library = m_session.Tree().LibraryOf(SelectedNode());
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Export Library to File"), tr(kExportFilter),
                              QString::fromStdString(library->Name()));
    if (path.isEmpty()) {
        return;
    }
    Report(m_session.SaveCopy(*library, TextPath(path.toStdString())));
}

void CZovMainFrm::OnAddLib()
{
    CAddLibDlg(m_session, SelectedCollection(), this).DoModal();
}

void CZovMainFrm::OnExploreLib()
{
    const auto& library = m_session.Tree().LibraryOf(SelectedNode());
    if (library && !library->Path().empty()) {
        const std::filesystem::path folder = std::filesystem::absolute(library->Path());
        ui::CPrompt::ShowFolder(QString::fromStdString(PathText(folder.parent_path())));
    }
}

void CZovMainFrm::OnRemoveLib()
{
    if (!m_editor->MayLeave()) {
        return;
    }
    if (ui::CPrompt::Ask(this, tr("Remove the selected libraries or library collections?"),
                         ui::EButtons::YesNo) == ui::EAnswer::Yes) {
        m_session.RemoveNode(SelectedNode());
    }
}

void CZovMainFrm::OnUpdateOfLibrary(ui::CCmdUI& ui)
{
    const CLibraryTree::TNode node = SelectedNode();
    const bool isCollection = m_session.Tree().IsCollection(node);
    ui.Enable(node != CLibraryTree::kRoot && (!isCollection || ui.Command() == ID_REMOVE_LIB));
}

void CZovMainFrm::OnLibMoveUp()
{
    const CLibraryTree::TNode node = SelectedNode();
    m_session.MoveNode(node, -1);
    m_tree->setCurrentIndex(m_treeModel.IndexOf(node));
}

void CZovMainFrm::OnLibMoveDown()
{
    const CLibraryTree::TNode node = SelectedNode();
    m_session.MoveNode(node, 1);
    m_tree->setCurrentIndex(m_treeModel.IndexOf(node));
}

void CZovMainFrm::OnUpdateMoveLibBtn(ui::CCmdUI& ui)
{
    ui.Enable(m_session.CanMoveNode(SelectedNode(), ui.Command() == ID_LIB_MOVE_UP ? -1 : 1));
}

void CZovMainFrm::OnImportLibFile()
{
    const CLibraryTree::TNode collection = SelectedCollection();
    std::vector<std::filesystem::path> paths;
    for (const QString& path :
         ui::CPrompt::OpenFiles(this, tr("Import Library from File"), tr(kImportFilter))) {
        paths.push_back(TextPath(path.toStdString()));
    }
    if (!paths.empty()) {
        m_session.AddExternals(paths, collection);
    }
}

void CZovMainFrm::OnImportFromFolder()
{
    const QString folder = ui::CPrompt::Folder(this, tr("Import Collection from Folder"));
    if (folder.isEmpty()) {
        return;
    }
    const std::filesystem::path path = TextPath(folder.toStdString());
    const std::vector<std::filesystem::path> libraries = LibrariesIn(path);
    if (libraries.empty()) {
        ui::CPrompt::Tell(this, tr("The folder '%1' holds no library.").arg(folder));
        return;
    }
    m_session.AddExternals(
        libraries, m_session.AddCollection(SelectedCollection(), PathText(path.filename())));
}

void CZovMainFrm::OnImportPrefFile()
{
    const QString file = ui::CPrompt::OpenFile(this, tr("Import Collection from .zovp File"),
                                               tr("Preference file (*.zovp)"));
    if (file.isEmpty()) {
        return;
    }
    m_session.ImportPreferences(TextPath(file.toStdString()), SelectedCollection());
}

void CZovMainFrm::RefreshZovLib()
{
    const CZovSession::TLibrary library = m_session.Tree().LibraryOf(SelectedNode());
    if (m_session.IsModified(*library) &&
        ui::CPrompt::Ask(this,
                         tr("The changes of '%1' are lost when it is loaded anew. Go on?")
                             .arg(QString::fromStdString(library->Name())),
                         ui::EButtons::YesNo) != ui::EAnswer::Yes) {
        return;
    }
    m_session.Reload(library);
}

void CZovMainFrm::OnOpenUnreachable()
{
    m_session.OpenUnreachable(m_externals->CurrentUnreachable());
}

void CZovMainFrm::OnForgetUnreachable()
{
    m_session.ForgetUnreachable(m_externals->CurrentUnreachable());
}

void CZovMainFrm::OnUpdateUnreachable(ui::CCmdUI& ui)
{
    ui.Enable(!m_externals->CurrentUnreachable().empty());
}

void CZovMainFrm::OnExpandAll()
{
    m_tree->expandAll();
}

void CZovMainFrm::OnCollapseAll()
{
    m_tree->collapseAll();
}

void CZovMainFrm::OnUpdateExpandAll(ui::CCmdUI& ui)
{
    ui.Enable(m_treeModel.rowCount() > 0);
}

void CZovMainFrm::OnUpdateCollapseAll(ui::CCmdUI& ui)
{
    ui.Enable(m_treeModel.rowCount() > 0);
}

void CZovMainFrm::OnUpdateOfModels(ui::CCmdUI& ui)
{
    ui.Enable(CurrentList().Table().selectionModel()->hasSelection());
}

void CZovMainFrm::ShowTreeMenu(const QPoint& globalPos)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("LibraryTreeMenu"));
    m_actions->UpdateAll();
    m_actions->FillMenu(menu, {ID_NEW_ZOV_LIB_FILE, ID_CREATE_NEW_LIB_SET, ID_RENAME_LIB_SET,
                               ID_ARCHIVE_LIB, ID_EXPLORE_LIB, ID_EXPORT_LIB, ID_REMOVE_LIB,
                               ui::kSeparator, ID_LIB_MOVE_UP, ID_LIB_MOVE_DOWN});
    QMenu* moveTo = menu.addMenu(tr("Move To"));
    FillMoveTo(*moveTo);
    menu.addSeparator();
    m_actions->FillMenu(menu, {ID_IMPORT_LIB_FILE, ID_IMPORT_FROM_FOLDER, ID_IMPORT_PREF_FILE,
                               ID_REFRESH_ZOV_LIB, ui::kSeparator, ID_EXPAND_ALL, ID_COLLAPSE_ALL});
    menu.exec(globalPos);
}

void CZovMainFrm::ShowExternalMenu(const QPoint& globalPos)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("ExternalLibrariesMenu"));
    m_actions->UpdateAll();
    if (m_externals->CurrentUnreachable().empty()) {
        m_actions->FillMenu(menu,
                            {ID_ADD_LIB, ID_IMPORT_LIB_FILE, ui::kSeparator, ID_EXPLORE_LIB,
                             ID_REFRESH_ZOV_LIB, ID_LIB_MOVE_UP, ID_LIB_MOVE_DOWN, ID_REMOVE_LIB});
    } else {
        m_actions->FillMenu(menu, {ID_OPEN_UNREACHABLE, ID_FORGET_UNREACHABLE});
    }
    menu.exec(globalPos);
}

void CZovMainFrm::ShowUnreachable()
{
    if (!m_externalPane->isHidden()) {
        m_externalPane->raise();
    }
    statusBar()->showMessage(
        tr("External libraries that could not be opened: %1. See the pane 'Output'.")
            .arg(m_session.Unreachable().size()));
}

void CZovMainFrm::FillMoveTo(QMenu& menu)
{
    menu.setObjectName(QStringLiteral("MoveToMenu"));
    const CLibraryTree::TNode node = SelectedNode();
    const CLibraryTree& tree = m_session.Tree();
    const auto add = [&](CLibraryTree::TNode collection, const QString& text) {
        QAction* action = menu.addAction(text);
        action->setEnabled(tree.ParentOf(node) != collection);
        connect(action, &QAction::triggered, this,
                [this, node, collection] { m_session.MoveNodeTo(node, collection); });
    };
    menu.setEnabled(node != CLibraryTree::kRoot &&
                    tree.LibraryOf(node) != m_session.ProjectLibrary());
    if (!menu.isEnabled()) {
        return;
    }
    add(CLibraryTree::kRoot, tr("(no collection)"));
    for (const auto& [collection, name] : tree.Collections()) {
        add(collection, QString::fromStdString(name));
    }
}

void CZovMainFrm::ShowModelMenu(const QPoint& globalPos)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("ModelMenu"));
    m_actions->UpdateAll();
    m_actions->FillMenu(menu, {ID_ADD_MODEL, ID_EDIT_MODELS, ID_COPY_TO_LIBRARY, ID_DELETE_MODELS,
                               ui::kSeparator, ID_SHOW_IMPEDANCE, ID_OPEN_MODEL_FILE,
                               ui::kSeparator, ID_MANAGE_COLUMNS});
    menu.addAction(CurrentList().Table().findChild<QAction*>(QStringLiteral("CopyAsCsv")));
    menu.exec(globalPos);
}

void CZovMainFrm::OnAppHelp()
{
    ShowHelp({});
}

} // namespace zov::app
