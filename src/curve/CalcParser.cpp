// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcParser.h"

#include "base/Number.h"
#include "base/Text.h"
#include "curve/CalcException.h"
#include "curve/CalcLexer.h"
#include "curve/CalcMessages.h"
#include "curve/CalcParameters.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace zov::curve {

namespace {

constexpr std::array<std::string_view, 4> kCurveParts = {"re", "im", "mag", "phase"};
constexpr std::size_t kUsualItems = 32;

enum class EPending : std::uint8_t
{
    Operator,
    Parenthesis,
    Call ///< function whose operands are being read
};

/// What waits for its operands or its ")".
struct SPending
{
    EPending pending = EPending::Operator;
    EOp op = EOp::Plus;
    bool user = false;
    int needed = 1;
    int seen = 1;
    std::string_view name;
};

/// Which marker a name in front of "(" is.
bool IsMarker(std::string_view name, ECurveParts parts, const CParameterTable& table)
{
    if (EqualsNoCase(name, "v") || EqualsNoCase(name, "i")) {
        return true;
    }
    return parts == ECurveParts::Yes && table.FindFunction(name) == nullptr &&
           std::any_of(kCurveParts.begin(), kCurveParts.end(),
                       [&](std::string_view part) { return EqualsNoCase(name, part); });
}

/// Reads operands and operators in turn. Its two states and the stack of what is pending do what
/// the levels of a grammar do by calling each other, in memory instead of on the machine's stack.
class CParser
{
public:
    CParser(std::string_view text, const CParameterTable& table, ECurveParts parts)
        : m_lexer(text)
        , m_text(text)
        , m_table(table)
        , m_parts(parts)
    {
        m_items.reserve(kUsualItems);
        m_pending.reserve(kUsualItems);
    }

    std::vector<SPostfixItem> Parse()
    {
        try {
            m_token = m_lexer.Next();
            do {
                ReadOperand();
            } while (ReadBehindOperand());
        } catch (CCalcException& error) {
            if (!error.offset) {
                error.offset = m_lexer.Start();
            }
            throw;
        }
        return std::move(m_items);
    }

private:
    [[noreturn]] static void ThrowSyntax() { throw CCalcException(message::kSyntax); }

    void Advance() { m_token = m_lexer.Next(); }
    [[nodiscard]] bool IsOperator(EOp op) const
    {
        return m_token.token == EToken::Operator && m_token.op == op;
    }

    /// Signs, opening parentheses and functions up to and with an operand.
    void ReadOperand()
    {
        bool mayBeSigned = m_pending.empty() || m_pending.back().pending != EPending::Operator ||
                           m_pending.back().op != EOp::Power;
        for (;;) {
            switch (m_token.token) {
            case EToken::Number:
            case EToken::Name:
                if (ReadNumberOrName()) {
                    return;
                }
                mayBeSigned = true;
                break;
            case EToken::Function:
                OpenCall({EPending::Call, m_token.op, false, InfoOf(m_token.op).operands, 1, {}});
                mayBeSigned = true;
                break;
            case EToken::Open:
                m_pending.push_back({EPending::Parenthesis, EOp::Plus, false, 1, 1, {}});
                Advance();
                mayBeSigned = true;
                break;
            case EToken::Operator:
                mayBeSigned = ReadSign(mayBeSigned);
                break;
            default:
                ThrowSyntax();
            }
        }
    }

    /// @return whether a sign may follow
    bool ReadSign(bool allowed)
    {
        const bool isNot = m_token.op == EOp::Not;
        if (!allowed || !(isNot || m_token.op == EOp::Add || m_token.op == EOp::Subtract)) {
            ThrowSyntax();
        }
        const EOp op = isNot ? EOp::Not : m_token.op == EOp::Add ? EOp::Plus : EOp::Negate;
        m_pending.push_back({EPending::Operator, op, false, 1, 1, {}});
        Advance();
        return isNot;
    }

    /// False when a function was opened instead, whose operand comes next.
    bool ReadNumberOrName()
    {
        const SToken token = m_token;
        Advance();
        if (token.token == EToken::Name && m_token.token == EToken::Open &&
            token.text.front() != '$') {
            return ReadNamedCall(token.text);
        }
        SPostfixItem item;
        item.item = token.token == EToken::Number ? EItem::Number : EItem::Name;
        item.number = token.number;
        item.text = token.text;
        m_items.push_back(item);
        return true;
    }

    bool ReadNamedCall(std::string_view name)
    {
        if (IsMarker(name, m_parts, m_table)) {
            ReadVariable(name);
            return true;
        }
        const SUserFunction* function = m_table.FindFunction(name);
        if (function == nullptr) {
            CCalcException error(fmt::format(message::kFunctionNotFound, name));
            error.offset = static_cast<std::size_t>(name.data() - m_text.data());
            throw error;
        }
        const int needed = static_cast<int>(function->arguments.size());
        if (needed != 0) {
            m_pending.push_back({EPending::Call, EOp::Plus, true, needed, 1, name});
            Advance();
            return false;
        }
        Advance();
        Expect(EToken::Close);
        EmitUserCall(name, 0);
        return true;
    }

    /// Behind the marker's name, at its "(".
    void ReadVariable(std::string_view name)
    {
        Advance();
        SPostfixItem item;
        item.item = EItem::Variable;
        item.text = name;
        item.first = ReadNode();
        if (m_token.token == EToken::Comma && !EqualsNoCase(name, "i")) {
            Advance();
            item.second = ReadNode();
        }
        Expect(EToken::Close);
        m_items.push_back(item);
    }

