// SPDX-License-Identifier: Apache-2.0
/// The search key table as a list: its order is that of the search, a check mark switches a key on.
#pragma once

#include "core/SearchOptions.h"

#include <QAbstractListModel>

namespace zov::app {

class CSearchKeyModel : public QAbstractListModel
{
    Q_OBJECT

public:
    CSearchKeyModel(CSearchOptions options, QObject* parent);

    [[nodiscard]] const CSearchOptions& Options() const { return m_options; }
    /// False when the row can't go there.
    bool Move(int row, int by);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void OptionsChanged();

private:
    CSearchOptions m_options;
};

} // namespace zov::app
