// SPDX-License-Identifier: Apache-2.0
/// The parts of an .xlsx workbook that its sheets refer to: list of sheets, number formats, shared
/// texts.
#pragma once

#include "base/Arena.h"
#include "sheet/NumberFormat.h"
#include "sheet/XlsxPackage.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

struct SXlsxIndex
{
    std::vector<SSheetInfo> sheets;
    std::vector<std::string> sheetParts; ///< by sheet
    std::string sharedStringsPart;       ///< empty when there is none
    std::string stylesPart;
    std::size_t firstVisible = 0;
    bool date1904 = false;
    bool uncalculated =
        false; ///< its writer leaves all formulas to be worked out when it is opened
};

/// Errors: Format, and Unsupported for workbooks whose cells are not XML. The text says what is
/// wrong.
CResult<SXlsxIndex> ReadXlsxIndex(CXlsxPackage& package, const SSource& source);

/// Number formats by cell style.
class CXlsxStyles
{
public:
    /// Styles without a part are all General.
    CResult<void> Read(CXlsxPackage& package, const std::string& part);

    /// General for a style that does not exist.
    [[nodiscard]] const CNumberFormat& Format(std::uint32_t style) const
    {
        return m_formats[style < m_formatOfStyle.size() ? m_formatOfStyle[style] : 0];
    }
    /// Numbers and texts of the style are shown as they are written.
    [[nodiscard]] bool IsGeneral(std::uint32_t style) const
    {
        return style >= m_formatOfStyle.size() || m_formatOfStyle[style] == 0;
    }

private:
    std::vector<CNumberFormat> m_formats{CNumberFormat()}; ///< [0] is General
    std::vector<std::uint32_t> m_formatOfStyle;
};

class CXlsxStrings
{
public:
    /// Reads the table of shared texts; phonetic hints are left out.
    CResult<void> Read(CXlsxPackage& package, const std::string& part);

    [[nodiscard]] std::size_t Count() const { return m_texts.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const { return m_texts[index]; }

private:
    CArena m_arena;
    std::vector<std::string_view> m_texts;
};

/// Reads what stands in a text item (<si> or <is>), whose start tag was read last, up to its end
/// tag, and appends it. False on an error of the scanner.
[[nodiscard]] bool AppendTextItem(CXmlScanner& scanner, std::string& out);

} // namespace zov::sheet
