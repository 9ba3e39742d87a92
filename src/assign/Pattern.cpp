// SPDX-License-Identifier: Apache-2.0
#include "assign/Pattern.h"

#include "assign/FoldedTexts.h"
#include "base/Text.h"

namespace zov {

CNamePattern::CNamePattern(std::string_view name)
    : m_name(name)
    , m_pattern("*" + m_name + "*")
    , m_folded(Folded(name))
    , m_valid(IsValidUtf8(name) && name.find('\0') == std::string_view::npos)
{
    std::string_view rest = m_folded;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("*?"), rest.size());
        if (end > m_literal.size()) {
            m_literal = rest.substr(0, end);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    m_plain = m_literal.size() == m_folded.size();
}

bool CNamePattern::IsHopeless(EPropId key) const
{
    // Records hold valid UTF-8 without zero bytes, keywords no semicolon.
    return !m_valid || (key == EPropId::Lookup && m_folded.find(';') != std::string::npos);
}

bool CNamePattern::Matches(std::string_view text) const
{
    return WildcardMatch(m_pattern, text);
}

bool CNamePattern::Equals(std::string_view text) const
{
    return EqualsNoCase(m_name, text);
}

CNamePattern::SMatch CNamePattern::MatchIn(const CZovRcdProps& record, EPropId key) const
{
    const SPropInfo* info = FindProperty(key);
    const bool isText =
        info != nullptr && (info->kind == EPropKind::String || info->kind == EPropKind::Text);
    if (!isText || !record.Has(key)) {
        return {};
    }
    std::string_view text = record.GetString(key);
    if (key != EPropId::Lookup) {
        return Matches(text) ? SMatch{text, Equals(text)} : SMatch{};
    }
    SMatch first;
    for (std::size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1)) {
        end = text.find(';');
        const std::string_view keyword = text.substr(0, end);
        if (Equals(keyword)) {
            return {keyword, true};
        }
        if (!first && Matches(keyword)) {
            first = {keyword, false};
        }
        if (end == std::string_view::npos) {
            break;
        }
    }
    return first;
}

} // namespace zov
