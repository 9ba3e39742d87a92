// SPDX-License-Identifier: Apache-2.0
// The values of a parameter by its format, and its default against them.
#include "ibischk/AmiParameter.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace zov::ibischk {

namespace {

constexpr double kGridTolerance = 1e-6;

struct SFormatForm
{
    EAmiFormat format;
    std::size_t count; ///< of values; 0: one or more
};
constexpr SFormatForm kForms[] = {
    {EAmiFormat::Value, 1},    {EAmiFormat::Range, 3},     {EAmiFormat::List, 0},
    {EAmiFormat::Corner, 3},   {EAmiFormat::Increment, 4}, {EAmiFormat::Steps, 4},
    {EAmiFormat::Gaussian, 2}, {EAmiFormat::DualDirac, 3}, {EAmiFormat::DjRj, 3},
};

bool Accepts(EAmiType type, EAmiToken kind)
{
    switch (type) {
    case EAmiType::Integer:
        return kind == EAmiToken::Integer;
    case EAmiType::String:
        return kind == EAmiToken::String;
    case EAmiType::Boolean:
        return kind == EAmiToken::Boolean;
    default:
        return kind == EAmiToken::Integer || kind == EAmiToken::Real;
    }
}

class CFormatCheck
{
public:
    CFormatCheck(SAmiCheck& ami, const SAmiParameter& p)
        : m_ami(ami)
        , m_report(ami.report)
        , m_p(p)
        , m_place(ami.tree.Place(p.formatNode))
    {
    }

    void Run()
    {
        if (!Count()) {
            return;
        }
        if (m_p.type) {
            bool good = true;
            for (const SAmiToken& value : m_p.values) {
                good = AcceptAmiValue(m_ami, m_p, WordOf(m_p.format), value, *m_p.type) && good;
            }
            if (!good) {
                return;
            }
        }
        if (m_p.format == EAmiFormat::List) {
            Repeats();
        } else if (HasLimits(m_p.format)) {
            Limits();
        } else if (IsDistribution(m_p.format)) {
            Distribution();
        }
    }

private:
    bool Count()
    {
        const auto* form = std::ranges::find(kForms, m_p.format, &SFormatForm::format);
        const std::size_t found = m_p.values.size();
        const std::string_view word = WordOf(m_p.format);
        if (found == 0 && m_ami.tree.Name(m_p.formatNode) == word) {
            m_report.ErrorAt(m_place, 4626, word, m_p.name);
            return false;
        }
        if (found == 0 && form->count == 0) {
            m_report.ErrorAt(m_place, 4633, m_p.name, word, 1, found);
            return false;
        }
        if (form->count != 0 && found != form->count) {
            m_report.ErrorAt(m_place, 4632, m_p.name, word, form->count, found);
            return false;
        }
        return true;
    }

    [[nodiscard]] std::optional<double> Number(std::size_t i) const
    {
        return AmiNumber(m_ami.tree, m_p.values[i]);
    }
    [[nodiscard]] std::string_view Shown(std::size_t i) const
    {
        return ShownAmi(m_ami.tree.Raw(m_p.values[i]));
    }

    void Limits()
    {
        const auto typ = Number(0);
        const auto min = Number(1);
        const auto max = Number(2);
        if (!typ || !min || !max) {
            return;
        }
        if (*min > *max) {
            m_report.ErrorAt(m_place, 4645, m_p.name, Shown(1), Shown(2));
        } else if (*typ < *min || *typ > *max) {
            m_report.ErrorAt(m_place, 4646, m_p.name, Shown(0), Shown(1), Shown(2));
        }
        if (m_p.format == EAmiFormat::Increment) {
            const auto delta = Number(3);
            if (delta && *delta <= 0) {
                m_report.ErrorAt(m_place, 4651, m_p.name, Shown(3));
            }
        } else if (m_p.format == EAmiFormat::Steps) {
            const auto steps = Number(3);
            if (m_p.values[3].Kind() != EAmiToken::Integer || (steps && *steps < 1)) {
                m_report.ErrorAt(m_place, 4652, m_p.name, Shown(3));
            }
        }
    }

    void Distribution()
    {
        const std::size_t last = m_p.values.size() - 1;
        const auto low = Number(0);
        const auto high = Number(1);
        const auto sigma = Number(last);
        if (low && high && *low > *high && m_p.format != EAmiFormat::Gaussian) {
            if (m_p.format == EAmiFormat::DjRj) {
                m_report.ErrorAt(m_place, 4645, m_p.name, Shown(0), Shown(1));
            } else {
                m_report.Caution(m_place, 4645, m_p.name, Shown(0), Shown(1));
            }
        }
        if (sigma && *sigma < 0) {
            m_report.ErrorAt(m_place, 4658, m_p.name, Shown(last));
        }
    }

