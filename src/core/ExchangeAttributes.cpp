// SPDX-License-Identifier: Apache-2.0
/// Attributes of a tag: where a value ends when nothing is escaped, and what is kept of it.
#include "base/Text.h"
#include "core/ExchangeChars.h"
#include "core/ExchangeScanner.h"
#include "core/SubModels.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <fmt/format.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zov {

using namespace exchange;

namespace {

constexpr std::size_t kLiteralRoom = 16;

#if defined(__SSE2__)
/// What 16 bytes hold: a bit per quote, and a bit per byte that needs a closer look.
struct SBlock
{
    unsigned quotes;
    unsigned special;
};

inline SBlock LookAt(const char* at, char quote)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    // The high bit of a byte says "beyond ASCII", the comparisons set it for the others.
    const __m128i odd =
        _mm_or_si128(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, _mm_setzero_si128())),
                     _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')),
                                  _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<'))));
    const __m128i quotes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(quote));
    return {static_cast<unsigned>(_mm_movemask_epi8(quotes)),
            static_cast<unsigned>(_mm_movemask_epi8(odd))};
}
#endif

/// Bytes of a value that need a closer look: markup, NUL, anything beyond ASCII.
bool IsSpecial(char c)
{
    return c == '&' || c == '<' || c == '\0' || static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

// --- CAttributeTable ---------------------------------------------------------------------------

CAttributeTable::CAttributeTable(std::span<const std::string_view> names)
    : m_count(static_cast<std::uint8_t>(names.size()))
{
    assert(names.size() <= kLimit);
    for (std::size_t i = 0; i < names.size(); ++i) {
        SLiteral& literal = m_literals[i];
        literal.name = names[i];
        const std::string text = " " + std::string(names[i]) + "=\"";
        if (text.size() > kLiteralRoom) {
            continue;
        }
        std::array<char, kLiteralRoom> bytes{};
        std::array<char, kLiteralRoom> mask{};
        std::memcpy(bytes.data(), text.data(), text.size());
        std::fill_n(mask.begin(), text.size(), '\xFF');
        std::memcpy(&literal.low, bytes.data(), 8);
        std::memcpy(&literal.high, bytes.data() + 8, 8);
        std::memcpy(&literal.lowMask, mask.data(), 8);
        std::memcpy(&literal.highMask, mask.data() + 8, 8);
        literal.length = text.size();
    }
    m_next.fill(kNothing);
    Expect(kStart, 0);
    for (std::uint8_t i = 0; i < m_count; ++i) {
        Expect(i, static_cast<std::uint8_t>(i + 1));
    }
}

void CAttributeTable::Expect(std::uint8_t after, std::uint8_t index)
{
    m_next[after] = index < m_count && m_literals[index].length != 0 ? index : kNothing;
}

std::uint8_t CAttributeTable::Find(std::string_view name) const
{
    for (std::uint8_t i = 0; i < m_count; ++i) {
        if (m_literals[i].name.size() == name.size() && EqualsNoCase(m_literals[i].name, name)) {
            return i;
        }
    }
    return kUnknown;
}

// --- attributes ----------------------------------------------------------------------------------

/// The next such quote, or the end of the text; `special` is set when what lies before needs a
/// closer look.
const char* CExchangeScanner::FindQuote(const char* from, char quote, bool& special) const
{
#if defined(__SSE2__)
    for (; m_end - from >= 16; from += 16) {
        const SBlock block = LookAt(from, quote);
        if (block.quotes != 0) {
            special |= (block.special & ((block.quotes & (0U - block.quotes)) - 1U)) != 0;
            return from + std::countr_zero(block.quotes);
        }
        special |= block.special != 0;
    }
#endif
    for (; from != m_end && *from != quote; ++from) {
        special |= IsSpecial(*from);
    }
    return from;
}

CExchangeScanner::SFollower CExchangeScanner::AttributeAt(const char* at) const
{
    if (at == m_end || !IsNameStart(*at)) {
        return {};
    }
    const char* start = at;
    while (at != m_end && IsNameChar(*at)) {
        ++at;
    }
    const std::string_view name(start, static_cast<std::size_t>(at - start));
    at = SkipSpace(at);
    if (at == m_end || *at != '=') {
        return {};
    }
    at = SkipSpace(at + 1);
    return at != m_end && IsQuote(*at) ? SFollower{at + 1, name} : SFollower{};
}

/// True when the first quote behind `start` is followed by what follows a value.
bool CExchangeScanner::ValueIsPlain(const char* start) const
{
    bool special = false;
    const char* end = FindQuote(start, start[-1], special);
    if (end == m_end) {
        return false;
    }
    const char* at = SkipSpace(end + 1);
    return at == m_end || *at == '>' || *at == '/' ||
           (at != end + 1 && AttributeAt(at).value != nullptr);
}

/// A `">` ends the tag when an element or a quoted circuit follows. When text follows it does so
/// too, unless a later quote on that line shows that the value went on.
bool CExchangeScanner::TagEndIsReal(const char* behind, char quote) const
{
    const char* at = SkipSpace(behind);
    if (at == m_end || *at == '<' || *at == '"') {
        return true;
    }
    constexpr std::ptrdiff_t kLook = 1024;
    const char* stop = behind + std::min(kLook, m_end - behind);
    for (at = behind; at != stop && *at != '<' && *at != '\n'; ++at) {
        if (*at != quote || at + 1 == m_end) {
            continue;
        }
        const char* next = SkipSpace(at + 1);
        if (next != m_end &&
            ((next != at + 1 && AttributeAt(next).value != nullptr) || *next == '>' ||
             (*next == '/' && next + 1 != m_end && next[1] == '>'))) {
            return false;
        }
    }
    return true;
}

/// @param knownOnly  only an attribute of the table ends the value
bool CExchangeScanner::EndsValue(const CAttributeTable& table, bool knownOnly,
                                 const char* quoteAt) const
{
    const char* at = SkipSpace(quoteAt + 1);
    if (at == m_end) {
        return true;
    }
    if (*at == '>') {
        return TagEndIsReal(at + 1, *quoteAt);
    }
    if (*at == '/' && at + 1 != m_end && at[1] == '>') {
        return TagEndIsReal(at + 2, *quoteAt);
    }
    if (at == quoteAt + 1) {
        return false;
    }
    const SFollower follower = AttributeAt(at);
    if (follower.value == nullptr) {
        return false;
    }
    // A name that is not known may also be text: then its own value tells.
    return table.Find(follower.name) != CAttributeTable::kUnknown ||
           (!knownOnly && ValueIsPlain(follower.value));
}

/// Where a value ends that is not followed by what was expected; null when it never does.
const char* CExchangeScanner::ValueEnd(const CAttributeTable& table, const char* start,
                                       const char* quoteAt, char quote, bool& special)
{
    // A circuit's own text is full of name="value"; only an attribute of the element ends it.
    const char* first = quoteAt;
    const char* seen = start;
    bool circuit = false;
    for (; quoteAt != m_end; quoteAt = FindQuote(quoteAt + 1, quote, special)) {
        circuit = circuit || IsCircuitText({seen, static_cast<std::size_t>(quoteAt - seen)});
        seen = quoteAt;
        if (EndsValue(table, circuit, quoteAt)) {
            break;
        }
    }
    if (quoteAt == m_end) {
        Fail(start, "a value in quotes has no end");
        return nullptr;
    }
    if (quoteAt != first) {
        Tolerate(start, "a value holds quotes, which were read as they stand");
    }
    return quoteAt;
}

/// From behind a value or the element's name to behind the opening quote of the next value.
bool CExchangeScanner::AttributeName(CAttributeTable& table, std::uint8_t& index, char& quote)
{
    const char* start = m_p;
    if (!IsNameStart(*m_p)) {
        return Fail(m_p, fmt::format("an attribute of '{}' was expected", Shown(m_name)));
    }
    while (m_p != m_end && IsNameChar(*m_p)) {
        ++m_p;
    }
    const std::string_view name(start, static_cast<std::size_t>(m_p - start));
    m_p = SkipSpace(m_p);
    if (m_p == m_end || *m_p != '=') {
        return Fail(start,
                    fmt::format("attribute '{}' of '{}' has no value", Shown(name), Shown(m_name)));
    }
    m_p = SkipSpace(m_p + 1);
    if (m_p == m_end || !IsQuote(*m_p)) {
        return Fail(start, fmt::format("the value of '{}' of '{}' is not in quotes", Shown(name),
                                       Shown(m_name)));
    }
    quote = *m_p++;
    index = table.Find(name);
    return true;
}

/// At the end of a tag; false when there is none.
bool CExchangeScanner::FinishTag()
{
    m_hasContent = *m_p == '>';
    if (!m_hasContent) {
        ++m_p;
    } else {
        if (m_depth == kDepthLimit) {
            return Fail(m_tagStart,
                        fmt::format("elements are nested more than {} deep", kDepthLimit),
                        EErr::Limit);
        }
        m_open[m_depth++] = m_name;
    }
    ++m_p;
    return true;
}

inline bool CExchangeScanner::KeepValue(CAttributeTable& table, std::uint8_t index,
                                        const char* start, const char* end, bool special)
{
    const auto size = static_cast<std::size_t>(end - start);
    if (special || size > kValueLimit || index >= CAttributeTable::kLimit || table.Has(index)) {
        return KeepOddValue(table, index, start, end, special);
    }
    table.m_values[index] = {start, size};
    table.m_present |= 1U << index;
    return true;
}

/// FindQuote for values that are mostly short.
inline const char* CExchangeScanner::FindNearQuote(const char* from, char quote,
                                                   bool& special) const
{
#if defined(__SSE2__)
    if (m_end - from >= 16) {
        const SBlock block = LookAt(from, quote);
        if (block.quotes != 0) {
            special = (block.special & ((block.quotes & (0U - block.quotes)) - 1U)) != 0;
            return from + std::countr_zero(block.quotes);
        }
    }
#endif
    return FindQuote(from, quote, special);
}

bool CExchangeScanner::ReadAttributes(CAttributeTable& table)
{
    using T = CAttributeTable;
    table.m_present = 0;
    if (!table.m_decoded.empty()) {
        table.m_decoded.clear();
    }
    std::uint8_t last = T::kStart;
    std::uint8_t index = T::kNothing;
    char quote = '"';
    const std::uint8_t first = table.m_next[last];
    if (first < T::kLimit && Matches(table.m_literals[first], m_p)) {
        index = first;
        m_p += table.m_literals[first].length;
    }
    for (;;) {
        if (index == T::kNothing) {
            const char* before = m_p;
            m_p = SkipSpace(m_p);
            if (m_p == m_end) {
                return Fail(m_tagStart, fmt::format("the tag '{}' is not finished", Shown(m_name)));
            }
            if (*m_p == '>' || (*m_p == '/' && m_p + 1 != m_end && m_p[1] == '>')) {
                return FinishTag();
            }
            if (before == m_p) {
                return Fail(m_p,
                            fmt::format("a blank was expected in the tag '{}'", Shown(m_name)));
            }
            if (!AttributeName(table, index, quote)) {
                return false;
            }
            table.Expect(last, index);
        }
        const char* start = m_p;
        bool special = false;
        const char* end = FindNearQuote(start, quote, special);
        const std::uint8_t next = table.m_next[index];
        if (next < T::kLimit && end != m_end && Matches(table.m_literals[next], end + 1)) {
            if (!KeepValue(table, index, start, end, special)) {
                return false;
            }
            m_p = end + 1 + table.m_literals[next].length;
            last = index;
            index = next;
            quote = '"';
            continue;
        }
        if (m_end - end < 4 || end[1] != '>' || end[2] != '\n' || end[3] != '<') {
            end = ValueEnd(table, start, end, quote, special);
        }
        if (end == nullptr || !KeepValue(table, index, start, end, special)) {
            return false;
        }
        m_p = end + 1;
        last = index;
        index = T::kNothing;
    }
}

bool CExchangeScanner::KeepOddValue(CAttributeTable& table, std::uint8_t index, const char* start,
                                    const char* end, bool special)
{
    std::string_view value(start, static_cast<std::size_t>(end - start));
    if (value.size() > kValueLimit) {
        return Fail(start, fmt::format("a value has more than {} bytes", kValueLimit), EErr::Limit);
    }
    if (special) {
        if (index == CAttributeTable::kUnknown) {
            return value.find('\0') == std::string_view::npos ||
                   Fail(start, "the text holds a NUL byte");
        }
        if (!Clean(start, end, table.m_decoded.emplace_back())) {
            return false;
        }
        value = table.m_decoded.back();
    }
    const std::uint32_t bit = index < CAttributeTable::kLimit ? 1U << index : 0U;
    if ((table.m_present & bit) != 0) {
        Tolerate(start, fmt::format("'{}' is given twice, the first one counts",
                                    table.m_literals[index].name));
        return true;
    }
    table.m_values[index] = value;
    table.m_present |= bit;
    return true;
}

/// Entities decoded, encoding put right; what was tolerated is told.
bool CExchangeScanner::Clean(const char* start, const char* end, std::string& out)
{
    const std::string_view value(start, static_cast<std::size_t>(end - start));
    if (value.find('\0') != std::string_view::npos) {
        return Fail(start, "the text holds a NUL byte");
    }
    bool raw = value.find('<') != std::string_view::npos;
    out =
        value.find('&') == std::string_view::npos ? std::string(value) : DecodeEntities(value, raw);
    if (raw) {
        Tolerate(start, "markup characters stand in a value and were read as they stand");
    }
    if (!IsValidUtf8(out)) {
        if (!m_told1252) {
            m_told1252 = true;
            Tolerate(start, "text that is not UTF-8 is taken as Windows-1252");
        }
        out = ToValidUtf8(out);
    }
    return true;
}

// --- entities ------------------------------------------------------------------------------------

namespace {

/// The character of "lt", "#38", "#x26", ...; 0 when it is none.
char32_t EntityOf(std::string_view name)
{
    struct SEntity
    {
        std::string_view name;
        char32_t character;
    };
    static constexpr std::array<SEntity, 5> kEntities = {
        {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};
    for (const SEntity& entity : kEntities) {
        if (entity.name == name) {
            return entity.character;
        }
    }
    if (name.size() < 2 || name.front() != '#') {
        return 0;
    }
    const bool hex = ToLower(name[1]) == 'x';
    char32_t code = 0;
    for (const char c : name.substr(hex ? 2 : 1)) {
        const char32_t base = hex ? 16 : 10;
        char32_t digit = base;
        if (IsDigit(c)) {
            digit = static_cast<char32_t>(c - '0');
        } else if (ToLower(c) >= 'a' && ToLower(c) <= 'f') {
            digit = static_cast<char32_t>(ToLower(c) - 'a' + 10);
        }
        code = code * base + digit;
        if (digit >= base || code > 0x10FFFF) {
            return 0;
        }
    }
    return code >= 0xD800 && code <= 0xDFFF ? 0 : code;
}

} // namespace

std::string DecodeEntities(std::string_view text, bool& raw)
{
    constexpr std::size_t kLongest = 10;
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t at = std::min(text.find('&'), text.size());
        out += text.substr(0, at);
        text.remove_prefix(at);
        if (text.empty()) {
            break;
        }
        const std::size_t semicolon = text.substr(0, kLongest + 2).find(';');
        const char32_t character =
            semicolon == std::string_view::npos ? 0 : EntityOf(text.substr(1, semicolon - 1));
        if (character == 0) {
            raw = true;
            out += '&';
            text.remove_prefix(1);
        } else {
            AppendUtf8(out, character);
            text.remove_prefix(semicolon + 1);
        }
    }
    return out;
}

} // namespace zov
