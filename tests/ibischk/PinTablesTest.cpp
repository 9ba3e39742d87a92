// SPDX-License-Identifier: Apache-2.0
// Tables that name pins: mapping, pairs, repeaters, series pins; and model selectors.
#include "ibischk/ComponentSupport.h"

namespace zov::ibischk::test {

namespace {

const std::string kPinsBefore = std::string(kComponentHead).append(kComponentPins);

// Rows 20 to 27 of a complete mapping.
#define ZOV_MAPPING                                                                                \
    "[Pin Mapping] pulldown_ref pullup_ref gnd_clamp_ref power_clamp_ref\n"                        \
    "A2 g v\nA3 g v g v\nA4 g v\nV1 NC v\nG1 g NC\nN1 NC NC\nC1 g v\n"

TEST(PinMapping, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"pin-mapping/columns", "3.2", ZOV_MAPPING "A1 g v g\n", "E301@27"},
        {"pin-mapping/columns", "3.2", ZOV_MAPPING "A1 g v g v x\n", "E301@27"},
        {"pin-mapping/heading-used", "4.2", ZOV_MAPPING "A1 g v g v NC\n", "E302@27"},
        {"pin-mapping/pin-known", "3.2", ZOV_MAPPING "Z1 g v\n", "E303@27"},
        {"common/case-differs", "3.2", ZOV_MAPPING "a1 g v\n", "E1950@27"},
        {"pin-mapping/pin-once", "3.2", ZOV_MAPPING "A2 g v\n", "E304@27"},
        {"pin-mapping/pin-missing", "3.2", ZOV_MAPPING, "E305@19"},
        {"pin-mapping/rail-columns", "3.2", "[Pin Mapping] pulldown_ref pullup_ref\nV1 v NC\n",
         "E306@20"},
        {"pin-mapping/rail-columns", "3.2", "[Pin Mapping] pulldown_ref pullup_ref\nG1 g v\n",
         "E306@20"},
        {"pin-mapping/rail-clamps", "3.2",
         "[Pin Mapping] pulldown_ref pullup_ref gnd_clamp_ref power_clamp_ref\nG1 g NC g NC\n",
         "W307@20"},
        {"pin-mapping/nc-columns", "3.2", "[Pin Mapping] pulldown_ref pullup_ref\nN1 g NC\n",
         "W308@20"},
        {"pin-mapping/label-has-rail", "3.2", ZOV_MAPPING "A1 x v\n", "E309@27"},
        {"pin-mapping/label-one-rail", "3.2",
         "[Pin Mapping] pulldown_ref pullup_ref\nV1 NC v\nG1 v NC\n", "W310@21"},
        {"pin-mapping/clamp-connected", "3.2",
         "[Pin Mapping] pulldown_ref pullup_ref gnd_clamp_ref power_clamp_ref\nA1 g v NC v\n",
         "N311@20"},
        {"pin-mapping/driver-connected", "3.2", "[Pin Mapping] pulldown_ref pullup_ref\nA4 NC v\n",
         "W312@20"},
        {"pin-mapping/external-reference-unused", "4.2",
         "[Pin Mapping] pulldown_ref pullup_ref gnd_clamp_ref power_clamp_ref ext_ref\n"
         "A1 g v g v v\n",
         "N314@20"},
        {"pin-mapping/external-reference", "4.2",
         "[Pin Mapping] pulldown_ref pullup_ref\nA1 g v\n[Model] io\nModel_type I/O\n"
         "[External Reference] 1 1 1\n",
         "W313@20"},
        {"pin-mapping/empty", "3.2", "[Pin Mapping] pulldown_ref pullup_ref\n", "N316@19"},
        {"common/text-length", "3.2", ZOV_MAPPING "A1 g v234567890123456\n", "W1912@27"},
    };
    ExpectRules(kPinsBefore, kRules);
    constexpr SRuleCase kVerbose[] = {{"pin-mapping/label-used", "3.2",
                                       "[Pin Mapping] pulldown_ref pullup_ref\nV1 NC core\n",
                                       "N315@20"}};
    ExpectRules(kPinsBefore, kVerbose, kSomeModels, {.verbose = true});
}

TEST(PinMapping, GoodMappingIsSilent)
{
    EXPECT_EQ(Codes(CheckText(Ibs("3.2", WithPins(ZOV_MAPPING "A1 g v\n"))), 300, 399), "");
    // From 7.0 rails and unconnected pins may be left out, and signal names are labels.
    const SChecked later = CheckText(
        Ibs("7.0", WithPins("[Pin Mapping] pulldown_ref pullup_ref\nA1 GND VCC\nA2 GND VCC\n"
                            "A3 GND VCC\nA4 GND VCC\nC1 GND VCC\n")));
    EXPECT_EQ(Codes(later, 300, 399), "");
}

