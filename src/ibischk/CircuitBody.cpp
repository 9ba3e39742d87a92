// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CircuitBody.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <set>
#include <string>

namespace zov::ibischk {

namespace {

constexpr std::string_view kSubcircuit = "File_IBIS-ISS";
constexpr int kCCompFields = 6811;

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

void CheckBodyFile(SCheck& check, const SCircuitBody& body, std::string_view file, SPlace place)
{
    if (IsSubcircuit(body)) {
        if (!EndsWithNoCase(file, ".iss")) {
            check.report.WarningAt(place, body.base + 11, file, body.fileKind, ".iss");
        }
    } else if (PortsOf(file) == 0 && !EndsWithNoCase(file, ".ts")) {
        check.report.WarningAt(place, body.base + 11, file, body.fileKind, ".sNp or .ts");
    }
    if (CheckFileName(check, file, EFileName::Referenced, place) &&
        !ReferencedFileExists(check, file)) {
        check.report.WarningAt(place, body.base + 10, file);
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
    body.filePlace = line.Place();
    // The files of three corners are alike; only the first is looked into.
    const std::size_t files = perCorner && !IsSubcircuit(body) && words.count == 3 ? 3 : 1;
    for (std::size_t i = 0; i < std::min(files, words.count); ++i) {
        CheckBodyFile(check, body, words[i], line.Place(words[i]));
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
    body.lastParameter = name;
    if (body.parameters.Add(name, 0)) {
        check.report.ErrorAt(line.Place(name), body.base + 15, name, body.name);
    }
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
    if (body.countSeen || !body.terminals.empty() || body.spoiled) {
        check.report.ErrorAt(line.Place(), code,
                             body.countSeen ? "stands more than once"
                                            : "stands behind the first terminal",
                             KeywordText(body.keyword), body.name);
    }
    body.countSeen = true;
    body.countPlace = line.Place();
    const bool equals = tokens.TakeEquals();
    const auto count = ParseInt(tokens.Rest());
    if (!equals || !count || *count < 1) {
        check.report.ErrorAt(line.Place(), body.base + 19, 1, line.text);
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

/// Fields of a terminal behind its number, and its marks.
bool FieldsGood(SCheck& check, const SLine& line, const SWords& words, int base)
{
    if (base == kCCompBody) {
        // The terminals of a buffer need no names.
        if (words.count != 2) {
            check.report.ErrorAt(line.Place(), kCCompFields, words.count);
        }
        return words.count == 2;
    }
    if (words.count != 2 && words.count != 4 && words.count != 5) {
        check.report.ErrorAt(line.Place(), base + 29, words.count);
        return false;
    }
    if (words.count > 2 && !IsQualifier(words[2])) {
        check.report.ErrorAt(line.Place(words[2]), base + 30, words[2], words[0]);
    }
    if (words.count == 5 && words[4] != "Aggressor_Only") {
        check.report.ErrorAt(line.Place(words[4]), base + 31, words[4]);
    }
    return true;
}

void TakeTerminal(SCheck& check, const SLine& line, SCircuitBody& body)
{
    const SWords words(line.text);
    const auto number = ParseInt(words[0]);
    const bool known = body.terminalCount != 0;
    if (!number || *number < 1 ||
        (known && static_cast<std::size_t>(*number) > body.terminalCount)) {
        const std::string range =
            known ? "from 1 to " + std::to_string(body.terminalCount) : "of at least 1";
        check.report.ErrorAt(line.Place(), body.base + 21, words[0], range);
        body.spoiled = true;
        return;
    }
    if (!FieldsGood(check, line, words, body.base)) {
        body.spoiled = true;
        return;
    }
    body.terminals.push_back({static_cast<std::size_t>(*number), words[1], words[2], words[3],
                              words.count == 5, line.Place()});
}

/// The named sub-circuit in the file, when the file can be read.
void CheckSubcircuit(SCheck& check, const SCircuitBody& body)
{
    if (body.subckt.empty()) {
        return;
    }
    const CCircuitFiles::SFile& file = check.data.circuitFiles.Of(check, body.file, true);
    if (!file.readable) {
        return;
    }
    const auto found = file.subcircuits.find(LowerCase(body.subckt));
    if (found == file.subcircuits.end()) {
        check.report.WarningAt(body.filePlace, body.base + 32, body.subckt, body.file);
    } else if (found->second != body.terminalCount) {
        check.report.WarningAt(body.countPlace, body.base + 26, body.terminalCount, body.subckt,
                               body.file, found->second);
    }
}

/// A file's ports, and the common reference that File_TS adds as a terminal.
void CheckPorts(SCheck& check, const SCircuitBody& body)
{
    const bool hasReference = body.fileKind == "File_TS";
    if (hasReference && body.terminalCount < 2) {
        check.report.ErrorAt(body.countPlace, body.base + 19, 2, body.terminalCount);
        return;
    }
    std::size_t ports = PortsOf(body.file);
    const bool named = ports != 0;
    if (!named && EndsWithNoCase(body.file, ".ts")) {
        ports = check.data.circuitFiles.Of(check, body.file, false).ports.value_or(0);
    }
    const std::size_t expected = ports + (hasReference ? 1 : 0);
    if (ports != 0 && body.terminalCount != expected) {
        check.report.At(named ? EReport::Error : EReport::Warning, body.countPlace,
                        body.base + (named ? 20 : 27), body.terminalCount, body.file, body.fileKind,
                        expected);
    }
}

void CheckCount(SCheck& check, const SCircuitBody& body)
{
    if (!body.countSeen) {
        check.report.ErrorAt(body.place, body.base + 18, "is missing", KeywordText(body.keyword),
                             body.name);
        return;
    }
    if (body.terminalCount == 0) {
        return;
    }
    if (IsSubcircuit(body)) {
        CheckSubcircuit(check, body);
    } else if (!body.fileKind.empty()) {
        CheckPorts(check, body);
    }
}

void CheckNumbers(SCheck& check, const SCircuitBody& body)
{
    if (body.terminals.empty() && !body.spoiled) {
        check.report.ErrorAt(body.place, body.base + 25, KeywordText(body.keyword), body.name);
        return;
    }
    std::set<std::size_t> numbers;
    for (const STerminal& terminal : body.terminals) {
        if (!numbers.insert(terminal.number).second) {
            check.report.ErrorAt(terminal.place, body.base + 22, terminal.number, body.name);
        }
    }
    if (body.spoiled) {
        return;
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

void TakeBodyLine(SCheck& check, const SLine& line, SCircuitBody& body)
{
    if (IsDigit(line.text.front())) {
        TakeTerminal(check, line, body);
    } else if (!TakeSubParameterLine(check, line, body)) {
        check.report.ErrorAt(line.Place(), body.base + 5, CTokens(line.text).NextName(),
                             KeywordText(body.keyword));
    }
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
    } else if (body.parameters.Size() != 0) {
        check.report.ErrorAt(body.parameterPlace, body.base + 12, body.lastParameter,
                             body.fileKind);
    }
    CheckCount(check, body);
    CheckNumbers(check, body);
}

} // namespace zov::ibischk
