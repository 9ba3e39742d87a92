// SPDX-License-Identifier: Apache-2.0
#include "batch/CellValue.h"

#include "base/Number.h"
#include "base/Text.h"
#include "batch/CellText.h"

#include <algorithm>
#include <array>
#include <string>

namespace zov::batch {

namespace {

constexpr std::string_view kWhyNoNumber = "no number";
constexpr std::string_view kWhyUnit = "not a unit of this quantity, or one that could be two";
constexpr std::string_view kWhyNoUnit = "the cell must carry its unit";
constexpr std::string_view kWhyMore = "more than one value";
constexpr std::string_view kWhyNegative = "negative";
constexpr std::string_view kWhyRange = "out of range";
constexpr std::string_view kWhyError = "the sheet shows an error";
constexpr std::string_view kWhySeparators = "its commas and points form no number";

SCellReading Bad(std::string_view why)
{
    return {.state = ECell::Bad, .why = why};
}

// --- numbers ---------------------------------------------------------------------------------

/// True when the text is digits in groups of three after a first group of one to three.
bool IsGrouped(std::string_view text, char separator)
{
    const std::size_t first = text.find(separator);
    if (first == 0 || first > 3) {
        return false;
    }
    for (std::size_t at = first; at < text.size(); at += 4) {
        if (text[at] != separator || text.size() - at < 4 ||
            !std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                         text.begin() + static_cast<std::ptrdiff_t>(at) + 4, IsDigit)) {
            return false;
        }
    }
    return true;
}

std::string Without(std::string_view text, char separator)
{
    std::string out(text);
    std::erase(out, separator);
    return out;
}

/// Digits with one decimal point from digits with points, commas, apostrophes or blanks.
bool PlainDigits(std::string_view text, SNumberText& number)
{
    std::string digits(text);
    for (const char group : {'\'', ' '}) {
        const std::size_t point = std::min(digits.find_first_of(".,"), digits.size());
        const std::string_view whole = std::string_view(digits).substr(0, point);
        if (whole.find(group) != std::string_view::npos) {
            if (!IsGrouped(whole, group)) {
                return false;
            }
            digits = Without(whole, group) + digits.substr(point);
        }
    }
    const auto points = std::count(digits.begin(), digits.end(), '.');
    const auto commas = std::count(digits.begin(), digits.end(), ',');
    if (commas == 0 && points <= 1) {
        number.digits += digits;
        return true;
    }
    const char decimal = digits[digits.find_last_of(".,")];
    const char group = decimal == '.' ? ',' : '.';
    const std::size_t last = digits.rfind(decimal);
    if (points > 0 && commas > 0) {
        // Both: the last one is the decimal sign, the other groups the digits before it.
        if (std::count(digits.begin(), digits.end(), decimal) != 1 ||
            !IsGrouped(std::string_view(digits).substr(0, last), group)) {
            return false;
        }
        number.decimalComma = decimal == ',';
        number.digits += Without(std::string_view(digits).substr(0, last), group) + '.' +
                         digits.substr(last + 1);
        return true;
    }
    const bool leadingZero = digits.starts_with('0');
    if (IsGrouped(digits, decimal) && !leadingZero) {
        number.maybeDecimalComma = commas == 1;
        number.digits += Without(digits, decimal);
        return true;
    }
    if (commas != 1) {
        return false;
    }
    number.decimalComma = true;
    digits[last] = '.';
    number.digits += digits;
    return true;
}

bool IsGroupSign(std::string_view text, std::size_t at)
{
    return text[at] == '\'' || text[at] == ' ';
}

/// End of the digits and separators that begin at `start`. A blank or apostrophe belongs to the
/// number only between groups of three digits.
std::size_t EndOfDigits(std::string_view text, std::size_t start)
{
    std::size_t end = start;
    while (end < text.size()) {
        const char c = text[end];
        if (IsDigit(c) || c == '.' || c == ',') {
            ++end;
        } else if (IsGroupSign(text, end) && end > start && IsDigit(text[end - 1]) &&
                   text.size() - end > 3 && IsDigit(text[end + 1]) && IsDigit(text[end + 2]) &&
                   IsDigit(text[end + 3]) && (text.size() - end == 4 || !IsDigit(text[end + 4]))) {
            end += 4;
        } else {
            break;
        }
    }
    while (end > start && text[end - 1] == ',') { // ends a phrase, not a number
        --end;
    }
    return end;
}

/// Length of an exponent at the start of the text, 0 when there is none.
std::size_t ExponentLength(std::string_view text)
{
    if (text.empty() || (text[0] != 'e' && text[0] != 'E')) {
        return 0;
    }
    std::size_t end = 1;
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) {
        ++end;
    }
    const std::size_t digits = end;
    while (end < text.size() && IsDigit(text[end])) {
        ++end;
    }
    return end > digits ? end : 0;
}

