// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CImportCommand : public CZovTest
{
protected:
    void WriteResistors()
    {
        m_folder.Write("r.csv", "Approved parts,,,,\n"
                                "Part Number,Manufacturer,Value,Shelf,Model Type\n"
                                "R1,Norvik,4R7,A1,RLC\n"
                                "R2,Norvik,1k2,A2,RLC\n"
                                "R1,Norvik,5R6,A3,RLC\n"
                                "R3,Norvik,four,A4,RLC\n"
                                "R4,Norvik,10,A5,RLC\n");
    }
    static constexpr const char* kImport =
        "import @/r.csv --type resistor --into @/r.zov --r-unit Ohm --assume-ideal";
};

TEST_F(CImportCommand, ReportsRowsColumnsAndCounts)
{
    WriteResistors();
    const std::string report = "@/r.csv, sheet 'r', titles in row 2\n"
                               "columns\n"
                               "  Model Name    A  'Part Number'\n"
                               "  Model Type    E  'Model Type'\n"
                               "  Manufacturer  B  'Manufacturer'\n"
                               "  Resistance    C  'Value'         Ohm (given)\n"
                               "unused columns\n"
                               "  D 'Shelf'\n"
                               "rows\n"
                               "  row 5 'R1': skipped: an earlier row has the name\n"
                               "  row 6 'R3': failed\n";
    const std::string counts =
        "5 rows: 3 added; 1 skipped, an earlier row has the name; 1 failed\n";
    const SRun dry = Zov(std::string(kImport) + " --dry-run");
    EXPECT_EQ(dry.status, 4);
    EXPECT_EQ(dry.err, "");
    EXPECT_EQ(dry.out.substr(0, report.size()), report);
    EXPECT_NE(dry.out.find("    C6 Resistance: error: "), std::string::npos) << dry.out;
    EXPECT_NE(dry.out.find("seen 'four', expected"), std::string::npos) << dry.out;
    EXPECT_TRUE(dry.out.ends_with(counts + "@/r.zov not written: this is a dry run\n")) << dry.out;
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "r.zov"));

    const SRun run = Zov(kImport);
    EXPECT_EQ(run.status, 4);
    EXPECT_TRUE(run.out.ends_with(counts + "@/r.zov saved\n")) << run.out;
    EXPECT_EQ(Zov("lib list @/r.zov --units R=Ohm").out, "Resistor  R1  Norvik  R:4.7Ohm\n"
                                                         "Resistor  R2  Norvik  R:1200Ohm\n"
                                                         "Resistor  R4  Norvik  R:10Ohm\n");
}

TEST_F(CImportCommand, PoliciesDecideOverNamesThatAreThere)
{
    WriteResistors();
    Zov(kImport);
    const std::string before = m_folder.Read("r.zov");
    const SRun kept = Zov(kImport);
    EXPECT_NE(kept.out.find("5 rows: 0 added; 3 skipped, the library has the name; 1 skipped, an "
                            "earlier row has the name; 1 failed\n"
                            "@/r.zov left as it is: there is nothing to add\n"),
              std::string::npos)
        << kept.out;
    EXPECT_EQ(m_folder.Read("r.zov"), before);

    const std::string replace =
        std::string(kImport) + " --on-duplicate replace --on-repeat replace";
    const SRun dry = Zov(replace + " --dry-run");
    EXPECT_NE(dry.out.find("  row 3 'R1': superseded: a later row has the name\n"
                           "  row 4 'R2': replaced\n"
                           "  row 5 'R1': replaced\n"),
              std::string::npos)
        << dry.out;
    Zov(replace);
    EXPECT_EQ(Zov("lib list @/r.zov --match R1 --units R=Ohm").out,
              "Resistor  R1  Norvik  R:5.6Ohm\n");
    Zov(std::string(kImport) + " --on-repeat suffix");
    EXPECT_EQ(Zov("lib list @/r.zov --match R1_* --units R=Ohm").out,
              "Resistor  R1_1  Norvik  R:5.6Ohm\n");
}

