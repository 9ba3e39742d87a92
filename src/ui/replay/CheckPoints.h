// SPDX-License-Identifier: Apache-2.0
/// The check points of one play: states compared with golden ones, watch points saved, snapshots.
#pragma once

#include "base/Clock.h"
#include "base/Sink.h"
#include "ui/replay/RecordedEvent.h"
#include "ui/replay/ReplayOptions.h"

#include <QString>

#include <filesystem>

class QWidget;

namespace zov::ui::replay {

class CCheckPoints
{
public:
    /// The log and the options outlive it.
    CCheckPoints(std::filesystem::path record, const SReplayOptions& options, CLogSink& log,
                 FClock clock);

    [[nodiscard]] static bool IsWatchPoint(const SRecordedEvent& event);
    /// Whether the widget is in the golden state now. Asked again and again while work beside the
    /// window goes on. False too when there is no golden file.
    [[nodiscard]] bool Holds(const SRecordedEvent& event, const QWidget& widget) const;
    /// Saves the result, compares, logs. Failed or not, this is check point Passed() + Failed().
    void Verify(const SRecordedEvent& event, QWidget& widget);
    void Watch(const QWidget& widget);
    /// What can't be looked at has failed.
    void Missed() { ++m_failed; }
    /// The window and the screen as they are, beside the results.
    void SaveSnapshots(QWidget& window, const QString& prefix) const;

    [[nodiscard]] int Passed() const { return m_passed; }
    [[nodiscard]] int Failed() const { return m_failed; }

private:
    [[nodiscard]] std::filesystem::path GoldenOf(const SRecordedEvent& event) const;
    [[nodiscard]] std::string StateNow(const QWidget& widget) const;
    [[nodiscard]] bool SamePicture(const std::filesystem::path& golden, QWidget& widget) const;

    std::filesystem::path m_record;
    const SReplayOptions& m_options;
    CLogSink& m_log;
    FClock m_clock;
    int m_passed = 0;
    int m_failed = 0;
    int m_watched = 0;
};

} // namespace zov::ui::replay
