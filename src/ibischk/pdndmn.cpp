// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pdndmn.h"

#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace zov::ibischk {

namespace {

constexpr SSubParameter kDomainRows[] = {
    {"Signal_name", EVersion::V71, EEquals::Without},
    {"Bus_label", EVersion::V71, EEquals::Without},
};
constexpr SSubParameter kModelRows[] = {
    {"C_pdn", EVersion::V71, EEquals::Without},
    {"R_pdn", EVersion::V71, EEquals::Without},
    {"R_leak", EVersion::V71, EEquals::Without},
};
constexpr std::size_t kCapacitanceRow = 0;

/// What a value must be, and what it hardly is.
struct SBounds
{
    bool zeroAllowed;
    double least;
    double most;
    std::string_view unit;
};
constexpr SBounds kBounds[] = {
    {false, 0.0, 1e-6, "F"},
    {true, 0.0, 1e3, "ohm"},
    {false, 1.0, std::numeric_limits<double>::infinity(), "ohm"},
};

void OpenDomain(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    RequireEarlier(check, EKeyword::Pin, 6885);
    SPdnDomain domain;
    domain.place = check.state.keywordPlace;
    // Whether a domain must have a name is not settled: one without is accepted.
    domain.name =
        line.text.empty() ? line.text : TakeName(check, line, kNameLimit, EReserved::Allowed);
    if (!domain.name.empty() &&
        component.names->pdnDomainNames.Add(domain.name, component.pdnDomains.size())) {
        check.report.WarningAt(domain.place, 6886, domain.name);
    }
    component.pdnDomains.push_back(std::move(domain));
}

void TakeDomainLine(SCheck& check, const SLine& line)
{
    SPdnDomain& domain = OpenComponent(check).pdnDomains.back();
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kDomainRows, domain.seen);
    if (!row) {
        return;
    }
    std::vector<std::string_view>& names = *row == 0 ? domain.signals : domain.labels;
    const SWords words(tokens.Rest());
    if (words.count == 0 || words.count > 2) {
        check.report.ErrorAt(line.Place(), 6911, kDomainRows[*row].name, words.count);
    }
    names.assign(words.at.begin(), words.at.begin() + (words.count > 2 ? 2 : words.count));
    if (words.count >= 2 && words[0] == words[1]) {
        check.report.ErrorAt(line.Place(words[1]), 6891, domain.name, words[0]);
    }
}

void OpenModel(SCheck& check, const SLine& line)
{
    SPdnDomain& domain = OpenComponent(check).pdnDomains.back();
    SPdnModel model;
    model.place = check.state.keywordPlace;
    model.name = TakeName(check, line, kNameLimit, EReserved::Allowed);
    check.report.Path().model = model.name;
    if (!model.name.empty() && domain.modelNames.Add(model.name, domain.models.size())) {
        check.report.ErrorAt(model.place, 6902, model.name);
    }
    domain.models.push_back(std::move(model));
}

void CheckValue(SCheck& check, const SPdnModel& model, std::size_t row, const STriple& value,
                SPlace place)
{
    const SBounds& bounds = kBounds[row];
    const std::string_view name = kModelRows[row].name;
    for (std::size_t i = 0; i < 3; ++i) {
        const double column = value.Column(i);
        if (!STriple::Has(column)) {
            continue;
        }
        if (column < 0.0 || (column == 0.0 && !bounds.zeroAllowed)) {
            check.report.WarningAt(place, 6907, name, column,
                                   bounds.zeroAllowed ? "not be negative" : "be greater than 0");
            return;
        }
        if (column < bounds.least || column > bounds.most) {
            check.report.Caution(place, 6908, model.name, name, column, bounds.unit);
            return;
        }
    }
}

void TakeModelLine(SCheck& check, const SLine& line)
{
    SPdnModel& model = OpenComponent(check).pdnDomains.back().models.back();
    CTokens tokens(line.text);
    const auto row = TakeSubParameter(check, line, tokens, kModelRows, model.seen);
    if (!row) {
        return;
    }
    const auto value = TakeTriple(check, line, tokens, kModelRows[*row].name);
    if (!value) {
        return;
    }
    if (!value->HasTyp()) {
        check.report.ErrorAt(line.Place(), 6906, kModelRows[*row].name);
    }
    CheckValue(check, model, *row, *value, line.Place());
    const bool around = value->typ >= std::min(value->min, value->max) &&
                        value->typ <= std::max(value->min, value->max);
    if (check.report.Verbose() && *row == kCapacitanceRow && value->HasTyp() && value->HasMin() &&
        value->HasMax() && !around) {
        check.report.Caution(line.Place(), 6909, model.name, value->typ, value->min, value->max);
    }
    (*row == 0 ? model.c : *row == 1 ? model.r : model.leak) = *value;
}