    std::string_view ReadNode()
    {
        const std::string_view node = m_token.text;
        if (m_token.token != EToken::Name && m_token.token != EToken::Function &&
            m_token.token != EToken::Number) {
            ThrowSyntax();
        }
        Advance();
        return node;
    }

    void OpenCall(const SPending& call)
    {
        Advance();
        Expect(EToken::Open);
        m_pending.push_back(call);
    }

    void Expect(EToken token)
    {
        if (m_token.token != token) {
            ThrowSyntax();
        }
        Advance();
    }

    /// Closing parentheses behind an operand, then a comma or an operator.
    /// @return whether another operand has to follow
    bool ReadBehindOperand()
    {
        for (;;) {
            if (m_token.token == EToken::Operator && m_token.op != EOp::Not) {
                PushBinary(m_token.op);
                Advance();
                return true;
            }
            EmitPending(0);
            if (m_pending.empty()) {
                if (m_token.token != EToken::End) {
                    throw CCalcException(message::kNotComplete);
                }
                return false;
            }
            if (ReadInParentheses()) {
                return true;
            }
        }
    }

    /// @return true behind a comma, false behind ")"
    bool ReadInParentheses()
    {
        SPending& open = m_pending.back();
        if (open.seen < open.needed) {
            if (m_token.token != EToken::Comma) {
                throw CCalcException(fmt::format(message::kExpected, ','));
            }
            ++open.seen;
            Advance();
            return true;
        }
        Expect(EToken::Close);
        if (open.pending == EPending::Call) {
            if (open.user) {
                EmitUserCall(open.name, open.needed);
            } else {
                EmitOperator(open.op);
            }
        }
        m_pending.pop_back();
        return false;
    }

    void PushBinary(EOp op)
    {
        EmitPending(InfoOf(op).precedence);
        m_pending.push_back({EPending::Operator, op, false, 1, 1, {}});
    }

    /// Emits pending operators that bind at least as tightly.
    void EmitPending(int precedence)
    {
        while (!m_pending.empty() && m_pending.back().pending == EPending::Operator &&
               InfoOf(m_pending.back().op).precedence >= precedence) {
            if (m_pending.back().op != EOp::Then) {
                EmitOperator(m_pending.back().op);
            }
            m_pending.pop_back();
        }
    }

    void EmitOperator(EOp op)
    {
        SPostfixItem item;
        item.item = EItem::Operator;
        item.op = op;
        m_items.push_back(item);
    }

    void EmitUserCall(std::string_view name, int operands)
    {
        SPostfixItem item;
        item.item = EItem::UserCall;
        item.operands = operands;
        item.text = name;
        m_items.push_back(item);
    }

    CCalcLexer m_lexer;
    std::string_view m_text;
    const CParameterTable& m_table;
    ECurveParts m_parts;
    SToken m_token;
    std::vector<SPostfixItem> m_items;
    std::vector<SPending> m_pending;
};

/// Reads the items of a list of texts.
class CTextItems
{
public:
    CTextItems(std::span<const std::string> texts, const CParameterTable& table)
        : m_texts(texts)
        , m_table(table)
    {
    }

    std::vector<SPostfixItem> Read()
    {
        std::vector<SPostfixItem> items;
        items.reserve(m_texts.size());
        while (m_next < m_texts.size()) {
            items.push_back(ReadItem(m_texts[m_next++]));
        }
        return items;
    }

private:
    SPostfixItem ReadItem(std::string_view text)
    {
        SPostfixItem item;
        item.text = text;
        if (const auto op = FindOperator(text)) {
            item.item = EItem::Operator;
            item.op = *op;
        } else if (const auto number = ParseDouble(text); number && !text.empty()) {
            item.number = *number;
        } else if (!text.empty() && text.back() == '(') {
            ReadCall(item);
        } else if (!text.empty() && (IsAlpha(text.front()) || text.front() == '$')) {
            item.item = EItem::Name;
        } else {
            throw CCalcException(message::kEvaluationSyntax);
        }
        return item;
    }

    void ReadCall(SPostfixItem& item)
    {
        item.text.remove_suffix(1);
        if (const SUserFunction* function = m_table.FindFunction(item.text)) {
            item.item = EItem::UserCall;
            item.operands = static_cast<int>(function->arguments.size());
            return;
        }
        if (!IsMarker(item.text, ECurveParts::Yes, m_table)) {
            throw CCalcException(fmt::format(message::kFunctionNotFound, item.text));
        }
        item.item = EItem::Variable;
        item.first = NextText();
        item.second = NextText();
        if (item.second == ")") {
            item.second = {};
        } else if (NextText() != ")") {
            throw CCalcException(message::kEvaluationSyntax);
        }
    }

    std::string_view NextText()
    {
        if (m_next == m_texts.size()) {
            throw CCalcException(message::kEvaluationSyntax);
        }
        return m_texts[m_next++];
    }

    std::span<const std::string> m_texts;
    const CParameterTable& m_table;
    std::size_t m_next = 0;
};

} // namespace

CPostfix ParseExpression(std::string_view text, const CParameterTable& table, ECurveParts parts)
{
    auto kept = std::make_shared<const std::string>(text);
    std::vector<SPostfixItem> items = CParser(*kept, table, parts).Parse();
    return {std::move(kept), std::move(items)};
}

CPostfix PostfixOfTexts(std::span<const std::string> texts, const CParameterTable& table)
{
    auto kept = std::make_shared<const std::vector<std::string>>(texts.begin(), texts.end());
    std::vector<SPostfixItem> items = CTextItems(*kept, table).Read();
    return {std::move(kept), std::move(items)};
}

} // namespace zov::curve
