// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryLock.h"

#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"

#include <fmt/format.h>
#include <utility>

namespace zov {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFirstLine = "Zovra lock 1";
constexpr std::uint64_t kLargestLock = 4096;

/// What the lock file holds; an owner without a name when it can't be read, since a lock is there
/// all the same.
std::optional<SLockOwner> HolderOf(const fs::path& lock)
{
    const CResult<std::string> text = ReadWholeFile(lock, kLargestLock);
    if (!text) {
        return text.Error().code == EErr::NotFound ? std::nullopt : std::optional(SLockOwner());
    }
    return ParseLock(*text).value_or(SLockOwner());
}

bool IsHere(const SLockOwner& owner)
{
    return !owner.host.empty() && owner.host == HostName();
}

/// Takes a lock away, unless it became somebody else's since it was looked at. A rename is one
/// step, so that of two programs only one gets the file.
bool TakeAway(const fs::path& lock, const SLockOwner& judged)
{
    const SProcess me = ThisProcess();
    fs::path aside = lock;
    aside += fmt::format(".{}", me.number);
    std::error_code error;
    fs::rename(lock, aside, error);
    if (error) {
        return false;
    }
    if (HolderOf(aside) != judged) {
        fs::rename(aside, lock, error);
        return false;
    }
    fs::remove(aside, error);
    return true;
}

} // namespace

SLockOwner MyLockOwner(const FClock& clock)
{
    return {UserName(), HostName(), ThisProcess(), FormatTime(clock())};
}

std::string OwnerText(const SLockOwner& owner)
{
    std::string text = owner.user.empty() ? "somebody" : owner.user;
    if (!owner.host.empty()) {
        text += " on " + owner.host;
    }
    if (!owner.since.empty()) {
        text += " since " + owner.since;
    }
    return text;
}

std::string FormatLock(const SLockOwner& owner)
{
    return fmt::format("{}\nuser={}\nhost={}\nprocess={} {}\nsince={}\n", kFirstLine, owner.user,
                       owner.host, owner.process.number, owner.process.started, owner.since);
}

std::optional<SLockOwner> ParseLock(std::string_view text)
{
    const std::vector<std::string_view> lines = Split(text, '\n');
    if (Trim(lines.front()) != kFirstLine || !IsValidUtf8(text)) {
        return std::nullopt;
    }
    SLockOwner owner;
    for (const std::string_view line : lines) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const std::string_view name = line.substr(0, equals);
        const std::string_view value = Trim(line.substr(equals + 1));
        if (name == "user") {
            owner.user = value;
        } else if (name == "host") {
            owner.host = value;
        } else if (name == "since") {
            owner.since = value;
        } else if (name == "process") {
            const std::size_t blank = value.find(' ');
            owner.process.number = ParseInt(value.substr(0, blank)).value_or(0);
            owner.process.started =
                blank == std::string_view::npos ? 0 : ParseInt(value.substr(blank + 1)).value_or(0);
        }
    }
    return owner;
}

fs::path LockPathOf(const fs::path& library)
{
    fs::path lock = library;
    return lock += ".lock";
}

SLockOutcome CLibraryLock::Take(const fs::path& library, const SLockOwner& me, ETake how)
{
    const fs::path lock = LockPathOf(library);
    SLockOutcome outcome;
    // A second try behind a lock that was taken away; who loses the race then sees the new owner.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const CResult<bool> written = WriteNewFile(lock, FormatLock(me));
        if (!written) {
            return outcome;
        }
        if (*written) {
            outcome.lock = CLibraryLock(library, me);
            return outcome;
        }
        outcome.holder = HolderOf(lock);
        if (!outcome.holder) {
            continue; // given back this moment
        }
        outcome.mayBeOld = !IsHere(*outcome.holder);
        const bool isGone = IsHere(*outcome.holder) && !MayRun(outcome.holder->process);
        if (!isGone && how == ETake::IfFree) {
            return outcome;
        }
        if (!TakeAway(lock, *outcome.holder)) {
            return outcome;
        }
    }
    return outcome;
}

CLibraryLock::CLibraryLock(fs::path library, SLockOwner me)
    : m_library(std::move(library))
    , m_me(std::move(me))
{
}

CLibraryLock::CLibraryLock(CLibraryLock&& other) noexcept
    : m_library(std::exchange(other.m_library, {}))
    , m_me(std::move(other.m_me))
{
}

CLibraryLock& CLibraryLock::operator=(CLibraryLock&& other) noexcept
{
    if (this != &other) {
        Release();
        m_library = std::exchange(other.m_library, {});
        m_me = std::move(other.m_me);
    }
    return *this;
}

CLibraryLock::~CLibraryLock()
{
    Release();
}

bool CLibraryLock::IsStillMine() const
{
    return !m_library.empty() && HolderOf(LockPathOf(m_library)) == m_me;
}

void CLibraryLock::Release()
{
    if (IsStillMine()) {
        std::error_code ignored;
        fs::remove(LockPathOf(m_library), ignored);
    }
    m_library.clear();
}

} // namespace zov
