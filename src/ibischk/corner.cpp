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

CDetails PointOf(const SCurve& curve, std::size_t column, std::size_t row)
{
    CDetails details;
    details.Add("table", KeywordText(curve.keyword))
        .Add("corner", CornerName(column))
        .Add("row", static_cast<double>(row + 1))
        .Add("line", static_cast<double>(curve.line[row]))
        .Add("voltage", curve.voltage[row]);
    return details;
}

void AddFault(CDetails& details, const SCurve& curve, std::size_t column, double sizeA)
{
    details.Add("size", sizeA);
    double least = kAbsent;
    double most = kAbsent;
    for (const double i : curve.current[column]) {
        least = i > least ? least : STriple::Has(i) ? i : least;
        most = i < most ? most : STriple::Has(i) ? i : most;
    }
    const double span = most - least;
    details.Add("table-span", span);
    if (span > 0) {
        details.Add("part-of-span", sizeA / span);
    }
}

void AddSum(CDetails& details, const SModel& model, const SModelType& type, EKeyword keyword,
            std::size_t column)
{
    const SCorner corner = MakeCorner(model, type, column);
    if (!(corner.span > 0)) {
        return;
    }
    const CPadCurrent& sum = keyword == EKeyword::Pulldown ? corner.low
                             : keyword == EKeyword::Pullup ? corner.high
                                                           : corner.clamps;
    const SFall fall =
        sum.FindFalls(corner.rails.Low() - corner.span, corner.rails.High() + corner.span);
    details.Add("sum-with-clamps", fall.count == 0 ? "monotonic" : "not monotonic");
    if (fall.count != 0) {
        details.Add("sum-falls-at", fall.voltage).Add("sum-falls-by", fall.size);
    }
}

} // namespace zov::ibischk
