// SPDX-License-Identifier: Apache-2.0
/// A table of texts that the user fills: rows are added and removed, some columns have choices.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

class QHBoxLayout;
class QTableView;

namespace zov::app {

struct STextColumn
{
    QString title;
    QStringList choices; ///< empty: any text
};

class CTextTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CTextTableModel(std::vector<STextColumn> columns, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<QStringList>& Rows() const { return m_rows; }
    [[nodiscard]] const QStringList& ChoicesOf(int column) const
    {
        return m_columns[static_cast<std::size_t>(column)].choices;
    }
    /// Cells that are missing are empty.
    void Add(QStringList cells);
    void Remove(int row);
    void Clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<STextColumn> m_columns;
    std::vector<QStringList> m_rows;
};

/// Such a table with buttons to add and remove rows.
class CTextTable : public QWidget
{
    Q_OBJECT

public:
    /// @param empty  what the table says while it has no row
    CTextTable(std::vector<STextColumn> columns, const QString& empty, QWidget* parent = nullptr);

    [[nodiscard]] CTextTableModel& Model() { return m_model; }
    [[nodiscard]] const CTextTableModel& Model() const { return m_model; }
    /// One more button below the table.
    void AddButton(const QString& text, const char* objectName, std::function<void()> clicked);

private:
    CTextTableModel m_model;
    QTableView* m_table;
    QHBoxLayout* m_buttons;
};

} // namespace zov::app
