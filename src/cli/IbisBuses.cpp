// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Ibis.h"
#include "cli/Reporting.h"
#include "ibis/IbisLoader.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

namespace {

using namespace zov::ibis;

constexpr const char* kFooter =
    R"(Bus definitions stand in an IBIS file as comment lines in the section of their component. They are
shown as JSON, which --set takes back: it writes a copy of the file beside it, named with _Copy and a
number, that has these definitions instead. The status is 1 when the file has none.

Examples:
  zov ibis buses controller.ibs > buses.json
  zov ibis buses controller.ibs --component ctrl --set buses.json)";

struct SOptions
{
    std::string file;
    std::string component;
    std::string set;
};

/// What was odd in a block, with the file's name in front.
class CToldOf final : public CDiagSink
{
public:
    CToldOf(const std::string& file, const SStreams& streams)
        : m_file(file)
        , m_streams(streams)
    {
    }
    void Report(const SDiag& diag) override
    {
        Print(m_streams.err, "zov: {}:{}: {}\n", m_file, diag.pos.line, diag.text);
    }

private:
    const std::string& m_file;
    const SStreams& m_streams;
};

CResult<void> Open(const SOptions& options, CIBISLoader& loader)
{
    RETURN_IF_ERROR(loader.Open(TextPath(options.file)));
    ASSIGN_OR_RETURN(const std::string component,
                     ChooseComponent(loader.Components(), options.component));
    return loader.Select(component);
}

CResult<void> Set(const SOptions& options, CIBISLoader& loader, const SStreams& streams)
{
    ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(TextPath(options.set)));
    CResult<SBusDefinitions> definitions = ReadBusJson(text);
    if (!definitions) {
        SError error = definitions.TakeError();
        error.pos.file = options.set;
        return error;
    }
    loader.SetDefinitions(definitions.Take());
    ASSIGN_OR_RETURN(const std::filesystem::path copy, loader.SaveCopy());
    Print(streams.out, "{}\n", PathText(copy));
    return {};
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CToldOf told(options.file, streams);
    CIBISLoader loader(&told);
    CResult<void> done = Open(options, loader);
    if (done.Ok() && !options.set.empty()) {
        done = Set(options, loader, streams);
    }
    if (!done) {
        PrintError(streams, done.Error());
        return done.Error().code == EErr::Argument && options.set.empty() ? kExitUsage : kExitFile;
    }
    if (!options.set.empty()) {
        return kExitGood;
    }
    if (!loader.HadDefinitions()) {
        Print(streams.err, "zov: {}: component '{}' has no bus definitions\n", options.file,
              loader.Pins().component);
        return kExitNotRight;
    }
    streams.out.Write(WriteBusJson(loader.Definitions()));
    return kExitGood;
}

} // namespace

void AddIbisBuses(CLI::App& ibis, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = ibis.add_subcommand("buses", "Bus definitions of a component");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "IBIS file")->required()->type_name("");
    command
        ->add_option("--component", options->component,
                     "Which component; may be left out when the file has one")
        ->type_name("NAME");
    command->add_option("--set", options->set, "Write a copy with these definitions")
        ->type_name("BUSES.json");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
