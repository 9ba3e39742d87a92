// SPDX-License-Identifier: Apache-2.0
/// The lines that a curve is drawn by: no more than a few per column of pixels, and none of its
/// peaks left out.
#pragma once

#include "app/curves/CurveValues.h"

#include <QPolygonF>
#include <QRectF>

#include <vector>

class QwtScaleMap;

namespace zov::app {

/// Pieces in pixels; a value that is no number, or none of a logarithmic axis, parts them.
/// @param area  what is drawn on; lines that lead out of it end shortly behind its edge
[[nodiscard]] std::vector<QPolygonF> OutlineOf(const CCurveValues& values, const QwtScaleMap& xMap,
                                               const QwtScaleMap& yMap, const QRectF& area);

} // namespace zov::app
