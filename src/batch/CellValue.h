// SPDX-License-Identifier: Apache-2.0
/// Numbers in cells, with or without a unit of their own, as people write them in part lists:
/// "100", "4.7uF", "4u7", "10k", "0R1", "100 nF", "1,000", "0,1", "1E-07", "50 V (max)".
///
///     const SCellReading c = ReadQuantity("4u7", EQuantity::Capacitance, {});
///     c.state == ECell::Value, c.value == 4.7e-6
///
/// A value is converted once, with its decimal exponent shifted by the unit, so "100" in nF is
/// exactly 1e-07.
#pragma once

#include "batch/UnitWords.h"
#include "core/Units.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zov::batch {

enum class ECell : std::uint8_t
{
    Empty, ///< nothing, or a word for nothing
    Value,
    Bad ///< something that is not understood; never taken as a number
};

/// How numbers of a column without a unit of their own are meant.
struct SColumnUnit
{
    int exponent = 0;      ///< one of the unit is 10^exponent of the SI unit
    bool fromCell = false; ///< every cell carries its unit: a number without one is an error
};

struct SCellReading
{
    ECell state = ECell::Empty;
    double value = 0.0;        ///< SI
    std::string_view why = {}; ///< for Bad: what is wrong with it, a text that lives for ever
    /// "4,700": taken as four thousand seven hundred, but 4.7 would be possible.
    bool maybeDecimalComma = false;
    /// "0,1": the comma can only be a decimal comma.
    bool decimalComma = false;
    bool ownUnit = false; ///< the cell said its unit
};

/// A quantity, also None (a plain number: costs, with or without a currency sign).
/// A unit in the cell wins over the column's. Negative values are Bad.
[[nodiscard]] SCellReading ReadQuantity(std::string_view text, EQuantity quantity,
                                        SColumnUnit unit);

/// False for an SI value that no part has (a capacitance of 1e-19 F): the unit is probably wrong.
[[nodiscard]] bool IsPlausible(double value, EQuantity quantity);

/// What a cell of that quantity may look like, for messages: "a capacitance such as 100nF, 4u7".
[[nodiscard]] std::string_view ExpectedText(EQuantity quantity);

// --- for readers of other cell forms ---------------------------------------------------------

/// A number at the start of a text in plain signs (PlainSigns), separators understood.
struct SNumberText
{
    std::string digits; ///< as ConsumeDouble takes it
    bool maybeDecimalComma = false;
    bool decimalComma = false;
};
/// Moves `text` behind the number; false, and `text` untouched, when none stands there.
[[nodiscard]] bool TakeNumber(std::string_view& text, SNumberText& number);
/// The letters at the start of a text, taken off it.
[[nodiscard]] std::string_view TakeWord(std::string_view& text);
/// The number times 10^shift; none when a double can't hold it (a number that is not zero never
/// becomes zero).
[[nodiscard]] std::optional<double> NumberValue(const SNumberText& number, int shift);

} // namespace zov::batch
