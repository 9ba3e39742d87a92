// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emd.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/Guard.h"
#include "ibischk/cmn.h"
#include "ibischk/emdparts.h"
#include "ibischk/setparts.h"
#include "ibischk/table.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

const SEmdPin* SEmd::FindPin(std::string_view pin) const
{
    if (const auto own = pinNames.Find(pin)) {
        return &pins[*own];
    }
    const auto foreign = designatorPinNames.Find(pin);
    return foreign ? &designatorPins[*foreign] : nullptr;
}

SEmd& OpenModule(SCheck& check)
{
    SEmd* last = check.data.emds.empty() ? nullptr : &check.data.emds.back();
    return *Guarded(last, "ibischk/emd", __LINE__);
}

namespace {

/// POWER, GND or NC; empty for another word.
std::string_view SignalType(std::string_view word)
{
    constexpr std::string_view kTypes[] = {"POWER", "GND", "NC"};
    const auto* row = std::ranges::find_if(
        kTypes, [word](std::string_view type) { return EqualsNoCase(type, word); });
    return row == std::end(kTypes) ? std::string_view() : *row;
}

/// One signal has one type, one label one signal, over the whole module.
void CheckSignal(SCheck& check, const SEmdPin& pin, const SEmdRowRules& rules)
{
    SEmd& module = OpenModule(check);
    if (const auto at = module.signals.Add(pin.signal, module.signalTypes.size())) {
        if (module.signalTypes[*at] != pin.type) {
            check.report.ErrorAt(pin.place, rules.signalType, pin.signal,
                                 pin.type.empty() ? "an I/O signal" : pin.type,
                                 module.signalTypes[*at].empty() ? "an I/O signal"
                                                                 : module.signalTypes[*at]);
        }
    } else {
        module.signalTypes.push_back(pin.type);
    }
    if (pin.label.empty()) {
        return;
    }
    if (!pin.IsRail()) {
        check.report.ErrorAt(pin.place, rules.labelOfSignal, pin.label, pin.name);
    } else if (const auto at = module.labels.Add(pin.label, module.labelSignals.size())) {
        if (module.labelSignals[*at] != pin.signal) {
            check.report.ErrorAt(pin.place, rules.labelSignal, pin.label, module.labelSignals[*at],
                                 pin.signal);
        }
    } else {
        module.labelSignals.push_back(pin.signal);
    }
}

} // namespace

const SEmdPin* TakeEmdPin(SCheck& check, const SLine& line, const SEmdRowRules& rules,
                          std::vector<SEmdPin>& pins, CNameIndex& names)
{
    const SWords words(line.text);
    if (words.count < 2 || words.count > 4) {
        check.report.ErrorAt(line.Place(), rules.columns, rules.shown, words.count);
        if (words.count < 2) {
            return nullptr;
        }
    }
    SEmdPin pin{words[0], words[1], SignalType(words[2]), words[3], line.Place()};
    if (!words[2].empty() && pin.type.empty()) {
        check.report.ErrorAt(line.Place(words[2]), 6519, words[2]);
    }
    if (names.Add(pin.name, pins.size())) {
        check.report.ErrorAt(line.Place(), rules.once, pin.name, rules.shown);
        return nullptr;
    }
    pins.push_back(pin);
    CheckSignal(check, pins.back(), rules);
    return &pins.back();
}

namespace {

// --- header and pins ----------------------------------------------------------------------------

void OpenEmd(SCheck& check, const SLine& line)
{
    SFileData& data = check.data;
    SEmd module;
    module.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    module.place = check.state.keywordPlace;
    check.report.Path().model = module.name;
    if (!module.name.empty() && data.emdNames.Add(module.name, data.emds.size())) {
        check.report.ErrorAt(module.place, 6506, module.name);
    }
    data.emds.push_back(std::move(module));
}

void OpenMaker(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kNameLimit, 6507, OpenModule(check).name);
}

void OpenDescription(SCheck& check, const SLine& line)
{
    TakeSetText(check, line, kDescriptionLimit, 6508, OpenModule(check).name);
}

template <EEmdPart part>
void NotePlace(SCheck& check, const SLine& /*line*/)
{
    SPlace& place = OpenModule(check).places[part];
    place = place.line == 0 ? check.state.keywordPlace : place;
}

void OpenPinNumber(SCheck& check, const SLine& line)
{
    NotePlace<kEmdPinNumber>(check, line);
    const auto count = ParseInt(line.text);
    if (!count || *count < 1) {
        check.report.ErrorAt(check.state.keywordPlace, 6510, line.text);
        return;
    }
    OpenModule(check).pinCount = static_cast<std::size_t>(*count);
}

/// The point parts designator and pin, the star stands for all of them.
void CheckPlainName(SCheck& check, std::string_view name, SPlace place)
{
    const std::size_t at = name.find_first_of(".*");
    if (check.report.Verbose() && at != std::string_view::npos) {
        check.report.WarningAt(place, 6523, name, name[at]);
    }
}

void TakePinRow(SCheck& check, const SLine& line)
{
    constexpr SEmdRowRules kRules = {6516, 6518, 6520, 6521, 6522, "EMD Pin List"};
    SEmd& module = OpenModule(check);
    const SEmdPin* pin = TakeEmdPin(check, line, kRules, module.pins, module.pinNames);
    if (pin != nullptr) {
        CheckPlainName(check, pin->name, pin->place);
    }
}

void TakeNamedDesignator(SCheck& check, const SLine& line)
{
    CheckPlainName(check, SWords(line.text)[0], line.Place());
    TakeDesignatorRow(check, line);
}

// --- supplies -----------------------------------------------------------------------------------

