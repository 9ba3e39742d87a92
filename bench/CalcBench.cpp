// SPDX-License-Identifier: Apache-2.0
#include "CalcBench.h"

#include "BenchSupport.h"
#include "CalcJobs.h"
#include "curve/Calculator.h"
#include "curve/CurveFile.h"

namespace zov::bench {

namespace {

template <class T>
auto Must(CResult<T> result)
{
    if (!result) {
        fmt::print(stderr, "zov_bench: {}\n", result.Error().text);
        std::exit(3);
    }
    if constexpr (!std::is_void_v<T>) {
        return result.Take();
    }
}

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

void MakeCurve(std::size_t count, const char* out)
{
    const SCalcColumns columns(count);
    auto made = std::make_shared<curve::CCurve>();
    made->Header().name = "Port1::Z";
    made->Header().valueName = "Z0_real_imag";
    made->Header().legend = "Z";
    for (std::size_t i = 0; i < count; ++i) {
        made->Points().Add(
            std::array{1e3 * static_cast<double>(i + 1), columns.x[i], columns.y[i]});
    }
    const curve::TCurvePtr curve = made;
    Must(curve::SaveCurves(out, std::span(&curve, 1), curve::EKind::FrequencyDomain));
}

void CurveLoad(const char* path)
{
    const CStopwatch watch;
    const curve::SCurveFile file = Must(curve::ReadCurveFile(path, {}));
    PrintTime("load", watch.Seconds());
    double sum = 0.0;
    std::size_t points = 0;
    for (const curve::TCurvePtr& curve : file.curves) {
        points += curve->Points().Count();
        for (std::size_t c = 0; c < curve->Points().Columns(); ++c) {
            for (const double value : curve->Points().Column(c)) {
                sum += value;
            }
        }
    }
    PrintNumber("points", points);
    PrintNumber("sum", sum);
}

void CurveSave(const char* path, const char* out)
{
    const curve::SCurveFile file = Must(curve::ReadCurveFile(path, {}));
    const CStopwatch watch;
    Must(curve::SaveCurves(out, file.curves, file.kind));
    PrintTime("save", watch.Seconds());
}

} // namespace zov::bench
