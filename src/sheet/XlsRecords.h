// SPDX-License-Identifier: Apache-2.0
/// The record stream of a binary workbook (.xls): records, and texts that run over several of them.
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

/// Little-endian numbers at an offset; the caller knows that the bytes are there.
[[nodiscard]] inline std::uint16_t U16At(std::string_view bytes, std::size_t offset)
{
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data()) + offset;
    return static_cast<std::uint16_t>(at[0] | (at[1] << 8U));
}
[[nodiscard]] inline std::uint32_t U32At(std::string_view bytes, std::size_t offset)
{
    return U16At(bytes, offset) | (std::uint32_t{U16At(bytes, offset + 2)} << 16U);
}
[[nodiscard]] inline std::uint64_t U64At(std::string_view bytes, std::size_t offset)
{
    return U32At(bytes, offset) | (std::uint64_t{U32At(bytes, offset + 4)} << 32U);
}

enum class EXlsRecord : std::uint16_t
{
    Formula = 0x0006,
    Eof = 0x000A,
    DateMode = 0x0022,
    FilePass = 0x002F,
    Continue = 0x003C,
    CodePage = 0x0042,
    BoundSheet = 0x0085,
    MulRk = 0x00BD,
    RString = 0x00D6,
    Xf = 0x00E0,
    Sst = 0x00FC,
    LabelSst = 0x00FD,
    RecalcId = 0x01C1,
    Number = 0x0203,
    Label = 0x0204,
    BoolErr = 0x0205,
    String = 0x0207,
    Array = 0x0221,
    Table = 0x0236,
    Rk = 0x027E,
    Format = 0x041E,
    SharedFormula = 0x04BC,
    Bof = 0x0809
};

struct SXlsRecord
{
    EXlsRecord id = EXlsRecord::Eof;
    std::string_view data;
    std::size_t next = 0; ///< offset behind it
};

/// Reads the record at an offset; false when none fits there any more.
[[nodiscard]] inline bool ReadXlsRecord(std::string_view stream, std::size_t offset,
                                        SXlsRecord& record)
{
    if (offset > stream.size() || stream.size() - offset < 4) {
        return false;
    }
    const std::size_t length = U16At(stream, offset + 2);
    if (stream.size() - offset - 4 < length) {
        return false;
    }
    record.id = static_cast<EXlsRecord>(U16At(stream, offset));
    record.data = stream.substr(offset + 4, length);
    record.next = offset + 4 + length;
    return true;
}

/// How texts are held: 16-bit and Latin-1 characters since version 8, bytes of a code page before.
struct SXlsDialect
{
    bool isVersion8 = true;
    std::string encoding = "WINDOWS-1252"; ///< before version 8
};

/// Bytes of one record and of the Continue records behind it.
class CXlsTextReader
{
public:
    /// @param offset  where in the stream the record's Continue records would begin
    CXlsTextReader(std::string_view stream, std::string_view data, std::size_t offset);

    /// So many bytes; false when they are not there.
    bool ReadCount(unsigned bytes, std::uint32_t& value);
    bool Skip(std::size_t bytes);

    /// Characters that follow their count: flags, then the text, each Continue record beginning
    /// with flags of its own. A text that is plain ASCII in one piece is a view into the stream,
    /// anything else is put into `converted`.
    bool ReadText(std::uint32_t characters, const SXlsDialect& dialect, std::string& converted,
                  std::string_view& text);

    /// Bytes up to the end of the last Continue record, at most.
    [[nodiscard]] std::size_t BytesLeft() const { return m_left; }

private:
    bool ReadBytes(std::uint32_t count, const std::string& encoding, std::string& converted,
                   std::string_view& text);
    bool ReadCharacters(std::uint32_t count, bool wide, std::string& converted,
                        std::string_view& text);
    bool NextSegment();

    std::vector<std::string_view> m_segments;
    std::size_t m_segment = 0;
    std::size_t m_pos = 0;
    std::size_t m_left = 0;
};

/// "#N/A" for 0x2A.
[[nodiscard]] std::string_view XlsErrorText(std::uint8_t code);

} // namespace zov::sheet
