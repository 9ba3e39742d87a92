// SPDX-License-Identifier: Apache-2.0
/// One pass over the bytes of an exchange text, forgiving where the form asks for it.
///
/// The form escapes nothing, so a value may hold `R&D`, `<5%` or `5" disk` as it stands. A value
/// therefore ends at the quote that is followed by what can follow a value: another attribute or
/// the end of the tag. Well-formed XML of other writers (single quotes, entities, comments, CDATA,
/// processing instructions, any order and spacing) is read too.
///
///     CExchangeScanner scanner(text, tolerance);
///     CAttributeTable values(kNames);
///     while (scanner.Next() == EToken::Open) {
///         if (EqualsNoCase(scanner.Name(), "Pin") && scanner.ReadAttributes(values)) ...
///     }
#pragma once

#include "base/Result.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// The attributes that an element may have, and their values in the element read last.
///
/// It remembers which attribute came after which: files are written by programs, so the next
/// attribute is nearly always the one that stood there in the element before.
class CAttributeTable
{
public:
    static constexpr std::size_t kLimit = 32;

    CAttributeTable()
        : CAttributeTable(std::span<const std::string_view>())
    {
    }
    /// @param names  at most kLimit, living as long as the table
    explicit CAttributeTable(std::span<const std::string_view> names);

    [[nodiscard]] bool Has(std::size_t index) const { return (m_present >> index & 1U) != 0; }
    /// Bit per attribute that is there.
    [[nodiscard]] std::uint32_t Present() const { return m_present; }
    /// Valid UTF-8 without NUL, entities decoded; empty when it is not there. Valid until the table
    /// is read again.
    [[nodiscard]] std::string_view operator[](std::size_t index) const
    {
        return Has(index) ? m_values[index] : std::string_view();
    }

private:
    friend class CExchangeScanner;

    /// ` Name="`, compared as two words under a mask; of length 0 when it is longer than those.
    struct SLiteral
    {
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        std::uint64_t lowMask = 0;
        std::uint64_t highMask = 0;
        std::size_t length = 0;
        std::string_view name;
    };
    static constexpr std::uint8_t kUnknown = kLimit;     ///< an attribute of another name
    static constexpr std::uint8_t kStart = kLimit + 1;   ///< before the first
    static constexpr std::uint8_t kNothing = kLimit + 2; ///< no prediction

    [[nodiscard]] std::uint8_t Find(std::string_view name) const;
    void Expect(std::uint8_t after, std::uint8_t index);

    std::array<SLiteral, kLimit> m_literals{};
    std::array<std::string_view, kLimit + 1> m_values{};
    std::array<std::uint8_t, kLimit + 2> m_next{};
    std::uint32_t m_present = 0;
    std::uint8_t m_count = 0;
    std::deque<std::string> m_decoded; ///< values that are not in the text as they stand
};

/// What was not well-formed but could be read; told to the import log, the first ones singly.
class CToleranceLog
{
public:
    using TWrite = std::function<void(std::size_t line, std::string_view what)>;

    CToleranceLog() = default;
    explicit CToleranceLog(TWrite write)
        : m_write(std::move(write))
    {
    }
    /// True while single places are still told.
    [[nodiscard]] bool Wanted() const { return m_write && m_count < kToldSingly; }
    void Tell(std::size_t line, std::string_view what) { m_write(line, what); }
    void Count() { ++m_count; }
    /// Places beyond those told singly.
    [[nodiscard]] std::size_t Untold() const
    {
        return m_write && m_count > kToldSingly ? m_count - kToldSingly : 0;
    }

private:
    static constexpr std::size_t kToldSingly = 20;
    TWrite m_write;
    std::size_t m_count = 0;
};

class CExchangeScanner
{
public:
    enum class EToken : std::uint8_t
    {
        Open, ///< an element begins: Name(); ReadAttributes, Skip or SkipRest comes next
        Close,
        End, ///< of the text, every element closed
        Bad  ///< not readable: Error()
    };
    static constexpr std::size_t kDepthLimit = 64;
    static constexpr std::size_t kValueLimit = std::size_t{1} << 28U; ///< bytes of one value

    /// The text must be UTF-8 or bytes close to it, a byte-order mark is passed over.
    CExchangeScanner(std::string_view text, CToleranceLog& tolerance);

