// SPDX-License-Identifier: Apache-2.0
#include "ibischk/hdr.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

/// The header is over with the first section. What identifies the file must not come later.
void CheckPosition(SCheck& check, EReport severity)
{
    if (check.state.bodySeen) {
        check.report.At(severity, check.state.keywordPlace, 1017, KeywordText(check.state.current));
    }
}

/// A version that only its first digit maps to one that is checked may be none that was published.
void CheckPublished(SCheck& check, std::string_view version, SPlace place)
{
    constexpr std::string_view kPublished[] = {"2.0", "2.1", "3.0", "3.1", "3.2", "4.0",
                                               "4.1", "4.2", "5.0", "5.1", "6",   "6.0",
                                               "6.1", "7",   "7.0", "7.1", "7.2"};
    if (std::ranges::find(kPublished, version) == std::end(kPublished)) {
        check.report.NoteAt(place, 1011, version, VersionText(check.state.version));
    }
}

void OpenVersion(SCheck& check, const SLine& line)
{
    if (check.state.versionSeen) {
        check.report.ErrorAt(check.state.keywordPlace, 910);
        return;
    }
    check.state.versionSeen = true;
    CTokens tokens(line.text);
    const std::string_view version = tokens.Next();
    check.data.header.version = version;
    CheckPublished(check, version, line.Place(version));
    if (!tokens.AtEnd()) {
        check.report.WarningAt(line.Place(tokens.Rest()), 1012, tokens.Rest());
    }
}

/// Users rename files, so a name that differs is told but fails nothing.
void CheckActualName(SCheck& check, std::string_view name, SPlace place)
{
    const std::string_view last = name.substr(name.find_last_of('/') + 1);
    if (!EqualsNoCase(last, check.BaseName())) {
        check.report.WarningAt(place, 1014, name, check.BaseName());
    }
}

void OpenFileName(SCheck& check, const SLine& line)
{
    if (check.state.CountInFile(EKeyword::FileName) > 1) {
        check.report.ErrorAt(check.state.keywordPlace, 1009);
    }
    CheckPosition(check, EReport::Error);
    // Lengths are those of file names, not of other names.
    const std::string_view name = TakeName(check, line, std::string_view::npos, EReserved::Allowed);
    if (name.empty()) {
        return;
    }
    const SPlace place = line.Place(name);
    check.data.header.fileName = name;
    check.data.header.fileNamePlace = place;
    const std::string_view extension = ExtensionOf(check.state.fileType);
    if (!EndsWithNoCase(name, extension)) {
        check.report.ErrorAt(place, 1013, name, extension);
    }
    CheckFileName(check, name, EFileName::Declared, place);
    CheckActualName(check, name, place);
}

void OpenFileRev(SCheck& check, const SLine& line)
{
    CheckPosition(check, EReport::Error);
    const std::string_view revision = TakeText(check, line, std::string_view::npos);
    check.data.header.fileRev = revision;
    if (!revision.empty() && !IsDigit(revision.front())) {
        check.report.NoteAt(line.Place(), 1015, revision);
    }
}

/// Month and day can be taken for each other: two small numbers in front, and no word.
bool IsAmbiguousDate(std::string_view date)
{
    if (std::ranges::any_of(date, IsAlpha)) {
        return false;
    }
    int fields[2] = {};
    for (int& field : fields) {
        const std::size_t digit = date.find_first_of("0123456789");
        if (digit == std::string_view::npos) {
            return false;
        }
        date.remove_prefix(digit);
        field = LeadingInt(date);
        date.remove_prefix(std::min(date.find_first_not_of("0123456789"), date.size()));
    }
    return !date.empty() && fields[0] <= 12 && fields[1] <= 12 && fields[0] != fields[1];
}

void OpenDate(SCheck& check, const SLine& line)
{
    CheckPosition(check, EReport::Warning);
    if (line.text.empty()) {
        check.report.NoteAt(check.state.keywordPlace, 1018, KeywordText(EKeyword::Date));
        return;
    }
    check.data.header.date =
        LimitText(check, KeywordText(EKeyword::Date), line.text, kNameLimit, line.Place());
    if (IsAmbiguousDate(line.text)) {
        check.report.NoteAt(line.Place(), 1016, line.text);
    }
}

void OpenText(SCheck& check, const SLine& line)
{
    CheckPosition(check, EReport::Warning);
    check.data.header.textFound = !line.text.empty();
}

void TakeTextLine(SCheck& check, const SLine& /*line*/)
{
    check.data.header.textFound = true;
}

void CloseText(SCheck& check)
{
    if (!check.data.header.textFound) {
        check.report.NoteAt(check.state.keywordPlace, 1018, KeywordText(check.state.current));
    }
}

/// The section that a file of each type exists for.
EKeyword MainSection(EFileType type)
{
    switch (type) {
    case EFileType::Ibs:
        return EKeyword::Component;
    case EFileType::Pkg:
        return EKeyword::DefinePackageModel;
    case EFileType::Ebd:
        return EKeyword::BeginBoardDescription;
    default:
        return EKeyword::NotKey;
    }
}

void FinishHeader(SCheck& check)
{
    const EKeyword needed[] = {EKeyword::FileName, EKeyword::FileRev,
                               MainSection(check.state.fileType)};
    for (const EKeyword code : needed) {
        if (code != EKeyword::NotKey && check.state.CountInFile(code) == 0) {
            check.report.Error(1915, KeywordText(code), check.BaseName());
        }
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::IBISVer, &OpenVersion, nullptr, nullptr},
    {EKeyword::FileName, &OpenFileName, nullptr, nullptr},
    {EKeyword::FileRev, &OpenFileRev, nullptr, nullptr},
    {EKeyword::Date, &OpenDate, nullptr, nullptr},
    {EKeyword::Source, &OpenText, &TakeTextLine, &CloseText},
    {EKeyword::Notes, &OpenText, &TakeTextLine, &CloseText},
    {EKeyword::Disclaimer, &OpenText, &TakeTextLine, &CloseText},
    {EKeyword::Copyright, &OpenText, &TakeTextLine, &CloseText},
};

} // namespace

const SFamily kHdrFamily = {"hdr", kHandlers, {}, &FinishHeader};

} // namespace zov::ibischk
