// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CLibraryCommands : public CZovTest
{
protected:
    /// a.zov: two capacitors and an IC; b.zov: one of them changed, one gone, one new.
    void SaveTwo()
    {
        CZovLibrary a;
        AddCapacitor(a, "C1", 100e-9).SetString(EPropId::Manuf, "Norvik");
        AddCapacitor(a, "C2", 1.23456789e-6);
        CZovRcdProps& ic = a.Add(ERecordType::Ic);
        ic.SetString(EPropId::ModelName, "U1");
        ic.SetComposite(SDcModel{false, {}, {SDcRail{1.8, 0.05, 0.05, 0.5, {"A1", "A2"}}}});
        Save(a, "a.zov");
        CZovLibrary b;
        AddCapacitor(b, "c1", 220e-9).SetDouble(EPropId::PriceA, 0.0);
        AddCapacitor(b, "C3", 1e-12);
        CZovRcdProps& other = b.Add(ERecordType::Ic);
        other.SetString(EPropId::ModelName, "U1");
        other.SetComposite(SDcModel{true, {}, {SDcRail{1.2, 0.05, 0.05, {}, {"A1"}}}});
        Save(b, "b.zov");
    }
};

TEST_F(CLibraryCommands, InfoCountsByType)
{
    SaveTwo();
    const auto size = std::filesystem::file_size(m_folder.Path() / "a.zov");
    EXPECT_EQ(Told("lib info @/a.zov"), "@/a.zov\n  form     native library\n  size     " +
                                            std::to_string(size) +
                                            " bytes\n"
                                            "  header   8 record types, 3 records\n"
                                            "  records  3\n"
                                            "    IC         1\n"
                                            "    Capacitor  2\n= 0");
    EXPECT_EQ(Zov("lib info @/a.zov @/none.zov").status, 4);
    EXPECT_EQ(Zov("lib info @/none.zov").status, 3);
    const SRun json = Zov("lib info @/a.zov --json");
    EXPECT_EQ(json.out.substr(0, 15), "{\n  \"version\": ");
    EXPECT_NE(json.out.find("\"counts\": {\n        \"IC\": 1,\n        \"Capacitor\": 2\n"),
              std::string::npos)
        << json.out;
}

TEST_F(CLibraryCommands, ListSelectsAndShowsInUnits)
{
    SaveTwo();
    EXPECT_EQ(Told("lib list @/a.zov"),
              "Capacitor  C1  Norvik  0402E  Cnom:100nF R:10mOhm L:0nH C:100nF\n"
              "Capacitor  C2          0402E  Cnom:1234.57nF R:10mOhm L:0nH C:1234.57nF\n"
              "IC         U1                 DC_MODEL\n= 0");
    EXPECT_EQ(Told("lib list @/a.zov --type cap --match *2 --units C=uF,R=Ohm"),
              "Capacitor  C2  0402E  Cnom:1.23457uF R:0.01Ohm L:0nH C:1.23457uF\n= 0");
    EXPECT_EQ(Told("lib list @/a.zov --match nothing"), "= 0");
    EXPECT_EQ(Told("lib list @/a.zov --json --type IC"),
              "{\"version\":1,\"file\":\"@/a.zov\",\"records\":[\n"
              "{\"type\":\"IC\",\"properties\":{\"ModelName\":\"U1\",\"DC_MODEL\":{\"PFMode\":"
              "\"Average\",\"PowerRail\":[{\"NominalVoltage\":1.8,\"UpperTolerance\":0.05,"
              "\"LowerTolerance\":0.05,\"TotalCurrent\":0.5,\"PIN\":[\"A1\",\"A2\"]}]}}}\n]}\n= 0");
    EXPECT_EQ(Told("lib list @/a.zov --json --match C2"),
              "{\"version\":1,\"file\":\"@/a.zov\",\"records\":[\n"
              "{\"type\":\"Capacitor\",\"properties\":{\"ModelName\":\"C2\",\"Size\":\"0402E\","
              "\"ModelType\":\"1\",\"Rv\":0.01,\"Cv\":1.23456789e-06,\"Cnom\":1.23456789e-06}}\n"
              "]}\n= 0");
}

