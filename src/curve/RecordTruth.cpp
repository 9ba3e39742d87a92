// SPDX-License-Identifier: Apache-2.0
#include "curve/RecordTruth.h"

#include "base/File.h"
#include "curve/RecordNetwork.h"
#include "network/TouchstoneReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace zov::curve {

using network::EConnection;
using network::EPartKind;
using network::SPartValues;

namespace {

constexpr double kFactor = 2.0;
/// How near to a power of ten a ratio is taken for one, as a power of ten itself.
constexpr double kDecadeWidth = 0.15;

EPartKind KindOf(ERecordType type)
{
    return type == ERecordType::Capacitor  ? EPartKind::Capacitor
           : type == ERecordType::Inductor ? EPartKind::Inductor
                                           : EPartKind::Resistor;
}

std::optional<double> Positive(std::optional<double> value)
{
    return value && *value > 0.0 && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<double> ResonanceOf(std::optional<double> henry, std::optional<double> farad)
{
    if (!Positive(henry) || !Positive(farad)) {
        return std::nullopt;
    }
    return 1.0 / (2.0 * std::numbers::pi * std::sqrt(*henry * *farad));
}

/// What the record states beside its model; a definition of plain values is the model itself.
std::vector<STruthItem> StatedBy(const CZovRcdProps& record, bool isCircuit)
{
    const auto beside = [&](EPropId id) {
        return isCircuit ? Positive(record.GetDouble(id)) : std::nullopt;
    };
    switch (record.Type()) {
    case ERecordType::Capacitor: {
        const auto farad = Positive(record.GetDouble(EPropId::Cnom));
        const auto henry = beside(EPropId::Lv);
        return {{"C", EQuantity::Capacitance, farad, {}},
                {"ESR", EQuantity::Resistance, beside(EPropId::Rv), {}},
                {"ESL", EQuantity::Inductance, henry, {}},
                {"resonance", EQuantity::Frequency, ResonanceOf(henry, farad), {}}};
    }
    case ERecordType::Inductor:
        return {{"L", EQuantity::Inductance, beside(EPropId::Inductance), {}},
                {"R", EQuantity::Resistance, beside(EPropId::Resistance), {}},
                {"resonance", EQuantity::Frequency, {}, {}}};
    default:
        return {{"R", EQuantity::Resistance, beside(EPropId::Resistance), {}}};
    }
}

/// The values of a model in the order of StatedBy.
std::vector<std::optional<double>> ModelledBy(ERecordType type, const SPartValues& values)
{
    switch (type) {
    case ERecordType::Capacitor:
        return {values.capacitanceF, values.resistanceOhm, values.inductanceH, values.resonanceHz};
    case ERecordType::Inductor:
        return {values.inductanceH, values.resistanceOhm, values.resonanceHz};
    default:
        return {values.resistanceOhm};
    }
}

void Take(SRecordTruth& truth, const std::vector<std::optional<double>>& modelled)
{
    for (std::size_t i = 0; i < truth.items.size(); ++i) {
        STruthItem& item = truth.items[i];
        item.model = Positive(modelled[i]);
        item.verdict = Compare(item.stated, item.model);
    }
}

std::string FactorText(double ratio)
{
    const double factor = ratio < 1.0 ? 1.0 / ratio : ratio;
    return fmt::format("{:.3g}", factor);
}

} // namespace

std::string_view WordOf(ETruth verdict)
{
    constexpr std::array<std::string_view, 5> kWords = {"can't be judged", "agrees", "differs",
                                                        "unit?", "series or shunt?"};
    return kWords[static_cast<std::size_t>(verdict)];
}

const STruthItem* SRecordTruth::Find(std::string_view name) const
{
    const auto at = std::ranges::find(items, name, &STruthItem::name);
    return at == items.end() ? nullptr : &*at;
}

ETruth Compare(std::optional<double> stated, std::optional<double> model)
{
    if (!Positive(stated) || !Positive(model)) {
        return ETruth::Unjudged;
    }
    const double ratio = *model / *stated;
    if (ratio > 1.0 / kFactor && ratio < kFactor) {
        return ETruth::Agrees;
    }
    const double decades = std::log10(ratio);
    const double nearest = std::round(decades);
    const bool isDecade = nearest != 0.0 && std::fabs(decades - nearest) <= kDecadeWidth;
    return isDecade ? ETruth::AskUnit : ETruth::Differs;
}

CTruthChecker::CTruthChecker(std::filesystem::path folder, const CDisplayUnits& units)
    : m_folder(std::move(folder))
    , m_units(units)
{
}

std::string CTruthChecker::Shown(const STruthItem& item, double value) const
{
    return FormatQuantity(value, item.quantity, m_units);
}

const CTruthChecker::SFileFacts& CTruthChecker::FactsOf(const std::filesystem::path& path,
                                                        EPartKind kind)
{
    std::error_code unknown;
    const auto changed = std::filesystem::last_write_time(path, unknown);
    SFileFacts& facts = m_files[fmt::format("{}|{}", static_cast<int>(kind), PathText(path))];
    if (!facts.ways.empty() && facts.changed == changed) {
        return facts;
    }
    facts = {};
    facts.changed = changed;
    CNullDiag diag;
    const CResult<network::CNetworkData> data = network::ReadTouchstone(path, diag);
    if (!data) {
        facts.fault = data.Error().text;
        return facts;
    }
    const CResult<network::STwoTerminal> part = network::TwoTerminalOf(*data);
    if (!part) {
        facts.fault = part.Error().text;
        return facts;
    }
    facts.looksLike = network::PartValuesOf(*part).kind;
    facts.fromHz = part->hz.empty() ? 0.0 : part->hz.front();
    facts.toHz = part->hz.empty() ? 0.0 : part->hz.back();
    facts.ways.push_back({part->connection, network::PartValuesOf(*part, kind)});
    if (part->connection != EConnection::OnePort) {
        const EConnection other =
            part->connection == EConnection::Series ? EConnection::Shunt : EConnection::Series;
        if (const auto otherPart = network::TwoTerminalOf(*data, other)) {
            facts.ways.push_back({other, network::PartValuesOf(*otherPart, kind)});
        }
    }
    return facts;
}

std::string CTruthChecker::WhyNoValue(const SRecordTruth& truth, const SFileFacts& facts) const
{
    const STruthItem& main = truth.items.front();
    if (!main.stated) {
        return fmt::format(
            "the record states no {} to compare{}", main.name,
            main.model ? fmt::format("; it is {} in '{}'", Shown(main, *main.model), truth.file)
                       : "");
    }
    const STruthItem hz{"", EQuantity::Frequency, {}, {}};
    return fmt::format("no {} can be derived from '{}': from {} to {} it looks like {} {}",
                       main.name, truth.file, Shown(hz, facts.fromHz), Shown(hz, facts.toHz),
                       facts.looksLike == EPartKind::Inductor ? "an" : "a",
                       network::WordOf(facts.looksLike));
}

void CTruthChecker::CheckFile(const CZovRcdProps& record, const SDiscreteModel& model,
                              SRecordTruth& truth)
{
    const CResult<SNetworkFile> file = NetworkFileOf(record, model, m_folder);
    if (!file) {
        truth.text = file.Error().text;
        return;
    }
    truth.file = file->name;
    const SFileFacts& facts = FactsOf(file->path, KindOf(record.Type()));
    if (facts.ways.empty()) {
        truth.text = fmt::format("'{}': {}", file->name, facts.fault);
        return;
    }
    truth.connection = facts.ways.front().connection;
    Take(truth, ModelledBy(record.Type(), facts.ways.front().values));
    const STruthItem& main = truth.items.front();
    if (file->wired && truth.connection != EConnection::OnePort &&
        file->wired != truth.connection) {
        truth.verdict = ETruth::AskConnection;
        truth.text = fmt::format("'{}' holds the data of a {} element, the sub-circuit wires it as "
                                 "a {} element: is it Series or Shunt?",
                                 file->name, network::WordOf(*truth.connection),
                                 network::WordOf(*file->wired));
        return;
    }
    if (main.verdict != ETruth::Agrees && facts.ways.size() > 1) {
        const auto other = Positive(ModelledBy(record.Type(), facts.ways[1].values).front());
        if (Compare(main.stated, other) == ETruth::Agrees) {
            truth.verdict = ETruth::AskConnection;
            truth.text = fmt::format(
                "{} is {} in '{}' taken as a {} element, which its data looks like, but {} as a {} "
                "element; the record says {}: is it Series or Shunt?",
                main.name, main.model ? Shown(main, *main.model) : "not to be had", file->name,
                network::WordOf(*truth.connection), Shown(main, *other),
                network::WordOf(facts.ways[1].connection), Shown(main, *main.stated));
            return;
        }
    }
    Conclude(truth, fmt::format("in '{}'", file->name));
    if (truth.verdict == ETruth::Unjudged) {
        truth.text = WhyNoValue(truth, facts);
    }
}

void CTruthChecker::CheckPlain(const CZovRcdProps& record, const SDiscreteModel& model,
                               SRecordTruth& truth)
{
    SPartValues values;
    values.resistanceOhm = model.resistance;
    values.inductanceH = model.inductance;
    values.capacitanceF = model.capacitance;
    if (record.Type() == ERecordType::Capacitor) {
        values.resonanceHz = ResonanceOf(model.inductance, model.capacitance);
    }
    Take(truth, ModelledBy(record.Type(), values));
    Conclude(truth, "by the plain values of the model");
    if (truth.verdict != ETruth::Unjudged) {
        return;
    }
    if (record.Type() != ERecordType::Capacitor) {
        truth.text = "its values are its model; there is nothing to compare them with";
    } else {
        truth.text = truth.items.front().stated ? "the plain values hold no C"
                                                : "the record states no C to compare";
    }
}

/// The worst item decides, and every item that does not agree is told.
void CTruthChecker::Conclude(SRecordTruth& truth, const std::string& source) const
{
    for (const STruthItem& item : truth.items) {
        truth.verdict = std::max(truth.verdict, item.verdict);
        if (item.verdict <= ETruth::Agrees) {
            continue;
        }
        truth.text +=
            fmt::format("{}{} is {} {}, the record says {}: a factor of {}{}",
                        truth.text.empty() ? "" : "; ", item.name, Shown(item, *item.model), source,
                        Shown(item, *item.stated), FactorText(*item.model / *item.stated),
                        item.verdict == ETruth::AskUnit ? "; is the unit right?" : "");
    }
}

SRecordTruth CTruthChecker::Check(const CZovRcdProps& record)
{
    SRecordTruth truth;
    if (!IsDiscrete(record.Type())) {
        truth.text = "only capacitors, inductors and resistors are compared";
        return truth;
    }
    const std::optional<SDiscreteModel> model = record.GetDiscreteModel();
    truth.items = StatedBy(record, model && model->isCircuit);
    if (!model) {
        truth.text = "the record has no model";
    } else if (model->isCircuit) {
        CheckFile(record, *model, truth);
    } else {
        CheckPlain(record, *model, truth);
    }
    return truth;
}

} // namespace zov::curve
