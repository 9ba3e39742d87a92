// SPDX-License-Identifier: Apache-2.0
/// Sets of libraries for commands.
#pragma once

#include "cli/Reporting.h"
#include "core/LibrarySet.h"

#include <string>

namespace zov::cli {

/// Shows what a set tells on standard error, but for the lines on how much was loaded.
class CSetLog final : public CLogSink
{
public:
    explicit CSetLog(const SStreams& streams)
        : m_shown(streams)
    {
    }
    void Write(std::string_view text) override;
    /// Some library was left out, or some of its records.
    [[nodiscard]] bool Skipped() const { return m_skipped; }

private:
    CStreamLog m_shown;
    bool m_skipped = false;
};

/// Opens a preference file, set configuration, library or project folder, by what it is.
CResult<void> OpenSet(CLibrarySet& set, const std::string& file, CLogSink& log);

} // namespace zov::cli
