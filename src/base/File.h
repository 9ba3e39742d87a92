// SPDX-License-Identifier: Apache-2.0
/// Whole files in, whole files out. Everything of the platform's file services that engines need.
#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace zov {

/// A path as UTF-8 text for messages and file contents, and back.
[[nodiscard]] std::string PathText(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path TextPath(std::string_view utf8);

/// `.XLSX` for "a/b.XLSX"; compare it with EqualsNoCase.
[[nodiscard]] std::string ExtensionOf(const std::filesystem::path& path);

/// The bytes of a regular file, read only, for as long as the object lives: a memory map where the
/// platform has one, else a buffer. Another program that shortens the file meanwhile is not guarded
/// against.
class CFileView
{
public:
    /// Errors: NotFound, Access, Io (a folder, a device and a read error are Io); the text names
    /// the path.
    static CResult<CFileView> Open(const std::filesystem::path& path);

    CFileView() = default;
    CFileView(CFileView&& other) noexcept;
    CFileView& operator=(CFileView&& other) noexcept;
    CFileView(const CFileView&) = delete;
    CFileView& operator=(const CFileView&) = delete;
    ~CFileView();

    [[nodiscard]] std::string_view Bytes() const { return {m_data, m_size}; }

private:
    void Release() noexcept;

    const char* m_data = nullptr;
    std::size_t m_size = 0;
    bool m_mapped = false;
};

/// A copy of the file's bytes; refuses files larger than `limit` with EErr::Limit.
CResult<std::string> ReadWholeFile(const std::filesystem::path& path,
                                   std::uint64_t limit = std::uint64_t{1} << 40U);

/// Takes bytes and gets them to a file. Errors stick: after the first, Append does nothing and
/// Finish reports it.
class CByteWriter
{
public:
    virtual ~CByteWriter() = default;
    virtual void Append(std::string_view bytes) = 0;
};

/// Replaces a file in one step: bytes go to a temporary file beside the target, Commit flushes it
/// to disk and renames it over. Destroyed without Commit, or after an error, the target is as it
/// was and the temporary file is gone. Through a symbolic link the file that it names is replaced;
/// the permissions of an existing target are kept.
class CAtomicFile final : public CByteWriter
{
public:
    static CResult<std::unique_ptr<CAtomicFile>> Create(const std::filesystem::path& target);
    ~CAtomicFile() override;

    void Append(std::string_view bytes) override;
    enum class EDurability
    {
        Flushed, ///< fsync before the rename
        Cached   ///< for measurements: the rename is atomic but a power cut may lose it
    };
    /// Errors: Io ("no space left on device" and the like), Access.
    CResult<void> Commit(EDurability durability = EDurability::Flushed);

private:
    struct SState;
    explicit CAtomicFile(std::unique_ptr<SState> state);
    std::unique_ptr<SState> m_state;
};

/// CAtomicFile for one text.
CResult<void> WriteFileAtomic(const std::filesystem::path& target, std::string_view bytes);

/// Creates a file with these bytes; false, and nothing done, when it is there already. Of several
/// programs that try, one gets true.
CResult<bool> WriteNewFile(const std::filesystem::path& target, std::string_view bytes);

/// Writes a file in place, for formats whose file stays as far as it was written when the work
/// fails. Other writers are kept out while it is open.
class CExclusiveFile final : public CByteWriter
{
public:
    /// Errors: NotFound, Access, Io; Access also when another program is writing the file, which is
    /// then left alone. An existing file is emptied.
    static CResult<std::unique_ptr<CExclusiveFile>> Create(const std::filesystem::path& target);
    ~CExclusiveFile() override;

    void Append(std::string_view bytes) override;
    /// Writes what is left and closes. Errors: Io, the first of all writes.
    CResult<void> Finish();

private:
    CExclusiveFile(std::filesystem::path target, int handle);

    std::filesystem::path m_target;
    int m_handle = -1;
    int m_failure = 0;
    std::string m_buffer;
};

/// The machine's name in the network, empty when it is not known.
[[nodiscard]] std::string HostName();

/// Appends lines to a file that is created when missing; each call reaches the file before it
/// returns, so that a log survives a crash. An error is not reported again and again: Ok() tells.
class CAppendFile
{
public:
    enum class EOpen
    {
        Truncate,
        Append
    };
    explicit CAppendFile(const std::filesystem::path& path, EOpen mode = EOpen::Truncate);
    ~CAppendFile();
    CAppendFile(const CAppendFile&) = delete;
    CAppendFile& operator=(const CAppendFile&) = delete;

    [[nodiscard]] bool Ok() const { return m_ok; }
    void Append(std::string_view bytes);

private:
    int m_handle = -1;
    bool m_ok = false;
};

} // namespace zov