TEST_F(CLibraryCommands, JsonHoldsEverySubModel)
{
    CZovLibrary library;
    CZovRcdProps& ic = library.Add(ERecordType::Ic);
    ic.SetString(EPropId::ModelName, "U1");
    ic.SetComposite(
        SIoModel{"u.ibs",
                 "U",
                 true,
                 {{"G", EBusType::Data, EEdgeType::FallEdge, {{"a", "b"}}, {"s"}, {{"c", "d"}}}}});
    ic.SetComposite(SDcModel{true, SSpiceRef{"r.sp", "R"}, {}});
    ic.SetComposite(SDcConvModel{true, {{"P", EConvPin::Input, "Q", 1.0, 2.0, 3.0, 4.0, 5.0}}});
    ic.SetComposite(SAcModel{{}, {{true, 1.0, 2.0, 3.0, "p", "n", "P", "N", {{6.0, 7.0}}}}});
    ic.SetComposite(SVrmModel{{}, {{1.0, 2.0, 3.0, 4.0, {"A"}}}});
    ic.SetComposite(SThermalModel{1.0, 2.0, 3.0, 4.0, 5.0});
    ic.SetComposite(SThroughModel{true, {{"1", "2", 3.0, 4.0}}});
    CZovRcdProps& spice = library.Add(ERecordType::Spice);
    spice.SetString(EPropId::ModelName, "X1");
    spice.SetComposite(SCircuitRef{"SUB", "", ".SUBCKT SUB 1 2\n.ENDS"});
    Save(library, "a.zov");
    EXPECT_EQ(
        Zov("lib list @/a.zov --json").out,
        R"~({"version":1,"file":"@/a.zov","records":[
{"type":"IC","properties":{"ModelName":"U1",)~"
        R"~("IO_MODEL":{"IBIS":"u.ibs","Components":"U","ExpIOAndGNDTerm":true,"BusDefinition":[{"BusGroup":"G",)~"
        R"~("BusType":"Data","EdgeType":"FallEdge","TimingRef":[["a","b"]],"Signal":["s"],"Clock":[["c","d"]]}]},)~"
        R"~("DC_MODEL":{"PFMode":"Worst","SPICE":{"File":"r.sp","model":"R"}},)~"
        R"~("DCCONV_MODEL":{"UseCurrentForInputPins":true,"Pin":[{"Name":"P","Type":"INPUT","PinPair":"Q",)~"
        R"~("Voltage":1.0,"Current":2.0,"ConvertRate":3.0,"UpperTolerance":4.0,"LowerTolerance":5.0}]},)~"
        R"~("AC_MODEL":{"PowerRail":[{"Type":"PWL Model","MaxPeakRipple":1.0,"TransCurDelta":2.0,)~"
        R"~("ShortRiseTimeDelta":3.0,"PositivePins":"p","NegativePins":"n","PositiveNet":"P","NegativeNet":"N",)~"
        R"~("FeqImp":[{"Frequency":6.0,"Impedance":7.0}]}]},)~"
        R"~("VRM":{"PowerRail":[{"NominalVoltage":1.0,"OutputTolerance":2.0,"OutputCurrent":3.0,)~"
        R"~("PinResistance":4.0,"Pin":["A"]}]},)~"
        R"~("Thermal":{"PowerDissipation":1.0,"Thickness":2.0,"Theta_JB":3.0,"Theta_JC":4.0,)~"
        R"~("MaxDieTemperature":5.0},)~"
        R"~("Through":{"NotThrough":"Yes","ThroughInfo":[{"Pin1":"1","Pin2":"2","Inductance":3.0,"Resistance":4.0}]}}},
{"type":"SPICE","properties":{"ModelName":"X1","Circuit":{"Model":"SUB","Text":".SUBCKT SUB 1 2\n.ENDS"}}}
]}
)~");
    EXPECT_EQ(Zov("lib list @/a.zov").out,
              "IC     U1  IO_MODEL DC_MODEL DCCONV_MODEL AC_MODEL VRM Thermal Through\n"
              "SPICE  X1  SUB in the library\n");
}

