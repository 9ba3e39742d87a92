// SPDX-License-Identifier: Apache-2.0
/// The cells of one sheet of a binary workbook, row by row.
#pragma once

#include "sheet/RowBuilder.h"
#include "sheet/XlsGlobals.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

class CXlsSheetReader
{
public:
    CXlsSheetReader(std::string_view stream, std::size_t offset, const SXlsGlobals& globals,
                    const SFormatContext& context);

    /// Errors: Format with the cell, Limit.
    CResult<void> Run(const FRowVisitor& visit);
    [[nodiscard]] std::uint64_t UncachedFormulaCount() const { return m_uncached; }

private:
    struct SCellRecord
    {
        std::uint32_t row;
        std::uint32_t offset;
    };

    CResult<void> Survey();
    CResult<void> ReadInOrder(const FRowVisitor& visit);
    CResult<void> ReadSorted(const FRowVisitor& visit);
    bool BeginRecord(const SXlsRecord& record, const FRowVisitor& visit, CResult<void>& outcome);
    CResult<void> Deliver(const FRowVisitor& visit);
    bool ReadCell(const SXlsRecord& record);
    bool ReadFormula(const SXlsRecord& record, std::uint16_t column, std::uint16_t style);
    bool ReadFormulaText(const SXlsRecord& record, std::uint16_t column, std::uint16_t style);
    bool ReadLabel(const SXlsRecord& record, std::uint16_t column, std::uint16_t style);
    bool ReadMulRk(const SXlsRecord& record, std::uint16_t column);
    void PutNumber(std::uint32_t column, std::uint16_t style, double value);
    void PutText(std::uint32_t column, std::uint16_t style, std::string_view text, bool lasting);
    [[nodiscard]] SError Broken(std::string_view what) const;

    std::string_view m_stream;
    std::size_t m_begin;
    std::size_t m_end = 0; ///< behind the last cell record
    const SXlsGlobals& m_globals;
    SFormatContext m_context;
    CRowBuilder m_builder;
    bool m_rising = true;
    bool m_stopped = false;
    std::uint64_t m_uncached = 0;
    std::string m_text;
};

} // namespace zov::sheet
