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
#include <memory>

namespace zov::curve {

/// Walks a postfix list with a stack of places instead of values.
class CExpressionCompiler
{
    using EPlace = CCompiledExpression::EPlace;
    using SOperand = CCompiledExpression::SOperand;
    using SInstruction = CCompiledExpression::SInstruction;
    using EPoints = CCompiledExpression::EPoints;

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
        std::vector<SValue> stack;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::size_t begin = m_program.m_code.size();
            const bool isDb = i + 1 < items.size() && items[i + 1].item == EItem::Operator &&
                              items[i + 1].op == EOp::Db;
            switch (items[i].item) {
            case EItem::Number:
                stack.push_back({Constant(items[i].number), begin});
                break;
            case EItem::Name:
                stack.push_back({Named(items[i].text, isDb, function, arguments), begin});
                break;
            case EItem::Variable:
                stack.push_back({Variable(items[i]), begin});
                break;
            case EItem::Operator: {
                const SOpInfo& info = InfoOf(items[i].op);
                const SOperands taken = TakeOff(stack, info.text, info.operands);
                if (items[i].op == EOp::Choose) {
                    MarkBranches(taken);
                }
                stack.push_back({Emit(items[i].op, taken.operands), taken.begins.front()});
                break;
            }
            case EItem::UserCall: {
                const SOperands taken = TakeOff(stack, items[i].text, items[i].operands);
                stack.push_back({Call(items[i].text, taken.operands),
                                 taken.begins.empty() ? begin : taken.begins.front()});
                break;
            }
            }
        }
        if (stack.size() != 1) {
            throw CCalcException(message::kNotEvaluated);
        }
        return stack.back().operand;
    }

private:
    struct SMemo
    {
        bool running = false;
        std::optional<SOperand> value;
    };

    /// A value on the stack, and the first instruction that was made for it.
    struct SValue
    {
        SOperand operand;
        std::size_t begin = 0;
    };
    struct SOperands
    {
        std::vector<SOperand> operands;
        std::vector<std::size_t> begins;
    };

    static SOperands TakeOff(std::vector<SValue>& stack, std::string_view name, int count)
    {
        if (stack.size() < static_cast<std::size_t>(count)) {
            ThrowTooFewOperands(name, count);
        }
        SOperands taken;
        const auto first = stack.end() - count;
        for (auto value = first; value != stack.end(); ++value) {
            taken.operands.push_back(value->operand);
            taken.begins.push_back(value->begin);
        }
        stack.erase(first, stack.end());
        return taken;
    }

    /// Costly functions in a branch are evaluated only where the branch is taken.
    void MarkBranches(const SOperands& choice)
    {
        if (choice.operands[0].place != EPlace::Constant) {
            Mark(choice.begins[1], choice.begins[2], choice.operands[0], EPoints::WhereTrue);
            Mark(choice.begins[2], m_program.m_code.size(), choice.operands[0],
                 EPoints::WhereFalse);
        }
    }
    /// An operand outside its domain is an error in either branch. So nothing is left out that may
    /// reach an operator with a domain further on, nor what belongs to a parameter, which others
    /// may share.
    void Mark(std::size_t begin, std::size_t end, SOperand condition, EPoints points)
    {
        for (std::size_t i = end; i-- > begin;) {
            SInstruction& code = m_program.m_code[i];
            if (IsCostly(code.op) && code.owner == 0 && code.points == EPoints::All) {
                code.points = points;
                code.condition = condition;
            }
            if (HasDomain(code.op)) {
                return;
            }
        }
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
constexpr std::size_t kBlock = 128;
/// Numbers in a cache line, which is also the widest instruction.
constexpr std::size_t kAlignment = 8;
/// Most numbers that all blocks together take; very large expressions get shorter blocks.
constexpr std::size_t kMostNumbers = std::size_t{1} << 20U;

/// Points in front of the first at which a cache line begins; columns, too, mostly begin at the
/// same place in a line. Instructions over two lines take twice as long.
std::size_t PointsToAlignment(const double* column)
{
    const auto offset = reinterpret_cast<std::uintptr_t>(column) / sizeof(double) % kAlignment;
    return kAlignment - offset;
}

} // namespace

CCompiledExpression::CCompiledExpression(const CPostfix& expression, const CParameterTable& table,
                                         const FColumn& columns)
{
    CExpressionCompiler compiler(table, columns, *this);
    m_result = compiler.Compile(expression, nullptr, {});
}

