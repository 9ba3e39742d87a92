// SPDX-License-Identifier: Apache-2.0
#include "assign/DesignFile.h"

#include "assign/RefDesList.h"
#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_set>

namespace zov {

namespace {

constexpr std::uint32_t kTitleSearchRows = 50;
constexpr std::uint64_t kNetlistLimit = std::uint64_t{1} << 30U;

/// Titles by use, in TitleKeyOf form, the best first.
constexpr std::array kComponentTitles = std::to_array<std::string_view>({"component",
                                                                         "componentname",
                                                                         "device",
                                                                         "devicetype",
                                                                         "devicename",
                                                                         "mpn",
                                                                         "mpn1",
                                                                         "mfgpartno",
                                                                         "mfgpartnumber",
                                                                         "mfgpartnr",
                                                                         "mfgpn",
                                                                         "mfrpartno",
                                                                         "mfrpartnumber",
                                                                         "mfrpartnr",
                                                                         "mfrpn",
                                                                         "manufacturerpartnumber",
                                                                         "manufacturerpartno",
                                                                         "manufacturerpartnr",
                                                                         "manufacturerpartnumber1",
                                                                         "manufacturerpn",
                                                                         "manufacturerpart",
                                                                         "manufpartno",
                                                                         "manupartnr",
                                                                         "manupartno",
                                                                         "mfrpart",
                                                                         "mfgpart",
                                                                         "partnumber",
                                                                         "partno",
                                                                         "partnr",
                                                                         "pn",
                                                                         "part",
                                                                         "partname",
                                                                         "itemnumber",
                                                                         "libref",
                                                                         "value",
                                                                         "comment"});
constexpr std::array kRefDesTitles = std::to_array<std::string_view>(
    {"refdes", "refdesignator", "refdesignators", "referencedesignator", "referencedesignators",
     "references", "reference", "designators", "designator", "partreference", "refs", "ref",
     "locations", "location"});
constexpr std::array kModelTitles = std::to_array<std::string_view>(
    {"originalmodel", "currentmodel", "model", "modelname", "simmodel", "simname", "spicemodel"});
constexpr std::array kValueTitles = std::to_array<std::string_view>(
    {"value", "val", "componentvalue", "partvalue", "nominalvalue", "comment", "description"});
constexpr std::array kTypeTitles =
    std::to_array<std::string_view>({"requiredtype", "modeltype", "componenttype", "parttype",
                                     "type", "class", "category", "kind"});
constexpr std::array kQuantityTitles = std::to_array<std::string_view>(
    {"quantity", "qty", "quantityperboard", "qtyperboard", "count", "amount", "qnty"});

template <std::size_t N>
std::optional<std::size_t> RankIn(const std::array<std::string_view, N>& titles,
                                  std::string_view key)
{
    const auto found = std::ranges::find(titles, key);
    return found == titles.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - titles.begin()));
}

/// The columns of a row of titles, counted from 1; 0: none.
struct SColumns
{
    std::uint32_t component = 0;
    std::uint32_t refdes = 0;
    std::uint32_t model = 0;
    std::uint32_t type = 0;
    std::uint32_t value = 0; ///< says nothing about whether the row is one of titles
    std::uint32_t quantity = 0;

    [[nodiscard]] int Score() const
    {
        return (component != 0 ? 2 : 0) + (refdes != 0 ? 2 : 0) + (model != 0 ? 1 : 0) +
               (type != 0 ? 1 : 0);
    }
};

template <std::size_t N>
std::uint32_t BestColumn(const std::array<std::string_view, N>& titles,
                         const std::vector<std::string>& keys)
{
    std::uint32_t best = 0;
    std::size_t bestRank = N;
    for (std::uint32_t i = 0; i < keys.size(); ++i) {
        const auto rank = RankIn(titles, keys[i]);
        if (rank && *rank < bestRank) {
            bestRank = *rank;
            best = i + 1;
        }
    }
    return best;
}

/// @param componentTitle  in TitleKeyOf form; empty: by the usual ones
SColumns ColumnsIn(std::span<const std::string_view> cells, const std::string& componentTitle)
{
    constexpr std::size_t kLongestTitle = 64;
    std::vector<std::string> keys;
    for (const std::string_view cell : cells) {
        keys.push_back(cell.size() > kLongestTitle ? std::string() : TitleKeyOf(cell));
    }
    SColumns columns{BestColumn(kComponentTitles, keys), BestColumn(kRefDesTitles, keys),
                     BestColumn(kModelTitles, keys),     BestColumn(kTypeTitles, keys),
                     BestColumn(kValueTitles, keys),     BestColumn(kQuantityTitles, keys)};
    if (!componentTitle.empty()) {
        columns.component = BestColumn(std::array{std::string_view(componentTitle)}, keys);
    }
    return columns;
}

struct STitles
{
    SColumns columns;
    std::uint32_t row = 0;
    std::vector<SDesignColumn> used;
};

