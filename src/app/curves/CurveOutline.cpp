// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveOutline.h"

#include <qwt_scale_map.h>
#include <qwt_transform.h>

#include <algorithm>
#include <cmath>

namespace zov::app {
namespace {

/// Points per column of pixels up to which each is drawn.
constexpr std::size_t kPlainPoints = 4;
/// Painters lose precision far outside.
constexpr double kMarginPixels = 4000.0;

class COutline
{
public:
    COutline(const CCurveValues& values, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
             const QRectF& area)
        : m_values(values)
        , m_xMap(xMap)
        , m_yMap(yMap)
        , m_area(area.adjusted(-kMarginPixels, -kMarginPixels, kMarginPixels, kMarginPixels))
        , m_xLog(dynamic_cast<const QwtLogTransform*>(xMap.transformation()) != nullptr)
        , m_yLog(dynamic_cast<const QwtLogTransform*>(yMap.transformation()) != nullptr)
        , m_left(area.left())
        , m_columns(static_cast<std::size_t>(std::max(1.0, std::ceil(area.width()))))
    {
    }

    std::vector<QPolygonF> Make()
    {
        if (m_values.IsRising()) {
            MakeRising();
        } else {
            MakeByPixel();
        }
        Break();
        return std::move(m_pieces);
    }

private:
    void Put(double px, double value)
    {
        if (!std::isfinite(value) || !std::isfinite(px) || (m_yLog && value <= 0.0)) {
            Break();
            return;
        }
        m_piece.append({std::clamp(px, m_area.left(), m_area.right()),
                        std::clamp(m_yMap.transform(value), m_area.top(), m_area.bottom())});
    }
    void Break()
    {
        if (!m_piece.isEmpty()) {
            m_pieces.push_back(std::move(m_piece));
        }
        m_piece = {};
    }
    void PutPoint(std::size_t i)
    {
        const SDrawnPoint at = m_values.At(i);
        if (m_xLog && at.x <= 0.0) {
            Break();
        } else {
            Put(m_xMap.transform(at.x), at.y);
        }
    }

    void MakeRising()
    {
        const auto [low, high] = std::minmax({m_xMap.s1(), m_xMap.s2()});
        std::size_t begin = m_values.LowerBound(low);
        std::size_t end = m_values.LowerBound(high);
        // One point beyond each edge, so that the lines that cross it are drawn.
        begin -= begin > 0 ? 1 : 0;
        end = std::min(end + 2, m_values.Count());
        if (end - std::min(begin, end) <= kPlainPoints * m_columns) {
            for (std::size_t i = begin; i < end; ++i) {
                PutPoint(i);
            }
            return;
        }
        PutPoint(begin++);
        for (std::size_t column = 0; column < m_columns && begin < end; ++column) {
            const double edge = m_xMap.invTransform(m_left + static_cast<double>(column) + 1.0);
            const std::size_t next =
                column + 1 == m_columns ? end : std::min(end, m_values.LowerBound(edge));
            PutColumn(begin, std::max(begin, next));
            begin = std::max(begin, next);
        }
    }

    void PutColumn(std::size_t begin, std::size_t end)
    {
        if (end - begin <= kPlainPoints) {
            for (; begin < end; ++begin) {
                PutPoint(begin);
            }
            return;
        }
        PutPoint(begin);
        const SValueRange range = m_values.RangeOf(begin, end);
        if (!range.Empty() && !(m_xLog && m_values.Abscissa(begin) <= 0.0)) {
            const double px = m_xMap.transform(m_values.Abscissa(begin));
            if (!m_yLog || range.low > 0.0) {
                Put(px, range.low);
            }
            Put(px, range.high);
        }
        PutPoint(end - 1);
    }

    /// In any order of x: neighbours in the same pixel are one.
    void MakeByPixel()
    {
        double lastX = std::nan("");
        double lastY = std::nan("");
        for (std::size_t i = 0; i < m_values.Count(); ++i) {
            const SDrawnPoint at = m_values.At(i);
            const double px = std::floor(m_xMap.transform(at.x));
            const double py = std::floor(m_yMap.transform(at.y));
            if (px != lastX || py != lastY || i + 1 == m_values.Count()) {
                PutPoint(i);
                lastX = px;
                lastY = py;
            }
        }
    }

    const CCurveValues& m_values;
    const QwtScaleMap& m_xMap;
    const QwtScaleMap& m_yMap;
    QRectF m_area;
    bool m_xLog;
    bool m_yLog;
    double m_left;
    std::size_t m_columns;
    QPolygonF m_piece;
    std::vector<QPolygonF> m_pieces;
};

} // namespace

std::vector<QPolygonF> OutlineOf(const CCurveValues& values, const QwtScaleMap& xMap,
                                 const QwtScaleMap& yMap, const QRectF& area)
{
    return COutline(values, xMap, yMap, area).Make();
}

} // namespace zov::app
