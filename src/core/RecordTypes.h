// SPDX-License-Identifier: Apache-2.0
/// The closed lists of what a library holds: record types, their properties, the editor's pages.
#pragma once

#include "core/Units.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zov {

/// High byte: major kind; low bits: which discrete.
enum class ERecordType : std::uint32_t
{
    Any = 0,
    Ic = 0x1000000,
    Capacitor = 0x2000001,
    Inductor = 0x2000002,
    Resistor = 0x2000004,
    Vrm = 0x3000000,
    Connector = 0x4000000,
    Package = 0x5000000,
    Spice = 0x6000000
};
constexpr std::uint32_t kDiscreteKind = 0x2000000;

struct SRecordTypeInfo
{
    ERecordType type;
    std::string_view name;    ///< as shown: "IC", "Capacitor", ..., "General SPICE circuit"
    std::string_view element; ///< in the exchange file
    std::string_view group;   ///< element around all records of the type
};

/// All eight, in the order of their codes.
[[nodiscard]] std::span<const SRecordTypeInfo> RecordTypes();
/// None for a code outside the list.
[[nodiscard]] const SRecordTypeInfo* FindRecordType(std::uint32_t code);
/// By element name, without regard to case.
[[nodiscard]] const SRecordTypeInfo* FindRecordType(std::string_view element);
[[nodiscard]] const SRecordTypeInfo& InfoOf(ERecordType type);
[[nodiscard]] constexpr bool IsDiscrete(ERecordType type)
{
    return (static_cast<std::uint32_t>(type) & 0xFF000000U) == kDiscreteKind;
}

enum class EPropKind : std::uint8_t
{
    String,    ///< narrow string
    Double,    ///< SI value or plain number
    Composite, ///< a sub-model
    Text       ///< free text: any character
};

/// Identifiers of a record's properties; the numbers are those of the native file.
enum class EPropId : std::int32_t
{
    ModelName = 0,
    MfgPartNumber = 1,
    Manuf = 2,
    Comment = 3,
    MaxCurrent = 5,
    UpTolerance = 9,
    LowTolerance = 10,
    Resistance = 13,
    Inductance = 14,
    Circuit = 16,
    IoModel = 17,
    DcModel = 18,
    DcConvModel = 19,
    AcModel = 20,
    VrmModel = 21,
    Thermal = 22,
    CapacitorModel = 23,
    Size = 25,
    Cnom = 27,
    Volt = 28,
    Tcc = 29,
    Prefer = 30,
    PriceA = 31,
    PriceB = 32,
    PriceC = 33,
    PriceBook = 34,
    Lookup = 35,
    Description = 36,
    InductorModel = 37,
    ResistorModel = 38,
    SubModel = 39,
    Through = 41,
    DcBias = 43,
    Temperature = 44,

    // Parts of a discrete's model definition. A library may hold a million of them, so they stand
    // in the record's own table instead of an object each; SDiscreteModel puts them together.
    ModelIsCircuit = 48, ///< present (value 1): a circuit file; absent: plain values
    CktDef = 49,
    TrackFolder = 50,
    Rv = 51,
    Lv = 52,
    Cv = 53
};
constexpr int kPropIdLimit = 64; ///< every identifier is below

struct SPropInfo
{
    EPropId id;
    std::string_view name; ///< library attribute
    EPropKind kind;
    EQuantity quantity; ///< None for texts, plain numbers and composites
    std::string_view meaning;
};

/// Every property in the order of the identifiers, the parts of model definitions included.
[[nodiscard]] std::span<const SPropInfo> Properties();
[[nodiscard]] const SPropInfo* FindProperty(EPropId id);

/// A bit (1 << identifier) per property of kind Double.
[[nodiscard]] std::uint64_t DoubleProperties();

/// Properties that are meaningful for a record type, in the order in which the native file holds
/// them.
[[nodiscard]] std::span<const EPropId> PropertiesOf(ERecordType type);

/// The composite id under which a discrete's definition is known (23, 37, 38); none for other
/// types.
[[nodiscard]] std::optional<EPropId> ModelDefinitionId(ERecordType type);

/// Words of `ModelType` in the exchange file: capacitors say "0" and "1", inductors "SPICE" and
/// "RL", resistors "SPICE" and "R"; each type keeps its own form.
struct SModelTypeWords
{
    std::string_view circuit;
    std::string_view plain;
};
[[nodiscard]] std::optional<SModelTypeWords> ModelTypeWordsOf(ERecordType type);

/// Pages of the record editor.
enum class EModelPage
{
    First,
    Io,
    Dc,
    Ac,
    Thermal,
    Vrm,
    DcConv,
    Through,
    Capacitor,
    Impedance,
    Spice,
    Inductor,
    Resistor
};
/// Help topic of a page: "ZOVIOModels", ...; "firstpage" for the first page and anything unknown.
[[nodiscard]] std::string_view HelpTopicOf(EModelPage page);

} // namespace zov
