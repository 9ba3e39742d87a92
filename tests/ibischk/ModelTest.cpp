// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

// Lines 4 to 14, then what a test adds.
constexpr std::string_view kInput = "[Model] m\nModel_type Input\nVinl = 0.8\nVinh = 2.0\n"
                                    "C_comp 5p 4p 6p\n[Voltage Range] 3.3 3.0 3.6\n"
                                    "[GND Clamp]\n-3.3 -0.1 -0.09 -0.11\n-0.6 0 0 0\n"
                                    "0 0 0 0\n3.3 0 0 0\n";
constexpr std::string_view kOutput =
    "[Model] m\nModel_type Output\nVmeas = 1.5\nVref = 0\nRref = 50\nC_comp 5p 4p 6p\n"
    "[Voltage Range] 3.3 3.0 3.6\n[Pulldown]\n-3.3 -0.1 -0.09 -0.11\n0 0 0 0\n"
    "6.6 0.2 0.19 0.21\n[Pullup]\n-3.3 0.1 0.09 0.11\n0 0 0 0\n6.6 -0.2 -0.19 -0.21\n"
    "[Ramp]\ndV/dt_r 1.2/0.5n 1.1/0.6n 1.3/0.4n\ndV/dt_f 1.2/0.5n NA NA\nR_load = 50\n";

std::string With(std::string_view base, std::string_view more)
{
    return std::string(base).append(more);
}

struct SCase
{
    std::string_view rule;
    std::string_view version;
    std::string_view base;
    std::string_view more;
    std::string_view expected;
};

void ExpectAll(std::span<const SCase> cases)
{
    for (const SCase& c : cases) {
        const std::string body = With(c.base, c.more);
        ExpectRule({c.rule, c.version, body, c.expected});
    }
}

TEST(Model, GoodModelsAreSilent)
{
    for (const std::string_view base : {kInput, kOutput}) {
        const SChecked checked =
            CheckText(Ibs("5.1", With(base, "[Temperature Range] 25 125 -40\n[TTgnd] 1n NA NA\n")
                                     .substr(0, base.size() + 32)));
        EXPECT_EQ(Codes(checked, 101, 199), "");
        EXPECT_EQ(Codes(checked, 1100, 1899), "");
        EXPECT_EQ(Codes(checked, 2000, 5999), "");
    }
}

