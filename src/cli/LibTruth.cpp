// SPDX-License-Identifier: Apache-2.0
#include "cli/Commands.h"
#include "cli/Reporting.h"
#include "core/RecordFiles.h"
#include "curve/RecordTruth.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>

namespace zov::cli {

namespace {

using curve::ETruth;
using curve::SRecordTruth;

constexpr const char* kFooter =
    R"(What a record states (C, L, R, ESR, ESL, resonance) is compared with what its own model says: a
Touchstone file of one or two ports, or plain R, L and C. A factor of two differs, a power of ten
asks for the unit, a file that fits the other way asks for Series or Shunt; the status is 1 then.
What can't be judged is told with the reason. Nothing is changed.

Examples:
  zov lib truth capacitors.zov
  zov lib truth capacitors.zov --json)";

struct SOptions
{
    std::string file;
    std::string units;
    bool all = false;
    bool json = false;
};

struct SJudged
{
    const CZovRcdProps* record = nullptr;
    SRecordTruth truth;
};

constexpr std::array<ETruth, 5> kOrder = {ETruth::Agrees, ETruth::Differs, ETruth::AskUnit,
                                          ETruth::AskConnection, ETruth::Unjudged};

std::size_t CountOf(const std::vector<SJudged>& judged, ETruth verdict)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        judged, [verdict](const SJudged& one) { return one.truth.verdict == verdict; }));
}

std::string ValuesOf(const SRecordTruth& truth, const CDisplayUnits& units)
{
    std::string out;
    for (const curve::STruthItem& item : truth.items) {
        if (item.model) {
            out += fmt::format("{}{} {}", out.empty() ? "" : ", ", item.name,
                               FormatQuantity(*item.model, item.quantity, units));
        }
    }
    if (truth.connection && *truth.connection != network::EConnection::OnePort) {
        out += fmt::format(" ({})", network::WordOf(*truth.connection));
    }
    return out;
}

void PrintText(const SOptions& options, const std::vector<SJudged>& judged,
               const CDisplayUnits& units, const SStreams& streams)
{
    for (const auto& [record, truth] : judged) {
        if (truth.verdict == ETruth::Agrees && !options.all) {
            continue;
        }
        const std::string values = ValuesOf(truth, units);
        Print(streams.out, "{}: {} '{}': {}\n", curve::WordOf(truth.verdict),
              InfoOf(record->Type()).element, OneLine(record->Name()),
              OneLine(truth.text.empty() ? values : truth.text));
    }
    Print(streams.out, "{}: {}", options.file, Counted(judged.size(), "discrete"));
    constexpr std::array<std::string_view, 5> kTold = {
        "agree", "differ", "ask for the unit", "ask for Series or Shunt", "can't be judged"};
    for (std::size_t i = 0; i < kOrder.size(); ++i) {
        Print(streams.out, ", {} {}", CountOf(judged, kOrder[i]), kTold[i]);
    }
    Print(streams.out, "\n");
}

TJson ToJson(const SJudged& judged)
{
    constexpr std::array<std::string_view, 5> kWords = {"unjudged", "agrees", "differs", "unit",
                                                        "connection"};
    const SRecordTruth& truth = judged.truth;
    TJson out = {{"type", InfoOf(judged.record->Type()).element},
                 {"name", judged.record->Name()},
                 {"verdict", kWords[static_cast<std::size_t>(truth.verdict)]}};
    if (!truth.file.empty()) {
        out["file"] = truth.file;
    }
    if (truth.connection) {
        out["connection"] = network::WordOf(*truth.connection);
    }
    out["values"] = TJson::object();
    for (const curve::STruthItem& item : truth.items) {
        TJson value = TJson::object();
        if (item.stated) {
            value["stated"] = *item.stated;
        }
        if (item.model) {
            value["model"] = *item.model;
        }
        if (!value.empty()) {
            out["values"][std::string(item.name)] = std::move(value);
        }
    }
    if (!truth.text.empty()) {
        out["text"] = truth.text;
    }
    return out;
}

void PrintTruthJson(const SOptions& options, const std::vector<SJudged>& judged,
                    const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion},
                      {"file", options.file},
                      {"discretes", judged.size()},
                      {"agree", CountOf(judged, ETruth::Agrees)},
                      {"differ", CountOf(judged, ETruth::Differs)},
                      {"askForUnit", CountOf(judged, ETruth::AskUnit)},
                      {"askForConnection", CountOf(judged, ETruth::AskConnection)},
                      {"unjudged", CountOf(judged, ETruth::Unjudged)},
                      {"records", TJson::array()}};
    for (const SJudged& one : judged) {
        document["records"].push_back(ToJson(one));
    }
    PrintJson(streams, document);
}

/// The import tells of files that it can't locate; the reasons here tell it again.
bool IsAboutFiles(std::string_view text)
{
    return text.find("Cannot locate file") != std::string_view::npos;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CDisplayUnits units;
    if (!options.units.empty()) {
        if (const CResult<void> read = ReadUnits(options.units, units); !read) {
            PrintError(streams, read.Error());
            return kExitUsage;
        }
    }
    const std::optional<SLoaded> loaded = Load(options.file, streams, IsAboutFiles);
    if (!loaded) {
        return kExitFile;
    }
    curve::CTruthChecker checker(FolderOf(options.file), units);
    std::vector<SJudged> judged;
    for (const CZovRcdProps* record : loaded->library.Records()) {
        if (IsDiscrete(record->Type())) {
            judged.push_back({record, checker.Check(*record)});
        }
    }
    if (options.json) {
        PrintTruthJson(options, judged, streams);
    } else {
        PrintText(options, judged, units, streams);
    }
    const bool good = std::ranges::all_of(
        judged, [](const SJudged& one) { return one.truth.verdict <= ETruth::Agrees; });
    return StatusOf(good ? kExitGood : kExitNotRight, loaded->inPart);
}

} // namespace

void AddLibTruth(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        lib.add_subcommand("truth", "Compare what records state with what their models say");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "Library")->required()->type_name("");
    command->add_option("--units", options->units, kUnitsHelp)->type_name("LIST");
    command->add_flag("--all", options->all, "Show records that agree, too");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
