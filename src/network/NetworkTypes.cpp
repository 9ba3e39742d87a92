// SPDX-License-Identifier: Apache-2.0
#include "network/NetworkTypes.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <bit>

namespace zov::network {

namespace {

constexpr std::string_view kLetters = "SZYGH";
constexpr std::array<std::string_view, 3> kFormats = {"DB", "MA", "RI"};
constexpr std::array<std::string_view, 3> kStorages = {"Full", "Lower", "Upper"};

struct SUnit
{
    EFrequencyUnit unit;
    int power;
    std::string_view prefix;
    std::string_view word;
};
constexpr std::array<SUnit, 4> kUnits = {{{EFrequencyUnit::Hz, 0, "", "Hz"},
                                          {EFrequencyUnit::KHz, 3, "K", "KHz"},
                                          {EFrequencyUnit::MHz, 6, "M", "MHz"},
                                          {EFrequencyUnit::GHz, 9, "G", "GHz"}}};

const SUnit& Find(EFrequencyUnit unit)
{
    const auto* const found = std::ranges::find(kUnits, unit, &SUnit::unit);
    return found == kUnits.end() ? kUnits.front() : *found;
}

} // namespace

std::optional<EParameter> ParameterOfCode(std::uint32_t code)
{
    if (!std::has_single_bit(code) || code > kTypeH) {
        return std::nullopt;
    }
    if (code >= kTypeG) {
        return code == kTypeG ? EParameter::G : EParameter::H;
    }
    if ((code & (kTypeZ | kTypeZ2)) != 0) {
        return EParameter::Z;
    }
    return (code & (kTypeY | kTypeY2)) != 0 ? EParameter::Y : EParameter::S;
}

std::uint32_t CodeOf(EParameter parameter)
{
    constexpr std::array<std::uint32_t, 5> kCodes = {kTypeS, kTypeZ, kTypeY, kTypeG, kTypeH};
    return kCodes[static_cast<std::size_t>(parameter)];
}

char LetterOf(EParameter parameter)
{
    return kLetters[static_cast<std::size_t>(parameter)];
}

std::optional<EParameter> ParameterOfLetter(std::string_view word)
{
    const std::size_t at = word.size() == 1 ? kLetters.find(ToUpper(word[0])) : kLetters.npos;
    return at == kLetters.npos ? std::nullopt : std::optional(static_cast<EParameter>(at));
}

std::string_view WordOf(EDataFormat format)
{
    return kFormats[static_cast<std::size_t>(format)];
}

std::optional<EDataFormat> FormatOfWord(std::string_view word)
{
    const auto* const found = std::ranges::find_if(
        kFormats, [&](std::string_view known) { return EqualsNoCase(known, word); });
    return found == kFormats.end()
               ? std::nullopt
               : std::optional(static_cast<EDataFormat>(found - kFormats.begin()));
}

std::string_view WordOf(EStorage storage)
{
    return kStorages[static_cast<std::size_t>(storage)];
}

int PowerOf(EFrequencyUnit unit)
{
    return Find(unit).power;
}

std::string_view PrefixOf(EFrequencyUnit unit)
{
    return Find(unit).prefix;
}

std::optional<EFrequencyUnit> UnitOfWord(std::string_view word)
{
    const auto* const found = std::ranges::find_if(
        kUnits, [&](const SUnit& unit) { return EqualsNoCase(unit.word, word); });
    return found == kUnits.end() ? std::nullopt : std::optional(found->unit);
}

std::vector<SPort> DefaultPorts(std::uint32_t count)
{
    std::vector<SPort> ports(count);
    for (std::uint32_t p = 0; p < count; ++p) {
        ports[p].first = p;
        ports[p].second = p;
        ports[p].name = DefaultPortName(p);
    }
    return ports;
}

std::string DefaultPortName(std::uint32_t port)
{
    return "Port" + std::to_string(port);
}

bool HasMixedMode(const std::vector<SPort>& ports)
{
    return std::ranges::any_of(
        ports, [](const SPort& port) { return port.mode != EPortMode::SingleEnded; });
}

std::size_t EqualReferences(const std::vector<SPort>& ports)
{
    std::size_t equal = 0;
    while (equal < ports.size() && ports[equal].referenceOhm == ports.front().referenceOhm) {
        ++equal;
    }
    return equal;
}

} // namespace zov::network
