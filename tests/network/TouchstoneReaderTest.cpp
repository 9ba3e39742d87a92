// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneReader.h"

#include "base/File.h"
#include "network/TouchstonePorts.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::network {
namespace {

struct SRead
{
    CNetworkData data;
    std::string error; ///< "line: message"
    std::vector<std::string> told;
};

SRead ReadText(std::string_view text, const std::string& name)
{
    CVectorDiag diag;
    CResult<CNetworkData> result = ReadTouchstoneText(text, name, diag);
    SRead read;
    if (result) {
        read.data = result.Take();
    } else {
        read.error = std::to_string(result.Error().pos.line) + ": " + result.Error().text;
    }
    for (const SDiag& one : diag.Diags()) {
        read.told.push_back(one.text);
    }
    return read;
}

/// Every value of the matrices as "re,im", which the cases keep short.
std::string ValuesOf(const CNetworkData& data)
{
    std::string text;
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        text += (f == 0 ? "" : "; ") + std::to_string(static_cast<long>(data.FrequenciesHz()[f]));
        for (const TComplex value : data.Matrix(f)) {
            text += ' ' + std::to_string(static_cast<int>(value.real())) + ',' +
                    std::to_string(static_cast<int>(value.imag()));
        }
    }
    return text;
}

TEST(TouchstoneReader, ReadsEveryLayout)
{
    const std::string v2 = "[Version] 2.0\n# Hz S RI R 50\n[Number of Ports] 2\n";
    struct SCase
    {
        const char* what;
        std::string text;
        const char* name;
        const char* values;
    };
    const SCase cases[] = {
        {"two-ports give 21 before 12", "# Hz S RI\n1 1 2 3 4 5 6 7 8\n", "a.s2p",
         "1 1,2 5,6 3,4 7,8"},
        {"lone CR, no last line end, commas, unit words", "! c\r# khz ri s\r1,1,2 ! x\r2,3,4",
         "a.s1p", "1000 1,2; 2000 3,4"},
        {"CR LF, rows broken anywhere",
         "#HZ S RI\r\n1 1\r\n2 3 4 5\r\n6 7 8\r\n\r\n2 8 7 6 5 4 3 2 1", "a.s2p",
         "1 1,2 5,6 3,4 7,8; 2 8,7 4,3 6,5 2,1"},
        {"defaults GHz S MA R 50", "#\n1 2 90\n", "a.s1p", "1000000000 0,2"},
        {"decibels", "# Hz DB\n1 20 180\n", "a.s1p", "1 -10,0"},
        {"D exponents, leading +, no leading digit", "# Hz RI\n+1 .3d1 +4.0E0\n", "a.s1p", "1 3,4"},
        {"a second option line and comments in the data",
         "# Hz RI\n# GHz MA\n1 3 4\n!x\n# y\n2 5 6", "a.s1p", "1 3,4; 2 5,6"},
        {"three ports row by row", "# Hz RI\n1 1 0 2 0 3 0\n4 0 5 0 6 0\n7 0 8 0 9 0\n", "a.S3P",
         "1 1,0 2,0 3,0 4,0 5,0 6,0 7,0 8,0 9,0"},
        {"the comment gives the ports", "! Number of ports is 0x2\n# Hz RI\n1 1 2 3 4 5 6 7 8\n",
         "a.txt", "1 1,2 5,6 3,4 7,8"},
        {"the data gives the ports", "# Hz RI\n1 1 0 2 0\n3 0 4 0\n2 1 0 2 0\n3 0 4 0\n", "a.dat",
         "1 1,0 3,0 2,0 4,0; 2 1,0 3,0 2,0 4,0"},
        {"order 12_21",
         v2 + "[Two-Port Data Order] 12_21\n[Network Data]\n1 1 2 3 4 5 6 7 8\n[End]", "a.ts",
         "1 1,2 3,4 5,6 7,8"},
        {"lower", v2 + "[Matrix Format] lower\n[Network Data]\n1 1 2\n3 4 5 6\n[End]\n", "a.ts",
         "1 1,2 3,4 3,4 5,6"},
        {"a triangle announced, four pairs given",
         v2 + "[Matrix Format] Lower\n[Network Data]\n1 1 2 3 4 5 6 7 8\n[End]\n", "a.ts",
         "1 1,2 5,6 3,4 7,8"},
        {"upper", v2 + "[Matrix Format] Upper\n[Network Data]\n1 1 2 3 4\n5 6\n[End]\n", "a.ts",
         "1 1,2 3,4 3,4 5,6"},
        {"information block and a reference list over lines",
         v2 + "[Begin Information]\n[Vendor] x\n1 2\n[End Information]\n[Reference] 50\n75 ! y\n"
              "[Network Data]\n1 1 2 3 4 5 6 7 8\n[End]\nrest",
         "a.ts", "1 1,2 5,6 3,4 7,8"},
        {"no [Network Data]", v2 + "1 1 2 3 4 5 6 7 8\n[End]\n", "a.ts", "1 1,2 5,6 3,4 7,8"},
    };
    for (const SCase& one : cases) {
        const SRead read = ReadText(one.text, one.name);
        EXPECT_EQ(read.error, "") << one.what;
        EXPECT_EQ(ValuesOf(read.data), one.values) << one.what;
    }
}

