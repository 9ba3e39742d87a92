// SPDX-License-Identifier: Apache-2.0
/// The objects of an IBIS file as a tree: names, values, and what the checker says of them. Rows
/// are made when they are first looked at, and thousands of siblings stand in groups, so that a
/// large file costs what is seen of it.
#pragma once

#include "ibis/DataParser.h"

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace zov::app {

class CIbisTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit CIbisTreeModel(QObject* parent = nullptr);
    ~CIbisTreeModel() override;

    /// Null empties the tree.
    void SetFile(std::shared_ptr<const ibis::CIBISDataParser> file);
    /// Null for an index that is none, and for a group.
    [[nodiscard]] const ibis::CIPDataObject* ObjectAt(const QModelIndex& index) const;
    /// The innermost object that begins at or before a line of the file.
    [[nodiscard]] QModelIndex IndexOfLine(std::size_t line) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct SNode;
    [[nodiscard]] SNode& NodeOf(const QModelIndex& index) const;
    static void Fill(SNode& node);
    [[nodiscard]] ibis::EIPSeverity WorstOf(const ibis::CIPDataObject& object) const;
    [[nodiscard]] QVariant GroupData(const SNode& group, int column, int role) const;
    [[nodiscard]] QString ToolTip(const ibis::CIPDataObject& object) const;

    std::shared_ptr<const ibis::CIBISDataParser> m_file;
    std::unique_ptr<SNode> m_root;
};

/// The image of a severity: error, warning, note.
[[nodiscard]] QVariant SeverityImage(ibis::EIPSeverity severity);

} // namespace zov::app
