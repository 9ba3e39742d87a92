// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"
#include "cli/Commands.h"
#include "cli/NetFiles.h"
#include "network/NetworkChecks.h"
#include "network/TwoTerminal.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <memory>

namespace zov::cli {

using namespace network;

namespace {

constexpr const char* kFooter =
    R"(Besides what the file says: 'gain' is the largest singular value of its S-parameters (above 1 it gives
power), 'asymmetry' the largest |Sij - Sji|, 'clockwise' the least part of an element's turning in the
complex plane that goes clockwise, as causes before effects make it (below 80 % is suspect). One- and
two-ports that are a single part are told with its values.

Examples:
  zov net info capacitor.s2p
  zov net info *.s2p *.ts --json)";

/// Clockwise turning below which data is suspect.
constexpr double kSuspect = 0.8;

struct SOptions
{
    std::vector<std::string> files;
    bool json = false;
};

struct SReport
{
    std::string file;
    CNetworkData data;
    CResult<SNetworkChecks> checks = Fail(EErr::Unspecified, "");
    std::optional<STwoTerminal> part;
    SPartValues values;
};

SReport ReportOn(const std::string& file, CNetworkData data)
{
    SReport report{file, std::move(data), Fail(EErr::Unspecified, ""), {}, {}};
    report.checks = CheckNetwork(report.data);
    if (report.data.PortCount() <= 2 && !HasMixedMode(report.data.Ports())) {
        if (CResult<STwoTerminal> part = TwoTerminalOf(report.data); part && !part->hz.empty()) {
            report.values = PartValuesOf(*part);
            report.part = part.Take();
        }
    }
    return report;
}

std::string At(const SWorst& worst)
{
    return " at " + WithPrefix(worst.hz, "Hz");
}

void PrintChecks(const SReport& report, const SStreams& streams)
{
    if (!report.checks) {
        Print(streams.out, "  checks       {}\n", report.checks.Error().text);
        return;
    }
    const SNetworkChecks& checks = *report.checks;
    Print(streams.out, "  gain         {}{}: {}\n", FormatG(checks.gain.value), At(checks.gain),
          checks.gain.value <= kPassiveGain ? "passive" : "not passive");
    if (report.data.PortCount() > 1) {
        Print(streams.out, "  asymmetry    {}{}\n", FormatG(checks.asymmetry.value),
              checks.asymmetry.value == 0.0 ? ": reciprocal" : At(checks.asymmetry));
    }
    Print(streams.out, "  clockwise    {:.1f} %{}\n", 100.0 * checks.clockwise.value,
          checks.clockwise.value < kSuspect
              ? fmt::format(" of element {},{}: causality is suspect", checks.clockwise.row + 1,
                            checks.clockwise.column + 1)
              : "");
}

void PrintPart(const SReport& report, const SStreams& streams)
{
    if (!report.part) {
        return;
    }
    const SPartValues& values = report.values;
    std::string text;
    const auto add = [&](std::string_view name, std::optional<double> value,
                         std::string_view unit) {
        if (value) {
            text += fmt::format(", {} {}", name, WithPrefix(*value, unit));
        }
    };
    const bool capacitor = values.kind == EPartKind::Capacitor;
    add("C", values.capacitanceF, "F");
    add(capacitor ? "ESL" : "L", values.inductanceH, "H");
    add(capacitor ? "ESR" : "R", values.resistanceOhm, "ohm");
    add("resonance", values.resonanceHz, "Hz");
    Print(streams.out, "  looks like   {}, {}{}\n", WordOf(values.kind),
          WordOf(report.part->connection), text);
}

