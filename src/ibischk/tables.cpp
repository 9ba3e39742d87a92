// SPDX-License-Identifier: Apache-2.0
#include "ibischk/tables.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/evidence.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zov::ibischk {

bool TakeTableRow(SCheck& check, const SLine& line, SRow& row, int naCode)
{
    constexpr std::size_t kColumns = 4;
    ScanRow(line.text, row);
    const bool firstNa = (row.naMask & 1U) != 0;
    if (row.Clean(kColumns) && !firstNa) {
        return true;
    }
    const std::string_view keyword = KeywordText(check.state.current);
    if (row.count != kColumns) {
        std::string_view words[1];
        check.report.ErrorAt(line.Place(), row.count < kColumns ? 1944 : 1953, keyword,
                             SplitTokens(line.text, words), "4");
        return false;
    }
    if (firstNa) {
        check.report.ErrorAt(line.Place(), naCode, keyword);
    }
    return ReportRow(check, line, row) && !firstNa;
}

namespace {

/// A table's rows by number, with the first that is too many.
CDetails RowsOf(std::string_view table, const STableAxis& axis, std::size_t limit, std::size_t off)
{
    CDetails details;
    details.Add("table", table).Add("corner", "typ, min, max");
    AddExtent(details, axis.line);
    if (axis.value.size() > limit) {
        details.Add("line-surplus", static_cast<double>(axis.line[limit]))
            .Add(axis.name, axis.value[limit]);
    } else if (!axis.value.empty()) {
        details.Add(axis.name, axis.value.front());
    }
    details.Add("size", FormatG(static_cast<double>(off), 9) + " rows")
        .Add("part-of-limit", static_cast<double>(off) / static_cast<double>(limit));
    return details;
}

void TellColumnEnd(SCheck& check, const STableAxis& axis, const std::vector<double>& column,
                   std::size_t c, int code)
{
    const std::size_t last = column.size() - 1;
    const SEnds ends = EndsOf(column);
    CDetails details;
    details.Add("table", check.report.Path().table).Add("corner", CornerName(c));
    AddExtent(details, axis.line);
    const std::size_t missing = STriple::Has(column.front()) ? last : 0;
    details.Add("line", static_cast<double>(axis.line[missing]))
        .Add(axis.name, axis.value[missing]);
    if (STriple::Has(ends.first)) {
        const double low = std::abs(axis.value[ends.firstRow] - axis.value.front());
        const double high = std::abs(axis.value[last] - axis.value[ends.lastRow]);
        const double span = std::abs(axis.value[last] - axis.value.front());
        details.Add("numbers-from", axis.value[ends.firstRow])
            .Add("numbers-to", axis.value[ends.lastRow]);
        AddPart(details, low + high, "part-of-sweep", span);
    }
    if (axis.name == "voltage") {
        AddNoSum(details, STriple::Has(ends.first)
                              ? "built: beyond its numbers the column goes on with its last slope"
                              : "built without this column, which has no numbers");
    }
    check.report.Emit(EReport::Error, axis.place, code, {check.report.Path().table, CornerName(c)},
                      details.All());
}

} // namespace

void CheckRowCount(SCheck& check, const STableAxis& axis, std::size_t most, int fewCode,
                   int manyCode)
{
    constexpr std::size_t kLeast = 2;
    const std::string_view keyword = check.report.Path().table;
    const std::size_t count = axis.value.size();
    if (count >= kLeast && count <= most) {
        return;
    }
    const bool few = count < kLeast;
    const std::size_t limit = few ? kLeast : most;
    CDetails details = RowsOf(keyword, axis, limit, few ? kLeast - count : count - most);
    if (axis.name == "voltage") {
        AddNoSum(details, few ? "built without this table: one row is no curve"
                              : "built: all rows are used");
    }
    check.report.Emit(EReport::Error, axis.place, few ? fewCode : manyCode, {keyword, count, limit},
                      details.All());
}

void CheckColumnEnds(SCheck& check, const STableAxis& axis, const std::vector<double> (&columns)[3],
                     int code)
{
    for (std::size_t c = 0; c < 3; ++c) {
        const std::vector<double>& column = columns[c];
        if (column.empty() || (STriple::Has(column.front()) && STriple::Has(column.back()))) {
            continue;
        }
        if (c == 0 || HasNumbers(column)) {
            TellColumnEnd(check, axis, column, c, code);
        }
    }
}

bool HasNumbers(const std::vector<double>& column)
{
    return std::ranges::any_of(column, STriple::Has);
}

SEnds EndsOf(const std::vector<double>& column)
{
    SEnds ends;
    const auto first = std::ranges::find_if(column, STriple::Has);
    if (first == column.end()) {
        return ends;
    }
    const auto last = std::find_if(column.rbegin(), column.rend(), STriple::Has);
    ends.first = *first;
    ends.last = *last;
    ends.firstRow = static_cast<std::size_t>(first - column.begin());
    ends.lastRow = static_cast<std::size_t>(column.rend() - last) - 1;
    return ends;
}

double LastDigitOf(std::string_view token)
{
    // The same text with all digits 0 but the last in front of exponent and suffix.
    std::string unit(token);
    std::size_t last = std::string::npos;
    for (std::size_t i = 0; i < unit.size(); ++i) {
        if (IsDigit(unit[i])) {
            unit[i] = '0';
            last = i;
        } else if (unit[i] != '.' && unit[i] != '-' && unit[i] != '+') {
            break;
        }
    }
    if (last == std::string::npos) {
        return 0.0;
    }
    unit[last] = '1';
    SNumber number;
    return ReadNumber(unit, number) == ENumber::Good ? std::abs(number.value) : 0.0;
}

} // namespace zov::ibischk
