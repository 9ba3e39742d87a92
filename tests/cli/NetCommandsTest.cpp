// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CNetCommands : public CZovTest
{
protected:
    CNetCommands()
    {
        m_folder.Write("filter.s2p", "! Port[1] = in\n! Port[2] = out\n# MHz S RI R 50\n"
                                     "1 0.5 0 0.25 0 0.25 0 0.5 0\n"
                                     "2 0.5 0 0 -0.25 0 -0.25 0.5 0\n"
                                     "3 0.5 0 -0.25 0 -0.25 0 0.5 0\n");
        m_folder.Write("short.s2p",
                       "# Hz S RI R 50\n0 0 0 1 0 1 0 0 0\n1 0.2 0 0.8 0 0.8 0 0.2 0\n");
    }
    /// The lines from the option line on.
    std::string DataOf(const std::string& name)
    {
        const std::string text = m_folder.Read(name);
        return text.substr(std::min(text.find("\n#\t"), text.size() - 1) + 1);
    }
};

TEST_F(CNetCommands, InfoTellsFileAndFigures)
{
    EXPECT_EQ(Told("net info @/filter.s2p"), "@/filter.s2p\n"
                                             "  ports        2\n"
                                             "  type         S\n"
                                             "  format       RI, version 1\n"
                                             "  frequencies  3, 1 MHz to 3 MHz, in MHz\n"
                                             "  references   50 ohm\n"
                                             "  names        in, out\n"
                                             "  gain         0.75 at 1 MHz: passive\n"
                                             "  asymmetry    0: reciprocal\n"
                                             "  clockwise    100.0 %\n= 0");
    m_folder.Write("coil.s1p", "# MHz Z RI R 50\n1 0.02 0.2\n2 0.02 0.4 ! twice\n3 0.02 0.6\n");
    const std::string coil = Told("net info @/coil.s1p");
    EXPECT_NE(coil.find("  type         Z, normalised to the references\n"), std::string::npos)
        << coil;
    EXPECT_NE(coil.find("  looks like   inductor, one-port, L 1.59155 uH, R 1 ohm\n= 0"),
              std::string::npos)
        << coil;
    const SRun json = Zov("net info @/coil.s1p --json");
    EXPECT_EQ(json.out.substr(0, 15), "{\n  \"version\": ");
    EXPECT_NE(json.out.find("\"part\": {\n        \"kind\": \"inductor\""), std::string::npos)
        << json.out;
    EXPECT_EQ(Told("net info @/none.s2p @/filter.s2p").substr(0, 12), "@/filter.s2p");
    EXPECT_EQ(Zov("net info @/none.s2p @/filter.s2p").status, 4);
    m_folder.Write("bad.s2p", "# MHz S RI R 50\n1 2 3\n");
    EXPECT_EQ(Told("net info @/bad.s2p"),
              "--\nzov: @/bad.s2p:2: Incomplete matrix data.\n"
              "     the file's name says 2 ports, its data looks like that of 1\n= 3");
}

