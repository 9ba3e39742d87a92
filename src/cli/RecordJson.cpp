// SPDX-License-Identifier: Apache-2.0
#include "cli/RecordJson.h"

#include <array>

namespace zov::cli {

namespace {

/// Names that stand inside sub-models only.
struct SNamedQuantity
{
    std::string_view name;
    EQuantity quantity;
};
constexpr std::array<SNamedQuantity, 15> kSubModelQuantities = {{
    {"NominalVoltage", EQuantity::Voltage},
    {"UpperTolerance", EQuantity::Tolerance},
    {"LowerTolerance", EQuantity::Tolerance},
    {"OutputTolerance", EQuantity::Tolerance},
    {"TotalCurrent", EQuantity::Current},
    {"OutputCurrent", EQuantity::Current},
    {"Current", EQuantity::Current},
    {"Voltage", EQuantity::Voltage},
    {"MaxPeakRipple", EQuantity::Voltage},
    {"TransCurDelta", EQuantity::Current},
    {"ShortRiseTimeDelta", EQuantity::Time},
    {"Frequency", EQuantity::Frequency},
    {"Impedance", EQuantity::Resistance},
    {"PinResistance", EQuantity::Resistance},
    {"PowerDissipation", EQuantity::Power},
}};

void Put(TJson& object, const char* name, const std::string& text)
{
    if (!text.empty()) {
        object[name] = text;
    }
}

void Put(TJson& object, const char* name, const std::optional<double>& value)
{
    if (value) {
        object[name] = *value;
    }
}

void Put(TJson& object, const char* name, const std::vector<std::string>& texts)
{
    if (!texts.empty()) {
        object[name] = texts;
    }
}

void Put(TJson& object, const char* name, const std::vector<TNamePair>& pairs)
{
    for (const TNamePair& pair : pairs) {
        object[name].push_back(TJson::array({pair.first, pair.second}));
    }
}

void Put(TJson& object, const std::optional<SSpiceRef>& spice)
{
    if (spice) {
        object["SPICE"] = {{"File", spice->file}, {"model", spice->model}};
    }
}

TJson ToJson(const SCircuitRef& circuit)
{
    TJson out = TJson::object();
    Put(out, "Model", circuit.model);
    Put(out, "SPICE_File", circuit.file);
    Put(out, "Text", circuit.text);
    return out;
}

TJson ToJson(const SIoModel& io)
{
    TJson out = TJson::object();
    Put(out, "IBIS", io.ibisFile);
    Put(out, "Components", io.components);
    out["ExpIOAndGNDTerm"] = io.expIoAndGndTerm;
    for (const SBusDefinition& bus : io.buses) {
        TJson& item = out["BusDefinition"].emplace_back(TJson::object());
        Put(item, "BusGroup", bus.busGroup);
        item["BusType"] = kBusTypeWords[static_cast<std::size_t>(bus.busType)];
        item["EdgeType"] = kEdgeTypeWords[static_cast<std::size_t>(bus.edgeType)];
        Put(item, "TimingRef", bus.timingRefs);
        Put(item, "Signal", bus.signals);
        Put(item, "Clock", bus.clocks);
    }
    return out;
}

TJson ToJson(const SDcModel& dc)
{
    TJson out = {{"PFMode", dc.worst ? "Worst" : "Average"}};
    Put(out, dc.spice);
    for (const SDcRail& rail : dc.rails) {
        TJson& item = out["PowerRail"].emplace_back(TJson::object());
        Put(item, "NominalVoltage", rail.nominalVoltage);
        Put(item, "UpperTolerance", rail.upperTolerance);
        Put(item, "LowerTolerance", rail.lowerTolerance);
        Put(item, "TotalCurrent", rail.totalCurrent);
        Put(item, "PIN", rail.pins);
    }
    return out;
}

TJson ToJson(const SDcConvModel& converter)
{
    TJson out = {{"UseCurrentForInputPins", converter.useCurrentForInputPins}};
    for (const SConvPin& pin : converter.pins) {
        TJson& item = out["Pin"].emplace_back(TJson::object());
        Put(item, "Name", pin.name);
        item["Type"] = kConvPinWords[static_cast<std::size_t>(pin.type)];
        Put(item, "PinPair", pin.pinPair);
        Put(item, "Voltage", pin.voltage);
        Put(item, "Current", pin.current);
        Put(item, "ConvertRate", pin.convertRate);
        Put(item, "UpperTolerance", pin.upperTolerance);
        Put(item, "LowerTolerance", pin.lowerTolerance);
    }
    return out;
}

TJson ToJson(const SAcModel& ac)
{
    TJson out = TJson::object();
    Put(out, ac.spice);
    for (const SAcRail& rail : ac.rails) {
        TJson& item = out["PowerRail"].emplace_back(TJson::object());
        item["Type"] = rail.pwl ? "PWL Model" : "R-L Model";
        Put(item, "MaxPeakRipple", rail.maxPeakRipple);
        Put(item, "TransCurDelta", rail.transCurDelta);
        Put(item, "ShortRiseTimeDelta", rail.shortRiseTimeDelta);
        Put(item, "PositivePins", rail.positivePins);
        Put(item, "NegativePins", rail.negativePins);
        Put(item, "PositiveNet", rail.positiveNet);
        Put(item, "NegativeNet", rail.negativeNet);
        for (const SFeqImp& point : rail.points) {
            item["FeqImp"].push_back(
                {{"Frequency", point.frequencyHz}, {"Impedance", point.impedanceOhm}});
        }
    }
    return out;
}

TJson ToJson(const SVrmModel& vrm)
{
    TJson out = TJson::object();
    Put(out, vrm.spice);
    for (const SVrmRail& rail : vrm.rails) {
        TJson& item = out["PowerRail"].emplace_back(TJson::object());
        Put(item, "NominalVoltage", rail.nominalVoltage);
        Put(item, "OutputTolerance", rail.outputTolerance);
        Put(item, "OutputCurrent", rail.outputCurrent);
        Put(item, "PinResistance", rail.pinResistance);
        Put(item, "Pin", rail.pins);
    }
    return out;
}

TJson ToJson(const SThermalModel& thermal)
{
    return {{"PowerDissipation", thermal.powerDissipation},
            {"Thickness", thermal.thickness},
            {"Theta_JB", thermal.thetaJb},
            {"Theta_JC", thermal.thetaJc},
            {"MaxDieTemperature", thermal.maxDieTemperature}};
}

TJson ToJson(const SThroughModel& through)
{
    TJson out = {{"NotThrough", through.notThrough ? "Yes" : "No"}};
    for (const SThroughInfo& info : through.connections) {
        out["ThroughInfo"].push_back({{"Pin1", info.pin1},
                                      {"Pin2", info.pin2},
                                      {"Inductance", info.inductance},
                                      {"Resistance", info.resistance}});
    }
    return out;
}

void PutProperty(TJson& out, const CZovRcdProps& record, const SPropInfo& info)
{
    const std::string name(info.name);
    switch (info.kind) {
    case EPropKind::String:
    case EPropKind::Text:
        out[name] = record.GetString(info.id);
        break;
    case EPropKind::Double:
        out[name] = *record.GetDouble(info.id);
        break;
    case EPropKind::Composite:
        if (const TSubModel* model = record.GetComposite(info.id)) {
            out[name] = std::visit([](const auto& m) { return ToJson(m); }, *model);
        }
        break;
    }
}

} // namespace

TJson PropertiesJson(const CZovRcdProps& record)
{
    TJson out = TJson::object();
    for (const EPropId id : PropertiesOf(record.Type())) {
        const SPropInfo* info = FindProperty(id);
        if (id == EPropId::ModelIsCircuit) {
            // One of two definitions, named by the word that the exchange file has for it.
            if (const auto words = ModelTypeWordsOf(record.Type())) {
                out["ModelType"] = record.Has(id) ? words->circuit : words->plain;
            }
        } else if (record.Has(id) && info != nullptr) {
            PutProperty(out, record, *info);
        }
    }
    return out;
}

EQuantity QuantityOfName(std::string_view name)
{
    for (const SPropInfo& info : Properties()) {
        if (info.name == name) {
            return info.quantity;
        }
    }
    for (const SNamedQuantity& known : kSubModelQuantities) {
        if (known.name == name) {
            return known.quantity;
        }
    }
    return EQuantity::None;
}

} // namespace zov::cli
