// SPDX-License-Identifier: Apache-2.0
/// Tags and content; the attributes of a tag stand in ExchangeAttributes.cpp.
#include "core/ExchangeScanner.h"

#include "base/Text.h"
#include "core/ExchangeChars.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov {

using namespace exchange;

namespace {

/// What most elements have: known names are passed over as fast as they are read.
constexpr std::array<std::string_view, 26> kCommonNames = {
    "ModelName", "SubModel",   "Manuf",  "MfgPartNumber", "Lookup",       "Size",
    "SizeUnit",  "ModelType",  "CktDef", "TrackFolder",   "Rv",           "Lv",
    "Cv",        "Cnom",       "Volt",   "UpTolerance",   "LowTolerance", "TCC",
    "Prefer",    "PriceA",     "PriceB", "PriceC",        "PriceBook",    "Comment",
    "DCBias",    "Temperature"};

} // namespace

// --- errors and positions ------------------------------------------------------------------------

CExchangeScanner::CExchangeScanner(std::string_view text, CToleranceLog& tolerance)
    : m_p(text.data())
    , m_end(text.data() + text.size())
    , m_begin(text.data())
    , m_tagStart(text.data())
    , m_skipped(kCommonNames)
    , m_lineAt(text.data())
    , m_tolerance(tolerance)
{
    if (text.substr(0, 3) == "\xEF\xBB\xBF") {
        m_p += 3;
    }
}

std::size_t CExchangeScanner::LineOf(const char* at)
{
    if (at < m_lineAt) {
        m_lineAt = m_begin;
        m_line = 1;
    }
    m_line += static_cast<std::size_t>(std::count(m_lineAt, at, '\n'));
    m_lineAt = at;
    return m_line;
}

bool CExchangeScanner::Fail(const char* at, std::string text, EErr code)
{
    const std::size_t line = LineOf(at);
    const char* lineStart = at;
    while (lineStart > m_begin && lineStart[-1] != '\n') {
        --lineStart;
    }
    m_error =
        FailAt(code, {{}, line, static_cast<std::size_t>(at - lineStart) + 1}, std::move(text));
    return false;
}

void CExchangeScanner::Tolerate(const char* at, std::string_view what)
{
    if (m_tolerance.Wanted()) {
        m_tolerance.Tell(LineOf(at), what);
    }
    m_tolerance.Count();
}

const char* CExchangeScanner::SkipSpace(const char* at) const
{
    while (at != m_end && IsSpace(*at)) {
        ++at;
    }
    return at;
}

// --- tags ----------------------------------------------------------------------------------------

CExchangeScanner::EToken CExchangeScanner::Next()
{
    for (;;) {
        m_p = SkipSpace(m_p);
        if (m_p != m_end && *m_p != '<') {
            const auto left = static_cast<std::size_t>(m_end - m_p);
            const auto* tag = static_cast<const char*>(std::memchr(m_p, '<', left));
            const char* stop = tag == nullptr ? m_end : tag;
            if (std::memchr(m_p, '\0', static_cast<std::size_t>(stop - m_p)) != nullptr) {
                Fail(m_p, "the text holds a NUL byte");
                return EToken::Bad;
            }
            if (m_depth == 0) {
                Fail(m_p, "text outside of the root element");
                return EToken::Bad;
            }
            m_p = stop;
        }
        if (m_p == m_end) {
            if (m_depth != 0) {
                Fail(m_p, fmt::format("the file ends inside the element '{}'",
                                      Shown(m_open[m_depth - 1])));
                return EToken::Bad;
            }
            return EToken::End;
        }
        m_tagStart = m_p++;
        const char c = m_p == m_end ? '\0' : *m_p;
        if (c == '/') {
            return CloseTag();
        }
        if (c == '!' || c == '?') {
            if (!PassMarkup()) {
                return EToken::Bad;
            }
        } else if (IsNameStart(c)) {
            const char* start = m_p;
            while (m_p != m_end && IsNameChar(*m_p)) {
                ++m_p;
            }
            m_name = {start, static_cast<std::size_t>(m_p - start)};
            return EToken::Open;
        } else if (m_depth != 0 && c != '\0') {
            Tolerate(m_tagStart, "'<' stands in the text");
        } else {
            Fail(m_tagStart, "a tag was expected");
            return EToken::Bad;
        }
    }
}

CExchangeScanner::EToken CExchangeScanner::CloseTag()
{
    const char* start = ++m_p;
    while (m_p != m_end && IsNameChar(*m_p)) {
        ++m_p;
    }
    const std::string_view name(start, static_cast<std::size_t>(m_p - start));
    m_p = SkipSpace(m_p);
    if (m_p == m_end || *m_p != '>') {
        Fail(m_tagStart, fmt::format("the end tag '{}' is not finished", Shown(name)));
        return EToken::Bad;
    }
    ++m_p;
    if (m_depth == 0) {
        Fail(m_tagStart, fmt::format("end tag '{}' without a begin", Shown(name)));
        return EToken::Bad;
    }
    const std::string_view open = m_open[m_depth - 1];
    if (name != open && !EqualsNoCase(name, open)) {
        Fail(m_tagStart,
             fmt::format("end tag '{}' found, '{}' expected", Shown(name), Shown(open)));
        return EToken::Bad;
    }
    --m_depth;
    return EToken::Close;
}

