// SPDX-License-Identifier: Apache-2.0
/// Markers on points of curves: what is read there, and the difference to the first.
#pragma once

#include "app/curves/CurveListModel.h"
#include "app/curves/CurveValues.h"

#include <QAbstractTableModel>

#include <functional>
#include <vector>

namespace zov::app {

/// The unit of a curve's values in a view.
using TUnitOf = std::function<QString(const curve::CCurve&, ECurveView)>;

struct SMarker
{
    curve::TCurvePtr curve;
    std::size_t point = 0;
};

class CMarkerModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        kMarker,
        kCurve,
        kX,
        kY,
        kDeltaX,
        kDeltaY,
        kValue, ///< complex value, real and imaginary part
        kColumns
    };

    explicit CMarkerModel(QObject* parent = nullptr);

    void Add(const SMarker& marker);
    void MoveTo(int row, const SMarker& marker);
    void Remove(int row);
    void Clear();
    /// The curve is gone, and so are its markers.
    void Forget(const curve::CCurve& curve);
    [[nodiscard]] const std::vector<SMarker>& Markers() const { return m_markers; }
    /// What the columns show.
    /// @param unitOf  the unit of a curve's value; values of different ones have no difference
    void SetView(ECurveView view, const QString& xUnit, TUnitOf unitOf);
    /// All rows as text, a line each, cells parted by tabs.
    [[nodiscard]] QString AsText() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void Changed();

private:
    [[nodiscard]] double X(const SMarker& marker) const;
    [[nodiscard]] double Y(const SMarker& marker) const;
    [[nodiscard]] QString UnitOf(const SMarker& marker) const;
    [[nodiscard]] QString DifferenceText(const SMarker& marker) const;
    [[nodiscard]] QString ComplexText(const SMarker& marker) const;

    std::vector<SMarker> m_markers;
    ECurveView m_view = ECurveView::Magnitude;
    QString m_xUnit;
    TUnitOf m_unitOf = [](const curve::CCurve&, ECurveView) { return QString(); };
};

} // namespace zov::app
