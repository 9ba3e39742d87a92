// SPDX-License-Identifier: Apache-2.0
#include "cli/Commands.h"
#include "cli/CurveFiles.h"
#include "cli/Reporting.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(OUT's extension decides: a curve file (.cur), or comma-separated text with a line per point (.csv).

Examples:
  zov curve export port1.cur port1.csv
  zov curve export all.cur one.cur --curve Port1::Z0)";

struct SOptions
{
    std::string file;
    std::string out;
    std::vector<std::string> names;
    bool fifteen = false;
};

/// The curves of these names ("$2" is the second); all when none is asked for.
CResult<std::vector<curve::TCurvePtr>> Choose(const curve::SCurveFile& file,
                                              const std::vector<std::string>& names)
{
    if (names.empty()) {
        return file.curves;
    }
    std::vector<curve::TCurvePtr> chosen;
    for (const std::string& name : names) {
        const std::size_t before = chosen.size();
        for (std::size_t i = 0; i < file.curves.size(); ++i) {
            if (NameOfCurve(*file.curves[i]) == name || name == fmt::format("${}", i + 1)) {
                chosen.push_back(file.curves[i]);
            }
        }
        if (chosen.size() == before) {
            return Fail(EErr::NotFound, fmt::format("there is no curve '{}'", name));
        }
    }
    return chosen;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    if (!IsCurveOutput(options.out, streams)) {
        return kExitUsage;
    }
    const auto file = LoadCurves(options.file, streams);
    if (!file) {
        return kExitFile;
    }
    const auto curves = Choose(*file, options.names);
    if (!curves) {
        PrintError(streams, curves.Error());
        return kExitNotRight;
    }
    const auto digits = options.fifteen ? curve::EDigits::Fifteen : curve::EDigits::SameDoubles;
    if (const auto done = WriteCurves(options.out, *curves, file->kind, digits); !done) {
        PrintError(streams, done.Error());
        return kExitFile;
    }
    Print(streams.out, "{}: {}\n", options.out, Counted(curves->size(), "curve"));
    return StatusOf(kExitGood, file->skippedLines != 0);
}

} // namespace

void AddCurveExport(CLI::App& curve, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = curve.add_subcommand("export", "Write curves to another file");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "Curve file")->required()->type_name("");
    command->add_option("OUT", options->out, "File to write: .cur or .csv")
        ->required()
        ->type_name("");
    command
        ->add_option("--curve", options->names,
                     "Only the curve with this name or legend, or $N for the one at place N; may "
                     "be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command->add_flag("--fifteen-digits", options->fifteen,
                      "15 digits behind the point of every number of a .cur file; unless given, "
                      "numbers that would come back different get one more");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

void AddCurve(CLI::App& zov, SChosen& chosen)
{
    CLI::App* curve = zov.add_subcommand("curve", "Curve files (.cur) and impedances as curves");
    curve->footer(R"(Examples:
  zov curve info port1.cur
  zov curve export port1.cur port1.csv
  zov curve impedance caps.zov caps.cur --model '*0402*')");
    curve->require_subcommand(1);
    AddCurveInfo(*curve, chosen);
    AddCurveExport(*curve, chosen);
    AddCurveImpedance(*curve, chosen);
}

} // namespace zov::cli
