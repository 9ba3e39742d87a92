// SPDX-License-Identifier: Apache-2.0
#include "batch/ColumnMapping.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/ColumnTitles.h"
#include "batch/Messages.h"

#include <algorithm>

namespace zov::batch {

namespace {

constexpr std::uint64_t kMappingLimit = std::uint64_t{16} << 20U; ///< bytes
constexpr std::string_view kPartNo = "Part NO.";
constexpr std::string_view kPartNoMeans = "model name";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

SError UnknownProperty(std::string_view property, SSourcePos pos)
{
    std::string known;
    for (const SFieldInfo& info : Fields()) {
        known += known.empty() ? "" : ", ";
        known += info.label;
    }
    return FailAt(EErr::Format, std::move(pos),
                  "unknown property '" + std::string(property) + "', expected one of: " + known);
}

CResult<void> ParseLine(std::string_view text, const SSourcePos& pos,
                        std::vector<SMappingLine>& lines)
{
    const std::string_view line = TrimCell(text);
    if (line.empty() || line.starts_with('#')) {
        return {};
    }
    if (line.starts_with(',')) {
        return FailAt(EErr::Format, pos, std::string(msg::kMappingComma));
    }
    const std::size_t comma = std::min(line.find(','), line.size());
    const std::string_view property = TrimCell(line.substr(0, comma));
    const std::string title = FoldSpaces(line.substr(std::min(comma + 1, line.size())));
    const auto field = FindField(property);
    if (!field) {
        // A name that is given no column changes nothing, whatever it is.
        return title.empty() ? CResult<void>() : UnknownProperty(property, pos);
    }
    SMappingLine entry;
    entry.field = *field;
    entry.property = EqualsNoCase(property, kPartNo) ? kPartNoMeans : property;
    entry.title = title;
    entry.line = pos.line;
    // The last line of a property counts.
    std::erase_if(lines, [&](const SMappingLine& other) { return other.field == *field; });
    lines.push_back(std::move(entry));
    return {};
}

// --- plan ------------------------------------------------------------------------------------

class CPlanner
{
public:
    CPlanner(const SMappingRequest& request, std::span<const std::string_view> titles,
             CLogSink& log)
        : m_request(request)
        , m_titles(titles)
        , m_log(log)
    {
    }

    CResult<CColumnPlan> Run()
    {
        if (m_request.mapping) {
            FromMapping();
        } else {
            FromTitles();
        }
        for (const auto& [field, value] : m_request.constants) {
            m_plan[field] = {};
            m_plan[field].source = EColumnSource::Constant;
            m_plan[field].constant = value;
        }
        if (!m_missing.empty()) {
            return Fail(EErr::NotFound, "the sheet has no column titled " + m_missing);
        }
        for (const EField field : FieldsOf(m_request.type)) {
            RETURN_IF_ERROR(SetUnit(field));
        }
        return std::move(m_plan);
    }

private:
    void FromMapping()
    {
        for (const SMappingLine& line : *m_request.mapping) {
            if (!IsFieldOf(line.field, m_request.type) || line.title.empty() ||
                m_request.constants.contains(line.field)) {
                continue;
            }
            if (const std::uint32_t column = Find(line.title)) {
                Take(line.field, column, EColumnSource::MappingFile, line.property, line.title);
            } else {
                m_log.Write(Text(msg::kNoColumn, line.title));
                m_missing += (m_missing.empty() ? "'" : ", '") + line.title + "'";
            }
        }
    }

    void FromTitles()
    {
        const CRecognised found = RecogniseTitles(m_titles, m_request.type);
        for (const EField field : FieldsOf(m_request.type)) {
            if (found[field] != 0 && !m_request.constants.contains(field)) {
                Take(field, found[field], EColumnSource::Title, InfoOf(field).label,
                     FoldSpaces(m_titles[found[field] - 1]));
            }
        }
    }

