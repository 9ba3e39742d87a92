// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcCompiler.h"

#include "base/Text.h"
#include "curve/CalcEvaluator.h"
#include "curve/CalcMessages.h"
#include "curve/CalcParser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fmt/format.h>

namespace zov::curve {

/// Walks a postfix list with a stack of places instead of values.
class CExpressionCompiler
{
    using EPlace = CCompiledExpression::EPlace;
    using SOperand = CCompiledExpression::SOperand;
    using SInstruction = CCompiledExpression::SInstruction;

public:
    CExpressionCompiler(const CParameterTable& table, const FColumn& columns,
                        CCompiledExpression& program)
        : m_table(table)
        , m_columns(columns)
        , m_program(program)
    {
    }

    SOperand Compile(const CPostfix& expression, const SUserFunction* function,
                     std::span<const SOperand> arguments)
    {
        const auto items = expression.Items();
        std::vector<SOperand> stack;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const bool isDb = i + 1 < items.size() && items[i + 1].item == EItem::Operator &&
                              items[i + 1].op == EOp::Db;
            switch (items[i].item) {
            case EItem::Number:
                stack.push_back(Constant(items[i].number));
                break;
            case EItem::Name:
                stack.push_back(Named(items[i].text, isDb, function, arguments));
                break;
            case EItem::Variable:
                stack.push_back(Variable(items[i]));
                break;
            case EItem::Operator: {
                const SOpInfo& info = InfoOf(items[i].op);
                const auto operands = TakeOff(stack, info.text, info.operands);
                stack.push_back(Emit(items[i].op, operands));
                break;
            }
            case EItem::UserCall: {
                const auto operands = TakeOff(stack, items[i].text, items[i].operands);
                stack.push_back(Call(items[i].text, operands));
                break;
            }
            }
        }
        if (stack.size() != 1) {
            throw CCalcException(message::kNotEvaluated);
        }
        return stack.back();
    }

private:
    struct SMemo
    {
        bool running = false;
        std::optional<SOperand> value;
    };

    static std::vector<SOperand> TakeOff(std::vector<SOperand>& stack, std::string_view name,
                                         int count)
    {
        const auto wanted = static_cast<std::size_t>(count);
        if (stack.size() < wanted) {
            ThrowTooFewOperands(name, count);
        }
        const auto first = stack.end() - count;
        std::vector<SOperand> operands(first, stack.end());
        stack.erase(first, stack.end());
        return operands;
    }

    SOperand Constant(double value)
    {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        const auto [found, isNew] = m_constantIndex.try_emplace(
            bits, static_cast<std::uint32_t>(m_program.m_constants.size()));
        if (isNew) {
            m_program.m_constants.push_back(value);
        }
        return {EPlace::Constant, found->second};
    }

    std::optional<SOperand> Column(const SColumnRequest& request) const
    {
        const auto index = m_columns ? m_columns(request) : std::nullopt;
        return index ? std::optional<SOperand>({EPlace::Column, static_cast<std::uint32_t>(*index)})
                     : std::nullopt;
    }

    SOperand Named(std::string_view name, bool isDb, const SUserFunction* function,
                   std::span<const SOperand> arguments)
    {
        if (function != nullptr) {
            const auto& names = function->arguments;
            const auto found = std::find(names.begin(), names.end(), name);
            if (found != names.end()) {
                return Shared(arguments[static_cast<std::size_t>(found - names.begin())]);
            }
        }
        if (const auto column = Column({isDb ? "db" : "", name, {}})) {
            return *column;
        }
        const SParameter* parameter = m_table.Find(name);
        if (parameter == nullptr) {
            throw CCalcException(fmt::format(message::kNotDefined, name));
        }
        return parameter->value ? Constant(*parameter->value) : Parameter(name, *parameter);
    }

