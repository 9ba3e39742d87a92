// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsSheet.h"

#include <algorithm>
#include <bit>

namespace zov::sheet {
namespace {

constexpr std::size_t kCellHead = 6; // row, column, style

bool IsCell(EXlsRecord id)
{
    switch (id) {
    case EXlsRecord::Formula:
    case EXlsRecord::MulRk:
    case EXlsRecord::RString:
    case EXlsRecord::LabelSst:
    case EXlsRecord::Number:
    case EXlsRecord::Label:
    case EXlsRecord::BoolErr:
    case EXlsRecord::Rk:
        return true;
    default:
        return false;
    }
}

// Bit 0: divided by 100. Bit 1: an integer, else the upper 30 bits of a double.
double RkValue(std::uint32_t rk)
{
    const double value = (rk & 2U) != 0
                             ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                             : std::bit_cast<double>(std::uint64_t{rk & 0xFFFFFFFCU} << 32U);
    return (rk & 1U) != 0 ? value / 100.0 : value;
}

} // namespace

CXlsSheetReader::CXlsSheetReader(std::string_view stream, std::size_t offset,
                                 const SXlsGlobals& globals, const SFormatContext& context)
    : m_stream(stream)
    , m_begin(offset)
    , m_globals(globals)
    , m_context(context)
{
}

SError CXlsSheetReader::Broken(std::string_view what) const
{
    return Fail(EErr::Format, "row " + std::to_string(m_builder.Number()) + ": " +
                                  std::string(what) + "; get the file again or save it anew");
}

// One quick look at the records' heads: where the cells end, and whether their rows rise. Programs
// write blocks of 32 rows, some of them by columns within a block.
CResult<void> CXlsSheetReader::Survey()
{
    SXlsRecord record;
    if (!ReadXlsRecord(m_stream, m_begin, record) || record.id != EXlsRecord::Bof) {
        return Broken("the sheet does not begin where the workbook says");
    }
    m_begin = record.next;
    std::uint32_t last = 0;
    std::size_t depth = 1; // charts within the sheet are streams of their own
    for (std::size_t at = m_begin; depth > 0; at = record.next) {
        if (!ReadXlsRecord(m_stream, at, record)) {
            return Broken("the sheet's last record ends beyond the file");
        }
        if (record.id == EXlsRecord::Bof) {
            ++depth;
        } else if (record.id == EXlsRecord::Eof) {
            --depth;
        } else if (depth == 1 && IsCell(record.id)) {
            if (record.data.size() < kCellHead) {
                return Broken("a cell record is too short");
            }
            const std::uint32_t row = U16At(record.data, 0);
            m_rising = m_rising && row >= last;
            last = row;
            m_end = record.next;
        }
    }
    return {};
}

CResult<void> CXlsSheetReader::Run(const FRowVisitor& visit)
{
    RETURN_IF_ERROR(Survey());
    m_builder.Begin(0);
    RETURN_IF_ERROR(m_rising ? ReadInOrder(visit) : ReadSorted(visit));
    return m_stopped ? CResult<void>() : Deliver(visit);
}

CResult<void> CXlsSheetReader::Deliver(const FRowVisitor& visit)
{
    if (m_builder.Overflown()) {
        return Fail(EErr::Limit,
                    "row " + std::to_string(m_builder.Number()) + ": more than 256 MiB of text");
    }
    m_stopped = m_builder.Deliver(visit) == EVisit::Stop;
    return {};
}

// False when reading ends here, by the visitor's wish or by an error in `outcome`.
bool CXlsSheetReader::BeginRecord(const SXlsRecord& record, const FRowVisitor& visit,
                                  CResult<void>& outcome)
{
    const std::uint32_t number = U16At(record.data, 0) + std::uint32_t{1};
    if (number != m_builder.Number()) {
        outcome = Deliver(visit);
        if (!outcome.Ok() || m_stopped) {
            return false;
        }
        m_builder.Begin(number);
    }
    if (!ReadCell(record)) {
        outcome = Broken("a cell can't be read");
        return false;
    }
    return true;
}

CResult<void> CXlsSheetReader::ReadInOrder(const FRowVisitor& visit)
{
    CResult<void> outcome;
    SXlsRecord record;
    std::size_t depth = 1;
    for (std::size_t at = m_begin; at < m_end && ReadXlsRecord(m_stream, at, record);
         at = record.next) {
        if (record.id == EXlsRecord::Bof) {
            ++depth;
        } else if (record.id == EXlsRecord::Eof) {
            --depth;
        } else if (depth == 1 && IsCell(record.id) && !BeginRecord(record, visit, outcome)) {
            break;
        }
    }
    return outcome;
}

CResult<void> CXlsSheetReader::ReadSorted(const FRowVisitor& visit)
{
    std::vector<SCellRecord> cells;
    SXlsRecord record;
    std::size_t depth = 1;
    for (std::size_t at = m_begin; at < m_end && ReadXlsRecord(m_stream, at, record);
         at = record.next) {
        if (record.id == EXlsRecord::Bof) {
            ++depth;
        } else if (record.id == EXlsRecord::Eof) {
            --depth;
        } else if (depth == 1 && IsCell(record.id)) {
            cells.push_back({U16At(record.data, 0), static_cast<std::uint32_t>(at)});
        }
    }
    std::stable_sort(cells.begin(), cells.end(),
                     [](const SCellRecord& a, const SCellRecord& b) { return a.row < b.row; });
    CResult<void> outcome;
    for (const SCellRecord& cell : cells) {
        if (!ReadXlsRecord(m_stream, cell.offset, record) || !BeginRecord(record, visit, outcome)) {
            break;
        }
    }
    return outcome;
}

bool CXlsSheetReader::ReadCell(const SXlsRecord& record)
{
    const std::string_view data = record.data;
    const std::uint16_t column = U16At(data, 2);
    const std::uint16_t style = U16At(data, 4);
    if (column >= kMaxColumns) {
        return false;
    }
    switch (record.id) {
    case EXlsRecord::LabelSst: {
        const std::size_t index = data.size() < 10 ? SIZE_MAX : U32At(data, 6);
        if (index >= m_globals.texts.size()) {
            return false;
        }
        PutText(column, style, m_globals.texts[index], true);
        return true;
    }
    case EXlsRecord::Rk:
        if (data.size() < 10) {
            return false;
        }
        PutNumber(column, style, RkValue(U32At(data, 6)));
        return true;
    case EXlsRecord::Number:
        if (data.size() < 14) {
            return false;
        }
        PutNumber(column, style, std::bit_cast<double>(U64At(data, 6)));
        return true;
    case EXlsRecord::BoolErr:
        if (data.size() < 8) {
            return false;
        }
        m_builder.Put(column, data[7] != 0   ? XlsErrorText(static_cast<std::uint8_t>(data[6]))
                              : data[6] != 0 ? std::string_view("TRUE")
                                             : std::string_view("FALSE"));
        return true;
    case EXlsRecord::MulRk:
        return ReadMulRk(record, column);
    case EXlsRecord::Formula:
        return ReadFormula(record, column, style);
    default:
        return ReadLabel(record, column, style);
    }
}

bool CXlsSheetReader::ReadMulRk(const SXlsRecord& record, std::uint16_t column)
{
    constexpr std::size_t kEntry = 6; // style, value
    std::uint32_t at = column;
    for (std::size_t pos = 4; pos + kEntry + 2 <= record.data.size(); pos += kEntry, ++at) {
        if (at >= kMaxColumns) {
            return false;
        }
        PutNumber(at, U16At(record.data, pos), RkValue(U32At(record.data, pos + 2)));
    }
    return true;
}

// Where the result would be a number that does not exist, its first byte says what it is instead.
bool CXlsSheetReader::ReadFormula(const SXlsRecord& record, std::uint16_t column,
                                  std::uint16_t style)
{
    const std::string_view data = record.data;
    if (data.size() < 16) {
        return false;
    }
    if (U16At(data, 12) != 0xFFFF) {
        PutNumber(column, style, std::bit_cast<double>(U64At(data, 6)));
        return true;
    }
    switch (data[6]) {
    case 0:
        return ReadFormulaText(record, column, style);
    case 1:
        m_builder.Put(column, data[8] != 0 ? "TRUE" : "FALSE");
        return true;
    case 2:
        m_builder.Put(column, XlsErrorText(static_cast<std::uint8_t>(data[8])));
        return true;
    default: // an empty text, which is also what writers put that calculate nothing
        m_uncached += m_globals.calculated ? 0 : 1;
        return true;
    }
}

// The text is in a record of its own, behind the formula and what belongs to it.
bool CXlsSheetReader::ReadFormulaText(const SXlsRecord& record, std::uint16_t column,
                                      std::uint16_t style)
{
    SXlsRecord next;
    for (std::size_t at = record.next; ReadXlsRecord(m_stream, at, next); at = next.next) {
        switch (next.id) {
        case EXlsRecord::String: {
            CXlsTextReader reader(m_stream, next.data, next.next);
            std::uint32_t length = 0;
            std::string_view text;
            if (!reader.ReadCount(2, length)) {
                return false;
            }
            if (length > 0 && !reader.ReadText(length, m_globals.dialect, m_text, text)) {
                return false;
            }
            PutText(column, style, text, false);
            return true;
        }
        case EXlsRecord::SharedFormula:
        case EXlsRecord::Array:
        case EXlsRecord::Table:
        case EXlsRecord::Continue:
            break;
        default:
            ++m_uncached;
            return true;
        }
    }
    return true;
}

bool CXlsSheetReader::ReadLabel(const SXlsRecord& record, std::uint16_t column, std::uint16_t style)
{
    CXlsTextReader reader(m_stream, record.data.substr(kCellHead), record.next);
    std::uint32_t length = 0;
    std::string_view text;
    if (!reader.ReadCount(2, length) || !reader.ReadText(length, m_globals.dialect, m_text, text)) {
        return false;
    }
    PutText(column, style, text, false);
    return true;
}

void CXlsSheetReader::PutNumber(std::uint32_t column, std::uint16_t style, double value)
{
    std::string shown;
    m_globals.formats[m_globals.FormatIndex(style)].AppendNumber(shown, value, m_context);
    m_builder.PutCopy(column, shown);
}

void CXlsSheetReader::PutText(std::uint32_t column, std::uint16_t style, std::string_view text,
                              bool lasting)
{
    const CNumberFormat& format = m_globals.formats[m_globals.FormatIndex(style)];
    if (format.ChangesText()) {
        std::string shown;
        format.AppendText(shown, text, m_context);
        m_builder.PutCopy(column, shown);
    } else if (lasting) {
        m_builder.Put(column, text);
    } else {
        m_builder.PutCopy(column, text);
    }
}

} // namespace zov::sheet
