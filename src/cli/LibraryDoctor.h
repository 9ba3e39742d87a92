// SPDX-License-Identifier: Apache-2.0
/// What is wrong with a library that loads: files that are not where it looks for them, duplicates,
/// records that lack what their type needs, texts that an exchange file can't hold.
#pragma once

#include "core/ZovLibrary.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zov::cli {

enum class EGrade
{
    Error,   ///< the model can't be used as it is
    Warning, ///< it works here, or can be put right by one edit
    Note     ///< worth knowing before an export
};

struct SFinding
{
    EGrade grade = EGrade::Error;
    std::string_view rule;                ///< "missing-file", ...
    const CZovRcdProps* record = nullptr; ///< null when the text names it
    std::string text;
};

/// Files under a folder, by their name without regard to case. Links to folders are not followed;
/// it stops looking at kMaxFiles.
class CFolderIndex
{
public:
    static constexpr std::size_t kMaxFiles = 200'000;

    explicit CFolderIndex(std::filesystem::path folder)
        : m_folder(std::move(folder))
    {
    }
    /// Paths relative to the folder of every file of that name, sorted. The folder is walked at the
    /// first call.
    [[nodiscard]] const std::vector<std::string>& Find(const std::string& fileName);

private:
    void Walk();

    std::filesystem::path m_folder;
    bool m_walked = false;
    std::unordered_map<std::string, std::vector<std::string>> m_files;
};

/// Every finding, record by record.
[[nodiscard]] std::vector<SFinding> ExamineLibrary(const CZovLibrary& library,
                                                   const std::filesystem::path& folder);

} // namespace zov::cli
