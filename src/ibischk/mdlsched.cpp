// SPDX-License-Identifier: Apache-2.0
// [Driver Schedule].
#include "ibischk/mdlparts.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kColumns = 5;

bool Has(double delay)
{
    return STriple::Has(delay);
}

/// Delays of a row: rise on, rise off, fall on, fall off.
void CheckPattern(SCheck& check, const SScheduleRow& row)
{
    const double* const d = row.delay;
    if (std::ranges::none_of(row.delay, Has)) {
        check.report.ErrorAt(row.place, 1606, row.model);
        return;
    }
    for (const std::size_t edge : {0U, 2U}) {
        if (d[edge] == d[edge + 1]) {
            check.report.ErrorAt(row.place, 1608, row.model, d[edge]);
            return;
        }
    }
    // Known to work: on at both edges, or a pulse at one of them.
    const bool both = Has(d[0]) && !Has(d[1]) && Has(d[2]) && !Has(d[3]);
    const bool atRise = Has(d[0]) && Has(d[1]) && !Has(d[2]) && !Has(d[3]);
    const bool atFall = !Has(d[0]) && !Has(d[1]) && Has(d[2]) && Has(d[3]);
    // A driver that one edge switches on and the other off is common in open-drain steps.
    const bool onAndOff = Has(d[0]) != Has(d[1]) && Has(d[2]) != Has(d[3]);
    if (!both && !atRise && !atFall && !onAndOff) {
        check.report.WarningAt(row.place, 1607, row.model);
    }
}

void ResolveRow(SCheck& check, SModelInfo& info, const SScheduleRow& row)
{
    const auto at = check.data.modelNames.Find(row.model);
    if (!at) {
        ReportUnresolved(check, check.data.modelNames, row.model, row.place, 1601);
        return;
    }
    SModelInfo& target = check.data.models[*at];
    if (&target == &info) {
        check.report.ErrorAt(row.place, 1603, row.model);
        return;
    }
    target.fromSchedule = true;
    const SModelType& type = target.Type();
    if (type.type != EModelType::Unknown && !type.Drives()) {
        check.report.ErrorAt(row.place, 1602, row.model, type.name);
    }
    if (!target.schedule.empty()) {
        check.report.ErrorAt(row.place, 1604, row.model);
    }
    const double difference = target.voltage.typ - info.voltage.typ;
    if (difference > 1e-6 || difference < -1e-6) {
        check.report.WarningAt(row.place, 1611, row.model, target.voltage.typ, info.name,
                               info.voltage.typ);
    }
}

} // namespace

void OpenSchedule(SCheck& check, const SLine& /*line*/)
{
    SModelInfo& info = OpenModel(check);
    info.schedulePlace = check.state.keywordPlace;
}

void TakeSchedule(SCheck& check, const SLine& line)
{
    std::string_view words[kColumns];
    const std::size_t count = SplitTokens(line.text, words);
    if (count != kColumns) {
        check.report.ErrorAt(line.Place(), count < kColumns ? 1944 : 1953,
                             KeywordText(check.state.current), count, "5");
        return;
    }
    SScheduleRow row{words[0], {}, line.Place()};
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string_view word = words[i + 1];
        const auto value = TakeNumberOrNa(check, "delay", word, line.Place(word));
        if (!value) {
            return;
        }
        if (*value < 0) {
            check.report.ErrorAt(line.Place(word), 1605, *value);
        }
        row.delay[i] = *value;
    }
    CheckPattern(check, row);
    OpenModel(check).schedule.push_back(row);
}

void CloseSchedule(SCheck& check)
{
    if (OpenModel(check).schedule.empty()) {
        check.report.ErrorAt(OpenModel(check).schedulePlace, 1612);
    }
}

void FinishSchedules(SCheck& check)
{
    for (SModelInfo& info : check.data.models) {
        if (info.schedule.empty()) {
            continue;
        }
        const CPathScope path(check.report,
                              {{}, info.name, KeywordText(EKeyword::DriverSchedule), {}});
        const SModelType& type = info.Type();
        if (type.type != EModelType::Unknown && !type.Drives()) {
            check.report.ErrorAt(info.schedulePlace, 1609, info.name, type.name);
        }
        for (const SScheduleRow& row : info.schedule) {
            ResolveRow(check, info, row);
        }
    }
    for (SModelInfo& info : check.data.models) {
        if (!info.fromSchedule) {
            continue;
        }
        if (!info.used && (info.cCompTyp > 0 || info.hasGndClamp || info.hasPowerClamp)) {
            const CPathScope path(check.report, {{}, info.name, KeywordText(EKeyword::Model), {}});
            check.report.NoteAt(info.place, 1610, info.name);
        }
        info.used = true;
    }
}

} // namespace zov::ibischk
