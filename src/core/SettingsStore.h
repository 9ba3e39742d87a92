// SPDX-License-Identifier: Apache-2.0
/// Where settings are kept: values by section and name. Integers are numbers, texts are texts.
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace zov {

class ISettingsStore // NOLINT(readability-identifier-naming): an interface
{
public:
    ISettingsStore() = default;
    ISettingsStore(const ISettingsStore&) = delete;
    ISettingsStore& operator=(const ISettingsStore&) = delete;
    virtual ~ISettingsStore() = default;

    /// None when the value is not there or of the other kind.
    [[nodiscard]] virtual std::optional<std::string> Text(std::string_view section,
                                                          std::string_view value) const = 0;
    [[nodiscard]] virtual std::optional<std::int64_t> Integer(std::string_view section,
                                                              std::string_view value) const = 0;
    virtual void SetText(std::string_view section, std::string_view value,
                         const std::string& text) = 0;
    virtual void SetInteger(std::string_view section, std::string_view value,
                            std::int64_t number) = 0;
};

/// Keeps everything in memory.
class CMemorySettings : public ISettingsStore
{
public:
    [[nodiscard]] std::optional<std::string> Text(std::string_view section,
                                                  std::string_view value) const override;
    [[nodiscard]] std::optional<std::int64_t> Integer(std::string_view section,
                                                      std::string_view value) const override;
    void SetText(std::string_view section, std::string_view value,
                 const std::string& text) override;
    void SetInteger(std::string_view section, std::string_view value, std::int64_t number) override;

protected:
    using TValue = std::variant<std::int64_t, std::string>;
    using TSection = std::map<std::string, TValue, std::less<>>;
    std::map<std::string, TSection, std::less<>> m_sections;

private:
    [[nodiscard]] const TValue* Find(std::string_view section, std::string_view value) const;
};

/// A JSON file: an object of sections, each an object of numbers and texts. Read when made, written
/// by Save; what is of neither kind is not kept.
class CFileSettings final : public CMemorySettings
{
public:
    /// A file that is not there gives an empty store. Errors: Access, Io; Format: no JSON object.
    CResult<void> Load(const std::filesystem::path& path);
    CResult<void> Save(const std::filesystem::path& path) const;
};

} // namespace zov
