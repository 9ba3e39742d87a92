// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CAssignCommands : public CZovTest
{
protected:
    void SetUp() override
    {
        CZovLibrary a;
        AddCapacitor(a, "C_100n", 100e-9).SetString(EPropId::MfgPartNumber, "GRM155");
        AddCapacitor(a, "C_100n_50V", 100e-9);
        Save(a, "a.zov");
        CZovLibrary b;
        b.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "R_10k");
        b.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "c_100N");
        Save(b, "b.zov");
        m_folder.Write("d.csv", "RefDes,Component,Type\n\"C1,C2\",C 100n,\nC3,grm155,C\nR1,R_10k,\n"
                                "X1,XTAL,\nR9,C_100n,R\n");
    }
};

TEST_F(CAssignCommands, AssignsAndSums)
{
    EXPECT_EQ(Told("assign @/d.csv --project @/a.zov --external @/b.zov"),
              "C 100n  2  assigned   Capacitor  C_100n  a.zov\n"
              "grm155  1  assigned   Capacitor  C_100n  a.zov\n"
              "R_10k   1  assigned   Resistor   R_10k   b.zov\n"
              "XTAL    1  not found\n"
              "C_100n  1  assigned   Resistor   c_100N  b.zov\n"
              "5 components by 'Component': 4 assigned, 0 ambiguous, 1 not found\n= 1");
    EXPECT_EQ(Zov("assign @/d.csv --project @/a.zov --fail-on never").status, 0);
    EXPECT_EQ(Zov("assign @/d.csv --project @/a.zov --fail-on ambiguous").status, 0);
    m_folder.Write("e.csv", "Component\nC_100\n");
    EXPECT_EQ(Zov("assign @/e.csv --project @/a.zov").status, 0);
    EXPECT_EQ(Zov("assign @/e.csv --project @/a.zov --fail-on unassigned,ambiguous").status, 1);
    EXPECT_EQ(Zov("assign @/e.csv --project @/a.zov --keys part").status, 1);
}

TEST_F(CAssignCommands, WhyNamesKeyNormalisationAndLosers)
{
    EXPECT_EQ(Told("assign @/d.csv --project @/a.zov --external @/b.zov --why --fail-on never"),
              "C 100n  2  assigned   Capacitor  C_100n  a.zov\n"
              "    found  exact by 'Model Name', after legalising to 'C_100n'\n"
              "    lost   C_100n_50V in a.zov: only a part of it matches\n"
              "    lost   c_100N in b.zov: its library comes later\n"
              "grm155  1  assigned   Capacitor  C_100n  a.zov\n"
              "    found  exact by 'Mfg.Part No.'\n"
              "R_10k   1  assigned   Resistor   R_10k   b.zov\n"
              "    found  exact by 'Model Name'\n"
              "XTAL    1  not found\n"
              "C_100n  1  assigned   Resistor   c_100N  b.zov\n"
              "    found  exact by 'Model Name'\n"
              "    lost   C_100n in a.zov: it is of type 'Capacitor', required is 'Resistor'\n"
              "    lost   C_100n_50V in a.zov: it is of type 'Capacitor', required is 'Resistor'\n"
              "5 components by 'Component': 4 assigned, 0 ambiguous, 1 not found\n= 0");
    const SRun keys = Zov("assign @/d.csv --project @/a.zov --why --keys part --json");
    EXPECT_NE(keys.out.find("\"reason\": \"no key that is switched on leads to it\""),
              std::string::npos)
        << keys.out;
    EXPECT_NE(keys.out.find("\"how\": \"exact by 'Mfg.Part No.'\""), std::string::npos);
}