TEST_F(CNetCommands, ConvertChangesTypeFormatUnitAndVersion)
{
    EXPECT_EQ(Told("net convert @/filter.s2p @/out.ts --type z --unit khz"),
              "@/out.ts: 2 ports, Z RI, version 2, 3 points\n= 0");
    EXPECT_EQ(DataOf("out.ts").substr(0, 130),
              "#\tKHz\tZ\tRI\tR\t50\n[Number of Ports] 2\n[Two-Port Data Order] 21_12\n"
              "[Number of Frequencies] 3\n[Network Data]\n1000\t216.666666666667\t0\t1");
    EXPECT_EQ(
        Told("net convert @/out.ts @/z.s2p"),
        "@/z.s2p: 2 ports, Z RI, version 1, 3 points\n--\n"
        "zov: @/z.s2p: Z values are normalised to the references (50 ohm): version 1 files hold "
        "them so\n= 0");
    EXPECT_EQ(Told("net diff @/filter.s2p @/z.s2p --tolerance 1e-14").find("type: S and Z\n"), 0U);
    EXPECT_EQ(Zov("net diff @/filter.s2p @/z.s2p --tolerance 1e-14").status, 0);

    EXPECT_EQ(
        Told("net convert @/filter.s2p @/m.ts --mixed-mode D1,2+C1,2"),
        "--\nzov: --mixed-mode: expected 2 descriptors such as S1, D1,2 or C1,2, or 'single'\n= 2");
    EXPECT_EQ(
        Zov("net convert @/filter.s2p @/m.ts --mixed-mode D1,2,C1,2 --reference 25,25").status, 0);
    EXPECT_NE(DataOf("m.ts").find("R\t25\n"), std::string::npos);
    EXPECT_NE(DataOf("m.ts").find("[Mixed-Mode Order]\nD1,2 C1,2\n"), std::string::npos);
    EXPECT_EQ(Told("net convert @/m.ts @/m.s2p"),
              "--\nzov: @/m.s2p: mixed modes have no place in a version 1 file\n"
              "zov: @/m.s2p: Version 1 don't support mixed-mode.\n= 3");
    EXPECT_EQ(Zov("net convert @/m.ts @/m.s2p --mixed-mode single --reference 50").status, 0);
    EXPECT_EQ(Zov("net diff @/filter.s2p @/m.s2p --tolerance 1e-14").status, 0);

    EXPECT_EQ(Told("net convert @/filter.s2p @/i.s2p --points 1e6:3e6:5"),
              "@/i.s2p: 2 ports, S RI, version 1, 5 points\n= 0");
    EXPECT_NE(DataOf("i.s2p").find("\n1.5\t0.5\t0\t0.125\t-0.125\t"), std::string::npos)
        << DataOf("i.s2p");
    EXPECT_EQ(Zov("net convert @/filter.s2p @/i.s2p --like @/short.s2p").status, 2);
    EXPECT_EQ(Told("net convert @/filter.s2p @/i.s3p"),
              "--\nzov: @/i.s3p: Invalid data source info.\n"
              "     a version 1 file of 2 ports has the extension .s2p\n= 3");
}

TEST_F(CNetCommands, ConvertTellsWhatIsLost)
{
    EXPECT_EQ(
        Told("net convert @/short.s2p @/z.ts --type Z"),
        "--\nzov: The derived Z-parameters are singular at frequencies: 0.000000, 1.000000.\n= 1");
    EXPECT_EQ(
        Told("net convert @/short.s2p @/y.ts --type Y"),
        "@/y.ts: 2 ports, Y RI, version 2, 1 point\n--\nzov: @/short.s2p: The derived Y-parameters "
        "are singular at frequencies: 0.000000.\n= 4");
    m_folder.Write("noise.s2p", "# MHz S RI R 50\n2 0.5 0 0.2 0 0.2 0 0.5 0\n1 1 1 1 1\n");
    EXPECT_EQ(Told("net convert @/noise.s2p @/lost.ts --strict"),
              "--\nzov: @/lost.ts: noise data (1 frequencies) is left out\nzov: @/lost.ts: not "
              "written\n= 1");
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "lost.ts"));
}

TEST_F(CNetCommands, DiffFindsTheLargestDifference)
{
    m_folder.Write("other.s2p", "# MHz S RI R 50\n1 0.5 0 0.25 0 0.25 0 0.5 0\n"
                                "3 0.5 0 -0.25 0.125 -0.25 0 0.5 0\n4 0.5 0 0.25 0 0.25 0 0.5 0\n");
    EXPECT_EQ(Told("net diff @/filter.s2p @/filter.s2p"),
              "the values are the same at 3 points\n= 0");
    EXPECT_EQ(Told("net diff @/filter.s2p @/other.s2p"),
              "frequencies: 2 in both, 1 only in A, 1 only in B\n"
              "largest difference 0.125 in S(2,1) at 3 MHz: -0.25+0j and -0.25+0.125j\n"
              "1 value above the tolerance\n= 1");
    EXPECT_EQ(Zov("net diff @/filter.s2p @/other.s2p --interpolate --tolerance 0.5").status, 0);
    EXPECT_NE(Zov("net diff @/filter.s2p @/other.s2p --json").out.find("\"above\": 1"),
              std::string::npos);
    EXPECT_EQ(Zov("net diff @/filter.s2p @/none.s2p").status, 3);
}

} // namespace zov::test
