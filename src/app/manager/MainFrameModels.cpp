// SPDX-License-Identifier: Apache-2.0
// The main frame's commands that change the models of libraries.
#include "app/Autosave.h"
#include "app/editor/AddModelDlg.h"
#include "app/editor/ColMgrDlg.h"
#include "app/editor/CopyToLibDlg.h"
#include "app/editor/EditorDlg.h"
#include "app/manager/MainFrame.h"
#include "ui/Prompt.h"

#include <QDockWidget>
#include <QStackedWidget>

namespace zov::app {

void CZovMainFrm::MakeEditorPane()
{
    m_editor = new CRecordEditor(m_session, this);
    m_editorPane = AddPane(tr("Editor"), "EditorPane", m_editor, Qt::RightDockWidgetArea);
    for (CModelListView* list : Lists()) {
        connect(list, &CModelListView::SelectionChanged, this, [this, list] {
            if (list == &CurrentList()) {
                ShowInEditor();
            }
        });
        connect(list, &CModelListView::Activated, this, &CZovMainFrm::OnEditModels);
    }
}

void CZovMainFrm::MakeAutosave()
{
    m_autosave = new CAutosave(m_session);
    m_autosave->setParent(this);
    connect(m_autosave, &CAutosave::Offered, this,
            [this](const CZovSession::TLibrary& library, const QString& text) {
                switch (ui::CPrompt::Ask(this, text, ui::EButtons::YesNoCancel)) {
                case ui::EAnswer::Yes:
                    m_autosave->Restore(library);
                    break;
                case ui::EAnswer::No:
                    m_autosave->Discard(library);
                    break;
                default: // asked again when it is opened the next time
                    break;
                }
            });
}

/// What is selected, unless the user wants to go on with what was typed before; then that is
/// selected again.
void CZovMainFrm::ShowInEditor()
{
    CModelListView& list = CurrentList();
    const std::vector<CModelListView::SSelected> selected = list.SelectedByLibrary();
    const bool isOne = selected.size() == 1;
    const CZovSession::TLibrary library = isOne ? selected.front().library : nullptr;
    if (library) {
        m_session.Edits().SetActive(library);
    }
    if (!m_editor->Show(library, isOne ? selected.front().records : CRecordEditor::TRecords())) {
        list.Select({m_editor->Records().begin(), m_editor->Records().end()});
    }
}

void CZovMainFrm::OnViewPaneEditor()
{
    m_editorPane->setVisible(m_editorPane->isHidden());
}

void CZovMainFrm::OnEditModels()
{
    const std::vector<CModelListView::SSelected> selected = CurrentList().SelectedByLibrary();
    if (selected.size() != 1) {
        ui::CPrompt::Tell(this, tr("Select models of one library to edit them together."));
        return;
    }
    if (m_editor->MayLeave()) {
        CUiEditorDlg(m_session, selected.front().library, selected.front().records, this).DoModal();
    }
}

void CZovMainFrm::OnAddModel()
{
    const std::vector<CModelListView::SSelected> selected = CurrentList().SelectedByLibrary();
    const bool isOne = selected.size() == 1 && selected.front().records.size() == 1;
    const CZovSession::TLibrary library = SelectedLibrary();
    if (!m_editor->MayLeave()) {
        return;
    }
    CAddModelDlg dialog(library, isOne ? selected.front().records.front() : nullptr, this);
    if (dialog.DoModal() != ui::EAnswer::Ok) {
        return;
    }
    CLibraryChange change(library);
    dialog.Fill(change);
    const std::vector<CZovRcdProps*> added = m_session.Edits().Apply(change, tr("Add Model"));
    ShowPage(kProjectPage);
    SelectWhenShown({added.begin(), added.end()});
}

void CZovMainFrm::OnUpdateAddModel(ui::CCmdUI& ui)
{
    ui.Enable(SelectedLibrary() != nullptr);
}

void CZovMainFrm::OnCopyToLibrary()
{
    if (!m_editor->MayLeave()) {
        return; // what was typed may belong to what is copied
    }
    const std::vector<CModelListView::SSelected> selected = CurrentList().SelectedByLibrary();
    std::size_t count = 0;
    for (const CModelListView::SSelected& of : selected) {
        count += of.records.size();
    }
    CCopyToLibDlg dialog(m_session, count,
                         selected.size() == 1 ? selected.front().library.get() : nullptr, this);
    if (dialog.DoModal() != ui::EAnswer::Ok) {
        return;
    }
    if (const CZovSession::TLibrary target = dialog.Target()) {
        const SCopied copied =
            CopyModels(m_session, selected, target, dialog.Existing(), dialog.IsMove());
        m_session.Log().Write("'" + target->Name() + "': " + std::to_string(copied.added) +
                              " models added, " + std::to_string(copied.replaced) + " replaced, " +
                              std::to_string(copied.kept) + " kept as they were");
    }
}

void CZovMainFrm::OnManageColumns()
{
    CModelListView& list = CurrentList();
    SZovSettings settings = m_session.Settings();
    list.Store(settings);
    CColMgrDlg dialog(settings, list.ListId(), this);
    if (dialog.DoModal() == ui::EAnswer::Ok) {
        dialog.Store(settings);
        m_session.SetSettings(std::move(settings));
    }
}

void CZovMainFrm::OnUpdateManageColumns(ui::CCmdUI& ui)
{
    ui.Enable(m_pages->currentIndex() < kVeldaPage);
}

void CZovMainFrm::OnDeleteModels()
{
    const std::vector<CModelListView::SSelected> doomed = CurrentList().SelectedByLibrary();
    std::size_t count = 0;
    for (const CModelListView::SSelected& of : doomed) {
        count += of.records.size();
    }
    if (ui::CPrompt::Ask(this,
                         count == 1 ? tr("Delete the selected model?")
                                    : tr("Delete %1 models?").arg(count),
                         ui::EButtons::YesNo) != ui::EAnswer::Yes) {
        return;
    }
    m_editor->Reset(); // what was typed goes with its records
    for (const auto& [library, records] : doomed) {
        CLibraryChange change(library);
        for (const CZovRcdProps* record : records) {
            change.Remove(*record);
        }
        m_session.Edits().Apply(change, records.size() == 1
                                            ? tr("Delete Model")
                                            : tr("Delete %1 Models").arg(records.size()));
    }
}

void CZovMainFrm::OnEditUndo()
{
    m_session.Edits().Undo();
}

void CZovMainFrm::OnUpdateEditUndo(ui::CCmdUI& ui)
{
    const CLibraryEdits& edits = m_session.Edits();
    ui.Enable(edits.CanUndo());
    ui.SetText(edits.CanUndo() ? tr("&Undo %1").arg(edits.UndoText()) : tr("&Undo"));
}

void CZovMainFrm::OnEditRedo()
{
    m_session.Edits().Redo();
}

void CZovMainFrm::OnUpdateEditRedo(ui::CCmdUI& ui)
{
    const CLibraryEdits& edits = m_session.Edits();
    ui.Enable(edits.CanRedo());
    ui.SetText(edits.CanRedo() ? tr("&Redo %1").arg(edits.RedoText()) : tr("&Redo"));
}

} // namespace zov::app
