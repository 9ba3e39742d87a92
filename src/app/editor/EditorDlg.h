// SPDX-License-Identifier: Apache-2.0
/// The record editor as a dialog.
#pragma once

#include "app/editor/RecordEditor.h"

namespace Ui {
class dlg_IDD_ZOV_DLG_EDITOR;
}

namespace zov::app {

class CUiEditorDlg : public ui::CUiDialog
{
    Q_OBJECT

public:
    CUiEditorDlg(CZovSession& session, const CZovSession::TLibrary& library,
                 const CRecordEditor::TRecords& records, QWidget* parent);
    ~CUiEditorDlg() override;

    [[nodiscard]] CRecordEditor& Editor() { return *m_editor; }

    /// Applies; stays open when a field has a fault.
    void accept() override;
    /// Asks when there are changes.
    void reject() override;

private:
    std::unique_ptr<Ui::dlg_IDD_ZOV_DLG_EDITOR> m_form;
    CRecordEditor* m_editor;
};

} // namespace zov::app