/// "4u7" and "R10": digits, a letter, digits. Moves `text` behind them and sets number and
/// exponent.
bool TakeLetterNumber(std::string_view& text, EQuantity quantity, SNumberText& number,
                      int& exponent)
{
    std::size_t letter = 0;
    while (letter < text.size() && IsDigit(text[letter])) {
        ++letter;
    }
    std::size_t end = letter + 1;
    while (end < text.size() && IsDigit(text[end])) {
        ++end;
    }
    if (letter >= text.size() || end == letter + 1) {
        return false;
    }
    const auto found = PointLetterExponent(text[letter], quantity);
    if (!found) {
        return false;
    }
    exponent = *found;
    number.digits.assign(letter == 0 ? "0" : text.substr(0, letter));
    number.digits += '.';
    number.digits += text.substr(letter + 1, end - letter - 1);
    text.remove_prefix(end);
    return true;
}

bool IsRemark(std::string_view text)
{
    constexpr std::array<std::string_view, 8> kRemarks = {"max",  "max.", "typ", "typ.",
                                                          "nom.", "nom",  "DC",  "DC max"};
    if (text.empty() || (text.starts_with('(') && text.ends_with(')'))) {
        return true;
    }
    return std::any_of(kRemarks.begin(), kRemarks.end(),
                       [&](std::string_view known) { return EqualsNoCase(known, text); });
}

/// Costs: a currency sign or word before or behind the number.
std::string_view WithoutCurrency(std::string_view text)
{
    constexpr std::array<std::string_view, 8> kCurrencies = {
        "US$", "$", "\xE2\x82\xAC", "\xC2\xA3", "USD", "EUR", "\xC2\xA5", "GBP"};
    for (const std::string_view currency : kCurrencies) {
        if (StartsWithNoCase(text, currency)) {
            return TrimCell(text.substr(currency.size()));
        }
        if (EndsWithNoCase(text, currency)) {
            return TrimCell(text.substr(0, text.size() - currency.size()));
        }
    }
    return text;
}

SCellReading Finish(const SNumberText& number, int exponent, std::string_view rest, bool ownUnit)
{
    if (!IsRemark(Trim(rest))) {
        return Bad(kWhyMore);
    }
    const auto value = NumberValue(number, exponent);
    if (!value) {
        return Bad(kWhyRange);
    }
    if (*value < 0) {
        return Bad(kWhyNegative);
    }
    return {.state = ECell::Value,
            .value = *value,
            .maybeDecimalComma = number.maybeDecimalComma,
            .decimalComma = number.decimalComma,
            .ownUnit = ownUnit};
}

/// Everything but a bare number in ASCII.
SCellReading ReadWritten(std::string_view cell, EQuantity quantity, SColumnUnit unit)
{
    const std::string plain = PlainSigns(cell);
    std::string_view text = Trim(plain);
    SNumberText number;
    int exponent = 0;
    if (TakeLetterNumber(text, quantity, number, exponent)) {
        // Only the base unit may follow the prefix that stood for the point.
        const std::string_view word = TakeWord(text);
        return word.empty() || UnitWordExponent(word, quantity) == 0
                   ? Finish(number, exponent, text, true)
                   : Bad(kWhyUnit);
    }
    if (!TakeNumber(text, number)) {
        const bool digits = !text.empty() && (IsDigit(text[0]) || text[0] == '.');
        return Bad(digits ? kWhySeparators : kWhyNoNumber);
    }
    std::string_view behind = Trim(text);
    std::string_view word = TakeWord(behind);
    if (IsRemark(word)) {
        behind = Trim(text);
        word = {};
    }
    if (word.empty()) {
        return unit.fromCell && quantity != EQuantity::None
                   ? Bad(kWhyNoUnit)
                   : Finish(number, unit.exponent, behind, false);
    }
    auto own = UnitWordExponent(word, quantity);
    if (own && quantity == EQuantity::Resistance && word.size() == 1) { // "10 k Ohm"
        std::string_view further = Trim(behind);
        const std::string_view next = TakeWord(further);
        if (!next.empty() && UnitWordExponent(next, quantity) == 0) {
            behind = further;
        }
    }
    return own ? Finish(number, *own, behind, true) : Bad(kWhyUnit);
}

} // namespace

