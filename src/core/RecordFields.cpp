// SPDX-License-Identifier: Apache-2.0
#include "core/RecordFields.h"

#include <algorithm>
#include <array>

namespace zov {
namespace {

using enum EFieldKind;
using EQ = EQuantity;

// --- members of sub-models -----------------------------------------------------------------------

template <class T>
struct SMember
{
    SFieldInfo info;
    SFieldValue (*get)(const T&);
    void (*set)(T&, const SFieldValue&);
};

/// The members of a sub-model or of a row of one: an array of SMember<T>, declared below.
template <class T>
std::span<const SMember<T>> Members();

template <class T>
std::span<const SFieldInfo> InfosOf()
{
    static const std::vector<SFieldInfo> infos = [] {
        std::vector<SFieldInfo> all;
        for (const SMember<T>& member : Members<T>()) {
            all.push_back(member.info);
        }
        return all;
    }();
    return infos;
}

SFieldValue ToValue(const std::string& text)
{
    return text.empty() ? SFieldValue() : SFieldValue(text);
}
SFieldValue ToValue(double value)
{
    return SFieldValue(value);
}
SFieldValue ToValue(const std::optional<double>& value)
{
    return value ? SFieldValue(*value) : SFieldValue();
}
SFieldValue ToValue(bool value)
{
    return SFieldValue(static_cast<int>(value));
}
SFieldValue ToValue(const std::vector<std::string>& names)
{
    return names.empty() ? SFieldValue() : SFieldValue(names);
}
SFieldValue ToValue(const std::vector<TNamePair>& pairs)
{
    return pairs.empty() ? SFieldValue() : SFieldValue(pairs);
}
template <class E>
requires std::is_enum_v<E> SFieldValue ToValue(E value)
{
    return SFieldValue(static_cast<int>(value));
}
template <class Row>
SFieldValue ToValue(const std::vector<Row>& items)
{
    TFieldRows rows;
    for (const Row& item : items) {
        TFieldRow& row = rows.emplace_back();
        for (const SMember<Row>& member : Members<Row>()) {
            row.push_back(member.get(item));
        }
    }
    return SFieldValue(std::move(rows));
}

/// Only values that ParseField or ToValue made for the field come here; none is the empty value.
template <class V>
void FromValue(const SFieldValue& value, V& out)
{
    if constexpr (std::is_same_v<V, bool> || std::is_enum_v<V>) {
        const int* index = value.As<int>();
        out = static_cast<V>(index == nullptr ? 0 : *index);
    } else if constexpr (std::is_same_v<V, std::optional<double>>) {
        const double* number = value.As<double>();
        out = number == nullptr ? std::nullopt : std::optional(*number);
    } else {
        const V* same = value.As<V>();
        out = same == nullptr ? V{} : *same;
    }
}
template <class Row>
requires requires
{
    Members<Row>();
}
void FromValue(const SFieldValue& value, std::vector<Row>& out)
{
    out.clear();
    const TFieldRows* rows = value.As<TFieldRows>();
    for (std::size_t i = 0; rows != nullptr && i < rows->size(); ++i) {
        const TFieldRow& row = (*rows)[i];
        Row& item = out.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column) {
            Members<Row>()[column].set(item, row[column]);
        }
    }
}
void FromValue(const SFieldValue& value, std::vector<std::string>& out)
{
    FromValue<std::vector<std::string>>(value, out);
}
void FromValue(const SFieldValue& value, std::vector<TNamePair>& out)
{
    FromValue<std::vector<TNamePair>>(value, out);
}

template <auto Member>
struct SAccess;
template <class T, class V, V T::*Member>
struct SAccess<Member>
{
    using TOwner = T;
    static SFieldValue Get(const T& owner) { return ToValue(owner.*Member); }
    static void Set(T& owner, const SFieldValue& value) { FromValue(value, owner.*Member); }
};

template <auto Member>
constexpr auto Field(const SFieldInfo& info)
{
    using TAccess = SAccess<Member>;
    return SMember<typename TAccess::TOwner>{info, &TAccess::Get, &TAccess::Set};
}

/// A part of the optional reference to a SPICE circuit, which goes when both parts are empty.
template <class T, std::string SSpiceRef::*Part>
constexpr SMember<T> Spice(const SFieldInfo& info)
{
    return {
        info,
        [](const T& model) { return model.spice ? ToValue((*model.spice).*Part) : SFieldValue(); },
        [](T& model, const SFieldValue& value) {
            SSpiceRef ref = model.spice.value_or(SSpiceRef{});
            FromValue(value, ref.*Part);
            model.spice = ref == SSpiceRef{} ? std::nullopt : std::optional(ref);
        }};
}
template <class T>
constexpr SMember<T> SpiceFile()
{
    return Spice<T, &SSpiceRef::file>({"SpiceFile", "SPICE file", File});
}
template <class T>
constexpr SMember<T> SpiceModel()
{
    return Spice<T, &SSpiceRef::model>({"SpiceModel", "Sub-circuit"});
}

constexpr std::array<std::string_view, 2> kNoYes = {"No", "Yes"};
constexpr std::array<std::string_view, 2> kPfModes = {"Average", "Worst"};
constexpr std::array<std::string_view, 2> kRailTypes = {"R-L Model", "PWL Model"};
constexpr std::array<std::string_view, 2> kDefinitions = {"Plain values",
                                                          "Circuit or S-parameter file"};

#define ZOV_MEMBERS(TYPE, COUNT) constexpr std::array<SMember<TYPE>, COUNT> k##TYPE##Members
#define ZOV_MEMBERS_END(TYPE)                                                                      \
    template <>                                                                                    \
    std::span<const SMember<TYPE>> Members<TYPE>()                                                 \
    {                                                                                              \
        return k##TYPE##Members;                                                                   \
    }

// Rows come before the models that hold them.
ZOV_MEMBERS(SBusDefinition, 6) = {
    Field<&SBusDefinition::busGroup>({"BusGroup", "Bus group", Text, EQ::None, true}),
    Field<&SBusDefinition::busType>({"BusType", "Type", Choice, EQ::None, true, kBusTypeWords}),
    Field<&SBusDefinition::edgeType>({"EdgeType", "Edges", Choice, EQ::None, true, kEdgeTypeWords}),
    Field<&SBusDefinition::timingRefs>({"TimingRef", "Timing references", Pairs}),
    Field<&SBusDefinition::signals>({"Signal", "Signals", Names}),
    Field<&SBusDefinition::clocks>({"Clock", "Clocks", Pairs}),
};
ZOV_MEMBERS_END(SBusDefinition)

ZOV_MEMBERS(SDcRail, 5) = {
    Field<&SDcRail::nominalVoltage>({"NominalVoltage", "Nominal voltage", Number, EQ::Voltage,
                                     true}),
    Field<&SDcRail::upperTolerance>({"UpperTolerance", "Tol. +", Number, EQ::Tolerance}),
    Field<&SDcRail::lowerTolerance>({"LowerTolerance", "Tol. -", Number, EQ::Tolerance}),
    Field<&SDcRail::totalCurrent>({"TotalCurrent", "Total current", Number, EQ::Current, true}),
    Field<&SDcRail::pins>({"Pins", "Pins", Names}),
};
ZOV_MEMBERS_END(SDcRail)

ZOV_MEMBERS(SConvPin, 8) = {
    Field<&SConvPin::name>({"Name", "Pin", Text, EQ::None, true}),
    Field<&SConvPin::type>({"Type", "Type", Choice, EQ::None, true, kConvPinWords}),
    Field<&SConvPin::pinPair>({"PinPair", "Pin pair"}),
    Field<&SConvPin::voltage>({"Voltage", "Voltage", Number, EQ::Voltage}),
    Field<&SConvPin::current>({"Current", "Current", Number, EQ::Current}),
    Field<&SConvPin::convertRate>({"ConvertRate", "Conversion rate", Number}),
    Field<&SConvPin::upperTolerance>({"UpperTolerance", "Tol. +", Number, EQ::Tolerance}),
    Field<&SConvPin::lowerTolerance>({"LowerTolerance", "Tol. -", Number, EQ::Tolerance}),
};
ZOV_MEMBERS_END(SConvPin)

ZOV_MEMBERS(SFeqImp, 2) = {
    Field<&SFeqImp::frequencyHz>({"Frequency", "Frequency", Number, EQ::Frequency, true}),
    Field<&SFeqImp::impedanceOhm>({"Impedance", "Impedance", Number, EQ::Resistance, true}),
};
ZOV_MEMBERS_END(SFeqImp)

ZOV_MEMBERS(SAcRail, 9) = {
    Field<&SAcRail::pwl>({"Type", "Type", Choice, EQ::None, true, kRailTypes}),
    Field<&SAcRail::maxPeakRipple>({"MaxPeakRipple", "Max. ripple", Number, EQ::Voltage, true}),
    Field<&SAcRail::transCurDelta>({"TransCurDelta", "Current step", Number, EQ::Current, true}),
    Field<&SAcRail::shortRiseTimeDelta>({"ShortRiseTimeDelta", "Rise time", Number, EQ::Time,
                                         true}),
    Field<&SAcRail::positivePins>({"PositivePins", "Positive pins", Text, EQ::None, true}),
    Field<&SAcRail::negativePins>({"NegativePins", "Negative pins", Text, EQ::None, true}),
    Field<&SAcRail::positiveNet>({"PositiveNet", "Positive net"}),
    Field<&SAcRail::negativeNet>({"NegativeNet", "Negative net"}),
    Field<&SAcRail::points>(
        {"FeqImp", "Impedance over frequency", Rows, EQ::None, false, {}, &InfosOf<SFeqImp>}),
};
ZOV_MEMBERS_END(SAcRail)

ZOV_MEMBERS(SVrmRail, 5) = {
    Field<&SVrmRail::nominalVoltage>({"NominalVoltage", "Nominal voltage", Number, EQ::Voltage,
                                      true}),
    Field<&SVrmRail::outputTolerance>({"OutputTolerance", "Tolerance", Number, EQ::Tolerance}),
    Field<&SVrmRail::outputCurrent>({"OutputCurrent", "Output current", Number, EQ::Current}),
    Field<&SVrmRail::pinResistance>({"PinResistance", "Pin resistance", Number, EQ::Resistance}),
    Field<&SVrmRail::pins>({"Pins", "Pins", Names}),
};
ZOV_MEMBERS_END(SVrmRail)

ZOV_MEMBERS(SThroughInfo, 4) = {
    Field<&SThroughInfo::pin1>({"Pin1", "Pin 1", Text, EQ::None, true}),
    Field<&SThroughInfo::pin2>({"Pin2", "Pin 2", Text, EQ::None, true}),
    Field<&SThroughInfo::inductance>({"Inductance", "Inductance", Number, EQ::Inductance}),
    Field<&SThroughInfo::resistance>({"Resistance", "Resistance", Number, EQ::Resistance}),
};
ZOV_MEMBERS_END(SThroughInfo)

ZOV_MEMBERS(SIoModel, 4) = {
    Field<&SIoModel::ibisFile>({"IBIS", "IBIS file", File, EQ::None, true}),
    Field<&SIoModel::components>({"Components", "Components"}),
    Field<&SIoModel::expIoAndGndTerm>({"ExpIOAndGNDTerm", "Export I/O and ground terminals", Choice,
                                       EQ::None, false, kNoYes}),
    Field<&SIoModel::buses>(
        {"Buses", "Bus definitions", Rows, EQ::None, false, {}, &InfosOf<SBusDefinition>}),
};
ZOV_MEMBERS_END(SIoModel)

ZOV_MEMBERS(SDcModel, 4) = {
    Field<&SDcModel::worst>({"PFMode", "Mode", Choice, EQ::None, false, kPfModes}),
    SpiceFile<SDcModel>(),
    SpiceModel<SDcModel>(),
    Field<&SDcModel::rails>(
        {"PowerRails", "Power rails", Rows, EQ::None, false, {}, &InfosOf<SDcRail>}),
};
ZOV_MEMBERS_END(SDcModel)

ZOV_MEMBERS(SDcConvModel, 2) = {
    Field<&SDcConvModel::useCurrentForInputPins>(
        {"UseCurrentForInputPins", "Use current for input pins", Choice, EQ::None, false, kNoYes}),
    Field<&SDcConvModel::pins>({"ConvPins", "Pins", Rows, EQ::None, false, {}, &InfosOf<SConvPin>}),
};
ZOV_MEMBERS_END(SDcConvModel)

ZOV_MEMBERS(SAcModel, 3) = {
    SpiceFile<SAcModel>(),
    SpiceModel<SAcModel>(),
    Field<&SAcModel::rails>(
        {"AcRails", "Power rails", Rows, EQ::None, false, {}, &InfosOf<SAcRail>}),
};
ZOV_MEMBERS_END(SAcModel)

ZOV_MEMBERS(SVrmModel, 3) = {
    SpiceFile<SVrmModel>(),
    SpiceModel<SVrmModel>(),
    Field<&SVrmModel::rails>(
        {"VrmRails", "Power rails", Rows, EQ::None, false, {}, &InfosOf<SVrmRail>}),
};
ZOV_MEMBERS_END(SVrmModel)

ZOV_MEMBERS(SThermalModel, 5) = {
    Field<&SThermalModel::powerDissipation>({"PowerDissipation", "Power dissipation", Number,
                                             EQ::Power, true}),
    Field<&SThermalModel::thickness>({"Thickness", "Thickness", Number, EQ::None, true}),
    Field<&SThermalModel::thetaJb>({"Theta_JB", "Theta JB (junction to board)", Number, EQ::None,
                                    true}),
    Field<&SThermalModel::thetaJc>({"Theta_JC", "Theta JC (junction to case)", Number, EQ::None,
                                    true}),
    Field<&SThermalModel::maxDieTemperature>({"MaxDieTemperature", "Max. die temperature", Number,
                                              EQ::None, true}),
};
ZOV_MEMBERS_END(SThermalModel)

ZOV_MEMBERS(SThroughModel, 2) = {
    Field<&SThroughModel::notThrough>({"NotThrough", "Not through", Choice, EQ::None, false,
                                       kNoYes}),
    Field<&SThroughModel::connections>({"Connections",
                                        "Pin-to-pin connections",
                                        Rows,
                                        EQ::None,
                                        false,
                                        {},
                                        &InfosOf<SThroughInfo>}),
};
ZOV_MEMBERS_END(SThroughModel)

ZOV_MEMBERS(SCircuitRef, 3) = {
    Field<&SCircuitRef::model>({"Model", "Sub-circuit"}),
    Field<&SCircuitRef::file>({"SPICE_File", "SPICE file", File}),
    Field<&SCircuitRef::text>({"CircuitText", "or its text", LongText}),
};
ZOV_MEMBERS_END(SCircuitRef)

#undef ZOV_MEMBERS
#undef ZOV_MEMBERS_END

// --- from members to fields of a record ----------------------------------------------------------

template <class T>
SFieldValue GetMember(const CZovRcdProps& record, const SRecordField& field)
{
    const T* model = record.GetComposite<T>();
    return model == nullptr ? SFieldValue() : Members<T>()[field.member].get(*model);
}

template <class T>
void SetMember(CZovRcdProps& record, const SRecordField& field, const SFieldValue& value)
{
    const T* old = record.GetComposite<T>();
    T model = old == nullptr ? T{} : *old;
    Members<T>()[field.member].set(model, value);
    record.SetComposite(std::move(model));
}

SFieldValue GetFlat(const CZovRcdProps& record, const SRecordField& field)
{
    if (field.info.kind == Number) {
        return ToValue(record.GetDouble(field.owner));
    }
    return ToValue(std::string(record.GetString(field.owner)));
}

void SetFlat(CZovRcdProps& record, const SRecordField& field, const SFieldValue& value)
{
    if (value.IsNone()) {
        record.Remove(field.owner);
    } else if (const double* number = value.As<double>()) {
        record.SetDouble(field.owner, *number);
    } else if (const std::string* text = value.As<std::string>()) {
        record.SetString(field.owner, *text);
    }
}

/// `first` up to before `last` of the members of T.
template <class T>
std::vector<SRecordField> MemberFields(EPropId owner, std::size_t first, std::size_t last)
{
    std::vector<SRecordField> fields;
    for (std::size_t i = first; i < last; ++i) {
        fields.push_back({Members<T>()[i].info, owner, i, -1, -1, &GetMember<T>, &SetMember<T>});
    }
    return fields;
}

template <class T>
SRecordPage ModelPage(EModelPage page, const char* title, const char* form, EPropId owner)
{
    SRecordPage made{page, title, form, MemberFields<T>(owner, 0, Members<T>().size()), owner};
    made.make = [] { return TSubModel(T{}); };
    return made;
}

/// Some members on a page of their own, whose sub-model another page has or has not.
template <class T>
SRecordPage PartPage(EModelPage page, const char* title, const char* form, EPropId owner,
                     std::size_t first, std::size_t last)
{
    return {page, title, form, MemberFields<T>(owner, first, last)};
}

const char* LabelOf(EPropId id)
{
    struct SLabel
    {
        EPropId id;
        const char* label;
    };
    static constexpr std::array<SLabel, 23> kLabels = {{
        {EPropId::ModelName, "Model name"},
        {EPropId::MfgPartNumber, "Part number"},
        {EPropId::Manuf, "Manufacturer"},
        {EPropId::Comment, "Comment"},
        {EPropId::MaxCurrent, "Max. current"},
        {EPropId::UpTolerance, "Upper tolerance"},
        {EPropId::LowTolerance, "Lower tolerance"},
        {EPropId::Size, "Size"},
        {EPropId::Cnom, "Nominal capacitance"},
        {EPropId::Volt, "Rated voltage"},
        {EPropId::Tcc, "TCC"},
        {EPropId::Prefer, "Preferred"},
        {EPropId::PriceA, "Price A"},
        {EPropId::PriceB, "Price B"},
        {EPropId::PriceC, "Price C"},
        {EPropId::PriceBook, "Price book"},
        {EPropId::Lookup, "Look-up"},
        {EPropId::Description, "Description"},
        {EPropId::SubModel, "Sub-model"},
        {EPropId::DcBias, "DC bias"},
        {EPropId::Temperature, "Temperature"},
        {EPropId::Inductance, "Inductance"},
        {EPropId::Resistance, "Resistance"},
    }};
    const auto at = std::ranges::find(kLabels, id, &SLabel::id);
    return at == kLabels.end() ? FindProperty(id)->name.data() : at->label;
}

/// Parts of a discrete's definition stand on the definition's own page.
bool IsOfDefinition(ERecordType type, EPropId id)
{
    const bool shared = id == EPropId::Inductance || id == EPropId::Resistance;
    return id >= EPropId::ModelIsCircuit || (shared && IsDiscrete(type));
}

SRecordPage FirstPage(ERecordType type)
{
    SRecordPage page{EModelPage::First, "General", "dlg_IDD_ZOV_DLG_EDITORCHILD", {}};
    for (const EPropId id : PropertiesOf(type)) {
        const SPropInfo& info = *FindProperty(id);
        if (info.kind == EPropKind::Composite || IsOfDefinition(type, id)) {
            continue;
        }
        const bool isCapacitor = type == ERecordType::Capacitor;
        SFieldInfo field{info.name.data(), LabelOf(id)};
        field.kind = info.kind == EPropKind::Double ? Number
                     : info.kind == EPropKind::Text ? LongText
                                                    : Text;
        field.quantity = info.quantity;
        field.required = id == EPropId::ModelName ||
                         (isCapacitor && (id == EPropId::Size || id == EPropId::Cnom));
        page.fields.push_back({field, id, 0, -1, -1, &GetFlat, &SetFlat});
    }
    return page;
}

SRecordField FlatField(EPropId id, const char* label, EFieldKind kind)
{
    const SPropInfo& info = *FindProperty(id);
    SRecordField field{{info.name.data(), label, kind, info.quantity}, id};
    field.get = &GetFlat;
    field.set = &SetFlat;
    return field;
}

/// Which of the two forms a discrete's definition has. Without a circuit there is no file either.
SRecordField FormField()
{
    SRecordField field{{"ModelType", "Model", Choice, EQ::None, false, kDefinitions},
                       EPropId::ModelIsCircuit};
    field.get = [](const CZovRcdProps& record, const SRecordField& of) {
        return ToValue(record.Has(of.owner));
    };
    field.set = [](CZovRcdProps& record, const SRecordField& of, const SFieldValue& value) {
        if (value == SFieldValue(1)) {
            record.SetDouble(of.owner, 1.0);
            return;
        }
        record.Remove(of.owner);
        record.Remove(EPropId::CktDef);
        record.Remove(EPropId::TrackFolder);
    };
    return field;
}

SRecordPage DefinitionPage(ERecordType type)
{
    const bool isCapacitor = type == ERecordType::Capacitor;
    const bool isInductor = type == ERecordType::Inductor;
    SRecordPage page =
        isCapacitor  ? SRecordPage{EModelPage::Capacitor, "Capacitor", "dlg_IDD_ZOV_DLG_MODELCAP"}
        : isInductor ? SRecordPage{EModelPage::Inductor, "Inductor", "dlg_IDD_ZOV_DLG_MODELIND"}
                     : SRecordPage{EModelPage::Resistor, "Resistor", "dlg_IDD_ZOV_DLG_MODELRES"};
    page.fields = {FormField(), FlatField(EPropId::CktDef, "File or circuit", Circuit),
                   FlatField(EPropId::TrackFolder, "Track folder", Text)};
    for (SRecordField* field : {&page.fields[1], &page.fields[2]}) {
        field->onlyWhenFirstIs = 1;
    }
    page.fields[1].info.required = true;
    // Beside a circuit the values are what it should show.
    page.fields.push_back(
        FlatField(isCapacitor ? EPropId::Rv : EPropId::Resistance, "Resistance", Number));
    if (type != ERecordType::Resistor) {
        page.fields.push_back(
            FlatField(isCapacitor ? EPropId::Lv : EPropId::Inductance, "Inductance", Number));
    }
    if (isCapacitor) {
        page.fields.push_back(FlatField(EPropId::Cv, "Capacitance", Number));
    }
    page.fields.back().info.required = true; // C, L or R is what the part is about
    page.fields.back().requiredWhenFirstIs = 0;
    return page;
}

std::vector<SRecordPage> MakePages(ERecordType type)
{
    std::vector<SRecordPage> pages = {FirstPage(type)};
    if (IsDiscrete(type)) {
        pages.push_back(DefinitionPage(type));
    }
    if (type == ERecordType::Ic) {
        SRecordPage io =
            ModelPage<SIoModel>(EModelPage::Io, "I/O", "dlg_IDD_ZOV_DLG_MODELIO", EPropId::IoModel);
        io.fields.pop_back(); // the buses have a page of their own
        pages.push_back(std::move(io));
        pages.push_back(PartPage<SIoModel>(EModelPage::First, "Timing",
                                           "dlg_IDD_ZOV_DLG_MODELTIMING", EPropId::IoModel, 3, 4));
        pages.push_back(
            ModelPage<SDcModel>(EModelPage::Dc, "DC", "dlg_IDD_ZOV_DLG_MODELDC", EPropId::DcModel));
        pages.push_back(ModelPage<SDcConvModel>(
            EModelPage::DcConv, "DC-DC", "dlg_IDD_ZOV_DLG_MODELDCCONV", EPropId::DcConvModel));
        SRecordPage ac =
            ModelPage<SAcModel>(EModelPage::Ac, "AC", "dlg_IDD_ZOV_DLG_MODELAC", EPropId::AcModel);
        ac.fields.pop_back();
        pages.push_back(std::move(ac));
        pages.push_back(PartPage<SAcModel>(EModelPage::Impedance, "Impedance",
                                           "dlg_IDD_ZOV_DLG_MODELPWR", EPropId::AcModel, 2, 3));
        pages.push_back(ModelPage<SVrmModel>(EModelPage::Vrm, "VRM", "dlg_IDD_ZOV_DLG_MODELVRM",
                                             EPropId::VrmModel));
        pages.push_back(ModelPage<SThermalModel>(EModelPage::Thermal, "Thermal",
                                                 "dlg_IDD_ZOV_DLG_MODELTHERMAL", EPropId::Thermal));
    } else if (type == ERecordType::Vrm) {
        pages.push_back(PartPage<SVrmModel>(EModelPage::Vrm, "VRM", "dlg_IDD_ZOV_DLG_MODELVRM",
                                            EPropId::VrmModel, 0, 3));
    } else if (!IsDiscrete(type)) {
        pages.push_back(PartPage<SCircuitRef>(
            EModelPage::Spice, "SPICE", "dlg_IDD_ZOV_DLG_MODELSPICE", EPropId::Circuit, 0, 3));
    }
    pages.push_back(ModelPage<SThroughModel>(EModelPage::Through, "Through",
                                             "dlg_IDD_ZOV_DLG_THROUGHINFO", EPropId::Through));
    return pages;
}

} // namespace

std::span<const SRecordPage> PagesOf(ERecordType type)
{
    static const std::vector<std::pair<ERecordType, std::vector<SRecordPage>>> all = [] {
        std::vector<std::pair<ERecordType, std::vector<SRecordPage>>> made;
        for (const SRecordTypeInfo& info : RecordTypes()) {
            made.emplace_back(info.type, MakePages(info.type));
        }
        return made;
    }();
    for (const auto& [of, pages] : all) {
        if (of == type) {
            return pages;
        }
    }
    return {};
}

} // namespace zov
