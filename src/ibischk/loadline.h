// SPDX-License-Identifier: Apache-2.0
/// Currents of a buffer over the voltage of its pad, one corner at a time.
///
///     CPadCurrent low;
///     low.Add(pulldown, 0, rails.pulldown, EReference::Below);
///     const auto v = low.Solve(50.0, 3.3, -3.3, 9.9);   // fixture of 50 ohm to 3.3 V
#pragma once

#include "ibischk/crv.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace zov::ibischk {

/// What the voltages of a table mean, with the reference R and the pad v.
enum class EReference : std::uint8_t
{
    Below, ///< v - R: pulldown, GND clamp
    Above  ///< R - v: pullup, power clamp, ECL pulldown
};

/// One column of one table, as a function of the pad voltage.
class CBranch
{
public:
    /// NA rows are left out; rows with the same voltage keep the first.
    CBranch(const SCurve& curve, std::size_t column, double reference, EReference how);

    /// Interpolated; beyond the ends with the last slope.
    [[nodiscard]] double At(double v) const { return In(Segment(v), v); }
    /// The piece between two points that a voltage lies in, looked for among [first, last].
    [[nodiscard]] std::size_t Segment(double v, std::size_t first, std::size_t last) const;
    [[nodiscard]] std::size_t Segment(double v) const { return Segment(v, 0, m_v.size() - 2); }
    /// On the straight line of a piece.
    [[nodiscard]] double In(std::size_t segment, double v) const
    {
        return m_i[segment] + m_slope[segment] * (v - m_v[segment]);
    }
    /// As At, for voltages that only rise from call to call: `segment`, 0 at first, goes with them.
    [[nodiscard]] double FromPiece(std::size_t& segment, double v) const
    {
        while (segment + 2 < m_v.size() && m_v[segment + 1] <= v) {
            ++segment;
        }
        return In(segment, v);
    }
    /// How much rounding in the file may have moved the current about here.
    [[nodiscard]] double RoundingAt(double v) const;
    [[nodiscard]] const std::vector<double>& Voltages() const { return m_v; }
    [[nodiscard]] bool Empty() const { return m_v.size() < 2; }
    [[nodiscard]] const SCurve& Curve() const { return *m_curve; }
    /// The row of the table at the lower end of the piece that a voltage lies in, and the other.
    [[nodiscard]] std::pair<std::size_t, std::size_t> RowsAt(double v) const
    {
        const std::size_t i = Segment(v);
        return {m_row[i], m_row[i + 1]};
    }

private:
    const SCurve* m_curve;
    std::size_t m_column;
    std::vector<double> m_v; ///< rising
    std::vector<double> m_i;
    std::vector<double> m_slope; ///< of the piece behind each point but the last
    std::vector<std::size_t> m_row;
};

/// A fall in a sum that should rise.
struct SFall
{
    double voltage = 0.0; ///< where the first begins
    double end = 0.0;     ///< and ends
    double size = 0.0;    ///< of all together, ampere
    double largest = 0.0; ///< current in the range, ampere
    std::size_t count = 0;
};

/// A step of just one digit is not more than it, though binary fractions may say so.
constexpr double kDigitSlack = 1 + 1e-6;

class CPadCurrent
{
public:
    void Add(const SCurve* curve, std::size_t column, double reference, EReference how);

    [[nodiscard]] bool Empty() const { return m_branches.empty(); }
    [[nodiscard]] std::span<const CBranch> Branches() const { return m_branches; }
    [[nodiscard]] double At(double v) const;
    /// Where the current through R to Vfix equals that into the pad.
    /// @return none when there is no crossing between low and high
    [[nodiscard]] std::optional<double> Solve(double rOhm, double vFix, double low,
                                              double high) const;
    /// Falls beyond what rounding explains, between low and high.
    [[nodiscard]] SFall FindFalls(double low, double high) const;

private:
    [[nodiscard]] std::vector<double> PointsBetween(double low, double high) const;
    [[nodiscard]] double RoundingAt(double v) const;

    std::vector<CBranch> m_branches;
};

} // namespace zov::ibischk
