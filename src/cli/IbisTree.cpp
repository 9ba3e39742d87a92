// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Commands.h"
#include "cli/Ibis.h"
#include "cli/Reporting.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <memory>

namespace zov::cli {

namespace {

using namespace zov::ibis;

constexpr const char* kFooter =
    R"(Each line has a keyword, sub-parameter or row with its value and, behind a #, its line in the file.
What could not be read is kept as text and marked with !. Tables are shown by their number of rows;
--rows adds the rows. .ibs, .pkg, .ims and .ebd files are read. The status is 1 when the check
finds errors; --no-check leaves it out.

Examples:
  zov ibis tree buffer.ibs --depth 2
  zov ibis tree buffer.ibs --json --rows)";

struct SOptions
{
    std::string file;
    std::size_t depth = 0; ///< 0: all
    bool rows = false;
    bool json = false;
    bool noCheck = false;
};

std::string MarkText(const SIPMark& mark, const SIPCheckInfo& check)
{
    if (mark.mark == EIPMark::Checker) {
        const SIPMessage& message = check.messages[mark.message];
        return message.head + " - " + message.text;
    }
    return std::string(IPMarkText(mark.mark));
}

class CTreePrinter
{
public:
    CTreePrinter(const SOptions& options, const SIPCheckInfo& check, const SStreams& streams)
        : m_options(options)
        , m_check(check)
        , m_streams(streams)
    {
    }
    void Show(const CIPDataObject& object, std::size_t depth)
    {
        if (m_options.depth != 0 && depth >= m_options.depth) {
            return;
        }
        const std::string indent(2 * depth, ' ');
        std::string line = indent + OneLine(object.Name());
        if (!object.Value().empty()) {
            line += (object.Name().empty() ? "" : "  ") + OneLine(object.Value());
        }
        if (object.Table() != nullptr) {
            line += "  (" + Counted(object.Table()->RowCount(), "row") + ")";
        }
        const bool isRun = object.LastLine() != object.Line();
        Print(m_streams.out, "{}  #{}{}\n", line, object.Line(),
              isRun ? fmt::format("-{}", object.LastLine()) : "");
        for (const SIPMark& mark : object.Marks()) {
            Print(m_streams.out, "{}  ! {}: {}\n", indent, mark.line, MarkText(mark, m_check));
        }
        if (m_options.rows && object.Table() != nullptr) {
            for (std::size_t row = 0; row < object.Table()->RowCount(); ++row) {
                Print(m_streams.out, "{}  {}\n", indent, OneLine(object.Table()->RowText(row)));
            }
        }
        for (const auto& child : object.Children()) {
            Show(*child, depth + 1);
        }
    }

private:
    const SOptions& m_options;
    const SIPCheckInfo& m_check;
    const SStreams& m_streams;
};

TJson NumberJson(double value)
{
    return std::isnan(value) ? TJson() : TJson(value);
}

TJson ColumnsJson(const CIPDataTable& table)
{
    constexpr const char* kNames[] = {"axis", "typ", "min", "max"};
    TJson json = TJson::object();
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        TJson column = TJson::array();
        for (const double value : i == 0 ? table.Axis() : table.Corner(i - 1)) {
            column.push_back(NumberJson(value));
        }
        json[kNames[i]] = std::move(column);
    }
    return json;
}

TJson ObjectJson(const CIPDataObject& object, const SOptions& options, const SIPCheckInfo& check,
                 std::size_t depth)
{
    TJson json = {{"name", object.Name()},
                  {"value", object.Value()},
                  {"class", object.ClassName()},
                  {"line", object.Line()}};
    if (object.LastLine() != object.Line()) {
        json["lastLine"] = object.LastLine();
    }
    if (const auto* number = dynamic_cast<const CIPDataNumber*>(&object)) {
        json["number"] = NumberJson(number->Number().value);
    } else if (const auto* range = dynamic_cast<const CIPDataValueRange*>(&object)) {
        json["typ"] = NumberJson(range->Typ().value);
        json["min"] = NumberJson(range->Min().value);
        json["max"] = NumberJson(range->Max().value);
    } else if (object.Table() != nullptr) {
        json["rows"] = object.Table()->RowCount();
        if (options.rows) {
            json["columns"] = ColumnsJson(*object.Table());
        }
    }
    for (const SIPMark& mark : object.Marks()) {
        json["marks"].push_back({{"line", mark.line}, {"text", MarkText(mark, check)}});
    }
    if (options.depth == 0 || depth + 1 < options.depth) {
        for (const auto& child : object.Children()) {
            json["children"].push_back(ObjectJson(*child, options, check, depth + 1));
        }
    }
    return json;
}

void ShowJson(const SOptions& options, const CIBISDataParser& parser, const SStreams& streams)
{
    const SIPCounts counts = CountIPData(*parser.Data());
    TJson json = {{"version", kJsonVersion},
                  {"file", options.file},
                  {"counts",
                   {{"components", counts.components},
                    {"pins", counts.pins},
                    {"models", counts.models},
                    {"tables", counts.tables},
                    {"points", counts.points},
                    {"marked", counts.marked}}}};
    if (!options.noCheck) {
        json["check"] = {{"result", parser.CheckInfo().result},
                         {"errors", parser.CheckInfo().errors},
                         {"warnings", parser.CheckInfo().warnings}};
    }
    json["objects"] = TJson::array();
    for (const auto& child : parser.Data()->Children()) {
        json["objects"].push_back(ObjectJson(*child, options, parser.CheckInfo(), 0));
    }
    PrintJson(streams, json);
}

void ShowText(const SOptions& options, const CIBISDataParser& parser, const SStreams& streams)
{
    CTreePrinter printer(options, parser.CheckInfo(), streams);
    for (const auto& child : parser.Data()->Children()) {
        printer.Show(*child, 0);
    }
    const SIPCounts counts = CountIPData(*parser.Data());
    Print(streams.out, "{}, {}, {}, {} with {}\n", Counted(counts.components, "component"),
          Counted(counts.pins, "pin"), Counted(counts.models, "model"),
          Counted(counts.tables, "table"), Counted(counts.points, "row"));
    if (!options.noCheck) {
        Print(streams.out, "check: {}, {}\n", Counted(parser.CheckInfo().errors, "error"),
              Counted(parser.CheckInfo().warnings, "warning"));
    }
}

int Execute(const SOptions& options, const SStreams& streams)
{
    CIBISDataParser parser;
    const auto first = options.noCheck ? EIPCheckFirst::No : EIPCheckFirst::Yes;
    if (const CResult<void> read = parser.Read(TextPath(options.file), {first, {}}); !read) {
        PrintError(streams, read.Error());
        return kExitFile;
    }
    if (!parser.CheckInfo().problem.empty()) {
        Print(streams.err, "zov: not checked: {}\n", parser.CheckInfo().problem);
    }
    options.json ? ShowJson(options, parser, streams) : ShowText(options, parser, streams);
    return parser.CheckInfo().result == kIPCheckErrors ? kExitNotRight : kExitGood;
}

} // namespace

void AddIbisTree(CLI::App& ibis, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = ibis.add_subcommand("tree", "The objects of an IBIS file");
    command->footer(kFooter);
    command->add_option("FILE", options->file, "IBIS file")->required()->type_name("");
    command->add_option("--depth", options->depth, "Levels to show; all if not given")
        ->type_name("N");
    command->add_flag("--rows", options->rows, "The rows of tables too");
    command->add_flag("--no-check", options->noCheck, "Don't check the file first");
    command->add_flag("--json", options->json, "As JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
