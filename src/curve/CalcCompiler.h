// SPDX-License-Identifier: Apache-2.0
/// Expressions over whole columns: parsed and resolved once, evaluated for any number of points.
#pragma once

#include "curve/CalcException.h"
#include "curve/CalcKernels.h"
#include "curve/CalcParameters.h"
#include "curve/CalcPostfix.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

/// What an expression asks for that may be a column.
struct SColumnRequest
{
    /// "" for a plain name; "re", "im", "mag" or "phase" of a curve; "db" for a plain name that is
    /// the operand of that function; "v" or "i".
    std::string_view part;
    std::string_view name;
    std::string_view second; ///< second node, or number of a curve's value; may be empty
};
/// Place of the column, or none when the name is not that of a column. May throw CCalcException.
using FColumn = std::function<std::optional<std::size_t>(const SColumnRequest&)>;

/// Instructions one expression may become: user functions stand in it as often as they are called.
constexpr std::size_t kMaxInstructions = 1'000'000;

class CCompiledExpression
{
public:
    /// Resolves names: arguments of user functions first, then columns, then parameters, whose
    /// expressions may name columns, too.
    /// Throws CCalcException as evaluating does, for what no point can change.
    CCompiledExpression(const CPostfix& expression, const CParameterTable& table,
                        const FColumn& columns);

    /// Evaluates for every point, with the very results that evaluating each point alone gives.
    /// @param columns  values of each column that was asked for, `count` of them
    /// @param out      `count` values
    /// Throws CCalcException with the text for the first point that fails, its number in a note.
    void Evaluate(std::span<const double* const> columns, std::size_t count, double* out) const;

    [[nodiscard]] std::size_t InstructionCount() const { return m_code.size(); }

private:
    friend class CExpressionCompiler;

    enum class EPlace : std::uint8_t
    {
        Slot, ///< block of intermediate values
        Column,
        Constant
    };
    struct SOperand
    {
        EPlace place = EPlace::Slot;
        std::uint32_t index = 0;
    };
    enum class EPoints : std::uint8_t
    {
        All,
        WhereTrue, ///< those at which `condition` is not 0
        WhereFalse
    };
    struct SInstruction
    {
        EOp op = EOp::Plus;
        EPoints points = EPoints::All; ///< for which the value is needed; errors count for all
        SOperand condition;
        std::uint32_t out = 0;
        std::uint32_t owner = 0; ///< parameter whose expression it belongs to, from 1; 0 for none
        SOperand in[3];
    };

    class CBlocks;

    [[nodiscard]] double EvaluatePoint(std::span<const double* const> columns,
                                       std::size_t point) const;
    [[noreturn]] void ThrowAt(std::span<const double* const> columns, std::size_t begin,
                              std::size_t count) const;

    std::vector<SInstruction> m_code;
    std::vector<double> m_constants;
    std::vector<std::string> m_owners;
    std::size_t m_slots = 0;
    SOperand m_result;
};

} // namespace zov::curve
