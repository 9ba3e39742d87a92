// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emdparts.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <string>

namespace zov::ibischk {

namespace {

bool CanBePart(std::string_view file)
{
    return EndsWithNoCase(file, ExtensionOf(EFileType::Ibs)) ||
           EndsWithNoCase(file, ExtensionOf(EFileType::Emd)) ||
           EndsWithNoCase(file, ExtensionOf(EFileType::Ebd));
}

void CheckPartFile(SCheck& check, const SLine& line, std::string_view file)
{
    const SPlace place = line.Place(file);
    constexpr std::string_view kExpected = "the name of an '.ibs' or '.emd' file";
    if (!CanBePart(file)) {
        check.report.ErrorAt(place, 6532, file, kExpected);
        return;
    }
    if (EndsWithNoCase(file, ExtensionOf(EFileType::Ebd))) {
        check.report.Caution(place, 6532, file, kExpected);
    }
    if (!CheckFileName(check, file, EFileName::Referenced, place)) {
        return;
    }
    if (check.data.partFiles.LeadsBack(check, file)) {
        check.report.ErrorAt(place, 6535, file);
    } else if (!check.data.partFiles.Of(check, file).readable) {
        check.report.WarningAt(place, 6533, file);
    }
}

struct SSplit
{
    std::string_view designator;
    std::string_view pin;
};

/// Parts "designator.pin" at its first point; empty when it has not that form.
SSplit SplitPin(std::string_view entry)
{
    const std::size_t point = entry.find('.');
    if (point == std::string_view::npos || point == 0 || point + 1 == entry.size()) {
        return {};
    }
    return {entry.substr(0, point), entry.substr(point + 1)};
}

} // namespace

void TakePartRow(SCheck& check, const SLine& line)
{
    SEmd& module = OpenModule(check);
    const SWords words(line.text);
    if (words.count != 3) {
        check.report.ErrorAt(line.Place(), 6530, words.count);
        if (words.count < 3) {
            return;
        }
    }
    if (module.partNames.Add(words[0], module.parts.size())) {
        check.report.ErrorAt(line.Place(), 6531, words[0]);
        return;
    }
    CheckPartFile(check, line, words[1]);
    module.parts.push_back({words[0], words[1], words[2], line.Place()});
}

void TakeDesignatorRow(SCheck& check, const SLine& line)
{
    SEmd& module = OpenModule(check);
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6540, words.count);
        if (words.count < 2) {
            return;
        }
    }
    if (module.designatorNames.Add(words[0], module.designators.size())) {
        check.report.ErrorAt(line.Place(), 6541, words[0]);
        return;
    }
    module.designators.push_back({words[0], words[1], line.Place()});
}

void TakeDesignatorPinRow(SCheck& check, const SLine& line)
{
    constexpr SEmdRowRules kRules = {6550, 6554, 6556, 6560, 6558, "Designator Pin List"};
    SEmd& module = OpenModule(check);
    const SEmdPin* pin =
        TakeEmdPin(check, line, kRules, module.designatorPins, module.designatorPinNames);
    if (pin != nullptr && SplitPin(pin->name).pin.empty()) {
        check.report.ErrorAt(pin->place, 6551, pin->name);
    }
}

namespace {

/// The part behind a designator; null when it isn't listed, or its file doesn't give it.
const SPart* PartOf(SCheck& check, const SEmd& module, const SEmdDesignator& designator)
{
    const auto at = module.partNames.Find(designator.part);
    if (!at || !CanBePart(module.parts[*at].file)) {
        return nullptr;
    }
    const SEmdPart& row = module.parts[*at];
    const SPart* part = check.data.partFiles.Of(check, row.file).Find(row.component);
    return part == nullptr || part->pins.empty() ? nullptr : part;
}

void CheckParts(SCheck& check, SEmd& module)
{
    for (const SEmdDesignator& designator : module.designators) {
        if (const auto at = module.partNames.Find(designator.part)) {
            module.parts[*at].used = true;
        } else if (!module.parts.empty()) {
            ReportUnresolved(check, module.partNames, designator.part, designator.place, 6542);
        }
    }
    for (const SEmdPart& row : module.parts) {
        if (!row.used) {
            check.report.Caution(row.place, 6536, row.name);
        }
        if (!CanBePart(row.file)) {
            continue;
        }
        const SPartFile& file = check.data.partFiles.Of(check, row.file);
        if (file.readable && file.Find(row.component) == nullptr) {
            check.report.ErrorAt(row.place, 6534, row.component, row.file);
        }
    }
}

/// POWER against GND, and a supply pin used as a signal. A signal pin that is tied to a supply is
/// ordinary.
bool TypesClash(std::string_view here, std::string_view there)
{
    const bool rail = EqualsNoCase(there, "POWER") || EqualsNoCase(there, "GND");
    return rail && here != "NC" && !EqualsNoCase(here, there);
}

void CheckDesignatorPin(SCheck& check, const SEmd& module, const SEmdPin& pin)
{
    const SSplit split = SplitPin(pin.name);
    if (split.pin.empty()) {
        return;
    }
    const auto at = module.designatorNames.Find(split.designator);
    if (!at) {
        if (!module.designators.empty()) {
            ReportUnresolved(check, module.designatorNames, split.designator, pin.place, 6552);
        }
        return;
    }
    const SPart* part = PartOf(check, module, module.designators[*at]);
    if (part == nullptr) {
        return;
    }
    const auto found = part->pinNames.Find(split.pin);
    if (!found) {
        check.report.ErrorAt(pin.place, 6553, pin.name, part->name);
        return;
    }
    const std::string_view there = part->pins[*found].rail;
    if (TypesClash(pin.type, there)) {
        check.report.WarningAt(pin.place, 6557, pin.name,
                               pin.type.empty() ? "an I/O pin" : pin.type, there, part->name);
    }
}

/// Pins of a part that the module says nothing of.
void CheckListed(SCheck& check, const SEmd& module, const SEmdDesignator& designator)
{
    const SPart* part = PartOf(check, module, designator);
    if (part == nullptr) {
        return;
    }
    STally missing;
    std::string entry = std::string(designator.name) + ".";
    const std::size_t length = entry.size();
    for (const SPartPin& pin : part->pins) {
        entry.resize(length);
        entry.append(pin.name);
        if (!IsNc(pin.rail) && !module.designatorPinNames.Find(entry)) {
            missing.Add(pin.name, designator.place);
        }
    }
    if (missing) {
        check.report.WarningAt(missing.place, 6555, missing.first, designator.name, missing.count);
    }
}

} // namespace

void CheckModuleParts(SCheck& check)
{
    SEmd& module = OpenModule(check);
    const int given = (check.state.Has(EKeyword::EMDParts) ? 1 : 0) +
                      (check.state.Has(EKeyword::EMDDesignatorList) ? 1 : 0) +
                      (check.state.Has(EKeyword::DesignatorPinList) ? 1 : 0);
    if (given != 0 && given != 3) {
        check.report.ErrorAt(module.place, 6559, module.name);
    }
    CheckParts(check, module);
    for (const SEmdPin& pin : module.designatorPins) {
        CheckDesignatorPin(check, module, pin);
    }
    if (check.state.Has(EKeyword::DesignatorPinList)) {
        for (const SEmdDesignator& designator : module.designators) {
            CheckListed(check, module, designator);
        }
    }
}

} // namespace zov::ibischk
