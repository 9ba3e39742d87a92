// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Keywords.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace zov::ibischk {

namespace {

constexpr SKeyword kKeywords[] = {
#define ZOV_KEYWORD(code, shown, since, scope, role, often, argument, inside)                      \
    {EKeyword::code, shown,         EVersion::since,     EScope::scope,                            \
     ERole::role,    EOften::often, EArgument::argument, EKeyword::inside},
#include "ibischk/catalogue/Keywords.inc"
#undef ZOV_KEYWORD
};
static_assert(std::size(kKeywords) == kKeywordCount);

constexpr auto MakeRowByCode()
{
    std::array<std::uint8_t, kKeywordCount> rows{};
    for (std::size_t i = 0; i < std::size(kKeywords); ++i) {
        rows[static_cast<std::size_t>(kKeywords[i].code)] = static_cast<std::uint8_t>(i);
    }
    return rows;
}
constexpr auto kRowByCode = MakeRowByCode();

constexpr char Fold(char c)
{
    return c == ' ' ? '_' : ToUpper(c);
}

constexpr unsigned NameHash(std::string_view name)
{
    unsigned hash = 2166136261U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(Fold(c))) * 16777619U;
    }
    return hash ^ (hash >> 13U);
}

constexpr bool SameName(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Fold(x) == Fold(y); });
}

// Open addressing over the rows in table order: of equal names the first is met first.
constexpr std::size_t kSlots = 512;
constexpr std::uint8_t kEmpty = 255;
constexpr auto MakeSlots()
{
    std::array<std::uint8_t, kSlots> slots{};
    slots.fill(kEmpty);
    for (std::size_t i = 0; i < std::size(kKeywords); ++i) {
        std::size_t slot = NameHash(kKeywords[i].shown) % kSlots;
        while (slots[slot] != kEmpty) {
            slot = (slot + 1) % kSlots;
        }
        slots[slot] = static_cast<std::uint8_t>(i);
    }
    return slots;
}
constexpr auto kNameSlots = MakeSlots();

using enum EKeyword;
constexpr SBlock kBlocks[] = {
    {InterconnectModelGroup, EndInterconnectModelGroup, 6200, 6201, 6202},
    {AlternatePackageModels, EndAlternatePackageModels, 2790, 2791, 2792},
    {NodeDeclarations, EndNodeDeclarations, 2590, 2591, 2592},
    {CircuitCall, EndCircuitCall, 2690, 2691, 2692},
    {ExternalCircuit, EndExternalCircuit, 2490, 2491, 2492},
    {BeginEMIComponent, EndEMIComponent, 4890, 4891, 4892},
    {ExternalModel, EndExternalModel, 2390, 2391, 2392},
    {AlgorithmicModel, EndAlgorithmicModel, 4609, 4608, 4610},
    {BeginEMIModel, EndEMIModel, 4895, 4896, 4897},
    {CCompModel, EndCCompModel, 6800, 6801, 6802},
    {DefinePackageModel, EndPackageModel, 3190, 3191, 3192},
    {ModelData, EndModelData, 3193, 3194, 3195},
    {BeginBoardDescription, EndBoardDescription, 4390, 4391, 4392},
    {InterconnectModelSet, EndInterconnectModelSet, 6000, 6001, 6002},
    {InterconnectModel, EndInterconnectModel, 6050, 6051, 6052},
    {BeginEMD, EndEMD, 6500, 6501, 6502},
    {EMDPinList, EndEMDPinList, 6500, 6501, 6502},
    {EMDParts, EndEMDParts, 6500, 6501, 6502},
    {EMDDesignatorList, EndEMDDesignatorList, 6500, 6501, 6502},
    {DesignatorPinList, EndDesignatorPinList, 6500, 6501, 6502},
    {VoltageList, EndVoltageList, 6500, 6501, 6502},
    {EMDGroup, EndEMDGroup, 6500, 6501, 6502},
    {EMDSet, EndEMDSet, 6650, 6651, 6652},
    {EMDModel, EndEMDModel, 6650, 6651, 6652},
    {PDNDomain, EndPDNDomain, 6880, 6881, 6882},
    {PDNModel, EndPDNModel, 6900, 6901, 6883},
};