void TakeVoltageRow(SCheck& check, const SLine& line)
{
    SEmd& module = OpenModule(check);
    CTokens tokens(line.text);
    const std::string_view name = tokens.Next();
    if (module.voltages.Add(name, 0)) {
        check.report.ErrorAt(line.Place(), 6567, name);
    }
    if (check.report.Verbose() && !module.signals.Find(name) && !module.labels.Find(name)) {
        check.report.ErrorAt(line.Place(), 6566, name);
    }
    const SWords words(tokens.Rest());
    if (words.count != 3) {
        // How the line goes on is not settled well enough to refuse a file for it.
        if (check.report.Verbose()) {
            check.report.ErrorAt(line.Place(), 6565, words.count + 1);
        }
        return;
    }
    const auto value = TakeTriple(check, line, tokens, name);
    if (!value) {
        return;
    }
    if (!value->HasTyp()) {
        check.report.ErrorAt(line.Place(words[0]), 1922, words[0]);
    } else if (check.report.Verbose() && (std::abs(value->min) > std::abs(value->typ) ||
                                          std::abs(value->max) < std::abs(value->typ))) {
        check.report.Caution(line.Place(), 6568, name, value->typ);
    }
}

// --- the whole module ---------------------------------------------------------------------------

constexpr EKeyword kPartKeywords[kEmdPartCount] = {
    EKeyword::NumberOfEmdPins,   EKeyword::EMDPinList,        EKeyword::EMDParts,
    EKeyword::EMDDesignatorList, EKeyword::DesignatorPinList, EKeyword::VoltageList,
    EKeyword::EMDGroup};

/// A keyword that needs what the one in front of it gives must stand behind it.
bool NeedsOrder(std::size_t part)
{
    return part == kEmdPinList || part == kEmdDesignators || part == kEmdDesignatorPins;
}

void CheckOrder(SCheck& check, const SEmd& module)
{
    std::size_t before = kEmdPartCount;
    for (std::size_t i = 0; i < kEmdPartCount; ++i) {
        if (module.places[i].line == 0) {
            continue;
        }
        if (before != kEmdPartCount && module.places[i].line < module.places[before].line) {
            const std::string_view keyword = KeywordText(kPartKeywords[i]);
            const std::string_view earlier = KeywordText(kPartKeywords[before]);
            if (NeedsOrder(i) && before + 1 == i) {
                check.report.ErrorAt(module.places[i], 6511, keyword, earlier);
            } else {
                check.report.Caution(module.places[i], 6590, module.name, keyword, earlier);
            }
        }
        before = i;
    }
}

void CloseModule(SCheck& check)
{
    SEmd& module = OpenModule(check);
    const CPathScope scope(check.report, {{}, module.name, {}, {}});
    if (!check.state.Has(EKeyword::EmdManufacturer)) {
        check.report.WarningAt(module.place, 6507, KeywordText(EKeyword::EmdManufacturer),
                               module.name, "is missing");
    }
    RequireKeyword(check, EKeyword::NumberOfEmdPins);
    if (!check.state.Has(EKeyword::EMDPinList)) {
        check.report.ErrorAt(module.place, 6515, module.name);
    } else if (module.pinCount != 0 && module.pins.size() != module.pinCount) {
        check.report.ErrorAt(module.places[kEmdPinList], 6517, module.pins.size(), module.pinCount);
    }
    CheckOrder(check, module);
    CheckModuleParts(check);
}

void FinishModules(SCheck& check)
{
    if (check.state.fileType == EFileType::Emd && check.data.emds.empty()) {
        check.report.Error(6505, check.BaseName());
    }
    FinishEmdGroups(check);
}

void OpenGroup(SCheck& check, const SLine& line)
{
    NotePlace<kEmdGroups>(check, line);
    OpenEmdGroup(check, line);
}

constexpr SHandler kHandlers[] = {
    {EKeyword::BeginEMD, &OpenEmd, nullptr, nullptr},
    {EKeyword::EmdManufacturer, &OpenMaker, nullptr, nullptr},
    {EKeyword::EmdDescription, &OpenDescription, nullptr, nullptr},
    {EKeyword::NumberOfEmdPins, &OpenPinNumber, nullptr, nullptr},
    {EKeyword::EMDPinList, &NotePlace<kEmdPinList>, &TakePinRow, nullptr},
    {EKeyword::EndEMDPinList, nullptr, nullptr, nullptr},
    {EKeyword::EMDParts, &NotePlace<kEmdParts>, &TakePartRow, nullptr},
    {EKeyword::EndEMDParts, nullptr, nullptr, nullptr},
    {EKeyword::EMDDesignatorList, &NotePlace<kEmdDesignators>, &TakeNamedDesignator, nullptr},
    {EKeyword::EndEMDDesignatorList, nullptr, nullptr, nullptr},
    {EKeyword::DesignatorPinList, &NotePlace<kEmdDesignatorPins>, &TakeDesignatorPinRow, nullptr},
    {EKeyword::EndDesignatorPinList, nullptr, nullptr, nullptr},
    {EKeyword::VoltageList, &NotePlace<kEmdVoltages>, &TakeVoltageRow, nullptr},
    {EKeyword::EndVoltageList, nullptr, nullptr, nullptr},
    {EKeyword::EMDGroup, &OpenGroup, &TakeEmdGroupRow, &CloseEmdGroup},
    {EKeyword::EndEMDGroup, nullptr, nullptr, nullptr},
    {EKeyword::EndEMD, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Emd, &CloseModule}};

} // namespace

const SFamily kEmdFamily = {"emd", kHandlers, kSections, &FinishModules};

} // namespace zov::ibischk
