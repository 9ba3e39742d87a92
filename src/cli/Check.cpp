// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "cli/CheckExplain.h"
#include "cli/CheckPrinter.h"
#include "cli/CheckWaivers.h"
#include "cli/Commands.h"
#include "cli/Reporting.h"
#include "ibischk/Catalogue.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Folders are searched for .ibs, .pkg, .ebd, .ami, .ims, .emd and .ems files with all below. The status is 1
when a file fails by --fail-on. A waiver file has lines "FILE CODE OBJECT REASON...", for example
  *.ibs W0921 * tabs come from the generator, harmless

Examples:
  zov check buffer.ibs --details
  zov check models --format sarif --waivers models/waivers.txt > check.sarif)";

using FMakePrinter = std::unique_ptr<CCheckPrinter> (*)(COutput&, const SCheckStyle&);

struct SOptions
{
    std::vector<std::string> paths;
    bool plain = false;
    bool listCodes = false;
    std::string explain;
    FMakePrinter makePrinter = &MakeTextPrinter;
    SCheckStyle style;
    std::string waivers;
    std::string baseline;
};

struct SAccepted
{
    std::vector<SWaiver> waivers;
    TBaseline baseline;
};

CResult<SAccepted> ReadAccepted(const SOptions& options)
{
    SAccepted accepted;
    if (!options.waivers.empty()) {
        CResult<std::vector<SWaiver>> waivers = ReadWaivers(options.waivers);
        if (!waivers) {
            return waivers.TakeError();
        }
        accepted.waivers = waivers.Take();
    }
    if (!options.baseline.empty()) {
        CResult<TBaseline> baseline = ReadBaseline(options.baseline);
        if (!baseline) {
            return baseline.TakeError();
        }
        accepted.baseline = baseline.Take();
    }
    return accepted;
}

/// All messages as a table in Markdown.
int ListCodes(const SStreams& streams)
{
    streams.out.Write("| code | severity | rule | message |\n|---|---|---|---|\n");
    for (const ibischk::SMessage& row : ibischk::Catalogue()) {
        Print(streams.out, "| {:04} | {} | {} | {} |\n", row.code, WordOf(row.severity),
              RuleOf(row.code), ReplaceAll(OneLine(Trim(row.text)), "|", "\\|"));
    }
    return kExitGood;
}

void TellUnused(const std::vector<SWaiver>& waivers, const SStreams& streams)
{
    for (const SWaiver& waiver : waivers) {
        if (!waiver.used) {
            Print(streams.err, "zov: {}: waives nothing\n", waiver.where);
        }
    }
}

/// Findings that are too many to be listed.
void TellUnlisted(const SCheckedFile& file, const SStreams& streams)
{
    const ibischk::SCounts& more = file.unlisted;
    if (more != ibischk::SCounts{}) {
        Print(streams.err, "zov: {}: {} more findings are counted, but not listed\n", file.path,
              std::uint64_t{more.bugs} + more.errors + more.warnings + more.cautions);
    }
}

bool Fails(const ibischk::SCounts& counts, EFailOn failOn)
{
    return failOn != EFailOn::Never &&
           (!counts.Passed() || (failOn == EFailOn::Warning && counts.warnings > 0));
}

int Execute(const SOptions& options, const SStreams& streams)
{
    if (options.listCodes) {
        return ListCodes(streams);
    }
    if (!options.explain.empty()) {
        return ExplainCode(options.explain, streams);
    }
    CResult<SAccepted> accepted = ReadAccepted(options);
    if (!accepted) {
        PrintError(streams, accepted.Error());
        return kExitFile;
    }
    const SFileList list = CollectFiles(options.paths);
    for (const std::string& problem : list.problems) {
        Print(streams.err, "zov: {}\n", problem);
    }
    const auto printer = options.makePrinter(streams.out, options.style);
    bool fails = false;
    std::size_t opened = 0;
    printer->Begin();
    for (const std::string& path : list.files) {
        SCheckedFile file =
            CheckOne(path, options.plain ? ibischk::EStyle::Plain : ibischk::EStyle::Numbered);
        ApplyWaivers(accepted->waivers, file);
        ApplyBaseline(accepted->baseline, file);
        printer->File(file);
        TellUnlisted(file, streams);
        opened += file.opened ? 1U : 0U;
        fails = fails || Fails(file.unlisted, options.style.failOn) ||
                (file.opened && std::ranges::any_of(file.findings, [&](const auto& f) {
                     return Fails(f, options.style.failOn);
                 }));
    }
    const bool complete = list.problems.empty() && opened == list.files.size();
    printer->End(complete);
    TellUnused(accepted->waivers, streams);
    if (opened == 0) {
        return kExitFile;
    }
    return StatusOf(fails ? kExitNotRight : kExitGood, !complete);
}

void AddPathOptions(CLI::App& command, SOptions& options)
{
    command.add_option("FILE", options.paths, "Files and folders")->type_name("");
    command
        .add_option("--waivers", options.waivers,
                    "Findings to live with, each with its reason; they are listed and don't count")
        ->type_name("FILE");
    command
        .add_option("--baseline", options.baseline,
                    "A former report (--format json); only findings that it lacks count")
        ->type_name("FILE");
}

void AddStyleOptions(CLI::App& command, SOptions& options)
{
    const std::map<std::string, FMakePrinter> formats = {{"text", &MakeTextPrinter},
                                                         {"gcc", &MakeGccPrinter},
                                                         {"json", &MakeJsonPrinter},
                                                         {"sarif", &MakeSarifPrinter},
                                                         {"junit", &MakeJunitPrinter}};
    const std::map<std::string, EFailOn> grades = {
        {"error", EFailOn::Error}, {"warning", EFailOn::Warning}, {"never", EFailOn::Never}};
    command.add_flag("--plain", options.plain, "Words instead of numbered messages in the text");
    command.add_flag("--details", options.style.details,
                     "What more is known of each finding, below it");
    command
        .add_option_function<std::string>(
            "--format",
            [formats, &options](const std::string& name) {
                options.makePrinter = formats.at(name);
            },
            "text, gcc, json, sarif or junit; text if not given")
        ->check(CLI::IsMember({"text", "gcc", "json", "sarif", "junit"}))
        ->type_name("FORM");
    command
        .add_option_function<std::string>(
            "--fail-on",
            [grades, &options](const std::string& name) { options.style.failOn = grades.at(name); },
            "error, warning or never: from what on the status is 1; error if not given")
        ->check(CLI::IsMember({"error", "warning", "never"}))
        ->type_name("GRADE");
    command.add_flag("--list-codes", options.listCodes, "Print the table of all messages and end");
    command
        .add_option("--explain", options.explain,
                    "Print what a message means, why it matters and what to do, and end")
        ->type_name("CODE");
}

} // namespace

bool Fails(const SCheckFinding& finding, EFailOn failOn)
{
    if (!finding.Counts() || failOn == EFailOn::Never) {
        return false;
    }
    return finding.severity == ibischk::EReport::Bug ||
           finding.severity == ibischk::EReport::Error ||
           (failOn == EFailOn::Warning && finding.severity == ibischk::EReport::Warning);
}

void AddCheck(CLI::App& zov, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = zov.add_subcommand("check", "What is wrong with IBIS files");
    command->footer(kFooter);
    AddPathOptions(*command, *options);
    AddStyleOptions(*command, *options);
    command->callback([options, &chosen] {
        if (options->paths.empty() && !options->listCodes && options->explain.empty()) {
            throw CLI::RequiredError("FILE");
        }
        options->style.baseline = !options->baseline.empty();
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
