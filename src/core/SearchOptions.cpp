// SPDX-License-Identifier: Apache-2.0
#include "core/SearchOptions.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <optional>

namespace zov {

namespace {

struct SDefaultKey
{
    EPropId property;
    std::string_view label;
};
constexpr std::array<SDefaultKey, CSearchOptions::kRows> kDefaults = {
    {{EPropId::Lookup, "Lookup Keyword"},
     {EPropId::ModelName, "Model Name"},
     {EPropId::MfgPartNumber, "Mfg.Part No."}}};

/// Three integers separated by white space.
std::optional<std::array<std::int64_t, 3>> ReadGroup(std::string_view group)
{
    std::array<std::int64_t, 3> values{};
    for (std::int64_t& value : values) {
        group = Trim(group);
        const std::size_t end = std::min(group.find_first_of(" \t\r\n"), group.size());
        const auto number = ParseInt(group.substr(0, end));
        if (!number) {
            return std::nullopt;
        }
        value = *number;
        group.remove_prefix(end);
    }
    return values;
}

} // namespace

CSearchOptions::CSearchOptions()
{
    for (std::uint32_t key = 0; key < kRows; ++key) {
        m_rows[key] = {static_cast<std::uint8_t>(key), key,
                       static_cast<std::uint32_t>(kDefaults[key].property), kDefaults[key].label,
                       1};
    }
}

std::vector<EPropId> CSearchOptions::EnabledKeys() const
{
    std::vector<EPropId> keys;
    for (const SearchOption& row : m_rows) {
        if (row.enabled == 1) {
            keys.push_back(static_cast<EPropId>(row.propertyId));
        }
    }
    return keys;
}

std::string CSearchOptions::Format() const
{
    std::string out;
    for (const SearchOption& row : m_rows) {
        out += std::to_string(row.sequence) + ' ' + std::to_string(row.key) + ' ' +
               std::to_string(row.enabled) + ';';
    }
    return out;
}

CSearchOptions CSearchOptions::Parse(std::string_view text)
{
    CSearchOptions options;
    std::size_t placed = 0;
    for (const std::string_view group : Split(text, ';')) {
        const auto values = ReadGroup(group);
        if (!values || (*values)[0] < 0 || (*values)[0] > 255 || (*values)[1] < 0) {
            continue;
        }
        const auto place = options.m_rows.begin() + static_cast<std::ptrdiff_t>(placed);
        const auto row = std::find_if(place, options.m_rows.end(), [&](const SearchOption& one) {
            return one.key == (*values)[1];
        });
        if (row != options.m_rows.end()) {
            row->sequence = static_cast<std::uint8_t>((*values)[0]);
            row->enabled = (*values)[2] != 0 ? 1 : 0;
            std::rotate(place, row, row + 1);
            ++placed;
        }
    }
    return options;
}

CSearchOptions CSearchOptions::InOrder(const std::vector<EPropId>& keys)
{
    CSearchOptions options;
    const auto placeOf = [&](const SearchOption& row) {
        return static_cast<std::size_t>(
            std::ranges::find(keys, static_cast<EPropId>(row.propertyId)) - keys.begin());
    };
    std::ranges::stable_sort(options.m_rows, {}, placeOf);
    for (std::uint8_t i = 0; i < kRows; ++i) {
        SearchOption& row = options.m_rows[i];
        row.enabled = placeOf(row) < keys.size() ? 1 : 0;
        row.sequence = i;
    }
    return options;
}

bool CSearchOptions::Move(std::size_t row, int by)
{
    const auto to = static_cast<std::ptrdiff_t>(row) + by;
    if (row >= kRows || to < 0 || to >= static_cast<std::ptrdiff_t>(kRows)) {
        return false;
    }
    const auto at = [this](std::ptrdiff_t place) { return m_rows.begin() + place; };
    const auto from = static_cast<std::ptrdiff_t>(row);
    by < 0 ? std::rotate(at(to), at(from), at(from + 1))
           : std::rotate(at(from), at(from + 1), at(to + 1));
    return true;
}

} // namespace zov
