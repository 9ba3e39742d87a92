// SPDX-License-Identifier: Apache-2.0
#include "ibischk/imgroup.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/setparts.h"
#include "ibischk/table.h"

#include <set>
#include <string>
#include <unordered_map>

namespace zov::ibischk {

void OpenGroup(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    RequireEarlier(check, EKeyword::Pin, 6215);
    SInterconnectGroup group;
    group.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    group.place = check.state.keywordPlace;
    if (!group.name.empty() &&
        component.names->groupNames.Add(group.name, component.groups.size())) {
        check.report.ErrorAt(group.place, 6205, group.name);
    }
    component.groups.push_back(std::move(group));
}

void TakeGroupSet(SCheck& check, const SLine& line)
{
    SInterconnectGroup& group = OpenComponent(check).groups.back();
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6206, words.count);
        if (words.count < 2) {
            return;
        }
    }
    const SGroupSet set{words[0], words[1], line.Place()};
    if (!IsNa(set.file)) {
        if (!EndsWithNoCase(set.file, ExtensionOf(EFileType::Ims))) {
            check.report.ErrorAt(line.Place(set.file), 6209, set.file);
        } else {
            CheckFileName(check, set.file, EFileName::Referenced, line.Place(set.file));
        }
    }
    group.sets.push_back(set);
}

void CloseGroup(SCheck& check)
{
    const SInterconnectGroup& group = OpenComponent(check).groups.back();
    if (group.sets.empty()) {
        check.report.ErrorAt(group.place, 6207, group.name);
    }
    CNameIndex seen;
    std::vector<std::string> joined;
    joined.reserve(group.sets.size());
    for (const SGroupSet& set : group.sets) {
        // "/" and the like may stand in a file name, a blank may not.
        joined.push_back(std::string(set.set).append(" ").append(set.file));
        if (seen.Add(joined.back(), 0)) {
            check.report.ErrorAt(set.place, 6208, set.set);
        }
    }
}

void CloseGroups(SCheck& check, const SComponent& component)
{
    const bool hasPackage = check.state.Has(EKeyword::PackageModel) ||
                            check.state.Has(EKeyword::AlternatePackageModels);
    if (!component.groups.empty() && hasPackage) {
        check.report.Caution(component.groups.front().place, 6214, component.name);
    }
}

namespace {

/// A set that a group names, with the check of its file.
struct SFoundSet
{
    const SModelSet* set = nullptr;
    std::string_view file; ///< path of the file that it stands in
};

/// Looks for the set; reports when it isn't there.
SFoundSet FindSet(SCheck& check, const SGroupSet& row, std::set<std::string_view>& unreadable)
{
    SCheck* holder = &check;
    std::string_view file = check.BaseName();
    if (!IsNa(row.file)) {
        if (!EndsWithNoCase(row.file, ExtensionOf(EFileType::Ims))) {
            return {};
        }
        file = row.file;
        if (!check.files.Read(check.PathOf(file))) {
            if (unreadable.insert(file).second) {
                check.report.ErrorAt(row.place, 6210, file);
            }
            return {};
        }
        holder = CheckReferenced(check, file, EFileType::Ims);
        if (holder == nullptr) {
            return {};
        }
    }
    SFileData& data = holder->data;
    const auto at = data.interconnectSetNames.Find(row.set);
    if (!at) {
        check.report.ErrorAt(row.place, 6211, row.set, file);
        return {};
    }
    data.interconnectSets[*at].used = true;
    return {&data.interconnectSets[*at], holder->path};
}

// --- ways of pins -------------------------------------------------------------------------------

/// Ways that a pin has in a group, by the places that they join.
struct SWays
{
    std::size_t pinPad = 0;
    std::size_t padBuffer = 0;
    std::size_t pinBuffer = 0;

    void Add(unsigned places)
    {
        pinPad += places == (kAtPin | kAtPad) ? 1 : 0;
        padBuffer += places == (kAtPad | kAtBuffer) ? 1 : 0;
        pinBuffer += places == (kAtPin | kAtBuffer) ? 1 : 0;
    }
};

using CWays = std::unordered_map<std::string_view, SWays>;

/// Terminals that only stir others make no way.
void AddWays(const SModelSet& set, CWays& ways)
{
    for (const SSetModel& model : set.models) {
        std::unordered_map<std::string_view, unsigned> places;
        for (const STerminal& terminal : model.body.terminals) {
            const STerminalKind* kind = InterconnectKind(terminal.type);
            if (kind != nullptr && kind->joins == EJoins::Signal && !terminal.aggressorOnly) {
                places[terminal.entry] |= kind->place;
            }
        }
        for (const auto& [pin, place] : places) {
            ways[pin].Add(place);
        }
    }
}

void ReportWays(SCheck& check, const SComponent& component, const SInterconnectGroup& group,
                const CWays& ways)
{
    STally twice[3];
    STally half[2];
    // In the order of [Pin], so that the first of each kind is always the same.
    for (const SPin& pin : component.pins) {
        const auto found = ways.find(pin.name);
        if (found == ways.end()) {
            continue;
        }
        const SWays& way = found->second;
        const std::size_t counts[] = {way.pinPad, way.padBuffer, way.pinBuffer};
        for (std::size_t i = 0; i < 3; ++i) {
            if (counts[i] > 1) {
                twice[i].Add(pin.name, group.place);
            }
        }
        if (way.pinBuffer == 0 && (way.pinPad == 0) != (way.padBuffer == 0)) {
            half[way.pinPad != 0 ? 0 : 1].Add(pin.name, group.place);
        }
    }
    constexpr std::string_view kWays[] = {"pin to pad", "pad to buffer", "pin to buffer"};
    for (std::size_t i = 0; i < 3; ++i) {
        if (twice[i]) {
            check.report.WarningAt(group.place, 6212, twice[i].first, kWays[i], group.name,
                                   twice[i].count);
        }
    }
    constexpr std::string_view kParts[] = {"pin to pad", "pad to buffer"};
    for (std::size_t i = 0; i < 2; ++i) {
        if (half[i]) {
            check.report.NoteAt(group.place, 6213, half[i].first, kParts[i], group.name,
                                half[i].count);
        }
    }
}

} // namespace

void FinishGroups(SCheck& check)
{
    std::set<std::string_view> unreadable;
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(
            check.report, {component.name, {}, KeywordText(EKeyword::InterconnectModelGroup), {}});
        std::set<const SModelSet*> compared;
        for (const SInterconnectGroup& group : component.groups) {
            CWays ways;
            for (const SGroupSet& row : group.sets) {
                const SFoundSet found = FindSet(check, row, unreadable);
                if (found.set == nullptr) {
                    continue;
                }
                AddWays(*found.set, ways);
                if (compared.insert(found.set).second) {
                    const CFileScope file(check.report, found.file);
                    CheckSetOfComponent(check, component, *found.set);
                }
            }
            ReportWays(check, component, group, ways);
        }
    }
}

} // namespace zov::ibischk
