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
    R"(Records are the same when type and name are, without regard to case. DEST is made when it is not
there. Relative file names are rewritten when a library comes from another folder.

Examples:
  zov lib merge all.zov caps.zov inductors.zov
  zov lib merge project.zov update.zov --on-duplicate replace --dry-run)";

struct SOptions
{
    std::string dest;
    std::vector<std::string> inputs;
    bool replace = false;
    bool dryRun = false;
    bool json = false;
};

struct SCounts
{
    std::size_t added = 0;
    std::size_t replaced = 0;
    std::size_t kept = 0; ///< duplicates whose record in DEST stays as it is
};

/// Puts every record of `source`, which the caller has no use for any more, into `dest`.
SCounts MergeInto(CZovLibrary& dest, CZovLibrary& source, bool replace, CFileRebaser& rebaser)
{
    SCounts counts;
    for (CZovRcdProps* record : source.Records()) {
        CZovRcdProps* present = dest.Find(record->Type(), record->Name());
        if (present != nullptr && !replace) {
            ++counts.kept;
            continue;
        }
        rebaser.Rebase(*record);
        if (present != nullptr) {
            dest.Replace(*present, *record);
            ++counts.replaced;
        } else {
            dest.AddCopy(*record);
            ++counts.added;
        }
    }
    return counts;
}

struct SMerged
{
    std::string file;
    SCounts counts;
    std::size_t fileNames = 0;
};

void PrintReport(const SOptions& options, const std::vector<SMerged>& merged, std::size_t total,
                 const SStreams& streams)
{
    if (options.json) {
        TJson inputs = TJson::array();
        for (const SMerged& one : merged) {
            inputs.push_back({{"file", one.file},
                              {"added", one.counts.added},
                              {"replaced", one.counts.replaced},
                              {"kept", one.counts.kept},
                              {"fileNamesRewritten", one.fileNames}});
        }
        PrintJson(streams, {{"version", kJsonVersion},
                            {"dest", options.dest},
                            {"inputs", inputs},
                            {"records", total},
                            {"written", !options.dryRun}});
        return;
    }
    for (const SMerged& one : merged) {
        Print(streams.out, "{}: {} added, {} replaced, {} already there and kept", one.file,
              one.counts.added, one.counts.replaced, one.counts.kept);
        if (one.fileNames != 0) {
            Print(streams.out, ", {} rewritten", Counted(one.fileNames, "file name"));
        }
        streams.out.Write("\n");
    }
    Print(streams.out, "{} {} {}\n", options.dest, options.dryRun ? "would hold" : "holds",
          Counted(total, "record"));
}

/// DEST as it is, or an empty library when there is none.
std::optional<SLoaded> LoadDest(const std::string& file, const SStreams& streams)
{
    std::error_code unknown;
    if (std::filesystem::exists(TextPath(file), unknown)) {
        return Load(file, streams);
    }
    return SLoaded{};
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const ELibraryForm form = FormOf(TextPath(options.dest));
    if (form != ELibraryForm::Native && form != ELibraryForm::Exchange) {
        Print(streams.err, "zov: DEST is '{}', expected a name that ends in .zov or .zovx\n",
              options.dest);
        return kExitUsage;
    }
    std::optional<SLoaded> dest = LoadDest(options.dest, streams);
    if (!dest) {
        return kExitFile;
    }
    if (dest->inPart) {
        // Saving would lose the records that could not be read.
        Print(streams.err, "zov: '{}' is left as it is: not all of its records can be read\n",
              options.dest);
        return kExitFile;
    }
    std::vector<SMerged> merged;
    bool inPart = false;
    for (const std::string& file : options.inputs) {
        std::optional<SLoaded> source = Load(file, streams);
        if (!source) {
            Print(streams.err, "zov: nothing was merged\n");
            return kExitFile;
        }
        inPart = inPart || source->inPart;
        CFileRebaser rebaser(FolderOf(file), FolderOf(options.dest));
        const SCounts counts = MergeInto(dest->library, source->library, options.replace, rebaser);
        merged.push_back({file, counts, rebaser.Count()});
    }
    if (!options.dryRun && !Save(dest->library, options.dest, {}, streams)) {
        return kExitFile;
    }
    PrintReport(options, merged, dest->library.Count(), streams);
    return StatusOf(kExitGood, inPart);
}

} // namespace

void AddLibMerge(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    auto onDuplicate = std::make_shared<std::string>("keep");
    CLI::App* command = lib.add_subcommand("merge", "Put the records of libraries into one");
    command->footer(kFooter);
    command->add_option("DEST", options->dest, "Library that grows: .zov or .zovx")
        ->required()
        ->type_name("");
    command->add_option("IN", options->inputs, "Libraries to take records from")
        ->required()
        ->type_name("");
    command
        ->add_option("--on-duplicate", *onDuplicate,
                     "Record that DEST has already: keep it (unless given) or replace it")
        ->check(CLI::IsMember({"keep", "replace"}).description(""))
        ->type_name("keep|replace");
    command->add_flag("--dry-run", options->dryRun, "Report what would be done, write nothing");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, onDuplicate, &chosen] {
        options->replace = *onDuplicate == "replace";
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
