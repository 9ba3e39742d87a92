// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandLine.h"

#include "cli/Commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <memory>
#include <new>

namespace zov::cli {

namespace {

constexpr const char* kFooter = R"(Exit status:
  0   done, and good
  1   done, and what was asked about is not right: libraries differ, faults found
  2   wrong usage
  3   an input could not be read or an output not written
  4   done in part
  70  a bug of this program

Examples:
  zov import parts.xlsx --type capacitor --into caps.zov --dry-run
  zov lib list caps.zov --match '*100n*' --units C=uF

'zov COMMAND --help' tells more, with examples.)";

constexpr const char* kLibFooter = R"(Examples:
  zov lib info caps.zov
  zov lib diff before.zov after.zov)";

constexpr const char* kNetFooter = R"(Examples:
  zov net info capacitor.s2p
  zov net convert filter.s2p filter.ts --type Z --format RI)";

constexpr const char* kSetFooter = R"(Examples:
  zov set open board/board.zovp
  zov set open approved.json --json)";

/// Help as the parser gives it, with descriptions broken into lines that fit a terminal.
class CHelpFormatter final : public CLI::Formatter
{
public:
    std::string make_option_desc(const CLI::Option* option) const override
    {
        constexpr std::size_t kLineLength = 66;
        std::string text = CLI::Formatter::make_option_desc(option);
        for (std::size_t begin = 0; text.size() - begin > kLineLength;) {
            const std::size_t blank = text.rfind(' ', begin + kLineLength);
            if (blank == std::string::npos || blank <= begin) {
                break;
            }
            text[blank] = '\n';
            begin = blank + 1;
        }
        return text;
    }
};

void AddCommands(CLI::App& app, SChosen& chosen)
{
    app.description("Component model libraries: look into, convert, merge, compare, check and fill "
                    "them from part lists.");
    app.footer(kFooter);
    app.set_version_flag("--version", "zov " ZOV_VERSION, "Print the version and end");
    app.set_help_flag("-h,--help", "Print this help and end");
    app.formatter(std::make_shared<CHelpFormatter>());
    app.require_subcommand(1);

    CLI::App* lib = app.add_subcommand("lib", "Libraries (.zov, .zovx, .xml, .sp)");
    lib->footer(kLibFooter);
    lib->require_subcommand(1);
    AddLibInfo(*lib, chosen);
    AddLibList(*lib, chosen);
    AddLibConvert(*lib, chosen);
    AddLibMerge(*lib, chosen);
    AddLibDiff(*lib, chosen);
    AddLibDoctor(*lib, chosen);
    AddLibTruth(*lib, chosen);
    CLI::App* set = app.add_subcommand("set", "Sets of libraries (.zovp, .json)");
    set->footer(kSetFooter);
    set->require_subcommand(1);
    AddSetOpen(*set, chosen);
    AddAssign(app, chosen);
    AddCheck(app, chosen);
    AddIbis(app, chosen);
    AddSheet(app, chosen);
    AddImport(app, chosen);
    AddCurve(app, chosen);
    AddCalc(app, chosen);

    CLI::App* net = app.add_subcommand("net", "Network parameters (Touchstone files)");
    net->footer(kNetFooter);
    net->require_subcommand(1);
    AddNetInfo(*net, chosen);
    AddNetConvert(*net, chosen);
    AddNetDiff(*net, chosen);
}

/// "zov lib list" of the deepest command that the arguments reached.
const CLI::App& DeepestCommand(const CLI::App& app)
{
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : DeepestCommand(*parsed.front());
}

std::string FullName(const CLI::App& command)
{
    const CLI::App* parent = command.get_parent();
    return parent == nullptr ? command.get_name() : FullName(*parent) + ' ' + command.get_name();
}

/// "info, list and diff": what may follow a command.
std::string SubcommandNames(const CLI::App& command)
{
    std::string names;
    for (const CLI::App* one : command.get_subcommands([](const CLI::App*) { return true; })) {
        names += names.empty() ? "" : ", ";
        names += one->get_name();
    }
    return names;
}

/// Words of our own where the parser's say too little.
std::string TextOf(const CLI::ParseError& error, const CLI::App& command)
{
    const std::string names = SubcommandNames(command);
    if (names.empty() || error.get_name() != "RequiredError") {
        return error.what();
    }
    const std::vector<std::string> extras = command.remaining();
    return extras.empty() ? "a command is missing, expected one of " + names
                          : "'" + extras.front() + "' is no command, expected one of " + names;
}

int AnswerParseError(const CLI::App& app, const CLI::ParseError& error, const SStreams& streams)
{
    const CLI::App& command = DeepestCommand(app);
    const CLI::App* parent = command.get_parent();
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        if (dynamic_cast<const CLI::CallForHelp*>(&error) != nullptr) {
            streams.out.Write(command.help(parent == nullptr ? "" : FullName(*parent)));
        } else {
            Print(streams.out, "{}\n", error.what()); // the version
        }
        return kExitGood;
    }
    const std::string name = FullName(command);
    Print(streams.err, "{}: {}\nTry '{} --help'.\n", name, TextOf(error, command), name);
    return kExitUsage;
}

int ParseAndRun(const std::vector<std::string>& arguments, const SStreams& streams)
{
    CLI::App app{"", "zov"};
    SChosen chosen;
    AddCommands(app, chosen);
    try {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
        return AnswerParseError(app, error, streams);
    }
    return chosen.run(streams);
}

} // namespace

int RunZov(const std::vector<std::string>& arguments, const SStreams& streams)
{
    try {
        return ParseAndRun(arguments, streams);
    } catch (const std::bad_alloc&) {
        streams.err.Write("zov: there is not enough memory for this\n");
        return kExitFile;
    } catch (const std::exception& error) {
        Print(streams.err, "zov: this is a bug of zov, please report it: {}\n", error.what());
        return kExitBug;
    }
}

} // namespace zov::cli
