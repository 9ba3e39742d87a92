// SPDX-License-Identifier: Apache-2.0
/// Names and units of the axes by what a set holds and how it is seen.
#pragma once

#include "app/curves/CurvePlot.h"
#include "curve/CurveSet.h"

namespace zov::app {

/// By the titles of the first curve's points ("Freq(Hz)", "Real(Ohm)") where it has some, else by
/// the kind and the unit class of the set. Of shown curves only, unless none is; units that they
/// don't share are left out.
[[nodiscard]] SPlotAxes AxesOf(const curve::CCurveSet& set, const std::vector<SShownCurve>& entries,
                               ECurveView view);

/// The unit of a curve's values in a view: ohm, dB ohm, degrees, V, or none.
[[nodiscard]] QString ValueUnit(const SShownCurve& entry, curve::EKind kind, ECurveView view);

/// The unit of a curve: what its titles say, else the set's.
[[nodiscard]] curve::EUnitClass UnitOf(const curve::CCurve& curve, curve::EUnitClass ofSet);

} // namespace zov::app
