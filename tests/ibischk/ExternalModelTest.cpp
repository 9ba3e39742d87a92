// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

constexpr std::string_view kBody = "Language SPICE\n"
                                   "Corner Typ a.sp c\n"
                                   "Ports A_signal my_drive A_gnd\n"
                                   "D_to_A D_drive my_drive A_gnd 0 3 1n 1n Typ\n";

/// The body with a part replaced; nothing to replace: with text added.
std::string Swapped(std::string_view from, std::string_view to)
{
    std::string body(kBody);
    return from.empty() ? body.append(to) : body.replace(body.find(from), from.size(), to);
}

std::string InModel(const std::string& body, std::string_view type = "Output")
{
    return "[Model] m\nModel_type " + std::string(type) +
           "\nC_comp 5p NA NA\n[Voltage Range] 3 NA NA\n[External Model]\n" + body +
           "[End External Model]\n";
}

std::string InCircuit(const std::string& body)
{
    return "[External Circuit] e\n" + body + "[End External Circuit]\n";
}

SCheckHow Beside()
{
    SCheckHow how;
    how.beside = {{"a.sp", ".subckt c\n"}};
    return how;
}

std::string Expected(char severity, int code, std::size_t line)
{
    return severity + std::to_string(code) + "@" + std::to_string(line);
}

TEST(External, EveryRuleOfTheBodyFiresInModelsAndCircuits)
{
    const struct
    {
        int number;
        char severity;
        std::string_view rule;
        std::string_view from;
        std::string_view to;
        std::size_t line; ///< of the body; 0: the keyword's
        std::string_view version = "4.2";
    } kCases[] = {
        {1, 'E', "language-required", "Language SPICE\n", "", 0},
        {2, 'W', "language-first", "Language SPICE\nCorner Typ a.sp c\n",
         "Corner Typ a.sp c\nLanguage SPICE\n", 2},
        {3, 'E', "language-known", "SPICE", "C", 1},
        {4, 'E', "language-version", "SPICE", "IBIS-ISS", 1, "5.1"},
        {5, 'E', "corner-columns", "a.sp c", "a.sp", 2},
        {6, 'E', "corner-known", "Corner Typ", "Corner Slow", 2},
        {7, 'E', "corner-once", "", "Corner Typ a.sp c\n", 5},
        {8, 'E', "corner-typ", "Corner Typ", "Corner Min", 0},
        {9, 'W', "file-found", "a.sp", "b.sp", 2},
        {10, 'E', "ports-required", "Ports A_signal my_drive A_gnd\n", "", 0},
        {11, 'E', "port-once", "my_drive A_gnd\n", "my_drive A_signal\n", 3},
        {12, 'E', "digital-port", "Ports", "Ports D_drive", 3},
        {13, 'E', "converter-language", "SPICE", "VHDL-AMS", 4},
        {14, 'E', "converter-columns", "1n 1n Typ", "1n Typ", 4},
        {16, 'E', "converter-port", "my_drive A_gnd 0", "other A_gnd 0", 4},
        {17, 'E', "converter-two-ports", "my_drive A_gnd 0", "my_drive my_drive 0", 4},
        {18, 'E', "converter-value", "A_gnd 0 3", "A_gnd 0 x", 4},
        {19, 'E', "converter-time", "3 1n 1n", "3 0 1n", 4},
        {20, 'W', "converter-levels", "", "A_to_D D_receive my_drive A_gnd 2 1 Typ\n", 5},
        {21, 'E', "converter-corner", "1n 1n Typ", "1n 1n Slow", 4},
        {22, 'E', "converter-once", "", "D_to_A D_drive my_drive A_gnd 0 3 1n 1n Typ\n", 5},
        {23, 'E', "converter-typ", "1n 1n Typ", "1n 1n Min", 4},
        {24, 'E', "polarity", "1n 1n Typ", "1n 1n Typ Up", 4, "5.1"},
        {25, 'E', "polarity-version", "1n 1n Typ", "1n 1n Typ Inverting", 4},
        {26, 'W', "parameters-spice", "", "Parameters x\n", 0},
        {27, 'E', "parameter-once", "", "Parameters x x\n", 5},
        {28, 'E', "parameter-version", "", "Parameters x = 1\n", 5},
        {29, 'E', "parameter-value", "", "Parameters x =\n", 5, "6.0"},
        {30, 'E', "parameter-reference", "", "Parameters x = f.par(r(x)\n", 5, "6.0"},
        {30, 'E', "parameter-reference", "", "Parameters x = (r(x))\n", 5, "6.0"},
        {30, 'E', "parameter-reference", "", "Parameters x = f.par()\n", 5, "6.0"},
        {31, 'E', "parameter-file-kind", "", "Parameters x = f.IBS(r(x))\n", 5, "6.0"},
        {32, 'W', "parameter-file-found", "", "Converter_Parameters x = f.par(r(x))\n", 5, "6.0"},
    };
    for (const auto& c : kCases) {
        const std::string body = Swapped(c.from, c.to);
        ExpectRule({"external-model/" + std::string(c.rule), c.version, InModel(body),
                    Expected(c.severity, 2300 + c.number, 8 + c.line)},
                   Beside());
        ExpectRule({"external-circuit/" + std::string(c.rule), c.version, InCircuit(body),
                    Expected(c.severity, 2400 + c.number, 4 + c.line)},
                   Beside());
    }
}