constexpr bool Between(EKeyword code, EKeyword first, EKeyword last)
{
    return code >= first && code <= last;
}

struct SContextRow
{
    EKeyword found;
    EKeyword first; ///< current keyword from here
    EKeyword last;  ///< to here
    EKeyword mapped;
};
constexpr SContextRow kContexts[] = {
    {Manufacturer, DefinePackageModel, PackageDescription, PackageManufacturer},
    {Manufacturer, BeginBoardDescription, BoardManufacturer, BoardManufacturer},
    {Manufacturer, InterconnectModelSet, EndInterconnectModel, InterconnectManufacturer},
    {Manufacturer, BeginEMD, EmdDescription, EmdManufacturer},
    {Manufacturer, EMDSet, EmdSetDescription, EmdSetManufacturer},
    {PackageDescription, InterconnectModelSet, EndInterconnectModel, InterconnectDescription},
    {PackageDescription, BeginEMD, EmdDescription, EmdDescription},
    {PackageDescription, EMDSet, EmdSetDescription, EmdSetDescription},
};

constexpr std::pair<EKeyword, EKeyword> kInSubmodel[] = {
    {Pulldown, SubmodelPulldown},
    {Pullup, SubmodelPullup},
    {GNDClamp, SubmodelGNDClamp},
    {POWERClamp, SubmodelPOWERClamp},
    {Ramp, SubmodelRamp},
    {RisingWaveform, SubmodelRisingWaveform},
    {FallingWaveform, SubmodelFallingWaveform},
    {InitialDelay, SubmodelInitialDelay},
};

} // namespace

const SKeyword& KeywordRow(EKeyword code)
{
    return kKeywords[kRowByCode[static_cast<std::size_t>(code)]];
}

EKeyword FindKeyword(std::string_view name)
{
    std::size_t slot = NameHash(name) % kSlots;
    for (; kNameSlots[slot] != kEmpty; slot = (slot + 1) % kSlots) {
        const SKeyword& row = kKeywords[kNameSlots[slot]];
        if (SameName(row.shown, name)) {
            return row.code;
        }
    }
    return NotKey;
}

EKeyword MapByContext(EKeyword found, EKeyword current, EFileType type, bool submodelOpen)
{
    if (found == PackageNumberOfPins && type == EFileType::Ebd) {
        return BoardNumberOfPins;
    }
    for (const SContextRow& row : kContexts) {
        if (row.found == found && Between(current, row.first, row.last)) {
            return row.mapped;
        }
    }
    if (submodelOpen) {
        for (const auto& [general, own] : kInSubmodel) {
            if (general == found) {
                return own;
            }
        }
    }
    return found;
}

const SBlock* BlockOpenedBy(EKeyword code)
{
    const auto* row = std::ranges::find(kBlocks, code, &SBlock::open);
    return row == std::end(kBlocks) ? nullptr : row;
}

const SBlock* BlockClosedBy(EKeyword code)
{
    const auto* row = std::ranges::find(kBlocks, code, &SBlock::close);
    return row == std::end(kBlocks) ? nullptr : row;
}

bool AllowedInFile(EKeyword opener, EFileType type)
{
    switch (opener) {
    case DefinePackageModel:
        return type == EFileType::Ibs || type == EFileType::Pkg;
    case BeginBoardDescription:
        return type == EFileType::Ebd;
    case InterconnectModelSet:
        return type == EFileType::Ibs || type == EFileType::Ims;
    case BeginEMD:
        return type == EFileType::Emd;
    case EMDSet:
        return type == EFileType::Emd || type == EFileType::Ems;
    default:
        return type == EFileType::Ibs;
    }
}

EKeyword OpenerOf(EScope scope)
{
    for (const SKeyword& row : kKeywords) {
        if (row.role == ERole::Opener && row.scope == scope) {
            return row.code;
        }
    }
    return NotKey;
}

bool SharedBySubmodel(EKeyword code)
{
    return Between(code, TemperatureRange, GNDClampReference) || code == TTgnd || code == TTpower;
}

} // namespace zov::ibischk
