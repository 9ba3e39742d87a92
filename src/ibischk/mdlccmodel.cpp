// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mdlccmodel.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"
#include "ibischk/setparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::string_view kModes[] = {"", "All", "Driving", "Non-Driving"};

constexpr STerminalKind kKinds[] = {
    {"Buffer_I/O", EJoins::Signal, kAtBuffer, kNoQualifier},
    {"Buffer_I", EJoins::Signal, kAtBuffer, kNoQualifier},
    {"Pullup_ref", EJoins::Reference, kAtBuffer, kNoQualifier},
    {"Pulldown_ref", EJoins::Reference, kAtBuffer, kNoQualifier},
    {"Power_clamp_ref", EJoins::Reference, kAtBuffer, kNoQualifier},
    {"Gnd_clamp_ref", EJoins::Reference, kAtBuffer, kNoQualifier},
    {"Ext_ref", EJoins::Reference, kAtBuffer, kNoQualifier},
    // A reference like the others here: it stands at most once.
    {"A_gnd", EJoins::Reference, kAtNothing, kNoQualifier},
};
constexpr STerminalRules kRules = {6810, 6811, 6811, 6811, 6812, 6812, EReport::Error};

std::string_view ModeText(ECCompMode mode)
{
    return kModes[static_cast<std::size_t>(mode)];
}

void TakeMode(SCheck& check, const SLine& line, CTokens& tokens, SCCompBlock& block)
{
    if (block.modeSeen) {
        check.report.ErrorAt(line.Place(), 6805, "stands more than once");
    }
    block.modeSeen = true;
    tokens.TakeEquals();
    const std::string_view word = tokens.Next();
    const auto* row = std::ranges::find_if(
        kModes, [word](std::string_view mode) { return EqualsNoCase(mode, word); });
    if (word.empty() || row == std::end(kModes)) {
        check.report.ErrorAt(line.Place(), 6806, word);
        return;
    }
    block.mode = static_cast<ECCompMode>(row - std::begin(kModes));
    ReportExtra(check, line, tokens, "C_comp_model_mode");
}

bool HasKind(const SCircuitBody& body, std::string_view type)
{
    return std::ranges::find(body.terminals, type, &STerminal::type) != body.terminals.end();
}

/// The table of the model that a reference terminal stands for.
bool ModelHas(const SModelInfo& info, std::string_view type)
{
    return type == "Pullup_ref"        ? info.hasPullup
           : type == "Pulldown_ref"    ? info.hasPulldown
           : type == "Power_clamp_ref" ? info.hasPowerClamp
           : type == "Gnd_clamp_ref"   ? info.hasGndClamp
           : type == "Ext_ref"         ? info.hasExternalReference
                                       : true;
}

void CheckModes(SCheck& check, const SModelInfo& info, const std::vector<SCCompBlock>& blocks)
{
    std::size_t counts[std::size(kModes)] = {};
    for (const SCCompBlock& block : blocks) {
        const auto mode = static_cast<std::size_t>(block.mode);
        const bool mixed = block.mode == ECCompMode::All
                               ? counts[2] + counts[3] != 0
                               : block.mode != ECCompMode::Unknown && counts[1] != 0;
        if ((block.mode != ECCompMode::Unknown && counts[mode] != 0) || mixed) {
            check.report.ErrorAt(block.body.place, 6807, info.name, ModeText(block.mode),
                                 mixed ? "All excludes the others" : "one of each at most");
        }
        ++counts[mode];
    }
    const SModelType& type = info.Type();
    const bool hasDriving = counts[static_cast<std::size_t>(ECCompMode::Driving)] != 0;
    const bool hasOther = counts[static_cast<std::size_t>(ECCompMode::NonDriving)] != 0;
    if (type.Drives() && type.canDisable && hasDriving != hasOther && counts[1] == 0) {
        check.report.WarningAt(blocks.front().body.place, 6808, info.name, type.name,
                               hasDriving ? "Driving" : "Non-Driving");
    }
    if (hasDriving && !type.Drives() && type.type != EModelType::Unknown) {
        check.report.WarningAt(blocks.front().body.place, 6809, "Driving", type.name);
    } else if (hasOther && type.Drives() && !type.receives && !type.canDisable) {
        check.report.WarningAt(blocks.front().body.place, 6809, "Non-Driving", type.name);
    }
}

void CheckUnused(SCheck& check, const SModelInfo& info, SPlace place)
{
    const STriple* const parts = check.data.model.cComp;
    if (std::any_of(parts + 1, parts + 5, [](const STriple& part) { return part.HasTyp(); })) {
        check.report.Caution(place, 6816, info.name, "C_comp_pullup and the like");
    }
    if (check.state.Has(EKeyword::CCompCorner)) {
        check.report.Caution(place, 6816, info.name, "[C Comp Corner]");
    }
}

} // namespace

void OpenCCompModel(SCheck& check, const SLine& line)
{
    if (!line.text.empty()) {
        check.report.WarningAt(line.Place(), 6804, line.text);
    }
    SCCompBlock& block = check.data.cCompBlocks.emplace_back();
    BeginBody(block.body, EKeyword::CCompModel, kCCompBody, OpenModel(check).name,
              check.state.keywordPlace);
}

void TakeCCompModelLine(SCheck& check, const SLine& line)
{
    SCCompBlock& block = check.data.cCompBlocks.back();
    CTokens tokens(line.text);
    if (tokens.NextName() == "C_comp_model_mode") {
        TakeMode(check, line, tokens, block);
    } else {
        TakeBodyLine(check, line, block.body);
    }
}

void CloseCCompModel(SCheck& check)
{
    SCCompBlock& block = check.data.cCompBlocks.back();
    const SPlace place = block.body.place;
    if (!block.modeSeen) {
        check.report.ErrorAt(place, 6805, "is missing");
    }
    CloseBody(check, block.body);
    CheckTerminals(check, block.body, kKinds, kRules);
    if (block.body.terminals.empty()) {
        return;
    }
    if (!HasKind(block.body, "Buffer_I/O")) {
        check.report.ErrorAt(place, 6813, block.body.name);
    }
    const bool referred = std::ranges::any_of(block.body.terminals, [](const STerminal& terminal) {
        const STerminalKind* kind = FindKind(kKinds, terminal.type);
        return kind != nullptr && kind->joins == EJoins::Reference;
    });
    if (!referred) {
        check.report.WarningAt(place, 6814, block.body.name);
    }
}

void CheckCCompModels(SCheck& check)
{
    std::vector<SCCompBlock>& blocks = check.data.cCompBlocks;
    if (blocks.empty()) {
        return;
    }
    const SModelInfo& info = OpenModel(check);
    CheckModes(check, info, blocks);
    CheckUnused(check, info, blocks.front().body.place);
    if (check.report.Verbose() && !info.hasExternalModel) {
        for (const SCCompBlock& block : blocks) {
            for (const STerminal& terminal : block.body.terminals) {
                if (!ModelHas(info, terminal.type)) {
                    check.report.Caution(terminal.place, 6815, info.name, terminal.type);
                }
            }
        }
    }
    blocks.clear();
}

} // namespace zov::ibischk
