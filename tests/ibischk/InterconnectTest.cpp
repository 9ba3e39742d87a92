// SPDX-License-Identifier: Apache-2.0
// Interconnect model sets, the circuit body, and groups of sets.
#include "ibischk/ComponentSupport.h"
#include "ibischk/GoodFiles.h"
#include "ibischk/circuitfiles.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

SCheckHow How()
{
    return InterconnectHow();
}

/// Lines 4 and 5; a body begins in line 6.
constexpr std::string_view kHead = "[Interconnect Model Set] s\n[Interconnect Model] m\n";
constexpr std::string_view kTail = "[End Interconnect Model]\n[End Interconnect Model Set]\n";

std::string Model(std::string_view body)
{
    return std::string(kHead).append(body).append(kTail);
}

TEST(Interconnect, GoodSetIsSilent)
{
    const std::string text = Header("7.1", "test.ims").append(kGoodSets) + "[End]\n";
    EXPECT_EQ(Codes(CheckText(text, How())), "");
}

TEST(Interconnect, RulesOfSetsFire)
{
    const std::string longText(61, 'x');
    const std::string maker = "[Interconnect Model Set] s\n[Manufacturer] " + longText + "\n";
    const std::string description = "[Interconnect Model Set] s\n[Description] " + longText + "\n";
    const SRuleCase kRules[] = {
        {"interconnect/sets-given", "7.1", "", "E6005"},
        {"interconnect/set-once", "7.1", "[Interconnect Model Set] s\n[Interconnect Model Set] s\n",
         "E6006@5"},
        {"interconnect/maker", "7.1", maker, "W6007@5"},
        {"interconnect/maker", "7.1",
         "[Interconnect Model Set] s\n[Manufacturer] a\n[Manufacturer] a\n", "W6007@6"},
        {"interconnect/description", "7.1", description, "W6008@5"},
        {"interconnect/models-given", "7.1", "[Interconnect Model Set] s\n", "E6009@4"},
        {"interconnect/block-closed", "7.1", "[Interconnect Model Set] s\n", "E6000@4"},
        {"interconnect/block-closed", "7.1", kHead, "E6050@5"},
        {"interconnect/model-once", "7.1",
         "[Interconnect Model Set] s\n[Interconnect Model] m\n[End Interconnect Model]\n"
         "[Interconnect Model] m\n",
         "E6010@7"},
        {"common/keyword-value", "7.1", "[Interconnect Model Set]\n", "E1913@4"},
        {"common/name-one-word", "7.1", "[Interconnect Model Set] a b\n", "E1939@4"},
    };
    for (const SRuleCase& rule : kRules) {
        ExpectRule(rule, How());
    }
    EXPECT_TRUE(Has(CheckText(Ibs("7.1", "[Interconnect Model Set] s\nx\n"), How()), 907, 5));
    EXPECT_TRUE(Has(CheckText(Ibs("7.1", "[Component] s\nx\n"), How()), 913, 4));
    EXPECT_TRUE(Has(CheckText(Ibs("6.1", "[Interconnect Model Set] s\n"), How()), 926, 4));
}

