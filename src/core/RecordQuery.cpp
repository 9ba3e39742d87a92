// SPDX-License-Identifier: Apache-2.0
#include "core/RecordQuery.h"

#include "base/Text.h"
#include "core/Units.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <utility>

namespace zov {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// Values that were scaled by different units differ in their last digits; a range typed as 100nF
/// must find all of them.
constexpr double kSameValue = 1e-9;
/// Longer queries are no search any more but a paste by accident.
constexpr std::size_t kMaxTerms = 64;

struct SWord
{
    std::string_view word;
    EPropId id;
};

constexpr std::array<SWord, 22> kShortNames = {{
    {"name", EPropId::ModelName},
    {"model", EPropId::ModelName},
    {"mpn", EPropId::MfgPartNumber},
    {"part", EPropId::MfgPartNumber},
    {"maker", EPropId::Manuf},
    {"manufacturer", EPropId::Manuf},
    {"c", EPropId::Cnom},
    {"cap", EPropId::Cnom},
    {"capacitance", EPropId::Cnom},
    {"v", EPropId::Volt},
    {"voltage", EPropId::Volt},
    {"r", EPropId::Resistance},
    {"l", EPropId::Inductance},
    {"i", EPropId::MaxCurrent},
    {"current", EPropId::MaxCurrent},
    {"tol", EPropId::UpTolerance},
    {"tolerance", EPropId::UpTolerance},
    {"esr", EPropId::Rv},
    {"esl", EPropId::Lv},
    {"cact", EPropId::Cv},
    {"price", EPropId::PriceA},
    {"note", EPropId::Comment},
}};

bool IsValue(const SPropInfo& info)
{
    return info.kind == EPropKind::Double;
}

/// A word of the query with where it began. Quoted words are never operators.
struct SToken
{
    std::string text;
    std::size_t column = 1;
    bool quoted = false;
};

CResult<std::vector<SToken>> Tokens(std::string_view text)
{
    std::vector<SToken> tokens;
    std::size_t at = 0;
    while (at < text.size()) {
        if (IsSpace(text[at])) {
            ++at;
            continue;
        }
        SToken token;
        token.column = at + 1;
        token.quoted = text[at] == '"';
        bool inQuotes = false;
        for (; at < text.size() && (inQuotes || !IsSpace(text[at])); ++at) {
            if (text[at] == '"') {
                inQuotes = !inQuotes;
            } else {
                token.text += text[at];
            }
        }
        if (inQuotes) {
            return SError{EErr::Argument, "a quote is not closed", {{}, 0, token.column}, {}};
        }
        if (!token.text.empty()) {
            tokens.push_back(std::move(token));
        }
        if (tokens.size() > kMaxTerms) {
            return SError{EErr::Argument, fmt::format("more than {} words", kMaxTerms), {}, {}};
        }
    }
    return tokens;
}

SError NotAValue(std::string_view text, const SPropInfo& info, std::size_t column)
{
    std::string units;
    for (const SUnit& unit : UnitsOf(info.quantity)) {
        units += units.empty() ? " with one of the units " : ", ";
        units += unit.suffix;
    }
    return SError{
        EErr::Argument,
        fmt::format("'{}' is no value of {}: expected a number{}", text, info.name, units),
        {{}, 0, column},
        {}};
}

/// Sets low and high from "a..b", "a..", "..b" or "a".
CResult<void> ReadRange(std::string_view text, const SPropInfo& info, std::size_t column,
                        SQueryTerm& term)
{
    term.kind = SQueryTerm::EKind::Range;
    term.property = info.id;
    const std::size_t dots = text.find("..");
    const std::string_view from = dots == std::string_view::npos ? text : text.substr(0, dots);
    const std::string_view to = dots == std::string_view::npos ? text : text.substr(dots + 2);
    term.low = -kInfinity;
    term.high = kInfinity;
    for (const auto& [part, bound] : {std::pair(from, &term.low), std::pair(to, &term.high)}) {
        if (part.empty()) {
            continue;
        }
        const std::optional<double> value = ParseQuantity(part, info.quantity);
        if (!value) {
            return NotAValue(part, info, column);
        }
        *bound = *value;
    }
    if (from.empty() && to.empty()) {
        return NotAValue(text, info, column);
    }
    if (term.low > term.high) {
        std::swap(term.low, term.high);
    }
    return {};
}

/// "volt>=16" after the operator.
CResult<void> ReadBound(std::string_view op, std::string_view text, const SPropInfo& info,
                        std::size_t column, SQueryTerm& term)
{
    if (text.find("..") != std::string_view::npos) {
        return NotAValue(text, info, column);
    }
    RETURN_IF_ERROR(ReadRange(text, info, column, term));
    if (op.front() == '<') {
        term.low = -kInfinity;
        term.openHigh = op.size() == 1;
    } else {
        term.high = kInfinity;
        term.openLow = op.size() == 1;
    }
    return {};
}

struct SOperator
{
    std::string_view left;
    std::string_view op;
    std::string_view right;
};

/// None for a word without an operator behind its first character.
std::optional<SOperator> SplitAtOperator(std::string_view text)
{
    const std::size_t at = text.find_first_of(":=<>");
    if (at == std::string_view::npos || at == 0) {
        return std::nullopt;
    }
    const bool two = (text[at] == '<' || text[at] == '>') && text.substr(at + 1, 1) == "=";
    const std::size_t length = two ? 2 : 1;
    return SOperator{text.substr(0, at), text.substr(at, length), text.substr(at + length)};
}

CResult<bool> ReadNamed(const SOperator& parts, std::size_t column, SQueryTerm& term)
{
    if (EqualsNoCase(parts.left, "is") && parts.op == ":") {
        if (!EqualsNoCase(parts.right, "incomplete")) {
            return SError{EErr::Argument,
                          fmt::format("'is:{}' is not known: expected is:incomplete", parts.right),
                          {{}, 0, column},
                          {}};
        }
        term.kind = SQueryTerm::EKind::Incomplete;
        return true;
    }
    if (EqualsNoCase(parts.left, "type")) {
        term.kind = SQueryTerm::EKind::Type;
        term.text = parts.right;
        return true;
    }
    const SPropInfo* info = FindPropertyByWord(parts.left);
    if (info == nullptr) {
        return false; // "ratio:2" may stand in a description
    }
    if (IsValue(*info)) {
        const bool bound = parts.op.front() == '<' || parts.op.front() == '>';
        RETURN_IF_ERROR(bound ? ReadBound(parts.op, parts.right, *info, column, term)
                              : ReadRange(parts.right, *info, column, term));
        return true;
    }
    if (parts.op != ":" && parts.op != "=") {
        return SError{EErr::Argument,
                      fmt::format("{} is a text and can't be compared with {}: write {}:{}",
                                  info->name, parts.op, parts.left, parts.right),
                      {{}, 0, column},
                      {}};
    }
    term.kind = parts.op == ":" ? SQueryTerm::EKind::Property : SQueryTerm::EKind::PropertyIs;
    term.property = info->id;
    term.text = parts.right;
    return true;
}

/// "Cnom 90nF..110nF": the name of a value followed by a range.
const SPropInfo* RangeName(const std::vector<SToken>& tokens, std::size_t at)
{
    if (at + 1 == tokens.size() || tokens[at].quoted || tokens[at + 1].quoted ||
        tokens[at + 1].text.find("..") == std::string::npos) {
        return nullptr;
    }
    const SPropInfo* info = FindPropertyByWord(tokens[at].text);
    return info != nullptr && IsValue(*info) ? info : nullptr;
}

/// Any text that has `word` in it; a word with wildcards is matched somewhere within the text.
bool Contains(std::string_view text, const std::string& word)
{
    return WildcardMatch(word, text);
}

std::string Anywhere(std::string_view word)
{
    return '*' + std::string(word) + '*';
}

bool WordMatches(const CZovRcdProps& record, const std::string& pattern)
{
    for (const SPropInfo& info : Properties()) {
        const bool isText = info.kind == EPropKind::String || info.kind == EPropKind::Text;
        if (isText && record.Has(info.id) && Contains(record.GetString(info.id), pattern)) {
            return true;
        }
    }
    return false;
}

bool RangeMatches(const CZovRcdProps& record, const SQueryTerm& term)
{
    const std::optional<double> value = record.GetDouble(term.property);
    if (!value) {
        return false;
    }
    const double slack = std::abs(*value) * kSameValue;
    const bool aboveLow = term.openLow ? *value > term.low + slack : *value >= term.low - slack;
    const bool belowHigh = term.openHigh ? *value < term.high - slack : *value <= term.high + slack;
    return aboveLow && belowHigh;
}

bool TypeMatches(const CZovRcdProps& record, const std::string& word)
{
    const SRecordTypeInfo& info = InfoOf(record.Type());
    return StartsWithNoCase(info.element, word) || StartsWithNoCase(info.name, word);
}

bool TermHolds(const CZovRcdProps& record, const SQueryTerm& term)
{
    switch (term.kind) {
    case SQueryTerm::EKind::Word:
        return WordMatches(record, term.text);
    case SQueryTerm::EKind::Property:
    case SQueryTerm::EKind::PropertyIs:
        return Contains(record.GetString(term.property), term.text);
    case SQueryTerm::EKind::Range:
        return RangeMatches(record, term);
    case SQueryTerm::EKind::Type:
        return TypeMatches(record, term.text);
    case SQueryTerm::EKind::Incomplete:
        return !MissingIn(record).empty();
    }
    return false;
}

void RequireModel(const CZovRcdProps& record, std::vector<std::string>& missing)
{
    const std::optional<SDiscreteModel> model = record.GetDiscreteModel();
    const bool hasPlain = model && (model->resistance || model->inductance || model->capacitance);
    if (!model || (model->isCircuit ? model->cktDef.empty() : !hasPlain)) {
        missing.emplace_back("model");
    }
}

void RequireNominalVoltages(const CZovRcdProps& record, std::vector<std::string>& missing)
{
    const auto lacks = [](const auto& rails) {
        for (const auto& rail : rails) {
            if (!rail.nominalVoltage) {
                return true;
            }
        }
        return false;
    };
    const SDcModel* dc = record.GetComposite<SDcModel>();
    const SVrmModel* vrm = record.GetComposite<SVrmModel>();
    if ((dc != nullptr && lacks(dc->rails)) || (vrm != nullptr && lacks(vrm->rails))) {
        missing.emplace_back("NominalVoltage of every rail");
    }
}

} // namespace

