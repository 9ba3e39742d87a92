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
}

std::size_t CBranch::Segment(double v) const
{
    const auto above = std::upper_bound(m_v.begin() + 1, m_v.end() - 1, v);
    return static_cast<std::size_t>(above - m_v.begin()) - 1;
}

double CBranch::At(double v) const
{
    const std::size_t i = Segment(v);
    const double slope = (m_i[i + 1] - m_i[i]) / (m_v[i + 1] - m_v[i]);
    return m_i[i] + slope * (v - m_v[i]);
}

double CBranch::RoundingAt(double v) const
{
    const std::size_t i = Segment(v);
    double digit = 0.0;
    for (const std::size_t row : {m_row[i], m_row[i + 1]}) {
        SRow words;
        ScanRow(m_curve->text[row], words);
        digit = std::max(digit, LastDigitOf(words.token[m_column + 1]));
    }
    return digit;
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
    const auto excess = [&](double v) { return At(v) + (v - vFix) / rOhm; };
    if (Empty() || excess(low) > 0 || excess(high) < 0) {
        return std::nullopt;
    }
    for (int i = 0; i < kBisections; ++i) {
        const double middle = 0.5 * (low + high);
        (excess(middle) > 0 ? high : low) = middle;
    }
    return 0.5 * (low + high);
}

SFall CPadCurrent::FindFalls(double low, double high) const
{
    // The sum is straight between the points of all tables: it falls somewhere only if it falls
    // from one of these points to the next.
    std::vector<double> points{low, high};
    for (const CBranch& branch : m_branches) {
        for (const double v : branch.Voltages()) {
            if (v > low && v < high) {
                points.push_back(v);
            }
        }
    }
    std::ranges::sort(points);
    SFall fall;
    double before = low;
    double currentBefore = At(low);
    for (const double v : points) {
        if (v - before < kSameVoltage) {
            continue;
        }
        const double current = At(v);
        fall.largest = std::max({fall.largest, std::abs(current), std::abs(currentBefore)});
        const double drop = currentBefore - current;
        if (drop > kLeastFall) {
            double rounding = 0.0;
            for (const CBranch& branch : m_branches) {
                rounding += branch.RoundingAt(0.5 * (before + v));
            }
            if (drop > rounding) {
                fall.voltage = fall.count++ == 0 ? before : fall.voltage;
                fall.size += drop;
            }
        }
        before = v;
        currentBefore = current;
    }
    return fall;
}

} // namespace zov::ibischk
