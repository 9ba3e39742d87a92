// SPDX-License-Identifier: Apache-2.0
/// The dark and the light theme: colours of the whole program, over one plain style.
#pragma once

#include <QPalette>

class QApplication;

namespace zov::app {

enum class ETheme
{
    Light,
    Dark
};

/// Colours of a theme; text on its ground has a contrast of at least 7 to 1, disabled text 3 to 1.
QPalette PaletteOf(ETheme theme);
void ApplyTheme(QApplication& app, ETheme theme);

} // namespace zov::app
