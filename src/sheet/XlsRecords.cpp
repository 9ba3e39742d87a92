// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsRecords.h"

#include "base/Text.h"
#include "sheet/Charset.h"

#include <algorithm>

namespace zov::sheet {
namespace {

bool IsAscii(std::string_view text)
{
    unsigned char all = 0;
    bool nul = false;
    for (char c : text) {
        all |= static_cast<unsigned char>(c);
        nul = nul || c == '\0';
    }
    return all < 0x80 && !nul;
}

} // namespace

CXlsTextReader::CXlsTextReader(std::string_view stream, std::string_view data, std::size_t offset)
    : m_segments{data}
    , m_left(data.size())
{
    SXlsRecord record;
    while (ReadXlsRecord(stream, offset, record) && record.id == EXlsRecord::Continue) {
        m_segments.push_back(record.data);
        m_left += record.data.size();
        offset = record.next;
    }
}

bool CXlsTextReader::NextSegment()
{
    if (m_segment + 1 >= m_segments.size()) {
        return false;
    }
    ++m_segment;
    m_pos = 0;
    return true;
}

bool CXlsTextReader::ReadCount(unsigned bytes, std::uint32_t& value)
{
    value = 0;
    for (unsigned i = 0; i < bytes; ++i) {
        while (m_pos == m_segments[m_segment].size()) {
            if (!NextSegment()) {
                return false;
            }
        }
        const auto byte = static_cast<unsigned char>(m_segments[m_segment][m_pos++]);
        value |= std::uint32_t{byte} << (8 * i);
    }
    m_left -= bytes;
    return true;
}

bool CXlsTextReader::Skip(std::size_t bytes)
{
    if (bytes > m_left) {
        return false;
    }
    m_left -= bytes;
    while (bytes > 0) {
        const std::size_t step = std::min(bytes, m_segments[m_segment].size() - m_pos);
        m_pos += step;
        bytes -= step;
        if (bytes > 0 && !NextSegment()) {
            return false;
        }
    }
    return true;
}

bool CXlsTextReader::ReadText(std::uint32_t characters, const SXlsDialect& dialect,
                              std::string& converted, std::string_view& text)
{
    if (!dialect.isVersion8) {
        return ReadBytes(characters, dialect.encoding, converted, text);
    }
    std::uint32_t flags = 0;
    std::uint32_t runs = 0;
    std::uint32_t phonetic = 0;
    if (!ReadCount(1, flags) || ((flags & 8U) != 0 && !ReadCount(2, runs)) ||
        ((flags & 4U) != 0 && !ReadCount(4, phonetic))) {
        return false;
    }
    return ReadCharacters(characters, (flags & 1U) != 0, converted, text) &&
           Skip(std::size_t{runs} * 4 + phonetic);
}

bool CXlsTextReader::ReadBytes(std::uint32_t count, const std::string& encoding,
                               std::string& converted, std::string_view& text)
{
    const std::string_view segment = m_segments[m_segment].substr(m_pos);
    if (count > segment.size()) {
        return false;
    }
    text = segment.substr(0, count);
    m_pos += count;
    m_left -= count;
    if (!IsAscii(text)) {
        converted = ToValidUtf8(ToUtf8(text, encoding));
        text = converted;
    }
    return true;
}

bool CXlsTextReader::ReadCharacters(std::uint32_t count, bool wide, std::string& converted,
                                    std::string_view& text)
{
    const std::string_view whole = m_segments[m_segment].substr(m_pos);
    if (!wide && count <= whole.size() && IsAscii(whole.substr(0, count))) {
        text = whole.substr(0, count);
        m_pos += count;
        m_left -= count;
        return true;
    }
    std::u16string units;
    while (count > 0) {
        const std::string_view segment = m_segments[m_segment].substr(m_pos);
        const std::size_t size = wide ? 2 : 1;
        const std::size_t take = std::min<std::size_t>(count, segment.size() / size);
        for (std::size_t i = 0; i < take; ++i) {
            const auto unit = wide ? static_cast<char16_t>(U16At(segment, 2 * i))
                                   : static_cast<char16_t>(static_cast<unsigned char>(segment[i]));
            if (unit != 0) {
                units += unit;
            }
        }
        m_pos += take * size;
        m_left -= take * size;
        count -= static_cast<std::uint32_t>(take);
        if (count == 0) {
            break;
        }
        m_left -= m_segments[m_segment].size() - m_pos;
        std::uint32_t flags = 0;
        if (!NextSegment() || !ReadCount(1, flags)) {
            return false;
        }
        wide = (flags & 1U) != 0;
    }
    converted = Utf16ToUtf8(units);
    text = converted;
    return true;
}

std::string_view XlsErrorText(std::uint8_t code)
{
    switch (code) {
    case 0x00:
        return "#NULL!";
    case 0x07:
        return "#DIV/0!";
    case 0x0F:
        return "#VALUE!";
    case 0x17:
        return "#REF!";
    case 0x1D:
        return "#NAME?";
    case 0x24:
        return "#NUM!";
    case 0x2A:
        return "#N/A";
    default:
        return "#ERROR!";
    }
}

} // namespace zov::sheet
