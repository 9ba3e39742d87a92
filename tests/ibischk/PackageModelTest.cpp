// SPDX-License-Identifier: Apache-2.0
#include "ibischk/ComponentSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

/// Lines 4 to 8.
constexpr std::string_view kHead = "[Define Package Model] p\n[Manufacturer] m\n[OEM] o\n"
                                   "[Description] d\n[Number of Pins] 3\n";
/// Lines 9 to 13.
constexpr std::string_view kPins = "[Pin Numbers]\nA\nB\nC\n[Model Data]\n";
constexpr std::string_view kInductances =
    "[Inductance Matrix] Full_matrix\n[Row] A\n2n 1n\n0\n[Row] B\n2n 1n\n[Row] C\n2n\n";
constexpr std::string_view kCapacitances =
    "[Capacitance Matrix] Banded_matrix\n[Bandwidth] 1\n[Row] A\n2p -1p\n[Row] B\n2p -1p\n"
    "[Row] C\n2p\n";
constexpr std::string_view kEnd = "[End Model Data]\n[End Package Model]\n";

SChecked CheckPackage(std::string_view body, std::string_view version = "6.1")
{
    return CheckText(Ibs(version, body));
}

std::string Join(std::initializer_list<std::string_view> parts)
{
    std::string all;
    for (const std::string_view part : parts) {
        all += part;
    }
    return all;
}

TEST(PackageModel, GoodModelsAreSilent)
{
    const std::string sparse = "[Resistance Matrix] Sparse_Matrix\n[Row] A\nA 0.1\nC 0\n";
    const std::string good = Join({kHead, kPins, sparse, kInductances, kCapacitances, kEnd});
    EXPECT_EQ(Codes(CheckPackage(good), 3106, 3999), "");
    const std::string stubs =
        Join({kHead, "[Number of Sections] 3\n[Pin Numbers]\nA Len=0 L=1n C=1p R=10m/\n",
              "B Len = 1.2 L=2n C=0.8p / Fork\nLen=0 L=1n /\nEndfork Len=0 C=1p/\nC Len=0\n",
              "L=1n\n/\n[Merged Pins] C\nD E\n[End Package Model]\n"});
    EXPECT_EQ(Codes(CheckPackage(stubs), 3106, 3999), "");
}

