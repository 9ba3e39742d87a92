// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiReserved.h"
#include "ibischk/AmiSupport.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

using enum EAmiPart;

TEST(AmiTree, EveryRuleFires)
{
    constexpr SAmiCase kRules[] = {
        {"parentheses", Whole, "", "(r (Model_Specific (a)", "", "E4619"},
        {"parentheses", Whole, "", "(r (Model_Specific (a))))", "", "E4619"},
        {"branch-name", Specific, "6.0", "(b () (p <In Float> (Value 1)))",
         "(b (p <In Float> (Value 1)))", "E4634"},
        {"mixed-content", Specific, "6.0", "(b 1 (p <In Float> (Value 1)))", "", "E4635"},
        {"mixed-content", Specific, "6.0", "(b (p <In Float> (Value 1)) 1)", "", "E4635"},
        {"token", Specific, "6.0", R"((p <In String> (Value"7")))",
         R"((p <In String> (Value "7")))", "W4664"},
        {"token", Specific, "6.0", R"((p <In String> (Value "a"b)))", "", "E4664"},
        {"token", Specific, "6.0", R"(("b" (p <In Float> (Value 1))))", "", "E4664"},
        {"outside-root", Whole, "", "note (r (Model_Specific (p <In Float> (Value 1))))", "",
         "E4668"},
        {"outside-root", Whole, "", "(r (Model_Specific)) (r)", "", "E4668"},
        {"root-name", Whole, "", "((Model_Specific (p <In Float> (Value 1))))", "", "E4682"},
        {"root-name", Whole, "", "", "", "E4682"},
        {"no-branches", Whole, "", "(r (Description \"x\"))", "", "E4684"},
        {"branch-required", Whole, "", "(r (Model_Specific (p <In Float> (Value 1))))", "",
         "E4622"},
        {"branch-known", Whole, "", "(r (Models (p <In Float> (Value 1))))", "", "E4623"},
        {"branch-once", Whole, "", "(r (Model_Specific (p <In Float> (Value 1))) (Model_Specific))",
         "", "E4642"},
        {"branch-once", Whole, "", "(r (Reserved_Parameters) (Reserved_Parameters))", "", "E4642"},
        {"leaf-unexpected", Whole, "", "(r (x 1) (Model_Specific))", "", "E4644"},
        {"leaf-once", Whole, "", "(r (Description \"x\") (Description \"x\") (Model_Specific))", "",
         "E4640"},
        {"description", Whole, "", "(r (Description x) (Model_Specific))", "", "E4663"},
        {"branch-empty", Whole, "", "(r (Model_Specific))", "", "W4716"},
    };
    for (const SAmiCase& rule : kRules) {
        ExpectAmiRule(rule);
    }
}

TEST(AmiTree, TokensAreClassified)
{
    constexpr struct
    {
        std::string_view run;
        EAmiToken kind;
    } kRuns[] = {
        {"0", EAmiToken::Integer},    {"-12", EAmiToken::Integer}, {"+3", EAmiToken::Integer},
        {"1.0", EAmiToken::Real},     {".5", EAmiToken::Real},     {"5.", EAmiToken::Real},
        {"-1e-12", EAmiToken::Real},  {"1E+3", EAmiToken::Real},   {"2.5e3", EAmiToken::Real},
        {"True", EAmiToken::Boolean}, {"true", EAmiToken::Word},   {"10p", EAmiToken::Word},
        {"0x10", EAmiToken::Word},    {"inf", EAmiToken::Word},    {"1d3", EAmiToken::Word},
        {".", EAmiToken::Word},       {"1e", EAmiToken::Word},     {"-", EAmiToken::Word},
        {"1.2.3", EAmiToken::Word},   {".e5", EAmiToken::Word},
    };
    for (const auto& row : kRuns) {
        EXPECT_EQ(ClassifyAmiRun(row.run), row.kind) << row.run;
    }
}

TEST(AmiTree, FindingsNameTheirLines)
{
    const SChecked checked =
        CheckText("(r | root\n (Reserved_Parameters\n  (Nope 1))\n\n (Model_Specific\n  (p\n"
                  "   (Usage Info)\n   (Type Float)\n   (Value True))))\n",
                  {.type = EFileType::Ami, .name = "test.ami"});
    EXPECT_EQ(Codes(checked), "E4624@3 E4625 E4625 E4648@9");
    EXPECT_EQ(MessageOf(checked, 4648), "p: The Value value True for Type Float is invalid");
}

