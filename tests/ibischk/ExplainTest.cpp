// SPDX-License-Identifier: Apache-2.0
// The explanations: every message has one, and its examples are what the checker finds.
#include "ibischk/Explain.h"

#include "CheckSupport.h"
#include "base/Text.h"

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

/// "[Pin" of "[Pin] signal_name"; the word in front of blank or "=" of other lines.
std::string_view HeadOf(std::string_view line)
{
    const std::string_view text = Trim(line);
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

/// Puts lines of sub-parameters in the place of those of the same name.
void PutLines(TBlock& block, const TBlock& lines)
{
    std::set<std::string_view> heads;
    for (const std::string& line : lines) {
        heads.insert(HeadOf(line));
    }
    std::erase_if(block, [&](const std::string& line) {
        return !IsKeywordLine(line) && std::ranges::any_of(heads, [&](std::string_view head) {
            return EqualsNoCase(head, HeadOf(line));
        });
    });
    block.insert(block.end(), lines.begin(), lines.end());
}

/// The whole file with an example in it: its keywords take the place of those of the same name,
/// lines without keyword go into the home of the family.
std::string FileWith(std::string_view example, std::string_view family)
{
    std::vector<TBlock> blocks = BlocksOf(WholeFile("5.1"));
    const std::vector<TBlock> parts = BlocksOf(example);
    const std::string_view home = family == "package"     ? "[Package"
                                  : family == "component" ? "[Component"
                                                          : "[Model";
    PutLines(blocks[FindBlock(blocks, home)], parts.front());
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

bool Raises(std::string_view example, std::string_view family, const std::set<int>& codes)
{
    const SChecked checked = CheckText(FileWith(example, family));
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
        const std::string_view family = std::string_view(rule).substr(0, rule.find('/'));
        EXPECT_TRUE(Raises(text->wrong, family, codes)) << rule << " wrong\n" << text->wrong;
        EXPECT_FALSE(Raises(text->right, family, codes)) << rule << " right\n" << text->right;
        ++run;
    }
    EXPECT_GT(run, 80U);
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
