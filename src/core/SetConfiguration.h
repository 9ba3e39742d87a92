// SPDX-License-Identifier: Apache-2.0
/// The JSON configuration of external library sets:
///
///     { "Version": 1,
///       "ExternalLibSets": [
///         { "Name": "Approved", "On": true,
///           "Libraries": [ { "Path": "caps.zov", "On": true }, "resistors.zov" ] } ] }
#pragma once

#include "core/PreferenceFile.h"

#include <optional>

namespace zov {

struct SExternalLibSet
{
    std::string name;
    bool on = true; ///< off: all its libraries count as off
    std::vector<SListedLibrary> libraries;
    bool operator==(const SExternalLibSet&) const = default;
};

/// The sets of a configuration's text; none when it has no `ExternalLibSets`, which is no error.
/// @param folder  where relative paths begin
/// Errors: Unsupported: "Unsupported ZOV config file version: %d" (a version above 1). Format: no
/// JSON, no numeric `Version`, or a member of another kind than it must be, which is named.
CResult<std::optional<std::vector<SExternalLibSet>>>
ParseSetConfiguration(std::string_view text, const std::string& shown,
                      const std::filesystem::path& folder);

/// The configuration of these sets; paths as ListedPathText gives them.
[[nodiscard]] std::string FormatSetConfiguration(std::span<const SExternalLibSet> sets,
                                                 const std::filesystem::path& folder);

} // namespace zov
