// SPDX-License-Identifier: Apache-2.0
// Board descriptions.
#include "ibischk/GoodFiles.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

constexpr std::string_view kGood = kGoodBoard;

SCheckHow How()
{
    return BoardHow();
}

std::string Board(std::string_view version, std::string_view body)
{
    return Header(version, "test.ebd").append(body) + "[End]\n";
}

TEST(Board, GoodBoardIsSilent)
{
    EXPECT_EQ(Codes(CheckText(Board("3.2", kGood), How())), "");
    EXPECT_EQ(Codes(CheckText(Board("7.2", kGood), How())), "");
}

TEST(Board, RulesOfPinsFire)
{
    // Lines 4 to 6; a rule's lines begin in 7.
    constexpr std::string_view kHead =
        "[Begin Board Description] b\n[Manufacturer] m\n[Number of Pins] 2\n";
    constexpr SRuleCase kRules[] = {
        {"board/one-board", "3.2", "[Begin Board Description] c\n", "E4300@7"},
        {"board/order", "3.2", "[Path Description] p\n[Pin List] signal_name\n", "E4301@8"},
        {"board/pin-count", "3.2", "[Pin List] signal_name\nA a\n", "E4302@7"},
        {"board/pin-columns", "3.2", "[Pin List] signal_name\nA a b\n", "E4303@8"},
        {"board/pin-once", "3.2", "[Pin List] signal_name\nA a\nA b\n", "E4304@9"},
        {"common/heading-missing", "3.2", "[Pin List]\nA a\n", "E1951@7"},
        {"common/text-length", "3.2", "[Pin List] signal_name\nA23456789 a\n", "W1912@8"},
        {"common/keyword-required", "3.2", "", "E1915@4"},
        {"common/keyword-required", "3.2", "[Path Description] p\nNode u1.1\n", "E1915@4"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = std::string(kHead).append(rule.body);
        ExpectRule({rule.rule, rule.version, body, rule.expected}, How());
    }
    EXPECT_TRUE(Has(CheckText(Ibs("3.2", "[Component] c\n"), How()), 912, 4));
}

TEST(Board, RulesOfPathsFire)
{
    // Lines 4 to 10; a path's lines begin in 11.
    constexpr std::string_view kHead =
        "[Begin Board Description] b\n[Manufacturer] m\n[Number of Pins] 2\n"
        "[Pin List] signal_name\nA a\nV POWER\n[Path Description] p\n";
    constexpr SRuleCase kRules[] = {
        {"board/path-once", "3.2", "Pin A\nLen=0 L=1n/\n[Path Description] p\n", "W4305@13"},
        {"board/path-begin", "3.2", "Len=0 L=1n/\nPin A\n", "E4306@10"},
        {"board/path-pin", "3.2", "Pin X\n", "E4307@11"},
        {"board/pin-paths", "3.2", "Pin V\n", "E4308@8"},
        {"board/pin-paths", "3.2", "Pin A\n[Path Description] q\nPin A\n", "E4308@8"},
        {"board/node-form", "3.2", "Pin A Node u1\n", "E4309@11"},
        {"board/node-form", "3.2", "Pin A Node u1.2.3\n", "E4309@11"},
        {"board/node-designator", "3.2", "Node u9.1\n[Reference Designator Map]\n", "E4310@11"},
        {"board/node-once", "3.2", "Node u1.1\n[Path Description] q\nNode u1.1\n", "E4311@13"},
        {"board/path-open", "3.2", "Pin A\nLen=0 L=1n/\n", "N4312@10"},
        {"board/path-name", "3.2", "Pin\n", "E4320@11"},
        {"board/path-item", "3.2", "Pin A X\n", "E4321@11"},
        {"board/node-chain", "3.2", "Pin A\nNode u1.1\n", "W4322@12"},
        {"board/section-form", "3.2", "Pin A L=1n /\n", "E4331@11"},
        {"board/section-once", "3.2", "Pin A Len=0 L=1n L=2n/\n", "E4332@11"},
        {"board/section-negative", "3.2", "Pin A Len=0 L=-1n/\n", "E4333@11"},
        {"board/section-line", "3.2", "Pin A Len=1 L=1n/\n", "E4334@11"},
        {"board/section-empty", "3.2", "Pin A Len=0/\n", "W4335@11"},
        {"board/fork-pair", "3.2", "Pin A\nFork\n", "E4336@10"},
        {"board/fork-empty", "3.2", "Pin A\nFork\nNode u1.1\nEndfork\n", "E4337@14"},
        {"board/section-open", "3.2", "Pin A Len=0 L=1n\nNode u1.1\n", "E4338@12"},
        {"board/section-plausible", "3.2", "Pin A Len=1 L=1u C=1f/\n", "C4339@11"},
        {"board/branch-end", "3.2", "Pin A\nFork\nLen=0 L=1n/\nEndfork\n", "W4341@14"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = std::string(kHead).append(rule.body);
        ExpectRule({rule.rule, rule.version, body, rule.expected}, How());
    }
}

TEST(Board, RulesOfTheMapFire)
{
    constexpr std::string_view kHead = "[Begin Board Description] b\n[Manufacturer] m\n"
                                       "[Number of Pins] 1\n[Pin List] signal_name\nA a\n"
                                       "[Path Description] p\nPin A\nLen=0 L=1n/\nNode u1.99\n"
                                       "[Reference Designator Map]\n";
    // The rows begin in line 14.
    constexpr SRuleCase kRules[] = {
        {"board/map-columns", "3.2", "u1 pp100.ibs\n", "E4313@14"},
        {"board/map-once", "3.2", "u1 pp100.ibs Processor\nu1 sub.ebd x\n", "E4314@15"},
        {"board/map-extension", "3.2", "u1 x.emd y\n", "E4315@14"},
        {"board/map-file", "3.2", "u1 none.ibs y\n", "W4316@14"},
        {"board/map-file", "7.1", "u1 none.emd y\n", "W4316@14"},
        {"board/map-component", "3.2", "u1 pp100.ibs y\n", "W4317@14"},
        {"board/map-used", "3.2", "u2 pp100.ibs Processor\n", "W4318@14"},
        {"board/map-self", "3.2", "u1 test.ebd b\n", "E4319@14"},
        {"board/map-self", "3.2", "u1 back.ebd b\n", "E4319@14"},
        {"board/map-pin", "3.2", "u1 pp100.ibs Processor\n", "W4323@12"},
        {"common/file-name-character", "3.2", "u1 a*b.ibs y\n", "E1927@14"},
        {"common/text-length", "3.2", "u1234567890 pp100.ibs Processor\n", "W1912@14"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = std::string(kHead).append(rule.body);
        ExpectRule({rule.rule, rule.version, body, rule.expected}, How());
    }
}

TEST(Board, FileWithoutBoardIsIncomplete)
{
    EXPECT_EQ(Codes(CheckText(Board("3.2", ""), How())), "E1915");
}

} // namespace

} // namespace zov::ibischk::test
