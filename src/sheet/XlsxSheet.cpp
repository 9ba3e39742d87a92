// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsxSheet.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace zov::sheet {
namespace {

// "BC12" -> 54, 12; counted from 0 and 1. Zero for the row when it is not a reference within a
// sheet.
struct SReference
{
    std::uint32_t column = 0;
    std::uint32_t row = 0;
};

SReference ParseReference(std::string_view text)
{
    SReference reference;
    std::size_t pos = 0;
    std::uint32_t column = 0;
    for (; pos < text.size() && IsAlpha(text[pos]); ++pos) {
        column = column * 26 + static_cast<std::uint32_t>(ToUpper(text[pos]) - 'A' + 1);
        if (column > kMaxColumns) {
            return {};
        }
    }
    const char* const end = text.data() + text.size();
    std::uint32_t row = 0;
    const auto parsed = std::from_chars(text.data() + pos, end, row);
    if (column == 0 || parsed.ec != std::errc() || parsed.ptr != end || row > kMaxRows) {
        return {};
    }
    reference.column = column - 1;
    reference.row = row;
    return reference;
}

// Stops at the first other character, saturates.
std::uint32_t ParseCount(std::string_view text)
{
    std::uint64_t value = 0;
    for (char c : text) {
        if (!IsDigit(c) || value > UINT32_MAX) {
            break;
        }
        value = value * 10 + static_cast<std::uint64_t>(c - '0');
    }
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, UINT32_MAX));
}

template <std::size_t kSize>
bool Skip(const char*& at, const char (&text)[kSize])
{
    if (std::memcmp(at, text, kSize - 1) != 0) {
        return false;
    }
    at += kSize - 1;
    return true;
}

} // namespace

CXlsxSheetReader::CXlsxSheetReader(CByteSource& part, const CXlsxStyles& styles,
                                   const CXlsxStrings& strings, const SFormatContext& context,
                                   bool uncalculated)
    : m_scanner(part)
    , m_styles(styles)
    , m_strings(strings)
    , m_context(context)
    , m_uncalculated(uncalculated)
{
}

bool CXlsxSheetReader::Fault(std::string text)
{
    m_error = Fail(EErr::Format, "row " + std::to_string(m_row) + ": " + std::move(text));
    return false;
}

bool CXlsxSheetReader::FaultAt(const SCell& cell, std::string text)
{
    m_error = Fail(EErr::Format, "cell " + ColumnName(cell.column + 1) + std::to_string(m_row) +
                                     ": " + std::move(text));
    return false;
}

CResult<void> CXlsxSheetReader::Run(const FRowVisitor& visit)
{
    if (m_scanner.Next() != EXmlToken::Start || m_scanner.Name() != "worksheet") {
        return m_scanner.Failure().text.empty() ? Fail(EErr::Format, "the part is not a worksheet")
                                                : m_scanner.Failure();
    }
    for (EXmlToken token = EXmlToken::Start; token != EXmlToken::Eof && !m_stopped;) {
        token = m_scanner.Next();
        if (token == EXmlToken::Start && m_scanner.Name() == "sheetData" &&
            !m_scanner.SelfClosing()) {
            token = ReadSheetData(visit);
        } else if (token == EXmlToken::Start && !m_scanner.SkipElement()) {
            token = EXmlToken::Error;
        }
        if (token == EXmlToken::Error) {
            const SError& fault = m_error.text.empty() ? m_scanner.Failure() : m_error;
            return m_error.text.empty()
                       ? Fail(fault.code, "after row " + std::to_string(m_row) + ": " + fault.text)
                       : fault;
        }
    }
    return {};
}

EXmlToken CXlsxSheetReader::ReadSheetData(const FRowVisitor& visit)
{
    for (;;) {
        const EXmlToken token = m_scanner.Next();
        if (token == EXmlToken::End || token == EXmlToken::Error || token == EXmlToken::Eof) {
            return token;
        }
        if (token != EXmlToken::Start) {
            continue;
        }
        if (m_scanner.Name() != "row") {
            if (!m_scanner.SkipElement()) {
                return EXmlToken::Error;
            }
            continue;
        }
        if (!BeginRow() || (!m_scanner.SelfClosing() && !ReadCells())) {
            return EXmlToken::Error;
        }
        if (m_builder.Overflown()) {
            Fault("more than 256 MiB of text");
            m_error.code = EErr::Limit;
            return EXmlToken::Error;
        }
        if (m_builder.Deliver(visit) == EVisit::Stop) {
            m_stopped = true;
            return EXmlToken::End;
        }
    }
}

bool CXlsxSheetReader::BeginRow()
{
    const std::string_view given = m_scanner.Attribute("r");
    const std::uint32_t number = given.empty() ? m_row + 1 : ParseCount(Trim(given));
    if (number == 0 || number > kMaxRows) {
        return Fault("a row of the number '" + std::string(given) +
                     "' follows, a sheet has rows 1 to " + std::to_string(kMaxRows));
    }
    if (number <= m_row) {
        return Fault("row " + std::to_string(number) + " follows, rows must rise");
    }
    m_row = number;
    m_rowText = std::to_string(number);
    m_nextColumn = 0;
    m_builder.Begin(number);
    return true;
}

