// SPDX-License-Identifier: Apache-2.0
/// The cells of one sheet of an .xlsx workbook, row by row, while the part is unpacked.
#pragma once

#include "sheet/RowBuilder.h"
#include "sheet/XlsxParts.h"
#include "sheet/XmlScanner.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zov::sheet {

class CXlsxSheetReader
{
public:
    /// @param uncalculated  the writer left the formulas' results open: a zero is then none
    CXlsxSheetReader(CByteSource& part, const CXlsxStyles& styles, const CXlsxStrings& strings,
                     const SFormatContext& context, bool uncalculated = false);

    /// Errors: Format with row or cell, Limit.
    CResult<void> Run(const FRowVisitor& visit);
    [[nodiscard]] std::uint64_t UncachedFormulaCount() const { return m_uncached; }

private:
    enum class EType : std::uint8_t
    {
        Number,
        Shared,
        Boolean,
        Date,
        Text, ///< the result of a formula
        Inline,
        Verbatim ///< errors, and what is of an unknown type
    };
    struct SCell
    {
        std::uint32_t column = 0;
        std::uint32_t style = 0;
        EType type = EType::Number;
    };

    EXmlToken ReadSheetData(const FRowVisitor& visit);
    bool BeginRow();
    bool ReadCells();
    bool ReadCell();
    bool ReadCellContent(const SCell& cell);
    bool ReadQuickCell();
    bool ReadQuickAttributes(const char*& at, SCell& cell) const;
    bool ReadQuickReference(std::string_view text, SCell& cell) const;
    bool SetPosition(std::string_view reference, SCell& cell);
    bool Put(const SCell& cell, std::string_view value, bool isRaw);
    bool PutShared(const SCell& cell, std::string_view value);
    void PutText(const SCell& cell, std::string_view text);
    void PutNumber(const SCell& cell, std::string_view value);
    void PutDate(const SCell& cell, std::string_view value);
    bool Fault(std::string text);
    bool FaultAt(const SCell& cell, std::string text);
    static EType TypeOf(std::string_view name);

    CXmlScanner m_scanner;
    const CXlsxStyles& m_styles;
    const CXlsxStrings& m_strings;
    SFormatContext m_context;
    bool m_uncalculated;
    CRowBuilder m_builder;
    std::uint32_t m_row = 0;
    std::string m_rowText;
    std::uint32_t m_nextColumn = 0;
    std::uint64_t m_uncached = 0;
    bool m_stopped = false;
    std::string m_value;
    std::string m_shown;
    SError m_error;
};

} // namespace zov::sheet
