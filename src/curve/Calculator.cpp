// SPDX-License-Identifier: Apache-2.0
#include "curve/Calculator.h"

#include "base/Text.h"
#include "curve/CalcLexer.h"
#include "curve/CalcMessages.h"

namespace zov::curve {

namespace {

/// What stands in a message between quotes, or between "<" and ">".
std::string_view QuotedIn(std::string_view text)
{
    for (const auto& [open, close] : {std::pair{'"', '"'}, {'\'', '\''}, {'<', '>'}}) {
        const std::size_t begin = text.find(open);
        const std::size_t end = begin < text.size() ? text.find(close, begin + 1) : text.npos;
        if (end != text.npos) {
            return text.substr(begin + 1, end - begin - 1);
        }
    }
    return text == message::kDivideByZero ? "/" : text == message::kPowInfinite ? "pow" : "";
}

} // namespace

std::optional<std::size_t> PlaceOfError(std::string_view expression, const SError& error)
{
    if (error.pos.column != 0) {
        return error.pos.column - 1;
    }
    const std::string_view named = QuotedIn(error.text);
    const auto search = [&]() -> std::optional<std::size_t> {
        CCalcLexer lexer(expression);
        for (SToken token = lexer.Next(); token.token != EToken::End; token = lexer.Next()) {
            if (EqualsNoCase(token.text, named)) {
                return lexer.Start();
            }
        }
        return {};
    };
    const auto found = Guarded(search);
    return found.Ok() ? *found : std::nullopt;
}

CResult<double> Calculate(std::string_view expression, const CParameterTable& table)
{
    return Guarded([&] { return Evaluate(ParseExpression(expression, table), table); });
}

} // namespace zov::curve
