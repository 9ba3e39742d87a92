// SPDX-License-Identifier: Apache-2.0
/// The checker: reads a file line by line, recognises keywords and hands lines to the families.
///
///     CChecker checker;
///     checker.SetOutputStream(&log);
///     const bool read = checker.CheckFile("buffer.ibs", EFileType::Ibs);
///     checker.PrintSummary();
///     if (checker.Counts().Passed()) ...
///
/// Every check begins with fresh state and zero counters: one after another gives the reports that
/// each gives alone.
#pragma once

#include "base/Sink.h"
#include "ibischk/AmiReader.h"
#include "ibischk/Check.h"
#include "ibischk/FileSource.h"
#include "ibischk/Report.h"
#include "ibischk/Types.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace zov::ibischk {

class CChecker
{
public:
    CChecker();
    ~CChecker();
    CChecker(const CChecker&) = delete;
    CChecker& operator=(const CChecker&) = delete;

    /// Where the text report goes; null: nowhere. Standard output when it was never set. The sink
    /// must outlive the checks.
    void SetOutputStream(CLogSink* stream);
    /// Style, quiet flags, findings as data.
    [[nodiscard]] CReport& Report() { return m_report; }

    /// Asked every few thousand lines of the checks to come, those of parameter trees excepted.
    void SetProgress(FCheckProgress progress) { m_progress = std::move(progress); }

    /// Reads and checks a file of the disk, reporting as it goes.
    /// @param name  as UTF-8; the type's extension is appended to a name without any point
    /// @return true when the file was read: it has the right extension, opens, and declares a
    ///         version that is known (types Ami and Parameters: its text is complete); false also
    ///         when it was stopped, what is reported by then is of no use
    bool CheckFile(std::string_view name, EFileType type);
    /// The same from another source.
    bool CheckFile(std::string_view name, EFileType type, CFileSource& files);

    /// After a check of type Ami or Parameters: the joined text; none when it wasn't read.
    [[nodiscard]] const std::optional<SAmiText>& AmiText() const { return m_ami; }

    [[nodiscard]] const SCounts& Counts() const { return m_report.Counts(); }
    /// The counters through pointers, each of which may be null.
    void GetCounts(std::uint32_t* bugs, std::uint32_t* errors, std::uint32_t* warnings) const;
    void PrintSummary() { m_report.PrintSummary(); }

private:
    std::unique_ptr<CLogSink> m_standardOutput;
    CReport m_report;
    FCheckProgress m_progress;
    std::optional<SAmiText> m_ami;
};

/// The one checker of the process, for callers that share settings and counters. One check at a
/// time.
[[nodiscard]] CChecker& ProcessChecker();

} // namespace zov::ibischk
