// SPDX-License-Identifier: Apache-2.0
#include "ibis/BusDefinitions.h"

#include "base/Text.h"
#include "ibis/DataObject.h"

#include <algorithm>
#include <fmt/format.h>
#include <span>

namespace zov::ibis {

namespace {

constexpr std::string_view kComponentTypes[] = {"Controller", "Memory"};
constexpr std::string_view kBusTypes[] = {"Data", "Ctrl", "AddCmd"};
constexpr std::string_view kEdgeTypes[] = {"BothEdges", "RiseEdge", "FallEdge"};

struct SLimitName
{
    std::string_view word;
    std::string_view label;
};
constexpr SLimitName kLimitNames[kTimingLimits] = {
    {"MinTransmitSetup", "Min Transmit Setup"},
    {"MinTransmitHold", "Min Transmit Hold"},
    {"MinReceiveSetup", "Min Receive Setup"},
    {"MinReceiveHold", "Min Receive Hold"},
    {"MinStrobeSetup", "Min Strobe Setup"},
    {"MinStrobeHold", "Min Strobe Hold"},
    {"tDQSQ", "tDQSQ"},
    {"tQH", "tQH"},
    {"MaxReceiveSkew(+)", "Max Receive Skew (+)"},
    {"MaxReceiveSkew(-)", "Max Receive Skew (-)"},
    {"MaxStrobeClockSkew(+)", "Max Strobe Clock Skew (+)"},
    {"MaxStrobeClockSkew(-)", "Max Strobe Clock Skew (-)"},
};

template <class T>
bool ReadOf(std::span<const std::string_view> words, std::string_view word, T& out)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (EqualsNoCase(words[i], word)) {
            out = static_cast<T>(i);
            return true;
        }
    }
    return false;
}

SError Refuse(std::string text)
{
    return Fail(EErr::Argument, std::move(text));
}

/// Names are words of a comment line.
CResult<void> CheckName(std::string_view name)
{
    const bool good = !name.empty() && std::ranges::none_of(name, [](char c) {
        return static_cast<unsigned char>(c) <= ' ';
    });
    return good ? CResult<void>() : Refuse(fmt::format("'{}' is no name: it is one word", name));
}

SError InUse(std::string_view name)
{
    return Refuse(fmt::format("'{}' is already in use.", name));
}

CResult<void> CheckNew(std::span<const std::string> names, std::string_view name)
{
    RETURN_IF_ERROR(CheckName(name));
    return std::ranges::find(names, name) == names.end() ? CResult<void>() : InUse(name);
}

/// @param except  place of the one that gets the name
template <class T>
CResult<void> CheckNewIn(const std::vector<T>& all, std::string_view name,
                         std::size_t except = static_cast<std::size_t>(-1))
{
    RETURN_IF_ERROR(CheckName(name));
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (i != except && all[i].name == name) {
            return InUse(name);
        }
    }
    return {};
}

CResult<void> CheckLimit(ETimingLimit limit, std::string_view text)
{
    const SIPNumber number = ReadIPNumber(text);
    return number.Has() && number.value > 0.0
               ? CResult<void>()
               : Refuse(fmt::format("{} should be positive number.", LabelOf(limit)));
}

CResult<void> CheckList(const std::vector<std::string>& names)
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        RETURN_IF_ERROR(CheckNew(std::span(names).first(i), names[i]));
    }
    return {};
}

CResult<void> CheckReference(const STimingReference& reference)
{
    RETURN_IF_ERROR(CheckList(reference.clocks));
    RETURN_IF_ERROR(CheckList(reference.signals));
    for (std::size_t i = 0; i < kTimingLimits; ++i) {
        if (!reference.limits[i].empty()) {
            RETURN_IF_ERROR(CheckLimit(static_cast<ETimingLimit>(i), reference.limits[i]));
        }
    }
    return {};
}

} // namespace

std::string_view WordOf(EComponentType type)
{
    return kComponentTypes[static_cast<std::size_t>(type)];
}

std::string_view WordOf(EBusType type)
{
    return kBusTypes[static_cast<std::size_t>(type)];
}

std::string_view WordOf(EEdgeType type)
{
    return kEdgeTypes[static_cast<std::size_t>(type)];
}

std::string_view WordOf(ETimingLimit limit)
{
    return kLimitNames[static_cast<std::size_t>(limit)].word;
}

std::string_view LabelOf(ETimingLimit limit)
{
    return kLimitNames[static_cast<std::size_t>(limit)].label;
}

bool ReadWord(std::string_view word, EComponentType& out)
{
    return ReadOf(kComponentTypes, word, out);
}

bool ReadWord(std::string_view word, EBusType& out)
{
    return ReadOf(kBusTypes, word, out);
}

bool ReadWord(std::string_view word, EEdgeType& out)
{
    return ReadOf(kEdgeTypes, word, out);
}

// --- the editor --------------------------------------------------------------------------------

CResult<void> CBusDefinitionEditor::Changed()
{
    if (m_listener != nullptr) {
        m_listener->OnBusDefinitionsChanged();
    }
    return {};
}

CResult<SBus*> CBusDefinitionEditor::BusAt(std::size_t bus)
{
    if (bus >= m_definitions.buses.size()) {
        return Refuse("there is no such bus");
    }
    return &m_definitions.buses[bus];
}

