// SPDX-License-Identifier: Apache-2.0
#include "app/Theme.h"

#include <QApplication>
#include <QStyleFactory>
#include <QToolTip>

namespace zov::app {
namespace {

struct SColors
{
    QRgb window, base, alternate, text, disabled, button, highlight, highlightText, link, tip;
};

constexpr SColors kLight = {0xFFF3F4F6, 0xFFFFFFFF, 0xFFF7F8FA, 0xFF1F2328, 0xFF7A828C,
                            0xFFE9EBEE, 0xFF1F6FB5, 0xFFFFFFFF, 0xFF0B5CAD, 0xFFFFFBE6};
constexpr SColors kDark = {0xFF24272B, 0xFF1B1D20, 0xFF202327, 0xFFE6E8EB, 0xFF868D96,
                           0xFF2F3338, 0xFF2F7FC9, 0xFFFFFFFF, 0xFF6CB2F5, 0xFF3A3F45};

} // namespace

QPalette PaletteOf(ETheme theme)
{
    const SColors& c = theme == ETheme::Dark ? kDark : kLight;
    QPalette palette(QColor::fromRgb(c.button), QColor::fromRgb(c.window));
    const std::pair<QPalette::ColorRole, QRgb> roles[] = {
        {QPalette::Base, c.base},
        {QPalette::AlternateBase, c.alternate},
        {QPalette::WindowText, c.text},
        {QPalette::Text, c.text},
        {QPalette::ButtonText, c.text},
        {QPalette::Highlight, c.highlight},
        {QPalette::HighlightedText, c.highlightText},
        {QPalette::Link, c.link},
        {QPalette::ToolTipBase, c.tip},
        {QPalette::ToolTipText, c.text},
        {QPalette::PlaceholderText, c.disabled},
    };
    for (const auto& [role, color] : roles) {
        palette.setColor(role, QColor::fromRgb(color));
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(c.disabled));
    }
    return palette;
}

void ApplyTheme(QApplication& app, ETheme theme)
{
    // The one style that draws every control from the palette alone.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    app.setPalette(PaletteOf(theme));
    QToolTip::setPalette(PaletteOf(theme));
}

} // namespace zov::app
