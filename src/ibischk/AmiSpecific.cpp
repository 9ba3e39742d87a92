// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiSpecific.h"

#include "base/Number.h"
#include "ibischk/AmiReserved.h"
#include "ibischk/AmiTable.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

namespace zov::ibischk {

namespace {

constexpr std::size_t kPathLimit = 200;
constexpr AmiSet kAll = 0xFFFF;
constexpr SAmiSets kSets = {kAll, kAll, kAll, EAmiDefault::Optional, false};

/// A branch that is being walked, with the names that it holds.
struct SBranch
{
    std::uint32_t end;
    std::size_t pathLength; ///< of what stands in front of its name
    bool description = false;
    std::unordered_set<std::string_view> names;
};

class CSpecificWalk
{
public:
    explicit CSpecificWalk(SAmiCheck& ami)
        : m_ami(ami)
        , m_report(ami.report)
        , m_tree(ami.tree)
    {
    }

    void Run(std::uint32_t branch)
    {
        Enter(branch);
        for (std::uint32_t node = branch + 1; node < m_tree.Node(branch).end;) {
            while (m_open.back().end <= node) {
                Leave();
            }
            node = Take(node);
        }
    }

private:
    /// @return the node to look at next
    std::uint32_t Take(std::uint32_t node)
    {
        const std::uint32_t next = m_tree.Node(node).end;
        const std::string_view name = m_tree.Name(node);
        SBranch& branch = m_open.back();
        const bool hasChildren = m_tree.HasChildren(node);
        if (name.empty()) {
            return next; // told as a branch without name
        }
        if (!hasChildren && name == "Description") {
            if (branch.description) {
                m_report.ErrorAt(m_tree.Place(node), 4640, BranchName(), name);
            }
            branch.description = true;
            CheckAmiDescription(m_ami, node, BranchName());
            return next;
        }
        if (!hasChildren && !m_tree.Values(node).empty()) {
            m_report.ErrorAt(m_tree.Place(node), 4644, BranchName(), ShownAmi(name));
            return next;
        }
        if (!branch.names.insert(name).second) {
            m_report.ErrorAt(m_tree.Place(node), 4640, BranchName(), ShownAmi(name));
        }
        if (!hasChildren) {
            m_report.WarningAt(m_tree.Place(node), 4716, ShownAmi(name));
            return next;
        }
        if (IsAmiParameter(m_tree, node)) {
            Parameter(node, name);
            return next;
        }
        Enter(node);
        return node + 1;
    }

    [[nodiscard]] std::string_view BranchName() const
    {
        return m_path.empty() ? std::string_view("Model_Specific") : std::string_view(m_path);
    }

    void AppendName(std::string_view name)
    {
        if (m_path.size() < kPathLimit) {
            m_path += m_path.empty() ? "" : ".";
            m_path += name.substr(0, kPathLimit - std::min(kPathLimit, m_path.size()));
        }
    }

    void Enter(std::uint32_t node)
    {
        m_open.push_back({m_tree.Node(node).end, m_path.size(), false, {}});
        if (m_open.size() > 1) {
            AppendName(m_tree.Name(node));
        }
        Taps(node);
    }

    void Leave()
    {
        m_path.resize(m_open.back().pathLength);
        m_open.pop_back();
    }

    void Parameter(std::uint32_t node, std::string_view name)
    {
        const std::size_t length = m_path.size();
        AppendName(name);
        const CPathScope path(m_report, {{}, m_report.Path().model, m_path, {}});
        if (FindReserved(name)) {
            m_report.Caution(m_tree.Place(node), 4715, m_path);
        }
        const SAmiParameter p = ReadAmiParameter(m_ami, node, m_path, kSets);
        if (p.type == EAmiType::Tap && !ParseInt(name)) {
            m_report.Emit(EReport::Note, p.place, 4708, {CArg(m_path)});
        }
        m_path.resize(length);
    }

    /// Taps are named by their numbers, in one run that holds 0, and stand apart from other
    /// parameters.
    void Taps(std::uint32_t branch)
    {
        std::vector<std::int64_t> numbers;
        bool others = false;
        for (const std::uint32_t child : m_tree.Children(branch)) {
            if (!m_tree.HasChildren(child) || !IsAmiParameter(m_tree, child)) {
                continue;
            }
            const auto p = FindAmiParameter(m_tree, child, m_tree.Name(child));
            if (p.type != EAmiType::Tap) {
                others = true;
            } else if (const auto number = ParseInt(p.name)) {
                numbers.push_back(*number);
            }
        }
        if (numbers.empty()) {
            return;
        }
        std::ranges::sort(numbers);
        bool run = numbers.front() <= 0 && numbers.back() >= 0;
        for (std::size_t i = 1; i < numbers.size(); ++i) {
            run = run && numbers[i] - 1 == numbers[i - 1];
        }
        if (!run || others) {
            m_report.Caution(m_tree.Place(branch), 4709, BranchName());
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const CAmiTree& m_tree;
    std::vector<SBranch> m_open;
    std::string m_path; ///< names down to the open branch, with points between
};

/// All names of parameters in a branch.
std::unordered_set<std::string_view> ParameterNames(const CAmiTree& tree, std::uint32_t branch)
{
    std::unordered_set<std::string_view> names;
    std::uint32_t node = branch + 1;
    while (node < tree.Node(branch).end) {
        const bool parameter = tree.HasChildren(node) && IsAmiParameter(tree, node);
        if (parameter) {
            names.insert(tree.Name(node));
        }
        node = parameter ? tree.Node(node).end : node + 1;
    }
    return names;
}

} // namespace

void CheckSpecific(SAmiCheck& ami, std::uint32_t branch)
{
    CSpecificWalk(ami).Run(branch);
}

void CheckSpecialNames(SAmiCheck& ami, const SAmiParameter& names, std::uint32_t branch)
{
    const auto known = branch == SAmiParameter::kNone ? std::unordered_set<std::string_view>()
                                                      : ParameterNames(ami.tree, branch);
    const auto look = [&](SAmiToken token) {
        const std::string_view text = ami.tree.Text(token);
        const std::string_view last = text.substr(text.rfind('.') + 1);
        if (token.Kind() == EAmiToken::String && !known.contains(text) && !known.contains(last)) {
            ami.report.WarningAt(ami.tree.Place(token), 4699, ShownAmi(text));
        }
    };
    for (const SAmiToken& value : names.values) {
        look(value);
    }
    if (names.format == EAmiFormat::Table) {
        ForEachAmiRow(names, [&](std::uint32_t row, std::size_t) {
            if (AmiCellCount(ami.tree, row) > 0) {
                look(AmiCell(ami.tree, row, 0));
            }
        });
    }
}

} // namespace zov::ibischk
