// SPDX-License-Identifier: Apache-2.0
#include "ibischk/stringlist.h"

#include "base/Text.h"

namespace zov::ibischk {

std::size_t CNameIndex::SHashNoCase::operator()(std::string_view name) const
{
    return static_cast<std::size_t>(HashNoCase(name));
}

bool CNameIndex::SEqualNoCase::operator()(std::string_view a, std::string_view b) const
{
    return EqualsNoCase(a, b);
}

std::optional<std::size_t> CNameIndex::Add(std::string_view name, std::size_t number)
{
    const auto [entry, isNew] = m_exact.try_emplace(name, number);
    if (!isNew) {
        return entry->second;
    }
    if (!m_folded.empty()) {
        m_folded.try_emplace(name, number);
    }
    return std::nullopt;
}

std::optional<std::size_t> CNameIndex::Find(std::string_view name) const
{
    const auto entry = m_exact.find(name);
    return entry == m_exact.end() ? std::nullopt : std::optional(entry->second);
}

std::optional<std::size_t> CNameIndex::FindNoCase(std::string_view name) const
{
    if (m_folded.empty()) {
        for (const auto& [exact, number] : m_exact) {
            const auto [entry, isNew] = m_folded.try_emplace(exact, number);
            if (!isNew && number < entry->second) {
                entry->second = number;
            }
        }
    }
    const auto entry = m_folded.find(name);
    return entry == m_folded.end() ? std::nullopt : std::optional(entry->second);
}

void CNameIndex::Clear()
{
    m_exact.clear();
    m_folded.clear();
}

} // namespace zov::ibischk
