// SPDX-License-Identifier: Apache-2.0
#include "base/DynamicLibrary.h"

#include "base/File.h"

#include <fmt/format.h>

#ifdef _WIN32
#include <array>
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zov {

namespace fs = std::filesystem;

#ifdef _WIN32

CResult<CDynamicLibrary> CDynamicLibrary::Open(const fs::path& path)
{
    if (HMODULE module = LoadLibraryW(path.c_str())) {
        return CDynamicLibrary(module);
    }
    return Fail(fs::exists(path) ? EErr::Io : EErr::NotFound,
                fmt::format("cannot load '{}': error {}", PathText(path), GetLastError()));
}

CDynamicLibrary::AnyFunction CDynamicLibrary::Symbol(const char* name) const
{
    return reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

fs::path ProgramFolder()
{
    std::array<wchar_t, 32768> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return length == 0 || length == path.size() ? fs::path() : fs::path(path.data()).parent_path();
}

#else

CResult<CDynamicLibrary> CDynamicLibrary::Open(const fs::path& path)
{
    if (void* handle = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL)) {
        return CDynamicLibrary(handle);
    }
    const char* reason = ::dlerror();
    std::error_code ignored;
    return Fail(fs::exists(path, ignored) ? EErr::Io : EErr::NotFound,
                fmt::format("cannot load '{}': {}", PathText(path),
                            reason == nullptr ? "no reason given" : reason));
}

CDynamicLibrary::AnyFunction CDynamicLibrary::Symbol(const char* name) const
{
    return reinterpret_cast<AnyFunction>(::dlsym(m_handle, name));
}

fs::path ProgramFolder()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : program.parent_path();
}

#endif

} // namespace zov
