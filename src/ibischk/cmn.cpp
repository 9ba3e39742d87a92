// SPDX-License-Identifier: Apache-2.0
#include "ibischk/cmn.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kPathLimit = 1024;
constexpr std::size_t kExtensionLength = 4;

void ReportExtension(CReport& report, std::string_view name, EFileType type)
{
    switch (type) {
    case EFileType::Ibs:
        report.Error(1900);
        break;
    case EFileType::Pkg:
        report.Error(1903);
        break;
    case EFileType::Ebd:
        report.Error(1902);
        break;
    default:
        report.Error(1924, name, ExtensionOf(type));
        break;
    }
}

/// The text behind "[IBIS Ver]" on the first keyword line; none when that is another keyword.
std::optional<std::string_view> VersionWord(std::string_view bytes)
{
    constexpr std::string_view kNames[] = {"[IBIS Ver]", "[IBIS_Ver]"};
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.find('\n'), bytes.size());
        CTokens line(bytes.substr(0, length));
        bytes.remove_prefix(std::min(length + 1, bytes.size()));
        const std::string_view text = line.Rest();
        if (text.empty() || text.front() != '[') {
            continue;
        }
        for (const std::string_view name : kNames) {
            if (StartsWithNoCase(text, name)) {
                std::string_view value = Trim(text.substr(name.size()));
                return value.substr(0, value.find_first_of(" \t|"));
            }
        }
        return std::nullopt;
    }
    return std::nullopt;
}

constexpr SLimits kLimits21 = {80, 8, 5, 20, 20, 15};
constexpr SLimits kLimits32 = {80, 20, 5, 20, 20, 15};
constexpr SLimits kLimits42 = {120, 40, 5, 40, 40, 15};
// From 7.0 a signal name may serve as bus label, and longer pin names are common.
constexpr SLimits kLimits70 = {1024, 64, 8, 40, 40, 40};

} // namespace

std::optional<std::string> NameWithExtension(CReport& report, std::string_view name, EFileType type)
{
    const std::string_view extension = ExtensionOf(type);
    if (extension.empty()) {
        return std::string(name);
    }
    if (name.find('.') == std::string_view::npos) {
        if (name.size() + kExtensionLength > kPathLimit) {
            report.Error(1901);
            return std::nullopt;
        }
        return std::string(name).append(extension);
    }
    if (!EndsWithNoCase(name, extension)) {
        ReportExtension(report, name, type);
        return std::nullopt;
    }
    return std::string(name);
}

EVersion DetectVersion(std::string_view bytes)
{
    const auto word = VersionWord(bytes);
    if (!word || word->empty()) {
        return EVersion::None;
    }
    // Up to 5 only the digit in front counts; later versions are exact.
    switch (word->front()) {
    case '2':
        return EVersion::V21;
    case '3':
        return EVersion::V32;
    case '4':
        return EVersion::V42;
    case '5':
        return EVersion::V51;
    default:
        break;
    }
    struct SExact
    {
        std::string_view text;
        EVersion version;
    };
    constexpr SExact kExact[] = {{"6", EVersion::V60},   {"6.0", EVersion::V60},
                                 {"6.1", EVersion::V61}, {"7", EVersion::V70},
                                 {"7.0", EVersion::V70}, {"7.1", EVersion::V71},
                                 {"7.2", EVersion::V72}};
    const auto* row = std::ranges::find(kExact, *word, &SExact::text);
    return row == std::end(kExact) ? EVersion::None : row->version;
}

std::string_view SCheck::Folder() const
{
    const std::size_t slash = path.find_last_of("/\\");
    return std::string_view(path).substr(0, slash == std::string::npos ? 0 : slash + 1);
}

std::string_view SCheck::BaseName() const
{
    return std::string_view(path).substr(Folder().size());
}

std::string SCheck::PathOf(std::string_view named) const
{
    return std::string(Folder()).append(named);
}

bool ReferencedFileExists(SCheck& check, std::string_view name)
{
    return check.files.Exists(check.PathOf(name));
}

