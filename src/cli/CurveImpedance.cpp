// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/CurveFiles.h"
#include "cli/Reporting.h"
#include "core/RecordFiles.h"
#include "core/Units.h"
#include "curve/ImpedanceCurve.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Capacitors, inductors and resistors with plain values, and the rails of VRMs, at N frequencies with
equal ratios; a part whose model is a one- or two-port Touchstone file at that file's frequencies.
SPICE circuits have none. OUT's extension decides: a curve file (.cur), or text with a line per
point (.csv).

Examples:
  zov curve impedance caps.zov caps.cur
  zov curve impedance caps.zov c7.csv --model 'GRM155*' --from 10kHz --to 100MHz --points 101)";

constexpr std::size_t kMostPoints = 10'000'000;

struct SOptions
{
    std::string library;
    std::string out;
    std::vector<std::string> models;
    std::string from = "1kHz";
    std::string to = "10GHz";
    std::size_t points = 401;
    bool magnitude = false;
};

CResult<std::vector<double>> SweepOf(const SOptions& options)
{
    curve::SSweep sweep;
    sweep.points = options.points;
    for (const auto& [text, hz] :
         {std::pair(&options.from, &sweep.fromHz), std::pair(&options.to, &sweep.toHz)}) {
        const auto value = ParseQuantity(*text, EQuantity::Frequency);
        if (!value) {
            return Fail(EErr::Argument,
                        fmt::format("'{}' is no frequency, expected such as 10kHz or 1e6", *text));
        }
        *hz = *value;
    }
    if (sweep.points > kMostPoints) {
        return Fail(EErr::Argument, fmt::format("more than {} points", kMostPoints));
    }
    std::vector<double> hz = curve::SweepHz(sweep);
    if (hz.empty()) {
        return Fail(EErr::Argument,
                    fmt::format("no frequencies from {} to {}, expected 0 < from <= to and a point",
                                options.from, options.to));
    }
    return hz;
}

bool IsWanted(const CZovRcdProps& record, const std::vector<std::string>& models)
{
    if (models.empty()) {
        return IsDiscrete(record.Type()) || record.Type() == ERecordType::Vrm;
    }
    return std::any_of(models.begin(), models.end(), [&](const std::string& pattern) {
        return WildcardMatch(pattern, record.Name());
    });
}

struct SImpedances
{
    std::vector<curve::TCurvePtr> curves;
    std::size_t failed = 0; ///< records that have none, which has been told
};

SImpedances ImpedancesIn(const CZovLibrary& library, const SOptions& options,
                         std::span<const double> hz, const SStreams& streams)
{
    SImpedances found;
    for (const CZovRcdProps* record : library.Records()) {
        if (!IsWanted(*record, options.models)) {
            continue;
        }
        CVectorDiag diag;
        auto curves = curve::ImpedancesOf(*record, hz, FolderOf(options.library), diag);
        PrintRemarks(streams, diag);
        if (!curves) {
            PrintError(streams, curves.Error());
            ++found.failed;
            continue;
        }
        for (const curve::TCurvePtr& one : *curves) {
            found.curves.push_back(options.magnitude ? curve::MagnitudeOf(*one) : one);
        }
    }
    return found;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    if (!IsCurveOutput(options.out, streams)) {
        return kExitUsage;
    }
    if (options.magnitude && !EqualsNoCase(ExtensionOf(TextPath(options.out)), ".csv")) {
        Print(streams.err, "zov: --magnitude needs a .csv file; a .cur file holds both parts\n");
        return kExitUsage;
    }
    const auto hz = SweepOf(options);
    if (!hz) {
        PrintError(streams, hz.Error());
        return kExitUsage;
    }
    const std::optional<SLoaded> loaded = Load(options.library, streams);
    if (!loaded) {
        return kExitFile;
    }
    const SImpedances found = ImpedancesIn(loaded->library, options, *hz, streams);
    if (found.curves.empty()) {
        Print(streams.err, "zov: no impedance to write; {} not written\n", options.out);
        return kExitNotRight;
    }
    const auto done = WriteCurves(options.out, found.curves, curve::EKind::FrequencyDomain,
                                  curve::EDigits::SameDoubles);
    if (!done) {
        PrintError(streams, done.Error());
        return kExitFile;
    }
    Print(streams.out, "{}: {}\n", options.out, Counted(found.curves.size(), "curve"));
    return StatusOf(kExitGood, loaded->inPart || found.failed != 0);
}

} // namespace

void AddCurveImpedance(CLI::App& curve, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        curve.add_subcommand("impedance", "Impedance of a library's parts over frequency");
    command->footer(kFooter);
    command->add_option("LIB", options->library, "Library")->required()->type_name("");
    command->add_option("OUT", options->out, "File to write: .cur or .csv")
        ->required()
        ->type_name("");
    command
        ->add_option("--model", options->models,
                     "Only records of this name; * is any text, ? any character, case does not "
                     "count; may be repeated. Unless given, every part that may have an impedance")
        ->type_name("PATTERN")
        ->allow_extra_args(false);
    command->add_option("--from", options->from, "Lowest frequency (1kHz unless given)")
        ->type_name("HZ");
    command->add_option("--to", options->to, "Highest frequency (10GHz unless given)")
        ->type_name("HZ");
    command->add_option("--points", options->points, "Number of frequencies (401 unless given)")
        ->type_name("N");
    command->add_flag("--magnitude", options->magnitude,
                      "|Z| in ohm instead of its real and imaginary part (.csv)");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
