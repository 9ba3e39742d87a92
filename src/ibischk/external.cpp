// SPDX-License-Identifier: Apache-2.0
#include "ibischk/external.h"

#include "base/Text.h"
#include "ibischk/Ami.h"

#include <algorithm>
#include <utility>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ERow : std::size_t
{
    kLanguage,
    kCorner,
    kParameters,
    kConverterParameters,
    kPorts,
    kDToA,
    kAToD
};
constexpr SSubParameter kRows[] = {
    {"Language", V21, Without},
    {"Corner", V21, Without, EOccurs::Any},
    {"Parameters", V21, Without, EOccurs::Any},
    {"Converter_Parameters", V60, Without, EOccurs::Any},
    {"Ports", V21, Without, EOccurs::Any},
    {"D_to_A", V21, Without, EOccurs::Any},
    {"A_to_D", V21, Without, EOccurs::Any},
};

constexpr SLanguage kLanguages[] = {
    {"SPICE", V21, true},      {"VHDL-AMS", V21, false},     {"Verilog-AMS", V21, false},
    {"VHDL-A(MS)", V51, true}, {"Verilog-A(MS)", V51, true}, {"IBIS-ISS", V60, true},
};

bool HasRow(const SExternal& external, ERow row)
{
    return (external.seen >> row & 1U) != 0;
}

void TakeLanguage(SCheck& check, const SLine& line, CTokens& tokens, bool isFirst)
{
    const int base = ExternalBase(check);
    const std::string_view word = tokens.Next();
    if (word.empty()) {
        check.report.ErrorAt(line.Place(), 1944, KeywordText(check.state.current), 0, "1");
        return;
    }
    ReportExtra(check, line, tokens, kRows[kLanguage].name);
    if (!isFirst) {
        check.report.WarningAt(line.Place(), base + 2, KeywordText(check.state.current));
    }
    const auto* known = std::ranges::find_if(
        kLanguages, [word](const SLanguage& row) { return EqualsNoCase(row.name, word); });
    if (known == std::end(kLanguages)) {
        check.report.ErrorAt(line.Place(word), base + 3, word);
        return;
    }
    if (!check.state.AtLeast(known->since)) {
        check.report.ErrorAt(line.Place(word), base + 4, known->name, VersionText(known->since));
    }
    OpenExternal(check).language = known;
}

void TakeCorner(SCheck& check, const SLine& line, const CTokens& tokens)
{
    const int base = ExternalBase(check);
    std::string_view words[3];
    const std::size_t count = SplitTokens(tokens.Rest(), words);
    if (count != std::size(words)) {
        check.report.ErrorAt(line.Place(), base + 5, count);
        return;
    }
    const std::size_t corner = ExternalCorner(words[0]);
    if (corner == kNoCorner) {
        check.report.ErrorAt(line.Place(words[0]), base + 6, words[0]);
    } else if (std::exchange(OpenExternal(check).corners[corner], true)) {
        check.report.ErrorAt(line.Place(words[0]), base + 7, words[0]);
    }
    const SPlace place = line.Place(words[1]);
    if (CheckFileName(check, words[1], EFileName::Referenced, place) &&
        !ReferencedFileExists(check, words[1])) {
        check.report.WarningAt(place, base + 9, words[1], words[0]);
    }
}

/// The value behind "=": a word, or text between quotes.
std::string_view TakeValue(CTokens& tokens)
{
    const std::string_view rest = tokens.Rest();
    if (!rest.starts_with('"')) {
        return tokens.Next();
    }
    const std::size_t end = rest.find('"', 1);
    const std::string_view value = rest.substr(0, end == std::string_view::npos ? end : end + 1);
    while (!tokens.AtEnd() && tokens.Rest().data() < value.data() + value.size()) {
        tokens.Next();
    }
    return value;
}

/// Where a value stands in a parameter file: "file(root(parameter))".
/// @return the file; empty when the form is another
std::string_view FileOfReference(std::string_view value)
{
    const std::size_t open = value.find('(');
    const std::size_t levels = value.size() - std::min(value.find(')'), value.size());
    const std::string_view path = value.substr(open, value.size() - levels - open);
    const bool closed = value.substr(value.size() - levels).find_first_not_of(')') == value.npos;
    const bool balanced = levels == static_cast<std::size_t>(std::ranges::count(path, '('));
    return closed && balanced && !path.ends_with('(') && path.find("((") == path.npos
               ? value.substr(0, open)
               : std::string_view();
}

/// Checks a parameter file that a value names, once whatever names it.
void CheckParameterFile(SCheck& check, std::string_view file, SPlace place)
{
    auto& known = check.data.algorithmicFiles.parameters;
    if (known.contains(file)) {
        return;
    }
    SAmiFacts& facts = known[file];
    const int base = ExternalBase(check);
    for (const std::string_view extension : {".ibs", ".pkg", ".ebd"}) {
        if (EndsWithNoCase(file, extension)) {
            check.report.ErrorAt(place, base + 31, file, extension);
            return;
        }
    }
    if (!CheckFileName(check, file, EFileName::Referenced, place)) {
        return;
    }
    if (!ReferencedFileExists(check, file)) {
        check.report.WarningAt(place, base + 32, file);
        return;
    }
    const bool ami = EndsWithNoCase(file, ".ami");
    facts =
        CheckNamedAmi(check, file, ami ? EFileType::Ami : EFileType::Parameters, EAmiSide::Open);
}

