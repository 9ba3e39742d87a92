// SPDX-License-Identifier: Apache-2.0
// Values of fields as users read and type them.
#include "base/Number.h"
#include "base/Text.h"
#include "core/RecordFields.h"

#include <fmt/format.h>

namespace zov {
namespace {

constexpr std::string_view kNameSeparators = " \t\r\n,";

std::vector<std::string> NamesIn(std::string_view text)
{
    std::vector<std::string> names;
    for (std::size_t at = text.find_first_not_of(kNameSeparators); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kNameSeparators, at), text.size());
        names.emplace_back(text.substr(at, end - at));
        at = text.find_first_not_of(kNameSeparators, end);
    }
    return names;
}

std::string Joined(const std::vector<std::string>& names)
{
    return fmt::format("{}", fmt::join(names, " "));
}

std::string NumberText(double value, const SFieldInfo& info, const CDisplayUnits& units, bool exact)
{
    if (!exact) {
        return FormatQuantity(value, info.quantity, units);
    }
    const SUnit unit = units.Of(info.quantity);
    return FormatShortest(unit.exponent == 0 ? value : ScaleByPowerOfTen(value, -unit.exponent)) +
           std::string(unit.suffix);
}

SError Expected(std::string_view text, const std::string& what)
{
    return Fail(EErr::Argument, fmt::format("'{}' is not understood, expected {}", text, what));
}

CResult<SFieldValue> ParseNumber(std::string_view text, const SFieldInfo& info,
                                 const CDisplayUnits& units)
{
    std::string_view rest = text;
    const bool bare = ConsumeDouble(rest).has_value() && rest.empty();
    const SUnit unit = units.Of(info.quantity);
    const std::optional<double> value =
        bare ? ParseDouble(text, unit.exponent) : ParseQuantity(text, info.quantity);
    if (value) {
        return SFieldValue(*value);
    }
    if (unit.suffix.empty()) {
        return Expected(text, "a number");
    }
    return Expected(text, fmt::format("a number with its unit, such as 4.7{}", unit.suffix));
}

CResult<SFieldValue> ParseChoice(std::string_view text, const SFieldInfo& info)
{
    for (std::size_t i = 0; i < info.choices.size(); ++i) {
        if (EqualsNoCase(info.choices[i], text)) {
            return SFieldValue(static_cast<int>(i));
        }
    }
    return Expected(text, fmt::format("one of {}", fmt::join(info.choices, ", ")));
}

CResult<SFieldValue> ParsePairs(std::string_view text)
{
    std::vector<TNamePair> pairs;
    for (const std::string_view part : Split(text, ';')) {
        const std::vector<std::string> names = NamesIn(part);
        if (names.size() == 2) {
            pairs.emplace_back(names[0], names[1]);
        } else if (!names.empty()) {
            return Expected(Trim(part), "pairs of names, such as 'A B; C D'");
        }
    }
    return pairs.empty() ? SFieldValue() : SFieldValue(std::move(pairs));
}

} // namespace

std::string FieldText(const SFieldValue& value, const SFieldInfo& info, const CDisplayUnits& units,
                      bool exact)
{
    if (const auto* text = value.As<std::string>()) {
        return *text;
    }
    if (const auto* number = value.As<double>()) {
        return NumberText(*number, info, units, exact);
    }
    if (const auto* index = value.As<int>()) {
        const auto at = static_cast<std::size_t>(*index);
        return at < info.choices.size() ? std::string(info.choices[at]) : std::string();
    }
    if (const auto* names = value.As<std::vector<std::string>>()) {
        return Joined(*names);
    }
    if (const auto* rows = value.As<TFieldRows>()) {
        return fmt::format("{} {}", rows->size(), rows->size() == 1 ? "row" : "rows");
    }
    std::string out;
    if (const auto* pairs = value.As<std::vector<TNamePair>>()) {
        for (const TNamePair& pair : *pairs) {
            out += fmt::format("{}{} {}", out.empty() ? "" : "; ", pair.first, pair.second);
        }
    }
    return out;
}

CResult<SFieldValue> ParseField(std::string_view text, const SFieldInfo& info,
                                const CDisplayUnits& units)
{
    const std::string_view trimmed = Trim(text);
    if (trimmed.empty()) {
        return SFieldValue();
    }
    switch (info.kind) {
    case EFieldKind::Number:
        return ParseNumber(trimmed, info, units);
    case EFieldKind::Choice:
        return ParseChoice(trimmed, info);
    case EFieldKind::Names:
        return SFieldValue(NamesIn(trimmed));
    case EFieldKind::Pairs:
        return ParsePairs(trimmed);
    case EFieldKind::Rows:
        return Expected(trimmed, "a table");
    case EFieldKind::LongText:
    case EFieldKind::Circuit:
        return SFieldValue(std::string(text));
    case EFieldKind::Text:
    case EFieldKind::File:
        break;
    }
    return SFieldValue(std::string(trimmed));
}

bool FitsExchange(std::string_view text)
{
    return text.find_first_of("\"&<>") == std::string_view::npos;
}

} // namespace zov
