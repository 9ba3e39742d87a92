// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emdset.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr STerminalKind kKinds[] = {
    {"Pin_I/O", EJoins::Signal, kAtPin, kPinName},
    {"Pin_Rail", EJoins::Rail, kAtPin, kPinName | kSignalName | kBusLabel},
    {"A_gnd", EJoins::Ground, kAtNothing, kNoQualifier},
};
constexpr STerminalRules kRules = {6665, 6666, 6666, 6667, 6668, 6668, EReport::Error};

SModelSet& Open(SCheck& check)
{
    return check.data.emdSets.back();
}

void OpenSet(SCheck& check, const SLine& line)
{
    OpenModelSet(check, line, check.data.emdSets, check.data.emdSetNames, 6656);
}

void OpenMaker(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kNameLimit, 6657, Open(check).name);
}

void OpenDescription(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kDescriptionLimit, 6658, Open(check).name);
}

void OpenModel(SCheck& check, const SLine& line)
{
    OpenSetModel(check, line, Open(check), kEmdBody, 6660);
}

void TakeModelLine(SCheck& check, const SLine& line)
{
    TakeBodyLine(check, line, Open(check).models.back().body);
}

void CheckStar(SCheck& check, const STerminal& terminal)
{
    if (check.report.Verbose() && terminal.entry.starts_with("*.") &&
        (terminal.type != "Pin_Rail" || terminal.qualifier == "pin_name")) {
        check.report.WarningAt(terminal.place, 6671, terminal.entry, terminal.type,
                               terminal.qualifier);
    }
}

void CloseModel(SCheck& check)
{
    SCircuitBody& body = Open(check).models.back().body;
    CloseBody(check, body);
    CheckTerminals(check, body, kKinds, kRules);
    for (const STerminal& terminal : body.terminals) {
        const STerminalKind* kind = EmdKind(terminal.type);
        if (body.fileKind == "File_TS" && terminal.number == body.terminalCount &&
            kind != nullptr && kind->joins == EJoins::Signal) {
            check.report.WarningAt(terminal.place, 6670, terminal.number, body.name, terminal.type);
        }
        CheckStar(check, terminal);
    }
}

void CloseSet(SCheck& check)
{
    const SModelSet& set = Open(check);
    if (set.models.empty()) {
        check.report.ErrorAt(set.place, 6659, set.name);
    }
}

void FinishSets(SCheck& check)
{
    if (check.state.fileType == EFileType::Ems && check.data.emdSets.empty()) {
        check.report.Error(6655, check.BaseName());
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::EMDSet, &OpenSet, nullptr, nullptr},
    {EKeyword::EmdSetManufacturer, &OpenMaker, nullptr, nullptr},
    {EKeyword::EmdSetDescription, &OpenDescription, nullptr, nullptr},
    {EKeyword::EMDModel, &OpenModel, &TakeModelLine, &CloseModel},
    {EKeyword::EndEMDModel, nullptr, nullptr, nullptr},
    {EKeyword::EndEMDSet, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::EmdSet, &CloseSet}};

} // namespace

const STerminalKind* EmdKind(std::string_view type)
{
    return FindKind(kKinds, type);
}

const SFamily kEmdsetFamily = {"emdset", kHandlers, kSections, &FinishSets};

} // namespace zov::ibischk
