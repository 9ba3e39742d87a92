// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "cli/RecordPairs.h"
#include "core/LibraryFiles.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Lines begin with + (only in B), - (only in A) or ~ (in both, with the properties that differ). Records
are the same when type and name are, without regard to case; their order does not count. A number
that is absent equals 0, since exchange files cannot tell the two apart. The status is 1 when the
libraries differ.

Examples:
  zov lib diff before.zov after.zov
  zov lib diff caps.zov caps.zovx --numbers exact --json)";

enum class ENumbers
{
    Exact,
    Rounded ///< to the six digits that exchange files hold
};

struct SOptions
{
    std::string a;
    std::string b;
    std::string numbers = "auto";
    std::string units;
    bool json = false;
};

struct SChange
{
    std::string property;
    TJson a; ///< null when absent
    TJson b;
};

struct SDifference
{
    char kind = '~';
    const CZovRcdProps* record = nullptr; ///< of A; of B for '+'
    std::vector<SChange> changes;
};

bool SameNumber(double a, double b, ENumbers numbers)
{
    if (a == b) {
        return true;
    }
    if (numbers == ENumbers::Exact || a == 0.0 || b == 0.0) {
        return false;
    }
    const double apart = std::fabs(a - b);
    if (apart <= 5e-7 * std::fabs(a)) {
        return true; // within half a unit whatever the leading digit is
    }
    // Half a unit of the sixth digit, and a little for the conversion between units.
    constexpr double kHalfUnit = 5e-6 * (1.0 + 1e-6);
    const double decade = std::pow(10.0, std::floor(std::log10(std::fabs(a))));
    return apart <= kHalfUnit * decade;
}

/// Absent values count as what a reader that finds nothing takes them for.
bool SameValue(const TJson& a, const TJson& b, ENumbers numbers)
{
    const auto isEmpty = [](const TJson& value) {
        return value.is_null() || (value.is_number() && value.get<double>() == 0.0) ||
               (value.is_string() && value.get_ref<const std::string&>().empty()) ||
               (value.is_boolean() && !value.get<bool>()) ||
               (value.is_structured() && value.empty());
    };
    if (a.is_number() && b.is_number()) {
        return SameNumber(a.get<double>(), b.get<double>(), numbers);
    }
    return a == b || (isEmpty(a) && isEmpty(b));
}

/// True when the records are surely the same; nearly all pairs are, and nothing is built for them.
bool SurelySame(const CZovRcdProps& a, const CZovRcdProps& b, ENumbers numbers)
{
    const auto isSame = [&](const SPropInfo& info) {
        if (!a.Has(info.id) && !b.Has(info.id)) {
            return true;
        }
        switch (info.kind) {
        case EPropKind::Double:
            return SameNumber(a.GetDouble(info.id).value_or(0.0),
                              b.GetDouble(info.id).value_or(0.0), numbers);
        case EPropKind::Composite:
            return a.Has(info.id) && b.Has(info.id) &&
                   *a.GetComposite(info.id) == *b.GetComposite(info.id);
        case EPropKind::String:
        case EPropKind::Text:
            break;
        }
        return a.GetString(info.id) == b.GetString(info.id);
    };
    return std::ranges::all_of(Properties(), isSame);
}

/// "/DC_MODEL/PowerRail/0/PIN/1" as "DC_MODEL.PowerRail[0].PIN[1]"
std::string ReadablePath(const std::string& pointer)
{
    std::string out;
    for (std::size_t pos = 1; pos <= pointer.size();) {
        const std::size_t end = std::min(pointer.find('/', pos), pointer.size());
        const std::string part = pointer.substr(pos, end - pos);
        if (!part.empty() && part.find_first_not_of("0123456789") == std::string::npos) {
            out += '[' + part + ']';
        } else {
            out += (out.empty() ? "" : ".") + part;
        }
        pos = end + 1;
    }
    return out;
}

std::vector<SChange> ChangesBetween(const CZovRcdProps& a, const CZovRcdProps& b, ENumbers numbers)
{
    const TJson flatA = PropertiesJson(a).flatten();
    const TJson flatB = PropertiesJson(b).flatten();
    std::vector<SChange> changes;
    for (const auto& [path, value] : flatA.items()) {
        const auto other = flatB.find(path);
        const TJson& partner = other == flatB.end() ? TJson() : *other;
        if (!SameValue(value, partner, numbers)) {
            changes.push_back({ReadablePath(path), value, partner});
        }
    }
    for (const auto& [path, value] : flatB.items()) {
        if (!flatA.contains(path) && !SameValue(TJson(), value, numbers)) {
            changes.push_back({ReadablePath(path), TJson(), value});
        }
    }
    return changes;
}

