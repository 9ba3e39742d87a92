// SPDX-License-Identifier: Apache-2.0
#include "core/RecordTypes.h"

#include "base/Text.h"

#include <array>
#include <cassert>

namespace zov {

namespace {

using enum EPropId;
using enum EPropKind;

constexpr std::array<SRecordTypeInfo, 8> kTypes = {{
    {ERecordType::Ic, "IC", "IC", "ICs"},
    {ERecordType::Capacitor, "Capacitor", "Capacitor", "Capacitors"},
    {ERecordType::Inductor, "Inductor", "Inductor", "Inductors"},
    {ERecordType::Resistor, "Resistor", "Resistor", "Resistors"},
    {ERecordType::Vrm, "VRM", "VRM", "VRMs"},
    {ERecordType::Connector, "Connector", "Connector", "Connectors"},
    {ERecordType::Package, "Package", "Package", "Packages"},
    {ERecordType::Spice, "General SPICE circuit", "SPICE", "GeneralSPICE"},
}};

constexpr std::array<SPropInfo, 40> kProperties = {{
    {ModelName, "ModelName", String, EQuantity::None, "name of the record"},
    {MfgPartNumber, "MfgPartNumber", String, EQuantity::None, "manufacturer's part number"},
    {Manuf, "Manuf", String, EQuantity::None, "manufacturer"},
    {Comment, "Comment", Text, EQuantity::None, "free comment of discretes"},
    {MaxCurrent, "MaxCurrent", Double, EQuantity::Current, "rated current"},
    {UpTolerance, "UpTolerance", Double, EQuantity::Tolerance, "upper tolerance"},
    {LowTolerance, "LowTolerance", Double, EQuantity::Tolerance, "lower tolerance"},
    {Resistance, "Resistance", Double, EQuantity::Resistance, "resistance"},
    {Inductance, "Inductance", Double, EQuantity::Inductance, "inductance"},
    {Circuit, "Circuit", Composite, EQuantity::None,
     "circuit of connector, package or SPICE record"},
    {IoModel, "IO_MODEL", Composite, EQuantity::None, "IBIS file, components, bus definitions"},
    {DcModel, "DC_MODEL", Composite, EQuantity::None, "DC power rails"},
    {DcConvModel, "DCCONV_MODEL", Composite, EQuantity::None, "DC-DC converter pins"},
    {AcModel, "AC_MODEL", Composite, EQuantity::None, "AC power rails"},
    {VrmModel, "VRM", Composite, EQuantity::None, "voltage regulator rails"},
    {Thermal, "Thermal", Composite, EQuantity::None, "thermal model"},
    {CapacitorModel, "CapacitorModel", Composite, EQuantity::None, "capacitor model definition"},
    {Size, "Size", String, EQuantity::None, "case size code with its system letter"},
    {Cnom, "Cnom", Double, EQuantity::Capacitance, "nominal capacitance"},
    {Volt, "Volt", Double, EQuantity::Voltage, "rated voltage"},
    {Tcc, "TCC", String, EQuantity::None, "temperature characteristic code"},
    {Prefer, "Prefer", String, EQuantity::None, "preference mark"},
    {PriceA, "PriceA", Double, EQuantity::None, "first price"},
    {PriceB, "PriceB", Double, EQuantity::None, "second price"},
    {PriceC, "PriceC", Double, EQuantity::None, "third price"},
    {PriceBook, "PriceBook", String, EQuantity::None, "price book reference"},
    {Lookup, "Lookup", String, EQuantity::None, "look-up keywords"},
    {Description, "Description", Text, EQuantity::None, "description"},
    {InductorModel, "InductorModel", Composite, EQuantity::None, "inductor model definition"},
    {ResistorModel, "ResistorModel", Composite, EQuantity::None, "resistor model definition"},
    {SubModel, "SubModel", String, EQuantity::None, "sub-model name"},
    {Through, "Through", Composite, EQuantity::None, "pin-to-pin connections"},
    {DcBias, "DCBias", String, EQuantity::None, "DC-bias characteristic"},
    {Temperature, "Temperature", String, EQuantity::None, "temperature characteristic"},
    {ModelIsCircuit, "ModelIsCircuit", Double, EQuantity::None, "definition is a circuit"},
    {CktDef, "CktDef", Text, EQuantity::None, "circuit file or circuit text"},
    {TrackFolder, "TrackFolder", String, EQuantity::None, "folder of the circuit file"},
    {Rv, "Rv", Double, EQuantity::Resistance, "series resistance of the definition"},
    {Lv, "Lv", Double, EQuantity::Inductance, "series inductance of the definition"},
    {Cv, "Cv", Double, EQuantity::Capacitance, "series capacitance of the definition"},
}};

constexpr std::array kCapacitorProps = {ModelName,
                                        SubModel,
                                        Manuf,
                                        MfgPartNumber,
                                        Lookup,
                                        Size,
                                        ModelIsCircuit,
                                        CktDef,
                                        TrackFolder,
                                        Rv,
                                        Lv,
                                        Cv,
                                        Cnom,
                                        UpTolerance,
                                        LowTolerance,
                                        Volt,
                                        Tcc,
                                        Prefer,
                                        PriceA,
                                        PriceB,
                                        PriceC,
                                        PriceBook,
                                        Comment,
                                        Description,
                                        DcBias,
                                        Temperature,
                                        Through};
constexpr std::array kInductorProps = {
    ModelName, SubModel,    Manuf,      MfgPartNumber, Lookup,     Comment,     ModelIsCircuit,
    CktDef,    TrackFolder, Inductance, Resistance,    MaxCurrent, Description, Through};
constexpr std::array kResistorProps = {
    ModelName, SubModel,    Manuf,      MfgPartNumber, Lookup,      Comment, ModelIsCircuit,
    CktDef,    TrackFolder, Resistance, MaxCurrent,    Description, Through};
constexpr std::array kCircuitProps = {ModelName,   SubModel, Manuf,   MfgPartNumber, Lookup,
                                      Description, Comment,  Circuit, Through};
constexpr std::array kIcProps = {ModelName,   SubModel, Manuf,   MfgPartNumber, Lookup,
                                 Description, Comment,  IoModel, DcModel,       DcConvModel,
                                 AcModel,     VrmModel, Thermal, Through};
constexpr std::array kVrmProps = {ModelName,   SubModel, Manuf,    MfgPartNumber, Lookup,
                                  Description, Comment,  VrmModel, Through};

} // namespace

std::span<const SRecordTypeInfo> RecordTypes()
{
    return kTypes;
}

const SRecordTypeInfo* FindRecordType(std::uint32_t code)
{
    for (const SRecordTypeInfo& info : kTypes) {
        if (static_cast<std::uint32_t>(info.type) == code) {
            return &info;
        }
    }
    return nullptr;
}

const SRecordTypeInfo* FindRecordType(std::string_view element)
{
    for (const SRecordTypeInfo& info : kTypes) {
        if (EqualsNoCase(info.element, element)) {
            return &info;
        }
    }
    return nullptr;
}

const SRecordTypeInfo& InfoOf(ERecordType type)
{
    const SRecordTypeInfo* info = FindRecordType(static_cast<std::uint32_t>(type));
    assert(info != nullptr);
    return *info;
}

std::span<const SPropInfo> Properties()
{
    return kProperties;
}

const SPropInfo* FindProperty(EPropId id)
{
    static constexpr auto kByIdentifier = [] {
        std::array<const SPropInfo*, static_cast<std::size_t>(kPropIdLimit)> table{};
        for (const SPropInfo& info : kProperties) {
            table[static_cast<std::size_t>(info.id)] = &info;
        }
        return table;
    }();
    const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(id));
    return index < kByIdentifier.size() ? kByIdentifier[index] : nullptr;
}

