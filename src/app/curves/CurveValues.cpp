// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveValues.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace zov::app {
namespace {

/// Between two questions whether to go on.
constexpr std::size_t kBlocksAtOnce = 256;
constexpr std::uint8_t kNoExtreme = 255;
constexpr double kDegrees = 180.0 / std::numbers::pi;

void TakeLeast(double& least, double value)
{
    if (value > 0.0 && std::isfinite(value) && (least == 0.0 || value < least)) {
        least = value;
    }
}

} // namespace

void SValueRange::Include(double value)
{
    if (!std::isfinite(value)) {
        return;
    }
    if (Empty()) {
        low = high = value;
    } else {
        low = std::min(low, value);
        high = std::max(high, value);
    }
}

void SValueRange::Include(const SValueRange& other)
{
    if (!other.Empty()) {
        Include(other.low);
        Include(other.high);
    }
}

double SValueRange::Away(double value) const
{
    return std::max({low - value, value - high, 0.0});
}

double ViewValue(std::complex<double> value, bool isComplex, ECurveView view)
{
    if (!isComplex) {
        return value.real();
    }
    switch (view) {
    case ECurveView::Magnitude:
        return std::abs(value);
    case ECurveView::Db:
        return 20.0 * std::log10(std::abs(value));
    case ECurveView::Phase:
        return std::arg(value) * kDegrees;
    case ECurveView::Real:
        return value.real();
    default:
        return value.imag();
    }
}

CCurveValues::CCurveValues(curve::TCurvePtr curve, ECurveView view, curve::EUnitClass unit,
                           const std::function<bool()>& cancelled)
    : m_curve(std::move(curve))
    , m_view(view)
    , m_unit(unit)
    , m_x(m_curve->Points().Column(0))
    , m_re(m_curve->Points().Column(1))
    , m_im(m_curve->Points().Column(2))
{
    if (m_re.size() != m_x.size()) { // points without a value
        m_x = {};
        m_im = {};
    }
    Summarise(cancelled);
}

std::complex<double> CCurveValues::Reflection(std::size_t i) const
{
    const std::complex<double> value = Value(i);
    if (m_unit == curve::EUnitClass::Ohm) {
        return (value - kSmithReferenceOhm) / (value + kSmithReferenceOhm);
    }
    if (m_unit == curve::EUnitClass::Siemens) {
        return (1.0 - value * kSmithReferenceOhm) / (1.0 + value * kSmithReferenceOhm);
    }
    return value;
}

double CCurveValues::Y(std::size_t i) const
{
    return m_view == ECurveView::Smith ? Reflection(i).imag()
                                       : ViewValue(Value(i), IsComplex(), m_view);
}

SDrawnPoint CCurveValues::At(std::size_t i) const
{
    if (m_view != ECurveView::Smith) {
        return {m_x[i], Y(i)};
    }
    const std::complex<double> reflection = Reflection(i);
    return {reflection.real(), reflection.imag()};
}

void CCurveValues::Summarise(const std::function<bool()>& cancelled)
{
    const auto falls = [](double before, double x) { return !(x >= before); };
    m_rising = m_view != ECurveView::Smith &&
               std::adjacent_find(m_x.begin(), m_x.end(), falls) == m_x.end();
    m_blocks.resize((Count() + kBlock - 1) / kBlock);
    m_leastBlocks.resize(m_blocks.size());
    m_superBlocks.resize((m_blocks.size() + kBlock - 1) / kBlock);
    if (!m_rising) {
        m_xBlocks.resize(m_blocks.size());
        m_extremes.resize(m_blocks.size());
    }
    for (std::size_t block = 0; block < m_blocks.size(); ++block) {
        if (block % kBlocksAtOnce == 0 && cancelled && cancelled()) {
            return;
        }
        SummariseBlock(block);
        m_superBlocks[block / kBlock].Include(m_blocks[block]);
    }
}

void CCurveValues::SummariseBlock(std::size_t block)
{
    const std::size_t begin = block * kBlock;
    const std::size_t end = std::min(begin + kBlock, Count());
    SValueRange x;
    for (std::size_t i = begin; i < end; ++i) {
        const SDrawnPoint at = At(i);
        x.Include(at.x);
        m_blocks[block].Include(at.y);
        TakeLeast(m_leastX, at.x);
        TakeLeast(m_leastBlocks[block], at.y);
    }
    TakeLeast(m_leastY, m_leastBlocks[block]);
    m_xRange.Include(x);
    if (!m_rising) {
        m_xBlocks[block] = x;
        SummarisePlane(block);
    }
}

