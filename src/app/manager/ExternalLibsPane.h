// SPDX-License-Identifier: Apache-2.0
/// The pane "External Libraries": the libraries that are searched besides the project library, in
/// the order of the search, each with a check mark.
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

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    CZovSession& m_session;
};

class CExternalLibsPane : public QTreeView
{
    Q_OBJECT

public:
    CExternalLibsPane(CZovSession& session, QWidget* parent);

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