    void Repeats()
    {
        std::unordered_set<std::string_view> texts;
        std::unordered_set<double> numbers;
        for (const SAmiToken& value : m_p.values) {
            const auto number = AmiNumber(m_ami.tree, value);
            const std::string_view raw = m_ami.tree.Raw(value);
            const bool isNew = number ? numbers.insert(*number).second : texts.insert(raw).second;
            if (!isNew) {
                m_report.Caution(m_ami.tree.Place(value), 4714, m_p.name, ShownAmi(raw));
            }
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const SAmiParameter& m_p;
    SPlace m_place;
};

bool SameValue(const CAmiTree& tree, SAmiToken a, SAmiToken b)
{
    const auto left = AmiNumber(tree, a);
    const auto right = AmiNumber(tree, b);
    return left && right ? *left == *right : tree.Raw(a) == tree.Raw(b);
}

bool OffGrid(double offset, double step)
{
    const double count = offset / step;
    return std::abs(count - std::round(count)) > kGridTolerance * std::max(1.0, std::abs(count));
}

void CheckDefaultInLimits(SAmiCheck& ami, const SAmiParameter& p)
{
    double numbers[4] = {};
    const bool triple = p.format == EAmiFormat::Range;
    const std::size_t count = triple ? 3 : 4;
    const auto value = AmiNumber(ami.tree, *p.defaultValue);
    if (!value || p.values.size() != count) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = AmiNumber(ami.tree, p.values[i]);
        if (!number) {
            return;
        }
        numbers[i] = *number;
    }
    const auto [typ, min, max, last] = numbers;
    const SPlace place = ami.tree.Place(*p.defaultValue);
    const auto shown = [&](SAmiToken token) { return ShownAmi(ami.tree.Raw(token)); };
    const double step = p.format == EAmiFormat::Steps ? (max - min) / last : last;
    const double origin = p.format == EAmiFormat::Steps ? min : typ;
    if (*value < min || *value > max) {
        ami.report.ErrorAt(place, 4649, p.name, shown(*p.defaultValue), shown(p.values[1]),
                           shown(p.values[2]));
    } else if (!triple && last > 0 && step > 0 && OffGrid(*value - origin, step)) {
        ami.report.Caution(place, 4720, p.name, shown(*p.defaultValue), WordOf(p.format));
    }
}

void CheckDefaultAmong(SAmiCheck& ami, const SAmiParameter& p, EReport severity)
{
    const bool found = std::ranges::any_of(p.values, [&](const SAmiToken& value) {
        return SameValue(ami.tree, value, *p.defaultValue);
    });
    if (!found && !p.values.empty()) {
        ami.report.At(severity, ami.tree.Place(*p.defaultValue), 4650, p.name,
                      ShownAmi(ami.tree.Raw(*p.defaultValue)), WordOf(p.format));
    }
}

} // namespace

bool AcceptAmiValue(SAmiCheck& ami, const SAmiParameter& p, std::string_view where, SAmiToken value,
                    EAmiType type)
{
    if (Accepts(type, value.Kind()) && (!IsNumeric(type) || AmiNumber(ami.tree, value))) {
        return true;
    }
    ami.report.ErrorAt(ami.tree.Place(value), 4648, p.name, where, ShownAmi(ami.tree.Raw(value)),
                       WordOf(type));
    return false;
}

void CheckAmiValues(SAmiCheck& ami, const SAmiParameter& p)
{
    CFormatCheck(ami, p).Run();
}

void CheckAmiDefault(SAmiCheck& ami, const SAmiParameter& p, const SAmiSets& sets)
{
    const SAmiToken value = *p.defaultValue;
    const SPlace place = ami.tree.Place(value);
    if (p.usage == EAmiUsage::Out) {
        ami.report.ErrorAt(place, 4657, p.name);
    }
    const bool excludes = p.format == EAmiFormat::Value || p.format == EAmiFormat::Table ||
                          IsDistribution(p.format) || sets.defaults != EAmiDefault::Optional;
    if (p.format != EAmiFormat::None && excludes) {
        ami.report.ErrorAt(place, 4656, p.name, WordOf(p.format));
    } else if (p.format == EAmiFormat::None && !InSet(sets.formats, EAmiFormat::Value)) {
        // It would be another word for Value, which this parameter can't have.
        ami.report.ErrorAt(place, 4627, "Default", ShownAmi(ami.tree.Raw(value)), p.name);
        return;
    }
    if (p.type && !AcceptAmiValue(ami, p, "Default", value, *p.type)) {
        return;
    }
    if (excludes) {
        return;
    }
    if (HasLimits(p.format)) {
        CheckDefaultInLimits(ami, p);
    } else if (p.format == EAmiFormat::List) {
        CheckDefaultAmong(ami, p, EReport::Error);
    } else if (p.format == EAmiFormat::Corner) {
        CheckDefaultAmong(ami, p, EReport::Warning);
    }
}

} // namespace zov::ibischk
