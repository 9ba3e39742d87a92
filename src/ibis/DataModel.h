// SPDX-License-Identifier: Apache-2.0
/// [Model], [Submodel], [Model Selector], [Test Data], [Test Load], external models and circuits.
#pragma once

#include "ibis/DataTables.h"
#include "ibis/DataValues.h"

namespace zov::ibis {

/// [Model Selector]: the first row is the default.
class CIPDataMdlSel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataMdlSel"; }
    /// Rows: the name is the model, the value its description.
    [[nodiscard]] std::vector<const CIPDataRowItem*> Models() const { return Rows(); }
};

/// [Model Spec]: triples by name, as Range("Vinh+").
class CIPDataMdlSpec final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataMdlSpec"; }
};

/// [Receiver Thresholds]: numbers by name, as Number("Vinh_ac").
class CIPDataRcvThreshold final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRcvThreshold"; }
    [[nodiscard]] std::string_view ReferenceSupply() const { return FieldText("Reference_supply"); }
};

/// [Add Submodel]: the name of a row is the submodel, its value the mode.
class CIPDataAddSubmodel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataAddSubmodel"; }
};

struct SIPSchedule
{
    std::string_view model;
    SIPNumber riseOnS;
    SIPNumber riseOffS;
    SIPNumber fallOnS;
    SIPNumber fallOffS;
};

/// [Driver Schedule]
class CIPDataDrvSchedule final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataDrvSchedule"; }
    [[nodiscard]] std::vector<SIPSchedule> Schedules() const;
};

/// [C Comp Corner]: triples by name, as Range("C_comp").
class CIPDataCCompCorner final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataCCompCorner"; }
};

/// [Initial Delay]
class CIPDataInitialDelay final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataInitialDelay"; }
    [[nodiscard]] const CIPDataValueRange* VT() const { return Range("V-T"); }
    [[nodiscard]] const CIPDataValueRange* IT() const { return Range("I-T"); }
};

/// [Begin EMI Model]
class CIPDataEMIModel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataEMIModel"; }
    [[nodiscard]] std::string_view ModelEmiType() const { return FieldText("Model_emi_type"); }
    [[nodiscard]] std::string_view ModelDomain() const { return FieldText("Model_Domain"); }
};

/// [On] or [Off] with the series elements of that state.
class CIPDataSwitchState final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataSwitchState"; }
};

struct SIPCorner
{
    std::string_view corner;
    std::string_view file;
    std::string_view circuit;
};

/// What [External Model] and [External Circuit] share.
class CIPDataExternal : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view Language() const { return FieldText("Language"); }
    [[nodiscard]] std::vector<SIPCorner> Corners() const;
    /// Of all Ports lines.
    [[nodiscard]] std::vector<std::string_view> Ports() const;
    [[nodiscard]] std::vector<std::string_view> Parameters() const;
    /// Words of each line.
    [[nodiscard]] std::vector<std::vector<std::string_view>> DToA() const;
    [[nodiscard]] std::vector<std::vector<std::string_view>> AToD() const;
};

/// [External Model]
class CIPDataExternalMdl final : public CIPDataExternal
{
public:
    using CIPDataExternal::CIPDataExternal;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataExternalMdl"; }
};

/// [External Circuit]
class CIPDataExternalCircuit final : public CIPDataExternal
{
public:
    using CIPDataExternal::CIPDataExternal;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataExternalCircuit"; }
};

struct SIPExecutable
{
    std::string_view kind; ///< Executable, Executable_Rx, Executable_Tx
    std::string_view platform;
    std::string_view file;
    std::string_view parameterFile;
};

/// [Algorithmic Model]
class CIPDataAlgorithmicMdl final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataAlgorithmicMdl"; }
    [[nodiscard]] std::vector<SIPExecutable> Executables() const;
};

/// What [Model] and [Submodel] share: curves and references, each null when it is not there.
class CIPDataBuffer : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] const CIPDataValueRange* TemperatureRange() const
    {
        return RangePart(EIPKeyword::TemperatureRange);
    }
    [[nodiscard]] const CIPDataValueRange* VoltageRange() const
    {
        return RangePart(EIPKeyword::VoltageRange);
    }
    [[nodiscard]] const CIPDataValueRange* PullupReference() const
    {
        return RangePart(EIPKeyword::PullupReference);
    }
    [[nodiscard]] const CIPDataValueRange* PulldownReference() const
    {
        return RangePart(EIPKeyword::PulldownReference);
    }
    [[nodiscard]] const CIPDataValueRange* PowerClampReference() const
    {
        return RangePart(EIPKeyword::POWERClampReference);
    }
    [[nodiscard]] const CIPDataValueRange* GndClampReference() const
    {
        return RangePart(EIPKeyword::GNDClampReference);
    }
    [[nodiscard]] const CIPDataCurve* Curve(EIPKeyword keyword) const
    {
        return Part<CIPDataCurve>(keyword);
    }
    [[nodiscard]] const CIPDataRamp* Ramp() const { return First<CIPDataRamp>(); }
    /// All [Rising Waveform] and [Falling Waveform] tables.
    [[nodiscard]] std::vector<const CIPDataWaveForm*> Waveforms() const
    {
        return All<CIPDataWaveForm>();
    }
    [[nodiscard]] const CIPDataInitialDelay* InitialDelay() const
    {
        return First<CIPDataInitialDelay>();
    }
};