/// The memory that an expression is evaluated in, one block of points after the other.
class CCompiledExpression::CBlocks
{
public:
    CBlocks(const CCompiledExpression& program, std::span<const double* const> columns,
            std::size_t count)
        : m_program(program)
        , m_columns(columns)
    {
        const std::size_t rows = program.m_slots + program.m_constants.size();
        const std::size_t most = kMostNumbers / std::max<std::size_t>(rows, 1);
        m_block = std::min(count, std::clamp<std::size_t>(most, 1, kBlock));
        m_stride = (m_block + kAlignment - 1) / kAlignment * kAlignment;
        m_memory.resize(rows * m_stride + kAlignment);
        void* aligned = m_memory.data();
        std::size_t room = m_memory.size() * sizeof(double);
        m_numbers = static_cast<double*>(std::align(
            kAlignment * sizeof(double), rows * m_stride * sizeof(double), aligned, room));
        for (std::size_t i = 0; i < program.m_constants.size(); ++i) {
            std::fill_n(Slot(program.m_slots + i), m_block, program.m_constants[i]);
        }
        for (const SInstruction& code : program.m_code) {
            m_kernels.push_back(KernelOf(code.op));
        }
    }

    [[nodiscard]] std::size_t Length() const { return m_block; }
    [[nodiscard]] double* Slot(std::size_t slot) { return m_numbers + slot * m_stride; }
    /// Values of an operand from the point `begin` on.
    [[nodiscard]] const double* Place(const SOperand& operand, std::size_t begin)
    {
        switch (operand.place) {
        case EPlace::Column:
            return m_columns[operand.index] + begin;
        case EPlace::Constant:
            return Slot(m_program.m_slots + operand.index);
        case EPlace::Slot:
            break;
        }
        return Slot(operand.index);
    }

    /// One instruction for `points` points; false when one is outside the operator's domain.
    [[nodiscard]] bool Run(std::size_t index, std::size_t begin, std::size_t points, double* out)
    {
        const SInstruction& code = m_program.m_code[index];
        const double* const a = Place(code.in[0], begin);
        const double* const b = Place(code.in[1], begin);
        if (code.points == EPoints::All) {
            return m_kernels[index](out, a, b, Place(code.in[2], begin), points);
        }
        return IsInDomain(code.op, a, b, points) &&
               RunChosen(index, FindChosen(code, begin, points), out, a, b);
    }

private:
    /// Puts the points that are wanted into m_chosen; their number.
    std::size_t FindChosen(const SInstruction& code, std::size_t begin, std::size_t points)
    {
        const double* const condition = Place(code.condition, begin);
        const bool wanted = code.points == EPoints::WhereTrue;
        std::size_t count = 0;
        for (std::size_t i = 0; i < points; ++i) {
            m_chosen[count] = static_cast<std::uint32_t>(i);
            count += (condition[i] != 0.0) == wanted ? 1U : 0U;
        }
        return count;
    }
    bool RunChosen(std::size_t index, std::size_t count, double* out, const double* a,
                   const double* b)
    {
        const bool two = InfoOf(m_program.m_code[index].op).operands == 2;
        for (std::size_t i = 0; i < count; ++i) {
            m_first[i] = a[m_chosen[i]];
            m_second[i] = two ? b[m_chosen[i]] : 0.0;
        }
        const bool good =
            m_kernels[index](m_first.data(), m_first.data(), m_second.data(), nullptr, count);
        for (std::size_t i = 0; i < count; ++i) {
            out[m_chosen[i]] = m_first[i];
        }
        return good;
    }

    const CCompiledExpression& m_program;
    std::span<const double* const> m_columns;
    std::size_t m_block = 0;
    std::size_t m_stride = 0; ///< from a row to the next
    std::vector<double> m_memory;
    double* m_numbers = nullptr; ///< in it, at a cache line's start: slots, then constants
    std::vector<FKernel> m_kernels;
    std::array<std::uint32_t, kBlock> m_chosen; // NOLINT: these are written before they are read
    std::array<double, kBlock> m_first;         // NOLINT
    std::array<double, kBlock> m_second;        // NOLINT
};

void CCompiledExpression::Evaluate(std::span<const double* const> columns, std::size_t count,
                                   double* out) const
{
    CBlocks blocks(*this, columns, count);
    // The last result goes where it belongs, if it is that of the expression.
    const bool lastIsResult =
        m_result.place == EPlace::Slot && !m_code.empty() && m_code.back().out == m_result.index;
    std::size_t points = std::min(PointsToAlignment(out), blocks.Length());
    for (std::size_t begin = 0; begin < count; begin += points, points = blocks.Length()) {
        points = std::min(points, count - begin);
        for (std::size_t i = 0; i < m_code.size(); ++i) {
            double* const to =
                i + 1 == m_code.size() && lastIsResult ? out + begin : blocks.Slot(m_code[i].out);
            if (!blocks.Run(i, begin, points, to)) {
                ThrowAt(columns, begin, points);
            }
        }
        if (!lastIsResult) {
            std::copy_n(blocks.Place(m_result, begin), points, out + begin);
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
