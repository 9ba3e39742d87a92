// SPDX-License-Identifier: Apache-2.0
/// A table of a record with its buttons: rows are added, removed, copied and pasted. Where a cell
/// is a table itself it stands below, for the current row.
#pragma once

#include "app/editor/RowTableModel.h"

#include <QWidget>

class QLabel;
class QTableView;
class QToolButton;

namespace zov::app {

class CUiEditorListCtrl : public QWidget
{
    Q_OBJECT

public:
    /// @param info its name ends the object names: "ui_IDC_PowerRails"
    CUiEditorListCtrl(const SFieldInfo& info, QWidget* parent);

    [[nodiscard]] CRowTableModel& Model() { return m_model; }
    [[nodiscard]] QTableView& Table() { return *m_table; }
    void SetUnits(const CDisplayUnits& units);
    void SetRows(const TFieldRows& rows);
    [[nodiscard]] TFieldRows Rows() const { return m_model.Rows(); }
    [[nodiscard]] int ErrorCount() const;
    /// Shown below the title, such as that several records have different rows.
    void SetNote(const QString& note);

Q_SIGNALS:
    void Edited();

private:
    void AddRow();
    void RemoveRows();
    void Copy();
    void Paste();
    void UpdateButtons();
    void ShowNested();

    CRowTableModel m_model;
    QLabel* m_note;
    QTableView* m_table;
    QToolButton* m_remove;
    QToolButton* m_copy;
    CUiEditorListCtrl* m_nested = nullptr;
    int m_nestedColumn = -1;
    bool m_showing = false;
};

} // namespace zov::app
