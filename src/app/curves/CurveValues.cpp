// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveValues.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zov::app {
namespace {

constexpr std::size_t kBlock = 64;
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

CCurveValues::CCurveValues(curve::TCurvePtr curve, ECurveView view, curve::EUnitClass unit)
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
    Summarise();
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

void CCurveValues::Summarise()
{
    m_rising = m_view != ECurveView::Smith;
    m_blocks.resize((Count() + kBlock - 1) / kBlock);
    m_superBlocks.resize((m_blocks.size() + kBlock - 1) / kBlock);
    double before = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < Count(); ++i) {
        const SDrawnPoint at = At(i);
        m_rising = m_rising && at.x >= before;
        before = at.x;
        m_xRange.Include(at.x);
        m_blocks[i / kBlock].Include(at.y);
        TakeLeast(m_leastX, at.x);
        TakeLeast(m_leastY, at.y);
    }
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        m_superBlocks[i / kBlock].Include(m_blocks[i]);
    }
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

} // namespace zov::app
