// SPDX-License-Identifier: Apache-2.0
/// The checker's verdict on a file, obtained through a temporary report that is read back.
///
///     SIPCheckInfo info;
///     const int result = CheckIbisFile("buffer.ibs", &info);   // 0 clean, 2 warnings, 3 errors
#pragma once

#include "ibischk/Types.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

enum class EIPSeverity : std::uint8_t
{
    Error = 0,
    Warning = 1,
    Note = 2,
    Other = 3 ///< cautions, and faults of the checker itself
};

struct SIPMessage
{
    EIPSeverity severity = EIPSeverity::Other;
    std::string head;     ///< before the "-": "ERROR (line   12)"
    std::string text;     ///< behind it
    std::size_t line = 0; ///< 0 when the message names none
    int code = 0;         ///< number in the catalogue; 0 when the report alone was read
};

/// Results of a check.
enum EIPCheck : int
{
    kIPCheckClean = 0,
    kIPCheckNotDone = 1, ///< no path, stopped, no place for the report, or it can't be written
    kIPCheckWarnings = 2,
    kIPCheckErrors = 3
};

struct SIPCheckInfo
{
    int result = kIPCheckNotDone;
    std::vector<SIPMessage> messages; ///< in the order of the report
    std::size_t errors = 0;           ///< as the report's summary counts
    std::size_t warnings = 0;
    std::string report;  ///< the whole text
    std::string problem; ///< why the check was not done
};

struct SIPCheckOptions
{
    /// By whose rules: an ".ibs" file unless told otherwise.
    ibischk::EFileType type = ibischk::EFileType::Ibs;
    /// Where the temporary report goes; empty: the system's folder for such files.
    std::filesystem::path temporaryFolder = {};
    /// Told of the share that is done; false stops the check, whose result is then NotDone.
    std::function<bool(double)> progress = {};
    /// The file's bytes, for a caller that has them; none: they are read. Files that it names are
    /// looked for beside it in either case.
    std::optional<std::string_view> text = {};
};

/// Checks a file before it is parsed. The temporary report is gone when this returns.
/// @param path  UTF-8; null or empty: nothing is done
/// @param info  null: nothing is done
/// @return an EIPCheck
int CheckIbisFile(const char* path, SIPCheckInfo* info, const SIPCheckOptions& options = {});

/// Fills messages and counts from the text of a plain report.
void ReadCheckReport(std::string_view report, SIPCheckInfo& info);

} // namespace zov::ibis
