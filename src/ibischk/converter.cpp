// SPDX-License-Identifier: Apache-2.0
// D_to_A and A_to_D lines: how the simulator's digital signals reach an analog circuit.
#include "base/Text.h"
#include "ibischk/external.h"

#include <array>
#include <map>
#include <string>
#include <tuple>

namespace zov::ibischk {

namespace {

constexpr std::string_view kCornerNames[] = {"Typ", "Min", "Max"};

std::string_view KindName(bool toAnalog)
{
    return toAnalog ? "D_to_A" : "A_to_D";
}

/// A number, or from 6.0 the name of a converter parameter; kAbsent for a name and after a report.
double TakeConverterValue(SCheck& check, const SLine& line, std::string_view kind,
                          std::string_view what, std::string_view word)
{
    SNumber number;
    if (ReadNumber(word, number) == ENumber::Good) {
        return number.value;
    }
    const bool named = check.state.AtLeast(EVersion::V60);
    if (!named || !OpenExternal(check).converterParameters.Find(word)) {
        check.report.ErrorAt(line.Place(word), ExternalBase(check) + 18, kind, what,
                             named ? " or one of the Converter_Parameters" : "", word);
    }
    return kAbsent;
}

void CheckDigital(SCheck& check, const SLine& line, bool toAnalog, std::string_view port)
{
    // An external circuit has digital ports of its own choice.
    if (ExternalBase(check) != kExternalModel) {
        return;
    }
    const bool known = IsDigitalPort(port) && (port == "D_receive") != toAnalog;
    if (!known) {
        check.report.ErrorAt(line.Place(port), kExternalModel + 15, KindName(toAnalog), port,
                             toAnalog ? "D_drive, D_enable or D_switch" : "D_receive");
    }
}

void TakeLevels(SCheck& check, const SLine& line, bool toAnalog,
                std::span<const std::string_view> words)
{
    const int base = ExternalBase(check);
    const std::string_view kind = KindName(toAnalog);
    const double low = TakeConverterValue(check, line, kind, "vlow", words[0]);
    const double high = TakeConverterValue(check, line, kind, "vhigh", words[1]);
    if (!toAnalog) {
        if (low >= high) {
            check.report.WarningAt(line.Place(), base + 20, low, high);
        }
        return;
    }
    for (const std::size_t i : {2U, 3U}) {
        const std::string_view what = i == 2 ? "trise" : "tfall";
        const double time = TakeConverterValue(check, line, kind, what, words[i]);
        if (time <= 0) {
            check.report.ErrorAt(line.Place(words[i]), base + 19, kind, what, time);
        }
    }
}

void TakePolarity(SCheck& check, const SLine& line, bool toAnalog, std::string_view word)
{
    const int base = ExternalBase(check);
    if (!EqualsNoCase(word, "Inverting") && !EqualsNoCase(word, "Non-Inverting")) {
        check.report.ErrorAt(line.Place(word), base + 24, KindName(toAnalog), word);
    } else if (!check.state.AtLeast(EVersion::V51)) {
        check.report.ErrorAt(line.Place(word), base + 25, KindName(toAnalog));
    }
}

void CheckAnalogPorts(SCheck& check, const SExternal& external, const SConverter& converter,
                      int base)
{
    const std::string_view kind = KindName(converter.toAnalog);
    for (const std::string_view port : converter.ports) {
        if (port != "A_gnd" && !external.HasPort(port)) {
            check.report.ErrorAt(converter.place, base + 16, kind, port);
        }
    }
    if (converter.ports[0] == converter.ports[1]) {
        check.report.ErrorAt(converter.place, base + 17, kind, converter.ports[0]);
    }
}

/// What has one line for each corner. A digital signal may drive several pairs of ports, but only
/// one pair gives it its state.
using CWay = std::tuple<bool, std::string_view, std::string_view, std::string_view>;

CWay WayOf(const SConverter& converter)
{
    if (!converter.toAnalog) {
        return {false, converter.digital, {}, {}};
    }
    return {true, converter.digital, converter.ports[0], converter.ports[1]};
}

} // namespace

void TakeConverter(SCheck& check, const SLine& line, const CTokens& tokens, bool toAnalog)
{
    constexpr std::size_t kMost = 9;
    const std::size_t needed = toAnalog ? 8 : 6;
    std::array<std::string_view, kMost> words;
    const std::size_t count = SplitTokens(tokens.Rest(), words);
    const int base = ExternalBase(check);
    if (count < needed || count > needed + 1) {
        check.report.ErrorAt(line.Place(), base + 14, KindName(toAnalog), count,
                             toAnalog ? "8, or 9 with a polarity" : "6, or 7 with a polarity");
        return;
    }
    CheckDigital(check, line, toAnalog, words[0]);
    TakeLevels(check, line, toAnalog, std::span(words).subspan(3));
    const std::string_view corner = words[needed - 1];
    SConverter converter{
        toAnalog, words[0], {words[1], words[2]}, ExternalCorner(corner), line.Place()};
    if (converter.corner == kNoCorner) {
        check.report.ErrorAt(line.Place(corner), base + 21, KindName(toAnalog), corner);
    }
    if (count > needed) {
        TakePolarity(check, line, toAnalog, words[needed]);
    }
    OpenExternal(check).converters.push_back(converter);
}

void CheckConverters(SCheck& check, const SExternal& external)
{
    const int base = ExternalBase(check);
    std::map<CWay, std::array<SPlace, 3>> ways;
    for (const SConverter& converter : external.converters) {
        const std::string_view kind = KindName(converter.toAnalog);
        CheckAnalogPorts(check, external, converter, base);
        std::array<SPlace, 3>& corners = ways[WayOf(converter)];
        if (converter.corner == kNoCorner) {
            continue;
        }
        SPlace& place = corners[converter.corner];
        if (place.line != 0) {
            check.report.ErrorAt(converter.place, base + 22, kind, converter.digital,
                                 kCornerNames[converter.corner], place.line);
        } else {
            place = converter.place;
        }
    }
    for (const auto& [way, corners] : ways) {
        const std::size_t other = corners[1].line != 0 ? 1 : 2;
        if (corners[0].line == 0 && corners[other].line != 0) {
            check.report.ErrorAt(corners[other], base + 23, KindName(std::get<0>(way)),
                                 std::get<1>(way), kCornerNames[other]);
        }
    }
    if (!external.converters.empty() && external.language != nullptr &&
        !external.language->analog) {
        const SConverter& first = external.converters.front();
        check.report.ErrorAt(first.place, base + 13, KindName(first.toAnalog),
                             external.language->name);
    }
}

} // namespace zov::ibischk