bool TakeNumber(std::string_view& text, SNumberText& number)
{
    std::size_t start = 0;
    number = {};
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        number.digits = text[0] == '-' ? "-" : "";
        start = 1;
    }
    const std::size_t end = EndOfDigits(text, start);
    const std::string_view body = text.substr(start, end - start);
    if (std::none_of(body.begin(), body.end(), IsDigit) || !PlainDigits(body, number)) {
        return false;
    }
    const std::string_view rest = text.substr(end);
    const std::size_t exponent = ExponentLength(rest);
    number.digits += rest.substr(0, exponent);
    text = rest.substr(exponent);
    return true;
}

std::string_view TakeWord(std::string_view& text)
{
    std::size_t end = 0;
    while (end < text.size() && (IsAlpha(text[end]) || text[end] == '%')) {
        ++end;
    }
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

std::optional<double> NumberValue(const SNumberText& number, int shift)
{
    std::string_view rest = number.digits;
    const auto value = ConsumeDouble(rest, shift);
    if (!value || !rest.empty()) {
        return std::nullopt;
    }
    const auto mantissa =
        std::string_view(number.digits).substr(0, number.digits.find_first_of("eE"));
    if (*value == 0 && mantissa.find_first_of("123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return value == 0.0 ? 0.0 : value; // no negative zero
}

SCellReading ReadQuantity(std::string_view text, EQuantity quantity, SColumnUnit unit)
{
    text = TrimCell(text);
    if (!unit.fromCell) {
        std::string_view rest = text;
        const auto value = ConsumeDouble(rest, unit.exponent);
        if (value && rest.empty() && *value > 0) { // most cells of most lists
            return {.state = ECell::Value, .value = *value};
        }
    }
    if (IsEmptyWord(text)) {
        return {};
    }
    if (IsErrorValue(text)) {
        return Bad(kWhyError);
    }
    return ReadWritten(quantity == EQuantity::None ? WithoutCurrency(text) : text, quantity, unit);
}

bool IsPlausible(double value, EQuantity quantity)
{
    struct SRange
    {
        double low;
        double high;
    };
    constexpr auto kRangeOf = [](EQuantity of) -> SRange {
        switch (of) {
        case EQuantity::Resistance:
            return {1e-6, 1e13};
        case EQuantity::Inductance:
            return {1e-12, 1e3};
        case EQuantity::Capacitance:
            return {1e-15, 1e4};
        case EQuantity::Voltage:
            return {1e-3, 1e6};
        case EQuantity::Current:
            return {1e-6, 1e5};
        default:
            return {0, 1e300};
        }
    };
    const SRange range = kRangeOf(quantity);
    return value == 0 || (value >= range.low && value <= range.high);
}

std::string_view ExpectedText(EQuantity quantity)
{
    switch (quantity) {
    case EQuantity::Resistance:
        return "a resistance such as 100, 4.7k, 0R1, 20 mOhm";
    case EQuantity::Inductance:
        return "an inductance such as 10, 2.2uH, 4n7, 100 nH";
    case EQuantity::Capacitance:
        return "a capacitance such as 100, 4.7uF, 4u7, 100 nF";
    case EQuantity::Voltage:
        return "a voltage such as 16, 6.3V, 1kV";
    case EQuantity::Current:
        return "a current such as 500, 1.2A, 500 mA";
    case EQuantity::Tolerance:
        return "a tolerance such as 10%, \xC2\xB1"
               "10%, -20%/+80%, K, \xC2\xB1"
               "0.1pF";
    default:
        return "a number of zero or more";
    }
}

} // namespace zov::batch
