// SPDX-License-Identifier: Apache-2.0
/// Units as part lists write them.
#pragma once

#include "core/Units.h"

#include <optional>
#include <string_view>

namespace zov::batch {

/// Exponent of a unit word ("uF", "UF", "microfarad", "Ohms", "kR", "mA", "%", or a prefix alone,
/// "k"), none when it is no unit of the quantity or could be two ("MOHM": milli or mega; "MF").
/// For a tolerance percent is -2.
[[nodiscard]] std::optional<int> UnitWordExponent(std::string_view word, EQuantity quantity);

/// Exponent of the letter that stands in place of the decimal point: "4u7", "4K7", "0R1", "6V3".
[[nodiscard]] std::optional<int> PointLetterExponent(char letter, EQuantity quantity);

} // namespace zov::batch
