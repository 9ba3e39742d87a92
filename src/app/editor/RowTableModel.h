// SPDX-License-Identifier: Apache-2.0
/// Rows of a record's table (rails, pins, connections, points) as an item model. A cell holds the
/// value, or the text that was typed or pasted and is no value, so that nothing is lost.
#pragma once

#include "core/RecordFields.h"

#include <QAbstractTableModel>

namespace zov::app {

class CRowTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    CRowTableModel(std::span<const SFieldInfo> columns, QObject* parent);

    [[nodiscard]] std::span<const SFieldInfo> Columns() const { return m_columns; }
    void SetUnits(const CDisplayUnits& units);
    void SetRows(const TFieldRows& rows);
    /// Cells that can't be read count as nothing; see ErrorCount.
    [[nodiscard]] TFieldRows Rows() const;
    [[nodiscard]] int ErrorCount() const;

    /// Cells as lines of texts with tabs between them, every digit of a number kept.
    [[nodiscard]] QString CopyText(const QModelIndexList& cells) const;
    /// Takes such lines in from that cell on; rows are added as needed. A first line that repeats
    /// the columns' titles is passed over, quotes of spreadsheets are taken off.
    void PasteText(int row, int column, const QString& text);
    /// The rows of a cell that is a table itself.
    [[nodiscard]] TFieldRows NestedRows(int row, int column) const;
    void SetNestedRows(int row, int column, TFieldRows rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool insertRows(int row, int count, const QModelIndex& parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

Q_SIGNALS:
    /// The user changed something.
    void Edited();

private:
    struct SCell
    {
        SFieldValue value;
        QString bad;   ///< what was typed, when it is no value
        QString error; ///< why
    };
    using TRow = std::vector<SCell>;

    [[nodiscard]] const SCell& CellAt(const QModelIndex& index) const;
    [[nodiscard]] TRow NewRow() const;
    void Put(SCell& cell, std::size_t column, const QString& text) const;

    std::span<const SFieldInfo> m_columns;
    std::vector<TRow> m_rows;
    CDisplayUnits m_units;
};

} // namespace zov::app
