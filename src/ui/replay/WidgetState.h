// SPDX-License-Identifier: Apache-2.0
/// What a check point holds: the state of a widget and of the visible ones inside it as text.
///
///     SearchField: "x7r", Enabled
///     Pages: count=3 current=0
///     --------
///     ModelTable: items=2 columns=3, Enabled
///     C1  Capacitor  100nF
///     C2  Capacitor  [Disabled]
#pragma once

#include <QString>

class QWidget;

namespace zov::ui::replay {

/// Parts that come and go with size and style (scroll bars, frames) are left out, so that the text
/// is the same at another window size, theme or font.
[[nodiscard]] QString StateOf(const QWidget& widget);

} // namespace zov::ui::replay
