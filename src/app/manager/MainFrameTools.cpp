// SPDX-License-Identifier: Apache-2.0
// The main frame's commands that open the other windows.
#include "app/assignment/AssignFrm.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/manager/MainFrame.h"
#include "ui/Prompt.h"

namespace zov::app {

void CZovMainFrm::OnToolsAssign()
{
    if (!m_assign) {
        auto frame = std::make_unique<CAssignFrm>(m_session, m_layout, m_environment);
        if (const CResult<void> made = frame->OnCreate(); !made) {
            ui::CPrompt::Tell(this, QString::fromStdString(made.Error().text), ui::EIcon::Error);
            return;
        }
        m_assign = std::move(frame);
        connect(m_assign.get(), &CAssignFrm::ZvMgrAsked, this, [this] {
            show();
            raise();
            activateWindow();
        });
    }
    m_assign->show();
    m_assign->raise();
    m_assign->activateWindow();
}

void CZovMainFrm::OnToolsGenerate()
{
    CDlgZovGenMain(&m_session, this).DoModal();
}

} // namespace zov::app
