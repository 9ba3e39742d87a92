// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcLexer.h"

#include "base/Number.h"
#include "base/Text.h"
#include "curve/CalcException.h"
#include "curve/CalcMessages.h"

#include <fmt/format.h>

namespace zov::curve {

bool IsNameCharacter(char c)
{
    return IsAlpha(c) || IsDigit(c) || c == '_';
}

SToken CCalcLexer::Next()
{
    while (m_pos < m_text.size() && IsBlank(m_text[m_pos])) {
        ++m_pos;
    }
    m_start = m_pos;
    if (m_pos == m_text.size()) {
        return {};
    }
    const char c = m_text[m_pos];
    if (IsDigit(c) || c == '.') {
        return Number();
    }
    return IsAlpha(c) ? Name() : Symbol();
}

SToken CCalcLexer::Take(EToken token, std::size_t length)
{
    SToken taken;
    taken.token = token;
    taken.text = m_text.substr(m_pos, length);
    m_pos += length;
    return taken;
}

SToken CCalcLexer::TakeOperator(EOp op, std::size_t length)
{
    SToken taken = Take(EToken::Operator, length);
    taken.op = op;
    return taken;
}

SToken CCalcLexer::Number()
{
    std::string_view rest = m_text.substr(m_pos);
    const auto value = ConsumeDouble(rest);
    const bool ended = rest.empty() || !(IsNameCharacter(rest.front()) || rest.front() == '.');
    if (!value || !ended) {
        throw CCalcException(message::kIllegalNumber);
    }
    SToken taken = Take(EToken::Number, m_text.size() - m_pos - rest.size());
    taken.number = *value;
    return taken;
}

SToken CCalcLexer::Name()
{
    std::size_t length = 1;
    while (IsNameCharacter(At(length))) {
        ++length;
    }
    const auto function = FindFunction(m_text.substr(m_pos, length));
    SToken taken = Take(function ? EToken::Function : EToken::Name, length);
    taken.op = function.value_or(EOp::Plus);
    return taken;
}

SToken CCalcLexer::Symbol()
{
    const char next = At(1);
    switch (At(0)) {
    case '(':
        return Take(EToken::Open, 1);
    case ')':
        return Take(EToken::Close, 1);
    case ',':
        return Take(EToken::Comma, 1);
    case '+':
        return TakeOperator(EOp::Add, 1);
    case '-':
        return TakeOperator(EOp::Subtract, 1);
    case '*':
        return next == '*' ? TakeOperator(EOp::Power, 2) : TakeOperator(EOp::Multiply, 1);
    case '/':
        return TakeOperator(EOp::Divide, 1);
    case '^':
        return TakeOperator(EOp::Power, 1);
    case '?':
        return TakeOperator(EOp::Then, 1);
    case ':':
        return TakeOperator(EOp::Choose, 1);
    case '!':
        return next == '=' ? TakeOperator(EOp::NotEqual, 2) : TakeOperator(EOp::Not, 1);
    case '<':
        return next == '=' ? TakeOperator(EOp::LessEqual, 2) : TakeOperator(EOp::Less, 1);
    case '>':
        return next == '=' ? TakeOperator(EOp::GreaterEqual, 2) : TakeOperator(EOp::Greater, 1);
    case '&':
        if (next == '&') {
            return TakeOperator(EOp::And, 2);
        }
        break;
    case '|':
        if (next == '|') {
            return TakeOperator(EOp::Or, 2);
        }
        break;
    case '=':
        if (next == '=') {
            return TakeOperator(EOp::Equal, 2);
        }
        break;
    case '$': {
        std::size_t length = 1;
        while (IsDigit(At(length))) {
            ++length;
        }
        if (length > 1) {
            return Take(EToken::Name, length);
        }
        break;
    }
    default:
        break;
    }
    ThrowIllegal();
}

void CCalcLexer::ThrowIllegal() const
{
    std::size_t end = m_pos;
    const bool valid = DecodeUtf8(m_text, end) != kReplacementChar;
    const std::string_view shown = valid ? m_text.substr(m_pos, end - m_pos) : "?";
    throw CCalcException(fmt::format(message::kIllegalOperator, shown));
}

} // namespace zov::curve
