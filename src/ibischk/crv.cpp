// SPDX-License-Identifier: Apache-2.0
#include "ibischk/crv.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/mdlparts.h"
#include "ibischk/tables.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kMaxRows = 100;
constexpr std::size_t kMaxVds = 100; ///< as many tables as a state may have

SCurve& OpenCurve(SCheck& check)
{
    return check.data.model.curves[check.data.model.curveCount - 1];
}

void OpenTable(SCheck& check, const SLine& line)
{
    check.data.model.NewCurve(check.state.current, check.state.keywordPlace);
    ReportExtra(check, line, CTokens(line.text), KeywordText(check.state.current));
}

void OpenSeriesTable(SCheck& check, const SLine& line)
{
    NoteSeriesElement(check, check.state.current);
    OpenTable(check, line);
}

void TakeRow(SCheck& check, const SLine& line)
{
    SRow row;
    if (!TakeTableRow(check, line, row, 1402)) {
        return;
    }
    SCurve& curve = OpenCurve(check);
    curve.voltage.push_back(row.value[0]);
    for (std::size_t c = 0; c < 3; ++c) {
        curve.current[c].push_back(row.value[c + 1]);
    }
    curve.line.push_back(static_cast<std::uint32_t>(line.line));
    curve.text.push_back(line.text);
}

void TakeVds(SCheck& check, const SLine& line)
{
    SCurve& curve = OpenCurve(check);
    CTokens tokens(line.text);
    tokens.NextName();
    if (!tokens.TakeEquals()) {
        check.report.WarningAt(line.Place(), 1941, "Vds", "needs");
    }
    const bool again = STriple::Has(curve.vds);
    const auto value = TakeSingle(check, line, tokens, "Vds");
    if (again) {
        check.report.ErrorAt(line.Place(), 2851);
    } else if (!curve.voltage.empty()) {
        check.report.ErrorAt(line.Place(), 1947, "Vds", KeywordText(check.state.current));
    }
    if (!value) {
        return;
    }
    curve.vds = *value;
    auto& states = check.data.model.series;
    if (*value == 0) {
        check.report.ErrorAt(line.Place(), 2852);
    } else if (!states.empty()) {
        std::vector<double>& known = states.back().vds;
        if (std::ranges::find(known, *value) != known.end()) {
            check.report.WarningAt(line.Place(), 2853, *value);
        } else if (!known.empty() && (known.front() > 0) != (*value > 0)) {
            check.report.WarningAt(line.Place(), 2854, *value, known.front());
        }
        if (known.size() < kMaxVds) {
            known.push_back(*value);
        }
    }
}

void TakeMosfetRow(SCheck& check, const SLine& line)
{
    if (EqualsNoCase(CTokens(line.text).NextName(), "Vds")) {
        TakeVds(check, line);
        return;
    }
    TakeRow(check, line);
}

/// Voltages rise or fall all the way; the first that does not is told.
int CheckVoltageOrder(SCheck& check, const SCurve& curve)
{
    const std::vector<double>& v = curve.voltage;
    const bool rises = v.back() > v.front();
    bool equalTold = false;
    for (std::size_t i = 1; i < v.size(); ++i) {
        if (v[i] == v[i - 1]) {
            if (!equalTold) {
                CDetails details;
                details.Add("row", static_cast<double>(i + 1)).Add("voltage", v[i]);
                check.report.Emit(EReport::Warning, {curve.line[i], 1}, 1406,
                                  {check.report.Path().table, v[i]}, details.All());
                equalTold = true;
            }
        } else if ((v[i] > v[i - 1]) != rises) {
            CDetails details;
            details.Add("row", static_cast<double>(i + 1))
                .Add("line", static_cast<double>(curve.line[i]))
                .Add("voltage", v[i])
                .Add("before", v[i - 1]);
            check.report.Emit(EReport::Error, {curve.line[i], 1}, 1407,
                              {check.report.Path().table, v[i]}, details.All());
            return 0;
        }
    }
    return v.back() == v.front() ? 0 : rises ? 1 : -1;
}

void CloseTable(SCheck& check)
{
    SCurve& curve = OpenCurve(check);
    CheckRowCount(check, curve.place, curve.voltage.size(), kMaxRows, 1403, 1404);
    CheckColumnEnds(check, curve.place, curve.current, 1405);
    if (curve.voltage.size() > 1) {
        curve.direction = CheckVoltageOrder(check, curve);
    }
    if (curve.keyword == EKeyword::SeriesMOSFET && !STriple::Has(curve.vds)) {
        check.report.ErrorAt(curve.place, 2850);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::Pulldown, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::Pullup, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::GNDClamp, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::POWERClamp, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::SeriesCurrent, &OpenSeriesTable, &TakeRow, &CloseTable},
    {EKeyword::SeriesMOSFET, &OpenSeriesTable, &TakeMosfetRow, &CloseTable},
    {EKeyword::ISSOPD, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::ISSOPU, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::SubmodelPulldown, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::SubmodelPullup, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::SubmodelGNDClamp, &OpenTable, &TakeRow, &CloseTable},
    {EKeyword::SubmodelPOWERClamp, &OpenTable, &TakeRow, &CloseTable},
};

} // namespace

const SFamily kCrvFamily = {"crv", kHandlers, {}, nullptr};

double SCurve::LastDigit(std::size_t row, std::size_t column) const
{
    SRow words;
    ScanRow(text[row], words);
    const std::string_view word = words.token[column + 1];
    // A bare "0" means no current at all; "0.000" is rounded like its neighbours.
    const bool exact = current[column][row] == 0 && word.find('.') == std::string_view::npos;
    return exact ? 0.0 : LastDigitOf(word);
}

std::optional<double> SCurve::At(double v, std::size_t column) const
{
    const std::vector<double>& i = current[column];
    std::optional<std::size_t> before;
    for (std::size_t row = 0; row < voltage.size(); ++row) {
        if (!STriple::Has(i[row])) {
            continue;
        }
        if (voltage[row] == v) {
            return i[row];
        }
        if (before && (voltage[*before] < v) != (voltage[row] < v)) {
            const double part = (v - voltage[*before]) / (voltage[row] - voltage[*before]);
            return i[*before] + part * (i[row] - i[*before]);
        }
        before = row;
    }
    return std::nullopt;
}

void SCurve::Clear(EKeyword of, SPlace at)
{
    keyword = of;
    place = at;
    vds = kAbsent;
    direction = 0;
    voltage.clear();
    line.clear();
    text.clear();
    for (auto& column : current) {
        column.clear();
    }
}

} // namespace zov::ibischk