void CloseModel(SCheck& check)
{
    const SPdnModel& model = OpenComponent(check).pdnDomains.back().models.back();
    if ((model.seen >> kCapacitanceRow & 1U) == 0) {
        check.report.ErrorAt(model.place, 6905, model.name);
    }
    check.report.Path().model = {};
}

void CheckRails(SCheck& check, const CRails& rails, const SPdnDomain& domain)
{
    for (const std::string_view signal : domain.signals) {
        if (!rails.IsRailSignal(signal)) {
            check.report.ErrorAt(domain.place, 6889, signal);
        }
    }
    for (const std::string_view label : domain.labels) {
        if (!rails.IsLabel(label)) {
            check.report.ErrorAt(domain.place, 6890, label);
        }
    }
}

/// POWER or GND by the pins of a signal; NC when the pins don't agree.
using TRailKinds = std::unordered_map<std::string_view, EPinKind>;

TRailKinds RailKinds(const SComponent& component)
{
    TRailKinds kinds;
    for (const SPin& pin : component.pins) {
        if (!pin.IsRail()) {
            continue;
        }
        const auto [at, fresh] = kinds.emplace(pin.signal, pin.kind);
        if (!fresh && at->second != pin.kind) {
            at->second = EPinKind::NoConnect;
        }
    }
    return kinds;
}

EPinKind KindOf(const TRailKinds& kinds, std::string_view signal)
{
    const auto at = kinds.find(signal);
    return at == kinds.end() ? EPinKind::NoConnect : at->second;
}

/// What rests on a reading of the two names on a line that is not settled.
void CheckPairs(SCheck& check, const CRails& rails, const SComponent& component)
{
    const TRailKinds kinds = RailKinds(component);
    std::unordered_set<std::string> pairs;
    for (const SPdnDomain& domain : component.pdnDomains) {
        if (!domain.signals.empty() && !domain.labels.empty()) {
            check.report.Caution(domain.place, 6888, domain.name);
        }
        for (const auto* names : {&domain.signals, &domain.labels}) {
            if (names->size() != 2 || names->front() == names->back()) {
                continue;
            }
            const auto& [a, b] = std::minmax(names->front(), names->back());
            if (!pairs.insert(std::string(a).append(" ").append(b)).second) {
                check.report.Caution(domain.place, 6893, domain.name, names->front(),
                                     names->back());
            }
            const bool given = names == &domain.signals;
            const EPinKind kind = KindOf(kinds, given ? a : rails.SignalOf(a));
            if (kind != EPinKind::NoConnect &&
                kind == KindOf(kinds, given ? b : rails.SignalOf(b))) {
                check.report.WarningAt(domain.place, 6892, domain.name, names->front(),
                                       names->back(), PinKindText(kind));
            }
        }
    }
}

void CloseComponentDomains(SCheck& check)
{
    const SComponent& component = OpenComponent(check);
    if (component.pdnDomains.empty()) {
        return;
    }
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::PDNDomain), {}});
    CRails rails(component);
    for (const SBusLabel& row : component.busLabels) {
        rails.Give(row.label, row.signal);
    }
    for (const SSupplyPad& row : component.supplyPads) {
        rails.Give(row.label, row.signal);
    }
    for (const SPdnDomain& domain : component.pdnDomains) {
        if (domain.seen == 0) {
            check.report.ErrorAt(domain.place, 6887, domain.name);
        }
        if (domain.models.empty()) {
            check.report.ErrorAt(domain.place, 6894, domain.name);
        }
        if (!component.pins.empty()) {
            CheckRails(check, rails, domain);
        }
    }
    if (check.report.Verbose()) {
        CheckPairs(check, rails, component);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::PDNDomain, &OpenDomain, &TakeDomainLine, nullptr},
    {EKeyword::EndPDNDomain, nullptr, nullptr, nullptr},
    {EKeyword::PDNModel, &OpenModel, &TakeModelLine, &CloseModel},
    {EKeyword::EndPDNModel, nullptr, nullptr, nullptr},
};
constexpr SSectionHandler kSections[] = {{EScope::Component, &CloseComponentDomains}};

} // namespace

const SFamily kPdndmnFamily = {"pdndmn", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
