// SPDX-License-Identifier: Apache-2.0
#include "base/Clock.h"

#include <ctime>
#include <fmt/format.h>

namespace zov {

SLocalTime LocalTimeNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
#ifdef _WIN32
    localtime_s(&parts, &now);
#else
    localtime_r(&now, &parts);
#endif
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::string FormatTime(const SLocalTime& time)
{
    return fmt::format("{:4}-{:02}-{:02} {:02}:{:02}:{:02}", time.year, time.month, time.day,
                       time.hour, time.minute, time.second);
}

} // namespace zov
