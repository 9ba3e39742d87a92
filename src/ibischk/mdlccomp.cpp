// SPDX-License-Identifier: Apache-2.0
// [C Comp Corner] and [Begin EMI Model].
#include "base/Text.h"
#include "ibischk/mdlparts.h"

#include <cmath>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

constexpr SSubParameter kCapacitances[] = {
    {"C_comp", V21, Without},           {"C_comp_pullup", V21, Without},
    {"C_comp_pulldown", V21, Without},  {"C_comp_power_clamp", V21, Without},
    {"C_comp_gnd_clamp", V21, Without},
};

constexpr SSubParameter kEmiRows[] = {
    {"Model_emi_type", V21, Without},
    {"Model_Domain", V21, Without},
};

/// Corner by corner and by size are two views of the same capacitance.
void CompareWithModel(SCheck& check, std::string_view name, const STriple& corner,
                      const STriple& own, SPlace place)
{
    constexpr double kRounding = 1e-3;
    if (std::abs(corner.typ - own.typ) > kRounding * std::max(corner.typ, own.typ)) {
        check.report.WarningAt(place, 5004, name, corner.typ, own.typ);
    }
    for (const double value : {corner.min, corner.max}) {
        if (value < own.min * (1 - kRounding) || value > own.max * (1 + kRounding)) {
            check.report.WarningAt(place, 5005, name, value, own.min, own.max);
            return;
        }
    }
}

} // namespace

void TakeCornerCapacitance(SCheck& check, const SLine& line)
{
    SModel& model = check.data.model;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kCapacitances, model.cornerSeen);
    if (!row) {
        return;
    }
    const std::string_view name = kCapacitances[*row].name;
    const auto triple = TakeNamedTriple(check, line, tokens, name, 5001);
    if (!triple) {
        return;
    }
    model.cornerCComp[*row] = *triple;
    model.cornerPlace = line.Place();
    for (const double value : {triple->typ, triple->min, triple->max}) {
        if (value < 0) {
            check.report.ErrorAt(line.Place(), 5002, name, value);
            break;
        }
    }
}

void CheckCornerCapacitance(SCheck& check)
{
    if (!check.state.Has(EKeyword::CCompCorner)) {
        return;
    }
    const SModel& model = check.data.model;
    const SModelInfo& info = OpenModel(check);
    if (model.cornerSeen == 0) {
        check.report.ErrorAt(info.place, 5003);
        return;
    }
    if (info.Type().IsSeries()) {
        check.report.WarningAt(model.cornerPlace, 5007, info.name, info.Type().name);
    }
    for (std::size_t i = 0; i < std::size(kCapacitances); ++i) {
        const std::string_view name = kCapacitances[i].name;
        const bool here = (model.cornerSeen >> i & 1U) != 0;
        const bool there = model.cComp[i].HasTyp();
        if (here && there) {
            CompareWithModel(check, name, model.cornerCComp[i], model.cComp[i], model.cornerPlace);
        } else if (i > 0 && here != there) {
            check.report.WarningAt(model.cornerPlace, 5006, name,
                                   here ? "[C Comp Corner]" : "[Model]");
        }
    }
}

void OpenEmiModel(SCheck& check, const SLine& /*line*/)
{
    check.data.model.emiSeen = 0;
}

void TakeEmiModel(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kEmiRows, check.data.model.emiSeen);
    if (!row) {
        return;
    }
    constexpr std::string_view kWords[][2] = {{"Ferrite", "Not_a_ferrite"}, {"Digital", "Analog"}};
    const std::string_view word = TakeWord(check, line, tokens, kEmiRows[*row].name);
    const auto& words = kWords[*row];
    if (!word.empty() && !EqualsNoCase(word, words[0]) && !EqualsNoCase(word, words[1])) {
        check.report.ErrorAt(line.Place(word), 4850, kEmiRows[*row].name, words[0], words[1], word);
    }
}

void CloseEmiModel(SCheck& check)
{
    if (check.data.model.emiSeen == 0) {
        check.report.NoteAt(check.state.sectionPlace, 4851);
    }
}

} // namespace zov::ibischk
