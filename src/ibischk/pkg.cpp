// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pkg.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

namespace zov::ibischk {

namespace {

constexpr SSubParameter kRows[] = {
    {"R_pkg", EVersion::V21, EEquals::Without},
    {"L_pkg", EVersion::V21, EEquals::Without},
    {"C_pkg", EVersion::V21, EEquals::Without},
};

/// Above these a package is hardly meant: ohm, henry, farad.
struct SUsual
{
    double most;
    std::string_view unit;
};
constexpr SUsual kUsual[] = {{10.0, "ohm"}, {100e-9, "H"}, {100e-12, "F"}};

STriple& ValueOf(SPackage& package, std::size_t row)
{
    return row == 0 ? package.r : row == 1 ? package.l : package.c;
}

void OpenPackage(SCheck& check, const SLine& line)
{
    SPackage& package = OpenComponent(check).package;
    package.place = check.state.keywordPlace;
    if (!line.text.empty()) {
        check.report.WarningAt(line.Place(), 1938, line.text, KeywordText(EKeyword::Package));
    }
}

void CheckSigns(SCheck& check, const STriple& value, std::string_view name,
                std::string_view columns, SPlace place)
{
    CTokens tokens(columns);
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string_view token = tokens.Next();
        if (value.Column(i) < 0.0) {
            check.report.ErrorAt(place, 1202, name, token);
        }
    }
}

void TakePackageLine(SCheck& check, const SLine& line)
{
    SPackage& package = OpenComponent(check).package;
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, package.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    const std::string_view columns = tokens.Rest();
    const auto value = TakeTriple(check, line, tokens, name);
    if (!value) {
        return;
    }
    ValueOf(package, *row) = *value;
    if (!value->HasTyp()) {
        check.report.ErrorAt(line.Place(), 1201, name);
    }
    if (value->HasMin() != value->HasMax()) {
        check.report.NoteAt(line.Place(), 1204, name);
    }
    CheckSigns(check, *value, name, columns, line.Place());
    CheckMagnitudeOrder(check, *value, name, line.Place());
}

void ClosePackage(SCheck& check)
{
    SComponent& component = OpenComponent(check);
    const CPathScope scope(check.report, {component.name, {}, KeywordText(EKeyword::Package), {}});
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        if ((component.package.seen >> row & 1U) == 0) {
            check.report.ErrorAt(component.package.place, 1200, kRows[row].name);
            continue;
        }
        const STriple& value = ValueOf(component.package, row);
        for (std::size_t column = 0; column < 3; ++column) {
            if (value.Column(column) > kUsual[row].most) {
                check.report.Caution(component.package.place, 1203, component.name, kRows[row].name,
                                     value.Column(column), kUsual[row].unit, kUsual[row].most);
                break;
            }
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::Package, &OpenPackage, &TakePackageLine, &ClosePackage},
};

} // namespace

const SFamily kPkgFamily = {"pkg", kHandlers, {}, nullptr};

} // namespace zov::ibischk