std::optional<std::vector<SIndexEntry>> IndexReferenced(SCheck& check, std::string_view name)
{
    const auto bytes = check.files.Read(check.PathOf(name));
    if (!bytes) {
        return std::nullopt;
    }
    std::vector<SIndexEntry> entries;
    std::string_view rest = *bytes;
    for (std::size_t line = 1; !rest.empty(); ++line) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        const std::string_view text = rest.substr(0, length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (text.empty() || text.front() != '[') {
            continue;
        }
        const std::size_t close = text.find(']');
        if (close == std::string_view::npos) {
            continue;
        }
        const EKeyword keyword = FindKeyword(text.substr(1, close - 1));
        std::string_view behind = text.substr(close + 1);
        behind = Trim(behind.substr(0, behind.find('|')));
        if (keyword != EKeyword::NotKey) {
            entries.push_back({keyword, behind, line});
        }
    }
    return entries;
}

const SLimits& LimitsOf(EVersion version)
{
    if (version >= EVersion::V70) {
        return kLimits70;
    }
    if (version >= EVersion::V42) {
        return kLimits42;
    }
    return version >= EVersion::V32 ? kLimits32 : kLimits21;
}

std::string_view LimitText(SCheck& check, std::string_view what, std::string_view text,
                           std::size_t limit, SPlace place)
{
    if (text.size() > limit) {
        check.report.WarningAt(place, 1912, what, text, limit);
        text = text.substr(0, limit);
    }
    return text;
}

bool LimitName(SCheck& check, std::string_view what, std::string_view name, std::size_t limit,
               SPlace place)
{
    if (name.size() > limit) {
        check.report.ErrorAt(place, 1914, what, name, limit);
        return false;
    }
    return true;
}

bool IsReservedWord(std::string_view name, EVersion version)
{
    constexpr std::string_view kWords[] = {"POWER", "GND", "NC", "NA"};
    return std::ranges::any_of(
               kWords, [name](std::string_view word) { return EqualsNoCase(name, word); }) ||
           (version >= EVersion::V42 && EqualsNoCase(name, "CIRCUITCALL"));
}

std::string_view TakeName(SCheck& check, const SLine& line, std::size_t limit, EReserved reserved)
{
    const std::string_view keyword = KeywordText(check.state.current);
    CTokens tokens(line.text);
    const std::string_view name = tokens.Next();
    if (name.empty()) {
        check.report.ErrorAt(check.state.keywordPlace, 1913, keyword);
        return name;
    }
    if (!tokens.AtEnd()) {
        check.report.ErrorAt(line.Place(tokens.Rest()), 1939, keyword, tokens.Rest());
    }
    LimitName(check, keyword, name, limit, line.Place(name));
    if (reserved == EReserved::Refused && IsReservedWord(name, check.state.version)) {
        check.report.ErrorAt(line.Place(name), 1916, name);
    }
    return name;
}

std::string_view TakeText(SCheck& check, const SLine& line, std::size_t limit)
{
    const std::string_view keyword = KeywordText(check.state.current);
    if (line.text.empty()) {
        check.report.ErrorAt(check.state.keywordPlace, 1913, keyword);
        return line.text;
    }
    return LimitText(check, keyword, line.text, limit, line.Place());
}

std::size_t CheckHeadings(SCheck& check, const SLine& line,
                          std::span<const std::string_view> headings, std::size_t required)
{
    CTokens tokens(line.text);
    std::size_t good = 0;
    for (; good < headings.size() && !tokens.AtEnd(); ++good) {
        const std::string_view found = tokens.Next();
        if (!EqualsNoCase(found, headings[good])) {
            check.report.ErrorAt(line.Place(found), 1946, KeywordText(check.state.current),
                                 headings[good], found);
            return good;
        }
    }
    if (good < required) {
        check.report.ErrorAt(check.state.keywordPlace, 1951, KeywordText(check.state.current),
                             headings[good]);
    }
    ReportExtra(check, line, tokens, KeywordText(check.state.current));
    return good;
}

bool RequireKeyword(SCheck& check, EKeyword code)
{
    if (check.state.Has(code)) {
        return true;
    }
    check.report.ErrorAt(check.state.sectionPlace, 1915, KeywordText(code), check.BaseName());
    return false;
}

void ReportUnresolved(SCheck& check, const CNameIndex& names, std::string_view name, SPlace place,
                      int code)
{
    if (names.FindNoCase(name)) {
        check.report.ErrorAt(place, 1950, name);
    } else {
        check.report.ErrorAt(place, code, name);
    }
}

} // namespace zov::ibischk
