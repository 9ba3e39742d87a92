// SPDX-License-Identifier: Apache-2.0
#include "app/ModelColumns.h"

#include "core/RecordQuery.h"

#include <QStringList>

#include <array>

namespace zov::app {
namespace {

using EColumn = EModelColumn;

constexpr std::array<SModelColumn, 26> kColumns = {{
    {EColumn::Name, "Model", 190, true, false},
    {EColumn::Type, "Type", 80, true, false},
    {EColumn::Value, "Value", 80, true, true},
    {EColumn::Size, "Size", 60, true, false},
    {EColumn::Voltage, "Voltage", 70, true, true},
    {EColumn::UpTolerance, "Tol. +", 60, true, true},
    {EColumn::LowTolerance, "Tol. -", 60, false, true},
    {EColumn::Characteristic, "TCC", 60, true, false},
    {EColumn::Current, "Max. current", 90, false, true},
    {EColumn::Manufacturer, "Manufacturer", 130, true, false},
    {EColumn::PartNumber, "Part number", 170, true, false},
    {EColumn::Model, "Model definition", 220, true, false},
    {EColumn::Note, "Description", 220, false, false},
    {EColumn::Missing, "Missing", 120, false, false},
    {EColumn::Prefer, "Preferred", 70, false, false},
    {EColumn::PriceA, "Price A", 70, false, true},
    {EColumn::PriceB, "Price B", 70, false, true},
    {EColumn::PriceC, "Price C", 70, false, true},
    {EColumn::PriceBook, "Price book", 90, false, false},
    {EColumn::Lookup, "Look-up", 90, false, false},
    {EColumn::SubModel, "Sub-model", 90, false, false},
    {EColumn::DcBias, "DC bias", 90, false, false},
    {EColumn::Temperature, "Temperature", 90, false, false},
    {EColumn::ModelC, "C of model", 90, false, true},
    {EColumn::ModelEsr, "ESR", 80, false, true},
    {EColumn::ModelResonance, "resonance", 90, false, true},
}};

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The property behind a column that shows just one; none for columns that are put together.
std::optional<EPropId> PropertyOf(const CZovRcdProps& record, EColumn column)
{
    switch (column) {
    case EColumn::Name:
        return EPropId::ModelName;
    case EColumn::Manufacturer:
        return EPropId::Manuf;
    case EColumn::PartNumber:
        return EPropId::MfgPartNumber;
    case EColumn::Size:
        return EPropId::Size;
    case EColumn::Value:
        switch (record.Type()) {
        case ERecordType::Capacitor:
            return EPropId::Cnom;
        case ERecordType::Inductor:
            return EPropId::Inductance;
        case ERecordType::Resistor:
            return EPropId::Resistance;
        default:
            return std::nullopt;
        }
    case EColumn::Voltage:
        return EPropId::Volt;
    case EColumn::Current:
        return EPropId::MaxCurrent;
    case EColumn::UpTolerance:
        return EPropId::UpTolerance;
    case EColumn::LowTolerance:
        return EPropId::LowTolerance;
    case EColumn::Characteristic:
        return EPropId::Tcc;
    case EColumn::Note:
        return IsDiscrete(record.Type()) ? EPropId::Comment : EPropId::Description;
    case EColumn::Prefer:
        return EPropId::Prefer;
    case EColumn::PriceA:
        return EPropId::PriceA;
    case EColumn::PriceB:
        return EPropId::PriceB;
    case EColumn::PriceC:
        return EPropId::PriceC;
    case EColumn::PriceBook:
        return EPropId::PriceBook;
    case EColumn::Lookup:
        return EPropId::Lookup;
    case EColumn::SubModel:
        return EPropId::SubModel;
    case EColumn::DcBias:
        return EPropId::DcBias;
    case EColumn::Temperature:
        return EPropId::Temperature;
    case EColumn::Type:
    case EColumn::Model:
    case EColumn::Missing:
    case EColumn::ModelC:
    case EColumn::ModelEsr:
    case EColumn::ModelResonance:
        break;
    }
    return std::nullopt;
}

/// Names of an IC's or VRM's sub-models, a circuit's name.
QString SubModelsOf(const CZovRcdProps& record)
{
    if (const SCircuitRef* circuit = record.GetComposite<SCircuitRef>()) {
        return Shown(circuit->file.empty() ? circuit->model
                                           : circuit->model + "  " + circuit->file);
    }
    QString names;
    for (const SPropInfo& info : Properties()) {
        if (info.kind == EPropKind::Composite && record.Has(info.id)) {
            names += (names.isEmpty() ? QString() : QStringLiteral(", ")) + Shown(info.name);
        }
    }
    return names;
}

QString DefinitionOf(const CZovRcdProps& record, const CDisplayUnits& units)
{
    const std::string summary = SummaryOf(record, units);
    if (!summary.empty() || !IsDiscrete(record.Type())) {
        return summary.empty() ? SubModelsOf(record) : Shown(summary);
    }
    const std::string_view circuit = record.GetString(EPropId::CktDef);
    return IsCircuitText(circuit) ? QStringLiteral("circuit in the library") : Shown(circuit);
}

QString MissingOf(const CZovRcdProps& record)
{
    QStringList missing;
    for (const std::string& what : MissingIn(record)) {
        missing += Shown(what);
    }
    return missing.join(QStringLiteral(", "));
}

/// Lists show one line a record.
QString OneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1Char(' ')).remove(QLatin1Char('\r'));
}

} // namespace

std::span<const SModelColumn> ModelColumns()
{
    return kColumns;
}

QString ModelCell(const CZovRcdProps& record, EModelColumn column, const CDisplayUnits& units)
{
    if (const std::optional<EPropId> id = PropertyOf(record, column)) {
        const SPropInfo& info = *FindProperty(*id);
        if (info.kind != EPropKind::Double) {
            return OneLine(Shown(record.GetString(*id)));
        }
        const std::optional<double> value = record.GetDouble(*id);
        return value ? Shown(FormatQuantity(*value, info.quantity, units)) : QString();
    }
    switch (column) {
    case EColumn::Type:
        return Shown(InfoOf(record.Type()).name);
    case EColumn::Model:
        return OneLine(DefinitionOf(record, units));
    case EColumn::Missing:
        return MissingOf(record);
    default:
        return {};
    }
}

SSortKey ModelSortKey(const CZovRcdProps& record, EModelColumn column)
{
    SSortKey key;
    if (const std::optional<EPropId> id = PropertyOf(record, column)) {
        if (FindProperty(*id)->kind == EPropKind::Double) {
            key.number = record.GetDouble(*id);
            if (column == EColumn::Value && key.number) {
                key.text = InfoOf(record.Type()).element; // farads don't mix with ohms
            }
        } else {
            key.text = record.GetString(*id);
        }
    } else if (column == EColumn::Type) {
        key.text = InfoOf(record.Type()).name;
    } else if (column == EColumn::Model) {
        key.text = record.GetString(EPropId::CktDef);
        key.number = record.GetDouble(EPropId::Cv);
    } else if (column == EColumn::Missing) {
        key.number = static_cast<double>(MissingIn(record).size());
    }
    return key;
}

} // namespace zov::app
