// SPDX-License-Identifier: Apache-2.0
#include "assign/DesignFile.h"

#include "assign/RefDesList.h"
#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

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
                                                                         "mfgpartno",
                                                                         "mfgpartnumber",
                                                                         "mfrpartno",
                                                                         "mfrpartnumber",
                                                                         "manufacturerpartnumber",
                                                                         "manufacturerpartno",
                                                                         "manufacturerpart",
                                                                         "manufpartno",
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

SColumns ColumnsIn(std::span<const std::string_view> cells)
{
    std::vector<std::string> keys;
    for (const std::string_view cell : cells) {
        keys.push_back(cell.size() > 64 ? std::string() : TitleKeyOf(cell));
    }
    return {BestColumn(kComponentTitles, keys), BestColumn(kRefDesTitles, keys),
            BestColumn(kModelTitles, keys), BestColumn(kTypeTitles, keys),
            BestColumn(kValueTitles, keys)};
}

struct STitles
{
    SColumns columns;
    std::uint32_t row = 0;
    std::vector<SDesignColumn> used;
};

CResult<STitles> FindTitles(CWorkbook& book, const std::string& shown)
{
    STitles best;
    std::uint32_t rows = 0;
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        const SColumns columns = ColumnsIn(row.cells);
        if (columns.component != 0 && columns.Score() > best.columns.Score()) {
            best = {columns, row.number, {}};
            const auto use = [&](std::string_view name, std::uint32_t column) {
                if (column != 0) {
                    best.used.push_back(
                        {std::string(name), std::string(row.cells[column - 1]), column});
                }
            };
            use("component", columns.component);
            use("reference designators", columns.refdes);
            use("original model", columns.model);
            use("required type", columns.type);
        }
        return ++rows < kTitleSearchRows ? EVisit::Continue : EVisit::Stop;
    }));
    if (best.row == 0) {
        return Fail(EErr::NotFound,
                    "'" + shown +
                        "' has no row of titles with a column for the component, such as "
                        "'Component', 'Device', 'MPN', 'Part Number' or 'Value'");
    }
    return best;
}

void Warn(CDiagSink& diag, const std::string& shown, std::size_t row, std::string text)
{
    diag.Report({ESeverity::Warning, "", {shown, row, 0}, std::move(text)});
}

SDesignComponent ReadRow(const SSheetRow& row, const SColumns& columns, const std::string& shown,
                         CDiagSink& diag)
{
    const auto cell = [&](std::uint32_t column) {
        return column == 0 || column > row.cells.size() ? std::string_view()
                                                        : Trim(row.cells[column - 1]);
    };
    SDesignComponent component;
    component.name = cell(columns.component);
    component.originalModel = cell(columns.model);
    component.value = cell(columns.value);
    if (auto refdes = ExpandRefDes(cell(columns.refdes))) {
        component.refdes = std::move(*refdes);
    } else {
        Warn(diag, shown, row.number, "too many reference designators in one cell; left out");
    }
    const auto type = RequiredTypeOf(cell(columns.type));
    if (!type) {
        Warn(diag, shown, row.number,
             "'" + std::string(cell(columns.type)) + "' is no model type; any type will do");
    }
    component.requiredType = type.value_or(ERecordType::Any);
    return component;
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
    struct SWord
    {
        std::string_view begin; ///< of the text's letters
        ERecordType type;
    };
    constexpr std::array<SWord, 8> kWords = {{{"cap", ERecordType::Capacitor},
                                              {"ind", ERecordType::Inductor},
                                              {"res", ERecordType::Resistor},
                                              {"vrm", ERecordType::Vrm},
                                              {"conn", ERecordType::Connector},
                                              {"pack", ERecordType::Package},
                                              {"spice", ERecordType::Spice},
                                              {"generalspice", ERecordType::Spice}}};
    const std::string key = TitleKeyOf(text);
    if (key.empty() || key == "any" || key == "0") {
        return ERecordType::Any;
    }
    if (key == "ic" || key == "ics" || key == "u") {
        return ERecordType::Ic;
    }
    if (key.size() == 1 && std::string_view("clr").find(key[0]) != std::string_view::npos) {
        return key == "c"   ? ERecordType::Capacitor
               : key == "l" ? ERecordType::Inductor
                            : ERecordType::Resistor;
    }
    for (const SWord& word : kWords) {
        if (key.starts_with(word.begin)) {
            return word.type;
        }
    }
    const bool hex = key.starts_with("0x");
    const std::string_view digits = hex ? std::string_view(key).substr(2) : std::string_view(key);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
    const SRecordTypeInfo* info = error == std::errc() && end == digits.data() + digits.size()
                                      ? FindRecordType(code)
                                      : nullptr;
    return info == nullptr ? std::nullopt : std::optional(info->type);
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

CResult<SDesignFile> ReadDesignList(CWorkbook& book, const std::string& shown, CDiagSink& diag)
{
    ASSIGN_OR_RETURN(STitles titles, FindTitles(book, shown));
    CDesignBuilder builder;
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        if (row.number > titles.row) {
            SDesignComponent component = ReadRow(row, titles.columns, shown, diag);
            if (!component.name.empty()) {
                builder.Add(std::move(component));
            } else if (!component.refdes.empty()) {
                Warn(diag, shown, row.number,
                     "'" + component.refdes.front() + "' names no component; left out");
            }
        }
        return EVisit::Continue;
    }));
    return SDesignFile{builder.Take(), "component list", std::move(titles.used)};
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
    return ReadDesignList(*book, PathText(path), diag);
}

} // namespace zov
