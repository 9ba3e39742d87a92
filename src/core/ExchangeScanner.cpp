// SPDX-License-Identifier: Apache-2.0
#include "core/ExchangeScanner.h"

#include "base/Text.h"
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

namespace {

constexpr std::size_t kLiteralRoom = 16;

/// What most elements have: known names are passed over as fast as they are read.
constexpr std::array<std::string_view, 26> kCommonNames = {
    "ModelName", "SubModel",   "Manuf",  "MfgPartNumber", "Lookup",       "Size",
    "SizeUnit",  "ModelType",  "CktDef", "TrackFolder",   "Rv",           "Lv",
    "Cv",        "Cnom",       "Volt",   "UpTolerance",   "LowTolerance", "TCC",
    "Prefer",    "PriceA",     "PriceB", "PriceC",        "PriceBook",    "Comment",
    "DCBias",    "Temperature"};

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

bool IsNameStart(char c)
{
    return IsAlpha(c) || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameChar(char c)
{
    return IsNameStart(c) || IsDigit(c) || c == '-' || c == '.';
}

bool IsQuote(char c)
{
    return c == '"' || c == '\'';
}

/// Bytes of a value that need a closer look: markup, NUL, anything beyond ASCII.
bool IsSpecial(char c)
{
    return c == '&' || c == '<' || c == '\0' || static_cast<unsigned char>(c) >= 0x80;
}

std::string Shown(std::string_view name)
{
    constexpr std::size_t kShown = 40;
    return ToValidUtf8(name.substr(0, std::min(name.size(), kShown)));
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

bool CExchangeScanner::Fail(const char* at, std::string text)
{
    const std::size_t line = LineOf(at);
    const char* lineStart = at;
    while (lineStart > m_begin && lineStart[-1] != '\n') {
        --lineStart;
    }
    m_error = FailAt(EErr::Format, {{}, line, static_cast<std::size_t>(at - lineStart) + 1},
                     std::move(text));
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
                        fmt::format("elements are nested more than {} deep", kDepthLimit));
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
        return Fail(start, fmt::format("a value has more than {} bytes", kValueLimit));
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
            return Fail(start, fmt::format("the circuit text of '{}' has no end", Shown(name)));
        }
        const char* behind = SkipSpace(at + 1);
        const std::string_view rest(behind, static_cast<std::size_t>(m_end - behind));
        if (StartsWithNoCase(rest, "<Through") || EndTagAt(behind, name)) {
            m_p = behind;
            return Clean(start, at, out);
        }
    }
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
