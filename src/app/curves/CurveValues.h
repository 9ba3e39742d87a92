// SPDX-License-Identifier: Apache-2.0
/// What of a curve is drawn: the points of a set's curve seen as magnitude, phase and so on, where
/// they lie and without a copy. Each point is looked at once, when this is made; from then on the
/// smallest and largest value of any run of points are found without looking at each, so that a
/// million points are drawn as quickly as a thousand.
#pragma once

#include "curve/Curve.h"

#include <array>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace zov::app {

enum class ECurveView
{
    Magnitude,
    Db,
    Phase, ///< degrees
    Real,
    Imaginary,
    Smith ///< the reflection in the complex plane
};

struct SValueRange
{
    double low = 0.0;
    double high = -1.0;

    [[nodiscard]] bool Empty() const { return !(low <= high); }
    void Include(double value);
    void Include(const SValueRange& other);
    /// How far a value is outside; 0 inside.
    [[nodiscard]] double Away(double value) const;
};

struct SDrawnPoint
{
    double x = 0.0;
    double y = 0.0;
};

/// What a view shows of a value; of the Smith view its imaginary part. A curve of real values is
/// drawn as it is in every view.
[[nodiscard]] double ViewValue(std::complex<double> value, bool isComplex, ECurveView view);

/// Reference of the Smith view for curves that are impedances or admittances.
constexpr double kSmithReferenceOhm = 50.0;

class CCurveValues
{
public:
    /// Points of a block, in which a curve in any order of x is looked at.
    static constexpr std::size_t kBlock = 64;

    /// @param unit       says whether the values are impedances or admittances
    /// @param cancelled  asked every few thousand points; what is left when it is true is not to be
    ///                   used
    CCurveValues(curve::TCurvePtr curve, ECurveView view, curve::EUnitClass unit,
                 const std::function<bool()>& cancelled = {});

    [[nodiscard]] const curve::TCurvePtr& Curve() const { return m_curve; }
    [[nodiscard]] curve::EUnitClass Unit() const { return m_unit; }

    [[nodiscard]] std::size_t Count() const { return m_x.size(); }
    [[nodiscard]] bool IsComplex() const { return !m_im.empty(); }
    [[nodiscard]] ECurveView View() const { return m_view; }
    [[nodiscard]] double Abscissa(std::size_t i) const { return m_x[i]; }
    [[nodiscard]] std::complex<double> Value(std::size_t i) const
    {
        return {m_re[i], m_im.empty() ? 0.0 : m_im[i]};
    }
    /// Value of the view; of the Smith view the imaginary part of the reflection.
    [[nodiscard]] double Y(std::size_t i) const;
    /// Where a point stands in the plot.
    [[nodiscard]] SDrawnPoint At(std::size_t i) const;
    /// x never falls, so that a range of x is a range of points. Never of the Smith view.
    [[nodiscard]] bool IsRising() const { return m_rising; }
    /// First point at or behind x, of a rising curve.
    [[nodiscard]] std::size_t LowerBound(double x) const;
    /// The point nearest to x. `Count()` when there are none.
    [[nodiscard]] std::size_t Nearest(double x) const;
    /// The point of a curve that is not rising that is nearest to a place of the plane, whose
    /// directions count by these factors. `Count()` when there are none.
    [[nodiscard]] std::size_t Nearest(SDrawnPoint place, double xFactor, double yFactor) const;

    /// Of the points from `begin` to before `end`; what is no finite number does not count.
    [[nodiscard]] SValueRange RangeOf(std::size_t begin, std::size_t end) const;
    /// Smallest value above 0 of these points; 0 for none.
    [[nodiscard]] double LeastPositiveOf(std::size_t begin, std::size_t end) const;
    [[nodiscard]] SValueRange XRange() const { return m_xRange; }
    [[nodiscard]] SValueRange YRange() const { return RangeOf(0, Count()); }
    /// Smallest value above 0, for logarithmic axes; 0 for none.
    [[nodiscard]] double LeastPositiveX() const { return m_leastX; }
    [[nodiscard]] double LeastPositiveY() const { return m_leastY; }

    // Of a curve that is not rising, block by block.
    [[nodiscard]] std::size_t Blocks() const { return m_blocks.size(); }
    [[nodiscard]] const SValueRange& BlockX(std::size_t block) const { return m_xBlocks[block]; }
    [[nodiscard]] const SValueRange& BlockY(std::size_t block) const { return m_blocks[block]; }
    /// Its points that are furthest in each direction, counted from its first; none when one of its
    /// points is no number, so that all are to be looked at.
    static constexpr std::size_t kDirections = 8;
    using TExtremes = std::array<std::uint8_t, kDirections>;
    [[nodiscard]] std::optional<TExtremes> BlockExtremes(std::size_t block) const;
    /// How far a point is in a direction: left, right, down, up and between them.
    [[nodiscard]] static double Along(std::size_t direction, SDrawnPoint point);

private:
    [[nodiscard]] std::complex<double> Reflection(std::size_t i) const;
    void Summarise(const std::function<bool()>& cancelled);
    void SummariseBlock(std::size_t block);
    void SummarisePlane(std::size_t block);

    curve::TCurvePtr m_curve; ///< keeps what the spans point to
    ECurveView m_view;
    curve::EUnitClass m_unit;
    std::span<const double> m_x;
    std::span<const double> m_re;
    std::span<const double> m_im;
    bool m_rising = true;
    SValueRange m_xRange;
    double m_leastX = 0.0;
    double m_leastY = 0.0;
    std::vector<SValueRange> m_blocks;      ///< of kBlock points
    std::vector<SValueRange> m_superBlocks; ///< of kBlock blocks
    std::vector<double> m_leastBlocks;      ///< smallest value above 0 of each block, or 0
    std::vector<SValueRange> m_xBlocks;     ///< like m_blocks, of a curve that is not rising
    std::vector<TExtremes> m_extremes;      ///< the same
};

} // namespace zov::app
