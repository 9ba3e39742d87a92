// SPDX-License-Identifier: Apache-2.0
#include "sheet/WorkbookSource.h"
#include "sheet/XlsxPackage.h"
#include "sheet/XlsxParts.h"
#include "sheet/XlsxSheet.h"

namespace zov::sheet {
namespace {

class CXlsxWorkbook final : public CWorkbook
{
public:
    CXlsxWorkbook(CSourcePtr source, std::unique_ptr<CXlsxPackage> package, SXlsxIndex index)
        : m_source(std::move(source))
        , m_package(std::move(package))
        , m_index(std::move(index))
        , m_selected(m_index.firstVisible)
    {
    }

    [[nodiscard]] const std::vector<SSheetInfo>& Sheets() const override { return m_index.sheets; }
    [[nodiscard]] std::size_t SelectedSheet() const override { return m_selected; }
    using CWorkbook::SelectSheet;
    CResult<void> SelectSheet(std::size_t index) override
    {
        if (index >= m_index.sheets.size()) {
            return Fail(EErr::NotFound, "no sheet number " + std::to_string(index + 1) +
                                            ", the workbook has " +
                                            std::to_string(m_index.sheets.size()));
        }
        m_selected = index;
        return {};
    }
    CResult<void> ReadRows(const FRowVisitor& visit) override;
    [[nodiscard]] std::uint64_t UncachedFormulaCount() const override { return m_uncached; }

private:
    CResult<void> LoadShared();

    CSourcePtr m_source;
    std::unique_ptr<CXlsxPackage> m_package;
    SXlsxIndex m_index;
    std::size_t m_selected;
    CXlsxStyles m_styles;
    std::unique_ptr<CXlsxStrings> m_strings;
    std::uint64_t m_uncached = 0;
};

// Only when cells are asked for: the list of sheets alone needs none of it.
CResult<void> CXlsxWorkbook::LoadShared()
{
    if (m_strings) {
        return {};
    }
    CXlsxStyles styles;
    auto strings = std::make_unique<CXlsxStrings>();
    CResult<void> read = styles.Read(*m_package, m_index.stylesPart);
    if (read.Ok()) {
        read = strings->Read(*m_package, m_index.sharedStringsPart);
    }
    if (!read.Ok()) {
        return m_source->Failure(read.Error().code, read.Error().text);
    }
    m_styles = std::move(styles);
    m_strings = std::move(strings);
    return {};
}

CResult<void> CXlsxWorkbook::ReadRows(const FRowVisitor& visit)
{
    m_uncached = 0;
    RETURN_IF_ERROR(LoadShared());
    ASSIGN_OR_RETURN(std::unique_ptr<CByteSource> part,
                     m_package->OpenPart(m_index.sheetParts[m_selected]));
    CXlsxSheetReader reader(*part, m_styles, *m_strings, {m_source->options.text, m_index.date1904},
                            m_index.uncalculated);
    CResult<void> read = reader.Run(visit);
    m_uncached = reader.UncachedFormulaCount();
    if (!read.Ok()) {
        return m_source->Failure(read.Error().code, "sheet '" + m_index.sheets[m_selected].name +
                                                        "', " + read.Error().text);
    }
    return {};
}

} // namespace

CResult<std::unique_ptr<CWorkbook>> OpenXlsx(CSourcePtr source)
{
    ASSIGN_OR_RETURN(std::unique_ptr<CXlsxPackage> package, CXlsxPackage::Open(source));
    ASSIGN_OR_RETURN(SXlsxIndex index, ReadXlsxIndex(*package, *source));
    return std::unique_ptr<CWorkbook>(
        std::make_unique<CXlsxWorkbook>(std::move(source), std::move(package), std::move(index)));
}

} // namespace zov::sheet
