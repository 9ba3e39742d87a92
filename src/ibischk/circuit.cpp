// SPDX-License-Identifier: Apache-2.0
#include "ibischk/circuit.h"

#include "ibischk/external.h"
#include "ibischk/mdlparts.h"

#include <algorithm>
#include <span>
#include <utility>

namespace zov::ibischk {

namespace {

// --- [External Circuit] ------------------------------------------------------------------------

void OpenCircuit(SCheck& check, const SLine& line)
{
    SFileData& data = check.data;
    SExternal circuit;
    circuit.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    circuit.place = check.state.keywordPlace;
    check.report.Path().model = circuit.name;
    if (!circuit.name.empty()) {
        if (const auto before = data.circuitNames.Add(circuit.name, data.circuits.size())) {
            check.report.ErrorAt(line.Place(circuit.name), 2440, circuit.name,
                                 data.circuits[*before].place.line);
            circuit.used = true;
        }
    }
    data.circuits.push_back(std::move(circuit));
}

void FinishCircuits(SCheck& check)
{
    for (const SExternal& circuit : check.data.circuits) {
        if (!circuit.used && !circuit.name.empty()) {
            const CPathScope path(check.report,
                                  {{}, circuit.name, KeywordText(EKeyword::ExternalCircuit), {}});
            check.report.WarningAt(circuit.place, 2441, circuit.name);
        }
    }
}

// --- [External Model] --------------------------------------------------------------------------

void OpenModelBody(SCheck& check, const SLine& /*line*/)
{
    check.data.model.external = {};
    check.data.model.external.place = check.state.keywordPlace;
}

constexpr std::string_view kSignals[] = {"A_signal", "A_signal_pos", "A_signal_neg", "A_pos",
                                         "A_neg"};
constexpr std::string_view kReferences[] = {"A_puref", "A_pdref",  "A_pcref",
                                            "A_gcref", "A_extref", "A_gnd"};

bool IsReservedPort(std::string_view name)
{
    return std::ranges::find(kSignals, name) != std::end(kSignals) ||
           std::ranges::find(kReferences, name) != std::end(kReferences) || IsDigitalPort(name);
}

/// The pads that a type has, of kSignals.
std::span<const std::string_view> SignalsOf(const SModelType& type)
{
    const std::span all(kSignals);
    return type.IsDiff() ? all.subspan(1, 2) : type.IsSeries() ? all.subspan(3) : all.first(1);
}

/// Nodes of the circuit that converters connect have names of their own.
CNameIndex ConverterPorts(const SExternal& external)
{
    CNameIndex names;
    for (const SConverter& converter : external.converters) {
        names.Add(converter.ports[0], 0);
        names.Add(converter.ports[1], 0);
    }
    return names;
}

void CheckPorts(SCheck& check, const SModelInfo& info, const SExternal& external)
{
    const SModelType& type = info.Type();
    const auto own = SignalsOf(type);
    const CNameIndex converted = ConverterPorts(external);
    for (const SExternalPort& port : external.ports) {
        const bool signal = std::ranges::find(kSignals, port.name) != std::end(kSignals);
        if (signal && std::ranges::find(own, port.name) == own.end()) {
            check.report.ErrorAt(port.place, 2342, port.name, type.name);
        } else if (!IsReservedPort(port.name) && !converted.Find(port.name)) {
            check.report.ErrorAt(port.place, 2340, port.name);
        }
    }
    for (const std::string_view name : own) {
        if (!external.ports.empty() && !external.HasPort(name)) {
            check.report.ErrorAt(external.place, 2341, info.name, type.name, name);
        }
    }
}

void CheckDigital(SCheck& check, const SModelInfo& info, const SExternal& external)
{
    const SModelType& type = info.Type();
    const bool isSwitch = type.type == EModelType::SeriesSwitch;
    const std::pair<std::string_view, bool> kWanted[] = {{"D_drive", type.Drives()},
                                                         {"D_enable", type.canDisable && !isSwitch},
                                                         {"D_receive", type.receives},
                                                         {"D_switch", isSwitch}};
    for (const auto& [name, wanted] : kWanted) {
        const bool converted = std::ranges::find(external.converters, name, &SConverter::digital) !=
                               external.converters.end();
        if (wanted && !converted && !external.HasPort(name)) {
            check.report.WarningAt(external.place, 2343, info.name, type.name, name);
        }
    }
}

/// When the model ends: its type and references may stand behind the body.
void CheckExternalModel(SCheck& check)
{
    if (!check.state.Has(EKeyword::ExternalModel)) {
        return;
    }
    const SModelInfo& info = OpenModel(check);
    const SExternal& external = check.data.model.external;
    const CPathScope path(check.report, {{}, info.name, KeywordText(EKeyword::ExternalModel), {}});
    if (external.HasPort("A_extref") && !check.state.Has(EKeyword::ExternalReference)) {
        check.report.WarningAt(external.place, 2344);
    }
    if (info.type != EModelType::Unknown) {
        CheckPorts(check, info, external);
        CheckDigital(check, info, external);
    }
}

constexpr SSectionHandler kSections[] = {{EScope::Model, &CheckExternalModel}};

constexpr SHandler kHandlers[] = {
    {EKeyword::ExternalModel, &OpenModelBody, &TakeExternalLine, &CloseExternal},
    {EKeyword::EndExternalModel, nullptr, nullptr, nullptr},
    {EKeyword::ExternalCircuit, &OpenCircuit, &TakeExternalLine, &CloseExternal},
    {EKeyword::EndExternalCircuit, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kCircuitFamily = {"circuit", kHandlers, kSections, &FinishCircuits};

SExternal& OpenExternal(SCheck& check)
{
    return check.state.scope == EScope::Model ? check.data.model.external
                                              : check.data.circuits.back();
}

int ExternalBase(const SCheck& check)
{
    return check.state.scope == EScope::Model ? kExternalModel : kExternalCircuit;
}

} // namespace zov::ibischk
