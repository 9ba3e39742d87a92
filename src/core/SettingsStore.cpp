// SPDX-License-Identifier: Apache-2.0
#include "core/SettingsStore.h"

#include "base/File.h"

#include <nlohmann/json.hpp>

namespace zov {

namespace {
using TJson = nlohmann::ordered_json;
constexpr std::uint64_t kFileLimit = std::uint64_t{64} << 20U;
} // namespace

const CMemorySettings::TValue* CMemorySettings::Find(std::string_view section,
                                                     std::string_view value) const
{
    const auto values = m_sections.find(section);
    if (values == m_sections.end()) {
        return nullptr;
    }
    const auto found = values->second.find(value);
    return found == values->second.end() ? nullptr : &found->second;
}

std::optional<std::string> CMemorySettings::Text(std::string_view section,
                                                 std::string_view value) const
{
    const TValue* found = Find(section, value);
    const auto* text = found == nullptr ? nullptr : std::get_if<std::string>(found);
    return text == nullptr ? std::nullopt : std::optional(*text);
}

std::optional<std::int64_t> CMemorySettings::Integer(std::string_view section,
                                                     std::string_view value) const
{
    const TValue* found = Find(section, value);
    const auto* number = found == nullptr ? nullptr : std::get_if<std::int64_t>(found);
    return number == nullptr ? std::nullopt : std::optional(*number);
}

void CMemorySettings::SetText(std::string_view section, std::string_view value,
                              const std::string& text)
{
    m_sections[std::string(section)].insert_or_assign(std::string(value), text);
}

void CMemorySettings::SetInteger(std::string_view section, std::string_view value,
                                 std::int64_t number)
{
    m_sections[std::string(section)].insert_or_assign(std::string(value), number);
}

CResult<void> CFileSettings::Load(const std::filesystem::path& path)
{
    m_sections.clear();
    const CResult<std::string> bytes = ReadWholeFile(path, kFileLimit);
    if (!bytes) {
        return bytes.Error().code == EErr::NotFound ? CResult<void>() : bytes.Error();
    }
    const TJson document = TJson::parse(*bytes, nullptr, false);
    if (!document.is_object()) {
        return Fail(EErr::Format, "settings file '" + PathText(path) + "': no JSON object");
    }
    for (const auto& [section, values] : document.items()) {
        if (!values.is_object()) {
            continue;
        }
        for (const auto& [name, value] : values.items()) {
            if (value.is_number_integer()) {
                SetInteger(section, name, value.get<std::int64_t>());
            } else if (value.is_string()) {
                SetText(section, name, value.get<std::string>());
            }
        }
    }
    return {};
}

CResult<void> CFileSettings::Save(const std::filesystem::path& path) const
{
    TJson document = TJson::object();
    for (const auto& [section, values] : m_sections) {
        TJson& into = document[section] = TJson::object();
        for (const auto& value : values) {
            std::visit([&](const auto& held) { into[value.first] = held; }, value.second);
        }
    }
    return WriteFileAtomic(path,
                           document.dump(2, ' ', false, TJson::error_handler_t::replace) + '\n');
}

} // namespace zov