std::vector<SDifference> Compare(const CZovLibrary& a, const CZovLibrary& b, ENumbers numbers)
{
    std::vector<SDifference> differences;
    const std::vector<std::uint32_t> partners = PartnersOf(a, b);
    std::vector<bool> matched(b.Count(), false);
    for (std::size_t i = 0; i < a.Count(); ++i) {
        const CZovRcdProps& record = a.At(i);
        if (partners[i] == kNoRecord) {
            differences.push_back({'-', &record, {}});
            continue;
        }
        matched[partners[i]] = true;
        const CZovRcdProps& partner = b.At(partners[i]);
        if (SurelySame(record, partner, numbers)) {
            continue;
        }
        if (auto changes = ChangesBetween(record, partner, numbers); !changes.empty()) {
            differences.push_back({'~', &record, std::move(changes)});
        }
    }
    for (std::size_t i = 0; i < b.Count(); ++i) {
        if (!matched[i]) {
            differences.push_back({'+', &b.At(i), {}});
        }
    }
    return differences;
}

std::string ValueText(const std::string& property, const TJson& value, const CDisplayUnits& units)
{
    if (value.is_null()) {
        return "(none)";
    }
    if (value.is_string()) {
        return '\'' + OneLine(value.get_ref<const std::string&>()) + '\'';
    }
    if (value.is_number()) {
        const std::string name = property.substr(property.find_last_of('.') + 1);
        return FormatQuantity(value.get<double>(), QuantityOfName(name), units);
    }
    return value.dump();
}

/// Two values that differ must not look the same: where six digits are too few, all are shown.
void PrintChange(const SChange& change, const CDisplayUnits& units, const SStreams& streams)
{
    std::string a = ValueText(change.property, change.a, units);
    std::string b = ValueText(change.property, change.b, units);
    if (a == b) {
        a = change.a.dump();
        b = change.b.dump();
    }
    Print(streams.out, "    {}: {} -> {}\n", change.property, a, b);
}

std::size_t CountOf(const std::vector<SDifference>& differences, char kind)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(differences, [kind](const auto& d) { return d.kind == kind; }));
}

void PrintText(const std::vector<SDifference>& differences, const CDisplayUnits& units,
               const SStreams& streams)
{
    for (const SDifference& difference : differences) {
        if (!streams.out.Ok()) {
            return;
        }
        Print(streams.out, "{} {} '{}'\n", difference.kind,
              InfoOf(difference.record->Type()).element, OneLine(difference.record->Name()));
        for (const SChange& change : difference.changes) {
            PrintChange(change, units, streams);
        }
    }
    Print(streams.out, "{} added, {} removed, {} changed\n", CountOf(differences, '+'),
          CountOf(differences, '-'), CountOf(differences, '~'));
}

void PrintDifferencesJson(const SOptions& options, const std::vector<SDifference>& differences,
                          const SStreams& streams)
{
    TJson document = {{"version", kJsonVersion},
                      {"a", options.a},
                      {"b", options.b},
                      {"added", TJson::array()},
                      {"removed", TJson::array()},
                      {"changed", TJson::array()}};
    for (const SDifference& difference : differences) {
        TJson item = {{"type", InfoOf(difference.record->Type()).element},
                      {"name", difference.record->Name()}};
        if (difference.kind != '~') {
            document[difference.kind == '+' ? "added" : "removed"].push_back(std::move(item));
            continue;
        }
        for (const SChange& change : difference.changes) {
            item["properties"].push_back(
                {{"property", change.property}, {"a", change.a}, {"b", change.b}});
        }
        document["changed"].push_back(std::move(item));
    }
    PrintJson(streams, document);
}

ENumbers NumbersFor(const SOptions& options)
{
    if (options.numbers != "auto") {
        return options.numbers == "exact" ? ENumbers::Exact : ENumbers::Rounded;
    }
    const bool bothNative = FormOf(TextPath(options.a)) == ELibraryForm::Native &&
                            FormOf(TextPath(options.b)) == ELibraryForm::Native;
    return bothNative ? ENumbers::Exact : ENumbers::Rounded;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CDisplayUnits units;
    if (!options.units.empty()) {
        if (const auto read = ReadUnits(options.units, units); !read) {
            PrintError(streams, read.Error());
            return kExitUsage;
        }
    }
    const std::optional<SLoaded> a = Load(options.a, streams);
    const std::optional<SLoaded> b = Load(options.b, streams);
    if (!a || !b) {
        return kExitFile;
    }
    const std::vector<SDifference> differences =
        Compare(a->library, b->library, NumbersFor(options));
    if (options.json) {
        PrintDifferencesJson(options, differences, streams);
    } else {
        PrintText(differences, units, streams);
    }
    return StatusOf(differences.empty() ? kExitGood : kExitNotRight, a->inPart || b->inPart);
}

} // namespace

void AddLibDiff(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        lib.add_subcommand("diff", "Records added, removed and changed, property by property");
    command->footer(kFooter);
    command->add_option("A", options->a, "Library")->required()->type_name("");
    command->add_option("B", options->b, "Library to compare with")->required()->type_name("");
    command
        ->add_option("--numbers", options->numbers,
                     "How numbers are compared: to the last bit (exact), to the six digits of "
                     "exchange files (rounded), or exact between .zov files and rounded otherwise "
                     "(auto, unless given)")
        ->check(CLI::IsMember({"auto", "exact", "rounded"}).description(""))
        ->type_name("auto|exact|rounded");
    command->add_option("--units", options->units, kUnitsHelp)->type_name("UNITS");
    command->add_flag("--json", options->json, "Report as JSON; numbers are in SI units");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
