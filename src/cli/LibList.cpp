// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "core/RecordQuery.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Columns: type, name, manufacturer, part number, size (capacitors), values or files. The JSON document
holds every property; its numbers are in SI units whatever --units says.

Examples:
  zov lib list caps.zov --units C=uF,R=Ohm --find 'x7r Cnom 90nF..110nF volt>=16'
  zov lib list board.zov --type IC --json)";

struct SOptions
{
    std::string file;
    std::string type;
    std::string match;
    std::string find;
    std::string units;
    bool json = false;
};

std::string DefinitionOf(const CZovRcdProps& record, const CDisplayUnits& units)
{
    const auto model = record.GetDiscreteModel();
    std::string text = SummaryOf(record, units);
    if (model && model->isCircuit) {
        text = IsCircuitText(model->cktDef) ? "circuit in the library" : "circuit " + model->cktDef;
    }
    if (record.Has(EPropId::Cnom)) {
        text = SearchSummaryOf(record, units) + ' ' + text;
    }
    return text;
}

std::string DefinitionOf(const SCircuitRef* circuit)
{
    if (circuit == nullptr) {
        return {};
    }
    return circuit->model + (circuit->file.empty() ? " in the library" : " " + circuit->file);
}

/// Values of a discrete, circuit of a circuit record, names of the sub-models of an IC.
std::string DetailsOf(const CZovRcdProps& record, const CDisplayUnits& units)
{
    if (IsDiscrete(record.Type())) {
        return DefinitionOf(record, units);
    }
    if (record.Has(EPropId::Circuit)) {
        return DefinitionOf(record.GetComposite<SCircuitRef>());
    }
    std::string text;
    for (const SPropInfo& info : Properties()) {
        if (info.kind == EPropKind::Composite && record.Has(info.id)) {
            text += text.empty() ? "" : " ";
            text += info.name;
        }
    }
    return text;
}

constexpr std::size_t kColumns = 5; ///< all but the last, which needs no padding
using TColumns = std::array<std::string, kColumns>;

TColumns ColumnsOf(const CZovRcdProps& record)
{
    return {std::string(InfoOf(record.Type()).element), OneLine(record.Name()),
            OneLine(record.GetString(EPropId::Manuf)),
            OneLine(record.GetString(EPropId::MfgPartNumber)),
            OneLine(record.GetString(EPropId::Size))};
}

void PrintTable(const std::vector<const CZovRcdProps*>& records, const CDisplayUnits& units,
                const SStreams& streams)
{
    std::array<std::size_t, kColumns> widths{};
    for (const CZovRcdProps* record : records) {
        const TColumns columns = ColumnsOf(*record);
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], WidthOf(columns[i]));
        }
    }
    std::string line;
    for (const CZovRcdProps* record : records) {
        if (!streams.out.Ok()) {
            return;
        }
        line.clear();
        const TColumns columns = ColumnsOf(*record);
        for (std::size_t i = 0; i < kColumns; ++i) {
            if (widths[i] != 0) {
                line += columns[i];
                line.append(widths[i] - WidthOf(columns[i]) + 2, ' ');
            }
        }
        line += OneLine(DetailsOf(*record, units));
        line.erase(line.find_last_not_of(' ') + 1);
        line += '\n';
        streams.out.Write(line);
    }
}

/// One record a line; a document of a million records is not built in memory first.
void PrintRecordsJson(const std::string& file, const std::vector<const CZovRcdProps*>& records,
                      const SStreams& streams)
{
    Print(streams.out, "{{\"version\":{},\"file\":{},\"records\":[", kJsonVersion,
          TJson(file).dump(-1, ' ', false, TJson::error_handler_t::replace));
    std::string_view separator = "\n";
    for (const CZovRcdProps* record : records) {
        if (!streams.out.Ok()) {
            return;
        }
        const TJson item = {{"type", InfoOf(record->Type()).element},
                            {"properties", PropertiesJson(*record)}};
        streams.out.Write(separator);
        streams.out.Write(item.dump(-1, ' ', false, TJson::error_handler_t::replace));
        separator = ",\n";
    }
    streams.out.Write("\n]}\n");
}

bool Matches(const CZovRcdProps& record, const std::string& pattern)
{
    return pattern.empty() || WildcardMatch(pattern, record.Name()) ||
           WildcardMatch(pattern, record.GetString(EPropId::MfgPartNumber));
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CDisplayUnits units;
    ERecordType type = ERecordType::Any;
    if (!options.units.empty()) {
        if (const auto read = ReadUnits(options.units, units); !read) {
            PrintError(streams, read.Error());
            return kExitUsage;
        }
    }
    if (!options.type.empty()) {
        const CResult<ERecordType> read = ReadRecordType(options.type);
        if (!read) {
            PrintError(streams, read.Error());
            return kExitUsage;
        }
        type = *read;
    }
    const CResult<CRecordQuery> query = CRecordQuery::Parse(options.find);
    if (!query) {
        PrintError(streams, query.Error());
        return kExitUsage;
    }
    const std::optional<SLoaded> loaded = Load(options.file, streams);
    if (!loaded) {
        return kExitFile;
    }
    std::vector<const CZovRcdProps*> records;
    for (const CZovRcdProps* record : loaded->library.Records()) {
        if ((type == ERecordType::Any || record->Type() == type) &&
            Matches(*record, options.match) && query->Matches(*record)) {
            records.push_back(record);
        }
    }
    if (options.json) {
        PrintRecordsJson(options.file, records, streams);
    } else {
        PrintTable(records, units, streams);
    }
    return StatusOf(kExitGood, loaded->inPart);
}

} // namespace

void AddLibList(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = lib.add_subcommand("list", "One record a line, with its values");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "Library")->required()->type_name("");
    command
        ->add_option("--type", options->type,
                     "Only records of this type: IC, Capacitor, Inductor, Resistor, VRM, "
                     "Connector, Package, SPICE")
        ->type_name("T");
    command
        ->add_option("--match", options->match,
                     "Only records whose name or part number matches; * is any text, ? any "
                     "character, case does not count")
        ->type_name("PATTERN");
    command
        ->add_option("--find", options->find,
                     "Only records for which all of these hold: words in any text, maker:mur, "
                     "size=0402*, 'Cnom 90nF..110nF', volt>=16, type:cap, is:incomplete, "
                     "-word for not")
        ->type_name("QUERY");
    command->add_option("--units", options->units, kUnitsHelp)->type_name("UNITS");
    command->add_flag("--json", options->json, "Every property as JSON, one record a line");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
