// SPDX-License-Identifier: Apache-2.0
#include "batch/CellTolerance.h"

#include "base/Text.h"
#include "batch/CellText.h"

#include <array>
#include <cmath>
#include <string>

namespace zov::batch {

namespace {

SToleranceReading Bad(std::string_view why)
{
    return {.state = ECell::Bad, .why = why};
}

/// IEC 60062 letters. Small capacitances have absolute ones, in pF.
struct SLetterCode
{
    char letter;
    double up;
    double low;
    bool picofarads;
};
constexpr std::array<SLetterCode, 9> kLetterCodes = {{{'B', 0.1, 0.1, true},
                                                      {'C', 0.25, 0.25, true},
                                                      {'D', 0.5, 0.5, true},
                                                      {'F', 0.01, 0.01, false},
                                                      {'G', 0.02, 0.02, false},
                                                      {'J', 0.05, 0.05, false},
                                                      {'K', 0.10, 0.10, false},
                                                      {'M', 0.20, 0.20, false},
                                                      {'Z', 0.80, 0.20, false}}};

SToleranceReading FromLetter(const SLetterCode& code, EQuantity quantity,
                             std::optional<double> nominal)
{
    double unit = 1.0;
    if (code.picofarads) {
        if (quantity != EQuantity::Capacitance) {
            return Bad("the letter stands for picofarads");
        }
        if (!nominal || *nominal <= 0) {
            return Bad("an absolute tolerance needs the nominal value");
        }
        unit = 1e-12 / *nominal;
    }
    return {.state = ECell::Value, .up = code.up * unit, .low = code.low * unit};
}

enum class ESide : std::uint8_t
{
    Unsigned,
    Both,
    Plus,
    Minus
};

struct SPart
{
    ESide side = ESide::Unsigned;
    SNumberText number;
    std::string_view unitWord;
};

ESide TakeSide(std::string_view& text)
{
    constexpr std::array<std::string_view, 5> kBothSigns = {"+/-", "-/+", "+-", "-+", "+ -"};
    for (const std::string_view sign : kBothSigns) {
        if (text.starts_with(sign)) {
            text = Trim(text.substr(sign.size()));
            return ESide::Both;
        }
    }
    if (text.starts_with('+') || text.starts_with('-')) {
        const ESide side = text[0] == '+' ? ESide::Plus : ESide::Minus;
        text = Trim(text.substr(1));
        return side;
    }
    return ESide::Unsigned;
}

bool TakePart(std::string_view& text, SPart& part)
{
    part.side = TakeSide(text);
    if (text.starts_with('+') || text.starts_with('-') || !TakeNumber(text, part.number)) {
        return false;
    }
    text = Trim(text);
    part.unitWord = TakeWord(text);
    text = Trim(text);
    return true;
}

class CToleranceParts
{
public:
    CToleranceParts(EQuantity quantity, std::optional<double> nominal, SToleranceUnit unit)
        : m_quantity(quantity)
        , m_nominal(nominal)
        , m_unit(unit)
    {
    }

    SToleranceReading Read(std::string_view text)
    {
        SPart first;
        if (!TakePart(text, first)) {
            return Bad("no tolerance");
        }
        if (text.empty()) {
            return One(first);
        }
        while (!text.empty() && (text[0] == '/' || text[0] == ',' || text[0] == ';' ||
                                 text[0] == '~' || text[0] == ' ')) {
            text.remove_prefix(1);
        }
        SPart second;
        if (!TakePart(text, second) || !text.empty()) {
            return Bad("more than a tolerance");
        }
        return Two(first, second);
    }

private:
    SToleranceReading One(const SPart& part)
    {
        const auto value = Fraction(part, part.unitWord);
        SToleranceReading reading = {.state = ECell::Value, .bothSides = part.side == ESide::Both};
        if (part.side != ESide::Minus) {
            reading.up = value;
        }
        if (part.side != ESide::Plus) {
            reading.low = value;
        }
        return value ? Done(reading) : Bad(m_why);
    }

