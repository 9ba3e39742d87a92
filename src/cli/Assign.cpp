// SPDX-License-Identifier: Apache-2.0
#include "assign/DesignFile.h"
#include "base/Text.h"
#include "cli/AssignReport.h"
#include "cli/Commands.h"
#include "cli/LibrarySets.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(DESIGN is a component list (.csv, .xlsx, .xls) or a KiCad netlist (.net). Each component is looked up library by
library, the project library first, and in each by the keys in order: an exact hit, else a partial one, else
the same with its legalised name. Components that a map file (--map-in) gives a model keep it.

Examples:
  zov assign board.csv --project board.zov --external caps.zov --map-out board_map.csv
  zov assign board.net --set board.zovp --why --fail-on unassigned,ambiguous)";

struct SOptions
{
    std::string design;
    std::string sheet;
    std::string component;
    std::string project;
    std::string set;
    std::vector<std::string> externals;
    std::string keys;
    std::string mapIn;
    std::string mapOut;
    std::string compare;
    std::vector<std::string> failOn = {"unassigned", "changed"};
    bool noMapping = false;
    bool why = false;
    bool json = false;
};

/// "part,name": the search keys in that order, the others off.
CResult<CSearchOptions> ReadKeys(const std::string& text)
{
    constexpr std::array<std::pair<std::string_view, EPropId>, 3> kNames = {
        {{"keyword", EPropId::Lookup},
         {"name", EPropId::ModelName},
         {"part", EPropId::MfgPartNumber}}};
    if (text.empty()) {
        return CSearchOptions();
    }
    std::vector<EPropId> keys;
    for (const std::string_view one : Split(text, ',')) {
        const auto found = std::ranges::find_if(
            kNames, [&](const auto& name) { return EqualsNoCase(name.first, Trim(one)); });
        if (found == kNames.end() || std::ranges::find(keys, found->second) != keys.end()) {
            return Fail(EErr::Argument, "--keys: '" + std::string(one) +
                                            "' is none of keyword, name, part, or stands twice");
        }
        keys.push_back(found->second);
    }
    return CSearchOptions::InOrder(keys);
}

class CStreamDiag final : public CDiagSink
{
public:
    explicit CStreamDiag(const SStreams& streams)
        : m_streams(streams)
    {
    }
    void Report(const SDiag& diag) override
    {
        Print(m_streams.err, "{}:{}: {}\n", diag.pos.file, diag.pos.line, diag.text);
        m_any = m_any || diag.severity != ESeverity::Note;
    }
    /// Something was left out.
    [[nodiscard]] bool Any() const { return m_any; }

private:
    const SStreams& m_streams;
    bool m_any = false;
};

CResult<void> OpenLibraries(const SOptions& options, CLibrarySet& set, CLogSink& log)
{
    if (!options.set.empty()) {
        RETURN_IF_ERROR(OpenSet(set, options.set, log));
    }
    if (!options.project.empty()) {
        RETURN_IF_ERROR(OpenSet(set, options.project, log));
    }
    for (const std::string& external : options.externals) {
        ASSIGN_OR_RETURN(const EOpened added, set.AddExternal(TextPath(external), log));
        if (added != EOpened::Opened) {
            return Fail(EErr::NotFound, "'" + external + "' is not there, or no library");
        }
    }
    return {};
}

CResult<CZovMapFile> LoadMap(const std::string& path)
{
    CZovMapFile map;
    if (const TDataSetResult failed = map.Load(TextPath(path))) {
        return Fail(EErr::Io, failed->caption + ": " + failed->Message());
    }
    return map;
}

bool Fails(const SOptions& options, std::string_view what)
{
    return std::ranges::find(options.failOn, what) != options.failOn.end();
}