// Up to the row's end tag.
bool CXlsxSheetReader::ReadCells()
{
    for (;;) {
        while (ReadQuickCell()) {
        }
        if (!m_error.text.empty()) {
            return false;
        }
        switch (m_scanner.Next()) {
        case EXmlToken::Start:
            if (m_scanner.Name() == "c" ? !ReadCell() : !m_scanner.SkipElement()) {
                return false;
            }
            break;
        case EXmlToken::End:
            return true;
        case EXmlToken::Text:
            break;
        case EXmlToken::Eof:
        case EXmlToken::Error:
            return false;
        }
    }
}

// The form nearly all writers give nearly all cells: <c r="B7" s="1" t="s"><v>12</v></c>,
// attributes in any order. Anything else, and a cell that the buffer's end cuts, is left to the
// scanner: then nothing has moved. The NULs behind the buffer's content end every loop here.
bool CXlsxSheetReader::ReadQuickCell()
{
    const char* at = m_scanner.Cursor();
    SCell cell;
    cell.column = m_nextColumn;
    if (!Skip(at, "<c ") || !ReadQuickAttributes(at, cell) || cell.column >= kMaxColumns) {
        return false;
    }
    std::string_view text;
    if (!Skip(at, "/>")) {
        const bool isInline = cell.type == EType::Inline;
        if (isInline ? !Skip(at, "><is><t>") : !Skip(at, "><v>")) {
            return false;
        }
        const char* const value = at;
        while (*at != '<' && *at != '\0') {
            ++at;
        }
        text = {value, static_cast<std::size_t>(at - value)};
        if (isInline ? !Skip(at, "</t></is></c>") : !Skip(at, "</v></c>")) {
            return false;
        }
    }
    m_nextColumn = cell.column + 1;
    m_scanner.SetCursor(at);
    return Put(cell, text, true);
}

// r, s and t, each with one blank before it; moves behind the last quote.
bool CXlsxSheetReader::ReadQuickAttributes(const char*& at, SCell& cell) const
{
    for (;; ++at) {
        const char name = *at;
        if (name == '\0' || at[1] != '=' || at[2] != '"') {
            return false;
        }
        const char* const value = at + 3;
        at = value;
        while (*at != '"' && *at != '\0' && *at != '&') {
            ++at;
        }
        if (*at != '"') {
            return false;
        }
        const std::string_view text(value, static_cast<std::size_t>(at - value));
        if (name == 'r') {
            if (!ReadQuickReference(text, cell)) {
                return false;
            }
        } else if (name == 's') {
            cell.style = ParseCount(text);
        } else if (name == 't') {
            cell.type = TypeOf(text);
        } else {
            return false;
        }
        ++at;
        if (*at != ' ') {
            return true;
        }
    }
}

// Letters in front of the row's number, which is the same for all cells of a row.
bool CXlsxSheetReader::ReadQuickReference(std::string_view text, SCell& cell) const
{
    std::uint32_t column = 0;
    std::size_t letters = 0;
    while (letters < text.size() && letters < 3 && text[letters] >= 'A' && text[letters] <= 'Z') {
        column = column * 26 + static_cast<std::uint32_t>(text[letters++] - 'A' + 1);
    }
    cell.column = column - 1;
    return letters > 0 && text.substr(letters) == m_rowText;
}

CXlsxSheetReader::EType CXlsxSheetReader::TypeOf(std::string_view name)
{
    return name.empty() || name == "n" ? EType::Number
           : name == "s"               ? EType::Shared
           : name == "inlineStr"       ? EType::Inline
           : name == "str"             ? EType::Text
           : name == "b"               ? EType::Boolean
           : name == "d"               ? EType::Date
                                       : EType::Verbatim;
}

bool CXlsxSheetReader::SetPosition(std::string_view reference, SCell& cell)
{
    cell.column = m_nextColumn;
    if (!reference.empty()) {
        const SReference parsed = ParseReference(Trim(reference));
        if (parsed.row == 0) {
            return Fault("'" + std::string(reference.substr(0, 40)) + "' is no cell of a sheet");
        }
        if (parsed.row != m_row) {
            return Fault("holds the cell " + std::string(reference) + " of another row");
        }
        cell.column = parsed.column;
    }
    if (cell.column >= kMaxColumns) {
        return Fault("more than " + std::to_string(kMaxColumns) + " columns");
    }
    m_nextColumn = cell.column + 1;
    return true;
}

// Its start tag was read last.
bool CXlsxSheetReader::ReadCell()
{
    SCell cell;
    if (!SetPosition(m_scanner.Attribute("r"), cell)) {
        return false;
    }
    cell.style = ParseCount(m_scanner.Attribute("s"));
    cell.type = TypeOf(m_scanner.Attribute("t"));
    return m_scanner.SelfClosing() || ReadCellContent(cell);
}