TEST_F(CLibraryCommands, DiffTellsPropertyByProperty)
{
    SaveTwo();
    EXPECT_EQ(Told("lib diff @/a.zov @/b.zov"), "~ Capacitor 'C1'\n"
                                                "    ModelName: 'C1' -> 'c1'\n"
                                                "    Manuf: 'Norvik' -> (none)\n"
                                                "    Cv: 100nF -> 220nF\n"
                                                "    Cnom: 100nF -> 220nF\n"
                                                "- Capacitor 'C2'\n"
                                                "~ IC 'U1'\n"
                                                "    DC_MODEL.PFMode: 'Average' -> 'Worst'\n"
                                                "    DC_MODEL.PowerRail[0].NominalVoltage: 1.8V -> "
                                                "1.2V\n"
                                                "    DC_MODEL.PowerRail[0].TotalCurrent: 0.5A -> "
                                                "(none)\n"
                                                "    DC_MODEL.PowerRail[0].PIN[1]: 'A2' -> (none)\n"
                                                "+ Capacitor 'C3'\n"
                                                "1 added, 1 removed, 2 changed\n= 1");
    EXPECT_EQ(Told("lib diff @/a.zov @/a.zov"), "0 added, 0 removed, 0 changed\n= 0");
    EXPECT_NE(
        Zov("lib diff @/a.zov @/b.zov --json")
            .out.find("\"property\": \"Cnom\",\n          \"a\": 1e-07,\n          \"b\": 2.2e-07"),
        std::string::npos);
}

TEST_F(CLibraryCommands, ExchangeFileDiffersOnlyBeyondSixDigits)
{
    SaveTwo();
    EXPECT_EQ(Told("lib convert @/a.zov @/a.zovx"), "3 records written to @/a.zovx\n= 0");
    EXPECT_EQ(Told("lib diff @/a.zov @/a.zovx"), "0 added, 0 removed, 0 changed\n= 0");
    EXPECT_EQ(Told("lib diff @/a.zov @/a.zovx --numbers exact"),
              "~ Capacitor 'C2'\n"
              "    Cv: 1.23456789e-06 -> 1.23457e-06\n"
              "    Cnom: 1.23456789e-06 -> 1.23457e-06\n"
              "0 added, 0 removed, 1 changed\n= 1");
    // The seventh digit is beyond what the file holds, the sixth is not.
    CZovLibrary near;
    AddCapacitor(near, "C2", 1.234572e-6);
    CZovLibrary far;
    AddCapacitor(far, "C2", 1.23458e-6);
    Save(near, "near.zov");
    Save(far, "far.zov");
    EXPECT_EQ(Zov("lib diff @/near.zov @/far.zov --numbers rounded").status, 1);
    AddCapacitor(near, "C9", 1.0);
    Save(near, "near2.zov");
    EXPECT_EQ(Told("lib diff @/near.zov @/near2.zov --numbers rounded"),
              "+ Capacitor 'C9'\n1 added, 0 removed, 0 changed\n= 1");
}

TEST_F(CLibraryCommands, EqualNamesArePairedInTheirOrder)
{
    CZovLibrary a;
    AddCapacitor(a, "C", 1e-9);
    AddCapacitor(a, "C", 2e-9);
    AddCapacitor(a, "C", 3e-9);
    Save(a, "a.zov");
    CZovLibrary b;
    AddCapacitor(b, "C", 1e-9);
    AddCapacitor(b, "C", 2e-9);
    Save(b, "b.zov");
    EXPECT_EQ(Told("lib diff @/a.zov @/b.zov"),
              "- Capacitor 'C'\n0 added, 1 removed, 0 changed\n= 1");
}

