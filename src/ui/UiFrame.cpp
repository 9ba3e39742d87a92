// SPDX-License-Identifier: Apache-2.0
#include "ui/UiFrame.h"

#include "ui/CommandActions.h"
#include "ui/IdleUpdate.h"

#include <QDockWidget>

namespace zov::ui {

CUiFrame::CUiFrame(QWidget* parent, std::span<const SCommand> commands)
    : QMainWindow(parent, parent == nullptr ? Qt::WindowFlags() : Qt::Window)
    , m_actions(new CCommandActions(commands, *this, *this))
{
}

void CUiFrame::OnIdleUpdateCmdUI()
{
    m_actions->UpdateAll();
}

void CUiFrame::StartIdleUpdates()
{
    m_idle = new CIdleUpdate(this, [this] { OnIdleUpdateCmdUI(); });
    OnIdleUpdateCmdUI();
}

void CUiFrame::StopIdleUpdates()
{
    delete m_idle;
    m_idle = nullptr;
}

QDockWidget* CUiFrame::AddPane(const QString& title, const char* objectName, QWidget* content,
                               Qt::DockWidgetArea area)
{
    auto* pane = new QDockWidget(title, this);
    pane->setObjectName(QLatin1String(objectName));
    pane->setWidget(content);
    addDockWidget(area, pane);
    return pane;
}

} // namespace zov::ui
