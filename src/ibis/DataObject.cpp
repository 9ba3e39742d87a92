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

/// Children of an object beyond which lines kept as text are joined.
constexpr std::size_t kSingleLines = 1000;

/// Whether no keyword stands between two texts of a file.
bool Follows(std::string_view before, std::string_view after)
{
    const char* const begin = before.data() + before.size();
    std::string_view gap(begin, static_cast<std::size_t>(after.data() - begin));
    for (std::size_t end = gap.find('\n'); end != std::string_view::npos; end = gap.find('\n')) {
        gap.remove_prefix(end + 1);
        const std::string_view line = TrimLine(gap.substr(0, gap.find('\n')));
        if (line.starts_with('[')) {
            return false;
        }
    }
    return true;
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
        out += Separator();
        out += m_value;
    }
    out += '\n';
    PrintContent(out);
    const bool words = m_closed == EClosed::WithWords;
    for (std::size_t i = 0; i + (words ? 1 : 0) < m_children.size(); ++i) {
        m_children[i]->Print(out);
    }
    if (m_closed != EClosed::No) {
        out += IPKeywordText(m_form->closer);
        if (words) {
            out += "  ";
            out += m_children.back()->Value();
        }
        out += '\n';
    }
}

void CIPDataObject::Close(const SIPLine& behind)
{
    m_closed = behind.text.empty() ? EClosed::Yes : EClosed::WithWords;
    if (!behind.text.empty()) {
        Add(std::make_unique<CIPDataItem>("", behind.number, behind.text))
            .Mark(EIPMark::Unread, behind.number);
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

CIPDataObject* CIPDataObject::ContinueRun(const SIPLine& line, const EIPMark* mark)
{
    if (m_children.size() < kSingleLines) {
        return nullptr;
    }
    auto* const last = dynamic_cast<CIPDataItem*>(m_children.back().get());
    if (last == nullptr || !last->Name().empty() || !last->Children().empty() ||
        last->Marks().empty() != (mark == nullptr) ||
        (mark != nullptr && last->Marks().front().mark != *mark) ||
        !Follows(last->Value(), line.text)) {
        return nullptr;
    }
    const char* const begin = last->Value().data();
    CIPDataObject& run = *last;
    run.m_value = {begin, static_cast<std::size_t>(line.text.data() + line.text.size() - begin)};
    return &run;
}

CIPDataObject& CIPDataObject::AddUnread(const SIPLine& line, EIPMark mark)
{
    if (CIPDataObject* const run = ContinueRun(line, &mark)) {
        return *run;
    }
    CIPDataObject& item = Add(std::make_unique<CIPDataItem>("", line.number, line.text));
    item.Mark(mark, line.number);
    return item;
}

void CIPDataObject::AddText(const SIPLine& line)
{
    if (ContinueRun(line, nullptr) == nullptr) {
        Add(std::make_unique<CIPDataItem>("", line.number, line.text));
    }
}

std::size_t CIPDataObject::LastLine() const
{
    return m_line + static_cast<std::size_t>(std::ranges::count(m_value, '\n'));
}

void CIPDataObject::Mark(EIPMark mark, std::size_t line, std::size_t message)
{
    constexpr std::size_t kMostMarks = 1000;
    if (m_marks.size() < kMostMarks || !Has(mark) || mark == EIPMark::Checker) {
        m_marks.push_back({mark, line, message});
        m_markKinds = static_cast<std::uint16_t>(m_markKinds | 1U << static_cast<unsigned>(mark));
    }
}

} // namespace zov::ibis
