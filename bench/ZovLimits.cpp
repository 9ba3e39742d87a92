// SPDX-License-Identifier: Apache-2.0
/// The least that a job has to do, without any of its sense: what a figure can be measured against.
///
///     zov_limits native FILE.zov       every byte of the records copied into fresh large pages
///     zov_limits write FILE OUT        the file's bytes written again from memory
///     zov_limits csv FILE              every separator and line end found
///     zov_limits calc arith|funcs|cond N   the expression as the compiler makes it
///     zov_limits numbers FILE          every number of a text, and nothing else
///     zov_limits ibis FILE             lines by memchr; lines classified and their characters
///                                      checked; the same and every number by from_chars
#include "BenchSupport.h"
#include "CalcLimits.h"
#include "base/Arena.h"
#include "base/File.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace zov::bench {
namespace {

CFileView Open(const char* path)
{
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        fmt::print(stderr, "zov_limits: {}\n", view.Error().Full());
        std::exit(3);
    }
    return view.Take();
}

void Native(const char* path)
{
    const CStopwatch watch;
    const CFileView view = Open(path);
    CArena arena;
    // A library takes somewhat more than its file: tables instead of a stream.
    constexpr std::size_t kPiece = 4096;
    std::size_t copied = 0;
    for (std::string_view rest = view.Bytes(); !rest.empty();
         rest.remove_prefix(std::min(kPiece, rest.size()))) {
        copied += arena.Copy(rest.substr(0, kPiece)).size();
    }
    PrintTime("load", watch.Seconds());
    PrintNumber("bytes", copied);
}

void Write(const char* path, const char* out)
{
    const std::string bytes(Open(path).Bytes());
    const CStopwatch watch;
    CResult<std::unique_ptr<CAtomicFile>> file = CAtomicFile::Create(out);
    if (!file) {
        std::exit(3);
    }
    (*file)->Append(bytes);
    if (!(*file)->Commit(CAtomicFile::EDurability::Cached)) {
        std::exit(3);
    }
    PrintTime("save", watch.Seconds());
}

void Csv(const char* path)
{
    const CStopwatch watch;
    const CFileView view = Open(path);
    std::size_t marks = 0;
    for (const char c : view.Bytes()) {
        marks += (c == ',') + (c == '\n') + (c == '"');
    }
    PrintTime("load", watch.Seconds());
    PrintNumber("marks", marks);
}

/// One pass over the lines with no state and no rule.
enum class EIbisLimit
{
    Lines,
    Classes,
    Numbers
};

/// @return a sum that depends on every line, so that nothing can be left out
double IbisPass(std::string_view rest, EIbisLimit what)
{
    double sum = 0.0;
    while (!rest.empty()) {
        const void* feed = std::memchr(rest.data(), '\n', rest.size());
        const std::size_t length =
            feed == nullptr
                ? rest.size()
                : static_cast<std::size_t>(static_cast<const char*>(feed) - rest.data());
        const std::string_view line = rest.substr(0, length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        sum += 1.0;
        if (what == EIbisLimit::Lines || line.empty()) {
            continue;
        }
        unsigned odd = 0;
        for (const char c : line) {
            odd |= static_cast<unsigned>(static_cast<signed char>(c) < 32);
        }
        sum += odd + (line.front() == '[' ? 2.0 : line.front() == '|' ? 3.0 : 4.0);
        if (what == EIbisLimit::Classes) {
            continue;
        }
        const char* const end = line.data() + line.size();
        for (const char* at = line.data(); at != end;) {
            double value = 0.0;
            const char* const start = *at == '+' ? at + 1 : at;
            const auto [after, error] = std::from_chars(start, end, value);
            sum += error == std::errc{} ? value : 0.0;
            at = error == std::errc{} ? after : at;
            while (at != end && *at != ' ') {
                ++at;
            }
            while (at != end && *at == ' ') {
                ++at;
            }
        }
    }
    return sum;
}

void Ibis(const char* path)
{
    const CFileView view = Open(path);
    IbisPass(view.Bytes(), EIbisLimit::Lines); // the pages are mapped in before the clock starts
    for (const auto& [label, what] : {std::pair{"numbers", EIbisLimit::Numbers},
                                      {"classes", EIbisLimit::Classes},
                                      {"lines", EIbisLimit::Lines}}) {
        const CStopwatch watch;
        const double sum = IbisPass(view.Bytes(), what);
        PrintTime(label, watch.Seconds());
        PrintNumber(label, sum);
    }
}

} // namespace
} // namespace zov::bench

int main(int argc, char** argv)
{
    using namespace zov::bench;
    const std::string_view job = argc > 2 ? argv[1] : "";
    if (job == "native") {
        Native(argv[2]);
    } else if (job == "write" && argc > 3) {
        Write(argv[2], argv[3]);
    } else if (job == "csv") {
        Csv(argv[2]);
    } else if (job == "ibis") {
        Ibis(argv[2]);
    } else if (job == "calc" && argc > 3) {
        CalcLimit(argv[2], static_cast<std::size_t>(std::atoll(argv[3])));
    } else if (job == "numbers") {
        const zov::CFileView view = Open(argv[2]);
        NumbersLimit(view.Bytes());
    } else {
        return 2;
    }
    PrintPeak();
    return 0;
}
