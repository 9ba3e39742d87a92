// SPDX-License-Identifier: Apache-2.0
/// The lines of an IBIS file with their places, for work that must leave every byte where it is.
#pragma once

#include "ibis/Keywords.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace zov::ibis {

struct SFileLine
{
    std::string_view whole; ///< with its line end
    std::string_view body;  ///< trimmed; of a comment line without the comment character
    std::size_t begin = 0;
    std::size_t end = 0;    ///< behind the line end
    std::size_t number = 0; ///< from 1
    bool comment = false;   ///< begins with the comment character
    bool keyword = false;
};

class CFileLines
{
public:
    explicit CFileLines(std::string_view text)
        : m_text(text)
    {
    }
    bool Next(SFileLine& out);
    /// In force for the line given last.
    [[nodiscard]] char CommentCharacter() const { return m_comment; }
    /// Name of the component whose section is open; empty when none is.
    [[nodiscard]] std::string_view Component() const { return m_component; }

private:
    void TakeKeyword(std::string_view body);

    std::string_view m_text;
    std::size_t m_next = 0;
    std::size_t m_number = 0;
    char m_comment = '|';
    char m_nextComment = '|';
    EIPKeyword m_current = EIPKeyword::None;
    std::string_view m_component;
};

/// Name of the first component; empty for none.
[[nodiscard]] std::string_view FirstComponent(std::string_view text);

struct SComponentEnd
{
    std::size_t end = 0; ///< behind the last line of the section that is no comment
    char comment = '|';  ///< in force there
};
[[nodiscard]] std::optional<SComponentEnd> FindComponentEnd(std::string_view text,
                                                            std::string_view component);

} // namespace zov::ibis
