// SPDX-License-Identifier: Apache-2.0
#include "ibischk/sswch.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace zov::ibischk {

namespace {

// --- [Series Pin Mapping] ----------------------------------------------------------------------

constexpr std::string_view kHeadings[] = {"pin_2", "model_name", "function_table_group"};

void OpenSeriesPins(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kHeadings, 2, 203);
}

void TakeSeriesRow(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    const SWords words(line.text);
    if (words.count < 3 || words.count > 4) {
        check.report.ErrorAt(line.Place(), 401, words.count);
    }
    CountRow(check, line, kHeadings, words.count == 4 ? 4 : 3, 402);
    if (words.count < 3) {
        return;
    }
    const SSeriesPin row{words[0], words[1], words[2], words.count >= 4 ? words[3] : "",
                         line.Place()};
    TakePin(check, line, row.pin, 403);
    if (row.pin == row.pin2) {
        check.report.ErrorAt(line.Place(row.pin2), 404, row.pin);
    } else {
        TakePin(check, line, row.pin2, 403);
    }
    LimitName(check, "Model name", row.model, LimitsOf(check.state.version).model,
              line.Place(row.model));
    if (!row.group.empty()) {
        LimitName(check, "Group", row.group, kGroupLimit, line.Place(row.group));
        component.names->seriesGroups.Add(row.group, component.seriesPins.size());
    }
    component.seriesPins.push_back(row);
}

void CloseSeriesPins(SCheck& check)
{
    if (OpenComponent(check).names->table.rows == 0) {
        check.report.NoteAt(check.state.keywordPlace, 410);
    }
}

// --- [Series Switch Groups] --------------------------------------------------------------------

/// Takes one word of the statements; "/" may touch the word before it.
void TakeStatementWord(SCheck& check, const SLine& line, std::string_view word)
{
    SComponent& component = OpenComponent(check);
    const bool isOn = EqualsNoCase(word, "On");
    if (isOn || EqualsNoCase(word, "Off")) {
        if (check.state.unterminated) {
            check.report.ErrorAt(line.Place(word), 507);
        }
        component.switchStates.push_back({isOn, {}, line.Place(word)});
        check.state.unterminated = true;
        return;
    }
    if (!check.state.unterminated) {
        check.report.ErrorAt(line.Place(word), 501, word);
        return;
    }
    component.switchStates.back().groups.push_back(word);
}

void TakeStatements(SCheck& check, const SLine& line)
{
    for (CTokens tokens(line.text); !tokens.AtEnd();) {
        std::string_view word = tokens.Next();
        const bool ends = word.back() == '/';
        word.remove_suffix(ends ? 1 : 0);
        if (!word.empty()) {
            TakeStatementWord(check, line, word);
        }
        if (ends) {
            if (word.empty() && !check.state.unterminated) {
                check.report.ErrorAt(line.Place(word), 501, "/");
            }
            check.state.unterminated = false;
        }
    }
}

/// The groups that are on after a statement; told apart from others in sorted order.
std::vector<std::string_view> GroupsOn(const SComponent& component, const SSwitchState& state)
{
    std::set<std::string_view> named(state.groups.begin(), state.groups.end());
    if (state.on) {
        return {named.begin(), named.end()};
    }
    std::set<std::string_view> on;
    for (const SSeriesPin& row : component.seriesPins) {
        if (!row.group.empty() && !named.contains(row.group)) {
            on.insert(row.group);
        }
    }
    return {on.begin(), on.end()};
}

void CheckStatement(SCheck& check, const SComponent& component, const SSwitchState& state)
{
    CNameIndex named;
    for (const std::string_view group : state.groups) {
        if (named.Add(group, 0)) {
            check.report.WarningAt(state.place, 503, group);
        } else if (component.names->seriesGroups.Size() != 0 &&
                   !component.names->seriesGroups.Find(group)) {
            ReportUnresolved(check, component.names->seriesGroups, group, state.place, 502);
        }
    }
}

