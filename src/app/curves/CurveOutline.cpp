// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveOutline.h"

#include <qwt_scale_map.h>
#include <qwt_transform.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zov::app {
namespace {

/// Points per column of pixels up to which each is drawn.
constexpr std::size_t kPlainPoints = 4;
/// Of a curve in the plane: blocks up to which each point is drawn, and groups of blocks above.
constexpr std::size_t kPlainBlocks = 50000 / CCurveValues::kBlock;
constexpr std::size_t kGroups = 4000;
/// Painters lose precision far outside, and dashes of what is not seen cost time.
constexpr double kMarginPixels = 100.0;

/// The part of a line within an area; false when there is none.
bool Clip(const QRectF& area, QPointF& from, QPointF& to)
{
    const QPointF start = from;
    const QPointF way = to - from;
    double begin = 0.0;
    double end = 1.0;
    const double sides[][2] = {{-way.x(), start.x() - area.left()},
                               {way.x(), area.right() - start.x()},
                               {-way.y(), start.y() - area.top()},
                               {way.y(), area.bottom() - start.y()}};
    for (const auto& [speed, room] : sides) {
        if (speed == 0.0 && room < 0.0) {
            return false;
        }
        if (speed < 0.0) {
            begin = std::max(begin, room / speed);
        } else if (speed > 0.0) {
            end = std::min(end, room / speed);
        }
    }
    from = start + way * begin;
    to = end < 1.0 ? start + way * end : to;
    return begin <= end;
}

class COutline
{
public:
    COutline(const CCurveValues& values, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
             const QRectF& area)
        : m_values(values)
        , m_xMap(xMap)
        , m_yMap(yMap)
        , m_drawn(area)
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
            MakeByBlocks();
        }
        Break();
        return std::move(m_pieces);
    }