void PrintReport(const SReport& report, const SStreams& streams)
{
    const CNetworkData& data = report.data;
    const SFileTraits& traits = data.Traits();
    Print(streams.out,
          "{}\n  ports        {}\n  type         {}{}\n  format       {}, version {}\n",
          report.file, data.PortCount(), LetterOf(data.Parameter()),
          data.Normalised() == ENormalised::Yes ? ", normalised to the references" : "",
          WordOf(traits.format), traits.version);
    Print(streams.out, "  frequencies  {}, {} to {}, in {}Hz\n", data.FrequencyCount(),
          WithPrefix(data.FrequenciesHz().front(), "Hz"),
          WithPrefix(data.FrequenciesHz().back(), "Hz"), PrefixOf(traits.unit));
    Print(streams.out, "  references   {}\n", ReferencesText(data));
    if (HasMixedMode(data.Ports())) {
        Print(streams.out, "  order        {}\n", OrderText(data));
    }
    if (traits.storage != EStorage::Full) {
        Print(streams.out, "  matrices     {}\n", WordOf(traits.storage));
    }
    if (traits.hasNames) {
        std::string names;
        for (const SPort& port : data.Ports()) {
            names += (names.empty() ? "" : ", ") + OneLine(port.name);
        }
        Print(streams.out, "  names        {}\n", names);
    }
    if (!traits.origin.empty()) {
        Print(streams.out, "  origin       {}\n", OneLine(traits.origin));
    }
    if (traits.noisePoints != 0) {
        Print(streams.out, "  noise        {}, not read\n", Counted(traits.noisePoints, "line"));
    }
    PrintChecks(report, streams);
    PrintPart(report, streams);
}

TJson ToJson(const SWorst& worst)
{
    return {{"value", worst.value},
            {"hz", worst.hz},
            {"row", worst.row + 1},
            {"column", worst.column + 1}};
}

TJson PortJson(const SPort& port)
{
    constexpr std::array kModes = {"single-ended", "common", "differential"};
    TJson json = {{"mode", kModes[static_cast<std::size_t>(port.mode)]}, {"port", port.first + 1}};
    if (port.mode != EPortMode::SingleEnded) {
        json["second"] = port.second + 1;
    }
    json["name"] = port.name;
    json["referenceOhm"] = port.referenceOhm;
    return json;
}

void AddPart(TJson& json, const SReport& report)
{
    TJson part = {{"kind", WordOf(report.values.kind)},
                  {"connection", WordOf(report.part->connection)}};
    const auto add = [&](const char* name, std::optional<double> value) {
        if (value) {
            part[name] = *value;
        }
    };
    add("capacitance", report.values.capacitanceF);
    add("inductance", report.values.inductanceH);
    add("resistance", report.values.resistanceOhm);
    add("resonanceHz", report.values.resonanceHz);
    json["part"] = std::move(part);
}

TJson ToJson(const SReport& report)
{
    const CNetworkData& data = report.data;
    const SFileTraits& traits = data.Traits();
    TJson json = {{"file", report.file},
                  {"ports", data.PortCount()},
                  {"type", std::string(1, LetterOf(data.Parameter()))},
                  {"normalised", data.Normalised() == ENormalised::Yes},
                  {"format", WordOf(traits.format)},
                  {"unit", std::string(PrefixOf(traits.unit)) + "Hz"},
                  {"touchstone", traits.version},
                  {"storage", WordOf(traits.storage)},
                  {"frequencies", data.FrequencyCount()},
                  {"firstHz", data.FrequenciesHz().front()},
                  {"lastHz", data.FrequenciesHz().back()},
                  {"noise", traits.noisePoints},
                  {"origin", traits.origin},
                  {"comments", traits.comments}};
    TJson ports = TJson::array();
    for (const SPort& port : data.Ports()) {
        ports.push_back(PortJson(port));
    }
    json["order"] = std::move(ports);
    if (report.checks) {
        json["gain"] = ToJson(report.checks->gain);
        json["asymmetry"] = ToJson(report.checks->asymmetry);
        json["clockwise"] = ToJson(report.checks->clockwise);
    }
    if (report.part) {
        AddPart(json, report);
    }
    return json;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const auto tell = [&](const std::string& path, TJson* documents) -> std::optional<bool> {
        std::optional<CNetworkData> data = LoadNetwork(path, streams);
        if (!data) {
            return std::nullopt;
        }
        const SReport report = ReportOn(path, std::move(*data));
        if (documents != nullptr) {
            documents->push_back(ToJson(report));
        } else {
            PrintReport(report, streams);
        }
        return true;
    };
    return ReportEach(options.files, "networks", options.json, streams, tell);
}

} // namespace

void AddNetInfo(CLI::App& net, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = net.add_subcommand("info", "What a file holds, and whether it can be real");
    command->footer(kFooter);
    command->add_option("FILE", options->files, "Touchstone files")->required()->type_name("");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
