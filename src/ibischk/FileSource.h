// SPDX-License-Identifier: Apache-2.0
/// Where the checked file and the files that it names come from.
#pragma once

#include "base/File.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

class CFileSource
{
public:
    CFileSource() = default;
    CFileSource(const CFileSource&) = delete;
    CFileSource& operator=(const CFileSource&) = delete;
    virtual ~CFileSource() = default;

    /// The bytes of a file, valid as long as the source; none when it can't be opened.
    /// @param path  as UTF-8, with "/" between folders
    virtual std::optional<std::string_view> Read(const std::string& path) = 0;
    [[nodiscard]] virtual bool Exists(const std::string& path) = 0;
    /// Names (without folder) of the files in a folder whose extension is the given one, without
    /// regard to case; sorted. An empty folder name is the current folder.
    virtual std::vector<std::string> Beside(const std::string& folder,
                                            std::string_view extension) = 0;
};

/// Files of the disk, mapped once each.
class CDiskFiles final : public CFileSource
{
public:
    std::optional<std::string_view> Read(const std::string& path) override;
    bool Exists(const std::string& path) override;
    std::vector<std::string> Beside(const std::string& folder, std::string_view extension) override;

private:
    std::map<std::string, std::optional<CFileView>> m_views;
};

/// Texts in memory: for editors, tests and fuzzing.
class CMemoryFiles final : public CFileSource
{
public:
    /// The text must outlive the source.
    void Add(std::string path, std::string_view bytes) { m_texts[std::move(path)] = bytes; }

    std::optional<std::string_view> Read(const std::string& path) override;
    bool Exists(const std::string& path) override;
    std::vector<std::string> Beside(const std::string& folder, std::string_view extension) override;

private:
    std::map<std::string, std::string_view> m_texts;
};

} // namespace zov::ibischk
