// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataObject.h"

#include "base/Text.h"
#include "ibis/DataValues.h"
#include "ibis/Forms.h"
#include "ibischk/Values.h"

#include <algorithm>
#include <typeinfo>

namespace zov::ibis {

namespace {

constexpr bool IsGap(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// Equal but for the number of blanks between words.
bool SameWords(std::string_view a, std::string_view b)
{
    if (a == b) {
        return true;
    }
    for (;;) {
        const std::string_view wordA = TakeWord(a);
        const std::string_view wordB = TakeWord(b);
        if (wordA != wordB) {
            return false;
        }
        if (wordA.empty()) {
            return true;
        }
    }
}

} // namespace

bool SIPNumber::Unreadable() const
{
    return !Has() && !text.empty() && !ibischk::IsNa(text);
}

SIPNumber ReadIPNumber(std::string_view word)
{
    ibischk::SNumber number;
    const bool good = ibischk::ReadNumber(word, number) == ibischk::ENumber::Good;
    return {good ? number.value : kNoValue, word};
}

std::string_view TakeWord(std::string_view& text)
{
    std::size_t begin = 0;
    while (begin < text.size() && IsGap(text[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < text.size() && !IsGap(text[end])) {
        ++end;
    }
    const std::string_view word = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return word;
}

std::string_view TrimLine(std::string_view text)
{
    while (!text.empty() && IsGap(text.back())) {
        text.remove_suffix(1);
    }
    while (!text.empty() && IsGap(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::vector<std::string_view> WordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        words.push_back(word);
    }
    return words;
}

std::string_view IPMarkText(EIPMark mark)
{
    constexpr std::string_view kTexts[] = {
        "not understood",    "incomplete",   "more words than expected",
        "not expected here", "kept as text", "not closed",
        "closes nothing",    "behind [End]", "see the check"};
    return kTexts[static_cast<std::size_t>(mark)];
}

CIPDataObject::CIPDataObject(const SIPForm& form, std::size_t line, std::string_view value)
    : m_form(&form)
    , m_name(IPKeywordText(form.keyword))
    , m_value(value)
    , m_line(line)
{
}

CIPDataObject::CIPDataObject(std::string_view name, std::size_t line, std::string_view value)
    : m_name(name)
    , m_value(value)
    , m_line(line)
{
}

CIPDataObject::~CIPDataObject() = default;

EIPKeyword CIPDataObject::Keyword() const
{
    return m_form != nullptr ? m_form->keyword : EIPKeyword::None;
}

bool CIPDataObject::Has(EIPMark mark) const
{
    return std::ranges::any_of(m_marks, [mark](const SIPMark& one) { return one.mark == mark; });
}

const CIPDataObject* CIPDataObject::Part(EIPKeyword keyword) const
{
    for (const auto& child : m_children) {
        if (child->Keyword() == keyword) {
            return child.get();
        }
    }
    return nullptr;
}

const CIPDataObject* CIPDataObject::Field(std::string_view name) const
{
    for (const auto& child : m_children) {
        if (child->m_form == nullptr && EqualsNoCase(child->m_name, name)) {
            return child.get();
        }
    }
    return nullptr;
}

std::string_view CIPDataObject::FieldText(std::string_view name) const
{
    const CIPDataObject* field = Field(name);
    return field != nullptr ? field->Value() : std::string_view();
}

bool CIPDataObject::SameContent(const CIPDataObject& /*other*/) const
{
    return true;
}

bool CIPDataObject::Equals(const CIPDataObject& other) const
{
    return typeid(*this) == typeid(other) && Keyword() == other.Keyword() &&
           EqualsNoCase(m_name, other.m_name) && SameWords(m_value, other.m_value) &&
           m_closed == other.m_closed && SameContent(other) && SameChildren(other, false) &&
           SameChildren(other, true);
}

/// Statements and keywords are compared apart: a table prints its statements before its keywords.
bool CIPDataObject::SameChildren(const CIPDataObject& other, bool keywords) const
{
    const auto next = [keywords](auto& at, const auto& end) {
        at = std::find_if(at, end, [keywords](const auto& child) {
            return (child->m_form != nullptr) == keywords;
        });
        return at != end;
    };
    auto a = m_children.begin();
    auto b = other.m_children.begin();
    for (;; ++a, ++b) {
        const bool more = next(a, m_children.end());
        if (more != next(b, other.m_children.end())) {
            return false;
        }
        if (!more) {
            return true;
        }
        if (!(*a)->Equals(**b)) {
            return false;
        }
    }
}

void CIPDataObject::Print(std::string& out) const
{
    out += m_name;
    if (!m_value.empty()) {
        out += "  ";
        out += m_value;
    }
    out += '\n';
    PrintContent(out);
    for (const auto& child : m_children) {
        child->Print(out);
    }
    if (m_closed) {
        out += IPKeywordText(m_form->closer);
        out += '\n';
    }
}

void CIPDataObject::TakeLine(const SIPLine& line, CArena& /*arena*/)
{
    AddUnread(line);
}

CIPDataObject& CIPDataObject::Add(std::unique_ptr<CIPDataObject> child)
{
    m_children.push_back(std::move(child));
    return *m_children.back();
}

CIPDataObject& CIPDataObject::AddUnread(const SIPLine& line, EIPMark mark)
{
    CIPDataObject& item = Add(std::make_unique<CIPDataItem>("", line.number, line.text));
    item.Mark(mark, line.number);
    return item;
}

void CIPDataObject::Mark(EIPMark mark, std::size_t line, std::size_t message)
{
    m_marks.push_back({mark, line, message});
}

} // namespace zov::ibis
