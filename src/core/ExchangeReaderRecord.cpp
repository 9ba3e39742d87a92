// SPDX-License-Identifier: Apache-2.0
/// ICs, VRMs, connectors, packages and SPICE circuits, and the models that are not about power.
#include "base/Text.h"
#include "core/ExchangeReader.h"

#include <array>

namespace zov::exchange {

namespace {

constexpr std::array<SField, 6> kIcFields = {{
    {"ModelName", EPropId::ModelName},
    {"SubModel", EPropId::SubModel},
    {"Manuf", EPropId::Manuf},
    {"MfgPartNumber", EPropId::MfgPartNumber},
    {"Lookup", EPropId::Lookup},
    {"Description", EPropId::Description, EPropKind::Text},
}};

constexpr std::size_t kModel = 6;
constexpr std::size_t kSpiceFile = 7;
constexpr std::array<SField, 8> kCircuitFields = {{
    kIcFields[0],
    kIcFields[1],
    kIcFields[2],
    kIcFields[3],
    kIcFields[4],
    kIcFields[5],
    {"Model", EPropId::Circuit},
    {"SPICE_File", EPropId::Circuit},
}};
constexpr std::uint32_t kHeadAndDescription = 0x3F;

constexpr std::array<std::string_view, 3> kIoNames = {"IBIS", "Components", "ExpIOAndGNDTerm"};
constexpr std::array<std::string_view, 3> kBusNames = {"BusGroup", "BusType", "EdgeType"};
constexpr std::array<std::string_view, 5> kThermalNames = {
    "PowerDissipation", "Thickness", "Theta_JB", "Theta_JC", "MaxDieTemperature"};

} // namespace

CRecordReader::CRecordReader(CContext& context)
    : m_context(context)
    , m_power(context)
    , m_ic(kIcFields)
    , m_circuit(kCircuitFields)
{
}

bool CRecordReader::Begin(ERecordType type, CFlatElement& element, EImportMsg nameMissing,
                          std::string_view shown)
{
    if (!m_context.scanner.ReadAttributes(element.values)) {
        return false;
    }
    m_context.Begin(type, element.values[0]);
    m_context.SetFields(element, kHeadAndDescription);
    if (m_context.name.empty()) {
        m_context.Reject(nameMissing, m_context.name, shown);
    }
    return true;
}

bool CRecordReader::ReadIc()
{
    if (!Begin(ERecordType::Ic, m_ic, EImportMsg::RecordName, "IC")) {
        return false;
    }
    const bool read = m_context.Children([this](std::string_view child) {
        if (SameName(child, "IO_MODEL")) {
            return ReadIoModel(m_context);
        }
        if (SameName(child, "DC_MODEL")) {
            return m_power.ReadDc();
        }
        if (SameName(child, "DCCONV_MODEL")) {
            return m_power.ReadDcConv();
        }
        if (SameName(child, "AC_MODEL")) {
            return m_power.ReadAc();
        }
        if (SameName(child, "VRM")) {
            return m_power.ReadVrm("IC/VRM Model");
        }
        if (SameName(child, "Thermal")) {
            return ReadThermal(m_context);
        }
        return SameName(child, "Through") ? ReadThrough(m_context) : m_context.scanner.Skip();
    });
    m_context.Finish();
    return read;
}

bool CRecordReader::ReadVrmRecord()
{
    if (!Begin(ERecordType::Vrm, m_ic, EImportMsg::VrmName, "VRM")) {
        return false;
    }
    m_context.TakeUnreadable();
    const bool read = m_context.Children([this](std::string_view child) {
        if (SameName(child, "VRM")) {
            return m_power.ReadVrm("VRM Model");
        }
        return SameName(child, "Through") ? ReadThrough(m_context) : m_context.scanner.Skip();
    });
    if (m_context.TakeUnreadable()) {
        m_context.Reject(EImportMsg::VrmContent, m_context.name);
    }
    m_context.Finish();
    return read;
}

bool CRecordReader::ReadCircuit(ERecordType type)
{
    if (!Begin(type, m_circuit, EImportMsg::RecordName, InfoOf(type).element)) {
        return false;
    }
    SCircuitRef circuit{
        std::string(m_circuit.values[kModel]), std::string(m_circuit.values[kSpiceFile]), {}};
    if (circuit.file.empty() && !m_context.scanner.ReadQuotedText(circuit.text)) {
        return false;
    }
    if (circuit != SCircuitRef{}) {
        m_context.builder.SetComposite(std::move(circuit));
    }
    const bool read = m_context.Children([this](std::string_view child) {
        return SameName(child, "Through") ? ReadThrough(m_context) : m_context.scanner.Skip();
    });
    m_context.Finish();
    return read;
}

// --- I/O model -----------------------------------------------------------------------------------

namespace {

/// Two names a line; a name that stands alone has an empty partner.
std::vector<TNamePair> PairsOf(std::string_view text)
{
    std::vector<TNamePair> pairs;
    for (const std::string_view line : Split(text, '\n')) {
        std::vector<std::string> names = NamesOf(line);
        names.resize(names.size() + names.size() % 2);
        for (std::size_t i = 0; i < names.size(); i += 2) {
            pairs.emplace_back(std::move(names[i]), std::move(names[i + 1]));
        }
    }
    return pairs;
}

/// Index of a word of a closed list; none, and the record rejected, when it is not in the list.
template <class TWord, std::size_t N>
std::optional<TWord> WordOf(CContext& context, const std::array<std::string_view, N>& words,
                            std::string_view attribute, std::string_view value)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (SameName(words[i], value)) {
            return static_cast<TWord>(i);
        }
    }
    if (!value.empty()) {
        context.SayUnreadable("IO Model", attribute, value);
    }
    context.Reject(EImportMsg::IoRequired, context.name, attribute);
    return std::nullopt;
}

