// SPDX-License-Identifier: Apache-2.0
// Temperature, voltages, references and transit times of a model or submodel.
#include "base/Text.h"
#include "ibischk/mdlparts.h"

namespace zov::ibischk {

namespace {

constexpr double kUsualVolt = 20.0;
constexpr double kLowestUsualDegree = -65.0;
constexpr double kHighestUsualDegree = 175.0;
constexpr double kLongestTransitS = 1e-6;

STriple& SupplyOf(SModel& model, EKeyword keyword)
{
    switch (keyword) {
    case EKeyword::TemperatureRange:
        return model.temperature;
    case EKeyword::VoltageRange:
        return model.voltageRange;
    case EKeyword::PullupReference:
        return model.pullupReference;
    case EKeyword::PulldownReference:
        return model.pulldownReference;
    case EKeyword::POWERClampReference:
        return model.powerClampReference;
    case EKeyword::GNDClampReference:
        return model.gndClampReference;
    default:
        return model.externalReference;
    }
}

/// The first value outside of a range; none when all lie inside.
std::optional<double> Outside(const STriple& t, double low, double high)
{
    for (const double value : {t.typ, t.min, t.max}) {
        if (value < low || value > high) {
            return value;
        }
    }
    return std::nullopt;
}

void CheckTemperature(SCheck& check, const STriple& t, SPlace place)
{
    // Slow CMOS is hot, slow bipolar cold: min and max may be either way round.
    if ((t.typ > t.min && t.typ > t.max) || (t.typ < t.min && t.typ < t.max)) {
        check.report.WarningAt(place, 3008, t.typ);
    }
    if (const auto odd = Outside(t, kLowestUsualDegree, kHighestUsualDegree)) {
        check.report.Caution(place, 3010, *odd);
    }
}

/// Slow corners have the smaller supply: nearer to zero for supplies below it.
bool InCornerOrder(const STriple& t)
{
    if (t.typ > 0) {
        return !(t.min > t.typ || t.max < t.typ || t.min > t.max);
    }
    return t.typ == 0 || !(t.min < t.typ || t.max > t.typ || t.min < t.max);
}

void CheckVoltage(SCheck& check, EKeyword keyword, const STriple& t, SPlace place)
{
    const bool isHigh = keyword == EKeyword::VoltageRange || keyword == EKeyword::PullupReference ||
                        keyword == EKeyword::POWERClampReference;
    // A supply written as 0 to -5 has its corners the other way round; only what is odd in both
    // directions is told.
    const STriple mirrored{t.typ, t.max, t.min};
    if (isHigh && !InCornerOrder(t) && (t.typ > 0 || !InCornerOrder(mirrored))) {
        check.report.WarningAt(place, 3007, KeywordText(keyword));
    }
    if (const auto odd = Outside(t, -kUsualVolt, kUsualVolt)) {
        check.report.Caution(place, 3009, KeywordText(keyword), *odd);
    }
    if (keyword == EKeyword::VoltageRange && t.typ <= 0) {
        check.report.Caution(place, 3005, check.report.Path().model, t.typ);
    }
}

void CompareReferences(SCheck& check, EKeyword high, EKeyword low, bool equalIsWrong)
{
    SModel& model = check.data.model;
    const STriple& own = SupplyOf(model, high);
    const double above = own.HasTyp() ? own.typ : model.voltageRange.typ;
    const double below = SupplyOf(model, low).HasTyp() ? SupplyOf(model, low).typ : 0.0;
    // Without any reference given there is only the [Voltage Range], whose sign is judged already.
    if (!own.HasTyp() && !SupplyOf(model, low).HasTyp()) {
        return;
    }
    if (above < below || (equalIsWrong && above == below)) {
        check.report.WarningAt(check.state.sectionPlace, 3006, check.report.Path().model,
                               KeywordText(high), above, KeywordText(low), below);
    }
}

} // namespace

void OpenSupply(SCheck& check, const SLine& line)
{
    const auto triple = TakeKeywordTriple(check, line, 3001);
    if (!triple) {
        return;
    }
    const EKeyword keyword = check.state.current;
    SupplyOf(check.data.model, keyword) = *triple;
    if (keyword == EKeyword::TemperatureRange) {
        CheckTemperature(check, *triple, line.Place());
    } else {
        CheckVoltage(check, keyword, *triple, line.Place());
    }
}

void OpenTransit(SCheck& check, const SLine& line)
{
    const auto triple = TakeKeywordTriple(check, line, 3001);
    if (!triple) {
        return;
    }
    const std::string_view keyword = KeywordText(check.state.current);
    if (const auto odd = Outside(*triple, 0.0, kLongestTransitS)) {
        if (*odd < 0) {
            check.report.ErrorAt(line.Place(), 3011, keyword, *odd);
        } else {
            check.report.Caution(line.Place(), 3013, keyword, *odd);
        }
    }
}

void CheckTransits(SCheck& check, bool hasGndClamp, bool hasPowerClamp)
{
    const auto need = [&check](EKeyword transit, EKeyword clamp, bool has) {
        if (check.state.Has(transit) && !has) {
            check.report.WarningAt(check.state.sectionPlace, 3012, KeywordText(transit),
                                   KeywordText(clamp));
        }
    };
    need(EKeyword::TTgnd, EKeyword::GNDClamp, hasGndClamp);
    need(EKeyword::TTpower, EKeyword::POWERClamp, hasPowerClamp);
}

void CheckSupplyRequired(SCheck& check, const SModelInfo& info)
{
    constexpr EKeyword kReferences[] = {EKeyword::PullupReference, EKeyword::PulldownReference,
                                        EKeyword::POWERClampReference, EKeyword::GNDClampReference};
    std::string missing;
    for (const EKeyword keyword : kReferences) {
        if (!check.state.Has(keyword)) {
            missing.append(missing.empty() ? "[" : ", [").append(KeywordText(keyword)).append("]");
        }
    }
    const bool hasRange = check.state.Has(EKeyword::VoltageRange);
    if (!hasRange && !missing.empty() && !info.hasExternalModel) {
        check.report.ErrorAt(info.place, 3002, info.name, missing);
    } else if (hasRange && missing.empty()) {
        check.report.NoteAt(info.place, 3003, info.name);
    }
}

/// A [C Comp Model] may refer to it too, and what its circuit does is not known.
void CheckExternalReference(SCheck& check, const SModelInfo& info)
{
    const SModel& model = check.data.model;
    const bool used = EqualsNoCase(model.thresholds.referenceSupply, "Ext_ref") ||
                      model.external.HasPort("A_extref") || check.state.Has(EKeyword::CCompModel);
    if (check.state.Has(EKeyword::ExternalReference) && !used) {
        check.report.NoteAt(info.place, 3014, info.name);
    }
}

void CheckSupplies(SCheck& check)
{
    const SModelInfo& info = OpenModel(check);
    if (!info.Type().IsSeries()) {
        CheckSupplyRequired(check, info);
    }
    // Both tables of ECL refer to the upper supply.
    if (!info.Type().IsEcl()) {
        CompareReferences(check, EKeyword::PullupReference, EKeyword::PulldownReference, true);
    }
    CompareReferences(check, EKeyword::POWERClampReference, EKeyword::GNDClampReference, false);
    CheckExternalReference(check, info);
    CheckTransits(check, info.hasGndClamp, info.hasPowerClamp);
}

} // namespace zov::ibischk
