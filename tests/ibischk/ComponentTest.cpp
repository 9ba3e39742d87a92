// SPDX-License-Identifier: Apache-2.0
// [Component], [Package], [Pin], package references and EMI.
#include "ibischk/ComponentSupport.h"

namespace zov::ibischk::test {

namespace {

TEST(Component, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"common/keyword-value", "3.2", "[Component]\n", "E1913@4"},
        {"component/name-blanks", "3.2", "[Component] a b\n", "N200@4"},
        {"component/name-once", "3.2", "[Component] a\n[Component] a\n", "E201@5"},
        {"component/location-value", "3.2", "[Component] a\nSi_location pad\n", "E202@5"},
        {"common/sub-parameter-once", "3.2", "[Component] a\nSi_location Pin\nSi_location Die\n",
         "E1942@6"},
        {"common/sub-parameter-version", "2.1", "[Component] a\nSi_location Pin\n", "E1952@5"},
        {"component/pins-first", "3.2", "[Component] a\n[Diff Pin] inv_pin vdiff tdelay_typ\n",
         "E203@5"},
        {"common/keyword-required", "3.2", "[Component] a\n", "E1915@4"},
        {"package/sub-parameter-required", "3.2", "[Component] a\n[Package]\nR_pkg 1 1 1\n",
         "E1200@5"},
        {"package/typ-number", "3.2", "[Component] a\n[Package]\nR_pkg NA 1 1\n", "E1201@6"},
        {"package/not-negative", "3.2", "[Component] a\n[Package]\nR_pkg -1 -2 1\n", "E1202@6"},
        {"package/plausible", "3.2", "[Component] a\n[Package]\nL_pkg 1u NA NA\n", "C1203@5"},
        {"package/both-corners", "3.2", "[Component] a\n[Package]\nR_pkg 1 1 NA\n", "N1204@6"},
        {"common/magnitude-order", "3.2", "[Component] a\n[Package]\nR_pkg 1 2 3\n", "W1949@6"},
        {"common/sub-parameter-known", "3.2", "[Component] a\n[Package]\nG_pkg 1 2 3\n", "E1943@6"},
        {"pin/empty", "3.2", "[Component] a\n[Pin] signal_name model_name\n", "E617@5"},
        {"common/heading-missing", "3.2", "[Component] a\n[Pin] signal_name\n", "E1951@5"},
    };
    for (const SRuleCase& rule : kRules) {
        ExpectRule(rule);
    }
}

TEST(Pins, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"pin/columns", "3.2", "B1 s\n", "E601@19"},
        {"pin/columns", "3.2", "B1 s io 1\n", "E601@19"},
        {"pin/name-once", "3.2", "A1 s io\n", "E603@19"},
        {"pin/name-case", "3.2", "a1 s io\n", "W604@19"},
        {"pin/not-negative", "3.2", "B1 s io 1 -1n 1p\n", "E605@19"},
        {"pin/column-length", "3.2", "B1 s io 1.00000001 1n 1p\n", "W606@19"},
        {"pin/plausible", "3.2", "B1 s io 1 1 1p\n", "C607@19"},
        {"pin/line-plausible", "3.2", "B1 s io 1 100n 50p\n", "C608@19"},
        {"pin/model-defined", "3.2", "B1 s none\n", "E609@19"},
        {"pin/model-case", "3.2", "B1 s IO\n", "E610@19"},
        {"pin/model-defined", "3.2", "B1 s CIRCUITCALL\n", "E609@19"},
        {"pin/series-model", "3.2", "B1 s ser\n", "W611@19"},
        {"pin/series-model", "4.2", "B1 s ser\n", "E611@19"},
        {"pin/circuit-call", "4.2", "B1 s CIRCUITCALL\n", "W612@19"},
        {"pin/diff-model", "4.2", "B1 s d\n[Model] d\nModel_type Input_diff\n", "E613@19"},
        {"pin/signal-one-rail", "3.2", "B1 VCC GND\n", "W614@19"},
        {"pin/signal-one-rail", "7.0", "B1 VCC GND\n", "E614@19"},
        {"pin/signal-rail-or-buffer", "3.2", "B1 VCC io\n", "W615@19"},
        {"pin/model-used", "3.2", "[Model] m\nModel_type Input\n", "N618@19"},
        {"common/text-length", "3.2", "B12345 s io\n", "W1912@19"},
        {"common/name-length", "3.2", "B1 s m23456789012345678901\n", "E1914@19"},
    };
    ExpectRules(WithPins("").substr(0, kComponentHead.size() + kComponentPins.size()), kRules);
    constexpr SRuleCase kShortHeading[] = {
        {"pin/heading-used", "3.2", "[Pin] signal_name model_name\nA1 s io 1 1n 1p\n", "E602@11"},
        {"pin/no-rail", "3.2", "[Pin] signal_name model_name\nA1 s io\n", "N616@4"},
    };
    ExpectRules(kComponentHead, kShortHeading);
}

TEST(Pins, GoodComponentIsSilent)
{
    for (const std::string_view version : {"2.1", "4.2", "7.1"}) {
        const SChecked checked = CheckText(
            Ibs(version, WithPins("B1 VCCQ power NA NA 1p\nB2 s6 in 50m 2nH 1.5pF\n"
                                  "[Diff Pin] inv_pin vdiff tdelay_typ tdelay_min tdelay_max\n"
                                  "A1 A2 0.2V -1ns 0 -2ns\n")));
        EXPECT_EQ(Codes(checked, 200, 617), "") << version;
        EXPECT_EQ(Codes(checked, 800, 899), "") << version;
        EXPECT_EQ(Codes(checked, 1200, 1299), "") << version;
    }
}

