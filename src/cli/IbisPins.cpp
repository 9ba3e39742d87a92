// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Ibis.h"
#include "cli/Reporting.h"
#include "ibis/IbisLoader.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>

namespace zov::cli {

namespace {

using namespace zov::ibis;

constexpr const char* kFooter =
    R"(The pins of a component with what [Pin], [Pin Mapping] and [Diff Pin] say of them, then its series
pairs and switch groups. Keywords may be spelt with blanks or underscores. What is odd in the tables
goes to standard error.

Examples:
  zov ibis pins memory.ibs
  zov ibis pins board.ibs --component ctrl --json)";

struct SOptions
{
    std::string file;
    std::string component;
    bool json = false;
};

constexpr std::size_t kColumns = 12;
using TCells = std::array<std::string, kColumns>;

TCells CellsOf(const SPinListRow& row)
{
    const std::string pair = row.diffPin.empty() ? "" : (row.inverting ? "-" : "+") + row.diffPin;
    return {row.pin, row.signal,      row.model,     row.r,           row.l,
            row.c,   row.pulldownRef, row.pullupRef, row.gndClampRef, row.powerClampRef,
            pair,    row.vdiff};
}

void ShowText(const SPinList& list, const SStreams& streams)
{
    std::vector<TCells> rows = {{"pin", "signal", "model", "R", "L", "C", "pulldown", "pullup",
                                 "gnd_clamp", "power_clamp", "pair", "vdiff"}};
    for (const SPinListRow& row : list.pins) {
        rows.push_back(CellsOf(row));
    }
    std::array<std::size_t, kColumns> widths{};
    for (const TCells& cells : rows) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], WidthOf(OneLine(cells[i])));
        }
    }
    for (const TCells& cells : rows) {
        std::string line;
        for (std::size_t i = 0; i < kColumns; ++i) {
            const std::string cell = cells[i].empty() ? "." : OneLine(cells[i]);
            line += cell;
            line.append(widths[i] + 2 - std::min(WidthOf(cell), widths[i] + 1), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        Print(streams.out, "{}\n", line);
    }
    for (const SSeriesRow& row : list.series) {
        Print(streams.out, "series {} {} {}{}\n", row.pin1, row.pin2,
              row.model.empty() ? "(no model)" : row.model,
              row.group.empty() ? "" : " group " + row.group);
    }
    for (const SSwitchGroups& state : list.switchGroups) {
        Print(streams.out, "switch {}", state.on ? "on" : "off");
        for (const std::string& group : state.groups) {
            Print(streams.out, " {}", group);
        }
        streams.out.Write("\n");
    }
}

void ShowJson(const SOptions& options, const SPinList& list, const SStreams& streams)
{
    TJson json = {{"version", kJsonVersion},
                  {"file", options.file},
                  {"component", list.component},
                  {"manufacturer", list.manufacturer},
                  {"package_model", list.packageModel},
                  {"pins", TJson::array()},
                  {"series", TJson::array()},
                  {"switch_groups", TJson::array()},
                  {"messages", list.messages}};
    for (const SPinListRow& row : list.pins) {
        TJson pin = {{"pin", row.pin}, {"signal", row.signal}, {"model", row.model},
                     {"r", row.r},     {"l", row.l},           {"c", row.c}};
        pin["pulldown_ref"] = row.pulldownRef;
        pin["pullup_ref"] = row.pullupRef;
        pin["gnd_clamp_ref"] = row.gndClampRef;
        pin["power_clamp_ref"] = row.powerClampRef;
        if (!row.diffPin.empty()) {
            pin["pair"] = {
                {"with", row.diffPin}, {"inverting", row.inverting}, {"vdiff", row.vdiff}};
        }
        json["pins"].push_back(std::move(pin));
    }
    for (const SSeriesRow& row : list.series) {
        json["series"].push_back(
            {{"pin_1", row.pin1}, {"pin_2", row.pin2}, {"model", row.model}, {"group", row.group}});
    }
    for (const SSwitchGroups& state : list.switchGroups) {
        json["switch_groups"].push_back({{"on", state.on}, {"groups", state.groups}});
    }
    PrintJson(streams, json);
}

CResult<SPinList> Read(const SOptions& options)
{
    CIBISLoader loader;
    RETURN_IF_ERROR(loader.Open(TextPath(options.file)));
    ASSIGN_OR_RETURN(const std::string component,
                     ChooseComponent(loader.Components(), options.component));
    RETURN_IF_ERROR(loader.Select(component));
    return loader.Pins();
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const CResult<SPinList> list = Read(options);
    if (!list) {
        PrintError(streams, list.Error());
        return list.Error().code == EErr::Argument ? kExitUsage : kExitFile;
    }
    for (const std::string& message : list->messages) {
        Print(streams.err, "zov: {}\n", message);
    }
    options.json ? ShowJson(options, *list, streams) : ShowText(*list, streams);
    return kExitGood;
}

} // namespace

void AddIbisPins(CLI::App& ibis, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = ibis.add_subcommand("pins", "The pin list of a component");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "IBIS file")->required()->type_name("");
    command
        ->add_option("--component", options->component,
                     "Which component; may be left out when the file has one")
        ->type_name("NAME");
    command->add_flag("--json", options->json, "As JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
