// SPDX-License-Identifier: Apache-2.0
#include "ibischk/sect.h"

#include "base/Text.h"
#include "ibischk/cmn.h"

#include <cmath>

namespace zov::ibischk {

namespace {

void SkipBlanks(std::string_view& rest)
{
    while (!rest.empty() && IsSpaceOrTab(rest.front())) {
        rest.remove_prefix(1);
    }
}

/// The word at the front, up to a blank, "=" or "/"; it stays.
std::string_view Word(std::string_view rest)
{
    return rest.substr(0, rest.find_first_of(" \t=/"));
}

bool IsAssigned(std::string_view rest, std::string_view word)
{
    rest.remove_prefix(word.size());
    SkipBlanks(rest);
    return !rest.empty() && rest.front() == '=';
}

/// The value behind `name =`; kAbsent after a report.
double TakeValue(SCheck& check, const SLine& line, std::string_view& rest, std::string_view name,
                 int base)
{
    rest.remove_prefix(name.size());
    SkipBlanks(rest);
    rest.remove_prefix(1);
    SkipBlanks(rest);
    const std::string_view token = Word(rest);
    rest.remove_prefix(token.size());
    const SPlace place = token.empty() ? line.Place() : line.Place(token);
    const auto value = TakeNumber(check, name, token, place);
    if (!value) {
        return kAbsent;
    }
    if (*value < 0) {
        check.report.ErrorAt(place, base + 3, name, token);
        return kAbsent;
    }
    return *value;
}

void BeginSection(SCheck& check, const SLine& line, SPath& path, double length, int base)
{
    if (path.inSection) {
        check.report.ErrorAt(line.Place(), base + 8, path.name);
    }
    path.section = {};
    path.section.length = length;
    path.section.place = line.Place();
    AddPathItem(path, EPathItem::Section);
    path.inSection = true;
    path.seen = 0;
    ++path.sections;
    if (!path.forks.empty()) {
        ++path.forks.back();
    }
}

void EndSection(SCheck& check, SPath& path, int base)
{
    path.inSection = false;
    const SSection& item = path.section;
    // A value that was refused is absent and was told already.
    if (std::isnan(item.length + item.l + item.r + item.c)) {
        return;
    }
    if (item.length == 0) {
        if (path.seen == 0) {
            check.report.WarningAt(item.place, base + 5);
        }
        return;
    }
    if (item.l <= 0 || item.c <= 0) {
        check.report.ErrorAt(item.place, base + 4, item.l, item.c);
        return;
    }
    constexpr double kLeastOhm = 1.0;
    constexpr double kMostOhm = 1000.0;
    constexpr double kMostDelayS = 10e-9;
    const double impedance = std::sqrt(item.l / item.c);
    const double delay = item.length * std::sqrt(item.l * item.c);
    if (impedance < kLeastOhm || impedance > kMostOhm || delay > kMostDelayS) {
        check.report.Caution(item.place, base + 9, path.name, impedance, delay);
    }
}

void TakeElement(SCheck& check, const SLine& line, std::string_view& rest, std::string_view word,
                 SPath& path, int base)
{
    const SPlace place = line.Place(word);
    const char letter = ToUpper(word.front());
    const double value = TakeValue(check, line, rest, word, base);
    if (!path.inSection) {
        check.report.ErrorAt(place, base + 1, word);
        return;
    }
    const int bit = letter == 'L' ? 1 : letter == 'R' ? 2 : 4;
    if ((path.seen & bit) != 0) {
        check.report.ErrorAt(place, base + 2, word);
    }
    path.seen = static_cast<std::uint8_t>(path.seen | bit);
    SSection& item = path.section;
    (letter == 'L' ? item.l : letter == 'R' ? item.r : item.c) = value;
}

void TakeFork(SCheck& check, const SLine& line, SPath& path, bool opens, int base)
{
    if (path.inSection) {
        check.report.ErrorAt(line.Place(), base + 8, path.name);
        path.inSection = false;
    }
    const EPathItem before = path.last;
    AddPathItem(path, opens ? EPathItem::Fork : EPathItem::Endfork);
    if (opens) {
        path.forks.push_back(0);
        return;
    }
    if (path.forks.empty()) {
        check.report.ErrorAt(line.Place(), base + 6, "Endfork", "Fork", path.name);
        return;
    }
    const std::size_t sections = path.forks.back();
    path.forks.pop_back();
    if (sections == 0) {
        check.report.ErrorAt(line.Place(), base + 7, path.name);
    } else if (before == EPathItem::Section && base == kPathRules) {
        check.report.WarningAt(line.Place(), base + 11, path.name);
    }
    if (!path.forks.empty()) {
        path.forks.back() += sections;
    }
}

bool IsElement(std::string_view word)
{
    return word.size() == 1 && std::string_view("LRClrc").find(word.front()) != word.npos;
}

/// In a path these words go on with something else; in a stub they are pin names like any.
bool IsPathWord(std::string_view word, int base)
{
    return base == kPathRules && (EqualsNoCase(word, "Pin") || EqualsNoCase(word, "Node"));
}

} // namespace

void AddPathItem(SPath& path, EPathItem kind)
{
    path.first = path.first == EPathItem::Nothing ? kind : path.first;
    path.last = kind;
}

void TakeSections(SCheck& check, const SLine& line, std::string_view& rest, SPath& path, int base)
{
    for (SkipBlanks(rest); !rest.empty(); SkipBlanks(rest)) {
        if (rest.front() == '/') {
            if (path.inSection) {
                EndSection(check, path, base);
            } else {
                check.report.ErrorAt(line.Place(rest), base + 1, "/");
            }
            rest.remove_prefix(1);
            continue;
        }
        const std::string_view word = Word(rest);
        if (EqualsNoCase(word, "Len") && IsAssigned(rest, word)) {
            const double length = TakeValue(check, line, rest, word, base);
            BeginSection(check, line, path, length, base);
        } else if (IsElement(word) && IsAssigned(rest, word)) {
            TakeElement(check, line, rest, word, path, base);
        } else if (EqualsNoCase(word, "Fork") || EqualsNoCase(word, "Endfork")) {
            TakeFork(check, line, path, word.size() == 4, base);
            rest.remove_prefix(word.size());
        } else if (path.inSection && IsPathWord(word, base)) {
            check.report.ErrorAt(line.Place(rest), base + 8, path.name);
            path.inSection = false;
            return;
        } else if (path.inSection) {
            // A "=" alone is taken too, or the loop would not go on.
            const std::size_t length = std::max<std::size_t>(word.size(), 1);
            check.report.ErrorAt(line.Place(rest), base + 1, rest.substr(0, length));
            rest.remove_prefix(length);
        } else {
            return;
        }
    }
}

void ClosePath(SCheck& check, SPath& path, int base)
{
    if (path.inSection) {
        check.report.ErrorAt(path.section.place, base + 8, path.name);
    }
    if (!path.forks.empty()) {
        check.report.ErrorAt(path.place, base + 6, "Fork", "Endfork", path.name);
    }
    if (path.sections == 0 && base == kStubRules) {
        check.report.ErrorAt(path.place, base + 10, path.name);
    }
}

} // namespace zov::ibischk
