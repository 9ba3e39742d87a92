// SPDX-License-Identifier: Apache-2.0
#include "ibis/Forms.h"

#include "ibis/DataComponent.h"
#include "ibis/DataModel.h"
#include "ibis/DataPackage.h"
#include "ibis/DataTables.h"

#include <algorithm>
#include <array>

namespace zov::ibis {

namespace {

using enum EIPKeyword;

template <class T>
std::unique_ptr<CIPDataObject> Make(const SIPForm& form, std::size_t line, std::string_view value)
{
    return std::make_unique<T>(form, line, value);
}

// --- where keywords may stand -------------------------------------------------------------------

constexpr EIPKeyword kFile[] = {None};
constexpr EIPKeyword kComponent[] = {Component};
constexpr EIPKeyword kModel[] = {Model};
constexpr EIPKeyword kBuffer[] = {Model, Submodel};
constexpr EIPKeyword kSubmodel[] = {Submodel};
constexpr EIPKeyword kSeries[] = {On, Off, Model};
constexpr EIPKeyword kWaveforms[] = {RisingWaveform, FallingWaveform};
constexpr EIPKeyword kTestData[] = {TestData};
constexpr EIPKeyword kPackageModel[] = {DefinePackageModel};
constexpr EIPKeyword kModelData[] = {ModelData};
constexpr EIPKeyword kMatrices[] = {ResistanceMatrix, InductanceMatrix, CapacitanceMatrix};
constexpr EIPKeyword kBoard[] = {BeginBoardDescription};
constexpr EIPKeyword kEmi[] = {BeginEMIComponent};
constexpr EIPKeyword kPdnDomain[] = {PDNDomain};
constexpr EIPKeyword kInterconnectSet[] = {InterconnectModelSet};
constexpr EIPKeyword kMakers[] = {Component, DefinePackageModel, BeginBoardDescription,
                                  InterconnectModelSet};
constexpr EIPKeyword kDescribed[] = {DefinePackageModel, BeginBoardDescription,
                                     InterconnectModelSet};
constexpr EIPKeyword kPinned[] = {DefinePackageModel, BeginBoardDescription};

// --- sub-parameters -----------------------------------------------------------------------------

using enum EIPValue;

constexpr SIPField kComponentFields[] = {{"Si_location"}, {"Timing_location"}};
constexpr SIPField kPackageFields[] = {{"R_pkg", Range}, {"L_pkg", Range}, {"C_pkg", Range}};
constexpr SIPField kCallFields[] = {{"Signal_pin"}, {"Diff_signal_pins"}, {"Series_pins"},
                                    {"Port_map"},   {"Parameters"},       {"Converter_Parameters"}};
constexpr SIPField kEmiFields[] = {
    {"Domain"}, {"Cpd", Number}, {"C_Heatsink_gnd", Number}, {"C_Heatsink_float", Number}};
constexpr SIPField kPdnDomainFields[] = {{"Signal_name"}, {"Bus_label"}};
constexpr SIPField kPdnModelFields[] = {{"C_pdn", Range}, {"R_pdn", Range}, {"R_leak", Range}};
constexpr SIPField kModelFields[] = {{"Model_type"},
                                     {"Polarity"},
                                     {"Enable"},
                                     {"Vinl", Number},
                                     {"Vinh", Number},
                                     {"Vmeas", Number},
                                     {"Cref", Number},
                                     {"Rref", Number},
                                     {"Vref", Number},
                                     {"Rref_diff", Number},
                                     {"Cref_diff", Number},
                                     {"C_comp", Range},
                                     {"C_comp_pullup", Range},
                                     {"C_comp_pulldown", Range},
                                     {"C_comp_power_clamp", Range},
                                     {"C_comp_gnd_clamp", Range}};
constexpr SIPField kCornerFields[] = {{"C_comp", Range},
                                      {"C_comp_pullup", Range},
                                      {"C_comp_pulldown", Range},
                                      {"C_comp_power_clamp", Range},
                                      {"C_comp_gnd_clamp", Range}};
constexpr SIPField kSpecFields[] = {{"Vinh", Range},
                                    {"Vinl", Range},
                                    {"Vinh+", Range},
                                    {"Vinh-", Range},
                                    {"Vinl+", Range},
                                    {"Vinl-", Range},
                                    {"S_overshoot_high", Range},
                                    {"S_overshoot_low", Range},
                                    {"D_overshoot_high", Range},
                                    {"D_overshoot_low", Range},
                                    {"D_overshoot_time", Range},
                                    {"D_overshoot_area_h", Range},
                                    {"D_overshoot_area_l", Range},
                                    {"D_overshoot_ampl_h", Range},
                                    {"D_overshoot_ampl_l", Range},
                                    {"Pulse_high", Range},
                                    {"Pulse_low", Range},
                                    {"Pulse_time", Range},
                                    {"Vmeas", Range},
                                    {"Vref", Range},
                                    {"Cref", Range},
                                    {"Rref", Range},
                                    {"Cref_rising", Range},
                                    {"Cref_falling", Range},
                                    {"Rref_rising", Range},
                                    {"Rref_falling", Range},
                                    {"Vref_rising", Range},
                                    {"Vref_falling", Range},
                                    {"Vmeas_rising", Range},
                                    {"Vmeas_falling", Range},
                                    {"Rref_diff", Range},
                                    {"Cref_diff", Range}};
constexpr SIPField kThresholdFields[] = {{"Vth", Number},         {"Vth_min", Number},
                                         {"Vth_max", Number},     {"Vinh_ac", Number},
                                         {"Vinh_dc", Number},     {"Vinl_ac", Number},
                                         {"Vinl_dc", Number},     {"Threshold_sensitivity", Number},
                                         {"Reference_supply"},    {"Vcross_low", Number},
                                         {"Vcross_high", Number}, {"Vdiff_ac", Number},
                                         {"Vdiff_dc", Number},    {"Tslew_ac", Number},
                                         {"Tdiffslew_ac", Number}};
constexpr SIPField kRampFields[] = {{"dV/dt_r", Slopes}, {"dV/dt_f", Slopes}, {"R_load", Number}};
constexpr SIPField kWaveformFields[] = {
    {"R_fixture", Number},     {"V_fixture", Number}, {"V_fixture_min", Number},
    {"V_fixture_max", Number}, {"C_fixture", Number}, {"L_fixture", Number},
    {"R_dut", Number},         {"L_dut", Number},     {"C_dut", Number}};
constexpr SIPField kMosfetFields[] = {{"Vds", Number}};
constexpr SIPField kDelayFields[] = {{"V-T", Range}, {"I-T", Range}};
constexpr SIPField kExternalFields[] = {
    {"Language"}, {"Corner"}, {"Parameters"}, {"Converter_Parameters"},
    {"Ports"},    {"D_to_A"}, {"A_to_D"}};
constexpr SIPField kAlgorithmicFields[] = {{"Executable"}, {"Executable_Rx"}, {"Executable_Tx"}};
constexpr SIPField kEmiModelFields[] = {{"Model_emi_type"}, {"Model_Domain"}};
constexpr SIPField kSubmodelFields[] = {{"Submodel_type"}};
constexpr SIPField kSubmodelSpecFields[] = {
    {"V_trigger_r", Range}, {"V_trigger_f", Range}, {"Off_delay", Range}};
constexpr SIPField kTestDataFields[] = {
    {"Test_data_type"}, {"Driver_model"}, {"Driver_model_inv"}, {"Test_load"}};
constexpr SIPField kTestLoadFields[] = {
    {"Test_load_type"},    {"C1_near", Number},  {"Rs_near", Number},    {"Ls_near", Number},
    {"C2_near", Number},   {"Rp1_near", Number}, {"Rp2_near", Number},   {"Td", Number},
    {"Zo", Number},        {"C1_far", Number},   {"Rs_far", Number},     {"Ls_far", Number},
    {"C2_far", Number},    {"Rp1_far", Number},  {"Rp2_far", Number},    {"V_term1", Range},
    {"V_term2", Range},    {"Receiver_model"},   {"Receiver_model_inv"}, {"R_diff_near", Number},
    {"R_diff_far", Number}};
constexpr SIPField kInterconnectFields[] = {
    {"Unused_port_termination", Number}, {"Param"}, {"File_TS"}, {"File_TS0"}, {"File_IBIS-ISS"},
    {"Number_of_terminals", Number}};

// --- the forms ----------------------------------------------------------------------------------

constexpr SIPForm Header(EIPKeyword keyword, EIPLines lines = EIPLines::None)
{
    return {.keyword = keyword,
            .make = &Make<CIPDataItem>,
            .inside = kFile,
            .lines = lines,
            .files = kInAll};
}
constexpr SIPForm Words(EIPKeyword keyword, std::span<const EIPKeyword> inside,
                        EIPLines lines = EIPLines::None)
{
    return {.keyword = keyword, .make = &Make<CIPDataItem>, .inside = inside, .lines = lines};
}
/// A number on the keyword's line.
constexpr SIPForm One(EIPKeyword keyword, std::span<const EIPKeyword> inside)
{
    return {.keyword = keyword,
            .make = &Make<CIPDataNumber>,
            .inside = inside,
            .argument = EIPArgument::Number};
}
/// A triple on the keyword's line.
constexpr SIPForm Three(EIPKeyword keyword, std::span<const EIPKeyword> inside)
{
    return {.keyword = keyword,
            .make = &Make<CIPDataValueRange>,
            .inside = inside,
            .argument = EIPArgument::Range};
}
template <class T>
constexpr SIPForm Section(EIPKeyword keyword, std::span<const EIPKeyword> inside,
                          std::span<const SIPField> fields = {},
                          EIPKeyword closer = EIPKeyword::None)
{
    return {.keyword = keyword,
            .make = &Make<T>,
            .inside = inside,
            .lines = EIPLines::Fields,
            .fields = fields,
            .closer = closer};
}
template <class T>
constexpr SIPForm List(EIPKeyword keyword, std::span<const EIPKeyword> inside, std::size_t min,
                       std::size_t max, std::uint32_t numbers = 0,
                       EIPKeyword closer = EIPKeyword::None)
{
    return {.keyword = keyword,
            .make = &Make<T>,
            .inside = inside,
            .lines = EIPLines::Rows,
            .closer = closer,
            .minWords = min,
            .maxWords = max,
            .numberColumns = numbers};
}
template <class T>
constexpr SIPForm Columns(EIPKeyword keyword, std::span<const EIPKeyword> inside,
                          std::span<const SIPField> fields = {})
{
    return {.keyword = keyword,
            .make = &Make<T>,
            .inside = inside,
            .lines = EIPLines::Table,
            .fields = fields};
}
template <class T>
constexpr SIPForm Routes(EIPKeyword keyword, std::span<const EIPKeyword> inside)
{
    return {.keyword = keyword, .make = &Make<T>, .inside = inside, .lines = EIPLines::Paths};
}
constexpr SIPForm InBoardFiles(SIPForm form, std::uint8_t files = kInEbd)
{
    form.files = files;
    return form;
}

constexpr SIPForm kForms[] = {
    Header(IBISVer),
    Header(CommentChar),
    Header(FileName),
    Header(FileRev),
    Header(Date),
    Header(Source, EIPLines::Text),
    Header(Notes, EIPLines::Text),
    Header(Disclaimer, EIPLines::Text),
    Header(Copyright, EIPLines::Text),
    Header(End),

    Section<CIPDataComponent>(Component, kFile, kComponentFields),
    InBoardFiles(Words(Manufacturer, kMakers), kInAll),
    Section<CIPDataPkg>(Package, kComponent, kPackageFields),
    List<CIPDataPin>(Pin, kComponent, 3, 6, 0b111000),
    Section<CIPDataPackageModel>(PackageModel, kComponent),
    List<CIPDataAlternatePkgMdls>(AlternatePackageModels, kComponent, 1, 1, 0,
                                  EndAlternatePackageModels),
    Section<CIPDataPDNDomain>(PDNDomain, kComponent, kPdnDomainFields, EndPDNDomain),
    Section<CIPDataPDNModel>(PDNModel, kPdnDomain, kPdnModelFields, EndPDNModel),
    List<CIPDataPinMapping>(PinMapping, kComponent, 3, 6),
    List<CIPDataDiffPin>(DiffPin, kComponent, 4, 6, 0b111100),
    List<CIPDataRepeaterPin>(RepeaterPin, kComponent, 2, 2),
    List<CIPDataSeriesPinMapping>(SeriesPinMapping, kComponent, 3, 4),
    List<CIPDataSeriesSwitchGroups>(SeriesSwitchGroups, kComponent, kAnyWords, kAnyWords),
    List<CIPDataNodeDeclarations>(NodeDeclarations, kComponent, kAnyWords, kAnyWords, 0,
                                  EndNodeDeclarations),
    Section<CIPDataCircuitCall>(CircuitCall, kComponent, kCallFields, EndCircuitCall),
    Section<CIPDataEMIComponent>(BeginEMIComponent, kComponent, kEmiFields, EndEMIComponent),
    List<CIPDataPinEMI>(PinEMI, kEmi, 2, 3, 0b100),
    List<CIPDataPinDomainEMI>(PinDomainEMI, kEmi, 2, 2, 0b10),
    List<CIPDataBusLabel>(BusLabel, kComponent, 2, 2),
    List<CIPDataDieSupplyPads>(DieSupplyPads, kComponent, 2, 3),
    List<CIPDataInterconnectModelGroup>(InterconnectModelGroup, kComponent, 2, 2, 0,
                                        EndInterconnectModelGroup),

    List<CIPDataMdlSel>(ModelSelector, kFile, 1, kAnyWords),
    Section<CIPDataModel>(Model, kFile, kModelFields),
    Section<CIPDataMdlSpec>(ModelSpec, kModel, kSpecFields),
    Section<CIPDataRcvThreshold>(ReceiverThresholds, kModel, kThresholdFields),
    List<CIPDataAddSubmodel>(AddSubmodel, kModel, 2, 2),
    List<CIPDataDrvSchedule>(DriverSchedule, kModel, 5, 5, 0b11110),
    Three(TemperatureRange, kBuffer),
    Three(VoltageRange, kBuffer),
    Three(PullupReference, kBuffer),
    Three(PulldownReference, kBuffer),
    Three(POWERClampReference, kBuffer),
    Three(GNDClampReference, kBuffer),
    Three(ExternalReference, kBuffer),
    Section<CIPDataCCompCorner>(CCompCorner, kModel, kCornerFields),
    Three(TTgnd, kBuffer),
    Three(TTpower, kBuffer),
    Columns<CIPDataCurve>(Pulldown, kBuffer),
    Columns<CIPDataCurve>(Pullup, kBuffer),
    Columns<CIPDataCurve>(GNDClamp, kBuffer),
    Columns<CIPDataCurve>(POWERClamp, kBuffer),
    Columns<CIPDataCurve>(ISSOPU, kModel),
    Columns<CIPDataCurve>(ISSOPD, kModel),
    Three(Rgnd, kModel),
    Three(Rpower, kModel),
    Three(Rac, kModel),
    Three(Cac, kModel),
    Section<CIPDataSwitchState>(On, kModel),
    Section<CIPDataSwitchState>(Off, kModel),
    Three(RSeries, kSeries),
    Three(LSeries, kSeries),
    Three(RlSeries, kSeries),
    Three(CSeries, kSeries),
    Three(LcSeries, kSeries),
    Three(RcSeries, kSeries),
    Columns<CIPDataCurve>(SeriesCurrent, kSeries),
    Columns<CIPDataCurve>(SeriesMOSFET, kSeries, kMosfetFields),
    Section<CIPDataRamp>(Ramp, kBuffer, kRampFields),
    Columns<CIPDataWaveForm>(RisingWaveform, kBuffer, kWaveformFields),
    Columns<CIPDataWaveForm>(CompositeCurrent, kWaveforms),
    Columns<CIPDataWaveForm>(FallingWaveform, kBuffer, kWaveformFields),
    Section<CIPDataInitialDelay>(InitialDelay, kBuffer, kDelayFields),
    Section<CIPDataExternalMdl>(ExternalModel, kModel, kExternalFields, EndExternalModel),
    Section<CIPDataAlgorithmicMdl>(AlgorithmicModel, kModel, kAlgorithmicFields,
                                   EndAlgorithmicModel),
    Section<CIPDataEMIModel>(BeginEMIModel, kModel, kEmiModelFields, EndEMIModel),

    Section<CIPDataTestData>(TestData, kFile, kTestDataFields),
    Columns<CIPDataWaveForm>(RisingWaveformNear, kTestData),
    Columns<CIPDataWaveForm>(FallingWaveformNear, kTestData),
    Columns<CIPDataWaveForm>(RisingWaveformFar, kTestData),
    Columns<CIPDataWaveForm>(FallingWaveformFar, kTestData),
    Columns<CIPDataWaveForm>(DiffRisingWaveformNear, kTestData),
    Columns<CIPDataWaveForm>(DiffFallingWaveformNear, kTestData),
    Columns<CIPDataWaveForm>(DiffRisingWaveformFar, kTestData),
    Columns<CIPDataWaveForm>(DiffFallingWaveformFar, kTestData),
    Section<CIPDataTestLoad>(TestLoad, kFile, kTestLoadFields),

    Section<CIPDataSubMdl>(Submodel, kFile, kSubmodelFields),
    Section<CIPDataSubmdlSpec>(SubmodelSpec, kSubmodel, kSubmodelSpecFields),
    Columns<CIPDataWaveForm>(POWERPulseTable, kSubmodel),
    Columns<CIPDataWaveForm>(GNDPulseTable, kSubmodel),

    Section<CIPDataExternalCircuit>(ExternalCircuit, kFile, kExternalFields, EndExternalCircuit),

    Section<CIPDataDefinePkgMdl>(DefinePackageModel, kFile, {}, EndPackageModel),
    Words(OEM, kPackageModel),
    InBoardFiles(Words(Description, kDescribed, EIPLines::Text), kInAll),
    One(NumberOfSections, kPackageModel),
    InBoardFiles(One(NumberOfPins, kPinned), kInAll),
    Routes<CIPDataPinNumbers>(PinNumbers, kPackageModel),
    List<CIPDataMergedPins>(MergedPins, kPackageModel, kAnyWords, kAnyWords),
    Section<CIPDataModelData>(ModelData, kPackageModel, {}, EndModelData),
    Section<CIPDataRLCMatrix>(ResistanceMatrix, kModelData),
    Section<CIPDataRLCMatrix>(InductanceMatrix, kModelData),
    Section<CIPDataRLCMatrix>(CapacitanceMatrix, kModelData),
    One(Bandwidth, kMatrices),
    {.keyword = Row, .make = &Make<CIPDataRow>, .inside = kMatrices, .lines = EIPLines::Matrix},

    Section<CIPDataInterconnectModelSet>(InterconnectModelSet, kFile, {}, EndInterconnectModelSet),
    {.keyword = InterconnectModel,
     .make = &Make<CIPDataInterconnectModel>,
     .inside = kInterconnectSet,
     .lines = EIPLines::Terminals,
     .fields = kInterconnectFields,
     .closer = EndInterconnectModel,
     .minWords = 2,
     .maxWords = 5},

    InBoardFiles(
        Section<CIPDataBoardDescription>(BeginBoardDescription, kFile, {}, EndBoardDescription)),
    InBoardFiles(List<CIPDataPinList>(PinList, kBoard, 2, 2)),
    InBoardFiles(Routes<CIPDataPathDescription>(PathDescription, kBoard)),
    InBoardFiles(List<CIPDataRefDesignatorMap>(ReferenceDesignatorMap, kBoard, 3, 3)),
};

constexpr std::size_t kKeywordCount = 127;

constexpr std::array<const SIPForm*, kKeywordCount> kByKeyword = [] {
    std::array<const SIPForm*, kKeywordCount> made{};
    for (const SIPForm& form : kForms) {
        made[static_cast<std::size_t>(form.keyword)] = &form;
    }
    return made;
}();

constexpr std::array<bool, kKeywordCount> kContainers = [] {
    std::array<bool, kKeywordCount> made{};
    for (const SIPForm& form : kForms) {
        for (const EIPKeyword container : form.inside) {
            made[static_cast<std::size_t>(container)] = true;
        }
    }
    return made;
}();

constexpr SIPForm kUnknown = {.keyword = EIPKeyword::None, .lines = EIPLines::Text};

} // namespace

const SIPForm* IPFormOf(EIPKeyword keyword)
{
    return kByKeyword[static_cast<std::size_t>(keyword)];
}

const SIPForm& IPUnknownForm()
{
    return kUnknown;
}

EIPKeyword IPClosedBy(EIPKeyword closer)
{
    for (const SIPForm& form : kForms) {
        if (form.closer == closer) {
            return form.keyword;
        }
    }
    return EIPKeyword::None;
}

bool IPBelongs(const SIPForm& form, EIPKeyword container)
{
    return std::ranges::find(form.inside, container) != form.inside.end();
}

bool IPIsContainer(EIPKeyword keyword)
{
    return kContainers[static_cast<std::size_t>(keyword)];
}

} // namespace zov::ibis