TEST(PackageModel, RulesOfMatricesFire)
{
    constexpr SRuleCase kRules[] = {
        {"package-matrix/kind", "6.1", "[Resistance Matrix] Dense\n", "E3700@14"},
        {"package-matrix/kind-alone", "6.1", "[Resistance Matrix] Full_matrix 3\n", "E3701@14"},
        {"package-matrix/bandwidth-needed", "6.1", "[Resistance Matrix] Banded_matrix\n",
         "E3702@14"},
        {"package-matrix/bandwidth-place", "6.1",
         "[Resistance Matrix] Full_matrix\n[Bandwidth] 1\n", "E3703@15"},
        {"package-matrix/bandwidth-value", "6.1",
         "[Resistance Matrix] Banded_matrix\n[Bandwidth] -1\n", "E3704@15"},
        {"package-matrix/bandwidth-large", "6.1",
         "[Resistance Matrix] Banded_matrix\n[Bandwidth] 3\n", "W3705@15"},
        {"package-matrix/row-pin", "6.1", "[Resistance Matrix] Full_matrix\n[Row] X\n1\n",
         "E3706@15"},
        {"package-matrix/row-once", "6.1",
         "[Resistance Matrix] Full_matrix\n[Row] C\n1\n[Row] C\n1\n", "E3707@17"},
        {"package-matrix/row-order", "6.1",
         "[Resistance Matrix] Full_matrix\n[Row] C\n1\n[Row] B\n1 0\n", "E3708@17"},
        {"package-matrix/row-order", "6.1",
         "[Resistance Matrix] Sparse_matrix\n[Row] C\nC 1\n[Row] B\nB 1\n", "W3708@17"},
        {"package-matrix/rows-all", "6.1", "[Resistance Matrix] Full_matrix\n[Row] C\n1\n",
         "E3709@14"},
        {"package-matrix/row-short", "6.1", "[Resistance Matrix] Full_matrix\n[Row] B\n1\n",
         "E3710@15"},
        {"package-matrix/row-long", "6.1", "[Resistance Matrix] Full_matrix\n[Row] C\n1 1\n",
         "E3711@16"},
        {"package-matrix/sparse-form", "6.1", "[Resistance Matrix] Sparse_matrix\n[Row] A\nA\n",
         "E3712@16"},
        {"package-matrix/sparse-pin", "6.1", "[Resistance Matrix] Sparse_matrix\n[Row] A\nX 1\n",
         "E3713@16"},
        {"package-matrix/sparse-half", "6.1", "[Resistance Matrix] Sparse_matrix\n[Row] B\nA 1\n",
         "E3714@16"},
        {"package-matrix/sparse-once", "6.1",
         "[Resistance Matrix] Sparse_matrix\n[Row] A\nA 1\nA 1\n", "E3715@17"},
        {"package-matrix/diagonal", "6.1", "[Inductance Matrix] Sparse_matrix\n[Row] A\nA 1n\n",
         "E3716@14"},
        {"package-matrix/diagonal", "3.2", "[Inductance Matrix] Sparse_matrix\n[Row] A\nA 1n\n",
         "W3716@14"},
        {"package-matrix/diagonal-sign", "6.1", "[Inductance Matrix] Sparse_matrix\n[Row] A\nA 0\n",
         "E3717@16"},
        {"package-matrix/coupling", "6.1",
         "[Inductance Matrix] Sparse_matrix\n[Row] A\nA 1.0n\nB 1.4n\n[Row] B\nB 1.0n\n",
         "W3718@14"},
        {"package-matrix/coupling-sign", "6.1",
         "[Capacitance Matrix] Sparse_matrix\n[Row] A\nA 1p\nB 1f\nC -1f\n", "N3719@14"},
        {"package-matrix/coupling-size", "6.1",
         "[Capacitance Matrix] Sparse_matrix\n[Row] A\nA 1.0p\nB 1.3p\n[Row] B\nB 1.1p\n",
         "W3720@14"},
        {"package-matrix/plausible", "6.1", "[Inductance Matrix] Sparse_matrix\n[Row] A\nA 1u\n",
         "C3721@14"},
        {"package-matrix/row-matrix", "6.1", "[Row] A\n1n\n", "E3722@14"},
        {"package-matrix/no-na", "6.1", "[Resistance Matrix] Full_matrix\n[Row] C\nNA\n",
         "E3723@16"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = Join({kHead, kPins, rule.body, kEnd});
        ExpectRule({rule.rule, rule.version, body, rule.expected});
    }
}

TEST(PackageModel, RulesOfPinsAndStubsFire)
{
    constexpr std::string_view kSections = "[Number of Sections] 2\n[Pin Numbers]\n";
    constexpr SRuleCase kRules[] = {
        {"package-pins/section-form", "6.1", "A L=1n /\n", "E3421@11"},
        {"package-pins/section-once", "6.1", "A Len=0 L=1n L=2n/\n", "E3422@11"},
        {"package-pins/section-negative", "6.1", "A Len=0 L=-1n/\n", "E3423@11"},
        {"package-pins/section-line", "6.1", "A Len=1 L=1n/\n", "E3424@11"},
        {"package-pins/section-empty", "6.1", "A Len=0/\n", "W3425@11"},
        {"package-pins/fork-pair", "6.1", "A Len=0 L=1n/ Fork\n", "E3426@11"},
        {"package-pins/fork-empty", "6.1", "A Len=0 L=1n/ Fork Endfork\n", "E3427@11"},
        {"package-pins/section-open", "6.1", "A Len=0 L=1n\n", "E3428@11"},
        {"package-pins/section-plausible", "6.1", "A Len=1 L=1u C=1f/\n", "C3429@11"},
        {"package-pins/path-sections", "6.1", "A\nB Len=0 L=1n/\n", "E3430@11"},
        {"package-pins/pin-count", "6.1", "A Len=0 L=1n/\n", "E3400@10"},
        {"package-pins/pin-once", "6.1", "A Len=0 L=1n/\nA Len=0 L=1n/\n", "E3401@12"},
        {"package-pins/section-count", "6.1", "A Len=0 L=1n/ Len=0 L=1n/ Len=0 L=1n/\n",
         "E3403@11"},
        {"package-pins/sections-used", "6.1", "A Len=0 L=1n/\n", "N3404@10"},
        {"package-pins/merged-into", "6.1", "A Len=0 L=1n/\n[Merged Pins] X\nY\n", "E3480@12"},
        {"package-pins/merged-listed", "6.1", "A Len=0 L=1n/\n[Merged Pins] A\nA\n", "E3481@13"},
        {"package-pins/merged-once", "6.1", "A Len=0 L=1n/\n[Merged Pins] A\nX X\n", "E3482@13"},
        {"package-pins/merged-some", "6.1", "A Len=0 L=1n/\n[Merged Pins] A\n", "E3483@12"},
        {"package-pins/merged-place", "6.1",
         "A Len=0 L=1n/\n[Model Data]\n[End Model Data]\n"
         "[Merged Pins] A\nX\n",
         "W3484@14"},
        {"package-model/order", "6.1", "A Len=0 L=1n/\n[Number of Sections] 2\n", "E3102@12"},
        {"package-model/sections-and-matrices", "6.1", "[Model Data]\n[End Model Data]\n",
         "E3103@4"},
        {"package-model/used", "6.1", "", "W3105@4"},
    };
    for (const SRuleCase& rule : kRules) {
        const std::string body = Join({kHead, kSections, rule.body, "[End Package Model]\n"});
        ExpectRule({rule.rule, rule.version, body, rule.expected});
    }
    constexpr SRuleCase kPlain[] = {
        {"package-model/sections-or-matrices", "3.2", "[Pin Numbers]\nA\n", "E3104@4"},
        {"package-pins/pin-alone", "3.2", "[Pin Numbers]\nA Len=0 L=1n/\n", "E3402@10"},
        {"package-model/count-alone", "3.2", "[Number of Sections] 2 x\n", "E3101@9"},
    };
    for (const SRuleCase& rule : kPlain) {
        const std::string body = Join({kHead, rule.body, "[End Package Model]\n"});
        ExpectRule({rule.rule, rule.version, body, rule.expected});
    }
}

TEST(PackageModel, CouplingIsJudgedByTheDigitsShown)
{
    struct SRow
    {
        std::string_view matrix;
        bool told;
    };
    constexpr SRow kRows[] = {
        {"A 1.00n\nB 1.01n\n[Row] B\nB 1.00n\n", false},
        {"A 1.000n\nB 1.010n\n[Row] B\nB 1.000n\n", true},
        {"A 2n\nB 3n\n[Row] B\nB 2n\n", false},
        {"A 1.00n\nB -1.10n\n[Row] B\nB 1.00n\n", true},
    };
    for (const SRow& row : kRows) {
        const std::string body =
            Join({kHead, kPins, "[Inductance Matrix] Sparse_matrix\n[Row] A\n", row.matrix, kEnd});
        EXPECT_EQ(Has(CheckPackage(body), 3718, 14), row.told) << row.matrix;
    }
}

TEST(PackageModel, MergedPinsAreComparedWithTheComponent)
{
    // Lines 4 to 18 are the component, the package model begins in 20, [Merged Pins] is in 28.
    constexpr SRuleCase kRules[] = {
        {"package-pins/merged-known", "6.1", "X1\n", "W3485@28"},
        {"package-pins/merged-rail", "6.1", "A2\n", "W3486@28"},
        {"package-pins/merged-signal", "6.1", "G1\n", "W3487@28"},
    };
    const std::string before =
        Join({kComponentHead, kComponentPins, "[Package Model] p\n", kHead,
              "[Number of Sections] 1\n[Pin Numbers]\nV1 Len=0 L=1n/\n[Merged Pins] V1\n"});
    ExpectRules(before, kRules, "[End Package Model]\n");
    const std::string good = Join({before, "V1\n[End Package Model]\n"});
    EXPECT_EQ(Codes(CheckPackage(good), 3485, 3487), "");
}

} // namespace

} // namespace zov::ibischk::test
