// SPDX-License-Identifier: Apache-2.0
/// One job of the engine, done once, in memory:
///
///     zov_bench make-library COUNT OUT     capacitors as a part list gives them, .zov or .zovx
///     zov_bench zov-load FILE              zov_bench zov-save FILE OUT
///     zov_bench xml-import FILE            zov_bench xml-export FILE OUT
///     zov_bench ibis FILE...               the whole check with its report to a sink
///     zov_bench ts-read FILE               zov_bench ts-write FILE OUT
///     zov_bench convert PORTS POINTS FROM TO   random S as FROM first, then to TO
///     zov_bench make-names LIB COUNT OUT   zov_bench assign LIB NAMES
///     zov_bench sheet FILE                 every cell as text
///     zov_bench calc arith|funcs|cond N    an expression over columns of N points
///     zov_bench calc-compile arith|funcs|cond        texts to values; the time is that of one
///     zov_bench make-curve COUNT OUT       zov_bench curve-load FILE
///     zov_bench curve-save FILE OUT
///     zov_bench sheet-library FILE OUT     a part list to a library, all of it
///
/// prints `t LABEL SECONDS` for each timed phase and `n NAME VALUE` for counts and checksums.
#include "AssignJobs.h"
#include "BenchSupport.h"
#include "CalcBench.h"
#include "NetworkJobs.h"
#include "base/Text.h"
#include "batch/ImportJob.h"
#include "core/LibraryFiles.h"
#include "core/RecordStore.h"
#include "ibischk/parse.h"
#include "sheet/Workbook.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

