// SPDX-License-Identifier: Apache-2.0
/// Texts of fixed wording about expressions; users read them as they stand.
#pragma once

namespace zov::curve::message {

constexpr char kIllegalNumber[] = "illegal number format.";
constexpr char kIllegalOperator[] = "illegal operator: {}";
constexpr char kNotComplete[] = "This expression can't be parse completely.";
constexpr char kSyntax[] = "syntax error!";
constexpr char kExpected[] = "'{}' is expected.";
constexpr char kFunctionNotFound[] = "Function {}...) not found";

constexpr char kOneOperand[] = "<{}> usage is wrong: one operand is expected.";
constexpr char kTwoOperands[] = "<{}> usage is wrong: two operands are expected.";
constexpr char kThreeOperands[] = "<{}> usage is wrong: three operands are expected.";
constexpr char kManyOperands[] = "<{}> usage is wrong: {} operands are expected.";

constexpr char kDivideByZero[] = "divide by 0.";
constexpr char kLogNegative[] = "<log> operand is negative.";
constexpr char kLog10Negative[] = "<log10> operand is negative.";
constexpr char kSqrtNegative[] = "<sqrt> operand is negative.";
constexpr char kAsinRange[] = "<asin> operand's absolute value > 1.";
constexpr char kAcosRange[] = "<acos> operand's absolute value > 1.";
constexpr char kPowInfinite[] = "pow value is infinite.";

constexpr char kEvaluationSyntax[] = "syntax error";
constexpr char kNotEvaluated[] = "This expression can't be evaluated.";
constexpr char kNotDefined[] = "Parameter \"{}\" is not defined.";
constexpr char kParameterFailed[] = "Parameter \"{}\" can't be evalutated.";

} // namespace zov::curve::message
