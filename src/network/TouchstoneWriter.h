// SPDX-License-Identifier: Apache-2.0
/// Writes Touchstone files, versions 1 and 2.0, of whatever can answer a callback: a loaded
/// network, a model's data, something computed on the fly.
///
///     int Answer(int operation, std::uint32_t type, SSourceRecord& record, std::string& message,
///                void* context);
///     CTouchstoneWriter writer;
///     if (writer.Write("out.s2p", "board", Answer, &network, 2, 0, 0, nullptr, kTypeS) == 0) {
///         Show(writer.Message());
///     }
#pragma once

#include "network/NetworkTypes.h"

#include <filesystem>

namespace zov::network {

/// What the callback is asked, in the order it is asked. It returns non-zero on success.
enum ESourceOperation : int
{
    kSourceInfo = 0,     ///< fill record.info
    kSourcePort = 1,     ///< fill record.port of record.port.port and .terminal
    kSourceComment = 2,  ///< fill record.comment; only when the terminal count is 0
    kSourceMatrix = 4,   ///< fill record.matrix of record.matrix.index; 0 when there are no more
                         ///< frequencies, negative on error
    kSourceFinished = 5, ///< the last frequency is written
    kSourceClose = 6     ///< the last call on every path; `message` is empty on success
};

struct SSourceInfo
{
    std::uint32_t ports = 0;
    std::uint32_t frequencies = 0;
    std::uint32_t storage = 0; ///< of EStorage
    char unit = '&';           ///< of EFrequencyUnit
    /// Any of kVersion2Flags: values of Z, Y, G and H are in ohm and siemens also in a version 1
    /// file.
    std::uint32_t formatFlags = 0;
};

struct SSourcePort
{
    std::uint32_t port = 0;     ///< asked for, from 0
    std::uint32_t terminal = 0; ///< asked for; always the first
    std::uint32_t mode = 0;     ///< of EPortMode, in the low two bits
    std::uint32_t first = 0;    ///< as in SPort; `port` until the source changes them
    std::uint32_t second = 0;
    double referenceOhm = kDefaultReferenceOhm;
    std::string name; ///< "Port%d" until the source changes it
};

struct SSourceMatrix
{
    std::uint64_t index = 0; ///< asked for, from 0
    double hz = 0.0;
    std::uint32_t type = 0;     ///< the matrix's own type code; the requested one at the call
    std::uint32_t format = 2;   ///< the matrix's own format, of EDataFormat
    TComplex* values = nullptr; ///< room for ports * ports values, row by row
};

struct SSourceRecord
{
    SSourceInfo info;
    SSourcePort port;
    std::string comment;
    SSourceMatrix matrix;
};

/// @param parameterType  the type that the writer was asked for
/// @param message        the writer's slot; a source that fails may leave its reason there
using FDataSource = int (*)(int operation, std::uint32_t parameterType, SSourceRecord& record,
                            std::string& message, void* context);

/// Who writes, as the file's head says it. Empty texts leave their line out.
struct SProgramIdentity
{
    std::string product;
    std::string version;
    std::string host;
};
[[nodiscard]] SProgramIdentity ThisProgram();

class CTouchstoneWriter
{
public:
    explicit CTouchstoneWriter(SProgramIdentity identity = ThisProgram());

    /// @param origin         name of where the data comes from, may be empty
    /// @param dataFormat     0 to 2, of EDataFormat
    /// @param version2       0 writes version 1
    /// @param terminalCount  physical terminals of each port when a port list covers terminals; the
    ///                       name's extension is not checked then
    /// @param userComment    may be null
    /// @param parameterType  one of the eight codes
    /// @return 1, or 0 with a reason in Message(). A failure after the file was opened leaves it as
    ///         far as it was written.
    int Write(const std::filesystem::path& path, std::string_view origin, FDataSource source,
              void* context, std::uint32_t dataFormat, int version2, std::uint32_t terminalCount,
              const char* userComment, std::uint32_t parameterType);

    [[nodiscard]] const std::string& Message() const { return m_message; }

private:
    SProgramIdentity m_identity;
    std::string m_message;
};

} // namespace zov::network
