// SPDX-License-Identifier: Apache-2.0
#include "ui/CmdUI.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>

namespace zov::ui {

void CQtCmdUI::Enable(bool on)
{
    CCmdUI::Enable(on);
    ShowEnabled(on);
}

void CQtCmdUI::SetCheck(bool on)
{
    CCmdUI::SetCheck(on);
    ShowChecked(on);
}

void CQtCmdUI::SetText(const QString& text)
{
    CCmdUI::SetText(text);
    ShowText(text);
}

CQtActionCmdUI::CQtActionCmdUI(unsigned command, QAction& action)
    : CQtCmdUI(command)
    , m_action(action)
{
}

void CQtActionCmdUI::ShowEnabled(bool on)
{
    m_action.setEnabled(on);
}

void CQtActionCmdUI::ShowChecked(bool on)
{
    m_action.setCheckable(true);
    m_action.setChecked(on);
}

void CQtActionCmdUI::ShowText(const QString& text)
{
    m_action.setText(text);
}

CQtWidgetCmdUI::CQtWidgetCmdUI(unsigned command, QWidget& widget)
    : CQtCmdUI(command)
    , m_widget(widget)
{
}

void CQtWidgetCmdUI::ShowEnabled(bool on)
{
    m_widget.setEnabled(on);
}

void CQtWidgetCmdUI::ShowChecked(bool on)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&m_widget)) {
        button->setCheckable(true);
        button->setChecked(on);
    }
}

void CQtWidgetCmdUI::ShowText(const QString& text)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&m_widget)) {
        button->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(&m_widget)) {
        label->setText(text);
    }
}

} // namespace zov::ui