TEST(AmiTree, DepthIsBoundedWithoutRecursion)
{
    const auto nested = [](std::size_t depth) {
        std::string text = "(r ";
        for (std::size_t i = 0; i < depth; ++i) {
            text += "(a";
        }
        return text + std::string(depth + 1, ')');
    };
    const SCheckHow how = {.type = EFileType::Ami, .name = "test.ami"};
    EXPECT_EQ(Codes(CheckText(nested(100000), how)), "E4620");
    EXPECT_EQ(Codes(CheckText(std::string(100000, '('), how)), "E4619@1");
    EXPECT_EQ(Codes(CheckText("(r (a \")\")\n(b)\n(c (d)\n\"(\"", how)), "E4619@3");
    EXPECT_FALSE(Has(CheckText(nested(200), how), 4620));
}

TEST(AmiTree, StringsMayHoldParenthesesAndPipes)
{
    const SChecked checked = CheckText(
        AmiFile("6.0", "(Description \"a (b | c\n)) d\")", R"((p <In String> (Value "(")))"),
        {.type = EFileType::Ami, .name = "test.ami"});
    EXPECT_EQ(checked.text, "");
}

TEST(AmiDriver, PrintsWhatItDoes)
{
    const SCheckHow how = {.type = EFileType::Ami, .name = "a.ami", .progress = true};
    EXPECT_EQ(CheckText(AmiFile("6.0", ""), how).text,
              "\n... Reading a.ami\n\n... Checking a.ami for AMI Version 6.0 Compatibility...\n\n"
              "... Done Checking a.ami\n");
    EXPECT_EQ(CheckText(AmiFile("", ""), how).text,
              "\n... Reading a.ami\n\n... Checking a.ami for Implicit AMI Version 5.0 "
              "Compatibility...\n\n... Done Checking a.ami\n");
}

TEST(AmiDriver, OtherParameterFilesHaveOnlySpecificOnes)
{
    const SCheckHow how = {.type = EFileType::Parameters, .name = "test.txt"};
    constexpr SAmiCase kRules[] = {
        {"reserved-refused", Whole, "", "(r (Reserved_Parameters (x 1)) (Model_Specific))", "",
         "E4685"},
        {"branch-required", Whole, "", "(r (Reserved_Parameters (x 1)))", "", "E4622"},
        {"info-only", Whole, "", "(r (Model_Specific (p <In Float> (Value 1))))",
         "(r (Model_Specific (p <Info Float> (Value 1))))", "E4629"},
        {"format-type", Whole, "", "(r (Model_Specific (p <Info Float> (Table (1 2)))))",
         "(r (Model_Specific (p <Info Float> (Range 1 0 2))))", "E4636"},
    };
    for (const SAmiCase& rule : kRules) {
        ExpectAmiRule(rule, how);
    }
}

TEST(AmiReserved, TheTableKeepsItsDoubleRows)
{
    const auto table = ReservedTable();
    for (const std::string_view name : {"Rx_UniformNoise", "Rx_R"}) {
        EXPECT_EQ(std::ranges::count(table, name, &SReservedRow::name), 2) << name;
    }
    // The first row of a name is the one that counts.
    for (std::size_t row = 0; row < table.size(); ++row) {
        EXPECT_LE(*FindReserved(table[row].name), row);
    }
    EXPECT_FALSE(FindReserved("ignore_bits"));
}

TEST(AmiReserved, EveryRuleFires)
{
    constexpr SAmiCase kRules[] = {
        {"parameter-known", Reserved, "6.0", "(Nope <Info Float> (Value 1))", "", "E4624"},
        {"parameter-known", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value 1) (Label 1))",
         "(Ignore_Bits <Info Integer> (Value 1) (Description \"x\"))", "E4624"},
        {"parameter-required", Whole, "",
         "(r (Reserved_Parameters (GetWave_Exists <Info Boolean> (Value True))))", "", "E4625"},
        {"parameter-version", Reserved, "5.1", "(Tx_Dj <Info Float> (Value 1))", "", "E4669"},
        {"parameter-version", Reserved, "6.0", "(Use_Init_Output <Info Boolean> (Value True))", "",
         "E4669"},
        {"parameter-version", Reserved, "5.0", "", "", "E4669"},
        {"parameter-once", Reserved, "6.0",
         "(Ignore_Bits <Info Integer> (Value 1)) (Ignore_Bits <Info Integer> (Value 1))",
         "(Ignore_Bits <Info Integer> (Value 1))", "E4647"},
        {"one-side", Reserved, "6.0",
         "(Tx_Jitter <Info UI> (Gaussian 0 1)) (Rx_Clock_PDF <Info UI> (Gaussian 0 1))",
         "(Tx_Jitter <Info UI> (Gaussian 0 1))", "E4690"},
        {"leaf-expected", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value 1) (Default (a 1)))",
         "", "E4628"},
        {"leaf-once", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value 1) (Usage Info))", "",
         "E4640"},
        {"leaf-once", Reserved, "6.0", "(Tx_Dj <Info UI> (Value 1) (Range 1 0 2))", "", "E4640"},
        {"leaf-required", Reserved, "6.0", "(Ignore_Bits (Type Integer) (Value 1))", "", "E4630"},
        {"leaf-required", Reserved, "", "(Ignore_Bits (Usage Info) (Value 1))", "", "W4630"},
        {"value-required", Reserved, "6.0", "(Ignore_Bits (Usage) (Type Integer) (Value 1))", "",
         "E4626"},
        {"value-required", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value))", "", "E4626"},
        {"one-word", Reserved, "6.0", "(Ignore_Bits (Usage Info Out) (Type Integer) (Value 1))", "",
         "E4631"},
        {"word-legal", Reserved, "6.0", "(Ignore_Bits <In Integer> (Value 1))",
         "(Ignore_Bits <Out Integer> (Value 1))", "E4627"},
        {"word-legal", Reserved, "6.0", "(Ignore_Bits (Usage \"Info\") (Type Integer) (Value 1))",
         "", "E4627"},
        {"word-legal", Reserved, "6.0", "(Ignore_Bits <Info Float> (Value 1))", "", "E4627"},
        {"word-legal", Reserved, "6.0", "(Tx_Jitter <Info UI> (Value 1))", "", "E4627"},
        {"word-legal", Reserved, "6.0", "(Tx_Jitter <Info UI> (Default 1))", "", "E4627"},
        {"format-or-default", Reserved, "6.0", "(Ignore_Bits <Info Integer>)",
         "(Ignore_Bits <Info Integer> (Default 1))", "E4641"},
        {"value-type", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value 1.0))", "", "E4648"},
        {"dep-version", Reserved, "6.0", "(Tx_Dj <Dep UI> (Value 1))", "", "E4665"},
        {"dep-resolve", Reserved, "6.1", "(Tx_Dj <Dep UI> (Value 1))",
         "(Resolve_Exists <Info Boolean> (Value True)) (Tx_Dj <Dep UI> (Value 1))", "E4666"},
        {"version-first", Whole, "",
         "(r (Reserved_Parameters (Init_Returns_Impulse <Info Boolean> (Value True)) (AMI_Version "
         "<Info String> (Value \"6.0\")) (GetWave_Exists <Info Boolean> (Value True))))",
         "", "E4637"},
        {"version-known", Reserved, "6.5", "", "", "E4638"},
        {"branch-order", Whole, "",
         "(r (Model_Specific (p <In Float> (Value 1))) (Reserved_Parameters (AMI_Version <Info "
         "String> (Value \"6.0\")) (Init_Returns_Impulse <Info Boolean> (Value True)) "
         "(GetWave_Exists <Info Boolean> (Value True))))",
         "(r (Model_Specific (p <In Float> (Value 1))) (Reserved_Parameters (Init_Returns_Impulse "
         "<Info Boolean> (Value True)) (GetWave_Exists <Info Boolean> (Value True))))",
         "E4643"},
        {"leaf-unexpected", Reserved, "6.0", "(Ignore_Bits 5)", "", "E4644"},
        {"value-range", Reserved, "6.0", "(Ignore_Bits <Info Integer> (Value -1))",
         "(Ignore_Bits <Info Integer> (Value 0))", "E4670"},
        {"value-range", Reserved, "6.0", "(Tx_Rj <Info UI> (Range 0 -1 1))",
         "(Tx_Rj <Info UI> (Range 0 0 1))", "C4670"},
        {"supporting-row", Reserved, "6.0",
         "(Supporting_Files <Info String> (Table (\"a\" \"b\")))", "", "E4679"},
        {"supporting-relative", Reserved, "6.0",
         "(Supporting_Files <Info String> (Table (\"/a\")))", "", "E4680"},
        {"supporting-exists", Reserved, "6.0", "(Supporting_Files <Info String> (Table (\"a\")))",
         "(Supporting_Files <Info String> (Table (\"test.ami\")))", "W4681"},
        {"modulation", Reserved, "6.1", "(Modulation <Info String> (Value \"PAM3\"))",
         "(Modulation <Info String> (Value \"NRZ\"))", "E4674"},
        {"pam4-mapping", Reserved, "6.1", "(PAM4_Mapping <Info String> (Value \"0122\"))", "",
         "E4675"},
        {"bci-state", Reserved, "7.0", "(BCI_State <InOut String> (Value \"Sleeping\"))", "",
         "W4676"},
        {"clock-input", Reserved, "7.1", "(Rx_Use_Clock_Input <In String> (Value \"Edge\"))",
         "(Rx_Use_Clock_Input <In String> (List \"None\" \"Times\"))", "E4677"},
        {"ts4-extension", Reserved, "7.0", "(Ts4file <Info String> (Value \"a.s2p\"))", "",
         "E4686"},
        {"ts4-exists", Reserved, "7.0", "(Ts4file <Info String> (Value \"a.s4p\"))", "", "W4687"},
        {"levels", Reserved, "7.2", "(Modulation_Levels <Info Integer> (Value 1))",
         "(Modulation_Levels <Info Integer> (Value 3))", "E4691"},
        {"level-numbers", Reserved, "7.2",
         "(Modulation_Levels <Info Integer> (Value 4)) (PAM_Thresholds <Info String> (Value \"-1 "
         "1\"))",
         "(Modulation_Levels <Info Integer> (Value 4)) (PAM_Thresholds <Info String> (Value \"-1 0 "
         "1\"))",
         "W4692"},
        {"number-list", Reserved, "7.2", "(PAM_Offsets <Info String> (Value \"1 x\"))", "",
         "E4693"},
        {"rising", Reserved, "7.2", "(PAM_Thresholds <Info String> (Value \"1 0\"))", "", "C4694"},
        {"rising", Reserved, "6.0", "(Tx_Jitter <Info UI> (Table (1 0.1 0.5) (2 0.1 0.5)))",
         "(Tx_Jitter <Info UI> (Table (1 0.1 0.5) (2 0.2 0.5)))", "W4694"},
        {"table-columns", Reserved, "6.0", "(Tx_Jitter <Info UI> (Table (1 0.1)))", "", "E4660"},
        {"training-mode", Reserved, "7.1", "(BCI_Training_Mode <In String> (Value \"Fast\"))", "",
         "C4700"},
        {"repeater-type", Reserved, "6.0", "(Repeater_Type <Info String> (Value \"Booster\"))",
         "(Repeater_Type <Info String> (Value \"Retimer\"))", "E4672"},
        {"special-name", Reserved, "7.0", "(Special_Param_Names <Info String> (Table (\"a\")))", "",
         "W4699"},
        {"default-excluded", Reserved, "7.0",
         "(Special_Param_Names <Info String> (Table (\"a\")) (Default \"a\"))", "", "E4656"},
    };
    for (const SAmiCase& rule : kRules) {
        ExpectAmiRule(rule);
    }
}

