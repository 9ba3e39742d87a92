// SPDX-License-Identifier: Apache-2.0
#include "app/curves/TouchstoneCurves.h"

#include "network/Convert.h"
#include "network/MixedMode.h"

#include <array>
#include <fmt/format.h>

namespace zov::app {
namespace {

using network::CNetworkData;
using network::EParameter;
using network::EPortMode;

char ModeLetter(EPortMode mode)
{
    return mode == EPortMode::Differential ? 'd' : mode == EPortMode::Common ? 'c' : 's';
}

std::string ModeText(const network::SPort& port, int number)
{
    switch (port.mode) {
    case EPortMode::Differential:
        return fmt::format("Diff({})", number);
    case EPortMode::Common:
        return fmt::format("Comm({})", number);
    default:
        return fmt::format("Port({})", number);
    }
}

curve::EUnitClass UnitOf(EParameter parameter)
{
    return parameter == EParameter::Z   ? curve::EUnitClass::Ohm
           : parameter == EParameter::Y ? curve::EUnitClass::Siemens
                                        : curve::EUnitClass::None;
}

const char* TitlesOf(EParameter parameter)
{
    return parameter == EParameter::Z   ? "Freq(Hz)\tReal(Ohm)\tImag(Ohm)"
           : parameter == EParameter::Y ? "Freq(Hz)\tReal(S)\tImag(S)"
                                        : "Freq(Hz)\tReal\tImag";
}

curve::TCurvePtr CurveOf(const CNetworkData& data, curve::SMatrixEntry entry,
                         const std::string& origin)
{
    auto made = std::make_shared<curve::CCurve>();
    curve::SCurveHeader& header = made->Header();
    const std::string name = EntryName(data.Parameter(), data.Ports(), entry);
    const auto row = static_cast<std::uint32_t>(entry.row - 1);
    const auto column = static_cast<std::uint32_t>(entry.column - 1);
    header.name = name;
    header.valueName = name + "_real_imag";
    if (HasMixedMode(data.Ports())) {
        header.name += '_' + ModeText(data.Ports()[row], entry.row);
        header.valueName = ModeText(data.Ports()[column], entry.column) + "_real_imag";
        header.modes = curve::ModesOf(header.name, header.valueName);
    }
    header.legend = origin + ' ' + name;
    header.columnTitles = TitlesOf(data.Parameter());
    made->Points().Reserve(data.FrequencyCount(), 3);
    for (std::size_t i = 0; i < data.FrequencyCount(); ++i) {
        const network::TComplex value = data.At(i, row, column);
        made->Points().Add(std::array{data.FrequenciesHz()[i], value.real(), value.imag()});
    }
    return made;
}

} // namespace

std::string EntryName(EParameter parameter, const std::vector<network::SPort>& ports,
                      curve::SMatrixEntry entry)
{
    std::string name(1, LetterOf(parameter));
    if (HasMixedMode(ports)) {
        name += ModeLetter(ports[static_cast<std::size_t>(entry.row - 1)].mode);
        name += ModeLetter(ports[static_cast<std::size_t>(entry.column - 1)].mode);
    }
    constexpr std::size_t kOneDigit = 9;
    const char* const between = ports.size() > kOneDigit ? "_" : "";
    return fmt::format("{}{}{}{}", name, entry.row, between, entry.column);
}

CResult<SNetworkCurves> CurvesOf(const CNetworkData& data, const SMatrixChoice& choice,
                                 const std::string& origin)
{
    CNetworkData shown = data;
    if (!choice.order.empty()) {
        RETURN_IF_ERROR(ToSingleEnded(shown));
        if (HasMixedMode(choice.order)) {
            RETURN_IF_ERROR(ToModes(shown, choice.order));
        }
    }
    SNetworkCurves made;
    const bool isAsked =
        shown.Parameter() == choice.parameter &&
        (choice.parameter == EParameter::S || shown.Normalised() == network::ENormalised::No);
    if (!isAsked) {
        ASSIGN_OR_RETURN(network::SConverted converted,
                         ConvertTo(std::move(shown), choice.parameter));
        if (!converted.singularHz.empty()) {
            made.note = network::SingularText(choice.parameter, converted.singularHz);
        }
        shown = std::move(converted.data);
    }
    made.unit = UnitOf(choice.parameter);
    made.kind =
        HasMixedMode(shown.Ports()) ? curve::EKind::MixedMode : curve::EKind::FrequencyDomain;
    for (const curve::SMatrixEntry& entry : choice.entries) {
        made.curves.push_back(CurveOf(shown, entry, origin));
    }
    return made;
}

} // namespace zov::app
