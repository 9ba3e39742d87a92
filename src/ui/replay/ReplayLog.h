// SPDX-License-Identifier: Apache-2.0
/// The logs of recording and playing, and the block that tells on which machine it was.
#pragma once

#include "base/Clock.h"
#include "base/File.h"
#include "base/Sink.h"
#include "ui/replay/RecordedEvent.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace zov::ui::replay {

constexpr const char* kAllLogName = "GUIReplay_All.log";

/// "%Y/%m/%d-%H:%M:%S"
[[nodiscard]] std::string LogTime(const SLocalTime& time);

/// "#Number of Processer:%d\n#Memory Size:%.6lfGB\n#OS:%s\n#DPI:%d,%d\n#Resolution:%dx%d\n#Tool
/// Version:%s\n#MainWindow Size:%dx%d\n"
[[nodiscard]] std::string EnvironmentBlock(const SRecordHeader& header);

/// What recording writes into "GUIReplay_All.log" of the folder of its record.
[[nodiscard]] std::string RecordingStarted(const SLocalTime& time, const SRecordHeader& header,
                                           const std::filesystem::path& record);
[[nodiscard]] std::string RecordingStopped(const SLocalTime& time, const SRecordHeader& header);
void AppendToAllLog(const std::filesystem::path& folder, std::string_view text);

/// The log of one play: every line, behind its time, goes into the `.playlog` beside the record,
/// into "GUIReplay_All.log", and without the time to the caller's sink.
class CPlayLog final : public CLogSink
{
public:
    /// Begins the `.playlog` anew. A file that can't be written is told to the sink once.
    CPlayLog(const std::filesystem::path& record, FClock clock, CLogSink& sink);

    /// One message, of one or more lines, with or without a line feed at its end.
    void Write(std::string_view text) override;

private:
    FClock m_clock;
    CLogSink& m_sink;
    CAppendFile m_playLog;
    CAppendFile m_allLog;
};

} // namespace zov::ui::replay
