// SPDX-License-Identifier: Apache-2.0
/// The pins and the series pin pairs of a component as lists with a filter.
#pragma once

#include "ibis/PinList.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <functional>
#include <span>

class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace zov::app {

/// Rows of texts behind a function for each column.
template <class TRow>
struct SRowColumn
{
    const char* title;
    QString (*text)(const TRow&);
};

class CPinListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CPinListModel(QObject* parent = nullptr);
    void SetPins(std::vector<ibis::SPinListRow> pins);
    [[nodiscard]] const ibis::SPinListRow& At(int row) const
    {
        return m_pins[static_cast<std::size_t>(row)];
    }
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ibis::SPinListRow> m_pins;
};

class CSeriesPinModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CSeriesPinModel(QObject* parent = nullptr);
    void SetRows(std::vector<ibis::SSeriesRow> rows);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ibis::SSeriesRow> m_rows;
};

/// A table with a filter field above: rows that hold the text in any column.
class CFilteredTable : public QWidget
{
    Q_OBJECT

public:
    /// @param hint   in the empty filter field
    /// @param empty  in the list without rows
    CFilteredTable(QAbstractItemModel& model, const QString& hint, const QString& empty,
                   QWidget* parent);

    [[nodiscard]] QTableView& Table() { return *m_table; }
    [[nodiscard]] QLineEdit& Filter() { return *m_filter; }
    /// Rows of the model, in the order of the list.
    [[nodiscard]] std::vector<int> SelectedRows() const;

private:
    void ShowCount();

    QSortFilterProxyModel* m_proxy;
    QLineEdit* m_filter;
    QLabel* m_count;
    QTableView* m_table;
};

class IBISPinListEditorView : public QWidget
{
    Q_OBJECT

public:
    explicit IBISPinListEditorView(QWidget* parent = nullptr);
    void SetPins(const std::vector<ibis::SPinListRow>& pins);
    /// Signals of the selected pins, each once.
    [[nodiscard]] QStringList SelectedSignals() const;
    [[nodiscard]] CFilteredTable& List() { return *m_list; }

private:
    CPinListModel* m_model;
    CFilteredTable* m_list;
};

class IBISSeriesPinListEditorView : public QWidget
{
    Q_OBJECT

public:
    explicit IBISSeriesPinListEditorView(QWidget* parent = nullptr);
    void SetList(const ibis::SPinList& list);

private:
    CSeriesPinModel* m_model;
    QLabel* m_groups;
};

} // namespace zov::app
