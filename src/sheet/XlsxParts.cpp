// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsxParts.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <unordered_map>

namespace zov::sheet {
namespace {

constexpr std::uint64_t kMaxStringBytes = std::uint64_t{4} << 30U;
constexpr std::size_t kMaxFormats = 65536;

bool IsTrue(std::string_view text)
{
    return text == "1" || EqualsNoCase(text, "true") || EqualsNoCase(text, "on");
}

const SRelation* FindType(const std::vector<SRelation>& relations, std::string_view type)
{
    const auto found = std::find_if(relations.begin(), relations.end(), [&](const SRelation& one) {
        return EqualsNoCase(one.type, type);
    });
    return found == relations.end() ? nullptr : &*found;
}

SError Unread(const SSource& source, std::string_view kind)
{
    return source.Failure(EErr::Unsupported,
                          "the file is " + std::string(kind) +
                              ", which is not read; open it in a spreadsheet program and save it "
                              "as .xlsx");
}

// The part that the package's relations name; many small writers leave only the usual name.
CResult<std::string> WorkbookPart(CXlsxPackage& package, const SSource& source)
{
    ASSIGN_OR_RETURN(const std::vector<SRelation> relations, package.Relations(""));
    const SRelation* main = FindType(relations, "officeDocument");
    const std::string part = main != nullptr ? main->target : "xl/workbook.xml";
    if (EndsWithNoCase(part, ".bin") || package.Has("xl/workbook.bin")) {
        return Unread(source, "a binary workbook (.xlsb)");
    }
    if (package.Has(part)) {
        return part;
    }
    if (package.Has("mimetype")) {
        ASSIGN_OR_RETURN(const std::string type, package.ReadPart("mimetype"));
        if (type.find("opendocument") != std::string::npos) {
            return Unread(source, "an OpenDocument file (.ods)");
        }
    }
    if (package.Has("index/document.iwa") || package.Has("index.zip")) {
        return Unread(source, "a document of another program");
    }
    return source.Failure(EErr::Format, "the file is a zip archive without a workbook in it");
}

struct SSheetEntry
{
    SSheetInfo info;
    std::string relation;
};

// What the workbook's own part says; false when it is something else.
CResult<bool> ReadWorkbookPart(const std::string& xml, SXlsxIndex& index,
                               std::vector<SSheetEntry>& entries)
{
    bool isWorkbook = false;
    RETURN_IF_ERROR(
        ForEachElement(xml, [&](std::string_view name, const auto& attributes, std::size_t depth) {
            if (depth == 1) {
                isWorkbook = name == "workbook";
            } else if (name == "workbookPr") {
                index.date1904 = IsTrue(AttributeOf(attributes, "date1904"));
            } else if (name == "calcPr") {
                index.uncalculated = IsTrue(AttributeOf(attributes, "fullCalcOnLoad"));
            } else if (name == "sheet" && depth == 3) {
                const std::string_view state = AttributeOf(attributes, "state");
                const bool hidden = !state.empty() && state != "visible";
                entries.push_back({{std::string(AttributeOf(attributes, "name")), hidden},
                                   std::string(AttributeOf(attributes, "id"))});
            }
        }));
    return isWorkbook;
}

void FindSheetParts(std::vector<SSheetEntry>& entries, const std::vector<SRelation>& relations,
                    SXlsxIndex& index)
{
    for (SSheetEntry& entry : entries) {
        const auto relation =
            std::find_if(relations.begin(), relations.end(),
                         [&](const SRelation& one) { return one.id == entry.relation; });
        const bool known = relation != relations.end();
        if (known && !EqualsNoCase(relation->type, "worksheet")) {
            continue; // charts, macros, dialogs
        }
        // Without its relation a sheet can only be the part of the usual name.
        const std::string usual =
            "xl/worksheets/sheet" + std::to_string(index.sheets.size() + 1) + ".xml";
        index.sheetParts.push_back(known ? relation->target : usual);
        index.sheets.push_back(std::move(entry.info));
    }
}

} // namespace

CResult<SXlsxIndex> ReadXlsxIndex(CXlsxPackage& package, const SSource& source)
{
    ASSIGN_OR_RETURN(const std::string part, WorkbookPart(package, source));
    ASSIGN_OR_RETURN(const std::vector<SRelation> relations, package.Relations(part));
    ASSIGN_OR_RETURN(const std::string xml, package.ReadPart(part));
    SXlsxIndex index;
    std::vector<SSheetEntry> entries;
    const CResult<bool> isWorkbook = ReadWorkbookPart(xml, index, entries);
    if (!isWorkbook.Ok() || !*isWorkbook) {
        return source.Failure(EErr::Format,
                              part + ": " +
                                  (isWorkbook.Ok() ? "not a workbook" : isWorkbook.Error().text));
    }
    FindSheetParts(entries, relations, index);
    if (index.sheets.empty()) {
        return source.Failure(EErr::Format, "the workbook has no worksheet");
    }
    const auto visible = std::find_if(index.sheets.begin(), index.sheets.end(),
                                      [](const SSheetInfo& sheet) { return !sheet.hidden; });
    index.firstVisible = visible == index.sheets.end()
                             ? 0
                             : static_cast<std::size_t>(visible - index.sheets.begin());
    if (const SRelation* strings = FindType(relations, "sharedStrings")) {
        index.sharedStringsPart = strings->target;
    }
    if (const SRelation* styles = FindType(relations, "styles")) {
        index.stylesPart = styles->target;
    }
    return index;
}

CResult<void> CXlsxStyles::Read(CXlsxPackage& package, const std::string& part)
{
    if (part.empty()) {
        return {};
    }
    ASSIGN_OR_RETURN(const std::string xml, package.ReadPart(part));
    std::unordered_map<int, std::string> codes;
    std::vector<int> ids;
    bool inCellFormats = false;
    CResult<void> read = ForEachElement(
        xml,
        [&](std::string_view name, const auto& attributes, std::size_t) {
            if (name == "numFmt") {
                codes.insert_or_assign(LeadingInt(AttributeOf(attributes, "numFmtId")),
                                       std::string(AttributeOf(attributes, "formatCode")));
            } else if (name == "cellXfs") {
                inCellFormats = true;
            } else if (name == "xf" && inCellFormats) {
                ids.push_back(LeadingInt(AttributeOf(attributes, "numFmtId")));
            }
        },
        [&](std::string_view name) { inCellFormats = inCellFormats && name != "cellXfs"; });
    if (!read.Ok()) {
        return Fail(EErr::Format, part + ": " + read.Error().text);
    }
    std::unordered_map<int, std::uint32_t> known;
    for (int id : ids) {
        const auto [entry, isNew] = known.emplace(id, 0);
        if (isNew && m_formats.size() < kMaxFormats) {
            const auto code = codes.find(id);
            CNumberFormat format = code == codes.end() ? CNumberFormat::BuiltIn(id)
                                                       : CNumberFormat::Parse(code->second);
            if (!format.IsGeneral()) {
                entry->second = static_cast<std::uint32_t>(m_formats.size());
                m_formats.push_back(std::move(format));
            }
        }
        m_formatOfStyle.push_back(entry->second);
    }
    return {};
}

bool AppendTextItem(CXmlScanner& scanner, std::string& out)
{
    if (scanner.SelfClosing()) {
        return true;
    }
    const std::size_t outside = scanner.Depth() - 1;
    std::size_t textDepth = 0; // depth of the <t> that is open
    while (scanner.Depth() > outside) {
        switch (scanner.Next()) {
        case EXmlToken::Start:
            if (scanner.Name() == "t" && !scanner.SelfClosing()) {
                textDepth = scanner.Depth();
            } else if (scanner.Name() == "rPh" && !scanner.SkipElement()) {
                return false;
            }
            break;
        case EXmlToken::Text:
            if (textDepth != 0) {
                AppendXmlText(out, scanner.Text(), scanner.IsLiteral());
            }
            break;
        case EXmlToken::End:
            textDepth = scanner.Depth() < textDepth ? 0 : textDepth;
            break;
        case EXmlToken::Eof:
        case EXmlToken::Error:
            return false;
        }
    }
    return true;
}

CResult<void> CXlsxStrings::Read(CXlsxPackage& package, const std::string& part)
{
    if (part.empty() || !package.Has(part)) {
        return {};
    }
    ASSIGN_OR_RETURN(std::unique_ptr<CByteSource> bytes, package.OpenPart(part));
    CXmlScanner scanner(*bytes);
    std::string text;
    for (;;) {
        const EXmlToken token = scanner.Next();
        if (token == EXmlToken::Eof) {
            return {};
        }
        if (token == EXmlToken::Start && scanner.Name() == "si" && scanner.Depth() <= 2) {
            text.clear();
            if (AppendTextItem(scanner, text)) {
                m_texts.push_back(m_arena.Copy(text));
                if (m_arena.BytesReserved() > kMaxStringBytes) {
                    return Fail(EErr::Limit, part + ": more than 4 GiB of text");
                }
                continue;
            }
        }
        if (token == EXmlToken::Error || !scanner.Failure().text.empty()) {
            return Fail(scanner.Failure().code, part + ": " + scanner.Failure().text);
        }
    }
}

} // namespace zov::sheet
