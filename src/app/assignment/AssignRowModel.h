// SPDX-License-Identifier: Apache-2.0
/// The item model of the assignment view over the engine's rows. A component opens into its models,
/// each with the reference designators that use it.
#pragma once

#include "assign/AssignTable.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QIcon>

#include <functional>
#include <unordered_map>
#include <vector>

namespace zov::app {

/// What a row's status comes to: its icon and colour.
enum class EAssignState
{
    Open,      ///< no model, and nobody looked for one
    Valid,     ///< it has its model
    Ambiguous, ///< it has its model, but others match, too
    NotFound,  ///< no model matches
    Off        ///< its model is in a library that is off or closed
};
EAssignState StateOf(const CAssignTable& table, const AssignRow& row);
/// By the theme; Open has no icon.
QIcon IconOf(EAssignState state);
QColor ColourOf(EAssignState state);

class CAssignRowModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit CAssignRowModel(QObject* parent);

    /// Behind rows that the filter has found.
    static QColor HitColour();

    /// Shows a table, which outlives its being shown; null for nothing. Also when its view was
    /// switched.
    void Show(CAssignTable* table);
    /// With the original model, in RefDes view with the device.
    void ShowOrigin(bool on);
    [[nodiscard]] bool ShowsOrigin() const { return m_origin; }
    /// Only the rows that the last find hit, or all.
    void ShowFoundOnly(bool on);
    /// Models, statuses or hits changed, the rows are the same.
    void RowsChanged();
    /// The tool tip of a row, asked for when it is shown.
    void SetTip(std::function<QString(const AssignRow& row)> tip) { m_tip = std::move(tip); }

    [[nodiscard]] TAssignColumns Columns() const;
    /// The row, for a line below it the row that it belongs to; null outside.
    [[nodiscard]] AssignRow* RowAt(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOf(const AssignRow& row) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// A line below a component.
    struct SUse
    {
        SModelRef model;
        QString refdes;
    };

    [[nodiscard]] const std::vector<SUse>& UsesOf(const AssignRow& row) const;
    [[nodiscard]] QVariant RowData(const AssignRow& row, EAssignColumn column, int role) const;
    [[nodiscard]] QVariant UseData(const SUse& use, EAssignColumn column, int role) const;
    void PickRows();

    CAssignTable* m_table = nullptr;
    std::vector<AssignRow*> m_rows;
    mutable std::unordered_map<const AssignRow*, std::vector<SUse>> m_uses;
    std::function<QString(const AssignRow&)> m_tip;
    bool m_origin = false;
    bool m_foundOnly = false;
};

} // namespace zov::app
