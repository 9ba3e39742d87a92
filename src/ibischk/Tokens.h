// SPDX-License-Identifier: Apache-2.0
/// Words of a line. All are views into the line; SLine::Place tells where they stand in the file.
#pragma once

#include "ibischk/Types.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace zov::ibischk {

/// A keyword line behind its "]", or a data line: comment cut off, trimmed at both ends.
struct SLine
{
    std::string_view text;
    std::size_t line = 0;
    const char* origin =
        nullptr; ///< character of the line that stands in column `columnBefore` + 1
    std::size_t columnBefore = 0;

    /// The place of a part of the text.
    [[nodiscard]] SPlace Place(std::string_view part) const
    {
        return {line, columnBefore + static_cast<std::size_t>(part.data() - origin) + 1};
    }
    /// The place of the text.
    [[nodiscard]] SPlace Place() const { return Place(text); }
};

[[nodiscard]] constexpr bool IsSpaceOrTab(char c)
{
    return c == ' ' || c == '\t';
}

/// Takes words off the front of a text.
class CTokens
{
public:
    explicit CTokens(std::string_view text)
        : m_rest(text)
    {
        SkipBlanks();
    }

    [[nodiscard]] bool AtEnd() const { return m_rest.empty(); }
    /// The next word; empty at the end.
    std::string_view Next()
    {
        std::size_t length = 0;
        while (length < m_rest.size() && !IsSpaceOrTab(m_rest[length])) {
            ++length;
        }
        return Take(length);
    }
    /// The next word of `name = value`, `name=value`: stops at "=", which is no part of it.
    std::string_view NextName()
    {
        std::size_t length = 0;
        while (length < m_rest.size() && !IsSpaceOrTab(m_rest[length]) && m_rest[length] != '=') {
            ++length;
        }
        return Take(length);
    }
    /// Takes a "=" when one is next.
    bool TakeEquals()
    {
        if (m_rest.empty() || m_rest.front() != '=') {
            return false;
        }
        Take(1);
        return true;
    }
    /// Takes one character when it is next, blanks around it too.
    bool TakeCharacter(char c)
    {
        if (m_rest.empty() || m_rest.front() != c) {
            return false;
        }
        Take(1);
        return true;
    }
    /// Everything that is left, without blanks at the front.
    [[nodiscard]] std::string_view Rest() const { return m_rest; }

private:
    std::string_view Take(std::size_t length)
    {
        const std::string_view token = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        SkipBlanks();
        return token;
    }
    void SkipBlanks()
    {
        std::size_t i = 0;
        while (i < m_rest.size() && IsSpaceOrTab(m_rest[i])) {
            ++i;
        }
        m_rest.remove_prefix(i);
    }

    std::string_view m_rest;
};

/// Fills `out` with the words of a text.
/// @return how many words there are, also when that is more than fit
std::size_t SplitTokens(std::string_view text, std::span<std::string_view> out);

} // namespace zov::ibischk
