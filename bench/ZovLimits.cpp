// SPDX-License-Identifier: Apache-2.0
/// The least that a job has to do, without any of its sense: what a figure can be measured against.
///
///     zov_limits native FILE.zov       every byte of the records copied into fresh large pages
///     zov_limits write FILE OUT        the file's bytes written again from memory
///     zov_limits csv FILE              every separator and line end found
#include "BenchSupport.h"
#include "base/Arena.h"
#include "base/File.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

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
    } else {
        return 2;
    }
    PrintPeak();
    return 0;
}
