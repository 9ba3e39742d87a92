// SPDX-License-Identifier: Apache-2.0
/// What network data can be measured against:
///
///     zov_net_limits from_chars FILE    every number of the file by std::from_chars, into memory
///     zov_net_limits strtod FILE        the same by strtod
///     zov_net_limits to_chars FILE      every number to 15 digits by std::to_chars, no file
///     zov_net_limits printf FILE        the same by snprintf
///     zov_net_limits zgesv PORTS POINTS     S to Z by LAPACK's solver, a matrix at a time
///     zov_net_limits zgetri PORTS POINTS    the same by its inverse
#include "BenchSupport.h"
#include "RandomNetwork.h"
#include "base/File.h"

#include <cblas.h>
#include <charconv>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>
#define lapack_complex_float std::complex<float>
#define lapack_complex_double std::complex<double>
#include <lapacke.h>

namespace zov::bench {
namespace {

using TComplex = std::complex<double>;

bool Separates(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// The numbers behind the head lines (those that begin with '!', '#' or '[').
template <class F>
void Numbers(const char* path, std::vector<double>& numbers, F read)
{
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        std::exit(3);
    }
    std::string_view text = view->Bytes();
    while (!text.empty() && (text[0] == '!' || text[0] == '#' || text[0] == '[')) {
        text.remove_prefix(std::min(text.find('\n') + 1, text.size()));
    }
    const char* p = text.data();
    const char* const end = p + text.size();
    for (;;) {
        while (p < end && Separates(*p)) {
            ++p;
        }
        if (p >= end || *p == '[') {
            return;
        }
        double value = 0.0;
        p = read(p, end, value);
        numbers.push_back(value);
    }
}

const char* ByFromChars(const char* p, const char* end, double& value)
{
    p += *p == '+' ? 1 : 0;
    return std::from_chars(p, end, value).ptr;
}
const char* ByStrtod(const char* p, const char* /*end*/, double& value)
{
    char* stop = nullptr;
    value = std::strtod(p, &stop);
    return stop;
}

void Read(const char* path, bool fast)
{
    std::vector<double> numbers;
    numbers.reserve(16U << 20U);
    const CStopwatch watch;
    fast ? Numbers(path, numbers, ByFromChars) : Numbers(path, numbers, ByStrtod);
    PrintTime("load", watch.Seconds());
    PrintNumber("numbers", numbers.size());
}

void Format(const char* path, bool fast)
{
    std::vector<double> numbers;
    Numbers(path, numbers, ByFromChars);
    char buffer[64];
    std::size_t bytes = 0;
    const CStopwatch watch;
    for (const double value : numbers) {
        bytes +=
            fast ? static_cast<std::size_t>(
                       std::to_chars(buffer, buffer + 64, value, std::chars_format::general, 15)
                           .ptr -
                       buffer)
                 : static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, "%.15lg", value));
    }
    PrintTime("save", watch.Seconds());
    PrintNumber("bytes", bytes);
}

/// Z = (1 - S)^-1 (1 + S) R = (2 (1 - S)^-1 - 1) R.
void Convert(int ports, std::size_t points, bool solve)
{
    openblas_set_num_threads(1);
    const auto n = static_cast<std::size_t>(ports);
    std::vector<TComplex> values(n * n * points);
    FillScattering(values.data(), n, points);
    std::vector<TComplex> below(n * n);
    std::vector<TComplex> work(64 * n);
    std::vector<int> pivots(n);
    const CStopwatch watch;
    for (std::size_t f = 0; f < points; ++f) {
        TComplex* const s = values.data() + f * n * n;
        for (std::size_t i = 0; i < n * n; ++i) {
            below[i] = -s[i];
        }
        for (std::size_t i = 0; i < n; ++i) {
            below[i * (n + 1)] += 1.0;
            s[i * (n + 1)] += 1.0;
        }
        if (solve) {
            LAPACKE_zgesv_work(LAPACK_COL_MAJOR, ports, ports, below.data(), ports, pivots.data(),
                               s, ports);
        } else {
            LAPACKE_zgetrf_work(LAPACK_COL_MAJOR, ports, ports, below.data(), ports, pivots.data());
            LAPACKE_zgetri_work(LAPACK_COL_MAJOR, ports, below.data(), ports, pivots.data(),
                                work.data(), static_cast<int>(work.size()));
            for (std::size_t i = 0; i < n * n; ++i) {
                s[i] = 2.0 * below[i];
            }
            for (std::size_t i = 0; i < n; ++i) {
                s[i * (n + 1)] -= 1.0;
            }
        }
        for (std::size_t i = 0; i < n * n; ++i) {
            s[i] *= 50.0;
        }
    }
    PrintTime("S2Z", watch.Seconds());
    TComplex sum = 0.0;
    for (const TComplex& value : values) {
        sum += value;
    }
    PrintNumber("sum_re", sum.real());
}

} // namespace
} // namespace zov::bench

int main(int argc, char** argv)
{
    using namespace zov::bench;
    const std::string_view job = argc > 2 ? argv[1] : "";
    if (job == "from_chars" || job == "strtod") {
        Read(argv[2], job == "from_chars");
    } else if (job == "to_chars" || job == "printf") {
        Format(argv[2], job == "to_chars");
    } else if (argc > 3 && (job == "zgesv" || job == "zgetri")) {
        Convert(std::atoi(argv[2]), static_cast<std::size_t>(std::atoll(argv[3])), job == "zgesv");
    } else {
        std::fputs("usage: zov_net_limits JOB ARGUMENTS\n", stderr);
        return 2;
    }
    PrintPeak();
    return 0;
}
