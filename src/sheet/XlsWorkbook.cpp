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

struct SStream
{
    std::string_view bytes;
    std::unique_ptr<COleContainer> holder; ///< when the bytes are not those of the file
};

CResult<SStream> WorkbookStream(const SSource& source)
{
    constexpr const char* kNames[] = {"Workbook", "Book"};
    const std::string_view bytes = source.Bytes();
    for (const char* name : kNames) {
        if (const auto stream = OleStreamInOnePiece(bytes, name)) {
            return SStream{*stream, nullptr};
        }
    }
    CResult<std::unique_ptr<COleContainer>> container = COleContainer::Open(bytes);
    if (!container.Ok()) {
        return source.Failure(container.Error().code,
                              "the workbook's container: " + container.Error().text);
    }
    for (const char* name : kNames) {
        if ((*container)->Has(name)) {
            const std::string_view stream = (*container)->Read(name);
            if (stream.empty()) {
                return source.Failure(EErr::Format, "the workbook's container is broken or "
                                                    "incomplete; get the file again");
            }
            return SStream{stream, container.Take()};
        }
    }
    if ((*container)->Has("EncryptedPackage")) {
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
    SStream stream{source->Bytes(), nullptr};
    if (stream.bytes.starts_with("\xD0\xCF\x11\xE0")) {
        ASSIGN_OR_RETURN(stream, WorkbookStream(*source));
    }
    ASSIGN_OR_RETURN(SXlsGlobals globals, ReadXlsGlobals(stream.bytes, *source));
    return std::unique_ptr<CWorkbook>(std::make_unique<CXlsWorkbook>(
        std::move(source), std::move(stream.holder), stream.bytes, std::move(globals)));
}

} // namespace zov::sheet
