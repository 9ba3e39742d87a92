// SPDX-License-Identifier: Apache-2.0
/// The expression calculator for callers that take no exceptions.
///
///     CParameterTable table;
///     table.Set("w", "2*3.14159*f");
///     table.Set("f", 1e6);
///     CResult<double> z = Calculate("1/(w*100e-9)", table);
#pragma once

#include "base/Result.h"
#include "curve/CalcCompiler.h"
#include "curve/CalcEvaluator.h"
#include "curve/CalcParser.h"

#include <string_view>

namespace zov::curve {

/// Value of an expression. The error's text is the calculator's own.
CResult<double> Calculate(std::string_view expression, const CParameterTable& table);

/// Where in an expression an error points: the byte that could not be read, or the first place of
/// the name or function that the error's text quotes. None when it says nothing of the kind.
[[nodiscard]] std::optional<std::size_t> PlaceOfError(std::string_view expression,
                                                      const SError& error);

/// What `call` gives, or the error that it throws.
template <class F>
auto Guarded(F call) -> CResult<decltype(call())>
{
    try {
        return call();
    } catch (const CCalcException& error) {
        return error.ToError();
    }
}

} // namespace zov::curve
