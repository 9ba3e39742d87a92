// SPDX-License-Identifier: Apache-2.0
/// The preference file (`.zovp`): the external libraries of a project, in Latin-1.
///
///     CResult<std::string> text = FormatPreferences({{"caps.zov", true}}, folder);
///     CResult<std::vector<SListedLibrary>> entries = ParsePreferences(bytes, "board.zovp",
///     folder);
#pragma once

#include "base/Result.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// A library as a list of libraries holds it.
struct SListedLibrary
{
    std::filesystem::path path;
    bool on = true;
    bool operator==(const SListedLibrary&) const = default;
};

/// Entries of a preference file's bytes, in order; entries without a path are left out.
/// Latin-1 unless a byte-order mark or the XML declaration says UTF-8. `On` is off only when it is
/// "NO", without regard to case.
/// @param shown   the file as named in errors
/// @param folder  where relative paths begin
/// Errors: Format: no XML, no root element, or a root without `Version`.
CResult<std::vector<SListedLibrary>> ParsePreferences(std::string_view bytes,
                                                      const std::string& shown,
                                                      const std::filesystem::path& folder);

/// The file's bytes. Paths are written relative to `folder` where ListedPathText finds that good.
/// Errors: Argument, which names the path: a character outside Latin-1, or one that would not be
/// read back.
CResult<std::string> FormatPreferences(std::span<const SListedLibrary> entries,
                                       const std::filesystem::path& folder);

/// The `Lib` elements alone, in UTF-8 and with absolute paths: how the settings keep the list.
/// Quotes and markup are escaped in paths that would not be read back otherwise.
[[nodiscard]] std::string FormatLibraryList(std::span<const SListedLibrary> entries);
/// Reads it back; whatever can't be understood ends the list.
[[nodiscard]] std::vector<SListedLibrary> ParseLibraryList(std::string_view text);

/// A library's path as a list in `folder` names it: relative, with forward slashes, when both lie
/// below a common folder other than the root; else absolute.
[[nodiscard]] std::string ListedPathText(const std::filesystem::path& path,
                                         const std::filesystem::path& folder);
/// The way back. Backslashes are tried as separators when the text as it stands names no file.
[[nodiscard]] std::filesystem::path ListedPath(std::string_view text,
                                               const std::filesystem::path& folder);

} // namespace zov
