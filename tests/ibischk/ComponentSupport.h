// SPDX-License-Identifier: Apache-2.0
/// A small component for tests of the tables that name its pins.
#pragma once

#include "ibischk/CheckSupport.h"

#include <gtest/gtest.h>
#include <span>

namespace zov::ibischk::test {

/// Lines 4 to 9.
constexpr std::string_view kComponentHead = "[Component] c\n[Manufacturer] m\n[Package]\n"
                                            "R_pkg 1 NA NA\nL_pkg 1n NA NA\nC_pkg 1p NA NA\n";
/// Lines 10 to 18: what comes behind begins in line 19.
constexpr std::string_view kComponentPins = "[Pin] signal_name model_name R_pin L_pin C_pin\n"
                                            "A1 s1 io\nA2 s2 io\nA3 s3 in\nA4 s4 out\n"
                                            "V1 VCC POWER\nG1 GND GND\nN1 NC NC\nC1 s5 in\n";
constexpr std::string_view kSomeModels =
    "[Model] io\nModel_type I/O\nC_comp 1p 1p 1p\n[GND Clamp]\n-5 -1 NA NA\n5 0 NA NA\n"
    "[Model] in\nModel_type Input\nC_comp 1p 1p 1p\n[Model] out\nModel_type Output\n"
    "C_comp 1p 1p 1p\n[Model] ser\nModel_type Series\n[R Series] 1 NA NA\n"
    "[Model] sw\nModel_type Series_switch\n[On]\n[R Series] 1 NA NA\n[Off]\n"
    "[R Series] 1k NA NA\n";

/// Runs rows whose bodies stand between two texts.
inline void ExpectRules(std::string_view before, std::span<const SRuleCase> rules,
                        std::string_view behind = kSomeModels, const SCheckHow& how = {})
{
    for (const SRuleCase& rule : rules) {
        const std::string body = std::string(before).append(rule.body).append(behind);
        ExpectRule({rule.rule, rule.version, body, rule.expected}, how);
    }
}

inline std::string WithPins(std::string_view behind)
{
    return std::string(kComponentHead).append(kComponentPins).append(behind).append(kSomeModels);
}

} // namespace zov::ibischk::test
