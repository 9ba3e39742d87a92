// SPDX-License-Identifier: Apache-2.0
#include "ibis/Keywords.h"

#include "base/Text.h"

#include <array>
#include <cstddef>

namespace zov::ibis {

namespace {

struct SRow
{
    EIPKeyword identifier;
    std::string_view text;
};

constexpr SRow kRows[] = {
    {EIPKeyword::IBISVer, "[IBIS Ver]"},
    {EIPKeyword::CommentChar, "[Comment Char]"},
    {EIPKeyword::FileName, "[File Name]"},
    {EIPKeyword::FileRev, "[File Rev]"},
    {EIPKeyword::Date, "[Date]"},
    {EIPKeyword::Source, "[Source]"},
    {EIPKeyword::Notes, "[Notes]"},
    {EIPKeyword::Disclaimer, "[Disclaimer]"},
    {EIPKeyword::Copyright, "[Copyright]"},
    {EIPKeyword::Component, "[Component]"},
    {EIPKeyword::Manufacturer, "[Manufacturer]"},
    {EIPKeyword::Package, "[Package]"},
    {EIPKeyword::Pin, "[Pin]"},
    {EIPKeyword::PackageModel, "[Package Model]"},
    {EIPKeyword::AlternatePackageModels, "[Alternate Package Models]"},
    {EIPKeyword::EndAlternatePackageModels, "[End Alternate Package Models]"},
    {EIPKeyword::PDNDomain, "[PDN Domain]"},
    {EIPKeyword::PDNModel, "[PDN Model]"},
    {EIPKeyword::EndPDNModel, "[End PDN Model]"},
    {EIPKeyword::EndPDNDomain, "[End PDN Domain]"},
    {EIPKeyword::PinMapping, "[Pin Mapping]"},
    {EIPKeyword::DiffPin, "[Diff Pin]"},
    {EIPKeyword::SeriesPinMapping, "[Series Pin Mapping]"},
    {EIPKeyword::SeriesSwitchGroups, "[Series Switch Groups]"},
    {EIPKeyword::NodeDeclarations, "[Node Declarations]"},
    {EIPKeyword::EndNodeDeclarations, "[End Node Declarations]"},
    {EIPKeyword::CircuitCall, "[Circuit Call]"},
    {EIPKeyword::EndCircuitCall, "[End Circuit Call]"},
    {EIPKeyword::BeginEMIComponent, "[Begin EMI Component]"},
    {EIPKeyword::PinEMI, "[Pin EMI]"},
    {EIPKeyword::PinDomainEMI, "[Pin Domain EMI]"},
    {EIPKeyword::EndEMIComponent, "[End EMI Component]"},
    {EIPKeyword::ModelSelector, "[Model Selector]"},
    {EIPKeyword::Model, "[Model]"},
    {EIPKeyword::ModelSpec, "[Model Spec]"},
    {EIPKeyword::ReceiverThresholds, "[Receiver Thresholds]"},
    {EIPKeyword::AddSubmodel, "[Add Submodel]"},
    {EIPKeyword::DriverSchedule, "[Driver Schedule]"},
    {EIPKeyword::TemperatureRange, "[Temperature Range]"},
    {EIPKeyword::VoltageRange, "[Voltage Range]"},
    {EIPKeyword::PullupReference, "[Pullup Reference]"},
    {EIPKeyword::PulldownReference, "[Pulldown Reference]"},
    {EIPKeyword::POWERClampReference, "[POWER Clamp Reference]"},
    {EIPKeyword::GNDClampReference, "[GND Clamp Reference]"},
    {EIPKeyword::ExternalReference, "[External Reference]"},
    {EIPKeyword::CCompCorner, "[C Comp Corner]"},
    {EIPKeyword::TTgnd, "[TTgnd]"},
    {EIPKeyword::TTpower, "[TTpower]"},
    {EIPKeyword::Pulldown, "[Pulldown]"},
    {EIPKeyword::Pullup, "[Pullup]"},
    {EIPKeyword::GNDClamp, "[GND Clamp]"},
    {EIPKeyword::POWERClamp, "[POWER Clamp]"},
    {EIPKeyword::ISSOPU, "[ISSO PU]"},
    {EIPKeyword::ISSOPD, "[ISSO PD]"},
    {EIPKeyword::Rgnd, "[Rgnd]"},
    {EIPKeyword::Rpower, "[Rpower]"},
    {EIPKeyword::Rac, "[Rac]"},
    {EIPKeyword::Cac, "[Cac]"},
    {EIPKeyword::On, "[On]"},
    {EIPKeyword::Off, "[Off]"},
    {EIPKeyword::RSeries, "[R Series]"},
    {EIPKeyword::LSeries, "[L Series]"},
    {EIPKeyword::RlSeries, "[Rl Series]"},
    {EIPKeyword::CSeries, "[C Series]"},
    {EIPKeyword::LcSeries, "[Lc Series]"},
    {EIPKeyword::RcSeries, "[Rc Series]"},
    {EIPKeyword::SeriesCurrent, "[Series Current]"},
    {EIPKeyword::SeriesMOSFET, "[Series MOSFET]"},
    {EIPKeyword::Ramp, "[Ramp]"},
    {EIPKeyword::RisingWaveform, "[Rising Waveform]"},
    {EIPKeyword::CompositeCurrent, "[Composite Current]"},
    {EIPKeyword::FallingWaveform, "[Falling Waveform]"},
    {EIPKeyword::TestData, "[Test Data]"},
    {EIPKeyword::RisingWaveformNear, "[Rising Waveform Near]"},
    {EIPKeyword::FallingWaveformNear, "[Falling Waveform Near]"},
    {EIPKeyword::RisingWaveformFar, "[Rising Waveform Far]"},
    {EIPKeyword::FallingWaveformFar, "[Falling Waveform Far]"},
    {EIPKeyword::DiffRisingWaveformNear, "[Diff Rising Waveform Near]"},
    {EIPKeyword::DiffFallingWaveformNear, "[Diff Falling Waveform Near]"},
    {EIPKeyword::DiffRisingWaveformFar, "[Diff Rising Waveform Far]"},
    {EIPKeyword::DiffFallingWaveformFar, "[Diff Falling Waveform Far]"},
    {EIPKeyword::TestLoad, "[Test Load]"},
    {EIPKeyword::ExternalModel, "[External Model]"},
    {EIPKeyword::EndExternalModel, "[End External Model]"},
    {EIPKeyword::AlgorithmicModel, "[Algorithmic Model]"},
    {EIPKeyword::EndAlgorithmicModel, "[End Algorithmic Model]"},
    {EIPKeyword::BeginEMIModel, "[Begin EMI Model]"},
    {EIPKeyword::EndEMIModel, "[End EMI Model]"},
    {EIPKeyword::Submodel, "[Submodel]"},
    {EIPKeyword::SubmodelSpec, "[Submodel Spec]"},
    {EIPKeyword::POWERPulseTable, "[POWER Pulse Table]"},
    {EIPKeyword::GNDPulseTable, "[GND Pulse Table]"},
    {EIPKeyword::ExternalCircuit, "[External Circuit]"},
    {EIPKeyword::EndExternalCircuit, "[End External Circuit]"},
    {EIPKeyword::DefinePackageModel, "[Define Package Model]"},
    {EIPKeyword::OEM, "[OEM]"},
    {EIPKeyword::Description, "[Description]"},
    {EIPKeyword::NumberOfSections, "[Number Of Sections]"},
    {EIPKeyword::NumberOfPins, "[Number Of Pins]"},
    {EIPKeyword::PinNumbers, "[Pin Numbers]"},
    {EIPKeyword::ModelData, "[Model Data]"},
    {EIPKeyword::ResistanceMatrix, "[Resistance Matrix]"},
    {EIPKeyword::Bandwidth, "[Bandwidth]"},
    {EIPKeyword::Row, "[Row]"},
    {EIPKeyword::InductanceMatrix, "[Inductance Matrix]"},
    {EIPKeyword::CapacitanceMatrix, "[Capacitance Matrix]"},
    {EIPKeyword::EndModelData, "[End Model Data]"},
    {EIPKeyword::EndPackageModel, "[End Package Model]"},
    {EIPKeyword::BeginBoardDescription, "[Begin Board Description]"},
    {EIPKeyword::PinList, "[Pin List]"},
    {EIPKeyword::PathDescription, "[Path Description]"},
    {EIPKeyword::ReferenceDesignatorMap, "[Reference Designator Map]"},
    {EIPKeyword::EndBoardDescription, "[End Board Description]"},
    {EIPKeyword::RepeaterPin, "[Repeater Pin]"},
    {EIPKeyword::End, "[End]"},
    {EIPKeyword::InitialDelay, "[Initial Delay]"},
    {EIPKeyword::MergedPins, "[Merged Pins]"},
    {EIPKeyword::BusLabel, "[Bus Label]"},
    {EIPKeyword::DieSupplyPads, "[Die Supply Pads]"},
    {EIPKeyword::InterconnectModelGroup, "[Interconnect Model Group]"},
    {EIPKeyword::EndInterconnectModelGroup, "[End Interconnect Model Group]"},
    {EIPKeyword::InterconnectModelSet, "[Interconnect Model Set]"},
    {EIPKeyword::EndInterconnectModelSet, "[End Interconnect Model Set]"},
    {EIPKeyword::InterconnectModel, "[Interconnect Model]"},
    {EIPKeyword::EndInterconnectModel, "[End Interconnect Model]"},
};

constexpr char Folded(char c)
{
    return c == '_' ? ' ' : ToLower(c);
}

constexpr std::size_t kSlots = 512;

std::size_t SlotOf(std::string_view name)
{
    std::size_t hash = name.size();
    for (const char c : name) {
        hash = hash * 31 + static_cast<unsigned char>(Folded(c));
    }
    return hash % kSlots;
}

bool SameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (Folded(a[i]) != Folded(b[i])) {
            return false;
        }
    }
    return true;
}

