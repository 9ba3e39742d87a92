// SPDX-License-Identifier: Apache-2.0
#include "sheet/OleContainer.h"
#include "sheet/WorkbookSource.h"
#include "sheet/XlsGlobals.h"
#include "sheet/XlsSheet.h"

#include <algorithm>

namespace zov::sheet {
namespace {

class CXlsWorkbook final : public CWorkbook
{
public:
    CXlsWorkbook(CSourcePtr source, std::unique_ptr<COleContainer> container,
                 std::string_view stream, SXlsGlobals globals)
        : m_source(std::move(source))
        , m_container(std::move(container))
        , m_stream(stream)
        , m_globals(std::move(globals))
    {
        const auto visible = std::find_if(m_globals.sheets.begin(), m_globals.sheets.end(),
                                          [](const SSheetInfo& sheet) { return !sheet.hidden; });
        m_selected = visible == m_globals.sheets.end()
                         ? 0
                         : static_cast<std::size_t>(visible - m_globals.sheets.begin());
    }

    [[nodiscard]] const std::vector<SSheetInfo>& Sheets() const override
    {
        return m_globals.sheets;
    }
    [[nodiscard]] std::size_t SelectedSheet() const override { return m_selected; }
    using CWorkbook::SelectSheet;
    CResult<void> SelectSheet(std::size_t index) override
    {
        if (index >= m_globals.sheets.size()) {
            return Fail(EErr::NotFound, "no sheet number " + std::to_string(index + 1) +
                                            ", the workbook has " +
                                            std::to_string(m_globals.sheets.size()));
        }
        m_selected = index;
        return {};
    }
    CResult<void> ReadRows(const FRowVisitor& visit) override
    {
        CXlsSheetReader reader(m_stream, m_globals.sheetOffsets[m_selected], m_globals,
                               {m_source->options.text, m_globals.date1904});
        CResult<void> read = reader.Run(visit);
        m_uncached = reader.UncachedFormulaCount();
        if (!read.Ok()) {
            return m_source->Failure(read.Error().code, "sheet '" +
                                                            m_globals.sheets[m_selected].name +
                                                            "', " + read.Error().text);
        }
        return {};
    }
    [[nodiscard]] std::uint64_t UncachedFormulaCount() const override { return m_uncached; }

private:
    CSourcePtr m_source;
    std::unique_ptr<COleContainer> m_container;
    std::string_view m_stream;
    SXlsGlobals m_globals;
    std::size_t m_selected = 0;
    std::uint64_t m_uncached = 0;
};

CResult<std::string_view> WorkbookStream(COleContainer& container, const SSource& source)
{
    for (const char* name : {"Workbook", "Book", "WORKBOOK", "BOOK"}) {
        if (container.Has(name)) {
            CResult<std::string_view> stream = container.Read(name);
            if (!stream.Ok() || stream->empty()) {
                return source.Failure(EErr::Format, "the workbook's container is broken or "
                                                    "incomplete; get the file again");
            }
            return stream;
        }
    }
    if (container.Has("EncryptedPackage")) {
        return source.Failure(EErr::Unsupported,
                              "the workbook is encrypted; open it in a spreadsheet program, remove "
                              "the password and save it again");
    }
    return source.Failure(EErr::Format,
                          "the file is a document of another program, without a workbook in it");
}

} // namespace

CResult<std::unique_ptr<CWorkbook>> OpenXls(CSourcePtr source)
{
    std::string_view stream = source->Bytes();
    std::unique_ptr<COleContainer> container;
    if (stream.starts_with("\xD0\xCF\x11\xE0")) {
        CResult<std::unique_ptr<COleContainer>> opened = COleContainer::Open(stream);
        if (!opened.Ok()) {
            return source->Failure(opened.Error().code,
                                   "the workbook's container: " + opened.Error().text);
        }
        container = opened.Take();
        ASSIGN_OR_RETURN(stream, WorkbookStream(*container, *source));
    }
    ASSIGN_OR_RETURN(SXlsGlobals globals, ReadXlsGlobals(stream, *source));
    return std::unique_ptr<CWorkbook>(std::make_unique<CXlsWorkbook>(
        std::move(source), std::move(container), stream, std::move(globals)));
}

} // namespace zov::sheet
