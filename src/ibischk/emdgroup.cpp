// SPDX-License-Identifier: Apache-2.0
// [EMD Group], and the terminals of EMD models against the module that uses them.
#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/emdparts.h"
#include "ibischk/setparts.h"
#include "ibischk/table.h"

#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace zov::ibischk {

namespace {

bool IsSetFile(std::string_view file)
{
    return EndsWithNoCase(file, ExtensionOf(EFileType::Ems)) ||
           EndsWithNoCase(file, ExtensionOf(EFileType::Emd));
}

} // namespace

void OpenEmdGroup(SCheck& check, const SLine& line)
{
    SEmd& module = OpenModule(check);
    SEmdGroup group;
    group.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    group.place = check.state.keywordPlace;
    if (!group.name.empty() && module.groupNames.Add(group.name, module.groups.size())) {
        check.report.ErrorAt(group.place, 6575, group.name);
    }
    module.groups.push_back(std::move(group));
}

void TakeEmdGroupRow(SCheck& check, const SLine& line)
{
    constexpr std::string_view kExpected = "must be NA or the name of an '.ems' file";
    SEmdGroup& group = OpenModule(check).groups.back();
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6576, words.count);
        if (words.count < 2) {
            return;
        }
    }
    const std::string_view file = words[1];
    const SPlace place = line.Place(file);
    if (!IsNa(file)) {
        if (!IsSetFile(file)) {
            check.report.ErrorAt(place, 6578, file, kExpected);
        } else {
            if (EndsWithNoCase(file, ExtensionOf(EFileType::Emd))) {
                check.report.Caution(place, 6578, file, kExpected);
            }
            CheckFileName(check, file, EFileName::Referenced, place);
        }
    }
    group.sets.push_back({words[0], file, line.Place()});
}

void CloseEmdGroup(SCheck& check)
{
    const SEmdGroup& group = OpenModule(check).groups.back();
    if (group.sets.empty()) {
        check.report.ErrorAt(group.place, 6577, group.name);
    }
    std::set<std::pair<std::string_view, std::string_view>> seen;
    for (const SEmdGroupSet& row : group.sets) {
        if (!seen.insert({row.set, row.file}).second) {
            check.report.ErrorAt(row.place, 6580, row.set, group.name);
        }
    }
}

namespace {

struct SFoundSet
{
    const SModelSet* set = nullptr;
    std::string_view file; ///< path of the file that it stands in
};

SFoundSet FindSet(SCheck& check, const SEmdGroupSet& row)
{
    SCheck* holder = &check;
    std::string_view file = check.BaseName();
    if (!IsNa(row.file) && row.file != file) {
        file = row.file;
        if (!IsSetFile(file)) {
            return {};
        }
        if (!check.files.Read(check.PathOf(file))) {
            check.report.ErrorAt(row.place, 6578, file, "cannot be read");
            return {};
        }
        const bool isModule = EndsWithNoCase(file, ExtensionOf(EFileType::Emd));
        holder = CheckReferenced(check, file, isModule ? EFileType::Emd : EFileType::Ems);
        if (holder == nullptr) {
            return {};
        }
    }
    const auto at = holder->data.emdSetNames.Find(row.set);
    if (!at) {
        check.report.ErrorAt(row.place, 6579, row.set, file);
        return {};
    }
    return {&holder->data.emdSets[*at], holder->path};
}

// --- names of the module ------------------------------------------------------------------------

/// Supplies that terminals may name: "VDD" of the module, "u1.VDD" of a part, "*.VDD" of any.
struct SModuleRails
{
    std::unordered_set<std::string> signals;
    std::unordered_set<std::string> labels;

