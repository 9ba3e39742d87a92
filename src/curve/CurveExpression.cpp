// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveExpression.h"

#include "curve/Calculator.h"
#include "curve/CurveColumns.h"

#include <array>

namespace zov::curve {

namespace {

SComputedCurve Compute(std::string_view expression, const CCurveSet& set,
                       const CParameterTable& parameters)
{
    CCurveColumns columns(set, parameters);
    const CCompiledExpression program(
        ParseExpression(expression, parameters, ECurveParts::Yes), parameters,
        [&](const SColumnRequest& request) { return columns.Find(request); });
    columns.Make();
    const std::vector<double>& x = columns.Abscissas();
    std::vector<double> values(x.size());
    program.Evaluate(columns.Columns(), x.size(), values.data());

    SComputedCurve computed;
    computed.notes = columns.Notes();
    computed.curve = std::make_shared<CCurve>();
    computed.curve->Header().legend = expression;
    CCurvePoints& points = computed.curve->Points();
    points.Reserve(x.size(), 2);
    for (std::size_t i = 0; i < x.size(); ++i) {
        points.Add(std::array{x[i], values[i]});
    }
    return computed;
}

} // namespace

CResult<SComputedCurve> ComputeCurve(std::string_view expression, const CCurveSet& set,
                                     const CParameterTable& parameters)
{
    return Guarded([&] { return Compute(expression, set, parameters); });
}

} // namespace zov::curve
