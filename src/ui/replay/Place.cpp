// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/Place.h"

#include "ui/replay/WidgetFacts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>

namespace zov::ui::replay {
namespace {

constexpr int kMaxTitledColumns = 200;

/// What menus, menu bars, tab bars and headers have in common: entries in a row, each with a text
/// and a place.
struct SEntries
{
    EPlace place = EPlace::Widget;
    int count = 0;
    std::function<int(QPoint)> at; ///< -1: between them
    std::function<QString(int)> text;
    std::function<QRect(int)> rect;
    std::function<bool(int)> shown;
    std::function<bool(int)> enabled;
};

template <typename TMenu>
SEntries EntriesOfMenu(const TMenu& menu)
{
    const QList<QAction*> actions = menu.actions();
    return {EPlace::Menu,
            actions.size(),
            [&menu, actions](QPoint pos) { return actions.indexOf(menu.actionAt(pos)); },
            [actions](int i) { return PlainText(actions[i]->text()); },
            [&menu, actions](int i) { return menu.actionGeometry(actions[i]); },
            [actions](int i) { return actions[i]->isVisible() && !actions[i]->isSeparator(); },
            [actions](int i) { return actions[i]->isEnabled(); }};
}

SEntries EntriesOfTabs(const QTabBar& tabs)
{
    return {EPlace::Tab,
            tabs.count(),
            [&tabs](QPoint pos) { return tabs.tabAt(pos); },
            [&tabs](int i) { return PlainText(tabs.tabText(i)); },
            [&tabs](int i) { return tabs.tabRect(i); },
            [](int) { return true; },
            [&tabs](int i) { return tabs.isTabEnabled(i); }};
}

SEntries EntriesOfHeader(const QHeaderView& header)
{
    const auto rect = [&header](int i) {
        const int start = header.sectionViewportPosition(i);
        const int length = header.sectionSize(i);
        return header.orientation() == Qt::Horizontal
                   ? QRect(start, 0, length, header.viewport()->height())
                   : QRect(0, start, header.viewport()->width(), length);
    };
    const auto text = [&header](int i) {
        return header.model() == nullptr
                   ? QString()
                   : header.model()->headerData(i, header.orientation()).toString();
    };
    return {EPlace::Header,
            header.count(),
            [&header](QPoint pos) { return header.logicalIndexAt(pos); },
            text,
            rect,
            [&header](int i) { return !header.isSectionHidden(i); },
            [](int) { return true; }};
}

/// Nothing for a widget of another kind.
std::optional<SEntries> EntriesOf(const QWidget& target)
{
    if (const auto* menu = qobject_cast<const QMenu*>(&target)) {
        return EntriesOfMenu(*menu);
    }
    if (const auto* bar = qobject_cast<const QMenuBar*>(&target)) {
        return EntriesOfMenu(*bar);
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&target)) {
        return EntriesOfTabs(*tabs);
    }
    if (const auto* header = qobject_cast<const QHeaderView*>(target.parentWidget());
        header != nullptr && header->viewport() == &target) {
        return EntriesOfHeader(*header);
    }
    return std::nullopt;
}

/// The view whose viewport the widget is.
QAbstractItemView* ViewOf(const QWidget& target)
{
    auto* view = qobject_cast<QAbstractItemView*>(target.parentWidget());
    const bool isViewport = view != nullptr && view->viewport() == &target &&
                            view->model() != nullptr && qobject_cast<QHeaderView*>(view) == nullptr;
    return isViewport ? view : nullptr;
}

void SetPoint(SExtraIndex& index, const QRect& rect, const QPoint& pos)
{
    index.offset = PointOf(pos - rect.topLeft());
    index.size = {rect.width(), rect.height()};
}

QString ColumnTitle(const QAbstractItemModel& model, int column)
{
    return model.headerData(column, Qt::Horizontal).toString();
}

void DescribeItem(SPlace& place, const QAbstractItemView& view, const QModelIndex& hit,
                  const QPoint& pos)
{
    const QAbstractItemModel& model = *view.model();
    SInsideItemView& item = place.item.emplace();
    const int columns = std::min(model.columnCount(hit.parent()), kMaxTitledColumns);
    for (int column = 0; column < columns; ++column) {
        item.columns.push_back(ColumnTitle(model, column).toStdString());
    }
    place.index.place = EPlace::Item;
    for (QModelIndex at = hit; at.isValid() && at != view.rootIndex(); at = at.parent()) {
        place.index.path.push_back({at.row(), at.column()});
        item.path.push_back({at.row(), at.sibling(at.row(), 0).data().toString().toStdString()});
    }
    std::ranges::reverse(place.index.path);
    std::ranges::reverse(item.path);
    const QRect rect = view.visualRect(hit);
    SetPoint(place.index, rect, pos);
    const int parts = view.property(kRecItemSubIndex).toInt();
    if (parts > 1 && rect.width() > 0) {
        place.index.subIndex =
            std::clamp((pos.x() - rect.x()) * parts / rect.width(), 0, parts - 1);
    }
}

/// The entry with the text that lies nearest to where it was; -1 for none.
int NearestByText(const SEntries& entries, const QString& text, int index)
{
    int best = -1;
    for (int i = 0; i < entries.count; ++i) {
        if (entries.shown(i) && entries.text(i) == text &&
            (best < 0 || std::abs(i - index) < std::abs(best - index))) {
            best = i;
        }
    }
    return best;
}

QString EntryMoved(EPlace place, const QString& text)
{
    switch (place) {
    case EPlace::Menu:
        return QStringLiteral("Warning: The index of menu item \"%1\" has been changed.").arg(text);
    case EPlace::Tab:
        return QStringLiteral("Warning: The text or index of tab \"%1\" may be changed.").arg(text);
    default:
        return QStringLiteral("Warning: The text or index of header \"%1\" may be changed.")
            .arg(text);
    }
}

SFoundPlace FindEntry(const SEntries& entries, const SExtraIndex& index)
{
    SFoundPlace place;
    const QString text = QString::fromStdString(index.text);
    int at = NearestByText(entries, text, index.index);
    if (at >= 0 && at != index.index) {
        place.warnings += EntryMoved(entries.place, text);
    } else if (at < 0 && index.index >= 0 && index.index < entries.count &&
               entries.shown(index.index)) {
        at = index.index;
        place.warnings += entries.place == EPlace::Menu
                              ? QStringLiteral("Warning: The menu item \"%1\" has been changed or "
                                               "deleted. \"%2\" will be selected instead.")
                                    .arg(text, entries.text(at))
                              : EntryMoved(entries.place, text);
    }
    if (at < 0) {
        place.error = QStringLiteral("Error: \"%1\" is not there any more.").arg(text);
        return place;
    }
    const QRect rect = entries.rect(at);
    place.found = true;
    place.pos = rect.topLeft() + ToQt(FitOffset(index, {rect.width(), rect.height()}));
    place.disabled = entries.enabled(at) ? QString() : entries.text(at);
    return place;
}

class CItemFinder
{
public:
    CItemFinder(QAbstractItemView& view, const SExtraIndex& index,
                const std::optional<SInsideItemView>& item)
        : m_view(view)
        , m_model(*view.model())
        , m_index(index)
        , m_item(item)
    {
    }

