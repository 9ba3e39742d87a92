// SPDX-License-Identifier: Apache-2.0
/// The buses of a memory interface's component, and the rules by which they are edited.
#pragma once

#include "base/Result.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

enum class EComponentType : std::uint8_t
{
    Controller,
    Memory
};
enum class EBusType : std::uint8_t
{
    Data,
    Ctrl,
    AddCmd
};
enum class EEdgeType : std::uint8_t
{
    BothEdges,
    RiseEdge,
    FallEdge
};
/// In the order in which they are written.
enum class ETimingLimit : std::uint8_t
{
    MinTransmitSetup,
    MinTransmitHold,
    MinReceiveSetup,
    MinReceiveHold,
    MinStrobeSetup,
    MinStrobeHold,
    TDqsq,
    TQh,
    MaxReceiveSkewPlus,
    MaxReceiveSkewMinus,
    MaxStrobeClockSkewPlus,
    MaxStrobeClockSkewMinus
};
constexpr std::size_t kTimingLimits = 12;

/// The words of a file.
[[nodiscard]] std::string_view WordOf(EComponentType type);
[[nodiscard]] std::string_view WordOf(EBusType type);
[[nodiscard]] std::string_view WordOf(EEdgeType type);
[[nodiscard]] std::string_view WordOf(ETimingLimit limit);
/// As the editor shows it: "Max Receive Skew (+)".
[[nodiscard]] std::string_view LabelOf(ETimingLimit limit);
/// Words back to values, without regard to case.
/// @return false, and the value as it was, when the word is none
bool ReadWord(std::string_view word, EComponentType& out);
bool ReadWord(std::string_view word, EBusType& out);
bool ReadWord(std::string_view word, EEdgeType& out);

struct STimingReference
{
    std::string name;
    EEdgeType edge = EEdgeType::BothEdges;
    std::vector<std::string> clocks;
    /// As text, such as "250ps" or "0.25"; empty where there is no limit.
    std::array<std::string, kTimingLimits> limits;
    std::vector<std::string> signals;

    [[nodiscard]] const std::string& Limit(ETimingLimit limit) const
    {
        return limits[static_cast<std::size_t>(limit)];
    }
    bool operator==(const STimingReference&) const = default;
};

struct SBus
{
    std::string name;
    EBusType type = EBusType::Data;
    std::vector<std::string> groups;
    std::vector<STimingReference> references;
    bool operator==(const SBus&) const = default;
};

struct SBusDefinitions
{
    EComponentType type = EComponentType::Controller;
    std::vector<SBus> buses;
    bool operator==(const SBusDefinitions&) const = default;
};

/// Told of changes that an editor makes.
class BusDefinitionEditorListener
{
public:
    BusDefinitionEditorListener() = default;
    BusDefinitionEditorListener(const BusDefinitionEditorListener&) = delete;
    BusDefinitionEditorListener& operator=(const BusDefinitionEditorListener&) = delete;
    virtual ~BusDefinitionEditorListener() = default;
    virtual void OnBusDefinitionsChanged() = 0;
};

/// Changes definitions one step at a time; a step that is refused changes nothing and returns the
/// message to show.
class CBusDefinitionEditor
{
public:
    /// Both must outlive the editor; the listener may be null.
    explicit CBusDefinitionEditor(SBusDefinitions& definitions,
                                  BusDefinitionEditorListener* listener = nullptr)
        : m_definitions(definitions)
        , m_listener(listener)
    {
    }

    CResult<void> SetType(EComponentType type);
    CResult<void> AddBus(std::string_view name, EBusType type);
    CResult<void> RenameBus(std::size_t bus, std::string_view name);
    CResult<void> SetBusType(std::size_t bus, EBusType type);
    CResult<void> RemoveBus(std::size_t bus);
    CResult<void> AddGroup(std::size_t bus, std::string_view name);
    CResult<void> AddReference(std::size_t bus, std::string_view name, EEdgeType edge);
    CResult<void> RenameReference(std::size_t bus, std::size_t reference, std::string_view name);
    CResult<void> RemoveReference(std::size_t bus, std::size_t reference);
    CResult<void> AddClock(std::size_t bus, std::size_t reference, std::string_view name);
    CResult<void> AddSignal(std::size_t bus, std::size_t reference, std::string_view name);
    CResult<void> SetEdge(std::size_t bus, std::size_t reference, EEdgeType edge);
    CResult<void> RemoveGroup(std::size_t bus, std::string_view name);
    CResult<void> RemoveClock(std::size_t bus, std::size_t reference, std::string_view name);
    CResult<void> RemoveSignal(std::size_t bus, std::size_t reference, std::string_view name);
    /// An empty text takes the limit away.
    CResult<void> SetLimit(std::size_t bus, std::size_t reference, ETimingLimit limit,
                           std::string_view text);

private:
    CResult<SBus*> BusAt(std::size_t bus);
    CResult<STimingReference*> ReferenceAt(std::size_t bus, std::size_t reference);
    CResult<void> Changed();

    SBusDefinitions& m_definitions;
    BusDefinitionEditorListener* m_listener;
};

/// The rules of the editor, for definitions that come from elsewhere.
CResult<void> CheckBusDefinitions(const SBusDefinitions& definitions);

/// From and to JSON, see docs/formats/bus-definitions.md.
CResult<SBusDefinitions> ReadBusJson(std::string_view text);
[[nodiscard]] std::string WriteBusJson(const SBusDefinitions& definitions);

/// May the component stand on that side of an interface? The message of a refusal names it.
CResult<void> CheckControllerSide(std::string_view component, EComponentType type);
CResult<void> CheckMemorySide(std::string_view component, EComponentType type);

} // namespace zov::ibis
