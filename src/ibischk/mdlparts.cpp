// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mdlparts.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

bool LooksLikeValue(std::string_view text)
{
    return IsDigit(text.front()) || text.front() == '-' || text.front() == '+' ||
           text.front() == '.' || IsNa(CTokens(text).Next());
}

void CollectModels(SCheck& check, std::string_view model, std::vector<std::string_view>& names)
{
    names.push_back(model);
    if (const auto at = check.data.selectorNames.Find(model)) {
        for (const SSelectorRow& row : check.data.selectors[*at].rows) {
            names.push_back(row.model);
        }
    }
}

std::size_t CountPairs(const SCheck& check)
{
    // Only the last component still grows.
    const auto& components = check.data.components;
    return components.size() + check.data.selectors.size() +
           (components.empty() ? 0 : components.back().diffPins.size());
}

} // namespace

SModelInfo& OpenModel(SCheck& check)
{
    return check.data.models.back();
}

void RefuseData(SCheck& check, const SLine& line)
{
    if (LooksLikeValue(line.text)) {
        check.report.ErrorAt(line.Place(), 1948, KeywordText(check.state.current));
    } else {
        check.report.ErrorAt(line.Place(), 907, line.text);
    }
}

std::optional<STriple> TakeNamedTriple(SCheck& check, const SLine& line, CTokens& tokens,
                                       std::string_view name, int typCode)
{
    const auto triple = TakeTriple(check, line, tokens, name);
    if (triple && !triple->HasTyp()) {
        check.report.ErrorAt(line.Place(), typCode, name);
    }
    return triple;
}

std::optional<STriple> TakeKeywordTriple(SCheck& check, const SLine& line, int typCode)
{
    const std::string_view keyword = KeywordText(check.state.current);
    if (line.text.empty()) {
        check.report.ErrorAt(check.state.keywordPlace, 1913, keyword);
        return std::nullopt;
    }
    CTokens tokens(line.text);
    return TakeNamedTriple(check, line, tokens, keyword, typCode);
}

std::string_view TakeWord(SCheck& check, const SLine& line, CTokens& tokens, std::string_view name)
{
    const std::string_view word = tokens.Next();
    if (word.empty()) {
        check.report.ErrorAt(line.Place(), 1944, KeywordText(check.state.current), 0, "1");
    } else {
        ReportExtra(check, line, tokens, name);
    }
    return word;
}

std::optional<double> TakeSingle(SCheck& check, const SLine& line, CTokens& tokens,
                                 std::string_view name)
{
    const std::string_view word = tokens.Next();
    const auto value =
        TakeNumber(check, name, word, word.empty() ? line.Place() : line.Place(word));
    ReportExtra(check, line, tokens, name);
    return value;
}

CDetails& CDetails::Add(std::string_view name, double value)
{
    m_all.push_back({name, STriple::Has(value) ? FormatG(value, 9) : "NA"});
    return *this;
}

CDetails& CDetails::Add(std::string_view name, std::string_view value)
{
    m_all.push_back({name, std::string(value)});
    return *this;
}

std::string_view CornerName(std::size_t column)
{
    constexpr std::string_view kNames[] = {"typ", "min", "max"};
    return kNames[column];
}

bool SRails::Complete() const
{
    return STriple::Has(pullup) && STriple::Has(pulldown) && STriple::Has(powerClamp) &&
           STriple::Has(gndClamp);
}

double SRails::Low() const
{
    return std::min({pullup, pulldown, powerClamp, gndClamp});
}

double SRails::High() const
{
    return std::max({pullup, pulldown, powerClamp, gndClamp});
}

SRails RailsOf(const SModel& model, std::size_t column)
{
    const auto pick = [column](const STriple& own, double otherwise) {
        return own.HasTyp() ? own.Column(column) : otherwise;
    };
    const double range = model.voltageRange.Column(column);
    return {pick(model.pullupReference, range), pick(model.pulldownReference, 0.0),
            pick(model.powerClampReference, range), pick(model.gndClampReference, 0.0)};
}

bool InDiffPair(SCheck& check, std::string_view model)
{
    SDiffModels& diff = check.data.model.diffModels;
    const std::size_t count = CountPairs(check);
    if (diff.counted != count) {
        diff.counted = count;
        diff.names.clear();
        for (const SComponent& component : check.data.components) {
            for (const SDiffPin& pair : component.diffPins) {
                for (const std::string_view name : {pair.pin, pair.inverting}) {
                    if (const SPin* pin = component.FindPin(name)) {
                        CollectModels(check, pin->model, diff.names);
                    }
                }
            }
        }
        std::ranges::sort(diff.names);
    }
    return std::ranges::binary_search(diff.names, model);
}

} // namespace zov::ibischk
