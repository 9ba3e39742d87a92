// SPDX-License-Identifier: Apache-2.0
/// [Component] and everything below it.
#pragma once

#include "ibis/DataPackage.h"
#include "ibis/DataValues.h"

#include <array>

namespace zov::ibis {

class CIPDataPin;

/// One row of [Pin].
class CIPDataPinItem final : public CIPDataRowItem
{
public:
    CIPDataPinItem(const CIPDataPin& table, std::size_t line, std::string_view text,
                   std::span<const std::string_view> words)
        : CIPDataRowItem(line, text, words)
        , m_table(&table)
    {
    }
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinItem"; }
    [[nodiscard]] std::string_view Pin() const { return Word(0); }
    [[nodiscard]] std::string_view Signal() const { return Word(1); }
    [[nodiscard]] std::string_view Model() const { return Word(2); }
    /// In ohm, henry, farad; without text in rows of three columns.
    [[nodiscard]] SIPNumber R() const;
    [[nodiscard]] SIPNumber L() const;
    [[nodiscard]] SIPNumber C() const;

private:
    const CIPDataPin* m_table;
};

/// [Pin]
class CIPDataPin final : public CIPDataSection
{
public:
    CIPDataPin(const SIPForm& form, std::size_t line, std::string_view value);
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPin"; }
    [[nodiscard]] std::vector<const CIPDataPinItem*> Pins() const { return All<CIPDataPinItem>(); }
    /// Where R_pin, L_pin and C_pin stand: they may be headed in any order.
    [[nodiscard]] std::size_t ColumnOf(std::size_t quantity) const { return m_columns[quantity]; }

protected:
    std::unique_ptr<CIPDataRowItem> MakeRow(std::size_t line, std::string_view text,
                                            std::span<const std::string_view> words) override;

private:
    std::array<std::size_t, 3> m_columns{3, 4, 5};
};

/// One row of [Pin Mapping].
class CIPDataPinMappingItem final : public CIPDataRowItem
{
public:
    using CIPDataRowItem::CIPDataRowItem;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinMappingItem"; }
    [[nodiscard]] std::string_view Pin() const { return Word(0); }
    [[nodiscard]] std::string_view PulldownRef() const { return Word(1); }
    [[nodiscard]] std::string_view PullupRef() const { return Word(2); }
    [[nodiscard]] std::string_view GndClampRef() const { return Word(3); }
    [[nodiscard]] std::string_view PowerClampRef() const { return Word(4); }
    [[nodiscard]] std::string_view ExtRef() const { return Word(5); }
};

/// [Pin Mapping]
class CIPDataPinMapping final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinMapping"; }
    [[nodiscard]] std::vector<const CIPDataPinMappingItem*> Pins() const
    {
        return All<CIPDataPinMappingItem>();
    }

protected:
    std::unique_ptr<CIPDataRowItem> MakeRow(std::size_t line, std::string_view text,
                                            std::span<const std::string_view> words) override;
};

struct SIPDiffPair
{
    std::string_view pin;
    std::string_view invPin;
    SIPNumber vdiffV;
    SIPNumber delayTypS;
    SIPNumber delayMinS;
    SIPNumber delayMaxS;
    std::size_t line = 0;
};

/// [Diff Pin]
class CIPDataDiffPin final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataDiffPin"; }
    [[nodiscard]] std::vector<SIPDiffPair> Pairs() const;
};

/// [Repeater Pin]
class CIPDataRepeaterPin final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRepeaterPin"; }
};

struct SIPSeriesPair
{
    std::string_view pin1;
    std::string_view pin2;
    std::string_view model;
    std::string_view group; ///< empty for none
    std::size_t line = 0;
};

/// [Series Pin Mapping]
class CIPDataSeriesPinMapping final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataSeriesPinMapping"; }
    [[nodiscard]] std::vector<SIPSeriesPair> Pairs() const;
};