TEST_F(CImportCommand, ConstantsAndMappingTakeThePlaceOfColumns)
{
    m_folder.Write("c.csv", "Teil,Wert,Haus\nC1,100nF,Norvik\n");
    m_folder.Write("map.txt", "Part NO.,Teil\nCnom,Wert\n");
    const SRun run = Zov("import @/c.csv --type cap --into @/c.zov --map @/map.txt --const "
                         "Model-Type=RLC --const Size=0402E --assume-ideal");
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    EXPECT_NE(run.out.find("=  'RLC'"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("unused columns\n  C 'Haus'\n"), std::string::npos) << run.out;
    EXPECT_EQ(Zov("lib list @/c.zov").out,
              "Capacitor  C1  0402E  Cnom:100nF R:0mOhm L:0nH C:100nF\n");
}

TEST_F(CImportCommand, JsonHoldsEveryRow)
{
    WriteResistors();
    const std::string out = Zov(std::string(kImport) + " --dry-run --json").out;
    for (const char* part :
         {"\"version\": 1,", "\"headerRow\": 2,", "\"saved\": false,",
          "\"counts\": {\n    \"rows\": 5,\n    \"added\": 3,", "\"unitFrom\": \"option\"",
          "\"columnName\": \"D\",\n      \"title\": \"Shelf\"",
          "{\n      \"row\": 3,\n      \"name\": \"R1\",\n      \"action\": \"added\"\n    }",
          "\"action\": \"failed\",\n      \"findings\": [\n        {\n          \"severity\": "
          "\"error\",\n          \"row\": 6,\n          \"column\": 3,\n          \"columnName\": "
          "\"C\",\n          \"property\": \"Resistance\",\n          \"seen\": \"four\","}) {
        EXPECT_NE(out.find(part), std::string::npos) << part << "\nin\n" << out;
    }
}

TEST_F(CImportCommand, WhatStopsIt)
{
    WriteResistors();
    m_folder.Write("empty.csv", "Part Number,Value,Model Type\n");
    m_folder.Write("map.txt", "Model Name,Nowhere\n");
    m_folder.Write("part.zovx",
                   "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ZOV_Lib Version = \"1.5\">\n"
                   "<Discretes><Resistors><Resistor ModelName=\"X\" ModelType=\"R\"></Resistor>"
                   "</Resistors></Discretes></ZOV_Lib>\n");
    struct SCase
    {
        const char* line;
        int status;
        const char* err;
    };
    for (const SCase& c : {
             SCase{"import @/r.csv --type ic --into @/r.zov", 2,
                   "zov: --type is 'ic', expected capacitor, inductor or resistor\n"},
             SCase{"import @/r.csv --type resistor --into @/r.xml", 2,
                   "zov: --into is '@/r.xml', expected a name that ends in .zov or .zovx\n"},
             SCase{"import @/r.csv --type resistor --into @/r.zov --r-unit nF", 2,
                   "zov: --r-unit is 'nF', which is no unit of Resistance\n"},
             SCase{"import @/r.csv --type resistor --into @/r.zov --const Cnom=1", 2,
                   "zov: --const is 'Cnom=1', expected PROPERTY=VALUE with a property out of"},
             SCase{"import @/r.csv --type resistor", 2, "zov import: --into is required\n"},
             SCase{"import @/none.xlsx --type resistor --into @/r.zov", 3, "none.xlsx"},
             SCase{"import @/r.csv --type resistor --into @/r.zov --sheet x", 3, "no sheet 'x'"},
             SCase{"import @/r.csv --type resistor --into @/r.zov --header-row 2 --map @/map.txt",
                   3, "Nowhere"},
             SCase{"import @/r.csv --type resistor --into @/r.zov --map @/none.txt", 3, "none.txt"},
             SCase{"import @/r.csv --type resistor --into @/part.zovx", 3,
                   "zov: '@/part.zovx' is left as it is: not all of its records can be read\n"},
             SCase{"import @/empty.csv --type resistor --into @/r.zov", 1, ""},
         }) {
        const SRun run = Zov(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << run.err;
        EXPECT_NE(run.err.find(c.err), std::string::npos) << c.line << "\n" << run.err;
        EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "r.zov")) << c.line;
    }
}

TEST_F(CImportCommand, NetworkFilesOfCircuitTextsAreFollowed)
{
    m_folder.Write("nets/c 1.s2p", "# Hz S RI R 50\n1 0 0 1 0 1 0 0 0\n");
    m_folder.Write("c.csv", "Part Number,Cnom,Size,Model Type,File Name,File Path\n"
                            "C1,1nF,0402E,Sparameter,c 1.s2p,nets\n");
    EXPECT_EQ(Zov("import @/c.csv --type cap --into @/c.zov --node shunt").status, 0);
    EXPECT_EQ(Zov("lib doctor @/c.zov").status, 0);
    m_folder.Write("deep/er/here", "");
    EXPECT_NE(Zov("lib convert @/c.zov @/deep/er/c.zov").out.find("1 file name rewritten"),
              std::string::npos);
    EXPECT_NE(Zov("lib list @/deep/er/c.zov --json").out.find("Model=../../nets/c 1.s2p\\n.ENDS"),
              std::string::npos);
    EXPECT_EQ(Zov("lib doctor @/deep/er/c.zov").status, 0);
    std::filesystem::rename(m_folder.Path() / "nets", m_folder.Path() / "networks");
    EXPECT_EQ(Zov("lib doctor @/c.zov").out,
              "warning: Capacitor 'C1': CktDef 'nets/c 1.s2p' is not there; found 'networks/c "
              "1.s2p' [moved-file]\n@/c.zov: 1 record, 0 errors, 1 warning, 0 notes\n");
}

} // namespace zov::test
