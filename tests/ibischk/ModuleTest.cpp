// SPDX-License-Identifier: Apache-2.0
// Electrical module descriptions and the sets of their models.
#include "ibischk/GoodFiles.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

constexpr std::string_view kGood = kGoodModule;

SCheckHow How(EFileType type = EFileType::Emd)
{
    return ModuleHow(type);
}

std::string Replaced(std::string_view text, std::string_view from, std::string_view to)
{
    std::string result(text);
    return result.replace(result.find(from), from.size(), to);
}

TEST(Module, GoodModuleIsSilent)
{
    const std::string text = Header("7.1", "test.emd").append(kGood) + "[End]\n";
    EXPECT_EQ(Codes(CheckText(text, How())), "");
}

/// Each row replaces a part of the good module.
struct SChange
{
    std::string_view rule;
    std::string_view from;
    std::string_view to;
    std::string_view expected;
};

TEST(Module, RulesOfPinsAndPartsFire)
{
    const std::string longText = "[Manufacturer] " + std::string(41, 'x');
    const SChange kChanges[] = {
        {"emd/module-once", "[Begin EMD] module\n",
         "[Begin EMD] module\n[End EMD]\n[Begin EMD] module\n", "E6506@6"},
        {"emd/maker", "[Manufacturer] m\n", "", "W6507@4"},
        {"emd/maker", "[Manufacturer] m", longText, "W6507@5"},
        {"emd/description", "[Description] d\n", "[Description]\n", "W6508@6"},
        {"emd/pin-number", "Pins] 4", "Pins] 4 pins", "E6510@7"},
        {"emd/pin-number", "Pins] 4", "Pins] 0", "E6510@7"},
        {"common/keyword-required", "[Number of EMD Pins] 4\n", "", "E1915@4"},
        {"emd/pin-columns", "1 DQ0", "1", "E6516@9"},
        {"emd/pin-columns", "VDD_L", "VDD_L x", "E6516@10"},
        {"emd/pin-count", "Pins] 4", "Pins] 5", "E6517@8"},
        {"emd/pin-once", "3 VSS", "2 VSS", "E6518@11"},
        {"emd/signal-type", "3 VSS GND", "3 VSS GROUND", "E6519@11"},
        {"emd/one-signal-type", "3 VSS GND", "3 VDD GND", "E6520@11"},
        {"emd/label-of-rail", "4 open nc", "4 open nc lab", "E6521@12"},
        {"emd/label-one-signal", "3 VSS GND", "3 VSS GND VDD_L", "E6522@11"},
        {"emd/name-plain", "4 open", "4.1 open", "W6523@12"},
        {"emd/part-columns", "dram.ibs DRAM", "dram.ibs", "E6530@15"},
        {"emd/part-once", "DRAM\n", "DRAM\nram dram.ibs DRAM\n", "E6531@16"},
        {"emd/part-file", "dram.ibs", "dram.txt", "E6532@15"},
        {"emd/part-file", "dram.ibs DRAM", "old.ebd b", "C6532@15"},
        {"emd/part-file-readable", "dram.ibs", "nope.ibs", "W6533@15"},
        {"emd/part-found", "DRAM", "dram", "E6534@15"},
        {"emd/part-self", "dram.ibs DRAM", "test.emd module", "E6535@15"},
        {"emd/part-self", "dram.ibs DRAM", "back.emd b", "E6535@15"},
        {"emd/part-used", "DRAM\n", "DRAM\nrom dram.ibs DRAM\n", "C6536@16"},
        {"emd/designator-columns", "u1 ram", "u1", "E6540@18"},
        {"emd/designator-once", "u2 ram", "u1 ram", "E6541@19"},
        {"emd/designator-part", "u2 ram", "u2 rom", "E6542@19"},
        {"emd/designator-pin-columns", "u1.A1 DQ0", "u1.A1", "E6550@22"},
        {"emd/designator-pin-form", "u1.A1 DQ0", "u1A1 DQ0", "E6551@22"},
        {"emd/designator-known", "u1.A1 DQ0", "u3.A1 DQ0", "E6552@22"},
        {"emd/designator-pin-known", "u1.A1 DQ0", "u1.B1 DQ0", "E6553@22"},
        {"emd/designator-pin-once", "u2.A1", "u1.A1", "E6554@26"},
        {"emd/designator-pins-all", "u1.A1 DQ0\n", "", "W6555@18"},
        {"emd/designator-signal-type", "u1.A1 DQ0", "u1.A1 DQ0 GND", "E6556@22"},
        {"emd/designator-rail", "u1.A3 VSS GND", "u1.A3 VDD POWER", "W6557@24"},
        {"emd/designator-label", "VDD_R", "VDD_R\nu9.1 VSS GND VDD_R", "E6558@28"},
        {"emd/parts-together", "[End Designator Pin List]\n[Voltage List]",
         "[End Designator Pin List]\n[End EMD]\n[Begin EMD] n\n[EMD Parts]\n[End EMD Parts]\n",
         "E6559@32"},
        {"emd/designator-label-of-rail", "u1.A1 DQ0", "u1.A1 DQ0 NC lab", "E6560@22"},
        {"emd/pin-list", "[End Designator Pin List]\n[Voltage List]",
         "[End Designator Pin List]\n[End EMD]\n[Begin EMD] n\n", "E6515@32"},
        {"emd/block-closed", "[End EMD Pin List]\n", "", "E6500@8"},
        {"emd/block-opened", "[EMD Parts]\n", "", "E6501@15"},
        {"common/keyword-value", "[Begin EMD] module", "[Begin EMD]", "E1913@4"},
    };
    for (const SChange& change : kChanges) {
        const std::string body = Replaced(kGood, change.from, change.to);
        ExpectRule({change.rule, "7.1", body, change.expected}, How());
    }
    ExpectRule({"emd/modules-given", "7.1", "", "E6505"}, How());
    EXPECT_TRUE(Has(CheckText(Ibs("7.0", kGood), How()), 926, 4));
    EXPECT_TRUE(
        Has(CheckText(Ibs("7.1", Replaced(kGood, "Pins] 4\n", "Pins] 4\nx\n")), How()), 907, 8));
}

