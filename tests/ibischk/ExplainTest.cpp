// SPDX-License-Identifier: Apache-2.0
// The explanations: every message has one, and its examples are what the checker finds.
#include "ibischk/Explain.h"

#include "base/Text.h"
#include "ibischk/GoodFiles.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace zov::ibischk::test {
namespace {

using TBlock = std::vector<std::string>; ///< a keyword line and what follows it

bool IsKeywordLine(std::string_view line)
{
    return Trim(line).starts_with('[');
}

/// "[Pin" of "[Pin] signal_name"; the word in front of blank or "=" of other lines. A model has one
/// of the lines that name its file.
std::string_view HeadOf(std::string_view line)
{
    const std::string_view text = Trim(line);
    if (text.starts_with("File_")) {
        return "File_";
    }
    return text.substr(0, text.find_first_of(text.starts_with('[') ? "]" : " ="));
}

std::vector<TBlock> BlocksOf(std::string_view text)
{
    std::vector<TBlock> blocks(1);
    for (const std::string_view line : Split(text, '\n')) {
        if (IsKeywordLine(line)) {
            blocks.emplace_back();
        }
        if (!line.empty()) {
            blocks.back().emplace_back(line);
        }
    }
    return blocks;
}

std::size_t FindBlock(const std::vector<TBlock>& blocks, std::string_view head)
{
    const auto found = std::ranges::find_if(blocks, [&](const TBlock& block) {
        return !block.empty() && EqualsNoCase(HeadOf(block.front()), head);
    });
    return static_cast<std::size_t>(found - blocks.begin());
}

/// Behind which keyword of the whole file one stands that it lacks.
std::string_view Before(std::string_view head)
{
    for (const std::string_view header : {"[Notes", "[Disclaimer", "[Date", "[Comment Char"}) {
        if (EqualsNoCase(head, header)) {
            return "[File Rev";
        }
    }
    if (EqualsNoCase(head, "[Model Selector")) {
        return "[Pin";
    }
    return EqualsNoCase(head, "[Package Model") ? "[Package" : "[Falling Waveform";
}

/// Puts lines of sub-parameters in the place of those of the same name, others behind the last.
void PutLines(TBlock& block, const TBlock& lines)
{
    TBlock result;
    std::vector<bool> put(lines.size());
    for (const std::string& line : block) {
        bool replaced = false;
        for (std::size_t i = 0; i < lines.size() && !IsKeywordLine(line); ++i) {
            if (!EqualsNoCase(HeadOf(lines[i]), HeadOf(line))) {
                continue;
            }
            replaced = true;
            if (!put[i]) {
                put[i] = true;
                result.push_back(lines[i]);
            }
        }
        if (!replaced) {
            result.push_back(line);
        }
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!put[i]) {
            result.push_back(lines[i]);
        }
    }
    block = std::move(result);
}

/// The file that the examples of a family go into.
struct SHost
{
    std::string text;
    std::string_view home; ///< the keyword that lines without one belong to
    SCheckHow how = {};
};

constexpr std::string_view kStubs =
    "[Define Package Model] p\n[Manufacturer] m\n[OEM] o\n[Description] d\n[Number of Pins] 3\n"
    "[Number of Sections] 3\n[Pin Numbers]\nA Len=0 L=1n C=1p R=10m/\nB Len=1.2 L=2n C=0.8p / "
    "Fork\n"
    "Len=0 L=1n /\nEndfork Len=0 C=1p/\nC Len=0 L=1n /\n[End Package Model]\n";
constexpr std::string_view kMatrices =
    "[Define Package Model] p\n[Manufacturer] m\n[OEM] o\n[Description] d\n[Number of Pins] 2\n"
    "[Pin Numbers]\nA\nB\n[Model Data]\n[Resistance Matrix] Sparse_matrix\n[Row] A\nA 0.1\n"
    "[Inductance Matrix] Banded_matrix\n[Bandwidth] 1\n[Row] A\n2n 1n\n[Row] B\n2n\n"
    "[End Model Data]\n[End Package Model]\n";
constexpr std::string_view kCircuit =
    "[Model] m\nModel_type I/O\nC_comp 1p NA NA\n[C Comp Model]\nC_comp_model_mode All\n"
    "File_TS0 c.s2p\nNumber_of_terminals = 2\n1 Buffer_I/O\n2 A_gnd\n[End C Comp Model]\n";
constexpr std::string_view kDomain =
    "[Component] c\n[Manufacturer] m\n[Package]\nR_pkg 1 NA NA\nL_pkg 1n NA NA\nC_pkg 1p NA NA\n"
    "[Pin] signal_name model_name\n1 VDD POWER\n2 VSS GND\n3 VDDQ POWER\n4 VSSQ GND\n"
    "[Bus Label] signal_name\nVDD_A VDD\nVSS_A VSS\n[PDN Domain] d\n[PDN Model] m\n"
    "C_pdn 1n NA NA\n[End PDN Model]\n[End PDN Domain]\n";
constexpr std::string_view kExternal =
    "[Model] m\nModel_type Output\nC_comp 5p NA NA\n[Voltage Range] 3 NA NA\n[External Model]\n"
    "Language IBIS-ISS\nCorner Typ a.sp c\nPorts A_signal my_drive A_gnd\n"
    "D_to_A D_drive my_drive A_gnd 0 3 1n 1n Typ\n[End External Model]\n";

/// The good board with each section on a line of its own.
std::string BoardLines()
{
    std::string board(kGoodBoard);
    return board.replace(board.find("\nR=0.01 /"), 1, " ");
}

