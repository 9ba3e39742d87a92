// SPDX-License-Identifier: Apache-2.0
#include "core/SetConfiguration.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

namespace zov {

namespace {

using TJson = nlohmann::ordered_json;
constexpr double kVersion = 1.0;

SError Wrong(const std::string& shown, const std::string& what)
{
    return Fail(EErr::Format, "ZOV config file '" + shown + "': " + what);
}

/// A member that may be missing; false when it is there and no boolean.
bool ReadFlag(const TJson& object, const char* name, bool& value)
{
    const auto found = object.find(name);
    if (found == object.end()) {
        return true;
    }
    if (!found->is_boolean()) {
        return false;
    }
    value = found->get<bool>();
    return true;
}

/// A path, or an object of `Path` and `On`.
std::optional<SListedLibrary> ReadLibrary(const TJson& json, const std::filesystem::path& folder)
{
    SListedLibrary library;
    const TJson* path = &json;
    if (json.is_object()) {
        const auto found = json.find("Path");
        if (found == json.end() || !ReadFlag(json, "On", library.on)) {
            return std::nullopt;
        }
        path = &*found;
    }
    if (!path->is_string() || path->get_ref<const std::string&>().empty()) {
        return std::nullopt;
    }
    library.path = ListedPath(path->get_ref<const std::string&>(), folder);
    return library;
}

/// What is wrong with a set; empty when nothing is.
std::string ReadSet(const TJson& json, const std::filesystem::path& folder, SExternalLibSet& set)
{
    if (!json.is_object()) {
        return "expected an object";
    }
    if (const auto name = json.find("Name"); name != json.end()) {
        if (!name->is_string()) {
            return "'Name' is no text";
        }
        set.name = name->get<std::string>();
    }
    if (!ReadFlag(json, "On", set.on)) {
        return "'On' is neither true nor false";
    }
    const auto libraries = json.find("Libraries");
    if (libraries == json.end()) {
        return {};
    }
    if (!libraries->is_array()) {
        return "'Libraries' is no array";
    }
    for (const TJson& one : *libraries) {
        auto library = ReadLibrary(one, folder);
        if (!library) {
            return "library " + std::to_string(set.libraries.size() + 1) +
                   ": expected a path, or an object of 'Path' and 'On'";
        }
        set.libraries.push_back(std::move(*library));
    }
    return {};
}

int Truncated(double version)
{
    return static_cast<int>(
        std::clamp(version, -1e9, static_cast<double>(std::numeric_limits<int>::max())));
}

} // namespace

CResult<std::optional<std::vector<SExternalLibSet>>>
ParseSetConfiguration(std::string_view text, const std::string& shown,
                      const std::filesystem::path& folder)
{
    const TJson document = TJson::parse(text, nullptr, false, true);
    if (document.is_discarded()) {
        return Wrong(shown, "no JSON document");
    }
    const auto version = document.is_object() ? document.find("Version") : document.end();
    if (!document.is_object() || version == document.end() || !version->is_number()) {
        return Wrong(shown, "expected an object with a numeric 'Version'");
    }
    if (version->get<double>() > kVersion) {
        return Fail(EErr::Unsupported, "Unsupported ZOV config file version: " +
                                           std::to_string(Truncated(version->get<double>())));
    }
    const auto sets = document.find("ExternalLibSets");
    if (sets == document.end()) {
        return std::optional<std::vector<SExternalLibSet>>();
    }
    if (!sets->is_array()) {
        return Wrong(shown, "'ExternalLibSets' is no array");
    }
    std::vector<SExternalLibSet> read;
    for (const TJson& one : *sets) {
        const std::string wrong = ReadSet(one, folder, read.emplace_back());
        if (!wrong.empty()) {
            return Wrong(shown,
                         "'ExternalLibSets' entry " + std::to_string(read.size()) + ": " + wrong);
        }
    }
    return std::optional(std::move(read));
}

std::string FormatSetConfiguration(std::span<const SExternalLibSet> sets,
                                   const std::filesystem::path& folder)
{
    TJson document = {{"Version", 1}, {"ExternalLibSets", TJson::array()}};
    for (const SExternalLibSet& set : sets) {
        TJson libraries = TJson::array();
        for (const SListedLibrary& library : set.libraries) {
            libraries.push_back(
                {{"Path", ListedPathText(library.path, folder)}, {"On", library.on}});
        }
        document["ExternalLibSets"].push_back(
            {{"Name", set.name}, {"On", set.on}, {"Libraries", std::move(libraries)}});
    }
    return document.dump(2, ' ', false, TJson::error_handler_t::replace) + '\n';
}

} // namespace zov
