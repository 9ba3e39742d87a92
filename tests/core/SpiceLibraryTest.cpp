// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryFiles.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

struct SCase
{
    const char* text;
    std::vector<std::string> circuits; ///< as CircuitText gives them
};

TEST(SpiceLibrary, FindsEverySubcircuitWhateverItsLayout)
{
    const SCase cases[] = {
        {"", {}},
        {"* title\nR1 1 2 5\n.ends\n.end\n", {}},
        {".SUBCKT cap 1 2\nC1 1 2 1n\n.ENDS\n", {".SUBCKT cap 1 2\r\nC1 1 2 1n\r\n.ENDS\r\n"}},
        {"\xEF\xBB\xBF.subckt cap 1 2\r\nC1 1 2 1n\r\n.ends cap\r\n",
         {".SUBCKT cap 1 2\r\nC1 1 2 1n\r\n.ENDS\r\n"}},
        {"  .Subckt a\t1\t2 ; trailing\rR1 1 2 5\r  .Ends a",
         {".SUBCKT a 1 2\r\nR1 1 2 5\r\n.ENDS\r\n"}},
        {".SUBCKT a 1 $ comment\n* between\n+ 2 $G_GND $ more\n\n+3\nR1 1 2 5\n.ENDS\n",
         {".SUBCKT a 1 2 $G_GND 3\r\n* between\r\n\r\nR1 1 2 5\r\n.ENDS\r\n"}},
        {".SUBCKT a 1 2 PARAMS: r=5 l = 1n\n+ c=2\nR1 1 2 {r}\n.ENDS\n",
         {".SUBCKT a 1 2\r\n+ PARAMS: r=5 l=1n c=2\r\nR1 1 2 {r}\r\n.ENDS\r\n"}},
        {".SUBCKT a (1, 2) r =5\n.ENDS\n", {".SUBCKT a 1 2\r\n+ r=5\r\n.ENDS\r\n"}},
        {".SUBCKT a 1\n.SUBCKT in 1\nR1 1 0 5\n.ENDS in\nX1 1 in\n.ENDS\n.SUBCKT b 2\n.ENDS\n",
         {".SUBCKT a 1\r\n.SUBCKT in 1\r\nR1 1 0 5\r\n.ENDS in\r\nX1 1 in\r\n.ENDS\r\n",
          ".SUBCKT b 2\r\n.ENDS\r\n"}},
        {".SUBCKT a 1\n* 5\xB5"
         "F\nR1 1 0 5 $ kept\n+ tc=1\n.ENDS\n",
         {".SUBCKT a 1\r\n* 5\xC2\xB5"
          "F\r\nR1 1 0 5 $ kept\r\n+ tc=1\r\n.ENDS\r\n"}},
        {".SUBCKT nopins\n.ENDS\n.SUBCKTX a 1\n.ENDSX\n", {".SUBCKT nopins \r\n.ENDS\r\n"}},
    };
    for (const SCase& c : cases) {
        const auto read = ReadSubcircuits(c.text);
        ASSERT_TRUE(read.Ok()) << c.text << read.Error().text;
        std::vector<std::string> circuits;
        for (const SSubcircuit& one : *read) {
            circuits.push_back(CircuitText(one));
            // What was made of it reads back as itself.
            EXPECT_EQ(CircuitText(ReadSubcircuits(circuits.back())->at(0)), circuits.back());
        }
        EXPECT_EQ(circuits, c.circuits) << c.text;
    }
}

TEST(SpiceLibrary, UnfinishedOnesNameTheirLine)
{
    const struct
    {
        const char* text;
        std::size_t line;
        const char* error;
    } cases[] = {
        {"* x\n.SUBCKT a 1\nR1 1 0 5\n", 2, ".SUBCKT 'a' has no .ENDS"},
        {".SUBCKT a 1", 1, ".SUBCKT 'a' has no .ENDS"},
        {".SUBCKT a 1\n.SUBCKT b\n.ENDS\n", 1, ".SUBCKT 'a' has no .ENDS"},
        {"\n\n.SUBCKT\n.ENDS\n", 3, ".SUBCKT has no name"},
        {".SUBCKT r=1\n.ENDS\n", 1, ".SUBCKT has no name"},
    };
    for (const auto& c : cases) {
        CZovLibrary library;
        const auto read = ImportSpice(library, c.text);
        ASSERT_FALSE(read.Ok()) << c.text;
        EXPECT_EQ(read.Error().text, c.error);
        EXPECT_EQ(read.Error().pos.line, c.line) << c.text;
        EXPECT_EQ(library.Count(), 0U);
    }
}

TEST(SpiceLibrary, SubcircuitsBecomeCapacitors)
{
    CZovLibrary library;
    EXPECT_EQ(*ImportSpice(library, ".SUBCKT a 1 2\nC1 1 2 1n\n.ENDS\n.SUBCKT b 1 2\n.ENDS\n"), 2U);
    const CZovRcdProps& record = library.At(0);
    EXPECT_EQ(record.Type(), ERecordType::Capacitor);
    EXPECT_EQ(record.Name(), "a");
    EXPECT_EQ(record.GetString(EPropId::Size), "0402E");
    const SDiscreteModel model = record.GetDiscreteModel().value();
    EXPECT_TRUE(model.isCircuit);
    EXPECT_EQ(model.cktDef, ".SUBCKT a 1 2\r\nC1 1 2 1n\r\n.ENDS\r\n");
    EXPECT_TRUE(IsCircuitText(model.cktDef));
}

} // namespace
} // namespace zov
