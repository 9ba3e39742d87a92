// SPDX-License-Identifier: Apache-2.0
/// The exchange text of a library. The literals are the form: every blank and line feed counts.
#include "base/Number.h"
#include "base/Text.h"
#include "core/ExchangeBuffer.h"
#include "core/LibraryFiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <fmt/format.h>
#include <initializer_list>

namespace zov {

namespace {

class CWriter
{
public:
    CWriter(const CZovLibrary& library, const CDisplayUnits& units, CByteWriter& out, CLogSink& log)
        : m_library(library)
        , m_units(units)
        , m_out(out)
        , m_log(log)
    {
    }
    void Write();

private:
    using TRecordWriter = void (CWriter::*)();

    void Group(ERecordType type, TRecordWriter write);

    // records
    void Head();
    void Capacitor();
    /// An inductor or resistor behind its element's opening.
    void Series(std::string_view plainWord, bool hasInductance);
    void Inductor();
    void Resistor();
    void Circuit();
    void Connector();
    void Package();
    void Spice();
    void Ic();
    void Vrm();

    // sub-models
    void IoModel();
    void Bus(const SBusDefinition& bus);
    void DcModel();
    void DcConvModel();
    void AcModel();
    void VrmModel();
    void Thermal();
    void Through();
    void SpiceRef(const std::optional<SSpiceRef>& spice);

    // attributes: the literal is ` Name="`
    template <std::size_t N>
    void Text(const char (&literal)[N], std::string_view value) // NOLINT
    {
        m_out.Literal(literal);
        if (!m_out.Text(value)) {
            Tell(literal, value);
        }
        m_out.Literal("\"");
    }
    template <std::size_t N>
    void Text(const char (&literal)[N], EPropId id) // NOLINT
    {
        Text(literal, m_record->GetString(id));
    }
    template <std::size_t N>
    void TextWhenSet(const char (&literal)[N], EPropId id) // NOLINT
    {
        if (m_record->Has(id)) {
            Text(literal, id);
        }
    }
    template <std::size_t N>
    void Number(const char (&literal)[N], std::optional<double> value, // NOLINT
                EQuantity quantity = EQuantity::None)
    {
        m_out.Literal(literal);
        const double number = value.value_or(0.0);
        const SUnit unit = m_units.Of(quantity);
        m_out.Number(unit.exponent == 0 ? number : ScaleByPowerOfTen(number, -unit.exponent));
        m_out.Text(unit.suffix);
        m_out.Literal("\"");
        if (!std::isfinite(number)) {
            Tell(literal, FormatG(number));
        }
    }
    template <std::size_t N>
    void Number(const char (&literal)[N], EPropId id, // NOLINT
                EQuantity quantity = EQuantity::None)
    {
        Number(literal, m_record->GetDouble(id), quantity);
    }

    void Name(std::string_view list, std::string_view name);
    void Pairs(std::string_view list, const std::vector<TNamePair>& pairs);
    void Tell(std::string_view property, std::string_view value);
    void TellLeftOut(std::uint64_t properties);

