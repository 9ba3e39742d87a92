// SPDX-License-Identifier: Apache-2.0
// From a format's code to the sections that NumberFormat.cpp and DateFormat.cpp walk.
#include "base/Number.h"
#include "base/Text.h"
#include "sheet/NumberFormat.h"

#include <algorithm>

namespace zov::sheet {
namespace {

using EKind = SFormatPart::EKind;
using ECompare = SFormatSection::ECompare;

constexpr int kMaxPlaceholders = 255;

bool IsDateKind(EKind kind)
{
    return kind >= EKind::Year;
}

std::size_t Utf8Length(std::string_view code, std::size_t pos)
{
    std::size_t next = pos;
    static_cast<void>(DecodeUtf8(code, next));
    return next - pos;
}

// Characters that stand for themselves alone; letters count in either case.
struct SRule
{
    char character;
    EKind kind;
};
constexpr SRule kRules[] = {
    {'0', EKind::Digit},  {'#', EKind::Digit},        {'?', EKind::Digit}, {'.', EKind::Point},
    {',', EKind::Comma},  {'%', EKind::Percent},      {'/', EKind::Slash}, {'@', EKind::Text},
    {'y', EKind::Year},   {'m', EKind::Month},        {'d', EKind::Day},   {'h', EKind::Hour},
    {'s', EKind::Second}, {'b', EKind::BuddhistYear},
};

class CSectionParser
{
public:
    explicit CSectionParser(std::string_view code)
        : m_code(code)
    {
    }

    SFormatSection Run()
    {
        while (m_pos < m_code.size()) {
            Step();
        }
        if (std::any_of(m_section.parts.begin(), m_section.parts.end(),
                        [](const SFormatPart& part) { return IsDateKind(part.kind); })) {
            FinishDate();
        } else {
            FinishNumber();
        }
        return std::move(m_section);
    }

private:
    void Step();
    void Quoted();
    void Escaped(char kind);
    void Bracket();
    bool Exponent();
    void DateLetters(EKind kind);
    bool Keyword(std::string_view word, EKind kind, int width);
    void Condition(std::string_view text);
    void FinishDate();
    void ResolveMinutes();
    void ResolveSubSeconds();
    void FinishNumber();
    void ResolveCommas();
    void FinishFraction();

    void Add(EKind kind, std::string_view text = {}, int width = 0)
    {
        m_section.parts.push_back({kind, width, std::string(text)});
    }