TEST(DiffPin, EveryRuleFires)
{
#define ZOV_DIFF "[Diff Pin] inv_pin vdiff tdelay_typ\n"
    constexpr SRuleCase kRules[] = {
        {"diff-pin/columns", "3.2", ZOV_DIFF "A1 A2 0.2\n", "E801@20"},
        {"diff-pin/heading-used", "3.2", ZOV_DIFF "A1 A2 0.2 0 0 0\n", "E802@20"},
        {"diff-pin/pin-known", "3.2", ZOV_DIFF "A1 Z2 0.2 0\n", "E803@20"},
        {"diff-pin/two-pins", "3.2", ZOV_DIFF "A1 A1 0.2 0\n", "E804@20"},
        {"diff-pin/pin-once", "3.2", ZOV_DIFF "A1 A2 0.2 0\nA3 A1 0.2 0\n", "W805@21"},
        {"diff-pin/signal-pin", "3.2", ZOV_DIFF "A1 V1 0.2 0\n", "E806@20"},
        {"diff-pin/vdiff-negative", "3.2", ZOV_DIFF "A1 A2 -0.2 0\n", "W807@20"},
        {"diff-pin/vdiff-absent", "3.2", ZOV_DIFF "A1 A2 NA NA\n", "N808@20"},
        {"diff-pin/vdiff-plausible", "3.2", ZOV_DIFF "A1 A2 200 0\n", "C809@20"},
        {"diff-pin/delay-order", "3.2",
         "[Diff Pin] inv_pin vdiff tdelay_typ tdelay_min tdelay_max\nA1 A2 1 1n 2n 3n\n",
         "W810@20"},
        {"diff-pin/models-differ", "3.2", ZOV_DIFF "A1 A3 0.2 0\n", "N811@20"},
        {"diff-pin/one-diff-model", "4.2",
         ZOV_DIFF "A1 A3 0.2 0\n[Model] in\nModel_type Input_diff\n", "E812@20"},
        {"diff-pin/direction", "3.2", ZOV_DIFF "A1 A3 0.2 0\n", "W813@20"},
        {"diff-pin/column-length", "3.2", ZOV_DIFF "A1 A2 0.20000000 0\n", "W814@20"},
        {"diff-pin/empty", "3.2", ZOV_DIFF, "N815@19"},
        {"repeater/columns", "6.0", ZOV_DIFF "[Repeater Pin] tx_non_inv_pin\nA1\n", "E6405@21"},
        {"repeater/order", "6.0", "[Repeater Pin] tx_non_inv_pin\n", "E6407@19"},
        {"repeater/pair", "6.0",
         ZOV_DIFF "A1 A2 1 0\nA3 C1 1 0\n[Repeater Pin] tx_non_inv_pin\nA3 A2\n", "E6408@23"},
        {"repeater/receives", "6.0", ZOV_DIFF "A4 A2 1 0\n[Repeater Pin] tx_non_inv_pin\nA4 A1\n",
         "E6409@22"},
        {"repeater/drives", "6.0", ZOV_DIFF "A3 C1 1 0\n[Repeater Pin] tx_non_inv_pin\nA1 A3\n",
         "E6410@22"},
        {"repeater/pin-once", "6.0", ZOV_DIFF "[Repeater Pin] tx_non_inv_pin\nA3 A1\nA3 A2\n",
         "E6411@22"},
        {"repeater/two-pins", "6.0", ZOV_DIFF "[Repeater Pin] tx_non_inv_pin\nA3 A3\n", "E6412@21"},
        {"repeater/algorithmic", "6.0", ZOV_DIFF "[Repeater Pin] tx_non_inv_pin\nA3 A1\n",
         "W6414@21"},
        {"repeater/empty", "6.0", ZOV_DIFF "[Repeater Pin] tx_non_inv_pin\n", "W6415@20"},
        {"common/heading", "6.0", ZOV_DIFF "[Repeater Pin] tx_pin\n", "E1946@20"},
    };
    ExpectRules(kPinsBefore, kRules);
}

