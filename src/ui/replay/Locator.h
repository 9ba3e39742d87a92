// SPDX-License-Identifier: Apache-2.0
/// Which widget an event went to, and which one that is now.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <QPoint>
#include <QString>
#include <QStringList>

class QWidget;

namespace zov::ui::replay {

/// @param main the program's main window, may be null
[[nodiscard]] SLocator MakeLocator(const QWidget& target, const QPoint& pos, const QWidget* main);

struct SFoundWidget
{
    QWidget* widget = nullptr; ///< null: there is none
    QStringList notices;       ///< that it was found otherwise than recorded, or is one of several
};

/// From the top-level window down the list by class, object name and title, the key title first.
/// When that finds nothing, by the target alone: same class, and same name or title, in the place
/// that looks most like the recorded one.
[[nodiscard]] SFoundWidget FindWidget(const SLocator& target, QWidget* main);

} // namespace zov::ui::replay
