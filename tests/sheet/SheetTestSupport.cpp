// SPDX-License-Identifier: Apache-2.0
#include "sheet/SheetTestSupport.h"

#include "base/Text.h"

#include <algorithm>
#include <zip.h>

namespace zov::test {

std::string ZipBytes(const FParts& parts)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    for (const auto& [name, content] : parts) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    }
    zip_close(archive);
    zip_source_open(target);
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

namespace {

constexpr std::string_view kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kRelations =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string Relation(std::string_view id, std::string_view type, std::string_view target)
{
    return "<Relationship Id=\"" + std::string(id) + "\" Type=\"" + std::string(kRelations) + "/" +
           std::string(type) + "\" Target=\"" + std::string(target) + "\"/>";
}

std::string Relations(const std::string& list)
{
    return "<Relationships "
           "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
           list + "</Relationships>";
}

std::string Element(std::string_view name, const std::string& content)
{
    return "<" + std::string(name) + " xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" +
           std::string(kRelations) + "\">" + content + "</" + std::string(name) + ">";
}

std::string StylesPart(const std::string& codes)
{
    std::string formats;
    std::string styles = "<xf numFmtId=\"0\"/>";
    int id = 164;
    for (std::string_view code : Split(codes, '\n')) {
        const std::string escaped =
            ReplaceAll(ReplaceAll(ReplaceAll(code, "&", "&amp;"), "\"", "&quot;"), "<", "&lt;");
        formats +=
            "<numFmt numFmtId=\"" + std::to_string(id) + "\" formatCode=\"" + escaped + "\"/>";
        styles += "<xf numFmtId=\"" + std::to_string(id++) + "\"/>";
    }
    return Element("styleSheet", "<numFmts>" + formats +
                                     "</numFmts><cellStyleXfs><xf "
                                     "numFmtId=\"9\"/></cellStyleXfs><cellXfs>" +
                                     styles + "</cellXfs>");
}

} // namespace

FParts XlsxParts(const SXlsx& content)
{
    FParts parts{
        {"_rels/.rels", Relations(Relation("a", "officeDocument", "xl/workbook.xml"))},
        {"xl/_rels/workbook.xml.rels",
         Relations(Relation("rId1", "worksheet", "worksheets/sheet1.xml") +
                   Relation("rId2", "sharedStrings", "sharedStrings.xml") +
                   Relation("rId3", "styles", "styles.xml"))},
        {"xl/workbook.xml", Element("workbook", "<workbookPr " + content.workbookAttributes +
                                                    "/><sheets>" + content.sheets + "</sheets>")},
        {"xl/styles.xml", StylesPart(content.numberFormats)},
        {"xl/worksheets/sheet1.xml",
         Element("worksheet", "<sheetData>" + content.rows + "</sheetData>")}};
    if (!content.sharedStrings.empty()) {
        parts.emplace_back("xl/sharedStrings.xml", Element("sst", content.sharedStrings));
    }
    return parts;
}

std::string XlsxBytes(const SXlsx& content)
{
    return ZipBytes(XlsxParts(content));
}

