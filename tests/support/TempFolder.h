// SPDX-License-Identifier: Apache-2.0
/// A folder of a test's own, gone with it.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace zov::test {

class CTempFolder
{
public:
    CTempFolder()
    {
        static std::atomic<unsigned> counter{0};
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_path = std::filesystem::temp_directory_path() /
                 ("zov-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(m_path);
    }
    ~CTempFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path Write(const std::string& name, std::string_view bytes) const
    {
        const std::filesystem::path file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file;
    }
    [[nodiscard]] std::string Read(const std::string& name) const
    {
        std::ifstream in(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path m_path;
};

} // namespace zov::test
