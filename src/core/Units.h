// SPDX-License-Identifier: Apache-2.0
/// Quantities, the units they may be shown in, and values read and written with a unit.
///
/// Values are held in SI base units. What a unit does is a power of ten, kept as such: a value is
/// scaled by one multiplication or division by an exact power, never by an inexact 1e-9.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov {

enum class EQuantity : std::uint8_t
{
    None, ///< a plain number
    Resistance,
    Inductance,
    Capacitance,
    Voltage,
    Current,
    Time,
    Frequency,
    Power,
    Tolerance ///< a fraction, shown and written as percent
};
constexpr std::size_t kQuantityCount = 10;

struct SUnit
{
    std::string_view suffix; ///< as shown, such as "nF"
    int exponent = 0;        ///< one of it is 10^exponent of the SI unit
};

/// The units a user may choose from for a quantity, the base unit among them; empty for None and
/// Tolerance.
[[nodiscard]] std::span<const SUnit> UnitsOf(EQuantity quantity);

/// The unit of that name, exact spelling first, then without regard to case when that is
/// unambiguous
/// ("OHM", "nf"; "MOHM" is not: milli or mega). The signs for micro and ohm are understood.
[[nodiscard]] std::optional<SUnit> FindUnit(EQuantity quantity, std::string_view name);

/// The unit chosen for each quantity. A value that callers pass; there is no current one.
/// Default: mOhm, nH, nF, V, A, ns, MHz, W.
class CDisplayUnits
{
public:
    CDisplayUnits();

    [[nodiscard]] SUnit Of(EQuantity quantity) const
    {
        return m_units[static_cast<std::size_t>(quantity)];
    }
    /// False, and nothing changed, when the quantity has no such unit (FindUnit).
    bool Set(EQuantity quantity, std::string_view unitName);

private:
    std::array<SUnit, kQuantityCount> m_units{};
};

/// "%g%s" of the SI value in the unit of the quantity; "%g%%" for a tolerance; "%g" for None.
[[nodiscard]] std::string FormatQuantity(double siValue, EQuantity quantity,
                                         const CDisplayUnits& units);
void AppendQuantity(std::string& out, double siValue, EQuantity quantity,
                    const CDisplayUnits& units);

/// A number with a unit suffix, blanks between them allowed, as the SI value: "100nF", "2.2 uF",
/// "1e-9F". A prefix alone ("100n") and no suffix at all (SI base unit) are understood too; for a
/// tolerance the number is percent with or without the sign ("5%" and "5" are 0.05). None when it
/// is not a number or the suffix belongs to another quantity.
[[nodiscard]] std::optional<double> ParseQuantity(std::string_view text, EQuantity quantity);

} // namespace zov