TEST(SeriesPins, EveryRuleFires)
{
#define ZOV_SERIES "[Series Pin Mapping] pin_2 model_name function_table_group\n"
#define ZOV_GROUPS ZOV_SERIES "A1 A2 sw g1\nA3 C1 sw g2\n[Series Switch Groups]\n"
    constexpr SRuleCase kRules[] = {
        {"series-pins/columns", "3.2", ZOV_SERIES "A1 A2\n", "E401@20"},
        {"series-pins/heading-used", "3.2", "[Series Pin Mapping] pin_2 model_name\nA1 A2 sw g\n",
         "E402@20"},
        {"series-pins/pin-known", "3.2", ZOV_SERIES "A1 Z2 ser\n", "E403@20"},
        {"series-pins/two-pins", "3.2", ZOV_SERIES "A1 A1 ser\n", "E404@20"},
        {"series-pins/model-defined", "3.2", ZOV_SERIES "A1 A2 none\n", "E405@20"},
        {"series-pins/model-type", "3.2", ZOV_SERIES "A1 A2 io\n", "E406@20"},
        {"series-pins/group-of-switch", "3.2", ZOV_SERIES "A1 A2 ser g\n", "W407@20"},
        {"series-pins/groups-listed", "3.2", ZOV_SERIES "A1 A2 sw g\n", "W408@20"},
        {"series-pins/groups-listed", "4.2", ZOV_SERIES "A1 A2 sw g\n", "E408@20"},
        {"series-pins/row-once", "3.2", ZOV_SERIES "A1 A2 ser\nA2 A1 ser\n", "W409@21"},
        {"series-pins/empty", "3.2", ZOV_SERIES, "N410@19"},
        {"series-pins/switch-group", "3.2", ZOV_SERIES "A1 A2 sw\n", "N411@20"},
        {"switch-groups/statement", "3.2", ZOV_GROUPS "g1 /\n", "E501@23"},
        {"switch-groups/group-known", "3.2", ZOV_GROUPS "On g3 /\n", "E502@23"},
        {"switch-groups/group-once", "3.2", ZOV_GROUPS "On g1 g1 /\n", "W503@23"},
        {"switch-groups/groups-needed", "3.2", "[Series Switch Groups]\nOn g1 /\n", "E504@19"},
        {"switch-groups/state-once", "3.2", ZOV_GROUPS "On g1 /\nOff g2 /\n", "N505@24"},
        {"switch-groups/empty", "3.2", ZOV_GROUPS, "E506@22"},
        {"switch-groups/statement-end", "3.2", ZOV_GROUPS "On g1\nOff g2 /\n", "E507@24"},
        {"syntax/statement-end", "3.2", ZOV_GROUPS "On g1\n[Package Model] p\n", "E909@24"},
    };
    ExpectRules(kPinsBefore, kRules);
    const SChecked good =
        CheckText(Ibs("3.2", WithPins(ZOV_GROUPS "On g1 g2\n/\nOff g1 g2/\nOn g1 / Off\ng1 /\n")));
    EXPECT_EQ(Codes(good, 400, 599), "");
    EXPECT_FALSE(Has(good, 909));
}

TEST(ModelSelector, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"common/keyword-value", "3.2", "[Model Selector]\n", "E1913@19"},
        {"common/reserved-word", "3.2", "[Model Selector] gnd\n", "E1916@19"},
        {"model-selector/name-once", "3.2", "[Model Selector] s\nio x\n[Model Selector] s\nio x\n",
         "E701@21"},
        {"model-selector/name-of-model", "3.2", "[Model Selector] io\nin x\n", "E702@19"},
        {"model-selector/empty", "3.2", "[Model Selector] s\n", "E703@19"},
        {"model-selector/model-defined", "3.2", "[Model Selector] s\nnone x\n", "E704@20"},
        {"model-selector/selector-listed", "3.2", "[Model Selector] s\ns x\n", "E705@20"},
        {"model-selector/model-once", "3.2", "[Model Selector] s\nio x\nio y\n", "W706@21"},
        {"model-selector/description", "3.2", "[Model Selector] s\nio\n", "W707@20"},
        {"model-selector/series-mixed", "3.2", "[Model Selector] s\nio x\nser y\n", "E708@19"},
        {"model-selector/use-mixed", "3.2", "[Model Selector] s\nin x\nout y\n", "N709@19"},
        {"model-selector/used", "3.2", "[Model Selector] s\nio x\n", "N710@19"},
    };
    ExpectRules(kPinsBefore, kRules);
    const SChecked good = CheckText(
        Ibs("3.2", WithPins("B1 q sel\n[Model Selector] sel\nio the usual one\nother a second one\n"
                            "[Model] other\nModel_type I/O\n")));
    EXPECT_EQ(Codes(good, 609, 799), "N618@37 N618@40") << "only the series models are unused";
}

} // namespace

} // namespace zov::ibischk::test
