// SPDX-License-Identifier: Apache-2.0
#include "app/generator/GeneratorMemory.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace zov::app {
namespace {

constexpr std::string_view kSource = "Source File";
constexpr std::string_view kSheet = "Work Sheet";
constexpr std::string_view kHeaderRow = "Header Row";
constexpr std::string_view kDestination = "Destination File";
constexpr std::string_view kVendor = "Vendor Library";
constexpr std::string_view kDuplicates = "Duplicates";
constexpr std::string_view kMapping = "Mapping";
constexpr std::int64_t kMostRows = 1'048'576;

/// "Capacitor Source File"
std::string NameOf(ERecordType type, std::string_view value)
{
    return std::string(InfoOf(type).name) + ' ' + std::string(value);
}

/// A line a property: label, title, unit, constant, with tabs between them.
std::string MappingText(const std::vector<batch::SDialogMapping>& mapping)
{
    std::string text;
    for (const batch::SDialogMapping& row : mapping) {
        text += std::string(batch::InfoOf(row.field).label) + '\t' + row.title + '\t' + row.unit +
                '\t' + row.constant + '\n';
    }
    return text;
}

std::vector<batch::SDialogMapping> MappingIn(std::string_view text, ERecordType type)
{
    std::vector<batch::SDialogMapping> mapping;
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> parts = Split(line, '\t');
        const auto fields = batch::FieldsOf(type);
        const auto field = std::ranges::find_if(fields, [&](batch::EField one) {
            return parts.size() == 4 && batch::InfoOf(one).label == parts[0];
        });
        if (field != fields.end()) {
            mapping.push_back(
                {*field, std::string(parts[1]), std::string(parts[2]), std::string(parts[3])});
        }
    }
    return mapping;
}

} // namespace

void RememberTab(const batch::SDialogTab& tab, ISettingsStore& store)
{
    const auto put = [&](std::string_view name, const std::string& text) {
        store.SetText(kGeneratorSection, NameOf(tab.type, name), text);
    };
    put(kSource, tab.sourceFile);
    put(kSheet, tab.workSheet);
    store.SetInteger(kGeneratorSection, NameOf(tab.type, kHeaderRow), tab.headerRow);
    put(kDestination, tab.destination);
    put(kVendor, tab.vendorLibrary);
    store.SetInteger(kGeneratorSection, NameOf(tab.type, kDuplicates),
                     static_cast<std::int64_t>(tab.duplicates));
    put(kMapping, MappingText(tab.mapping));
}

std::optional<batch::SDialogTab> RememberedTab(ERecordType type, const ISettingsStore& store)
{
    const auto text = [&](std::string_view name) {
        return store.Text(kGeneratorSection, NameOf(type, name)).value_or(std::string());
    };
    const auto number = [&](std::string_view name) {
        return store.Integer(kGeneratorSection, NameOf(type, name));
    };
    if (!store.Text(kGeneratorSection, NameOf(type, kSource))) {
        return std::nullopt;
    }
    batch::SDialogTab tab;
    tab.type = type;
    tab.sourceFile = text(kSource);
    tab.workSheet = text(kSheet);
    tab.headerRow = static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(number(kHeaderRow).value_or(1), 1, kMostRows));
    tab.destination = text(kDestination);
    tab.vendorLibrary = text(kVendor);
    for (const batch::SDuplicateChoice& choice : batch::kDuplicateChoices) {
        if (static_cast<std::int64_t>(choice.policy) == number(kDuplicates)) {
            tab.duplicates = choice.policy;
        }
    }
    tab.mapping = MappingIn(text(kMapping), type);
    return tab;
}

} // namespace zov::app