    std::string_view m_code;
    std::size_t m_pos = 0;
    SFormatSection m_section;
};

bool CSectionParser::Keyword(std::string_view word, EKind kind, int width)
{
    if (!StartsWithNoCase(m_code.substr(m_pos), word)) {
        return false;
    }
    Add(kind, m_code.substr(m_pos, word.size()), width);
    m_pos += word.size();
    return true;
}

void CSectionParser::DateLetters(EKind kind)
{
    const char letter = ToLower(m_code[m_pos]);
    const std::size_t start = m_pos;
    while (m_pos < m_code.size() && ToLower(m_code[m_pos]) == letter) {
        ++m_pos;
    }
    Add(kind, m_code.substr(start, m_pos - start),
        static_cast<int>(std::min<std::size_t>(m_pos - start, kMaxPlaceholders)));
}

void CSectionParser::Step()
{
    const char c = ToLower(m_code[m_pos]);
    const auto rule = std::find_if(std::begin(kRules), std::end(kRules),
                                   [&](const SRule& one) { return one.character == c; });
    if (rule != std::end(kRules)) {
        if (rule->kind >= EKind::Year) {
            DateLetters(rule->kind);
        } else {
            Add(rule->kind, m_code.substr(m_pos++, 1));
        }
        return;
    }
    switch (c) {
    case '"':
        return Quoted();
    case '\\':
    case '_':
    case '*':
        return Escaped(c);
    case '[':
        return Bracket();
    default:
        break;
    }
    if (Keyword("General", EKind::General, 0) || Keyword("AM/PM", EKind::AmPm, 2) ||
        Keyword("A/P", EKind::AmPm, 1) || Exponent()) {
        return;
    }
    const std::size_t length = Utf8Length(m_code, m_pos);
    Add(EKind::Literal, m_code.substr(m_pos, length));
    m_pos += length;
}

void CSectionParser::Quoted()
{
    const std::size_t start = m_pos + 1;
    const std::size_t end = std::min(m_code.find('"', start), m_code.size());
    Add(EKind::Literal, m_code.substr(start, end - start));
    m_pos = std::min(end + 1, m_code.size());
}

// \x is x, _x a blank as wide as x, *x fills the column with x and is nothing without a column.
void CSectionParser::Escaped(char kind)
{
    const std::size_t start = m_pos + 1;
    const std::size_t length = start < m_code.size() ? Utf8Length(m_code, start) : 0;
    if (kind == '\\') {
        Add(EKind::Literal, m_code.substr(start, length));
    } else if (kind == '_') {
        Add(EKind::Literal, " ");
    }
    m_pos = start + length;
}

bool CSectionParser::Exponent()
{
    const std::string_view rest = m_code.substr(m_pos);
    if (!StartsWithNoCase(rest, "E+") && !StartsWithNoCase(rest, "E-")) {
        return false;
    }
    Add(EKind::Exponent, rest.substr(1, 1));
    m_pos += 2;
    return true;
}

void CSectionParser::Bracket()
{
    const std::size_t end = m_code.find(']', m_pos);
    if (end == std::string_view::npos) {
        Add(EKind::Literal, "[");
        ++m_pos;
        return;
    }
    const std::string_view inside = m_code.substr(m_pos + 1, end - m_pos - 1);
    m_pos = end + 1;
    if (inside.empty()) {
        return;
    }
    if (inside[0] == '$') {
        const std::size_t dash = std::min(inside.find('-'), inside.size());
        if (dash > 1) {
            Add(EKind::Literal, inside.substr(1, dash - 1));
        }
        // The system's long date and time: what follows is only the form of the writer's own
        // system.
        const std::string_view locale = inside.substr(std::min(dash + 1, inside.size()));
        if (EqualsNoCase(locale, "F800") || EqualsNoCase(locale, "F400")) {
            m_code = ToUpper(locale[1]) == '8' ? "dddd, mmmm d, yyyy" : "h:mm:ss AM/PM";
            m_pos = 0;
        }
    } else if (inside[0] == '<' || inside[0] == '>' || inside[0] == '=') {
        Condition(inside);
    } else {
        const char letter = ToLower(inside[0]);
        const bool same =
            std::all_of(inside.begin(), inside.end(), [&](char c) { return ToLower(c) == letter; });
        if (same && (letter == 'h' || letter == 'm' || letter == 's')) {
            Add(letter == 'h'   ? EKind::ElapsedHour
                : letter == 'm' ? EKind::ElapsedMinute
                                : EKind::ElapsedSecond,
                inside, static_cast<int>(std::min<std::size_t>(inside.size(), 9)));
        }
    }
}

void CSectionParser::Condition(std::string_view text)
{
    struct SOperator
    {
        std::string_view text;
        ECompare compare;
    };
    constexpr SOperator kOperators[] = {{"<=", ECompare::LessEqual}, {">=", ECompare::GreaterEqual},
                                        {"<>", ECompare::NotEqual},  {"<", ECompare::Less},
                                        {">", ECompare::Greater},    {"=", ECompare::Equal}};
    for (const SOperator& candidate : kOperators) {
        if (text.starts_with(candidate.text)) {
            if (const auto limit = ParseDouble(text.substr(candidate.text.size()))) {
                m_section.compare = candidate.compare;
                m_section.limit = *limit;
            }
            return;
        }
    }
}

void CSectionParser::FinishDate()
{
    m_section.kind = SFormatSection::EKind::Date;
    ResolveMinutes();
    ResolveSubSeconds();
    for (SFormatPart& part : m_section.parts) {
        switch (part.kind) {
        case EKind::AmPm:
            m_section.hasAmPm = true;
            break;
        case EKind::Second:
        case EKind::ElapsedSecond:
            m_section.hasSeconds = true;
            break;
        case EKind::Text:
            m_section.hasText = true;
            break;
        case EKind::Digit:
        case EKind::Point:
        case EKind::Comma:
        case EKind::Percent:
        case EKind::Slash:
        case EKind::Exponent:
        case EKind::General:
            part.kind = EKind::Literal;
            break;
        default:
            break;
        }
    }
}

// m is the minute behind an hour and before a second, else the month.
void CSectionParser::ResolveMinutes()
{
    std::vector<SFormatPart*> dates;
    for (SFormatPart& part : m_section.parts) {
        if (IsDateKind(part.kind) && part.kind != EKind::AmPm) {
            dates.push_back(&part);
        }
    }
    for (std::size_t i = 0; i < dates.size(); ++i) {
        if (dates[i]->kind != EKind::Month || dates[i]->width > 2) {
            continue;
        }
        const EKind before = i > 0 ? dates[i - 1]->kind : EKind::Year;
        const EKind after = i + 1 < dates.size() ? dates[i + 1]->kind : EKind::Year;
        if (before == EKind::Hour || before == EKind::ElapsedHour || after == EKind::Second ||
            after == EKind::ElapsedSecond) {
            dates[i]->kind = EKind::Minute;
        }
    }
}

// "ss.00": the zeros behind the seconds' point are fractions of the second.
void CSectionParser::ResolveSubSeconds()
{
    constexpr int kMaxSecondDigits = 6;
    std::vector<SFormatPart>& parts = m_section.parts;
    for (std::size_t i = 0; i + 2 < parts.size(); ++i) {
        if ((parts[i].kind != EKind::Second && parts[i].kind != EKind::ElapsedSecond) ||
            parts[i + 1].kind != EKind::Point || parts[i + 2].text != "0") {
            continue;
        }
        std::size_t end = i + 2;
        while (end < parts.size() && parts[end].kind == EKind::Digit && parts[end].text == "0") {
            ++end;
        }
        parts[i + 2].kind = EKind::SubSecond;
        parts[i + 2].width = static_cast<int>(std::min<std::size_t>(end - i - 2, kMaxSecondDigits));
        m_section.secondDigits = parts[i + 2].width;
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(i + 3),
                    parts.begin() + static_cast<std::ptrdiff_t>(end));
    }
}

void CSectionParser::FinishNumber()
{
    ResolveCommas();
    bool digits = false;
    bool slash = false;
    bool general = false;
    int* counter = &m_section.wholeDigits;
    for (SFormatPart& part : m_section.parts) {
        switch (part.kind) {
        case EKind::Digit:
            digits = true;
            *counter = std::min(*counter + 1, kMaxPlaceholders);
            break;
        case EKind::Point:
            if (counter == &m_section.wholeDigits) {
                counter = &m_section.decimals;
            } else {
                part.kind = EKind::Literal;
            }
            break;
        case EKind::Exponent:
            if (m_section.hasExponent || !digits) {
                part = {EKind::Literal, 0, "E" + part.text};
            } else {
                m_section.hasExponent = true;
                counter = &m_section.exponentDigits;
            }
            break;
        case EKind::Percent:
            m_section.power = std::min(m_section.power + 2, kMaxPlaceholders);
            break;
        case EKind::Slash:
            slash = slash || digits;
            break;
        case EKind::Text:
            m_section.hasText = true;
            break;
        case EKind::General:
            general = true;
            break;
        default:
            break;
        }
    }
    m_section.kind = digits    ? SFormatSection::EKind::Number
                     : general ? SFormatSection::EKind::General
                               : SFormatSection::EKind::Literal;
    if (slash) {
        FinishFraction();
    }
}

// A comma between digits groups by thousands; commas behind the last digit scale by a thousand
// each.
void CSectionParser::ResolveCommas()
{
    std::vector<SFormatPart>& parts = m_section.parts;
    bool digitBefore = false;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].kind == EKind::Digit) {
            digitBefore = true;
        } else if (parts[i].kind == EKind::Comma) {
            std::size_t next = i;
            while (next < parts.size() && parts[next].kind == EKind::Comma) {
                ++next;
            }
            const bool digitBehind = next < parts.size() && parts[next].kind == EKind::Digit;
            for (std::size_t comma = i; comma < next && digitBefore; ++comma) {
                parts[comma].text.clear();
                if (digitBehind) {
                    m_section.grouped = true;
                } else if (m_section.power > -kMaxPlaceholders) {
                    m_section.power -= 3;
                }
            }
            for (std::size_t comma = i; comma < next; ++comma) {
                parts[comma].kind = EKind::Literal;
            }
            i = next - 1;
        }
    }
}

