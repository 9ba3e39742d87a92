// SPDX-License-Identifier: Apache-2.0
#include "ibischk/FileSource.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::ibischk {

std::optional<std::string_view> CDiskFiles::Read(const std::string& path)
{
    const auto [entry, isNew] = m_views.try_emplace(path);
    if (isNew) {
        if (auto view = CFileView::Open(TextPath(path))) {
            entry->second = view.Take();
        }
    }
    if (!entry->second) {
        return std::nullopt;
    }
    return entry->second->Bytes();
}

bool CDiskFiles::Exists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(TextPath(path), error);
}

std::vector<std::string> CDiskFiles::Beside(const std::string& folder, std::string_view extension)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(TextPath(folder.empty() ? "." : folder), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::string name = PathText(entry->path().filename());
        if (EndsWithNoCase(name, extension)) {
            names.push_back(std::move(name));
        }
    }
    std::ranges::sort(names);
    return names;
}

std::optional<std::string_view> CMemoryFiles::Read(const std::string& path)
{
    const auto found = m_texts.find(path);
    if (found == m_texts.end()) {
        return std::nullopt;
    }
    return found->second;
}

bool CMemoryFiles::Exists(const std::string& path)
{
    return m_texts.contains(path);
}

std::vector<std::string> CMemoryFiles::Beside(const std::string& folder, std::string_view extension)
{
    const std::string prefix = folder.empty() ? "" : folder + "/";
    std::vector<std::string> names;
    for (const auto& [path, bytes] : m_texts) {
        const std::string_view name =
            std::string_view(path).substr(std::min(prefix.size(), path.size()));
        if (path.starts_with(prefix) && name.find('/') == std::string_view::npos &&
            EndsWithNoCase(name, extension)) {
            names.emplace_back(name);
        }
    }
    return names;
}

} // namespace zov::ibischk
