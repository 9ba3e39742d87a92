// SPDX-License-Identifier: Apache-2.0
// What the values of single reserved parameters must be.
#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/AmiReserved.h"
#include "ibischk/AmiTable.h"

#include <algorithm>
#include <array>
#include <limits>

namespace zov::ibischk {

namespace {

std::string_view Shown(const SAmiCheck& ami, SAmiToken token)
{
    return ShownAmi(ami.tree.Raw(token));
}

/// 4670 for each choice that is a number and not as `good` wants it.
template <class F>
void Demand(SAmiCheck& ami, const SAmiParameter& p, EReport severity, std::string_view what, F good)
{
    if (p.IsPlaceHolder()) {
        return;
    }
    p.ForEachChoice([&](SAmiToken token) {
        const auto number = AmiNumber(ami.tree, token);
        if (number && !good(*number)) {
            ami.report.At(severity, ami.tree.Place(token), 4670, p.name, Shown(ami, token), what);
        }
    });
}

/// `code` for each string choice that is none of the words.
void DemandWord(SAmiCheck& ami, const SAmiParameter& p, EReport severity, int code,
                std::span<const std::string_view> words)
{
    if (p.IsPlaceHolder()) {
        return;
    }
    p.ForEachChoice([&](SAmiToken token) {
        const bool known = std::ranges::find(words, ami.tree.Text(token)) != words.end();
        if (token.Kind() == EAmiToken::String && !known) {
            ami.report.At(severity, ami.tree.Place(token), code, Shown(ami, token));
        }
    });
}

bool IsRelative(std::string_view name)
{
    return !name.empty() && name.front() != '/' && name.front() != '\\' &&
           name.find(':') == std::string_view::npos;
}

/// A file, or a folder with anything in it.
bool ExistsBeside(const SAmiCheck& ami, std::string_view name)
{
    while (name.ends_with('/') || name.ends_with('\\')) {
        name.remove_suffix(1);
    }
    SCheck& check = ami.check;
    return check.files.Exists(check.PathOf(name)) ||
           !check.files.Beside(check.PathOf(name), "").empty();
}

void CheckSupportingFile(SAmiCheck& ami, SAmiToken cell)
{
    const std::string_view name = ami.tree.Text(cell);
    if (!IsRelative(name)) {
        ami.report.ErrorAt(ami.tree.Place(cell), 4680, ShownAmi(name));
    } else if (!ExistsBeside(ami, name)) {
        ami.report.WarningAt(ami.tree.Place(cell), 4681, ShownAmi(name));
    }
}

/// The row number rises, as does the time; a probability is no less than 0.
class CProbabilityRows
{
public:
    CProbabilityRows(SAmiCheck& ami, const SAmiParameter& p)
        : m_ami(ami)
        , m_p(p)
    {
    }

    void Take(std::uint32_t row, std::size_t number)
    {
        constexpr std::size_t kColumns = 3;
        const CAmiTree& tree = m_ami.tree;
        if (tree.HasChildren(row)) {
            return;
        }
        const std::size_t cells = AmiCellCount(tree, row);
        if (cells != kColumns) {
            // A row that differs from the first was told with it.
            if (number == 1) {
                m_ami.report.ErrorAt(tree.Place(row), 4660, m_p.name, number, cells, kColumns);
            }
            return;
        }
        const SAmiToken index = AmiCell(tree, row, 0);
        if (index.Kind() == EAmiToken::Real) {
            AcceptAmiValue(m_ami, m_p, "Table", index, EAmiType::Integer);
        }
        Rises(row);
        const SAmiToken probability = AmiCell(tree, row, 2);
        if (AmiNumber(tree, probability).value_or(0) < 0) {
            m_ami.report.WarningAt(tree.Place(probability), 4670, m_p.name,
                                   Shown(m_ami, probability), "0 or more");
        }
    }

private:
    void Rises(std::uint32_t row)
    {
        for (std::size_t column = 0; column < m_last.size(); ++column) {
            const auto number = AmiNumber(m_ami.tree, AmiCell(m_ami.tree, row, column));
            if (number && *number <= m_last[column] && !m_told) {
                m_told = true;
                m_ami.report.WarningAt(m_ami.tree.Place(row), 4694, m_p.name);
            }
            m_last[column] = number.value_or(m_last[column]);
        }
    }

