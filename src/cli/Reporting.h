// SPDX-License-Identifier: Apache-2.0
/// What commands have in common: errors as users read them, libraries in and out.
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "cli/Streams.h"
#include "core/ZovLibrary.h"

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace zov::cli {

using TJson = nlohmann::ordered_json;

/// First member of every JSON document. Members are only ever added; a change of meaning would
/// raise it.
constexpr int kJsonVersion = 1;

/// "zov: text", the notes below it.
void PrintError(const SStreams& streams, const SError& error);
/// The document, indented, with a line feed.
void PrintJson(const SStreams& streams, const TJson& document);

/// Hands log lines on to standard error and counts the records that were left out.
class CStreamLog final : public CLogSink
{
public:
    explicit CStreamLog(const SStreams& streams)
        : m_streams(streams)
    {
    }
    void Write(std::string_view text) override;
    /// Lines that begin with "[Error]".
    [[nodiscard]] std::size_t Errors() const { return m_errors; }

private:
    const SStreams& m_streams;
    std::size_t m_errors = 0;
};

/// A library read for a command. Messages about single records are on standard error.
struct SLoaded
{
    CZovLibrary library;
    bool inPart = false; ///< some records of the file could not be read
};
/// None when the file could not be read, which has been told.
/// @param isHidden  log lines that the command does not want shown
std::optional<SLoaded> Load(const std::string& path, const SStreams& streams,
                            bool (*isHidden)(std::string_view) = nullptr);

/// Saves and tells a failure; false when it failed.
bool Save(const CZovLibrary& library, const std::string& path, const CDisplayUnits& units,
          const SStreams& streams);

/// `status`, unless that is good and something was read in part only.
[[nodiscard]] int StatusOf(int status, bool inPart);

/// Reports on one file: into `documents` or, when that is null, on standard output. Whether it was
/// read whole; none when it could not be read. What went wrong has been told.
using FReportFile = std::function<std::optional<bool>(const std::string& path, TJson* documents)>;
/// Reports on each file, with `json` in one document under `key`; the exit status.
int ReportEach(const std::vector<std::string>& paths, const char* key, bool json,
               const SStreams& streams, const FReportFile& report);

/// Tells remarks about a file.
void PrintRemarks(const SStreams& streams, const CVectorDiag& diag);

/// "1 record", "2 records"
[[nodiscard]] std::string Counted(std::size_t count, std::string_view noun);

/// Characters of UTF-8 text, for columns.
[[nodiscard]] std::size_t WidthOf(std::string_view text);
/// Line breaks, tabs and other control characters as \n, \t, \x1b, so that a value stays on its
/// line.
[[nodiscard]] std::string OneLine(std::string_view text);

/// "R=Ohm,C=pF" into `units`. Quantities: R, L, C, V, I, t, f, P.
CResult<void> ReadUnits(const std::string& text, CDisplayUnits& units);
/// Help text of the option that takes them.
extern const char* const kUnitsHelp;

/// "cap", "Capacitors", "IC", "spice": a record type as people write it.
CResult<ERecordType> ReadRecordType(const std::string& text);

} // namespace zov::cli
