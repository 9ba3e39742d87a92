// SPDX-License-Identifier: Apache-2.0
/// SPICE texts as libraries: every sub-circuit becomes a capacitor.
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <array>
#include <fmt/format.h>

namespace zov {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// Splits a text into lines, whatever ends them.
class CLines
{
public:
    explicit CLines(std::string_view text)
        : m_rest(text)
    {
    }
    [[nodiscard]] bool AtEnd() const { return m_rest.empty(); }
    [[nodiscard]] std::size_t Number() const { return m_number; }

    std::string_view Next()
    {
        const std::size_t end = std::min(m_rest.find_first_of("\r\n"), m_rest.size());
        const std::string_view line = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        m_rest.remove_prefix(m_rest.starts_with("\r\n") ? 2
                                                        : std::min<std::size_t>(1, m_rest.size()));
        ++m_number;
        return line;
    }

private:
    std::string_view m_rest;
    std::size_t m_number = 0;
};

/// The first word of a line, when it is a dot command.
std::string_view CommandOf(std::string_view line)
{
    line = Trim(line);
    std::size_t end = 0;
    while (end < line.size() && !IsSpace(line[end])) {
        ++end;
    }
    return line.starts_with('.') ? line.substr(0, end) : std::string_view();
}

bool IsComment(std::string_view line)
{
    line = Trim(line);
    return line.empty() || line.front() == '*' || line.front() == ';';
}

/// A head line without the comment at its end. A dollar sign begins one where a word could begin;
/// but "$G_" and "$D_" begin the names of global nodes.
std::string_view WithoutComment(std::string_view line)
{
    line = line.substr(0, line.find(';'));
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::string_view rest = line.substr(i);
        const char before = i == 0 ? ' ' : line[i - 1];
        if (rest.front() == '$' && (IsSpace(before) || before == ',' || before == '(') &&
            !StartsWithNoCase(rest, "$G_") && !StartsWithNoCase(rest, "$D_")) {
            return line.substr(0, i);
        }
    }
    return line;
}

/// Words of a head; around an equals sign the blanks go, so that a parameter is one word.
std::vector<std::string> HeadWords(std::string_view head)
{
    std::vector<std::string> words;
    bool join = false;
    for (std::size_t i = 0; i < head.size();) {
        if (IsSpace(head[i]) || head[i] == ',') {
            ++i;
            continue;
        }
        const std::size_t start = i;
        while (i < head.size() && !IsSpace(head[i]) && head[i] != ',') {
            ++i;
        }
        const std::string_view word = head.substr(start, i - start);
        if (!words.empty() && (join || word.front() == '=')) {
            words.back() += word;
        } else {
            words.emplace_back(word);
        }
        join = word.back() == '=';
    }
    return words;
}

bool BeginsParameters(std::string_view word)
{
    static constexpr std::array<std::string_view, 3> kWords = {"PARAMS:", "OPTIONAL:", "TEXT:"};
    if (word.find('=') != std::string_view::npos) {
        return true;
    }
    return std::any_of(kWords.begin(), kWords.end(),
                       [&](std::string_view known) { return StartsWithNoCase(word, known); });
}

/// Pins written as "(1 2 3)" lose the parentheses.
void StripParentheses(std::vector<std::string>& pins)
{
    if (pins.empty() || pins.front().front() != '(' || pins.back().back() != ')') {
        return;
    }
    pins.front().erase(0, 1);
    pins.back().pop_back();
    std::erase_if(pins, [](const std::string& pin) { return pin.empty(); });
}

void TakeHead(std::string_view head, SSubcircuit& subcircuit)
{
    std::vector<std::string> words = HeadWords(head);
    std::size_t i = 1;
    for (; i < words.size() && !BeginsParameters(words[i]); ++i) {
        subcircuit.pins.push_back(std::move(words[i]));
    }
    StripParentheses(subcircuit.pins);
    if (!words.empty()) {
        subcircuit.name = std::move(words.front());
    }
    // Parameters are no pins, but the circuit is nothing without them: they continue the head.
    if (i < words.size()) {
        subcircuit.body = "+";
        for (; i < words.size(); ++i) {
            subcircuit.body += ' ';
            subcircuit.body += words[i];
        }
        subcircuit.body += kLineEnd;
    }
}

SError FailAtLine(std::size_t line, std::string text)
{
    return FailAt(EErr::Format, {{}, line, 1}, std::move(text));
}

/// From behind the head's first line to the line of its .ENDS.
CResult<SSubcircuit> ReadOne(CLines& lines, std::string_view firstLine)
{
    const std::size_t start = lines.Number();
    std::string head(WithoutComment(Trim(firstLine).substr(CommandOf(firstLine).size())));
    std::string between; // comments among the lines of the head come behind it
    std::string_view line;
    bool pending = false;
    while (!lines.AtEnd()) {
        line = lines.Next();
        const std::string_view trimmed = Trim(line);
        if (trimmed.starts_with('+')) {
            head += ' ';
            head += WithoutComment(trimmed.substr(1));
        } else if (IsComment(line)) {
            between += line;
            between += kLineEnd;
        } else {
            pending = true;
            break;
        }
    }
    SSubcircuit subcircuit;
    TakeHead(head, subcircuit);
    if (subcircuit.name.empty() || BeginsParameters(subcircuit.name)) {
        return FailAtLine(start, ".SUBCKT has no name");
    }
    subcircuit.body += between;
    for (std::size_t depth = 1;; line = lines.Next(), pending = true) {
        if (pending) {
            const std::string_view command = CommandOf(line);
            if (EqualsNoCase(command, ".SUBCKT")) {
                ++depth;
            } else if (EqualsNoCase(command, ".ENDS") && --depth == 0) {
                return subcircuit;
            }
            subcircuit.body += line;
            subcircuit.body += kLineEnd;
        }
        if (lines.AtEnd()) {
            return FailAtLine(start, fmt::format(".SUBCKT '{}' has no .ENDS", subcircuit.name));
        }
    }
}

} // namespace

CResult<std::vector<SSubcircuit>> ReadSubcircuits(std::string_view text)
{
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    const std::string valid = ToValidUtf8(text);
    std::vector<SSubcircuit> subcircuits;
    CLines lines(valid);
    while (!lines.AtEnd()) {
        const std::string_view line = lines.Next();
        if (EqualsNoCase(CommandOf(line), ".SUBCKT")) {
            ASSIGN_OR_RETURN(SSubcircuit one, ReadOne(lines, line));
            subcircuits.push_back(std::move(one));
        }
    }
    return subcircuits;
}

std::string CircuitText(const SSubcircuit& subcircuit)
{
    return fmt::format(".SUBCKT {} {}\r\n{}.ENDS\r\n", subcircuit.name,
                       fmt::join(subcircuit.pins, " "), subcircuit.body);
}

CResult<std::size_t> ImportSpice(CZovLibrary& library, std::string_view text)
{
    ASSIGN_OR_RETURN(const std::vector<SSubcircuit> subcircuits, ReadSubcircuits(text));
    for (const SSubcircuit& subcircuit : subcircuits) {
        CZovRcdProps& record = library.Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, subcircuit.name);
        record.SetString(EPropId::Size, "0402E");
        SDiscreteModel model;
        model.isCircuit = true;
        model.cktDef = CircuitText(subcircuit);
        record.SetDiscreteModel(model);
    }
    return subcircuits.size();
}

} // namespace zov
