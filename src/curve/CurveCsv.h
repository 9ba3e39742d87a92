// SPDX-License-Identifier: Apache-2.0
/// Curves as comma-separated text for spreadsheets and scripts.
#pragma once

#include "base/File.h"
#include "curve/Curve.h"

#include <span>

namespace zov::curve {

/// A line per point of each curve: its name (the legend when it has none, or shares it with another
/// of these curves), x, and as many numbers as any of the curves has: "curve,x,value" for real
/// values, else "curve,x,real,imag,real2,...". Numbers are the shortest that read back to the same.
void WriteCurveCsv(std::span<const TCurvePtr> curves, CByteWriter& out);

} // namespace zov::curve