std::vector<SDesignColumn> UsedColumns(const SColumns& columns, const SSheetRow& row)
{
    std::vector<SDesignColumn> used;
    for (const auto& [use, column] :
         {std::pair("component", columns.component),
          std::pair("reference designators", columns.refdes),
          std::pair("original model", columns.model), std::pair("required type", columns.type),
          std::pair("quantity", columns.quantity)}) {
        if (column != 0) {
            used.push_back({use, std::string(row.cells[column - 1]), column});
        }
    }
    return used;
}

CResult<STitles> FindTitles(CWorkbook& book, const std::string& shown,
                            const std::string& componentTitle)
{
    const std::string key = TitleKeyOf(componentTitle);
    STitles best;
    std::uint32_t rows = 0;
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        const SColumns columns = ColumnsIn(row.cells, key);
        if (columns.component != 0 && columns.Score() > best.columns.Score()) {
            best = {columns, row.number, UsedColumns(columns, row)};
        }
        return ++rows < kTitleSearchRows ? EVisit::Continue : EVisit::Stop;
    }));
    if (best.row == 0 && !componentTitle.empty()) {
        return Fail(EErr::NotFound,
                    "'" + shown + "' has no column '" + componentTitle + "' in a row of titles");
    }
    if (best.row == 0) {
        return Fail(EErr::NotFound,
                    "'" + shown +
                        "' has no row of titles with a column for the component, such as "
                        "'Component', 'Device', 'MPN', 'Part Number' or 'Value'");
    }
    return best;
}

void Tell(CDiagSink& diag, ESeverity severity, const std::string& shown, std::size_t row,
          std::string text)
{
    diag.Report({severity, "", {shown, row, 0}, std::move(text)});
}

/// Rows of a list as components.
class CListRows
{
public:
    CListRows(const SColumns& columns, std::string shown, CDiagSink& diag)
        : m_columns(columns)
        , m_shown(std::move(shown))
        , m_diag(diag)
    {
    }

    void Take(const SSheetRow& row)
    {
        SDesignComponent component;
        component.name = Cell(row, m_columns.component);
        component.originalModel = Cell(row, m_columns.model);
        component.value = Cell(row, m_columns.value);
        component.refdes = RefDesIn(row);
        component.requiredType = TypeIn(row);
        if (!component.name.empty()) {
            m_builder.Add(std::move(component));
        } else if (!component.refdes.empty()) {
            Tell(m_diag, ESeverity::Warning, m_shown, row.number,
                 "'" + component.refdes.front() + "' names no component; left out");
        }
    }
    [[nodiscard]] SDesign Design() { return m_builder.Take(); }

private:
    static std::string_view Cell(const SSheetRow& row, std::uint32_t column)
    {
        return column == 0 || column > row.cells.size() ? std::string_view()
                                                        : Trim(row.cells[column - 1]);
    }
    std::vector<std::string> RefDesIn(const SSheetRow& row)
    {
        auto refdes = ExpandRefDes(Cell(row, m_columns.refdes));
        if (!refdes) {
            Tell(m_diag, ESeverity::Warning, m_shown, row.number,
                 "too many reference designators in one cell; left out");
            return {};
        }
        const auto quantity = ParseInt(Cell(row, m_columns.quantity));
        if (quantity && !refdes->empty() &&
            *quantity != static_cast<std::int64_t>(refdes->size())) {
            Tell(m_diag, ESeverity::Note, m_shown, row.number,
                 "quantity " + std::to_string(*quantity) + ", but " +
                     std::to_string(refdes->size()) + " reference designator" +
                     (refdes->size() == 1 ? "" : "s"));
        }
        return std::move(*refdes);
    }
    ERecordType TypeIn(const SSheetRow& row)
    {
        const std::string_view text = Cell(row, m_columns.type);
        const auto type = RequiredTypeOf(text);
        if (!type && m_unknownTypes.emplace(text).second) {
            Tell(m_diag, ESeverity::Note, m_shown, row.number,
                 "'" + std::string(text) + "' is no model type; any type will do");
        }
        return type.value_or(ERecordType::Any);
    }

    SColumns m_columns;
    std::string m_shown;
    CDiagSink& m_diag;
    CDesignBuilder m_builder;
    std::unordered_set<std::string> m_unknownTypes; ///< told once each
};

/// A type by the letter of its designators.
std::optional<ERecordType> TypeOfLetter(std::string_view text)
{
    return text == "c"   ? std::optional(ERecordType::Capacitor)
           : text == "l" ? std::optional(ERecordType::Inductor)
           : text == "r" ? std::optional(ERecordType::Resistor)
           : text == "u" ? std::optional(ERecordType::Ic)
                         : std::nullopt;
}

