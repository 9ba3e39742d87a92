// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

std::string Rows(int count)
{
    std::string rows;
    for (int i = 0; i < count; ++i) {
        rows += std::to_string(i) + "n " + std::to_string(i) + " NA NA\n";
    }
    return rows;
}

TEST(Curve, EveryRuleOfFormFires)
{
    const std::string many = "[Model] m\n[Pulldown]\n" + Rows(101);
    const SRuleCase kCases[] = {
        {"common/too-few-columns", "3.2", "[Model] m\n[Pulldown]\n0 0 0\n", "E1944@6"},
        {"common/too-many-columns", "3.2", "[Model] m\n[Pulldown]\n0 0 0 0 0\n", "E1953@6"},
        {"common/number", "3.2", "[Model] m\n[Pulldown]\n0 0 x 0\n", "E1922@6"},
        {"curve/first-column", "3.2", "[Model] m\n[Pulldown]\nNA 0 0 0\n", "E1402@6"},
        {"curve/rows-least", "3.2", "[Model] m\n[Pulldown]\n0 0 0 0\n", "E1403@5"},
        {"curve/rows-most", "3.2", many, "E1404@5"},
        {"curve/ends", "3.2", "[Model] m\n[Pulldown]\n0 0 0 0\n1 1 NA 1\n", "E1405@5"},
        {"curve/voltage-equal", "3.2", "[Model] m\n[Pulldown]\n0 0 0 0\n0 0 0 0\n1 1 1 1\n",
         "W1406@7"},
        {"curve/voltage-order", "3.2",
         "[Model] m\n[Pulldown]\n0 0 0 0\n2 0 0 0\n1 1 1 1\n3 1 1 1\n", "E1407@8"},
        {"curve/table-required", "3.2", "[Model] m\nModel_type Output\n", "E1420@4"},
        {"curve/table-missing", "3.2", "[Model] m\nModel_type Output\n[Pullup]\n0 0 0 0\n1 1 1 1\n",
         "W1421@4"},
        {"curve/table-open-type", "3.2",
         "[Model] m\nModel_type Open_drain\n[Pullup]\n0 0 0 0\n1 1 1 1\n", "E1422@6"},
        {"curve/table-open-type", "3.2",
         "[Model] m\nModel_type Open_drain\n[Pullup]\n0 0 0 0\n1 0 0 0\n", "N1422@6"},
        {"curve/table-foreign", "3.2", "[Model] m\nModel_type Input\n[Pullup]\n", "E1423@4"},
        {"curve/clamp-missing", "3.2", "[Model] m\nModel_type Input\n", "W1424@4"},
        {"curve/isso-type", "5.1", "[Model] m\nModel_type Input\n[ISSO PD]\n", "E1451@6"},
        {"curve/isso-table", "5.1", "[Model] m\nModel_type Output\n[ISSO PD]\n", "W1452@6"},
        {"curve/isso-pair", "5.1", "[Model] m\nModel_type Output\n[ISSO PD]\n", "W1453@4"},
        {"curve/isso-side", "5.1", "[Model] m\nModel_type Open_drain\n[ISSO PU]\n", "W1454@6"},
    };
    for (const SRuleCase& rule : kCases) {
        ExpectRule(rule);
    }
}

