// SPDX-License-Identifier: Apache-2.0
/// The curves of a set as the legend lists them: shown or not, colour, line style, text.
#pragma once

#include "curve/Curve.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QPen>

#include <vector>

namespace zov::app {

struct SShownCurve
{
    curve::TCurvePtr curve;
    curve::EUnitClass unit = curve::EUnitClass::None;
    QColor color;
    bool shown = true;
    QString source;       ///< file, or what it was computed from
    bool inLegend = true; ///< of the plot
};

/// The colour of the n-th curve; they begin anew after the last.
[[nodiscard]] QColor CurveColor(std::size_t number);
/// Legend, or name, or name of the value of a curve.
[[nodiscard]] QString CurveTitle(const curve::CCurve& curve);

class CCurveListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        kTitle,
        kName,
        kValueName,
        kPoints,
        kSource,
        kColumns
    };

    explicit CCurveListModel(QObject* parent = nullptr);

    /// The colour of an entry that has none is the next that no other has.
    void Add(SShownCurve entry) { AddAll({std::move(entry)}); }
    void AddAll(std::vector<SShownCurve> entries);
    void Remove(int row);
    void SetShown(int row, bool shown);
    void SetColor(int row, const QColor& color);
    void SetStyle(int row, curve::ELineStyle style);
    [[nodiscard]] const std::vector<SShownCurve>& Entries() const { return m_entries; }
    [[nodiscard]] const SShownCurve& At(int row) const
    {
        return m_entries[static_cast<std::size_t>(row)];
    }
    [[nodiscard]] QPen PenOf(const SShownCurve& entry) const;
    [[nodiscard]] int CountShown() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// Entries or how they look; also after every change of rows.
    void Changed();

private:
    void EntryChanged(int row);
    [[nodiscard]] QVariant Text(const SShownCurve& entry, int column) const;

    std::vector<SShownCurve> m_entries;
    std::size_t m_nextColor = 0;
};

} // namespace zov::app