void CheckReference(SCheck& check, std::string_view name, std::string_view value, SPlace place)
{
    if (value.starts_with('"') || value.find('(') == std::string_view::npos) {
        return;
    }
    const std::string_view file = FileOfReference(value);
    if (file.empty()) {
        check.report.ErrorAt(place, ExternalBase(check) + 30, name, value);
    } else {
        CheckParameterFile(check, file, place);
    }
}

void TakeParameters(SCheck& check, const SLine& line, CTokens tokens, CNameIndex& names)
{
    const int base = ExternalBase(check);
    while (!tokens.AtEnd()) {
        const std::string_view name = tokens.NextName();
        const bool hasValue = tokens.TakeEquals();
        if (name.empty()) {
            check.report.WarningAt(line.Place(), 1941, kRows[kParameters].name, "has a stray");
            continue;
        }
        if (hasValue) {
            if (!check.state.AtLeast(V60)) {
                check.report.ErrorAt(line.Place(name), base + 28, name);
            }
            const std::string_view value = TakeValue(tokens);
            if (value.empty()) {
                check.report.ErrorAt(line.Place(name), base + 29, name);
            } else {
                CheckReference(check, name, value, line.Place(value));
            }
        }
        if (names.Add(name, line.line)) {
            check.report.ErrorAt(line.Place(name), base + 27, name);
        }
    }
}

void TakePorts(SCheck& check, const SLine& line, CTokens tokens)
{
    SExternal& external = OpenExternal(check);
    while (!tokens.AtEnd()) {
        const std::string_view name = tokens.Next();
        const SPlace place = line.Place(name);
        LimitName(check, "Port", name, kNameLimit, place);
        if (const auto before = external.portNames.Add(name, external.ports.size())) {
            check.report.ErrorAt(place, ExternalBase(check) + 11, name,
                                 external.ports[*before].place.line);
        } else {
            external.ports.push_back({name, place});
        }
    }
}

void CheckLanguage(SCheck& check, const SExternal& external, int base)
{
    if (external.language == nullptr) {
        return;
    }
    if (HasRow(external, kParameters) && external.language->name == "SPICE") {
        check.report.WarningAt(external.place, base + 26);
    }
    for (const SExternalPort& port : external.ports) {
        if (external.language->analog && IsDigitalPort(port.name)) {
            check.report.ErrorAt(port.place, base + 12, port.name, external.language->name);
        }
    }
}

} // namespace

std::size_t ExternalCorner(std::string_view word)
{
    constexpr std::string_view kCorners[] = {"Typ", "Min", "Max"};
    const auto* found = std::ranges::find_if(
        kCorners, [word](std::string_view name) { return EqualsNoCase(name, word); });
    return static_cast<std::size_t>(found - std::begin(kCorners));
}

bool IsDigitalPort(std::string_view name)
{
    return name == "D_drive" || name == "D_enable" || name == "D_receive" || name == "D_switch";
}

void TakeExternalLine(SCheck& check, const SLine& line)
{
    SExternal& external = OpenExternal(check);
    CTokens tokens(line.text);
    const bool isFirst = external.seen == 0;
    const auto row = TakeSubParameter(check, line, tokens, kRows, external.seen);
    if (!row) {
        return;
    }
    switch (*row) {
    case kLanguage:
        TakeLanguage(check, line, tokens, isFirst);
        break;
    case kCorner:
        TakeCorner(check, line, tokens);
        break;
    case kParameters:
        TakeParameters(check, line, tokens, external.parameters);
        break;
    case kConverterParameters:
        TakeParameters(check, line, tokens, external.converterParameters);
        break;
    case kPorts:
        TakePorts(check, line, tokens);
        break;
    default:
        TakeConverter(check, line, tokens, *row == kDToA);
        break;
    }
}

void CloseExternal(SCheck& check)
{
    const SExternal& external = OpenExternal(check);
    const int base = ExternalBase(check);
    const std::string_view keyword =
        KeywordText(base == kExternalModel ? EKeyword::ExternalModel : EKeyword::ExternalCircuit);
    if (!HasRow(external, kLanguage)) {
        check.report.ErrorAt(external.place, base + 1, keyword);
    }
    if (!external.corners[0]) {
        check.report.ErrorAt(external.place, base + 8, keyword);
    }
    if (!HasRow(external, kPorts)) {
        check.report.ErrorAt(external.place, base + 10, keyword);
    }
    CheckLanguage(check, external, base);
    CheckConverters(check, external);
}

} // namespace zov::ibischk
