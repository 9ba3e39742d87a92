// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

TEST(Submodel, EveryRuleFires)
{
    constexpr SRuleCase kCases[] = {
        {"submodel/add-name", "3.2", "[Model] m\n[Add Submodel]\nx All\n", "E1701@6"},
        {"common/case-differs", "3.2", "[Model] m\n[Add Submodel]\nx All\n[Submodel] X\n",
         "E1950@6"},
        {"submodel/add-mode", "3.2", "[Model] m\n[Add Submodel]\nx Never\n", "E1702@6"},
        {"submodel/add-mode-type", "3.2",
         "[Model] m\nModel_type Input\n[Add Submodel]\nx Driving\n[Submodel] x\n", "E1703@7"},
        {"submodel/add-mode-type", "3.2",
         "[Model] m\nModel_type Output\n[Add Submodel]\nx Non-Driving\n[Submodel] x\n", "E1703@7"},
        {"submodel/add-fall-back", "4.2",
         "[Model] m\nModel_type Output\n[Add Submodel]\nx All\n[Submodel] x\n"
         "Submodel_type Fall_back\n",
         "E1704@7"},
        {"submodel/add-once", "3.2", "[Model] m\n[Add Submodel]\nx All\nx All\n", "W1705@7"},
        {"submodel/add-empty", "3.2", "[Model] m\n[Add Submodel]\n", "E1706@4"},
        {"submodel/name-once", "3.2", "[Submodel] x\n[Submodel] x\n", "E1711@5"},
        {"submodel/name-model", "3.2", "[Model] x\n[Submodel] x\n", "W1712@5"},
        {"submodel/type-required", "3.2", "[Submodel] x\n", "E1713@4"},
        {"submodel/type-known", "3.2", "[Submodel] x\nSubmodel_type y\n", "E1714@5"},
        {"submodel/type-version", "3.2", "[Submodel] x\nSubmodel_type Fall_back\n", "E1715@5"},
        {"submodel/table-foreign", "3.2", "[Submodel] x\nSubmodel_type Bus_hold\n[GND Clamp]\n",
         "E1716@4"},
        {"submodel/table-required", "3.2", "[Submodel] x\nSubmodel_type Bus_hold\n", "E1717@4"},
        {"submodel/table-required", "3.2", "[Submodel] x\nSubmodel_type Dynamic_clamp\n",
         "E1717@4"},
        {"submodel/spec-typ", "3.2", "[Submodel] x\n[Submodel Spec]\nV_trigger_r NA 1 1\n",
         "E1718@6"},
        {"submodel/spec-delay", "3.2", "[Submodel] x\n[Submodel Spec]\nOff_delay 0 NA NA\n",
         "E1719@6"},
        {"submodel/spec-required", "3.2", "[Submodel] x\nSubmodel_type Bus_hold\n", "E1720@4"},
        {"submodel/pulse-needs", "3.2",
         "[Submodel] x\nSubmodel_type Dynamic_clamp\n[GND Pulse Table]\n0 0 0 0\n1n 0 0 0\n",
         "W1721@4"},
        {"submodel/pulse-ends", "3.2", "[Submodel] x\n[GND Pulse Table]\n0 0 0 0\n1n 1 0 0\n",
         "W1723@5"},
        {"waveform/time-order", "3.2", "[Submodel] x\n[GND Pulse Table]\n0 0 0 0\n0 1 0 0\n",
         "E1307@7"},
        {"submodel/trigger-order", "3.2",
         "[Submodel] x\nSubmodel_type Bus_hold\n[Submodel Spec]\nV_trigger_r 1 NA NA\n"
         "V_trigger_f 2 NA NA\n",
         "N1724@4"},
        {"submodel/used", "3.2", "[Submodel] x\n", "W1725@4"},
    };
    for (const SRuleCase& rule : kCases) {
        ExpectRule(rule);
    }
}

TEST(Submodel, StaticClampIsSilent)
{
    const SChecked checked = CheckText(
        Ibs("4.2", "[Model] m\nModel_type I/O\n[Add Submodel]\nc Non-Driving\n[Submodel] c\n"
                   "Submodel_type Dynamic_clamp\n[GND Clamp]\n-1 -0.02 NA NA\n1 0.02 NA NA\n"));
    EXPECT_EQ(Codes(checked, 1700, 1799), "");
}

