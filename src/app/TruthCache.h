// SPDX-License-Identifier: Apache-2.0
/// The electrical truth check for windows: computed beside them for the records that are looked
/// at, and kept until something changes.
#pragma once

#include "app/BackgroundJob.h"
#include "core/ZovLibrary.h"
#include "curve/RecordTruth.h"

#include <QColor>
#include <QTimer>

#include <filesystem>
#include <map>
#include <unordered_map>
#include <vector>

namespace zov::app {

class CTruthCache : public QObject
{
    Q_OBJECT

public:
    /// More are not kept: what is looked at again is computed again, files are remembered.
    static constexpr std::size_t kMaxKept = 20'000;
    /// Of what is asked for and not computed yet the oldest is forgotten.
    static constexpr std::size_t kMaxAsked = 1024;

    explicit CTruthCache(QObject* parent = nullptr);
    ~CTruthCache() override;

    /// Null when it is not known yet; it is then computed, what was asked for last first, and
    /// Updated tells.
    const curve::SRecordTruth* Find(const CZovLibrary& library, const CZovRcdProps& record);
    /// Those that are known, whatever of.
    [[nodiscard]] const std::unordered_map<const CZovRcdProps*, curve::SRecordTruth>& Known() const
    {
        return m_known;
    }
    /// Whether nothing that was asked for is still to come.
    [[nodiscard]] bool IsIdle() const { return m_asked.empty() && !m_job.IsRunning(); }
    void Forget(const CZovRcdProps& record);
    /// Before records go, or after any of their values changed.
    void Clear();
    /// Units of the texts.
    void SetUnits(const CDisplayUnits& units);

Q_SIGNALS:
    void Updated();

private:
    struct SAsked
    {
        const CZovRcdProps* record = nullptr;
        std::filesystem::path folder;
    };
    struct SCheckers;
    void Start();

    CDisplayUnits m_units;
    std::unordered_map<const CZovRcdProps*, curve::SRecordTruth> m_known;
    std::vector<SAsked> m_asked;
    std::unordered_map<const CZovRcdProps*, bool> m_isAsked;
    std::shared_ptr<SCheckers> m_checkers; ///< used by the job alone, one at a time
    QTimer m_start;
    std::uint64_t m_generation = 0; ///< results of an older one are of no use
    CBackgroundJob m_job;
};

/// The colour of a verdict that something is wrong.
[[nodiscard]] QColor TruthColor(curve::ETruth verdict);

} // namespace zov::app
