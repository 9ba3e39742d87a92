// SPDX-License-Identifier: Apache-2.0
#include "assign/AssignSupport.h"
#include "assign/ZovMapFile.h"

namespace zov::test {

using enum ERecordType;

class CMapFiles : public CAssignTest
{
protected:
    static CZovMapFile Read(const std::string& rows)
    {
        CZovMapFile map;
        EXPECT_FALSE(map.LoadText("/x/y.csv,1.00\nZOV MAP FILE\nheader\n" + rows, "y.csv"));
        return map;
    }
    static std::string Text(const CZovMapFile& map)
    {
        std::string out;
        for (const SMapRow& row : map.Rows()) {
            out += row.device + "|" + row.refdes + "|" + row.model + "|" + row.library + "|" +
                   row.subModel + "\n";
        }
        return out;
    }
    static SDesign Board()
    {
        return {{{"C.1", {"C10", "C2", "C1"}, "", Any, false, false},
                 {"R1", {"R1", "R2"}, "", Any, false, false},
                 {"empty", {}, "", Any, false, false}}};
    }
};

TEST_F(CMapFiles, ExportIsWrittenToTheLetter)
{
    const auto library =
        AddLibrary("a.zov", {{Capacitor, "R 0402, 10K", "sub,x"}, {Resistor, "R.1"}});
    CAssignTable table(Board(), m_set, m_search);
    CFixedAnswer yes(true);
    table.Assign({table.Rows()[0]}, Model(library, 0), yes, m_log);
    table.SwitchView();
    table.Assign({table.Rows()[4]}, Model(library, 1), yes, m_log); // R2 alone
    const CZovMapFile map = ExportAssignments(table, m_set);
    const auto path = m_folder.Path() / "map.csv";
    ASSERT_FALSE(map.Save(path, [] { return SLocalTime{2026, 3, 7, 4, 5, 6}; }));
    const std::string lib = PathText(m_folder.Path() / "a.zov");
    EXPECT_EQ(m_folder.Read("map.csv"),
              PathText(path) +
                  ",1.00\nZOV MAP FILE\n"
                  "Device Type,Reference Designator,Model Name,Library,SubModel\n"
                  "C_1,C1 C10 C2,R_0402__10K," +
                  lib + ",sub,x\nR1,R2,R_1," + lib + ",\n\n3/07/2026,4:5:6\n");
    const TDataSetResult failed = map.Save(m_folder.Path() / "none" / "map.csv");
    ASSERT_TRUE(failed);
    EXPECT_EQ(failed->caption, "Fatal Error");
    EXPECT_EQ(failed->Message(), PathText(m_folder.Path() / "none" / "map.csv") + " creating file");
}

TEST_F(CMapFiles, RowsAreReadCutAndTrimmed)
{
    const std::string longField(1500, 'a');
    const std::string longLine(200000, 'b');
    const std::pair<std::string, std::string> cases[] = {
        {"dev, c1 ,\tmodel , /l/x.zov ,sub\n", "DEV|C1|MODEL|/L/X.ZOV|SUB\n"},
        {"ä\n", "Ä||||\n"},
        {"a,b,c,d,e,f,g\r\n", "A|B|C|D|E\n"},
        {"C1,C10,m\nc1,c10,n\nC1,c11,o\n", "C1|C10|M||\nC1|C11|O||\n"},
        {",C1,m\n,C1,n\n", "|C1|M||\n|C1|N||\n"},
        {"a\n,,,,\nb\n", "A||||\n"},
        {"a\n\nb\n", "A||||\n"},
        {"a,b,c,d,e\n3/07/2026,4:5:6\n", "A|B|C|D|E\n3/07/2026|4:5:6|||\n"},
        {longField + ",x\n", std::string(1023, 'A') + "|X|||\n"},
        {"x," + longLine + ",y\nnext", "X|" + std::string(1023, 'B') + "|||\nNEXT||||\n"},
        {"", ""},
    };
    for (const auto& [rows, expected] : cases) {
        EXPECT_EQ(Text(Read(rows)), expected) << rows.substr(0, 40);
    }
}

TEST_F(CMapFiles, OnlyNewerVersionsAreRefused)
{
    const std::tuple<const char*, bool> cases[] = {
        {"/x.csv,2.00", false}, {"/x.csv,1.01", false}, {"/x.csv,1.00", true}, {"/x.csv,0.5", true},
        {"/x.csv", true},       {"/x.csv,", true},      {"/x.csv, ,9", true},  {"", true},
    };
    for (const auto& [line, accepted] : cases) {
        CZovMapFile map;
        map.Add({"kept", "", "", "", ""});
        const TDataSetResult failed = map.LoadText(std::string(line) + "\nt\nh\na,b,c\n", "x.csv");
        EXPECT_EQ(!failed, accepted) << line;
        EXPECT_EQ(map.Rows()[0].device, accepted ? "A" : "kept");
        if (failed) {
            EXPECT_EQ(failed->caption + ": " + failed->Message(),
                      "Error: x.csv, file version is too new");
        }
    }
    CZovMapFile map;
    const TDataSetResult gone = map.Load(m_folder.Path() / "gone.csv");
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->text, " opening file");
}

