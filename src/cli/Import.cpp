// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "batch/ImportJob.h"
#include "cli/Commands.h"
#include "cli/ImportPrint.h"
#include "core/LibraryFiles.h"

#include <CLI/CLI.hpp>
#include <array>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"~(Without --map the usual titles are recognised ("Part Number", "MPN", "Cnom(nF)", "Rated Voltage", ...) and a
unit in a title's brackets counts. Cells may carry units of their own ("4u7", "100 nF", "10%").
LIB is added to, or made when it is not there. The status is 4 when some rows failed, 1 when no row
gave a model.

Examples:
  zov import caps.xlsx --type capacitor --into caps.zov --const 'Model Type=RLC' --assume-ideal --dry-run
  zov import list.xls --type resistor --into all.zov --map columns.txt --sheet Stock --header-row 3 --r-unit Ohm)~";

struct SOptions
{
    std::string sheetFile;
    std::string type;
    std::string into;
    std::string map;
    std::string sheet;
    std::uint32_t headerRow = 0;
    std::vector<std::string> constants;
    bool assumeIdeal = false;
    std::string vendor;
    std::string onDuplicate = "keep";
    std::string onRepeat = "keep";
    std::string sizeUnit;
    std::string node;
    batch::CPerField<std::string> units;
    bool allRows = false;
    bool dryRun = false;
    bool json = false;
};

struct SUnitOption
{
    const char* name;
    batch::EField field;
    const char* help;
};
constexpr std::array<SUnitOption, 5> kUnitOptions = {{
    {"--cnom-unit", batch::EField::Cnom, "Unit of the nominal capacitance, such as nF"},
    {"--c-unit", batch::EField::Cact, "Unit of the actual capacitance"},
    {"--r-unit", batch::EField::Resistance, "Unit of the resistance, such as mOhm"},
    {"--l-unit", batch::EField::Inductance, "Unit of the inductance, such as nH"},
    {"--current-unit", batch::EField::MaxCurrent, "Unit of the current, such as mA"},
}};

CResult<ERecordType> TypeOf(const std::string& word)
{
    const CResult<ERecordType> type = ReadRecordType(word);
    if (!type || !IsDiscrete(*type)) {
        return Fail(EErr::Argument,
                    fmt::format("--type is '{}', expected capacitor, inductor or resistor", word));
    }
    return *type;
}

CResult<void> ReadConstant(const std::string& text, batch::SMappingRequest& mapping)
{
    const std::size_t equals = text.find('=');
    const std::string_view name = std::string_view(text).substr(0, equals);
    const auto field = batch::FindField(name);
    if (equals == std::string::npos || !field || !IsFieldOf(*field, mapping.type)) {
        return Fail(
            EErr::Argument,
            fmt::format("--const is '{}', expected PROPERTY=VALUE with a property out of {}", text,
                        batch::FieldList(mapping.type)));
    }
    mapping.constants[*field] = text.substr(equals + 1);
    return {};
}

CResult<batch::SGenerateOptions> GenerateOptionsOf(const SOptions& options)
{
    batch::SGenerateOptions out;
    ASSIGN_OR_RETURN(out.mapping.type, TypeOf(options.type));
    for (const std::string& text : options.constants) {
        RETURN_IF_ERROR(ReadConstant(text, out.mapping));
    }
    for (const SUnitOption& unit : kUnitOptions) {
        const std::string& name = options.units[unit.field];
        if (!name.empty() && !FindUnit(InfoOf(unit.field).quantity, name) &&
            !EqualsNoCase(name, batch::kFromFile)) {
            return Fail(EErr::Argument, fmt::format("{} is '{}', which is no unit of {}", unit.name,
                                                    name, InfoOf(unit.field).label));
        }
    }
    out.mapping.units = options.units;
    if (!options.sizeUnit.empty()) {
        out.sizeSystem = *batch::FindSizeSystem(options.sizeUnit);
    }
    if (!options.node.empty()) {
        out.node = *batch::FindNodeAssignment(options.node);
    }
    out.headerRow = options.headerRow;
    out.assumeIdeal = options.assumeIdeal;
    out.sheetDuplicate = options.onRepeat == "suffix"    ? batch::ESheetDuplicate::AddSuffix
                         : options.onRepeat == "replace" ? batch::ESheetDuplicate::ReplaceWithNew
                                                         : batch::ESheetDuplicate::KeepTheFirst;
    out.libraryDuplicate = options.onDuplicate == "replace"
                               ? batch::ELibraryDuplicate::ReplaceWithNew
                               : batch::ELibraryDuplicate::KeepTheFirst;
    out.vendorLibrary = TextPath(options.vendor);
    out.source = TextPath(options.sheetFile);
    out.destination = TextPath(options.into);
    return out;
}

/// What the report does not hold: records of LIB and vendor files that could not be read.
class CImportLog final : public CLogSink
{
public:
    explicit CImportLog(const SStreams& streams)
        : m_log(streams)
    {
    }
    void Write(std::string_view text) override
    {
        if (text.starts_with("[Error]") || text.find("load failed") != std::string_view::npos) {
            m_log.Write(text);
        }
    }

private:
    CStreamLog m_log;
};

