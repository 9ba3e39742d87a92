// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiTable.h"

namespace zov::ibischk {

namespace {

class CTableCheck
{
public:
    CTableCheck(SAmiCheck& ami, const SAmiParameter& p)
        : m_ami(ami)
        , m_report(ami.report)
        , m_tree(ami.tree)
        , m_p(p)
    {
    }

    void Run()
    {
        Labels();
        FirstRow();
        if (m_columns == 0) {
            m_report.ErrorAt(m_tree.Place(m_p.formatNode), 4659, m_p.name);
            return;
        }
        if (m_labels != SAmiParameter::kNone && m_tree.Values(m_labels).size() != m_columns) {
            m_report.ErrorAt(m_tree.Place(m_labels), 4660, m_p.name, 0,
                             m_tree.Values(m_labels).size(), m_columns);
        }
        if (m_p.typeWords.size() > 1 && m_p.typeWords.size() != m_columns) {
            m_report.ErrorAt(m_p.place, 4662, m_p.name, m_p.typeWords.size(), m_columns);
        }
        Plain();
        ForEachAmiRow(m_p, [this](std::uint32_t row, std::size_t number) { Row(row, number); });
    }

private:
    void Labels()
    {
        bool first = m_p.values.empty();
        for (const std::uint32_t child : m_tree.Children(m_p.formatNode)) {
            if (m_tree.Name(child) == "Labels") {
                if (!first) {
                    m_report.ErrorAt(m_tree.Place(child), 4661, m_p.name);
                } else {
                    m_labels = child;
                }
            }
            first = false;
        }
    }

    void FirstRow()
    {
        m_columns = m_p.values.size();
        if (m_columns != 0) {
            return;
        }
        ForEachAmiRow(m_p, [this](std::uint32_t row, std::size_t) {
            m_columns = m_columns == 0 ? AmiCellCount(m_tree, row) : m_columns;
        });
    }

    [[nodiscard]] std::optional<EAmiType> TypeOf(std::size_t column) const
    {
        if (!m_p.type) {
            return std::nullopt; // an illegal word was told
        }
        if (m_p.typeWords.size() == 1) {
            return m_p.type;
        }
        return column < m_p.typeWords.size() ? FindAmiType(m_tree.Raw(m_p.typeWords[column]))
                                             : std::nullopt;
    }

    void Cell(SAmiToken cell, std::size_t column)
    {
        if (const auto type = TypeOf(column)) {
            AcceptAmiValue(m_ami, m_p, "Table", cell, *type);
        }
    }

    /// Values behind the word Table itself are a row.
    void Plain()
    {
        for (std::size_t column = 0; column < m_p.values.size(); ++column) {
            Cell(m_p.values[column], column);
        }
    }

    void Row(std::uint32_t row, std::size_t number)
    {
        if (m_tree.HasChildren(row)) {
            for (const std::uint32_t inner : m_tree.Children(row)) {
                m_report.ErrorAt(m_tree.Place(inner), 4628, ShownAmi(m_tree.Name(inner)), m_p.name);
            }
            return;
        }
        const std::size_t cells = AmiCellCount(m_tree, row);
        if (cells == 0) {
            return; // a row without cells was told as a branch without name
        }
        if (cells != m_columns) {
            m_report.ErrorAt(m_tree.Place(row), 4660, m_p.name, number, cells, m_columns);
        }
        for (std::size_t column = 0; column < cells; ++column) {
            Cell(AmiCell(m_tree, row, column), column);
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const CAmiTree& m_tree;
    const SAmiParameter& m_p;
    std::uint32_t m_labels = SAmiParameter::kNone;
    std::size_t m_columns = 0;
};

} // namespace

std::size_t AmiCellCount(const CAmiTree& tree, std::uint32_t row)
{
    const bool named = tree.Node(row).name.Kind() != EAmiToken::None;
    return tree.Values(row).size() + (named ? 1 : 0);
}

SAmiToken AmiCell(const CAmiTree& tree, std::uint32_t row, std::size_t column)
{
    return column == 0 ? tree.Node(row).name : tree.Values(row)[column - 1];
}

void CheckAmiTable(SAmiCheck& ami, const SAmiParameter& p)
{
    CTableCheck(ami, p).Run();
}

} // namespace zov::ibischk
