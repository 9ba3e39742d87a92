// SPDX-License-Identifier: Apache-2.0
/// A forward scanner for the two large XML parts of a workbook, the cells and the shared strings.
/// It sees each byte about once, through one buffer that is used again and again, and knows only
/// what those parts need: no validation, no entities beyond the predefined ones, no document type.
///
///     CXmlScanner scanner(part);
///     while (scanner.Next() == EXmlToken::Start) { if (scanner.Name() == "row") ... }
#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

/// Bytes in order, from wherever.
class CByteSource
{
public:
    virtual ~CByteSource() = default;
    /// Fills at most `size` bytes and returns how many; 0 at the end.
    virtual CResult<std::size_t> Read(char* buffer, std::size_t size) = 0;
};

enum class EXmlToken
{
    Start, ///< Name, Attribute, SelfClosing
    End,   ///< Name; a self-closing element has none
    Text,  ///< Text, IsLiteral
    Eof,   ///< after the root element has ended
    Error  ///< Failure
};

class CXmlScanner
{
public:
    explicit CXmlScanner(CByteSource& source);

    /// Comments and processing instructions are passed over.
    EXmlToken Next();

    /// Without its prefix. Views into the scanner live until the next call.
    [[nodiscard]] std::string_view Name() const { return m_name; }
    [[nodiscard]] bool SelfClosing() const { return m_selfClosing; }
    /// Raw value of an attribute of the current start tag, without regard to its prefix; empty when
    /// missing.
    [[nodiscard]] std::string_view Attribute(std::string_view name) const;
    /// Raw text up to the next tag.
    [[nodiscard]] std::string_view Text() const { return m_text; }
    /// The text is a CDATA section: nothing in it is escaped.
    [[nodiscard]] bool IsLiteral() const { return m_literal; }
    /// Open elements, the current start tag included unless it is self-closing.
    [[nodiscard]] std::size_t Depth() const { return m_depth; }
    [[nodiscard]] const SError& Failure() const { return m_error; }

    /// Passes over the rest of an element whose start tag was read last; false on an error.
    bool SkipElement();

    /// For callers with a quick way of their own over the commonest bytes: what is in the buffer,
    /// ended by a NUL that is not part of it. They move on by SetCursor to a point between two
    /// tokens, with as many elements open as before.
    [[nodiscard]] const char* Cursor() const { return m_buffer.data() + m_pos; }
    void SetCursor(const char* cursor)
    {
        m_pos = static_cast<std::size_t>(cursor - m_buffer.data());
    }

private:
    enum class EEncoding
    {
        Unknown,
        Utf8,
        Windows1252,
        Utf16Little,
        Utf16Big
    };

    bool Fill();
    bool DetectEncoding();
    bool AppendDecoded(std::string_view bytes);
    bool Ensure(std::size_t count);
    std::size_t FindChar(char c, std::size_t from);
    std::size_t FindText(std::string_view text, std::size_t from);
    std::size_t FindTagEnd(std::size_t from);
    EXmlToken Markup();
    EXmlToken StartTag();
    EXmlToken EndTag();
    EXmlToken Fail(EErr code, std::string text);
    EXmlToken Truncated();

    CByteSource& m_source;
    std::vector<char> m_buffer; ///< content [0, m_end), then kPadding NULs
    std::vector<char> m_raw;
    std::string m_decoded;
    std::size_t m_pos = 0;
    std::size_t m_end = 0;
    std::size_t m_rawKept = 0; ///< bytes of an unfinished UTF-16 character
    EEncoding m_encoding = EEncoding::Unknown;
    bool m_sourceEnded = false;

    std::string_view m_name;
    std::string_view m_attributes;
    std::string_view m_text;
    bool m_selfClosing = false;
    bool m_literal = false;
    bool m_rootSeen = false;
    std::size_t m_depth = 0;
    SError m_error;
};

/// Raw XML text as UTF-8: entities and character references resolved (unknown ones stay as they
/// stand), line ends as LF, invalid UTF-8 taken as Windows-1252, and the _xHHHH_ escapes of
/// workbooks resolved. Appends to `out`.
void AppendXmlText(std::string& out, std::string_view raw, bool literal);
/// True when AppendXmlText would append the text as it is.
[[nodiscard]] bool IsPlainXmlText(std::string_view raw);

} // namespace zov::sheet