TEST(Interconnect, RulesOfTerminalsFire)
{
    const std::string prefix = "File_IBIS-ISS p.iss pkg\nNumber_of_terminals = 4\n";
    // The terminals begin in line 8.
    constexpr SRuleCase kRules[] = {
        {"interconnect/terminal-type", "7.1", "1 pin_i/o pin_name A\n", "E6055@8"},
        {"interconnect/terminal-qualifier", "7.1", "1 Pin_I/O signal_name A\n", "E6056@8"},
        {"interconnect/terminal-qualifier", "7.1", "1 Pin_I/O\n", "E6056@8"},
        {"interconnect/terminal-ground", "7.1", "1 A_gnd pin_name A\n", "E6057@8"},
        {"interconnect/terminal-aggressor", "7.1", "1 Pin_Rail pin_name A Aggressor_Only\n",
         "E6058@8"},
        {"interconnect/terminal-once", "7.1", "1 Pin_I/O pin_name A\n2 Pin_I/O pin_name A\n",
         "E6059@9"},
        {"interconnect/rail-once", "7.1", "1 Pin_Rail bus_label A\n2 Pin_Rail bus_label A\n",
         "W6060@9"},
        {"interconnect/aggressor-all", "7.1",
         "1 Pin_I/O pin_name A\n2 Pad_I/O pin_name A Aggressor_Only\n", "W6061@8"},
        {"interconnect/way-through", "7.1", "1 Pin_I/O pin_name A\n", "W6062@8"},
        {"interconnect/two-places", "7.1",
         "1 Pin_I/O pin_name A\n2 Pad_I/O pin_name A\n3 Buffer_I/O pin_name A\n", "W6063@5"},
        {"interconnect/rail-places", "7.1",
         "1 Pin_I/O pin_name A\n2 Pad_I/O pin_name A\n3 Buffer_Rail bus_label V\n", "C6064@5"},
        {"interconnect/body-terminal-number", "7.1", "5 A_gnd\n", "E6121@8"},
        {"interconnect/body-terminal-number", "7.1", "1.5 A_gnd\n", "E6121@8"},
        {"interconnect/body-terminal-once", "7.1", "1 A_gnd\n1 A_gnd\n", "E6122@9"},
        {"interconnect/body-terminal-all", "7.1", "1 A_gnd\n2 A_gnd\n4 A_gnd\n", "E6123@5"},
        {"interconnect/body-terminals", "7.1", "", "E6125@5"},
        {"interconnect/body-terminals-last", "7.1", "1 A_gnd\nParam a Value 1\n", "W6128@9"},
        {"interconnect/body-terminal-fields", "7.1", "1 Pin_I/O pin_name\n", "E6129@8"},
        {"interconnect/body-terminal-qualifier", "7.1", "1 Pin_I/O pin A\n", "E6130@8"},
        {"interconnect/body-terminal-aggressor", "7.1", "1 Pin_I/O pin_name A aggressor\n",
         "E6131@8"},
    };
    SCheckHow how = How();
    how.verbose = true;
    for (const SRuleCase& rule : kRules) {
        const std::string body = Model(prefix + std::string(rule.body));
        ExpectRule({rule.rule, rule.version, body, rule.expected}, how);
    }
    const std::string reference =
        Model("File_TS p.s4p\nNumber_of_terminals = 5\n5 Pin_I/O pin_name A\n");
    ExpectRule({"interconnect/reference-type", "7.1", reference, "W6065@8"}, How());
}

