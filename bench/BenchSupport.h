// SPDX-License-Identifier: Apache-2.0
/// What the measuring programs share: the clock, the lines they print, the peak of memory.
#pragma once

#include <chrono>
#include <fmt/format.h>
#include <string_view>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace zov::bench {

class CStopwatch
{
public:
    [[nodiscard]] double Seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// `t LABEL SECONDS`: one timed phase.
inline void PrintTime(std::string_view label, double seconds)
{
    fmt::print("t {} {:.9f}\n", label, seconds);
}

/// `n NAME VALUE`: a count or checksum, which shows that the work was done.
template <class T>
void PrintNumber(std::string_view name, const T& value)
{
    fmt::print("n {} {}\n", name, value);
}

/// Most memory the process ever had resident, in KiB; maps of files count while they are mapped.
inline void PrintPeak()
{
#ifndef _WIN32
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    PrintNumber("peak_kib", usage.ru_maxrss);
#endif
}

} // namespace zov::bench
