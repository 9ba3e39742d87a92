// SPDX-License-Identifier: Apache-2.0
/// Small workbooks made in memory, part by part and record by record.
#pragma once

#include "sheet/Workbook.h"

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zov::test {

using FParts = std::vector<std::pair<std::string, std::string>>;

/// A zip archive of these files.
std::string ZipBytes(const FParts& parts);

/// What an .xlsx holds; empty parts are left out.
struct SXlsx
{
    std::string rows;          ///< content of sheetData
    std::string sharedStrings; ///< content of sst
    std::string numberFormats; ///< codes for the styles 1, 2, ..., one a line
    std::string workbookAttributes;
    std::string sheets = R"(<sheet name="One" sheetId="1" r:id="rId1"/>)";
};
std::string XlsxBytes(const SXlsx& content);
/// The parts of XlsxBytes, to be changed before they are zipped.
FParts XlsxParts(const SXlsx& content);

/// Appends the records of a binary workbook.
class CBiff
{
public:
    CBiff& Record(std::uint16_t id, const std::string& data);
    CBiff& Begin(std::uint16_t kind, std::uint16_t version = 0x0600);
    CBiff& End() { return Record(0x000A, ""); }
    /// Row, column and style, then the rest.
    CBiff& Cell(std::uint16_t id, std::uint16_t row, std::uint16_t column, const std::string& rest,
                std::uint16_t style = 0);

    std::string bytes;
};
std::string U16(unsigned value);
std::string U32(std::uint32_t value);
std::string F64(double value);

/// A workbook of version 8 with one sheet "One": globals are records between, cells those of the
/// sheet.
std::string XlsBytes(const std::string& globals, const std::string& cells);

/// A compound file that holds one stream; its sectors are laid out in `stride` steps, so that a
/// stride above 1 scatters them.
std::string OleBytes(std::string_view name, std::string content, unsigned stride = 1);

/// Every row as "2: a|b||c", joined by newlines; "error: ..." when one was met.
std::string Dump(CResult<std::unique_ptr<CWorkbook>> book);
std::string DumpBytes(const std::string& bytes, std::string_view name = "a.xlsx",
                      EText text = EText::Shown);
std::string DumpRows(CWorkbook& book);

/// Opens and reads every sheet; true when nothing but a clean outcome was met.
bool ReadsCleanly(const std::string& bytes, std::string_view name);

} // namespace zov::test
