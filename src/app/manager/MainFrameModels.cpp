// SPDX-License-Identifier: Apache-2.0
// The main frame's commands that change the models of libraries.
#include "app/manager/MainFrame.h"

namespace zov::app {

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
