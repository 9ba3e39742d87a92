// SPDX-License-Identifier: Apache-2.0
/// Operators and functions of expressions: one table with their texts, operands and precedence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zov::curve {

enum class EOp : std::uint8_t
{
    Choose, ///< a ? b : c, written ":" behind its operands
    Then,   ///< "?" while it is parsed; never in a postfix list
    Or,
    And,
    Greater,
    GreaterEqual,
    Less,
    LessEqual,
    Equal,
    NotEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    Negate,
    Plus,
    Not,
    Log,
    Log10,
    Exp,
    Sqrt,
    Sin,
    Cos,
    Tan,
    Sinh,
    Cosh,
    Tanh,
    Atan,
    Asin,
    Acos,
    Abs,
    Int,
    Nint,
    Db,
    Sgn,
    Pow,
    Pwr,
    Pwrs,
    Atan2,
    Max,
    Min,
    Sign,
    Square ///< a * a: what the second power is computed as; only in compiled expressions
};
constexpr std::size_t kOpCount = static_cast<std::size_t>(EOp::Square) + 1;
constexpr EOp kFirstFunction = EOp::Log;
constexpr EOp kLastFunction = EOp::Sign;

struct SOpInfo
{
    std::string_view text; ///< in a postfix list
    int operands;
    int precedence; ///< the higher, the tighter; 0 for functions
};

constexpr int kSignPrecedence = 7;
constexpr int kPowerPrecedence = 8;

[[nodiscard]] const SOpInfo& InfoOf(EOp op);
/// By name, without regard to case.
[[nodiscard]] std::optional<EOp> FindFunction(std::string_view name);
/// Any item of a postfix list that is an operator or a function.
[[nodiscard]] std::optional<EOp> FindOperator(std::string_view text);

/// Value of an operator for its operands, which there have to be enough of. Every way of evaluating
/// gives exactly these results.
/// Throws CCalcException for an operand outside the operator's domain.
[[nodiscard]] double Apply(EOp op, const double* operands);

/// The words of an operator that got too few operands.
[[noreturn]] void ThrowTooFewOperands(std::string_view name, int expected);

} // namespace zov::curve
