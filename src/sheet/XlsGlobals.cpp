// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsGlobals.h"

#include "sheet/Charset.h"

#include <algorithm>
#include <unordered_map>

namespace zov::sheet {
namespace {

constexpr std::uint16_t kVersion5 = 0x0500;
constexpr std::uint16_t kVersion8 = 0x0600;

class CGlobalsReader
{
public:
    CGlobalsReader(std::string_view stream, const SSource& source)
        : m_stream(stream)
        , m_source(source)
    {
    }

    CResult<SXlsGlobals> Run();

private:
    CResult<void> ReadHead();
    CResult<void> Handle(const SXlsRecord& record);
    bool ReadSheet(std::string_view data);
    bool ReadFormat(std::string_view data);
    bool ReadTexts(const SXlsRecord& record);
    void ResolveStyles();
    [[nodiscard]] SError Broken(std::string_view what) const
    {
        return m_source.Failure(EErr::Format, "the workbook is damaged: " + std::string(what) +
                                                  " at offset " + std::to_string(m_offset) +
                                                  "; get the file again or save it anew");
    }

    std::string_view m_stream;
    const SSource& m_source;
    std::size_t m_offset = 0;
    SXlsGlobals m_globals;
    std::unordered_map<int, std::string> m_codes;
    std::vector<int> m_formatIds; ///< by style
    std::string m_converted;
};

CResult<void> CGlobalsReader::ReadHead()
{
    SXlsRecord record;
    if (!ReadXlsRecord(m_stream, 0, record)) {
        return Broken("the first record ends beyond the file");
    }
    const auto id = static_cast<std::uint16_t>(record.id);
    const std::uint16_t version = record.data.size() < 4 ? 0 : U16At(record.data, 0);
    const bool old = id == 0x0009 || id == 0x0209 || id == 0x0409;
    if (old || (record.id == EXlsRecord::Bof && version != kVersion5 && version != kVersion8)) {
        return m_source.Failure(EErr::Unsupported,
                                "the workbook is of a version before 5; open it in a spreadsheet "
                                "program and save it as .xlsx");
    }
    if (record.id != EXlsRecord::Bof) {
        return Broken("no workbook begins");
    }
    m_globals.dialect.isVersion8 = version == kVersion8;
    m_offset = record.next;
    return {};
}

CResult<SXlsGlobals> CGlobalsReader::Run()
{
    RETURN_IF_ERROR(ReadHead());
    for (;;) {
        SXlsRecord record;
        if (!ReadXlsRecord(m_stream, m_offset, record)) {
            return Broken("a record ends beyond the file");
        }
        if (record.id == EXlsRecord::Eof) {
            break;
        }
        RETURN_IF_ERROR(Handle(record));
        m_offset = record.next;
    }
    if (m_globals.sheets.empty()) {
        return m_source.Failure(EErr::Format, "the workbook has no worksheet");
    }
    ResolveStyles();
    return std::move(m_globals);
}

CResult<void> CGlobalsReader::Handle(const SXlsRecord& record)
{
    bool good = true;
    switch (record.id) {
    case EXlsRecord::FilePass:
        return m_source.Failure(EErr::Unsupported,
                                "the workbook is protected by a password; open it in a spreadsheet "
                                "program, remove the password and save it again");
    case EXlsRecord::CodePage:
        if (record.data.size() >= 2) {
            m_globals.dialect.encoding = CodePageName(U16At(record.data, 0));
        }
        break;
    case EXlsRecord::DateMode:
        m_globals.date1904 = record.data.size() >= 2 && U16At(record.data, 0) != 0;
        break;
    case EXlsRecord::RecalcId:
        m_globals.calculated = true;
        break;
    case EXlsRecord::BoundSheet:
        good = ReadSheet(record.data);
        break;
    case EXlsRecord::Format:
        good = ReadFormat(record.data);
        break;
    case EXlsRecord::Xf:
        good = record.data.size() >= 4;
        m_formatIds.push_back(good ? U16At(record.data, 2) : 0);
        break;
    case EXlsRecord::Sst:
        good = ReadTexts(record);
        break;
    default:
        break;
    }
    return good ? CResult<void>() : CResult<void>(Broken("a record that can't be read"));
}

bool CGlobalsReader::ReadSheet(std::string_view data)
{
    constexpr unsigned char kWorksheet = 0;
    if (data.size() < 8) {
        return false;
    }
    if (data[5] != kWorksheet) {
        return true; // charts, macros
    }
    CXlsTextReader reader({}, data.substr(6), 0);
    std::uint32_t length = 0;
    std::string_view name;
    if (!reader.ReadCount(1, length) ||
        !reader.ReadText(length, m_globals.dialect, m_converted, name)) {
        return false;
    }
    m_globals.sheets.push_back({std::string(name), (data[4] & 3) != 0});
    m_globals.sheetOffsets.push_back(U32At(data, 0));
    return true;
}

bool CGlobalsReader::ReadFormat(std::string_view data)
{
    CXlsTextReader reader({}, data, 0);
    std::uint32_t id = 0;
    std::uint32_t length = 0;
    std::string_view code;
    if (!reader.ReadCount(2, id) ||
        !reader.ReadCount(m_globals.dialect.isVersion8 ? 2 : 1, length) ||
        !reader.ReadText(length, m_globals.dialect, m_converted, code)) {
        return false;
    }
    m_codes.insert_or_assign(static_cast<int>(id), std::string(code));
    return true;
}

bool CGlobalsReader::ReadTexts(const SXlsRecord& record)
{
    CXlsTextReader reader(m_stream, record.data, record.next);
    std::uint32_t total = 0;
    std::uint32_t count = 0;
    if (!reader.ReadCount(4, total) || !reader.ReadCount(4, count)) {
        return false;
    }
    constexpr std::size_t kSmallestText = 3;
    m_globals.texts.reserve(std::min<std::size_t>(count, reader.BytesLeft() / kSmallestText));
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t length = 0;
        std::string_view text;
        m_converted.clear();
        if (!reader.ReadCount(2, length) ||
            !reader.ReadText(length, m_globals.dialect, m_converted, text)) {
            return false;
        }
        m_globals.texts.push_back(m_converted.empty() ? text : m_globals.arena.Copy(text));
    }
    return true;
}

void CGlobalsReader::ResolveStyles()
{
    std::unordered_map<int, std::uint32_t> known;
    for (int id : m_formatIds) {
        const auto [entry, isNew] = known.emplace(id, 0);
        if (isNew) {
            const auto code = m_codes.find(id);
            CNumberFormat format = code == m_codes.end() ? CNumberFormat::BuiltIn(id)
                                                         : CNumberFormat::Parse(code->second);
            if (!format.IsGeneral()) {
                entry->second = static_cast<std::uint32_t>(m_globals.formats.size());
                m_globals.formats.push_back(std::move(format));
            }
        }
        m_globals.formatOfStyle.push_back(entry->second);
    }
}

} // namespace

CResult<SXlsGlobals> ReadXlsGlobals(std::string_view stream, const SSource& source)
{
    return CGlobalsReader(stream, source).Run();
}

} // namespace zov::sheet
