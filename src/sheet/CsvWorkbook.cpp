// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "sheet/Charset.h"
#include "sheet/CsvScanner.h"
#include "sheet/RowBuilder.h"
#include "sheet/WorkbookSource.h"

#include <algorithm>
#include <deque>

namespace zov::sheet {
namespace {

/// One pass over the text. Cells are views into it; only those with doubled quotes are copied.
class CCsvReader
{
public:
    CCsvReader(std::string_view text, char separator)
        : m_text(text)
        , m_breaks(text, separator)
        , m_separator(separator)
        , m_cells(64)
    {
    }

    CResult<void> Run(const FRowVisitor& visit)
    {
        std::size_t start = 0;
        while (start < m_text.size()) {
            ++m_row;
            if (!ReadRow(start)) {
                return Fail(EErr::Limit, "row " + std::to_string(m_row) + ": more than " +
                                             std::to_string(kMaxColumns) +
                                             " columns; is the separator right?");
            }
            if (m_used > 0 && visit({m_row, {m_cells.data(), m_used}}) == EVisit::Stop) {
                break;
            }
        }
        return {};
    }

private:
    // From `start`, which is moved to the next row's. m_used is 0 when every cell is empty.
    bool ReadRow(std::size_t& start)
    {
        std::size_t count = 0;
        m_used = 0;
        m_copies.clear();
        for (;;) {
            if (count == m_cells.size()) {
                if (count == kMaxColumns) {
                    return false;
                }
                m_cells.resize(count * 2);
            }
            std::size_t end = 0;
            if (start < m_text.size() && (m_text[start] == '"' || m_text[start] == '=')) {
                m_cells[count] = SpecialCell(start, end);
            } else {
                end = m_breaks.Next();
                m_cells[count] = {m_text.data() + start, end - start};
            }
            m_used = m_cells[count].empty() ? m_used : count + 1;
            ++count;
            start = end + 1;
            if (end >= m_text.size()) {
                return true;
            }
            if (m_text[end] != m_separator) {
                SkipLineFeed(end, start);
                return true;
            }
        }
    }

    // CR LF is one line end.
    void SkipLineFeed(std::size_t end, std::size_t& start)
    {
        if (m_text[end] == '\r' && start < m_text.size() && m_text[start] == '\n') {
            m_breaks.Next();
            ++start;
        }
    }

    std::string_view SpecialCell(std::size_t start, std::size_t& end)
    {
        std::string_view text;
        if (m_text[start] == '"') {
            const SQuotedCell cell = ReadQuoted(m_text, start, m_separator);
            end = cell.end;
            m_breaks.Seek(end);
            m_breaks.Next();
            const bool asItStands = !cell.hasDoubled && cell.tail.empty() &&
                                    cell.text.find('\r') == std::string_view::npos;
            text = cell.isPlain || asItStands
                       ? cell.text
                       : std::string_view(m_copies.emplace_back(Unquoted(cell)));
        } else if (m_text.substr(start).starts_with("=\"")) {
            const SQuotedCell cell = ReadQuoted(m_text, start + 1, m_separator);
            end = cell.end;
            m_breaks.Seek(end);
            m_breaks.Next();
            text = m_text.substr(start, end - start);
        } else {
            end = m_breaks.Next();
            text = m_text.substr(start, end - start);
        }
        // ="0402" is how writers keep spreadsheets from reading a number.
        if (text.size() >= 3 && text.starts_with("=\"") && text.back() == '"' &&
            text.find('"', 2) == text.size() - 1) {
            text = text.substr(2, text.size() - 3);
        }
        return text;
    }

    std::string_view m_text;
    CBreakFinder m_breaks;
    char m_separator;
    std::vector<std::string_view> m_cells;
    std::deque<std::string> m_copies;
    std::size_t m_used = 0;
    std::uint32_t m_row = 0;
};

class CCsvWorkbook final : public CWorkbook
{
public:
    CCsvWorkbook(CSourcePtr source, SDecodedText decoded)
        : m_source(std::move(source))
        , m_converted(std::move(decoded.converted))
        , m_skip(decoded.skip)
    {
        m_sheets.push_back({PathText(TextPath(m_source->name).stem()), false});
        ChooseSeparator();
    }

    [[nodiscard]] const std::vector<SSheetInfo>& Sheets() const override { return m_sheets; }
    [[nodiscard]] std::size_t SelectedSheet() const override { return 0; }
    using CWorkbook::SelectSheet;
    CResult<void> SelectSheet(std::size_t index) override
    {
        return index == 0 ? CResult<void>()
                          : Fail(EErr::NotFound, "a text table has one sheet only");
    }
    CResult<void> ReadRows(const FRowVisitor& visit) override
    {
        CResult<void> read = CCsvReader(Text(), m_separator).Run(visit);
        return read.Ok() ? CResult<void>()
                         : m_source->Failure(read.Error().code, read.Error().text);
    }

private:
    [[nodiscard]] std::string_view Text() const
    {
        return m_converted.empty() ? m_source->Bytes().substr(m_skip)
                                   : std::string_view(m_converted).substr(m_skip);
    }
    // A first line "sep=;" names the separator and is no row.
    void ChooseSeparator()
    {
        m_skip = m_converted.empty() ? m_skip : 0;
        const std::string_view text = Text();
        const std::string_view line = text.substr(0, std::min<std::size_t>(text.size(), 8));
        if (StartsWithNoCase(line, "sep=") && line.size() > 5 &&
            (line[5] == '\n' || line[5] == '\r')) {
            m_separator = line[4];
            m_skip += line.substr(5).starts_with("\r\n") ? 7 : 6;
        } else {
            m_separator = SniffSeparator(text);
        }
    }

    CSourcePtr m_source;
    std::string m_converted;
    std::size_t m_skip;
    char m_separator = ',';
    std::vector<SSheetInfo> m_sheets;
};

} // namespace

CResult<std::unique_ptr<CWorkbook>> OpenCsv(CSourcePtr source)
{
    SDecodedText decoded = DecodeTextFile(source->Bytes());
    if (decoded.binary) {
        return source->Failure(EErr::Format,
                               "the file holds NUL characters: it is not a text table");
    }
    return std::unique_ptr<CWorkbook>(
        std::make_unique<CCsvWorkbook>(std::move(source), std::move(decoded)));
}

} // namespace zov::sheet
