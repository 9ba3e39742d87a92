// SPDX-License-Identifier: Apache-2.0
/// Small .xlsx files out of lines of text, for tests that need a part list.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <zip.h>

namespace zov::test {

/// "a|b|c" a row, rows parted by line feeds; cells that look like numbers become numbers.
class CXlsxMaker
{
public:
    CXlsxMaker& Sheet(const std::string& name, std::string_view table)
    {
        m_sheets.emplace_back(name, SheetXml(table));
        return *this;
    }

    /// False when the file can't be written.
    bool Write(const std::filesystem::path& path) const
    {
        zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        if (archive == nullptr) {
            return false;
        }
        std::vector<std::pair<std::string, std::string>> parts = FixedParts();
        for (std::size_t i = 0; i < m_sheets.size(); ++i) {
            parts.emplace_back("xl/worksheets/sheet" + std::to_string(i + 1) + ".xml",
                               m_sheets[i].second);
        }
        for (const auto& [name, bytes] : parts) { // the bytes are read when the archive is closed
            zip_file_add(archive, name.c_str(),
                         zip_source_buffer(archive, bytes.data(), bytes.size(), 0),
                         ZIP_FL_OVERWRITE);
        }
        return zip_close(archive) == 0;
    }

private:
    static std::string Escaped(std::string_view text)
    {
        std::string out;
        for (const char c : text) {
            out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
        }
        return out;
    }
    static std::string CellXml(std::string_view text)
    {
        if (text.empty()) {
            return "<c/>";
        }
        const bool number = text.find_first_not_of("0123456789.") == std::string_view::npos &&
                            (text.front() != '0' || text.size() == 1 || text[1] == '.');
        return number ? "<c><v>" + std::string(text) + "</v></c>"
                      : "<c t=\"inlineStr\"><is><t xml:space=\"preserve\">" + Escaped(text) +
                            "</t></is></c>";
    }
    static std::string SheetXml(std::string_view table)
    {
        std::string rows = "<row>";
        std::size_t start = 0;
        for (std::size_t i = 0; i <= table.size(); ++i) {
            const char c = i < table.size() ? table[i] : '\n';
            if (c == '|' || c == '\n') {
                rows += CellXml(table.substr(start, i - start));
                rows += c == '\n' ? "</row><row>" : "";
                start = i + 1;
            }
        }
        return "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
               "<sheetData>" +
               rows + "</row></sheetData></worksheet>";
    }
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> FixedParts() const
    {
        const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/";
        const std::string package = "http://schemas.openxmlformats.org/package/2006/";
        const auto relation = [&](std::size_t id, const std::string& type, const std::string& to) {
            return "<Relationship Id=\"rId" + std::to_string(id) + "\" Type=\"" + office +
                   "relationships/" + type + "\" Target=\"" + to + "\"/>";
        };
        const std::string head = "<Relationships xmlns=\"" + package + "relationships\">";
        std::string sheets;
        std::string relations;
        for (std::size_t i = 1; i <= m_sheets.size(); ++i) {
            const std::string number = std::to_string(i);
            sheets += "<sheet name=\"" + m_sheets[i - 1].first + "\" sheetId=\"" + number +
                      "\" r:id=\"rId" + number + "\"/>";
            relations += relation(i, "worksheet", "worksheets/sheet" + number + ".xml");
        }
        return {{"[Content_Types].xml", "<Types xmlns=\"" + package +
                                            "content-types\"><Default Extension=\"xml\" "
                                            "ContentType=\"application/xml\"/></Types>"},
                {"_rels/.rels",
                 head + relation(1, "officeDocument", "xl/workbook.xml") + "</Relationships>"},
                {"xl/workbook.xml",
                 "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
                 "xmlns:r=\"" +
                     office + "relationships\"><sheets>" + sheets + "</sheets></workbook>"},
                {"xl/_rels/workbook.xml.rels", head + relations + "</Relationships>"}};
    }

    std::vector<std::pair<std::string, std::string>> m_sheets;
};

} // namespace zov::test
