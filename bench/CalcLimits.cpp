// SPDX-License-Identifier: Apache-2.0
#include "CalcLimits.h"

#include "BenchSupport.h"
#include "CalcJobs.h"

#include <algorithm>
#include <charconv>

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

/// One loop of its own for each, or the compiler would choose within the loop.
template <class F>
void Run(SCalcColumns& columns, F f)
{
    for (std::size_t i = 0; i < columns.r.size(); ++i) {
        columns.r[i] = f(columns.x[i], columns.y[i]);
    }
}

double Arith(double x, double y)
{
    return kA * x * x + kB * y - kC / (x + 1.5) + (x - y) * (x + y) * 0.125;
}
double Funcs(double x, double y)
{
    return Db(std::sqrt(x * x + y * y)) * 0.5 +
           std::max(std::sin(x), std::cos(y)) / (1.0 + std::abs(x * y)) -
           std::exp(-x) * std::atan2(y, x + 2.0);
}
double Cond(double x, double y)
{
    return x > y && x < 2.5 ? Pwr(x - y, 1.5) * kA
                            : (y >= 1.0 ? std::log(y + 1.0) : std::min(x, y));
}

} // namespace

void CalcLimit(std::string_view name, std::size_t count)
{
    SCalcColumns columns(count);
    const SCalcJob& job = FindCalcJob(name);
    const CStopwatch watch;
    if (name == "arith") {
        Run(columns, Arith);
    } else if (name == "funcs") {
        Run(columns, Funcs);
    } else {
        Run(columns, Cond);
    }
    PrintTime(job.name, watch.Seconds());
    PrintNumber("sum", columns.Sum());
}

void NumbersLimit(std::string_view text)
{
    double sum = 0.0;
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    const CStopwatch watch;
    for (const char* at = text.data(); at != end;) {
        double value = 0.0;
        const auto [after, error] = std::from_chars(at, end, value);
        if (error == std::errc{}) {
            sum += value;
            ++count;
            at = after;
        } else {
            ++at;
        }
    }
    PrintTime("load", watch.Seconds());
    PrintNumber("numbers", count);
    PrintNumber("sum", sum);
}

} // namespace zov::bench
