// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcOperators.h"

#include "base/Text.h"
#include "curve/CalcException.h"
#include "curve/CalcMessages.h"
#include "curve/CalcScalar.h"

#include <array>
#include <fmt/format.h>

namespace zov::curve {

namespace {

/// In the order of EOp.
constexpr std::array<SOpInfo, kOpCount> kOps = {{
    {":", 3, 1},
    {"?", 0, 1},
    {"||", 2, 2},
    {"&&", 2, 3},
    {">", 2, 4},
    {">=", 2, 4},
    {"<", 2, 4},
    {"<=", 2, 4},
    {"==", 2, 4},
    {"!=", 2, 4},
    {"+", 2, 5},
    {"-", 2, 5},
    {"*", 2, 6},
    {"/", 2, 6},
    {"^", 2, kPowerPrecedence},
    {"-@", 1, kSignPrecedence},
    {"+@", 1, kSignPrecedence},
    {"!", 1, kSignPrecedence},
    {"log", 1, 0},
    {"log10", 1, 0},
    {"exp", 1, 0},
    {"sqrt", 1, 0},
    {"sin", 1, 0},
    {"cos", 1, 0},
    {"tan", 1, 0},
    {"sinh", 1, 0},
    {"cosh", 1, 0},
    {"tanh", 1, 0},
    {"atan", 1, 0},
    {"asin", 1, 0},
    {"acos", 1, 0},
    {"abs", 1, 0},
    {"int", 1, 0},
    {"nint", 1, 0},
    {"db", 1, 0},
    {"sgn", 1, 0},
    {"pow", 2, 0},
    {"pwr", 2, 0},
    {"pwrs", 2, 0},
    {"atan2", 2, 0},
    {"max", 2, 0},
    {"min", 2, 0},
    {"sign", 2, 0},
    {"", 1, 0},
}};

constexpr std::size_t kLongestName = 7;

/// A name of up to seven letters and digits in lower case as one number.
constexpr std::uint64_t NameKey(std::string_view name)
{
    std::uint64_t key = 0;
    for (const char c : name) {
        key = key << 8U | static_cast<unsigned char>(ToLower(c));
    }
    return key;
}

constexpr auto kFirst = static_cast<std::size_t>(kFirstFunction);
constexpr auto kLast = static_cast<std::size_t>(kLastFunction);

constexpr auto kFunctionKeys = [] {
    std::array<std::uint64_t, kLast - kFirst + 1> keys{};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i] = NameKey(kOps[kFirst + i].text);
    }
    return keys;
}();

void Require(bool holds, const char* text)
{
    if (!holds) {
        throw CCalcException(text);
    }
}

double Truth(bool value)
{
    return value ? 1.0 : 0.0;
}

double ApplyOperator(EOp op, double a, double b, double c)
{
    switch (op) {
    case EOp::Choose:
        return a != 0.0 ? b : c;
    case EOp::Or:
        return Truth(a != 0.0 || b != 0.0);
    case EOp::And:
        return Truth(a != 0.0 && b != 0.0);
    case EOp::Greater:
        return Truth(a > b);
    case EOp::GreaterEqual:
        return Truth(a >= b);
    case EOp::Less:
        return Truth(a < b);
    case EOp::LessEqual:
        return Truth(a <= b);
    case EOp::Equal:
        return Truth(a == b);
    case EOp::NotEqual:
        return Truth(a != b);
    case EOp::Add:
        return a + b;
    case EOp::Subtract:
        return a - b;
    case EOp::Multiply:
        return a * b;
    case EOp::Divide:
        Require(b != 0.0, message::kDivideByZero);
        return a / b;
    case EOp::Negate:
        return -a;
    case EOp::Not:
        return Truth(a == 0.0);
    case EOp::Square:
        return a * a;
    default:
        return a;
    }
}

double ApplyOneOperandFunction(EOp op, double a)
{
    switch (op) {
    case EOp::Log:
        Require(!(a < 0.0), message::kLogNegative);
        return std::log(a);
    case EOp::Log10:
        Require(!(a < 0.0), message::kLog10Negative);
        return std::log10(a);
    case EOp::Exp:
        return std::exp(a);
    case EOp::Sqrt:
        Require(!(a < 0.0), message::kSqrtNegative);
        return std::sqrt(a);
    case EOp::Sin:
        return std::sin(a);
    case EOp::Cos:
        return std::cos(a);
    case EOp::Tan:
        return std::tan(a);
    case EOp::Sinh:
        return std::sinh(a);
    case EOp::Cosh:
        return std::cosh(a);
    case EOp::Tanh:
        return std::tanh(a);
    case EOp::Atan:
        return std::atan(a);
    case EOp::Asin:
        Require(!(std::abs(a) > 1.0), message::kAsinRange);
        return std::asin(a);
    case EOp::Acos:
        Require(!(std::abs(a) > 1.0), message::kAcosRange);
        return std::acos(a);
    case EOp::Abs:
        return std::abs(a);
    case EOp::Int:
        return scalar::Int(a);
    case EOp::Nint:
        return scalar::Int(a + 0.5);
    case EOp::Db:
        return scalar::Db(a);
    default:
        return scalar::Sgn(a);
    }
}

double ApplyTwoOperandFunction(EOp op, double a, double b)
{
    switch (op) {
    case EOp::Power:
    case EOp::Pow:
        Require(!(a == 0.0 && b < 0.0), message::kPowInfinite);
        return scalar::Power(a, b);
    case EOp::Pwr:
    case EOp::Pwrs:
        return scalar::Pwr(a, b);
    case EOp::Atan2:
        return std::atan2(a, b);
    case EOp::Max:
        return a > b ? a : b;
    case EOp::Min:
        return a < b ? a : b;
    default:
        return b >= 0.0 ? std::abs(a) : -std::abs(a);
    }
}

} // namespace

const SOpInfo& InfoOf(EOp op)
{
    return kOps[static_cast<std::size_t>(op)];
}

std::optional<EOp> FindFunction(std::string_view name)
{
    if (name.size() > kLongestName) {
        return std::nullopt;
    }
    const std::uint64_t key = NameKey(name);
    for (std::size_t i = 0; i < kFunctionKeys.size(); ++i) {
        if (kFunctionKeys[i] == key) {
            return static_cast<EOp>(kFirst + i);
        }
    }
    return std::nullopt;
}

std::optional<EOp> FindOperator(std::string_view text)
{
    for (std::size_t i = 0; i < kFirst; ++i) {
        if (kOps[i].text == text && static_cast<EOp>(i) != EOp::Then) {
            return static_cast<EOp>(i);
        }
    }
    return FindFunction(text);
}

double Apply(EOp op, const double* operands)
{
    const int count = InfoOf(op).operands;
    if (op == EOp::Power || (op >= EOp::Pow && op <= kLastFunction)) {
        return ApplyTwoOperandFunction(op, operands[0], operands[1]);
    }
    if (op >= kFirstFunction && op < EOp::Pow) {
        return ApplyOneOperandFunction(op, operands[0]);
    }
    return ApplyOperator(op, operands[0], count > 1 ? operands[1] : 0.0,
                         count > 2 ? operands[2] : 0.0);
}

void ThrowTooFewOperands(std::string_view name, int expected)
{
    switch (expected) {
    case 1:
        throw CCalcException(fmt::format(message::kOneOperand, name));
    case 2:
        throw CCalcException(fmt::format(message::kTwoOperands, name));
    case 3:
        throw CCalcException(fmt::format(message::kThreeOperands, name));
    default:
        throw CCalcException(fmt::format(message::kManyOperands, name, expected));
    }
}

} // namespace zov::curve
