// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CircuitBody.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <set>

namespace zov::ibischk {

namespace {

constexpr std::string_view kSubcircuit = "File_IBIS-ISS";

bool IsSubcircuit(const SCircuitBody& body)
{
    return body.fileKind == kSubcircuit;
}

/// The ports that a name ending in ".sNp" tells; 0 for another name.
std::size_t PortsOf(std::string_view file)
{
    const std::size_t point = file.rfind('.');
    if (point == std::string_view::npos || file.size() < point + 4) {
        return 0;
    }
    const std::string_view extension = file.substr(point + 1);
    if (ToLower(extension.front()) != 's' || ToLower(extension.back()) != 'p') {
        return 0;
    }
    const auto ports = ParseInt(extension.substr(1, extension.size() - 2));
    return ports && *ports > 0 ? static_cast<std::size_t>(*ports) : 0;
}

void CheckBodyFile(SCheck& check, const SCircuitBody& body, SPlace place)
{
    if (IsSubcircuit(body)) {
        if (!EndsWithNoCase(body.file, ".iss")) {
            check.report.WarningAt(place, body.base + 11, body.file, body.fileKind, ".iss");
        }
    } else if (PortsOf(body.file) == 0 && !EndsWithNoCase(body.file, ".ts")) {
        check.report.WarningAt(place, body.base + 11, body.file, body.fileKind, ".sNp or .ts");
    }
    if (CheckFileName(check, body.file, EFileName::Referenced, place) &&
        !ReferencedFileExists(check, body.file)) {
        check.report.WarningAt(place, body.base + 10, body.file);
    }
}

void TakeFile(SCheck& check, const SLine& line, CTokens& tokens, SCircuitBody& body,
              std::string_view kind)
{
    if (!body.fileKind.empty()) {
        check.report.ErrorAt(line.Place(), body.base + 7, KeywordText(body.keyword), body.name);
        return;
    }
    body.fileKind = kind;
    const SWords words(tokens.Rest());
    const bool perCorner = body.base == kCCompBody;
    if (IsSubcircuit(body)) {
        if (words.count != 2 && !(perCorner && words.count > 2)) {
            check.report.ErrorAt(line.Place(), body.base + 9, words.count);
        }
        body.subckt = words[1];
    } else if (words.count != 1 && !(perCorner && words.count == 3)) {
        check.report.ErrorAt(line.Place(), body.base + 8, kind, words.count);
    }
    body.file = words[0];
    if (!body.file.empty()) {
        CheckBodyFile(check, body, line.Place(body.file));
    }
}

void TakeParameter(SCheck& check, const SLine& line, CTokens& tokens, SCircuitBody& body)
{
    const std::string_view name = tokens.Next();
    const std::string_view format = tokens.Next();
    const std::string_view value = tokens.Rest();
    body.parameterPlace = line.Place();
    if (value.empty() || (format != "Value" && format != "Corner")) {
        check.report.ErrorAt(line.Place(), body.base + 13, line.text);
        return;
    }
    const bool quoted = value.front() == '"' && value.size() > 1 && value.back() == '"';
    SNumber number;
    if (!quoted && format == "Value" && ReadNumber(value, number) != ENumber::Good) {
        check.report.ErrorAt(line.Place(value), body.base + 14, value, name);
    }
    if (std::ranges::find(body.parameters, name) != body.parameters.end()) {
        check.report.ErrorAt(line.Place(name), body.base + 15, name, body.name);
        return;
    }
    body.parameters.push_back(name);
}

void TakeTermination(SCheck& check, const SLine& line, CTokens& tokens, SCircuitBody& body)
{
    if (body.terminationSeen) {
        check.report.ErrorAt(line.Place(), body.base + 16, "stands more than once");
    }
    body.terminationSeen = true;
    body.terminationPlace = line.Place();
    tokens.TakeEquals();
    SNumber number;
    if (ReadNumber(tokens.Rest(), number) != ENumber::Good || number.value < 0) {
        check.report.ErrorAt(line.Place(), body.base + 17, tokens.Rest());
    }
}

void TakeTerminalCount(SCheck& check, const SLine& line, CTokens& tokens, SCircuitBody& body)
{
    const int code = body.base + 18;
    if (body.countSeen || !body.terminals.empty()) {
        check.report.ErrorAt(line.Place(), code,
                             body.countSeen ? "stands more than once"
                                            : "stands behind the first terminal",
                             KeywordText(body.keyword), body.name);
    }
    body.countSeen = true;
    const int least = body.fileKind == "File_TS" ? 2 : 1;
    const bool equals = tokens.TakeEquals();
    const auto count = ParseInt(tokens.Rest());
    if (!equals || !count || *count < least) {
        check.report.ErrorAt(line.Place(), body.base + 19, least, tokens.Rest());
    }
    if (count && *count > 0) {
        body.terminalCount = static_cast<std::size_t>(*count);
    }
}

bool TakeSubParameterLine(SCheck& check, const SLine& line, SCircuitBody& body)
{
    CTokens tokens(line.text);
    const std::string_view name = tokens.NextName();
    const bool late = !body.terminals.empty();
    if (name == "File_TS" || name == "File_TS0" || name == kSubcircuit) {
        TakeFile(check, line, tokens, body, name);
    } else if (name == "Param") {
        TakeParameter(check, line, tokens, body);
    } else if (name == "Unused_port_termination") {
        TakeTermination(check, line, tokens, body);
    } else if (name == "Number_of_terminals") {
        TakeTerminalCount(check, line, tokens, body);
        return true;
    } else {
        return false;
    }
    if (late) {
        check.report.WarningAt(line.Place(), body.base + 28, name, body.name);
    }
    return true;
}

bool IsQualifier(std::string_view word)
{
    constexpr std::string_view kQualifiers[] = {"pin_name", "signal_name", "bus_label", "pad_name"};
    return std::ranges::find(kQualifiers, word) != std::end(kQualifiers);
}

const STerminal* TakeTerminal(SCheck& check, const SLine& line, SCircuitBody& body)
{
    const SWords words(line.text);
    const auto number = ParseInt(words[0]);
    const bool known = body.terminalCount != 0;
    if (!number || *number < 1 ||
        (known && static_cast<std::size_t>(*number) > body.terminalCount)) {
        check.report.ErrorAt(line.Place(), body.base + 21, words[0], body.terminalCount);
        return nullptr;
    }
    if (words.count != 2 && words.count != 4 && words.count != 5) {
        check.report.ErrorAt(line.Place(), body.base + 29, words.count);
        return nullptr;
    }
    STerminal terminal{static_cast<std::size_t>(*number),
                       words[1],
                       words[2],
                       words[3],
                       words.count == 5,
                       line.Place()};
    if (words.count > 2 && !IsQualifier(terminal.qualifier)) {
        check.report.ErrorAt(line.Place(words[2]), body.base + 30, words[2], terminal.number);
    }
    if (words.count == 5 && words[4] != "Aggressor_Only") {
        check.report.ErrorAt(line.Place(words[4]), body.base + 31, words[4]);
    }
    body.terminals.push_back(terminal);
    return &body.terminals.back();
}

void CheckCount(SCheck& check, const SCircuitBody& body)
{
    if (!body.countSeen) {
        check.report.ErrorAt(body.place, body.base + 18, "is missing", KeywordText(body.keyword),
                             body.name);
        return;
    }
    const std::size_t ports = IsSubcircuit(body) ? 0 : PortsOf(body.file);
    const std::size_t expected = ports + (body.fileKind == "File_TS" ? 1 : 0);
    if (ports != 0 && body.terminalCount != 0 && body.terminalCount != expected) {
        check.report.ErrorAt(body.place, body.base + 20, body.terminalCount, body.file,
                             body.fileKind, expected);
    }
}

void CheckNumbers(SCheck& check, const SCircuitBody& body)
{
    if (body.terminals.empty()) {
        check.report.ErrorAt(body.place, body.base + 25, KeywordText(body.keyword), body.name);
        return;
    }
    std::set<std::size_t> numbers;
    for (const STerminal& terminal : body.terminals) {
        if (!numbers.insert(terminal.number).second) {
            check.report.ErrorAt(terminal.place, body.base + 22, terminal.number, body.name);
        }
    }
    const std::size_t count = body.terminalCount;
    if (IsSubcircuit(body) && numbers.size() < count) {
        std::size_t missing = 1;
        while (numbers.contains(missing)) {
            ++missing;
        }
        check.report.ErrorAt(body.place, body.base + 23, missing, body.name, count);
    }
    if (body.fileKind == "File_TS" && count != 0 && !numbers.contains(count)) {
        check.report.ErrorAt(body.place, body.base + 24, count, body.name);
    }
}

} // namespace

void BeginBody(SCircuitBody& body, EKeyword keyword, int base, std::string_view name, SPlace place)
{
    body = {};
    body.keyword = keyword;
    body.base = base;
    body.name = name;
    body.place = place;
}

const STerminal* TakeBodyLine(SCheck& check, const SLine& line, SCircuitBody& body)
{
    if (!line.text.empty() && IsDigit(line.text.front())) {
        return TakeTerminal(check, line, body);
    }
    if (!TakeSubParameterLine(check, line, body)) {
        check.report.ErrorAt(line.Place(), body.base + 5, CTokens(line.text).NextName(),
                             KeywordText(body.keyword));
    }
    return nullptr;
}

void CloseBody(SCheck& check, SCircuitBody& body)
{
    if (body.fileKind.empty()) {
        check.report.ErrorAt(body.place, body.base + 6, KeywordText(body.keyword), body.name);
    } else if (IsSubcircuit(body)) {
        if (body.terminationSeen) {
            check.report.ErrorAt(body.terminationPlace, body.base + 16,
                                 "cannot stand beside File_IBIS-ISS");
        }
    } else if (!body.parameters.empty()) {
        check.report.ErrorAt(body.parameterPlace, body.base + 12, body.parameters.back(),
                             body.fileKind);
    }
    CheckCount(check, body);
    CheckNumbers(check, body);
}

} // namespace zov::ibischk
