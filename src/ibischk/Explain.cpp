// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Explain.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::string_view kTexts[] = {
#include "ibischk/explain/Framework.inc"
    ,
#include "ibischk/explain/Component.inc"
    ,
#include "ibischk/explain/Model.inc"
    ,
#include "ibischk/explain/Curves.inc"
    ,
#include "ibischk/explain/Package.inc"
    ,
#include "ibischk/explain/Module.inc"
    ,
#include "ibischk/explain/Ami.inc"
};

constexpr std::string_view kAnyFamily = "*";

/// How well the head of an entry, words with blanks between, fits a rule.
enum class EFit
{
    None,
    AnyFamily,
    Own
};

EFit FitOf(std::string_view head, std::string_view family, std::string_view id)
{
    EFit fit = EFit::None;
    for (const std::string_view name : Split(head, ' ')) {
        const std::size_t slash = name.find('/');
        if (slash == std::string_view::npos || name.substr(slash + 1) != id) {
            continue;
        }
        if (name.substr(0, slash) == family) {
            return EFit::Own;
        }
        fit = name.substr(0, slash) == kAnyFamily ? EFit::AnyFamily : fit;
    }
    return fit;
}

void AddLine(std::string& to, std::string_view text)
{
    to += to.empty() ? "" : "\n";
    to += text;
}

std::string* FieldOf(SExplanation& out, char mark)
{
    switch (mark) {
    case '=':
        return &out.meaning;
    case '?':
        return &out.causes;
    case '!':
        return &out.action;
    case '-':
        return &out.wrong;
    case '+':
        return &out.right;
    default:
        return nullptr;
    }
}

/// One walk over the texts: the best entry of the rule, and the family's reason.
struct SSearch
{
    std::string_view family;
    std::string_view id;
    EFit best = EFit::None;
    SExplanation found = {};
    std::string why = {};

    void Take(std::string_view text)
    {
        bool inFamily = false;
        bool inEntry = false;
        for (std::string_view line : Split(text, '\n')) {
            if (line.size() < 2) {
                continue;
            }
            const char mark = line.front();
            line.remove_prefix(2);
            if (mark == '@') {
                inFamily = line == family;
                const EFit fit = FitOf(line, family, id);
                inEntry = fit > best;
                if (inEntry) {
                    best = fit;
                    found = {};
                }
            } else if (mark == '*' && inFamily) {
                why = line;
            } else if (std::string* field = inEntry ? FieldOf(found, mark) : nullptr) {
                AddLine(*field, line);
            }
        }
    }
};

} // namespace

std::optional<SExplanation> Explain(std::string_view rule)
{
    const std::size_t slash = std::min(rule.find('/'), rule.size());
    SSearch search{rule.substr(0, slash), rule.substr(std::min(slash + 1, rule.size()))};
    for (const std::string_view text : kTexts) {
        search.Take(text);
    }
    if (search.best == EFit::None) {
        return std::nullopt;
    }
    search.found.why = search.why;
    search.found.meaning = ReplaceAll(search.found.meaning, "{family}", search.family);
    return search.found;
}

std::string RuleName(const SMessage& message)
{
    return std::string(FamilyOf(message.code)).append("/").append(message.rule);
}

std::vector<const SMessage*> FindMessages(std::string_view word)
{
    std::vector<const SMessage*> found;
    std::string_view digits = word;
    if (digits.size() > 1 && IsAlpha(digits.front())) {
        digits.remove_prefix(1);
    }
    if (!digits.empty() && std::ranges::all_of(digits, IsDigit)) {
        if (const SMessage* row = FindMessage(LeadingInt(digits)); row != nullptr) {
            found.push_back(row);
        }
        return found;
    }
    for (const SMessage& row : Catalogue()) {
        if (EqualsNoCase(RuleName(row), word)) {
            found.push_back(&row);
        }
    }
    return found;
}

} // namespace zov::ibischk