    /// To the next tag; text between tags is passed over.
    EToken Next();
    /// Name of the element that Next() opened.
    [[nodiscard]] std::string_view Name() const { return m_name; }
    /// Attributes of the element just opened; false when the text is not readable. An element
    /// without content (`/>`) is closed at once: no Close token follows, see HasContent().
    bool ReadAttributes(CAttributeTable& table);
    [[nodiscard]] bool HasContent() const { return m_hasContent; }
    /// Passes over the element that Next() just opened, attributes, content and end tag.
    bool Skip();
    /// Passes over what is left of an element with content whose attributes were read.
    bool SkipRest();
    /// The text of the element whose attributes were read, up to its end tag, which is taken too.
    /// Markup characters in it are taken as they stand.
    bool ReadText(std::string& out);
    /// The text in quotes at the begin of the content: up to the quote that is followed by
    /// `<Through` or the end tag. Empty when the content does not begin with a quote.
    bool ReadQuotedText(std::string& out);

    /// Format: the text is no XML. Limit, Unsupported: it may be, but goes beyond what is read.
    [[nodiscard]] const SError& Error() const { return m_error; }
    /// Line, counted from 1, of the tag that Next() came to.
    [[nodiscard]] std::size_t Line() { return LineOf(m_tagStart); }
    /// Share of the text up to that tag, 0 to 1.
    [[nodiscard]] double ShareDone() const
    {
        return static_cast<double>(m_tagStart - m_begin) /
               static_cast<double>(m_end == m_begin ? 1 : m_end - m_begin);
    }

private:
    bool Fail(const char* at, std::string text, EErr code = EErr::Format);
    std::size_t LineOf(const char* at);
    void Tolerate(const char* at, std::string_view what);

    bool PassMarkup();
    EToken CloseTag();
    bool PassUntil(std::string_view mark, std::string_view what);
    bool PassDocType();

    bool Matches(const CAttributeTable::SLiteral& literal, const char* at) const
    {
        if (m_end - at < 16) {
            return false;
        }
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        std::memcpy(&low, at, 8);
        std::memcpy(&high, at + 8, 8);
        return (((low ^ literal.low) & literal.lowMask) |
                ((high ^ literal.high) & literal.highMask)) == 0;
    }
    const char* FindNearQuote(const char* from, char quote, bool& special) const;
    const char* FindQuote(const char* from, char quote, bool& special) const;
    bool AttributeName(CAttributeTable& table, std::uint8_t& index, char& quote);
    bool FinishTag();
    const char* ValueEnd(const CAttributeTable& table, const char* start, const char* quoteAt,
                         char quote, bool& special);
    bool EndsValue(const CAttributeTable& table, bool knownOnly, const char* quoteAt) const;
    struct SFollower
    {
        const char* value = nullptr; ///< behind its opening quote; null when no attribute follows
        std::string_view name;
    };
    SFollower AttributeAt(const char* at) const;
    bool ValueIsPlain(const char* start) const;
    bool TagEndIsReal(const char* behind, char quote) const;
    bool KeepValue(CAttributeTable& table, std::uint8_t index, const char* start, const char* end,
                   bool special);
    bool KeepOddValue(CAttributeTable& table, std::uint8_t index, const char* start,
                      const char* end, bool special);
    bool Clean(const char* start, const char* end, std::string& out);
    const char* SkipSpace(const char* at) const;
    bool EndTagAt(const char* at, std::string_view name) const;

    const char* m_p;
    const char* m_end;
    const char* m_begin;
    const char* m_tagStart;
    std::string_view m_name;
    bool m_hasContent = false;
    bool m_told1252 = false;
    CAttributeTable m_skipped; ///< of elements that are passed over
    std::array<std::string_view, kDepthLimit> m_open{};
    std::size_t m_depth = 0;
    const char* m_lineAt; ///< line m_line begins at or before it, counted so far
    std::size_t m_line = 1;
    CToleranceLog& m_tolerance;
    SError m_error;
};

/// Text with the five predefined and the numeric entities decoded; an ampersand that begins none of
/// them stays. @param raw  set when such an ampersand was found
[[nodiscard]] std::string DecodeEntities(std::string_view text, bool& raw);

} // namespace zov
