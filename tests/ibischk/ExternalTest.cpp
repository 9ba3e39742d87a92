// SPDX-License-Identifier: Apache-2.0
#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

TEST(Algorithmic, EveryRuleFires)
{
    const std::string head = "[Model] m\nModel_type Output\n[Algorithmic Model]\n";
    const std::string end = "[End Algorithmic Model]\n";
    const struct
    {
        std::string_view rule;
        std::string body;
        std::string_view expected;
    } kCases[] = {
        {"ami/executable-columns", head + "Executable Linux_gcc4_64 a.so\n" + end, "E4600@7"},
        {"ami/platform-parts", head + "Executable Linux_64 a.so a.ami\n" + end, "E4601@7"},
        {"ami/platform-system", head + "Executable Plan9_cc_64 a.so a.ami\n" + end, "W4602@7"},
        {"ami/platform-compiler", head + "Executable Linux__64 a.so a.ami\n" + end, "E4603@7"},
        {"ami/platform-once",
         head + "Executable Linux_g_64 a.so a.ami\nExecutable Linux_g_64 a.so a.ami\n" + end,
         "W4604@8"},
        {"ami/executable-type", head + "Executable_Rx Linux_g_64 a.so a.ami\n" + end, "E4605@7"},
        {"ami/rx-tx-version", head + "Executable_Rx Linux_g_64 a.so a.ami\n" + end, "E4696@7"},
        {"ami/platform-bits", head + "Executable Linux_g_16 a.so a.ami\n" + end, "E4606@7"},
        {"ami/executable-required", head + end, "E4607@4"},
        {"ami/executable-word", head + "Program x\n" + end, "E4611@7"},
    };
    for (const auto& c : kCases) {
        ExpectRule({c.rule, "5.1", c.body, c.expected});
    }
    const SChecked good =
        CheckText(Ibs("5.1", head + "Executable Solaris5.10_gcc4.1.1_64 a.so a.ami\n" + end));
    EXPECT_EQ(Codes(good, 4600, 4615), "");
}

} // namespace

} // namespace zov::ibischk::test