/// `On a b /` or `Off c /`
struct SIPSwitchState
{
    bool on = false;
    std::vector<std::string_view> groups;
    std::size_t line = 0;
};

/// [Series Switch Groups]
class CIPDataSeriesSwitchGroups final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override
    {
        return "CIPDataSeriesSwitchGroups";
    }
    [[nodiscard]] std::vector<SIPSwitchState> States() const;
};

/// [Package]: the component's R_pkg, L_pkg and C_pkg.
class CIPDataPkg final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPkg"; }
    [[nodiscard]] const CIPDataValueRange* RPkg() const { return Range("R_pkg"); }
    [[nodiscard]] const CIPDataValueRange* LPkg() const { return Range("L_pkg"); }
    [[nodiscard]] const CIPDataValueRange* CPkg() const { return Range("C_pkg"); }
};

/// [Package Model]
class CIPDataPackageModel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPackageModel"; }
    [[nodiscard]] std::string_view Model() const { return Value(); }
};

/// [Alternate Package Models]
class CIPDataAlternatePkgMdls final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataAlternatePkgMdls"; }
    [[nodiscard]] std::vector<std::string_view> Models() const;
};

/// [Node Declarations]
class CIPDataNodeDeclarations final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataNodeDeclarations"; }
    [[nodiscard]] std::vector<std::string_view> Nodes() const;
};

struct SIPPortMap
{
    std::string_view port;
    std::string_view node; ///< or the pad
};

/// [Circuit Call]
class CIPDataCircuitCall final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataCircuitCall"; }
    [[nodiscard]] std::string_view Circuit() const { return Value(); }
    [[nodiscard]] std::string_view SignalPin() const { return FieldText("Signal_pin"); }
    [[nodiscard]] std::vector<std::string_view> DiffSignalPins() const
    {
        return WordsOf(FieldText("Diff_signal_pins"));
    }
    [[nodiscard]] std::vector<std::string_view> SeriesPins() const
    {
        return WordsOf(FieldText("Series_pins"));
    }
    [[nodiscard]] std::vector<SIPPortMap> PortMaps() const;
};

/// [Pin EMI]: rows of pin, domain_name, clock_div.
class CIPDataPinEMI final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinEMI"; }
};

/// [Pin Domain EMI]: rows of domain_name and percentage.
class CIPDataPinDomainEMI final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinDomainEMI"; }
};

/// [Begin EMI Component]
class CIPDataEMIComponent final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataEMIComponent"; }
    [[nodiscard]] std::string_view Domain() const { return FieldText("Domain"); }
    [[nodiscard]] const CIPDataNumber* Cpd() const { return Number("Cpd"); }
    [[nodiscard]] const CIPDataNumber* CHeatsinkGnd() const { return Number("C_Heatsink_gnd"); }
    [[nodiscard]] const CIPDataNumber* CHeatsinkFloat() const { return Number("C_Heatsink_float"); }
    [[nodiscard]] const CIPDataPinEMI* Pins() const { return First<CIPDataPinEMI>(); }
    [[nodiscard]] const CIPDataPinDomainEMI* Domains() const
    {
        return First<CIPDataPinDomainEMI>();
    }
};

/// [Bus Label]: rows of bus_label and signal_name.
class CIPDataBusLabel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataBusLabel"; }
};

/// [Die Supply Pads]: rows of pad_name, signal_name and, may be, bus_label.
class CIPDataDieSupplyPads final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataDieSupplyPads"; }
};

/// One row of [Interconnect Model Group].
class CIPDataInterconnectModelGroupItem final : public CIPDataRowItem
{
public:
    using CIPDataRowItem::CIPDataRowItem;
    [[nodiscard]] std::string_view ClassName() const override
    {
        return "CIPDataInterconnectModelGroupItem";
    }
    [[nodiscard]] std::string_view Set() const { return Word(0); }
    /// NA: the set is in this file.
    [[nodiscard]] std::string_view File() const { return Word(1); }
};

