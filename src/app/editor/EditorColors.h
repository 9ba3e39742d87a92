// SPDX-License-Identifier: Apache-2.0
/// Colours of what the editor has to say; readable on the light and on the dark theme.
#pragma once

#include <QColor>

namespace zov::app {

inline QColor ErrorColor()
{
    return {0xD9, 0x3A, 0x3A};
}
inline QColor WarningColor()
{
    return {0xC0, 0x7A, 0x10};
}
/// For backgrounds.
inline QColor Faint(QColor color)
{
    color.setAlpha(48);
    return color;
}

} // namespace zov::app
