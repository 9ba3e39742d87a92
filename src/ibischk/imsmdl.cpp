// SPDX-License-Identifier: Apache-2.0
#include "ibischk/imsmdl.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

namespace zov::ibischk {

namespace {

using enum EJoins;
constexpr unsigned kRailNames = kSignalName | kBusLabel;
constexpr STerminalKind kKinds[] = {
    {"Pin_I/O", Signal, kAtPin, kPinName},
    {"Pad_I/O", Signal, kAtPad, kPinName},
    {"Buffer_I/O", Signal, kAtBuffer, kPinName},
    {"Pin_Rail", Rail, kAtPin, kPinName | kRailNames},
    {"Pad_Rail", Rail, kAtPad, kRailNames | kPadName},
    {"Buffer_Rail", Rail, kAtBuffer, kRailNames},
    {"Pullup_ref", Reference, kAtBuffer, kPinName},
    {"Pulldown_ref", Reference, kAtBuffer, kPinName},
    {"Power_clamp_ref", Reference, kAtBuffer, kPinName},
    {"Gnd_clamp_ref", Reference, kAtBuffer, kPinName},
    {"Ext_ref", Reference, kAtBuffer, kPinName},
    {"A_gnd", Ground, kAtNothing, kNoQualifier},
};

constexpr STerminalRules kRules = {6055, 6056, 6057, 6058, 6059, 6060, EReport::Warning};

SModelSet& Open(SCheck& check)
{
    return check.data.interconnectSets.back();
}

// --- the set ------------------------------------------------------------------------------------

void OpenSet(SCheck& check, const SLine& line)
{
    OpenModelSet(check, line, check.data.interconnectSets, check.data.interconnectSetNames, 6006);
}

void OpenMaker(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kNameLimit, 6007, Open(check).name);
}

void OpenDescription(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kDescriptionLimit, 6008, Open(check).name);
}

void OpenModel(SCheck& check, const SLine& line)
{
    OpenSetModel(check, line, Open(check), kInterconnectBody, 6010);
}

void TakeModelLine(SCheck& check, const SLine& line)
{
    TakeBodyLine(check, line, Open(check).models.back().body);
}

// --- a model by itself --------------------------------------------------------------------------

/// What a model has of one I/O pin.
struct SPinUse
{
    std::string_view pin;
    SPlace place;
    std::size_t terminals = 0;
    std::size_t aggressors = 0;
};

struct SModelUse
{
    std::vector<SPinUse> pins;
    CNameIndex pinNames;
    unsigned places = 0;     ///< of signals
    unsigned railPlaces = 0; ///< of rails and supply terminals
};

SModelUse UseOf(const SCircuitBody& body)
{
    SModelUse use;
    for (const STerminal& terminal : body.terminals) {
        const STerminalKind* kind = InterconnectKind(terminal.type);
        if (kind == nullptr || kind->joins != Signal) {
            use.railPlaces |= kind != nullptr ? kind->place : 0;
            continue;
        }
        use.places |= kind->place;
        const auto at = use.pinNames.Add(terminal.entry, use.pins.size());
        SPinUse& pin = at ? use.pins[*at]
                          : use.pins.emplace_back(SPinUse{terminal.entry, terminal.place, 0, 0});
        ++pin.terminals;
        pin.aggressors += terminal.aggressorOnly ? 1 : 0;
    }
    return use;
}

void CheckReference(SCheck& check, const SCircuitBody& body)
{
    if (body.fileKind != "File_TS") {
        return;
    }
    for (const STerminal& terminal : body.terminals) {
        const STerminalKind* kind = InterconnectKind(terminal.type);
        if (terminal.number == body.terminalCount && kind != nullptr && kind->joins == Signal) {
            check.report.WarningAt(terminal.place, 6065, terminal.number, body.name, terminal.type);
        }
    }
}

