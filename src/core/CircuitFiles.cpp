// SPDX-License-Identifier: Apache-2.0
#include "core/CircuitFiles.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <array>

namespace zov {

namespace fs = std::filesystem;

namespace {

bool IsFile(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return !error && fs::exists(status) && !fs::is_directory(status);
}

fs::path LocateAsWritten(const fs::path& folder, const fs::path& name, const fs::path& track)
{
    if (IsFile(name)) {
        return name;
    }
    if (name.is_absolute()) {
        return {};
    }
    const std::array<fs::path, 4> places = {folder, folder / "S-Parameter File",
                                            folder / "Tavrely S-Parameter File", folder / track};
    for (const fs::path& place : places) {
        if (fs::path candidate = place / name; IsFile(candidate)) {
            return candidate;
        }
    }
    return {};
}

} // namespace

fs::path LocateCircuitFile(const fs::path& folder, std::string_view name,
                           std::string_view trackFolder)
{
    if (name.empty() || name.find('\0') != std::string_view::npos) {
        return {};
    }
    fs::path found = LocateAsWritten(folder, TextPath(name), TextPath(trackFolder));
    // Libraries travel: a path written on Windows is understood elsewhere too.
    if (found.empty() && (name.find('\\') != std::string_view::npos ||
                          trackFolder.find('\\') != std::string_view::npos)) {
        found = LocateAsWritten(folder, TextPath(ReplaceAll(name, "\\", "/")),
                                TextPath(ReplaceAll(trackFolder, "\\", "/")));
    }
    return found;
}

bool CCircuitLocator::IsThere(std::string_view name, std::string_view trackFolder)
{
    if (!m_enabled) {
        return true;
    }
    m_key.assign(name);
    m_key += '\0';
    m_key += trackFolder;
    const auto [entry, isNew] = m_known.try_emplace(m_key, false);
    if (isNew) {
        entry->second = !LocateCircuitFile(m_folder, name, trackFolder).empty();
    }
    return entry->second;
}

} // namespace zov
