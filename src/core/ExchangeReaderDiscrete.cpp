// SPDX-License-Identifier: Apache-2.0
/// Capacitors, inductors and resistors.
#include "base/Text.h"
#include "core/ExchangeReader.h"

#include <array>
#include <iterator>

namespace zov::exchange {

namespace {

using enum EPropKind;

constexpr EPropId kNoProperty = EPropId::ModelIsCircuit; ///< of attributes that are read by hand

// The orders are those of the writer.
constexpr std::array<SField, 26> kCapacitorFields = {{
    {"ModelName", EPropId::ModelName},
    {"SubModel", EPropId::SubModel},
    {"Manuf", EPropId::Manuf},
    {"MfgPartNumber", EPropId::MfgPartNumber},
    {"Lookup", EPropId::Lookup},
    {"Size", kNoProperty},
    {"SizeUnit", kNoProperty},
    {"ModelType", kNoProperty},
    {"CktDef", EPropId::CktDef},
    {"TrackFolder", EPropId::TrackFolder},
    {"Rv", EPropId::Rv, Double, EQuantity::Resistance},
    {"Lv", EPropId::Lv, Double, EQuantity::Inductance},
    {"Cv", EPropId::Cv, Double, EQuantity::Capacitance},
    {"Cnom", EPropId::Cnom, Double, EQuantity::Capacitance},
    {"UpTolerance", EPropId::UpTolerance, Double, EQuantity::Tolerance},
    {"LowTolerance", EPropId::LowTolerance, Double, EQuantity::Tolerance},
    {"Volt", EPropId::Volt, Double, EQuantity::Voltage},
    {"TCC", EPropId::Tcc},
    {"Prefer", EPropId::Prefer},
    {"PriceA", EPropId::PriceA, Double},
    {"PriceB", EPropId::PriceB, Double},
    {"PriceC", EPropId::PriceC, Double},
    {"PriceBook", EPropId::PriceBook},
    {"Comment", EPropId::Comment, Text},
    {"DCBias", EPropId::DcBias},
    {"Temperature", EPropId::Temperature},
}};

constexpr std::array<SField, 12> kInductorFields = {{
    {"ModelName", EPropId::ModelName},
    {"SubModel", EPropId::SubModel},
    {"Manuf", EPropId::Manuf},
    {"MfgPartNumber", EPropId::MfgPartNumber},
    {"Lookup", EPropId::Lookup},
    {"Comment", EPropId::Comment, Text},
    {"ModelType", kNoProperty},
    {"CktDef", EPropId::CktDef},
    {"TrackFolder", EPropId::TrackFolder},
    {"Inductance", EPropId::Inductance, Double, EQuantity::Inductance},
    {"Resistance", EPropId::Resistance, Double, EQuantity::Resistance},
    {"MaxCurrent", EPropId::MaxCurrent, Double, EQuantity::Current},
}};

constexpr std::array<SField, 11> kResistorFields = {{
    {"ModelName", EPropId::ModelName},
    {"SubModel", EPropId::SubModel},
    {"Manuf", EPropId::Manuf},
    {"MfgPartNumber", EPropId::MfgPartNumber},
    {"Lookup", EPropId::Lookup},
    {"Comment", EPropId::Comment, Text},
    {"ModelType", kNoProperty},
    {"CktDef", EPropId::CktDef},
    {"TrackFolder", EPropId::TrackFolder},
    {"Resistance", EPropId::Resistance, Double, EQuantity::Resistance},
    {"MaxCurrent", EPropId::MaxCurrent, Double, EQuantity::Current},
}};

constexpr std::uint32_t kAll = ~std::uint32_t{0};

constexpr std::size_t PositionOf(std::span<const SField> fields, std::string_view name)
{
    std::size_t i = 0;
    while (fields[i].name != name) {
        ++i;
    }
    return i;
}

constexpr std::uint32_t MaskOf(std::span<const SField> fields,
                               std::initializer_list<std::string_view> names)
{
    std::uint32_t mask = 0;
    for (const std::string_view name : names) {
        mask |= 1U << PositionOf(fields, name);
    }
    return mask;
}

constexpr std::size_t kSize = PositionOf(kCapacitorFields, "Size");
constexpr std::size_t kSizeUnit = PositionOf(kCapacitorFields, "SizeUnit");
constexpr std::size_t kCapacitorType = PositionOf(kCapacitorFields, "ModelType");
constexpr std::size_t kCapacitorCkt = PositionOf(kCapacitorFields, "CktDef");
constexpr std::size_t kWordType = PositionOf(kInductorFields, "ModelType");
constexpr std::size_t kWordCkt = PositionOf(kInductorFields, "CktDef");
static_assert(kWordType == PositionOf(kResistorFields, "ModelType") &&
              kWordCkt == PositionOf(kResistorFields, "CktDef"));

constexpr std::uint32_t kCapacitorByHand =
    MaskOf(kCapacitorFields, {"Size", "SizeUnit", "ModelType"});
constexpr std::uint32_t kCapacitorCircuit = MaskOf(kCapacitorFields, {"CktDef", "TrackFolder"});
constexpr std::uint32_t kCapacitorPlain = MaskOf(kCapacitorFields, {"Rv", "Lv", "Cv"});
constexpr std::uint32_t kInductorPlain = MaskOf(kInductorFields, {"Inductance", "Resistance"});
constexpr std::uint32_t kResistorPlain = MaskOf(kResistorFields, {"Resistance"});
constexpr std::uint32_t kWordByHand = MaskOf(kInductorFields, {"ModelType"});
constexpr std::uint32_t kWordCircuit = MaskOf(kInductorFields, {"CktDef", "TrackFolder"});

constexpr std::size_t kShortestSize = 4;

} // namespace

std::string SizeOf(std::string_view code, std::string_view unit)
{
    code = Trim(code);
    unit = Trim(unit);
    const std::string_view bare = SplitSize(code).code;
    if (unit.empty()) { // a letter in the code itself stands
        return bare.size() < kShortestSize ? std::string() : std::string(code);
    }
    if (code.size() < kShortestSize) {
        return {};
    }
    return JoinSize(bare.size() < kShortestSize ? code : bare, unit);
}

std::optional<bool> IsCircuitType(std::string_view word, ERecordType type)
{
    static constexpr std::array<std::string_view, 3> kPlainWords = {"RLC", "RL", "R"};
    if (word == "0" || word == "1") {
        return word == "0";
    }
    if (EqualsNoCase(word, "SPICE")) {
        return true;
    }
    const std::size_t plain = type == ERecordType::Capacitor  ? 0
                              : type == ERecordType::Inductor ? 1
                                                              : 2;
    if (EqualsNoCase(word, kPlainWords[plain])) {
        return false;
    }
    return std::nullopt;
}

CDiscreteReader::CDiscreteReader(CContext& context)
    : m_context(context)
    , m_capacitor(kCapacitorFields)
    , m_inductor(kInductorFields)
    , m_resistor(kResistorFields)
{
}

void CDiscreteReader::ReadSize()
{
    const std::string_view size = m_capacitor.values[kSize];
    if (size.empty()) {
        m_context.Reject(EImportMsg::CapacitorSize, m_context.name);
        return;
    }
    const std::string joined = SizeOf(size, m_capacitor.values[kSizeUnit]);
    if (joined.empty()) {
        m_context.Reject(EImportMsg::CapacitorBadSize, m_context.name, size);
    }
    m_context.builder.SetText(EPropId::Size, joined);
}

/// Takes out of `wanted` what the other kind of model would have.
void CDiscreteReader::TakeCapacitorModel(std::uint32_t& wanted)
{
    const std::string_view word = m_capacitor.values[kCapacitorType];
    const auto circuit = IsCircuitType(word, ERecordType::Capacitor);
    wanted &= ~(circuit.value_or(false) ? kCapacitorPlain : kCapacitorCircuit);
    if (circuit.value_or(false)) {
        m_context.builder.SetDouble(EPropId::ModelIsCircuit, 1.0);
    } else if (word.empty()) {
        m_context.Reject(EImportMsg::CapacitorModelType, m_context.name);
    } else if (!circuit) {
        m_context.SayUnreadable("Capacitor", "ModelType", word);
        m_context.Reject(EImportMsg::CapacitorContent, m_context.name);
    }
}

void CDiscreteReader::LocateCircuit(CFlatElement& element, std::size_t cktDef, EImportMsg missing)
{
    const std::string_view name = element.values[cktDef];
    if (!m_context.builder.Has(EPropId::ModelIsCircuit) || name.empty() || IsCircuitText(name)) {
        return;
    }
    if (!m_context.locator.IsThere(name, element.values[cktDef + 1])) {
        m_context.Say(missing, m_context.name, name);
    }
}

void CDiscreteReader::TellUnreadable(const CFlatElement& element, std::uint32_t unreadable,
                                     std::string_view what)
{
    for (; unreadable != 0; unreadable &= unreadable - 1) {
        const auto i = static_cast<std::size_t>(std::countr_zero(unreadable));
        m_context.SayUnreadable(what, element.Fields()[i].name, element.values[i]);
    }
}

bool CDiscreteReader::FinishWithThrough()
{
    const bool read = m_context.Children([this](std::string_view child) {
        return SameName(child, "Through") ? ReadThrough(m_context) : m_context.scanner.Skip();
    });
    m_context.Finish();
    return read;
}

bool CDiscreteReader::ReadCapacitor()
{
    if (!m_context.scanner.ReadAttributes(m_capacitor.values)) {
        return false;
    }
    m_context.Begin(ERecordType::Capacitor, m_capacitor.values[0]);
    if (m_context.name.empty()) {
        m_context.Reject(EImportMsg::CapacitorName);
        return FinishWithThrough();
    }
    std::uint32_t wanted = kAll & ~kCapacitorByHand;
    TakeCapacitorModel(wanted);
    const std::uint32_t unreadable = m_context.SetFields(m_capacitor, wanted);
    if (unreadable != 0) {
        TellUnreadable(m_capacitor, unreadable, "Capacitor");
        m_context.Reject(EImportMsg::CapacitorContent, m_context.name);
    } else if (!m_context.builder.Has(EPropId::Cnom)) {
        m_context.Reject(EImportMsg::CapacitorCnom, m_context.name);
    }
    ReadSize();
    LocateCircuit(m_capacitor, kCapacitorCkt, EImportMsg::CapacitorFile);
    return FinishWithThrough();
}

/// `ModelType` of inductors and resistors, which need not be there: then what else is there
/// decides. False when it says nothing that is known.
bool CDiscreteReader::TakeWordModel(CFlatElement& element, std::size_t modelType, ERecordType type)
{
    const std::string_view word = element.values[modelType];
    const auto circuit = IsCircuitType(word, type);
    if (circuit.value_or(element.values.Has(kWordCkt) && !element.values[kWordCkt].empty())) {
        m_context.builder.SetDouble(EPropId::ModelIsCircuit, 1.0);
    }
    if (!word.empty() && !circuit) {
        m_context.SayUnreadable(InfoOf(type).name, "ModelType", word);
        return false;
    }
    return true;
}

bool CDiscreteReader::ReadInductor()
{
    if (!m_context.scanner.ReadAttributes(m_inductor.values)) {
        return false;
    }
    m_context.Begin(ERecordType::Inductor, m_inductor.values[0]);
    if (m_context.name.empty()) {
        m_context.Reject(EImportMsg::InductorName);
        return FinishWithThrough();
    }
    TakeWordModel(m_inductor, kWordType, ERecordType::Inductor);
    const bool circuit = m_context.builder.Has(EPropId::ModelIsCircuit);
    const std::uint32_t unreadable = m_context.SetFields(
        m_inductor, kAll & ~kWordByHand & ~(circuit ? kInductorPlain : kWordCircuit));
    TellUnreadable(m_inductor, unreadable, "Inductor");
    if (!circuit && !m_context.builder.Has(EPropId::Inductance)) {
        m_context.Reject(EImportMsg::InductorInductance, m_context.name);
    }
    LocateCircuit(m_inductor, kWordCkt, EImportMsg::InductorFile);
    return FinishWithThrough();
}

bool CDiscreteReader::ReadResistor()
{
    if (!m_context.scanner.ReadAttributes(m_resistor.values)) {
        return false;
    }
    m_context.Begin(ERecordType::Resistor, m_resistor.values[0]);
    if (m_context.name.empty()) {
        // Only a warning by its words, so the record stays.
        m_context.Say(EImportMsg::ResistorName);
    }
    bool readable = TakeWordModel(m_resistor, kWordType, ERecordType::Resistor);
    const bool circuit = m_context.builder.Has(EPropId::ModelIsCircuit);
    const std::uint32_t unreadable = m_context.SetFields(
        m_resistor, kAll & ~kWordByHand & ~(circuit ? kResistorPlain : kWordCircuit));
    TellUnreadable(m_resistor, unreadable, "Resistor");
    readable = readable && unreadable == 0;
    if (!readable) {
        m_context.Reject(EImportMsg::ResistorContent, m_context.name);
    } else if (!circuit && !m_context.builder.Has(EPropId::Resistance)) {
        m_context.Reject(EImportMsg::ResistorResistance, m_context.name);
    }
    LocateCircuit(m_resistor, kWordCkt, EImportMsg::ResistorFile);
    return FinishWithThrough();
}

} // namespace zov::exchange
