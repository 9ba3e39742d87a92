// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Ami.h"

#include "base/Number.h"
#include "ibischk/AmiReserved.h"
#include "ibischk/AmiSpecific.h"

#include <fmt/format.h>
#include <string>

namespace zov::ibischk {

namespace {

constexpr double kNewestVersion = 7.2;
constexpr std::size_t kRootNameLimit = 32;
constexpr std::string_view kReservedName = "Reserved_Parameters";
constexpr std::string_view kSpecificName = "Model_Specific";

class CAmiDriver
{
public:
    CAmiDriver(SCheck& check, const CAmiTree& tree, EAmiSide side)
        : m_tree(tree)
        , m_ami{.check = check,
                .report = check.report,
                .tree = tree,
                .type = check.state.fileType,
                .preset = side}
    {
    }

    SAmiFacts Run()
    {
        RootName();
        if (!m_tree.Empty()) {
            Version();
        }
        Announce();
        const CPathScope path(m_ami.report, {{}, m_rootName, {}, {}});
        if (!m_tree.Empty()) {
            for (const std::uint32_t child : m_tree.Children(CAmiTree::Root())) {
                Take(child);
            }
        }
        Branches();
        if (const SAmiParameter& names = m_reserved["Special_Param_Names"]; names.Present()) {
            CheckSpecialNames(m_ami, names, m_specific);
        }
        m_ami.report.Progress(fmt::format("... Done Checking {}\n", m_ami.check.path));
        return Facts();
    }

private:
    void RootName()
    {
        if (!m_tree.Empty()) {
            const SAmiToken name = m_tree.Node(CAmiTree::Root()).name;
            m_rootName = m_tree.Text(name).substr(0, kRootNameLimit);
        }
        if (m_rootName.empty()) {
            m_ami.report.ErrorAt(m_tree.Empty() ? SPlace{} : m_tree.Place(CAmiTree::Root()), 4682);
        }
    }

    /// The parameter of a name under the first Reserved_Parameters, before anything is checked.
    [[nodiscard]] SAmiParameter LookAhead(std::string_view name) const
    {
        for (const std::uint32_t child : m_tree.Children(CAmiTree::Root())) {
            if (m_tree.Name(child) != kReservedName) {
                continue;
            }
            for (const std::uint32_t node : m_tree.Children(child)) {
                if (m_tree.Name(node) == name) {
                    return FindAmiParameter(m_tree, node, name);
                }
            }
            break;
        }
        return {};
    }

    void Version()
    {
        m_ami.resolves = LookAhead("Resolve_Exists").IsTrue();
        const SAmiParameter p = LookAhead("AMI_Version");
        if (m_ami.type == EFileType::Parameters) {
            m_ami.version = kNewestVersion;
        }
        if (!p.Present() || m_ami.type == EFileType::Parameters) {
            return;
        }
        m_ami.implicitVersion = false;
        const SAmiToken* value = p.FixedValue();
        const std::string_view text = value == nullptr ? std::string_view() : m_tree.Text(*value);
        const auto number = ParseDouble(text);
        m_ami.version = number.value_or(kNewestVersion);
        m_ami.versionText = ShownAmi(text);
    }

    void Announce()
    {
        CReport& report = m_ami.report;
        if (m_ami.implicitVersion) {
            report.Progress(
                fmt::format("\n... Checking {} for Implicit AMI Version 5.0 Compatibility...\n\n",
                            m_ami.check.path));
        } else {
            report.Progress(fmt::format("\n... Checking {} for AMI Version {} Compatibility...\n\n",
                                        m_ami.check.path, m_ami.versionText));
        }
    }

    void Take(std::uint32_t child)
    {
        const std::string_view name = m_tree.Name(child);
        const bool leaf = !m_tree.HasChildren(child) && !m_tree.Values(child).empty();
        const SPlace place = m_tree.Place(child);
        if (name.empty()) {
            return; // told as a branch without name
        }
        if (name == "Description" && !m_tree.HasChildren(child)) {
            if (m_description) {
                m_ami.report.ErrorAt(place, 4640, m_rootName, name);
            }
            m_description = true;
            CheckAmiDescription(m_ami, child, m_rootName);
        } else if (leaf) {
            m_ami.report.ErrorAt(place, 4644, m_rootName, ShownAmi(name));
        } else if (name == kReservedName) {
            Reserved(child);
        } else if (name == kSpecificName) {
            Specific(child);
        } else if (m_tree.HasChildren(child)) {
            m_ami.report.ErrorAt(place, 4623, ShownAmi(name));
        } else {
            m_ami.report.ErrorAt(place, 4644, m_rootName, ShownAmi(name));
        }
    }

