// SPDX-License-Identifier: Apache-2.0
/// Brings a window's commands up to date when the event loop has nothing else to do.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace zov::ui {

/// Calls back when the loop is about to sleep, at most every kIdleIntervalMs; what falls into the
/// pause is made up for at its end, so that the last change is never missed.
class CIdleUpdate : public QObject
{
    Q_OBJECT

public:
    static constexpr int kIdleIntervalMs = 100;

    /// @param onIdleUpdateCmdUI what the window does in idle time; not called after this object's
    ///        end
    CIdleUpdate(QObject* parent, std::function<void()> onIdleUpdateCmdUI);

private:
    void OnAboutToBlock();
    void CallBack();

    std::function<void()> m_onIdle;
    QElapsedTimer m_sinceLast;
    QTimer m_madeUp;
    bool m_fromMadeUp = false;
};

} // namespace zov::ui