TEST(TouchstoneReader, RefusesInTheKnownWords)
{
    const std::string v2 = "[Version] 2.0\n# Hz S RI R 50\n";
    const std::string two = v2 + "[Number of Ports] 2\n";
    const std::string three = v2 + "[Number of Ports] 3\n";
    struct SCase
    {
        std::string text;
        const char* name;
        const char* error;
    };
    const SCase cases[] = {
        {"1 2 3\n", "a.s1p",
         "1: The Touchstone file's header contains an invalid character or line."},
        {"# Hz\n\nx\n", "a.s1p",
         "3: The Touchstone file's header contains an invalid character or line."},
        {"[Version] 3.0\n#\n", "a.ts",
         "1: The Touchstone file's header contains an invalid character or line."},
        {"[Number of Ports] 1\n", "a.ts", "1: [Version] should be the first keyword."},
        {"# Hz\n[Version] 2.0\n", "a.ts", "2: [Version] should be the first keyword."},
        {"# Hz RI\n1 2 3\n[End]\n", "a.s1p", "3: [Version] should be the first keyword."},
        {"[Version] 2.0\n[Number of Ports] 1\n", "a.ts",
         "2: Option line should follow keyword [Version]."},
        {"# Hz S X\n", "a.s1p", "1: Unknown word in option line."},
        {"# Hz 75 S\n", "a.s1p", "1: Unknown word in option line."},
        {"# Hz R (50+50j)\n", "a.s1p", "1: Unknown word in option line."},
        {"# Hz R nan\n1 2 3", "a.s1p", "1: Incorrect reference impedance list."},
        {"# Hz R 1e999\n1 2 3", "a.s1p", "1: Incorrect reference impedance list."},
        {"# Hz R 50 -1\n1 2 3", "a.s2p", "1: Incorrect reference impedance list."},
        {"# Hz R\n1 2 3", "a.s1p", "1: Incomplete reference impedance list."},
        {"# Hz R 50 75\n1 1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0", "a.s3p",
         "0: Incomplete reference impedance list."},
        {"# Hz R 50 75\n1 2 3", "a.s1p", "0: Incorrect reference impedance list."},
        {v2 + "[Ports] 2\n", "a.ts", "3: Unknown keyword."},
        {two + "[Matrix Format] Half\n", "a.ts", "4: Unknown matrix format."},
        {two + "[Reference] 50\n[Network Data]\n", "a.ts",
         "5: Incomplete reference impedance list."},
        {two + "[Reference] 50 1 2\n", "a.ts", "4: Incorrect reference impedance list."},
        {two + "[Reference] 50 x\n", "a.ts", "4: Incorrect reference impedance list."},
        {v2 + "[Reference] 50\n", "a.ts", "3: Fail to get port number."},
        {v2 + "[Network Data]\n1 2 3\n", "a.ts", "0: Fail to get port number."},
        {v2 + "[Number of Ports] none\n", "a.s1p", "3: Fail to get port number."},
        {v2 + "[Number of Ports] 2147483648\n", "a.ts", "3: Incomplete matrix data."},
        {"# Hz\n1 2 3\n", "a.s2147483648p", "2: Incomplete matrix data."},
        {two + "[Mixed-Mode Order] D1,2\n[Network Data]", "a.ts", "5: Incorrect mixed-mode order."},
        {two + "[Mixed-Mode Order] D1,2 E1,2\n", "a.ts", "4: Incorrect mixed-mode order."},
        {two + "[Mixed-Mode Order] D1,2 S1\n[Network Data]\n1 1 2 3 4 5 6 7 8\n", "a.ts",
         "0: Incorrect mixed-mode order."},
        {two +
             "[Reference] 50 75\n[Mixed-Mode Order] D1,2 C1,2\n[Network Data]\n1 1 2 3 4 5 6 7 8\n",
         "a.ts", "0: The reference impedances are different for the mixed-mode S parameter."},
        {"[Version] 2.0\n# Hz G\n[Number of Ports] 2\n[Mixed-Mode Order] D1,2 C1,2\n[Network "
         "Data]\n"
         "1 1 2 3 4 5 6 7 8\n",
         "a.ts", "0: The diff-channel touchstone should be S|Z|Y type"},
        {"# Hz H\n1 1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0\n", "a.s3p",
         "0: G matrix or H matrix is valid for 2 port matrix only"},
        {three + "[Network Data]\n1 1 0 1 0 1 0 1 0\n[End]\n", "a.ts",
         "6: Incomplete matrix data."},
        {"# Hz RI\n", "a.s1p", "1: Incomplete matrix data."},
        {"# Hz RI\n1 2\n", "a.s1p", "2: Incomplete matrix data."},
        {"# Hz RI\n1 2 nan\n", "a.s1p", "2: Incomplete matrix data."},
        {"# Hz RI\n1 2 3\n2 4 5x\n", "a.s1p", "3: Incomplete matrix data."},
        {"# Hz RI\n1 2 3\n2 4 1e999\n", "a.s1p", "3: Incomplete matrix data."},
        {"# Hz RI\n1 1 2 3 4 5 6 7 8\n2 1 2 3 4 5 6\n3 1 2 3 4 5 6 7 8\n", "a.s2p",
         "3: Incomplete matrix data."},
        {two + "[Number of Frequencies] 2\n[Network Data]\n1 1 2 3 4 5 6 7 8\n[End]\n", "a.ts",
         "0: Incomplete matrix data."},
        {"# Hz RI\n1 2 3\n1 4 5\n", "a.s1p",
         "3: The Touchstone file contains an invalid frequency value."},
        {"# Hz RI\n-1 2 3\n", "a.s1p",
         "2: The Touchstone file contains an invalid frequency value."},
        {"# Hz RI\n1 1 2\n2 1 2\n3 1 2\n", "a.s2p", "2: Incomplete matrix data."},
        {"# Hz RI\n1 1 2 3 4 5 6 7 8\n2 1 2 3 4 5 6 7 8\n", "a.s1p", "2: Incomplete matrix data."},
    };
    for (const SCase& one : cases) {
        EXPECT_EQ(ReadText(one.text, one.name).error, one.error) << one.text;
    }
}

