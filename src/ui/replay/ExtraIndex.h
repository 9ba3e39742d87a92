// SPDX-License-Identifier: Apache-2.0
/// Where inside its widget an event went: the text of the element ExtraIndex.
///
///     @12,8/80x24                            a point of a widget of 80 x 24
///     Item (1,0)/(3,2) #1 @12,8/200x18       row and column from the root down, part of the item
///     Menu 3 @5,4/180x22 "&Open Library..."  entry of a menu; likewise Tab and Header
///
/// The point is relative to the item, entry, tab or section, followed by its size.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::ui::replay {

struct SCell
{
    int row = 0;
    int column = 0;
    bool operator==(const SCell&) const = default;
};

enum class EPlace
{
    Widget,
    Item,
    Menu,
    Tab,
    Header
};

struct SExtraIndex
{
    EPlace place = EPlace::Widget;
    std::vector<SCell> path; ///< of an item, from the root down
    int index = -1;          ///< of a menu entry, tab or header section
    std::string text;        ///< of a menu entry, tab or header section
    int subIndex = -1;       ///< part of the item, -1: the item as a whole
    SPoint offset;
    SPoint size; ///< 0,0: not known
    bool operator==(const SExtraIndex&) const = default;
};

[[nodiscard]] std::string FormatExtraIndex(const SExtraIndex& index);
/// What can't be understood is left at its default: an event then goes to the middle of its widget.
[[nodiscard]] SExtraIndex ParseExtraIndex(std::string_view text);

/// The offset for a place whose size is another one now: kept from the right when it is at that
/// edge (a handle), from the left as long as it lies inside or before it (a check mark, a branch),
/// else in proportion; in proportion from the top.
[[nodiscard]] SPoint FitOffset(const SExtraIndex& index, const SPoint& size);

} // namespace zov::ui::replay