TEST(Ramp, EveryRuleFires)
{
    constexpr SRuleCase kCases[] = {
        {"ramp/required", "3.2", "[Model] m\nModel_type Output\n", "E1101@4"},
        {"ramp/type", "3.2", "[Model] m\nModel_type Input\n[Ramp]\n", "W1102@6"},
        {"ramp/sub-parameter-required", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 1/1n NA NA\n",
         "E1103@5"},
        {"ramp/fraction", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 2.4G NA NA\n", "E1104@6"},
        {"ramp/typ-number", "3.2", "[Model] m\n[Ramp]\ndV/dt_r NA 1/1n 1/1n\n", "E1105@6"},
        {"ramp/positive", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 0/0 1/1n 1/1n\n", "E1106@6"},
        {"ramp/load-positive", "3.2", "[Model] m\n[Ramp]\nR_load = 0\n", "E1107@6"},
        {"ramp/corner-order", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 1/1n 1/0.5n 1/1n\n", "N1108@6"},
        {"ramp/time-size", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 1/1 NA NA\n", "C1109@6"},
        {"ramp/slew-size", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 1n/1n NA NA\n", "C1111@6"},
        {"ramp/swing", "3.2",
         "[Model] m\nModel_type Output\n[Voltage Range] 3 3 3\n[Ramp]\ndV/dt_r 4/1n NA NA\n",
         "W1110@7"},
        {"common/triple-columns", "3.2", "[Model] m\n[Ramp]\ndV/dt_r 1/1n\n", "E1933@6"},
    };
    for (const SRuleCase& rule : kCases) {
        ExpectRule(rule);
    }
}

TEST(Waveform, EveryRuleOfFormFires)
{
    constexpr std::string_view kHead =
        "[Model] m\nModel_type Output\n[Voltage Range] 3 2 4\n[Ramp]\ndV/dt_r 1/1n NA NA\n"
        "[Rising Waveform]\nR_fixture = 50\nV_fixture = 0\n";
    const auto with = [kHead](std::string_view more) { return std::string(kHead).append(more); };
    const std::string table =
        "[Rising Waveform]\nR_fixture = 50\nV_fixture = 0\n0 0 0 0\n1n 1 1 1\n";
    std::string many = "[Model] m\nModel_type Output\n";
    for (int i = 0; i <= 100; ++i) {
        many += table;
    }
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"waveform/fixture-required", "[Model] m\n[Rising Waveform]\nR_fixture = 50\n", "E1301@5"},
        {"waveform/value-negative", with("C_fixture = -1p\n"), "E1302@12"},
        {"waveform/value-positive", "[Model] m\n[Rising Waveform]\nR_fixture = 0\n", "E1303@6"},
        {"waveform/first-column", with("NA 0 0 0\n"), "E1304@12"},
        {"waveform/rows-least", with("0 0 0 0\n"), "E1305@9"},
        {"waveform/rows-most", with(Rows(101)), "E1306@9"},
        {"waveform/time-order", with("0 0 0 0\n1n 1 1 1\n1n 2 2 2\n"), "E1307@14"},
        {"waveform/time-negative", with("-1n 0 0 0\n1n 1 1 1\n"), "W1308@9"},
        {"waveform/ends", with("0 NA 0 0\n1n 1 1 1\n"), "E1309@9"},
        {"waveform/settled", with("0 0 0 0\n1n 1 1 1\n2n 2 2 2\n"), "N1310@9"},
        {"waveform/swing", with("0 1 0 0\n1n 0 1 1\n"), "W1311@9"},
        {"waveform/device", with("R_dut = 1\n"), "N1312@9"},
        {"waveform/reactive", with("C_fixture = 1p\n"), "N1313@9"},
        {"waveform/same-fixture", with("0 0 0 0\n1n 1 1 1\n" + table), "W1315@14"},
        {"waveform/fixture-corners",
         "[Model] m\nModel_type Output\n[Voltage Range] 3 2 4\n[Rising Waveform]\n"
         "R_fixture = 50\nV_fixture = 3\n0 0 0 0\n1n 1 1 1\n",
         "N1316@7"},
        {"waveform/fixture-order", with("V_fixture_min = 1\nV_fixture_max = 0\n"), "N1317@9"},
        {"waveform/fixture-order", with("V_fixture_min = 1\n0 0 0 0\n1n 1 1 1\n"), "N1317@9"},
        {"waveform/tables-most", many, "E1314@4"},
        {"waveform/fixture-side",
         "[Model] m\nModel_type Open_sink\n[Voltage Range] 3 2 4\n" + table, "W1319@7"},
        {"waveform/pair", with("0 0 0 0\n1n 1 1 1\n"), "W1320@4"},
        {"waveform/length", with("0 0 0 0\n2u 1 1 1\n"), "C1321@9"},
        {"waveform/length-ramp", with("0 0 0 0\n2u 1 1 1\n"), "W1322@9"},
        {"common/sub-parameter-first", with("0 0 0 0\n1n 1 1 1\nR_dut = 1\n"), "E1947@14"},
        {"current-timing/current-place", "[Model] m\n[Composite Current]\n", "E5101@5"},
        {"current-timing/current-some",
         with("0 0 0 0\n1n 1 1 1\n[Composite Current]\n0 0 0 0\n1n 1 1 1\n" + table), "N5104@4"},
        {"current-timing/current-span",
         with("0 0 0 0\n1n 1 1 1\n[Composite Current]\n0 0 0 0\n2n 1 1 1\n"), "N5105@14"},
        {"current-timing/delay-empty", "[Model] m\n[Initial Delay]\n", "E5150@5"},
        {"current-timing/delay-typ", "[Model] m\n[Initial Delay]\nV-T NA 1n 1n\n", "E5151@6"},
        {"current-timing/delay-negative", "[Model] m\n[Initial Delay]\nV-T -1n NA NA\n", "E5152@6"},
        {"current-timing/delay-table", "[Model] m\n[Initial Delay]\nV-T 1n NA NA\n", "E5153@5"},
        {"current-timing/delay-long", with("0 0 0 0\n1n 1 1 1\n[Initial Delay]\nV-T 2n NA NA\n"),
         "E5154@14"},
        {"current-timing/delay-moves", with("0 0 0 0\n1n 1 1 1\n[Initial Delay]\nV-T 1n NA NA\n"),
         "W5155@14"},
    };
    for (const auto& c : kCases) {
        const std::string_view version = c.rule.starts_with("current") ? "6.1" : "3.2";
        ExpectRule({c.rule, version, c.body, c.expected});
    }
    ExpectRule({"waveform/few", "3.2", kHead, "N1318@4"}, {.verbose = true});
}

} // namespace

} // namespace zov::ibischk::test