std::string U16(unsigned value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string U32(std::uint32_t value)
{
    return U16(value & 0xFFFF) + U16(value >> 16);
}

std::string F64(double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return U32(static_cast<std::uint32_t>(bits)) + U32(static_cast<std::uint32_t>(bits >> 32));
}

CBiff& CBiff::Record(std::uint16_t id, const std::string& data)
{
    bytes += U16(id) + U16(static_cast<unsigned>(data.size())) + data;
    return *this;
}

CBiff& CBiff::Begin(std::uint16_t kind, std::uint16_t version)
{
    const std::string head = U16(version) + U16(kind) + U32(0);
    return Record(0x0809, version == 0x0600 ? head + std::string(8, '\0') : head);
}

CBiff& CBiff::Cell(std::uint16_t id, std::uint16_t row, std::uint16_t column,
                   const std::string& rest, std::uint16_t style)
{
    return Record(id, U16(row) + U16(column) + U16(style) + rest);
}

std::string XlsBytes(const std::string& globals, const std::string& cells)
{
    const std::string name = std::string("\x03\x00", 2) + "One";
    CBiff head;
    head.Begin(5);
    head.bytes += globals;
    const auto offset = static_cast<std::uint32_t>(head.bytes.size() + 4 + 6 + name.size() + 4);
    head.Record(0x0085, U32(offset) + std::string(2, '\0') + name).End();
    CBiff sheet;
    sheet.Begin(0x10);
    sheet.bytes += cells;
    return head.bytes + sheet.End().bytes;
}

std::string OleBytes(std::string_view name, std::string content, unsigned stride)
{
    constexpr std::uint32_t kFree = 0xFFFFFFFF;
    constexpr std::uint32_t kEnd = 0xFFFFFFFE;
    const std::size_t size = std::max<std::size_t>(content.size(), 4096);
    content.resize((size + 511) / 512 * 512, '\0');
    const std::size_t count = content.size() / 512;
    std::vector<std::uint32_t> table(128, kFree);
    table[0] = 0xFFFFFFFD; // sector 0 is the table, 1 the directory, the stream lies behind
    table[1] = kEnd;
    std::vector<std::string> sectors(2 + count);
    std::uint32_t previous = 0;
    std::uint32_t first = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto at =
            static_cast<std::uint32_t>(2 + i * stride % count + i * stride / count % stride);
        sectors[at] = content.substr(i * 512, 512);
        (i == 0 ? first : table[previous]) = at;
        previous = at;
    }
    table[previous] = kEnd;
    for (std::uint32_t entry : table) {
        sectors[0] += U32(entry);
    }
    const auto entry = [](std::string_view text, char type, std::uint32_t child,
                          std::uint32_t start, std::uint32_t bytes) {
        std::string out;
        for (char c : text) {
            out += {c, '\0'};
        }
        out.resize(64, '\0');
        out += U16(static_cast<unsigned>(text.size() * 2 + 2)) + std::string{type, 1} + U32(kFree) +
               U32(kFree) + U32(child) + std::string(36, '\0') + U32(start) + U32(bytes) + U32(0);
        return out;
    };
    sectors[1] = entry("Root Entry", 5, 1, kEnd, 0) +
                 entry(name, 2, kFree, first, static_cast<std::uint32_t>(size));
    sectors[1].resize(512, '\0');
    std::string out = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0') + U16(0x3E) +
                      U16(3) + U16(0xFFFE) + U16(9) + U16(6) + std::string(6, '\0') + U32(0) +
                      U32(1) + U32(1) + U32(0) + U32(4096) + U32(kEnd) + U32(0) + U32(kEnd) +
                      U32(0) + U32(0);
    while (out.size() < 512) {
        out += '\xFF';
    }
    for (const std::string& sector : sectors) {
        out += sector;
    }
    return out;
}

std::string DumpRows(CWorkbook& book)
{
    std::string out;
    const CResult<void> read = book.ReadRows([&](const SSheetRow& row) {
        out += (out.empty() ? "" : "\n") + std::to_string(row.number) + ": ";
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            out.append(i == 0 ? "" : "|").append(row.cells[i]);
        }
        return EVisit::Continue;
    });
    return read.Ok() ? out : out + (out.empty() ? "" : "\n") + "error: " + read.Error().text;
}

std::string Dump(CResult<std::unique_ptr<CWorkbook>> book)
{
    return book.Ok() ? DumpRows(**book) : "error: " + book.Error().text;
}

std::string DumpBytes(const std::string& bytes, std::string_view name, EText text)
{
    return Dump(OpenWorkbookBytes(bytes, name, {text}));
}

bool ReadsCleanly(const std::string& bytes, std::string_view name)
{
    auto book = OpenWorkbookBytes(bytes, name);
    if (!book.Ok()) {
        return !book.Error().text.empty();
    }
    for (std::size_t i = 0; i < (*book)->Sheets().size(); ++i) {
        if (!(*book)->SelectSheet(i).Ok()) {
            return false;
        }
        const CResult<void> read =
            (*book)->ReadRows([](const SSheetRow&) { return EVisit::Continue; });
        if (!read.Ok() && read.Error().text.empty()) {
            return false;
        }
    }
    return true;
}

} // namespace zov::test
