// SPDX-License-Identifier: Apache-2.0
#include "curve/Calculator.h"

namespace zov::curve {

CResult<double> Calculate(std::string_view expression, const CParameterTable& table)
{
    return Guarded([&] { return Evaluate(ParseExpression(expression, table), table); });
}

} // namespace zov::curve
