// SPDX-License-Identifier: Apache-2.0
/// The pane "External Libraries": the libraries that are searched besides the project library, in
/// the order of the search, each with a check mark; behind them those that are remembered but could
/// not be opened.
#pragma once

#include "app/Session.h"
#include "ui/CommandActions.h"

#include <QAbstractTableModel>
#include <QTreeView>

namespace zov::app {

class CExternalLibsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CExternalLibsModel(CZovSession& session, QObject* parent = nullptr);

    /// Empty for a row whose library is open.
    [[nodiscard]] std::filesystem::path UnreachablePath(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// Behind the open ones; null for those.
    [[nodiscard]] const CZovSession::SUnreachable* UnreachableAt(int row) const;
    [[nodiscard]] QVariant UnreachableData(const CZovSession::SUnreachable& library, int column,
                                           int role) const;

    CZovSession& m_session;
    std::vector<CZovSession::SUnreachable> m_unreachable;
};

class CExternalLibsPane : public QTreeView
{
    Q_OBJECT

public:
    CExternalLibsPane(CZovSession& session, QWidget* parent);
    /// The file of the current row when it is one of a library that could not be opened; else
    /// empty.
    [[nodiscard]] std::filesystem::path CurrentUnreachable() const;

Q_SIGNALS:
    /// The row of a library was chosen.
    void LibraryChosen(const zov::CZovLibrary& library);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CZovSession& m_session;
    CExternalLibsModel m_model;
};

} // namespace zov::app
