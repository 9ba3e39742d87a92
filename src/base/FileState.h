// SPDX-License-Identifier: Apache-2.0
/// What a file was like when it was read, to notice later that somebody else wrote it.
///
///     ASSIGN_OR_RETURN(SFileState before, FileStateOf(path));
///     ... if (ChangeSince(before, path) != EFileChange::None) ...
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace zov {

/// What the file system says of a file.
struct SFileStamp
{
    std::int64_t writtenNs = 0; ///< time of the last write, since an epoch of the platform
    std::uint64_t size = 0;     ///< bytes
    std::uint64_t file = 0;     ///< number in its file system: another after a replacement
    bool operator==(const SFileStamp&) const = default;
};
/// Errors: NotFound, Access, Io.
CResult<SFileStamp> FileStampOf(const std::filesystem::path& path);

struct SFileState
{
    SFileStamp stamp;
    std::uint64_t content = 0; ///< ContentHash of the bytes
};
/// Reads the whole file, at several GB/s when it is in memory.
CResult<SFileState> FileStateOf(const std::filesystem::path& path);

/// 64 bits that differ for different bytes, but for chance. Not for use against an attacker.
[[nodiscard]] std::uint64_t ContentHash(std::string_view bytes);

enum class EFileChange
{
    None, ///< the same bytes; a file that was merely touched counts as that
    Changed,
    Gone
};
/// Reads the file only when its stamp is another.
[[nodiscard]] EFileChange ChangeSince(const SFileState& before, const std::filesystem::path& path);

} // namespace zov
