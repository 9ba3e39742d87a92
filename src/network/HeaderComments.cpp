// SPDX-License-Identifier: Apache-2.0
#include "network/HeaderComments.h"

#include "base/Number.h"
#include "base/Text.h"

#include <charconv>

namespace zov::network {

namespace {

constexpr std::string_view kOrigin = "Generated from:";
constexpr std::string_view kFlag = "TouchstoneFormatFlag";
constexpr std::string_view kUserPrefix = "\t\t\t";

/// "Port[3] = name", as field solvers write it.
std::optional<std::pair<std::size_t, std::string_view>> ListedName(std::string_view text)
{
    constexpr std::string_view kPrefix = "Port[";
    const std::size_t close = text.find(']');
    const std::size_t sign = text.find('=');
    if (!StartsWithNoCase(text, kPrefix) || close == text.npos || sign == text.npos ||
        sign < close) {
        return std::nullopt;
    }
    const auto number = ParseInt(text.substr(kPrefix.size(), close - kPrefix.size()));
    if (!number || *number < 1) {
        return std::nullopt;
    }
    return std::pair(static_cast<std::size_t>(*number), Trim(text.substr(sign + 1)));
}

} // namespace

/// True when the line is one that the writer makes.
bool CHeaderComments::AddOwn(std::string_view text)
{
    const std::string_view trimmed = Trim(text);
    if (StartsWithNoCase(trimmed, kFlag)) {
        const std::size_t sign = trimmed.find('=');
        m_flag = sign == trimmed.npos ? 0 : LeadingInt(trimmed.substr(sign + 1));
        m_part = EPart::Free;
        return true;
    }
    switch (m_part) {
    case EPart::First:
        if (StartsWithNoCase(trimmed, kOrigin)) {
            m_origin = Trim(trimmed.substr(kOrigin.size()));
            m_part = EPart::Names;
            return true;
        }
        m_part = EPart::Free;
        return false;
    case EPart::Names:
        if (trimmed.empty()) {
            m_part = EPart::Program;
        } else {
            m_names.emplace_back(text.substr(text.front() == ' ' ? 1 : 0));
        }
        return true;
    case EPart::Program:
        return trimmed.empty() || trimmed.find(" Version: ") != trimmed.npos ||
               StartsWithNoCase(trimmed, "Computer Host Name:");
    case EPart::Free:
        if (trimmed == "User Comments:") {
            m_part = EPart::User;
            return true;
        }
        return trimmed.empty();
    case EPart::User:
        if (text.starts_with(kUserPrefix)) {
            m_userComments.emplace_back(text.substr(kUserPrefix.size()));
            return true;
        }
        m_part = EPart::Free;
        return trimmed.empty();
    }
    return false;
}

void CHeaderComments::AddFree(std::string_view text)
{
    if (const auto listed = ListedName(Trim(text));
        listed && listed->first == m_listedNames.size() + 1) {
        m_listedNames.emplace_back(listed->second);
        return;
    }
    m_comments.emplace_back(text);
}

void CHeaderComments::Add(std::string_view text)
{
    if (!AddOwn(text)) {
        AddFree(text);
    }
}

void CHeaderComments::Finish(SFileTraits& traits, std::vector<std::string>& names,
                             std::uint32_t ports)
{
    if (m_names.size() == ports && ports != 0) {
        names = std::move(m_names);
    } else if (m_listedNames.size() == ports && ports != 0) {
        names = std::move(m_listedNames);
    } else {
        m_comments.insert(m_comments.begin(), m_names.begin(), m_names.end());
        for (std::size_t i = 0; i < m_listedNames.size(); ++i) {
            m_comments.push_back("Port[" + std::to_string(i + 1) + "] = " + m_listedNames[i]);
        }
    }
    traits.origin = std::move(m_origin);
    traits.comments = std::move(m_comments);
    traits.userComments = std::move(m_userComments);
    traits.formatFlag = m_flag;
}

} // namespace zov::network
