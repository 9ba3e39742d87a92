// SPDX-License-Identifier: Apache-2.0
/// A file checked and parsed: what the editor opens.
///
///     CIBISDataParser parser;
///     if (parser.ReadFile("buffer.ibs") == 0) {
///         Show(parser.Error().Full());
///     } else {
///         Show(*parser.Data(), parser.CheckInfo());
///     }
#pragma once

#include "base/Result.h"
#include "ibis/CheckReport.h"
#include "ibis/DataFile.h"
#include "ibis/Parser.h"

#include <filesystem>
#include <memory>

namespace zov::ibis {

enum class EIPCheckFirst : std::uint8_t
{
    Yes,
    No ///< the objects only, for callers that show no messages
};

struct SIPReadOptions
{
    EIPCheckFirst check = EIPCheckFirst::Yes;
    std::filesystem::path temporaryFolder = {}; ///< of the check's report; empty: the system's
    /// Told of the share that is done; false ends the reading with Cancelled.
    FIPProgress progress = {};
};

/// Owns a parser of the file's kind and the objects that it made.
class CIBISDataParser
{
public:
    /// Checks, then parses. A file with errors is parsed all the same.
    /// @return 0 when the file can't be opened or is of a kind that has no objects (Error tells),
    ///         else 1
    int ReadFile(const std::filesystem::path& path, const SIPReadOptions& options = {});
    /// The same as a result. Errors: those of ReadWholeFile, Unsupported, Cancelled.
    CResult<void> Read(const std::filesystem::path& path, const SIPReadOptions& options = {});
    /// Parses a text without check.
    /// @param type  Ibs, Pkg, Ims or Ebd
    void ReadText(std::string text, ibischk::EFileType type = ibischk::EFileType::Ibs);

    /// Null before the first file was read.
    [[nodiscard]] const CIPDataFile* Data() const { return m_data.get(); }
    /// Verdict and messages, which the objects' marks of kind Checker number.
    [[nodiscard]] const SIPCheckInfo& CheckInfo() const { return m_check; }
    [[nodiscard]] const SError& Error() const { return m_error; }

private:
    void Parse(std::string text, ibischk::EFileType type, FIPProgress progress);
    void MarkMessages();

    std::unique_ptr<CParserBase> m_parser;
    std::unique_ptr<CIPDataFile> m_data;
    SIPCheckInfo m_check;
    SError m_error;
};

/// The kind of a file by its extension: ".pkg", ".ims", ".ebd"; anything else is read as ".ibs".
/// None for ".emd", ".ems" and ".ami", which have no objects.
[[nodiscard]] CResult<ibischk::EFileType> IPFileTypeOf(const std::filesystem::path& path);

} // namespace zov::ibis
