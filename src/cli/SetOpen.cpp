// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/LibrarySets.h"
#include "cli/Reporting.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(FILE is a preference file (.zovp), a set configuration (.json), a library, or a project folder.
External libraries that can't be opened are told and left out; the exit status is then 4.

Examples:
  zov set open board/board.zovp
  zov set open approved.json --json)";

struct SOptions
{
    std::string file;
    std::string saveAs;
    bool json = false;
};

TJson ToJson(const SLibraryEntry& entry)
{
    return {{"name", entry.DisplayName()},
            {"path", PathText(entry.path)},
            {"project", entry.project},
            {"on", entry.on},
            {"records", entry.library->Count()}};
}

void PrintSet(const SOptions& options, const CLibrarySet& set, const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion}, {"file", options.file}};
    TJson& libraries = document["libraries"] = TJson::array();
    for (const SLibraryEntry* entry : set.Entries()) {
        libraries.push_back(ToJson(*entry));
        if (!options.json) {
            Print(streams.out, "{:<8}  {:<3}  {}  {}\n", entry->project ? "project" : "external",
                  entry->on ? "on" : "off", entry->Listed(),
                  Counted(entry->library->Count(), "record"));
        }
    }
    if (options.json) {
        PrintJson(streams, document);
    }
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CLibrarySet set;
    CSetLog log(streams);
    if (const auto opened = OpenSet(set, options.file, log); !opened) {
        PrintError(streams, opened.Error());
        return kExitFile;
    }
    PrintSet(options, set, streams);
    if (!options.saveAs.empty()) {
        if (const auto saved = set.SavePreferences(TextPath(options.saveAs)); !saved) {
            PrintError(streams, saved.Error());
            return kExitFile;
        }
    }
    return StatusOf(kExitGood, log.Skipped());
}

} // namespace

CResult<void> OpenSet(CLibrarySet& set, const std::string& file, CLogSink& log)
{
    const std::filesystem::path path = TextPath(file);
    std::error_code unknown;
    if (EqualsNoCase(ExtensionOf(path), ".json")) {
        return set.LoadConfiguration(path, log);
    }
    const bool isFolder = std::filesystem::is_directory(path, unknown);
    ASSIGN_OR_RETURN(const EOpened opened,
                     isFolder ? set.OpenFolder(path, log) : set.Open(path, log));
    if (opened == EOpened::Opened) {
        return {};
    }
    if (opened == EOpened::Refused) {
        return Fail(EErr::Argument, "only one project library can be open");
    }
    return Fail(EErr::NotFound,
                "'" + file + "' is not there, or no library, preference file or configuration");
}

void CSetLog::Write(std::string_view text)
{
    if (text.starts_with('\'')) { // how many models were loaded: for windows
        return;
    }
    m_skipped =
        m_skipped || StartsWithNoCase(text, "[Error]") || StartsWithNoCase(text, "[WARNING] '");
    m_shown.Write(text);
}

void AddSetOpen(CLI::App& set, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = set.add_subcommand(
        "open", "The libraries that a preference file, a set configuration or a folder opens");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "What to open")->required()->type_name("");
    command
        ->add_option("--save-as", options->saveAs,
                     "Write a preference file (.zovp) of the external libraries")
        ->type_name("FILE");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