TEST(AmiReserved, ParametersAgree)
{
    constexpr std::string_view kNoWave =
        "(r (Reserved_Parameters (Init_Returns_Impulse <Info Boolean> (Value False)) "
        "(GetWave_Exists <Info Boolean> (Value False)) ";
    const std::string noWave(kNoWave);
    const struct
    {
        SAmiCase row;
        std::string whole; ///< in place of row.bad
    } kWithout[] = {
        {{"flow-none", Whole, "", "", "", "W4671"}, noWave + "))"},
        {{"init-output-getwave", Whole, "", "", "", "E4689"},
         noWave + "(Use_Init_Output <Info Boolean> (Value False))))"},
        {{"retimer-getwave", Whole, "", "", "", "E4673"},
         noWave + "(Repeater_Type <Info String> (Value \"Retimer\"))))"},
        {{"clock-input-getwave", Whole, "", "", "", "E4678"},
         noWave + "(Rx_Use_Clock_Input <Info String> (Value \"Wave\"))))"},
        {{"training-getwave", Whole, "", "", "", "E4701"},
         noWave + "(BCI_Training_Mode <Info String> (Value \"GetWave\"))))"},
        {{"training-getwave", Whole, "", "", "", "W4701"},
         noWave + "(BCI_Training_Mode <Info String> (Value \"Impulse\"))))"},
        {{"must-return", Whole, "", "", "", "E4718"},
         noWave + "(Use_v7p1_AMI_Flow <Info Boolean> (Value True))))"},
    };
    for (const auto& c : kWithout) {
        SAmiCase row = c.row;
        row.bad = c.whole;
        ExpectAmiRule(row);
    }
    constexpr SAmiCase kRules[] = {
        {"pam4-thresholds", Reserved, "6.1", "(Modulation <Info String> (Value \"PAM4\"))",
         "(Modulation <Info String> (Value \"PAM4\")) (PAM4_UpperThreshold <Info Float> (Value 1)) "
         "(PAM4_LowerThreshold <Info Float> (Value 0))",
         "E4697"},
        {"threshold-order", Reserved, "6.1",
         "(PAM4_UpperThreshold <Info Float> (Value 1)) (PAM4_CenterThreshold <Info Float> (Value "
         "1))",
         "", "W4698"},
        {"pam4-unused", Reserved, "6.1", "(PAM4_Mapping <Info String> (Value \"0132\"))", "",
         "C4695"},
        {"needs", Reserved, "7.0", "(BCI_Protocol <In String> (Value \"x\"))", "", "E4710"},
        {"only-with", Reserved, "7.0", "(Rx_R <Info Float> (Value 50))",
         "(Ts4file <Info String> (Value \"test.s4p\")) (Rx_R <Info Float> (Value 50))", "E4711"},
        {"only-with", Reserved, "7.0",
         "(Tx_R <Info Float> (Value 50)) (Ts4file <Info String> (Value \"test.s4p\"))",
         "(Ts4file <Info String> (Value \"test.s4p\")) (Tx_V <Info Float> (Value 1))", "E4711"},
        {"only-with", Reserved, "7.2", "(PAM_Offsets <Info String> (Value \"1\"))", "", "W4711"},
        {"excludes", Reserved, "7.0",
         "(Rx_Noise <Info Float> (Value 1)) (Rx_GaussianNoise <Info Float> (Value 1))",
         "(Rx_Noise <Info Float> (Value 1))", "E4713"},
        {"excludes", Reserved, "7.2",
         "(Modulation_Levels <Info Integer> (Value 2)) (Modulation <In String> (Value \"NRZ\"))",
         "", "E4713"},
        {"together", Reserved, "7.1", "(Signal_Name <In String> (Value \"x\"))",
         "(Signal_Name <In String> (Value \"x\")) (Component_Name <In String> (Value \"x\"))",
         "E4717"},
        {"without-effect", Reserved, "6.0", "(Tx_Sj <Info UI> (Value 0.1))",
         "(Tx_Sj <Info UI> (Value 0.1)) (Tx_Sj_Frequency <Info Float> (Value 1e6))", "W4688"},
    };
    for (const SAmiCase& rule : kRules) {
        ExpectAmiRule(rule,
                      {.type = EFileType::Ami, .name = "test.ami", .beside = {{"test.s4p", ""}}});
    }
}

