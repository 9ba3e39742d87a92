// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/DiscreteGuess.h"

#include "base/Text.h"
#include "batch/CaseSize.h"
#include "batch/CellText.h"
#include "batch/CellValue.h"

#include <algorithm>
#include <array>

namespace zov::app {
namespace {

constexpr std::array<ERecordType, 3> kTypes = {ERecordType::Capacitor, ERecordType::Inductor,
                                               ERecordType::Resistor};

EQuantity QuantityOf(ERecordType type)
{
    return type == ERecordType::Capacitor  ? EQuantity::Capacitance
           : type == ERecordType::Inductor ? EQuantity::Inductance
                                           : EQuantity::Resistance;
}

/// Words of a text; a comma between digits and the sign of an exponent part nothing.
std::vector<std::string> WordsOf(std::string_view text)
{
    const std::string plain = batch::PlainSigns(text);
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const char c = plain[i];
        const char before = i == 0 ? ' ' : plain[i - 1];
        const char after = i + 1 == plain.size() ? ' ' : plain[i + 1];
        const bool inNumber = (c == ',' && IsDigit(before) && IsDigit(after)) ||
                              (c == '-' && ToLower(before) == 'e' && IsDigit(after));
        if (!inNumber &&
            (IsSpace(c) || std::string_view("_/;|,()[]-").find(c) != std::string_view::npos)) {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    // "100 nF" is one word.
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const bool number = !words[i].empty() && IsDigit(words[i].back()) &&
                            words[i].find_first_not_of("0123456789.,") == std::string::npos;
        if (number && !words[i + 1].empty() && IsAlpha(words[i + 1].front())) {
            words.push_back(words[i] + words[i + 1]);
        }
    }
    return words;
}

/// A word with a unit of the quantity that a part may have.
std::optional<double> ValueIn(const std::vector<std::string>& words, EQuantity quantity)
{
    for (const std::string& word : words) {
        if (word.empty() || word.find_first_of("0123456789") == std::string::npos) {
            continue;
        }
        const batch::SCellReading cell = batch::ReadQuantity(word, quantity, {.fromCell = true});
        if (cell.state == batch::ECell::Value && cell.ownUnit &&
            batch::IsPlausible(cell.value, quantity)) {
            return cell.value;
        }
    }
    return std::nullopt;
}

/// C, L or R when all designators begin with it and a digit follows.
std::optional<ERecordType> TypeOfRefDes(const SDesignComponent& component)
{
    constexpr std::string_view kLetters = "CLR";
    std::optional<ERecordType> type;
    for (const std::string& refdes : component.refdes) {
        const std::size_t at = refdes.size() > 1 && IsDigit(refdes[1])
                                   ? kLetters.find(ToUpper(refdes[0]))
                                   : std::string_view::npos;
        if (at == std::string_view::npos || (type && *type != kTypes[at])) {
            return std::nullopt;
        }
        type = kTypes[at];
    }
    return type;
}

/// A size that is written so that it can't be anything else: four digits that are a case code.
std::string SizeIn(const std::vector<std::string>& words)
{
    for (const std::string& word : words) {
        if (word.size() != batch::kMinSizeLength || !std::ranges::all_of(word, IsDigit)) {
            continue;
        }
        const batch::SSizeReading size = batch::ReadSize(word, batch::ESizeSystem::FromFile);
        if (size.state == batch::ECell::Value && !size.unknown) {
            return size.size;
        }
    }
    return {};
}

/// A word may be a value in one quantity only: "10m" without more is none.
std::optional<ERecordType> TypeOfUnit(const std::vector<std::string>& words)
{
    std::optional<ERecordType> type;
    for (const ERecordType one : kTypes) {
        const std::optional<double> value = ValueIn(words, QuantityOf(one));
        if (value && type) {
            return std::nullopt;
        }
        type = value ? std::optional(one) : type;
    }
    return type;
}

std::optional<double> BareNumber(std::string_view text)
{
    const batch::SCellReading cell = batch::ReadQuantity(text, EQuantity::Resistance, {});
    return cell.state == batch::ECell::Value ? std::optional(cell.value) : std::nullopt;
}

} // namespace

std::optional<ERecordType> DiscreteTypeOf(const SDesignComponent& component)
{
    if (component.requiredType == ERecordType::Any) {
        return TypeOfRefDes(component);
    }
    return IsDiscrete(component.requiredType) ? std::optional(component.requiredType)
                                              : std::nullopt;
}

std::optional<SDiscreteGuess> GuessDiscrete(const SDesignComponent& component)
{
    const std::optional<ERecordType> type = DiscreteTypeOf(component);
    if (component.requiredType != ERecordType::Any && !type) {
        return std::nullopt;
    }
    const std::vector<std::string> both = WordsOf(component.value + " " + component.name);
    for (const bool fromValue : {true, false}) {
        const std::string& text = fromValue ? component.value : component.name;
        const std::vector<std::string> words = WordsOf(text);
        const std::optional<ERecordType> known = type ? type : TypeOfUnit(words);
        std::optional<double> value = known ? ValueIn(words, QuantityOf(*known)) : std::nullopt;
        if (!value && fromValue && known == ERecordType::Resistor) {
            value = BareNumber(text);
        }
        if (value) {
            SDiscreteGuess guess{*known, *value, {}, SizeIn(both), text};
            if (*known == ERecordType::Capacitor) {
                guess.voltage = ValueIn(both, EQuantity::Voltage);
            }
            return guess;
        }
    }
    return std::nullopt;
}

void FillDiscrete(CZovRcdProps& record, std::string_view name, const SDiscreteGuess& guess)
{
    record.SetString(EPropId::ModelName, name);
    SDiscreteModel model;
    model.resistance = guess.type == ERecordType::Resistor ? guess.value : 0.0;
    if (guess.type != ERecordType::Resistor) {
        model.inductance = guess.type == ERecordType::Inductor ? guess.value : 0.0;
    }
    if (guess.type == ERecordType::Capacitor) {
        model.capacitance = guess.value;
        record.SetDouble(EPropId::Cnom, guess.value);
        record.SetString(EPropId::Size, guess.size);
        if (guess.voltage) {
            record.SetDouble(EPropId::Volt, *guess.voltage);
        }
    }
    record.SetDiscreteModel(model);
}

} // namespace zov::app
