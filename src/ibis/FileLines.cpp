// SPDX-License-Identifier: Apache-2.0
#include "ibis/FileLines.h"

#include "ibis/DataObject.h"
#include "ibis/Forms.h"
#include "ibis/Parser.h"
namespace zov::ibis {

namespace {

bool OpensSection(EIPKeyword keyword)
{
    const SIPForm* form = IPFormOf(keyword);
    return form != nullptr && keyword > EIPKeyword::Copyright && IPBelongs(*form, EIPKeyword::None);
}

} // namespace

bool CFileLines::Next(SFileLine& out)
{
    if (m_next >= m_text.size()) {
        return false;
    }
    m_comment = m_nextComment;
    const std::size_t found = m_text.find('\n', m_next);
    out.begin = m_next;
    out.end = found == std::string_view::npos ? m_text.size() : found + 1;
    m_next = out.end;
    out.number = ++m_number;
    out.whole = m_text.substr(out.begin, out.end - out.begin);
    std::string_view line = out.whole;
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
    }
    out.body = TrimLine(line);
    out.comment = !out.body.empty() && out.body.front() == m_comment;
    const bool indented = !out.body.empty() && out.body.data() != line.data();
    out.keyword = out.body.starts_with('[') && !(indented && HasFreeText(m_current));
    if (out.comment) {
        out.body = TrimLine(out.body.substr(1));
    } else if (out.keyword) {
        TakeKeyword(out.body);
    }
    return true;
}

void CFileLines::TakeKeyword(std::string_view body)
{
    std::string_view rest = body;
    const EIPKeyword keyword = FindIPKeyword(TakeBracketed(rest));
    if (keyword == EIPKeyword::CommentChar) {
        const char defined = DefinedComment(TakeWord(rest));
        m_nextComment = defined != '\0' ? defined : m_comment;
        return;
    }
    m_current = keyword;
    if (keyword == EIPKeyword::Component) {
        m_component = TrimLine(rest.substr(0, rest.find(m_comment)));
    } else if (OpensSection(keyword)) {
        m_component = {};
    }
}

std::string_view FirstComponent(std::string_view text)
{
    CFileLines lines(text);
    for (SFileLine line; lines.Next(line);) {
        if (!lines.Component().empty()) {
            return lines.Component();
        }
    }
    return {};
}

std::optional<SComponentEnd> FindComponentEnd(std::string_view text, std::string_view component)
{
    std::optional<SComponentEnd> found;
    if (component.empty()) {
        return found;
    }
    CFileLines lines(text);
    for (SFileLine line; lines.Next(line);) {
        if (lines.Component() == component) {
            if (!line.comment && !line.body.empty()) {
                found = {line.end, lines.CommentCharacter()};
            }
        } else if (found) {
            break;
        }
    }
    return found;
}

} // namespace zov::ibis
