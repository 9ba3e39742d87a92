// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CCommandLine : public CZovTest
{
};

TEST_F(CCommandLine, WrongUsageSaysWhatAndWhereHelpIs)
{
    struct SCase
    {
        const char* line;
        const char* err;
    };
    for (const SCase& c : {
             SCase{"lib", "zov lib: a command is missing, expected one of info, list, convert, "
                          "merge, diff, doctor, truth\nTry 'zov lib --help'.\n"},
             SCase{"lib lst x", "zov lib: 'lst' is no command, expected one of info, list, "
                                "convert, merge, diff, doctor, truth\nTry 'zov lib --help'.\n"},
             SCase{"lib list", "zov lib list: FILE is required\nTry 'zov lib list --help'.\n"},
             SCase{"sheet a.csv --rows x",
                   "zov sheet: Could not convert: --rows = x\nTry 'zov sheet --help'.\n"},
             SCase{"lib list a.zov --units C=pH",
                   "zov: 'pH' is no unit of C, expected one of F, mF, uF, nF, pF\n"},
             SCase{"lib list a.zov --units X=pF",
                   "zov: 'X=pF' is not understood, expected QUANTITY=UNIT with a quantity out of "
                   "R, L, C, V, I, t, f, P\n"},
             SCase{"lib list a.zov --find volt>=x",
                   "zov: 'x' is no value of Volt: expected a number with one of the units V, mV, "
                   "uV, nV, kV\n"},
             SCase{"lib list a.zov --type diode",
                   "zov: 'diode' is no record type, expected one of IC, Capacitor, Inductor, "
                   "Resistor, VRM, Connector, Package, SPICE\n"},
         }) {
        const SRun run = Zov(c.line);
        EXPECT_EQ(run.status, 2) << c.line;
        EXPECT_EQ(run.out, "") << c.line;
        EXPECT_EQ(run.err, c.err) << c.line;
    }
}

TEST_F(CCommandLine, EveryHelpNamesItselfAndEndsWithTwoExamples)
{
    for (const std::string command :
         {"lib info", "lib list", "lib convert", "lib merge", "lib diff", "lib doctor", "lib truth",
          "check", "sheet", "import", "assign", "set open", "curve info", "curve export", "calc",
          "net info", "net convert", "net diff"}) {
        const SRun run = Zov(command + " --help");
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_EQ(run.err, "") << command;
        EXPECT_NE(run.out.find("Usage: zov " + command + " [OPTIONS]"), std::string::npos)
            << run.out;
        const std::size_t examples = run.out.find("Examples:\n  zov " + command + ' ');
        ASSERT_NE(examples, std::string::npos) << run.out;
        const std::string tail = run.out.substr(examples);
        EXPECT_EQ(std::count(tail.begin(), tail.end(), '\n'), 3) << tail;
    }
    EXPECT_EQ(Zov("--version").out, "zov " ZOV_VERSION "\n");
    EXPECT_EQ(Zov("--version").status, 0);
    const SRun help = Zov("--help");
    EXPECT_NE(help.out.find("  70  a bug of this program\n"), std::string::npos) << help.out;
}

TEST_F(CCommandLine, SheetShowsCellsAsTheyAreRead)
{
    m_folder.Write("parts.csv", "Part,Value,\"Long\ntext\"\nC1,4u7,abcdefghijklmnopqrstuvwxyz\n"
                                "\nC2,µF,x\n");
    EXPECT_EQ(Told("sheet @/parts.csv --width 10"), "* sheet 'parts'\n"
                                                    "   A     B      C\n"
                                                    "1  Part  Value  Long\\ntext\n"
                                                    "2  C1    4u7    abcdefghi…\n"
                                                    "4  C2    µF     x\n= 0");
    EXPECT_EQ(Told("sheet @/parts.csv --rows 1 --sheet PARTS"),
              "* sheet 'parts'\n   A     B      C\n1  Part  Value  Long\\ntext\n"
              "... more rows; --rows 0 shows all\n= 0");
    EXPECT_EQ(Told("sheet @/parts.csv --rows 2 --json"),
              "{\"version\":1,\"file\":\"@/parts.csv\",\"sheets\":[{\"name\":\"parts\",\"hidden\":"
              "false}],\"selected\":0,\"rows\":[\n"
              "{\"row\":1,\"cells\":[\"Part\",\"Value\",\"Long\\ntext\"]},\n"
              "{\"row\":2,\"cells\":[\"C1\",\"4u7\",\"abcdefghijklmnopqrstuvwxyz\"]}\n"
              "],\"complete\":false}\n= 0");
    EXPECT_EQ(Zov("sheet @/parts.csv --sheet other").status, 3);
    const SRun missing = Zov("sheet @/none.xlsx");
    EXPECT_EQ(missing.status, 3);
    EXPECT_NE(missing.err.find("none.xlsx"), std::string::npos);
}

} // namespace zov::test
