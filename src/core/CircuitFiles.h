// SPDX-License-Identifier: Apache-2.0
/// Whether the files that records name are there; for readers that ask a million times.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zov {

/// LocateCircuitFile with a memory: the same name in the same track folder is looked for once.
class CCircuitLocator
{
public:
    /// @param enabled  false: every file counts as there
    CCircuitLocator(std::filesystem::path folder, bool enabled)
        : m_folder(std::move(folder))
        , m_enabled(enabled)
    {
    }
    [[nodiscard]] bool IsThere(std::string_view name, std::string_view trackFolder);

private:
    std::filesystem::path m_folder;
    bool m_enabled;
    std::unordered_map<std::string, bool> m_known;
    std::string m_key;
};

} // namespace zov
