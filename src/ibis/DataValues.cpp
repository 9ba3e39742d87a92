// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataValues.h"

#include "base/Text.h"
#include "ibis/Forms.h"

#include <algorithm>
#include <cmath>

namespace zov::ibis {

namespace {

/// Rows with too few or too many words that a section takes as rows; more of them are no rows.
constexpr std::size_t kMostOddRows = 1000;

std::size_t CountWords(std::string_view text)
{
    std::size_t count = 0;
    while (!TakeWord(text).empty()) {
        ++count;
    }
    return count;
}

SIPSlope SplitSlope(std::string_view word)
{
    const std::size_t slash = word.find('/');
    if (slash == std::string_view::npos) {
        return {};
    }
    return {ReadIPNumber(word.substr(0, slash)), ReadIPNumber(word.substr(slash + 1))};
}

SIPNumber ReadSlope(std::string_view word)
{
    const SIPSlope slope = SplitSlope(word);
    const double quotient = slope.volt.value / slope.second.value;
    return {std::isfinite(quotient) ? quotient : kNoValue, word};
}

/// "name = value", "name=value", "name value"
std::string_view TakeFieldName(std::string_view& text)
{
    std::size_t end = 0;
    while (end < text.size() && text[end] != ' ' && text[end] != '\t' && text[end] != '=') {
        ++end;
    }
    const std::string_view name = text.substr(0, end);
    text = TrimLine(text.substr(end));
    if (!text.empty() && text.front() == '=') {
        text = TrimLine(text.substr(1));
    }
    return name;
}

std::unique_ptr<CIPDataObject> MakeField(EIPValue kind, std::string_view name, std::size_t line,
                                         std::string_view value)
{
    switch (kind) {
    case EIPValue::Number:
        return std::make_unique<CIPDataNumber>(name, line, value);
    case EIPValue::Range:
        return std::make_unique<CIPDataValueRange>(name, line, value);
    case EIPValue::Slopes:
        return std::make_unique<CIPDataValueRange>(name, line, value, true);
    case EIPValue::Text:
        break;
    }
    return std::make_unique<CIPDataItem>(name, line, value);
}

} // namespace

std::string_view IPSeparator(const CIPDataObject& object)
{
    const bool field = object.Form() == nullptr && !object.Name().empty();
    return field && object.Value().starts_with('=') ? " = " : "  ";
}

// --- CIPDataItem -------------------------------------------------------------------------------

CIPDataItem::CIPDataItem(const SIPForm& form, std::string_view shown, std::size_t line,
                         std::string_view value)
    : CIPDataObject(form, line, value)
{
    SetName(shown);
}

std::string CIPDataItem::Text() const
{
    std::string text(Value());
    for (const auto& child : Children()) {
        text += text.empty() ? "" : "\n";
        text += child->Value();
    }
    return text;
}

void CIPDataItem::TakeLine(const SIPLine& line, CArena& /*arena*/)
{
    if (Form() != nullptr && Form()->lines == EIPLines::Text) {
        AddText(line);
    } else {
        AddUnread(line, Keyword() == EIPKeyword::End ? EIPMark::AfterEnd : EIPMark::Unread);
    }
}

// --- CIPDataNumber -----------------------------------------------------------------------------

CIPDataNumber::CIPDataNumber(const SIPForm& form, std::size_t line, std::string_view value)
    : CIPDataObject(form, line, value)
{
    Read();
}

CIPDataNumber::CIPDataNumber(std::string_view name, std::size_t line, std::string_view value)
    : CIPDataObject(name, line, value)
{
    Read();
}

void CIPDataNumber::Read()
{
    std::string_view rest = Value();
    m_number = ReadIPNumber(TakeWord(rest));
    if (m_number.text.empty()) {
        Mark(EIPMark::Missing, Line());
    } else if (m_number.Unreadable()) {
        Mark(EIPMark::Unread, Line());
    }
    if (!TakeWord(rest).empty()) {
        Mark(EIPMark::Extra, Line());
    }
}

// --- CIPDataValueRange -------------------------------------------------------------------------

CIPDataValueRange::CIPDataValueRange(const SIPForm& form, std::size_t line, std::string_view value)
    : CIPDataObject(form, line, value)
{
    Read(false);
}

CIPDataValueRange::CIPDataValueRange(std::string_view name, std::size_t line,
                                     std::string_view value, bool slopes)
    : CIPDataObject(name, line, value)
{
    Read(slopes);
}

void CIPDataValueRange::Read(bool slopes)
{
    std::string_view rest = Value();
    for (SIPNumber& number : m_values) {
        const std::string_view word = TakeWord(rest);
        number = slopes ? ReadSlope(word) : ReadIPNumber(word);
    }
    if (m_values[2].text.empty()) {
        Mark(EIPMark::Missing, Line());
    }
    if (std::ranges::any_of(m_values, &SIPNumber::Unreadable)) {
        Mark(EIPMark::Unread, Line());
    }
    if (!TakeWord(rest).empty()) {
        Mark(EIPMark::Extra, Line());
    }
}

SIPSlope CIPDataValueRange::Slope(std::size_t corner) const
{
    return SplitSlope(m_values[corner].text);
}

// --- CIPDataRowItem ----------------------------------------------------------------------------

CIPDataRowItem::CIPDataRowItem(std::size_t line, std::string_view text,
                               std::span<const std::string_view> words)
    : CIPDataObject(words.front(), line, TrimLine(text.substr(words.front().size())))
    , m_words(words)
{
}

// --- CIPDataSection ----------------------------------------------------------------------------

void CIPDataSection::TakeLine(const SIPLine& line, CArena& arena)
{
    const SIPForm& form = *Form();
    if (!form.fields.empty() && TakeIPField(*this, line)) {
        return;
    }
    const bool isRow = form.lines == EIPLines::Rows ||
                       (form.lines == EIPLines::Terminals && IsDigit(line.text.front()));
    if (isRow) {
        TakeRow(line, arena);
    } else {
        AddUnread(line);
    }
}

void CIPDataSection::TakeRow(const SIPLine& line, CArena& arena)
{
    const SIPForm& form = *Form();
    const std::size_t count = CountWords(line.text);
    const bool missing = form.minWords != kAnyWords && count < form.minWords;
    const bool extra = form.maxWords != kAnyWords && count > form.maxWords;
    if ((missing || extra) && ++m_oddRows > kMostOddRows) {
        AddUnread(line);
        return;
    }
    const auto words = KeepWords(line.text, arena);
    CIPDataObject& row = Add(MakeRow(line.number, line.text, words));
    if (missing) {
        row.Mark(EIPMark::Missing, line.number);
    }
    if (extra) {
        row.Mark(EIPMark::Extra, line.number);
    }
    for (std::size_t i = 0; form.numberColumns >> i != 0 && i < words.size(); ++i) {
        if ((form.numberColumns >> i & 1U) != 0 && ReadIPNumber(words[i]).Unreadable()) {
            row.Mark(EIPMark::Unread, line.number);
            break;
        }
    }
}

std::unique_ptr<CIPDataRowItem> CIPDataSection::MakeRow(std::size_t line, std::string_view text,
                                                        std::span<const std::string_view> words)
{
    return std::make_unique<CIPDataRowItem>(line, text, words);
}

const CIPDataValueRange* CIPDataSection::Range(std::string_view name) const
{
    return dynamic_cast<const CIPDataValueRange*>(Field(name));
}

const CIPDataNumber* CIPDataSection::Number(std::string_view name) const
{
    return dynamic_cast<const CIPDataNumber*>(Field(name));
}

const CIPDataValueRange* CIPDataSection::RangePart(EIPKeyword keyword) const
{
    return Part<CIPDataValueRange>(keyword);
}

// --- for all -----------------------------------------------------------------------------------

bool TakeIPField(CIPDataObject& to, const SIPLine& line)
{
    std::string_view rest = line.text;
    const std::string_view name = TakeFieldName(rest);
    for (const SIPField& field : to.Form()->fields) {
        if (EqualsNoCase(field.name, name)) {
            to.Add(MakeField(field.value, name, line.number, rest));
            return true;
        }
    }
    return false;
}

std::span<const std::string_view> KeepWords(std::string_view text, CArena& arena)
{
    const std::size_t count = CountWords(text);
    auto* const words = arena.AllocateArray<std::string_view>(count);
    for (std::size_t i = 0; i < count; ++i) {
        words[i] = TakeWord(text);
    }
    return {words, count};
}

} // namespace zov::ibis
