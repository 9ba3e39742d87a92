// SPDX-License-Identifier: Apache-2.0
/// The fixed words of the import log. {0} is the record's name, the rest as the row shows.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zov {

enum class EImportMsg : std::size_t
{
    CapacitorName,
    CapacitorModelType,
    CapacitorCnom,
    CapacitorSize,
    CapacitorBadSize,
    CapacitorFile,
    CapacitorContent,
    InductorName,
    InductorInductance,
    InductorFile,
    ResistorName,
    ResistorResistance,
    ResistorFile,
    ResistorContent,
    VrmName,
    VrmContent,
    RecordName,
    RailPinName,
    RailVoltage,
    RailSpiceFile,
    RailFile,
    RailSpiceModel,
    IoFile,
    IoRequired,
    DcSpiceFile,
    DcFile,
    DcSpiceModel,
    DcTotalCurrent,
    AcSpiceFile,
    AcFile,
    AcSpiceModel,
    AcRequired,
    ThermalRequired,
    DecapPartNo,
    DecapModelType,
    DecapSize,
    DecapBadSize,
    DecapFile,
    DecapItem,
    Unreadable,
    Tolerated,
    ToleratedMore,
    Imported,
    Count
};

struct SImportMsg
{
    EImportMsg id;
    std::string_view text;
};

/// In the order of the identifiers. Those without a line break at the end never had one.
inline constexpr std::array<SImportMsg, static_cast<std::size_t>(EImportMsg::Count)> kImportMsgs = {
    {
        {EImportMsg::CapacitorName, "[Error] Capacitor: 'ModelName' required\r\n"},
        {EImportMsg::CapacitorModelType, "[Error] '{0}' Capacitor: 'ModelType' required\r\n"},
        {EImportMsg::CapacitorCnom, "[Error] '{0}' Capacitor: 'Cnom' required\r\n"},
        {EImportMsg::CapacitorSize, "[Error] '{0}' Capacitor: 'Size' required\r\n"},
        {EImportMsg::CapacitorBadSize, "[Error] '{0}' Capacitor: incorrect size '{1}' found"},
        {EImportMsg::CapacitorFile, "[WARNING] Capacitor: Cannot locate file '{1}'\r\n"},
        {EImportMsg::CapacitorContent, "[Error] Capacitor \"{0}\": invalid content\r\n"},
        {EImportMsg::InductorName, "[Error] Inductor: 'ModelName' required\r\n"},
        {EImportMsg::InductorInductance, "[Error] '{0}' Inductor: 'Inductance' required\r\n"},
        {EImportMsg::InductorFile, "[WARNING] Inductor: Cannot locate file '{1}'\r\n"},
        {EImportMsg::ResistorName, "[WARNING] Resistor: 'ModelName' required\r\n"},
        {EImportMsg::ResistorResistance, "[Error] '{0}' Resistor: 'Resistance' required\r\n"},
        {EImportMsg::ResistorFile, "[WARNING] Inductor: Cannot locate file '{1}'\r\n"},
        {EImportMsg::ResistorContent, "[Error] Resistor \"{0}\": invalid content\r\n"},
        {EImportMsg::VrmName, "[Error] VRM Model: 'ModelName' required\r\n"},
        {EImportMsg::VrmContent, "[Error] VRM \"{0}\": invalid content\r\n"},
        {EImportMsg::RecordName, "[Error] {1}: 'ModelName' required\r\n"},
        // {1}: "VRM Model" in a VRM record, "IC/VRM Model" in an IC
        {EImportMsg::RailPinName, "[Error] '{0}' {1}: Pin 'Name' required\r\n"},
        {EImportMsg::RailVoltage, "[Error] '{0}' {1}: 'NominalVoltage' required\r\n"},
        {EImportMsg::RailSpiceFile, "[Error] '{0}' {1}: SPICE 'File' required\r\n"},
        {EImportMsg::RailFile, "[WARNING] '{0}' {1}: Cannot locate file '{2}'\r\n"},
        {EImportMsg::RailSpiceModel, "[WARNING] '{0}' {1}: SPICE 'model' required "},
        {EImportMsg::IoFile, "[WARNING] '{0}' IO Model: Cannot locate file '{1}' \r\n"},
        {EImportMsg::IoRequired, "[Error] '{0}' IO Model: '{1}' required\r\n"},
        {EImportMsg::DcSpiceFile, "[Error] '{0}' DC Model: SPICE 'File' required\r\n"},
        {EImportMsg::DcFile, "[WARNING] '{0}' DC Model: Cannot locate file '{2}'\r\n"},
        {EImportMsg::DcSpiceModel, "[Error] '{0}' DC Model: SPICE 'model' required\r\n"},
        {EImportMsg::DcTotalCurrent, "[Error] '{0}' DC Model: 'TotalCurrent' required\r\n"},
        {EImportMsg::AcSpiceFile, "[Error] '{0}' AC Model: 'File' required\r\n"},
        {EImportMsg::AcFile, "[WARNING] '{0}' AC Model: Cannot locate file '{2}'\r\n"},
        {EImportMsg::AcSpiceModel, "[Error] '{0}' AC Model: 'model' required\r\n"},
        {EImportMsg::AcRequired, "[Error] '{0}' AC Model: {1} required\r\n"},
        {EImportMsg::ThermalRequired, "[Error] '{0}' Thermal: '{1}' required\r\n"},
        {EImportMsg::DecapPartNo, "[Error] Decap Library: 'PartNo' required\r\n"},
        {EImportMsg::DecapModelType, "[Error] Decap Library: 'ModelType' required\r\n"},
        {EImportMsg::DecapSize, "[Error] Decap Library: 'Size' required\r\n"},
        {EImportMsg::DecapBadSize, "[Error] Decap Library: incorrect size '{1}' found"},
        {EImportMsg::DecapFile, "[WARNING] Decap Library: Cannot locate file '{1}'\r\n"},
        {EImportMsg::DecapItem,
         "[Error] Decap Library: 'PopDecapLibItem' or 'DecapLibItem' required\r\n"},
        // {1}: kind of model, {2}: attribute, {3}: what it holds
        {EImportMsg::Unreadable, "[WARNING] '{0}' {1}: '{2}' cannot be read: '{3}'\r\n"},
        // {0}: file, {1}: line or count, {2}: what
        {EImportMsg::Tolerated, "[WARNING] '{0}' line {1}: {2}\r\n"},
        {EImportMsg::ToleratedMore, "[WARNING] '{0}': {1} more such places\r\n"},
        // {0}: file, {1}: count
        {EImportMsg::Imported, "'{1}' models are imported from the file path '{0}'.\r\n"},
    }};

constexpr std::string_view TextOf(EImportMsg id)
{
    return kImportMsgs[static_cast<std::size_t>(id)].text;
}

} // namespace zov
