// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/SearchKeyModel.h"

namespace zov::app {

CSearchKeyModel::CSearchKeyModel(CSearchOptions options, QObject* parent)
    : QAbstractListModel(parent)
    , m_options(std::move(options))
{
}

bool CSearchKeyModel::Move(int row, int by)
{
    if (row < 0 || !m_options.Move(static_cast<std::size_t>(row), by)) {
        return false;
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    Q_EMIT OptionsChanged();
    return true;
}

int CSearchKeyModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(CSearchOptions::kRows);
}

QVariant CSearchKeyModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const SearchOption& option = m_options.Rows()[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromUtf8(option.label.data(), static_cast<int>(option.label.size()));
    case Qt::CheckStateRole:
        return option.enabled != 0 ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

bool CSearchKeyModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole) {
        return false;
    }
    m_options.Enable(static_cast<std::size_t>(index.row()), value.toInt() == Qt::Checked);
    Q_EMIT dataChanged(index, index, {role});
    Q_EMIT OptionsChanged();
    return true;
}

Qt::ItemFlags CSearchKeyModel::flags(const QModelIndex& index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

} // namespace zov::app
