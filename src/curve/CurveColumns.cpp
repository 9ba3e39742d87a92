// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveColumns.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <numbers>

namespace zov::curve {

namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;

struct SPartName
{
    std::string_view name;
    ECurvePart part;
};
constexpr std::array kParts = {
    SPartName{"re", ECurvePart::Real},       SPartName{"im", ECurvePart::Imaginary},
    SPartName{"mag", ECurvePart::Magnitude}, SPartName{"phase", ECurvePart::Phase},
    SPartName{"db", ECurvePart::Magnitude},  SPartName{"", ECurvePart::Real},
};

std::optional<ECurvePart> FindPart(std::string_view name)
{
    for (const SPartName& part : kParts) {
        if (part.name == name) {
            return part.part;
        }
    }
    return std::nullopt;
}

bool IsAscending(std::span<const double> x)
{
    for (std::size_t i = 1; i < x.size(); ++i) {
        if (!(x[i - 1] < x[i])) {
            return false;
        }
    }
    return !x.empty() && x.front() == x.front();
}

/// Whether the first value has an imaginary part anywhere.
bool IsComplex(const CCurvePoints& points)
{
    const auto imaginary = points.Column(2);
    return std::any_of(imaginary.begin(), imaginary.end(), [](double v) { return v != 0.0; });
}

/// The last of the ascending `x` that is not above `at`; mostly the one found before or the next.
std::size_t PlaceOf(std::span<const double> x, double at, std::size_t before)
{
    for (std::size_t near = before; near < std::min(before + 2, x.size() - 1); ++near) {
        if (x[near] <= at && at < x[near + 1]) {
            return near;
        }
    }
    const auto above = std::upper_bound(x.begin(), x.end(), at);
    return above == x.begin() ? 0 : static_cast<std::size_t>(above - x.begin()) - 1;
}

/// Values on other abscissas, which may be in any order but lie within those of `x`.
std::vector<double> Interpolate(std::span<const double> x, std::span<const double> values,
                                std::span<const double> wanted)
{
    std::vector<double> out;
    out.reserve(wanted.size());
    std::size_t near = 0;
    for (const double at : wanted) {
        near = PlaceOf(x, at, near);
        if (near + 1 == x.size() || x[near] == at) {
            out.push_back(values[near]);
        } else {
            const double share = (at - x[near]) / (x[near + 1] - x[near]);
            out.push_back(values[near] + share * (values[near + 1] - values[near]));
        }
    }
    return out;
}

} // namespace

const CCurvePoints& CCurveColumns::PointsOf(std::size_t curve) const
{
    return m_set.Curves()[curve]->Points();
}

std::string CCurveColumns::NameOfCurve(std::size_t curve) const
{
    const SCurveHeader& header = m_set.Curves()[curve]->Header();
    return !header.name.empty()     ? header.name
           : !header.legend.empty() ? header.legend
                                    : fmt::format("${}", curve + 1);
}

std::optional<std::size_t> CCurveColumns::FindCurve(std::string_view name) const
{
    if (name.starts_with('$')) {
        const auto number = ParseInt(name.substr(1));
        const auto count = static_cast<std::int64_t>(m_set.Curves().size());
        return number && *number >= 1 && *number <= count
                   ? std::optional(static_cast<std::size_t>(*number - 1))
                   : std::nullopt;
    }
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < m_set.Curves().size(); ++i) {
        if (NameOfCurve(i) != name) {
            continue;
        }
        if (found) {
            throw CCalcException(fmt::format("several curves are named '{}'; say ${} or ${}", name,
                                             *found + 1, i + 1));
        }
        found = i;
    }
    return found;
}

std::optional<std::size_t> CCurveColumns::Want(const SWanted& wanted)
{
    for (std::size_t i = 0; i < m_wanted.size(); ++i) {
        const SWanted& old = m_wanted[i];
        if (old.curve == wanted.curve && old.part == wanted.part && old.value == wanted.value) {
            return i;
        }
    }
    m_wanted.push_back(wanted);
    return m_wanted.size() - 1;
}

std::optional<std::size_t> CCurveColumns::Find(const SColumnRequest& request)
{
    const auto part = FindPart(request.part);
    const auto curve = part ? FindCurve(request.name) : std::nullopt;
    if (!curve) {
        if (part && !request.part.empty() && request.part != "db") {
            throw CCalcException(fmt::format("'{}' is no curve", request.name));
        }
        const bool isAbscissa =
            part && request.name == "x" && m_parameters.Find(request.name) == nullptr;
        return isAbscissa ? Want({0, ECurvePart::Abscissa, 0}) : std::nullopt;
    }
    std::size_t value = 0;
    if (!request.second.empty()) {
        const auto number = ParseInt(request.second);
        if (!number || *number < 1 || *number > 3) {
            throw CCalcException(
                fmt::format("'{}' is no value of a curve, expected 1, 2 or 3", request.second));
        }
        value = static_cast<std::size_t>(*number - 1);
    }
    if (!IsComplex(PointsOf(*curve)) && request.part.empty()) {
        return Want({*curve, ECurvePart::Real, 0});
    }
    if (request.part.empty()) {
        throw CCalcException(fmt::format("curve '{0}' is complex; say re({0}), im({0}), mag({0}), "
                                         "phase({0}) or db({0})",
                                         request.name));
    }
    return Want({*curve, *part, value});
}

