// SPDX-License-Identifier: Apache-2.0
#include "ibischk/node.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>
#include <unordered_map>
#include <utility>

namespace zov::ibischk {

namespace {

// --- [Node Declarations] -----------------------------------------------------------------------

void OpenNodes(SCheck& check, const SLine& /*line*/)
{
    if (check.state.Has(EKeyword::CircuitCall)) {
        check.report.ErrorAt(check.state.keywordPlace, 2503);
    }
}

void TakeNodes(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    for (CTokens tokens(line.text); !tokens.AtEnd();) {
        const SNode node{tokens.Next(), line.Place()};
        const SPlace place = line.Place(node.name);
        LimitName(check, "Node", node.name, kNameLimit, place);
        if (IsReservedWord(node.name, check.state.version)) {
            check.report.ErrorAt(place, 1916, node.name);
        }
        if (component.FindPin(node.name) != nullptr) {
            check.report.ErrorAt(place, 2502, node.name);
        }
        if (const auto before = component.names->nodeNames.Add(node.name, component.nodes.size())) {
            check.report.ErrorAt(place, 2501, node.name, component.nodes[*before].place.line);
            continue;
        }
        component.nodes.push_back({node.name, place});
    }
}

void CloseNodes(SCheck& check)
{
    if (OpenComponent(check).nodes.empty()) {
        check.report.ErrorAt(check.state.keywordPlace, 2500);
    }
}

// --- [Circuit Call] ----------------------------------------------------------------------------

enum ERow : std::uint8_t
{
    kSignalPin,
    kDiffSignalPins,
    kSeriesPins,
    kPortMap,
    kParameters,
    kConverterParameters
};
constexpr SSubParameter kRows[] = {
    {"Signal_pin", EVersion::V42, EEquals::Without},
    {"Diff_signal_pins", EVersion::V42, EEquals::Without},
    {"Series_pins", EVersion::V42, EEquals::Without},
    {"Port_map", EVersion::V42, EEquals::Without, EOccurs::Any},
    {"Parameters", EVersion::V60, EEquals::Without, EOccurs::Any},
    {"Converter_Parameters", EVersion::V60, EEquals::Without, EOccurs::Any},
};
constexpr std::uint64_t kPinRows = 0b111;

void OpenCall(SCheck& check, const SLine& line)
{
    RequireEarlier(check, EKeyword::Pin, 203);
    SCircuitCall call;
    call.circuit = TakeName(check, line, kNameLimit, EReserved::Refused);
    call.place = check.state.keywordPlace;
    check.report.Path().model = call.circuit;
    OpenComponent(check).calls.push_back(std::move(call));
}

/// Fills the places with a line's words; false with a report when it has fewer or more.
bool TakeWords(SCheck& check, const SLine& line, const CTokens& tokens,
               std::span<std::string_view> out, std::string_view expected)
{
    const std::size_t count = SplitTokens(tokens.Rest(), out);
    if (count == out.size()) {
        return true;
    }
    check.report.ErrorAt(line.Place(), count < out.size() ? 1944 : 1953,
                         KeywordText(EKeyword::CircuitCall), count, expected);
    return count > out.size();
}

void CheckCallPin(SCheck& check, const SLine& line, std::string_view name,
                  std::string_view subParameter)
{
    const SPin* pin = TakePin(check, line, name, 2603);
    if (pin != nullptr && pin->kind != EPinKind::CircuitCall) {
        check.report.ErrorAt(line.Place(name), 2605, subParameter, name, pin->model);
    }
}

void TakeSignalPin(SCheck& check, const SLine& line, const CTokens& tokens)
{
    SComponent& component = OpenComponent(check);
    SCircuitCall& call = component.calls.back();
    if (!TakeWords(check, line, tokens, std::span(&call.signalPin, 1), "one pin")) {
        return;
    }
    CheckCallPin(check, line, call.signalPin, kRows[kSignalPin].name);
    const std::size_t number = component.calls.size() - 1;
    const auto before = component.names->calledSignalPins.Add(call.signalPin, number);
    if (before && *before != number) {
        check.report.ErrorAt(line.Place(), 2611, call.signalPin,
                             component.calls[*before].place.line);
    }
}

void TakePinPair(SCheck& check, const SLine& line, const CTokens& tokens,
                 std::span<std::string_view> pins, std::string_view subParameter)
{
    if (!TakeWords(check, line, tokens, pins, "two pins")) {
        return;
    }
    CheckCallPin(check, line, pins[0], subParameter);
    if (pins[0] == pins[1]) {
        check.report.ErrorAt(line.Place(pins[1]), 2604, subParameter, pins[0]);
    } else {
        CheckCallPin(check, line, pins[1], subParameter);
    }
}

void TakePortMap(SCheck& check, const SLine& line, const CTokens& tokens)
{
    SCircuitCall& call = OpenComponent(check).calls.back();
    std::array<std::string_view, 2> words;
    if (!TakeWords(check, line, tokens, words, "port and node")) {
        return;
    }
    if (call.portNames.Add(words[0], call.ports.size())) {
        check.report.ErrorAt(line.Place(words[0]), 2608, words[0]);
        return;
    }
    call.ports.push_back({words[0], words[1], line.Place(words[1])});
}

void TakeCallLine(SCheck& check, const SLine& line)
{
    SCircuitCall& call = OpenComponent(check).calls.back();
    CTokens tokens(line.text);
    const bool hadPins = (call.seen & kPinRows) != 0;
    const auto row = TakeSubParameter(check, line, tokens, kRows, call.seen);
    if (!row) {
        return;
    }
    const bool isPinRow = *row <= kSeriesPins;
    if (isPinRow && hadPins && (call.seen & kPinRows) != (std::uint64_t{1} << *row)) {
        check.report.ErrorAt(line.Place(), 2602);
    }
    switch (*row) {
    case kSignalPin:
        TakeSignalPin(check, line, tokens);
        break;
    case kDiffSignalPins:
        TakePinPair(check, line, tokens, call.diffPins, kRows[*row].name);
        break;
    case kSeriesPins:
        TakePinPair(check, line, tokens, call.seriesPins, kRows[*row].name);
        break;
    case kPortMap:
        TakePortMap(check, line, tokens);
        break;
    default:
        break;
    }
}

// --- a component's calls together --------------------------------------------------------------

using CPinPairs = std::set<std::pair<std::string_view, std::string_view>>;

CPinPairs SeriesPairs(const SComponent& component)
{
    CPinPairs pairs;
    for (const SSeriesPin& row : component.seriesPins) {
        pairs.emplace(std::minmax(row.pin, row.pin2));
    }
    return pairs;
}

void CheckPairs(SCheck& check, const SComponent& component, const SCircuitCall& call,
                const CPinPairs& seriesPairs)
{
    const std::string_view* diff = call.diffPins;
    if (!diff[1].empty()) {
        const auto pair = component.diffPinNames.Find(diff[0]);
        if (!pair || component.diffPins[*pair].pin != diff[0] ||
            component.diffPins[*pair].inverting != diff[1]) {
            check.report.WarningAt(call.place, 2606, kRows[kDiffSignalPins].name, diff[0], diff[1],
                                   KeywordText(EKeyword::DiffPin));
        }
    }
    const std::string_view* series = call.seriesPins;
    if (!series[1].empty() && !seriesPairs.contains(std::minmax(series[0], series[1]))) {
        check.report.WarningAt(call.place, 2606, kRows[kSeriesPins].name, series[0], series[1],
                               KeywordText(EKeyword::SeriesPinMapping));
    }
}

void CheckNode(SCheck& check, const SComponent& component, const SPortMap& port,
               std::vector<std::size_t>& uses)
{
    if (const auto node = component.names->nodeNames.Find(port.node)) {
        ++uses[*node];
        return;
    }
    const SPin* pin = component.FindPin(port.node);
    if (pin == nullptr) {
        const CNameIndex& names = component.names->nodeNames.FindNoCase(port.node)
                                      ? component.names->nodeNames
                                      : component.pinNames;
        ReportUnresolved(check, names, port.node, port.place, 2610);
    } else if (!pin->IsRail() && pin->kind != EPinKind::CircuitCall) {
        check.report.WarningAt(port.place, 2612, pin->name, pin->model);
    }
}

void CloseComponentCalls(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    if (component.calls.empty() && component.nodes.empty()) {
        return;
    }
    CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::CircuitCall), {}});
    const CPinPairs seriesPairs = SeriesPairs(component);
    std::vector<std::size_t> uses(component.nodes.size());
    for (const SCircuitCall& call : component.calls) {
        check.report.Path().model = call.circuit;
        CheckPairs(check, component, call, seriesPairs);
        for (const SPortMap& port : call.ports) {
            CheckNode(check, component, port, uses);
        }
    }
    check.report.Path().model = {};
    for (std::size_t i = 0; i < uses.size(); ++i) {
        const SNode& node = component.nodes[i];
        if (uses[i] == 0) {
            check.report.WarningAt(node.place, 2504, node.name);
        } else if (uses[i] == 1) {
            check.report.NoteAt(node.place, 2505, node.name);
        }
    }
}