TEST(Module, OrderOfKeywordsIsChecked)
{
    constexpr std::string_view kNumber = "[Number of EMD Pins] 4\n";
    const std::string late = Replaced(Replaced(kGood, kNumber, ""), "[End EMD Pin List]\n",
                                      "[End EMD Pin List]\n" + std::string(kNumber));
    ExpectRule({"emd/order", "7.1", late, "E6511@7"}, How());
    constexpr std::string_view kVoltages =
        "[Voltage List]\nVDD 1.2 1.14 1.26\n[End Voltage List]\n";
    const std::string early = Replaced(Replaced(kGood, kVoltages, ""), "[EMD Parts]\n",
                                       std::string(kVoltages) + "[EMD Parts]\n");
    ExpectRule({"emd/usual-order", "7.1", early, "C6590@14"}, How());
}

TEST(Module, RulesOfVoltagesAndGroupsFire)
{
    const SChange kChanges[] = {
        {"emd/voltage-columns", "VDD 1.2 1.14 1.26", "VDD 1.2", "E6565@32"},
        {"emd/voltage-known", "VDD 1.2", "VCC 1.2", "E6566@32"},
        {"emd/voltage-once", "1.26\n", "1.26\nVDD 1 1 1\n", "E6567@33"},
        {"common/number", "VDD 1.2", "VDD x", "E1922@32"},
        {"common/number", "VDD 1.2", "VDD NA", "E1922@32"},
        {"emd/voltage-order", "1.2 1.14", "1.2 1.21", "C6568@32"},
        {"emd/group-once", "[EMD Group] all\n",
         "[EMD Group] all\n[End EMD Group]\n[EMD Group] all\n", "E6575@36"},
        {"emd/group-columns", "nets NA", "nets", "E6576@35"},
        {"emd/group-empty", "nets NA\n", "", "E6577@34"},
        {"emd/group-file", "nets NA", "nets x.ims", "E6578@35"},
        {"emd/group-file", "nets NA", "nets nope.ems", "E6578@35"},
        {"emd/group-file", "nets NA", "nets test.emd", "C6578@35"},
        {"emd/set-found", "nets NA", "cables NA", "E6579@35"},
        {"emd/set-found", "nets NA", "cables none.ems", "E6579@35"},
        {"emd-set/sets-given", "nets NA", "cables none.ems", "E6655"},
        {"emd/group-set-once", "nets NA\n", "nets NA\nnets NA\n", "E6580@36"},
        {"emd/pins-touched", "3 Pin_I/O pin_name u2.A1\n", "", "C6581@34"},
        {"emd/one-model", "1 Pin_Rail signal_name *.VDD", "1 Pin_I/O pin_name 1", "W6582@34"},
        {"emd-set/pin-known", "pin_name 1\n", "pin_name 9\n", "E6680@44"},
        {"emd-set/pin-known", "u1.A1\n3", "u3.A1\n3", "E6680@45"},
        {"emd-set/pin-kind", "pin_name 1\n", "pin_name 3\n", "E6681@44"},
        {"emd-set/pin-kind", "Pin_Rail pin_name u1.A3", "Pin_Rail pin_name u1.A1", "E6681@55"},
        {"emd-set/rail-known", "signal_name VDD", "signal_name VDDQ", "E6682@47"},
        {"emd-set/rail-known", "bus_label u2.VDD_R", "bus_label u1.VDD_R", "E6682@48"},
        {"emd-set/rail-known", "signal_name *.VDD", "signal_name *.DQ0", "E6682@54"},
        {"emd-set/aggressor-all", "pin_name 1\n", "pin_name 1 Aggressor_Only\n", "W6669@44"},
        {"emd-set/way-through", "1 Pin_Rail signal_name *.VDD", "1 Pin_I/O pin_name 1", "C6672@54"},
    };
    for (const SChange& change : kChanges) {
        // The part's rows begin in line 22; this pattern is only wanted behind them.
        const std::size_t sets = kGood.find("[EMD Set]");
        const bool inSets = change.rule.starts_with("emd-set") || change.rule == "emd/one-model" ||
                            change.rule == "emd/pins-touched";
        const bool group = change.rule == "emd-set/sets-given";
        const std::string body = inSets && !group
                                     ? std::string(kGood.substr(0, sets)) +
                                           Replaced(kGood.substr(sets), change.from, change.to)
                                     : Replaced(kGood, change.from, change.to);
        ExpectRule({change.rule, "7.1", body, change.expected}, How());
    }
}