private:
    void Put(double px, double value)
    {
        const double py = m_yMap.transform(value);
        if (!std::isfinite(value) || !std::isfinite(px) || !std::isfinite(py) ||
            (m_yLog && value <= 0.0)) {
            Break();
            return;
        }
        const QPointF at(px, py);
        m_leaves = m_leaves || !m_area.contains(at);
        m_piece.append(at);
    }
    void Break()
    {
        if (m_leaves) {
            KeepInside();
        } else if (!m_piece.isEmpty()) {
            m_pieces.push_back(std::move(m_piece));
        }
        m_piece = {};
        m_leaves = false;
    }
    /// Ends lines shortly behind the edges where they lead out, without a change of their
    /// direction.
    void KeepInside()
    {
        QPolygonF inside;
        for (int i = 1; i < m_piece.size(); ++i) {
            QPointF from = m_piece[i - 1];
            QPointF to = m_piece[i];
            if (!Clip(m_area, from, to)) {
                continue;
            }
            if (inside.isEmpty() || inside.last() != from) {
                if (!inside.isEmpty()) {
                    m_pieces.push_back(std::move(inside));
                }
                inside = {};
                inside.append(from);
            }
            inside.append(to);
        }
        if (!inside.isEmpty()) {
            m_pieces.push_back(std::move(inside));
        }
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
            const bool isLeft = m_yLog && range.low <= 0.0;
            const double low = isLeft ? m_values.LeastPositiveOf(begin, end) : range.low;
            if (!isLeft || low > 0.0) {
                Put(px, low);
            }
            Put(px, range.high);
        }
        PutPoint(end - 1);
    }

    /// In any order of x: each point while few are seen, else the outermost of neighbours.
    void MakeByBlocks()
    {
        const SValueRange x = Seen(m_xMap, m_drawn.left(), m_drawn.right());
        const SValueRange y = Seen(m_yMap, m_drawn.top(), m_drawn.bottom());
        std::vector<bool> isSeen(m_values.Blocks());
        std::size_t seen = 0;
        for (std::size_t block = 0; block < isSeen.size(); ++block) {
            isSeen[block] = Meet(m_values.BlockX(block), x) && Meet(m_values.BlockY(block), y);
            seen += isSeen[block] ? 1 : 0;
        }
        const bool each = seen <= kPlainBlocks;
        const std::size_t most = each ? 1 : seen / kGroups + 1;
        for (std::size_t block = 0; block < isSeen.size();) {
            std::size_t end = block + 1;
            while (isSeen[block] && end < isSeen.size() && isSeen[end] && end - block < most) {
                ++end;
            }
            PutBlocks(block, end, isSeen[block], each);
            block = end;
        }
    }

    static SValueRange Seen(const QwtScaleMap& map, double p1, double p2)
    {
        const auto [low, high] = std::minmax({map.invTransform(p1), map.invTransform(p2)});
        return {low, high};
    }
    static bool Meet(const SValueRange& one, const SValueRange& other)
    {
        return !one.Empty() && one.low <= other.high && other.low <= one.high;
    }

    void PutBlocks(std::size_t first, std::size_t end, bool isSeen, bool each)
    {
        const std::size_t begin = first * CCurveValues::kBlock;
        const std::size_t behind = std::min(end * CCurveValues::kBlock, m_values.Count());
        std::vector<std::size_t> outermost;
        if (isSeen && (each || !FindOutermost(first, end, outermost))) {
            PutByPixel(begin, behind);
            return;
        }
        // Of blocks that are not seen only the lines to their neighbours may be.
        PutPoint(begin);
        for (const std::size_t i : outermost) {
            PutPoint(i);
        }
        PutPoint(behind - 1);
    }

    /// The points of blocks that are furthest in each direction, in their order; false when some
    /// point is no number.
    bool FindOutermost(std::size_t first, std::size_t end, std::vector<std::size_t>& outermost)
    {
        constexpr std::size_t kDirections = CCurveValues::kDirections;
        std::array<double, kDirections> most;
        most.fill(-std::numeric_limits<double>::infinity());
        outermost.assign(kDirections, 0);
        for (std::size_t block = first; block < end; ++block) {
            const auto extremes = m_values.BlockExtremes(block);
            if (!extremes) {
                return false;
            }
            for (std::size_t direction = 0; direction < kDirections; ++direction) {
                const std::size_t i = block * CCurveValues::kBlock + (*extremes)[direction];
                const double along = CCurveValues::Along(direction, m_values.At(i));
                if (along > most[direction]) {
                    most[direction] = along;
                    outermost[direction] = i;
                }
            }
        }
        std::ranges::sort(outermost);
        return true;
    }

    /// Neighbours in the same pixel are one.
    void PutByPixel(std::size_t begin, std::size_t end)
    {
        double lastX = std::nan("");
        double lastY = std::nan("");
        for (std::size_t i = begin; i < end; ++i) {
            const SDrawnPoint at = m_values.At(i);
            const double px = std::floor(m_xMap.transform(at.x));
            const double py = std::floor(m_yMap.transform(at.y));
            if (px != lastX || py != lastY || i + 1 == end) {
                PutPoint(i);
                lastX = px;
                lastY = py;
            }
        }
    }

    const CCurveValues& m_values;
    const QwtScaleMap& m_xMap;
    const QwtScaleMap& m_yMap;
    QRectF m_drawn;
    QRectF m_area; ///< with a margin
    bool m_xLog;
    bool m_yLog;
    double m_left;
    std::size_t m_columns;
    QPolygonF m_piece;
    bool m_leaves = false; ///< the piece has points outside the area
    std::vector<QPolygonF> m_pieces;
};

} // namespace

std::vector<QPolygonF> OutlineOf(const CCurveValues& values, const QwtScaleMap& xMap,
                                 const QwtScaleMap& yMap, const QRectF& area)
{
    return COutline(values, xMap, yMap, area).Make();
}

} // namespace zov::app