    void Take(EField field, std::uint32_t column, EColumnSource source, std::string_view property,
              std::string_view title)
    {
        SColumn& entry = m_plan[field];
        entry.source = source;
        entry.column = column;
        entry.title = FoldSpaces(m_titles[column - 1]);
        m_log.Write(Text(msg::kMapped, property, title, column));
    }

    std::uint32_t Find(std::string_view title) const
    {
        for (std::size_t i = 0; i < m_titles.size(); ++i) {
            if (EqualsNoCase(FoldSpaces(m_titles[i]), title)) {
                return static_cast<std::uint32_t>(i + 1);
            }
        }
        return 0;
    }

    CResult<void> SetUnit(EField field)
    {
        const SFieldInfo& info = InfoOf(field);
        SColumn& entry = m_plan[field];
        if (info.quantity == EQuantity::None) {
            return {};
        }
        const auto inTitle = UnitInTitle(entry.title, field);
        const std::string& chosen = m_request.units[field];
        if (inTitle && (chosen.empty() || info.quantity == EQuantity::Tolerance)) {
            entry.unit.exponent = inTitle->exponent;
            entry.tolerance = inTitle->tolerance;
            entry.unitText = inTitle->text;
            entry.unitSource = EUnitSource::Title;
            return {};
        }
        if (info.quantity == EQuantity::Tolerance) {
            return {};
        }
        entry.unitText = chosen.empty() ? info.defaultUnit : std::string_view(chosen);
        entry.unitSource = chosen.empty() ? EUnitSource::Default : EUnitSource::Option;
        if (EqualsNoCase(entry.unitText, kFromFile)) {
            entry.unit.fromCell = true;
            return {};
        }
        const auto exponent = UnitWordExponent(entry.unitText, info.quantity);
        if (!exponent) {
            return Fail(EErr::Argument,
                        "'" + entry.unitText + "' is no unit of " + std::string(info.label));
        }
        entry.unit.exponent = *exponent;
        WarnOfTitle(info, entry, inTitle);
        return {};
    }

    void WarnOfTitle(const SFieldInfo& info, const SColumn& entry,
                     const std::optional<STitleUnit>& inTitle)
    {
        if (inTitle && inTitle->exponent != entry.unit.exponent) {
            m_log.Write(Text("[WARNING] %s: the title '%s' says %s, but the option %s is used",
                             info.label, entry.title, inTitle->text, entry.unitText));
        }
    }

    const SMappingRequest& m_request;
    std::span<const std::string_view> m_titles;
    CLogSink& m_log;
    CColumnPlan m_plan;
    std::string m_missing;
};

} // namespace

CResult<std::vector<SMappingLine>> ParseColumnMapping(std::string_view text,
                                                      std::string_view shownPath)
{
    std::vector<SMappingLine> lines;
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    const std::string valid = ToValidUtf8(text);
    SSourcePos pos{std::string(shownPath), 0, 0};
    for (const std::string_view line : Split(valid, '\n')) {
        ++pos.line;
        RETURN_IF_ERROR(ParseLine(line, pos, lines));
    }
    return lines;
}

CResult<std::vector<SMappingLine>> ReadColumnMapping(const std::filesystem::path& path,
                                                     CLogSink& log)
{
    auto bytes = ReadWholeFile(path, kMappingLimit);
    if (!bytes) {
        log.Write(Text(msg::kMappingOpen, PathText(path)));
        return bytes.TakeError();
    }
    auto lines = ParseColumnMapping(*bytes, PathText(path));
    if (!lines) {
        const SError& error = lines.Error();
        log.Write(error.text == msg::kMappingComma ? error.text : "[ERROR]: " + error.Full());
    }
    return lines;
}

CResult<CColumnPlan> PlanColumns(const SMappingRequest& request,
                                 std::span<const std::string_view> titles, CLogSink& log)
{
    return CPlanner(request, titles, log).Run();
}

} // namespace zov::batch
