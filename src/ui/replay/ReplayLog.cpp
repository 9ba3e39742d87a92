// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ReplayLog.h"

#include "base/Text.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/XmlText.h"

#include <fmt/format.h>

namespace zov::ui::replay {
namespace {

constexpr double kBytesPerGigabyte = 1024.0 * 1024.0 * 1024.0;

} // namespace

std::string LogTime(const SLocalTime& time)
{
    return fmt::format("{:04}/{:02}/{:02}-{:02}:{:02}:{:02}", time.year, time.month, time.day,
                       time.hour, time.minute, time.second);
}

std::string EnvironmentBlock(const SRecordHeader& header)
{
    const double memoryGb = static_cast<double>(header.physicalMemory) / kBytesPerGigabyte;
    return fmt::format("#Number of Processer:{}\n#Memory Size:{}GB\n#OS:{}\n#DPI:{},{}\n"
                       "#Resolution:{}x{}\n#Tool Version:{}\n#MainWindow Size:{}x{}\n",
                       header.cpuCount, FormatFixed(memoryGb, 6), OsName(header.osVersion),
                       header.dpi.x, header.dpi.y, header.resolution.x, header.resolution.y,
                       header.toolVersion, header.mainWindowSize.x, header.mainWindowSize.y);
}

std::string RecordingStarted(const SLocalTime& time, const SRecordHeader& header,
                             const std::filesystem::path& record)
{
    const std::string at = LogTime(time);
    return fmt::format("{}:Recording started. #Tool Version:{}\n", at, header.toolVersion) +
           fmt::format("{}:Recording path:{}.\n", at, PathText(record));
}

std::string RecordingStopped(const SLocalTime& time, const SRecordHeader& header)
{
    return fmt::format("{}:Recording stopped.\n", LogTime(time)) + EnvironmentBlock(header);
}

void AppendToAllLog(const std::filesystem::path& folder, std::string_view text)
{
    CAppendFile(folder / kAllLogName, CAppendFile::EOpen::Append).Append(text);
}

CPlayLog::CPlayLog(const std::filesystem::path& record, FClock clock, CLogSink& sink)
    : m_clock(std::move(clock))
    , m_sink(sink)
    , m_playLog(TwinOf(record, ".playlog"))
    , m_allLog(record.parent_path() / kAllLogName, CAppendFile::EOpen::Append)
{
    if (!m_playLog.Ok()) {
        m_sink.Write("Warning: The log '" + PathText(TwinOf(record, ".playlog")) +
                     "' cannot be written.");
    }
}

void CPlayLog::Write(std::string_view text)
{
    text.remove_suffix(text.ends_with('\n') ? 1 : 0);
    const std::string time = LogTime(m_clock());
    std::string lines;
    for (const std::string_view line : Split(text, '\n')) {
        fmt::format_to(std::back_inserter(lines), "[{}]--{}\n", time, line);
    }
    m_playLog.Append(lines);
    m_allLog.Append(lines);
    m_sink.Write(text);
}

} // namespace zov::ui::replay