const SPropInfo* FindPropertyByWord(std::string_view word)
{
    for (const SPropInfo& info : Properties()) {
        if (info.kind != EPropKind::Composite && EqualsNoCase(info.name, word)) {
            return &info;
        }
    }
    for (const SWord& known : kShortNames) {
        if (EqualsNoCase(known.word, word)) {
            return FindProperty(known.id);
        }
    }
    return nullptr;
}

std::vector<std::string> MissingIn(const CZovRcdProps& record)
{
    std::vector<std::string> missing;
    const auto require = [&](EPropId id) {
        if (!record.Has(id)) {
            missing.emplace_back(FindProperty(id)->name);
        }
    };
    require(EPropId::ModelName);
    switch (record.Type()) {
    case ERecordType::Capacitor:
        require(EPropId::Cnom);
        if (SplitSize(record.GetString(EPropId::Size)).code.size() < 4) {
            missing.emplace_back("Size of at least four characters");
        }
        RequireModel(record, missing);
        break;
    case ERecordType::Inductor:
        require(EPropId::Inductance);
        RequireModel(record, missing);
        break;
    case ERecordType::Resistor:
        require(EPropId::Resistance);
        RequireModel(record, missing);
        break;
    case ERecordType::Ic:
        RequireNominalVoltages(record, missing);
        break;
    case ERecordType::Vrm:
        RequireNominalVoltages(record, missing);
        if (record.GetComposite<SVrmModel>() == nullptr) {
            missing.emplace_back("model");
        }
        break;
    default:
        if (record.GetComposite<SCircuitRef>() == nullptr) {
            missing.emplace_back("model");
        }
        break;
    }
    return missing;
}

