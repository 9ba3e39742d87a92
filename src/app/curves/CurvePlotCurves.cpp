// SPDX-License-Identifier: Apache-2.0
// The curves of a plot: their items, looked through beside the window when they have many points,
// the legend, the markers.
#include "app/curves/CurveItem.h"
#include "app/curves/CurvePlot.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <qwt_plot_legenditem.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>
#include <utility>

namespace zov::app {
namespace {

/// Of the legend in the plot: it has to leave room for the curves, which the list names in full.
constexpr std::size_t kLegendEntries = 10;
constexpr int kLegendLetters = 32;
/// Points that are looked through at once; more would be felt.
constexpr std::size_t kPointsAtOnce = 50000;

/// What tells curves of a file apart stands at the end of their names.
QString LegendText(const QString& title)
{
    return title.size() <= kLegendLetters ? title
                                          : title.left(kLegendLetters / 2 - 1) + QChar(0x2026) +
                                                title.right(kLegendLetters / 2);
}

} // namespace

void CCurvePlot::Rebuild()
{
    ForgetOldValues();
    MakeItems();
    ShowGrid();
    m_hint->setVisible(m_items.empty());
    QwtText hint(IsPreparing() ? tr("The curves come in a moment.") : m_hintText);
    hint.setColor(palette().color(QPalette::Disabled, QPalette::Text));
    hint.setRenderFlags(Qt::AlignCenter | Qt::TextWordWrap);
    m_hint->setText(hint);
    if (m_fitted) {
        m_window = FitWindow();
    }
    ApplyWindow();
    KeepX();
    PlaceLegend();
    ShowMarkers();
}

/// A curve that only looks different keeps its item.
CCurveItem* CCurvePlot::TakeItem(TValues values)
{
    const auto old = std::ranges::find_if(m_items, [&](const CCurveItem* item) {
        return item != nullptr && &item->Values() == values.get();
    });
    if (old != m_items.end()) {
        return std::exchange(*old, nullptr);
    }
    auto* item = new CCurveItem(std::move(values));
    item->attach(this);
    return item;
}

void CCurvePlot::MakeItems()
{
    std::vector<CCurveItem*> items;
    std::size_t room = kPointsAtOnce;
    std::vector<QwtPlotItem*> inLegend;
    int more = 0;
    m_wanted.clear();
    for (const SShownCurve& entry : m_curves.Entries()) {
        if (!entry.shown) {
            continue;
        }
        TValues values = ValuesOf(entry, room);
        if (!values) {
            m_wanted.push_back(entry);
            continue;
        }
        CCurveItem* const item = TakeItem(std::move(values));
        item->SetPen(m_curves.PenOf(entry));
        item->setTitle(LegendText(CurveTitle(*entry.curve)));
        if (entry.inLegend && inLegend.size() < kLegendEntries) {
            inLegend.push_back(item);
        } else {
            more += entry.inLegend ? 1 : 0;
        }
        items.push_back(item);
    }
    if (more > 0) {
        m_more->setTitle(tr("and %1 more").arg(more));
        inLegend.push_back(m_more);
    }
    FillLegend(std::move(inLegend));
    for (CCurveItem* gone : m_items) {
        delete gone;
    }
    m_items = std::move(items);
    if (IsPreparing()) {
        m_prepare.start();
    }
}

void CCurvePlot::SetInLegend(QwtPlotItem& item, bool on)
{
    if (item.testItemAttribute(QwtPlotItem::Legend) != on) {
        item.setItemAttribute(QwtPlotItem::Legend, on);
        updateLegend(&item); // which the item itself does only for what comes in
    }
}

/// In the order of the list, which is not that in which curves come and go.
void CCurvePlot::FillLegend(std::vector<QwtPlotItem*> items)
{
    if (items == m_inLegend) {
        return;
    }
    for (QwtPlotItem* item : m_inLegend) {
        SetInLegend(*item, false);
    }
    for (QwtPlotItem* item : items) {
        SetInLegend(*item, true);
    }
    m_inLegend = std::move(items);
}

void CCurvePlot::ForgetOldValues()
{
    std::erase_if(m_values, [this](const TValues& values) {
        return std::ranges::none_of(m_curves.Entries(), [&](const SShownCurve& entry) {
            return entry.curve == values->Curve();
        });
    });
}

CCurvePlot::TValues CCurvePlot::ValuesOf(const SShownCurve& entry, std::size_t& room)
{
    const auto made = std::ranges::find_if(m_values, [&](const TValues& values) {
        return values->Curve() == entry.curve && values->View() == m_view &&
               values->Unit() == entry.unit;
    });
    if (made != m_values.end()) {
        return *made;
    }
    const std::size_t count = entry.curve->Points().Count();
    if (count > room) {
        return nullptr;
    }
    room -= count;
    m_values.push_back(std::make_shared<CCurveValues>(entry.curve, m_view, entry.unit));
    return m_values.back();
}

void CCurvePlot::PrepareNext()
{
    if (m_wanted.empty()) {
        m_job.Abandon();
        m_preparing = nullptr;
        return;
    }
    const SShownCurve& next = m_wanted.front();
    if (m_preparing == next.curve.get()) {
        return;
    }
    m_job.Abandon();
    m_preparing = next.curve.get();
    m_job.Start({},
                [this, curve = next.curve, unit = next.unit,
                 view = m_view](CJobState& state) -> CBackgroundJob::Deliver {
                    TValues values = std::make_shared<CCurveValues>(
                        curve, view, unit, [&] { return state.Cancelled(); });
                    return [this, values = std::move(values)] {
                        m_preparing = nullptr;
                        m_values.push_back(values);
                        Rebuild();
                        Q_EMIT StateChanged();
                    };
                });
}

void CCurvePlot::WaitPrepared()
{
    while (IsPreparing()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    }
}

const CCurveItem* CCurvePlot::ItemOf(const curve::CCurve& curve) const
{
    const auto at = std::ranges::find_if(
        m_items, [&](const CCurveItem* item) { return item->Curve().get() == &curve; });
    return at == m_items.end() ? nullptr : *at;
}

void CCurvePlot::ShowMarkers()
{
    for (QwtPlotMarker* item : m_markerItems) {
        delete item;
    }
    m_markerItems.clear();
    const QColor color = palette().color(QPalette::Text);
    const std::vector<SMarker>& markers = m_markers.Markers();
    for (std::size_t i = 0; i < markers.size(); ++i) {
        const CCurveItem* item = ItemOf(*markers[i].curve);
        if (item == nullptr) {
            continue;
        }
        const SDrawnPoint at = item->Values().At(markers[i].point);
        auto* shown = new QwtPlotMarker;
        shown->setValue(at.x, at.y);
        shown->setSymbol(
            new QwtSymbol(QwtSymbol::Diamond, item->Pen().color(), QPen(color), QSize(9, 9)));
        QwtText label(QStringLiteral("M%1").arg(i + 1));
        label.setColor(color);
        shown->setLabel(label);
        shown->setLabelAlignment(Qt::AlignRight | Qt::AlignTop);
        shown->attach(this);
        m_markerItems.push_back(shown);
    }
    replot();
}

/// Into the corner where it hides the fewest points.
void CCurvePlot::PlaceLegend()
{
    constexpr std::size_t kSamples = 200;
    constexpr Qt::Alignment kCorners[] = {
        Qt::AlignRight | Qt::AlignTop, Qt::AlignLeft | Qt::AlignTop,
        Qt::AlignRight | Qt::AlignBottom, Qt::AlignLeft | Qt::AlignBottom};
    if (m_view == ECurveView::Smith) { // the corners beside the chart are empty
        m_legend->setAlignment(kCorners[0]);
        return;
    }
    QRectF places[std::size(kCorners)];
    for (std::size_t i = 0; i < std::size(kCorners); ++i) {
        m_legend->setAlignment(kCorners[i]);
        places[i] = m_legend->geometry(canvas()->contentsRect());
    }
    const QwtScaleMap xMap = canvasMap(xBottom);
    const QwtScaleMap yMap = canvasMap(yLeft);
    std::size_t hidden[std::size(kCorners)] = {};
    for (const CCurveItem* item : m_items) {
        const CCurveValues& values = item->Values();
        const std::size_t step = values.Count() / kSamples + 1;
        for (std::size_t i = 0; i < values.Count(); i += step) {
            const SDrawnPoint point = values.At(i);
            const QPointF at(xMap.transform(point.x), yMap.transform(point.y));
            for (std::size_t corner = 0; corner < std::size(kCorners); ++corner) {
                hidden[corner] += places[corner].contains(at) ? 1 : 0;
            }
        }
    }
    m_legend->setAlignment(kCorners[std::ranges::min_element(hidden) - hidden]);
}

} // namespace zov::app