    SToleranceReading Two(const SPart& first, const SPart& second)
    {
        const bool minusFirst = first.side == ESide::Minus;
        const SPart& minus = minusFirst ? first : second;
        const SPart& plus = minusFirst ? second : first;
        if (minus.side != ESide::Minus ||
            (plus.side != ESide::Plus && plus.side != ESide::Unsigned)) {
            return Bad("two values that are not one upwards and one downwards");
        }
        const std::string_view shared = minus.unitWord.empty() ? plus.unitWord : minus.unitWord;
        const auto up = Fraction(plus, plus.unitWord.empty() ? shared : plus.unitWord);
        const auto low = Fraction(minus, shared);
        if (!up || !low) {
            return Bad(m_why);
        }
        return Done({.state = ECell::Value, .up = up, .low = low, .bothSides = true});
    }

    SToleranceReading Done(SToleranceReading reading) const
    {
        reading.takenAsFraction = m_takenAsFraction;
        return reading;
    }

    std::optional<double> Fraction(const SPart& part, std::string_view unitWord)
    {
        if (unitWord.empty()) {
            return BareFraction(part.number);
        }
        if (UnitWordExponent(unitWord, EQuantity::Tolerance) == -2) {
            return Checked(NumberValue(part.number, -2));
        }
        const auto exponent = UnitWordExponent(unitWord, m_quantity);
        if (!exponent) {
            m_why = "neither % nor a unit of the nominal value";
            return std::nullopt;
        }
        return Absolute(part.number, *exponent);
    }

    std::optional<double> BareFraction(const SNumberText& number)
    {
        if (m_unit.kind == SToleranceUnit::EKind::Absolute) {
            return Absolute(number, m_unit.exponent);
        }
        const auto plain = NumberValue(number, 0);
        if (m_unit.kind == SToleranceUnit::EKind::Unknown && plain && *plain > 0 && *plain < 1) {
            m_takenAsFraction = true;
            return plain;
        }
        return Checked(NumberValue(number, -2));
    }

    std::optional<double> Absolute(const SNumberText& number, int exponent)
    {
        if (!m_nominal || *m_nominal <= 0) {
            m_why = "an absolute tolerance needs the nominal value";
            return std::nullopt;
        }
        const auto value = NumberValue(number, exponent);
        return Checked(value ? std::optional(*value / *m_nominal) : std::nullopt);
    }

    std::optional<double> Checked(std::optional<double> value)
    {
        if (!value || *value < 0 || !std::isfinite(*value)) {
            m_why = "out of range";
            return std::nullopt;
        }
        return value;
    }

    EQuantity m_quantity;
    std::optional<double> m_nominal;
    SToleranceUnit m_unit;
    std::string_view m_why;
    bool m_takenAsFraction = false;
};

} // namespace

SToleranceReading ReadTolerance(std::string_view cell, EQuantity quantity,
                                std::optional<double> nominal, SToleranceUnit unit)
{
    const std::string_view trimmed = TrimCell(cell);
    if (IsEmptyWord(trimmed)) {
        return {};
    }
    if (IsErrorValue(trimmed)) {
        return Bad("the sheet shows an error");
    }
    const std::string plain = PlainSigns(trimmed);
    std::string_view text = Trim(plain);
    if (text.ends_with(')') && !text.starts_with('(')) { // "±10% (K)", "K (±10%)"
        text = Trim(text.substr(0, text.rfind('(')));
    }
    if (!text.empty() && IsAlpha(text[0]) && (text.size() == 1 || !IsAlpha(text[1]))) {
        for (const SLetterCode& code : kLetterCodes) {
            if (code.letter == ToUpper(text[0]) && text.size() == 1) {
                return FromLetter(code, quantity, nominal);
            }
        }
        text = Trim(text.substr(1)); // "K ±10%": the value says it
        if (text.starts_with('=') || text.starts_with(':')) {
            text = Trim(text.substr(1));
        }
    }
    return CToleranceParts(quantity, nominal, unit).Read(text);
}

} // namespace zov::batch