CResult<CRecordQuery> CRecordQuery::Parse(std::string_view text)
{
    ASSIGN_OR_RETURN(const std::vector<SToken> tokens, Tokens(text));
    CRecordQuery query;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        SQueryTerm term;
        if (const SPropInfo* info = RangeName(tokens, i)) {
            ++i;
            RETURN_IF_ERROR(ReadRange(tokens[i].text, *info, tokens[i].column, term));
            query.m_terms.push_back(std::move(term));
            continue;
        }
        std::string_view word = tokens[i].text;
        if (!tokens[i].quoted && word.size() > 1 && word.front() == '-') {
            term.negated = true;
            word.remove_prefix(1);
        }
        const std::optional<SOperator> parts =
            tokens[i].quoted ? std::nullopt : SplitAtOperator(word);
        if (parts) {
            ASSIGN_OR_RETURN(const bool known, ReadNamed(*parts, tokens[i].column, term));
            if (known) {
                if (term.kind == SQueryTerm::EKind::Property) {
                    term.text = Anywhere(term.text);
                }
                query.m_terms.push_back(std::move(term));
                continue;
            }
        }
        term.text = Anywhere(word);
        query.m_terms.push_back(std::move(term));
    }
    return query;
}

bool CRecordQuery::Matches(const CZovRcdProps& record) const
{
    for (const SQueryTerm& term : m_terms) {
        if (TermHolds(record, term) == term.negated) {
            return false;
        }
    }
    return true;
}

} // namespace zov