/// The whole job; what was found goes into the report.
CResult<SAssignReport> Run(const SOptions& options, const SStreams& streams)
{
    SAssignReport report;
    CSetLog log(streams);
    CStreamDiag diag(streams);
    ASSIGN_OR_RETURN(report.options, ReadKeys(options.keys));
    ASSIGN_OR_RETURN(SDesignFile file, ReadDesignFile(TextPath(options.design),
                                                      {options.sheet, options.component}, diag));
    RETURN_IF_ERROR(OpenLibraries(options, *report.set, log));
    report.design = options.design;
    report.form = file.form;
    report.columns = file.columns;
    report.table = std::make_unique<CAssignTable>(file.design, *report.set, *report.search);
    CAssignTable& table = *report.table;
    if (!options.mapIn.empty()) {
        ASSIGN_OR_RETURN(const CZovMapFile map, LoadMap(options.mapIn));
        report.imported = ImportAssignments(map, table, *report.set);
    }
    report.found.resize(table.Rows().size());
    if (!options.noMapping) {
        report.found = table.AutoMap(report.options);
    }
    table.RefreshStatus();
    const CZovMapFile map = ExportAssignments(table, *report.set);
    if (!options.compare.empty()) {
        ASSIGN_OR_RETURN(const CZovMapFile before, LoadMap(options.compare));
        report.changes = CompareMaps(before, map);
    }
    if (!options.mapOut.empty()) {
        if (const TDataSetResult failed = map.Save(TextPath(options.mapOut))) {
            return Fail(EErr::Io, failed->caption + ": " + failed->Message());
        }
    }
    report.inPart = log.Skipped() || diag.Any();
    return report;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    if (const auto keys = ReadKeys(options.keys); !keys) {
        PrintError(streams, keys.Error());
        return kExitUsage;
    }
    CResult<SAssignReport> report = Run(options, streams);
    if (!report) {
        PrintError(streams, report.Error());
        return kExitFile;
    }
    const SAssignCounts counts = CountRows(*report);
    if (options.json) {
        PrintAssignJson(*report, counts, options.why, streams);
    } else {
        PrintAssignText(*report, counts, options.why, streams);
    }
    const bool failed = (counts.notFound != 0 && Fails(options, "unassigned")) ||
                        (counts.ambiguous != 0 && Fails(options, "ambiguous")) ||
                        (report->changes && !report->changes->empty() && Fails(options, "changed"));
    return StatusOf(failed ? kExitNotRight : kExitGood, report->inPart);
}

} // namespace

void AddAssign(CLI::App& zov, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        zov.add_subcommand("assign", "Give each component of a design its model; map files");
    command->footer(kFooter);
    const auto path = [&](const char* name, std::string& value, const char* help) {
        command->add_option(name, value, help)->type_name("FILE");
    };
    command->add_option("DESIGN", options->design, "Component list or netlist")
        ->required()
        ->type_name("");
    path("--project", options->project, "Project library, or its folder");
    path("--set", options->set, "Preference file (.zovp) or set configuration (.json) to open");
    command->add_option("--external", options->externals, "External library; may be repeated")
        ->type_name("FILE");
    command
        ->add_option("--keys", options->keys,
                     "What models are looked up by, in this order: keyword,name,part if not given")
        ->type_name("KEYS");
    path("--map-in", options->mapIn, "Map file whose assignments are taken over first");
    path("--map-out", options->mapOut, "Map file to write");
    path("--compare", options->compare, "Map file of an earlier day; tell what changed");
    command->add_option("--sheet", options->sheet, "Sheet of a workbook")->type_name("NAME");
    command
        ->add_option("--component", options->component,
                     "Title of the column that names components; a usual one if not given")
        ->type_name("TITLE");
    command->add_flag("--no-mapping", options->noMapping,
                      "Only what --map-in gives; no automatic mapping");
    command->add_flag("--why", options->why,
                      "Tell for each component how its model was found and why others lost");
    command
        ->add_option("--fail-on", options->failOn,
                     "When the exit status is 1, separated by commas: unassigned,changed if not "
                     "given")
        ->delimiter(',')
        ->check(CLI::IsMember({"unassigned", "ambiguous", "changed", "never"}).description(""))
        ->type_name("unassigned|ambiguous|changed|never");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
