// SPDX-License-Identifier: Apache-2.0
/// Expressions over curves: a new curve out of the points of others.
///
///     db(C1) - db(C2)                 mag(C1)*sin(phase(C1)*k)        v2/v1 with real curves
#pragma once

#include "base/Result.h"
#include "curve/CalcParameters.h"
#include "curve/CurveSet.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

/// What was computed, and what a user should know about it (interpolation, points left out).
struct SComputedCurve
{
    TCurvePtr curve; ///< real values, with the expression as its legend
    std::vector<std::string> notes;
};

/// Evaluates an expression for every point of the first curve that it names.
///
/// A curve is named by its name or, when it has none, its legend; "$2" is the second of the set. A
/// curve comes before a parameter of its name; "x" is the abscissa unless something has that name.
/// A name alone stands for the first value, which has to be real; re(C), im(C), mag(C), phase(C) in
/// degrees and db(C) reach complex ones, re(C,2) and the like the second and third value. Any other
/// operand of "db" is a number, as everywhere.
///
/// Curves with other abscissas are interpolated, linearly in real and imaginary part; points that
/// not all curves reach are left out.
/// Errors: Format with the calculator's texts; Argument for curves that don't fit together.
CResult<SComputedCurve> ComputeCurve(std::string_view expression, const CCurveSet& set,
                                     const CParameterTable& parameters);

} // namespace zov::curve
