// SPDX-License-Identifier: Apache-2.0
#include "ui/IdleUpdate.h"

#include <QAbstractEventDispatcher>

namespace zov::ui {

CIdleUpdate::CIdleUpdate(QObject* parent, std::function<void()> onIdleUpdateCmdUI)
    : QObject(parent)
    , m_onIdle(std::move(onIdleUpdateCmdUI))
{
    m_madeUp.setSingleShot(true);
    connect(&m_madeUp, &QTimer::timeout, this, [this] {
        // The timer's own event must not count as something that happened, or it would be armed
        // for ever.
        m_fromMadeUp = true;
        CallBack();
    });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &CIdleUpdate::OnAboutToBlock);
}

void CIdleUpdate::OnAboutToBlock()
{
    if (m_fromMadeUp) {
        m_fromMadeUp = false;
        return;
    }
    if (m_madeUp.isActive()) {
        return;
    }
    if (!m_sinceLast.isValid() || m_sinceLast.elapsed() >= kIdleIntervalMs) {
        CallBack();
    } else {
        m_madeUp.start(kIdleIntervalMs - static_cast<int>(m_sinceLast.elapsed()));
    }
}

void CIdleUpdate::CallBack()
{
    m_sinceLast.start();
    m_onIdle();
}

} // namespace zov::ui