/// [Interconnect Model Group]
class CIPDataInterconnectModelGroup final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override
    {
        return "CIPDataInterconnectModelGroup";
    }
    [[nodiscard]] std::vector<const CIPDataInterconnectModelGroupItem*> Sets() const
    {
        return All<CIPDataInterconnectModelGroupItem>();
    }

protected:
    std::unique_ptr<CIPDataRowItem> MakeRow(std::size_t line, std::string_view text,
                                            std::span<const std::string_view> words) override;
};

/// [PDN Model]
class CIPDataPDNModel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPDNModel"; }
    [[nodiscard]] const CIPDataValueRange* CPdn() const { return Range("C_pdn"); }
    [[nodiscard]] const CIPDataValueRange* RPdn() const { return Range("R_pdn"); }
    [[nodiscard]] const CIPDataValueRange* RLeak() const { return Range("R_leak"); }
};

/// [PDN Domain]
class CIPDataPDNDomain final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPDNDomain"; }
    [[nodiscard]] std::vector<std::string_view> SignalNames() const
    {
        return WordsOf(FieldText("Signal_name"));
    }
    [[nodiscard]] std::vector<std::string_view> BusLabels() const
    {
        return WordsOf(FieldText("Bus_label"));
    }
    [[nodiscard]] std::vector<const CIPDataPDNModel*> Models() const
    {
        return All<CIPDataPDNModel>();
    }
};

/// [Component]
class CIPDataComponent final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataComponent"; }
    [[nodiscard]] std::string_view Manufacturer() const;
    [[nodiscard]] std::string_view SiLocation() const { return FieldText("Si_location"); }
    [[nodiscard]] std::string_view TimingLocation() const { return FieldText("Timing_location"); }
    [[nodiscard]] const CIPDataPkg* Package() const { return First<CIPDataPkg>(); }
    [[nodiscard]] const CIPDataPackageModel* PackageModel() const
    {
        return First<CIPDataPackageModel>();
    }
    [[nodiscard]] const CIPDataAlternatePkgMdls* AlternatePackageModels() const
    {
        return First<CIPDataAlternatePkgMdls>();
    }
    [[nodiscard]] const CIPDataPin* Pins() const { return First<CIPDataPin>(); }
    [[nodiscard]] const CIPDataPinMapping* PinMapping() const { return First<CIPDataPinMapping>(); }
    [[nodiscard]] const CIPDataDiffPin* DiffPins() const { return First<CIPDataDiffPin>(); }
    [[nodiscard]] const CIPDataRepeaterPin* RepeaterPins() const
    {
        return First<CIPDataRepeaterPin>();
    }
    [[nodiscard]] const CIPDataSeriesPinMapping* SeriesPins() const
    {
        return First<CIPDataSeriesPinMapping>();
    }
    [[nodiscard]] const CIPDataSeriesSwitchGroups* SwitchGroups() const
    {
        return First<CIPDataSeriesSwitchGroups>();
    }
    [[nodiscard]] const CIPDataBusLabel* BusLabels() const { return First<CIPDataBusLabel>(); }
    [[nodiscard]] const CIPDataDieSupplyPads* DieSupplyPads() const
    {
        return First<CIPDataDieSupplyPads>();
    }
    [[nodiscard]] std::vector<const CIPDataInterconnectModelGroup*> InterconnectGroups() const
    {
        return All<CIPDataInterconnectModelGroup>();
    }
    [[nodiscard]] const CIPDataNodeDeclarations* Nodes() const
    {
        return First<CIPDataNodeDeclarations>();
    }
    [[nodiscard]] std::vector<const CIPDataCircuitCall*> CircuitCalls() const
    {
        return All<CIPDataCircuitCall>();
    }
    [[nodiscard]] const CIPDataEMIComponent* Emi() const { return First<CIPDataEMIComponent>(); }
    [[nodiscard]] std::vector<const CIPDataPDNDomain*> PdnDomains() const
    {
        return All<CIPDataPDNDomain>();
    }
};

} // namespace zov::ibis
