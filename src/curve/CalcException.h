// SPDX-License-Identifier: Apache-2.0
/// What the calculator throws. Its facade (Calculator.h) turns it into an SError.
#pragma once

#include "base/Result.h"

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

    [[nodiscard]] SError ToError() const { return {EErr::Format, what(), {}, notes}; }

    /// Causes below the text, the nearest first.
    std::vector<std::string> notes;
};

} // namespace zov::curve
