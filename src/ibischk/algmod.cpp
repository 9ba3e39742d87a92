// SPDX-License-Identifier: Apache-2.0
#include "ibischk/algmod.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::string_view kKinds[] = {"Executable", "Executable_Rx", "Executable_Tx"};

/// A known system, with a version number behind it or not.
bool IsKnownSystem(std::string_view text)
{
    constexpr std::string_view kSystems[] = {"Windows", "Linux", "Solaris", "HP-UX"};
    return std::ranges::any_of(kSystems, [text](std::string_view system) {
        return StartsWithNoCase(text, system) &&
               std::ranges::all_of(text.substr(system.size()),
                                   [](char c) { return IsDigit(c) || c == '.'; });
    });
}

/// System, compiler and bits, parted by the first and the last underscore.
void CheckPlatform(SCheck& check, std::string_view word, SPlace place)
{
    const std::size_t first = word.find('_');
    const std::size_t last = word.rfind('_');
    if (first == last) {
        check.report.ErrorAt(place, 4601, word);
        return;
    }
    if (!IsKnownSystem(word.substr(0, first))) {
        check.report.WarningAt(place, 4602, word.substr(0, first), word);
    }
    if (last == first + 1) {
        check.report.ErrorAt(place, 4603, word);
    }
    const std::string_view bits = word.substr(last + 1);
    if (bits != "32" && bits != "64") {
        check.report.ErrorAt(place, 4606, bits, word);
    }
}

bool IsInOut(const SModelType& type)
{
    return type.receives && type.Drives();
}

void CheckKind(SCheck& check, std::string_view kind, SPlace place)
{
    if (kind == kKinds[0]) {
        return;
    }
    if (!check.state.AtLeast(EVersion::V61)) {
        check.report.ErrorAt(place, 4696, kind);
    }
    const SModelInfo& info = OpenModel(check);
    if (info.type != EModelType::Unknown && !IsInOut(info.Type())) {
        check.report.ErrorAt(place, 4605, kind, info.Type().name);
    }
}

void OpenAlgorithmic(SCheck& check, const SLine& /*line*/)
{
    const SModelInfo& info = OpenModel(check);
    const bool passive = info.type == EModelType::Terminator || info.Type().IsSeries();
    if (passive) {
        check.report.ErrorAt(check.state.keywordPlace, 4605, "[Algorithmic Model]",
                             info.Type().name);
    }
    if (!check.data.model.executables.empty()) {
        check.report.ErrorAt(check.state.keywordPlace, 1911, KeywordText(check.state.current));
        check.data.model.executables.clear();
    }
}

void TakeExecutable(SCheck& check, const SLine& line)
{
    constexpr std::size_t kWords = 4;
    std::string_view words[kWords];
    const std::size_t count = SplitTokens(line.text, words);
    const auto* kind = std::ranges::find_if(
        kKinds, [&words](std::string_view known) { return EqualsNoCase(known, words[0]); });
    if (kind == std::end(kKinds)) {
        check.report.ErrorAt(line.Place(), 4611, words[0]);
        return;
    }
    if (count != kWords) {
        check.report.ErrorAt(line.Place(), 4600, *kind, count - 1);
        return;
    }
    CheckKind(check, *kind, line.Place());
    CheckPlatform(check, words[1], line.Place(words[1]));
    auto& all = check.data.model.executables;
    const bool again = std::ranges::any_of(
        all, [&](const SExecutable& e) { return e.kind == *kind && e.platform == words[1]; });
    if (again) {
        check.report.WarningAt(line.Place(words[1]), 4604, words[1], *kind);
    }
    all.push_back({*kind, words[1], words[2], words[3], line.Place()});
}

/// A model that drives and receives has one executable for both ways, or one for each.
void CheckPairs(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    const SExecutable* plain = nullptr;
    const SExecutable* half = nullptr;
    std::unordered_set<std::string_view> rxFiles;
    for (const SExecutable& e : check.data.model.executables) {
        (e.kind == kKinds[0] ? plain : half) = &e;
        if (e.kind == kKinds[1]) {
            rxFiles.insert(e.parameters);
        }
    }
    if (plain != nullptr && half != nullptr) {
        check.report.WarningAt(half->place, 4721, info.Type().name, half->kind);
    }
    for (const SExecutable& e : check.data.model.executables) {
        if (e.kind == kKinds[2] && rxFiles.erase(e.parameters) != 0) {
            check.report.Caution(e.place, 4722, e.parameters);
        }
    }
}

void CloseAlgorithmic(SCheck& check)
{
    if (check.data.model.executables.empty()) {
        check.report.ErrorAt(check.state.sectionPlace, 4607);
        return;
    }
    CheckPairs(check);
    CheckExecutableFiles(check);
}

constexpr SHandler kHandlers[] = {
    {EKeyword::AlgorithmicModel, &OpenAlgorithmic, &TakeExecutable, &CloseAlgorithmic},
    {EKeyword::EndAlgorithmicModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kAlgmodFamily = {"algmod", kHandlers, {}, &CheckRepeaterTypes};

} // namespace zov::ibischk
