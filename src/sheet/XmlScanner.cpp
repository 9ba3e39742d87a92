// SPDX-License-Identifier: Apache-2.0
#include "sheet/XmlScanner.h"

#include "base/Text.h"

#include <algorithm>
#include <cstring>

namespace zov::sheet {
namespace {

constexpr std::size_t kBufferBytes = std::size_t{256} << 10U;
// One tag or one text; cells hold 32,767 characters, so this is generous.
constexpr std::size_t kMaxToken = std::size_t{16} << 20U;
constexpr std::size_t kMaxDepth = 256;
// NULs behind the content, so that callers may compare short fixed texts without looking at the
// end.
constexpr std::size_t kPadding = 64;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::string_view LocalName(std::string_view name)
{
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

} // namespace

CXmlScanner::CXmlScanner(CByteSource& source)
    : m_source(source)
    , m_buffer(kBufferBytes + kPadding)
{
}

EXmlToken CXmlScanner::Fail(EErr code, std::string text)
{
    m_error = zov::Fail(code, std::move(text));
    return EXmlToken::Error;
}

EXmlToken CXmlScanner::Truncated()
{
    return m_error.text.empty() ? Fail(EErr::Format, "ends within an element") : EXmlToken::Error;
}

// Reads more behind what is there; what lies before m_pos is given up. False at the end or on an
// error.
bool CXmlScanner::Fill()
{
    if (m_sourceEnded) {
        return false;
    }
    if (m_pos > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_pos, m_end - m_pos);
        m_end -= m_pos;
        m_pos = 0;
    }
    if (m_end > kMaxToken) {
        Fail(EErr::Limit, "a single text or tag of more than 16 MiB");
        m_sourceEnded = true;
        return false;
    }
    if (m_end * 2 > m_buffer.size()) {
        m_buffer.resize(m_buffer.size() * 2);
    }
    const bool direct = m_encoding == EEncoding::Utf8;
    if (!direct) {
        m_raw.resize(kBufferBytes / 4);
    }
    char* const target = direct ? m_buffer.data() + m_end : m_raw.data() + m_rawKept;
    const std::size_t room = direct ? m_buffer.size() - kPadding - m_end : m_raw.size() - m_rawKept;
    CResult<std::size_t> got = m_source.Read(target, room);
    if (!got.Ok()) {
        m_error = got.TakeError();
        m_sourceEnded = true;
        return false;
    }
    m_sourceEnded = *got == 0;
    if (direct) {
        m_end += *got;
    } else if (!AppendDecoded({m_raw.data(), m_rawKept + *got})) {
        return false;
    }
    std::memset(m_buffer.data() + m_end, 0, kPadding);
    return !m_sourceEnded;
}

// By byte-order mark, the first character's shape, or the declaration. Needs the first bytes in
// m_raw.
bool CXmlScanner::DetectEncoding()
{
    const std::string_view head(m_raw.data(), m_raw.size());
    const auto starts = [&](std::string_view mark) { return head.starts_with(mark); };
    if (starts("\xFF\xFE") || starts(std::string_view("<\0", 2))) {
        m_encoding = EEncoding::Utf16Little;
    } else if (starts("\xFE\xFF") || starts(std::string_view("\0<", 2))) {
        m_encoding = EEncoding::Utf16Big;
    } else {
        m_encoding = EEncoding::Utf8;
    }
    const std::string_view declaration = head.substr(0, std::min(head.find("?>"), head.size()));
    const std::size_t at = declaration.find("encoding=");
    if (m_encoding != EEncoding::Utf8 || !starts("<?xml") || at == std::string_view::npos) {
        return true;
    }
    const std::string_view rest = declaration.substr(at + 9);
    const std::string_view name =
        rest.size() < 2 ? rest : rest.substr(1, std::min(rest.find(rest[0], 1), rest.size()) - 1);
    if (EqualsNoCase(name, "iso-8859-1") || EqualsNoCase(name, "windows-1252")) {
        m_encoding = EEncoding::Windows1252;
    } else if (!EqualsNoCase(name, "utf-8") && !EqualsNoCase(name, "us-ascii")) {
        Fail(EErr::Unsupported, "the text encoding '" + std::string(name) + "' is not read");
        return false;
    }
    return true;
}

bool CXmlScanner::AppendDecoded(std::string_view bytes)
{
    if (m_encoding == EEncoding::Unknown) {
        m_raw.resize(bytes.size());
        if (!DetectEncoding()) {
            m_sourceEnded = true;
            return false;
        }
        if (m_encoding == EEncoding::Utf8 && bytes.starts_with("\xEF\xBB\xBF")) {
            bytes.remove_prefix(3);
        }
    }
    m_decoded.clear();
    if (m_encoding == EEncoding::Utf8) {
        m_decoded = bytes;
    } else if (m_encoding == EEncoding::Windows1252) {
        m_decoded = Windows1252ToUtf8(bytes);
    } else {
        std::u16string units;
        const bool little = m_encoding == EEncoding::Utf16Little;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            const auto low = static_cast<unsigned char>(bytes[i + (little ? 0 : 1)]);
            const auto high = static_cast<unsigned char>(bytes[i + (little ? 1 : 0)]);
            const auto unit = static_cast<char16_t>(low | (high << 8U));
            if (unit != 0xFEFF) {
                units += unit;
            }
        }
        std::size_t used = bytes.size() & ~std::size_t{1};
        if (!units.empty() && (units.back() & 0xFC00U) == 0xD800U && !m_sourceEnded) {
            units.pop_back(); // its second half comes with the next bytes
            used -= 2;
        }
        m_decoded = Utf16ToUtf8(units);
        m_rawKept = bytes.size() - used;
        std::memmove(m_raw.data(), bytes.data() + used, m_rawKept);
    }
    if (m_buffer.size() < m_end + m_decoded.size() + kPadding) {
        m_buffer.resize(m_end + m_decoded.size() + kPadding);
    }
    std::memcpy(m_buffer.data() + m_end, m_decoded.data(), m_decoded.size());
    m_end += m_decoded.size();
    return true;
}

