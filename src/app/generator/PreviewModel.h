// SPDX-License-Identifier: Apache-2.0
/// The preview of a generator tab as a table: faulty cells are marked and say why.
#pragma once

#include "batch/Preview.h"

#include <QAbstractTableModel>

namespace zov::app {

class CPreviewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void Show(batch::SPreview preview);
    [[nodiscard]] const batch::SPreview& Preview() const { return m_preview; }
    /// The first cell, row by row, that keeps its row out; invalid without one.
    [[nodiscard]] QModelIndex FirstFault() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static constexpr int kResult = 0; ///< what becomes of the row
    static constexpr int kFirstField = 1;

    batch::SPreview m_preview;
};

} // namespace zov::app
