// SPDX-License-Identifier: Apache-2.0
/// The "Opened Libraries" tree as an item model over the session's arrangement. Libraries have a
/// check mark: whether they are searched. Rows are dragged to move them.
#pragma once

#include "app/Session.h"

#include <QAbstractItemModel>

#include <unordered_set>

namespace zov::app {

class CLibraryTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit CLibraryTreeModel(CZovSession& session, QObject* parent = nullptr);

    [[nodiscard]] CLibraryTree::TNode NodeAt(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOf(CLibraryTree::TNode node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

Q_SIGNALS:
    /// Models of a list were dropped on a library.
    void ModelsDropped(const zov::app::CZovSession::TLibrary& library,
                       const std::unordered_set<const zov::CZovRcdProps*>& records, bool move);
    /// Files from outside were dropped on a collection.
    void FilesDropped(const QStringList& paths, zov::CLibraryTree::TNode collection);

private:
    void ShowModified();
    [[nodiscard]] QString ToolTipOf(CLibraryTree::TNode node) const;

    CZovSession& m_session;
};

} // namespace zov::app