    explicit SModuleRails(const SEmd& module)
    {
        Add(module.pins, false);
        Add(module.designatorPins, true);
    }

private:
    void Add(const std::vector<SEmdPin>& pins, bool ofParts)
    {
        for (const SEmdPin& pin : pins) {
            if (!pin.IsRail()) {
                continue;
            }
            const std::size_t point = pin.name.find('.');
            const std::string prefix(
                ofParts && point != std::string_view::npos ? pin.name.substr(0, point + 1) : "");
            for (const std::string& place : {prefix, std::string("*.")}) {
                signals.insert(place + std::string(pin.signal));
                labels.insert(place + std::string(pin.Label()));
            }
        }
    }
};

void CheckPinTerminal(SCheck& check, const SEmd& module, const STerminal& terminal)
{
    const SEmdPin* pin = module.FindPin(terminal.entry);
    if (pin == nullptr) {
        check.report.ErrorAt(terminal.place, 6680, terminal.entry, module.name);
        return;
    }
    const bool wantsRail = terminal.type == "Pin_Rail";
    if (wantsRail ? !pin->IsRail() : !pin->IsSignal()) {
        check.report.ErrorAt(terminal.place, 6681, pin->name,
                             pin->type.empty() ? "an I/O pin" : pin->type, terminal.type,
                             wantsRail ? "POWER or GND" : "an I/O pin");
    }
}

void CheckTerminal(SCheck& check, const SEmd& module, const SModuleRails& rails,
                   const STerminal& terminal)
{
    const STerminalKind* kind = EmdKind(terminal.type);
    if (kind == nullptr) {
        return;
    }
    switch (kind->qualifiers & QualifierOf(terminal)) {
    case kPinName:
        CheckPinTerminal(check, module, terminal);
        break;
    case kSignalName:
    case kBusLabel: {
        const bool isLabel = QualifierOf(terminal) == kBusLabel;
        if (!(isLabel ? rails.labels : rails.signals).contains(std::string(terminal.entry))) {
            check.report.ErrorAt(terminal.place, 6682, terminal.qualifier, terminal.entry,
                                 module.name);
        }
        break;
    }
    default:
        break;
    }
}

// --- signals of a model -------------------------------------------------------------------------

struct SSignalUse
{
    std::string_view signal;
    SPlace place;
    std::size_t terminals = 0;
    std::size_t aggressors = 0;
};

void CheckSignals(SCheck& check, const SEmd& module, const SSetModel& model)
{
    std::vector<SSignalUse> uses;
    CNameIndex names;
    for (const STerminal& terminal : model.body.terminals) {
        const SEmdPin* pin = terminal.type == "Pin_I/O" ? module.FindPin(terminal.entry) : nullptr;
        if (pin == nullptr) {
            continue;
        }
        const auto at = names.Add(pin->signal, uses.size());
        SSignalUse& use =
            at ? uses[*at] : uses.emplace_back(SSignalUse{pin->signal, terminal.place, 0, 0});
        ++use.terminals;
        use.aggressors += terminal.aggressorOnly ? 1 : 0;
    }
    STally single;
    for (const SSignalUse& use : uses) {
        if (use.aggressors != 0 && use.aggressors != use.terminals) {
            check.report.WarningAt(use.place, 6669, use.signal, model.name);
        }
        if (use.terminals == 1) {
            single.Add(use.signal, use.place);
        }
    }
    if (single) {
        check.report.Caution(single.place, 6672, single.first, model.name, single.count);
    }
}

void CheckSetOfModule(SCheck& check, const SEmd& module, const SModelSet& set)
{
    const SModuleRails rails(module);
    for (const SSetModel& model : set.models) {
        const CPathScope scope(check.report,
                               {module.name, model.name, KeywordText(EKeyword::EMDModel), {}});
        for (const STerminal& terminal : model.body.terminals) {
            CheckTerminal(check, module, rails, terminal);
        }
        CheckSignals(check, module, model);
    }
}

// --- pins of a group ----------------------------------------------------------------------------

struct SPinUse
{
    std::size_t models = 0; ///< in which it is more than an aggressor
    bool touched = false;
};
using CPinUses = std::unordered_map<std::string_view, SPinUse>;

void AddUses(const SModelSet& set, CPinUses& uses)
{
    for (const SSetModel& model : set.models) {
        std::unordered_set<std::string_view> counted;
        for (const STerminal& terminal : model.body.terminals) {
            if (terminal.type != "Pin_I/O") {
                continue;
            }
            SPinUse& use = uses[terminal.entry];
            use.touched = true;
            if (!terminal.aggressorOnly && counted.insert(terminal.entry).second) {
                ++use.models;
            }
        }
    }
}

void ReportUses(SCheck& check, const SEmd& module, const SEmdGroup& group, const CPinUses& uses)
{
    STally untouched;
    STally twice;
    for (const std::vector<SEmdPin>* pins : {&module.pins, &module.designatorPins}) {
        for (const SEmdPin& pin : *pins) {
            if (!pin.IsSignal()) {
                continue;
            }
            const auto found = uses.find(pin.name);
            if (found == uses.end()) {
                untouched.Add(pin.name, group.place);
            } else if (found->second.models > 1) {
                twice.Add(pin.name, group.place);
            }
        }
    }
    if (untouched) {
        check.report.Caution(group.place, 6581, untouched.first, group.name, untouched.count);
    }
    if (twice) {
        check.report.WarningAt(group.place, 6582, twice.first, group.name, twice.count);
    }
}

} // namespace

void FinishEmdGroups(SCheck& check)
{
    for (const SEmd& module : check.data.emds) {
        const CPathScope scope(check.report,
                               {{}, module.name, KeywordText(EKeyword::EMDGroup), {}});
        std::set<const SModelSet*> compared;
        for (const SEmdGroup& group : module.groups) {
            CPinUses uses;
            bool complete = !group.sets.empty();
            for (const SEmdGroupSet& row : group.sets) {
                const SFoundSet found = FindSet(check, row);
                if (found.set == nullptr) {
                    complete = false;
                    continue;
                }
                AddUses(*found.set, uses);
                if (compared.insert(found.set).second) {
                    const CFileScope file(check.report, found.file);
                    CheckSetOfModule(check, module, *found.set);
                }
            }
            if (complete) {
                ReportUses(check, module, group, uses);
            }
        }
    }
}

} // namespace zov::ibischk
