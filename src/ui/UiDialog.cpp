// SPDX-License-Identifier: Apache-2.0
#include "ui/UiDialog.h"

#include <QAbstractButton>

#include <cassert>
#include <map>

namespace zov::ui {
namespace {

std::map<QString, DialogFactory>& Forms()
{
    static std::map<QString, DialogFactory> forms;
    return forms;
}

} // namespace

CUiDialog::CUiDialog(QWidget* parent)
    : QDialog(parent)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

EAnswer CUiDialog::DoModal()
{
    OnIdleUpdateCmdUI();
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        show();
        scripted->DriveDialog(*this);
        if (isVisible()) {
            reject();
        }
    } else {
        exec();
    }
    return result() == Accepted ? EAnswer::Ok : EAnswer::Cancel;
}

void CUiDialog::BindButton(QAbstractButton& button, unsigned command)
{
    m_bound.push_back({&button, command});
    connect(&button, &QAbstractButton::clicked, this, [this, command] {
        RouteCommand(command);
        OnIdleUpdateCmdUI();
    });
}

void CUiDialog::OnIdleUpdateCmdUI()
{
    for (const SBound& bound : m_bound) {
        CQtWidgetCmdUI ui(bound.command, *bound.button);
        RouteUpdate(ui);
    }
}

void CDialogForms::Register(const QString& formName, DialogFactory make)
{
    const bool isNew = Forms().emplace(formName, std::move(make)).second;
    assert(isNew);
    static_cast<void>(isNew);
}

std::unique_ptr<CUiDialog> CDialogForms::Create(const QString& formName, QWidget* parent)
{
    const auto at = Forms().find(formName);
    if (at == Forms().end()) {
        return nullptr;
    }
    std::unique_ptr<CUiDialog> dialog = at->second(parent);
    if (dialog) {
        dialog->setObjectName(formName);
    }
    return dialog;
}

QStringList CDialogForms::Names()
{
    QStringList names;
    for (const auto& form : Forms()) {
        names += form.first;
    }
    return names;
}

void CUiDlgItemChkMgr::Enable(QAbstractButton& check, std::vector<QWidget*> whileChecked)
{
    const auto show = [controls = std::move(whileChecked)](bool on) {
        for (QWidget* control : controls) {
            control->setEnabled(on);
        }
    };
    show(check.isChecked());
    QObject::connect(&check, &QAbstractButton::toggled, &check, show);
}

} // namespace zov::ui
