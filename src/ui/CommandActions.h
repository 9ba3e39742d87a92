// SPDX-License-Identifier: Apache-2.0
/// One action per command of a window, shared by its menus and toolbars, run and kept up to date
/// through the window's command target.
///
///     CCommandActions actions(kLibCommands, *this, *this);
///     actions.FillMenu(*menu, {ID_FILE_NEW, ID_FILE_OPEN, kSeparator, ID_EXIT});
///     actions.UpdateAll();   // also from idle time, see IdleUpdate.h
#pragma once

#include "ui/CmdTarget.h"
#include "ui/Command.h"

#include <QIcon>
#include <QObject>

#include <functional>
#include <initializer_list>
#include <unordered_map>

class QAbstractButton;
class QAction;
class QMenu;
class QToolBar;
class QWidget;

namespace zov::ui {

/// Stands for a line between entries in FillMenu and FillToolBar; no command has this id.
constexpr unsigned kSeparator = 0;

class CCommandActions : public QObject
{
    Q_OBJECT

public:
    /// @param table  lives as long as this object
    /// @param target asked for every command of the table
    /// @param window owns the actions; their shortcuts work while it or a child has the focus
    CCommandActions(std::span<const SCommand> table, CCmdTargetBase& target, QWidget& window);

    /// The action of a command; null when the table has no such command.
    [[nodiscard]] QAction* Action(unsigned command) const;
    /// Adds entries in the given order; kSeparator adds a line. An id that the table lacks is a
    /// fault of the program.
    void FillMenu(QMenu& menu, std::initializer_list<unsigned> commands);
    void FillToolBar(QToolBar& bar, std::initializer_list<unsigned> commands);
    /// Binds a button to a command: a click runs it, updates reach the button.
    void Bind(QAbstractButton& button, unsigned command);
    /// Gives every action the image that the function returns for its icon name; again after a
    /// change of theme.
    void SetIcons(const std::function<QIcon(const QString&)>& imageOf);
    /// Asks the update handler of every command.
    void UpdateAll();
    void Update(unsigned command);

private:
    void Add(const SCommand& command, QWidget& window);
    void Run(unsigned command);

    std::span<const SCommand> m_table;
    CCmdTargetBase& m_target;
    std::unordered_map<unsigned, QAction*> m_actions;
};

} // namespace zov::ui