std::string_view WithoutBrackets(std::string_view text)
{
    return text.substr(1, text.size() - 2);
}

/// Open addressing: place in the vector plus one, 0 for a free slot.
std::array<std::uint8_t, kSlots> MakeIndex()
{
    std::array<std::uint8_t, kSlots> index{};
    const std::vector<CIPKeyword>& all = IPKeywords();
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::size_t slot = SlotOf(WithoutBrackets(all[i].Text()));
        while (index[slot] != 0) {
            slot = (slot + 1) % kSlots;
        }
        index[slot] = static_cast<std::uint8_t>(i + 1);
    }
    return index;
}

} // namespace

const std::vector<CIPKeyword>& IPKeywords()
{
    static const std::vector<CIPKeyword> all = [] {
        std::vector<CIPKeyword> made;
        made.reserve(std::size(kRows));
        for (const SRow& row : kRows) {
            made.emplace_back(row.identifier, row.text);
        }
        return made;
    }();
    return all;
}

std::string_view IPKeywordText(EIPKeyword keyword)
{
    for (const SRow& row : kRows) {
        if (row.identifier == keyword) {
            return row.text;
        }
    }
    return {};
}

EIPKeyword FindIPKeyword(std::string_view name)
{
    static const std::array<std::uint8_t, kSlots> index = MakeIndex();
    const std::vector<CIPKeyword>& all = IPKeywords();
    for (std::size_t slot = SlotOf(name); index[slot] != 0; slot = (slot + 1) % kSlots) {
        const CIPKeyword& found = all[index[slot] - 1U];
        if (SameName(WithoutBrackets(found.Text()), name)) {
            return found.Identifier();
        }
    }
    return EIPKeyword::None;
}

} // namespace zov::ibis
