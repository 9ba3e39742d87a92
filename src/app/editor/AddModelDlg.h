// SPDX-License-Identifier: Apache-2.0
/// A new model in a library: its type and name, or a copy of the selected one.
#pragma once

#include "app/LibraryEdits.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_CREATEM.h"

namespace zov::app {

class CAddModelDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_CREATEM>
{
    Q_OBJECT

public:
    /// @param library that the model goes to; not null
    /// @param like    the selected model, which may be copied; null for none
    CAddModelDlg(CLibraryChange::TLibrary library, const CZovRcdProps* like, QWidget* parent);

    /// Puts the model into a change of the library.
    void Fill(CLibraryChange& change) const;

private:
    [[nodiscard]] ERecordType Type() const;
    [[nodiscard]] QString Name() const { return m_form.ui_IDC_NAME->text().trimmed(); }
    void CopyToggled();
    void ShowState();

    CLibraryChange::TLibrary m_library;
    const CZovRcdProps* m_like;
};

/// `name`, or with the first number behind it that no model of the type in the library has:
/// "C1_2", "C1_3".
std::string FreeName(const CZovLibrary& library, ERecordType type, const std::string& name);

} // namespace zov::app
