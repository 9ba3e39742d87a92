// SPDX-License-Identifier: Apache-2.0
#include "batch/UnitWords.h"

#include "base/Text.h"
#include "batch/CellText.h"

#include <array>
#include <string>

namespace zov::batch {

namespace {

struct SBaseWord
{
    EQuantity quantity;
    std::string_view word; ///< without regard to case
};
// Longer words first: what is left in front of the word is the prefix.
constexpr std::array<SBaseWord, 26> kBaseWords = {{
    {EQuantity::Capacitance, "farads"}, {EQuantity::Capacitance, "farad"},
    {EQuantity::Capacitance, "f"},      {EQuantity::Inductance, "henries"},
    {EQuantity::Inductance, "henrys"},  {EQuantity::Inductance, "henry"},
    {EQuantity::Inductance, "h"},       {EQuantity::Resistance, "ohms"},
    {EQuantity::Resistance, "ohm"},     {EQuantity::Resistance, "r"},
    {EQuantity::Resistance, "e"},       {EQuantity::Current, "amperes"},
    {EQuantity::Current, "ampere"},     {EQuantity::Current, "amps"},
    {EQuantity::Current, "amp"},        {EQuantity::Current, "adc"},
    {EQuantity::Current, "arms"},       {EQuantity::Current, "a"},
    {EQuantity::Voltage, "volts"},      {EQuantity::Voltage, "volt"},
    {EQuantity::Voltage, "vdc"},        {EQuantity::Voltage, "vac"},
    {EQuantity::Voltage, "vrms"},       {EQuantity::Voltage, "v"},
    {EQuantity::Tolerance, "percent"},  {EQuantity::Tolerance, "%"},
}};

struct SPrefixWord
{
    std::string_view word;
    int exponent;
};
constexpr std::array<SPrefixWord, 9> kPrefixWords = {{{"femto", -15},
                                                      {"pico", -12},
                                                      {"nano", -9},
                                                      {"micro", -6},
                                                      {"milli", -3},
                                                      {"kilo", 3},
                                                      {"mega", 6},
                                                      {"meg", 6},
                                                      {"giga", 9}}};

/// No part has kilofarads: "10k" among capacitances is another column's value.
bool IsSmallQuantity(EQuantity quantity)
{
    return quantity == EQuantity::Capacitance || quantity == EQuantity::Inductance;
}

/// @param capitals  the unit is written in capitals, so its prefix may stand for a small letter
std::optional<int> LetterExponent(char letter, EQuantity quantity, bool capitals)
{
    switch (letter) {
    case 'f':
        return -15;
    case 'p':
    case 'P':
        return -12;
    case 'n':
    case 'N':
        return -9;
    case 'u':
    case 'U':
        return -6;
    case 'm':
        return -3;
    case 'k':
    case 'K':
        return IsSmallQuantity(quantity) ? std::nullopt : std::optional(3);
    case 'G':
        return IsSmallQuantity(quantity) ? std::nullopt : std::optional(9);
    case 'M':
        // MOHM and MF have been written for milli, micro and mega; MA and MH only for milli.
        if (quantity == EQuantity::Resistance) {
            return capitals ? std::nullopt : std::optional(6);
        }
        return quantity == EQuantity::Capacitance ? std::nullopt : std::optional(-3);
    default:
        return std::nullopt;
    }
}

std::optional<int> PrefixExponent(std::string_view prefix, EQuantity quantity, bool capitals)
{
    prefix = Trim(prefix);
    if (prefix.empty()) {
        return 0;
    }
    if (prefix.size() == 1) {
        return LetterExponent(prefix.front(), quantity, capitals);
    }
    for (const SPrefixWord& known : kPrefixWords) {
        if (EqualsNoCase(known.word, prefix)) {
            return known.exponent;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<int> PointLetterExponent(char letter, EQuantity quantity)
{
    switch (quantity) {
    case EQuantity::Resistance:
        return ToLower(letter) == 'r' ? std::optional(0)
               : letter == 'n' || letter == 'p' || letter == 'f'
                   ? std::nullopt
                   : LetterExponent(letter, quantity, false);
    case EQuantity::Voltage:
        return ToLower(letter) == 'v'   ? std::optional(0)
               : ToLower(letter) == 'k' ? std::optional(3)
                                        : std::nullopt;
    case EQuantity::Current:
        return ToLower(letter) == 'a' ? std::optional(0)
               : letter == 'm'        ? std::optional(-3)
                                      : std::nullopt;
    case EQuantity::Capacitance:
    case EQuantity::Inductance:
        return LetterExponent(letter, quantity, false);
    default:
        return std::nullopt;
    }
}

std::optional<int> UnitWordExponent(std::string_view word, EQuantity quantity)
{
    const std::string plain = PlainSigns(TrimCell(word));
    for (const SBaseWord& base : kBaseWords) {
        if (base.quantity != quantity || !EndsWithNoCase(plain, base.word)) {
            continue;
        }
        const std::string_view written =
            std::string_view(plain).substr(plain.size() - base.word.size());
        const bool capitals = base.word.size() > 1 && UpperCase(written) == written;
        const std::string_view prefix =
            std::string_view(plain).substr(0, plain.size() - base.word.size());
        if (const auto exponent = PrefixExponent(prefix, quantity, capitals)) {
            return quantity == EQuantity::Tolerance ? *exponent - 2 : *exponent;
        }
    }
    const bool prefixAlone =
        quantity != EQuantity::None && quantity != EQuantity::Tolerance && !plain.empty();
    return prefixAlone ? PrefixExponent(plain, quantity, false) : std::nullopt;
}

} // namespace zov::batch