TEST(AmiReserved, AnUnquotedVersionStillCounts)
{
    const SChecked checked = CheckText(
        Expand("(r (Reserved_Parameters (AMI_Version <Info String> (Default 5.1)) "
               "(Init_Returns_Impulse <Info Boolean> (Value True)) (GetWave_Exists <Info Boolean> "
               "(Value True)) (Use_Init_Output <Info Boolean> (Value True))))"),
        {.type = EFileType::Ami, .name = "test.ami"});
    EXPECT_EQ(Codes(checked), "E4648@1 E4669@1");
    EXPECT_EQ(MessageOf(checked, 4669),
              "Parameter 'Use_Init_Output' is not supported in AMI_Version 5.1");
}

TEST(AmiSpecific, EveryRuleFires)
{
    constexpr SAmiCase kRules[] = {
        {"value-count", Specific, "6.0", "(p <In Float> (Range 0 1) (Default 0))",
         "(p <In Float> (Range 0 -1 1) (Default 0.5))", "E4632"},
        {"value-count", Specific, "6.0", "(p <In Float> (Format Increment 0 0 1))",
         "(p <In Float> (Format Increment 0 0 1 0.5))", "E4632"},
        {"value-count", Specific, "6.0", "(p <In Float> (Default 1 2))",
         "(p <In Float> (Default 1))", "E4632"},
        {"value-least", Specific, "6.0", "(p <In Float> (Format List))",
         "(p <In Float> (Format List 1))", "E4633"},
        {"format-type", Specific, "6.0", "(p <In String> (Range \"a\" \"b\" \"c\"))", "", "E4636"},
        {"format-type", Specific, "6.0", "(p <Info Integer> (Gaussian 0 1))",
         "(p <Info UI> (Gaussian 0 1))", "E4636"},
        {"format-usage", Specific, "6.0", "(p <In UI> (DjRj 0 1 1))", "(p <Out UI> (DjRj 0 1 1))",
         "W4639"},
        {"limit-order", Specific, "6.0", "(p <In Float> (Range 1 2 0))",
         "(p <In Float> (Range 1 0 2))", "E4645"},
        {"limit-order", Specific, "6.0", "(p <Info UI> (DjRj 1 0 1))", "", "E4645"},
        {"limit-order", Specific, "6.0", "(p <Info UI> (Dual-Dirac 1 0 1))",
         "(p <Info UI> (Dual-Dirac 0 1 1))", "C4645"},
        {"typ-range", Specific, "6.0", "(p <In Float> (Range 0.0 1.0 2))", "", "E4646"},
        {"value-type", Specific, "6.0", "(p <In Integer> (List 1.5 2))",
         "(p <In Integer> (List 1 2))", "E4648"},
        {"value-type", Specific, "6.0", "(p <In Float> (Value 10p))", "(p <In Float> (Value 1e1))",
         "E4648"},
        {"value-type", Specific, "6.0", "(p <In Boolean> (Value true))",
         "(p <In Boolean> (Value True))", "E4648"},
        {"value-type", Specific, "6.0", "(p <In Float> (Value 1e999))", "", "E4648"},
        {"default-range", Specific, "6.0", "(p <In Float> (Range 0 0 1) (Default 2))", "", "E4649"},
        {"default-grid", Specific, "6.0", "(p <In Float> (Increment 0 0 1 0.25) (Default 0.3))",
         "(p <In Float> (Increment 0 0 1 0.25) (Default 0.75))", "C4720"},
        {"default-grid", Specific, "6.0", "(p <In Float> (Steps 0 0 1 3) (Default 0.5))",
         "(p <In Float> (Steps 0 0 1 10) (Default 0.7))", "C4720"},
        {"default-listed", Specific, "6.0", "(p <In Integer> (List 1 2) (Default 3))",
         "(p <In Float> (List 1 2.0) (Default 2))", "E4650"},
        {"default-listed", Specific, "6.0", "(p <In Float> (Corner 1 2 3) (Default 4))",
         "(p <In Float> (Corner 2 1 3))", "W4650"},
        {"increment", Specific, "6.0", "(p <In Float> (Increment 0 0 1 0))", "", "E4651"},
        {"steps", Specific, "6.0", "(p <In Float> (Steps 0 0 1 2.5))",
         "(p <In Float> (Steps 0 0 1 2))", "E4652"},
        {"tip-without-list", Specific, "6.0", "(p <In Float> (Value 1) (List_Tip \"a\"))", "",
         "E4653"},
        {"tip-count", Specific, "6.0", "(p <In Float> (List 2 1 2) (List_Tip \"a\" \"b\"))",
         "(p <In Float> (List 2 1) (List_Tip \"a\" \"b\"))", "E4654"},
        {"list-repeat", Specific, "6.0", "(p <In Float> (List 0 0.0 1) (Default 0))", "", "C4714"},
        {"tip-string", Specific, "6.0", "(p <In Float> (List 2) (List_Tip a))", "", "E4655"},
        {"tip-version", Specific, "5.1", "(p <In Float> (List 2) (List_Tip \"a\"))", "", "W4667"},
        {"default-excluded", Specific, "6.0", "(p <In Float> (Value 3) (Default 3))", "", "E4656"},
        {"default-out", Specific, "6.0", "(p <Out Float> (Range 0 0 1) (Default 0))",
         "(p <Out Float> (Range 0 0 1))", "E4657"},
        {"sigma", Specific, "6.0", "(p <Info Float> (Gaussian 0 -1))", "", "E4658"},
        {"table-empty", Specific, "6.0", "(p <In Float> (Table (Labels \"a\")))",
         "(p <In Float> (Table (Labels \"a\") (1)))", "E4659"},
        {"table-columns", Specific, "6.0", "(p <In Float> (Table (1 2) (3)))",
         "(p <In Float> (Table (1 2) (3 4)))", "E4660"},
        {"table-columns", Specific, "6.0", "(p <In Float> (Format Table (Labels a) (1 2)))",
         "(p <In Float> (Format Table (Labels a b) (1 2)))", "E4660"},
        {"table-labels", Specific, "6.0", "(p <In Float> (Table (1) (Labels \"a\")))", "", "E4661"},
        {"table-types", Specific, "6.0", "(p <In Float Float> (Table (1 2 3)))",
         "(p <In Integer Float> (Table (1 2.5)))", "E4662"},
        {"value-type", Specific, "6.0", "(p <In Integer Float> (Table (1.5 2)))", "", "E4648"},
        {"leaf-expected", Specific, "6.0", "(p <In Float> (Table (1 (2))))", "", "E4628"},
        {"one-word", Specific, "6.0", "(p <In Float Float> (Value 1))", "", "E4631"},
        {"word-legal", Specific, "6.0", "(p <Inout Float> (Value 1))",
         "(p <InOut Float> (Value 1))", "E4627"},
        {"word-legal", Specific, "6.0", "(p <In Bool> (Value True))", "", "E4627"},
        {"word-legal", Specific, "6.0", "(p <In Float> (Format Values 1))",
         "(p <In Float> (Format Value 1))", "E4627"},
        {"leaf-required", Specific, "6.0", "(p (Type Float) (Value 1))", "", "E4630"},
        {"description", Specific, "6.0", "(p <In Float> (Value 1) (Description text))", "",
         "E4663"},
        {"leaf-once", Specific, "6.0", "(b (p <In Float> (Value 1))) (b (p <In Float> (Value 1)))",
         "(b (p <In Float> (Value 1))) (c (p <In Float> (Value 1)))", "E4640"},
        {"leaf-unexpected", Specific, "6.0", "(b (x 1) (p <In Float> (Value 1)))", "", "E4644"},
        {"tap-name", Specific, "6.0", "(main <In Tap> (Value 1))", "", "N4708"},
        {"tap-run", Specific, "6.0", "(ffe (-1 <In Tap> (Value 1)) (1 <In Tap> (Value 1)))",
         "(ffe (-1 <In Tap> (Value 1)) (0 <In Tap> (Value 1)) (1 <In Tap> (Value 1)))", "C4709"},
        {"tap-run", Specific, "6.0", "(ffe (0 <In Tap> (Value 1)) (p <In Float> (Value 1)))", "",
         "C4709"},
        {"reserved-name", Specific, "6.0", "(Modulation <In String> (Value \"x\"))", "", "C4715"},
        {"branch-empty", Specific, "6.0", "(b)", "", "W4716"},
    };
    for (const SAmiCase& rule : kRules) {
        ExpectAmiRule(rule);
    }
}

TEST(AmiSpecific, ParametersAreNamedByTheirPaths)
{
    const SChecked checked =
        CheckText(AmiFile("6.0", "", "(FFE (Taps (-1 <In Tap> (Value x)) (0 <In Tap> (Value 1))))"),
                  {.type = EFileType::Ami, .name = "test.ami"});
    EXPECT_EQ(MessageOf(checked, 4648), "FFE.Taps.-1: The Value value x for Type Tap is invalid");
    EXPECT_EQ(checked.findings.front().table, "FFE.Taps.-1");
}

} // namespace

} // namespace zov::ibischk::test