TEST(External, RulesOfModelsAndOfCircuitsFire)
{
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"external-model/converter-digital", InModel(Swapped("D_drive", "D_receive")), "E2315@12"},
        {"external-model/port-reserved", InModel(Swapped("Ports", "Ports extra")), "E2340@11"},
        {"external-model/port-required", InModel(Swapped("A_signal", "A_puref")), "E2341@8"},
        {"external-model/port-required", InModel(std::string(kBody), "Output_diff"), "E2341@8"},
        {"external-model/port-type", InModel(Swapped("Ports", "Ports A_pos")), "E2342@11"},
        {"external-model/digital-required", InModel(std::string(kBody), "I/O"), "W2343@8"},
        {"external-model/reference-required", InModel(Swapped("Ports", "Ports A_extref")),
         "W2344@8"},
        {"external-circuit/name-once",
         InCircuit(std::string(kBody)) + InCircuit(std::string(kBody)), "E2440@10"},
        {"external-circuit/used", InCircuit(std::string(kBody)), "W2441@4"},
    };
    for (const auto& c : kCases) {
        ExpectRule({c.rule, "4.2", c.body, c.expected}, Beside());
    }
}

TEST(External, ParameterFilesAreCheckedOnce)
{
    SCheckHow how = Beside();
    how.beside.emplace_back("f.par",
                            "(r\n(Model_Specific (x (Usage In) (Type Float) (Value 1))))\n");
    how.beside.emplace_back("g.par", "(r (Model_Specific (x (Usage Info) (Type Float) (Value 1)\n"
                                     "(Description \"length\"))))\n");
    const std::string body = InModel("Language IBIS-ISS\nCorner Typ a.sp c\n"
                                     "Parameters a = f.par(r(x)) b = g.par(r(x)) c = f.par(r(y))\n"
                                     "Parameters d = \"no(file\"\nPorts A_signal D\n"
                                     "D_to_A D_drive D A_gnd 0 3 1n 1n Typ\n");
    const SChecked checked = CheckText(Ibs("6.0", body), how);
    EXPECT_EQ(Codes(checked, 2300, 2499), "") << checked.text;
    EXPECT_EQ(Codes(checked, 4600, 4799), "E4629@2") << checked.text;
    const auto found = std::ranges::find(checked.findings, 4629, &STaken::code);
    ASSERT_NE(found, checked.findings.end());
    EXPECT_EQ(found->file, "f.par");
}

TEST(External, SoundBodiesAreSilent)
{
    const struct
    {
        std::string_view version;
        std::string body;
    } kCases[] = {
        {"4.2", InModel(std::string(kBody))},
        {"5.1", InModel(Swapped("1n 1n Typ", "1n 1n Typ Non-Inverting"))},
        {"4.2", InModel("Language Verilog-AMS\nCorner Typ a.sp c\nParameters a b\n"
                        "Ports A_signal A_puref A_gnd D_drive D_enable D_receive\n",
                        "I/O")},
        {"6.0", InModel("Language IBIS-ISS\nCorner Typ a.sp c\nParameters a = \"x y\" b = 2\n"
                        "Converter_Parameters hi = 3\nPorts A_signal_pos A_signal_neg p n\n"
                        "D_to_A D_drive p A_gnd 0 hi 1n 1n Typ Non-Inverting\n"
                        "D_to_A D_drive n A_gnd 0 hi 1n 1n Typ Inverting\n",
                        "Output_diff")},
    };
    for (const auto& c : kCases) {
        const SChecked checked = CheckText(Ibs(c.version, c.body), Beside());
        EXPECT_EQ(Codes(checked, 2300, 2499), "") << checked.text;
    }
}

} // namespace

} // namespace zov::ibischk::test
