// SPDX-License-Identifier: Apache-2.0
/// The pattern "*%s*" of a name that is looked up, and what a scan can do with it.
#pragma once

#include "core/ZovRcdProps.h"

#include <string>
#include <string_view>

namespace zov {

class CNamePattern
{
public:
    explicit CNamePattern(std::string_view name);

    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// The longest run of the name without `*` and `?`, folded; every text that matches holds it.
    [[nodiscard]] std::string_view Literal() const { return m_literal; }
    /// The name is that run: a text that holds it matches.
    [[nodiscard]] bool IsPlain() const { return m_plain; }
    /// The whole name, folded.
    [[nodiscard]] std::string_view FoldedName() const { return m_folded; }
    /// No text of that property can match, whatever the library holds.
    [[nodiscard]] bool IsHopeless(EPropId key) const;

    /// Whether a text matches the pattern or equals the name.
    [[nodiscard]] bool Matches(std::string_view text) const;
    [[nodiscard]] bool Equals(std::string_view text) const;

    /// What of a record's property matches: a keyword of `Lookup`, the text of another string
    /// property. One that equals the name is preferred; none matches: an empty view.
    struct SMatch
    {
        std::string_view text;
        bool exact = false;
        explicit operator bool() const { return text.data() != nullptr; }
    };
    [[nodiscard]] SMatch MatchIn(const CZovRcdProps& record, EPropId key) const;

private:
    std::string m_name;
    std::string m_pattern;
    std::string m_folded;
    std::string m_literal;
    bool m_plain = true;
    bool m_valid = true;
};

} // namespace zov
