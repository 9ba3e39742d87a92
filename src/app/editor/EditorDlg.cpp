// SPDX-License-Identifier: Apache-2.0
#include "app/editor/EditorDlg.h"

#include "ui_dlg_IDD_ZOV_DLG_EDITOR.h"

namespace zov::app {

CUiEditorDlg::CUiEditorDlg(CZovSession& session, const CZovSession::TLibrary& library,
                           const CRecordEditor::TRecords& records, QWidget* parent)
    : CUiDialog(parent)
    , m_form(std::make_unique<Ui::dlg_IDD_ZOV_DLG_EDITOR>())
    , m_editor(new CRecordEditor(session, this))
{
    m_form->setupUi(this);
    m_form->ui_IDC_EDITOR_LAYOUT->addWidget(m_editor);
    m_editor->HideButtons();
    connect(m_form->ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &CUiEditorDlg::accept);
    connect(m_form->ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &CUiEditorDlg::reject);
    m_editor->Show(library, records);
    resize(fontMetrics().averageCharWidth() * 104, fontMetrics().height() * 34);
}

CUiEditorDlg::~CUiEditorDlg() = default;

void CUiEditorDlg::accept()
{
    if (m_editor->Apply()) {
        CUiDialog::accept();
    }
}

void CUiEditorDlg::reject()
{
    if (m_editor->MayLeave()) {
        CUiDialog::reject();
    }
}

} // namespace zov::app