    SOperand Parameter(std::string_view name, const SParameter& parameter)
    {
        m_memos.resize(m_table.Count());
        const std::size_t index = parameter.index;
        if (m_memos[index].running) {
            ThrowParameterFailed(name, "its expression names itself", {});
        }
        if (!m_memos[index].value) {
            m_memos[index].running = true;
            const std::uint32_t outer = m_owner;
            if (outer == 0) {
                m_program.m_owners.emplace_back(name);
                m_owner = static_cast<std::uint32_t>(m_program.m_owners.size());
            }
            try {
                m_memos[index].value = CompileText(parameter.expression, nullptr, {});
            } catch (const CCalcException& error) {
                ThrowParameterFailed(name, error.what(), error.notes);
            }
            m_owner = outer;
            m_memos[index].running = false;
        }
        return Shared(*m_memos[index].value);
    }

    SOperand Call(std::string_view name, std::span<const SOperand> operands)
    {
        const SUserFunction* function = m_table.FindFunction(name);
        if (function == nullptr) {
            throw CCalcException(fmt::format(message::kFunctionNotFound, name));
        }
        const SOperand value = CompileText(function->body, function, operands);
        for (const SOperand& operand : operands) {
            Release(operand);
        }
        return value;
    }

    SOperand CompileText(const std::string& text, const SUserFunction* function,
                         std::span<const SOperand> arguments)
    {
        const CPostfix body = ParseExpression(text, m_table, ECurveParts::Yes);
        m_calledItems += body.Items().size();
        if (m_depth == kMaxCallDepth || m_calledItems > kMaxCalledItems) {
            ThrowTooOften();
        }
        ++m_depth;
        const SOperand value = Compile(body, function, arguments);
        --m_depth;
        return value;
    }

    SOperand Variable(const SPostfixItem& item)
    {
        const std::string part = LowerCase(item.text);
        if (const auto column = Column({part, item.first, item.second})) {
            return *column;
        }
        if (m_table.variables && part.size() == 1) {
            if (const auto value = m_table.variables({part.front(), item.first, item.second})) {
                return Constant(*value);
            }
        }
        throw CCalcException(fmt::format(message::kNotDefined, VariableText(item)));
    }

    SOperand Emit(EOp op, std::span<const SOperand> operands)
    {
        if (const auto folded = Fold(op, operands)) {
            return *folded;
        }
        if (m_program.m_code.size() == kMaxInstructions) {
            ThrowTooOften();
        }
        SInstruction instruction;
        instruction.op = op;
        instruction.owner = m_owner;
        std::copy(operands.begin(), operands.end(), instruction.in);
        if ((op == EOp::Power || op == EOp::Pow) && operands[1].place == EPlace::Constant &&
            m_program.m_constants[operands[1].index] == 2.0) {
            instruction.op = EOp::Square;
        }
        for (const SOperand& operand : operands) {
            Release(operand);
        }
        instruction.out = NewSlot();
        m_program.m_code.push_back(instruction);
        return {EPlace::Slot, instruction.out};
    }

    /// An operator over constants as a constant, unless it fails: then it has to fail in its turn.
    std::optional<SOperand> Fold(EOp op, std::span<const SOperand> operands)
    {
        std::array<double, 3> values{};
        for (std::size_t i = 0; i < operands.size(); ++i) {
            if (operands[i].place != EPlace::Constant) {
                return std::nullopt;
            }
            values[i] = m_program.m_constants[operands[i].index];
        }
        try {
            return Constant(Apply(op, values.data()));
        } catch (const CCalcException&) {
            return std::nullopt;
        }
    }

    // Who holds a slot: the stack, the arguments of a call, the value of a parameter.
    SOperand Shared(SOperand operand)
    {
        if (operand.place == EPlace::Slot) {
            ++m_holders[operand.index];
        }
        return operand;
    }
    void Release(const SOperand& operand)
    {
        if (operand.place == EPlace::Slot && --m_holders[operand.index] == 0) {
            m_free.push_back(operand.index);
        }
    }
    std::uint32_t NewSlot()
    {
        if (m_free.empty()) {
            m_holders.push_back(1);
            m_program.m_slots = m_holders.size();
            return static_cast<std::uint32_t>(m_holders.size() - 1);
        }
        const std::uint32_t slot = m_free.back();
        m_free.pop_back();
        m_holders[slot] = 1;
        return slot;
    }

    [[noreturn]] static void ThrowTooOften()
    {
        throw CCalcException(message::kNotEvaluated,
                             {"its parameters or functions call each other too often"});
    }