bool CXlsxSheetReader::ReadCellContent(const SCell& cell)
{
    const std::size_t outside = m_scanner.Depth() - 1;
    std::size_t valueDepth = 0;
    bool hasValue = false;
    bool hasFormula = false;
    m_value.clear();
    while (m_scanner.Depth() > outside) {
        switch (m_scanner.Next()) {
        case EXmlToken::Start:
            if (m_scanner.Name() == "v") {
                hasValue = true;
                valueDepth = m_scanner.SelfClosing() ? 0 : m_scanner.Depth();
            } else if (m_scanner.Name() == "is") {
                hasValue = true;
                if (!AppendTextItem(m_scanner, m_value)) {
                    return false;
                }
            } else {
                hasFormula = hasFormula || m_scanner.Name() == "f";
                if (!m_scanner.SkipElement()) {
                    return false;
                }
            }
            break;
        case EXmlToken::Text:
            if (valueDepth != 0) {
                AppendXmlText(m_value, m_scanner.Text(), m_scanner.IsLiteral());
            }
            break;
        case EXmlToken::End:
            valueDepth = 0;
            break;
        case EXmlToken::Eof:
        case EXmlToken::Error:
            return false;
        }
    }
    // Writers that can't calculate leave the result out, or put a 0 and have the workbook worked
    // out when it is opened. Such a 0 would pass for a value.
    const bool noNumber =
        cell.type == EType::Number && (m_value.empty() || (m_uncalculated && Trim(m_value) == "0"));
    if (hasFormula && (!hasValue || noNumber)) {
        ++m_uncached;
        return true;
    }
    return Put(cell, m_value, false);
}

// A raw value comes straight from the scanner's buffer, entities and all.
bool CXlsxSheetReader::Put(const SCell& cell, std::string_view value, bool isRaw)
{
    if (value.empty()) {
        return true;
    }
    if (isRaw && cell.type != EType::Shared && cell.type != EType::Number &&
        !IsPlainXmlText(value)) {
        m_value.clear();
        AppendXmlText(m_value, value, false);
        value = m_value;
    }
    switch (cell.type) {
    case EType::Shared:
        return PutShared(cell, value);
    case EType::Number:
        PutNumber(cell, value);
        break;
    case EType::Boolean:
        value = Trim(value);
        m_builder.Put(cell.column, value == "1" || EqualsNoCase(value, "true") ? "TRUE" : "FALSE");
        break;
    case EType::Date:
        PutDate(cell, value);
        break;
    case EType::Text:
    case EType::Inline:
        PutText(cell, value);
        break;
    case EType::Verbatim:
        m_builder.PutCopy(cell.column, value);
        break;
    }
    return true;
}

bool CXlsxSheetReader::PutShared(const SCell& cell, std::string_view value)
{
    value = Trim(value);
    const bool isNumber = !value.empty() && std::all_of(value.begin(), value.end(), IsDigit);
    const std::size_t index = ParseCount(value);
    if (!isNumber || index >= m_strings.Count()) {
        return FaultAt(cell, "refers to the shared text '" + std::string(value.substr(0, 20)) +
                                 "', the workbook has " + std::to_string(m_strings.Count()));
    }
    if (!m_styles.IsGeneral(cell.style) && m_styles.Format(cell.style).ChangesText()) {
        PutText(cell, m_strings[index]);
    } else {
        m_builder.Put(cell.column, m_strings[index]);
    }
    return true;
}

void CXlsxSheetReader::PutText(const SCell& cell, std::string_view text)
{
    const CNumberFormat& format = m_styles.Format(cell.style);
    if (format.ChangesText()) {
        m_shown.clear();
        format.AppendText(m_shown, text, m_context);
        text = m_shown;
    }
    m_builder.PutCopy(cell.column, text);
}

void CXlsxSheetReader::PutNumber(const SCell& cell, std::string_view value)
{
    const bool general = m_styles.IsGeneral(cell.style);
    if (general && IsGeneralText(value)) {
        m_builder.PutCopy(cell.column, value);
        return;
    }
    const std::optional<double> number = ParseDouble(value);
    m_shown.clear();
    if (!number) { // no number at all, or beyond what a double holds: better told than lost
        AppendXmlText(m_shown, Trim(value), false);
        m_builder.PutCopy(cell.column, m_shown);
        return;
    }
    m_styles.Format(cell.style).AppendNumber(m_shown, *number, m_context);
    m_builder.PutCopy(cell.column, m_shown);
}

// ISO 8601, of strict workbooks. Without a date format it is shown as it is written.
void CXlsxSheetReader::PutDate(const SCell& cell, std::string_view value)
{
    double serial = 0;
    const CNumberFormat& format = m_styles.Format(cell.style);
    if (!format.IsDate() || !ParseIsoDate(value, m_context.date1904, serial)) {
        m_builder.PutCopy(cell.column, value);
        return;
    }
    m_shown.clear();
    format.AppendNumber(m_shown, serial, m_context);
    m_builder.PutCopy(cell.column, m_shown);
}

} // namespace zov::sheet
