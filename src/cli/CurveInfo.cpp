// SPDX-License-Identifier: Apache-2.0
#include "cli/Commands.h"
#include "cli/CurveFiles.h"
#include "cli/Reporting.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Examples:
  zov curve info port1.cur
  zov curve info *.cur --json)";

struct SOptions
{
    std::vector<std::string> files;
    bool json = false;
};

std::string_view WordOf(curve::EUnitClass unit)
{
    return unit == curve::EUnitClass::Ohm ? "ohm" : unit == curve::EUnitClass::Siemens ? "S" : "";
}

std::string_view WordOf(curve::EValueClass value)
{
    return value == curve::EValueClass::Impedance     ? "impedance"
           : value == curve::EValueClass::Propagation ? "propagation"
                                                      : "";
}

/// Least and largest abscissa; none when the curve has no points.
std::optional<std::pair<double, double>> RangeOf(const curve::CCurvePoints& points)
{
    const auto x = points.Column(0);
    if (x.empty()) {
        return std::nullopt;
    }
    const auto [least, most] = std::minmax_element(x.begin(), x.end());
    return std::pair(*least, *most);
}

curve::EValueClass ClassOf(const curve::SCurveFile& file)
{
    for (const curve::TCurvePtr& curve : file.curves) {
        if (curve->ValueClass() != curve::EValueClass::None) {
            return curve->ValueClass();
        }
    }
    return curve::EValueClass::None;
}

void PrintFile(const std::string& path, const curve::SCurveFile& file, const SStreams& streams)
{
    Print(streams.out, "{}\n  kind    {}\n", path, curve::NameOf(file.kind));
    if (const auto word = WordOf(ClassOf(file)); !word.empty()) {
        Print(streams.out, "  class   {}\n", word);
    }
    if (const auto word = WordOf(file.unitClass); !word.empty()) {
        Print(streams.out, "  unit    {}\n", word);
    }
    Print(streams.out, "  curves  {}\n", file.curves.size());
    std::size_t number = 0;
    for (const curve::TCurvePtr& curve : file.curves) {
        const curve::SCurveHeader& header = curve->Header();
        Print(streams.out, "    ${}  {}", ++number, OneLine(NameOfCurve(*curve)));
        if (!header.valueName.empty()) {
            Print(streams.out, "  {}  '{}'", OneLine(header.valueName), OneLine(header.legend));
        }
        Print(streams.out, "  {}  {}", curve::StyleWord(header.style),
              Counted(curve->Points().Count(), "point"));
        if (const auto range = RangeOf(curve->Points())) {
            Print(streams.out, "  x {} to {}", range->first, range->second);
        }
        streams.out.Write("\n");
    }
}

TJson ToJson(const curve::CCurve& curve)
{
    const curve::SCurveHeader& header = curve.Header();
    TJson out = {{"name", header.name},
                 {"valueName", header.valueName},
                 {"legend", header.legend},
                 {"style", curve::StyleWord(header.style)},
                 {"modes", static_cast<int>(header.modes)},
                 {"points", curve.Points().Count()},
                 {"numbersPerPoint", curve.Points().Columns()}};
    if (const auto range = RangeOf(curve.Points())) {
        out["from"] = range->first;
        out["to"] = range->second;
    }
    out["attributes"] = TJson::array();
    for (const curve::TAttributeGroup& group : header.attributeGroups) {
        TJson entries = TJson::array();
        for (const curve::SAttribute& entry : group) {
            entries.push_back({{"key", entry.key}, {"value", entry.value}});
        }
        out["attributes"].push_back(entries);
    }
    return out;
}

TJson ToJson(const std::string& path, const curve::SCurveFile& file)
{
    TJson out = {{"file", path},
                 {"kind", static_cast<int>(file.kind)},
                 {"kindName", curve::NameOf(file.kind)},
                 {"class", WordOf(ClassOf(file))},
                 {"unit", WordOf(file.unitClass)},
                 {"skippedLines", file.skippedLines},
                 {"curves", TJson::array()}};
    for (const curve::TCurvePtr& curve : file.curves) {
        out["curves"].push_back(ToJson(*curve));
    }
    return out;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const auto report = [&](const std::string& path, TJson* documents) -> std::optional<bool> {
        const auto file = LoadCurves(path, streams);
        if (!file) {
            return std::nullopt;
        }
        if (documents != nullptr) {
            documents->push_back(ToJson(path, *file));
        } else {
            PrintFile(path, *file, streams);
        }
        return file->skippedLines == 0;
    };
    return ReportEach(options.files, "files", options.json, streams, report);
}

} // namespace

void AddCurveInfo(CLI::App& curve, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = curve.add_subcommand("info", "Kind, unit and curves of a file");
    command->footer(kFooter);
    command->add_option("FILE", options->files, "Curve files")->required()->type_name("");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
