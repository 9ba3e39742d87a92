// SPDX-License-Identifier: Apache-2.0
/// What the calculator throws. Its facade (Calculator.h) turns it into an SError.
#pragma once

#include "base/Result.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace zov::curve {

/// An expression that can't be read or evaluated; what() is the text for the user.
class CCalcException : public std::runtime_error
{
public:
    explicit CCalcException(const std::string& text, std::vector<std::string> theNotes = {})
        : std::runtime_error(text)
        , notes(std::move(theNotes))
    {
    }

    /// The position's column says where in the expression, when that is known.
    [[nodiscard]] SError ToError() const
    {
        return {EErr::Format, what(), {{}, 0, offset ? *offset + 1 : 0}, notes};
    }

    /// Byte of the expression's text that could not be read.
    std::optional<std::size_t> offset;

    /// Causes below the text, the nearest first.
    std::vector<std::string> notes;
};

} // namespace zov::curve
