// SPDX-License-Identifier: Apache-2.0
// Range, size and columns of each I-V table by itself.
#include "ibischk/crvshape.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

// --- values ------------------------------------------------------------------------------------

double LargestOf(const std::vector<double>& column)
{
    double largest = 0.0;
    for (const double i : column) {
        largest = std::max(largest, STriple::Has(i) ? std::abs(i) : 0.0);
    }
    return largest;
}

/// A switch that carries current without voltage. Current-mode drivers do.
void CheckAtZero(SCheck& check, const SShape& shape, std::string_view model)
{
    constexpr double kLeastA = 1e-3;
    constexpr double kPart = 0.02;
    for (std::size_t column = 0; column < 3; ++column) {
        const auto current = shape.curve.At(0.0, column);
        const double largest = LargestOf(shape.curve.current[column]);
        if (!current || std::abs(*current) <= kLeastA || std::abs(*current) <= kPart * largest) {
            continue;
        }
        if (InDiffPair(check, model)) {
            return;
        }
        CDetails details = AroundOf(shape.curve, column, 0.0);
        AddFault(details, shape.curve, column, std::abs(*current));
        AddSum(details, check, shape.curve, column);
        check.report.Emit(EReport::Note, shape.curve.place, 1410,
                          {KeywordText(shape.curve.keyword), CornerName(column), *current, largest},
                          details.All());
        return;
    }
}

struct SRange
{
    double low;
    double high;
};

SRange NeededRange(const SShape& shape, bool ecl)
{
    constexpr double kEclV = 2.2;
    if (ecl && shape.IsDriver()) {
        return {0.0, kEclV};
    }
    const double s = shape.supply;
    return {-s, shape.IsDriver() ? 2 * s : shape.kind == EKeyword::GNDClamp ? s : 0.0};
}

void CheckRange(SCheck& check, const SShape& shape, bool ecl)
{
    constexpr double kTolerance = 0.05;
    const std::vector<double>& v = shape.curve.voltage;
    // A table without current goes on without current.
    if (!(shape.supply > 0) || shape.slope == 0 || AllZero(shape.curve)) {
        return;
    }
    const SRange needed = NeededRange(shape, ecl);
    const double low = std::min(v.front(), v.back());
    const double high = std::max(v.front(), v.back());
    const double slack = kTolerance * shape.supply;
    if (low <= needed.low + slack && high >= needed.high - slack) {
        return;
    }
    const double below = std::max(0.0, low - needed.low);
    const double above = std::max(0.0, needed.high - high);
    CDetails details;
    details.Add("table", KeywordText(shape.curve.keyword)).Add("corner", CornerName(0));
    AddExtent(details, shape.curve.line);
    details.Add("voltage", below > above ? low : high)
        .Add("supply", shape.supply)
        .Add("missing-below", below)
        .Add("missing-above", above)
        .Add("size", std::max(below, above));
    if (high > low) {
        details.Add("part-of-sweep", std::max(below, above) / (high - low));
    }
    // Beyond its ends a table goes on with its last slope.
    AddSum(details, check, shape.curve, 0);
    check.report.Emit(EReport::Note, shape.curve.place, 1411,
                      {KeywordText(shape.curve.keyword), low, high, needed.low, needed.high},
                      details.All());
}

/// The largest current of all columns, in rows that `wanted` picks.
struct SLargest
{
    double current = 0.0;
    std::size_t column = 0;
    std::size_t row = 0;
};
template <class Pick>
SLargest FindLargest(const SCurve& curve, const Pick& wanted)
{
    SLargest largest;
    for (std::size_t row = 0; row < curve.voltage.size(); ++row) {
        for (std::size_t column = 0; column < 3 && wanted(row); ++column) {
            const double i = curve.current[column][row];
            if (std::abs(i) > std::abs(largest.current)) {
                largest = {i, column, row};
            }
        }
    }
    return largest;
}

void TellSize(SCheck& check, const SShape& shape, int code, const SLargest& found)
{
    CDetails details = PointOf(shape.curve, found.column, found.row);
    AddFault(details, shape.curve, found.column, std::abs(found.current));
    AddSum(details, check, shape.curve, found.column);
    check.report.Emit(EReport::Caution, {shape.curve.line[found.row], 1}, code,
                      {check.report.Path().model, KeywordText(shape.curve.keyword), found.current,
                       shape.curve.voltage[found.row]},
                      details.All());
}

/// A clamp that conducts between the supplies: a termination, or a wrong reference.
void CheckClampInside(SCheck& check, const SShape& shape)
{
    constexpr double kMostA = 0.01;
    const double v = shape.kind == EKeyword::GNDClamp ? 0.5 * shape.supply : 0.0;
    if (shape.IsDriver() || shape.slope == 0 || !(shape.supply > 0)) {
        return;
    }
    for (std::size_t column = 0; column < 3; ++column) {
        const auto current = shape.curve.At(v, column);
        if (current && std::abs(*current) > kMostA) {
            CDetails details = AroundOf(shape.curve, column, v);
            AddFault(details, shape.curve, column, std::abs(*current));
            AddSum(details, check, shape.curve, column);
            check.report.Emit(EReport::Note, shape.curve.place, 1415,
                              {KeywordText(shape.curve.keyword), CornerName(column), *current, v},
                              details.All());
            return;
        }
    }
}

