// SPDX-License-Identifier: Apache-2.0
/// Expressions from text to postfix form.
#pragma once

#include "curve/CalcPostfix.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov::curve {

class CParameterTable;

/// Parts of complex curves that an expression may ask for: "re", "im", "mag", "phase".
enum class ECurveParts
{
    No,
    Yes
};

/// Parses a text. Nesting may be as deep as memory allows.
/// @param table  knows how many operands a user function takes
/// @param parts  whether "mag(C)" and the like are parts of curves; a user function of the same
///               name comes first
/// Throws CCalcException.
[[nodiscard]] CPostfix ParseExpression(std::string_view text, const CParameterTable& table,
                                       ECurveParts parts = ECurveParts::No);

/// The items of a list of texts, as CPostfix::Texts gives it.
/// Throws CCalcException for a text that is none.
[[nodiscard]] CPostfix PostfixOfTexts(std::span<const std::string> texts,
                                      const CParameterTable& table);

} // namespace zov::curve