/// The type that one word of a text names.
std::optional<ERecordType> TypeOfWord(std::string_view word)
{
    struct SWord
    {
        std::string_view begin;
        ERecordType type;
    };
    constexpr std::array<SWord, 7> kBegins = {{{"capac", ERecordType::Capacitor},
                                               {"induct", ERecordType::Inductor},
                                               {"resist", ERecordType::Resistor},
                                               {"connect", ERecordType::Connector},
                                               {"package", ERecordType::Package},
                                               {"spice", ERecordType::Spice},
                                               {"vrm", ERecordType::Vrm}}};
    constexpr std::array<SWord, 11> kWhole = {{
        {"cap", ERecordType::Capacitor},
        {"caps", ERecordType::Capacitor},
        {"mlcc", ERecordType::Capacitor},
        {"ind", ERecordType::Inductor},
        {"res", ERecordType::Resistor},
        {"conn", ERecordType::Connector},
        {"connr", ERecordType::Connector},
        {"pack", ERecordType::Package},
        {"pkg", ERecordType::Package},
        {"ic", ERecordType::Ic},
        {"ics", ERecordType::Ic},
    }};
    for (const SWord& one : kWhole) {
        if (word == one.begin) {
            return one.type;
        }
    }
    for (const SWord& one : kBegins) {
        if (word.starts_with(one.begin)) {
            return one.type;
        }
    }
    return std::nullopt;
}

std::optional<ERecordType> TypeOfCode(std::string_view key)
{
    const bool hex = key.starts_with("0x");
    const std::string_view digits = key.substr(hex ? 2 : 0);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
    const SRecordTypeInfo* info = error == std::errc() && end == digits.data() + digits.size()
                                      ? FindRecordType(code)
                                      : nullptr;
    return info == nullptr ? std::nullopt : std::optional(info->type);
}

} // namespace

std::string TitleKeyOf(std::string_view title)
{
    std::string key;
    for (const char c : title) {
        if (IsAlpha(c) || IsDigit(c)) {
            key += ToLower(c);
        }
    }
    return key;
}

std::optional<std::size_t> ComponentTitleRank(std::string_view titleKey)
{
    return RankIn(kComponentTitles, titleKey);
}

bool IsOriginalModelTitle(std::string_view titleKey)
{
    return RankIn(kModelTitles, titleKey).has_value();
}

std::optional<ERecordType> RequiredTypeOf(std::string_view text)
{
    const std::string key = TitleKeyOf(text);
    if (key.empty() || key == "any" || key == "0") {
        return ERecordType::Any;
    }
    if (const auto type = TypeOfLetter(key)) {
        return type;
    }
    std::optional<ERecordType> found = TypeOfCode(key);
    std::string words = LowerCase(text);
    std::ranges::replace_if(
        words, [](char c) { return !IsAlpha(c); }, ' ');
    for (const std::string_view word : Split(words, ' ')) {
        const auto type = TypeOfWord(word);
        if (type && found && *found != *type) {
            return std::nullopt;
        }
        found = type ? type : found;
    }
    return found;
}

void CDesignBuilder::Add(SDesignComponent component)
{
    const auto [at, isNew] =
        m_places.emplace(UpperCase(component.name), m_design.components.size());
    if (isNew) {
        m_design.components.push_back(std::move(component));
        return;
    }
    SDesignComponent& known = m_design.components[at->second];
    std::ranges::move(component.refdes, std::back_inserter(known.refdes));
    if (known.originalModel.empty()) {
        known.originalModel = std::move(component.originalModel);
    }
    if (known.requiredType == ERecordType::Any) {
        known.requiredType = component.requiredType;
    }
    if (known.value.empty()) {
        known.value = std::move(component.value);
    }
}

SDesign CDesignBuilder::Take()
{
    m_places.clear();
    return std::move(m_design);
}

CResult<SDesignFile> ReadDesignList(CWorkbook& book, const std::string& shown,
                                    const std::string& componentTitle, CDiagSink& diag)
{
    ASSIGN_OR_RETURN(STitles titles, FindTitles(book, shown, componentTitle));
    CListRows rows(titles.columns, shown, diag);
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        if (row.number > titles.row) {
            rows.Take(row);
        }
        return EVisit::Continue;
    }));
    return SDesignFile{rows.Design(), "component list", std::move(titles.used)};
}

CResult<SDesignFile> ReadDesignFile(const std::filesystem::path& path,
                                    const SDesignOptions& options, CDiagSink& diag)
{
    const std::string extension = ExtensionOf(path);
    if (EqualsNoCase(extension, ".net") || EqualsNoCase(extension, ".kicad_net")) {
        ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(path, kNetlistLimit));
        return ReadKicadNetlist(text, PathText(path));
    }
    ASSIGN_OR_RETURN(const auto book, OpenWorkbook(path));
    if (!options.sheet.empty()) {
        RETURN_IF_ERROR(book->SelectSheet(options.sheet));
    }
    return ReadDesignList(*book, PathText(path), options.component, diag);
}

} // namespace zov