TEST(TouchstoneReader, TellsWhatItReadOver)
{
    const SRead noise = ReadText("# GHz RI\n2 1 0 1 0 1 0 1 0\n22 1 0 1 0 1 0 1 0\n! noise\n"
                                 "4 .7 .64 69 .38\n18 2.7 .46 -33 .40\n",
                                 "a.s2p");
    EXPECT_EQ(noise.error, "");
    EXPECT_EQ(noise.data.FrequencyCount(), 2U);
    EXPECT_EQ(noise.data.Traits().noisePoints, 2U);
    const SRead v2 = ReadText("! x\n[Version] 2.0\n#\n[Number of Ports] 2\n"
                              "[Number of Frequencies] 1\n[Number of Noise Frequencies] 1\n"
                              "[Network Data]\n2 1 0 1 0 1 0 1 0\n22 1 0 1 0 1 0 1 0\n"
                              "[Noise Data]\n4 .7 .64 69 19\n",
                              "a.s4p");
    EXPECT_EQ(v2.error, "");
    EXPECT_EQ(v2.data.Traits().noisePoints, 1U);
    EXPECT_EQ(v2.told, (std::vector<std::string>{
                           "the file's name says 4 ports, its header 2", "[End] is missing",
                           "2 frequencies were read, [Number of Frequencies] says 1"}));
}

