// SPDX-License-Identifier: Apache-2.0
/// A list of objects in columns: widths given as shares of the list, columns without width hidden,
/// and a word for the user while there is no row.
#pragma once

#include <QString>
#include <QTreeView>

#include <vector>

namespace zov::ui {

class CUiHandyObjListCtrl : public QTreeView
{
    Q_OBJECT

public:
    explicit CUiHandyObjListCtrl(QWidget* parent = nullptr);

    /// Widths of the model's columns: negative a share of what is left, 0 hidden, else pixels at 96
    /// dpi. They follow the list's width until the user drags one.
    void SetColumnWidths(std::vector<int> widths);
    /// Shown in the middle while the list is empty: what to do next.
    void SetHint(const QString& hint);
    [[nodiscard]] const QString& Hint() const { return m_hint; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Distribute();

    std::vector<int> m_widths;
    QString m_hint;
    bool m_distributing = false;
    bool m_byUser = false;
};

} // namespace zov::ui
