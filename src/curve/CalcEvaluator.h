// SPDX-License-Identifier: Apache-2.0
/// The value of an expression: its postfix list walked with a stack.
#pragma once

#include "curve/CalcParameters.h"
#include "curve/CalcPostfix.h"

#include <span>
#include <string>

namespace zov::curve {

/// How deep parameters and user functions may lie within each other.
constexpr int kMaxCallDepth = 200;
/// Items that expressions of parameters and functions may bring into one evaluation, so that a few
/// lines that call each other twice don't run for years.
constexpr std::size_t kMaxCalledItems = 500'000;

/// Value of a parsed expression. All operands of "&&", "||" and "?:" are evaluated, so an error in
/// the one that is not taken is an error.
/// Throws CCalcException.
[[nodiscard]] double Evaluate(const CPostfix& expression, const CParameterTable& table);

/// The same for a list of texts, as CPostfix::Texts gives it.
[[nodiscard]] double EvaluatePostfix(std::span<const std::string> texts,
                                     const CParameterTable& table);

/// "v(a,b)"
[[nodiscard]] std::string VariableText(const SPostfixItem& item);

/// What an expression of a parameter that failed gives for the expression that names it.
[[noreturn]] void ThrowParameterFailed(std::string_view name, std::string_view cause,
                                       std::vector<std::string> notes);

} // namespace zov::curve
