// SPDX-License-Identifier: Apache-2.0
// What came with 7.0 and later: labels, pads, clock pins, power networks, interconnect groups; and
// nodes and circuit calls.
#include "ibischk/ComponentSupport.h"

namespace zov::ibischk::test {

namespace {

const std::string kPinsBefore = std::string(kComponentHead).append(kComponentPins);

TEST(Rails, EveryRuleFires)
{
#define ZOV_LABELS "[Bus Label] signal_name\n"
#define ZOV_PADS "[Die Supply Pads] signal_name bus_label\n"
    constexpr SRuleCase kRules[] = {
        {"bus-label/columns", "7.0", ZOV_LABELS "v\n", "E6255@20"},
        {"bus-label/empty", "7.0", ZOV_LABELS, "W6256@19"},
        {"bus-label/signal-of-rail", "7.0", ZOV_LABELS "v s1\n", "E6258@20"},
        {"bus-label/label-once", "7.0", ZOV_LABELS "v VCC\nv VCC\n", "E6259@21"},
        {"bus-label/label-is-signal", "7.0", ZOV_LABELS "GND VCC\n", "E6260@20"},
        {"bus-label/label-one-signal", "7.0",
         "[Pin Mapping] pulldown_ref pullup_ref\nG1 g NC\n" ZOV_LABELS "g VCC\n", "E6261@22"},
        {"bus-label/reserved", "7.0", ZOV_LABELS "power VCC\n", "W6262@20"},
        {"bus-label/label-length", "7.0",
         ZOV_LABELS "v2345678901234567890123456789012345678901 VCC\n", "C6263@20"},
        {"supply-pads/columns", "7.0", ZOV_PADS "p\n", "E6305@20"},
        {"supply-pads/empty", "7.0", ZOV_PADS, "W6306@19"},
        {"supply-pads/pad-once", "7.0", ZOV_PADS "p VCC\np VCC\n", "E6308@21"},
        {"supply-pads/signal-of-rail", "7.0", ZOV_PADS "p s1\n", "E6309@20"},
        {"supply-pads/label-one-signal", "7.0", ZOV_PADS "p VCC v\nq GND v\n", "E6311@21"},
        {"supply-pads/pad-is-pin", "7.0", ZOV_PADS "A1 VCC\n", "W6312@20"},
        {"supply-pads/heading-used", "7.0", "[Die Supply Pads] signal_name\np VCC v\n", "E6313@20"},
        {"clock-pins/columns", "7.1", "[Clock Pins] clocked_pins relationship\nA1 A2\n",
         "E6355@20"},
        {"clock-pins/empty", "7.1", "[Clock Pins] clocked_pins relationship\n", "W6356@19"},
        {"clock-pins/pin-known", "7.1",
         "[Clock Pins] clocked_pins relationship\nA1 Z2 Unspecified\n", "E6358@20"},
        {"clock-pins/signal-pin", "7.1",
         "[Clock Pins] clocked_pins relationship\nA1 V1 Unspecified\n", "E6359@20"},
        {"clock-pins/inverting", "7.1",
         "[Diff Pin] inv_pin vdiff tdelay_typ\nA1 A2 1 0\n"
         "[Clock Pins] clocked_pins relationship\nA2 A3 Unspecified\n",
         "W6360@22"},
        {"clock-pins/two-pins", "7.1",
         "[Clock Pins] clocked_pins relationship\nA1 A1 Unspecified\n", "E6361@20"},
        {"clock-pins/row-once", "7.1",
         "[Clock Pins] clocked_pins relationship\nA1 A2 Unspecified\nA1 A2 Unspecified\n",
         "E6362@21"},
        {"clock-pins/one-clock", "7.1",
         "[Clock Pins] clocked_pins relationship\nA1 A2 Unspecified\nA3 A2 Unspecified\n",
         "W6363@21"},
        {"clock-pins/relationship", "7.1", "[Clock Pins] clocked_pins relationship\nA1 A2 Same\n",
         "W6364@20"},
        {"common/heading-missing", "7.1", "[Clock Pins] clocked_pins\n", "E1951@19"},
    };
    ExpectRules(kPinsBefore, kRules);
    constexpr SRuleCase kOrder[] = {
        {"bus-label/order", "7.0", ZOV_LABELS, "E6257@10"},
        {"supply-pads/order", "7.0", ZOV_PADS, "E6307@10"},
        {"clock-pins/order", "7.1", "[Clock Pins] clocked_pins relationship\n", "E6357@10"},
        {"pdn/order", "7.1", "[PDN Domain] d\n", "E6885@10"},
        {"interconnect-group/order", "7.0", "[Interconnect Model Group] g\n", "E6215@10"},
        {"repeater/order", "6.0", "[Repeater Pin] tx_non_inv_pin\n", "E6407@10"},
    };
    ExpectRules(kComponentHead, kOrder);
}

TEST(Pdn, EveryRuleFires)
{
#define ZOV_DOMAIN "[PDN Domain] d\nSignal_name VCC GND\n[PDN Model] m\n"
#define ZOV_PDN_END "[End PDN Model]\n[End PDN Domain]\n"
    constexpr SRuleCase kRules[] = {
        {"pdn/domain-once", "7.1",
         ZOV_DOMAIN "C_pdn 1n NA NA\n" ZOV_PDN_END ZOV_DOMAIN "C_pdn 1n NA NA\n" ZOV_PDN_END,
         "W6886@25"},
        {"pdn/rails-given", "7.1", "[PDN Domain] d\n[PDN Model] m\n" ZOV_PDN_END, "E6887@19"},
        {"pdn/signal-of-rail", "7.1", "[PDN Domain] d\nSignal_name s1 GND\n", "E6889@19"},
        {"pdn/label-known", "7.1", "[PDN Domain] d\nBus_label VCC none\n", "E6890@19"},
        {"pdn/two-rails", "7.1", "[PDN Domain] d\nSignal_name VCC VCC\n", "E6891@20"},
        {"pdn/models-given", "7.1", "[PDN Domain] d\nSignal_name VCC GND\n", "E6894@19"},
        {"pdn/one-or-two-names", "7.1", "[PDN Domain] d\nSignal_name VCC GND x\n", "E6911@20"},
        {"pdn/model-once", "7.1", ZOV_DOMAIN "[End PDN Model]\n[PDN Model] m\n", "E6902@23"},
        {"pdn/capacitance-given", "7.1", ZOV_DOMAIN "R_pdn 1 NA NA\n", "E6905@21"},
        {"pdn/typ-number", "7.1", ZOV_DOMAIN "C_pdn NA 1n 1n\n", "E6906@22"},
        {"pdn/sign", "7.1", ZOV_DOMAIN "C_pdn 0 1n 1n\n", "W6907@22"},
        {"pdn/plausible", "7.1", ZOV_DOMAIN "R_leak 0.5 NA NA\n", "C6908@22"},
        {"common/sub-parameter-known", "7.1", ZOV_DOMAIN "L_pdn 1n NA NA\n", "E1943@22"},
        {"common/sub-parameter-once", "7.1", ZOV_DOMAIN "C_pdn 1n NA NA\nC_pdn 1n NA NA\n",
         "E1942@23"},
        {"interconnect-group/name-once", "7.0",
         "[Interconnect Model Group] g\ns NA\n[End Interconnect Model Group]\n"
         "[Interconnect Model Group] g\n",
         "E6205@22"},
        {"interconnect-group/columns", "7.0", "[Interconnect Model Group] g\ns\n", "E6206@20"},
        {"interconnect-group/empty", "7.0", "[Interconnect Model Group] g\n", "E6207@19"},
        {"interconnect-group/set-once", "7.0", "[Interconnect Model Group] g\ns NA\ns NA\n",
         "E6208@21"},
        {"interconnect-group/file-kind", "7.0", "[Interconnect Model Group] g\ns x.ibs\n",
         "E6209@20"},
        {"interconnect-group/file-readable", "7.0", "[Interconnect Model Group] g\ns x.ims\n",
         "E6210@20"},
        {"interconnect-group/set-found", "7.0", "[Interconnect Model Group] g\ns NA\n", "E6211@20"},
        {"interconnect-group/group-and-package", "7.0",
         "[Package Model] p\n[Interconnect Model Group] g\ns NA\n", "C6214@20"},
    };
    ExpectRules(kPinsBefore, kRules);
}

/// Told only in verbose runs, since the meaning of two names on a line is not settled.
TEST(Pdn, DoubtfulPairsAreToldWhenAskedFor)
{
    constexpr SRuleCase kRules[] = {
        {"pdn/one-kind-of-names", "7.1", "[PDN Domain] d\nSignal_name VCC GND\nBus_label VCC GND\n",
         "C6888@19"},
        {"pdn/rail-kinds", "7.1",
         "[Bus Label] signal_name\nv VCC\n[PDN Domain] d\nBus_label VCC v\n", "W6892@21"},
        {"pdn/pair-once", "7.1",
         "[PDN Domain] d\nSignal_name VCC GND\n[PDN Model] m\nC_pdn 1n NA NA\n" ZOV_PDN_END
         "[PDN Domain] e\nSignal_name GND VCC\n",
         "C6893@25"},
        {"pdn/typ-between", "7.1", ZOV_DOMAIN "C_pdn 0.8n 0.9n 1.1n\n", "C6909@22"},
    };
    SCheckHow verbose;
    verbose.verbose = true;
    ExpectRules(kPinsBefore, kRules, kSomeModels, verbose);
    for (const SRuleCase& rule : kRules) {
        const SChecked quiet = CheckText(Ibs("7.1", WithPins(rule.body)));
        for (const int code : {6888, 6892, 6893, 6909}) {
            EXPECT_FALSE(Has(quiet, code)) << code;
        }
    }
    const SChecked good =
        CheckText(Ibs("7.1", WithPins("[PDN Domain] d\nSignal_name VCC GND\n[PDN Model] m\n"
                                      "C_pdn 1n 1.1n 0.9n\n" ZOV_PDN_END)),
                  verbose);
    EXPECT_EQ(Codes(good, 6880, 6929), "") << good.text;
}

TEST(Rails, GoodTablesAreSilent)
{
    const SChecked checked = CheckText(
        Ibs("7.2", WithPins(ZOV_LABELS
                            "v1 VCC\n" ZOV_PADS "p1 VCC v1\np2 VCC v2\np3 GND\n"
                            "[Clock Pins] clocked_pins relationship\nA1 A2 Unspecified\n"
                            "[PDN Domain] d\nBus_label v2 GND\n[PDN Model] m\n"
                            "C_pdn 1n 0.9n 1.1n\nR_pdn 1 NA NA\nR_leak 1M NA NA\n" ZOV_PDN_END)));
    EXPECT_EQ(Codes(checked, 6200, 6930), "");
    EXPECT_EQ(Codes(checked, 1900, 1999), "");
}

TEST(CircuitCall, EveryRuleFires)
{
#define ZOV_CALL_PINS "B1 s8 CIRCUITCALL\nB2 s9 CIRCUITCALL\n"
#define ZOV_CALL ZOV_CALL_PINS "[Circuit Call] e\n"
    constexpr SRuleCase kRules[] = {
        {"nodes/empty", "4.2", "[Node Declarations]\n[End Node Declarations]\n", "E2500@19"},
        {"nodes/node-once", "4.2", "[Node Declarations]\na b\na\n", "E2501@21"},
        {"nodes/node-is-pin", "4.2", "[Node Declarations]\nA1\n", "E2502@20"},
        {"nodes/order", "4.2", ZOV_CALL "[End Circuit Call]\n[Node Declarations]\na\n", "E2503@23"},
        {"nodes/node-used", "4.2", "[Node Declarations]\na\n", "W2504@20"},
        {"nodes/node-used-once", "4.2",
         "[Node Declarations]\na\n[End Node Declarations]\n[Circuit Call] e\nPort_map p a\n",
         "N2505@20"},
        {"common/reserved-word", "4.2", "[Node Declarations]\nNC\n", "E1916@20"},
        {"circuit-call/circuit-defined", "4.2", "[Circuit Call] e\n", "E2601@19"},
        {"circuit-call/one-kind-of-pins", "4.2", ZOV_CALL "Signal_pin B1\nSeries_pins B1 B2\n",
         "E2602@23"},
        {"common/sub-parameter-once", "4.2", ZOV_CALL "Signal_pin B1\nSignal_pin B2\n", "E1942@23"},
        {"circuit-call/pin-known", "4.2", ZOV_CALL "Signal_pin Z1\n", "E2603@22"},
        {"circuit-call/two-pins", "4.2", ZOV_CALL "Diff_signal_pins B1 B1\n", "E2604@22"},
        {"circuit-call/pin-kind", "4.2", ZOV_CALL "Signal_pin A1\n", "E2605@22"},
        {"circuit-call/pair-known", "4.2", ZOV_CALL "Diff_signal_pins B1 B2\n", "W2606@21"},
        {"circuit-call/pair-known", "4.2", ZOV_CALL "Series_pins B1 B2\n", "W2606@21"},
        {"circuit-call/port-once", "4.2", ZOV_CALL "Port_map p B1\nPort_map p B2\n", "E2608@23"},
        {"circuit-call/node-known", "4.2", ZOV_CALL "Port_map p x\n", "E2610@22"},
        {"circuit-call/signal-pin-once", "4.2",
         ZOV_CALL "Signal_pin B1\n[End Circuit Call]\n[Circuit Call] f\nSignal_pin B1\n",
         "E2611@25"},
        {"circuit-call/port-pin-kind", "4.2", ZOV_CALL "Port_map p A1\n", "W2612@22"},
        {"common/too-few-columns", "4.2", ZOV_CALL "Port_map p\n", "E1944@22"},
    };
    ExpectRules(kPinsBefore, kRules);
    // The ports are known when the circuit stands in the file.
    constexpr std::string_view kCircuit =
        "[External Circuit] e\nLanguage SPICE\nCorner Typ e.sp e\nPorts p q\n"
        "[End External Circuit]\n";
    constexpr SRuleCase kPorts[] = {
        {"circuit-call/port-known", "4.2", ZOV_CALL "Port_map p B1\nPort_map r B2\n", "E2607@23"},
        {"circuit-call/ports-mapped", "4.2", ZOV_CALL "Port_map p B1\n", "W2609@21"},
    };
    ExpectRules(kPinsBefore, kPorts, std::string(kCircuit).append(kSomeModels));
    const SChecked good = CheckText(
        Ibs("4.2", WithPins(ZOV_CALL_PINS "[Node Declarations]\nn1\n[End Node Declarations]\n"
                                          "[Circuit Call] e\nSignal_pin B1\nPort_map p B1\n"
                                          "Port_map q n1\nPort_map vcc V1\n[End Circuit Call]\n"
                                          "[Circuit Call] f\nSignal_pin B2\nPort_map p B2\n"
                                          "Port_map q n1\n[End Circuit Call]\n")));
    EXPECT_EQ(Codes(good, 612, 612), "");
    EXPECT_EQ(Codes(good, 2500, 2600), "");
    EXPECT_EQ(Codes(good, 2602, 2606), "");
    const SChecked whole =
        CheckText(Ibs("4.2", kPinsBefore + ZOV_CALL "Port_map p B1\nPort_map q B2\n" +
                                 std::string(kCircuit).append(kSomeModels)));
    EXPECT_EQ(Codes(whole, 2600, 2612), "");
}

} // namespace

} // namespace zov::ibischk::test
