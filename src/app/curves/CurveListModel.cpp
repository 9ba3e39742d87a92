// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveListModel.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace zov::app {
namespace {

// Apart from each other also for eyes that see red and green alike, and from both grounds.
constexpr QRgb kColors[] = {0xFF2B7BBA, 0xFFE07B20, 0xFF2E9E5B, 0xFFC23B4E, 0xFF8A63C4,
                            0xFF9A7B4F, 0xFFD66BB0, 0xFF7A8691, 0xFFA8A12A, 0xFF1FA3B5};
constexpr Qt::PenStyle kStyles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                    Qt::DashDotDotLine};
constexpr double kLineWidth = 1.5;

} // namespace

QColor CurveColor(std::size_t number)
{
    return QColor::fromRgb(kColors[number % std::size(kColors)]);
}

QString CurveTitle(const curve::CCurve& curve)
{
    const curve::SCurveHeader& header = curve.Header();
    return QString::fromStdString(!header.legend.empty() ? header.legend
                                  : !header.name.empty() ? header.name
                                                         : header.valueName);
}

CCurveListModel::CCurveListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    for (const auto signal :
         {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(this, signal, this, &CCurveListModel::Changed);
    }
    connect(this, &QAbstractItemModel::dataChanged, this, &CCurveListModel::Changed);
}

void CCurveListModel::AddAll(std::vector<SShownCurve> entries)
{
    if (entries.empty()) {
        return;
    }
    const int row = static_cast<int>(m_entries.size());
    beginInsertRows({}, row, row + static_cast<int>(entries.size()) - 1);
    for (SShownCurve& entry : entries) {
        if (!entry.color.isValid()) {
            entry.color = CurveColor(m_nextColor++);
        }
        m_entries.push_back(std::move(entry));
    }
    endInsertRows();
}

void CCurveListModel::Remove(int row)
{
    beginRemoveRows({}, row, row);
    m_entries.erase(m_entries.begin() + row);
    endRemoveRows();
}

void CCurveListModel::EntryChanged(int row)
{
    Q_EMIT dataChanged(index(row, 0), index(row, kColumns - 1));
}

void CCurveListModel::SetShown(int row, bool shown)
{
    m_entries[static_cast<std::size_t>(row)].shown = shown;
    EntryChanged(row);
}

void CCurveListModel::SetColor(int row, const QColor& color)
{
    m_entries[static_cast<std::size_t>(row)].color = color;
    EntryChanged(row);
}

void CCurveListModel::SetStyle(int row, curve::ELineStyle style)
{
    At(row).curve->Header().style = style;
    EntryChanged(row);
}

QPen CCurveListModel::PenOf(const SShownCurve& entry) const
{
    return {entry.color, kLineWidth,
            kStyles[static_cast<std::size_t>(entry.curve->Header().style)]};
}

int CCurveListModel::CountShown() const
{
    return static_cast<int>(std::ranges::count_if(m_entries, &SShownCurve::shown));
}

int CCurveListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int CCurveListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant CCurveListModel::Text(const SShownCurve& entry, int column) const
{
    const curve::SCurveHeader& header = entry.curve->Header();
    switch (column) {
    case kTitle:
        return CurveTitle(*entry.curve);
    case kName:
        return QString::fromStdString(header.name);
    case kValueName:
        return QString::fromStdString(header.valueName);
    case kPoints:
        return static_cast<qlonglong>(entry.curve->Points().Count());
    default:
        return QFileInfo(entry.source).fileName();
    }
}

QVariant CCurveListModel::data(const QModelIndex& index, int role) const
{
    const SShownCurve& entry = At(index.row());
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        return Text(entry, index.column());
    }
    if (role == Qt::TextAlignmentRole && index.column() == kPoints) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole) {
        return entry.source;
    }
    if (index.column() != kTitle) {
        return {};
    }
    if (role == Qt::CheckStateRole) {
        return entry.shown ? Qt::Checked : Qt::Unchecked;
    }
    if (role == Qt::DecorationRole) {
        const double ratio = qGuiApp->devicePixelRatio();
        QPixmap line(QSize(28, 12) * ratio);
        line.setDevicePixelRatio(ratio);
        line.fill(Qt::transparent);
        QPainter painter(&line);
        QPen pen = PenOf(entry);
        pen.setWidthF(2.0);
        painter.setPen(pen);
        painter.drawLine(1, 6, 27, 6);
        return line;
    }
    return {};
}

bool CCurveListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (index.column() != kTitle) {
        return false;
    }
    if (role == Qt::CheckStateRole) {
        SetShown(index.row(), value.toInt() == Qt::Checked);
        return true;
    }
    const QString text = value.toString().trimmed();
    if (role != Qt::EditRole || text.isEmpty()) {
        return false;
    }
    At(index.row()).curve->Header().legend = text.toStdString();
    EntryChanged(index.row());
    return true;
}

QVariant CCurveListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[] = {tr("Curve"), tr("Name"), tr("Value"), tr("Points"), tr("From")};
    return titles[section];
}

Qt::ItemFlags CCurveListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags all = QAbstractTableModel::flags(index);
    return index.column() == kTitle ? all | Qt::ItemIsUserCheckable | Qt::ItemIsEditable : all;
}

} // namespace zov::app
