// SPDX-License-Identifier: Apache-2.0
#include "ibis/BusBlock.h"

#include "base/Text.h"
#include "ibis/DataObject.h"
#include "ibis/FileLines.h"

#include <fmt/format.h>

namespace zov::ibis {

namespace {

constexpr std::string_view kBanner =
    "**********************Component Bus Definitions ***************************";
constexpr std::string_view kTitle = "Component Bus Definitions";
constexpr std::size_t kNarrow = 20; ///< columns of [Component Type] and SignalName
constexpr std::size_t kWide = 25;   ///< columns of all others
constexpr std::size_t kSignalLine = 60;

// --- writing -----------------------------------------------------------------------------------

class CBlockText
{
public:
    CBlockText(char comment, std::string_view lineEnd)
        : m_comment(comment)
        , m_lineEnd(lineEnd)
    {
    }
    void Line(std::string_view text) { m_text.append(1, m_comment).append(text).append(m_lineEnd); }
    void Pair(std::string_view keyword, std::size_t width, std::string_view value)
    {
        Line(fmt::format("{:<{}}{}", keyword, width, value));
    }
    void Signals(const std::vector<std::string>& names)
    {
        std::string line;
        for (const std::string& name : names) {
            if (line.empty()) {
                line = fmt::format("{:<{}}{}", "SignalName", kNarrow, name);
            } else {
                line += ' ' + name;
            }
            if (line.size() + 1 >= kSignalLine) {
                Line(line);
                line.clear();
            }
        }
        if (!line.empty()) {
            Line(line);
        }
    }
    [[nodiscard]] std::string Take() { return std::move(m_text); }

private:
    char m_comment;
    std::string_view m_lineEnd;
    std::string m_text;
};

void AppendReference(CBlockText& block, const STimingReference& reference)
{
    block.Pair("TimingRef", kWide, reference.name);
    block.Pair("EdgeType", kWide, WordOf(reference.edge));
    for (const std::string& clock : reference.clocks) {
        block.Pair("Clock", kWide, clock);
    }
    for (std::size_t i = 0; i < kTimingLimits; ++i) {
        if (!reference.limits[i].empty()) {
            block.Pair(WordOf(static_cast<ETimingLimit>(i)), kWide, reference.limits[i]);
        }
    }
    block.Signals(reference.signals);
}

// --- reading -----------------------------------------------------------------------------------

enum class EKey : std::uint8_t
{
    ComponentType,
    BusName,
    BusType,
    BusGroup,
    TimingRef,
    EdgeType,
    Clock,
    SignalName,
    Limit, ///< and all above: the limits
};

struct SKey
{
    EKey key;
    std::string_view word;
};
constexpr SKey kKeys[] = {
    {EKey::ComponentType, "ComponentType"},
    {EKey::BusName, "BusName"},
    {EKey::BusType, "BusType"},
    {EKey::BusGroup, "BusGroup"},
    {EKey::TimingRef, "TimingRef"},
    {EKey::EdgeType, "EdgeType"},
    {EKey::Clock, "Clock"},
    {EKey::SignalName, "SignalName"},
};

/// Takes a keyword off the front: with or without brackets, blanks or underscores in it, in any
/// case.
bool TakeKey(std::string_view& text, std::string_view word)
{
    std::size_t at = text.starts_with('[') ? 1U : 0U;
    for (const char c : word) {
        while (at < text.size() && (text[at] == '_' || IsBlank(text[at]))) {
            ++at;
        }
        if (at == text.size() || ToLower(text[at]) != ToLower(c)) {
            return false;
        }
        ++at;
    }
    while (text.starts_with('[') && at < text.size() && IsBlank(text[at])) {
        ++at;
    }
    if (text.starts_with('[') && (at == text.size() || text[at++] != ']')) {
        return false;
    }
    if (at < text.size() && !IsSpace(text[at])) {
        return false;
    }
    text = TrimLine(text.substr(at));
    return true;
}

/// Builds one block line by line.
class CBlockReader
{
public:
    CBlockReader(SBusDefinitions& out, CDiagSink& diag)
        : m_out(out)
        , m_diag(diag)
    {
    }
    /// @return false when the line is none of a block's
    bool Take(std::string_view text, std::size_t line)
    {
        m_line = line;
        for (const SKey& key : kKeys) {
            if (TakeKey(text, key.word)) {
                TakeValue(key, text);
                return true;
            }
        }
        for (std::size_t i = 0; i < kTimingLimits; ++i) {
            if (TakeKey(text, WordOf(static_cast<ETimingLimit>(i)))) {
                TakeLimit(static_cast<ETimingLimit>(i), text);
                return true;
            }
        }
        return false;
    }

private:
    void Tell(std::string text)
    {
        SDiag diag;
        diag.severity = ESeverity::Warning;
        diag.pos.line = m_line;
        diag.text = std::move(text);
        m_diag.Report(diag);
    }
    template <class T>
    void Read(std::string_view what, std::string_view word, T& out)
    {
        if (!ReadWord(word, out)) {
            Tell(fmt::format("'{}' is no {}", word, what));
        }
    }
    SBus* Bus(std::string_view what)
    {
        if (m_out.buses.empty()) {
            Tell(fmt::format("{} stands before any bus", what));
            return nullptr;
        }
        return &m_out.buses.back();
    }
    STimingReference* Reference(std::string_view what)
    {
        SBus* bus = Bus(what);
        if (bus != nullptr && bus->references.empty()) {
            Tell(fmt::format("{} stands before any timing reference of its bus", what));
        }
        return bus == nullptr || bus->references.empty() ? nullptr : &bus->references.back();
    }
    void AddWords(std::vector<std::string>* to, std::string_view text)
    {
        for (const std::string_view word : WordsOf(text)) {
            to->emplace_back(word);
        }
    }
    /// A name begins a bus, unless it follows the type of one that has no name yet.
    void TakeBusName(std::string_view name)
    {
        if (!m_typeWasLast || !m_out.buses.back().name.empty()) {
            m_out.buses.emplace_back();
            m_typed = false;
        }
        m_out.buses.back().name = name;
    }
    void TakeBusType(std::string_view word)
    {
        if (m_out.buses.empty() || m_typed) {
            m_out.buses.emplace_back();
        }
        m_typed = true;
        Read("bus type, expected Data, Ctrl or AddCmd", word, m_out.buses.back().type);
    }
    void TakeValue(const SKey& key, std::string_view text);
    void TakeLimit(ETimingLimit limit, std::string_view text)
    {
        m_typeWasLast = false;
        if (STimingReference* reference = Reference(WordOf(limit))) {
            const SIPNumber number = ReadIPNumber(text);
            if (!number.Has() || number.value <= 0.0) {
                Tell(fmt::format("{} should be positive number.", LabelOf(limit)));
                return;
            }
            reference->limits[static_cast<std::size_t>(limit)] = text;
        }
    }