// --- against the circuits of the file ----------------------------------------------------------

/// The ports of each circuit that is called, looked up once.
using CPortNames = std::unordered_map<std::size_t, CNameIndex>;

const CNameIndex& PortsOf(const SExternal& circuit, std::size_t number, CPortNames& known)
{
    const auto [entry, isNew] = known.try_emplace(number);
    if (isNew) {
        for (std::size_t i = 0; i < circuit.ports.size(); ++i) {
            entry->second.Add(circuit.ports[i].name, i);
        }
    }
    return entry->second;
}

void CheckPorts(SCheck& check, const SCircuitCall& call, const SExternal& circuit,
                const CNameIndex& ports)
{
    std::size_t mapped = 0;
    for (const SPortMap& map : call.ports) {
        if (ports.Find(map.port)) {
            ++mapped;
        } else {
            check.report.ErrorAt(map.place, 2607, map.port, circuit.name);
        }
    }
    if (mapped >= ports.Size()) {
        return;
    }
    // The simulator's ground needs no node.
    const auto isMissing = [&call](const SExternalPort& port) {
        return port.name != "A_gnd" && !call.portNames.Find(port.name);
    };
    const auto missing = std::ranges::find_if(circuit.ports, isMissing);
    if (missing != circuit.ports.end()) {
        check.report.WarningAt(call.place, 2609, missing->name, circuit.name,
                               std::ranges::count_if(circuit.ports, isMissing));
    }
}

void FinishCalls(SCheck& check)
{
    SFileData& data = check.data;
    CPortNames ports;
    for (const SComponent& component : data.components) {
        for (const SCircuitCall& call : component.calls) {
            const CPathScope scope(
                check.report,
                {component.name, call.circuit, KeywordText(EKeyword::CircuitCall), {}});
            const auto circuit = data.circuitNames.Find(call.circuit);
            if (circuit) {
                data.circuits[*circuit].used = true;
                const SExternal& called = data.circuits[*circuit];
                CheckPorts(check, call, called, PortsOf(called, *circuit, ports));
            } else if (!call.circuit.empty()) {
                ReportUnresolved(check, data.circuitNames, call.circuit, call.place, 2601);
            }
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::NodeDeclarations, &OpenNodes, &TakeNodes, &CloseNodes},
    {EKeyword::EndNodeDeclarations, nullptr, nullptr, nullptr},
    {EKeyword::CircuitCall, &OpenCall, &TakeCallLine, nullptr},
    {EKeyword::EndCircuitCall, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentCalls}};

} // namespace

const SFamily kNodeFamily = {"node", kHandlers, kSections, &FinishCalls};

} // namespace zov::ibischk