    const CZovLibrary& m_library;
    const CDisplayUnits& m_units;
    CExchangeBuffer m_out;
    CLogSink& m_log;
    const CZovRcdProps* m_record = nullptr;
    std::array<std::size_t, 8> m_counts{};
};

/// Bit per property that the form has a place for.
std::uint64_t HeldBy(ERecordType type)
{
    using enum EPropId;
    const auto mask = [](std::initializer_list<EPropId> ids) {
        std::uint64_t bits = 0;
        for (const EPropId id : ids) {
            bits |= std::uint64_t{1} << CZovRcdProps::Bit(id);
        }
        return bits;
    };
    const std::uint64_t head =
        mask({ModelName, SubModel, Manuf, MfgPartNumber, Lookup, EPropId::Through});
    const std::uint64_t discrete = head | mask({Comment, ModelIsCircuit, CktDef, TrackFolder});
    switch (type) {
    case ERecordType::Capacitor:
        return discrete | mask({Size, Rv, Lv, Cv, Cnom, UpTolerance, LowTolerance, Volt, Tcc,
                                Prefer, PriceA, PriceB, PriceC, PriceBook, DcBias, Temperature});
    case ERecordType::Inductor:
        return discrete | mask({Inductance, Resistance, MaxCurrent});
    case ERecordType::Resistor:
        return discrete | mask({Resistance, MaxCurrent});
    case ERecordType::Vrm:
        return head | mask({Description, EPropId::VrmModel});
    case ERecordType::Ic:
        return head | mask({Description, EPropId::IoModel, EPropId::DcModel, EPropId::DcConvModel,
                            EPropId::AcModel, EPropId::VrmModel, EPropId::Thermal});
    default:
        return head | mask({Description, EPropId::Circuit});
    }
}

void CWriter::TellLeftOut(std::uint64_t properties)
{
    for (; properties != 0; properties &= properties - 1) {
        const SPropInfo* info = FindProperty(static_cast<EPropId>(std::countr_zero(properties)));
        m_log.Write(fmt::format("[WARNING] '{}' {}: the exchange form does not hold '{}'\r\n",
                                m_record->Name(), InfoOf(m_record->Type()).element,
                                info == nullptr ? std::string_view("?") : info->name));
    }
}

/// Nobody loses data without being told: what the form cannot hold is written as it stands, and
/// said.
void CWriter::Tell(std::string_view property, std::string_view value)
{
    constexpr std::size_t kShown = 80;
    std::string shown(value.substr(0, kShown));
    if (value.size() > kShown) {
        while (!shown.empty() && !IsValidUtf8(shown)) {
            shown.pop_back();
        }
        shown += "...";
    }
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    const std::size_t begin = property.find_first_not_of(" <");
    property = property.substr(begin, property.find_first_of(" =", begin) - begin);
    m_log.Write(fmt::format("[WARNING] '{}' {}: '{}' holds characters that the exchange form "
                            "cannot escape: {}\r\n",
                            m_record->Name(), InfoOf(m_record->Type()).element, property, shown));
}

/// One of a list of names, which white space separates.
void CWriter::Name(std::string_view list, std::string_view name)
{
    const bool plain = m_out.Text(name);
    if (!plain || name.empty() || std::any_of(name.begin(), name.end(), IsSpace)) {
        Tell(list, name);
    }
}

void CWriter::Pairs(std::string_view list, const std::vector<TNamePair>& pairs)
{
    for (const TNamePair& pair : pairs) {
        Name(list, pair.first);
        m_out.Literal(" ");
        Name(list, pair.second);
        m_out.Literal("\n");
    }
}

// --- document ------------------------------------------------------------------------------------

void CWriter::Write()
{
    for (const CZovRcdProps* record : m_library.Records()) {
        ++m_counts[static_cast<std::size_t>(&InfoOf(record->Type()) - RecordTypes().data())];
    }
    m_out.Literal("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    m_out.Literal("<ZOV_Lib Version = \"1.5\">\n");
    m_out.Literal("\n<ICs>\n");
    Group(ERecordType::Ic, &CWriter::Ic);
    m_out.Literal("</ICs>\n");
    m_out.Literal("\n<Discretes>\n<Capacitors>\n");
    Group(ERecordType::Capacitor, &CWriter::Capacitor);
    m_out.Literal("</Capacitors>\n\n<Inductors>\n");
    Group(ERecordType::Inductor, &CWriter::Inductor);
    m_out.Literal("\n</Inductors>\n\n<Resistors>\n");
    Group(ERecordType::Resistor, &CWriter::Resistor);
    m_out.Literal("\n</Resistors>\n</Discretes>\n");
    m_out.Literal("\n<VRMs>\n");
    Group(ERecordType::Vrm, &CWriter::Vrm);
    m_out.Literal("</VRMs>\n");
    m_out.Literal("\n<GeneralSPICE>\n");
    Group(ERecordType::Spice, &CWriter::Spice);
    m_out.Literal("</GeneralSPICE>\n");
    m_out.Literal("\n<Packages>\n");
    Group(ERecordType::Package, &CWriter::Package);
    m_out.Literal("</Packages>\n");
    m_out.Literal("\n<Connectors>\n");
    Group(ERecordType::Connector, &CWriter::Connector);
    m_out.Literal("</Connectors>\n");
    m_out.Literal("</ZOV_Lib>\n");
    m_out.Flush();
}

void CWriter::Group(ERecordType type, TRecordWriter write)
{
    const std::uint64_t leftOut = ~HeldBy(type);
    std::size_t left = m_counts[static_cast<std::size_t>(&InfoOf(type) - RecordTypes().data())];
    for (auto at = m_library.Records().begin(); left != 0; ++at) {
        if ((*at)->Type() == type) {
            m_record = *at;
            if ((m_record->Mask() & leftOut) != 0) {
                TellLeftOut(m_record->Mask() & leftOut);
            }
            (this->*write)();
            --left;
        }
    }
}

void CWriter::Head()
{
    Text(" ModelName=\"", EPropId::ModelName);
    Text(" SubModel=\"", EPropId::SubModel);
    Text(" Manuf=\"", EPropId::Manuf);
    Text(" MfgPartNumber=\"", EPropId::MfgPartNumber);
    Text(" Lookup=\"", EPropId::Lookup);
}

// --- discretes -----------------------------------------------------------------------------------

void CWriter::Capacitor()
{
    m_out.Literal("<Capacitor");
    Head();
    const SSizeParts size = SplitSize(m_record->GetString(EPropId::Size));
    Text(" Size=\"", size.code);
    Text(" SizeUnit=\"", size.unit);
    if (m_record->Has(EPropId::ModelIsCircuit)) {
        m_out.Literal(" ModelType=\"0\"");
        Text(" CktDef=\"", EPropId::CktDef);
        TextWhenSet(" TrackFolder=\"", EPropId::TrackFolder);
    } else {
        m_out.Literal(" ModelType=\"1\"");
        Number(" Rv=\"", EPropId::Rv, EQuantity::Resistance);
        Number(" Lv=\"", EPropId::Lv, EQuantity::Inductance);
        Number(" Cv=\"", EPropId::Cv, EQuantity::Capacitance);
    }
    Number(" Cnom=\"", EPropId::Cnom, EQuantity::Capacitance);
    Number(" UpTolerance=\"", EPropId::UpTolerance, EQuantity::Tolerance);
    Number(" LowTolerance=\"", EPropId::LowTolerance, EQuantity::Tolerance);
    Number(" Volt=\"", EPropId::Volt, EQuantity::Voltage);
    Text(" TCC=\"", EPropId::Tcc);
    Text(" Prefer=\"", EPropId::Prefer);
    Number(" PriceA=\"", EPropId::PriceA);
    Number(" PriceB=\"", EPropId::PriceB);
    Number(" PriceC=\"", EPropId::PriceC);
    Text(" PriceBook=\"", EPropId::PriceBook);
    Text(" Comment=\"", EPropId::Comment);
    TextWhenSet(" DCBias=\"", EPropId::DcBias);
    TextWhenSet(" Temperature=\"", EPropId::Temperature);
    m_out.Literal(">\n");
    Through();
    m_out.Literal("</Capacitor>\n");
}

void CWriter::Series(std::string_view plainWord, bool hasInductance)
{
    Head();
    Text(" Comment=\"", EPropId::Comment);
    if (m_record->Has(EPropId::ModelIsCircuit)) {
        m_out.Literal(" ModelType=\"SPICE\"");
        Text(" CktDef=\"", EPropId::CktDef);
        TextWhenSet(" TrackFolder=\"", EPropId::TrackFolder);
    } else {
        Text(" ModelType=\"", plainWord);
        if (hasInductance) {
            Number(" Inductance=\"", EPropId::Inductance, EQuantity::Inductance);
        }
        Number(" Resistance=\"", EPropId::Resistance, EQuantity::Resistance);
    }
    Number(" MaxCurrent=\"", EPropId::MaxCurrent, EQuantity::Current);
    m_out.Literal(">\n");
    Through();
}

void CWriter::Inductor()
{
    m_out.Literal("<Inductor");
    Series("RL", true);
    m_out.Literal("</Inductor>\n");
}

void CWriter::Resistor()
{
    m_out.Literal("<Resistor");
    Series("R", false);
    m_out.Literal("</Resistor>\n");
}

// --- circuits, ICs, VRMs -------------------------------------------------------------------------

void CWriter::Circuit()
{
    static const SCircuitRef kNone;
    const auto* circuit = m_record->GetComposite<SCircuitRef>();
    circuit = circuit == nullptr ? &kNone : circuit;
    Head();
    Text(" Description=\"", EPropId::Description);
    Text(" Model=\"", circuit->model);
    if (!circuit->file.empty()) {
        Text(" SPICE_File=\"", circuit->file);
        m_out.Literal(">\n");
    } else {
        m_out.Literal("  >\n\"");
        if (!m_out.Text(circuit->text)) {
            Tell("SPICE", circuit->text);
        }
        m_out.Literal("\"");
    }
    Through();
}

void CWriter::Connector()
{
    m_out.Literal("<Connector");
    Circuit();
    m_out.Literal("</Connector>\n");
}

void CWriter::Package()
{
    m_out.Literal("<Package");
    Circuit();
    m_out.Literal("</Package>\n");
}

void CWriter::Spice()
{
    m_out.Literal("<SPICE");
    Circuit();
    m_out.Literal("</SPICE>\n");
}

void CWriter::Ic()
{
    m_out.Literal("\n<IC");
    Head();
    Text(" Description=\"", EPropId::Description);
    m_out.Literal(">\n");
    IoModel();
    DcModel();
    DcConvModel();
    AcModel();
    VrmModel();
    Thermal();
    Through();
    m_out.Literal("</IC>\n");
}

void CWriter::Vrm()
{
    m_out.Literal("\n<VRM");
    Head();
    Text(" Description=\"", EPropId::Description);
    m_out.Literal(">\n");
    VrmModel();
    Through();
    m_out.Literal("</VRM>\n");
}

// --- sub-models ----------------------------------------------------------------------------------

void CWriter::IoModel()
{
    const auto* model = m_record->GetComposite<SIoModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<IO_MODEL");
    Text(" IBIS=\"", model->ibisFile);
    Text(" Components=\"", model->components);
    if (model->expIoAndGndTerm) {
        m_out.Literal(" ExpIOAndGNDTerm=\"Yes\"");
    }
    m_out.Literal(">\n");
    for (const SBusDefinition& bus : model->buses) {
        Bus(bus);
    }
    m_out.Literal("</IO_MODEL>\n");
}

void CWriter::Bus(const SBusDefinition& bus)
{
    m_out.Literal("<BusDefinition");
    Text(" BusGroup=\"", bus.busGroup);
    Text(" BusType=\"", kBusTypeWords[static_cast<std::size_t>(bus.busType)]);
    Text(" EdgeType=\"", kEdgeTypeWords[static_cast<std::size_t>(bus.edgeType)]);
    m_out.Literal(">\n");
    if (!bus.timingRefs.empty()) {
        m_out.Literal("<TimingRef>\n");
        Pairs("TimingRef", bus.timingRefs);
        m_out.Literal("</TimingRef>\n");
    }
    if (!bus.signals.empty()) {
        m_out.Literal("<Signal>");
        for (const std::string& name : bus.signals) {
            Name("Signal", name);
            m_out.Literal(" ");
        }
        m_out.Literal("</Signal>\n");
    }
    if (!bus.clocks.empty()) {
        m_out.Literal("<Clock>\n");
        Pairs("Clock", bus.clocks);
        m_out.Literal("</Clock>\n");
    }
    m_out.Literal("</BusDefinition>\n");
}

void CWriter::SpiceRef(const std::optional<SSpiceRef>& spice)
{
    if (spice) {
        m_out.Literal("<SPICE");
        Text(" File=\"", spice->file);
        Text(" model =\"", spice->model);
        m_out.Literal("/>");
    }
}

void CWriter::DcModel()
{
    const auto* model = m_record->GetComposite<SDcModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<DC_MODEL");
    Text(" PFMode=\"", model->worst ? "Worst" : "Average");
    m_out.Literal(">\n");
    SpiceRef(model->spice);
    for (const SDcRail& rail : model->rails) {
        m_out.Literal("<PowerRail");
        Number(" NominalVoltage=\"", rail.nominalVoltage, EQuantity::Voltage);
        Number(" UpperTolerance=\"", rail.upperTolerance, EQuantity::Tolerance);
        Number(" LowerTolerance=\"", rail.lowerTolerance, EQuantity::Tolerance);
        m_out.Literal(">\n<EqualCurrent");
        Number(" TotalCurrent=\"", rail.totalCurrent, EQuantity::Current);
        m_out.Literal("/>\n<PIN>");
        for (const std::string& pin : rail.pins) {
            Name("PIN", pin);
            m_out.Literal(" ");
        }
        m_out.Literal("</PIN>\n</PowerRail>\n");
    }
    m_out.Literal("</DC_MODEL>\n");
}

void CWriter::DcConvModel()
{
    const auto* model = m_record->GetComposite<SDcConvModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<DCCONV_MODEL");
    Text(" UseCurrentForInputPins=\"", model->useCurrentForInputPins ? "Yes" : "No");
    m_out.Literal(">\n");
    for (const SConvPin& pin : model->pins) {
        m_out.Literal("<Pin");
        Text(" Name=\"", pin.name);
        Text(" Type=\"", kConvPinWords[static_cast<std::size_t>(pin.type)]);
        Text(" PinPair=\"", pin.pinPair);
        Number(" Voltage=\"", pin.voltage, EQuantity::Voltage);
        Number(" Current=\"", pin.current, EQuantity::Current);
        Number(" ConvertRate=\"", pin.convertRate);
        Number(" UpperTolerance=\"", pin.upperTolerance, EQuantity::Tolerance);
        Number(" LowerTolerance=\"", pin.lowerTolerance, EQuantity::Tolerance);
        m_out.Literal(" />\n");
    }
    m_out.Literal("</DCCONV_MODEL>\n");
}

void CWriter::AcModel()
{
    const auto* model = m_record->GetComposite<SAcModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<AC_MODEL>\n");
    SpiceRef(model->spice);
    for (const SAcRail& rail : model->rails) {
        m_out.Literal("<PowerRail");
        Text(" Type=\"", rail.pwl ? "PWL Model" : "R-L Model");
        Number(" MaxPeakRipple=\"", rail.maxPeakRipple, EQuantity::Voltage);
        Number(" TransCurDelta=\"", rail.transCurDelta, EQuantity::Current);
        Number(" ShortRiseTimeDelta=\"", rail.shortRiseTimeDelta, EQuantity::Time);
        Text(" PositivePins=\"", rail.positivePins);
        Text(" NegativePins=\"", rail.negativePins);
        Text(" PositiveNet=\"", rail.positiveNet);
        Text(" NegativeNet=\"", rail.negativeNet);
        m_out.Literal(">\n");
        for (const SFeqImp& point : rail.points) {
            m_out.Literal("<FeqImp");
            Number(" Frequency=\"", point.frequencyHz, EQuantity::Frequency);
            Number(" Impedance=\"", point.impedanceOhm, EQuantity::Resistance);
            m_out.Literal("/>\n");
        }
        m_out.Literal("</PowerRail>\n");
    }
    m_out.Literal("</AC_MODEL>\n");
}

void CWriter::VrmModel()
{
    const auto* model = m_record->GetComposite<SVrmModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<VRM>\n");
    SpiceRef(model->spice);
    for (const SVrmRail& rail : model->rails) {
        m_out.Literal("<PowerRail");
        Number(" NominalVoltage=\"", rail.nominalVoltage, EQuantity::Voltage);
        Number(" OutputTolerance=\"", rail.outputTolerance, EQuantity::Tolerance);
        Number(" OutputCurrent=\"", rail.outputCurrent, EQuantity::Current);
        Number(" PinResistance=\"", rail.pinResistance, EQuantity::Resistance);
        m_out.Literal(">\n");
        for (const std::string& pin : rail.pins) {
            m_out.Literal("<Pin");
            Text(" name=\"", pin);
            m_out.Literal(" />\n");
        }
        m_out.Literal("</PowerRail>\n");
    }
    m_out.Literal("</VRM>\n");
}

void CWriter::Thermal()
{
    const auto* model = m_record->GetComposite<SThermalModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<Thermal");
    Number(" PowerDissipation=\"", model->powerDissipation);
    Number(" Thickness=\"", model->thickness);
    Number(" Theta_JB=\"", model->thetaJb);
    Number(" Theta_JC=\"", model->thetaJc);
    Number(" MaxDieTemperature=\"", model->maxDieTemperature);
    m_out.Literal(" />\n");
}

void CWriter::Through()
{
    if (!m_record->Has(EPropId::Through)) {
        return;
    }
    const auto* model = m_record->GetComposite<SThroughModel>();
    if (model == nullptr) {
        return;
    }
    m_out.Literal("\n<Through");
    Text(" NotThrough=\"", model->notThrough ? "Yes" : "No");
    m_out.Literal(">\n");
    for (const SThroughInfo& info : model->connections) {
        m_out.Literal("<ThroughInfo");
        Text(" Pin1=\"", info.pin1);
        Text(" Pin2=\"", info.pin2);
        Number(" Inductance=\"", info.inductance);
        Number(" Resistance=\"", info.resistance);
        m_out.Literal(" />\n");
    }
    m_out.Literal("</Through>\n");
}

} // namespace

void WriteExchange(const CZovLibrary& library, const CDisplayUnits& units, CByteWriter& out,
                   CLogSink& log)
{
    CWriter(library, units, out, log).Write();
}

bool WriteLibrary(const CZovLibrary& library, const std::filesystem::path& path,
                  const CDisplayUnits& units, CLogSink& log)
{
    if (path.empty()) {
        return false;
    }
    CResult<std::unique_ptr<CAtomicFile>> file = CAtomicFile::Create(path);
    if (!file) {
        return false;
    }
    WriteExchange(library, units, **file, log);
    return (*file)->Commit().Ok();
}

} // namespace zov
