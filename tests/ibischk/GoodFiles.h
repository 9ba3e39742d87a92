// SPDX-License-Identifier: Apache-2.0
/// Good files of the kinds that are no .ibs file, without header and [End], and what lies beside
/// them.
#pragma once

#include "ibischk/CheckSupport.h"

namespace zov::ibischk::test {

/// A module of two memories, lines 4 to 53.
inline constexpr std::string_view kGoodModule = R"([Begin EMD] module
[Manufacturer] m
[Description] d
[Number of EMD Pins] 4
[EMD Pin List] signal_name signal_type bus_label
1 DQ0
2 VDD POWER VDD_L
3 VSS GND
4 open nc
[End EMD Pin List]
[EMD Parts]
ram dram.ibs DRAM
[End EMD Parts]
[EMD Designator List]
u1 ram
u2 ram
[End EMD Designator List]
[Designator Pin List] signal_name signal_type bus_label
u1.A1 DQ0
u1.A2 VDD POWER VDD_L
u1.A3 VSS GND
u1.A4 VSS GND
u2.A1 DQ0
u2.A2 VDD POWER VDD_R
u2.A3 VSS GND
u2.A4 VSS GND
[End Designator Pin List]
[Voltage List]
VDD 1.2 1.14 1.26
[End Voltage List]
[EMD Group] all
nets NA
[End EMD Group]
[End EMD]
[EMD Set] nets
[Manufacturer] m
[Description] d
[EMD Model] dq
File_TS n.s5p
Number_of_terminals = 6
1 Pin_I/O pin_name 1
2 Pin_I/O pin_name u1.A1
3 Pin_I/O pin_name u2.A1
4 Pin_Rail signal_name VDD
5 Pin_Rail bus_label u2.VDD_R
6 A_gnd
[End EMD Model]
[EMD Model] supply
File_TS0 n.s2p
Number_of_terminals = 2
1 Pin_Rail signal_name *.VDD
2 Pin_Rail pin_name u1.A3
[End EMD Model]
[End EMD Set]
)";

/// A file of the type, with the part and the sets that the module names.
SCheckHow ModuleHow(EFileType type);

/// A memory module: a chain of two parts, a branch, a part that another board describes.
inline constexpr std::string_view kGoodBoard = R"([Begin Board Description] 16Meg X 8 SIMM Module
[Manufacturer] m
[Number of Pins] 5
[Pin List] signal_name
J1 CAS
J2 POWER5
J3 GND
J4 NC
J5 RAS
[Path Description] chain
Pin J1
Len = 0.5 L=8.35n C=3.34p R=0.01 /
Node u21.15
Len = 0.5 L=8.35n C=3.34p
R=0.01 /
Node u22.15
[Path Description] branches
Pin J5
Len = 0 L=1.0n /
Fork
Len = 1.0 L=1.0n C=2.0p /
Node u21.16
Endfork
Len = 1.0 L=1.0n C=2.0p /
Node u23.B1
[Path Description] supply
Pin J2
Len=0 L=1n/
Node u21.1
[Path Description] inside
Node u21.2
Len=0 R=22/
Node u22.2
[Reference Designator Map]
u21 pp100.ibs Processor
u22 pp100.ibs Processor
u23 sub.ebd Daughter
[End Board Description]
)";
SCheckHow BoardHow();

/// Models of signals, of a supply, and one whose ports stand in its file.
inline constexpr std::string_view kGoodSets = R"([Interconnect Model Set] packages
[Manufacturer] m
[Description] d
[Interconnect Model] signals
Unused_port_termination = 50
File_TS p.s4p
Number_of_terminals = 5
1 Pin_I/O pin_name A1
2 Buffer_I/O pin_name A1
3 Pin_I/O pin_name A2 Aggressor_Only
4 Buffer_I/O pin_name A2 Aggressor_Only
5 A_gnd
[End Interconnect Model]
[Interconnect Model] supply
Param length Value 5m
Param corner Value "slow"
File_IBIS-ISS p.iss pkg
Number_of_terminals = 4
1 Pin_Rail signal_name VCC
2 Pad_Rail pad_name V1
3 Buffer_Rail bus_label VCC
4 Pullup_ref pin_name A1
[End Interconnect Model]
[Interconnect Model] ports
File_TS0 p.ts
Number_of_terminals = 4
4 Pad_I/O pin_name A1
1 Buffer_I/O pin_name A1
2 Pin_Rail pin_name V1
[End Interconnect Model]
[End Interconnect Model Set]
)";
SCheckHow InterconnectHow();

} // namespace zov::ibischk::test
