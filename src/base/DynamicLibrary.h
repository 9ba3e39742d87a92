// SPDX-License-Identifier: Apache-2.0
/// Parts of the program that are loaded when they are needed.
///
///     ASSIGN_OR_RETURN(CDynamicLibrary desktop, CDynamicLibrary::Open(ProgramFolder() / name));
///     auto run = desktop.Function<int(int, char**)>("ZovraDesktop");
#pragma once

#include "base/Result.h"

#include <filesystem>

namespace zov {

/// Stays loaded until the process ends: what it made may live longer than this object.
class CDynamicLibrary
{
public:
    /// Errors: NotFound, Io; the text says what the platform says.
    static CResult<CDynamicLibrary> Open(const std::filesystem::path& path);

    /// An exported function by its plain name; null when there is none.
    template <typename Signature>
    [[nodiscard]] Signature* Function(const char* name) const
    {
        return reinterpret_cast<Signature*>(Symbol(name));
    }

private:
    using AnyFunction = void (*)();

    explicit CDynamicLibrary(void* handle)
        : m_handle(handle)
    {
    }
    [[nodiscard]] AnyFunction Symbol(const char* name) const;

    void* m_handle = nullptr;
};

/// The folder of the running program; empty when the platform does not tell.
[[nodiscard]] std::filesystem::path ProgramFolder();

} // namespace zov
