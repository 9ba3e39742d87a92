// SPDX-License-Identifier: Apache-2.0
#include "app/editor/RowTableModel.h"

#include "app/editor/EditorColors.h"

#include <QStringList>

#include <algorithm>
#include <map>

namespace zov::app {
namespace {

/// Rows that a paste may make: more is a mistake of the clipboard's owner.
constexpr int kMaxRows = 100'000;

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString Unquoted(const QString& cell)
{
    const QLatin1Char quote('"');
    if (cell.size() < 2 || !cell.startsWith(quote) || !cell.endsWith(quote)) {
        return cell;
    }
    return cell.mid(1, cell.size() - 2).replace(QStringLiteral("\"\""), QString(quote));
}

} // namespace

CRowTableModel::CRowTableModel(std::span<const SFieldInfo> columns, QObject* parent)
    : QAbstractTableModel(parent)
    , m_columns(columns)
{
}

void CRowTableModel::SetUnits(const CDisplayUnits& units)
{
    m_units = units;
    if (!m_rows.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void CRowTableModel::SetRows(const TFieldRows& rows)
{
    beginResetModel();
    m_rows.clear();
    for (const TFieldRow& row : rows) {
        TRow& cells = m_rows.emplace_back(m_columns.size());
        for (std::size_t i = 0; i < std::min(row.size(), cells.size()); ++i) {
            cells[i].value = row[i];
        }
    }
    endResetModel();
}

TFieldRows CRowTableModel::Rows() const
{
    TFieldRows rows;
    for (const TRow& cells : m_rows) {
        TFieldRow& row = rows.emplace_back();
        for (const SCell& cell : cells) {
            row.push_back(cell.value);
        }
    }
    return rows;
}

int CRowTableModel::ErrorCount() const
{
    int errors = 0;
    for (const TRow& row : m_rows) {
        errors += static_cast<int>(
            std::ranges::count_if(row, [](const SCell& cell) { return !cell.error.isEmpty(); }));
    }
    return errors;
}

QString CRowTableModel::CopyText(const QModelIndexList& cells) const
{
    std::map<int, std::map<int, QString>> rows;
    for (const QModelIndex& at : cells) {
        const SCell& cell = CellAt(at);
        const SFieldInfo& info = m_columns[static_cast<std::size_t>(at.column())];
        rows[at.row()][at.column()] =
            cell.error.isEmpty() ? Shown(FieldText(cell.value, info, m_units, true)) : cell.bad;
    }
    QString text;
    for (const auto& [row, columns] : rows) {
        QStringList line;
        for (const auto& [column, cell] : columns) {
            line += cell;
        }
        text += line.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

void CRowTableModel::PasteText(int row, int column, const QString& text)
{
    QString plain = text;
    plain.remove(QLatin1Char('\r'));
    QStringList lines = plain.split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.last().isEmpty()) {
        lines.removeLast();
    }
    const auto isTitle = [this](const QString& cell, int at) {
        return at < columnCount() &&
               cell.trimmed().compare(headerData(at, Qt::Horizontal, Qt::DisplayRole).toString(),
                                      Qt::CaseInsensitive) == 0;
    };
    if (!lines.isEmpty() &&
        isTitle(Unquoted(lines.first().section(QLatin1Char('\t'), 0, 0)), column)) {
        lines.removeFirst();
    }
    row = std::clamp(row, 0, rowCount());
    const int needed = std::min(row + static_cast<int>(lines.size()), kMaxRows) - rowCount();
    if (needed > 0) {
        insertRows(rowCount(), needed);
    }
    for (int i = 0; i < lines.size() && row + i < rowCount(); ++i) {
        const QStringList cells = lines[i].split(QLatin1Char('\t'));
        TRow& to = m_rows[static_cast<std::size_t>(row + i)];
        for (int j = 0; j < cells.size() && column + j < columnCount(); ++j) {
            const auto at = static_cast<std::size_t>(column + j);
            if (m_columns[at].kind != EFieldKind::Rows) {
                Put(to[at], at, Unquoted(cells[j]));
            }
        }
    }
    if (!lines.isEmpty()) {
        Q_EMIT dataChanged(index(row, 0), index(rowCount() - 1, columnCount() - 1));
        Q_EMIT Edited();
    }
}

TFieldRows CRowTableModel::NestedRows(int row, int column) const
{
    const TFieldRows* rows = CellAt(index(row, column)).value.As<TFieldRows>();
    return rows == nullptr ? TFieldRows() : *rows;
}

void CRowTableModel::SetNestedRows(int row, int column, TFieldRows rows)
{
    m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value =
        SFieldValue(std::move(rows));
    Q_EMIT dataChanged(index(row, column), index(row, column));
    Q_EMIT Edited();
}

int CRowTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CRowTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

const CRowTableModel::SCell& CRowTableModel::CellAt(const QModelIndex& index) const
{
    return m_rows[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
}

QVariant CRowTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const SCell& cell = CellAt(index);
    const SFieldInfo& info = m_columns[static_cast<std::size_t>(index.column())];
    const bool lacks = info.required && cell.value.IsNone();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell.error.isEmpty()
                   ? Shown(FieldText(cell.value, info, m_units, role == Qt::EditRole))
                   : cell.bad;
    case Qt::ToolTipRole:
        return !cell.error.isEmpty() ? cell.error
               : lacks               ? tr("A value is required here.")
                                     : QString();
    case Qt::ForegroundRole:
        return cell.error.isEmpty() ? QVariant() : QVariant(ErrorColor());
    case Qt::BackgroundRole:
        return !cell.error.isEmpty() ? QVariant(Faint(ErrorColor()))
               : lacks               ? QVariant(Faint(WarningColor()))
                                     : QVariant();
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter |
                                (info.kind == EFieldKind::Number ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

QVariant CRowTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section + 1;
    }
    return section < columnCount() ? tr(m_columns[static_cast<std::size_t>(section)].label)
                                   : QString();
}

void CRowTableModel::Put(SCell& cell, std::size_t column, const QString& text) const
{
    const CResult<SFieldValue> value = ParseField(text.toStdString(), m_columns[column], m_units);
    if (value) {
        cell = {*value, {}, {}};
    } else {
        cell = {{}, text, Shown(value.Error().text)};
    }
}

bool CRowTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || value.toString() == data(index, Qt::EditRole).toString()) {
        return false;
    }
    SCell& cell =
        m_rows[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
    Put(cell, static_cast<std::size_t>(index.column()), value.toString());
    Q_EMIT dataChanged(index, index);
    Q_EMIT Edited();
    return true;
}

Qt::ItemFlags CRowTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isTable =
        index.isValid() &&
        m_columns[static_cast<std::size_t>(index.column())].kind == EFieldKind::Rows;
    return isTable ? flags : flags | Qt::ItemIsEditable;
}

CRowTableModel::TRow CRowTableModel::NewRow() const
{
    TRow row(m_columns.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (m_columns[i].kind == EFieldKind::Choice) {
            row[i].value = SFieldValue(0);
        }
    }
    return row;
}

bool CRowTableModel::insertRows(int row, int count, const QModelIndex& /*parent*/)
{
    if (row < 0 || row > rowCount() || count <= 0) {
        return false;
    }
    beginInsertRows({}, row, row + count - 1);
    m_rows.insert(m_rows.begin() + row, static_cast<std::size_t>(count), NewRow());
    endInsertRows();
    Q_EMIT Edited();
    return true;
}

bool CRowTableModel::removeRows(int row, int count, const QModelIndex& /*parent*/)
{
    if (row < 0 || count <= 0 || row + count > rowCount()) {
        return false;
    }
    beginRemoveRows({}, row, row + count - 1);
    m_rows.erase(m_rows.begin() + row, m_rows.begin() + row + count);
    endRemoveRows();
    Q_EMIT Edited();
    return true;
}

} // namespace zov::app
