// SPDX-License-Identifier: Apache-2.0
/// The program's entry as far as it needs no window.
///
///     int main(int argc, char** argv)
///     {
///         const zov::batch::CZvLibGenApp app({argv, argv + argc});
///         return app.IsBatch() ? app.RunBatch() : RunDesktop(argc, argv);
///     }
#pragma once

#include "base/Sink.h"
#include "batch/BatchOptions.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zov::batch {

class CZvLibGenApp
{
public:
    /// @param arguments  of the process, the program first; UTF-8
    explicit CZvLibGenApp(const std::vector<std::string>& arguments);

    [[nodiscard]] bool IsBatch() const { return m_options.batch; }
    [[nodiscard]] const SBatchOptions& Options() const { return m_options; }

    /// The batch run with its log, ZVLibGen.log, in `logFolder` (empty: the current folder).
    /// @param trouble  gets one line when the log cannot be written, the only thing that the log
    /// can't tell
    /// @return the process's exit status: 0 when the library was written, 1 otherwise
    [[nodiscard]] int RunBatch(const std::filesystem::path& logFolder, CLogSink& trouble) const;

private:
    SBatchOptions m_options;
};

} // namespace zov::batch
