// SPDX-License-Identifier: Apache-2.0
#include "base/Machine.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace zov {

std::uint64_t PhysicalMemoryBytes()
{
#ifdef _WIN32
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : 0;
#else
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long bytes = sysconf(_SC_PAGESIZE);
    return pages > 0 && bytes > 0
               ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(bytes)
               : 0;
#endif
}

} // namespace zov
