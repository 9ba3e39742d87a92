// SPDX-License-Identifier: Apache-2.0
#include "ui/CommandActions.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QToolBar>

#include <cassert>

namespace zov::ui {

CCommandActions::CCommandActions(std::span<const SCommand> table, CCmdTargetBase& target,
                                 QWidget& window)
    : QObject(&window)
    , m_table(table)
    , m_target(target)
{
    for (const SCommand& command : m_table) {
        Add(command, window);
    }
}

void CCommandActions::Add(const SCommand& command, QWidget& window)
{
    auto* action = new QAction(QString::fromUtf8(command.text), this);
    action->setObjectName(QString::fromUtf8(command.name));
    action->setStatusTip(StatusText(command));
    action->setToolTip(ToolTip(command));
    if (*command.shortcut != '\0') {
        action->setShortcut(QKeySequence(QString::fromUtf8(command.shortcut)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    }
    window.addAction(action);
    connect(action, &QAction::triggered, this, [this, id = command.id] { Run(id); });
    const bool isNew = m_actions.emplace(command.id, action).second;
    assert(isNew);
    static_cast<void>(isNew);
}

void CCommandActions::Run(unsigned command)
{
    // Between the last update and the click something may have changed; a handler is only called
    // when its command is enabled now.
    CCmdUI ui(command);
    if (m_target.RouteUpdate(ui) && ui.IsEnabled()) {
        m_target.RouteCommand(command);
    }
    UpdateAll();
}

QAction* CCommandActions::Action(unsigned command) const
{
    const auto at = m_actions.find(command);
    return at == m_actions.end() ? nullptr : at->second;
}

void CCommandActions::FillMenu(QMenu& menu, std::initializer_list<unsigned> commands)
{
    for (const unsigned command : commands) {
        if (command == kSeparator) {
            menu.addSeparator();
        } else {
            assert(Action(command) != nullptr);
            menu.addAction(Action(command));
        }
    }
}

void CCommandActions::FillToolBar(QToolBar& bar, std::initializer_list<unsigned> commands)
{
    for (const unsigned command : commands) {
        if (command == kSeparator) {
            bar.addSeparator();
        } else {
            assert(Action(command) != nullptr);
            bar.addAction(Action(command));
        }
    }
}

void CCommandActions::Bind(QAbstractButton& button, unsigned command)
{
    QAction* action = Action(command);
    assert(action != nullptr);
    connect(&button, &QAbstractButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, &button, [&button, action] {
        button.setEnabled(action->isEnabled());
        button.setToolTip(action->toolTip());
    });
    button.setEnabled(action->isEnabled());
    button.setToolTip(action->toolTip());
}

void CCommandActions::SetIcons(const std::function<QIcon(const QString&)>& imageOf)
{
    for (const SCommand& command : m_table) {
        if (*command.icon != '\0') {
            Action(command.id)->setIcon(imageOf(QString::fromUtf8(command.icon)));
        }
    }
}

void CCommandActions::UpdateAll()
{
    for (const SCommand& command : m_table) {
        Update(command.id);
    }
}

void CCommandActions::Update(unsigned command)
{
    if (QAction* action = Action(command)) {
        CQtActionCmdUI ui(command, *action);
        m_target.RouteUpdate(ui);
    }
}

} // namespace zov::ui