    SAmiCheck& m_ami;
    const SAmiParameter& m_p;
    std::array<double, 2> m_last = {-std::numeric_limits<double>::infinity(),
                                    -std::numeric_limits<double>::infinity()};
    bool m_told = false;
};

/// Characters that name each of four symbols once.
bool IsMapping(std::string_view text)
{
    std::string sorted(text);
    std::ranges::sort(sorted);
    return sorted == "0123";
}

} // namespace

void RuleAmiVersion(SAmiCheck& ami, const SAmiParameter& p)
{
    // 5.0 is refused by the version gate of the parameter.
    constexpr std::array<std::string_view, 7> kVersions = {"5.0", "5.1", "6.0", "6.1",
                                                           "7.0", "7.1", "7.2"};
    DemandWord(ami, p, EReport::Error, 4638, kVersions);
}

void RuleCount(SAmiCheck& ami, const SAmiParameter& p)
{
    Demand(ami, p, EReport::Error, "0 or more", [](double v) { return v >= 0; });
}

void RulePositiveCount(SAmiCheck& ami, const SAmiParameter& p)
{
    Demand(ami, p, EReport::Error, "above 0", [](double v) { return v > 0; });
}

void RuleAmount(SAmiCheck& ami, const SAmiParameter& p)
{
    if (p.name == "Rx_Clock_Recovery_Mean" || p.name == "Tx_V") {
        return;
    }
    if (p.name == "Tx_Sj_Frequency") {
        Demand(ami, p, EReport::Caution, "above 0", [](double v) { return v > 0; });
        return;
    }
    Demand(ami, p, EReport::Caution, "0 or more", [](double v) { return v >= 0; });
}

void RuleProbability(SAmiCheck& ami, const SAmiParameter& p)
{
    if (p.format == EAmiFormat::Table && !p.IsPlaceHolder()) {
        CProbabilityRows rows(ami, p);
        ForEachAmiRow(p, [&](std::uint32_t row, std::size_t number) { rows.Take(row, number); });
    }
}

void RuleSupportingFiles(SAmiCheck& ami, const SAmiParameter& p)
{
    if (p.format != EAmiFormat::Table) {
        return;
    }
    for (const SAmiToken& value : p.values) {
        CheckSupportingFile(ami, value);
    }
    ForEachAmiRow(p, [&](std::uint32_t row, std::size_t number) {
        const bool one = AmiCellCount(ami.tree, row) == 1 && !ami.tree.HasChildren(row);
        if (!one || ami.tree.Node(row).name.Kind() != EAmiToken::String) {
            ami.report.ErrorAt(ami.tree.Place(row), 4679, number);
        } else {
            CheckSupportingFile(ami, ami.tree.Node(row).name);
        }
    });
}

void RuleModulation(SAmiCheck& ami, const SAmiParameter& p)
{
    constexpr std::array<std::string_view, 2> kWords = {"NRZ", "PAM4"};
    DemandWord(ami, p, EReport::Error, 4674, kWords);
}

void RuleMapping(SAmiCheck& ami, const SAmiParameter& p)
{
    if (p.IsPlaceHolder()) {
        return;
    }
    p.ForEachChoice([&](SAmiToken token) {
        if (token.Kind() == EAmiToken::String && !IsMapping(ami.tree.Text(token))) {
            ami.report.ErrorAt(ami.tree.Place(token), 4675, Shown(ami, token));
        }
    });
}

void RuleLevels(SAmiCheck& ami, const SAmiParameter& p)
{
    if (p.usage == EAmiUsage::Dep) {
        return;
    }
    p.ForEachChoice([&](SAmiToken token) {
        const auto number = AmiNumber(ami.tree, token);
        if (number && *number < 2) {
            ami.report.ErrorAt(ami.tree.Place(token), 4691, Shown(ami, token));
        }
    });
}

void RuleNumberList(SAmiCheck& ami, const SAmiParameter& p)
{
    p.ForEachChoice([&](SAmiToken token) {
        if (token.Kind() != EAmiToken::String) {
            return;
        }
        bool rising = true;
        double last = -std::numeric_limits<double>::infinity();
        CTokens words(ami.tree.Text(token));
        while (!words.AtEnd()) {
            const std::string_view word = words.Next();
            const auto number = ParseDouble(word);
            if (!number) {
                ami.report.ErrorAt(ami.tree.Place(token), 4693, p.name, ShownAmi(word));
                return;
            }
            rising = rising && *number > last;
            last = *number;
        }
        if (!rising && p.name == "PAM_Thresholds" && !p.IsPlaceHolder()) {
            ami.report.Caution(ami.tree.Place(token), 4694, p.name);
        }
    });
}

void RuleProtocol(SAmiCheck& ami, const SAmiParameter& p)
{
    p.ForEachChoice([&](SAmiToken token) {
        if (token.Kind() == EAmiToken::String && Trim(ami.tree.Text(token)).empty()) {
            ami.report.Caution(ami.tree.Place(token), 4670, p.name, Shown(ami, token), "a name");
        }
    });
}

void RuleState(SAmiCheck& ami, const SAmiParameter& p)
{
    constexpr std::array<std::string_view, 5> kWords = {"Off", "Training", "Converged", "Failed",
                                                        "Error"};
    DemandWord(ami, p, EReport::Warning, 4676, kWords);
}

void RuleTrainingMode(SAmiCheck& ami, const SAmiParameter& p)
{
    constexpr std::array<std::string_view, 2> kWords = {"GetWave", "Impulse"};
    DemandWord(ami, p, EReport::Caution, 4700, kWords);
}

void RuleTouchstone(SAmiCheck& ami, const SAmiParameter& p)
{
    p.ForEachChoice([&](SAmiToken token) {
        if (token.Kind() != EAmiToken::String) {
            return;
        }
        const std::string_view name = ami.tree.Text(token);
        const SPlace place = ami.tree.Place(token);
        if (!EndsWithNoCase(name, ".s4p")) {
            if (p.usage != EAmiUsage::Dep) {
                ami.report.ErrorAt(place, 4686, ShownAmi(name));
            }
        } else if (!IsRelative(name)) {
            ami.report.ErrorAt(place, 1926, ShownAmi(name));
        } else if (p.usage != EAmiUsage::Dep && !ami.check.files.Exists(ami.check.PathOf(name))) {
            ami.report.WarningAt(place, 4687, ShownAmi(name));
        }
    });
}

void RuleRepeater(SAmiCheck& ami, const SAmiParameter& p)
{
    constexpr std::array<std::string_view, 2> kWords = {"Redriver", "Retimer"};
    DemandWord(ami, p, EReport::Error, 4672, kWords);
}

void RuleClockInput(SAmiCheck& ami, const SAmiParameter& p)
{
    constexpr std::array<std::string_view, 3> kWords = {"None", "Times", "Wave"};
    DemandWord(ami, p, EReport::Error, 4677, kWords);
}

} // namespace zov::ibischk
