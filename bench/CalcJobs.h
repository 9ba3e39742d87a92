// SPDX-License-Identifier: Apache-2.0
/// Expressions and columns that the calculator, its peers and the limit loops are timed with.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace zov::bench {

struct SCalcJob
{
    std::string_view name;
    const char* expression;
};
inline constexpr std::array<SCalcJob, 3> kCalcJobs = {{
    {"arith", "a*x*x+b*y-c/(x+1.5)+(x-y)*(x+y)*0.125"},
    {"funcs", "db(sqrt(x^2+y^2))*0.5+max(sin(x),cos(y))/(1+abs(x*y))-exp(-x)*atan2(y,x+2)"},
    {"cond", "x>y && x<2.5 ? pwr(x-y,1.5)*a : (y>=1 ? log(y+1) : min(x,y))"},
}};
inline constexpr double kA = 1.25;
inline constexpr double kB = -0.75;
inline constexpr double kC = 3.5;
/// Different texts that are compiled.
inline constexpr int kTexts = 100000;

inline const SCalcJob& FindCalcJob(std::string_view name)
{
    for (const SCalcJob& job : kCalcJobs) {
        if (job.name == name) {
            return job;
        }
    }
    std::fputs("no such expression; arith, funcs, cond\n", stderr);
    std::exit(2);
}

/// x and y of each point, between 0 and 5, and room for the result, touched.
struct SCalcColumns
{
    explicit SCalcColumns(std::size_t count)
        : x(count)
        , y(count)
        , r(count, 1.0)
    {
        std::uint64_t state = 88172645463325252ULL;
        const auto next = [&] {
            state ^= state << 13U;
            state ^= state >> 7U;
            state ^= state << 17U;
            return static_cast<double>(state >> 11U) * 0x1p-53 * 5.0;
        };
        for (std::size_t i = 0; i < count; ++i) {
            x[i] = next();
            y[i] = next();
        }
    }
    [[nodiscard]] double Sum() const
    {
        double sum = 0.0;
        for (const double value : r) {
            sum += value;
        }
        return sum;
    }
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> r;
};

/// The expression made different from its neighbours by its last number.
inline std::string CalcText(const SCalcJob& job, int number)
{
    return std::string(job.expression) + "+0." + std::to_string(number);
}

} // namespace zov::bench
