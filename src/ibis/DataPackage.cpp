// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataPackage.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::ibis {

namespace {

/// A word that would be taken for a keyword goes behind the one before it, where it came from.
void KeepOffLineStart(std::string_view word, std::string& out)
{
    if (word.starts_with('[') && out.ends_with('\n')) {
        out.back() = ' ';
    }
}

/// Characters of a section: five values need a hundred.
constexpr std::size_t kSectionLimit = 400;

std::string_view Join(std::string_view a, std::string_view b, CArena& arena)
{
    return a.empty() ? b : arena.Copy(std::string(a) + ' ' + std::string(b));
}

bool SameNumber(double a, double b)
{
    return a == b || (a != a && b != b);
}

/// A word up to "/" or "=", which may stand without a blank: "Len=0/", "C = 2p /".
std::string_view TakePathWord(std::string_view& text)
{
    text = TrimLine(text);
    const std::size_t end = text.find_first_of(" \t\r/=");
    if (end == 0) {
        const std::string_view sign = text.substr(0, 1);
        text.remove_prefix(1);
        return sign;
    }
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(word.size());
    return word;
}

/// What stands behind "=": nothing where the section ends there, where a further "=" follows or
/// the next word has its own.
std::string_view TakeSectionValue(std::string_view& text)
{
    if (TrimLine(text).starts_with('/')) {
        return {};
    }
    std::string_view behind = text;
    const std::string_view word = TakePathWord(behind);
    if (word == "=" || TrimLine(behind).starts_with('=')) {
        return {};
    }
    text = behind;
    return word;
}

/// Signs of equality that belong to no name, up to the last of them.
std::string_view TakeSigns(std::string_view first, std::string_view& text)
{
    std::size_t size = first.size();
    for (std::string_view rest = TrimLine(text); rest.starts_with('='); rest = TrimLine(rest)) {
        rest.remove_prefix(1);
        size = static_cast<std::size_t>(rest.data() - first.data());
        text = rest;
    }
    return {first.data(), size};
}

} // namespace

// --- stubs and paths ---------------------------------------------------------------------------

SIPNumber CIPDataPathItem::Element(std::string_view name) const
{
    std::string_view rest = Value();
    for (auto word = TakeWord(rest); !word.empty(); word = TakeWord(rest)) {
        const std::size_t equals = word.find('=');
        if (equals != std::string_view::npos && EqualsNoCase(word.substr(0, equals), name)) {
            return ReadIPNumber(word.substr(equals + 1));
        }
    }
    return {};
}

bool CIPDataPathItem::SameContent(const CIPDataObject& other) const
{
    return m_kind == dynamic_cast<const CIPDataPathItem&>(other).m_kind;
}

void CIPDataPathItem::Print(std::string& out) const
{
    KeepOffLineStart(Name().empty() || m_kind == EIPPath::Section ? Value() : Name(), out);
    if (m_kind != EIPPath::Section) {
        out += Name();
        out += Name().empty() || Value().empty() ? "" : "  ";
    }
    out += Value();
    out += m_kind == EIPPath::Section && !Has(EIPMark::Unclosed) ? " /\n" : "\n";
}

void CIPDataPaths::TakeLine(const SIPLine& line, CArena& arena)
{
    std::string_view rest = line.text;
    for (auto word = TakePathWord(rest); !word.empty(); word = TakePathWord(rest)) {
        TakeElement(word, rest, line.number, arena);
    }
}

void CIPDataPaths::TakeElement(std::string_view word, std::string_view& rest, std::size_t line,
                               CArena& arena)
{
    if (word == "/") {
        if (m_section == nullptr) {
            Add(std::make_unique<CIPDataPathItem>(EIPPath::Unread, "", line, word))
                .Mark(EIPMark::Unopened, line);
        } else {
            m_section = nullptr;
        }
        return;
    }
    if (word == "=") {
        word = TakeSigns(word, rest);
    } else if (TrimLine(rest).starts_with('=')) {
        TakeSectionPart(word, rest, line, arena);
        return;
    }
    if (m_section != nullptr) {
        m_section->Mark(EIPMark::Unclosed, line);
        m_section = nullptr;
    }
    const auto add = [&](EIPPath kind, std::string_view name, std::string_view value) {
        Add(std::make_unique<CIPDataPathItem>(kind, name, line, value));
    };
    if (EqualsNoCase(word, "Fork")) {
        add(EIPPath::Fork, word, {});
    } else if (EqualsNoCase(word, "Endfork")) {
        add(EIPPath::Endfork, word, {});
    } else if (PinsAreBare()) {
        add(EIPPath::Pin, word, {});
    } else if (EqualsNoCase(word, "Pin")) {
        add(EIPPath::Pin, word, TakeWord(rest));
    } else if (EqualsNoCase(word, "Node")) {
        add(EIPPath::Node, word, TakeWord(rest));
    } else {
        Add(std::make_unique<CIPDataPathItem>(EIPPath::Unread, "", line, word))
            .Mark(EIPMark::Unread, line);
    }
}