namespace zov::bench {
namespace {

[[noreturn]] void Stop(const SError& error)
{
    fmt::print(stderr, "zov_bench: {}\n", error.Full());
    for (const std::string& note : error.notes) {
        fmt::print(stderr, "  {}\n", note);
    }
    std::exit(3);
}

template <class T>
T Must(CResult<T> result)
{
    if (!result) {
        Stop(result.Error());
    }
    return result.Take();
}
void Must(const CResult<void>& result)
{
    if (!result) {
        Stop(result.Error());
    }
}

CZovLibrary MakeLibrary(std::size_t count)
{
    static constexpr std::array makers = {"Aurora Passive", "Brightwater Components",
                                          "Cindral Ceramics", "Dovetail Electronics"};
    static constexpr std::array sizes = {"0201E", "0402E", "0603E", "0805E", "1206E"};
    static constexpr std::array codes = {"X5R", "X7R", "C0G", "X6S", "X7T"};
    CZovLibrary library;
    for (std::size_t i = 0; i < count; ++i) {
        CZovRcdProps& c = library.Add(ERecordType::Capacitor);
        const std::string_view maker = makers[i % makers.size()];
        const double farad = 1e-12 * static_cast<double>(i % 9000 + 1) * 10.0;
        c.SetString(EPropId::ModelName, fmt::format("{}{}K{:07}", maker.front(), codes[i % 5], i));
        c.SetString(EPropId::MfgPartNumber,
                    fmt::format("{}{}{:08}KT", maker.substr(0, 3), codes[i % 5], i));
        c.SetString(EPropId::Manuf, maker);
        c.SetString(EPropId::SubModel, "RLC");
        c.SetString(EPropId::Lookup, fmt::format("cap;{}uF;{}", i % 47, codes[i % 5]));
        c.SetString(EPropId::Size, sizes[i % sizes.size()]);
        c.SetString(EPropId::Tcc, codes[i % codes.size()]);
        c.SetString(EPropId::Prefer, i % 3 == 0 ? "Yes" : "No");
        c.SetString(EPropId::PriceBook, "2026-Q4");
        c.SetString(EPropId::Comment, fmt::format("reel {} of lot {}", i % 1000, i / 1000));
        c.SetDouble(EPropId::Cnom, farad);
        c.SetDouble(EPropId::UpTolerance, 0.1);
        c.SetDouble(EPropId::LowTolerance, 0.1);
        c.SetDouble(EPropId::Volt, static_cast<double>(i % 10 + 1) * 2.5);
        c.SetDouble(EPropId::PriceA, 0.0012 + static_cast<double>(i % 100) * 1e-4);
        c.SetDouble(EPropId::PriceB, 0.5);
        c.SetDouble(EPropId::PriceC, 0.25);
        c.SetDiscreteModel({false, "", "", 0.003 + static_cast<double>(i % 40) * 1e-4,
                            3e-10 + static_cast<double>(i % 70) * 1e-12, farad});
    }
    return library;
}

/// A sum over everything a record holds: shows that all of it was read.
void PrintLibrary(const CZovLibrary& library)
{
    double sum = 0.0;
    std::size_t textBytes = 0;
    std::size_t values = 0;
    for (const CZovRcdProps* record : library.Records()) {
        for (std::uint64_t rest = record->Mask(); rest != 0; rest &= rest - 1) {
            const auto id = static_cast<EPropId>(std::countr_zero(rest));
            ++values;
            if ((DoubleProperties() >> CZovRcdProps::Bit(id) & 1U) != 0) {
                sum += *record->GetDouble(id);
            } else {
                textBytes += record->GetString(id).size();
            }
        }
    }
    PrintNumber("records", library.Count());
    PrintNumber("values", values);
    PrintNumber("text_bytes", textBytes);
    PrintNumber("sum", sum);
}

void MakeLibraryFile(const char* count, const char* out)
{
    CNullLog log;
    const auto records = static_cast<std::size_t>(std::atoll(count));
    Must(SaveLibrary(MakeLibrary(records), out, {}, log));
}

CZovLibrary NativeLibrary(const CFileView& view)
{
    CZovLibrary library;
    Must(ReadNative(view.Bytes(), library));
    return library;
}

void ZovLoad(const char* path)
{
    const CStopwatch watch;
    const CFileView view = Must(CFileView::Open(path));
    const CZovLibrary library = NativeLibrary(view);
    PrintTime("load", watch.Seconds());
    PrintLibrary(library);
}

/// Saving without the flush to disk, which measures the disk.
template <class F>
void TimeSave(const char* out, F write)
{
    const CStopwatch watch;
    const auto file = Must(CAtomicFile::Create(out));
    write(*file);
    Must(file->Commit(CAtomicFile::EDurability::Cached));
    PrintTime("save", watch.Seconds());
    PrintNumber("bytes", std::filesystem::file_size(out));
}

void ZovSave(const char* path, const char* out)
{
    const CFileView view = Must(CFileView::Open(path));
    const CZovLibrary library = NativeLibrary(view);
    TimeSave(out, [&](CByteWriter& writer) { WriteNative(library, writer); });
}

void XmlImport(const char* path)
{
    CNullLog log;
    CZovLibrary library;
    const CStopwatch watch;
    const CFileView view = Must(CFileView::Open(path));
    Must(ImportExchangeText(library, view.Bytes(), {{}, path, false, true}, log));
    PrintTime("load", watch.Seconds());
    PrintLibrary(library);
}

void XmlExport(const char* path, const char* out)
{
    CNullLog log;
    const CZovLibrary library = Must(LoadLibrary(path, {}, log));
    TimeSave(out, [&](CByteWriter& writer) { WriteExchange(library, {}, writer, log); });
}

void Sheet(const char* path)
{
    std::size_t rows = 0;
    std::size_t cells = 0;
    std::size_t bytes = 0;
    const CStopwatch watch;
    const auto book = Must(OpenWorkbook(path));
    Must(book->ReadRows([&](const SSheetRow& row) {
        ++rows;
        for (const std::string_view cell : row.cells) {
            cells += cell.empty() ? 0 : 1;
            bytes += cell.size();
        }
        return EVisit::Continue;
    }));
    PrintTime("load", watch.Seconds());
    PrintNumber("rows", rows);
    PrintNumber("cells", cells);
    PrintNumber("text_bytes", bytes);
}

/// A part list to a library as the import does it: rows, columns and cells by its rules, saved at
/// the end.
void SheetLibrary(const char* sheet, const char* out)
{
    CNullLog log;
    std::filesystem::remove(out);
    batch::SImportJob job;
    job.generate.source = sheet;
    job.generate.destination = out;
    job.generate.mapping.type = ERecordType::Capacitor;
    batch::SImportReport report;
    const CStopwatch watch;
    Must(batch::RunImport(job, log, report));
    PrintTime("load", watch.Seconds());
    PrintNumber("rows", report.counts.rows);
    PrintNumber("added", report.counts.added);
    PrintNumber("errors", report.counts.errors);
}

/// The whole check of each file with its report to a sink.
void Ibis(const std::vector<std::string>& paths)
{
    CNullLog sink;
    std::uint64_t errors = 0;
    std::uint64_t warnings = 0;
    std::uint64_t bytes = 0;
    const CStopwatch watch;
    for (const std::string& path : paths) {
        ibischk::CChecker checker;
        checker.SetOutputStream(&sink);
        checker.CheckFile(path, ibischk::EFileType::Ibs);
        checker.PrintSummary();
        errors += checker.Counts().errors;
        warnings += checker.Counts().warnings;
    }
    PrintTime("load", watch.Seconds());
    for (const std::string& path : paths) {
        bytes += std::filesystem::file_size(path);
    }
    PrintNumber("bytes", bytes);
    PrintNumber("errors", errors);
    PrintNumber("warnings", warnings);
}

struct SCommand
{
    int arguments;
    std::function<void(char**)> run;
};

int Main(int argc, char** argv)
{
    const std::map<std::string_view, SCommand> commands = {
        {"make-library", {2, [](char** a) { MakeLibraryFile(a[0], a[1]); }}},
        {"zov-load", {1, [](char** a) { ZovLoad(a[0]); }}},
        {"zov-save", {2, [](char** a) { ZovSave(a[0], a[1]); }}},
        {"xml-import", {1, [](char** a) { XmlImport(a[0]); }}},
        {"xml-export", {2, [](char** a) { XmlExport(a[0], a[1]); }}},
        {"assign", {2, [](char** a) { AssignNames(a[0], a[1]); }}},
        {"make-names", {3, [](char** a) { MakeNames(a[0], a[1], a[2]); }}},
        {"sheet-library", {2, [](char** a) { SheetLibrary(a[0], a[1]); }}},
        {"sheet", {1, [](char** a) { Sheet(a[0]); }}},
        {"ts-read", {1, [](char** a) { TsRead(a[0]); }}},
        {"ts-write", {2, [](char** a) { TsWrite(a[0], a[1]); }}},
        {"convert", {4, [](char** a) { ConvertJob(a[0], a[1], a[2], a[3]); }}},
        {"calc", {2, [](char** a) { Calc(a[0], static_cast<std::size_t>(std::atoll(a[1]))); }}},
        {"calc-compile", {1, [](char** a) { CalcCompile(a[0]); }}},
        {"make-curve",
         {2, [](char** a) { MakeCurve(static_cast<std::size_t>(std::atoll(a[0])), a[1]); }}},
        {"curve-load", {1, [](char** a) { CurveLoad(a[0]); }}},
        {"curve-save", {2, [](char** a) { CurveSave(a[0], a[1]); }}},
    };
    if (argc > 2 && std::string_view(argv[1]) == "ibis") {
        Ibis({argv + 2, argv + argc});
        PrintPeak();
        return 0;
    }
    const auto found = argc > 1 ? commands.find(argv[1]) : commands.end();
    if (found == commands.end() || argc - 2 != found->second.arguments) {
        fmt::print(stderr, "usage: zov_bench JOB ARGUMENTS; jobs:\n");
        for (const auto& [name, command] : commands) {
            fmt::print(stderr, "  {} ({} arguments)\n", name, command.arguments);
        }
        return 2;
    }
    found->second.run(argv + 2);
    PrintPeak();
    return 0;
}

} // namespace
} // namespace zov::bench

int main(int argc, char** argv)
{
    return zov::bench::Main(argc, argv);
}