    void Reserved(std::uint32_t child)
    {
        if (m_reservedNode != SAmiParameter::kNone) {
            m_ami.report.ErrorAt(m_tree.Place(child), 4642, kReservedName);
            return;
        }
        m_reservedNode = child;
        if (m_ami.type == EFileType::Parameters) {
            m_ami.report.ErrorAt(m_tree.Place(child), 4685);
            return;
        }
        m_reserved = CheckReserved(m_ami, child);
    }

    void Specific(std::uint32_t child)
    {
        if (m_specific != SAmiParameter::kNone) {
            m_ami.report.ErrorAt(m_tree.Place(child), 4642, kSpecificName);
            return;
        }
        m_specific = child;
        if (m_tree.HasChildren(child)) {
            CheckSpecific(m_ami, child);
        } else {
            m_ami.report.WarningAt(m_tree.Place(child), 4716, kSpecificName);
        }
    }

    /// Which branches there are, and in which order.
    void Branches()
    {
        constexpr auto kNone = SAmiParameter::kNone;
        CReport& report = m_ami.report;
        if (m_reservedNode == kNone && m_specific == kNone) {
            report.Error(4684);
            return;
        }
        if (m_ami.type == EFileType::Parameters) {
            if (m_specific == kNone) {
                report.Error(4622, kSpecificName);
            }
            return;
        }
        if (m_reservedNode == kNone) {
            report.Error(4622, kReservedName);
        } else if (m_ami.versionText != "5.0" && m_specific < m_reservedNode) {
            report.ErrorAt(m_tree.Place(m_reservedNode), 4643);
        }
    }

    [[nodiscard]] SAmiFacts Facts() const
    {
        SAmiFacts facts;
        facts.read = true;
        facts.getWave = m_reserved["GetWave_Exists"].IsTrue();
        facts.resolve = m_reserved["Resolve_Exists"].IsTrue();
        facts.repeater = m_reserved["Repeater_Type"].Present();
        const SAmiParameter& mode = m_reserved["BCI_Training_Mode"];
        mode.ForEachChoice([&](SAmiToken token) {
            facts.impulse = facts.impulse || m_tree.Text(token) == "Impulse";
        });
        return facts;
    }

    const CAmiTree& m_tree;
    SAmiCheck m_ami;
    std::string_view m_rootName;
    bool m_description = false;
    std::uint32_t m_reservedNode = SAmiParameter::kNone;
    std::uint32_t m_specific = SAmiParameter::kNone;
    SAmiReserved m_reserved;
};

} // namespace

SAmiFacts CheckAmi(SCheck& check, const SAmiText& text, EAmiSide side)
{
    const auto tree = CAmiTree::Parse(check.report, text, check.path);
    return tree ? CAmiDriver(check, *tree, side).Run() : SAmiFacts{};
}

SAmiFacts CheckNamedAmi(SCheck& check, std::string_view name, EFileType type, EAmiSide side)
{
    SCheck inner(check.report, check.files);
    inner.path = check.PathOf(name);
    inner.depth = check.depth + 1;
    inner.state.fileType = type;
    const auto bytes = inner.files.Read(inner.path);
    if (!bytes) {
        return {};
    }
    const std::string outer(check.report.File());
    const CPathScope path(check.report, {});
    check.report.SetFile(inner.path);
    check.report.Progress(fmt::format("\n... Reading {}\n", inner.path));
    const auto text = ReadAmiText(inner, *bytes);
    const SAmiFacts facts = text ? CheckAmi(inner, *text, side) : SAmiFacts{};
    check.report.SetFile(outer);
    return facts;
}

} // namespace zov::ibischk
