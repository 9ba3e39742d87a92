// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiReserved.h"

#include <algorithm>
#include <iterator>

namespace zov::ibischk {

namespace {

using enum EAmiUsage;
using enum EAmiType;
using F = EAmiFormat;
using D = EAmiDefault;

constexpr AmiSet kInfo = SetOf(Info);
constexpr AmiSet kIn = SetOf(In);
constexpr AmiSet kInfoIn = SetOf(Info, In);
constexpr AmiSet kInfoOut = SetOf(Info, Out);
constexpr AmiSet kInfoInDep = SetOf(Info, In, Dep);
constexpr AmiSet kInfoOutDep = SetOf(Info, Out, Dep);
constexpr AmiSet kNotInOut = SetOf(Info, In, Out, Dep);

constexpr AmiSet kFloat = SetOf(Float);
constexpr AmiSet kFloatUi = SetOf(Float, UI);
constexpr AmiSet kInteger = SetOf(Integer);
constexpr AmiSet kString = SetOf(String);
constexpr AmiSet kBoolean = SetOf(Boolean);

constexpr AmiSet kValue = SetOf(F::Value);
constexpr AmiSet kValueList = SetOf(F::Value, F::List);
constexpr AmiSet kSix = SetOf(F::Value, F::Range, F::Corner, F::List, F::Increment, F::Steps);
constexpr AmiSet kPdf = SetOf(F::Gaussian, F::DualDirac, F::DjRj, F::Table);

constexpr SAmiRules Rules(AmiSet usages, AmiSet types, AmiSet formats, D defaults,
                          FAmiValueRule rule = nullptr)
{
    return {{usages, types, formats, defaults, true}, rule};
}

constexpr SAmiRules kFlag = Rules(kInfo, kBoolean, kValue, D::AsValue);
constexpr SAmiRules kPlaceHolder = Rules(kIn, kString, kValue, D::AsValue);
constexpr SAmiRules kIgnoreBits = Rules(kInfoOut, kInteger, kValue, D::AsValue, &RuleCount);
constexpr SAmiRules kJitterPdf = Rules(kInfoOutDep, kFloatUi, kPdf, D::Refused, &RuleProbability);
constexpr SAmiRules kJitter = Rules(kInfoOutDep, kFloatUi, kSix, D::Optional, &RuleAmount);
constexpr SAmiRules kNoise = Rules(kInfoOutDep, kFloat, kSix, D::Optional, &RuleAmount);
constexpr SAmiRules kVersion = Rules(kInfo, kString, kValue, D::AsValue, &RuleAmiVersion);
constexpr SAmiRules kSupportingFiles =
    Rules(kInfo, kString, SetOf(F::Table), D::Refused, &RuleSupportingFiles);
constexpr SAmiRules kRepeaterType = Rules(kInfo, kString, kValue, D::AsValue, &RuleRepeater);
constexpr SAmiRules kModulation =
    Rules(kInfoInDep, kString, kValueList, D::Optional, &RuleModulation);
constexpr SAmiRules kMapping = Rules(kNotInOut, kString, kValueList, D::Optional, &RuleMapping);
constexpr SAmiRules kThreshold = Rules(kInfoOutDep, kFloat, kSix, D::Optional);
constexpr SAmiRules kEyeOffset = Rules(kInfoOutDep, kFloatUi, kSix, D::Optional);
constexpr SAmiRules kProtocol = Rules(kInfoIn, kString, kValueList, D::Optional, &RuleProtocol);
constexpr SAmiRules kState = Rules(SetOf(InOut), kString, kValueList, D::Optional, &RuleState);
constexpr SAmiRules kInterval = Rules(kInfo, kInteger, kValue, D::AsValue, &RulePositiveCount);
constexpr SAmiRules kTouchstone =
    Rules(kInfoInDep, kString, SetOf(F::Value, F::List, F::Corner), D::Optional, &RuleTouchstone);
constexpr SAmiRules kAnalog = Rules(kNotInOut, kFloat, kSix, D::Optional, &RuleAmount);
constexpr SAmiRules kSpecialNames =
    Rules(kInfo, kString, SetOf(F::Table, F::Value, F::List), D::Refused);
constexpr SAmiRules kOffset = Rules(SetOf(In, InOut, Out), kFloat, kSix, D::Optional);
constexpr SAmiRules kDecision = Rules(SetOf(Info, Out, Dep, InOut), kFloatUi, kSix, D::Optional);
constexpr SAmiRules kClockInput = Rules(kInfoIn, kString, kValueList, D::Optional, &RuleClockInput);
constexpr SAmiRules kTrainingMode =
    Rules(kInfoIn, kString, kValueList, D::Optional, &RuleTrainingMode);
constexpr SAmiRules kImpulseInput = Rules(kInfoIn, kString, kValueList, D::Optional);
constexpr SAmiRules kLevels =
    Rules(kInfoInDep, kInteger, SetOf(F::Value, F::List, F::Range, F::Increment, F::Steps),
          D::Optional, &RuleLevels);
constexpr SAmiRules kNumberList =
    Rules(kInfoOutDep, kString, kValueList, D::AsValue, &RuleNumberList);

constexpr auto Both = EAmiSide::Open;
constexpr auto Tx = EAmiSide::Tx;
constexpr auto Rx = EAmiSide::Rx;

constexpr SReservedRow kTable[] = {
    {"Init_Returns_Impulse", 0, 0, Both, &kFlag},
    {"GetWave_Exists", 0, 0, Both, &kFlag},
    {"Max_Init_Aggressors", 0, 0, Both, &kIgnoreBits},
    {"Ignore_Bits", 0, 0, Both, &kIgnoreBits},
    {"Tx_Jitter", 0, 0, Tx, &kJitterPdf},
    {"Tx_DCD", 0, 0, Tx, &kJitter},
    {"Tx_Dj", 6.0, 0, Tx, &kJitter},
    {"Tx_Rj", 6.0, 0, Tx, &kJitter},
    {"Tx_Sj", 6.0, 0, Tx, &kJitter},
    {"Tx_Sj_Frequency", 6.0, 0, Tx, &kNoise},
    {"Rx_Clock_PDF", 0, 0, Rx, &kJitterPdf},
    {"Rx_Receiver_Sensitivity", 0, 0, Rx, &kNoise},
    {"Rx_Clock_Recovery_Dj", 6.0, 0, Rx, &kJitter},
    {"Rx_Clock_Recovery_Rj", 6.0, 0, Rx, &kJitter},
    {"Rx_Clock_Recovery_Sj", 6.0, 0, Rx, &kJitter},
    {"Rx_Clock_Recovery_DCD", 6.0, 0, Rx, &kJitter},
    {"Rx_Clock_Recovery_Mean", 6.0, 0, Rx, &kJitter},
    {"Rx_DCD", 6.0, 0, Rx, &kJitter},
    {"Rx_Dj", 6.0, 0, Rx, &kJitter},
    {"Rx_Rj", 6.0, 0, Rx, &kJitter},
    {"Rx_Sj", 6.0, 0, Rx, &kJitter},
    {"Rx_Noise", 6.0, 0, Rx, &kNoise},
    {"Rx_GaussianNoise", 7.0, 0, Rx, &kNoise},
    {"Rx_UniformNoise", 7.0, 0, Rx, &kNoise},
    {"Rx_UniformNoise", 7.0, 0, Rx, &kNoise},
    {"Use_Init_Output", 0, 5.0, Both, &kFlag},
    {"AMI_Version", 5.1, 0, Both, &kVersion},
    {"Supporting_Files", 6.0, 0, Both, &kSupportingFiles},
    {"DLL_Path", 6.0, 0, Both, &kPlaceHolder},
    {"DLL_ID", 6.0, 0, Both, &kPlaceHolder},
    {"Repeater_Type", 6.0, 0, Rx, &kRepeaterType},
    {"Resolve_Exists", 6.1, 0, Both, &kFlag},
    {"Model_Name", 6.1, 0, Both, &kPlaceHolder},
    {"Modulation", 6.1, 0, Both, &kModulation},
    {"PAM4_Mapping", 6.1, 0, Both, &kMapping},
    {"PAM4_UpperThreshold", 6.1, 0, Rx, &kThreshold},
    {"PAM4_CenterThreshold", 6.1, 0, Rx, &kThreshold},
    {"PAM4_LowerThreshold", 6.1, 0, Rx, &kThreshold},
    {"PAM4_UpperEyeOffset", 6.1, 0, Rx, &kEyeOffset},
    {"PAM4_CenterEyeOffset", 6.1, 0, Rx, &kEyeOffset},
    {"PAM4_LowerEyeOffset", 6.1, 0, Rx, &kEyeOffset},
    {"BCI_Protocol", 7.0, 0, Both, &kProtocol},
    {"BCI_ID", 7.0, 0, Both, &kPlaceHolder},
    {"BCI_State", 7.0, 0, Both, &kState},
    {"BCI_Message_Interval_UI", 7.0, 0, Rx, &kInterval},
    {"BCI_Training_UI", 7.0, 0, Rx, &kInterval},
    {"Ts4file", 7.0, 0, Both, &kTouchstone},
    {"Tx_V", 7.0, 0, Tx, &kAnalog},
    {"Tx_R", 7.0, 0, Tx, &kAnalog},
    {"Rx_R", 7.0, 0, Rx, &kAnalog},
    {"Rx_R", 7.0, 0, Rx, &kAnalog},
    {"Special_Param_Names", 7.0, 0, Both, &kSpecialNames},
    {"DC_Offset", 7.1, 0, Rx, &kOffset},
    {"Rx_Decision_Time", 7.1, 0, Rx, &kDecision},
    {"Rx_Use_Clock_Input", 7.1, 0, Rx, &kClockInput},
    {"Component_Name", 7.1, 0, Both, &kPlaceHolder},
    {"Signal_Name", 7.1, 0, Both, &kPlaceHolder},
    {"BCI_Training_Mode", 7.1, 0, Both, &kTrainingMode},
    {"Tx_Impulse_Input", 7.2, 0, Tx, &kImpulseInput},
    {"Modulation_Levels", 7.2, 0, Both, &kLevels},
    {"PAM_Thresholds", 7.2, 0, Rx, &kNumberList},
    {"PAM_Offsets", 7.2, 0, Rx, &kNumberList},
};
static_assert(std::size(kTable) == kReservedRows);

} // namespace

std::span<const SReservedRow> ReservedTable()
{
    return kTable;
}

std::optional<std::size_t> FindReserved(std::string_view name)
{
    const auto* row = std::ranges::find(kTable, name, &SReservedRow::name);
    return row == std::end(kTable)
               ? std::nullopt
               : std::optional<std::size_t>(static_cast<std::size_t>(row - std::begin(kTable)));
}

const SAmiParameter& SAmiReserved::operator[](std::string_view name) const
{
    static const SAmiParameter kAbsentParameter;
    const auto row = FindReserved(name);
    return row ? found[*row] : kAbsentParameter;
}

} // namespace zov::ibischk