TEST(Pins, OneMissingModelIsToldOnce)
{
    const SChecked checked = CheckText(Ibs("3.2", WithPins("B1 a none\nB2 b none\nB3 c none\n")));
    EXPECT_EQ(Codes(checked, 609, 610), "E609@19");
    EXPECT_NE(MessageOf(checked, 609).find("3 pins"), std::string::npos);
}

TEST(PackageReference, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"common/keyword-value", "3.2", "[Package Model]\n", "E1913@19"},
        {"package-reference/package-model-found", "3.2", "[Package Model] p\n", "W2700@19"},
        {"package-reference/package-model-elsewhere", "3.2", "[Package Model] beside\n",
         "N2701@19"},
        {"package-reference/alternatives-need-default", "4.2",
         "[Alternate Package Models]\np\n[End Alternate Package Models]\n", "E2704@4"},
        {"package-reference/alternatives-empty", "4.2",
         "[Alternate Package Models]\n[End Alternate Package Models]\n", "E2706@4"},
        {"package-reference/one-name-per-line", "4.2", "[Alternate Package Models]\np q\n",
         "E2705@20"},
        {"package-reference/alternative-once", "4.2", "[Alternate Package Models]\np\np\n",
         "W2707@21"},
        {"package-reference/alternative-is-default", "4.2",
         "[Package Model] p\n[Alternate Package Models]\np\n", "N2708@21"},
    };
    const SCheckHow how{
        .beside = {{"some.pkg", "[IBIS Ver] 3.2\n[Define Package Model] beside\n"}}};
    ExpectRules(std::string(kComponentHead).append(kComponentPins), kRules, kSomeModels, how);
}

TEST(PackageReference, PinsAreComparedWithTheComponent)
{
    const auto checked = [](std::string_view pins) {
        const std::string model =
            "[Define Package Model] p\n[Manufacturer] m\n[OEM] o\n[Description] d\n"
            "[Number Of Pins] 2\n[Pin Numbers]\n" +
            std::string(pins) + "[End Package Model]\n";
        return CheckText(Ibs("3.2", WithPins("[Package Model] p\n" + model)));
    };
    const SChecked more = checked("A1\nZ1\n");
    EXPECT_EQ(MessageOf(more, 2702),
              "Pin 'Z1' of [Define Package Model] 'p' is not a pin of component 'c' (1 in all).");
    EXPECT_NE(MessageOf(more, 2703).find("lacks pin 'A2' of component 'c' ("), std::string::npos)
        << MessageOf(more, 2703);
    EXPECT_FALSE(Has(checked("A1\nA2\n"), 2702));
    const SChecked all = checked("A1\nA2\nA3\nA4\nV1\nG1\nN1\nC1\n");
    EXPECT_EQ(Codes(all, 2700, 2703), "");
}

TEST(Emi, EveryRuleFires)
{
    constexpr SRuleCase kRules[] = {
        {"emi/empty", "5.1", "[Begin EMI Component]\n[End EMI Component]\n", "N4812@19"},
        {"emi/value-word", "5.1", "[Begin EMI Component]\nDomain Both\n", "E4800@20"},
        {"emi/not-negative", "5.1", "[Begin EMI Component]\nCpd -1p\n", "E4801@20"},
        {"emi/one-heatsink", "5.1",
         "[Begin EMI Component]\nC_Heatsink_gnd 1p\nC_Heatsink_float 1p\n", "E4802@21"},
        {"emi/pin-columns", "5.1", "[Begin EMI Component]\n[Pin EMI] domain_name clock_div\nA1\n",
         "E4803@21"},
        {"emi/pin-known", "5.1", "[Begin EMI Component]\n[Pin EMI] domain_name clock_div\nZ1 d 1\n",
         "E4804@21"},
        {"emi/pin-once", "5.1",
         "[Begin EMI Component]\n[Pin EMI] domain_name clock_div\nA1 d 1\nA1 d 2\n", "E4805@22"},
        {"emi/clock-div", "5.1", "[Begin EMI Component]\n[Pin EMI] domain_name clock_div\nA1 d 0\n",
         "E4806@21"},
        {"emi/heading-used", "5.1", "[Begin EMI Component]\n[Pin EMI] domain_name\nA1 d 1\n",
         "E4813@21"},
        {"emi/domain-known", "5.1",
         "[Begin EMI Component]\n[Pin EMI] domain_name\nA1 d\n[Pin Domain EMI] percentage\n"
         "e 10\n",
         "W4807@21"},
        {"emi/domain-columns", "5.1",
         "[Begin EMI Component]\n[Pin Domain EMI] percentage\nd 10 1\n", "E4808@21"},
        {"emi/domain-once", "5.1",
         "[Begin EMI Component]\n[Pin Domain EMI] percentage\nd 10\nd 20\n", "E4809@22"},
        {"emi/percentage", "5.1", "[Begin EMI Component]\n[Pin Domain EMI] percentage\nd 1.5\n",
         "E4810@21"},
        {"emi/percentage-sum", "5.1",
         "[Begin EMI Component]\n[Pin Domain EMI] percentage\nd 60\ne 60\n", "W4811@20"},
    };
    ExpectRules(std::string(kComponentHead).append(kComponentPins), kRules);
    constexpr SRuleCase kOrder[] = {{"emi/pins-first", "5.1",
                                     "[Begin EMI Component]\n[Pin EMI] domain_name\nA1 d\n",
                                     "E4814@11"}};
    ExpectRules(kComponentHead, kOrder);
}

} // namespace

} // namespace zov::ibischk::test