TEST_F(CAssignCommands, MapFilesCarryAssignmentsToAnotherDay)
{
    const std::string libraries = " --project @/a.zov --external @/b.zov --fail-on changed";
    EXPECT_EQ(Zov("assign @/d.csv --map-out @/m.csv" + libraries).status, 0);
    EXPECT_NE(m_folder.Read("m.csv").find("\nC_100n,C1 C2,C_100n,"), std::string::npos);
    const SRun in =
        Zov("assign @/d.csv --map-in @/m.csv --no-mapping --compare @/m.csv" + libraries);
    EXPECT_EQ(in.status, 0) << in.out;
    EXPECT_NE(in.out.find("4 assignments out of the map file\n0 changes to the earlier map file\n"),
              std::string::npos)
        << in.out;
    const SRun changed = Zov("assign @/d.csv --compare @/m.csv --project @/a.zov");
    EXPECT_EQ(changed.status, 1);
    EXPECT_NE(changed.out.find("- R_10K R1\n    was R_10K in /"), std::string::npos) << changed.out;
}

TEST_F(CAssignCommands, WhatCannotBeReadIsToldOnce)
{
    EXPECT_EQ(Told("assign @/none.csv").back(), '3');
    EXPECT_EQ(Told("assign @/d.csv --external @/none.zov"),
              "--\nzov: '@/none.zov' is not there, or no library\n= 3");
    EXPECT_EQ(Told("assign @/d.csv --map-in @/none.csv"),
              "--\nzov: Fatal Error: @/none.csv opening file\n= 3");
    m_folder.Write("new.csv", "x,2.00\n");
    EXPECT_EQ(Told("assign @/d.csv --map-in @/new.csv"),
              "--\nzov: Error: @/new.csv, file version is too new\n= 3");
    EXPECT_EQ(Zov("assign @/d.csv --keys name,colour").status, 2);
    m_folder.Write("t.csv", "Component,Type\nC_100n,diode\n");
    EXPECT_EQ(Told("assign @/t.csv --project @/a.zov"),
              "C_100n  0  assigned, ambiguous  Capacitor  C_100n  a.zov\n"
              "1 component by 'Component': 1 assigned, 1 ambiguous, 0 not found\n"
              "--\n@/t.csv:2: 'diode' is no model type; any type will do\n= 0");
    m_folder.Write("p.csv", "Component,Qty,RefDes,Part\n100n,2,C1,GRM155\n");
    EXPECT_EQ(Told("assign @/p.csv --project @/a.zov --component part"),
              "GRM155  1  assigned  Capacitor  C_100n  a.zov\n"
              "1 component by 'Part': 1 assigned, 0 ambiguous, 0 not found\n"
              "--\n@/p.csv:2: quantity 2, but 1 reference designator\n= 0");
    EXPECT_EQ(Told("assign @/p.csv --project @/a.zov --component MPN"),
              "--\nzov: '@/p.csv' has no column 'MPN' in a row of titles\n= 3");
}

TEST_F(CAssignCommands, SetsAreOpenedAndListed)
{
    m_folder.Write("a.zovp", "<ZOVP Version = \"1.0\"><Library><Lib Path=\"b.zov\" On=\"NO\"/>"
                             "</Library></ZOVP>");
    EXPECT_EQ(Told("set open @/a.zovp"), "project   on   a (@/a.zov)  2 records\n"
                                         "external  off  b (@/b.zov)  2 records\n= 0");
    m_folder.Write("c.json",
                   R"({"Version": 1, "ExternalLibSets": [{"Libraries": ["b.zov", "x"]}]})");
    EXPECT_EQ(Told("set open @/c.json --save-as @/c.zovp"),
              "external  on   b (@/b.zov)  2 records\n"
              "--\n[WARNING] '@/x' is listed but is no library that is there; it is skipped\n= 4");
    EXPECT_NE(m_folder.Read("c.zovp").find("<Lib Path=\"b.zov\" On=\"YES\"/>\n"),
              std::string::npos);
    EXPECT_EQ(Zov("set open @/none.zovp").status, 3);
    EXPECT_EQ(Zov("set open @").status, 3);
    const SRun used = Zov("assign @/d.csv --set @/c.zovp --project @/a.zov --json --fail-on never");
    EXPECT_EQ(used.status, 0);
    EXPECT_NE(used.out.find("\"assigned\": 4"), std::string::npos) << used.out;
}

} // namespace zov::test