bool ReadBus(CContext& context, CAttributeTable& values, SBusDefinition& bus)
{
    if (!context.scanner.ReadAttributes(values)) {
        return false;
    }
    if (!values.Has(0)) {
        context.Reject(EImportMsg::IoRequired, context.name, kBusNames[0]);
    }
    bus.busGroup = values[0];
    bus.busType =
        WordOf<EBusType>(context, kBusTypeWords, kBusNames[1], values[1]).value_or(bus.busType);
    bus.edgeType =
        WordOf<EEdgeType>(context, kEdgeTypeWords, kBusNames[2], values[2]).value_or(bus.edgeType);
    return context.Children([&](std::string_view child) {
        const bool timing = SameName(child, "TimingRef");
        const bool clock = SameName(child, "Clock");
        if (!timing && !clock && !SameName(child, "Signal")) {
            return context.scanner.Skip();
        }
        CAttributeTable none;
        std::string text;
        if (!context.scanner.ReadAttributes(none) || !context.scanner.ReadText(text)) {
            return false;
        }
        if (timing || clock) {
            (timing ? bus.timingRefs : bus.clocks) = PairsOf(text);
        } else {
            bus.signals = NamesOf(text);
        }
        return true;
    });
}

} // namespace

bool ReadIoModel(CContext& context)
{
    CAttributeTable values(kIoNames);
    CAttributeTable busValues(kBusNames);
    if (!context.scanner.ReadAttributes(values)) {
        return false;
    }
    SIoModel model;
    model.ibisFile = values[0];
    model.components = values[1];
    model.expIoAndGndTerm = SameName(values[2], "Yes");
    if (!model.ibisFile.empty() && !context.locator.IsThere(model.ibisFile, {})) {
        context.Say(EImportMsg::IoFile, context.name, model.ibisFile);
    }
    const bool read = context.Children([&](std::string_view child) {
        return SameName(child, "BusDefinition")
                   ? ReadBus(context, busValues, model.buses.emplace_back())
                   : context.scanner.Skip();
    });
    context.builder.SetComposite(std::move(model));
    return read;
}

// --- thermal and through -------------------------------------------------------------------------

bool ReadThermal(CContext& context)
{
    CAttributeTable values(kThermalNames);
    if (!context.scanner.ReadAttributes(values)) {
        return false;
    }
    SThermalModel model;
    const std::array<double*, 5> places = {&model.powerDissipation, &model.thickness,
                                           &model.thetaJb, &model.thetaJc,
                                           &model.maxDieTemperature};
    for (std::size_t i = 0; i < places.size(); ++i) {
        // Power is written as a plain number, but may carry its unit.
        const auto value = context.Quantity(values, i, kThermalNames[i],
                                            i == 0 ? EQuantity::Power : EQuantity::None, "Thermal");
        if (!value) {
            context.Reject(EImportMsg::ThermalRequired, context.name, kThermalNames[i]);
        }
        *places[i] = value.value_or(0.0);
    }
    context.builder.SetComposite(model);
    return !context.scanner.HasContent() || context.scanner.SkipRest();
}

bool ReadThrough(CContext& context)
{
    constexpr std::string_view kKind = "Through";
    if (!context.scanner.ReadAttributes(context.through)) {
        return false;
    }
    SThroughModel model;
    model.notThrough = SameName(context.through[0], "Yes");
    const bool read = context.Children([&](std::string_view child) {
        if (!SameName(child, "ThroughInfo")) {
            return context.scanner.Skip();
        }
        CAttributeTable& values = context.throughInfo;
        if (!context.scanner.ReadAttributes(values)) {
            return false;
        }
        const bool before = context.TakeUnreadable();
        const auto inductance =
            context.Quantity(values, 2, "Inductance", EQuantity::Inductance, kKind);
        const auto resistance =
            context.Quantity(values, 3, "Resistance", EQuantity::Resistance, kKind);
        if (!context.TakeUnreadable()) {
            model.connections.push_back({std::string(values[0]), std::string(values[1]),
                                         inductance.value_or(0.0), resistance.value_or(0.0)});
        }
        if (before) {
            context.SetUnreadable();
        }
        return !context.scanner.HasContent() || context.scanner.SkipRest();
    });
    context.builder.SetComposite(std::move(model));
    return read;
}

} // namespace zov::exchange
