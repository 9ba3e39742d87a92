// SPDX-License-Identifier: Apache-2.0
#include "cli/Commands.h"
#include "cli/LibraryDoctor.h"
#include "cli/Reporting.h"
#include "core/RecordFiles.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Rules: missing-file, incomplete, duplicate (errors); moved-file, wrong-case, absolute-path (warnings);
exchange-text (notes: fine in .zov, not in .zovx). The status is 1 when there is an error or a
warning. Nothing is changed.

Examples:
  zov lib doctor board.zov
  zov lib doctor board.zov --json)";

struct SOptions
{
    std::string file;
    bool json = false;
};

constexpr std::array<std::string_view, 3> kGradeWords = {"error", "warning", "note"};

std::string_view WordOf(EGrade grade)
{
    return kGradeWords[static_cast<std::size_t>(grade)];
}

std::size_t CountOf(const std::vector<SFinding>& findings, EGrade grade)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(findings, [grade](const auto& f) { return f.grade == grade; }));
}

void PrintText(const SOptions& options, const std::vector<SFinding>& findings, std::size_t records,
               const SStreams& streams)
{
    for (const SFinding& finding : findings) {
        Print(streams.out, "{}: ", WordOf(finding.grade));
        if (finding.record != nullptr) {
            Print(streams.out, "{} '{}': ", InfoOf(finding.record->Type()).element,
                  OneLine(finding.record->Name()));
        }
        Print(streams.out, "{} [{}]\n", OneLine(finding.text), finding.rule);
    }
    Print(streams.out, "{}: {}, {}, {}, {}\n", options.file, Counted(records, "record"),
          Counted(CountOf(findings, EGrade::Error), "error"),
          Counted(CountOf(findings, EGrade::Warning), "warning"),
          Counted(CountOf(findings, EGrade::Note), "note"));
}

void PrintFindingsJson(const SOptions& options, const std::vector<SFinding>& findings,
                       std::size_t records, const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion},
                      {"file", options.file},
                      {"records", records},
                      {"errors", CountOf(findings, EGrade::Error)},
                      {"warnings", CountOf(findings, EGrade::Warning)},
                      {"notes", CountOf(findings, EGrade::Note)},
                      {"findings", TJson::array()}};
    for (const SFinding& finding : findings) {
        TJson item = {{"severity", WordOf(finding.grade)}, {"rule", finding.rule}};
        if (finding.record != nullptr) {
            item["type"] = InfoOf(finding.record->Type()).element;
            item["name"] = finding.record->Name();
        }
        item["text"] = finding.text;
        document["findings"].push_back(std::move(item));
    }
    PrintJson(streams, document);
}

/// The import tells of files that it can't locate; the findings tell more about each.
bool IsAboutFiles(std::string_view text)
{
    return text.find("Cannot locate file") != std::string_view::npos;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const std::optional<SLoaded> loaded = Load(options.file, streams, IsAboutFiles);
    if (!loaded) {
        return kExitFile;
    }
    const CZovLibrary& library = loaded->library;
    const std::vector<SFinding> findings = ExamineLibrary(library, FolderOf(options.file));
    if (options.json) {
        PrintFindingsJson(options, findings, library.Count(), streams);
    } else {
        PrintText(options, findings, library.Count(), streams);
    }
    const bool good = CountOf(findings, EGrade::Note) == findings.size();
    return StatusOf(good ? kExitGood : kExitNotRight, loaded->inPart);
}

} // namespace

void AddLibDoctor(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = lib.add_subcommand(
        "doctor", "Missing files, duplicates, incomplete records, texts that can't be exported");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "Library")->required()->type_name("");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
