// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/Locator.h"

#include "ui/replay/WidgetFacts.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace zov::ui::replay {
namespace {

using TWidgets = std::vector<QWidget*>;

bool SameClass(const QWidget& widget, const SWidgetLevel& level)
{
    return level.className == widget.metaObject()->className();
}

bool SameName(const QWidget& widget, const SWidgetLevel& level)
{
    return NameOf(widget).toStdString() == level.objectName;
}

bool SameTitle(const QWidget& widget, const SWidgetLevel& level)
{
    return TitleOf(widget).toStdString() == level.windowTitle;
}

/// As recorded: the key title decides where there is one, else the name, else the title.
bool Matches(const QWidget& widget, const SWidgetLevel& level)
{
    if (!SameClass(widget, level)) {
        return false;
    }
    if (level.keyTitle) {
        return SameTitle(widget, level);
    }
    return SameName(widget, level) && (!level.objectName.empty() || SameTitle(widget, level));
}

/// The same thing by one sign: its name, or its title where the name is new.
bool Resembles(const QWidget& widget, const SWidgetLevel& level)
{
    const bool byName = !level.objectName.empty() && SameName(widget, level);
    const bool byTitle = !level.windowTitle.empty() && SameTitle(widget, level);
    return byName || (SameClass(widget, level) && byTitle);
}

TWidgets Children(const QWidget& widget)
{
    TWidgets children;
    for (QObject* child : widget.children()) {
        auto* inner = qobject_cast<QWidget*>(child);
        if (inner != nullptr && !inner->isWindow()) {
            children.push_back(inner);
        }
    }
    return children;
}

TWidgets Windows(const SLocator& target, QWidget* main)
{
    // A record of one frame may be played from another one.
    if (target.topIsMain && main != nullptr && SameClass(*main, target.widgets.front())) {
        return {main};
    }
    TWidgets windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (Matches(*window, target.widgets.front())) {
            windows.push_back(window);
        }
    }
    return windows;
}

/// Several may match; a hidden one only counts when all are.
TWidgets OnlyVisible(TWidgets widgets)
{
    TWidgets visible;
    std::ranges::copy_if(widgets, std::back_inserter(visible),
                         [](const QWidget* widget) { return widget->isVisible(); });
    return visible.empty() ? widgets : visible;
}

TWidgets WalkDown(const SLocator& target, QWidget* main)
{
    TWidgets found = Windows(target, main);
    for (std::size_t level = 1; level < target.widgets.size() && !found.empty(); ++level) {
        TWidgets next;
        for (const QWidget* widget : found) {
            for (QWidget* child : Children(*widget)) {
                if (Matches(*child, target.widgets[level])) {
                    next.push_back(child);
                }
            }
        }
        found = std::move(next);
    }
    return OnlyVisible(std::move(found));
}

std::int64_t Distance(const QWidget& widget, const SLocator& target)
{
    std::int64_t distance = 0;
    const std::vector<const QWidget*> chain = ChainOf(widget);
    for (std::size_t i = 1; i < std::min(chain.size(), target.widgets.size()); ++i) {
        const SPoint& recorded = target.widgets[i].pos;
        distance += std::abs(std::int64_t{chain[i]->x()} - recorded.x) +
                    std::abs(std::int64_t{chain[i]->y()} - recorded.y);
    }
    return distance;
}

QWidget* Nearest(const TWidgets& widgets, const SLocator& target)
{
    return *std::ranges::min_element(
        widgets, {}, [&](const QWidget* widget) { return Distance(*widget, target); });
}

/// How many of the recorded levels the widget's chain has, in their order.
std::size_t Likeness(const QWidget& widget, const SLocator& target)
{
    std::size_t alike = 0;
    std::size_t level = 0;
    for (const QWidget* one : ChainOf(widget)) {
        for (std::size_t look = level; look < target.widgets.size(); ++look) {
            if (SameClass(*one, target.widgets[look]) && SameName(*one, target.widgets[look])) {
                ++alike;
                level = look + 1;
                break;
            }
        }
    }
    return alike;
}

void AddResembling(QWidget& widget, const SWidgetLevel& level, TWidgets& found)
{
    TWidgets open{&widget};
    while (!open.empty()) {
        QWidget* one = open.back();
        open.pop_back();
        if (Resembles(*one, level)) {
            found.push_back(one);
        }
        const TWidgets children = Children(*one);
        open.insert(open.end(), children.rbegin(), children.rend());
    }
}

/// Where the hierarchy was changed: all that resemble the target, those in its window before
/// others.
TWidgets SearchAll(const SLocator& target, QWidget* main)
{
    TWidgets found;
    for (QWidget* window : Windows(target, main)) {
        AddResembling(*window, target.widgets.back(), found);
    }
    if (found.empty() && !target.topIsMain) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && SameClass(*window, target.widgets.front())) {
                AddResembling(*window, target.widgets.back(), found);
            }
        }
    }
    found = OnlyVisible(std::move(found));
    std::size_t best = 0;
    for (const QWidget* widget : found) {
        best = std::max(best, Likeness(*widget, target));
    }
    std::erase_if(found, [&](const QWidget* widget) { return Likeness(*widget, target) < best; });
    return found;
}

QString Several(std::size_t count, const SWidgetLevel& level)
{
    return QStringLiteral(
               "Warning: There are %1 %2 objects sharing the same object name \"%3\" and "
               "the same display text.")
        .arg(count)
        .arg(QString::fromStdString(level.className), QString::fromStdString(level.objectName));
}

QString Changed()
{
    return QStringLiteral("Info: The hierarchy of target widget has been changed, it is better to "
                          "upgrade the script.");
}

} // namespace

SLocator MakeLocator(const QWidget& target, const QPoint& pos, const QWidget* main)
{
    SLocator locator;
    locator.topIsMain = main != nullptr && target.window() == main;
    for (const QWidget* widget : ChainOf(target)) {
        locator.widgets.push_back(LevelOf(*widget));
    }
    locator.ptRefToTop = PointOf(target.mapTo(target.window(), pos));
    return locator;
}

SFoundWidget FindWidget(const SLocator& target, QWidget* main)
{
    SFoundWidget found;
    if (target.widgets.empty()) {
        return found;
    }
    const SWidgetLevel& last = target.widgets.back();
    TWidgets widgets = WalkDown(target, main);
    if (widgets.empty()) {
        widgets = SearchAll(target, main);
        found.notices += widgets.empty() ? QStringList() : QStringList(Changed());
    }
    if (widgets.size() > 1) {
        TWidgets titled;
        std::ranges::copy_if(widgets, std::back_inserter(titled),
                             [&](const QWidget* widget) { return SameTitle(*widget, last); });
        widgets = titled.empty() ? widgets : titled;
    }
    if (widgets.size() > 1) {
        found.notices += Several(widgets.size(), last);
    }
    found.widget = widgets.empty() ? nullptr : Nearest(widgets, target);
    return found;
}

} // namespace zov::ui::replay