void CloseModel(SCheck& check)
{
    SCircuitBody& body = Open(check).models.back().body;
    CloseBody(check, body);
    CheckTerminals(check, body, kKinds, kRules);
    CheckReference(check, body);
    const SModelUse use = UseOf(body);
    STally single;
    for (const SPinUse& pin : use.pins) {
        if (pin.aggressors != 0 && pin.aggressors != pin.terminals) {
            check.report.WarningAt(pin.place, 6061, pin.pin, body.name);
        }
        if (pin.terminals == 1) {
            single.Add(pin.pin, pin.place);
        }
    }
    if (single) {
        check.report.WarningAt(single.place, 6062, single.first, body.name, single.count);
    }
    if (use.places == (kAtPin | kAtPad | kAtBuffer)) {
        check.report.WarningAt(body.place, 6063, body.name);
    } else if (check.report.Verbose() && use.places != 0 && (use.railPlaces & ~use.places) != 0) {
        check.report.Caution(body.place, 6064, body.name);
    }
}

void CloseSet(SCheck& check)
{
    const SModelSet& set = Open(check);
    if (set.models.empty()) {
        check.report.ErrorAt(set.place, 6009, set.name);
    }
}

void FinishSets(SCheck& check)
{
    const SFileData& data = check.data;
    if (check.state.fileType == EFileType::Ims && data.interconnectSets.empty()) {
        check.report.Error(6005, check.BaseName());
    }
    if (check.state.fileType != EFileType::Ibs) {
        return;
    }
    for (const SModelSet& set : data.interconnectSets) {
        if (!set.used) {
            const CPathScope scope(check.report, {{}, set.name, {}, {}});
            check.report.Caution(set.place, 6011, set.name);
        }
    }
}

// --- a set against its component ----------------------------------------------------------------

/// What terminals of a component may name.
class CComponentNames
{
public:
    explicit CComponentNames(const SComponent& component)
        : rails(component)
    {
        for (const SBusLabel& row : component.busLabels) {
            rails.Give(row.label, row.signal);
        }
        for (const SSupplyPad& row : component.supplyPads) {
            rails.Give(row.label, row.signal);
            pads.Add(row.pad, 0);
        }
        for (const SPinMapping& row : component.mapping) {
            mapping.try_emplace(row.pin, &row);
        }
    }

    CRails rails;
    CNameIndex pads;
    std::unordered_map<std::string_view, const SPinMapping*> mapping;
};

/// The table that a supply terminal stands for.
bool HasReference(const SModelInfo& model, std::string_view type)
{
    return type == "Pullup_ref"        ? model.hasPullup
           : type == "Pulldown_ref"    ? model.hasPulldown
           : type == "Power_clamp_ref" ? model.hasPowerClamp
           : type == "Gnd_clamp_ref"   ? model.hasGndClamp
                                       : model.hasExternalReference;
}

void CheckSupplyTerminal(SCheck& check, const STerminal& terminal, const SPin& pin)
{
    const auto at = check.data.modelNames.Find(pin.model);
    if (!at || check.data.models[*at].hasExternalModel ||
        HasReference(check.data.models[*at], terminal.type)) {
        return;
    }
    check.report.Caution(terminal.place, 6075, pin.model, pin.name, terminal.type);
}

void CheckPinTerminal(SCheck& check, const SComponent& component, const STerminal& terminal,
                      const STerminalKind& kind)
{
    const SPin* pin = component.FindPin(terminal.entry);
    if (pin == nullptr) {
        ReportUnresolved(check, component.pinNames, terminal.entry, terminal.place, 6070);
        return;
    }
    const bool wantsRail = kind.joins == Rail;
    if (pin->kind == EPinKind::NoConnect || pin->IsRail() != wantsRail) {
        check.report.ErrorAt(terminal.place, 6071, pin->name, PinKindText(pin->kind), terminal.type,
                             wantsRail ? "POWER or GND" : "an I/O pin");
    } else if (kind.joins == Reference && check.report.Verbose()) {
        CheckSupplyTerminal(check, terminal, *pin);
    }
}

