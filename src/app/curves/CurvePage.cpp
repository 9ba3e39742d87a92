// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurvePage.h"

#include "app/curves/CurveAxes.h"
#include "base/File.h"

#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {

CCurvePage::CCurvePage(QWidget* parent)
    : QWidget(parent)
    , m_plot(new CCurvePlot(m_curves, m_markers, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_plot);
    m_plot->SetHint(tr("No curve is shown. Open a curve or Touchstone file with Ctrl+O, or drop "
                       "files here."));
    connect(&m_curves, &CCurveListModel::Changed, this, &CCurvePage::ShowAxes);
    ShowAxes();
}

bool CCurvePage::HasComplex() const
{
    return std::ranges::any_of(m_set.Curves(), [](const curve::TCurvePtr& curve) {
        return !curve->Points().Column(2).empty();
    });
}

void CCurvePage::Take(const std::filesystem::path& path, const curve::SCurveFile& file,
                      curve::CCurveJournal& journal)
{
    AddCurveFile(path, file, m_set, journal);
    std::vector<SShownCurve> entries;
    for (const curve::TCurvePtr& curve : file.curves) {
        entries.push_back({curve,
                           UnitOf(*curve, m_set.unitClass),
                           {},
                           true,
                           QString::fromStdString(PathText(path))});
    }
    m_curves.AddAll(std::move(entries));
}

void CCurvePage::Add(const std::vector<curve::TCurvePtr>& curves, curve::EUnitClass unit,
                     const QString& source)
{
    std::vector<SShownCurve> entries;
    for (const curve::TCurvePtr& curve : curves) {
        m_set.Add(curve);
        entries.push_back({curve, unit, {}, true, source});
    }
    m_curves.AddAll(std::move(entries));
}

void CCurvePage::Remove(int row)
{
    const SShownCurve gone = m_curves.At(row);
    m_markers.Forget(*gone.curve);
    m_set.Remove(*gone.curve);
    m_curves.Remove(row);
    if (std::ranges::none_of(m_curves.Entries(), [&](const SShownCurve& entry) {
            return entry.source == gone.source;
        })) {
        m_set.RemoveSource(gone.source.toStdString());
    }
}

void CCurvePage::SetView(ECurveView view)
{
    m_plot->SetView(view);
    ShowAxes();
}

void CCurvePage::ShowAxes()
{
    m_plot->SetAxes(
        AxesOf(m_set, m_curves.Entries(), m_plot->View()),
        [this](const curve::CCurve& curve, ECurveView view) { return UnitOfShown(curve, view); });
    m_plot->replot();
}

QString CCurvePage::UnitOfShown(const curve::CCurve& curve, ECurveView view) const
{
    const auto at = std::ranges::find_if(
        m_curves.Entries(), [&](const SShownCurve& entry) { return entry.curve.get() == &curve; });
    return at == m_curves.Entries().end() ? QString() : ValueUnit(*at, m_set.kind, view);
}

} // namespace zov::app