TEST(TouchstoneReader, TakesTheHeaderBack)
{
    const SRead own = ReadText("!Generated from: board A\n! in\n! out\n!\n!Zovra Version: 1\n"
                               "!Computer Host Name: h\n!\n!TouchstoneFormatFlag = 2\n! more\n!\n"
                               "!User Comments:\n!\t\t\tline 1\n!\t\t\tline 2\n!\n"
                               "#\tKHz\tZ\tRI\tR\t50 75\n1 1 2 3 4 5 6 7 8\n",
                               "a.s2p");
    ASSERT_EQ(own.error, "");
    const SFileTraits& traits = own.data.Traits();
    EXPECT_EQ(traits.origin, "board A");
    EXPECT_EQ(traits.formatFlag, 2);
    EXPECT_EQ(own.data.Normalised(), ENormalised::No);
    EXPECT_EQ(traits.comments, std::vector<std::string>{" more"});
    EXPECT_EQ(traits.userComments, (std::vector<std::string>{"line 1", "line 2"}));
    EXPECT_EQ(own.data.Ports()[1].name, "out");
    EXPECT_EQ(own.data.ReferencesOhm(), (std::vector<double>{50, 75}));

    const SRead solver = ReadText("\xEF\xBB\xBF! Port[1] = a:1\n# Z RI R 2\n! Port[2] = b:1\n"
                                  "1 1 2 3 4 5 6 7 8\n",
                                  "a.s2p");
    ASSERT_EQ(solver.error, "");
    EXPECT_EQ(solver.data.Ports()[1].name, "b:1");
    EXPECT_EQ(solver.data.Normalised(), ENormalised::Yes);

    const SRead mixed = ReadText("[Version] 2.0\n# RI\n[Number of Ports] 3\n[Mixed-Mode Order]\n"
                                 "S3 d1 , 2\nC1,2\n[Network Data]\n1 "
                                 "1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0 1 0\n[End]\n",
                                 "a.ts");
    ASSERT_EQ(mixed.error, "");
    EXPECT_EQ(mixed.data.Ports()[1].mode, EPortMode::Differential);
    EXPECT_EQ(mixed.data.Ports()[1].second, 1U);
    EXPECT_EQ(mixed.data.Ports()[0].first, 2U);
}

TEST(TouchstonePorts, CountsByContentThenName)
{
    const test::CTempFolder folder;
    struct SCase
    {
        const char* name;
        const char* text;
        std::uint32_t byContent;
        std::uint32_t byName;
    };
    const SCase cases[] = {
        {"a.s4p", "! x\n! NUMBER of ports is 0x1F\n", 31, 4},
        {"a.S12P", "! Number of ports is 017\n", 15, 12},
        {"b.s2p", "[Version] 2.0\n# Hz\n[Number of Ports] 7 ! y\n", 7, 2},
        {"c.s2p", "[Version] 2.0\n! x\n# Hz\n[Number of Ports] 7\n", 2, 2},
        {"d.s2p", "# Hz\n! Number of ports is 3\n", 2, 2},
        {"e.sp", "", 0, 0},
        {"f.s0p", "! Number of ports is none\n", 0, 0},
        {"g.s4x", "", 0, 0},
        {"h.s99999999999p", "", 0, 0},
    };
    for (const SCase& one : cases) {
        const std::filesystem::path path = folder.Write(one.name, one.text);
        EXPECT_EQ(PortCountOfFile(path, EPortCountFrom::Content), one.byContent) << one.name;
        EXPECT_EQ(PortCountOfFile(path, EPortCountFrom::Extension), one.byName) << one.name;
    }
    CNullDiag diag;
    const CResult<CNetworkData> none = ReadTouchstone(folder.Path() / "none.s1p", diag);
    EXPECT_EQ(none.Error().text, "Failed to open the file.");
}

} // namespace
} // namespace zov::network
