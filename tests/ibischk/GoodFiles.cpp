// SPDX-License-Identifier: Apache-2.0
#include "ibischk/GoodFiles.h"

namespace zov::ibischk::test {

namespace {

constexpr std::string_view kMemory = "[IBIS Ver] 7.1\n[Component] DRAM\n"
                                     "[Pin] signal_name model_name\nA1 DQ0 dq\nA2 VDD POWER\n"
                                     "A3 VSS GND\nA4 SA strap\nA5 NC NC\n[Model] dq\n";

constexpr std::string_view kProcessor = "[IBIS Ver] 3.2\n[Component] Processor\n"
                                        "[Pin] signal_name model_name\n1 VCC POWER\n2 a io\n"
                                        "15 b io\n16 c io\n[Model] io\n";
constexpr std::string_view kDaughter =
    "[IBIS Ver] 3.2\n[Begin Board Description] Daughter\n[Pin List] signal_name\nB1 x\n";

constexpr std::string_view kIss = "* package\n.subckt Pkg a b\n+ c d r0=1\nr1 a b 1\n.ends\n";

} // namespace

SCheckHow ModuleHow(EFileType type)
{
    return {.type = type,
            .name = type == EFileType::Emd ? "test.emd" : "test.ems",
            .verbose = true,
            .beside = {{"dram.ibs", std::string(kMemory)},
                       {"n.s5p", ""},
                       {"n.s2p", ""},
                       {"n.s1p", ""},
                       {"c.iss", ".subckt c 1 2\n"},
                       {"p.ts", "[Number of Ports] 4\n"},
                       {"back.emd", "[IBIS Ver] 7.1\n[Begin EMD] b\n[EMD Parts]\np test.emd b\n"},
                       {"old.ebd", "[IBIS Ver] 7.1\n[Begin Board Description] b\n"},
                       {"none.ems", Header("7.1", "none.ems") + "[End]\n"}}};
}

SCheckHow BoardHow()
{
    return {
        .type = EFileType::Ebd,
        .name = "test.ebd",
        .beside = {{"pp100.ibs", std::string(kProcessor)},
                   {"sub.ebd", std::string(kDaughter)},
                   {"back.ebd", "[IBIS Ver] 3.2\n[Reference Designator Map]\nu1 test.ebd b\n"}}};
}

SCheckHow InterconnectHow()
{
    return {.type = EFileType::Ims,
            .name = "test.ims",
            .beside = {{"p.s4p", ""},
                       {"p.ts", "[Version] 2.0\n[Number of Ports] 4\n[Network Data]\n"},
                       {"p.iss", std::string(kIss)},
                       {"sub/q.iss", ".SUBCKT q 1 2\n"}}};
}

} // namespace zov::ibischk::test
