// SPDX-License-Identifier: Apache-2.0
#include "batch/GeneratorFields.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::batch {

namespace {

using enum EField;

constexpr std::array<std::string_view, 4> kOhms = {"Ohm", "mOhm", "uOhm", "nOhm"};
constexpr std::array<std::string_view, 4> kHenries = {"H", "mH", "uH", "nH"};
constexpr std::array<std::string_view, 4> kFarads = {"F", "mF", "uF", "nF"};
constexpr std::array<std::string_view, 4> kAmperes = {"A", "mA", "uA", "nA"};

constexpr EPropId kNoProp = EPropId::ModelIsCircuit;
constexpr EQuantity kPlain = EQuantity::None;

constexpr std::array<SFieldInfo, kFieldCount> kFields = {{
    {ModelName, "Model Name", "ModelName", EPropId::ModelName, kPlain, "", {}},
    {MfgPartNo, "Mfg.Part No.", "MfgPartNumber", EPropId::MfgPartNumber, kPlain, "", {}},
    {Manufacturer, "Manufacturer", "Manuf", EPropId::Manuf, kPlain, "", {}},
    {Size, "Size", "Size", EPropId::Size, kPlain, "", {}},
    {SizeUnit, "Unit of Size", "SizeUnit", kNoProp, kPlain, kFromFile, kSizeSystemWords},
    {Cnom, "Cnom", "Cnom", EPropId::Cnom, EQuantity::Capacitance, "nF", kFarads},
    {ComponentCost, "Component Cost", "PriceA", EPropId::PriceA, kPlain, "", {}},
    {MountingCost, "Mounting Cost", "PriceB", EPropId::PriceB, kPlain, "", {}},
    {BomPenaltyCost, "BOM Penalty Cost", "PriceC", EPropId::PriceC, kPlain, "", {}},
    {UpperTolerance,
     "Upper Tolerance",
     "UpTolerance",
     EPropId::UpTolerance,
     EQuantity::Tolerance,
     "",
     {}},
    {LowerTolerance,
     "Lower Tolerance",
     "LowTolerance",
     EPropId::LowTolerance,
     EQuantity::Tolerance,
     "",
     {}},
    {Volt, "VOLT", "Volt", EPropId::Volt, EQuantity::Voltage, "V", {}},
    {Tcc, "TCC", "TCC", EPropId::Tcc, kPlain, "", {}},
    {Preference, "Preference", "Prefer", EPropId::Prefer, kPlain, "", {}},
    {Comment, "Comment", "Comment", EPropId::Comment, kPlain, "", {}},
    {ModelType, "Model Type", "ModelType", kNoProp, kPlain, "", {}},
    {Resistance, "Resistance", "Rv", EPropId::Resistance, EQuantity::Resistance, "mOhm", kOhms},
    {Inductance, "Inductance", "Lv", EPropId::Inductance, EQuantity::Inductance, "nH", kHenries},
    {Cact, "Cact", "Cv", EPropId::Cv, EQuantity::Capacitance, "nF", kFarads},
    {LookupKeyword, "Lookup Keyword", "Lookup", EPropId::Lookup, kPlain, "", {}},
    {MaxCurrent, "Max Current", "MaxCurrent", EPropId::MaxCurrent, EQuantity::Current, "mA",
     kAmperes},
    {FileName, "File Name", "CktDef", kNoProp, kPlain, "", {}},
    {FilePath, "File Path", "", kNoProp, kPlain, "", {}},
    {NodeAssignment, "External Node Assignment", "", kNoProp, kPlain, "Series",
     kNodeAssignmentWords},
}};

constexpr std::array kCapacitorFields = {
    ModelName,     MfgPartNo,    Manufacturer,   Size,           SizeUnit,       Cnom,
    ComponentCost, MountingCost, BomPenaltyCost, UpperTolerance, LowerTolerance, Volt,
    Tcc,           Preference,   Comment,        ModelType,      Resistance,     Inductance,
    Cact,          FileName,     FilePath,       NodeAssignment};
constexpr std::array kInductorFields = {ModelName,     ModelType,  MfgPartNo,     Manufacturer,
                                        LookupKeyword, MaxCurrent, Resistance,    Inductance,
                                        FileName,      FilePath,   NodeAssignment};
constexpr std::array kResistorFields = {ModelName,     ModelType,     MfgPartNo,  Manufacturer,
                                        LookupKeyword, MaxCurrent,    Resistance, FileName,
                                        FilePath,      NodeAssignment};

/// Letters and digits only, in lower case: "Mfg.Part No." and "Mfg. Part No" are one name.
std::string NameKey(std::string_view name)
{
    std::string key;
    for (const char c : name) {
        if (!IsSpace(c) && c != '.' && c != '_' && c != '-') {
            key += ToLower(c);
        }
    }
    return key;
}

template <class TEnum, std::size_t N>
std::optional<TEnum> FindWord(const std::array<std::string_view, N>& words, std::string_view word)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (EqualsNoCase(words[i], word)) {
            return static_cast<TEnum>(i);
        }
    }
    return std::nullopt;
}

} // namespace

std::span<const SFieldInfo> Fields()
{
    return kFields;
}

const SFieldInfo& InfoOf(EField field)
{
    return kFields[static_cast<std::size_t>(field)];
}

std::span<const EField> FieldsOf(ERecordType type)
{
    switch (type) {
    case ERecordType::Capacitor:
        return kCapacitorFields;
    case ERecordType::Inductor:
        return kInductorFields;
    case ERecordType::Resistor:
        return kResistorFields;
    default:
        return {};
    }
}

bool IsFieldOf(EField field, ERecordType type)
{
    const auto fields = FieldsOf(type);
    return std::find(fields.begin(), fields.end(), field) != fields.end();
}

std::optional<EField> FindField(std::string_view name)
{
    const std::string key = NameKey(name);
    if (key.empty()) {
        return std::nullopt;
    }
    if (key == "partno") {
        return ModelName;
    }
    for (const SFieldInfo& info : kFields) {
        if (NameKey(info.label) == key || NameKey(info.attribute) == key) {
            return info.field;
        }
    }
    return std::nullopt;
}

std::string FieldList(ERecordType type)
{
    std::string list;
    for (const EField field : FieldsOf(type)) {
        list += list.empty() ? "" : ", ";
        list += InfoOf(field).label;
    }
    return list;
}

std::optional<ERecordType> FindComponentType(std::string_view word)
{
    for (const ERecordType type :
         {ERecordType::Inductor, ERecordType::Resistor, ERecordType::Capacitor}) {
        if (EqualsNoCase(zov::InfoOf(type).name, word)) {
            return type;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> FindListedUnit(EField field, std::string_view name)
{
    for (const std::string_view unit : InfoOf(field).units) {
        if (EqualsNoCase(unit, name)) {
            return unit;
        }
    }
    return std::nullopt;
}

std::optional<EModelKind> FindModelKind(std::string_view word)
{
    return FindWord<EModelKind>(kModelKindWords, word);
}

std::optional<ESizeSystem> FindSizeSystem(std::string_view word)
{
    return FindWord<ESizeSystem>(kSizeSystemWords, word);
}

std::optional<ENodeAssignment> FindNodeAssignment(std::string_view word)
{
    return FindWord<ENodeAssignment>(kNodeAssignmentWords, word);
}

} // namespace zov::batch
