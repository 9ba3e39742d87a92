// SPDX-License-Identifier: Apache-2.0
// [C Comp Model] of buffers.
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

SCheckHow How()
{
    return {.verbose = true,
            .beside = {{"c.iss", ".subckt c pad vdd vss\n"},
                       {"p.ts", "[Number of Ports] 4\n"},
                       {"c.s2p", ""},
                       {"slow.s2p", ""},
                       {"fast.s2p", ""}}};
}

/// Lines 4 to 6; what is put behind begins in line 7.
std::string Model(std::string_view type, std::string_view body)
{
    return std::string("[Model] m\nModel_type ")
        .append(type)
        .append("\nC_comp 1p NA NA\n")
        .append(body);
}

constexpr std::string_view kCircuit = "File_TS0 c.s2p slow.s2p fast.s2p\nNumber_of_terminals = 2\n"
                                      "1 Buffer_I/O\n2 A_gnd\n[End C Comp Model]\n";

TEST(CCompModel, GoodBlocksAreSilent)
{
    const std::string body =
        Model("I/O", std::string("[C Comp Model]\nC_comp_model_mode Driving\n")
                         .append(kCircuit)
                         .append("[C Comp Model]\nC_comp_model_mode Non-Driving\n"
                                 "Param x Corner 1p 2p 3p\nFile_IBIS-ISS c.iss c\n"
                                 "Number_of_terminals = 3\n1 Buffer_I/O\n2 Buffer_I\n3 A_gnd\n"
                                 "[End C Comp Model]\n[Pullup]\n[GND Clamp]\n"));
    EXPECT_EQ(Codes(CheckText(Ibs("7.1", body), How()), 6800, 6879), "");
}