void CheckTerminal(SCheck& check, const SComponent& component, const CComponentNames& names,
                   const STerminal& terminal, const STerminalKind& kind)
{
    switch (kind.qualifiers & QualifierOf(terminal)) {
    case kPinName:
        CheckPinTerminal(check, component, terminal, kind);
        break;
    case kSignalName:
        if (!names.rails.IsRailSignal(terminal.entry)) {
            check.report.ErrorAt(terminal.place, 6072, terminal.entry);
        }
        break;
    case kBusLabel:
        if (!names.rails.IsLabel(terminal.entry)) {
            check.report.ErrorAt(terminal.place, 6073, terminal.entry);
        }
        break;
    case kPadName:
        if (!names.pads.Find(terminal.entry)) {
            check.report.ErrorAt(terminal.place, 6074, terminal.entry);
        }
        break;
    default:
        break;
    }
}

/// Terminals that stand for whole rails, by what they name.
struct SRailTerminals
{
    std::unordered_map<std::string_view, const STerminal*> signals;
    std::unordered_map<std::string_view, const STerminal*> labels;

    explicit SRailTerminals(const SCircuitBody& body)
    {
        for (const STerminal& terminal : body.terminals) {
            if (terminal.type == "Pin_Rail") {
                const unsigned qualifier = QualifierOf(terminal);
                if (qualifier == kSignalName) {
                    signals.try_emplace(terminal.entry, &terminal);
                } else if (qualifier == kBusLabel) {
                    labels.try_emplace(terminal.entry, &terminal);
                }
            }
        }
    }

    /// The terminal whose rail the pin is a part of; null for none.
    [[nodiscard]] const STerminal* Covering(const CComponentNames& names, const SPin& pin) const
    {
        if (const auto found = signals.find(pin.signal); found != signals.end()) {
            return found->second;
        }
        const auto row = names.mapping.find(pin.name);
        const bool mapped = row != names.mapping.end();
        for (const std::string_view label : {mapped ? row->second->pulldown : pin.signal,
                                             mapped ? row->second->pullup : pin.signal}) {
            if (const auto found = labels.find(label); found != labels.end()) {
                return found->second;
            }
        }
        return nullptr;
    }
};

/// Rail pins that stand alone and, at the same time, in a rail.
void CheckCovered(SCheck& check, const SComponent& component, const CComponentNames& names,
                  const SCircuitBody& body)
{
    const SRailTerminals rails(body);
    for (const STerminal& terminal : body.terminals) {
        if (terminal.type != "Pin_Rail" || QualifierOf(terminal) != kPinName) {
            continue;
        }
        const SPin* pin = component.FindPin(terminal.entry);
        const STerminal* rail = pin != nullptr ? rails.Covering(names, *pin) : nullptr;
        if (rail != nullptr) {
            check.report.WarningAt(terminal.place, 6066, pin->name, rail->qualifier, rail->entry);
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::InterconnectModelSet, &OpenSet, nullptr, nullptr},
    {EKeyword::InterconnectManufacturer, &OpenMaker, nullptr, nullptr},
    {EKeyword::InterconnectDescription, &OpenDescription, nullptr, nullptr},
    {EKeyword::InterconnectModel, &OpenModel, &TakeModelLine, &CloseModel},
    {EKeyword::EndInterconnectModel, nullptr, nullptr, nullptr},
    {EKeyword::EndInterconnectModelSet, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::InterconnectSet, &CloseSet}};

} // namespace

const STerminalKind* InterconnectKind(std::string_view type)
{
    return FindKind(kKinds, type);
}

void CheckSetOfComponent(SCheck& check, const SComponent& component, const SModelSet& set)
{
    if (component.pins.empty()) {
        return;
    }
    const CComponentNames names(component);
    for (const SSetModel& model : set.models) {
        const CPathScope scope(
            check.report,
            {component.name, model.name, KeywordText(EKeyword::InterconnectModel), {}});
        for (const STerminal& terminal : model.body.terminals) {
            const STerminalKind* kind = InterconnectKind(terminal.type);
            if (kind != nullptr) {
                CheckTerminal(check, component, names, terminal, *kind);
            }
        }
        CheckCovered(check, component, names, model.body);
    }
}

const SFamily kImsmdlFamily = {"imsmdl", kHandlers, kSections, &FinishSets};

} // namespace zov::ibischk
