// SPDX-License-Identifier: Apache-2.0
#include "ibischk/ebdmdl.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <set>

namespace zov::ibischk {

namespace {

SBoard& Open(SCheck& check)
{
    return check.data.boards.back();
}

/// Pins of rails and open pins need no path.
bool NeedsPath(const SBoardPin& pin)
{
    return !StartsWithNoCase(pin.signal, "POWER") && !StartsWithNoCase(pin.signal, "GND") &&
           !IsNc(pin.signal);
}

// --- header and pins ----------------------------------------------------------------------------

void OpenBoard(SCheck& check, const SLine& line)
{
    SBoard board;
    board.name = TakeText(check, line, kNameLimit);
    board.place = check.state.keywordPlace;
    check.report.Path().model = board.name;
    if (!check.data.boards.empty()) {
        check.report.ErrorAt(board.place, 4300, board.name);
    }
    check.data.boards.push_back(std::move(board));
}

void OpenMaker(SCheck& check, const SLine& line)
{
    TakeText(check, line, kNameLimit);
}

/// Tells that the current keyword should stand in front of one that is there already.
void CheckBefore(SCheck& check, EKeyword later)
{
    if (check.state.Has(later)) {
        check.report.ErrorAt(check.state.keywordPlace, 4301, KeywordText(check.state.current),
                             KeywordText(later));
    }
}

void OpenPinCount(SCheck& check, const SLine& line)
{
    CheckBefore(check, EKeyword::PinList);
    CTokens tokens(line.text);
    const std::string_view word = tokens.Next();
    const SPlace place = word.empty() ? check.state.keywordPlace : line.Place(word);
    Open(check).pinCount = TakeCount(check, word, place).value_or(0);
    ReportExtra(check, line, tokens, KeywordText(check.state.current));
}

void OpenPinList(SCheck& check, const SLine& line)
{
    constexpr std::string_view kHeadings[] = {"signal_name"};
    CheckHeadings(check, line, kHeadings, 1);
    CheckBefore(check, EKeyword::PathDescription);
}

void TakePinRow(SCheck& check, const SLine& line)
{
    SBoard& board = Open(check);
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 4303, words.count);
        if (words.count < 2) {
            return;
        }
    }
    LimitText(check, "Pin", words[0], kBoardPinLimit, line.Place());
    LimitText(check, "Signal_name", words[1], LimitsOf(check.state.version).signal,
              line.Place(words[1]));
    if (board.pinNames.Add(words[0], board.pins.size())) {
        check.report.ErrorAt(line.Place(), 4304, words[0]);
        return;
    }
    board.pins.push_back({words[0], words[1], line.Place()});
}

void ClosePinList(SCheck& check)
{
    const SBoard& board = Open(check);
    if (board.pinCount != 0 && board.pins.size() != board.pinCount) {
        check.report.ErrorAt(check.state.keywordPlace, 4302, board.pins.size(), board.pinCount);
    }
}

// --- paths --------------------------------------------------------------------------------------

void OpenPath(SCheck& check, const SLine& line)
{
    SBoard& board = Open(check);
    board.path = {};
    board.path.name = TakeText(check, line, kNameLimit);
    board.path.place = check.state.keywordPlace;
    board.pinsInPath = 0;
    board.nodesInPath = 0;
    ++board.paths;
    if (!board.path.name.empty() && board.pathNames.Add(board.path.name, board.paths)) {
        check.report.WarningAt(board.path.place, 4305, board.path.name);
    }
}

void TakePathPin(SCheck& check, const SLine& line, std::string_view name)
{
    SBoard& board = Open(check);
    ++board.pinsInPath;
    const auto at = board.pinNames.Find(name);
    if (!at) {
        check.report.ErrorAt(line.Place(name), 4307, name, board.path.name);
        return;
    }
    SBoardPin& pin = board.pins[*at];
    if (pin.lastPath != board.paths) {
        ++pin.paths;
        pin.lastPath = board.paths;
    }
}

