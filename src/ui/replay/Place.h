// SPDX-License-Identifier: Apache-2.0
/// Where inside a widget an event went, in the widget's own terms: item, menu entry, tab, header
/// section; and where that is now.
#pragma once

#include "ui/replay/ExtraIndex.h"

#include <QPoint>
#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace zov::ui::replay {

struct SPlace
{
    SExtraIndex index;
    std::optional<SInsideItemView> item; ///< only inside item views
};

/// @param pos in the widget that got the event: of an item view its viewport
[[nodiscard]] SPlace DescribePlace(const QWidget& target, const QPoint& pos);

struct SFoundPlace
{
    bool found = false; ///< false: the error says why
    QPoint pos;
    QStringList warnings;
    QString error;
    QString disabled; ///< what is there but can't be used: a disabled menu entry
};

/// Menus, tab bars and headers are matched by text, then by index; items by row, then by title,
/// or by the titles of their path where the view says so. An item is scrolled into view.
[[nodiscard]] SFoundPlace FindPlace(QWidget& target, const SExtraIndex& index,
                                    const std::optional<SInsideItemView>& item);

} // namespace zov::ui::replay