/// [Model]
class CIPDataModel final : public CIPDataBuffer
{
public:
    using CIPDataBuffer::CIPDataBuffer;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataModel"; }
    [[nodiscard]] std::string_view ModelType() const { return FieldText("Model_type"); }
    [[nodiscard]] std::string_view Polarity() const { return FieldText("Polarity"); }
    [[nodiscard]] std::string_view Enable() const { return FieldText("Enable"); }
    [[nodiscard]] const CIPDataNumber* Vinl() const { return Number("Vinl"); }
    [[nodiscard]] const CIPDataNumber* Vinh() const { return Number("Vinh"); }
    [[nodiscard]] const CIPDataNumber* Vmeas() const { return Number("Vmeas"); }
    [[nodiscard]] const CIPDataNumber* Cref() const { return Number("Cref"); }
    [[nodiscard]] const CIPDataNumber* Rref() const { return Number("Rref"); }
    [[nodiscard]] const CIPDataNumber* Vref() const { return Number("Vref"); }
    [[nodiscard]] const CIPDataNumber* RrefDiff() const { return Number("Rref_diff"); }
    [[nodiscard]] const CIPDataNumber* CrefDiff() const { return Number("Cref_diff"); }
    [[nodiscard]] const CIPDataValueRange* CComp() const { return Range("C_comp"); }
    [[nodiscard]] const CIPDataValueRange* CCompPullup() const { return Range("C_comp_pullup"); }
    [[nodiscard]] const CIPDataValueRange* CCompPulldown() const
    {
        return Range("C_comp_pulldown");
    }
    [[nodiscard]] const CIPDataValueRange* CCompPowerClamp() const
    {
        return Range("C_comp_power_clamp");
    }
    [[nodiscard]] const CIPDataValueRange* CCompGndClamp() const
    {
        return Range("C_comp_gnd_clamp");
    }
    [[nodiscard]] const CIPDataMdlSpec* Spec() const { return First<CIPDataMdlSpec>(); }
    [[nodiscard]] const CIPDataRcvThreshold* Thresholds() const
    {
        return First<CIPDataRcvThreshold>();
    }
    [[nodiscard]] const CIPDataAddSubmodel* Submodels() const
    {
        return First<CIPDataAddSubmodel>();
    }
    [[nodiscard]] const CIPDataDrvSchedule* Schedule() const { return First<CIPDataDrvSchedule>(); }
    [[nodiscard]] const CIPDataCCompCorner* CCompCorner() const
    {
        return First<CIPDataCCompCorner>();
    }
    [[nodiscard]] const CIPDataExternalMdl* External() const { return First<CIPDataExternalMdl>(); }
    [[nodiscard]] const CIPDataAlgorithmicMdl* Algorithmic() const
    {
        return First<CIPDataAlgorithmicMdl>();
    }
    [[nodiscard]] const CIPDataEMIModel* Emi() const { return First<CIPDataEMIModel>(); }
    /// [On] or [Off]
    [[nodiscard]] const CIPDataSwitchState* State(EIPKeyword onOrOff) const
    {
        return Part<CIPDataSwitchState>(onOrOff);
    }
};

/// [Submodel Spec]
class CIPDataSubmdlSpec final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataSubmdlSpec"; }
    [[nodiscard]] const CIPDataValueRange* VTriggerR() const { return Range("V_trigger_r"); }
    [[nodiscard]] const CIPDataValueRange* VTriggerF() const { return Range("V_trigger_f"); }
    [[nodiscard]] const CIPDataValueRange* OffDelay() const { return Range("Off_delay"); }
};

enum class EIPSubmodel : std::uint8_t
{
    Unknown,
    DynamicClamp,
    BusHold,
    FallBack
};

/// [Submodel]
class CIPDataSubMdl final : public CIPDataBuffer
{
public:
    using CIPDataBuffer::CIPDataBuffer;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataSubMdl"; }
    [[nodiscard]] EIPSubmodel SubmodelType() const;
    [[nodiscard]] const CIPDataSubmdlSpec* Spec() const { return First<CIPDataSubmdlSpec>(); }
};

/// [Test Data]
class CIPDataTestData final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataTestData"; }
    [[nodiscard]] std::string_view TestDataType() const { return FieldText("Test_data_type"); }
    [[nodiscard]] std::string_view DriverModel() const { return FieldText("Driver_model"); }
    [[nodiscard]] std::string_view DriverModelInv() const { return FieldText("Driver_model_inv"); }
    [[nodiscard]] std::string_view TestLoad() const { return FieldText("Test_load"); }
    [[nodiscard]] std::vector<const CIPDataWaveForm*> Waveforms() const
    {
        return All<CIPDataWaveForm>();
    }
};

/// [Test Load]: the values of the networks by name, as Number("Rs_near").
class CIPDataTestLoad final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataTestLoad"; }
    [[nodiscard]] std::string_view TestLoadType() const { return FieldText("Test_load_type"); }
    [[nodiscard]] std::string_view ReceiverModel() const { return FieldText("Receiver_model"); }
    [[nodiscard]] std::string_view ReceiverModelInv() const
    {
        return FieldText("Receiver_model_inv");
    }
    [[nodiscard]] const CIPDataValueRange* VTerm1() const { return Range("V_term1"); }
    [[nodiscard]] const CIPDataValueRange* VTerm2() const { return Range("V_term2"); }
};

} // namespace zov::ibis
