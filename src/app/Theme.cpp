// SPDX-License-Identifier: Apache-2.0
#include "app/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
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

/// Draws every control from the palette alone. Its boxes have an outline darker than the window,
/// which nobody sees in the dark: they get one out of the text's colour.
class CSeenStyle final : public QProxyStyle
{
public:
    CSeenStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isBox = element == PE_IndicatorCheckBox;
        const bool isDark = option->palette.color(QPalette::Base).lightness() < kDarkBase;
        if (!isDark || (!isBox && element != PE_IndicatorRadioButton)) {
            return;
        }
        QColor outline = option->palette.color(QPalette::Text);
        outline.setAlpha(kOutlineAlpha);
        painter->save();
        painter->setPen(outline);
        painter->setBrush(Qt::NoBrush);
        const QRect rect = option->rect.adjusted(0, 0, -1, -1);
        if (isBox) {
            painter->drawRect(rect);
        } else {
            painter->setRenderHint(QPainter::Antialiasing);
            painter->drawEllipse(rect);
        }
        painter->restore();
    }

private:
    static constexpr int kDarkBase = 128;
    static constexpr int kOutlineAlpha = 120;
};

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
    QApplication::setStyle(new CSeenStyle);
    app.setPalette(PaletteOf(theme));
    QToolTip::setPalette(PaletteOf(theme));
}

} // namespace zov::app
