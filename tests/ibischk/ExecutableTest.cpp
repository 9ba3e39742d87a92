// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiSupport.h"
#include "ibischk/Exports.h"
#include "ibischk/LibraryBuilder.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

const std::vector<std::string_view> kBoth = {"AMI_Init", "AMI_Close"};
const std::vector<std::string_view> kThree = {"AMI_Init", "AMI_Close", "AMI_GetWave"};

TEST(Exports, AreReadFromEveryFormOfLibrary)
{
    const struct
    {
        std::string_view name;
        std::string bytes;
        int bits;
    } kLibraries[] = {
        {"ELF 64", BuildElf({.bits = 64}, kThree), 64},
        {"ELF 32", BuildElf({.bits = 32}, kThree), 32},
        {"ELF 64 big endian", BuildElf({.bits = 64, .bigEndian = true}, kThree), 64},
        {"ELF 32 big endian", BuildElf({.bits = 32, .bigEndian = true}, kThree), 32},
        {"ELF 64 segments", BuildElf({.bits = 64, .sections = false}, kThree), 64},
        {"ELF 32 segments", BuildElf({.bits = 32, .sections = false}, kThree), 32},
        {"ELF 64 GNU hash", BuildElf({.sections = false, .gnuHash = true}, kThree), 64},
        {"ELF 32 GNU hash", BuildElf({.bits = 32, .sections = false, .gnuHash = true}, kThree), 32},
        {"PE32+", BuildPe({.bits = 64}, kThree), 64},
        {"PE32", BuildPe({.bits = 32, .machine = 0x14C}, kThree), 32},
    };
    for (const auto& row : kLibraries) {
        SCOPED_TRACE(row.name);
        const SLibrary library = ReadLibrary(row.bytes);
        EXPECT_EQ(library.problem, "");
        EXPECT_EQ(library.bits, row.bits);
        EXPECT_EQ(library.names, kThree);
    }
}

TEST(Exports, DamagedFilesEndInAProblemOrInFewerNames)
{
    for (const std::string& bytes :
         {BuildElf({}, kThree), BuildElf({.sections = false}, kThree),
          BuildElf({.sections = false, .gnuHash = true}, kThree), BuildPe({}, kThree)}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const SLibrary library = ReadLibrary(std::string_view(bytes).substr(0, length));
            EXPECT_LT(library.names.size(), kThree.size());
        }
        std::string changed = bytes;
        for (char& c : changed) {
            const char before = c;
            c = '\xFF';
            EXPECT_LE(ReadLibrary(changed).names.size(), kThree.size());
            c = before;
        }
    }
}

TEST(Exports, DecoratedNamesAreFound)
{
    const std::string bytes = BuildPe({}, {"_AMI_Init@36", "AMI_Resolve_Close"});
    const SLibrary library = ReadLibrary(bytes);
    EXPECT_FALSE(library.Exports("AMI_Init"));
    EXPECT_EQ(library.Decorated("AMI_Init"), "_AMI_Init@36");
    EXPECT_EQ(library.Decorated("AMI_Resolve"), "");
}

/// A model of the type with these lines.
std::string Model(std::string_view type, std::string_view lines)
{
    return "[Model] m\nModel_type " + std::string(type) + "\n[Algorithmic Model]\n" +
           std::string(lines) + "[End Algorithmic Model]\n";
}

SCheckHow Beside(std::string_view name, const std::string& library, const std::string& tree)
{
    return {.progress = true, .beside = {{std::string(name), library}, {"m.ami", tree}}};
}

TEST(Executable, EveryRuleFires)
{
    const std::string good = AmiFile("5.1", "");
    const std::string resolving =
        AmiFile("7.1", "(Resolve_Exists <Info Boolean> (Value True)) "
                       "(BCI_Training_Mode <In String> (List \"GetWave\" \"Impulse\"))");
    const std::string line = "Executable Linux_gcc_64 m.so m.ami\n";
    const struct
    {
        std::string_view rule;
        std::string lines;
        std::string library;
        std::string tree;
        std::string_view expected;
    } kCases[] = {
        {"executable-exists", "Executable Linux_gcc_64 n.so m.ami\n", "", good, "E4616@7"},
        {"parameter-extension", "Executable Linux_gcc_64 m.so m.txt\n", "", good, "E4617@7"},
        {"parameter-exists", "Executable Linux_gcc_64 m.so n.ami\n", "", good, "E4618@7"},
        {"executable-bits", line, BuildElf({.bits = 32}, kThree), good, "E4613@7"},
        {"executable-format", line, "#!/bin/sh", good, "E4614@7"},
        {"executable-format", line, BuildPe({}, kThree), good, "E4614@7"},
        {"executable-exports", line, BuildElf({.type = 2}, kThree), good, "E4615@7"},
        {"export-init", line, BuildElf({}, {"AMI_Close"}), good, "E4702@7"},
        {"export-close", line, BuildElf({}, {"AMI_Init"}), good, "E4703@7"},
        {"export-getwave", line, BuildElf({}, kBoth), good, "E4704@7"},
        {"export-resolve", line, BuildElf({}, kBoth), resolving, "E4705@7"},
        {"export-resolve-close", line, BuildElf({}, kBoth), resolving, "E4706@7"},
        {"export-impulse", line, BuildElf({}, kBoth), resolving, "E4719@7"},
        {"export-decorated", line, BuildElf({}, {"_Z8AMI_InitPd"}), good, "N4707@7"},
    };
    for (const auto& c : kCases) {
        ExpectRule({"ami/" + std::string(c.rule), "6.1", Model("Output", c.lines), c.expected},
                   Beside("m.so", c.library, c.tree));
    }
    const SChecked checked =
        CheckText(Ibs("6.1", Model("Output", line)), Beside("m.so", BuildElf({}, kThree), good));
    EXPECT_EQ(Codes(checked, 4600, 4799), "");
}