bool CExchangeScanner::PassUntil(std::string_view mark, std::string_view what)
{
    const std::string_view rest(m_p, static_cast<std::size_t>(m_end - m_p));
    const std::size_t at = rest.find(mark);
    if (at == std::string_view::npos) {
        return Fail(m_tagStart, fmt::format("{} is not finished", what));
    }
    if (rest.substr(0, at).find('\0') != std::string_view::npos) {
        return Fail(m_tagStart, "the text holds a NUL byte");
    }
    m_p += at + mark.size();
    return true;
}

bool CExchangeScanner::PassMarkup()
{
    const std::string_view rest(m_p, static_cast<std::size_t>(m_end - m_p));
    if (rest.front() == '?') {
        return PassUntil("?>", "a processing instruction");
    }
    if (rest.starts_with("!--")) {
        m_p += 3;
        return PassUntil("-->", "a comment");
    }
    if (rest.starts_with("![CDATA[")) {
        return PassUntil("]]>", "a CDATA section");
    }
    if (StartsWithNoCase(rest, "!DOCTYPE")) {
        return PassDocType();
    }
    if (m_depth == 0) {
        return Fail(m_tagStart, "a tag was expected");
    }
    Tolerate(m_tagStart, "'<' stands in the text");
    return true;
}

bool CExchangeScanner::PassDocType()
{
    bool inSubset = false;
    char quote = '\0';
    for (; m_p != m_end; ++m_p) {
        const char c = *m_p;
        if (c == '\0') {
            break;
        }
        if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (IsQuote(c)) {
            quote = c;
        } else if (c == '[' || c == ']') {
            inSubset = c == '[';
        } else if (c == '>' && !inSubset) {
            ++m_p;
            return true;
        }
    }
    return Fail(m_tagStart, "the document type is not finished");
}

// --- content -------------------------------------------------------------------------------------

bool CExchangeScanner::Skip()
{
    static constexpr std::array<std::string_view, 3> kCircuits = {"Connector", "Package", "SPICE"};
    const std::size_t outer = m_depth;
    std::string ignored;
    for (EToken token = EToken::Open;; token = Next()) {
        if (token == EToken::Bad || token == EToken::End) {
            return false;
        }
        if (token == EToken::Open) {
            if (!ReadAttributes(m_skipped)) {
                return false;
            }
            const bool circuit = std::any_of(kCircuits.begin(), kCircuits.end(),
                                             [&](auto name) { return EqualsNoCase(m_name, name); });
            if (m_hasContent && circuit && !ReadQuotedText(ignored)) {
                return false;
            }
        }
        if (m_depth == outer) {
            return true;
        }
    }
}

bool CExchangeScanner::SkipRest()
{
    for (const std::size_t outer = m_depth - 1; m_depth != outer;) {
        const EToken token = Next();
        if (token == EToken::Bad || token == EToken::End || (token == EToken::Open && !Skip())) {
            return false;
        }
    }
    return true;
}

bool CExchangeScanner::EndTagAt(const char* at, std::string_view name) const
{
    const std::string_view rest(at, static_cast<std::size_t>(m_end - at));
    if (!rest.starts_with("</") || !StartsWithNoCase(rest.substr(2), name)) {
        return false;
    }
    const char* behind = SkipSpace(at + 2 + name.size());
    return behind != m_end && *behind == '>';
}

bool CExchangeScanner::ReadText(std::string& out)
{
    out.clear();
    if (!m_hasContent) {
        return true;
    }
    const std::string_view name = m_open[m_depth - 1];
    const char* start = m_p;
    for (const char* at = m_p;; ++at) {
        at = static_cast<const char*>(std::memchr(at, '<', static_cast<std::size_t>(m_end - at)));
        if (at == nullptr) {
            return Fail(m_tagStart, fmt::format("the element '{}' has no end", Shown(name)));
        }
        if (EndTagAt(at, name)) {
            m_tagStart = at;
            m_p = at + 1;
            return Clean(start, at, out) && CloseTag() == EToken::Close;
        }
    }
}

bool CExchangeScanner::ReadQuotedText(std::string& out)
{
    out.clear();
    const char* start = SkipSpace(m_p);
    if (!m_hasContent || start == m_end || *start != '"') {
        return true;
    }
    const std::string_view name = m_open[m_depth - 1];
    ++start;
    for (const char* at = start;; ++at) {
        at = static_cast<const char*>(std::memchr(at, '"', static_cast<std::size_t>(m_end - at)));
        if (at == nullptr) {
            return Fail(start, fmt::format("the circuit text of '{}' has no end", Shown(name)),
                        EErr::Unsupported);
        }
        const char* behind = SkipSpace(at + 1);
        const std::string_view rest(behind, static_cast<std::size_t>(m_end - behind));
        if (StartsWithNoCase(rest, "<Through") || EndTagAt(behind, name)) {
            m_p = behind;
            return Clean(start, at, out);
        }
    }
}

} // namespace zov