TEST(Model, EveryRuleOfSubParametersFires)
{
    constexpr SCase kCases[] = {
        {"model/name-once", "3.2", kInput, "[Model] m\n", "E101@15"},
        {"model/type-required", "3.2", "", "[Model] m\n", "E102@4"},
        {"model/type-known", "3.2", "", "[Model] m\nModel_type Inputt\n", "E103@5"},
        {"model/type-version", "3.2", "", "[Model] m\nModel_type Input_diff\n", "E104@5"},
        {"model/word-value", "3.2", "", "[Model] m\nPolarity Up\n", "E105@5"},
        {"model/word-value", "3.2", "", "[Model] m\nEnable High\n", "E105@5"},
        {"model/typ-number", "3.2", "", "[Model] m\nC_comp NA 1p 2p\n", "E106@5"},
        {"model/enable-useless", "3.2", "", "[Model] m\nEnable Active-Low\nModel_type Output\n",
         "N107@4"},
        {"model/threshold-default", "3.2", "", "[Model] m\nModel_type Input\nVinl = 0.8\n",
         "W108@4"},
        {"model/threshold-order", "3.2", "", "[Model] m\nModel_type Input\nVinl = 2\nVinh = 1\n",
         "W109@4"},
        {"model/threshold-useless", "3.2", "", "[Model] m\nModel_type Output\nVinl = 2\n",
         "N110@4"},
        {"model/level-range", "3.2", "",
         "[Model] m\nModel_type Output\nVmeas = 5\n[Voltage Range] 3.3 3 3.6\n", "C111@4"},
        {"model/c-comp-required", "3.2", "", "[Model] m\nModel_type Input\n", "E112@4"},
        {"model/value-negative", "3.2", "", "[Model] m\nC_comp 5p -1p 6p\n", "E113@5"},
        {"model/c-comp-size", "3.2", "", "[Model] m\nC_comp 5 4 6\n", "W114@5"},
        {"common/magnitude-order", "3.2", "", "[Model] m\nC_comp 5p 6p 4p\n", "W1949@5"},
        {"model/c-comp-sum", "4.2", "", "[Model] m\nC_comp 5p 4p 6p\nC_comp_pullup 1p NA NA\n",
         "N115@4"},
        {"model/c-comp-series", "4.2", "", "[Model] m\nModel_type Series\nC_comp_pullup 1p NA NA\n",
         "W116@4"},
        {"model/c-comp-pullup-version", "3.2", "", "[Model] m\nC_comp_pullup 1p NA NA\n", "E170@5"},
        {"model/c-comp-pulldown-version", "3.2", "", "[Model] m\nC_comp_pulldown 1p NA NA\n",
         "E171@5"},
        {"model/c-comp-power-clamp-version", "3.2", "", "[Model] m\nC_comp_power_clamp 1p NA NA\n",
         "E172@5"},
        {"model/c-comp-gnd-clamp-version", "3.2", "", "[Model] m\nC_comp_gnd_clamp 1p NA NA\n",
         "E173@5"},
        {"model/rref-diff-version", "3.2", "", "[Model] m\nRref_diff = 100\n", "E161@5"},
        {"model/cref-diff-version", "3.2", "", "[Model] m\nCref_diff = 1p\n", "E162@5"},
        {"model/vmeas-recommended", "3.2", "", "[Model] m\nModel_type Output\n", "W117@4"},
        {"model/load-recommended", "3.2", "", "[Model] m\nModel_type Output\n", "N118@4"},
        {"model/load-pair", "3.2", "", "[Model] m\nModel_type Output\nVref = 1\n", "W119@4"},
        {"model/load-open", "3.2", "", "[Model] m\nModel_type Open_drain\n", "W120@4"},
        {"model/load-useless", "3.2", "", "[Model] m\nModel_type Input\nVmeas = 1\n", "N121@4"},
        {"model/value-positive", "3.2", "", "[Model] m\nRref = 0\n", "E122@5"},
        {"model/load-differential", "4.2", "", "[Model] m\nModel_type Output\nRref_diff = 100\n",
         "N123@4"},
        {"model/differential-external", "4.2", "", "[Model] m\nModel_type Input_diff\n", "E124@4"},
        {"model/load-size", "3.2", "", "[Model] m\nCref = 15\n", "C125@5"},
        {"common/one-line", "3.2", kInput, "[Temperature Range]\n25 0 85\n", "E1948@16"},
    };
    ExpectAll(kCases);
}

TEST(Model, EveryRuleOfSuppliesFires)
{
    constexpr SCase kCases[] = {
        {"supply/typ-number", "3.2", "", "[Model] m\n[Voltage Range] NA 3 3.6\n", "E3001@5"},
        {"supply/required", "3.2", "", "[Model] m\nModel_type Input\n", "E3002@4"},
        {"supply/range-useless", "3.2", kInput,
         "[Pullup Reference] 3.3 3 3.6\n[Pulldown Reference] 0 0 0\n"
         "[POWER Clamp Reference] 3.3 3 3.6\n[GND Clamp Reference] 0 0 0\n",
         "N3003@4"},
        {"supply/range-sign", "3.2", "", "[Model] m\n[Voltage Range] -5 -5 -5\n", "C3005@5"},
        {"supply/reference-order", "3.2", kInput, "[Pulldown Reference] 5 5 5\n", "W3006@4"},
        {"supply/corner-order", "3.2", "", "[Model] m\n[Voltage Range] 3.3 3.6 3\n", "W3007@5"},
        {"supply/temperature-typ", "3.2", "", "[Model] m\n[Temperature Range] 200 0 100\n",
         "W3008@5"},
        {"supply/voltage-size", "3.2", "", "[Model] m\n[Voltage Range] 33 30 36\n", "C3009@5"},
        {"supply/temperature-size", "3.2", "", "[Model] m\n[Temperature Range] 25 0 300\n",
         "C3010@5"},
        {"supply/external-reference", "4.2", kInput, "[External Reference] 1 NA NA\n", "N3014@4"},
        {"supply/transit-negative", "3.2", kInput, "[TTgnd] -1n NA NA\n", "E3011@15"},
        {"supply/transit-clamp", "3.2", kInput, "[TTpower] 1n NA NA\n", "W3012@4"},
        {"supply/transit-size", "3.2", kInput, "[TTgnd] 1 NA NA\n", "C3013@15"},
    };
    ExpectAll(kCases);
}

