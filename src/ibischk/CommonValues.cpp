// SPDX-License-Identifier: Apache-2.0
// Numbers, triples, rows and sub-parameters with their reports.
#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"

#include <cassert>

namespace zov::ibischk {

namespace {

void ReportFlags(SCheck& check, std::string_view what, std::string_view token, SPlace place,
                 std::uint8_t flags)
{
    if ((flags & kDigitsInScale) != 0) {
        check.report.WarningAt(place, 1910, KeywordText(check.state.current), what, token);
    }
    if ((flags & kCapitalScale) != 0) {
        check.report.WarningAt(place, 1931, token);
    }
    if ((flags & kExponentAndScale) != 0) {
        check.report.NoteAt(place, 1932, token);
    }
}

} // namespace

std::optional<double> TakeNumber(SCheck& check, std::string_view what, std::string_view token,
                                 SPlace place)
{
    if (token.empty()) {
        check.report.ErrorAt(place, 1923);
        return std::nullopt;
    }
    SNumber number;
    if (ReadNumber(token, number) != ENumber::Good) {
        check.report.ErrorAt(place, 1922, token);
        return std::nullopt;
    }
    if (number.flags != 0) {
        ReportFlags(check, what, token, place, number.flags);
    }
    return number.value;
}

std::optional<double> TakeNumberOrNa(SCheck& check, std::string_view what, std::string_view token,
                                     SPlace place)
{
    return IsNa(token) ? kAbsent : TakeNumber(check, what, token, place);
}

std::optional<std::size_t> TakeCount(SCheck& check, std::string_view token, SPlace place)
{
    if (token.empty()) {
        check.report.ErrorAt(place, 1923);
        return std::nullopt;
    }
    const auto value = ParseInt(token);
    if (!value || *value <= 0) {
        check.report.ErrorAt(place, 1922, token);
        return std::nullopt;
    }
    return static_cast<std::size_t>(*value);
}

bool ReportRow(SCheck& check, const SLine& line, const SRow& row)
{
    bool good = true;
    for (std::size_t i = 0; i < row.count && i < SRow::kMax; ++i) {
        const std::string_view token = row.token[i];
        if ((row.naMask >> i & 1U) == 0) {
            good = TakeNumber(check, "table", token, line.Place(token)).has_value() && good;
        }
    }
    return good;
}

std::optional<STriple> TakeTriple(SCheck& check, const SLine& line, CTokens& tokens,
                                  std::string_view name)
{
    double columns[3] = {kAbsent, kAbsent, kAbsent};
    bool good = true;
    for (double& column : columns) {
        const std::string_view token = tokens.Next();
        if (token.empty()) {
            check.report.ErrorAt(line.Place(), 1933, name);
            return std::nullopt;
        }
        const auto value = TakeNumberOrNa(check, name, token, line.Place(token));
        good = good && value;
        column = value.value_or(kAbsent);
    }
    ReportExtra(check, line, tokens, name);
    if (!good) {
        return std::nullopt;
    }
    return STriple{columns[0], columns[1], columns[2]};
}

void CheckMagnitudeOrder(SCheck& check, const STriple& triple, std::string_view name, SPlace place)
{
    // Comparisons with an absent column are false.
    if (triple.min > triple.typ || triple.typ > triple.max || triple.min > triple.max) {
        check.report.WarningAt(place, 1949, name);
    }
}

void ReportExtra(SCheck& check, const SLine& line, const CTokens& tokens, std::string_view behind)
{
    if (!tokens.AtEnd()) {
        check.report.WarningAt(line.Place(tokens.Rest()), 1934, tokens.Rest(), behind);
    }
}

namespace {

std::optional<std::size_t> FindRow(std::span<const SSubParameter> rows, std::string_view name,
                                   ESpelling spelling)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (spelling == ESpelling::Exact ? rows[i].name == name
                                         : EqualsNoCase(rows[i].name, name)) {
            return i;
        }
    }
    return std::nullopt;
}

void CheckEquals(SCheck& check, const SSubParameter& row, bool found, SPlace place)
{
    if (row.equals == EEquals::With && !found) {
        check.report.WarningAt(place, 1941, row.name, "needs");
    } else if (row.equals == EEquals::Without && found) {
        check.report.WarningAt(place, 1941, row.name, "takes no");
    }
}

} // namespace

std::optional<std::size_t> TakeSubParameter(SCheck& check, const SLine& line, CTokens& tokens,
                                            std::span<const SSubParameter> rows,
                                            std::uint64_t& seen, ESpelling spelling)
{
    assert(rows.size() <= 64);
    const std::string_view name = tokens.NextName();
    const SPlace place = line.Place();
    const std::string_view keyword = KeywordText(check.state.current);
    const auto found = FindRow(rows, name, spelling);
    if (!found) {
        check.report.ErrorAt(place, 1943, name, keyword);
        return std::nullopt;
    }
    const SSubParameter& row = rows[*found];
    if (!check.state.AtLeast(row.since)) {
        if (row.tooEarlyCode != 0) {
            check.report.ErrorAt(place, row.tooEarlyCode);
        } else {
            check.report.ErrorAt(place, 1952, name, keyword, VersionText(row.since));
        }
        return std::nullopt;
    }
    if (row.name != name) {
        check.report.NoteAt(place, 1945, name, row.name);
    }
    CheckEquals(check, row, tokens.TakeEquals(), place);
    const std::uint64_t bit = std::uint64_t{1} << *found;
    if ((seen & bit) != 0 && row.occurs == EOccurs::Once) {
        check.report.ErrorAt(place, 1942, row.name, keyword);
    }
    seen |= bit;
    return found;
}

} // namespace zov::ibischk