    SFoundPlace Find()
    {
        QModelIndex at = m_view.rootIndex();
        for (std::size_t level = 0; level < m_index.path.size(); ++level) {
            const int row = RowAt(level, at);
            const SCell& cell = m_index.path[level];
            at = m_model.index(row, ColumnAt(cell.column, at), at);
            if (!at.isValid()) {
                return Error(QStringLiteral("Error: The index (%1,%2) is invalid."), cell);
            }
            if (level + 1 < m_index.path.size()) {
                at = at.sibling(at.row(), 0); // rows have their children below the first column
            }
        }
        m_view.scrollTo(at);
        const QRect rect = m_view.visualRect(at);
        if (!rect.isValid() || !rect.intersects(m_view.viewport()->rect())) {
            return Error(QStringLiteral("Error: The index (%1,%2) is not visible."),
                         m_index.path.back());
        }
        m_place.found = true;
        m_place.pos = PointIn(rect);
        return std::move(m_place);
    }

private:
    SFoundPlace Error(const QString& text, const SCell& cell)
    {
        m_place.error = text.arg(cell.row).arg(cell.column);
        return std::move(m_place);
    }

    QString TitleAt(int row, const QModelIndex& parent) const
    {
        return m_model.index(row, 0, parent).data().toString();
    }

