// SPDX-License-Identifier: Apache-2.0
#include "app/manager/LibraryTreeModel.h"

#include "app/Images.h"
#include "app/ModelListModel.h"
#include "base/File.h"

#include <QFont>
#include <QMimeData>
#include <QUrl>

namespace zov::app {
namespace {

const QString kNodeMime = QStringLiteral("application/x-zov-library-node");

QStringList LocalFiles(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            paths += url.toLocalFile();
        }
    }
    return paths;
}

} // namespace

CLibraryTreeModel::CLibraryTreeModel(CZovSession& session, QObject* parent)
    : QAbstractItemModel(parent)
    , m_session(session)
{
    connect(&session, &CZovSession::LibrariesChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&session, &CZovSession::ModifiedChanged, this, &CLibraryTreeModel::ShowModified);
}

void CLibraryTreeModel::ShowModified()
{
    for (const auto& library : m_session.Tree().LibrariesOf(CLibraryTree::kRoot)) {
        const QModelIndex at = IndexOf(m_session.Tree().Find(*library));
        Q_EMIT dataChanged(at, at, {Qt::DisplayRole});
    }
}

CLibraryTree::TNode CLibraryTreeModel::NodeAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<CLibraryTree::TNode>(index.internalId())
                           : CLibraryTree::kRoot;
}

QModelIndex CLibraryTreeModel::IndexOf(CLibraryTree::TNode node) const
{
    if (node == CLibraryTree::kRoot || !m_session.Tree().Has(node)) {
        return {};
    }
    return createIndex(static_cast<int>(m_session.Tree().PlaceOf(node)), 0,
                       static_cast<quintptr>(node));
}

QModelIndex CLibraryTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const auto& children = m_session.Tree().ChildrenOf(NodeAt(parent));
    return createIndex(row, column, static_cast<quintptr>(children[static_cast<std::size_t>(row)]));
}

QModelIndex CLibraryTreeModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? IndexOf(m_session.Tree().ParentOf(NodeAt(index))) : QModelIndex();
}

int CLibraryTreeModel::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(m_session.Tree().ChildrenOf(NodeAt(parent)).size());
}

int CLibraryTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QString CLibraryTreeModel::ToolTipOf(CLibraryTree::TNode node) const
{
    const auto& library = m_session.Tree().LibraryOf(node);
    if (!library) {
        return tr("%n libraries", nullptr,
                  static_cast<int>(m_session.Tree().LibrariesOf(node).size()));
    }
    return tr("%1\n%L2 models")
        .arg(QString::fromStdString(PathText(library->Path())))
        .arg(library->Count());
}

QVariant CLibraryTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const CLibraryTree::TNode node = NodeAt(index);
    const auto& library = m_session.Tree().LibraryOf(node);
    const bool isProject = library && library == m_session.ProjectLibrary();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: {
        const CLibraryTree& tree = m_session.Tree();
        const bool modified = library && m_session.IsModified(*library);
        return QString::fromStdString(role == Qt::EditRole ? tree.NameOf(node)
                                                           : tree.ShownName(node)) +
               (modified && role == Qt::DisplayRole ? QStringLiteral(" *") : QString());
    }
    case Qt::ToolTipRole:
        return ToolTipOf(node);
    case Qt::DecorationRole:
        return Images().Icon(isProject ? QStringLiteral("project")
                             : library ? QStringLiteral("library")
                                       : QStringLiteral("collection"));
    case Qt::FontRole: {
        QFont font;
        font.setBold(isProject);
        return font;
    }
    case Qt::CheckStateRole:
        if (!library || isProject) {
            return {};
        }
        return m_session.IsOn(*library) ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

bool CLibraryTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const CLibraryTree::TNode node = NodeAt(index);
    if (role == Qt::CheckStateRole && m_session.Tree().LibraryOf(node)) {
        m_session.SwitchOn(*m_session.Tree().LibraryOf(node), value.toInt() == Qt::Checked);
        return true;
    }
    return role == Qt::EditRole && m_session.RenameCollection(node, value.toString().toStdString());
}

Qt::ItemFlags CLibraryTreeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!index.isValid()) {
        return flags | Qt::ItemIsDropEnabled;
    }
    const auto& library = m_session.Tree().LibraryOf(NodeAt(index));
    if (!library) {
        return flags | Qt::ItemIsEditable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    }
    flags |= Qt::ItemIsDropEnabled; // models
    if (library != m_session.ProjectLibrary()) {
        flags |= Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled;
    }
    return flags;
}

QStringList CLibraryTreeModel::mimeTypes() const
{
    return {kNodeMime, QStringLiteral("application/x-zov-records"),
            QStringLiteral("text/uri-list")};
}

QMimeData* CLibraryTreeModel::mimeData(const QModelIndexList& indexes) const
{
    auto* data = new QMimeData;
    QByteArray nodes;
    for (const QModelIndex& index : indexes) {
        nodes += QByteArray::number(NodeAt(index)) + ' ';
    }
    data->setData(kNodeMime, nodes);
    return data;
}

Qt::DropActions CLibraryTreeModel::supportedDropActions() const
{
    return Qt::MoveAction | Qt::CopyAction;
}

bool CLibraryTreeModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                        const QModelIndex& parent) const
{
    if (m_session.Tree().LibraryOf(NodeAt(parent))) {
        return !CModelListModel::DraggedRecords(*data).empty();
    }
    return m_session.Tree().IsCollection(NodeAt(parent)) &&
           (data->hasFormat(kNodeMime) || !LocalFiles(*data).isEmpty());
}

bool CLibraryTreeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                     int column, const QModelIndex& parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) {
        return false;
    }
    if (const auto& library = m_session.Tree().LibraryOf(NodeAt(parent))) {
        Q_EMIT ModelsDropped(library, CModelListModel::DraggedRecords(*data),
                             action == Qt::MoveAction);
        return false; // an undoable step changed the lists; the view must not remove rows itself
    }
    const CLibraryTree::TNode collection = NodeAt(parent);
    if (!data->hasFormat(kNodeMime)) {
        Q_EMIT FilesDropped(LocalFiles(*data), collection);
        return true;
    }
    for (const QByteArray& text : data->data(kNodeMime).split(' ')) {
        const CLibraryTree::TNode node = text.toUInt();
        if (!text.isEmpty() && m_session.Tree().Has(node)) {
            m_session.MoveNodeTo(node, collection);
        }
    }
    // The session moved them; the view must not remove rows itself.
    return false;
}

} // namespace zov::app