TEST(Model, EveryRuleOfSpecificationScheduleAndCornersFires)
{
    constexpr SCase kCases[] = {
        {"model-spec/typ-number", "3.2", kInput, "[Model Spec]\nVinh NA 1 2\n", "E1801@16"},
        {"model-spec/hysteresis-all", "3.2", kInput, "[Model Spec]\nVinh+ 2 NA NA\n", "E1802@15"},
        {"model-spec/needs", "3.2", kInput, "[Model Spec]\nPulse_high 4 NA NA\n", "E1803@15"},
        {"model-spec/needs", "3.2", kInput, "[Model Spec]\nD_overshoot_time 4n NA NA\n",
         "E1803@15"},
        {"model-spec/threshold-order", "3.2", kInput, "[Model Spec]\nVinh 1 2 2\nVinl 2 1 1\n",
         "W1804@15"},
        {"model-spec/type", "3.2", kInput, "[Model Spec]\nVmeas 1 NA NA\n", "W1805@15"},
        {"model-spec/overshoot-rail", "3.2", kInput, "[Model Spec]\nS_overshoot_high 1 NA NA\n",
         "W1806@15"},
        {"model-spec/overshoot-order", "3.2", kInput,
         "[Model Spec]\nS_overshoot_high 5 NA NA\nD_overshoot_high 4 NA NA\n", "W1807@15"},
        {"model-spec/value-range", "3.2", kInput, "[Model Spec]\nPulse_time 0 NA NA\n", "E1808@16"},
        {"model-spec/overrides", "3.2", kInput, "[Model Spec]\nVinh 2.2 NA NA\n", "N1809@15"},
        {"model-spec/empty", "3.2", kInput, "[Model Spec]\n", "W1810@15"},
        {"driver-schedule/model-known", "3.2", kOutput, "[Driver Schedule]\nx 0 NA 0 NA\n",
         "E1601@24"},
        {"driver-schedule/model-self", "3.2", kOutput, "[Driver Schedule]\nm 0 NA 0 NA\n",
         "E1603@24"},
        {"driver-schedule/model-type", "3.2", kOutput,
         "[Driver Schedule]\ni 0 NA 0 NA\n[Model] i\nModel_type Input\n", "E1602@24"},
        {"driver-schedule/nested", "3.2", kOutput,
         "[Driver Schedule]\ni 0 NA 0 NA\n[Model] i\nModel_type Output\n[Driver Schedule]\n"
         "m 0 NA 0 NA\n",
         "E1604@24"},
        {"driver-schedule/delay-negative", "3.2", kOutput, "[Driver Schedule]\nx -1n NA 0 NA\n",
         "E1605@24"},
        {"driver-schedule/delay-absent", "3.2", kOutput, "[Driver Schedule]\nx NA NA NA NA\n",
         "E1606@24"},
        {"driver-schedule/pattern", "3.2", kOutput, "[Driver Schedule]\nx 0 1n 0 1n\n", "W1607@24"},
        {"driver-schedule/pulse-length", "3.2", kOutput, "[Driver Schedule]\nx 1n 1n NA NA\n",
         "E1608@24"},
        {"driver-schedule/type", "3.2", kInput, "[Driver Schedule]\nm 0 NA 0 NA\n", "E1609@15"},
        {"driver-schedule/ignored-parts", "3.2", kOutput,
         "[Driver Schedule]\ni 0 NA 0 NA\n[Model] i\nModel_type Output\nC_comp 1p NA NA\n",
         "N1610@25"},
        {"driver-schedule/supply", "3.2", kOutput,
         "[Driver Schedule]\ni 0 NA 0 NA\n[Model] i\n[Voltage Range] 5 5 5\n", "W1611@24"},
        {"driver-schedule/empty", "3.2", kOutput, "[Driver Schedule]\n", "E1612@23"},
        {"common/too-few-columns", "3.2", kOutput, "[Driver Schedule]\nx 0 0\n", "E1944@24"},
        {"c-comp-corner/typ-number", "5.1", kInput, "[C Comp Corner]\nC_comp NA 1p 1p\n",
         "E5001@16"},
        {"c-comp-corner/negative", "5.1", kInput, "[C Comp Corner]\nC_comp -5p 4p 6p\n",
         "E5002@16"},
        {"c-comp-corner/empty", "5.1", kInput, "[C Comp Corner]\n", "E5003@4"},
        {"c-comp-corner/typ-differs", "5.1", kInput, "[C Comp Corner]\nC_comp 4p 4p 6p\n",
         "W5004@16"},
        {"c-comp-corner/range", "5.1", kInput, "[C Comp Corner]\nC_comp 5p 3p 6p\n", "W5005@16"},
        {"c-comp-corner/parts", "5.1", kInput, "[C Comp Corner]\nC_comp_pullup 5p 3p 6p\n",
         "W5006@16"},
        {"c-comp-corner/series", "5.1", "",
         "[Model] m\nModel_type Series\n[C Comp Corner]\nC_comp 1p 1p 1p\n", "W5007@7"},
        {"emi/model-value", "5.1", kInput, "[Begin EMI Model]\nModel_Domain x\n[End EMI Model]\n",
         "E4850@16"},
        {"emi/model-empty", "5.1", kInput, "[Begin EMI Model]\n[End EMI Model]\n", "N4851@4"},
    };
    ExpectAll(kCases);
}