TEST(CCompModel, RulesFire)
{
    struct SRow
    {
        std::string_view rule;
        std::string_view type;
        std::string body;
        std::string_view expected;
    };
    const std::string head = "[C Comp Model]\nC_comp_model_mode All\n";
    const std::string all = head + std::string(kCircuit);
    const std::string driving =
        "[C Comp Model]\nC_comp_model_mode Driving\n" + std::string(kCircuit);
    const std::string other =
        "[C Comp Model]\nC_comp_model_mode Non-Driving\n" + std::string(kCircuit);
    const std::string circuit = head + "File_IBIS-ISS c.iss c\nNumber_of_terminals = 3\n";
    const SRow kRows[] = {
        {"c-comp-model/argument", "I/O", "[C Comp Model] x\n", "W6804@7"},
        {"c-comp-model/mode-once", "I/O", "[C Comp Model]\n" + std::string(kCircuit), "E6805@7"},
        {"c-comp-model/mode-once", "I/O", head + "C_comp_model_mode All\n", "E6805@9"},
        {"c-comp-model/mode-value", "I/O", "[C Comp Model]\nC_comp_model_mode Off\n", "E6806@8"},
        {"c-comp-model/mode-blocks", "I/O", all + all, "E6807@14"},
        {"c-comp-model/mode-blocks", "I/O", driving + all, "E6807@14"},
        {"c-comp-model/mode-blocks", "I/O", all + other, "E6807@14"},
        {"c-comp-model/mode-pair", "3-state", driving, "W6808@7"},
        {"c-comp-model/mode-type", "Input", driving, "W6809@7"},
        {"c-comp-model/mode-type", "Output", other, "W6809@7"},
        {"c-comp-model/terminal-type", "I/O", circuit + "1 Pin_I/O\n", "E6810@11"},
        {"c-comp-model/terminal-fields", "I/O", circuit + "1 Buffer_I/O pin_name A\n", "E6811@11"},
        {"c-comp-model/terminal-once", "I/O", circuit + "1 Pullup_ref\n2 Pullup_ref\n", "E6812@12"},
        {"c-comp-model/terminal-once", "I/O", circuit + "1 A_gnd\n2 A_gnd\n", "E6812@12"},
        {"c-comp-model/buffer-terminal", "I/O", circuit + "1 Buffer_I\n", "E6813@7"},
        {"c-comp-model/reference-terminal", "I/O", circuit + "1 Buffer_I/O\n", "W6814@7"},
        {"c-comp-model/reference-of-model", "I/O", circuit + "1 Buffer_I/O\n2 Pullup_ref\n",
         "C6815@12"},
        {"c-comp-model/parts-unused", "I/O", all + "[C Comp Corner]\nC_comp 1p NA NA\n", "C6816@7"},
        {"c-comp-model/block-closed", "I/O", "[C Comp Model]\n", "E6800@7"},
        {"c-comp-model/body-sub-parameter", "I/O", head + "x\n", "E6835@9"},
        {"c-comp-model/body-file-named", "I/O", head, "E6836@7"},
        {"c-comp-model/body-file-once", "I/O", head + "File_TS c.s2p\nFile_TS c.s2p\n", "E6837@10"},
        {"c-comp-model/body-touchstone-arguments", "I/O", head + "File_TS c.s2p c.s2p\n",
         "E6838@9"},
        {"c-comp-model/body-subcircuit-arguments", "I/O", head + "File_IBIS-ISS c.iss\n",
         "E6839@9"},
        {"c-comp-model/body-file-exists", "I/O", head + "File_TS c.s2p x.s2p c.s2p\n", "W6840@9"},
        {"c-comp-model/body-file-extension", "I/O", head + "File_TS c.iss\n", "W6841@9"},
        {"c-comp-model/body-param-subcircuit", "I/O", head + "File_TS c.s2p\nParam a Value 1\n",
         "E6842@10"},
        {"c-comp-model/body-param-form", "I/O", head + "Param a Value\n", "E6843@9"},
        {"c-comp-model/body-param-value", "I/O", head + "Param a Value a\n", "E6844@9"},
        {"c-comp-model/body-param-once", "I/O", head + "Param a Value 1\nParam a Value 1\n",
         "E6845@10"},
        {"c-comp-model/body-termination-place", "I/O", circuit + "Unused_port_termination = 50\n",
         "E6846@11"},
        {"c-comp-model/body-termination-value", "I/O", head + "Unused_port_termination = x\n",
         "E6847@9"},
        {"c-comp-model/body-terminal-count-place", "I/O", head, "E6848@7"},
        {"c-comp-model/body-terminal-count-value", "I/O", head + "Number_of_terminals = x\n",
         "E6849@9"},
        {"c-comp-model/body-terminal-count-ports", "I/O",
         head + "File_TS c.s2p\nNumber_of_terminals = 2\n", "E6850@10"},
        {"c-comp-model/body-terminal-number", "I/O", circuit + "4 A_gnd\n", "E6851@11"},
        {"c-comp-model/body-terminal-once", "I/O", circuit + "1 A_gnd\n1 Buffer_I\n", "E6852@12"},
        {"c-comp-model/body-terminal-all", "I/O", circuit + "1 A_gnd\n", "E6853@7"},
        {"c-comp-model/body-terminal-reference", "I/O",
         head + "File_TS c.s2p\nNumber_of_terminals = 3\n1 A_gnd\n", "E6854@7"},
        {"c-comp-model/body-terminals", "I/O", head, "E6855@7"},
        {"c-comp-model/body-subcircuit-nodes", "I/O",
         head + "File_IBIS-ISS c.iss c\nNumber_of_terminals = 4\n", "W6856@10"},
        {"c-comp-model/body-file-ports", "I/O", head + "File_TS0 p.ts\nNumber_of_terminals = 3\n",
         "W6857@10"},
        {"c-comp-model/body-terminals-last", "I/O", circuit + "1 A_gnd\nParam a Value 1\n",
         "W6858@12"},
        {"c-comp-model/body-subcircuit-found", "I/O",
         head + "File_IBIS-ISS c.iss d\nNumber_of_terminals = 3\n", "W6862@9"},
    };
    for (const SRow& row : kRows) {
        const std::string body = Model(row.type, row.body);
        ExpectRule({row.rule, "7.1", body, row.expected}, How());
    }
    EXPECT_TRUE(Has(CheckText(Ibs("7.0", Model("I/O", all)), How()), 926, 7));
}

} // namespace

} // namespace zov::ibischk::test
