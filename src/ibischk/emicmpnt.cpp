// SPDX-License-Identifier: Apache-2.0
#include "ibischk/emicmpnt.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr SSubParameter kRows[] = {
    {"Domain", EVersion::V51, EEquals::Either},
    {"Cpd", EVersion::V51, EEquals::Either},
    {"C_Heatsink_gnd", EVersion::V51, EEquals::Either},
    {"C_Heatsink_float", EVersion::V51, EEquals::Either},
};
constexpr std::size_t kDomainRow = 0;
constexpr std::uint64_t kBothHeatsinks = 0b1100;
constexpr std::string_view kDomains[] = {"Digital", "Analog", "Digital_analog"};
constexpr std::string_view kPinHeadings[] = {"domain_name", "clock_div"};
constexpr std::string_view kDomainHeadings[] = {"percentage"};
constexpr std::int64_t kWhole = 100;

} // namespace

void OpenEmi(SCheck& check, const SLine& /*line*/)
{
    OpenComponent(check).names->emi.place = check.state.keywordPlace;
}

void TakeEmiLine(SCheck& check, const SLine& line)
{
    SEmi& emi = OpenComponent(check).names->emi;
    CTokens tokens(line.text);
    const std::uint64_t before = emi.seen;
    const auto row = TakeSubParameter(check, line, tokens, kRows, emi.seen);
    if (!row) {
        return;
    }
    const std::string_view name = kRows[*row].name;
    const std::string_view value = tokens.Next();
    if (*row == kDomainRow) {
        const bool known = std::ranges::any_of(
            kDomains, [value](std::string_view domain) { return EqualsNoCase(domain, value); });
        if (!known) {
            check.report.ErrorAt(line.Place(), 4800, name, value,
                                 "Digital, Analog, Digital_analog");
        }
    } else if (const auto number = TakeNumber(check, name, value, line.Place(value));
               number && *number < 0.0) {
        check.report.ErrorAt(line.Place(value), 4801, name, value);
    }
    if ((emi.seen & kBothHeatsinks) == kBothHeatsinks &&
        (before & kBothHeatsinks) != kBothHeatsinks) {
        check.report.ErrorAt(line.Place(), 4802);
    }
    ReportExtra(check, line, tokens, name);
}

void OpenPinEmi(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kPinHeadings, 1, 4814);
}

void TakePinEmiRow(SCheck& check, const SLine& line)
{
    SEmi& emi = OpenComponent(check).names->emi;
    const SWords words(line.text);
    if (words.count < 2 || words.count > 3) {
        check.report.ErrorAt(line.Place(), 4803, words.count);
        if (words.count < 2) {
            return;
        }
    }
    CountRow(check, line, kPinHeadings, std::min<std::size_t>(words.count, 3), 4813);
    const SPinEmi row{words[0], words[1], line.Place()};
    TakePin(check, line, row.pin, 4804);
    if (emi.pinNames.Add(row.pin, emi.pins.size())) {
        check.report.ErrorAt(row.place, 4805, row.pin);
    }
    if (words.count >= 3 && !IsNa(words[2])) {
        const std::string_view divider = words[2];
        SNumber number;
        if (ReadNumber(divider, number) != ENumber::Good || !(number.value > 0.0)) {
            check.report.ErrorAt(line.Place(divider), 4806, row.pin, divider);
        }
    }
    emi.pins.push_back(row);
}

void OpenPinDomainEmi(SCheck& check, const SLine& line)
{
    BeginTable(check, line, kDomainHeadings, 1, 4814);
    OpenComponent(check).names->emi.domainPlace = check.state.keywordPlace;
}

void TakePinDomainRow(SCheck& check, const SLine& line)
{
    SEmi& emi = OpenComponent(check).names->emi;
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 4808, words.count);
        if (words.count < 2) {
            return;
        }
    }
    if (emi.domains.Add(words[0], emi.domains.Size())) {
        check.report.ErrorAt(line.Place(), 4809, words[0]);
    }
    std::string_view digits = words[1];
    if (digits.ends_with('%')) {
        digits.remove_suffix(1);
    }
    const auto percent = ParseInt(digits);
    if (!percent || *percent < 0 || *percent > kWhole) {
        check.report.ErrorAt(line.Place(words[1]), 4810, words[0], words[1]);
        return;
    }
    emi.percent += *percent;
}

void CloseEmi(SCheck& check, const SComponent& component)
{
    const SEmi& emi = component.names->emi;
    if (!check.state.Has(EKeyword::BeginEMIComponent)) {
        return;
    }
    const CPathScope scope(check.report,
                           {component.name, {}, KeywordText(EKeyword::BeginEMIComponent), {}});
    if (emi.seen == 0 && emi.pins.empty() && emi.domains.Size() == 0) {
        check.report.NoteAt(emi.place, 4812);
    }
    if (emi.percent > kWhole) {
        check.report.WarningAt(emi.domainPlace, 4811, emi.percent);
    }
    if (emi.domains.Size() == 0) {
        return;
    }
    for (const SPinEmi& row : emi.pins) {
        if (!IsNc(row.domain) && !emi.domains.Find(row.domain)) {
            check.report.WarningAt(row.place, 4807, row.domain, row.pin);
        }
    }
}

} // namespace zov::ibischk