TEST_F(CLibraryCommands, ConvertRefusesOtherForms)
{
    SaveTwo();
    EXPECT_EQ(Told("lib convert @/a.zov @/a.xml"),
              "--\nzov: OUT is '@/a.xml', expected a name that ends in .zov or .zovx\n= 2");
    EXPECT_EQ(Zov("lib convert @/none.zov @/x.zov").status, 3);
    EXPECT_EQ(Told("lib convert @/a.zov @/x.zov --dry-run"),
              "3 records would be written to @/x.zov\n= 0");
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "x.zov"));
    EXPECT_EQ(Zov("lib convert @/a.zov @/nowhere/x.zov").status, 3);
}

TEST_F(CLibraryCommands, RecordsThatCannotBeReadMakeItDoneInPart)
{
    m_folder.Write("a.zovx", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<ZOV_Lib Version = \"1.5\">\n<Discretes><Resistors>\n"
                             "<Resistor ModelName=\"R1\" ModelType=\"R\" Resistance=\"10Ohm\">"
                             "</Resistor>\n"
                             "<Resistor ModelName=\"R2\" ModelType=\"R\"></Resistor>\n"
                             "</Resistors></Discretes>\n</ZOV_Lib>\n");
    EXPECT_EQ(Told("lib convert @/a.zovx @/a.zov"),
              "1 record written to @/a.zov\n--\n"
              "[Error] 'R2' Resistor: 'Resistance' required\n= 4");
    // Growing the file would lose the record for good.
    EXPECT_EQ(Told("lib merge @/a.zovx @/a.zov"),
              "--\n[Error] 'R2' Resistor: 'Resistance' required\n"
              "zov: '@/a.zovx' is left as it is: not all of its records can be read\n= 3");
}

TEST_F(CLibraryCommands, MergeKeepsOrReplacesDuplicates)
{
    SaveTwo();
    EXPECT_EQ(Told("lib merge @/all.zov @/a.zov @/b.zov --dry-run"),
              "@/a.zov: 3 added, 0 replaced, 0 already there and kept\n"
              "@/b.zov: 1 added, 0 replaced, 2 already there and kept\n"
              "@/all.zov would hold 4 records\n= 0");
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "all.zov"));
    EXPECT_EQ(Zov("lib merge @/all.zov @/a.zov @/b.zov").status, 0);
    EXPECT_EQ(Told("lib diff @/a.zov @/all.zov"),
              "+ Capacitor 'C3'\n1 added, 0 removed, 0 changed\n= 1");
    EXPECT_EQ(Told("lib merge @/all.zov @/b.zov --on-duplicate replace"),
              "@/b.zov: 0 added, 3 replaced, 0 already there and kept\n"
              "@/all.zov holds 4 records\n= 0");
    EXPECT_EQ(Zov("lib merge @/all.zov @/none.zov").status, 3);
    EXPECT_EQ(Zov("lib merge @/all.zov @/a.zov --on-duplicate both").status, 2);
}

TEST_F(CLibraryCommands, FileNamesStillLeadThereFromAnotherFolder)
{
    m_folder.Write("in/models/c.s2p", "! a network");
    m_folder.Write("out/here", "");
    CZovLibrary library;
    CZovRcdProps& record = AddCapacitor(library, "C1", 1e-9);
    record.SetDiscreteModel({true, "c.s2p", "models", {}, {}, {}});
    AddCapacitor(library, "C2", 1e-9).SetDiscreteModel({true, "lost.s2p", "", {}, {}, {}});
    Save(library, "in/a.zov");
    EXPECT_EQ(Told("lib merge @/out/b.zov @/in/a.zov"),
              "@/in/a.zov: 2 added, 0 replaced, 0 already there and kept, 1 file name rewritten\n"
              "@/out/b.zov holds 2 records\n= 0");
    EXPECT_EQ(Told("lib list @/out/b.zov"),
              "Capacitor  C1  0402E  Cnom:1nF circuit ../in/models/c.s2p\n"
              "Capacitor  C2  0402E  Cnom:1nF circuit lost.s2p\n= 0");
}

