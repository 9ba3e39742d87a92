// SPDX-License-Identifier: Apache-2.0
#include "app/manager/ExternalLibsPane.h"

#include "base/File.h"
#include "ui/ListHint.h"

#include <QGuiApplication>
#include <QHeaderView>

namespace zov::app {
namespace {

enum EColumn
{
    kName,
    kModels,
    kPath,
    kColumns
};

} // namespace

CExternalLibsModel::CExternalLibsModel(CZovSession& session, QObject* parent)
    : QAbstractTableModel(parent)
    , m_session(session)
{
    const auto reset = [this] {
        beginResetModel();
        m_unreachable = m_session.Unreachable();
        endResetModel();
    };
    connect(&session, &CZovSession::LibrariesChanged, this, reset);
    connect(&session, &CZovSession::LibraryChanged, this, [this] {
        if (rowCount() > 0) {
            Q_EMIT dataChanged(index(0, kModels), index(rowCount() - 1, kModels));
        }
    });
}

int CExternalLibsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid()
               ? 0
               : static_cast<int>(m_session.Set().Externals().size() + m_unreachable.size());
}

int CExternalLibsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

const CZovSession::SUnreachable* CExternalLibsModel::UnreachableAt(int row) const
{
    const std::size_t open = m_session.Set().Externals().size();
    const auto at = static_cast<std::size_t>(row);
    return at >= open && at - open < m_unreachable.size() ? &m_unreachable[at - open] : nullptr;
}

std::filesystem::path CExternalLibsModel::UnreachablePath(int row) const
{
    const CZovSession::SUnreachable* library = row < 0 ? nullptr : UnreachableAt(row);
    return library == nullptr ? std::filesystem::path() : library->listed.path;
}

QVariant CExternalLibsModel::UnreachableData(const CZovSession::SUnreachable& library, int column,
                                             int role) const
{
    switch (role) {
    case Qt::ForegroundRole:
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    case Qt::ToolTipRole:
        return tr("%1\n%2\nThe library stays remembered. Try again or remove it with the menu of "
                  "this row.")
            .arg(QString::fromStdString(PathText(library.listed.path)),
                 QString::fromStdString(library.why));
    case Qt::DisplayRole:
        return column == kName     ? QString::fromStdString(PathText(library.listed.path.stem()))
               : column == kModels ? tr("not opened")
                                   : QString::fromStdString(PathText(library.listed.path));
    default:
        return {};
    }
}

QVariant CExternalLibsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    if (const CZovSession::SUnreachable* library = UnreachableAt(index.row())) {
        return UnreachableData(*library, index.column(), role);
    }
    const SLibraryEntry& entry = m_session.Set().Externals()[static_cast<std::size_t>(index.row())];
    if (role == Qt::CheckStateRole && index.column() == kName) {
        return entry.on ? Qt::Checked : Qt::Unchecked;
    }
    if (role == Qt::TextAlignmentRole && index.column() == kModels) {
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole) {
        return QString::fromStdString(PathText(entry.path));
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case kName:
        return QString::fromStdString(entry.DisplayName());
    case kModels:
        return QStringLiteral("%L1").arg(entry.library->Count());
    default:
        return QString::fromStdString(PathText(entry.path));
    }
}

bool CExternalLibsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= rowCount() ||
        UnreachableAt(index.row()) != nullptr) {
        return false;
    }
    const auto& entry = m_session.Set().Externals()[static_cast<std::size_t>(index.row())];
    m_session.SwitchOn(*entry.library, value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags CExternalLibsModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == kName && UnreachableAt(index.row()) == nullptr
               ? flags | Qt::ItemIsUserCheckable
               : flags;
}

QVariant CExternalLibsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == kName ? tr("Library") : section == kModels ? tr("Models") : tr("File");
}

CExternalLibsPane::CExternalLibsPane(CZovSession& session, QWidget* parent)
    : QTreeView(parent)
    , m_session(session)
    , m_model(session)
{
    setObjectName(QStringLiteral("ExternalLibraries"));
    setModel(&m_model);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setSectionResizeMode(kName, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(kModels, QHeaderView::ResizeToContents);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid() && CurrentUnreachable().empty()) {
                    const auto row = static_cast<std::size_t>(current.row());
                    Q_EMIT LibraryChosen(*m_session.Set().Externals()[row].library);
                }
            });
}

std::filesystem::path CExternalLibsPane::CurrentUnreachable() const
{
    return m_model.UnreachablePath(currentIndex().row());
}

void CExternalLibsPane::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    ui::PaintListHint(*this, tr("No external library is open. Import one with the button 'Import "
                                "Library from File', or drop library files on the tree of opened "
                                "libraries."));
}

} // namespace zov::app