SHost HostOf(const std::string& rule)
{
    const std::string family = rule.substr(0, rule.find('/'));
    if (family == "board") {
        return {Header("7.2", "test.ebd") + BoardLines() + "[End]\n", "[Path Description",
                BoardHow()};
    }
    if (family == "emd" || family == "emd-set") {
        return {Header("7.2", "test.emd").append(kGoodModule) + "[End]\n",
                family == "emd" ? "[EMD Pin List" : "[EMD Model", ModuleHow(EFileType::Emd)};
    }
    if (family == "interconnect") {
        return {Header("7.2", "test.ims").append(kGoodSets) + "[End]\n", "[Interconnect Model",
                InterconnectHow()};
    }
    struct SPart
    {
        std::string_view family;
        std::string_view body;
        std::string_view home;
    };
    constexpr SPart kParts[] = {{"package-model", kStubs, "[Pin Numbers"},
                                {"package-pins", kStubs, "[Pin Numbers"},
                                {"package-matrix", kMatrices, "[Pin Numbers"},
                                {"c-comp-model", kCircuit, "[C Comp Model"},
                                {"pdn", kDomain, "[PDN Domain"},
                                {"external-model", kExternal, "[External Model"}};
    for (const SPart& part : kParts) {
        if (part.family == family) {
            const std::string_view home =
                rule == "pdn/typ-between" ? std::string_view("[PDN Model") : part.home;
            return {Ibs("7.2", part.body), home, {.verbose = true}};
        }
    }
    const std::string_view home = family == "package"     ? "[Package"
                                  : family == "component" ? "[Component"
                                                          : "[Model";
    return {WholeFile("5.1"), home};
}

/// The file of a rule's family with an example in it: its keywords take the place of those of the
/// same name.
std::string FileWith(std::string_view example, const SHost& host)
{
    std::vector<TBlock> blocks = BlocksOf(host.text);
    const std::vector<TBlock> parts = BlocksOf(example);
    PutLines(blocks[FindBlock(blocks, host.home)], parts.front());
    std::set<std::string> put;
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const std::string head(HeadOf(parts[i].front()));
        std::size_t at = FindBlock(blocks, head);
        if (at == blocks.size() || put.contains(head)) {
            at = at == blocks.size()
                     ? FindBlock(blocks, put.contains("[End") ? "[End" : Before(head))
                     : at;
            blocks.insert(blocks.begin() + static_cast<std::ptrdiff_t>(at) + 1, parts[i]);
        } else {
            blocks[at] = parts[i];
        }
        put.insert(head);
    }
    std::string text;
    for (const TBlock& block : blocks) {
        for (const std::string& line : block) {
            text += line + '\n';
        }
    }
    return text;
}

bool Raises(std::string_view example, const SHost& host, const std::set<int>& codes)
{
    const SChecked checked = CheckText(FileWith(example, host), host.how);
    return std::ranges::any_of(checked.findings,
                               [&](const STaken& finding) { return codes.contains(finding.code); });
}

std::set<std::string> AllRules()
{
    std::set<std::string> rules;
    for (const SMessage& row : Catalogue()) {
        rules.insert(RuleName(row));
    }
    return rules;
}

TEST(Explain, EveryMessageHasOne)
{
    for (const std::string& rule : AllRules()) {
        const auto text = Explain(rule);
        if (!text) {
            ADD_FAILURE() << rule << " has no entry in src/ibischk/explain";
            continue;
        }
        EXPECT_FALSE(text->meaning.empty()) << rule;
        EXPECT_FALSE(text->why.empty()) << rule;
        EXPECT_FALSE(text->causes.empty()) << rule;
        EXPECT_FALSE(text->action.empty()) << rule;
        EXPECT_EQ(text->wrong.empty(), text->right.empty()) << rule;
        EXPECT_EQ(text->meaning.find('{'), std::string::npos) << rule;
    }
}

TEST(Explain, ExamplesAreFoundWrongAndRight)
{
    // What the whole file can't show: a second header keyword replaces the first.
    const std::set<std::string> notRun = {"check/no-version", "syntax/version-once",
                                          "header/file-name-once"};
    std::size_t run = 0;
    for (const std::string& rule : AllRules()) {
        const auto text = Explain(rule);
        if (!text || text->wrong.empty() || notRun.contains(rule)) {
            continue;
        }
        std::set<int> codes;
        for (const SMessage* message : FindMessages(rule)) {
            codes.insert(message->code);
        }
        // A circuit has the body's rules of a model, which stand for both.
        if (rule.starts_with("external-circuit/")) {
            continue;
        }
        const SHost host = HostOf(rule);
        EXPECT_TRUE(Raises(text->wrong, host, codes)) << rule << " wrong\n" << text->wrong;
        EXPECT_FALSE(Raises(text->right, host, codes)) << rule << " right\n" << text->right;
        ++run;
    }
    EXPECT_GT(run, 200U);
}

TEST(Explain, FindsMessagesByAnyOfTheirNames)
{
    for (const std::string_view word : {"E1009", "w1009", "1009", "header/file-name-once"}) {
        const auto found = FindMessages(word);
        ASSERT_EQ(found.size(), 1U) << word;
        EXPECT_EQ(found.front()->code, 1009) << word;
    }
    EXPECT_EQ(FindMessages("Syntax/Keyword-File").size(), 3U);
    for (const std::string_view word : {"", "E", "9999", "12x", "header", "header/", "/"}) {
        EXPECT_TRUE(FindMessages(word).empty()) << word;
    }
    EXPECT_FALSE(Explain("header"));
    EXPECT_FALSE(Explain("header/none"));
}

} // namespace
} // namespace zov::ibischk::test