void CCurveColumns::TakeCommonPoints(const std::vector<std::size_t>& others)
{
    double least = -std::numeric_limits<double>::infinity();
    double most = -least;
    for (const std::size_t other : others) {
        const auto x = PointsOf(other).Column(0);
        if (!IsAscending(x)) {
            throw CCalcException(fmt::format("curve '{}' has other abscissas than '{}' and can't "
                                             "be interpolated: they don't ascend",
                                             NameOfCurve(other), NameOfCurve(m_base)));
        }
        least = std::max(least, x.front());
        most = std::min(most, x.back());
        m_interpolated[other] = true;
        m_notes.push_back(fmt::format("'{}' is interpolated at the points of '{}', linearly in "
                                      "real and imaginary part",
                                      NameOfCurve(other), NameOfCurve(m_base)));
    }
    const auto x = PointsOf(m_base).Column(0);
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (x[i] >= least && x[i] <= most) {
            m_kept.push_back(i);
        }
    }
    if (m_kept.empty()) {
        throw CCalcException("the curves have no range of x in common");
    }
    if (m_kept.size() != x.size()) {
        m_notes.push_back(fmt::format("{} of {} points of '{}' are left out: they are outside {} "
                                      "to {}, which is what all curves cover",
                                      x.size() - m_kept.size(), x.size(), NameOfCurve(m_base),
                                      FormatG(least), FormatG(most)));
    } else {
        m_kept.clear();
    }
}

void CCurveColumns::Make()
{
    if (m_wanted.empty()) {
        throw CCalcException("the expression names no curve");
    }
    if (m_set.Curves().empty()) {
        throw CCalcException("there are no curves");
    }
    const auto first = std::find_if(m_wanted.begin(), m_wanted.end(), [](const SWanted& wanted) {
        return wanted.part != ECurvePart::Abscissa;
    });
    m_base = first == m_wanted.end() ? 0 : first->curve;
    m_interpolated.assign(m_set.Curves().size(), false);
    const auto base = PointsOf(m_base).Column(0);
    std::vector<std::size_t> others;
    for (const SWanted& wanted : m_wanted) {
        const auto x = PointsOf(wanted.curve).Column(0);
        if (wanted.part != ECurvePart::Abscissa && wanted.curve != m_base &&
            std::find(others.begin(), others.end(), wanted.curve) == others.end() &&
            !std::equal(x.begin(), x.end(), base.begin(), base.end())) {
            others.push_back(wanted.curve);
        }
    }
    if (!others.empty()) {
        TakeCommonPoints(others);
    }
    if (m_kept.empty()) {
        m_x.assign(base.begin(), base.end());
    } else {
        for (const std::size_t i : m_kept) {
            m_x.push_back(base[i]);
        }
    }
    for (const SWanted& wanted : m_wanted) {
        m_columns.push_back(MakeColumn(wanted));
    }
}

const double* CCurveColumns::Number(std::size_t curve, std::size_t number)
{
    const auto column = PointsOf(curve).Column(number);
    if (column.empty()) {
        return m_made.emplace_back(m_x.size(), 0.0).data();
    }
    if (m_interpolated[curve]) {
        return m_made.emplace_back(Interpolate(PointsOf(curve).Column(0), column, m_x)).data();
    }
    if (m_kept.empty()) {
        return column.data();
    }
    std::vector<double>& made = m_made.emplace_back();
    for (const std::size_t i : m_kept) {
        made.push_back(column[i]);
    }
    return made.data();
}

const double* CCurveColumns::MakeColumn(const SWanted& wanted)
{
    if (wanted.part == ECurvePart::Abscissa) {
        return m_x.data();
    }
    const std::size_t number = 1 + 2 * wanted.value;
    if (wanted.part == ECurvePart::Imaginary) {
        return Number(wanted.curve, number + 1);
    }
    const double* const real = Number(wanted.curve, number);
    if (wanted.part == ECurvePart::Real) {
        return real;
    }
    const double* const imaginary = Number(wanted.curve, number + 1);
    std::vector<double>& made = m_made.emplace_back(m_x.size());
    for (std::size_t i = 0; i < made.size(); ++i) {
        made[i] = wanted.part == ECurvePart::Magnitude
                      ? std::hypot(real[i], imaginary[i])
                      : std::atan2(imaginary[i], real[i]) * kDegrees;
    }
    return made.data();
}

} // namespace zov::curve
