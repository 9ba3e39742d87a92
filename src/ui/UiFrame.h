// SPDX-License-Identifier: Apache-2.0
/// The base of top-level windows: a command target with a table of commands, whose entries are kept
/// up to date in idle time, and with panes.
#pragma once

#include "ui/CmdTarget.h"
#include "ui/Command.h"

#include <QMainWindow>

#include <span>

class QDockWidget;

namespace zov::ui {

class CCommandActions;
class CIdleUpdate;

class CUiFrame : public QMainWindow, public CCmdTargetBase
{
    Q_OBJECT

public:
    /// @param commands of the frame, each with an action; lives as long as the frame
    CUiFrame(QWidget* parent, std::span<const SCommand> commands);

    [[nodiscard]] CCommandActions& Actions() { return *m_actions; }
    /// Asks the update handlers of all commands.
    void OnIdleUpdateCmdUI();

protected:
    /// From now on entries are brought up to date in idle time. The last step of a frame's making.
    void StartIdleUpdates();
    /// No update handler is asked any more; before what they look at goes.
    void StopIdleUpdates();
    /// A dock pane around `content`, named for the layout that is kept between two runs.
    QDockWidget* AddPane(const QString& title, const char* objectName, QWidget* content,
                         Qt::DockWidgetArea area);

    CCommandActions* m_actions;

private:
    CIdleUpdate* m_idle = nullptr;
};

} // namespace zov::ui
