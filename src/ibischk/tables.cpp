// SPDX-License-Identifier: Apache-2.0
#include "ibischk/tables.h"

#include "base/Text.h"
#include "ibischk/mdlparts.h"

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

void CheckRowCount(SCheck& check, SPlace place, std::size_t count, std::size_t most, int fewCode,
                   int manyCode)
{
    constexpr std::size_t kLeast = 2;
    const std::string_view keyword = check.report.Path().table;
    if (count < kLeast) {
        check.report.ErrorAt(place, fewCode, keyword, count, kLeast);
    } else if (count > most) {
        check.report.ErrorAt(place, manyCode, keyword, count, most);
    }
}

void CheckColumnEnds(SCheck& check, SPlace place, const std::vector<double> (&columns)[3], int code)
{
    for (std::size_t c = 0; c < 3; ++c) {
        const std::vector<double>& column = columns[c];
        if (column.empty() || (STriple::Has(column.front()) && STriple::Has(column.back()))) {
            continue;
        }
        if (c == 0 || HasNumbers(column)) {
            check.report.ErrorAt(place, code, check.report.Path().table, CornerName(c));
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
