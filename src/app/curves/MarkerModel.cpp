// SPDX-License-Identifier: Apache-2.0
#include "app/curves/MarkerModel.h"

#include "app/curves/EngineeringText.h"

namespace zov::app {

CMarkerModel::CMarkerModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &CMarkerModel::Changed);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &CMarkerModel::Changed);
    connect(this, &QAbstractItemModel::modelReset, this, &CMarkerModel::Changed);
    connect(this, &QAbstractItemModel::dataChanged, this, &CMarkerModel::Changed);
}

void CMarkerModel::Add(const SMarker& marker)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_markers.push_back(marker);
    endInsertRows();
}

void CMarkerModel::MoveTo(int row, const SMarker& marker)
{
    m_markers[static_cast<std::size_t>(row)] = marker;
    // All differences are to the first one.
    Q_EMIT dataChanged(index(row == 0 ? 0 : row, 0),
                       index(row == 0 ? rowCount() - 1 : row, kColumns - 1));
}

void CMarkerModel::Remove(int row)
{
    beginRemoveRows({}, row, row);
    m_markers.erase(m_markers.begin() + row);
    endRemoveRows();
}

void CMarkerModel::Clear()
{
    beginResetModel();
    m_markers.clear();
    endResetModel();
}

void CMarkerModel::Forget(const curve::CCurve& curve)
{
    beginResetModel();
    std::erase_if(m_markers, [&](const SMarker& marker) { return marker.curve.get() == &curve; });
    endResetModel();
}

void CMarkerModel::SetView(ECurveView view, const QString& xUnit, TUnitOf unitOf)
{
    m_view = view;
    m_xUnit = xUnit;
    m_unitOf = std::move(unitOf);
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
    }
}

QString CMarkerModel::AsText() const
{
    QString text;
    for (int row = -1; row < rowCount(); ++row) {
        for (int column = 0; column < kColumns; ++column) {
            text += column == 0 ? QString() : QStringLiteral("\t");
            text += row < 0 ? headerData(column, Qt::Horizontal, Qt::DisplayRole).toString()
                            : data(index(row, column), Qt::DisplayRole).toString();
        }
        text += QLatin1Char('\n');
    }
    return text;
}

int CMarkerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_markers.size());
}

int CMarkerModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

double CMarkerModel::X(const SMarker& marker) const
{
    return marker.curve->Points().Column(0)[marker.point];
}

double CMarkerModel::Y(const SMarker& marker) const
{
    const curve::CCurvePoints& points = marker.curve->Points();
    // In the Smith view what is read is how far the point is from the middle.
    return ViewValue(points.At(marker.point).values[0], !points.Column(2).empty(),
                     m_view == ECurveView::Smith ? ECurveView::Magnitude : m_view);
}

QString CMarkerModel::UnitOf(const SMarker& marker) const
{
    return m_unitOf(*marker.curve, m_view == ECurveView::Smith ? ECurveView::Magnitude : m_view);
}

QString CMarkerModel::DifferenceText(const SMarker& marker) const
{
    const QString unit = UnitOf(marker);
    const SMarker& first = m_markers.front();
    return unit == UnitOf(first) ? EngineeringText(Y(marker) - Y(first), unit) : QString();
}

QString CMarkerModel::ComplexText(const SMarker& marker) const
{
    const curve::CCurvePoints& points = marker.curve->Points();
    if (points.Column(2).empty()) {
        return {};
    }
    const std::complex<double> value = points.At(marker.point).values[0];
    const QString unit = m_unitOf(*marker.curve, ECurveView::Real);
    return EngineeringText(value.real(), unit) +
           (value.imag() < 0 ? QStringLiteral(" - j ") : QStringLiteral(" + j ")) +
           EngineeringText(std::abs(value.imag()), unit);
}

QVariant CMarkerModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    const SMarker& marker = m_markers[static_cast<std::size_t>(index.row())];
    const SMarker& first = m_markers.front();
    const bool isFirst = index.row() == 0;
    switch (index.column()) {
    case kMarker:
        return QStringLiteral("M%1").arg(index.row() + 1);
    case kCurve:
        return CurveTitle(*marker.curve);
    case kX:
        return EngineeringText(X(marker), m_xUnit, 7);
    case kY:
        return EngineeringText(Y(marker), UnitOf(marker));
    case kDeltaX:
        return isFirst ? QString() : EngineeringText(X(marker) - X(first), m_xUnit, 7);
    case kDeltaY:
        return isFirst ? QString() : DifferenceText(marker);
    default:
        return ComplexText(marker);
    }
}

QVariant CMarkerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[] = {tr("Marker"), tr("Curve"),         tr("x"),
                              tr("Value"),  tr("\u0394x to M1"), tr("\u0394value to M1"),
                              tr("Complex")};
    return titles[section];
}

} // namespace zov::app