// At least so many bytes from m_pos on.
bool CXmlScanner::Ensure(std::size_t count)
{
    while (m_end - m_pos < count) {
        if (!Fill()) {
            return m_end - m_pos >= count;
        }
    }
    return true;
}

// Offset from m_pos, which stays valid when the buffer moves.
std::size_t CXmlScanner::FindChar(char c, std::size_t from)
{
    for (;;) {
        const char* const begin = m_buffer.data() + m_pos;
        const std::size_t size = m_end - m_pos;
        if (from < size) {
            if (const void* hit = std::memchr(begin + from, c, size - from)) {
                return static_cast<std::size_t>(static_cast<const char*>(hit) - begin);
            }
        }
        from = std::max(from, size);
        if (!Fill()) {
            return kNone;
        }
    }
}

std::size_t CXmlScanner::FindText(std::string_view text, std::size_t from)
{
    for (;;) {
        const std::size_t at = FindChar(text.back(), from + text.size() - 1);
        if (at == kNone) {
            return kNone;
        }
        const std::size_t start = at + 1 - text.size();
        if (std::string_view(m_buffer.data() + m_pos + start, text.size()) == text) {
            return start;
        }
        from = start + 1;
    }
}

// The > of a tag; one within an attribute's quotes is none.
std::size_t CXmlScanner::FindTagEnd(std::size_t from)
{
    char quote = 0;
    for (std::size_t at = from;; ++at) {
        if (m_pos + at >= m_end && !Ensure(at + 1)) {
            return kNone;
        }
        const char c = m_buffer[m_pos + at];
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (c == '>') {
            return at;
        } else if (c == '"' || c == '\'') {
            quote = c;
        }
    }
}

EXmlToken CXmlScanner::Next()
{
    for (;;) {
        if (m_pos == m_end && !Ensure(1)) {
            if (!m_error.text.empty()) {
                return EXmlToken::Error;
            }
            return m_depth == 0 && m_rootSeen ? EXmlToken::Eof : Truncated();
        }
        if (m_buffer[m_pos] != '<') {
            const std::size_t length = FindChar('<', 0);
            if (!m_error.text.empty()) {
                return EXmlToken::Error;
            }
            m_text = {m_buffer.data() + m_pos, length == kNone ? m_end - m_pos : length};
            m_pos += m_text.size();
            if (m_depth == 0) {
                continue; // white space around the root
            }
            m_literal = false;
            return EXmlToken::Text;
        }
        if (!Ensure(2)) {
            return Truncated();
        }
        const char c = m_buffer[m_pos + 1];
        if (c == '/') {
            return EndTag();
        }
        if (c != '!' && c != '?') {
            return StartTag();
        }
        const EXmlToken token = Markup();
        if (token != EXmlToken::Eof) {
            return token;
        }
    }
}

