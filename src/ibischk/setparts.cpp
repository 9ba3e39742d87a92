// SPDX-License-Identifier: Apache-2.0
#include "ibischk/setparts.h"

#include "ibischk/cmn.h"

#include <algorithm>
#include <unordered_set>

namespace zov::ibischk {

void OpenModelSet(SCheck& check, const SLine& line, std::vector<SModelSet>& sets, CNameIndex& names,
                  int onceCode)
{
    SModelSet set;
    set.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    set.place = check.state.keywordPlace;
    check.report.Path().model = set.name;
    if (!set.name.empty() && names.Add(set.name, sets.size())) {
        check.report.ErrorAt(set.place, onceCode, set.name);
    }
    sets.push_back(std::move(set));
}

void OpenSetModel(SCheck& check, const SLine& line, SModelSet& set, int base, int onceCode)
{
    SSetModel& model = set.models.emplace_back();
    model.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    model.place = check.state.keywordPlace;
    if (!model.name.empty() && set.modelNames.Add(model.name, set.models.size() - 1)) {
        check.report.ErrorAt(model.place, onceCode, model.name, set.name);
    }
    BeginBody(model.body, check.state.current, base, model.name, model.place);
}

void TakeSetText(SCheck& check, const SLine& line, std::size_t limit, int code,
                 std::string_view owner)
{
    const SPlace place = check.state.keywordPlace;
    const std::string_view keyword = KeywordText(check.state.current);
    auto& seen = check.state.seenInSection[static_cast<std::size_t>(check.state.current)];
    if (seen > 1) {
        check.report.WarningAt(place, code, keyword, owner, "stands more than once");
    } else if (line.text.empty()) {
        check.report.WarningAt(place, code, keyword, owner, "is empty");
    } else if (line.text.size() > limit) {
        check.report.WarningAt(place, code, keyword, owner,
                               "is longer than " + std::to_string(limit) + " characters");
    }
}

unsigned QualifierOf(const STerminal& terminal)
{
    struct SWord
    {
        std::string_view word;
        unsigned bit;
    };
    constexpr SWord kRows[] = {{"", kNoQualifier},
                               {"pin_name", kPinName},
                               {"signal_name", kSignalName},
                               {"bus_label", kBusLabel},
                               {"pad_name", kPadName}};
    const auto* row = std::ranges::find(kRows, terminal.qualifier, &SWord::word);
    return row == std::end(kRows) ? 0 : row->bit;
}

const STerminalKind* FindKind(std::span<const STerminalKind> kinds, std::string_view name)
{
    const auto row = std::ranges::find(kinds, name, &STerminalKind::name);
    return row == kinds.end() ? nullptr : &*row;
}

namespace {

std::string Shown(const STerminal& terminal)
{
    std::string text(terminal.type);
    for (const std::string_view part : {terminal.qualifier, terminal.entry}) {
        if (!part.empty()) {
            text.append(" ").append(part);
        }
    }
    return text;
}

/// @return false when the terminal is of no use for further checks
bool CheckOne(SCheck& check, const STerminal& terminal, const STerminalKind* kind,
              const STerminalRules& rules)
{
    if (kind == nullptr) {
        check.report.ErrorAt(terminal.place, rules.type, terminal.type);
        return false;
    }
    if (terminal.aggressorOnly && kind->joins != EJoins::Signal) {
        check.report.ErrorAt(terminal.place, rules.aggressor, terminal.type);
    }
    const unsigned qualifier = QualifierOf(terminal);
    // A word that is no qualifier at all was told with its line.
    if (qualifier != 0 && (kind->qualifiers & qualifier) == 0) {
        const bool ground = kind->joins == EJoins::Ground;
        check.report.ErrorAt(terminal.place, ground ? rules.ground : rules.qualifier,
                             qualifier == kNoQualifier ? "(none)" : terminal.qualifier,
                             terminal.type);
        return false;
    }
    return kind->joins != EJoins::Ground;
}

} // namespace

void CheckTerminals(SCheck& check, const SCircuitBody& body, std::span<const STerminalKind> kinds,
                    const STerminalRules& rules)
{
    std::unordered_set<std::string> met;
    for (const STerminal& terminal : body.terminals) {
        const STerminalKind* kind = FindKind(kinds, terminal.type);
        if (!CheckOne(check, terminal, kind, rules)) {
            continue;
        }
        std::string shown = Shown(terminal);
        if (met.contains(shown)) {
            const bool signal = kind->joins == EJoins::Signal;
            check.report.At(signal ? EReport::Error : rules.railSeverity, terminal.place,
                            signal ? rules.once : rules.railOnce, shown, body.name);
        }
        met.insert(std::move(shown));
    }
}

} // namespace zov::ibischk
