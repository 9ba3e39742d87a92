// SPDX-License-Identifier: Apache-2.0
/// The log of a batch run: "ZVLibGen.log" in the current folder, one line per message.
#pragma once

#include "base/File.h"
#include "base/Sink.h"

#include <filesystem>

namespace zov::batch {

constexpr std::string_view kBatchLogName = "ZVLibGen.log";

/// Begins the file anew. A message that does not end in a line feed gets one. Each message reaches
/// the file before Write returns, so that the log tells how far a broken run came.
class CBatchLog final : public CLogSink
{
public:
    explicit CBatchLog(const std::filesystem::path& path);

    /// False when the file cannot be written; the run goes on without a log.
    [[nodiscard]] bool Ok() const { return m_file.Ok(); }
    void Write(std::string_view text) override;

private:
    CAppendFile m_file;
    std::string m_line;
};

} // namespace zov::batch
