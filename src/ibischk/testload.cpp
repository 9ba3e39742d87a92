// SPDX-License-Identifier: Apache-2.0
#include "ibischk/testload.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

using enum EVersion;
using enum EEquals;

enum ERow : std::size_t
{
    kType,
    kReceiver,
    kReceiverInverting,
    kVTerm1,
    kVTerm2,
    kTd,
    kZo,
    kRDiffNear,
    kRDiffFar,
    kRp1Near,
    kRp2Near,
    kRp1Far,
    kRp2Far,
    kFirstPassive
};
// Single values are written with and without "=" in practice.
constexpr SSubParameter kRows[] = {
    {"Test_load_type", V21, Without},
    {"Receiver_model", V21, Without},
    {"Receiver_model_inv", V21, Without},
    {"V_term1", V21, Either},
    {"V_term2", V21, Either},
    {"Td", V21, Either},
    {"Zo", V21, Either},
    {"R_diff_near", V21, Either},
    {"R_diff_far", V21, Either},
    {"Rp1_near", V21, Either},
    {"Rp2_near", V21, Either},
    {"Rp1_far", V21, Either},
    {"Rp2_far", V21, Either},
    {"C1_near", V21, Either},
    {"C2_near", V21, Either},
    {"C1_far", V21, Either},
    {"C2_far", V21, Either},
    {"Rs_near", V21, Either},
    {"Rs_far", V21, Either},
    {"Ls_near", V21, Either},
    {"Ls_far", V21, Either},
};

void OpenTestLoad(SCheck& check, const SLine& line)
{
    check.data.model.Clear();
    const std::string_view name = TakeName(check, line, kNameLimit, EReserved::Refused);
    if (!name.empty() && check.data.testLoadNames.Add(name, check.data.testLoads.size())) {
        check.report.ErrorAt(line.Place(name), 2201, name);
    }
    STestLoad load;
    load.name = name;
    load.place = check.state.keywordPlace;
    check.data.testLoads.push_back(load);
    check.report.Path().model = name;
}

void TakeNames(SCheck& check, const SLine& line, CTokens& tokens, std::size_t row)
{
    STestLoad& load = check.data.testLoads.back();
    const std::string_view word = TakeWord(check, line, tokens, kRows[row].name);
    if (row == kType) {
        load.type = word;
        if (!word.empty() && !EqualsNoCase(word, "Single_ended") &&
            !EqualsNoCase(word, "Differential")) {
            check.report.ErrorAt(line.Place(word), 2203, word);
        }
    } else if (row == kReceiver && !IsNa(word)) {
        load.receiver = word;
        load.receiverPlace = line.Place(word);
    } else if (row == kReceiverInverting && !IsNa(word)) {
        load.receiverInverting = word;
        load.receiverInvertingPlace = line.Place(word);
    }
}

/// One voltage or three.
void TakeVoltages(SCheck& check, const SLine& line, CTokens& tokens, std::string_view name)
{
    std::string_view words[3];
    const std::size_t count = SplitTokens(tokens.Rest(), words);
    if (count == 1) {
        TakeSingle(check, line, tokens, name);
    } else {
        TakeTriple(check, line, tokens, name);
    }
}

void TakeTestLoad(SCheck& check, const SLine& line)
{
    STestLoad& load = check.data.testLoads.back();
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, check.data.model.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    if (*row <= kReceiverInverting) {
        TakeNames(check, line, tokens, *row);
        return;
    }
    if (*row <= kVTerm2) {
        TakeVoltages(check, line, tokens, name);
        return;
    }
    load.hasFar = load.hasFar || name.ends_with("_far");
    const auto value = TakeSingle(check, line, tokens, name);
    const bool positive = *row != kTd && *row < kFirstPassive;
    if (value && (*value < 0 || (positive && *value == 0))) {
        check.report.ErrorAt(line.Place(), 2209, name, positive ? "greater than 0" : "at least 0",
                             *value);
    }
}

bool Seen(const SCheck& check, std::size_t row)
{
    return (check.data.model.seen >> row & 1U) != 0;
}

void CloseTestLoad(SCheck& check)
{
    STestLoad& load = check.data.testLoads.back();
    load.hasLine = Seen(check, kTd) && Seen(check, kZo);
    if (!Seen(check, kType)) {
        check.report.ErrorAt(load.place, 2202, load.name);
    }
    if (Seen(check, kTd) != Seen(check, kZo)) {
        check.report.ErrorAt(load.place, 2204);
    }
    constexpr std::pair<std::size_t, std::size_t> kTerms[] = {
        {kRp1Near, kVTerm1}, {kRp1Far, kVTerm1}, {kRp2Near, kVTerm2}, {kRp2Far, kVTerm2}};
    for (const auto& [resistor, voltage] : kTerms) {
        if (Seen(check, resistor) && !Seen(check, voltage)) {
            check.report.WarningAt(load.place, 2205, kRows[resistor].name, kRows[voltage].name);
        }
    }
    for (const std::size_t row : {kRDiffNear, kRDiffFar, kReceiverInverting}) {
        if (Seen(check, row) && EqualsNoCase(load.type, "Single_ended")) {
            check.report.ErrorAt(load.place, 2206, kRows[row].name);
        }
    }
}

void ResolveReceiver(SCheck& check, std::string_view name, SPlace place)
{
    if (name.empty() || check.data.selectorNames.Find(name)) {
        return;
    }
    const auto at = check.data.modelNames.Find(name);
    if (!at) {
        ReportUnresolved(check, check.data.modelNames, name, place, 2207);
        return;
    }
    SModelInfo& info = check.data.models[*at];
    info.used = true;
    const bool fits = info.Type().receives || info.type == EModelType::Terminator ||
                      info.type == EModelType::Unknown;
    if (!fits) {
        check.report.ErrorAt(place, 2208, name, info.Type().name);
    }
}

void FinishTestLoads(SCheck& check)
{
    for (const STestLoad& load : check.data.testLoads) {
        const CPathScope path(check.report, {{}, load.name, KeywordText(EKeyword::TestLoad), {}});
        ResolveReceiver(check, load.receiver, load.receiverPlace);
        ResolveReceiver(check, load.receiverInverting, load.receiverInvertingPlace);
        if (!load.used) {
            check.report.NoteAt(load.place, 2210, load.name);
        }
    }
}

constexpr SSectionHandler kSections[] = {{EScope::TestLoad, &CloseTestLoad}};

constexpr SHandler kHandlers[] = {
    {EKeyword::TestLoad, &OpenTestLoad, &TakeTestLoad, nullptr},
};

} // namespace

const SFamily kTestloadFamily = {"testload", kHandlers, kSections, &FinishTestLoads};

} // namespace zov::ibischk
