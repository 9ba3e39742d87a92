// SPDX-License-Identifier: Apache-2.0
/// Power models of ICs and VRMs: DC, DC-DC converter, AC, VRM.
#include "base/Text.h"
#include "core/ExchangeReader.h"

#include <array>

namespace zov::exchange {

namespace {

using TNames = std::string_view;

constexpr std::array<TNames, 2> kSpiceNames = {"File", "model"};
constexpr std::array<TNames, 1> kDcNames = {"PFMode"};
constexpr std::array<TNames, 3> kDcRailNames = {"NominalVoltage", "UpperTolerance",
                                                "LowerTolerance"};
constexpr std::array<TNames, 1> kEqualCurrentNames = {"TotalCurrent"};
constexpr std::array<TNames, 1> kDcConvNames = {"UseCurrentForInputPins"};
constexpr std::array<TNames, 8> kConvPinNames = {"Name",           "Type",          "PinPair",
                                                 "Voltage",        "Current",       "ConvertRate",
                                                 "UpperTolerance", "LowerTolerance"};
constexpr std::array<TNames, 10> kAcRailNames = {
    "Type",         "MaxPeakRipple", "TransCurDelta", "ShortRiseTimeDelta", "PositivePins",
    "NegativePins", "PositiveNet",   "NegativeNet",   "PositiveNets",       "NegativeNets"};
constexpr std::array<TNames, 2> kFeqImpNames = {"Frequency", "Impedance"};
constexpr std::array<TNames, 4> kVrmRailNames = {"NominalVoltage", "OutputTolerance",
                                                 "OutputCurrent", "PinResistance"};
constexpr std::array<TNames, 1> kPinNames = {"name"};

constexpr std::string_view kIcKind = "IC/VRM Model";

} // namespace

CPowerReader::CPowerReader(CContext& context)
    : m_context(context)
    , m_spice(kSpiceNames)
    , m_dc(kDcNames)
    , m_dcRail(kDcRailNames)
    , m_equalCurrent(kEqualCurrentNames)
    , m_dcConv(kDcConvNames)
    , m_convPin(kConvPinNames)
    , m_acRail(kAcRailNames)
    , m_feqImp(kFeqImpNames)
    , m_vrmRail(kVrmRailNames)
    , m_pin(kPinNames)
{
}

bool CPowerReader::ReadSpice(const SSpiceWords& words, std::string_view kind,
                             std::optional<SSpiceRef>& spice)
{
    if (!m_context.scanner.ReadAttributes(m_spice)) {
        return false;
    }
    SSpiceRef ref{std::string(m_spice[0]), std::string(m_spice[1])};
    if (ref.file.empty()) {
        m_context.Reject(words.file, m_context.name, kind);
    } else if (!m_context.locator.IsThere(ref.file, {})) {
        m_context.Say(words.locate, m_context.name, kind, ref.file);
    }
    if (ref.model.empty()) {
        if (words.modelRequired) {
            m_context.Reject(words.model, m_context.name, kind);
        } else {
            m_context.Say(words.model, m_context.name, kind);
        }
    }
    spice = std::move(ref);
    return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
}

std::optional<double> CPowerReader::NominalVoltage(const CAttributeTable& values, std::size_t index,
                                                   std::string_view kind)
{
    const auto volt = m_context.Quantity(values, index, "NominalVoltage", EQuantity::Voltage, kind);
    if (!volt) {
        m_context.Reject(EImportMsg::RailVoltage, m_context.name, kind);
    }
    return volt;
}

// --- DC ------------------------------------------------------------------------------------------

bool CPowerReader::ReadDcRail(SDcRail& rail)
{
    constexpr std::string_view kKind = "DC Model";
    if (!m_context.scanner.ReadAttributes(m_dcRail)) {
        return false;
    }
    rail.nominalVoltage = NominalVoltage(m_dcRail, 0, kIcKind);
    rail.upperTolerance =
        m_context.Quantity(m_dcRail, 1, kDcRailNames[1], EQuantity::Tolerance, kKind);
    rail.lowerTolerance =
        m_context.Quantity(m_dcRail, 2, kDcRailNames[2], EQuantity::Tolerance, kKind);
    const bool read = m_context.Children([&](std::string_view child) {
        if (SameName(child, "EqualCurrent")) {
            if (!m_context.scanner.ReadAttributes(m_equalCurrent)) {
                return false;
            }
            rail.totalCurrent = m_context.Quantity(m_equalCurrent, 0, kEqualCurrentNames[0],
                                                   EQuantity::Current, kKind);
            return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
        }
        if (SameName(child, "PIN")) {
            std::string text;
            if (!m_context.scanner.ReadAttributes(m_none) || !m_context.scanner.ReadText(text)) {
                return false;
            }
            for (std::string& name : NamesOf(text)) {
                rail.pins.push_back(std::move(name));
            }
            return true;
        }
        return m_context.scanner.Skip();
    });
    if (read && !rail.totalCurrent) {
        m_context.Reject(EImportMsg::DcTotalCurrent, m_context.name);
    }
    return read;
}

bool CPowerReader::ReadDc()
{
    static constexpr SSpiceWords kWords = {EImportMsg::DcSpiceFile, EImportMsg::DcFile,
                                           EImportMsg::DcSpiceModel, true};
    if (!m_context.scanner.ReadAttributes(m_dc)) {
        return false;
    }
    SDcModel model;
    model.worst = SameName(m_dc[0], "Worst");
    if (!model.worst && !m_dc[0].empty() && !SameName(m_dc[0], "Average")) {
        m_context.SayUnreadable("DC Model", kDcNames[0], m_dc[0]);
    }
    const bool read = m_context.Children([&](std::string_view child) {
        if (SameName(child, "SPICE")) {
            return ReadSpice(kWords, "DC Model", model.spice);
        }
        return SameName(child, "PowerRail") ? ReadDcRail(model.rails.emplace_back())
                                            : m_context.scanner.Skip();
    });
    m_context.builder.SetComposite(std::move(model));
    return read;
}

// --- DC-DC converter
// -------------------------------------------------------------------------------

void CPowerReader::ReadConvPin(SConvPin& pin)
{
    constexpr std::string_view kKind = "DC-DC Model";
    const auto quantity = [&](std::size_t index, EQuantity q) {
        return m_context.Quantity(m_convPin, index, kConvPinNames[index], q, kKind);
    };
    pin.name = m_convPin[0];
    if (pin.name.empty()) {
        m_context.Reject(EImportMsg::RailPinName, m_context.name, kIcKind);
    }
    const std::string_view type = m_convPin[1];
    const auto* const word = std::find_if(kConvPinWords.begin(), kConvPinWords.end(),
                                          [&](auto known) { return SameName(type, known); });
    if (word != kConvPinWords.end()) {
        pin.type = static_cast<EConvPin>(word - kConvPinWords.begin());
    } else {
        m_context.SayUnreadable(kKind, kConvPinNames[1], type);
    }
    pin.pinPair = m_convPin[2];
    pin.voltage = quantity(3, EQuantity::Voltage);
    pin.current = quantity(4, EQuantity::Current);
    pin.convertRate = quantity(5, EQuantity::None);
    pin.upperTolerance = quantity(6, EQuantity::Tolerance);
    pin.lowerTolerance = quantity(7, EQuantity::Tolerance);
}

bool CPowerReader::ReadDcConv()
{
    if (!m_context.scanner.ReadAttributes(m_dcConv)) {
        return false;
    }
    SDcConvModel model;
    model.useCurrentForInputPins = SameName(m_dcConv[0], "Yes");
    const bool read = m_context.Children([&](std::string_view child) {
        if (!SameName(child, "Pin")) {
            return m_context.scanner.Skip();
        }
        if (!m_context.scanner.ReadAttributes(m_convPin)) {
            return false;
        }
        ReadConvPin(model.pins.emplace_back());
        return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
    });
    m_context.builder.SetComposite(std::move(model));
    return read;
}

// --- AC ------------------------------------------------------------------------------------------

bool CPowerReader::ReadAcRail(SAcRail& rail)
{
    constexpr std::string_view kKind = "AC Model";
    if (!m_context.scanner.ReadAttributes(m_acRail)) {
        return false;
    }
    const std::string_view type = m_acRail[0];
    rail.pwl = SameName(type, "PWL Model");
    if (!rail.pwl && !SameName(type, "R-L Model")) {
        if (!type.empty()) {
            m_context.SayUnreadable(kKind, kAcRailNames[0], type);
        }
        m_context.Reject(EImportMsg::AcRequired, m_context.name, kAcRailNames[0]);
    }
    const auto required = [&](std::size_t index, EQuantity quantity) {
        const auto value =
            m_context.Quantity(m_acRail, index, kAcRailNames[index], quantity, kKind);
        if (!value) {
            m_context.Reject(EImportMsg::AcRequired, m_context.name, kAcRailNames[index]);
        }
        return value;
    };
    rail.maxPeakRipple = required(1, EQuantity::Voltage);
    rail.transCurDelta = required(2, EQuantity::Current);
    rail.shortRiseTimeDelta = required(3, EQuantity::Time);
    // The writer gives every rail these two, if only with nothing in them.
    for (const std::size_t index : {4U, 5U}) {
        if (!m_acRail.Has(index)) {
            m_context.Reject(EImportMsg::AcRequired, m_context.name, kAcRailNames[index]);
        }
    }
    rail.positivePins = m_acRail[4];
    rail.negativePins = m_acRail[5];
    rail.positiveNet = m_acRail.Has(6) ? m_acRail[6] : m_acRail[8];
    rail.negativeNet = m_acRail.Has(7) ? m_acRail[7] : m_acRail[9];
    return m_context.Children([&](std::string_view child) {
        if (!SameName(child, "FeqImp")) {
            return m_context.scanner.Skip();
        }
        if (!m_context.scanner.ReadAttributes(m_feqImp)) {
            return false;
        }
        const auto frequency =
            m_context.Quantity(m_feqImp, 0, kFeqImpNames[0], EQuantity::Frequency, kKind);
        const auto impedance =
            m_context.Quantity(m_feqImp, 1, kFeqImpNames[1], EQuantity::Resistance, kKind);
        if (frequency && impedance) {
            rail.points.push_back({*frequency, *impedance});
        } else if (!m_context.TakeUnreadable()) {
            m_context.SayUnreadable(kKind, "FeqImp", "");
        }
        return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
    });
}

bool CPowerReader::ReadAc()
{
    static constexpr SSpiceWords kWords = {EImportMsg::AcSpiceFile, EImportMsg::AcFile,
                                           EImportMsg::AcSpiceModel, true};
    if (!m_context.scanner.ReadAttributes(m_none)) {
        return false;
    }
    SAcModel model;
    const bool read = m_context.Children([&](std::string_view child) {
        if (SameName(child, "SPICE")) {
            return ReadSpice(kWords, "AC Model", model.spice);
        }
        return SameName(child, "PowerRail") ? ReadAcRail(model.rails.emplace_back())
                                            : m_context.scanner.Skip();
    });
    m_context.builder.SetComposite(std::move(model));
    return read;
}

// --- VRM -----------------------------------------------------------------------------------------

bool CPowerReader::ReadVrmRail(SVrmRail& rail, std::string_view kind)
{
    if (!m_context.scanner.ReadAttributes(m_vrmRail)) {
        return false;
    }
    const auto quantity = [&](std::size_t index, EQuantity q) {
        return m_context.Quantity(m_vrmRail, index, kVrmRailNames[index], q, kind);
    };
    rail.nominalVoltage = NominalVoltage(m_vrmRail, 0, kind);
    rail.outputTolerance = quantity(1, EQuantity::Tolerance);
    rail.outputCurrent = quantity(2, EQuantity::Current);
    rail.pinResistance = quantity(3, EQuantity::Resistance);
    return m_context.Children([&](std::string_view child) {
        if (!SameName(child, "Pin")) {
            return m_context.scanner.Skip();
        }
        if (!m_context.scanner.ReadAttributes(m_pin)) {
            return false;
        }
        if (m_pin[0].empty()) {
            m_context.Reject(EImportMsg::RailPinName, m_context.name, kind);
        }
        rail.pins.emplace_back(m_pin[0]);
        return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
    });
}

bool CPowerReader::ReadVrm(std::string_view kind)
{
    static constexpr SSpiceWords kWords = {EImportMsg::RailSpiceFile, EImportMsg::RailFile,
                                           EImportMsg::RailSpiceModel, false};
    if (!m_context.scanner.ReadAttributes(m_none)) {
        return false;
    }
    SVrmModel model;
    const bool read = m_context.Children([&](std::string_view child) {
        if (SameName(child, "SPICE")) {
            return ReadSpice(kWords, kind, model.spice);
        }
        return SameName(child, "PowerRail") ? ReadVrmRail(model.rails.emplace_back(), kind)
                                            : m_context.scanner.Skip();
    });
    m_context.builder.SetComposite(std::move(model));
    return read;
}

} // namespace zov::exchange
