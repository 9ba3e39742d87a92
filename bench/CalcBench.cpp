// SPDX-License-Identifier: Apache-2.0
#include "CalcBench.h"

#include "BenchSupport.h"
#include "CalcJobs.h"
#include "curve/Calculator.h"

namespace zov::bench {

namespace {

curve::CParameterTable Parameters()
{
    curve::CParameterTable table;
    table.Set("a", kA);
    table.Set("b", kB);
    table.Set("c", kC);
    return table;
}

} // namespace

void Calc(std::string_view name, std::size_t count)
{
    const SCalcJob& job = FindCalcJob(name);
    SCalcColumns columns(count);
    const curve::CParameterTable table = Parameters();
    const auto column = [](const curve::SColumnRequest& request) {
        return request.name == "x"   ? std::optional<std::size_t>(0)
               : request.name == "y" ? std::optional<std::size_t>(1)
                                     : std::nullopt;
    };
    const CStopwatch watch;
    const curve::CCompiledExpression program(curve::ParseExpression(job.expression, table), table,
                                             column);
    const std::array<const double*, 2> inputs = {columns.x.data(), columns.y.data()};
    program.Evaluate(inputs, count, columns.r.data());
    PrintTime(job.name, watch.Seconds());
    PrintNumber("sum", columns.Sum());
}

void CalcCompile(std::string_view name)
{
    const SCalcJob& job = FindCalcJob(name);
    curve::CParameterTable table = Parameters();
    table.Set("x", 1.75);
    table.Set("y", 0.5);
    std::vector<std::string> texts;
    for (int i = 0; i < kTexts; ++i) {
        texts.push_back(CalcText(job, i));
    }
    double sum = 0.0;
    const CStopwatch watch;
    for (const std::string& text : texts) {
        sum += curve::Evaluate(curve::ParseExpression(text, table), table);
    }
    PrintTime(job.name, watch.Seconds() / kTexts);
    PrintNumber("sum", sum);
}

} // namespace zov::bench
