// SPDX-License-Identifier: Apache-2.0
// The shape of each I-V table by itself: direction, turns, range, size, columns.
#include "ibischk/evidence.h"
#include "ibischk/loadline.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kLeastTurnA = 1e-12;
constexpr double kWrongWayA = 1e-3; ///< over the table: less is leakage

/// What a table is, whichever section it stands in.
struct SShape
{
    const SCurve& curve;
    EKeyword kind;  ///< as in a model
    int slope;      ///< of the current over the table voltage: 1 rises, -1 falls, 0 either
    SRails rails;   ///< typ; not complete in a submodel, which has those of its models
    double supply;  ///< the table's own, typ; kAbsent when not known
    double ground;  ///< the reference that the table voltage counts from; kAbsent alike
    bool fromAbove; ///< the table voltage counts downwards from it

    [[nodiscard]] bool IsDriver() const
    {
        return kind == EKeyword::Pulldown || kind == EKeyword::Pullup;
    }
    /// Voltage of the pad in a row.
    [[nodiscard]] double PadAt(std::size_t row) const
    {
        return fromAbove ? ground - curve.voltage[row] : ground + curve.voltage[row];
    }
};

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

// --- values ------------------------------------------------------------------------------------

double LargestOf(const std::vector<double>& column)
{
    double largest = 0.0;
    for (const double i : column) {
        largest = std::max(largest, STriple::Has(i) ? std::abs(i) : 0.0);
    }
    return largest;
}

bool AllZero(const SCurve& curve)
{
    return std::ranges::all_of(
        curve.current, [](const std::vector<double>& column) { return LargestOf(column) == 0; });
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

void CheckSize(SCheck& check, const SShape& shape)
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
        CheckSize(check, shape);
        if (info != nullptr) {
            CheckRange(check, shape, ecl);
            CheckEqualColumns(check, shape);
            CheckClampInside(check, shape);
            CheckDriver(check, shape, *info, info->Type());
        }
    }
    check.report.Path().table = KeywordText(inModel ? EKeyword::Model : EKeyword::Submodel);
}

} // namespace zov::ibischk
