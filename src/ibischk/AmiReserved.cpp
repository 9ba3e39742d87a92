// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiReserved.h"

#include <bitset>

namespace zov::ibischk {

namespace {

constexpr std::string_view kReservedName = "Reserved_Parameters";

std::string_view SideText(EAmiSide side)
{
    return side == EAmiSide::Tx ? "Tx" : "Rx";
}

class CReservedWalk
{
public:
    CReservedWalk(SAmiCheck& ami, SAmiReserved& reserved)
        : m_ami(ami)
        , m_report(ami.report)
        , m_tree(ami.tree)
        , m_reserved(reserved)
    {
    }

    void Take(std::uint32_t child)
    {
        const std::string_view name = m_tree.Name(child);
        if (name == "Description" && !m_tree.HasChildren(child)) {
            Description(child);
            return;
        }
        if (name.empty()) {
            return; // told as a branch without name
        }
        const bool first = !m_anyParameter;
        m_anyParameter = true;
        const auto row = FindReserved(name);
        if (!row) {
            m_report.ErrorAt(m_tree.Place(child), 4624, ShownAmi(name), kReservedName);
            if (name == "Use_v7p1_AMI_Flow") {
                m_reserved.useV7p1Flow = FindAmiParameter(m_tree, child, name);
            }
            return;
        }
        if (name == "AMI_Version" && !first && !m_count[*row]) {
            m_report.ErrorAt(m_tree.Place(child), 4637);
        }
        Known(child, *row);
    }

private:
    void Description(std::uint32_t child)
    {
        if (m_description) {
            m_report.ErrorAt(m_tree.Place(child), 4640, kReservedName, "Description");
        }
        m_description = true;
        CheckAmiDescription(m_ami, child, kReservedName);
    }

    void Known(std::uint32_t child, std::size_t at)
    {
        const SReservedRow& row = ReservedTable()[at];
        const SPlace place = m_tree.Place(child);
        const CPathScope path(m_report, {{}, m_report.Path().model, row.name, {}});
        if ((row.lowest != 0 && m_ami.version < row.lowest) ||
            (row.highest != 0 && m_ami.version > row.highest)) {
            m_report.ErrorAt(place, 4669, row.name, m_ami.versionText);
        }
        if (m_count[at] && !m_repeatTold[at]) {
            m_repeatTold.set(at);
            m_report.ErrorAt(place, 4647, row.name);
        }
        Side(row, place);
        if (!m_tree.HasChildren(child)) {
            m_report.ErrorAt(place, 4644, kReservedName, row.name);
            m_count.set(at);
            return;
        }
        const SAmiParameter p = ReadAmiParameter(m_ami, child, row.name, row.rules->sets);
        if (row.rules->rule != nullptr) {
            row.rules->rule(m_ami, p);
        }
        if (!m_count[at]) {
            m_reserved.found[at] = p;
        }
        m_count.set(at);
    }

    void Side(const SReservedRow& row, SPlace place)
    {
        if (row.side == EAmiSide::Open) {
            return;
        }
        if (m_ami.side == EAmiSide::Open) {
            m_ami.side = row.side;
        } else if (m_ami.side != row.side) {
            m_report.ErrorAt(place, 4690, row.name, SideText(row.side), SideText(m_ami.side));
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const CAmiTree& m_tree;
    SAmiReserved& m_reserved;
    std::bitset<kReservedRows> m_count; ///< rows that occurred
    std::bitset<kReservedRows> m_repeatTold;
    bool m_anyParameter = false;
    bool m_description = false;
};

} // namespace

SAmiReserved CheckReserved(SAmiCheck& ami, std::uint32_t branch)
{
    SAmiReserved reserved;
    CReservedWalk walk(ami, reserved);
    for (const std::uint32_t child : ami.tree.Children(branch)) {
        walk.Take(child);
    }
    CheckAcrossReserved(ami, reserved);
    return reserved;
}

} // namespace zov::ibischk
