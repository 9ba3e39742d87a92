// SPDX-License-Identifier: Apache-2.0
/// How alive a window is: a timer that should come every few milliseconds, and the longest gap
/// between two of its ticks.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace zov::test {

class CStallMeter
{
public:
    static constexpr int kTickMs = 5;

    CStallMeter()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(kTickMs);
        Begin();
    }
    void Begin()
    {
        m_longest = 0;
        m_sinceTick.start();
        m_sinceBegin.start();
    }
    /// Prints what took place since Begin: time and longest stall, in milliseconds.
    /// @return the stall
    qint64 End(const char* what)
    {
        const qint64 took = m_sinceBegin.elapsed();
        Look(); // what stalled until now
        std::printf("%-46s %7lld ms, longest stall %6lld ms\n", what, static_cast<long long>(took),
                    static_cast<long long>(m_longest));
        std::fflush(stdout);
        return m_longest;
    }

private:
    void Look() { m_longest = std::max(m_longest, m_sinceTick.restart()); }

    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    QElapsedTimer m_sinceBegin;
    qint64 m_longest = 0;
};

/// The factor by which opt-in tests multiply their data: `ZOV_LARGE` in the environment, else 1.
inline int LargeFactor()
{
    return std::max(1, qEnvironmentVariableIntValue("ZOV_LARGE"));
}

} // namespace zov::test