void TakePathNode(SCheck& check, const SLine& line, std::string_view name)
{
    SBoard& board = Open(check);
    ++board.nodesInPath;
    const std::size_t point = name.find('.');
    if (point == std::string_view::npos || point == 0 || point + 1 == name.size() ||
        name.find('.', point + 1) != std::string_view::npos) {
        check.report.ErrorAt(line.Place(name), 4309, name);
        return;
    }
    if (const auto path = board.nodeNames.Add(name, board.paths); path && *path != board.paths) {
        check.report.ErrorAt(line.Place(name), 4311, name);
        return;
    }
    board.nodes.push_back({name.substr(0, point), name.substr(point + 1), line.Place(name)});
}

/// Takes a Pin or Node with its name; anything else is told and passed over.
void TakeEnd(SCheck& check, const SLine& line, CTokens& tokens)
{
    SPath& path = Open(check).path;
    const std::string_view word = tokens.Next();
    const bool isPin = EqualsNoCase(word, "Pin");
    if (!isPin && !EqualsNoCase(word, "Node")) {
        check.report.ErrorAt(line.Place(word), 4321, word, path.name);
        return;
    }
    const bool touches = path.last == EPathItem::Pin || path.last == EPathItem::Node;
    AddPathItem(path, isPin ? EPathItem::Pin : EPathItem::Node);
    const std::string_view name = tokens.Next();
    if (name.empty()) {
        check.report.ErrorAt(line.Place(word), 4320, word, path.name);
        return;
    }
    if (touches) {
        check.report.WarningAt(line.Place(word), 4322, name, path.name);
    }
    isPin ? TakePathPin(check, line, name) : TakePathNode(check, line, name);
}

void TakePathLine(SCheck& check, const SLine& line)
{
    std::string_view rest = line.text;
    TakeSections(check, line, rest, Open(check).path, kPathRules);
    while (!rest.empty()) {
        CTokens tokens(rest);
        TakeEnd(check, line, tokens);
        rest = tokens.Rest();
        TakeSections(check, line, rest, Open(check).path, kPathRules);
    }
}

void ClosePathDescription(SCheck& check)
{
    SBoard& board = Open(check);
    SPath& path = board.path;
    ClosePath(check, path, kPathRules);
    if (path.first != EPathItem::Pin && path.first != EPathItem::Node) {
        check.report.ErrorAt(path.place, 4306, path.name);
    } else if (board.nodesInPath == 0 && board.pinsInPath < 2) {
        check.report.NoteAt(path.place, 4312, path.name);
    }
}

// --- reference designators ----------------------------------------------------------------------

bool CanBePart(std::string_view file, EVersion version)
{
    return EndsWithNoCase(file, ExtensionOf(EFileType::Ibs)) ||
           EndsWithNoCase(file, ExtensionOf(EFileType::Ebd)) ||
           (version >= EVersion::V71 && EndsWithNoCase(file, ExtensionOf(EFileType::Emd)));
}

void CheckMapFile(SCheck& check, const SLine& line, std::string_view file)
{
    const SPlace place = line.Place(file);
    if (!CanBePart(file, check.state.version)) {
        check.report.ErrorAt(place, 4315, file,
                             check.state.AtLeast(EVersion::V71) ? ".ibs, .ebd or .emd"
                                                                : ".ibs or .ebd");
        return;
    }
    if (!CheckFileName(check, file, EFileName::Referenced, place)) {
        return;
    }
    if (check.data.partFiles.LeadsBack(check, file)) {
        check.report.ErrorAt(place, 4319, file);
    }
}

void TakeMapRow(SCheck& check, const SLine& line)
{
    SBoard& board = Open(check);
    const SWords words(line.text);
    if (words.count != 3) {
        check.report.ErrorAt(line.Place(), 4313, words.count);
        if (words.count < 3) {
            return;
        }
    }
    LimitText(check, "Reference designator", words[0], kDesignatorLimit, line.Place());
    CheckMapFile(check, line, words[1]);
    if (board.partNames.Add(words[0], board.parts.size())) {
        check.report.ErrorAt(line.Place(), 4314, words[0]);
        return;
    }
    board.parts.push_back({words[0], words[1], words[2], line.Place()});
}