// --- columns -----------------------------------------------------------------------------------

bool SuppliesDiffer(const SModel& model)
{
    const SRails min = RailsOf(model, 1);
    const SRails max = RailsOf(model, 2);
    return min.Complete() && max.Complete() && min.Span() != max.Span();
}

/// The fault is a difference that is not there: the supplies show how large it could be.
void TellEqualColumns(SCheck& check, const SShape& shape)
{
    const SRails min = RailsOf(check.data.model, 1);
    const SRails max = RailsOf(check.data.model, 2);
    const double atSupply = shape.curve.At(shape.supply, 0).value_or(kAbsent);
    CDetails details;
    details.Add("table", KeywordText(shape.curve.keyword)).Add("corner", "typ, min, max");
    AddExtent(details, shape.curve.line);
    if (STriple::Has(shape.supply)) {
        details.Add("voltage", shape.supply);
    }
    if (STriple::Has(atSupply)) {
        details.Add("current", atSupply);
    }
    details.Add("supplies-min", min.Span()).Add("supplies-max", max.Span());
    AddFault(details, shape.curve, 0, 0.0);
    AddSum(details, check, shape.curve, 0);
    check.report.Emit(EReport::Note, shape.curve.place, 1416, {KeywordText(shape.curve.keyword)},
                      details.All());
}

void CheckEqualColumns(SCheck& check, const SShape& shape)
{
    constexpr std::size_t kFew = 2;
    const auto& current = shape.curve.current;
    if (shape.curve.voltage.size() > kFew && current[0] == current[1] && current[0] == current[2] &&
        SuppliesDiffer(check.data.model) && !AllZero(shape.curve)) {
        TellEqualColumns(check, shape);
    }
}

/// The slow corner must not be the stronger one. Where both are close, rounding decides.
void CheckStrength(SCheck& check, const SShape& shape)
{
    constexpr double kTolerance = 0.02;
    const auto min = shape.curve.At(shape.supply, 1);
    const auto max = shape.curve.At(shape.supply, 2);
    if (!min || !max || std::abs(*min) <= (1 + kTolerance) * std::abs(*max)) {
        return;
    }
    CDetails details = AroundOf(shape.curve, 2, shape.supply);
    details.Add("min", *min).Add("max", *max);
    AddFault(details, shape.curve, 2, std::abs(*min) - std::abs(*max));
    AddSum(details, check, shape.curve, 2);
    check.report.Emit(EReport::Warning, shape.curve.place, 1417,
                      {KeywordText(shape.curve.keyword), shape.supply, *min, *max}, details.All());
}

void TellAllZero(SCheck& check, const SShape& shape, const SModelInfo& info)
{
    const std::vector<double>& v = shape.curve.voltage;
    CDetails details;
    details.Add("table", KeywordText(shape.curve.keyword)).Add("corner", "typ, min, max");
    AddExtent(details, shape.curve.line);
    details.Add("voltage", v.front()).Add("until", v.back());
    AddFault(details, shape.curve, 0, 0.0);
    AddSum(details, check, shape.curve, 0);
    check.report.Emit(EReport::Note, shape.curve.place, 1412,
                      {KeywordText(shape.curve.keyword), info.name}, details.All());
}

void CheckDriver(SCheck& check, const SShape& shape, const SModelInfo& info, const SModelType& type)
{
    if (!shape.IsDriver() || !type.Drives()) {
        return;
    }
    if (AllZero(shape.curve)) {
        // What a schedule switches may drive one side only: its tables are judged by no one rule.
        if (type.drives == EDrives::Both && info.schedule.empty() && !info.hasExternalModel) {
            TellAllZero(check, shape, info);
        }
        return;
    }
    if (type.IsEcl() || type.IsDiff()) {
        return;
    }
    CheckAtZero(check, shape, info.name);
    if (shape.supply > 0) {
        CheckStrength(check, shape);
    }
}

} // namespace

bool AllZero(const SCurve& curve)
{
    return std::ranges::all_of(
        curve.current, [](const std::vector<double>& column) { return LargestOf(column) == 0; });
}

void CheckCurveSize(SCheck& check, const SShape& shape)
{
    constexpr double kInsideA = 1.0;
    constexpr double kAnywhereA = 1000.0;
    const SLargest anywhere = FindLargest(shape.curve, [](std::size_t) { return true; });
    if (std::abs(anywhere.current) <= kInsideA) {
        return;
    }
    if (std::abs(anywhere.current) > kAnywhereA) {
        TellSize(check, shape, 1414, anywhere);
        return;
    }
    const SRails& rails = shape.rails;
    const SLargest inside = FindLargest(shape.curve, [&](std::size_t row) {
        const double v = shape.PadAt(row);
        return rails.Complete() && v >= rails.Low() && v <= rails.High();
    });
    if (std::abs(inside.current) > kInsideA) {
        TellSize(check, shape, 1413, inside);
    }
}

void CheckCurveValues(SCheck& check, const SShape& shape, const SModelInfo& info)
{
    CheckRange(check, shape, info.Type().IsEcl());
    CheckEqualColumns(check, shape);
    CheckClampInside(check, shape);
    CheckDriver(check, shape, info, info.Type());
}

} // namespace zov::ibischk
