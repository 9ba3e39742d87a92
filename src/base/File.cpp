// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"

#include "base/Text.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <cstdlib>
#include <io.h>
#include <process.h>
#include <share.h>
#else
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zov {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr int kBinary = _O_BINARY;
constexpr int kNoWait = 0;
int OpenHandle(const fs::path& path, int flags, int mode)
{
    return _wopen(path.c_str(), flags | kBinary, mode);
}
long WriteHandle(int handle, const char* data, std::size_t bytes)
{
    return _write(handle, data, static_cast<unsigned>(std::min<std::size_t>(bytes, 1U << 30U)));
}
int FlushHandle(int handle)
{
    return _commit(handle);
}
int CloseHandleOf(int handle)
{
    return _close(handle);
}
int ProcessId()
{
    return _getpid();
}
#else
constexpr int kNoWait = O_NONBLOCK; // a pipe without a writer must not hang the program
int OpenHandle(const fs::path& path, int flags, int mode)
{
    return ::open(path.c_str(), flags | O_CLOEXEC, mode);
}
long WriteHandle(int handle, const char* data, std::size_t bytes)
{
    return ::write(handle, data, bytes);
}
int FlushHandle(int handle)
{
    return ::fsync(handle);
}
int CloseHandleOf(int handle)
{
    return ::close(handle);
}
int ProcessId()
{
    return ::getpid();
}
#endif

EErr ErrorKind(int code)
{
    switch (code) {
    case ENOENT:
    case ENOTDIR:
        return EErr::NotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
        return EErr::Access;
    default:
        return EErr::Io;
    }
}

SError SystemFailure(std::string_view what, const fs::path& path, int code)
{
    std::string reason = std::error_code(code, std::generic_category()).message();
    if (!reason.empty()) {
        reason.front() = ToLower(reason.front());
    }
    return Fail(ErrorKind(code), std::string(what) + " '" + PathText(path) + "': " + reason);
}

/// Writes everything or returns the error number.
int WriteAll(int handle, std::string_view bytes)
{
    while (!bytes.empty()) {
        const long written = WriteHandle(handle, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

} // namespace

std::string PathText(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

fs::path TextPath(std::string_view utf8)
{
    return fs::path(std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size()));
}

std::string ExtensionOf(const fs::path& path)
{
    return PathText(path.extension());
}

// --- CFileView ---------------------------------------------------------------------------------

CResult<CFileView> CFileView::Open(const fs::path& path)
{
    const int handle = OpenHandle(path, O_RDONLY | kNoWait, 0);
    if (handle < 0) {
        return SystemFailure("cannot open", path, errno);
    }
    CFileView view;
    struct stat status
    {
    };
    int failure = 0;
    if (fstat(handle, &status) != 0) {
        failure = errno;
    } else if ((status.st_mode & S_IFMT) != S_IFREG) {
        CloseHandleOf(handle);
        const bool folder = (status.st_mode & S_IFMT) == S_IFDIR;
        return Fail(EErr::Io, "cannot read '" + PathText(path) + "': it is " +
                                  (folder ? "a folder" : "not a regular file"));
    } else if (status.st_size > 0) {
        view.m_size = static_cast<std::size_t>(status.st_size);
#ifdef _WIN32
        char* buffer = new char[view.m_size];
        std::size_t have = 0;
        while (have < view.m_size) {
            const int got =
                _read(handle, buffer + have,
                      static_cast<unsigned>(std::min<std::size_t>(view.m_size - have, 1U << 30U)));
            if (got <= 0) {
                failure = got < 0 ? errno : EIO;
                break;
            }
            have += static_cast<std::size_t>(got);
        }
        view.m_data = buffer;
#else
        void* map = ::mmap(nullptr, view.m_size, PROT_READ, MAP_PRIVATE, handle, 0);
        if (map == MAP_FAILED) {
            failure = errno;
        } else {
            ::madvise(map, view.m_size, MADV_SEQUENTIAL);
            view.m_data = static_cast<const char*>(map);
            view.m_mapped = true;
        }
#endif
    }
    CloseHandleOf(handle);
    if (failure != 0) {
        return SystemFailure("cannot read", path, failure);
    }
    return view;
}

CFileView::CFileView(CFileView&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr))
    , m_size(std::exchange(other.m_size, 0))
    , m_mapped(std::exchange(other.m_mapped, false))
{
}

CFileView& CFileView::operator=(CFileView&& other) noexcept
{
    if (this != &other) {
        Release();
        m_data = std::exchange(other.m_data, nullptr);
        m_size = std::exchange(other.m_size, 0);
        m_mapped = std::exchange(other.m_mapped, false);
    }
    return *this;
}

CFileView::~CFileView()
{
    Release();
}

void CFileView::Release() noexcept
{
#ifdef _WIN32
    delete[] m_data;
#else
    if (m_mapped) {
        ::munmap(const_cast<char*>(m_data), m_size); // NOLINT: munmap takes what mmap gave
    }
#endif
    m_data = nullptr;
    m_size = 0;
}

CResult<std::string> ReadWholeFile(const fs::path& path, std::uint64_t limit)
{
    ASSIGN_OR_RETURN(const CFileView view, CFileView::Open(path));
    if (view.Bytes().size() > limit) {
        return Fail(EErr::Limit, "cannot read '" + PathText(path) + "': it has " +
                                     std::to_string(view.Bytes().size()) + " bytes, at most " +
                                     std::to_string(limit) + " are taken");
    }
    return std::string(view.Bytes());
}

// --- CAtomicFile -------------------------------------------------------------------------------

struct CAtomicFile::SState
{
    fs::path target;
    fs::path temporary;
    int handle = -1;
    int failure = 0; ///< first error number of a write
    std::string buffer;
};

namespace {

constexpr std::size_t kWriteBlock = std::size_t{1} << 20U;

/// A folder entry that outlives a power cut; best effort, as not every file system allows it.
void FlushFolder(const fs::path& folder)
{
#ifndef _WIN32
    const int handle =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        ::fsync(handle);
        ::close(handle);
    }
#else
    static_cast<void>(folder);
#endif
}

} // namespace

CResult<std::unique_ptr<CAtomicFile>> CAtomicFile::Create(const fs::path& target)
{
    static std::atomic<unsigned> counter{0};
    auto state = std::make_unique<SState>();
    std::error_code error;
    state->target = fs::is_symlink(target, error) ? fs::weakly_canonical(target, error) : target;
    if (state->target.empty()) {
        state->target = target;
    }
    if (fs::is_directory(state->target, error)) {
        return Fail(EErr::Io, "cannot write '" + PathText(target) + "': it is a folder");
    }
    int mode = 0666;
    const fs::file_status existing = fs::status(state->target, error);
    if (!error && fs::is_regular_file(existing)) {
        mode = static_cast<int>(existing.permissions()) & 0777;
#ifndef _WIN32
        if (::access(state->target.c_str(), W_OK) != 0) {
            return SystemFailure("cannot write", target, errno);
        }
#endif
    }
    state->temporary = state->target;
    state->temporary += ".tmp" + std::to_string(ProcessId()) + "-" + std::to_string(counter++);
    state->handle = OpenHandle(state->temporary, O_WRONLY | O_CREAT | O_EXCL, mode);
    if (state->handle < 0) {
        return SystemFailure("cannot write", target, errno);
    }
#ifndef _WIN32
    if (mode != 0666) {
        static_cast<void>(::fchmod(state->handle, static_cast<mode_t>(mode)));
    }
#endif
    state->buffer.reserve(kWriteBlock);
    return std::unique_ptr<CAtomicFile>(new CAtomicFile(std::move(state)));
}

CAtomicFile::CAtomicFile(std::unique_ptr<SState> state)
    : m_state(std::move(state))
{
}

CAtomicFile::~CAtomicFile()
{
    if (m_state->handle >= 0) {
        CloseHandleOf(m_state->handle);
    }
    if (!m_state->temporary.empty()) {
        std::error_code ignored;
        fs::remove(m_state->temporary, ignored);
    }
}

void CAtomicFile::Append(std::string_view bytes)
{
    SState& state = *m_state;
    if (state.failure != 0) {
        return;
    }
    if (state.buffer.size() + bytes.size() <= kWriteBlock) {
        state.buffer += bytes;
        return;
    }
    state.failure = WriteAll(state.handle, state.buffer);
    state.buffer.clear();
    if (state.failure == 0 && bytes.size() >= kWriteBlock) {
        state.failure = WriteAll(state.handle, bytes);
    } else {
        state.buffer += bytes;
    }
}

CResult<void> CAtomicFile::Commit(EDurability durability)
{
    SState& state = *m_state;
    if (state.failure == 0) {
        state.failure = WriteAll(state.handle, state.buffer);
    }
    if (state.failure == 0 && durability == EDurability::Flushed &&
        FlushHandle(state.handle) != 0) {
        state.failure = errno;
    }
    if (CloseHandleOf(std::exchange(state.handle, -1)) != 0 && state.failure == 0) {
        state.failure = errno;
    }
    if (state.failure != 0) {
        return SystemFailure("cannot write", state.target, state.failure);
    }
    std::error_code error;
    fs::rename(state.temporary, state.target, error);
    if (error) {
        return SystemFailure("cannot replace", state.target, error.value());
    }
    state.temporary.clear();
    if (durability == EDurability::Flushed) {
        FlushFolder(state.target.parent_path());
    }
    return {};
}

CResult<void> WriteFileAtomic(const fs::path& target, std::string_view bytes)
{
    ASSIGN_OR_RETURN(const std::unique_ptr<CAtomicFile> file, CAtomicFile::Create(target));
    file->Append(bytes);
    return file->Commit();
}

CResult<bool> WriteNewFile(const fs::path& target, std::string_view bytes)
{
    const int handle = OpenHandle(target, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (handle < 0) {
        if (errno == EEXIST) {
            return false;
        }
        return SystemFailure("cannot create", target, errno);
    }
    const int failure = WriteAll(handle, bytes);
    CloseHandleOf(handle);
    if (failure != 0) {
        std::error_code ignored;
        fs::remove(target, ignored);
        return SystemFailure("cannot write", target, failure);
    }
    return true;
}

// --- CExclusiveFile ----------------------------------------------------------------------------

namespace {

/// A handle that no other writer shares, or -1 with errno set.
int OpenAlone(const fs::path& path)
{
#ifdef _WIN32
    return _wsopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT, _SH_DENYWR,
                   _S_IREAD | _S_IWRITE);
#else
    const int handle = OpenHandle(path, O_WRONLY | O_CREAT | kNoWait, 0666);
    if (handle < 0) {
        return -1;
    }
    // Emptied only under the lock: another's half-written file is left alone. Devices have no
    // length to cut.
    struct stat status
    {
    };
    const bool isFile = fstat(handle, &status) == 0 && (status.st_mode & S_IFMT) == S_IFREG;
    if (isFile && (::flock(handle, LOCK_EX | LOCK_NB) != 0 || ::ftruncate(handle, 0) != 0)) {
        const int code = errno == EWOULDBLOCK ? EBUSY : errno;
        CloseHandleOf(handle);
        errno = code;
        return -1;
    }
    return handle;
#endif
}

} // namespace

CResult<std::unique_ptr<CExclusiveFile>> CExclusiveFile::Create(const fs::path& target)
{
    const int handle = OpenAlone(target);
    if (handle < 0) {
        return SystemFailure("cannot write", target, errno);
    }
    return std::unique_ptr<CExclusiveFile>(new CExclusiveFile(target, handle));
}

CExclusiveFile::CExclusiveFile(fs::path target, int handle)
    : m_target(std::move(target))
    , m_handle(handle)
{
    m_buffer.reserve(kWriteBlock);
}

CExclusiveFile::~CExclusiveFile()
{
    if (m_handle >= 0) {
        static_cast<void>(Finish());
    }
}

void CExclusiveFile::Append(std::string_view bytes)
{
    if (m_buffer.size() + bytes.size() > kWriteBlock) {
        m_failure = m_failure != 0 ? m_failure : WriteAll(m_handle, m_buffer);
        m_buffer.clear();
    }
    m_buffer += bytes;
}

CResult<void> CExclusiveFile::Finish()
{
    m_failure = m_failure != 0 ? m_failure : WriteAll(m_handle, m_buffer);
    if (CloseHandleOf(std::exchange(m_handle, -1)) != 0 && m_failure == 0) {
        m_failure = errno;
    }
    if (m_failure != 0) {
        return SystemFailure("cannot write", m_target, m_failure);
    }
    return {};
}

std::string HostName()
{
#ifdef _WIN32
    const char* name = std::getenv("COMPUTERNAME");
    return name == nullptr ? "" : name;
#else
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
#endif
}

// --- CAppendFile -------------------------------------------------------------------------------

CAppendFile::CAppendFile(const fs::path& path, EOpen mode)
    : m_handle(OpenHandle(path, O_WRONLY | O_CREAT | (mode == EOpen::Truncate ? O_TRUNC : O_APPEND),
                          0666))
    , m_ok(m_handle >= 0)
{
}

CAppendFile::~CAppendFile()
{
    if (m_handle >= 0) {
        CloseHandleOf(m_handle);
    }
}

void CAppendFile::Append(std::string_view bytes)
{
    if (m_ok && WriteAll(m_handle, bytes) != 0) {
        m_ok = false;
    }
}

} // namespace zov