TEST(EmdSet, RulesFire)
{
    // Lines 4 and 5; the body of a model begins in line 6.
    const std::string head = "[EMD Set] s\n[EMD Model] m\n";
    const std::string circuit = head + "File_IBIS-ISS c.iss c\nNumber_of_terminals = 2\n";
    const std::string longText(61, 'x');
    struct SRow
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    };
    const SRow kRows[] = {
        {"emd-set/sets-given", "", "E6655"},
        {"emd-set/set-once", "[EMD Set] s\n[EMD Set] s\n", "E6656@5"},
        {"emd-set/maker", "[EMD Set] s\n[Manufacturer]\n", "W6657@5"},
        {"emd-set/description", "[EMD Set] s\n[Description] " + longText + "\n", "W6658@5"},
        {"emd-set/models-given", "[EMD Set] s\n", "E6659@4"},
        {"emd-set/model-once", head + "[End EMD Model]\n[EMD Model] m\n", "E6660@7"},
        {"emd-set/block-closed", head, "E6650@4"},
        {"emd-set/block-opened", "[EMD Set] s\n[End EMD Model]\n", "E6651@5"},
        {"emd-set/terminal-type", circuit + "1 Pad_I/O pin_name A\n", "E6665@8"},
        {"emd-set/terminal-qualifier", circuit + "1 Pin_I/O bus_label A\n", "E6666@8"},
        {"emd-set/terminal-qualifier", circuit + "1 A_gnd pin_name A\n", "E6666@8"},
        {"emd-set/terminal-aggressor", circuit + "1 Pin_Rail pin_name A Aggressor_Only\n",
         "E6667@8"},
        {"emd-set/terminal-once", circuit + "1 Pin_I/O pin_name A\n2 Pin_I/O pin_name A\n",
         "E6668@9"},
        {"emd-set/reference-type",
         head + "File_TS n.s1p\nNumber_of_terminals = 2\n2 Pin_I/O pin_name A\n", "W6670@8"},
        {"emd-set/star", circuit + "1 Pin_I/O pin_name *.A\n", "W6671@8"},
        {"emd-set/body-sub-parameter", head + "x\n", "E6705@6"},
        {"emd-set/body-file-named", head, "E6706@5"},
        {"emd-set/body-file-once", head + "File_TS n.s1p\nFile_TS n.s1p\n", "E6707@7"},
        {"emd-set/body-touchstone-arguments", head + "File_TS a b\n", "E6708@6"},
        {"emd-set/body-subcircuit-arguments", head + "File_IBIS-ISS c.iss\n", "E6709@6"},
        {"emd-set/body-file-exists", head + "File_TS x.s1p\n", "W6710@6"},
        {"emd-set/body-file-extension", head + "File_TS x.txt\n", "W6711@6"},
        {"emd-set/body-param-subcircuit", head + "Param a Value 1\nFile_TS n.s1p\n", "E6712@6"},
        {"emd-set/body-param-form", head + "Param a\n", "E6713@6"},
        {"emd-set/body-param-value", head + "Param a Value 1 2\n", "E6714@6"},
        {"emd-set/body-param-once", head + "Param a Value 1\nParam a Value 2\n", "E6715@7"},
        {"emd-set/body-termination-place", circuit + "Unused_port_termination = 1\n", "E6716@8"},
        {"emd-set/body-termination-value", head + "Unused_port_termination = -1\n", "E6717@6"},
        {"emd-set/body-terminal-count-place", head, "E6718@5"},
        {"emd-set/body-terminal-count-value", head + "Number_of_terminals = -2\n", "E6719@6"},
        {"emd-set/body-terminal-count-ports", head + "File_TS n.s1p\nNumber_of_terminals = 3\n",
         "E6720@7"},
        {"emd-set/body-terminal-number", circuit + "3 A_gnd\n", "E6721@8"},
        {"emd-set/body-terminal-once", circuit + "1 A_gnd\n1 A_gnd\n", "E6722@9"},
        {"emd-set/body-terminal-all", circuit + "1 A_gnd\n", "E6723@5"},
        {"emd-set/body-terminal-reference",
         head + "File_TS n.s1p\nNumber_of_terminals = 2\n1 A_gnd\n", "E6724@5"},
        {"emd-set/body-terminals", circuit, "E6725@5"},
        {"emd-set/body-subcircuit-nodes", head + "File_IBIS-ISS c.iss C\nNumber_of_terminals = 3\n",
         "W6726@7"},
        {"emd-set/body-file-ports", head + "File_TS0 p.ts\nNumber_of_terminals = 3\n", "W6727@7"},
        {"emd-set/body-terminals-last", circuit + "1 A_gnd\nParam a Value 1\n", "W6728@9"},
        {"emd-set/body-terminal-fields", circuit + "1\n", "E6729@8"},
        {"emd-set/body-terminal-qualifier", circuit + "1 Pin_I/O pins A\n", "E6730@8"},
        {"emd-set/body-terminal-aggressor", circuit + "1 Pin_I/O pin_name A B\n", "E6731@8"},
        {"emd-set/body-subcircuit-found", head + "File_IBIS-ISS c.iss d\nNumber_of_terminals = 3\n",
         "W6732@6"},
    };
    for (const SRow& row : kRows) {
        ExpectRule({row.rule, "7.1", row.body, row.expected}, How(EFileType::Ems));
    }
}

} // namespace

} // namespace zov::ibischk::test
