// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"
#include "cli/Ibis.h"
#include "cli/Reporting.h"
#include "ibis/CheckReport.h"
#include "ibis/Composite.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

using namespace zov::ibis;

constexpr const char* kFooter =
    R"(Writes one component whose buffers, package and on-die power network are external circuits, and
beside it the SPICE file that wraps the buffers. The files named in the description are looked for in
its folder, and named in what is written by their way from there. What was written is checked; the status is 1 when the check finds errors, which pins without
R, L or C give, since NC is written for these.

Examples:
  zov ibis compose memory.json -o memory.ibs
  zov ibis compose memory.json -o memory.ibs --date 2026-03-01)";

struct SOptions
{
    std::string description;
    std::string out;
    std::string date;
};

CResult<SLocalTime> DateOf(const std::string& text)
{
    SLocalTime time = LocalTimeNow();
    if (text.empty()) {
        return time;
    }
    const auto parts = Split(text, '-');
    const auto number = [&](std::size_t i, std::int64_t low, std::int64_t high) {
        const auto value = i < parts.size() ? ParseInt(parts[i]) : std::nullopt;
        return value && *value >= low && *value <= high ? static_cast<int>(*value) : -1;
    };
    time.year = number(0, 1, 9999);
    time.month = number(1, 1, 12);
    time.day = number(2, 1, 31);
    if (parts.size() != 3 || time.year < 0 || time.month < 0 || time.day < 0) {
        return Fail(EErr::Argument, "'" + text + "' is no date, expected YEAR-MONTH-DAY");
    }
    return time;
}

CResult<SComposite> ReadDescription(const SOptions& options)
{
    const std::filesystem::path path = TextPath(options.description);
    const std::filesystem::path out = TextPath(options.out);
    ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(path));
    CResult<SComposite> composite = ReadCompositeJson(text);
    if (!composite) {
        SError error = composite.TakeError();
        error.pos.file = options.description;
        return error;
    }
    if (composite->fileName.empty()) {
        composite->fileName = PathText(out.filename());
    }
    if (composite->wrapperFile.empty()) {
        composite->wrapperFile = PathText(out.stem()) + ".sp";
    }
    RETURN_IF_ERROR(FindModelTypes(*composite, path.parent_path()));
    MoveCompositeFiles(*composite, path.parent_path(), out.parent_path());
    RETURN_IF_ERROR(CheckCompositeTargets(*composite, out, path));
    return composite;
}

/// Errors that the file was written with are shown: they come from the description.
int CheckWritten(const SOptions& options, const SStreams& streams)
{
    SIPCheckInfo info;
    CheckIbisFile(options.out.c_str(), &info);
    for (const SIPMessage& message : info.messages) {
        if (message.severity == EIPSeverity::Error) {
            Print(streams.err, "{} - {}\n", message.head, message.text);
        }
    }
    if (!info.problem.empty()) {
        Print(streams.err, "zov: not checked: {}\n", info.problem);
        return kExitInPart;
    }
    Print(streams.out, "check: {}, {}\n", Counted(info.errors, "error"),
          Counted(info.warnings, "warning"));
    return info.result == kIPCheckErrors ? kExitNotRight : kExitGood;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const CResult<SLocalTime> date = DateOf(options.date);
    if (!date) {
        PrintError(streams, date.Error());
        return kExitUsage;
    }
    const CResult<SComposite> composite = ReadDescription(options);
    if (!composite) {
        PrintError(streams, composite.Error());
        return kExitFile;
    }
    const std::filesystem::path out = TextPath(options.out);
    if (const CResult<void> saved = SaveComposite(*composite, out, *date); !saved) {
        PrintError(streams, saved.Error());
        return kExitFile;
    }
    Print(streams.out, "{}: {}, {}\n", options.out, Counted(composite->pins.size(), "pin"),
          Counted(composite->buffers.size(), "buffer"));
    if (!composite->buffers.empty()) {
        Print(streams.out, "{}: {}\n",
              PathText(out.parent_path() / TextPath(composite->wrapperFile)),
              Counted(composite->buffers.size() + 1, "sub-circuit"));
    }
    return CheckWritten(options, streams);
}

} // namespace

void AddIbisCompose(CLI::App& ibis, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        ibis.add_subcommand("compose", "Write a composite IBIS file from a description");
    command->footer(kFooter);
    command->add_option("DESCRIPTION", options->description, "JSON file")
        ->required()
        ->type_name("");
    command->add_option("-o,--out", options->out, "IBIS file to write")
        ->required()
        ->type_name("FILE");
    command->add_option("--date", options->date, "Date of the file instead of today")
        ->type_name("YEAR-MONTH-DAY");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
