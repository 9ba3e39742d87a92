// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace zov::network {

/// Walks the lines of a text that end in LF, CR LF or CR; the last may have no end.
class CTextLines
{
public:
    explicit CTextLines(std::string_view text)
        : m_text(text)
    {
    }

    /// The next line without its end; none behind the last.
    [[nodiscard]] std::optional<std::string_view> Next()
    {
        m_begin = m_next;
        if (m_begin >= m_text.size()) {
            return std::nullopt;
        }
        const std::size_t end = std::min(m_text.find_first_of("\r\n", m_begin), m_text.size());
        const bool isCrLf = m_text.substr(end, 2) == "\r\n";
        m_next = std::min(end + (isCrLf ? 2 : 1), m_text.size());
        ++m_line;
        return m_text.substr(m_begin, end - m_begin);
    }
    /// Makes Next() give the last line again.
    void PutBack()
    {
        m_next = m_begin;
        --m_line;
    }
    /// Number of the last line, from 1.
    [[nodiscard]] std::size_t Line() const { return m_line; }
    /// Where the last line begins, and where the next one does.
    [[nodiscard]] std::size_t Begin() const { return m_begin; }
    [[nodiscard]] std::size_t NextBegin() const { return m_next; }

private:
    std::string_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_next = 0;
    std::size_t m_line = 0;
};

} // namespace zov::network