TEST_F(CLibraryCommands, DoctorFindsWhatIsWrong)
{
    m_folder.Write("models/moved.s2p", "");
    m_folder.Write("S-Parameter File/Upper.s2p", "");
    m_folder.Write("good.ckt", "");
    CZovLibrary library;
    const auto circuit = [&](const char* name, const std::string& file) {
        AddCapacitor(library, name, 1e-9).SetDiscreteModel({true, file, "", {}, {}, {}});
    };
    circuit("C1", "good.ckt");
    circuit("C2", "moved.s2p");
    circuit("C3", "upper.S2P");
    circuit("C4", "gone.s2p");
    circuit("C5", PathText(m_folder.Path() / "good.ckt"));
    circuit("c1", "good.ckt");
    library.Add(ERecordType::Inductor).SetString(EPropId::ModelName, "L1");
    library.Add(ERecordType::Resistor).SetDouble(EPropId::Resistance, 0.0);
    AddCapacitor(library, "C6", 1e-9).SetString(EPropId::Size, "42E");
    CZovRcdProps& ic = library.Add(ERecordType::Ic);
    ic.SetString(EPropId::ModelName, "U1");
    ic.SetComposite(SIoModel{"none.ibs", "", false, {}});
    AddCapacitor(library, "C7", 1e-9).SetString(EPropId::Comment, "R&D only");
    Save(library, "a.zov");
    const SRun run = Zov("lib doctor @/a.zov");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        run.out,
        "warning: Capacitor 'C2': CktDef 'moved.s2p' is not there; found 'models/moved.s2p' "
        "[moved-file]\n"
        "warning: Capacitor 'C3': CktDef 'upper.S2P' is spelled 'S-Parameter File/Upper.s2p' on "
        "disk [wrong-case]\n"
        "error: Capacitor 'C4': CktDef 'gone.s2p' is not there, nor anywhere under the library's "
        "folder [missing-file]\n"
        "warning: Capacitor 'C5': CktDef '@/good.ckt' is an absolute path; the library can't be "
        "moved with its files [absolute-path]\n"
        "error: Capacitor 'c1': record 6 has the type and name of record 1 [duplicate]\n"
        "error: Inductor 'L1': Inductance is missing [incomplete]\n"
        "error: Resistor '': ModelName is missing [incomplete]\n"
        "error: Capacitor 'C6': Size is '42', expected at least four characters [incomplete]\n"
        "error: IC 'U1': IO_MODEL.IBIS 'none.ibs' is not there, nor anywhere under the library's "
        "folder [missing-file]\n"
        "note: 'C7' Capacitor: 'Comment' holds characters that the exchange form cannot escape: "
        "R&D only [exchange-text]\n"
        "@/a.zov: 11 records, 6 errors, 3 warnings, 1 note\n");
    EXPECT_NE(Zov("lib doctor @/a.zov --json").out.find("\"rule\": \"wrong-case\""),
              std::string::npos);
}

TEST_F(CLibraryCommands, DoctorIsContentWithNotes)
{
    CZovLibrary library;
    AddCapacitor(library, "C7", 1e-9).SetString(EPropId::Comment, "R&D only");
    Save(library, "a.zov");
    EXPECT_EQ(Zov("lib doctor @/a.zov").status, 0);
    m_folder.Write("broken.zov", "no library");
    const SRun run = Zov("lib doctor @/broken.zov");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("zov: Cannot load the ZOV library file '@/broken.zov'"),
              std::string::npos)
        << run.err;
}

} // namespace zov::test
