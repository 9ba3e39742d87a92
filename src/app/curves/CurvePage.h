// SPDX-License-Identifier: Apache-2.0
/// One curve set of the frame: its curves, their legend, markers and plot.
#pragma once

#include "app/curves/CurvePlot.h"
#include "curve/CurveFile.h"

#include <QWidget>

#include <filesystem>

namespace zov::app {

class CCurvePage : public QWidget
{
    Q_OBJECT

public:
    explicit CCurvePage(QWidget* parent = nullptr);

    [[nodiscard]] curve::CCurveSet& Set() { return m_set; }
    [[nodiscard]] const curve::CCurveSet& Set() const { return m_set; }
    [[nodiscard]] CCurveListModel& Curves() { return m_curves; }
    [[nodiscard]] CMarkerModel& Markers() { return m_markers; }
    [[nodiscard]] CCurvePlot& Plot() { return *m_plot; }
    /// Some curve has complex values, so that there is something to choose a view of.
    [[nodiscard]] bool HasComplex() const;

    /// The curves of a file that was read for this set.
    void Take(const std::filesystem::path& path, const curve::SCurveFile& file,
              curve::CCurveJournal& journal);
    void Add(const std::vector<curve::TCurvePtr>& curves, curve::EUnitClass unit,
             const QString& source);
    /// The file that it came from may be loaded again once none of its curves is left.
    void Remove(int row);
    void SetView(ECurveView view);

private:
    void ShowAxes();
    [[nodiscard]] QString UnitOfShown(const curve::CCurve& curve, ECurveView view) const;

    curve::CCurveSet m_set;
    CCurveListModel m_curves;
    CMarkerModel m_markers;
    CCurvePlot* m_plot;
};

} // namespace zov::app
