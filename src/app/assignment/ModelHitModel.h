// SPDX-License-Identifier: Apache-2.0
/// Models that a search found, as a list.
#pragma once

#include "assign/ModelSearch.h"

#include <QAbstractTableModel>

#include <vector>

namespace zov::app {

class CModelHitModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CModelHitModel(QObject* parent)
        : QAbstractTableModel(parent)
    {
    }

    void Show(std::vector<SModelRef> hits);
    /// A null reference for a row outside the list.
    [[nodiscard]] SModelRef HitAt(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<SModelRef> m_hits;
};

} // namespace zov::app
