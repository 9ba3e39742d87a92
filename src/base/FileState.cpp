// SPDX-License-Identifier: Apache-2.0
#include "base/FileState.h"

#include "base/File.h"

#include <array>
#include <bit>
#include <chrono>
#include <cstring>
#include <sys/stat.h>

namespace zov {

namespace fs = std::filesystem;

CResult<SFileStamp> FileStampOf(const fs::path& path)
{
    std::error_code error;
    SFileStamp stamp;
    stamp.size = fs::file_size(path, error);
    if (error) {
        return Fail(error == std::errc::no_such_file_or_directory ? EErr::NotFound : EErr::Io,
                    "cannot look at '" + PathText(path) + "': " + error.message());
    }
    stamp.writtenNs = std::chrono::duration_cast<std::chrono::nanoseconds>(
                          fs::last_write_time(path, error).time_since_epoch())
                          .count();
#ifndef _WIN32
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) == 0) {
        stamp.file = status.st_ino;
    }
#endif
    return stamp;
}

std::uint64_t ContentHash(std::string_view bytes)
{
    // Four lanes that don't wait for each other; each step is a bijection of its lane.
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15ULL;
    std::array<std::uint64_t, 4> lanes = {bytes.size(), 1, 2, 3};
    const auto step = [](std::uint64_t lane, std::uint64_t word) {
        return std::rotl((lane ^ word) * kFactor, 29);
    };
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= sizeof lanes; left -= sizeof lanes, at += sizeof lanes) {
        std::array<std::uint64_t, 4> words{};
        std::memcpy(words.data(), at, sizeof words);
        for (std::size_t i = 0; i < words.size(); ++i) {
            lanes[i] = step(lanes[i], words[i]);
        }
    }
    std::array<std::uint64_t, 4> rest{};
    if (left > 0) {
        std::memcpy(rest.data(), at, left);
    }
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        hash = step(hash, step(lanes[i], rest[i]));
    }
    return hash ^ hash >> 32U;
}

CResult<SFileState> FileStateOf(const fs::path& path)
{
    // The stamp first: a write in between then shows as a change later.
    ASSIGN_OR_RETURN(const SFileStamp stamp, FileStampOf(path));
    ASSIGN_OR_RETURN(const CFileView view, CFileView::Open(path));
    return SFileState{stamp, ContentHash(view.Bytes())};
}

EFileChange ChangeSince(const SFileState& before, const fs::path& path)
{
    const CResult<SFileStamp> now = FileStampOf(path);
    if (!now) {
        return now.Error().code == EErr::NotFound ? EFileChange::Gone : EFileChange::Changed;
    }
    if (*now == before.stamp) {
        return EFileChange::None;
    }
    if (now->size != before.stamp.size) {
        return EFileChange::Changed;
    }
    const CResult<CFileView> view = CFileView::Open(path);
    return view && ContentHash(view->Bytes()) == before.content ? EFileChange::None
                                                                : EFileChange::Changed;
}

} // namespace zov
