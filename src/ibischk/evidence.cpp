// SPDX-License-Identifier: Apache-2.0
#include "ibischk/evidence.h"

#include "ibischk/corner.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::string_view kSum = "sum-with-clamps";

/// The rows with numbers next to a voltage; both the same row when it stands in the table.
std::pair<std::size_t, std::size_t> RowsAround(const SCurve& curve, std::size_t column, double v)
{
    std::size_t before = curve.voltage.size();
    for (std::size_t row = 0; row < curve.voltage.size(); ++row) {
        if (!STriple::Has(curve.current[column][row])) {
            continue;
        }
        if (curve.voltage[row] == v) {
            return {row, row};
        }
        if (before != curve.voltage.size() &&
            (curve.voltage[before] < v) != (curve.voltage[row] < v)) {
            return {before, row};
        }
        before = row;
    }
    return {before, before};
}

/// Why a table is in no sum; empty when it is in one.
std::string_view WhyNoSum(const SCheck& check, const SCurve& curve)
{
    if (curve.direction == 0) {
        return "built without this table: its voltages don't go one way";
    }
    // A model without repeated keywords has far fewer tables: the search for the first stays short.
    constexpr std::ptrdiff_t kMostTables = 200;
    const SModel& model = check.data.model;
    switch (curve.keyword) {
    case EKeyword::Pulldown:
    case EKeyword::Pullup:
    case EKeyword::GNDClamp:
    case EKeyword::POWERClamp:
        return &curve - model.curves.data() < kMostTables &&
                       model.FindCurve(curve.keyword) == &curve
                   ? ""
                   : "not built: only the first table of the keyword counts";
    case EKeyword::SubmodelPulldown:
    case EKeyword::SubmodelPullup:
    case EKeyword::SubmodelGNDClamp:
    case EKeyword::SubmodelPOWERClamp:
        return "not built: the supplies are those of the models that use the submodel";
    default:
        return "not built: this table is not added to clamps";
    }
}

} // namespace

std::string FormatSpan(std::size_t first, std::size_t last)
{
    const auto [low, high] = std::minmax(first, last);
    return low == high ? std::to_string(low) : std::to_string(low) + " to " + std::to_string(high);
}

void AddExtent(CDetails& details, std::span<const std::uint32_t> lines)
{
    details.Add("rows", static_cast<double>(lines.size()));
    if (!lines.empty()) {
        details.Add("lines", FormatSpan(lines.front(), lines.back()));
    }
}

CDetails ExtentOf(const SWaveform& table, std::size_t column)
{
    CDetails details;
    details.Add("table", KeywordText(table.keyword)).Add("corner", CornerName(column));
    AddExtent(details, table.line);
    if (!table.time.empty()) {
        details.Add("time", table.time.front()).Add("until", table.time.back());
    }
    return details;
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

CDetails AroundOf(const SCurve& curve, std::size_t column, double voltage)
{
    CDetails details;
    details.Add("table", KeywordText(curve.keyword)).Add("corner", CornerName(column));
    const auto [row, next] = RowsAround(curve, column, voltage);
    if (next < curve.line.size()) {
        details.Add("rows", FormatSpan(row + 1, next + 1))
            .Add("lines", FormatSpan(curve.line[row], curve.line[next]));
    }
    details.Add("voltage", voltage);
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

void AddPart(CDetails& details, double size, std::string_view part, double of)
{
    details.Add("size", size);
    if (of > 0) {
        details.Add(part, size / of);
    }
}

void AddRows(CDetails& details, const CPadCurrent& current, double padVoltage)
{
    for (const CBranch& branch : current.Branches()) {
        const SCurve& curve = branch.Curve();
        const auto [row, next] = branch.RowsAt(padVoltage);
        details.Add("table", KeywordText(curve.keyword))
            .Add("rows", FormatSpan(row + 1, next + 1))
            .Add("lines", FormatSpan(curve.line[row], curve.line[next]));
    }
}

SFall FallsOf(const SCorner& corner, const CPadCurrent& current)
{
    return current.FindFalls(corner.rails.Low() - corner.span, corner.rails.High() + corner.span);
}

void AddSum(CDetails& details, const SCorner& corner, const CPadCurrent& current)
{
    const SFall fall = FallsOf(corner, current);
    details.Add(kSum, fall.count == 0 ? "monotonic" : "not monotonic");
    if (fall.count != 0) {
        details.Add("sum-falls-at", fall.voltage).Add("sum-falls-by", fall.size);
    }
}

void AddSum(CDetails& details, SCheck& check, const SCurve& curve, std::size_t column)
{
    if (const std::string_view why = WhyNoSum(check, curve); !why.empty()) {
        AddNoSum(details, why);
        return;
    }
    const SCorner corner = MakeCorner(check.data.model, OpenModel(check).Type(), column);
    const CPadCurrent& sum = curve.keyword == EKeyword::Pulldown ? corner.low
                             : curve.keyword == EKeyword::Pullup ? corner.high
                                                                 : corner.clamps;
    if (!(corner.span > 0)) {
        AddNoSum(details, "not built: a supply of the corner is NA or not given");
    } else if (sum.Empty()) {
        AddNoSum(details, "not built: no table can be used in this corner");
    } else {
        AddSum(details, corner, sum);
    }
}

void AddNoSum(CDetails& details, std::string_view why)
{
    details.Add(kSum, why);
}

} // namespace zov::ibischk
