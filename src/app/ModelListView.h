// SPDX-License-Identifier: Apache-2.0
/// A list of models with its search field: columns chosen and ordered by the user, sorting by a
/// click, copying as CSV, and a word for the user when it is empty.
#pragma once

#include "app/ModelListModel.h"
#include "core/Settings.h"

#include <QTableView>
#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;

namespace zov::app {

/// The table itself.
class CModelTable : public QTableView
{
    Q_OBJECT

public:
    explicit CModelTable(QWidget* parent = nullptr);

    /// Shown in the middle while there is no row.
    void SetHint(const QString& hint);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_hint;
};

class CModelListView : public QWidget
{
    Q_OBJECT

public:
    /// @param listId number under which the settings keep the columns of this list
    CModelListView(std::uint32_t listId, QWidget* parent = nullptr);

    [[nodiscard]] CModelListModel& Model() { return m_model; }
    [[nodiscard]] CModelTable& Table() { return *m_table; }
    [[nodiscard]] QLineEdit& SearchField() { return *m_search; }
    [[nodiscard]] std::uint32_t ListId() const { return m_listId; }

    /// What the user should do next when the libraries hold nothing.
    void SetEmptyHint(const QString& hint);
    /// Columns, units and hide rules of the settings.
    void Take(const SZovSettings& settings);
    /// Puts this list's columns into the settings.
    void Store(SZovSettings& settings) const;

    /// Selected records in the order of the rows.
    [[nodiscard]] std::vector<CZovRcdProps*> Selected() const;
    /// The same by library.
    struct SSelected
    {
        std::shared_ptr<CZovLibrary> library;
        std::vector<CZovRcdProps*> records;
    };
    [[nodiscard]] std::vector<SSelected> SelectedByLibrary() const;
    void Select(const CZovRcdProps& record);
    /// These and no others, as far as they are shown; returns how many are.
    std::size_t Select(const std::vector<const CZovRcdProps*>& records);
    /// Selected rows, or all when none is selected, with a head line; texts with separators are
    /// quoted.
    [[nodiscard]] QString SelectionAsCsv() const;

Q_SIGNALS:
    /// Other records are selected. When rows are made anew the selection stays with its records.
    void SelectionChanged();
    /// Double click or Enter.
    void Activated(const CZovRcdProps& record);
    void ColumnsChanged();
    void ContextMenuAsked(const QPoint& globalPos);

private:
    void ShowCount();
    void ShowHint();
    void ShowColumnMenu(const QPoint& pos);
    void SearchChanged();
    /// In rising order.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    void KeepSelection();
    void RestoreSelection();

    std::uint32_t m_listId;
    CModelListModel m_model;
    CModelTable* m_table;
    QLineEdit* m_search;
    QLabel* m_count;
    QString m_emptyHint;
    bool m_taking = false;
    /// Selected records while new rows are being made; compared by address only.
    std::vector<const CZovRcdProps*> m_keptSelection;
    int m_keptScroll = 0;
    bool m_keeping = false;
};

} // namespace zov::app
