// SPDX-License-Identifier: Apache-2.0
#include "ui/UiHandyObjListCtrl.h"

#include "ui/ListHint.h"

#include <QHeaderView>

#include <algorithm>

namespace zov::ui {
namespace {

constexpr int kLeastWidth = 40;

} // namespace

CUiHandyObjListCtrl::CUiHandyObjListCtrl(QWidget* parent)
    : QTreeView(parent)
{
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setStretchLastSection(false);
    header()->setHighlightSections(false);
    connect(header(), &QHeaderView::sectionResized, this,
            [this] { m_byUser = m_byUser || (!m_distributing && isVisible()); });
}

void CUiHandyObjListCtrl::SetColumnWidths(std::vector<int> widths)
{
    m_widths = std::move(widths);
    m_byUser = false;
    Distribute();
}

void CUiHandyObjListCtrl::Distribute()
{
    const int count = std::min(static_cast<int>(m_widths.size()), header()->count());
    const auto widthAt = [this](int i) { return m_widths[static_cast<std::size_t>(i)]; };
    const auto pixels = [this](int width) { return width * logicalDpiX() / 96; };
    int shares = 0;
    int left = viewport()->width();
    for (int i = 0; i < count; ++i) {
        widthAt(i) < 0 ? shares -= widthAt(i) : left -= pixels(widthAt(i));
    }
    m_distributing = true;
    for (int i = 0; i < count; ++i) {
        const int width = widthAt(i);
        header()->setSectionHidden(i, width == 0);
        if (width != 0) {
            header()->resizeSection(
                i,
                std::max(pixels(kLeastWidth), width > 0 ? pixels(width) : left * -width / shares));
        }
    }
    m_distributing = false;
}

void CUiHandyObjListCtrl::SetHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void CUiHandyObjListCtrl::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    PaintListHint(*this, m_hint);
}

void CUiHandyObjListCtrl::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    if (!m_byUser) {
        Distribute();
    }
}

} // namespace zov::ui