    /// The row with that title nearest to where it was; -1 for none.
    int NearestRow(const QString& title, int recorded, const QModelIndex& parent) const
    {
        const int count = m_model.rowCount(parent);
        const int row = std::clamp(recorded, 0, count);
        const int reach = std::max(row, count - row);
        for (int away = 0; away <= reach; ++away) {
            for (const int at : {row - away, row + away}) {
                if (at >= 0 && at < count && TitleAt(at, parent) == title) {
                    return at;
                }
            }
        }
        return -1;
    }

    int RowAt(std::size_t level, const QModelIndex& parent)
    {
        const int row = m_index.path[level].row;
        if (!m_item || level >= m_item->path.size()) {
            return row;
        }
        const QString title = QString::fromStdString(m_item->path[level].title);
        const bool byPath = m_view.property(kLocRowPath).toBool();
        const bool isThere = m_model.hasIndex(row, 0, parent);
        if (isThere && TitleAt(row, parent) == title) {
            return row;
        }
        if (const int found = NearestRow(title, row, parent); found >= 0) {
            if (!byPath) {
                m_place.warnings +=
                    QStringLiteral("Warning: The index of item \"%1\" has been changed.")
                        .arg(title);
            }
            return found;
        }
        if (isThere) {
            m_place.warnings += QStringLiteral("Warning: The item \"%1\" has been changed or "
                                               "deleted. \"%2\" will be selected instead.")
                                    .arg(title, TitleAt(row, parent));
        }
        return row;
    }

    int ColumnAt(int column, const QModelIndex& parent)
    {
        if (!m_item || column < 0 || static_cast<std::size_t>(column) >= m_item->columns.size()) {
            return column;
        }
        const QString title =
            QString::fromStdString(m_item->columns[static_cast<std::size_t>(column)]);
        if (ColumnTitle(m_model, column) == title) {
            return column;
        }
        for (int other = 0; other < std::min(m_model.columnCount(parent), kMaxTitledColumns);
             ++other) {
            if (ColumnTitle(m_model, other) == title) {
                m_place.warnings +=
                    QStringLiteral("Warning: The text or index of header \"%1\" may be changed.")
                        .arg(title);
                return other;
            }
        }
        return column;
    }

    QPoint PointIn(const QRect& rect) const
    {
        const int parts = m_view.property(kRecItemSubIndex).toInt();
        QPoint pos = rect.topLeft() + ToQt(FitOffset(m_index, {rect.width(), rect.height()}));
        if (parts > 1 && m_index.subIndex >= 0 && m_index.subIndex < parts) {
            pos.setX(rect.x() + (2 * m_index.subIndex + 1) * rect.width() / (2 * parts));
        }
        // A wide cell may reach out of the view; a branch stands before its cell.
        const QRect seen = m_view.viewport()->rect();
        return {std::clamp(pos.x(), seen.left(), seen.right()),
                std::clamp(pos.y(), seen.top(), seen.bottom())};
    }

    QAbstractItemView& m_view;
    const QAbstractItemModel& m_model;
    const SExtraIndex& m_index;
    const std::optional<SInsideItemView>& m_item;
    SFoundPlace m_place;
};

} // namespace

SPlace DescribePlace(const QWidget& target, const QPoint& pos)
{
    SPlace place;
    if (const std::optional<SEntries> entries = EntriesOf(target)) {
        if (const int at = entries->at(pos); at >= 0) {
            place.index.place = entries->place;
            place.index.index = at;
            place.index.text = entries->text(at).toStdString();
            SetPoint(place.index, entries->rect(at), pos);
            return place;
        }
    }
    if (const QAbstractItemView* view = ViewOf(target)) {
        if (const QModelIndex hit = view->indexAt(pos); hit.isValid()) {
            DescribeItem(place, *view, hit, pos);
            return place;
        }
    }
    SetPoint(place.index, target.rect(), pos);
    return place;
}

SFoundPlace FindPlace(QWidget& target, const SExtraIndex& index,
                      const std::optional<SInsideItemView>& item)
{
    if (index.place == EPlace::Item && !index.path.empty()) {
        if (QAbstractItemView* view = ViewOf(target)) {
            return CItemFinder(*view, index, item).Find();
        }
    } else if (index.place != EPlace::Widget) {
        if (const std::optional<SEntries> entries = EntriesOf(target)) {
            return FindEntry(*entries, index);
        }
    }
    SFoundPlace place;
    place.found = true;
    place.pos = ToQt(FitOffset(index, {target.width(), target.height()}));
    return place;
}

} // namespace zov::ui::replay
