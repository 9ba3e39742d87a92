// SPDX-License-Identifier: Apache-2.0
#include "assign/DesignFile.h"

#include "assign/RefDesList.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::test {

namespace {

std::string Text(const SDesign& design)
{
    std::string out;
    for (const SDesignComponent& one : design.components) {
        out += one.name + ":";
        for (const std::string& refdes : one.refdes) {
            out += " " + refdes;
        }
        out += one.originalModel.empty() ? "" : " was " + one.originalModel;
        out += one.requiredType == ERecordType::Any
                   ? ""
                   : " " + std::string(InfoOf(one.requiredType).element);
        out += "\n";
    }
    return out;
}

} // namespace

TEST(DesignFile, ReferenceDesignatorsAreExpanded)
{
    const std::pair<const char*, const char*> cases[] = {
        {"R1,R2 R5-R8", "R1 R2 R5 R6 R7 R8"},
        {" C1; C3..C5 ,C9 - 11 ", "C1 C3 C4 C5 C9 C10 C11"},
        {"R08–R11", "R08 R09 R10 R11"},
        {"J1-A U1-2-3 5-7 R8-R5 R1-C3", "J1-A U1-2-3 5-7 R8-R5 R1-C3"},
        {"R1-R99999999999", "R1-R99999999999"},
        {"R1-R999999", "R1-R999999"},
        {"", ""},
    };
    for (const auto& [text, expected] : cases) {
        std::string out;
        const auto names = ExpandRefDes(text);
        ASSERT_TRUE(names) << text;
        for (const std::string& name : *names) {
            out += (out.empty() ? "" : " ") + name;
        }
        EXPECT_EQ(out, expected);
    }
    EXPECT_FALSE(ExpandRefDes("A1-A90000 B1-B90000"));
}

TEST(DesignFile, ListsWithTheUsualTitlesAreRead)
{
    struct SCase
    {
        const char* list;
        const char* expected;
    };
    const SCase cases[] = {
        {"Component,RefDes,Original Model,Required Type\nC1,\"C1,C2\",old,cap\nc1,C7,,\nU,U1,,IC\n",
         "C1: C1 C2 C7 was old Capacitor\nU: U1 IC\n"},
        {"Board 7\n\nReferences;Value;MPN;Qty\nR1 R2-R3;10k;RC0402;3\n;;;\nX1;8M;;1\n",
         "RC0402: R1 R2 R3\n"},
        {"Designator\tComment\nC1\t100n\n", "100n: C1\n"},
        {"Component,Qty,Reference,Manu Part Nr,Part Type\n0.5pF,2,C33 C120,X,USB Type C\n"
         "R,1,R1,Y,Thick Film Resistor\nY,1,Y1,Z,Resonator\nB,1,C1,,\"Capacitor, 0402\"\n"
         "N,1,N1,,Resistor-Capacitor network\n",
         "0.5pF: C33 C120\nR: R1 Resistor\nY: Y1\nB: C1 Capacitor\nN: N1\n"},
        {"Device Type,Type\na,0x2000001\nb,33554436\nc,any\nd,Spice\ne,L\n",
         "a: Capacitor\nb: Resistor\nc:\nd: SPICE\ne: Inductor\n"},
    };
    const CTempFolder folder;
    for (const SCase& one : cases) {
        CVectorDiag diag;
        const auto read = ReadDesignFile(folder.Write("list.csv", one.list), {}, diag);
        ASSERT_TRUE(read.Ok()) << one.list << read.Error().Full();
        EXPECT_EQ(Text(read->design), one.expected) << one.list;
    }
    CVectorDiag diag;
    const auto warned = ReadDesignFile(
        folder.Write("list.csv", "Component,RefDes,Type\nX,A1-A90000 B1-B90000,diode\n,C1,\n"), {},
        diag);
    ASSERT_TRUE(warned.Ok());
    EXPECT_EQ(Text(warned->design), "X:\n");
    EXPECT_EQ(diag.Diags().size(), 3U);
    // A type that is none is told once; quantities are compared; the column may be named.
    CVectorDiag notes;
    const auto named = ReadDesignFile(
        folder.Write("list.csv", "Component,PN,RefDes,Qty,Type\n1n,A,C1-C3,4,bead\n2n,B,C4,1,bead\n"
                                 "3n,C,C5,x,tube\n4n,D,,7,\n"),
        {"", "pn"}, notes);
    ASSERT_TRUE(named.Ok());
    EXPECT_EQ(Text(named->design), "A: C1 C2 C3\nB: C4\nC: C5\nD:\n");
    std::string told;
    for (const SDiag& one : notes.Diags()) {
        told += std::to_string(one.pos.line) + " " + one.text + "\n";
        EXPECT_EQ(one.severity, ESeverity::Note);
    }
    EXPECT_EQ(told, "2 quantity 4, but 3 reference designators\n"
                    "2 'bead' is no model type; any type will do\n"
                    "4 'tube' is no model type; any type will do\n");
    EXPECT_FALSE(ReadDesignFile(folder.Path() / "list.csv", {"", "MPN"}, diag).Ok());
    EXPECT_FALSE(ReadDesignFile(folder.Write("list.csv", "Qty,Footprint\n1,2\n"), {}, diag).Ok());
    EXPECT_FALSE(ReadDesignFile(folder.Path() / "gone.csv", {}, diag).Ok());
}

TEST(DesignFile, KicadNetlistsAreRead)
{
    constexpr std::string_view kNetlist = R"((export (version "E")
  (design (source "/b/board.kicad_sch"))
  (components
    (comp (ref "C1") (value "100n \"X7R\"")
      (fields (field (name "MPN") "GRM155") (field (name "Datasheet") "x"))
      (libsource (lib "Device") (part "C_Small") (description "cap")))
    (comp (ref "C2") (value "100n")
      (property (name "Sim.Name") (value "old"))
      (property (name "Manufacturer Part Number") (value "GRM155"))
      (libsource (lib "Device") (part "C")))
    (comp (ref R1) (value 10k) (libsource (lib Device) (part R)))
    (comp (ref "H1") (value "Hole") (property (name "exclude_from_board")))
    (comp (ref "U1") (value "MCU") (libsource (lib "MCU_X") (part "R"))))
  (nets (net (code "1") (name "GND") (node (ref "C1") (pin "2")))))
)";
    const auto read = ReadKicadNetlist(kNetlist, "board.net");
    ASSERT_TRUE(read.Ok()) << read.Error().Full();
    EXPECT_EQ(Text(read->design), "GRM155: C1 C2 was old Capacitor\n10k: R1 Resistor\nMCU: U1\n");

    const std::pair<std::string, const char*> broken[] = {
        {"", "no KiCad netlist"},
        {"(a)", "no KiCad netlist"},
        {"x", "expected '(export'"},
        {"(export (components", "ends inside"},
        {"(export))", "without its '('"},
        {"(export \"abc", "no end"},
        {std::string(100000, '('), "too deeply"},
    };
    for (const auto& [text, what] : broken) {
        const auto failed = ReadKicadNetlist(text, "x.net");
        ASSERT_FALSE(failed.Ok());
        EXPECT_NE(failed.Error().text.find(what), std::string::npos) << failed.Error().text;
    }
}

} // namespace zov::test
