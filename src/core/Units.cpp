// SPDX-License-Identifier: Apache-2.0
#include "core/Units.h"

#include "base/Number.h"
#include "base/Text.h"

namespace zov {

namespace {

constexpr std::array<SUnit, 6> kResistance = {
    {{"Ohm", 0}, {"mOhm", -3}, {"uOhm", -6}, {"nOhm", -9}, {"kOhm", 3}, {"MOhm", 6}}};
constexpr std::array<SUnit, 5> kInductance = {
    {{"H", 0}, {"mH", -3}, {"uH", -6}, {"nH", -9}, {"pH", -12}}};
constexpr std::array<SUnit, 5> kCapacitance = {
    {{"F", 0}, {"mF", -3}, {"uF", -6}, {"nF", -9}, {"pF", -12}}};
constexpr std::array<SUnit, 5> kVoltage = {
    {{"V", 0}, {"mV", -3}, {"uV", -6}, {"nV", -9}, {"kV", 3}}};
constexpr std::array<SUnit, 5> kCurrent = {
    {{"A", 0}, {"mA", -3}, {"uA", -6}, {"nA", -9}, {"kA", 3}}};
constexpr std::array<SUnit, 6> kTime = {
    {{"s", 0}, {"ms", -3}, {"us", -6}, {"ns", -9}, {"ps", -12}, {"fs", -15}}};
constexpr std::array<SUnit, 4> kFrequency = {{{"Hz", 0}, {"kHz", 3}, {"MHz", 6}, {"GHz", 9}}};
constexpr std::array<SUnit, 4> kPower = {{{"W", 0}, {"mW", -3}, {"uW", -6}, {"kW", 3}}};
constexpr SUnit kPercent = {"%", -2};

/// The suffix with the signs for micro and ohm spelled in ASCII, and "R" or "Ohms" as Ohm.
std::string PlainSuffix(std::string_view suffix, EQuantity quantity)
{
    std::string out;
    for (std::size_t pos = 0; pos < suffix.size();) {
        const char32_t c = DecodeUtf8(suffix, pos);
        if (c == 0xB5 || c == 0x3BC) {
            out += 'u';
        } else if (c == 0x2126 || c == 0x3A9) {
            out += "Ohm";
        } else {
            AppendUtf8(out, c);
        }
    }
    if (quantity == EQuantity::Resistance && EndsWithNoCase(out, "ohms")) {
        out.pop_back();
    }
    return out;
}

std::optional<int> PrefixExponent(char c)
{
    switch (c) {
    case 'f':
        return -15;
    case 'p':
        return -12;
    case 'n':
        return -9;
    case 'u':
        return -6;
    case 'm':
        return -3;
    case 'k':
    case 'K':
        return 3;
    case 'M':
        return 6;
    case 'G':
        return 9;
    default:
        return std::nullopt;
    }
}

} // namespace

std::span<const SUnit> UnitsOf(EQuantity quantity)
{
    switch (quantity) {
    case EQuantity::Resistance:
        return kResistance;
    case EQuantity::Inductance:
        return kInductance;
    case EQuantity::Capacitance:
        return kCapacitance;
    case EQuantity::Voltage:
        return kVoltage;
    case EQuantity::Current:
        return kCurrent;
    case EQuantity::Time:
        return kTime;
    case EQuantity::Frequency:
        return kFrequency;
    case EQuantity::Power:
        return kPower;
    case EQuantity::None:
    case EQuantity::Tolerance:
        break;
    }
    return {};
}

std::optional<SUnit> FindUnit(EQuantity quantity, std::string_view name)
{
    const auto exact = [&](std::string_view wanted) -> std::optional<SUnit> {
        for (const SUnit& unit : UnitsOf(quantity)) {
            if (unit.suffix == wanted) {
                return unit;
            }
        }
        return std::nullopt;
    };
    if (const auto unit = exact(name)) { // the usual case, without a copy
        return unit;
    }
    const std::string plain = PlainSuffix(Trim(name), quantity);
    if (const auto unit = exact(plain)) {
        return unit;
    }
    std::optional<SUnit> found;
    for (const SUnit& unit : UnitsOf(quantity)) {
        if (EqualsNoCase(unit.suffix, plain)) {
            if (found) {
                return std::nullopt;
            }
            found = unit;
        }
    }
    return found;
}

CDisplayUnits::CDisplayUnits()
{
    m_units[static_cast<std::size_t>(EQuantity::Tolerance)] = kPercent;
    Set(EQuantity::Resistance, "mOhm");
    Set(EQuantity::Inductance, "nH");
    Set(EQuantity::Capacitance, "nF");
    Set(EQuantity::Voltage, "V");
    Set(EQuantity::Current, "A");
    Set(EQuantity::Time, "ns");
    Set(EQuantity::Frequency, "MHz");
    Set(EQuantity::Power, "W");
}

bool CDisplayUnits::Set(EQuantity quantity, std::string_view unitName)
{
    const auto unit = FindUnit(quantity, unitName);
    if (unit) {
        m_units[static_cast<std::size_t>(quantity)] = *unit;
    }
    return unit.has_value();
}

void AppendQuantity(std::string& out, double siValue, EQuantity quantity,
                    const CDisplayUnits& units)
{
    const SUnit unit = units.Of(quantity);
    AppendG(out, unit.exponent == 0 ? siValue : ScaleByPowerOfTen(siValue, -unit.exponent));
    out += unit.suffix;
}

std::string FormatQuantity(double siValue, EQuantity quantity, const CDisplayUnits& units)
{
    std::string out;
    AppendQuantity(out, siValue, quantity, units);
    return out;
}

std::optional<double> ParseQuantity(std::string_view text, EQuantity quantity)
{
    text = Trim(text);
    std::string_view suffix = text;
    // The suffix decides the power of ten, and the number is then converted once.
    if (!ConsumeDouble(suffix)) {
        return std::nullopt;
    }
    const std::string_view number = text.substr(0, text.size() - suffix.size());
    suffix = Trim(suffix);
    int exponent = 0;
    if (quantity == EQuantity::Tolerance) {
        if (!suffix.empty() && suffix != "%") {
            return std::nullopt;
        }
        exponent = -2;
    } else if (!suffix.empty()) {
        if (quantity == EQuantity::None) {
            return std::nullopt;
        }
        if (const auto unit = FindUnit(quantity, suffix)) {
            exponent = unit->exponent;
        } else {
            const std::string plain = PlainSuffix(suffix, quantity);
            const auto prefix = plain.size() == 1 ? PrefixExponent(plain.front()) : std::nullopt;
            if (!prefix) {
                return std::nullopt;
            }
            exponent = *prefix;
        }
    }
    return ParseDouble(number, exponent);
}

} // namespace zov
