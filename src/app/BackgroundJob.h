// SPDX-License-Identifier: Apache-2.0
/// Work beside the window: loading, saving, searching, sorting. The window stays alive, sees how
/// far it is and can stop it.
///
///     m_job.Start(tr("Loading caps.zov"), [path](CJobState& state) -> CBackgroundJob::Deliver {
///         auto library = std::make_shared<...>(Load(path, state));
///         return [this, library] { Show(library); };   // runs in the window's thread
///     });
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <thread>

namespace zov::app {

/// What the work and the window share.
class CJobState
{
public:
    CJobState() { ++s_alive; }
    CJobState(const CJobState&) = delete;
    CJobState& operator=(const CJobState&) = delete;
    ~CJobState() { --s_alive; }
    /// Whether any work of the program still runs.
    [[nodiscard]] static bool AnyAlive() { return s_alive.load() > 0; }

    /// The work asks this every few thousand items and ends soon when it is true.
    [[nodiscard]] bool Cancelled() const { return m_cancelled.load(std::memory_order_relaxed); }
    void Cancel() { m_cancelled.store(true, std::memory_order_relaxed); }
    /// 0 to 1.
    void SetFraction(double done)
    {
        m_permille.store(static_cast<int>(done * 1000.0), std::memory_order_relaxed);
    }
    [[nodiscard]] int Permille() const { return m_permille.load(std::memory_order_relaxed); }

private:
    static inline std::atomic<int> s_alive{0};
    std::atomic<bool> m_cancelled{false};
    std::atomic<int> m_permille{0};
};

/// One piece of work at a time; a new one takes the place of the one that runs, whose result is
/// then never delivered. Destroying the job cancels and waits.
class CBackgroundJob : public QObject
{
    Q_OBJECT

public:
    /// What is done with the result, in the thread of this object. Not called after a cancel.
    using Deliver = std::function<void()>;
    using Work = std::function<Deliver(CJobState&)>;

    explicit CBackgroundJob(QObject* parent = nullptr);
    ~CBackgroundJob() override;

    void Start(const QString& what, Work work);
    /// Ends the work and waits for it, which takes no longer than the work's own step.
    void Cancel();
    /// The same without waiting, for work that holds nothing of anybody else: it ends on its own,
    /// at the latest with this object.
    void Abandon();
    /// Asks the work to end without waiting for it; Finished follows, a delivery doesn't. For a
    /// Cancel button, while nothing the work reads is about to change.
    void RequestCancel();
    [[nodiscard]] bool IsRunning() const { return m_state != nullptr; }
    [[nodiscard]] const QString& What() const { return m_what; }

Q_SIGNALS:
    /// Work takes longer than kShowAfterMs: show its progress, in steps of a thousandth.
    void Progress(const QString& what, int permille);
    /// Nothing runs any more; after the delivery of the last work, or a cancel.
    void Finished();

private:
    void Done(std::uint64_t generation, const Deliver& deliver);
    void Join();
    void JoinLeft(std::uint64_t generation);

    static constexpr int kShowAfterMs = 200;

    std::thread m_thread;
    std::map<std::uint64_t, std::thread> m_left; ///< abandoned, by generation
    std::shared_ptr<CJobState> m_state;
    QString m_what;
    QTimer m_poll;
    std::uint64_t m_generation = 0;
};

} // namespace zov::app