TEST(Interconnect, RulesOfTheBodyFire)
{
    constexpr SRuleCase kRules[] = {
        {"interconnect/body-sub-parameter", "7.1", "file_ts p.s4p\n", "E6105@6"},
        {"interconnect/body-file-named", "7.1", "", "E6106@5"},
        {"interconnect/body-file-once", "7.1", "File_TS p.s4p\nFile_TS0 p.s4p\n", "E6107@7"},
        {"interconnect/body-touchstone-arguments", "7.1", "File_TS p.s4p x\n", "E6108@6"},
        {"interconnect/body-subcircuit-arguments", "7.1", "File_IBIS-ISS p.iss\n", "E6109@6"},
        {"interconnect/body-file-exists", "7.1", "File_TS none.s4p\n", "W6110@6"},
        {"common/file-name-absolute", "7.1", "File_TS /none.s4p\n", "E1926@6"},
        {"interconnect/body-file-extension", "7.1", "File_TS p.iss\n", "W6111@6"},
        {"interconnect/body-file-extension", "7.1", "File_IBIS-ISS p.s4p x\n", "W6111@6"},
        {"interconnect/body-param-subcircuit", "7.1", "Param a Value 1\nFile_TS p.s4p\n",
         "E6112@6"},
        {"interconnect/body-param-form", "7.1", "Param a 1\n", "E6113@6"},
        {"interconnect/body-param-form", "7.1", "Param a Values 1\n", "E6113@6"},
        {"interconnect/body-param-value", "7.1", "Param a Value x\n", "E6114@6"},
        {"interconnect/body-param-once", "7.1", "Param a Value 1\nParam a Value 1\n", "E6115@7"},
        {"interconnect/body-termination-place", "7.1",
         "Unused_port_termination = 50\nFile_IBIS-ISS p.iss pkg\n", "E6116@6"},
        {"interconnect/body-termination-place", "7.1",
         "Unused_port_termination = 50\nUnused_port_termination = 50\n", "E6116@7"},
        {"interconnect/body-termination-value", "7.1", "Unused_port_termination = -1\n", "E6117@6"},
        {"interconnect/body-terminal-count-place", "7.1", "1 A_gnd\nNumber_of_terminals = 4\n",
         "E6118@7"},
        {"interconnect/body-terminal-count-place", "7.1", "1 A_gnd\n", "E6118@5"},
        {"interconnect/body-terminal-count-place", "7.1",
         "Number_of_terminals = 4\nNumber_of_terminals = 4\n", "E6118@7"},
        {"interconnect/body-terminal-count-value", "7.1", "Number_of_terminals 4\n", "E6119@6"},
        {"interconnect/body-terminal-count-value", "7.1", "Number_of_terminals = 0\n", "E6119@6"},
        {"interconnect/body-terminal-count-value", "7.1",
         "Number_of_terminals = 1\nFile_TS p.s4p\n", "E6119@6"},
        {"interconnect/body-terminal-count-ports", "7.1",
         "File_TS p.s4p\nNumber_of_terminals = 4\n", "E6120@7"},
        {"interconnect/body-terminal-count-ports", "7.1",
         "File_TS0 p.s4p\nNumber_of_terminals = 5\n", "E6120@7"},
        {"interconnect/body-terminal-reference", "7.1",
         "File_TS p.s4p\nNumber_of_terminals = 5\n1 A_gnd\n", "E6124@5"},
        {"interconnect/body-subcircuit-nodes", "7.1",
         "File_IBIS-ISS sub/q.iss q\nNumber_of_terminals = 3\n", "W6126@7"},
        {"interconnect/body-file-ports", "7.1", "File_TS p.ts\nNumber_of_terminals = 4\n",
         "W6127@7"},
        {"interconnect/body-subcircuit-found", "7.1",
         "File_IBIS-ISS p.iss r\nNumber_of_terminals = 3\n", "W6132@6"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = Model(rule.body);
        ExpectRule({rule.rule, rule.version, body, rule.expected}, How());
    }
}

TEST(Interconnect, CircuitFilesAreRead)
{
    struct SRow
    {
        std::string_view text;
        std::size_t nodes;
    };
    constexpr SRow kRows[] = {
        {".subckt a n1 n2\n", 2},
        {".SUBCKT A\r\n+ n1 n2 $ note\n* comment\n+ n3 r=1 c=2\n.ends\n", 3},
        {"x\n.subckt a n1 r = 1\n+ n9\n", 1},
        {".subckt a n1 PARAMS: r=1\n", 1},
        {".subckt a\n", 0},
    };
    for (const SRow& row : kRows) {
        const auto found = ReadSubcircuits(row.text);
        ASSERT_TRUE(found.contains("a")) << row.text;
        EXPECT_EQ(found.at("a"), row.nodes) << row.text;
    }
    EXPECT_TRUE(ReadSubcircuits(".subckts a b\n.subckt").empty());
    EXPECT_EQ(ReadNumberOfPorts("! x\n[number of ports] 12 ! all\n"), 12U);
    EXPECT_EQ(ReadNumberOfPorts("[Network Data]\n[Number of Ports] 12\n"), std::nullopt);
    EXPECT_EQ(ReadNumberOfPorts("[Number of Ports] -1\n"), std::nullopt);
}

// --- sets of a component ------------------------------------------------------------------------

/// Lines 19 to 23, behind the component's pins.
constexpr std::string_view kGroups =
    "[Bus Label] signal_name\nL1 VCC\n[Die Supply Pads] signal_name"
    "\nP1 VCC\n[Interconnect Model Group] g\n";

std::string WithGroup(std::string_view rows)
{
    return std::string(kGroups).append(rows).append("[End Interconnect Model Group]\n");
}

TEST(InterconnectGroup, TerminalsAreComparedWithTheComponent)
{
    // A terminal stands in line 12 of the set's file.
    struct SRow
    {
        std::string_view rule;
        std::string_view terminal;
        std::string_view expected;
    };
    constexpr SRow kRows[] = {
        {"interconnect/pin-known", "Pin_I/O pin_name X", "E6070@12"},
        {"common/case-differs", "Pin_I/O pin_name a1", "E1950@12"},
        {"interconnect/pin-kind", "Pin_I/O pin_name V1", "E6071@12"},
        {"interconnect/pin-kind", "Pin_I/O pin_name N1", "E6071@12"},
        {"interconnect/pin-kind", "Pin_Rail pin_name A1", "E6071@12"},
        {"interconnect/signal-of-rail", "Pin_Rail signal_name s1", "E6072@12"},
        {"interconnect/label-known", "Pad_Rail bus_label L9", "E6073@12"},
        {"interconnect/pad-known", "Pad_Rail pad_name P9", "E6074@12"},
        {"interconnect/reference-of-model", "Pullup_ref pin_name A1", "C6075@12"},
        {"", "Pad_Rail pad_name P1", ""},
        {"", "Buffer_Rail bus_label L1", ""},
        {"", "Buffer_Rail bus_label GND", ""},
        {"", "Gnd_clamp_ref pin_name A1", ""},
    };
    const std::string body = WithPins(WithGroup("s test.ims\n"));
    for (const SRow& row : kRows) {
        SCheckHow how{.verbose = true, .beside = How().beside};
        const std::string terminals = "File_IBIS-ISS p.iss pkg\nNumber_of_terminals = 4\n"
                                      "1 Pin_I/O pin_name A1\n2 Buffer_I/O pin_name A1\n"
                                      "3 A_gnd\n4 " +
                                      std::string(row.terminal) + "\n";
        how.beside.emplace_back("test.ims", Header("7.1", "test.ims") + "[Source] x\n" +
                                                Model(terminals) + "[End]\n");
        if (row.rule.empty()) {
            const SChecked checked = CheckText(Ibs("7.1", body), how);
            EXPECT_EQ(Codes(checked, 6065, 6099), "") << row.terminal << checked.text;
        } else {
            ExpectRule({row.rule, "7.1", body, row.expected}, how);
        }
    }
}

TEST(InterconnectGroup, FilesAndWaysAreChecked)
{
    const std::string sets =
        "[Interconnect Model Set] both\n[Interconnect Model] m\nFile_TS0 p.s2p\n"
        "Number_of_terminals = 2\n1 Pin_I/O pin_name A1\n2 Pad_I/O pin_name A1\n"
        "[End Interconnect Model]\n[Interconnect Model] n\nFile_TS0 p.s2p\n"
        "Number_of_terminals = 2\n1 Pin_I/O pin_name A1\n2 Pad_I/O pin_name A1\n"
        "[End Interconnect Model]\n[End Interconnect Model Set]\n"
        "[Interconnect Model Set] rail\n[Interconnect Model] m\nFile_TS0 p.s2p\n"
        "Number_of_terminals = 2\n1 Pin_Rail pin_name V1\n2 Pin_Rail signal_name VCC\n"
        "[End Interconnect Model]\n[End Interconnect Model Set]\n";
    const std::string body = WithPins(WithGroup("both NA\n") + sets);
    ExpectRule({"interconnect-group/one-way", "7.1", body, "W6212@23"});
    ExpectRule({"interconnect-group/whole-way", "7.1", body, "N6213@23"});
    ExpectRule({"interconnect/set-used", "7.1", body, "C6011@40"});
    const std::string rails = WithPins(WithGroup("rail NA\n") + sets);
    ExpectRule({"interconnect/rail-covered", "7.1", rails, "W6066@44"});
    EXPECT_FALSE(Has(CheckText(Ibs("7.1", rails)), 6212, 0));
}

TEST(InterconnectGroup, AFileIsCheckedOnceAndKept)
{
    SCheckHow how{.beside = How().beside};
    how.beside.emplace_back("x.ims",
                            Header("7.1", "x.ims") + "[Interconnect Model Set] s\n[End]\n");
    const std::string body = WithPins(WithGroup("s x.ims\nt x.ims\n"));
    const SChecked checked = CheckText(Ibs("7.1", body), how);
    EXPECT_EQ(Codes(checked, 6000, 6009), "E6000@4 E6009@4");
    EXPECT_EQ(Codes(checked, 6211, 6211), "E6211@25");
}

} // namespace

} // namespace zov::ibischk::test
