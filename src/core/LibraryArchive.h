// SPDX-License-Identifier: Apache-2.0
/// A library with every file that its records name, as one thing that can be carried elsewhere: a
/// `.zip`, or a folder.
///
///     NAME/NAME.zov         the library; its records name the files below by relative paths
///     NAME/files/...        the files
///     NAME/SHA256SUMS       checksums of all of them, for `sha256sum -c SHA256SUMS`
///
///     const SArchivePlan plan = PlanArchive(library);
///     if (plan.missing.empty()) RETURN_IF_ERROR(WriteArchive(library, plan, "board.zip", {}));
#pragma once

#include "base/Result.h"
#include "core/ZovLibrary.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace zov {

struct SArchivedFile
{
    std::filesystem::path source;
    std::string inside; ///< "files/part.s2p"
};
struct SMissingFile
{
    std::string record; ///< the first record that names it
    std::string name;   ///< as the record names it
};
struct SArchivePlan
{
    std::vector<SArchivedFile> files;
    std::vector<SMissingFile> missing;
    /// What becomes of a name: (name, track folder) as the records have them to the path inside.
    std::map<std::pair<std::string, std::string>, std::string> renamed;
};
/// Looks for the files that the records name, from the library's folder. The files that those name
/// in turn are not followed.
[[nodiscard]] SArchivePlan PlanArchive(const CZovLibrary& library);

/// Told of the share that is done; false ends the work with Cancelled.
using FArchiveProgress = std::function<bool(double)>;

/// Writes the archive: a zip file for the extension ".zip", else a folder, which must be empty or
/// not there yet. Names of missing files stay as they are. Errors: Io, Access, Argument for a
/// folder with something in it; nothing half is left of a zip file.
CResult<void> WriteArchive(const CZovLibrary& library, const SArchivePlan& plan,
                           const std::filesystem::path& target, const FArchiveProgress& progress);

} // namespace zov
