// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"
#include "cli/Commands.h"
#include "cli/NetFiles.h"
#include "network/Interpolate.h"
#include "network/NetworkDiff.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

using namespace network;

namespace {

constexpr const char* kFooter =
    R"(Values are compared as the parameters of A, in ohm and siemens, single-ended, with the references of A, at
the frequencies that both files have. The status is 1 when an element differs by more than the tolerance,
when a frequency is in one file only, or when the ports are not as many.

Examples:
  zov net diff before.s2p after.s2p
  zov net diff measured.s2p model.ts --interpolate --tolerance 0.01)";

struct SOptions
{
    std::string a;
    std::string b;
    double tolerance = 0.0;
    bool interpolate = false;
    bool json = false;
};

/// The frequencies of `a` that `b` reaches, in both.
CResult<void> BringTogether(CNetworkData& a, CNetworkData& b)
{
    std::vector<double> common;
    std::ranges::copy_if(a.FrequenciesHz(), std::back_inserter(common), [&](double hz) {
        return hz >= b.FrequenciesHz().front() && hz <= b.FrequenciesHz().back();
    });
    if (common.empty()) {
        return Fail(EErr::Argument, "the files have no frequencies in common");
    }
    ASSIGN_OR_RETURN(a, Interpolate(a, common));
    ASSIGN_OR_RETURN(b, Interpolate(b, common));
    return {};
}

std::string Shown(TComplex value)
{
    return fmt::format("{}{}{}j", FormatG(value.real()), value.imag() < 0.0 ? "" : "+",
                       FormatG(value.imag()));
}

void PrintDiff(const SNetworkDiff& diff, char letter, const SStreams& streams)
{
    for (const std::string& fact : diff.facts) {
        Print(streams.out, "{}\n", fact);
    }
    if (diff.onlyA != 0 || diff.onlyB != 0) {
        Print(streams.out, "frequencies: {} in both, {} only in A, {} only in B\n", diff.compared,
              diff.onlyA, diff.onlyB);
    }
    if (diff.largest.value != 0.0) {
        Print(streams.out,
              "largest difference {} in {}({},{}) at {}: {} and {}\n{} above the tolerance\n",
              FormatG(diff.largest.value), letter, diff.largest.row + 1, diff.largest.column + 1,
              WithPrefix(diff.largest.hz, "Hz"), Shown(diff.a), Shown(diff.b),
              Counted(diff.above, "value"));
    } else if (diff.compared != 0) {
        Print(streams.out, "the values are the same at {}\n", Counted(diff.compared, "point"));
    }
}

TJson ToJson(const SNetworkDiff& diff, bool differ)
{
    return {{"version", kJsonVersion},
            {"differ", differ},
            {"facts", diff.facts},
            {"compared", diff.compared},
            {"onlyA", diff.onlyA},
            {"onlyB", diff.onlyB},
            {"above", diff.above},
            {"largest",
             {{"value", diff.largest.value},
              {"hz", diff.largest.hz},
              {"row", diff.largest.row + 1},
              {"column", diff.largest.column + 1},
              {"a", {diff.a.real(), diff.a.imag()}},
              {"b", {diff.b.real(), diff.b.imag()}}}}};
}

int Execute(const SOptions& options, const SStreams& streams)
{
    std::optional<CNetworkData> a = LoadNetwork(options.a, streams);
    std::optional<CNetworkData> b = LoadNetwork(options.b, streams);
    if (!a || !b) {
        return kExitFile;
    }
    if (options.interpolate) {
        if (const CResult<void> together = BringTogether(*a, *b); !together) {
            PrintError(streams, together.Error());
            return kExitNotRight;
        }
    }
    const CResult<SNetworkDiff> diff = CompareNetworks(*a, *b, options.tolerance);
    if (!diff) {
        PrintError(streams, diff.Error());
        return kExitNotRight;
    }
    const bool differ = diff->above != 0 || diff->onlyA != 0 || diff->onlyB != 0 ||
                        a->PortCount() != b->PortCount();
    if (options.json) {
        PrintJson(streams, ToJson(*diff, differ));
    } else {
        PrintDiff(*diff, LetterOf(a->Parameter()), streams);
    }
    return differ ? kExitNotRight : kExitGood;
}

} // namespace

void AddNetDiff(CLI::App& net, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        net.add_subcommand("diff", "The largest difference of two files, and where");
    command->footer(kFooter);
    command->add_option("A", options->a, "Touchstone file")->required()->type_name("");
    command->add_option("B", options->b, "Touchstone file")->required()->type_name("");
    command->add_option("--tolerance", options->tolerance, "Largest difference that is none (0)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("D");
    command->add_flag("--interpolate", options->interpolate,
                      "Compares at the frequencies of A that B reaches");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
