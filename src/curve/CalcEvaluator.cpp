// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcEvaluator.h"

#include "base/Text.h"
#include "curve/CalcException.h"
#include "curve/CalcMessages.h"
#include "curve/CalcParser.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace zov::curve {

namespace {

/// Values of one evaluation; the first few need no memory of their own.
class CStack
{
public:
    explicit CStack(std::size_t most)
    {
        if (most > m_local.size()) {
            m_large.resize(most);
            m_data = m_large.data();
        }
    }
    CStack(const CStack&) = delete;
    CStack& operator=(const CStack&) = delete;
    ~CStack() = default;

    void Push(double value) { m_data[m_count++] = value; }
    /// The operands, which are taken off; null when there are too few.
    const double* Pop(int operands)
    {
        const auto count = static_cast<std::size_t>(operands);
        if (count > m_count) {
            return nullptr;
        }
        m_count -= count;
        return m_data + m_count;
    }
    [[nodiscard]] std::size_t Count() const { return m_count; }

private:
    std::array<double, 32> m_local; // NOLINT: written before it is read
    std::vector<double> m_large;
    double* m_data = m_local.data();
    std::size_t m_count = 0;
};

/// Arguments of the user function whose body is evaluated.
struct SFrame
{
    const SUserFunction* function = nullptr;
    const double* arguments = nullptr;
};

class CEvaluator
{
public:
    explicit CEvaluator(const CParameterTable& table)
        : m_table(table)
    {
    }

    double Walk(const CPostfix& expression, const SFrame& frame)
    {
        const auto items = expression.Items();
        CStack stack(items.size());
        for (const SPostfixItem& item : items) {
            stack.Push(ValueOf(item, stack, frame));
        }
        if (stack.Count() != 1) {
            throw CCalcException(message::kNotEvaluated);
        }
        return *stack.Pop(1);
    }

private:
    enum class EState : std::uint8_t
    {
        Unknown,
        Running,
        Known
    };
    struct SMemo
    {
        EState state = EState::Unknown;
        double value = 0.0;
    };

    double ValueOf(const SPostfixItem& item, CStack& stack, const SFrame& frame)
    {
        switch (item.item) {
        case EItem::Number:
            return item.number;
        case EItem::Name:
            return NamedValue(item.text, frame);
        case EItem::Variable:
            return VariableValue(item);
        case EItem::Operator: {
            const SOpInfo& info = InfoOf(item.op);
            const double* operands = stack.Pop(info.operands);
            if (operands == nullptr) {
                ThrowTooFewOperands(info.text, info.operands);
            }
            return Apply(item.op, operands);
        }
        case EItem::UserCall:
            break;
        }
        const double* operands = stack.Pop(item.operands);
        if (operands == nullptr) {
            ThrowTooFewOperands(item.text, item.operands);
        }
        return Call(item.text, operands);
    }

    double NamedValue(std::string_view name, const SFrame& frame)
    {
        if (frame.function != nullptr) {
            const auto& names = frame.function->arguments;
            const auto found = std::find(names.begin(), names.end(), name);
            if (found != names.end()) {
                return frame.arguments[found - names.begin()];
            }
        }
        const SParameter* parameter = m_table.Find(name);
        if (parameter == nullptr) {
            throw CCalcException(fmt::format(message::kNotDefined, name));
        }
        return parameter->value ? *parameter->value : ParameterValue(name, *parameter);
    }

    double ParameterValue(std::string_view name, const SParameter& parameter)
    {
        if (m_memos.empty()) {
            m_memos.resize(m_table.Count());
        }
        SMemo& memo = m_memos[parameter.index];
        if (memo.state == EState::Running) {
            ThrowParameterFailed(name, "its expression names itself", {});
        }
        if (memo.state == EState::Unknown) {
            memo.state = EState::Running;
            try {
                memo.value = WalkText(parameter.expression, {});
            } catch (const CCalcException& error) {
                ThrowParameterFailed(name, error.what(), error.notes);
            }
            memo.state = EState::Known;
        }
        return memo.value;
    }

    double Call(std::string_view name, const double* operands)
    {
        const SUserFunction* function = m_table.FindFunction(name);
        if (function == nullptr) {
            throw CCalcException(fmt::format(message::kFunctionNotFound, name));
        }
        return WalkText(function->body, {function, operands});
    }

    double WalkText(const std::string& text, const SFrame& frame)
    {
        auto found = m_parsed.find(&text);
        if (found == m_parsed.end()) {
            found = m_parsed.emplace(&text, ParseExpression(text, m_table)).first;
        }
        m_calledItems += found->second.Items().size();
        if (m_depth == kMaxCallDepth || m_calledItems > kMaxCalledItems) {
            throw CCalcException(message::kNotEvaluated,
                                 {"its parameters or functions call each other too often"});
        }
        ++m_depth;
        const double value = Walk(found->second, frame);
        --m_depth;
        return value;
    }

    double VariableValue(const SPostfixItem& item)
    {
        if (m_table.variables && item.text.size() == 1) {
            const auto value =
                m_table.variables({ToLower(item.text.front()), item.first, item.second});
            if (value) {
                return *value;
            }
        }
        throw CCalcException(fmt::format(message::kNotDefined, VariableText(item)));
    }

    const CParameterTable& m_table;
    std::vector<SMemo> m_memos;
    std::unordered_map<const std::string*, CPostfix> m_parsed;
    std::size_t m_calledItems = 0;
    int m_depth = 0;
};

} // namespace

double Evaluate(const CPostfix& expression, const CParameterTable& table)
{
    return CEvaluator(table).Walk(expression, {});
}

double EvaluatePostfix(std::span<const std::string> texts, const CParameterTable& table)
{
    return Evaluate(PostfixOfTexts(texts, table), table);
}

std::string VariableText(const SPostfixItem& item)
{
    return item.second.empty() ? fmt::format("{}({})", item.text, item.first)
                               : fmt::format("{}({},{})", item.text, item.first, item.second);
}

void ThrowParameterFailed(std::string_view name, std::string_view cause,
                          std::vector<std::string> notes)
{
    notes.insert(notes.begin(), fmt::format("{}: {}", name, cause));
    throw CCalcException(fmt::format(message::kParameterFailed, name), std::move(notes));
}

} // namespace zov::curve
