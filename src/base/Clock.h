// SPDX-License-Identifier: Apache-2.0
/// The time of day, as a value that callers pass, so that tests stand still.
#pragma once

#include <functional>
#include <string>

namespace zov {

struct SLocalTime
{
    int year = 1970;
    int month = 1; ///< 1 to 12
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

using FClock = std::function<SLocalTime()>;

/// The machine's local time.
[[nodiscard]] SLocalTime LocalTimeNow();

/// "%4d-%02d-%02d %02d:%02d:%02d"
[[nodiscard]] std::string FormatTime(const SLocalTime& time);

} // namespace zov