// Comment, CDATA or processing instruction; Eof means passed over.
EXmlToken CXmlScanner::Markup()
{
    constexpr std::string_view kCdata = "<![CDATA[";
    std::string_view closing = "?>";
    if (m_buffer[m_pos + 1] == '!') {
        if (!Ensure(4)) {
            return Truncated();
        }
        const std::string_view head(m_buffer.data() + m_pos, 4);
        if (head == "<!--") {
            closing = "-->";
        } else if (Ensure(kCdata.size()) &&
                   std::string_view(m_buffer.data() + m_pos, kCdata.size()) == kCdata) {
            closing = "]]>";
        } else {
            return Fail(EErr::Format, "a document type is not allowed in a workbook");
        }
    }
    const std::size_t start = closing == "?>" ? 2 : closing == "-->" ? 4 : kCdata.size();
    const std::size_t end = FindText(closing, start);
    if (end == kNone) {
        return Truncated();
    }
    m_text = {m_buffer.data() + m_pos + start, end - start};
    m_pos += end + closing.size();
    if (closing != "]]>" || m_depth == 0) {
        return EXmlToken::Eof;
    }
    m_literal = true;
    return EXmlToken::Text;
}

EXmlToken CXmlScanner::EndTag()
{
    const std::size_t end = FindChar('>', 2);
    if (end == kNone) {
        return Truncated();
    }
    if (m_depth == 0) {
        return Fail(EErr::Format, "an element ends that has not begun");
    }
    --m_depth;
    m_name = LocalName(Trim({m_buffer.data() + m_pos + 2, end - 2}));
    m_pos += end + 1;
    return EXmlToken::End;
}

EXmlToken CXmlScanner::StartTag()
{
    const std::size_t end = FindTagEnd(1);
    if (end == kNone) {
        return Truncated();
    }
    std::string_view tag(m_buffer.data() + m_pos + 1, end - 1);
    m_pos += end + 1;
    m_selfClosing = !tag.empty() && tag.back() == '/';
    if (m_selfClosing) {
        tag.remove_suffix(1);
    }
    std::size_t nameEnd = 0;
    while (nameEnd < tag.size() && !IsSpace(tag[nameEnd])) {
        ++nameEnd;
    }
    if (m_depth == 0 && m_rootSeen) {
        return Fail(EErr::Format, "more than one root element");
    }
    m_rootSeen = true;
    m_name = LocalName(tag.substr(0, nameEnd));
    m_attributes = tag.substr(nameEnd);
    if (!m_selfClosing && ++m_depth > kMaxDepth) {
        return Fail(EErr::Limit, "elements are nested more than 256 deep");
    }
    return EXmlToken::Start;
}

std::string_view CXmlScanner::Attribute(std::string_view name) const
{
    std::string_view rest = m_attributes;
    for (;;) {
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos) {
            return {};
        }
        const std::string_view found = LocalName(Trim(rest.substr(0, equals)));
        rest.remove_prefix(equals + 1);
        while (!rest.empty() && IsSpace(rest.front())) {
            rest.remove_prefix(1);
        }
        if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) {
            return {};
        }
        const std::size_t close = rest.find(rest[0], 1);
        if (close == std::string_view::npos) {
            return {};
        }
        if (found == name) {
            return rest.substr(1, close - 1);
        }
        rest.remove_prefix(close + 1);
    }
}

bool CXmlScanner::SkipElement()
{
    if (m_selfClosing) {
        return true;
    }
    const std::size_t outside = m_depth - 1;
    while (m_depth > outside) {
        const EXmlToken token = Next();
        if (token == EXmlToken::Error || token == EXmlToken::Eof) {
            return false;
        }
    }
    return true;
}

} // namespace zov::sheet