/// `name = value`; "Len" begins a section.
void CIPDataPaths::TakeSectionPart(std::string_view word, std::string_view& rest, std::size_t line,
                                   CArena& arena)
{
    TakePathWord(rest); // the "="
    const std::string_view value = TakeSectionValue(rest);
    const bool full = m_section != nullptr && m_section->Value().size() > kSectionLimit;
    if (m_section != nullptr && (full || EqualsNoCase(word, "Len"))) {
        m_section->Mark(EIPMark::Unclosed, line);
        m_section = nullptr;
    }
    if (m_section == nullptr) {
        auto made = std::make_unique<CIPDataPathItem>(EIPPath::Section, "Section", line, "");
        m_section = made.get();
        Add(std::move(made));
    }
    const std::string part = std::string(word) + '=' + std::string(value);
    m_section->Extend(Join(m_section->Value(), arena.Copy(part), arena));
    constexpr std::string_view kNames[] = {"Len", "L", "R", "C"};
    const bool known = std::ranges::any_of(
        kNames, [word](std::string_view name) { return EqualsNoCase(name, word); });
    if (!known || !ReadIPNumber(value).Has()) {
        m_section->Mark(EIPMark::Unread, line);
    }
}

std::vector<std::string_view> CIPDataPinNumbers::Pins() const
{
    std::vector<std::string_view> pins;
    for (const CIPDataPathItem* item : Items()) {
        if (item->Kind() == EIPPath::Pin) {
            pins.push_back(item->Name());
        }
    }
    return pins;
}

std::vector<std::string_view> CIPDataMergedPins::Merged() const
{
    std::vector<std::string_view> pins;
    for (const CIPDataRowItem* row : Rows()) {
        pins.insert(pins.end(), row->Words().begin(), row->Words().end());
    }
    return pins;
}

// --- matrices ----------------------------------------------------------------------------------

void CIPDataRow::TakeValue(std::string_view word, std::size_t line)
{
    const SIPNumber number = ReadIPNumber(word);
    if (!number.Has()) {
        Mark(EIPMark::Unread, line);
    }
    m_values.push_back(number.value);
    m_texts.push_back(word);
}

void CIPDataRow::TakeLine(const SIPLine& line, CArena& /*arena*/)
{
    std::string_view rest = line.text;
    if (!m_sparse) {
        for (auto word = TakeWord(rest); !word.empty(); word = TakeWord(rest)) {
            TakeValue(word, line.number);
        }
        return;
    }
    const std::string_view pin = TakeWord(rest);
    const std::string_view value = TakeWord(rest);
    if (value.empty() || !TakeWord(rest).empty()) {
        AddUnread(line);
        return;
    }
    m_pins.push_back(pin);
    TakeValue(value, line.number);
}

bool CIPDataRow::SameContent(const CIPDataObject& other) const
{
    const auto& row = dynamic_cast<const CIPDataRow&>(other);
    return m_sparse == row.m_sparse && m_pins == row.m_pins && m_texts == row.m_texts &&
           std::ranges::equal(m_values, row.m_values, SameNumber);
}

void CIPDataRow::PrintContent(std::string& out) const
{
    for (std::size_t i = 0; i < m_texts.size(); ++i) {
        if (m_sparse) {
            out += m_pins[i];
            out += "  ";
        } else {
            KeepOffLineStart(m_texts[i], out);
        }
        out += m_texts[i];
        out += '\n';
    }
}

EIPMatrix CIPDataRLCMatrix::Kind() const
{
    std::string_view rest = Value();
    const std::string_view word = TakeWord(rest);
    if (EqualsNoCase(word, "Sparse_matrix")) {
        return EIPMatrix::Sparse;
    }
    if (EqualsNoCase(word, "Full_matrix")) {
        return EIPMatrix::Full;
    }
    return EqualsNoCase(word, "Banded_matrix") ? EIPMatrix::Banded : EIPMatrix::Unknown;
}

std::vector<SIPDesignator> CIPDataRefDesignatorMap::Designators() const
{
    std::vector<SIPDesignator> designators;
    for (const CIPDataRowItem* row : Rows()) {
        designators.push_back({row->Word(0), row->Word(1), row->Word(2)});
    }
    return designators;
}

} // namespace zov::ibis