std::span<const EPropId> PropertiesOf(ERecordType type)
{
    switch (type) {
    case ERecordType::Capacitor:
        return kCapacitorProps;
    case ERecordType::Inductor:
        return kInductorProps;
    case ERecordType::Resistor:
        return kResistorProps;
    case ERecordType::Connector:
    case ERecordType::Package:
    case ERecordType::Spice:
        return kCircuitProps;
    case ERecordType::Ic:
        return kIcProps;
    case ERecordType::Vrm:
        return kVrmProps;
    case ERecordType::Any:
        break;
    }
    return {};
}

std::uint64_t DoubleProperties()
{
    static constexpr std::uint64_t kMask = [] {
        std::uint64_t mask = 0;
        for (const SPropInfo& info : kProperties) {
            mask |= std::uint64_t{info.kind == Double} << static_cast<unsigned>(info.id);
        }
        return mask;
    }();
    return kMask;
}

std::optional<EPropId> ModelDefinitionId(ERecordType type)
{
    switch (type) {
    case ERecordType::Capacitor:
        return CapacitorModel;
    case ERecordType::Inductor:
        return InductorModel;
    case ERecordType::Resistor:
        return ResistorModel;
    default:
        return std::nullopt;
    }
}

std::optional<SModelTypeWords> ModelTypeWordsOf(ERecordType type)
{
    switch (type) {
    case ERecordType::Capacitor:
        return SModelTypeWords{"0", "1"};
    case ERecordType::Inductor:
        return SModelTypeWords{"SPICE", "RL"};
    case ERecordType::Resistor:
        return SModelTypeWords{"SPICE", "R"};
    default:
        return std::nullopt;
    }
}

std::string_view HelpTopicOf(EModelPage page)
{
    static constexpr std::array<std::string_view, 13> kTopics = {
        "firstpage",          "ZOVIOModels",         "ZOVDCModels",     "ZOVACModels",
        "ZOVThermalModels",   "ZOVVRMModels",        "ZOVDCCONVModels", "ZOVThroughModels",
        "ZOVCapacitorModels", "ZOVImpedancesModels", "ZOVSPICEModels",  "ZOVInductorModels",
        "ZOVResistorModels"};
    const auto index = static_cast<std::size_t>(page);
    return index < kTopics.size() ? kTopics[index] : kTopics[0];
}

} // namespace zov
