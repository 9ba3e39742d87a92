// SPDX-License-Identifier: Apache-2.0
#include "MuParserPeer.h"

#include "BenchSupport.h"
#include "CalcJobs.h"

#include <muParser.h>

namespace zov::bench {

namespace {

double Db(double v)
{
    return 20.0 * std::log10(std::abs(v));
}
double Pwr(double base, double exponent)
{
    const double power = std::pow(std::abs(base), exponent);
    return base > 0.0 ? power : base < 0.0 ? -power : 0.0;
}

/// muParser's own "log" is the natural one in this version, as ours.
mu::Parser MakeParser(double* x, double* y)
{
    mu::Parser parser;
    parser.DefineFun("db", Db);
    parser.DefineFun("pwr", Pwr);
    parser.DefineConst("a", kA);
    parser.DefineConst("b", kB);
    parser.DefineConst("c", kC);
    parser.DefineVar("x", x);
    parser.DefineVar("y", y);
    return parser;
}

} // namespace

void MuParser(std::string_view name, std::size_t count)
{
    const SCalcJob& job = FindCalcJob(name);
    SCalcColumns columns(count);
    double x = 0.0;
    double y = 0.0;
    const CStopwatch watch;
    mu::Parser parser = MakeParser(&x, &y);
    parser.SetExpr(job.expression);
    for (std::size_t i = 0; i < count; ++i) {
        x = columns.x[i];
        y = columns.y[i];
        columns.r[i] = parser.Eval();
    }
    PrintTime(job.name, watch.Seconds());
    PrintNumber("sum", columns.Sum());
}

void MuParserBulk(std::string_view name, std::size_t count)
{
    const SCalcJob& job = FindCalcJob(name);
    SCalcColumns columns(count);
    const CStopwatch watch;
    mu::Parser parser = MakeParser(columns.x.data(), columns.y.data());
    parser.SetExpr(job.expression);
    parser.Eval(columns.r.data(), static_cast<int>(count));
    PrintTime(job.name, watch.Seconds());
    PrintNumber("sum", columns.Sum());
}

void MuParserCompile(std::string_view name)
{
    const SCalcJob& job = FindCalcJob(name);
    double x = 1.75;
    double y = 0.5;
    std::vector<std::string> texts;
    for (int i = 0; i < kTexts; ++i) {
        texts.push_back(CalcText(job, i));
    }
    mu::Parser parser = MakeParser(&x, &y);
    double sum = 0.0;
    const CStopwatch watch;
    for (const std::string& text : texts) {
        parser.SetExpr(text);
        sum += parser.Eval();
    }
    PrintTime(job.name, watch.Seconds() / kTexts);
    PrintNumber("sum", sum);
}

} // namespace zov::bench