// "# ?/?", "# ??/16": what stands around the slash decides; without both sides it is a plain
// character.
void CSectionParser::FinishFraction()
{
    std::vector<SFormatPart>& parts = m_section.parts;
    const auto slash = std::find_if(parts.begin(), parts.end(), [](const SFormatPart& part) {
        return part.kind == EKind::Slash;
    });
    const auto behind = slash + 1;
    const bool numerator = slash != parts.begin() && (slash - 1)->kind == EKind::Digit;
    if (numerator && behind != parts.end() && behind->kind == EKind::Digit) {
        m_section.kind = SFormatSection::EKind::Fraction;
        return;
    }
    if (numerator && behind != parts.end() && behind->kind == EKind::Literal) {
        std::string digits;
        for (auto it = behind;
             it != parts.end() && digits.size() < 6 && it->text.size() == 1 && IsDigit(it->text[0]);
             ++it) {
            digits += it->text;
        }
        m_section.fixedDenominator = LeadingInt(digits);
        if (m_section.fixedDenominator > 0) {
            m_section.kind = SFormatSection::EKind::Fraction;
            return;
        }
    }
    for (SFormatPart& part : parts) {
        if (part.kind == EKind::Slash) {
            part.kind = EKind::Literal;
        }
    }
}

/// End of the section that starts at `start`: the next semicolon outside of quotes and brackets.
std::size_t SectionEnd(std::string_view code, std::size_t start)
{
    bool quoted = false;
    bool bracket = false;
    for (std::size_t i = start; i < code.size(); ++i) {
        const char c = code[i];
        if (quoted) {
            quoted = c != '"';
        } else if (bracket) {
            bracket = c != ']';
        } else if (c == '\\' || c == '_' || c == '*') {
            ++i;
        } else if (c == ';') {
            return i;
        } else {
            quoted = c == '"';
            bracket = c == '[' && code.find(']', i) != std::string_view::npos;
        }
    }
    return code.size();
}

} // namespace

