// SPDX-License-Identifier: Apache-2.0
#include "ibischk/corner.h"

#include "ibischk/tables.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

void AddClamps(const SModel& model, const SCorner& corner, CPadCurrent& to)
{
    to.Add(model.FindCurve(EKeyword::GNDClamp), corner.column, corner.rails.gndClamp,
           EReference::Below);
    to.Add(model.FindCurve(EKeyword::POWERClamp), corner.column, corner.rails.powerClamp,
           EReference::Above);
}

} // namespace

std::optional<double> SCorner::Level(bool isHigh, double rOhm, double vFix) const
{
    const CPadCurrent& pad = isHigh ? high : low;
    return pad.Solve(rOhm, vFix, rails.Low() - 4 * span, rails.High() + 4 * span);
}

SCorner MakeCorner(const SModel& model, const SModelType& type, std::size_t column)
{
    SCorner corner;
    corner.column = column;
    corner.rails = RailsOf(model, column);
    if (!corner.rails.Complete()) {
        return corner;
    }
    corner.span = corner.rails.Span();
    const SCurve* down = model.FindCurve(EKeyword::Pulldown);
    const SCurve* up = model.FindCurve(EKeyword::Pullup);
    AddClamps(model, corner, corner.clamps);
    if (type.IsEcl()) {
        // Both tables of ECL are measured from the upper supply.
        corner.low.Add(down, column, corner.rails.pullup, EReference::Above);
    } else {
        corner.low.Add(down, column, corner.rails.pulldown, EReference::Below);
    }
    corner.high.Add(up, column, corner.rails.pullup, EReference::Above);
    corner.drivesLow = !corner.low.Empty();
    corner.drivesHigh = !corner.high.Empty();
    AddClamps(model, corner, corner.low);
    AddClamps(model, corner, corner.high);
    return corner;
}

double FixtureVoltage(const SWaveform& table, std::size_t column)
{
    const double own = column == 1   ? table.vFixtureMin
                       : column == 2 ? table.vFixtureMax
                                     : table.vFixture;
    return STriple::Has(own) ? own : table.vFixture;
}

} // namespace zov::ibischk
