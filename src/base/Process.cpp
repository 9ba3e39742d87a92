// SPDX-License-Identifier: Apache-2.0
#include "base/Process.h"

#include "base/Number.h"
#include "base/Text.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <csignal>
#include <pwd.h>
#include <unistd.h>
#endif

namespace zov {

#ifdef _WIN32

namespace {

std::int64_t StartOf(HANDLE process)
{
    FILETIME created{};
    FILETIME unused[3];
    return GetProcessTimes(process, &created, &unused[0], &unused[1], &unused[2])
               ? static_cast<std::int64_t>(created.dwHighDateTime) << 32 | created.dwLowDateTime
               : 0;
}

} // namespace

SProcess ThisProcess()
{
    return {_getpid(), StartOf(GetCurrentProcess())};
}

bool MayRun(const SProcess& process)
{
    HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE,
                                static_cast<DWORD>(process.number));
    if (handle == nullptr) {
        return GetLastError() != ERROR_INVALID_PARAMETER;
    }
    const bool runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    const std::int64_t started = StartOf(handle);
    CloseHandle(handle);
    return runs && (process.started == 0 || started == 0 || started == process.started);
}

std::string UserName()
{
    const char* name = std::getenv("USERNAME");
    return name == nullptr ? "" : name;
}

#else

namespace {

/// Field 22 of the process's line: ticks since the machine's start. The program's name, field 2, is
/// in parentheses and may hold any character.
std::int64_t StartOf(std::int64_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat", std::ios::binary);
    const std::string line{std::istreambuf_iterator<char>(file), {}};
    const std::size_t name = line.rfind(')');
    if (name == std::string::npos) {
        return 0;
    }
    const std::vector<std::string_view> fields =
        Split(std::string_view(line).substr(name + 1), ' ');
    constexpr std::size_t kStartAfterName = 20;
    return fields.size() > kStartAfterName ? ParseInt(fields[kStartAfterName]).value_or(0) : 0;
}

} // namespace

SProcess ThisProcess()
{
    return {::getpid(), StartOf(::getpid())};
}

bool MayRun(const SProcess& process)
{
    if (process.number <= 0 || process.number > std::numeric_limits<pid_t>::max()) {
        return false;
    }
    if (::kill(static_cast<pid_t>(process.number), 0) != 0 && errno == ESRCH) {
        return false;
    }
    const std::int64_t started = StartOf(process.number);
    return process.started == 0 || started == 0 || started == process.started;
}

std::string UserName()
{
    const passwd* entry = ::getpwuid(::getuid());
    return entry == nullptr ? "" : entry->pw_name;
}

#endif

} // namespace zov
