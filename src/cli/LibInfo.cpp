// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "cli/Commands.h"
#include "cli/Reporting.h"
#include "core/LibraryFiles.h"

#include <CLI/CLI.hpp>
#include <bit>
#include <memory>

namespace zov::cli {

namespace {

constexpr const char* kFooter = R"(Examples:
  zov lib info caps.zov
  zov lib info *.zov vendor.xml --json)";

struct SOptions
{
    std::vector<std::string> files;
    bool json = false;
};

/// What the fixed head of a native file says.
struct SHeader
{
    std::uint64_t categories = 0;
    std::uint64_t records = 0;
};

struct SReport
{
    std::string file;
    std::string form;
    std::uint64_t bytes = 0;
    std::optional<SHeader> header;
    std::size_t records = 0;
    std::vector<std::pair<const SRecordTypeInfo*, std::size_t>> counts; ///< types that are there
};

std::string_view NameOf(ELibraryForm form)
{
    switch (form) {
    case ELibraryForm::Native:
        return "native library";
    case ELibraryForm::Exchange:
        return "exchange file";
    case ELibraryForm::Xml:
        return "exchange file or vendor decap list";
    case ELibraryForm::Spice:
        return "SPICE sub-circuits";
    case ELibraryForm::Unknown:
        break;
    }
    return "unknown";
}

std::uint64_t LittleEndian64(std::string_view bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = 8; i-- > 0;) {
        value = value << 8U | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

std::optional<SHeader> HeaderOf(const std::filesystem::path& path)
{
    constexpr std::size_t kCategories = 12;
    constexpr std::size_t kRecords = 20;
    const CResult<CFileView> view = CFileView::Open(path);
    if (FormOf(path) != ELibraryForm::Native || !view || view->Bytes().size() < kRecords + 8) {
        return std::nullopt;
    }
    return SHeader{LittleEndian64(view->Bytes().substr(kCategories, 8)),
                   LittleEndian64(view->Bytes().substr(kRecords, 8))};
}

SReport ReportOn(const std::string& file, const CZovLibrary& library)
{
    const std::filesystem::path path = TextPath(file);
    std::error_code unknown;
    SReport report;
    report.file = file;
    report.form = NameOf(FormOf(path));
    report.bytes = std::filesystem::file_size(path, unknown);
    report.header = HeaderOf(path);
    report.records = library.Count();
    for (const SRecordTypeInfo& info : RecordTypes()) {
        if (const std::size_t count = library.CountOf(info.type); count != 0) {
            report.counts.emplace_back(&info, count);
        }
    }
    return report;
}

void PrintReport(const SReport& report, const SStreams& streams)
{
    Print(streams.out, "{}\n  form     {}\n  size     {}\n", report.file, report.form,
          Counted(report.bytes, "byte"));
    if (report.header) {
        Print(streams.out, "  header   {} record types, {}\n", report.header->categories,
              Counted(report.header->records, "record"));
    }
    Print(streams.out, "  records  {}\n", report.records);
    for (const auto& [info, count] : report.counts) {
        Print(streams.out, "    {:<10} {}\n", info->element, count);
    }
}

TJson ToJson(const SReport& report)
{
    TJson out = {{"file", report.file}, {"form", report.form}, {"bytes", report.bytes}};
    if (report.header) {
        out["header"] = {{"recordTypes", report.header->categories},
                         {"records", report.header->records}};
    }
    out["records"] = report.records;
    out["counts"] = TJson::object();
    for (const auto& [info, count] : report.counts) {
        out["counts"][std::string(info->element)] = count;
    }
    return out;
}

int Execute(const SOptions& options, const SStreams& streams)
{
    const auto tell = [&](const std::string& path, TJson* documents) -> std::optional<bool> {
        const std::optional<SLoaded> loaded = Load(path, streams);
        if (!loaded) {
            return std::nullopt;
        }
        const SReport report = ReportOn(path, loaded->library);
        if (documents != nullptr) {
            documents->push_back(ToJson(report));
        } else {
            PrintReport(report, streams);
        }
        return !loaded->inPart;
    };
    return ReportEach(options.files, "libraries", options.json, streams, tell);
}

} // namespace

void AddLibInfo(CLI::App& lib, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command = lib.add_subcommand("info", "Form, size, header and records by type");
    command->footer(kFooter);
    command->add_option("FILE", options->files, "Libraries")->required()->type_name("");
    command->add_flag("--json", options->json, "Report as JSON");
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) { return Execute(*options, streams); };
    });
}

} // namespace zov::cli