void CCurveValues::SummarisePlane(std::size_t block)
{
    const std::size_t begin = block * kBlock;
    const std::size_t end = std::min(begin + kBlock, Count());
    TExtremes extremes{};
    std::array<double, kDirections> most;
    most.fill(-std::numeric_limits<double>::infinity());
    for (std::size_t i = begin; i < end; ++i) {
        const SDrawnPoint at = At(i);
        if (!std::isfinite(at.x) || !std::isfinite(at.y)) {
            m_extremes[block].fill(kNoExtreme);
            return;
        }
        for (std::size_t direction = 0; direction < kDirections; ++direction) {
            const double along = Along(direction, at);
            if (along > most[direction]) {
                most[direction] = along;
                extremes[direction] = static_cast<std::uint8_t>(i - begin);
            }
        }
    }
    m_extremes[block] = extremes;
}

double CCurveValues::Along(std::size_t direction, SDrawnPoint point)
{
    constexpr double kWays[kDirections][2] = {{-1, 0},  {1, 0},  {0, -1}, {0, 1},
                                              {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
    return kWays[direction][0] * point.x + kWays[direction][1] * point.y;
}

std::optional<CCurveValues::TExtremes> CCurveValues::BlockExtremes(std::size_t block) const
{
    const TExtremes& extremes = m_extremes[block];
    return extremes[0] == kNoExtreme ? std::nullopt : std::optional(extremes);
}

std::size_t CCurveValues::LowerBound(double x) const
{
    return static_cast<std::size_t>(std::lower_bound(m_x.begin(), m_x.end(), x) - m_x.begin());
}

std::size_t CCurveValues::Nearest(double x) const
{
    if (m_rising) {
        const std::size_t above = LowerBound(x);
        if (above == Count()) {
            return Count() == 0 ? 0 : above - 1;
        }
        return above > 0 && x - m_x[above - 1] < m_x[above] - x ? above - 1 : above;
    }
    std::size_t nearest = Count();
    for (std::size_t i = 0; i < Count(); ++i) {
        if (nearest == Count() || std::abs(m_x[i] - x) < std::abs(m_x[nearest] - x)) {
            nearest = i;
        }
    }
    return nearest;
}

std::size_t CCurveValues::Nearest(SDrawnPoint place, double xFactor, double yFactor) const
{
    std::size_t nearest = Count();
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t block = 0; block < m_blocks.size(); ++block) {
        if (m_xBlocks[block].Empty() || m_blocks[block].Empty() ||
            std::hypot(m_xBlocks[block].Away(place.x) * xFactor,
                       m_blocks[block].Away(place.y) * yFactor) >= least) {
            continue;
        }
        const std::size_t end = std::min((block + 1) * kBlock, Count());
        for (std::size_t i = block * kBlock; i < end; ++i) {
            const SDrawnPoint at = At(i);
            const double distance =
                std::hypot((at.x - place.x) * xFactor, (at.y - place.y) * yFactor);
            if (distance < least) {
                least = distance;
                nearest = i;
            }
        }
    }
    return nearest;
}

SValueRange CCurveValues::RangeOf(std::size_t begin, std::size_t end) const
{
    SValueRange range;
    while (begin < end) {
        const std::size_t block = begin / kBlock;
        if (begin % (kBlock * kBlock) == 0 && begin + kBlock * kBlock <= end) {
            range.Include(m_superBlocks[block / kBlock]);
            begin += kBlock * kBlock;
        } else if (begin % kBlock == 0 && (begin + kBlock <= end || end == Count())) {
            range.Include(m_blocks[block]);
            begin += kBlock;
        } else {
            range.Include(Y(begin));
            ++begin;
        }
    }
    return range;
}

double CCurveValues::LeastPositiveOf(std::size_t begin, std::size_t end) const
{
    double least = 0.0;
    while (begin < end) {
        const bool isBlock = begin % kBlock == 0 && (begin + kBlock <= end || end == Count());
        TakeLeast(least, isBlock ? m_leastBlocks[begin / kBlock] : Y(begin));
        begin += isBlock ? kBlock : 1;
    }
    return least;
}

} // namespace zov::app