SFormatSection ParseFormatSection(std::string_view code)
{
    return CSectionParser(code).Run();
}

CNumberFormat::CNumberFormat()
{
    m_sections.push_back(ParseFormatSection("General"));
}

CNumberFormat CNumberFormat::Parse(std::string_view code)
{
    constexpr std::size_t kMaxCode = 4096; // programs allow 255 characters
    constexpr std::size_t kMaxSections = 4;
    CNumberFormat format;
    if (code.empty() || code.size() > kMaxCode || EqualsNoCase(code, "General")) {
        return format;
    }
    format.m_general = false;
    format.m_sections.clear();
    for (std::size_t start = 0; format.m_sections.size() < kMaxSections;) {
        const std::size_t end = SectionEnd(code, start);
        format.m_sections.push_back(ParseFormatSection(code.substr(start, end - start)));
        if (end == code.size()) {
            break;
        }
        start = end + 1;
    }
    if (format.m_sections.size() == kMaxSections || format.m_sections.back().hasText) {
        format.m_text = format.m_sections.back();
        format.m_textSection = static_cast<int>(format.m_sections.size()) - 1;
        if (format.m_sections.size() > 1) {
            format.m_sections.pop_back();
        }
    }
    // A plain @ changes nothing: text as it is, numbers as General.
    if (code == "@") {
        return CNumberFormat();
    }
    return format;
}

bool CNumberFormat::IsDate() const
{
    return m_sections.front().kind == SFormatSection::EKind::Date;
}

} // namespace zov::sheet
