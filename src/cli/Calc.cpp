// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/CurveFiles.h"
#include "cli/Reporting.h"
#include "curve/Calculator.h"
#include "curve/CurveExpression.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter =
    R"(Operators, from the loosest: ?:  ||  &&  < <= > >= == !=  + -  * /  ^ (or **).
Functions: log log10 exp sqrt sin cos tan sinh cosh tanh asin acos atan abs int nint db sgn;
of two operands: pow pwr pwrs atan2 max min sign. With --over: re im mag phase of a curve.
An expression that begins with '-' and a letter needs '--' before it.

Examples:
  zov calc '1/(2*pi*f*C)' -D pi=3.14159265358979 -D f=1e6 -D C=100e-9
  zov calc 'db($1)-db($2)' --over ports.cur)";

struct SOptions
{
    std::string expression;
    std::vector<std::string> definitions;
    std::string over;
    bool postfix = false;
    bool json = false;
};

/// "f(x,y)" in front of the equals sign.
CResult<void> DefineFunction(std::string_view head, std::string_view body,
                             curve::CParameterTable& table)
{
    const std::size_t open = head.find('(');
    curve::SUserFunction function{std::string(Trim(head.substr(0, open))), {}, std::string(body)};
    const std::string_view inside = Trim(head.substr(open + 1, head.size() - open - 2));
    if (!inside.empty()) {
        for (const std::string_view argument : Split(inside, ',')) {
            function.arguments.emplace_back(Trim(argument));
        }
    }
    return table.Define(std::move(function));
}

CResult<void> Define(const std::string& text, curve::CParameterTable& table)
{
    const std::size_t equals = text.find('=');
    const std::string_view head = Trim(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || head.empty()) {
        return Fail(EErr::Argument,
                    fmt::format("-D is '{}', expected NAME=VALUE, NAME=EXPRESSION or "
                                "'NAME(ARGUMENT,...)=EXPRESSION'",
                                text));
    }
    const std::string_view body = std::string_view(text).substr(equals + 1);
    if (head.back() == ')' && head.find('(') != std::string_view::npos) {
        return DefineFunction(head, body, table);
    }
    if (const auto value = ParseDouble(body)) {
        table.Set(head, *value);
    } else {
        table.Set(head, body);
    }
    return {};
}

TJson Head(const SOptions& options)
{
    return {{"version", kJsonVersion}, {"expression", options.expression}};
}

/// JSON has no infinities.
TJson JsonNumber(double value)
{
    return std::isfinite(value) ? TJson(value) : TJson(FormatShortest(value));
}

CResult<void> PrintPostfix(const SOptions& options, const curve::CParameterTable& table,
                           const SStreams& streams)
{
    ASSIGN_OR_RETURN(const std::vector<std::string> texts, curve::Guarded([&] {
                         return curve::ParseExpression(options.expression, table,
                                                       options.over.empty()
                                                           ? curve::ECurveParts::No
                                                           : curve::ECurveParts::Yes)
                             .Texts();
                     }));
    if (options.json) {
        TJson document = Head(options);
        document["postfix"] = texts;
        PrintJson(streams, document);
        return {};
    }
    for (const std::string& text : texts) {
        Print(streams.out, "{}\n", text);
    }
    return {};
}

CResult<void> PrintValue(const SOptions& options, const curve::CParameterTable& table,
                         const SStreams& streams)
{
    ASSIGN_OR_RETURN(const double value, curve::Calculate(options.expression, table));
    if (options.json) {
        TJson document = Head(options);
        document["value"] = JsonNumber(value);
        PrintJson(streams, document);
    } else {
        Print(streams.out, "{}\n", FormatShortest(value));
    }
    return {};
}

void PrintPoints(const curve::CCurvePoints& points, const SStreams& streams)
{
    std::string text;
    for (std::size_t i = 0; i < points.Count() && streams.out.Ok(); ++i) {
        text += FormatShortest(points.Column(0)[i]);
        text += '\t';
        text += FormatShortest(points.Column(1)[i]);
        text += '\n';
        if (text.size() > 60000 || i + 1 == points.Count()) {
            streams.out.Write(text);
            text.clear();
        }
    }
}

CResult<void> PrintCurve(const SOptions& options, const curve::CCurveSet& set,
                         const curve::CParameterTable& table, const SStreams& streams)
{
    ASSIGN_OR_RETURN(const curve::SComputedCurve computed,
                     curve::ComputeCurve(options.expression, set, table));
    const curve::CCurvePoints& points = computed.curve->Points();
    for (const std::string& note : computed.notes) {
        Print(streams.err, "zov: {}\n", note);
    }
    if (!options.json) {
        PrintPoints(points, streams);
        return {};
    }
    TJson document = Head(options);
    document["notes"] = computed.notes;
    document["points"] = TJson::array();
    for (std::size_t i = 0; i < points.Count(); ++i) {
        document["points"].push_back(
            {JsonNumber(points.Column(0)[i]), JsonNumber(points.Column(1)[i])});
    }
    PrintJson(streams, document);
    return {};
}

int Execute(const SOptions& options, const SStreams& streams)
{
    curve::CParameterTable table;
    for (const std::string& definition : options.definitions) {
        if (const CResult<void> defined = Define(definition, table); !defined) {
            PrintError(streams, defined.Error());
            return kExitUsage;
        }
    }
    CResult<void> done;
    bool inPart = false;
    if (options.postfix) {
        done = PrintPostfix(options, table, streams);
    } else if (options.over.empty()) {
        done = PrintValue(options, table, streams);
    } else {
        const auto file = LoadCurves(options.over, streams);
        if (!file) {
            return kExitFile;
        }
        inPart = file->skippedLines != 0;
        curve::CCurveSet set;
        for (const curve::TCurvePtr& curve : file->curves) {
            set.Add(curve);
        }
        done = PrintCurve(options, set, table, streams);
    }
    if (!done) {
        PrintError(streams, done.Error());
        return kExitNotRight;
    }
    return StatusOf(kExitGood, inPart);
}

} // namespace

void AddCalc(CLI::App& zov, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = zov.add_subcommand("calc", "Evaluate an expression, also over curves");
    command->footer(kFooter);
    command->add_option("EXPRESSION", options->expression, "What to evaluate")
        ->required()
        ->type_name("");
    command
        ->add_option("-D", options->definitions,
                     "NAME=VALUE, NAME=EXPRESSION or 'NAME(ARGUMENT,...)=EXPRESSION'; may be "
                     "repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command->add_flag("--postfix", options->postfix,
                      "Print the operands and operators in the order of evaluation instead");
    command
        ->add_option("--over", options->over,
                     "Curve file: evaluate for every point of the first curve that is named; "
                     "prints x and value")
        ->type_name("FILE");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