    const CParameterTable& m_table;
    const FColumn& m_columns;
    CCompiledExpression& m_program;
    std::unordered_map<std::uint64_t, std::uint32_t> m_constantIndex;
    std::vector<SMemo> m_memos;
    std::vector<std::uint32_t> m_holders;
    std::vector<std::uint32_t> m_free;
    std::uint32_t m_owner = 0;
    std::size_t m_calledItems = 0;
    int m_depth = 0;
};

namespace {

/// Points of a block: what an expression works on then stays in the processor's nearest memory.
constexpr std::size_t kBlock = 512;
/// Most numbers that all blocks together take; very large expressions get shorter blocks.
constexpr std::size_t kMostNumbers = std::size_t{1} << 20U;

} // namespace

CCompiledExpression::CCompiledExpression(const CPostfix& expression, const CParameterTable& table,
                                         const FColumn& columns)
{
    CExpressionCompiler compiler(table, columns, *this);
    m_result = compiler.Compile(expression, nullptr, {});
}

void CCompiledExpression::Evaluate(std::span<const double* const> columns, std::size_t count,
                                   double* out) const
{
    const std::size_t rows = m_slots + m_constants.size();
    const std::size_t block = std::min(
        count, std::clamp<std::size_t>(kMostNumbers / std::max<std::size_t>(rows, 1), 1, kBlock));
    std::vector<double> numbers(rows * block);
    double* const constants = numbers.data() + m_slots * block;
    for (std::size_t i = 0; i < m_constants.size(); ++i) {
        std::fill_n(constants + i * block, block, m_constants[i]);
    }
    std::vector<FKernel> kernels;
    for (const SInstruction& instruction : m_code) {
        kernels.push_back(KernelOf(instruction.op));
    }
    const bool lastIsResult =
        m_result.place == EPlace::Slot && !m_code.empty() && m_code.back().out == m_result.index;
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t points = std::min(block, count - begin);
        const auto place = [&](const SOperand& operand) -> const double* {
            switch (operand.place) {
            case EPlace::Column:
                return columns[operand.index] + begin;
            case EPlace::Constant:
                return constants + operand.index * block;
            case EPlace::Slot:
                break;
            }
            return numbers.data() + operand.index * block;
        };
        for (std::size_t i = 0; i < m_code.size(); ++i) {
            const SInstruction& code = m_code[i];
            double* const to = i + 1 == m_code.size() && lastIsResult
                                   ? out + begin
                                   : numbers.data() + code.out * block;
            if (!kernels[i](to, place(code.in[0]), place(code.in[1]), place(code.in[2]), points)) {
                ThrowAt(columns, begin, points);
            }
        }
        if (!lastIsResult) {
            std::copy_n(place(m_result), points, out + begin);
        }
    }
}

double CCompiledExpression::EvaluatePoint(std::span<const double* const> columns,
                                          std::size_t point) const
{
    std::vector<double> slots(m_slots);
    const auto value = [&](const SOperand& operand) {
        return operand.place == EPlace::Column     ? columns[operand.index][point]
               : operand.place == EPlace::Constant ? m_constants[operand.index]
                                                   : slots[operand.index];
    };
    for (const SInstruction& code : m_code) {
        std::array<double, 3> operands{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(InfoOf(code.op).operands); ++i) {
            operands[i] = value(code.in[i]);
        }
        try {
            slots[code.out] = Apply(code.op, operands.data());
        } catch (const CCalcException& error) {
            if (code.owner == 0) {
                throw;
            }
            ThrowParameterFailed(m_owners[code.owner - 1], error.what(), error.notes);
        }
    }
    return value(m_result);
}

void CCompiledExpression::ThrowAt(std::span<const double* const> columns, std::size_t begin,
                                  std::size_t count) const
{
    for (std::size_t i = begin; i < begin + count; ++i) {
        try {
            static_cast<void>(EvaluatePoint(columns, i));
        } catch (CCalcException& error) {
            error.notes.push_back(fmt::format("at point {}", i + 1));
            throw;
        }
    }
    throw CCalcException(message::kNotEvaluated);
}

} // namespace zov::curve