TEST_F(CMapFiles, ImportFollowsLibraryTypeAndSubModel)
{
    const auto project = AddLibrary(
        "a.zov", {{Resistor, "M.1"}, {Capacitor, "M_1", "S1"}, {Capacitor, "m_1", "S2"}});
    const auto external = AddLibrary("b.zov", {{Ic, "M_1", "S3"}});
    const std::string b = PathText(m_folder.Path() / "b.zov");
    struct SCase
    {
        std::string rows;
        ERecordType required;
        SModelRef expected;
        bool typeFree = false;
    };
    const SCase cases[] = {
        {"C_1,,M_1,,\n", Any, Model(project, 0)},
        {"C_1,anything,M_1,,\n", static_cast<ERecordType>(1), Model(project, 0)},
        {"C_1,,M_1,,\n", Capacitor, Model(project, 1)},
        {"C_1,,M_1,,s2\n", Any, Model(project, 2)},
        {"C_1,,m.1,,\n", Any, Model(project, 0)},
        {"C_1,,M_1," + b + ",\n", Any, Model(external, 0)},
        {"C_1,,M_1," + b + ",\n", Capacitor, {}},
        {"C_1,,M_1," + b + ",\n", Capacitor, Model(external, 0), true},
        {"C_1,,M_1,/other.zov,\n", Any, Model(project, 0)},
        {"C_1,,,,\n", Any, {}},
        {"C.1,,M_1,,\n", Any, {}}, // the map holds legal names
        {"C_1,,none,,\nC_1,C1,M_1,,\n", Any, {}},
    };
    for (const SCase& one : cases) {
        SCOPED_TRACE(one.rows);
        SDesign board{{{"C.1", {}, "", one.required, false, one.typeFree}}};
        CAssignTable table(board, m_set, m_search);
        EXPECT_EQ(ImportAssignments(Read(one.rows), table, m_set), one.expected ? 1U : 0U);
        const auto models = table.ModelsOf(*table.Rows()[0]);
        EXPECT_EQ(models.empty() ? SModelRef() : models[0], one.expected);
    }
}

TEST_F(CMapFiles, ADesignatorWithoutARowKeepsItsOwnModel)
{
    const auto a = AddLibrary("a.zov", {{Resistor, "A"}, {Resistor, "B"}});
    CAssignTable table({{{"R", {"R1", "R2", "R3"}, "", Any}}}, m_set, m_search);
    table.SwitchView();
    table.SetModel(*table.Rows()[0], Model(a, 1));
    table.SetModel(*table.Rows()[1], Model(a, 1));
    EXPECT_EQ(ImportAssignments(Read("R,R1 R2 R3,A,,\nR,R2,A,,\n"), table, m_set), 2U);
    EXPECT_EQ(Cells(table), "R1=B|R2=A|R3=A|");
}

TEST_F(CMapFiles, WhatIsExportedIsImportedIntoAFreshDesign)
{
    const auto a = AddLibrary("a.zov", {{Resistor, "R 0402, 10K"}, {Capacitor, "C", "x"}});
    const auto b = AddLibrary("b.zov", {{Resistor, "R 0402, 10K"}, {Capacitor, "C", "y"}});
    CAssignTable table(Board(), m_set, m_search);
    CFixedAnswer no(false);
    table.Assign({table.Rows()[0]}, Model(b, 1), no, m_log);
    table.Assign({table.Rows()[1]}, Model(b, 0), no, m_log);
    table.SetModel(*table.Rows()[2], Model(a, 1));
    const CZovMapFile out = ExportAssignments(table, m_set);
    ASSERT_FALSE(out.Save(m_folder.Path() / "map.csv"));
    CZovMapFile in;
    ASSERT_FALSE(in.Load(m_folder.Path() / "map.csv"));
    CAssignTable fresh(Board(), m_set, m_search);
    EXPECT_EQ(ImportAssignments(in, fresh, m_set), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(fresh.ModelsOf(*fresh.Rows()[i]), table.ModelsOf(*table.Rows()[i]));
    }
    EXPECT_TRUE(CompareMaps(in, ExportAssignments(fresh, m_set)).empty());

    fresh.SetModel(*fresh.Rows()[0], Model(a, 1));
    const auto changes = CompareMaps(out, Read("C_1,C1 C10 C2,C,a,\nnew,,m,,\n"));
    ASSERT_EQ(changes.size(), 4U);
    EXPECT_EQ(changes[0].after.library, "A");
    EXPECT_EQ(changes[1].before.device, "");
    EXPECT_EQ(changes[2].after.device, "");
}

} // namespace zov::test