TEST(Thresholds, EveryRuleFires)
{
    const std::string input = "[Model] m\nModel_type Input\n[Voltage Range] 3 NA NA\n"
                              "[Receiver Thresholds]\n";
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"type", "[Model] m\nModel_type Output\n[Receiver Thresholds]\nVth = 1\n", "E2001@6"},
        {"complete", input + "Vth = 1\n", "E2002@7"},
        {"complete", input + "Vcross_low = 1\n", "E2002@7"},
        {"sensitivity-pair", input + "Threshold_sensitivity = 1\n", "E2003@7"},
        {"supply-value", input + "Reference_supply Vdd\n", "E2004@8"},
        {"supply-reference", input + "Reference_supply Ext_ref\n", "E2005@7"},
        {"signs", input + "Vinh_ac = 0.1\nVinh_dc = 0.2\n", "W2006@7"},
        {"offset", input + "Vth = 1.5\nVinh_ac = 2\n", "W2007@7"},
        {"vth-spread", input + "Vth = 1\nVth_min = 0.9\n", "W2008@7"},
        {"vth-spread", input + "Vth = 1\nVth_min = 1.1\nVth_max = 1.2\n", "W2008@7"},
        {"differential-order", input + "Vcross_low = 1\nVcross_high = 0.9\n", "W2009@7"},
        {"value-positive", input + "Tslew_ac = 0\n", "E2010@8"},
        {"empty", input, "E2011@7"},
        {"both-sets",
         input + "Vth = 1.5\nVinh_ac = 0.2\nVinh_dc = 0.1\nVinl_ac = -0.2\nVinl_dc = -0.1\n"
                 "Vcross_low = 0.9\nVcross_high = 1.1\nVdiff_ac = 0.2\nVdiff_dc = 0.1\n",
         "N2012@7"},
    };
    for (const auto& c : kCases) {
        ExpectRule({"receiver-thresholds/" + std::string(c.rule), "4.2", c.body, c.expected});
    }
}

TEST(TestData, EveryRuleFires)
{
    const std::string data = "[Test Data] d\nTest_data_type Single_ended\n";
    const std::string load = "[Test Load] l\nTest_load_type Single_ended\n";
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"test-data/name-once", data + data, "E2101@6"},
        {"test-data/required", data, "E2102@4"},
        {"test-data/type-value", "[Test Data] d\nTest_data_type x\n", "E2103@5"},
        {"test-data/driver-known", data + "Driver_model m\n", "E2104@6"},
        {"test-data/load-known", data + "Test_load l\n", "E2105@6"},
        {"test-data/driver-type", data + "Driver_model m\n[Model] m\nModel_type Input\n",
         "E2106@6"},
        {"test-data/inverting-type", data + "Driver_model_inv m\n", "E2107@6"},
        {"test-data/waveform-required", data, "E2108@4"},
        {"test-data/waveform-type", data + "[Diff Rising Waveform Near]\n", "E2109@6"},
        {"test-data/load-type", "[Test Data] d\nTest_data_type Differential\nTest_load l\n" + load,
         "E2110@6"},
        {"test-data/far", data + "Test_load l\n[Rising Waveform Far]\n" + load, "W2111@4"},
        {"test-load/name-once", load + load, "E2201@6"},
        {"test-load/type-required", "[Test Load] l\n", "E2202@4"},
        {"test-load/type-value", "[Test Load] l\nTest_load_type x\n", "E2203@5"},
        {"test-load/line-pair", load + "Td = 1n\n", "E2204@4"},
        {"test-load/term-voltage", load + "Rp1_near = 50\n", "W2205@4"},
        {"test-load/differential-only", load + "R_diff_near = 100\n", "E2206@4"},
        {"test-load/receiver-known", load + "Receiver_model m\n", "E2207@6"},
        {"test-load/receiver-type", load + "Receiver_model m\n[Model] m\nModel_type Output\n",
         "E2208@6"},
        {"test-load/value-range", load + "Zo = 0\n", "E2209@6"},
        {"test-load/used", load, "N2210@4"},
        {"test-load/differential-driver",
         "[Test Data] d\nDriver_model m\nTest_load l\n[Test Load] l\nTest_load_type Differential\n"
         "[Model] m\nModel_type Output\n",
         "E2211@6"},
    };
    for (const auto& c : kCases) {
        ExpectRule({c.rule, "4.2", c.body, c.expected});
    }
}

} // namespace

} // namespace zov::ibischk::test
