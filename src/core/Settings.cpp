// SPDX-License-Identifier: Apache-2.0
#include "core/Settings.h"

#include "base/Number.h"
#include "base/Text.h"

#include <limits>

namespace zov {

namespace {

struct SFlagRow
{
    std::string_view value;
    bool SZovSettings::*flag;
};
constexpr std::array<SFlagRow, 2> kFlags = {
    {{"Automatically Save External Library", &SZovSettings::autoSaveExternalLibrary},
     {"Sync Model path with Library Path", &SZovSettings::syncModelPath}}};

struct SLimitRow
{
    std::string_view flag;
    std::string_view limit;
    SHideLimit SZovSettings::*member;
};
constexpr std::array<SLimitRow, 4> kLimits = {
    {{"Hide Decap with capacitance less", "Hide Decap with capacitance less than",
      &SZovSettings::capacitanceLess},
     {"Hide Decap with capacitance more", "Hide Decap with capacitance more than",
      &SZovSettings::capacitanceMore},
     {"Hide Decap with voltage less", "Hide Decap with voltage less than",
      &SZovSettings::voltageLess},
     {"Hide Decap with voltage more", "Hide Decap with voltage more than",
      &SZovSettings::voltageMore}}};

constexpr std::string_view kUnits = "Units";
constexpr std::string_view kGuiV2 = "GUI V2";
constexpr std::string_view kServerIp = "Velda Server IP";
constexpr std::string_view kServerPort = "Velda Server PortNum";
constexpr std::string_view kColumnOrder = "Column Order";
constexpr std::string_view kColumnVisibility = "Column Visibilty"; // spelled so in every store
constexpr std::string_view kSearchOptions = "Search Options";

constexpr const char* kForceV2 = "KVE_TAVRELY_ZOV_V2";

constexpr std::string_view ExternalLibraryValue(bool guiV2)
{
    return guiV2 ? "External Library V2" : "External Library";
}

bool HoldsOne(const FEnvironment& environment, const char* name)
{
    const auto value = environment(name);
    return value && ParseInt(*value) == 1;
}

std::optional<std::uint32_t> ConsumeUnsigned(std::string_view& text)
{
    std::size_t length = 0;
    std::uint64_t number = 0;
    while (length < text.size() && IsDigit(text[length]) && number <= UINT32_MAX) {
        number = number * 10 + static_cast<std::uint64_t>(text[length++] - '0');
    }
    if (length == 0 || number > UINT32_MAX) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return static_cast<std::uint32_t>(number);
}

/// The numbers of `%u=" ... ";`, the list's first; none when it can't be understood.
std::optional<std::vector<std::uint32_t>> ConsumeList(std::string_view& text)
{
    std::vector<std::uint32_t> numbers;
    text = Trim(text);
    const auto list = ConsumeUnsigned(text);
    if (!list || !text.starts_with("=\"")) {
        return std::nullopt;
    }
    numbers.push_back(*list);
    text.remove_prefix(2);
    while (!(text = Trim(text)).starts_with('"')) {
        const auto number = ConsumeUnsigned(text);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    text.remove_prefix(text.starts_with("\";") ? 2 : 1);
    return numbers;
}

void ReadLimit(const ISettingsStore& store, const SLimitRow& row, SHideLimit& limit)
{
    limit.on = store.Integer(kZovSection, row.flag).value_or(limit.on ? 1 : 0) != 0;
    if (const auto text = store.Text(kZovSection, row.limit)) {
        limit.limit = ParseDouble(*text).value_or(limit.limit);
    }
}

} // namespace

SZovSettings ReadSettings(const ISettingsStore& store, const FEnvironment& environment)
{
    const auto textOf = [&](std::string_view value) {
        return store.Text(kZovSection, value).value_or(std::string());
    };
    SZovSettings settings;
    settings.units = ParseUnits(textOf(kUnits));
    for (const SFlagRow& row : kFlags) {
        bool& flag = settings.*row.flag;
        flag = store.Integer(kZovSection, row.value).value_or(flag ? 1 : 0) != 0;
    }
    for (const SLimitRow& row : kLimits) {
        ReadLimit(store, row, settings.*row.member);
    }
    settings.storedGuiV2 = store.Integer(kZovSection, kGuiV2).value_or(0) != 0;
    settings.guiV2 = settings.storedGuiV2 || HoldsOne(environment, kForceV2);
    if (!HoldsOne(environment, kForgetLibraries)) {
        settings.externalLibraries = ParseLibraryList(textOf(ExternalLibraryValue(settings.guiV2)));
    }
    settings.veldaServerIp = textOf(kServerIp);
    settings.veldaServerPort = store.Integer(kZovSection, kServerPort).value_or(0);
    settings.columnOrder = ParseColumnOrder(textOf(kColumnOrder));
    settings.columnVisibility = ParseColumnVisibility(textOf(kColumnVisibility));
    settings.searchOptions = CSearchOptions::Parse(textOf(kSearchOptions));
    return settings;
}

void WriteSettings(const SZovSettings& settings, ISettingsStore& store)
{
    const auto setText = [&](std::string_view value, const std::string& text) {
        store.SetText(kZovSection, value, text);
    };
    const auto setFlag = [&](std::string_view value, bool flag) {
        store.SetInteger(kZovSection, value, flag ? 1 : 0);
    };
    setText(kUnits, FormatUnits(settings.units));
    setText(ExternalLibraryValue(settings.guiV2), FormatLibraryList(settings.externalLibraries));
    for (const SFlagRow& row : kFlags) {
        setFlag(row.value, settings.*row.flag);
    }
    for (const SLimitRow& row : kLimits) {
        setFlag(row.flag, (settings.*row.member).on);
        setText(row.limit, FormatG((settings.*row.member).limit));
    }
    setFlag(kGuiV2, settings.storedGuiV2);
    setText(kServerIp, settings.veldaServerIp);
    store.SetInteger(kZovSection, kServerPort, settings.veldaServerPort);
    setText(kColumnOrder, FormatColumnOrder(settings.columnOrder));
    setText(kColumnVisibility, FormatColumnVisibility(settings.columnVisibility));
    setText(kSearchOptions, settings.searchOptions.Format());
}

std::string FormatUnits(const CDisplayUnits& units)
{
    std::string out;
    for (std::size_t id = 0; id < kQuantityCount; ++id) {
        const auto quantity = static_cast<EQuantity>(id);
        if (!UnitsOf(quantity).empty()) {
            out += std::to_string(id) + '=';
            out += units.Of(quantity).suffix;
            out += ';';
        }
    }
    return out;
}

CDisplayUnits ParseUnits(std::string_view text)
{
    CDisplayUnits units;
    for (const std::string_view group : Split(text, ';')) {
        const std::size_t equals = group.find('=');
        const auto id = ParseInt(group.substr(0, equals));
        if (equals != std::string_view::npos && id && *id >= 0 &&
            *id < static_cast<std::int64_t>(kQuantityCount)) {
            units.Set(static_cast<EQuantity>(*id), group.substr(equals + 1));
        }
    }
    return units;
}

std::string FormatColumnOrder(const std::vector<SColumnOrder>& lists)
{
    std::string out;
    for (const SColumnOrder& list : lists) {
        out += std::to_string(list.list) + "=\"";
        for (const SColumnPlace& place : list.columns) {
            out += ' ' + std::to_string(place.column) + ' ' + std::to_string(place.position);
        }
        out += "\";";
    }
    return out;
}

std::vector<SColumnOrder> ParseColumnOrder(std::string_view text)
{
    std::vector<SColumnOrder> lists;
    while (const auto numbers = ConsumeList(text)) {
        SColumnOrder& list = lists.emplace_back();
        list.list = numbers->front();
        for (std::size_t i = 1; i + 1 < numbers->size(); i += 2) {
            list.columns.push_back({(*numbers)[i], (*numbers)[i + 1]});
        }
    }
    return lists;
}

std::string FormatColumnVisibility(const std::vector<SColumnVisibility>& lists)
{
    std::string out;
    for (const SColumnVisibility& list : lists) {
        out += std::to_string(list.list) + "=\"";
        for (const std::uint32_t column : list.visible) {
            out += std::to_string(column) + ' ';
        }
        out += "\";";
    }
    return out;
}

std::vector<SColumnVisibility> ParseColumnVisibility(std::string_view text)
{
    std::vector<SColumnVisibility> lists;
    while (const auto numbers = ConsumeList(text)) {
        lists.push_back({numbers->front(), {numbers->begin() + 1, numbers->end()}});
    }
    return lists;
}

} // namespace zov
