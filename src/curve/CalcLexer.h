// SPDX-License-Identifier: Apache-2.0
/// Tokens of an expression.
#pragma once

#include "curve/CalcOperators.h"

#include <cstddef>
#include <string_view>

namespace zov::curve {

enum class EToken : std::uint8_t
{
    End,
    Number,
    Name,     ///< also a reference, "$" with digits
    Function, ///< a name that is one of the given functions
    Open,     ///< "("
    Close,    ///< ")"
    Comma,    ///< ","
    Operator  ///< all others; the unary ones are told from the binary ones by the parser
};

struct SToken
{
    EToken token = EToken::End;
    EOp op = EOp::Plus; ///< of a function or operator
    double number = 0.0;
    std::string_view text; ///< as it stands in the expression
};

/// Cuts a text into tokens, one at a time.
class CCalcLexer
{
public:
    explicit CCalcLexer(std::string_view text)
        : m_text(text)
    {
    }

    /// The next token; End again and again at the end.
    /// Throws CCalcException for a malformed number and for a character that means nothing.
    [[nodiscard]] SToken Next();
    /// Where the token begins that Next gave, or failed to give, last.
    [[nodiscard]] std::size_t Start() const { return m_start; }

private:
    [[nodiscard]] char At(std::size_t offset) const
    {
        return m_pos + offset < m_text.size() ? m_text[m_pos + offset] : '\0';
    }
    [[nodiscard]] SToken Take(EToken token, std::size_t length);
    [[nodiscard]] SToken TakeOperator(EOp op, std::size_t length);
    [[nodiscard]] SToken Number();
    [[nodiscard]] SToken Name();
    [[nodiscard]] SToken Symbol();
    [[noreturn]] void ThrowIllegal() const;

    std::string_view m_text;
    std::size_t m_pos = 0;
    std::size_t m_start = 0;
};

/// Letters, digits and "_".
[[nodiscard]] bool IsNameCharacter(char c);

} // namespace zov::curve
