// SPDX-License-Identifier: Apache-2.0
// Columns that have numbers in one part of a model and none in another.
#include "ibischk/corner.h"
#include "ibischk/evidence.h"
#include "ibischk/tables.h"

#include <cmath>

namespace zov::ibischk {

namespace {

/// What of the model has numbers in a column.
struct SColumnUse
{
    const SCurve* curve = nullptr; ///< the first
    bool ramp = false;
    const SWaveform* waveform = nullptr; ///< the first

    [[nodiscard]] std::string_view Text() const
    {
        return curve != nullptr ? "the I-V tables have"
               : ramp           ? "[Ramp] has"
                                : "the waveforms have";
    }
    [[nodiscard]] bool Any() const { return curve != nullptr || ramp || waveform != nullptr; }
};

SColumnUse UseOf(const SModel& model, std::size_t column)
{
    SColumnUse use;
    for (std::size_t i = 0; i < model.curveCount && use.curve == nullptr; ++i) {
        if (HasNumbers(model.curves[i].current[column])) {
            use.curve = &model.curves[i];
        }
    }
    use.ramp = STriple::Has(model.ramp.riseSwing.Column(column)) ||
               STriple::Has(model.ramp.fallSwing.Column(column));
    for (std::size_t i = 0; i < model.waveformCount && use.waveform == nullptr; ++i) {
        if (HasNumbers(model.waveforms[i].value[column])) {
            use.waveform = &model.waveforms[i];
        }
    }
    return use;
}

/// The supplies that a column lacks, by the names of their references.
std::string MissingSupplies(const SRails& rails)
{
    const std::pair<std::string_view, double> kRails[] = {{"pullup", rails.pullup},
                                                          {"pulldown", rails.pulldown},
                                                          {"power clamp", rails.powerClamp},
                                                          {"GND clamp", rails.gndClamp}};
    std::string names;
    for (const auto& [name, value] : kRails) {
        if (!STriple::Has(value)) {
            names.append(names.empty() ? "" : ", ").append(name);
        }
    }
    return names;
}

void AddSwing(CDetails& details, const SWaveform& table, std::size_t column)
{
    const SEnds ends = EndsOf(table.value[column]);
    details.Add("voltage", ends.first).Add("until", ends.last);
    details.Add("size", std::abs(ends.last - ends.first));
}

/// Where a column without supply has its numbers, one place for each kind.
void AddUse(CDetails& details, const SModel& model, const SColumnUse& use, std::size_t column)
{
    if (use.curve != nullptr) {
        const SEnds ends = EndsOf(use.curve->current[column]);
        details.Add("table", KeywordText(use.curve->keyword));
        AddExtent(details, use.curve->line);
        details.Add("voltage", use.curve->voltage[ends.firstRow]);
        AddFault(details, *use.curve, column, std::abs(ends.last - ends.first));
    }
    if (use.ramp) {
        details.Add("table", KeywordText(EKeyword::Ramp))
            .Add("line", static_cast<double>(model.ramp.place.line));
        for (const STriple* swing : {&model.ramp.riseSwing, &model.ramp.fallSwing}) {
            if (STriple::Has(swing->Column(column))) {
                details.Add("size", swing->Column(column));
            }
        }
    }
    if (use.waveform != nullptr) {
        details.Add("table", KeywordText(use.waveform->keyword));
        AddExtent(details, use.waveform->line);
        AddSwing(details, *use.waveform, column);
    }
}

/// Numbers for a corner that has no supply. Told once for both corners.
void CheckCornerSupply(SCheck& check, const SModelInfo& info, const SColumnUse (&uses)[3])
{
    const SModel& model = check.data.model;
    if (!RailsOf(model, 0).Complete()) {
        return;
    }
    CDetails details;
    std::string columns;
    std::string_view what;
    for (const std::size_t column : {1U, 2U}) {
        const SRails rails = RailsOf(model, column);
        if (!uses[column].Any() || rails.Complete()) {
            continue;
        }
        what = columns.empty() ? uses[column].Text() : what;
        columns.append(columns.empty() ? "" : " and ").append(CornerName(column));
        details.Add("corner", CornerName(column)).Add("supplies-na", MissingSupplies(rails));
        details.Add("supply-typ", RailsOf(model, 0).Span());
        AddUse(details, model, uses[column], column);
        AddNoSum(details, "not built: a supply of the corner is NA or not given");
    }
    if (!columns.empty()) {
        check.report.Emit(EReport::Warning, info.place, 1511, {info.name, what, columns},
                          details.All());
    }
}

/// Waveforms for a corner without tables, told once for both. A corner that has its supply but no
/// tables takes those of typ, which is legal.
void CheckCornerTables(SCheck& check, const SColumnUse (&uses)[3])
{
    const SModel& model = check.data.model;
    CDetails details;
    std::string columns;
    const SWaveform* first = nullptr;
    for (const std::size_t column : {1U, 2U}) {
        const SColumnUse& use = uses[column];
        if (use.waveform == nullptr || model.curveCount == 0 || use.curve != nullptr) {
            continue;
        }
        first = first == nullptr ? use.waveform : first;
        columns.append(columns.empty() ? "" : " and ").append(CornerName(column));
        details.Add("table", KeywordText(use.waveform->keyword)).Add("corner", CornerName(column));
        AddExtent(details, use.waveform->line);
        AddSwing(details, *use.waveform, column);
        AddNoSum(details, "not built: the corner has no currents");
    }
    if (first == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < model.curveCount; ++i) {
        details.Add("table-na", KeywordText(model.curves[i].keyword));
        AddExtent(details, model.curves[i].line);
    }
    check.report.Emit(EReport::Note, first->place, 1512, {KeywordText(first->keyword), columns},
                      details.All());
}

} // namespace

void CheckColumns(SCheck& check, const SModelInfo& info)
{
    const SModel& model = check.data.model;
    const SColumnUse uses[] = {{}, UseOf(model, 1), UseOf(model, 2)};
    CheckCornerSupply(check, info, uses);
    CheckCornerTables(check, uses);
}

} // namespace zov::ibischk
