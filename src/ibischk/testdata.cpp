// SPDX-License-Identifier: Apache-2.0
#include "ibischk/testdata.h"

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
    kDriver,
    kDriverInverting,
    kLoad
};
constexpr SSubParameter kRows[] = {
    {"Test_data_type", V21, Without},
    {"Driver_model", V21, Without},
    {"Driver_model_inv", V21, Without},
    {"Test_load", V21, Without},
};
constexpr std::size_t kMaxRows = 1000;

bool IsSingle(std::string_view type)
{
    return EqualsNoCase(type, "Single_ended");
}

void OpenTestData(SCheck& check, const SLine& line)
{
    check.data.model.Clear();
    const std::string_view name = TakeName(check, line, kNameLimit, EReserved::Refused);
    if (!name.empty() && check.data.testDataNames.Add(name, check.data.testData.size())) {
        check.report.ErrorAt(line.Place(name), 2101, name);
    }
    STestData data;
    data.name = name;
    data.place = check.state.keywordPlace;
    check.data.testData.push_back(data);
    check.report.Path().model = name;
}

void TakeTestData(SCheck& check, const SLine& line)
{
    STestData& data = check.data.testData.back();
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kRows, check.data.model.seen);
    if (!row) {
        return;
    }
    const std::string_view word = TakeWord(check, line, tokens, kRows[*row].name);
    if (word.empty()) {
        return;
    }
    const SPlace place = line.Place(word);
    switch (*row) {
    case kType:
        data.type = word;
        if (!IsSingle(word) && !EqualsNoCase(word, "Differential")) {
            check.report.ErrorAt(place, 2103, word);
        }
        break;
    case kDriver:
        data.driver = word;
        data.driverPlace = place;
        break;
    case kDriverInverting:
        data.driverInverting = word;
        data.driverInvertingPlace = place;
        break;
    default:
        data.load = word;
        data.loadPlace = place;
        break;
    }
}

void OpenTable(SCheck& check, const SLine& line)
{
    check.data.model.NewWaveform(check.state.current, check.state.keywordPlace);
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
    if (check.state.current >= EKeyword::DiffRisingWaveformNear &&
        IsSingle(check.data.testData.back().type)) {
        check.report.ErrorAt(check.state.keywordPlace, 2109, KeywordText(check.state.current));
    }
    STestData& data = check.data.testData.back();
    data.hasWaveform = true;
    data.hasFar = data.hasFar || KeywordText(check.state.current).ends_with("Far");
}

void TakeTable(SCheck& check, const SLine& line)
{
    TakeTimeRow(check, line, check.data.model.waveforms[check.data.model.waveformCount - 1]);
}

void CloseTable(SCheck& check)
{
    CheckTimeTable(check, check.data.model.waveforms[check.data.model.waveformCount - 1], kMaxRows);
}

void CloseTestData(SCheck& check)
{
    const STestData& data = check.data.testData.back();
    for (const std::size_t row : {kType, kDriver, kLoad}) {
        if ((check.data.model.seen >> row & 1U) == 0) {
            check.report.ErrorAt(data.place, 2102, data.name, kRows[row].name);
        }
    }
    if (!data.driverInverting.empty() && IsSingle(data.type)) {
        check.report.ErrorAt(data.driverInvertingPlace, 2107);
    }
    if (!data.hasWaveform) {
        check.report.ErrorAt(data.place, 2108, data.name);
    }
}

/// A model, or a selector, whose choice is not judged.
const SModelInfo* ResolveDriver(SCheck& check, std::string_view name, SPlace place)
{
    if (name.empty() || check.data.selectorNames.Find(name)) {
        return nullptr;
    }
    const auto at = check.data.modelNames.Find(name);
    if (!at) {
        ReportUnresolved(check, check.data.modelNames, name, place, 2104);
        return nullptr;
    }
    SModelInfo& info = check.data.models[*at];
    info.used = true;
    if (info.type != EModelType::Unknown && !info.Type().Drives()) {
        check.report.ErrorAt(place, 2106, name, info.Type().name);
    }
    return &info;
}

void ResolveLoad(SCheck& check, const STestData& data, const SModelInfo* driver)
{
    const auto at = check.data.testLoadNames.Find(data.load);
    if (!at) {
        ReportUnresolved(check, check.data.testLoadNames, data.load, data.loadPlace, 2105);
        return;
    }
    STestLoad& load = check.data.testLoads[*at];
    load.used = true;
    if (!load.type.empty() && !data.type.empty() && IsSingle(load.type) != IsSingle(data.type)) {
        check.report.ErrorAt(data.loadPlace, 2110, data.type, load.name, load.type);
    }
    if (data.hasFar && !load.hasLine && !load.hasFar) {
        check.report.WarningAt(data.place, 2111, data.name, load.name);
    }
    if (EqualsNoCase(load.type, "Differential") && data.driverInverting.empty() &&
        driver != nullptr && !driver->Type().IsDiff()) {
        check.report.ErrorAt(data.loadPlace, 2211, load.name, driver->name);
    }
}

void FinishTestData(SCheck& check)
{
    for (const STestData& data : check.data.testData) {
        const CPathScope path(check.report, {{}, data.name, KeywordText(EKeyword::TestData), {}});
        const SModelInfo* driver = ResolveDriver(check, data.driver, data.driverPlace);
        ResolveDriver(check, data.driverInverting, data.driverInvertingPlace);
        if (!data.load.empty()) {
            ResolveLoad(check, data, driver);
        }
    }
}

constexpr SSectionHandler kSections[] = {{EScope::TestData, &CloseTestData}};

constexpr SHandler kHandlers[] = {
    {EKeyword::TestData, &OpenTestData, &TakeTestData, nullptr},
    {EKeyword::RisingWaveformNear, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::RisingWaveformFar, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::FallingWaveformNear, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::FallingWaveformFar, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::DiffRisingWaveformNear, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::DiffRisingWaveformFar, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::DiffFallingWaveformNear, &OpenTable, &TakeTable, &CloseTable},
    {EKeyword::DiffFallingWaveformFar, &OpenTable, &TakeTable, &CloseTable},
};

} // namespace

const SFamily kTestdataFamily = {"testdata", kHandlers, kSections, &FinishTestData};

} // namespace zov::ibischk