TEST(Executable, AModelHasOneBlock)
{
    const std::string block = Model("Output", "Executable Linux_gcc_64 m.so m.ami\n");
    const std::string second = block.substr(block.find("[Algorithmic"));
    EXPECT_EQ(Codes(CheckText(Ibs("6.1", block + second)), 1911, 1911), "E1911@9");
    EXPECT_EQ(Codes(CheckText(Ibs("6.1", block)), 1911, 1911), "");
}

TEST(Executable, PathsLeadBelowTheFileFrom70)
{
    const std::string lines = "Executable Linux_gcc_64 lib/m.so /m.ami\n";
    const SChecked old = CheckText(Ibs("6.1", Model("Output", lines)));
    EXPECT_EQ(Codes(old, 1926, 1928), "E1926@7 E1928@7");
    const SChecked late = CheckText(Ibs("7.0", Model("Output", lines)));
    EXPECT_EQ(Codes(late, 1926, 1928), "E1926@7");
}

TEST(Executable, OneFileIsToldOnce)
{
    const std::string lines = "Executable Linux_gcc_64 m.so m.ami\n";
    std::string second = Model("Output", lines);
    second.replace(8, 1, "n");
    const SChecked checked = CheckText(Ibs("6.1", Model("Output", lines) + second),
                                       Beside("m.so", "", AmiFile("6.0", "(Nope 1)")));
    EXPECT_EQ(Codes(checked, 4600, 4799), "E4624@1 E4614@7");
    for (const STaken& finding : checked.findings) {
        EXPECT_EQ(finding.file == "m.ami", finding.code == 4624);
    }
}

TEST(Executable, InputOutputModelsHaveOneOrTwo)
{
    const SChecked both =
        CheckText(Ibs("6.1", Model("I/O", "Executable Linux_gcc_64 m.so m.ami\n"
                                          "Executable_Rx Linux_gcc_64 m.so m.ami\n")));
    EXPECT_EQ(Codes(both, 4721, 4722), "W4721@8");
    const SChecked pair =
        CheckText(Ibs("6.1", Model("I/O", "Executable_Rx Linux_gcc_64 m.so m.ami\n"
                                          "Executable_Tx Linux_gcc_64 m.so m.ami\n")));
    EXPECT_EQ(Codes(pair, 4721, 4722), "C4722@8");
}

#if defined(__linux__) && defined(__x86_64__)
TEST(Executable, StatusNamesThePlatform)
{
    const std::string lines = "Executable Linux_gcc_64 m.so m.ami\n"
                              "Executable Windows_VS2019_64 m.dll m.ami\n";
    SCheckHow how = Beside("m.so", BuildElf({}, kThree), AmiFile("5.1", ""));
    EXPECT_NE(CheckText(Ibs("6.1", Model("Output", lines)), how)
                  .text.find("... Status of [Algorithmic Model] Executables for Linux 64:\n"
                             "m.so:\t\tLinux 64:\t\tChecked\n"
                             "m.dll:\t\tWindows 64:\t\tNot Checked\n"
                             "... This checker executable supports Linux 64 bit only\n"),
              std::string::npos);
    how.beside[0].second = BuildElf({.machine = 183}, kThree);
    EXPECT_NE(CheckText(Ibs("6.1", Model("Output", lines)), how)
                  .text.find("m.so:\t\tLinux 64:\t\tChecked, The AMI executable library cannot "
                             "run.\n"),
              std::string::npos);
}
#endif

TEST(Repeater, ReceiversNameTheirType)
{
    const std::string component =
        "[Component] c\n[Manufacturer] x\n[Package]\nR_pkg 1 NA NA\nL_pkg 1n NA NA\nC_pkg 1p NA "
        "NA\n[Pin] signal_name model_name R_pin L_pin C_pin\n1 a m\n2 b m\n3 c m\n4 d m\n"
        "[Diff Pin] inv_pin vdiff tdelay_typ tdelay_min tdelay_max\n1 2 0.1 NA NA NA\n"
        "3 4 0.1 NA NA NA\n[Repeater Pin] tx_non_inv_pin\n1 3\n";
    const std::string body = component + Model("I/O", "Executable Linux_gcc_64 m.so m.ami\n");
    const std::string library = BuildElf({}, kThree);
    const SChecked without =
        CheckText(Ibs("6.1", body), Beside("m.so", library, AmiFile("6.0", "")));
    EXPECT_EQ(Codes(without, 6413, 6413), "W6413@19");
    const SChecked with =
        CheckText(Ibs("6.1", body),
                  Beside("m.so", library,
                         AmiFile("6.0", "(Repeater_Type <Info String> (Value \"Redriver\"))")));
    EXPECT_EQ(Codes(with, 6413, 6413), "");
}

} // namespace

} // namespace zov::ibischk::test
