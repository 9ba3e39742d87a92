// SPDX-License-Identifier: Apache-2.0
/// Tolerances in cells: "10%", "±10%", "+/-10%", "-20%/+80%", "K", "±10% (K)", "±0.1pF".
#pragma once

#include "batch/CellValue.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace zov::batch {

/// How a number without a unit is meant.
struct SToleranceUnit
{
    enum class EKind : std::uint8_t
    {
        Unknown, ///< 1 and more is percent, less is a fraction
        Percent,
        Absolute ///< in 10^exponent of the quantity's SI unit
    };
    EKind kind = EKind::Unknown;
    int exponent = 0;
};

struct SToleranceReading
{
    ECell state = ECell::Empty;
    std::optional<double> up = {};  ///< fraction, not negative
    std::optional<double> low = {}; ///< fraction, not negative
    std::string_view why = {};
    bool bothSides = false;       ///< the cell names both sides: a plus-minus sign or two values
    bool takenAsFraction = false; ///< a bare number below 1
};

/// @param nominal  SI value that absolute tolerances are of; none when it is not known, then an
///                 absolute tolerance is Bad
/// A value with a sign sets that side only, one without or with "±" both.
[[nodiscard]] SToleranceReading ReadTolerance(std::string_view text, EQuantity quantity,
                                              std::optional<double> nominal, SToleranceUnit unit);

} // namespace zov::batch