/// Opens, reads, generates and saves. Errors are for the caller to print.
CResult<void> RunJob(const SOptions& options, batch::SGenerateOptions generate,
                     batch::SImportReport& report, const SStreams& streams)
{
    CImportLog log(streams);
    if (!options.map.empty()) {
        ASSIGN_OR_RETURN(generate.mapping.mapping,
                         batch::ReadColumnMapping(TextPath(options.map), log));
    }
    ASSIGN_OR_RETURN(const auto book, batch::OpenSource(generate.source, log));
    if (!options.sheet.empty()) {
        RETURN_IF_ERROR(batch::SelectSource(*book, options.sheet, log));
    }
    ASSIGN_OR_RETURN(CZovLibrary library, batch::LoadDestination(generate.destination, log));
    RETURN_IF_ERROR(batch::GenerateModels(*book, generate, library, log, &report));
    if (!options.dryRun && report.counts.Imported() != 0) {
        RETURN_IF_ERROR(batch::SaveDestination(library, generate.destination, log));
        report.saved = true;
    }
    return {};
}

int StatusOf(const batch::SImportCounts& counts)
{
    const std::size_t usable = counts.rows - counts.failed;
    if (usable == 0) {
        return kExitNotRight;
    }
    return counts.failed == 0 ? kExitGood : kExitInPart;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CResult<batch::SGenerateOptions> generate = GenerateOptionsOf(options);
    if (!generate) {
        PrintError(streams, generate.Error());
        return kExitUsage;
    }
    const ELibraryForm form = FormOf(TextPath(options.into));
    if (form != ELibraryForm::Native && form != ELibraryForm::Exchange) {
        Print(streams.err, "zov: --into is '{}', expected a name that ends in .zov or .zovx\n",
              options.into);
        return kExitUsage;
    }
    batch::SImportReport report;
    const CResult<void> done = RunJob(options, generate.Take(), report, streams);
    if (!done) {
        PrintError(streams, done.Error());
        return kExitFile;
    }
    if (options.json) {
        PrintImportJson(report, options.dryRun, streams);
    } else {
        PrintImport(report, options.allRows, options.dryRun, streams);
    }
    return StatusOf(report.counts);
}

void AddPolicyOptions(CLI::App& command, SOptions& options)
{
    command
        .add_option("--on-duplicate", options.onDuplicate,
                    "Model that LIB has already: keep it (unless given) or replace it")
        ->check(CLI::IsMember({"keep", "replace"}).description(""))
        ->type_name("keep|replace");
    command
        .add_option("--on-repeat", options.onRepeat,
                    "Name that an earlier row has: keep the first (unless given), replace it, or "
                    "tell them apart by a suffix")
        ->check(CLI::IsMember({"keep", "replace", "suffix"}).description(""))
        ->type_name("keep|replace|suffix");
    command.add_flag("--assume-ideal", options.assumeIdeal,
                     "Take values that a row lacks as ideal: R and L of a capacitor 0, its actual "
                     "capacitance the nominal one, R of an inductor 0");
    command
        .add_option("--vendor", options.vendor,
                    "Vendor decap library (.xml), list of them (.txt) or the folder of that "
                    "list; completes capacitors by maker and part number")
        ->type_name("FILE");
}

void AddUnitOptions(CLI::App& command, SOptions& options)
{
    for (const SUnitOption& unit : kUnitOptions) {
        command.add_option(unit.name, options.units[unit.field], unit.help)->type_name("UNIT");
    }
    command
        .add_option("--size-unit", options.sizeUnit,
                    "System of the size codes: English (inch), Metric, or From File, the letter "
                    "in the cell (unless given)")
        ->check(CLI::IsMember({"English", "Metric", "From File"}, CLI::ignore_case).description(""))
        ->type_name("SYSTEM");
    command
        .add_option("--node", options.node,
                    "How two-port files are wired: Series (unless given) or Shunt")
        ->check(CLI::IsMember({"Series", "Shunt"}, CLI::ignore_case).description(""))
        ->type_name("Series|Shunt");
}

} // namespace

void AddImport(CLI::App& zov, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        zov.add_subcommand("import", "Make library models of the rows of a part list");
    command->footer(kFooter);
    command->add_option("SHEET", options->sheetFile, "Part list: .xlsx, .xls, .csv")
        ->required()
        ->type_name("");
    command->add_option("--type", options->type, "capacitor, inductor or resistor")
        ->type_name("T")
        ->required();
    command->add_option("--into", options->into, "Library that grows: .zov or .zovx")
        ->required()
        ->type_name("LIB");
    command
        ->add_option("--map", options->map, "Column-mapping file: lines of PROPERTY,COLUMN TITLE")
        ->type_name("FILE");
    command->add_option("--sheet", options->sheet, "Sheet; the first visible one if not given")
        ->type_name("NAME");
    command
        ->add_option("--header-row", options->headerRow,
                     "Row of the column titles, counted from 1; found if not given")
        ->type_name("N");
    command
        ->add_option("--const", options->constants,
                     "PROPERTY=VALUE for every row, such as 'Model Type=RLC'; may be repeated")
        ->type_name("PROPERTY=VALUE")
        ->allow_extra_args(false);
    AddUnitOptions(*command, *options);
    AddPolicyOptions(*command, *options);
    command->add_flag("--all-rows", options->allRows,
                      "List every row, not only those with something to tell");
    command->add_flag("--dry-run", options->dryRun, "Report what would be done, write nothing");
    command->add_flag("--json", options->json, "Report as JSON, every row");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