CResult<STimingReference*> CBusDefinitionEditor::ReferenceAt(std::size_t bus, std::size_t reference)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    if (reference >= found->references.size()) {
        return Refuse("there is no such timing reference");
    }
    return &found->references[reference];
}

CResult<void> CBusDefinitionEditor::SetType(EComponentType type)
{
    m_definitions.type = type;
    return Changed();
}

CResult<void> CBusDefinitionEditor::AddBus(std::string_view name, EBusType type)
{
    RETURN_IF_ERROR(CheckNewIn(m_definitions.buses, name));
    m_definitions.buses.push_back({std::string(name), type, {}, {}});
    return Changed();
}

CResult<void> CBusDefinitionEditor::RenameBus(std::size_t bus, std::string_view name)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    RETURN_IF_ERROR(CheckNewIn(m_definitions.buses, name, bus));
    found->name = name;
    return Changed();
}

CResult<void> CBusDefinitionEditor::SetBusType(std::size_t bus, EBusType type)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    found->type = type;
    return Changed();
}

CResult<void> CBusDefinitionEditor::RemoveBus(std::size_t bus)
{
    RETURN_IF_ERROR(BusAt(bus));
    m_definitions.buses.erase(m_definitions.buses.begin() + static_cast<std::ptrdiff_t>(bus));
    return Changed();
}

CResult<void> CBusDefinitionEditor::AddGroup(std::size_t bus, std::string_view name)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    RETURN_IF_ERROR(CheckNew(found->groups, name));
    found->groups.emplace_back(name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::AddReference(std::size_t bus, std::string_view name,
                                                 EEdgeType edge)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    RETURN_IF_ERROR(CheckNewIn(found->references, name));
    found->references.push_back({std::string(name), edge, {}, {}, {}});
    return Changed();
}

CResult<void> CBusDefinitionEditor::RenameReference(std::size_t bus, std::size_t reference,
                                                    std::string_view name)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    RETURN_IF_ERROR(CheckNewIn(m_definitions.buses[bus].references, name, reference));
    found->name = name;
    return Changed();
}

CResult<void> CBusDefinitionEditor::RemoveReference(std::size_t bus, std::size_t reference)
{
    RETURN_IF_ERROR(ReferenceAt(bus, reference));
    std::vector<STimingReference>& all = m_definitions.buses[bus].references;
    all.erase(all.begin() + static_cast<std::ptrdiff_t>(reference));
    return Changed();
}

CResult<void> CBusDefinitionEditor::AddClock(std::size_t bus, std::size_t reference,
                                             std::string_view name)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    RETURN_IF_ERROR(CheckNew(found->clocks, name));
    found->clocks.emplace_back(name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::AddSignal(std::size_t bus, std::size_t reference,
                                              std::string_view name)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    RETURN_IF_ERROR(CheckNew(found->signals, name));
    found->signals.emplace_back(name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::SetEdge(std::size_t bus, std::size_t reference, EEdgeType edge)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    found->edge = edge;
    return Changed();
}

CResult<void> CBusDefinitionEditor::RemoveGroup(std::size_t bus, std::string_view name)
{
    ASSIGN_OR_RETURN(SBus* const found, BusAt(bus));
    std::erase(found->groups, name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::RemoveClock(std::size_t bus, std::size_t reference,
                                                std::string_view name)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    std::erase(found->clocks, name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::RemoveSignal(std::size_t bus, std::size_t reference,
                                                 std::string_view name)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    std::erase(found->signals, name);
    return Changed();
}

CResult<void> CBusDefinitionEditor::SetLimit(std::size_t bus, std::size_t reference,
                                             ETimingLimit limit, std::string_view text)
{
    ASSIGN_OR_RETURN(STimingReference* const found, ReferenceAt(bus, reference));
    const std::string_view value = Trim(text);
    if (!value.empty()) {
        RETURN_IF_ERROR(CheckLimit(limit, value));
    }
    found->limits[static_cast<std::size_t>(limit)] = value;
    return Changed();
}

// --- whole definitions -------------------------------------------------------------------------

CResult<void> CheckBusDefinitions(const SBusDefinitions& definitions)
{
    for (std::size_t i = 0; i < definitions.buses.size(); ++i) {
        const SBus& bus = definitions.buses[i];
        RETURN_IF_ERROR(CheckNewIn(definitions.buses, bus.name, i));
        RETURN_IF_ERROR(CheckList(bus.groups));
        for (std::size_t j = 0; j < bus.references.size(); ++j) {
            RETURN_IF_ERROR(CheckNewIn(bus.references, bus.references[j].name, j));
            RETURN_IF_ERROR(CheckReference(bus.references[j]));
        }
    }
    return {};
}

CResult<void> CheckControllerSide(std::string_view component, EComponentType type)
{
    return type == EComponentType::Controller
               ? CResult<void>()
               : Refuse(
                     fmt::format("The component '{}' is not a Controller component.", component));
}

CResult<void> CheckMemorySide(std::string_view component, EComponentType type)
{
    return type == EComponentType::Memory
               ? CResult<void>()
               : Refuse(fmt::format("The component '{}' is not a Memory component.", component));
}

} // namespace zov::ibis
