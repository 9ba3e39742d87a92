// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pkgmdl.h"

#include "ibischk/cmn.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

SPackageModel& Open(SCheck& check)
{
    return check.data.packageModels.back();
}

void OpenPackage(SCheck& check, const SLine& line)
{
    SFileData& data = check.data;
    SPackageModel model;
    model.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    model.place = check.state.keywordPlace;
    check.report.Path() = {{}, model.name, {}, {}};
    if (!model.name.empty() && data.packageModelNames.Add(model.name, data.packageModels.size())) {
        check.report.ErrorAt(model.place, 3100, model.name);
    }
    data.stub = {};
    data.packageModels.push_back(std::move(model));
}

void OpenShortText(SCheck& check, const SLine& line)
{
    TakeText(check, line, kNameLimit);
}

void OpenDescription(SCheck& check, const SLine& line)
{
    TakeText(check, line, kDescriptionLimit);
}

std::size_t TakeOneCount(SCheck& check, const SLine& line)
{
    CTokens tokens(line.text);
    const std::string_view word = tokens.Next();
    const SPlace place = word.empty() ? check.state.keywordPlace : line.Place(word);
    const auto count = TakeCount(check, word, place);
    if (!tokens.AtEnd()) {
        check.report.ErrorAt(line.Place(tokens.Rest()), 3101, tokens.Rest(),
                             KeywordText(check.state.current));
    }
    if (check.state.Has(EKeyword::PinNumbers)) {
        check.report.ErrorAt(check.state.keywordPlace, 3102, KeywordText(check.state.current),
                             KeywordText(EKeyword::PinNumbers));
    }
    return count.value_or(0);
}

void OpenPinCount(SCheck& check, const SLine& line)
{
    Open(check).pinCount = TakeOneCount(check, line);
}

void OpenSectionCount(SCheck& check, const SLine& line)
{
    Open(check).sectionCount = TakeOneCount(check, line);
}

void CloseStub(SCheck& check)
{
    SPath& stub = check.data.stub;
    SPackageModel& model = Open(check);
    if (stub.name.empty() || !check.state.Has(EKeyword::NumberOfSections)) {
        return;
    }
    ClosePath(check, stub, kStubRules);
    if (model.sectionCount != 0 && stub.sections > model.sectionCount) {
        check.report.ErrorAt(stub.place, 3403, stub.name, stub.sections, model.sectionCount);
    }
    model.mostSections = std::max(model.mostSections, stub.sections);
    stub = {};
}

void AddPin(SCheck& check, std::string_view name, SPlace place)
{
    SPackageModel& model = Open(check);
    LimitText(check, "Pin", name, LimitsOf(check.state.version).pin, place);
    if (model.pinNames.Add(name, model.pins.size())) {
        check.report.ErrorAt(place, 3401, name);
        return;
    }
    model.pins.push_back(name);
}

void TakePinRow(SCheck& check, const SLine& line)
{
    SPath& stub = check.data.stub;
    std::string_view rest = line.text;
    const bool sections = check.state.Has(EKeyword::NumberOfSections);
    if (sections) {
        TakeSections(check, line, rest, stub, kStubRules);
    }
    while (!rest.empty()) {
        CTokens tokens(rest);
        const std::string_view name = tokens.Next();
        const SPlace place = line.Place(name);
        rest = tokens.Rest();
        if (!sections) {
            if (!rest.empty()) {
                check.report.ErrorAt(line.Place(rest), 3402, name, rest);
            }
            AddPin(check, name, place);
            return;
        }
        CloseStub(check);
        stub = {};
        stub.name = name;
        stub.place = place;
        AddPin(check, name, place);
        TakeSections(check, line, rest, stub, kStubRules);
    }
}

void ClosePinNumbers(SCheck& check)
{
    CloseStub(check);
    const SPackageModel& model = Open(check);
    if (model.pinCount != 0 && model.pins.size() != model.pinCount) {
        check.report.ErrorAt(check.state.keywordPlace, 3400, model.name, model.pins.size(),
                             model.pinCount);
    }
    if (model.sectionCount != 0 && !model.pins.empty() && model.mostSections < model.sectionCount) {
        check.report.NoteAt(check.state.keywordPlace, 3404, model.name, model.sectionCount);
    }
}

void OpenMerged(SCheck& check, const SLine& line)
{
    SPackageModel& model = Open(check);
    const std::string_view pin = TakeName(check, line, std::string_view::npos, EReserved::Allowed);
    model.merged.push_back({pin, check.state.keywordPlace, {}});
    if (!check.state.Has(EKeyword::PinNumbers) || check.state.Has(EKeyword::ModelData)) {
        check.report.WarningAt(check.state.keywordPlace, 3484);
    } else if (!pin.empty() && !model.pinNames.Find(pin)) {
        check.report.ErrorAt(line.Place(pin), 3480, pin);
    }
}

void TakeMerged(SCheck& check, const SLine& line)
{
    SPackageModel& model = Open(check);
    CTokens tokens(line.text);
    while (!tokens.AtEnd()) {
        const std::string_view pin = tokens.Next();
        model.merged.back().merged.push_back(pin);
        if (model.pinNames.Find(pin)) {
            check.report.ErrorAt(line.Place(pin), 3481, pin);
        }
        if (model.mergedNames.Add(pin, 0)) {
            check.report.ErrorAt(line.Place(pin), 3482, pin, model.name);
        }
    }
}

void CloseMerged(SCheck& check)
{
    const SMergedPins& group = Open(check).merged.back();
    if (group.merged.empty()) {
        check.report.ErrorAt(group.place, 3483, group.pin);
    }
}

void ClosePackage(SCheck& check)
{
    constexpr EKeyword kNeeded[] = {EKeyword::PackageManufacturer, EKeyword::OEM,
                                    EKeyword::PackageDescription, EKeyword::PackageNumberOfPins,
                                    EKeyword::PinNumbers};
    for (const EKeyword code : kNeeded) {
        RequireKeyword(check, code);
    }
    const SPackageModel& model = Open(check);
    const bool sections = check.state.Has(EKeyword::NumberOfSections);
    const bool matrices = check.state.Has(EKeyword::ModelData);
    if (sections && matrices) {
        check.report.ErrorAt(model.place, 3103, model.name);
    } else if (!sections && !matrices) {
        check.report.ErrorAt(model.place, 3104, model.name);
    }
}

void FinishPackages(SCheck& check)
{
    if (check.state.fileType != EFileType::Ibs) {
        return;
    }
    for (const SPackageModel& model : check.data.packageModels) {
        if (!model.used) {
            const CPathScope scope(check.report, {{}, model.name, {}, {}});
            check.report.WarningAt(model.place, 3105, model.name);
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::DefinePackageModel, &OpenPackage, nullptr, nullptr},
    {EKeyword::PackageManufacturer, &OpenShortText, nullptr, nullptr},
    {EKeyword::OEM, &OpenShortText, nullptr, nullptr},
    {EKeyword::PackageDescription, &OpenDescription, nullptr, nullptr},
    {EKeyword::PackageNumberOfPins, &OpenPinCount, nullptr, nullptr},
    {EKeyword::NumberOfSections, &OpenSectionCount, nullptr, nullptr},
    {EKeyword::PinNumbers, nullptr, &TakePinRow, &ClosePinNumbers},
    {EKeyword::MergedPins, &OpenMerged, &TakeMerged, &CloseMerged},
    {EKeyword::EndPackageModel, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::PackageModel, &ClosePackage}};

} // namespace

const SFamily kPkgmdlFamily = {"pkgmdl", kHandlers, kSections, &FinishPackages};

} // namespace zov::ibischk