/// States are compared while they are few: a table of thousands is no table of a real switch.
void CheckSameStates(SCheck& check, const SComponent& component)
{
    constexpr std::size_t kMostStates = 64;
    std::map<std::vector<std::string_view>, std::size_t> known;
    const std::size_t count = std::min(component.switchStates.size(), kMostStates);
    for (std::size_t i = 0; i < count; ++i) {
        const SSwitchState& state = component.switchStates[i];
        const auto [entry, isNew] = known.try_emplace(GroupsOn(component, state), state.place.line);
        if (!isNew) {
            check.report.NoteAt(state.place, 505, entry->second);
        }
    }
}

void CloseComponentSwitches(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    const bool hasStates = check.state.Has(EKeyword::SeriesSwitchGroups);
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::SeriesSwitchGroups), {}});
    if (!hasStates) {
        const auto row = std::ranges::find_if(component.seriesPins,
                                              [](const SSeriesPin& r) { return !r.group.empty(); });
        if (row != component.seriesPins.end()) {
            check.report.At(check.state.AtLeast(EVersion::V42) ? EReport::Error : EReport::Warning,
                            row->place, 408, row->group);
        }
        return;
    }
    if (component.switchStates.empty()) {
        check.report.ErrorAt(component.switchPlace, 506);
    }
    if (component.names->seriesGroups.Size() == 0) {
        check.report.ErrorAt(component.switchPlace, 504);
    }
    for (const SSwitchState& state : component.switchStates) {
        CheckStatement(check, component, state);
    }
    CheckSameStates(check, component);
}

void OpenSwitchGroups(SCheck& check, const SLine& line)
{
    OpenComponent(check).switchPlace = check.state.keywordPlace;
    if (!line.text.empty()) {
        check.report.WarningAt(line.Place(), 1938, line.text,
                               KeywordText(EKeyword::SeriesSwitchGroups));
    }
}

// --- against the models of the file ------------------------------------------------------------

void FinishRow(SCheck& check, const SSeriesPin& row, CReach& reach)
{
    MarkUsed(check.data, row.model);
    const SReach& models = reach.Of(row.model);
    if (!models.found) {
        const CNameIndex& names = check.data.selectorNames.FindNoCase(row.model)
                                      ? check.data.selectorNames
                                      : check.data.modelNames;
        ReportUnresolved(check, names, row.model, row.place, 405);
        return;
    }
    if (!models.other.empty()) {
        const auto other = check.data.modelNames.Find(models.other);
        check.report.ErrorAt(row.place, 406, models.other, check.data.models[*other].Type().name);
        return;
    }
    if (!row.group.empty() && !models.anySwitch && !models.series.empty()) {
        check.report.WarningAt(row.place, 407, row.group, row.model);
    }
    if (row.group.empty() && models.anySwitch) {
        check.report.NoteAt(row.place, 411, row.model);
    }
}

void FinishSeries(SCheck& check)
{
    CReach reach(check.data);
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(check.report,
                               {component.name, {}, KeywordText(EKeyword::SeriesPinMapping), {}});
        std::set<std::tuple<std::string_view, std::string_view, std::string_view>> known;
        for (const SSeriesPin& row : component.seriesPins) {
            FinishRow(check, row, reach);
            const auto [one, two] = std::minmax(row.pin, row.pin2);
            if (!known.emplace(one, two, row.model).second) {
                check.report.WarningAt(row.place, 409, row.pin, row.pin2, row.model);
            }
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::SeriesPinMapping, &OpenSeriesPins, &TakeSeriesRow, &CloseSeriesPins},
    {EKeyword::SeriesSwitchGroups, &OpenSwitchGroups, &TakeStatements, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentSwitches}};

} // namespace

const SFamily kSswchFamily = {"sswch", kHandlers, kSections, &FinishSeries};

} // namespace zov::ibischk