TEST(Series, EveryRuleFires)
{
    constexpr std::string_view kSeries = "[Model] s\nModel_type Series\n";
    constexpr std::string_view kSwitch = "[Model] s\nModel_type Series_switch\n";
    constexpr std::string_view kRows = "0 0 0 0\n1 1 1 1\n";
    const std::string mosfet = std::string("[Series MOSFET]\nVds = 1\n") + std::string(kRows);
    const SCase kCases[] = {
        {"series/type", "3.2", kInput, "[R Series] 1 1 1\n", "E2801@4"},
        {"series/state-type", "3.2", kSeries, "[On]\n", "E2802@6"},
        {"series/state-required", "3.2", kSwitch, "[On]\n[R Series] 1 1 1\n", "E2803@4"},
        {"series/state-empty", "3.2", kSwitch, "[On]\n[Off]\n", "E2804@6"},
        {"series/state-first", "3.2", kSwitch, "[R Series] 1 1 1\n", "E2805@6"},
        {"series/element-required", "3.2", kSeries, "", "E2806@4"},
        {"series/element-once", "4.2", kSeries, "[R Series] 1 1 1\n[R Series] 1 1 1\n", "E2807@7"},
        {"series/element-once", "3.2", kSeries, "[R Series] 1 1 1\n[R Series] 1 1 1\n", "W2807@7"},
        {"series/typ-number", "3.2", kSeries, "[R Series] NA 1 1\n", "E2808@6"},
        {"series/value-range", "3.2", kSeries, "[C Series] 0 1 1\n", "E2809@6"},
        {"series/element-pair", "3.2", kSeries, "[Rc Series] 1 1 1\n", "W2810@6"},
        {"series/resistance", "3.2", kSwitch, "[Off]\n[R Series] 1 1 1\n", "C2811@6"},
        {"series/foreign", "3.2", kSeries, "[Ramp]\n", "E2812@4"},
        {"series/vds-required", "3.2", kSeries, "[Series MOSFET]\n0 0 0 0\n1 1 1 1\n", "E2850@6"},
        {"series/vds-once", "3.2", kSeries, "[Series MOSFET]\nVds = 1\nVds = 2\n", "E2851@8"},
        {"series/vds-zero", "3.2", kSeries, "[Series MOSFET]\nVds = 0\n", "E2852@7"},
        {"series/vds-distinct", "3.2", kSeries,
         "[Series MOSFET]\nVds = 1\n[Series MOSFET]\nVds = 1\n", "W2853@9"},
        {"series/vds-sign", "3.2", kSeries, "[Series MOSFET]\nVds = 1\n[Series MOSFET]\nVds = -1\n",
         "W2854@9"},
        {"series/mosfet-off", "3.2", kSwitch, "[Off]\n[Series MOSFET]\n", "W2856@7"},
        {"terminator/type", "3.2", kInput, "[Rgnd] 50 NA NA\n", "E2901@4"},
        {"terminator/typ-number", "3.2", kInput, "[Rgnd] NA 1 1\n", "E2902@15"},
        {"terminator/positive", "3.2", kInput, "[Rgnd] 0 NA NA\n", "E2903@15"},
        {"terminator/pair", "3.2", kInput, "[Rac] 50 NA NA\n", "E2904@4"},
    };
    ExpectAll(kCases);
    std::string many;
    for (int i = 0; i < 101; ++i) {
        many += "[Series MOSFET]\n";
    }
    const SCase kMany[] = {{"series/mosfet-count", "3.2", kSeries, many, "E2855@106"}};
    ExpectAll(kMany);
    const SChecked checked = CheckText(Ibs("3.2", With(kSeries, mosfet)));
    EXPECT_EQ(Codes(checked, 1300, 1899) + Codes(checked, 2800, 2999), "");
}

} // namespace

} // namespace zov::ibischk::test