    SBusDefinitions& m_out;
    CDiagSink& m_diag;
    std::size_t m_line = 0;
    bool m_typed = false; ///< the last bus has its type
    bool m_typeWasLast = false;
};

void CBlockReader::TakeValue(const SKey& key, std::string_view text)
{
    if (text.empty()) {
        Tell(fmt::format("{} has no value", key.word));
        return;
    }
    std::string_view rest = text;
    const std::string_view word = TakeWord(rest);
    switch (key.key) {
    case EKey::ComponentType:
        Read("component type, expected Controller or Memory", word, m_out.type);
        break;
    case EKey::BusName:
        TakeBusName(word);
        break;
    case EKey::BusType:
        TakeBusType(word);
        break;
    case EKey::BusGroup:
        if (SBus* bus = Bus(key.word)) {
            AddWords(&bus->groups, text);
        }
        break;
    case EKey::TimingRef:
        if (SBus* bus = Bus(key.word)) {
            bus->references.push_back({std::string(word), EEdgeType::BothEdges, {}, {}, {}});
        }
        break;
    case EKey::EdgeType:
        if (STimingReference* reference = Reference(key.word)) {
            Read("edge type, expected BothEdges, RiseEdge or FallEdge", word, reference->edge);
        }
        break;
    case EKey::Clock:
        if (STimingReference* reference = Reference(key.word)) {
            AddWords(&reference->clocks, text);
        }
        break;
    case EKey::SignalName:
        if (STimingReference* reference = Reference(key.word)) {
            AddWords(&reference->signals, text);
        }
        break;
    case EKey::Limit:
        break;
    }
    m_typeWasLast = key.key == EKey::BusType;
}

bool IsBanner(const SFileLine& line)
{
    return line.comment && line.body.find(kTitle) != std::string_view::npos &&
           line.body.starts_with('*');
}

/// Reads a block's lines as long as they are comments; it ends with the last that is its own.
/// @return false at the end of the file; else `line` is the first that was not read
bool ReadBlock(CFileLines& lines, SFileLine& line, SBusBlock& block, CDiagSink& diag)
{
    CBlockReader reader(block.definitions, diag);
    block.begin = line.begin;
    block.end = line.end;
    std::string strange;
    bool more = lines.Next(line);
    for (; more && line.comment && !IsBanner(line); more = lines.Next(line)) {
        if (reader.Take(line.body, line.number)) {
            block.notRead += strange;
            strange.clear();
            block.end = line.end;
        } else {
            strange += line.whole;
        }
    }
    return more;
}

} // namespace

std::string WriteBusBlock(const SBusDefinitions& definitions, char comment,
                          std::string_view lineEnd)
{
    CBlockText block(comment, lineEnd);
    block.Line(kBanner);
    block.Pair("[Component Type]", kNarrow, WordOf(definitions.type));
    for (const SBus& bus : definitions.buses) {
        block.Pair("[Bus Name]", kWide, bus.name);
        block.Pair("[Bus Type]", kWide, WordOf(bus.type));
        for (const std::string& group : bus.groups) {
            block.Pair("BusGroup", kWide, group);
        }
        for (const STimingReference& reference : bus.references) {
            AppendReference(block, reference);
        }
    }
    return block.Take();
}

std::vector<SBusBlock> ReadBusBlocks(std::string_view text, CDiagSink& diag)
{
    std::vector<SBusBlock> blocks;
    CFileLines lines(text);
    SFileLine line;
    bool more = lines.Next(line);
    while (more) {
        if (!IsBanner(line)) {
            more = lines.Next(line);
            continue;
        }
        SBusBlock block;
        block.component = lines.Component();
        block.comment = lines.CommentCharacter();
        more = ReadBlock(lines, line, block, diag);
        blocks.push_back(std::move(block));
    }
    return blocks;
}

std::optional<SBusBlock> FindBusBlock(std::string_view text, std::string_view component,
                                      CDiagSink& diag)
{
    std::vector<SBusBlock> blocks = ReadBusBlocks(text, diag);
    for (SBusBlock& block : blocks) {
        if (block.component == component) {
            return std::move(block);
        }
    }
    const bool isFirst = FirstComponent(text) == component;
    for (SBusBlock& block : blocks) {
        if (isFirst && block.component.empty()) {
            return std::move(block);
        }
    }
    return std::nullopt;
}

CResult<std::string> PutBusBlock(std::string_view text, std::string_view component,
                                 const SBusDefinitions& definitions)
{
    RETURN_IF_ERROR(CheckBusDefinitions(definitions));
    CNullDiag quiet;
    const auto old = FindBusBlock(text, component, quiet);
    const auto section = FindComponentEnd(text, component);
    if (!section) {
        return Fail(EErr::NotFound, fmt::format("Can not find component '{}'.", component));
    }
    const std::size_t begin = old ? old->begin : section->end;
    const std::size_t end = old ? old->end : section->end;
    const std::string_view lineEnd = text.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
    std::string out(text.substr(0, begin));
    if (!out.empty() && out.back() != '\n') {
        out += lineEnd;
    }
    out += WriteBusBlock(definitions, old ? old->comment : section->comment, lineEnd);
    out += old ? old->notRead : std::string();
    out += text.substr(end);
    return out;
}

} // namespace zov::ibis