// --- the whole board ----------------------------------------------------------------------------

void CheckPinPaths(SCheck& check, const SBoard& board)
{
    for (const SBoardPin& pin : board.pins) {
        if (NeedsPath(pin) ? pin.paths != 1 : pin.paths > 1) {
            check.report.ErrorAt(pin.place, 4308, pin.name, pin.signal, pin.paths,
                                 NeedsPath(pin) ? "one" : "at most one");
        }
    }
}

/// The part of a row; null when its file can't be read or doesn't hold it.
const SPart* PartOf(SCheck& check, const SBoardPart& row)
{
    return CanBePart(row.file, check.state.version)
               ? check.data.partFiles.Of(check, row.file).Find(row.component)
               : nullptr;
}

void CheckNodes(SCheck& check, SBoard& board)
{
    for (const SNodeUse& node : board.nodes) {
        const auto row = board.partNames.Find(node.designator);
        if (!row) {
            // Without any map the missing keyword was told.
            if (check.state.Has(EKeyword::ReferenceDesignatorMap)) {
                check.report.ErrorAt(node.place, 4310, node.designator);
            }
            continue;
        }
        SBoardPart& mapped = board.parts[*row];
        mapped.used = true;
        const SPart* part = PartOf(check, mapped);
        if (part != nullptr && !part->pins.empty() && !part->pinNames.Find(node.pin)) {
            check.report.WarningAt(node.place, 4323, node.pin, node.designator, mapped.component,
                                   mapped.file);
        }
    }
}

void CheckMap(SCheck& check, const SBoard& board)
{
    std::set<std::string_view> missing;
    for (const SBoardPart& row : board.parts) {
        if (!row.used) {
            check.report.WarningAt(row.place, 4318, row.designator);
        }
        if (!CanBePart(row.file, check.state.version)) {
            continue;
        }
        if (!check.data.partFiles.Of(check, row.file).readable) {
            // A module has many parts of one file: it is told once.
            if (missing.insert(row.file).second) {
                check.report.WarningAt(row.place, 4316, row.file);
            }
        } else if (PartOf(check, row) == nullptr) {
            check.report.WarningAt(row.place, 4317, row.file, row.component);
        }
    }
}

void CloseBoard(SCheck& check)
{
    constexpr EKeyword kNeeded[] = {EKeyword::BoardManufacturer, EKeyword::BoardNumberOfPins,
                                    EKeyword::PinList, EKeyword::PathDescription};
    SBoard& board = Open(check);
    const CPathScope scope(check.report, {{}, board.name, {}, {}});
    for (const EKeyword code : kNeeded) {
        RequireKeyword(check, code);
    }
    if (!board.nodes.empty()) {
        RequireKeyword(check, EKeyword::ReferenceDesignatorMap);
    }
    if (board.paths != 0) {
        CheckPinPaths(check, board);
    }
    CheckNodes(check, board);
    CheckMap(check, board);
}

constexpr SHandler kHandlers[] = {
    {EKeyword::BeginBoardDescription, &OpenBoard, nullptr, nullptr},
    {EKeyword::BoardManufacturer, &OpenMaker, nullptr, nullptr},
    {EKeyword::BoardNumberOfPins, &OpenPinCount, nullptr, nullptr},
    {EKeyword::PinList, &OpenPinList, &TakePinRow, &ClosePinList},
    {EKeyword::PathDescription, &OpenPath, &TakePathLine, &ClosePathDescription},
    {EKeyword::ReferenceDesignatorMap, nullptr, &TakeMapRow, nullptr},
    {EKeyword::EndBoardDescription, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Board, &CloseBoard}};

} // namespace

const SFamily kEbdmdlFamily = {"ebdmdl", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
