// SPDX-License-Identifier: Apache-2.0
/// Lines of a curve file, and what tells one kind from another.
#pragma once

#include "base/Text.h"
#include "curve/Curve.h"

#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

namespace zov::curve {

/// Characters of a line, its line feed included; the rest of a longer one is a line of its own.
constexpr std::size_t kLineRoom = 511;

struct SLine
{
    std::string_view text;  ///< without its line break
    std::size_t number = 0; ///< line of the file, from 1
    bool ended = false;     ///< a line break follows the text
};

/// Walks over the lines of a text. A carriage return before a line feed belongs to the line break.
class CLineReader
{
public:
    explicit CLineReader(std::string_view text)
        : m_rest(text)
    {
    }

    /// False at the end.
    [[nodiscard]] bool Next(SLine& line)
    {
        if (m_rest.empty()) {
            return false;
        }
        m_fileLine += m_ended ? 1 : 0;
        // One more, since a carriage return does not count.
        const std::size_t window = m_rest.size() < kLineRoom + 1 ? m_rest.size() : kLineRoom + 1;
        const void* found = std::memchr(m_rest.data(), '\n', window);
        std::size_t length = window;
        if (found != nullptr) {
            length = static_cast<std::size_t>(static_cast<const char*>(found) - m_rest.data());
            const bool withReturn = length > 0 && m_rest[length - 1] == '\r';
            if (length - (withReturn ? 1 : 0) < kLineRoom) {
                line = {m_rest.substr(0, length - (withReturn ? 1 : 0)), m_fileLine, true};
                m_rest.remove_prefix(length + 1);
                m_ended = true;
                return true;
            }
        }
        length = length < kLineRoom ? length : kLineRoom;
        line = {m_rest.substr(0, length), m_fileLine, false};
        m_rest.remove_prefix(length);
        m_ended = false;
        return true;
    }

    /// What has not been read yet.
    [[nodiscard]] std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
    std::size_t m_fileLine = 0;
    bool m_ended = true;
};

/// How much of a line a banner has to be.
enum class EBannerEnd
{
    Anything, ///< whatever follows
    LineBreak ///< nothing but white space and the line break, unless the line is the banner alone
};
[[nodiscard]] bool IsBanner(const SLine& line, std::string_view banner, EBannerEnd end);

/// "*[...": a line of attributes.
[[nodiscard]] inline bool IsAttributeLine(std::string_view line)
{
    return line.size() > 1 && line[0] == '*' && line[1] == '[';
}
/// The groups [key=value] of such a line. A group without "=" is a key; one without "]" ends the
/// line.
[[nodiscard]] TAttributeGroup ReadAttributes(std::string_view line);

/// The next run of characters that are no white space; empty at the end.
[[nodiscard]] inline std::string_view NextToken(std::string_view& rest)
{
    std::size_t begin = 0;
    while (begin < rest.size() && IsSpace(rest[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < rest.size() && !IsSpace(rest[end])) {
        ++end;
    }
    const std::string_view token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

/// The next token as a number, which must be all of it; also "nan" and "inf". The token is passed
/// over only when it is one.
[[nodiscard]] std::optional<double> NextNumber(std::string_view& rest);

} // namespace zov::curve
