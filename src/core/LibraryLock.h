// SPDX-License-Identifier: Apache-2.0
/// Who writes a library: a small file "NAME.zov.lock" beside it says user, machine, process and
/// since when. It keeps two people from overwriting each other's work; it does not keep programs
/// from the file.
///
///     SLockOutcome outcome = CLibraryLock::Take(path, MyLockOwner());
///     if (!outcome.lock && outcome.holder) ...  // somebody else has it
#pragma once

#include "base/Clock.h"
#include "base/Process.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zov {

struct SLockOwner
{
    std::string user;
    std::string host;
    SProcess process;
    std::string since; ///< as FormatTime writes it, in the owner's local time
    bool operator==(const SLockOwner&) const = default;
};

/// This process, from now on.
[[nodiscard]] SLockOwner MyLockOwner(const FClock& clock = LocalTimeNow);
/// "ann on desk7 since 2026-11-21 16:40:00"
[[nodiscard]] std::string OwnerText(const SLockOwner& owner);

/// The lock file's text, and back; none for a text that is no such file's.
[[nodiscard]] std::string FormatLock(const SLockOwner& owner);
[[nodiscard]] std::optional<SLockOwner> ParseLock(std::string_view text);
[[nodiscard]] std::filesystem::path LockPathOf(const std::filesystem::path& library);

struct SLockOutcome;

/// Held as long as the object lives.
class CLibraryLock
{
public:
    enum class ETake
    {
        IfFree, ///< also when its owner is certainly gone
        Anyway  ///< the user says that the owner needs it no more
    };
    static SLockOutcome Take(const std::filesystem::path& library, const SLockOwner& me,
                             ETake how = ETake::IfFree);

    CLibraryLock(CLibraryLock&& other) noexcept;
    CLibraryLock& operator=(CLibraryLock&& other) noexcept;
    CLibraryLock(const CLibraryLock&) = delete;
    CLibraryLock& operator=(const CLibraryLock&) = delete;
    ~CLibraryLock();

    /// The library whose lock this is.
    [[nodiscard]] const std::filesystem::path& Library() const { return m_library; }
    /// Somebody else may have passed it meanwhile.
    [[nodiscard]] bool IsStillMine() const;

private:
    CLibraryLock(std::filesystem::path library, SLockOwner me);
    void Release();

    std::filesystem::path m_library; ///< empty: moved from
    SLockOwner m_me;
};

struct SLockOutcome
{
    /// Held from now on. None with a holder: in use. None without: no lock can be written here
    /// (a folder without that right, a full disk), which is no reason not to work.
    std::optional<CLibraryLock> lock;
    /// In use: by whom. Held: whose lock was passed, if there was one.
    std::optional<SLockOwner> holder;
    /// In use: nobody can tell from this machine whether the holder still runs.
    bool mayBeOld = false;
};

} // namespace zov
