// SPDX-License-Identifier: Apache-2.0
/// Who runs, and whether a process still does.
#pragma once

#include <cstdint>
#include <string>

namespace zov {

/// A process, told apart from a later one that got the same number.
struct SProcess
{
    std::int64_t number = 0;
    std::int64_t started = 0; ///< in the platform's own count; 0 where it does not tell
    bool operator==(const SProcess&) const = default;
};

[[nodiscard]] SProcess ThisProcess();
/// False only when it is certain that it runs no more.
[[nodiscard]] bool MayRun(const SProcess& process);

/// The user's name at this machine, empty when it is not known.
[[nodiscard]] std::string UserName();

} // namespace zov
