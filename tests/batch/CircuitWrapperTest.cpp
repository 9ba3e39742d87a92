// SPDX-License-Identifier: Apache-2.0
#include "batch/CircuitWrapper.h"

#include "base/File.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <string>

namespace zov::batch {
namespace {

using enum SCircuit::EFault;

TEST(CircuitWrapper, WrapsToTheLetter)
{
    EXPECT_EQ(WrapOnePort("C1", "a.s1p"),
              ".SUBCKT    C1 1 2\r\nS1 1 3 2 3\r\n+ Model = a.s1p\r\n.ENDS\r\n");
    EXPECT_EQ(WrapTwoPort("C1", "a.s2p", ENodeAssignment::Shunt),
              ".SUBCKT C1 1 2\nS1 1 2 3 2 Model=a.s2p\n.ENDS");
    EXPECT_EQ(WrapTwoPort("C1", "a.s2p", ENodeAssignment::Series),
              ".SUBCKT C1 1 2\nS1 1 2 3 2 Model=a.s2p\nV 3 2 0\n.ENDS");
}

TEST(CircuitWrapper, CopiesLineByLine)
{
    EXPECT_EQ(CopyCircuit("* x\r\n.SUBCKT a 1 2\r\nR1 1 2 1\n  .ends a\r\n.END"),
              "* x\r\n.SUBCKT a 1 2\r\nR1 1 2 1\n.ENDS\n.ENDS\n");
    EXPECT_EQ(CopyCircuit("* the .ENDing"), ".ENDS\n");
    EXPECT_EQ(CopyCircuit("a.b.c\n"), "a.b.c\n");
    // Lines are taken in pieces of 1024 bytes.
    const std::string longLine = std::string(1500, 'x') + ".END\n";
    EXPECT_EQ(CopyCircuit(longLine), std::string(1024, 'x') + ".ENDS\n");
}

TEST(CircuitWrapper, JoinsPathAndName)
{
    EXPECT_EQ(JoinFilePath("", "a.s2p"), "a.s2p");
    EXPECT_EQ(JoinFilePath("models/", "a.s2p"), "models/a.s2p");
    EXPECT_EQ(JoinFilePath("models", "a.s2p"), "models/a.s2p");
    EXPECT_EQ(JoinFilePath("m\\sub", "a.s2p"), "m\\sub\\a.s2p");
    EXPECT_EQ(JoinFilePath("models", "C:\\a.s2p"), "C:\\a.s2p");
}

TEST(CircuitWrapper, FindsFilesAndNamesThemFromTheLibrary)
{
    const test::CTempFolder folder;
    folder.Write("lib/in lib.S2P", "x");
    folder.Write("list/beside.s1p", "x");
    folder.Write("list/models/two.ckt", "* head\n.subckt two 1 2\nC1 1 2 1n\n.ends\n");
    folder.Write("list/one.sp", ".SUBCKT one 1\n.ENDS\n");
    folder.Write("list/none.mod", "* no circuit\n");
    folder.Write("list/open.mod", ".SUBCKT open 1 2\n");
    folder.Write("list/a.s4p", "x");
    std::filesystem::create_directory(folder.Path() / "list/dir.ckt");
    CCircuitWrapper wrapper(folder.Path() / "lib", folder.Path() / "list");
    const auto wrap = [&](std::string_view file) {
        return wrapper.Wrap("C1", file, ENodeAssignment::Shunt);
    };
    EXPECT_EQ(wrap("in lib.S2P").text, ".SUBCKT C1 1 2\nS1 1 2 3 2 Model=in lib.S2P\n.ENDS");
    EXPECT_EQ(wrap("beside.s1p").file, "../list/beside.s1p");
    const std::string absolute = PathText(folder.Path() / "list" / "beside.s1p");
    EXPECT_EQ(wrap(absolute).file, absolute);
    for (int i = 0; i < 2; ++i) { // the second time from memory
        EXPECT_EQ(wrap("models\\two.ckt").text, "* head\n.subckt two 1 2\nC1 1 2 1n\n.ENDS\n");
    }
    EXPECT_EQ(wrap("one.sp").fault, NoSpice);
    EXPECT_EQ(wrap("one.sp").why,
              "Please import a valid ckt file which pin number is more than one: " +
                  PathText(folder.Path() / "list" / "one.sp"));
    EXPECT_EQ(wrap("none.mod").fault, NoSpice);
    EXPECT_EQ(wrap("open.mod").fault, NoSpice);
    EXPECT_EQ(wrap("a.s4p").fault, NoSpice);
    EXPECT_EQ(wrap("dir.ckt").fault, NoFile);
    EXPECT_EQ(wrap("gone.s2p").fault, NoFile);
    EXPECT_EQ(wrap("gone.s2p").file, "gone.s2p");
}

} // namespace
} // namespace zov::batch
