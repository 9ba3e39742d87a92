// SPDX-License-Identifier: Apache-2.0
#include "app/BackgroundJob.h"

#include <QMetaObject>

namespace zov::app {

CBackgroundJob::CBackgroundJob(QObject* parent)
    : QObject(parent)
{
    m_poll.setInterval(kShowAfterMs);
    connect(&m_poll, &QTimer::timeout, this,
            [this] { Q_EMIT Progress(m_what, m_state ? m_state->Permille() : 0); });
}

CBackgroundJob::~CBackgroundJob()
{
    Join();
    for (auto& [generation, thread] : m_left) {
        thread.join();
    }
}

void CBackgroundJob::Join()
{
    if (m_state) {
        m_state->Cancel();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
    m_state.reset();
    m_poll.stop();
    // A delivery that is already on its way belongs to the old generation and is dropped.
    ++m_generation;
}

void CBackgroundJob::Start(const QString& what, Work work)
{
    Join();
    m_what = what;
    m_state = std::make_shared<CJobState>();
    m_poll.start();
    m_thread = std::thread([this, state = m_state, work = std::move(work),
                            generation = m_generation] {
        Deliver deliver = work(*state);
        QMetaObject::invokeMethod(
            this, [this, generation, deliver = std::move(deliver)] { Done(generation, deliver); },
            Qt::QueuedConnection);
    });
}

void CBackgroundJob::Cancel()
{
    const bool wasRunning = IsRunning();
    Join();
    if (wasRunning) {
        Q_EMIT Finished();
    }
}

void CBackgroundJob::Abandon()
{
    if (!IsRunning()) {
        return;
    }
    m_state->Cancel();
    m_left.emplace(m_generation, std::move(m_thread));
    Join();
    Q_EMIT Finished();
}

void CBackgroundJob::JoinLeft(std::uint64_t generation)
{
    if (const auto left = m_left.find(generation); left != m_left.end()) {
        left->second.join();
        m_left.erase(left);
    }
}

void CBackgroundJob::RequestCancel()
{
    if (m_state) {
        m_state->Cancel();
    }
}

void CBackgroundJob::Done(std::uint64_t generation, const Deliver& deliver)
{
    if (generation != m_generation) {
        JoinLeft(generation);
        return;
    }
    m_thread.join();
    const bool cancelled = m_state->Cancelled();
    m_state.reset();
    m_poll.stop();
    if (!cancelled && deliver) {
        deliver();
    }
    // What was delivered may have started the next piece.
    if (!IsRunning()) {
        Q_EMIT Finished();
    }
}

} // namespace zov::app
