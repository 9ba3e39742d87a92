// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Commands.h"
#include "cli/Reporting.h"
#include "core/LibraryFiles.h"
#include "core/RecordFiles.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(An exchange file holds numbers with six digits and no quotes, ampersands or angle brackets; what it
cannot hold is told on standard error. Relative file names are rewritten when OUT is in another
folder than IN, so that they lead to the same files.

Examples:
  zov lib convert caps.zov caps.zovx --units C=pF
  zov lib convert vendor.xml vendor.zov)";

struct SOptions
{
    std::string in;
    std::string out;
    std::string units;
    bool dryRun = false;
    bool json = false;
};

bool IsWritten(const std::string& file)
{
    const ELibraryForm form = FormOf(TextPath(file));
    return form == ELibraryForm::Native || form == ELibraryForm::Exchange;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CDisplayUnits units;
    if (!options.units.empty()) {
        if (const auto read = ReadUnits(options.units, units); !read) {
            PrintError(streams, read.Error());
            return kExitUsage;
        }
    }
    if (!IsWritten(options.out)) {
        Print(streams.err, "zov: OUT is '{}', expected a name that ends in .zov or .zovx\n",
              options.out);
        return kExitUsage;
    }
    std::optional<SLoaded> loaded = Load(options.in, streams);
    if (!loaded) {
        return kExitFile;
    }
    CFileRebaser rebaser(FolderOf(options.in), FolderOf(options.out));
    for (CZovRcdProps* record : loaded->library.Records()) {
        rebaser.Rebase(*record);
    }
    if (!options.dryRun && !Save(loaded->library, options.out, units, streams)) {
        return kExitFile;
    }
    const std::size_t count = loaded->library.Count();
    if (options.json) {
        PrintJson(streams, {{"version", kJsonVersion},
                            {"in", options.in},
                            {"out", options.out},
                            {"records", count},
                            {"fileNamesRewritten", rebaser.Count()},
                            {"complete", !loaded->inPart},
                            {"written", !options.dryRun}});
    } else {
        Print(streams.out, "{} {} to {}\n", Counted(count, "record"),
              options.dryRun ? "would be written" : "written", options.out);
        if (rebaser.Count() != 0) {
            Print(streams.out, "{} rewritten for its folder\n",
                  Counted(rebaser.Count(), "file name"));
        }
    }
    return StatusOf(kExitGood, loaded->inPart);
}

} // namespace

void AddLibConvert(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = lib.add_subcommand(
        "convert", "Any readable form to .zov or .zovx; OUT's extension decides");
    command->footer(kFooter);
    command->add_option("IN", options->in, "Library: .zov, .zovx, .xml or .sp")
        ->required()
        ->type_name("");
    command->add_option("OUT", options->out, "File to write: .zov or .zovx")
        ->required()
        ->type_name("");
    command->add_option("--units", options->units, kUnitsHelp)->type_name("UNITS");
    command->add_flag("--dry-run", options->dryRun, "Read and report, write nothing");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
