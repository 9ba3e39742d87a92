// SPDX-License-Identifier: Apache-2.0
#include "ibischk/crvshape.h"

#include "ibischk/evidence.h"
#include "ibischk/loadline.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kLeastTurnA = 1e-12;
constexpr double kWrongWayA = 1e-3; ///< over the table: less is leakage

EKeyword KindOf(EKeyword keyword)
{
    switch (keyword) {
    case EKeyword::SubmodelPulldown:
        return EKeyword::Pulldown;
    case EKeyword::SubmodelPullup:
        return EKeyword::Pullup;
    case EKeyword::SubmodelGNDClamp:
        return EKeyword::GNDClamp;
    case EKeyword::SubmodelPOWERClamp:
        return EKeyword::POWERClamp;
    default:
        return keyword;
    }
}

SShape MakeShape(const SCurve& curve, const SRails& rails, bool ecl)
{
    SShape shape{curve, KindOf(curve.keyword), 0, rails, kAbsent, kAbsent, false};
    switch (shape.kind) {
    case EKeyword::Pulldown:
        shape.fromAbove = ecl;
        shape.supply = rails.pullup - rails.pulldown;
        shape.ground = ecl ? rails.pullup : rails.pulldown;
        break;
    case EKeyword::Pullup:
        shape.fromAbove = true;
        shape.supply = rails.pullup - rails.pulldown;
        shape.ground = rails.pullup;
        break;
    case EKeyword::GNDClamp:
        shape.supply = rails.powerClamp - rails.gndClamp;
        shape.ground = rails.gndClamp;
        break;
    case EKeyword::POWERClamp:
        shape.fromAbove = true;
        shape.supply = rails.powerClamp - rails.gndClamp;
        shape.ground = rails.powerClamp;
        break;
    case EKeyword::SeriesCurrent:
        break;
    default:
        return shape;
    }
    shape.slope = shape.fromAbove ? -1 : 1;
    return shape;
}

// --- turns and direction -----------------------------------------------------------------------

/// How a column goes against and along its direction, beyond what rounding explains.
struct STurns
{
    double against = 0.0; ///< ampere, all steps together
    double along = 0.0;
    std::size_t count = 0;
    std::size_t before = 0; ///< rows of the first step against
    std::size_t after = 0;
};

STurns FindTurns(const SShape& shape, std::size_t column)
{
    const SCurve& curve = shape.curve;
    const std::vector<double>& current = curve.current[column];
    const int sense = shape.slope * curve.direction;
    STurns turns;
    std::size_t before = current.size();
    for (std::size_t row = 0; row < current.size(); ++row) {
        if (!STriple::Has(current[row])) {
            continue;
        }
        if (before != current.size()) {
            const double step = sense * (current[row] - current[before]);
            turns.along += std::max(step, 0.0);
            if (step < -kLeastTurnA &&
                -step > kDigitSlack * std::max(curve.LastDigit(before, column),
                                               curve.LastDigit(row, column))) {
                turns.against -= step;
                if (turns.count++ == 0) {
                    turns.before = before;
                    turns.after = row;
                }
            }
        }
        before = row;
    }
    return turns;
}

void TellTurn(SCheck& check, const SShape& shape, std::size_t column, const STurns& turns)
{
    const SCurve& curve = shape.curve;
    const std::vector<double>& current = curve.current[column];
    CDetails details = PointOf(curve, column, turns.after);
    details.Add("line-before", static_cast<double>(curve.line[turns.before]))
        .Add("voltage-before", curve.voltage[turns.before])
        .Add("turns", static_cast<double>(turns.count));
    AddFault(details, curve, column, turns.against);
    AddSum(details, check, curve, column);
    check.report.Path().corner = CornerName(column);
    check.report.Emit(EReport::Note, {curve.line[turns.after], 1}, 1408,
                      {KeywordText(curve.keyword), CornerName(column), current[turns.before],
                       current[turns.after], curve.voltage[turns.before],
                       curve.voltage[turns.after]},
                      details.All());
    check.report.Path().corner = {};
}

void TellDirection(SCheck& check, const SShape& shape, std::size_t column, const SEnds& ends)
{
    const SCurve& curve = shape.curve;
    CDetails details = PointOf(curve, column, ends.lastRow);
    details.Add("row-first", static_cast<double>(ends.firstRow + 1))
        .Add("line-first", static_cast<double>(curve.line[ends.firstRow]))
        .Add("voltage-first", curve.voltage[ends.firstRow]);
    AddFault(details, curve, column, std::abs(ends.last - ends.first));
    AddSum(details, check, curve, column);
    check.report.Path().corner = CornerName(column);
    check.report.Emit(EReport::Warning, curve.place, 1409,
                      {KeywordText(curve.keyword), CornerName(column), ends.first,
                       curve.voltage[ends.firstRow], ends.last, curve.voltage[ends.lastRow],
                       shape.slope > 0 ? "rise" : "fall"},
                      details.All());
    check.report.Path().corner = {};
}

/// One finding a table: of the first column that has a fault.
void CheckMonotonic(SCheck& check, const SShape& shape)
{
    constexpr double kHardlyAlong = 0.01;
    for (std::size_t column = 0; column < 3 && shape.slope != 0; ++column) {
        const STurns turns = FindTurns(shape, column);
        if (turns.count == 0) {
            continue;
        }
        const bool wrongWay =
            turns.against - turns.along > kWrongWayA && turns.along < kHardlyAlong * turns.against;
        if (wrongWay) {
            TellDirection(check, shape, column, EndsOf(shape.curve.current[column]));
        } else {
            TellTurn(check, shape, column, turns);
        }
        return;
    }
}

/// Two rows at one voltage: programs that interpolate see a step there, or divide by zero.
void CheckEqualVoltage(SCheck& check, const SCurve& curve)
{
    const std::size_t row = curve.equalRow;
    if (row == 0) {
        return;
    }
    std::size_t column = 0;
    double step = 0.0;
    for (std::size_t c = 0; c < 3; ++c) {
        const double size = std::abs(curve.current[c][row] - curve.current[c][row - 1]);
        if (size > step) {
            step = size;
            column = c;
        }
    }
    CDetails details = PointOf(curve, column, row);
    details.Add("line-before", static_cast<double>(curve.line[row - 1]))
        .Add("current-before", curve.current[column][row - 1])
        .Add("current", curve.current[column][row]);
    AddFault(details, curve, column, step);
    AddSum(details, check, curve, column);
    check.report.Emit(EReport::Warning, {curve.line[row], 1}, 1406,
                      {check.report.Path().table, curve.voltage[row]}, details.All());
}

} // namespace

void CheckCurveShapes(SCheck& check)
{
    const SModel& model = check.data.model;
    const bool inModel = check.state.scope == EScope::Model;
    const SModelInfo* info = inModel ? &OpenModel(check) : nullptr;
    const bool ecl = info != nullptr && info->Type().IsEcl();
    const SRails rails = info != nullptr ? RailsOf(model, 0) : SRails{};
    for (std::size_t i = 0; i < model.curveCount; ++i) {
        const SCurve& curve = model.curves[i];
        check.report.Path().table = KeywordText(curve.keyword);
        CheckEqualVoltage(check, curve);
        if (curve.direction == 0) {
            continue;
        }
        const SShape shape = MakeShape(curve, rails, ecl);
        CheckMonotonic(check, shape);
        CheckCurveSize(check, shape);
        if (info != nullptr) {
            CheckCurveValues(check, shape, *info);
        }
    }
    check.report.Path().table = KeywordText(inModel ? EKeyword::Model : EKeyword::Submodel);
}

} // namespace zov::ibischk
