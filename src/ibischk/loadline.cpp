// SPDX-License-Identifier: Apache-2.0
#include "ibischk/loadline.h"

#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

constexpr double kLeastFall = 1e-12;  ///< ampere
constexpr double kSameVoltage = 1e-9; ///< two points that rounding of a reference parts
constexpr int kBisections = 60;

} // namespace

CBranch::CBranch(const SCurve& curve, std::size_t column, double reference, EReference how)
    : m_curve(&curve)
    , m_column(column)
{
    const std::vector<double>& current = curve.current[column];
    const std::size_t count = curve.voltage.size();
    m_v.reserve(count);
    m_i.reserve(count);
    m_row.reserve(count);
    const bool backwards = (curve.direction > 0) == (how == EReference::Above);
    for (std::size_t n = 0; n < count; ++n) {
        const std::size_t i = backwards ? count - 1 - n : n;
        const double v =
            how == EReference::Below ? curve.voltage[i] + reference : reference - curve.voltage[i];
        if (STriple::Has(current[i]) && (m_v.empty() || v > m_v.back())) {
            m_v.push_back(v);
            m_i.push_back(current[i]);
            m_row.push_back(i);
        }
    }
    m_slope.reserve(count);
    for (std::size_t i = 0; i + 1 < m_v.size(); ++i) {
        m_slope.push_back((m_i[i + 1] - m_i[i]) / (m_v[i + 1] - m_v[i]));
    }
}

std::size_t CBranch::Segment(double v, std::size_t first, std::size_t last) const
{
    while (first < last) {
        const std::size_t middle = first + (last - first + 1) / 2;
        (m_v[middle] <= v ? first : last) = m_v[middle] <= v ? middle : middle - 1;
    }
    return first;
}

double CBranch::RoundingAt(double v) const
{
    const auto [row, next] = RowsAt(v);
    return std::max(m_curve->LastDigit(row, m_column), m_curve->LastDigit(next, m_column));
}

void CPadCurrent::Add(const SCurve* curve, std::size_t column, double reference, EReference how)
{
    if (curve == nullptr || curve->direction == 0 || !STriple::Has(reference)) {
        return;
    }
    CBranch branch(*curve, column, reference, how);
    if (!branch.Empty()) {
        m_branches.push_back(std::move(branch));
    }
}

double CPadCurrent::At(double v) const
{
    double sum = 0.0;
    for (const CBranch& branch : m_branches) {
        sum += branch.At(v);
    }
    return sum;
}

std::optional<double> CPadCurrent::Solve(double rOhm, double vFix, double low, double high) const
{
    struct SPieces
    {
        std::size_t low;
        std::size_t high;
    };
    std::vector<SPieces> pieces;
    pieces.reserve(m_branches.size());
    double atLow = (low - vFix) / rOhm;
    double atHigh = (high - vFix) / rOhm;
    for (const CBranch& branch : m_branches) {
        pieces.push_back({branch.Segment(low), branch.Segment(high)});
        atLow += branch.In(pieces.back().low, low);
        atHigh += branch.In(pieces.back().high, high);
    }
    if (Empty() || atLow > 0 || atHigh < 0) {
        return std::nullopt;
    }
    const auto straight = [&] {
        return std::ranges::all_of(pieces, [](const SPieces& p) { return p.low == p.high; });
    };
    std::vector<std::size_t> at(m_branches.size());
    for (int i = 0; i < kBisections && !straight(); ++i) {
        const double middle = 0.5 * (low + high);
        double excess = (middle - vFix) / rOhm;
        for (std::size_t b = 0; b < m_branches.size(); ++b) {
            at[b] = m_branches[b].Segment(middle, pieces[b].low, pieces[b].high);
            excess += m_branches[b].In(at[b], middle);
        }
        const bool above = excess > 0;
        (above ? high : low) = middle;
        (above ? atHigh : atLow) = excess;
        for (std::size_t b = 0; b < m_branches.size(); ++b) {
            (above ? pieces[b].high : pieces[b].low) = at[b];
        }
    }
    // Between two points of all tables the sum is a straight line.
    const double rise = atHigh - atLow;
    return rise > 0 ? low - atLow * (high - low) / rise : low;
}

/// Both ends and the points of all tables between them, rising.
std::vector<double> CPadCurrent::PointsBetween(double low, double high) const
{
    std::vector<double> points{low};
    for (const CBranch& branch : m_branches) {
        const auto known = static_cast<std::ptrdiff_t>(points.size());
        for (const double v : branch.Voltages()) {
            if (v > low && v < high) {
                points.push_back(v);
            }
        }
        std::inplace_merge(points.begin(), points.begin() + known, points.end());
    }
    points.push_back(high);
    return points;
}

double CPadCurrent::RoundingAt(double v) const
{
    double rounding = 0.0;
    for (const CBranch& branch : m_branches) {
        rounding += branch.RoundingAt(v);
    }
    return rounding;
}

SFall CPadCurrent::FindFalls(double low, double high) const
{
    // The sum is straight between the points of all tables: it falls somewhere only if it falls
    // from one of these points to the next.
    std::vector<std::size_t> pieces(m_branches.size());
    const auto sumAt = [&](double v) {
        double sum = 0.0;
        for (std::size_t b = 0; b < m_branches.size(); ++b) {
            sum += m_branches[b].FromPiece(pieces[b], v);
        }
        return sum;
    };
    SFall fall;
    double before = low;
    double currentBefore = sumAt(low);
    for (const double v : PointsBetween(low, high)) {
        if (v - before < kSameVoltage) {
            continue;
        }
        const double current = sumAt(v);
        fall.largest = std::max({fall.largest, std::abs(current), std::abs(currentBefore)});
        const double drop = currentBefore - current;
        if (drop > kLeastFall && drop > kDigitSlack * RoundingAt(0.5 * (before + v))) {
            if (fall.count++ == 0) {
                fall.voltage = before;
                fall.end = v;
            }
            fall.size += drop;
        }
        before = v;
        currentBefore = current;
    }
    return fall;
}

} // namespace zov::ibischk
