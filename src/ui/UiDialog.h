// SPDX-License-Identifier: Apache-2.0
/// Dialogs: command targets over a generated form.
///
///     class CAboutDlg : public CqtDialogRes<Ui::dlg_IDD_ZOV_ABOUTBOX> { ... };
///     if (CAboutDlg(this).DoModal() == EAnswer::Ok) ...
#pragma once

#include "ui/CmdTarget.h"
#include "ui/Prompt.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <vector>

class QAbstractButton;
class QWidget;

namespace zov::ui {

/// A dialog with buttons bound to commands of its message map.
class CUiDialog : public QDialog, public CCmdTargetBase
{
    Q_OBJECT

public:
    explicit CUiDialog(QWidget* parent);

    /// Shows it, waits, and gives Ok or Cancel. While answers are scripted it is shown, handed to
    /// the next scripted driver and, if still open, cancelled.
    EAnswer DoModal();
    /// A click on the button runs the command through the dialog's map.
    void BindButton(QAbstractButton& button, unsigned command);
    /// Brings every bound button up to date.
    void OnIdleUpdateCmdUI();

private:
    struct SBound
    {
        QAbstractButton* button;
        unsigned command;
    };
    std::vector<SBound> m_bound;
};

/// Binds a dialog class to the class generated from its form. The form is named "dlg_IDD_...", its
/// controls "ui_IDC_...".
template <typename Form>
class CqtDialogRes : public CUiDialog
{
public:
    explicit CqtDialogRes(QWidget* parent)
        : CUiDialog(parent)
    {
        m_form.setupUi(this);
    }

protected:
    Form m_form;
};

using DialogFactory = std::function<std::unique_ptr<CUiDialog>(QWidget* parent)>;

/// The dialogs that can be made by the name of their form.
class CDialogForms
{
public:
    /// Adds one; a name twice is a fault of the program.
    static void Register(const QString& formName, DialogFactory make);
    /// Null for a name that no dialog has, and when the dialog can't be made for that parent.
    static std::unique_ptr<CUiDialog> Create(const QString& formName, QWidget* parent);
    static QStringList Names();
};

/// Keeps controls usable only while a check box or radio button is checked.
class CUiDlgItemChkMgr
{
public:
    /// @param check  outlives this object's dialog, as the controls do
    static void Enable(QAbstractButton& check, std::vector<QWidget*> whileChecked);
};

} // namespace zov::ui
