// SPDX-License-Identifier: Apache-2.0
#include "ibischk/crv.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

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

void TellOrder(SCheck& check, const SCurve& curve, std::size_t row)
{
    const std::vector<double>& v = curve.voltage;
    const auto [low, high] = std::ranges::minmax(v);
    CDetails details = PointOf(curve, 0, row);
    details.Add("line-before", static_cast<double>(curve.line[row - 1]))
        .Add("voltage-before", v[row - 1]);
    AddPart(details, std::abs(v[row] - v[row - 1]), "part-of-sweep", high - low);
    AddSum(details, check, curve, 0);
    check.report.Emit(EReport::Error, {curve.line[row], 1}, 1407,
                      {check.report.Path().table, v[row]}, details.All());
}

/// Voltages rise or fall all the way; the first that does not is told, equal ones when the model
/// ends.
int CheckVoltageOrder(SCheck& check, SCurve& curve)
{
    const std::vector<double>& v = curve.voltage;
    const bool rises = v.back() > v.front();
    for (std::size_t i = 1; i < v.size(); ++i) {
        if (v[i] == v[i - 1]) {
            curve.equalRow = curve.equalRow == 0 ? i : curve.equalRow;
        } else if ((v[i] > v[i - 1]) != rises) {
            TellOrder(check, curve, i);
            return 0;
        }
    }
    return v.back() == v.front() ? 0 : rises ? 1 : -1;
}

void CloseTable(SCheck& check)
{
    SCurve& curve = OpenCurve(check);
    const STableAxis axis = {"voltage", curve.place, curve.voltage, curve.line};
    CheckRowCount(check, axis, kMaxRows, 1403, 1404);
    CheckColumnEnds(check, axis, curve.current, 1405);
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
    equalRow = 0;
    direction = 0;
    voltage.clear();
    line.clear();
    text.clear();
    for (auto& column : current) {
        column.clear();
    }
}

} // namespace zov::ibischk
