// SPDX-License-Identifier: Apache-2.0
#include "app/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QStyle>

#include <algorithm>
#include <gtest/gtest.h>

namespace zov::app {
namespace {

TEST(ThemeTest, BoxesThatAreNotCheckedAreSeenInBothThemes)
{
    const QPalette before = QApplication::palette();
    const QString style = QApplication::style()->objectName();
    for (const ETheme theme : {ETheme::Light, ETheme::Dark}) {
        ApplyTheme(dynamic_cast<QApplication&>(*QCoreApplication::instance()), theme);
        QCheckBox check;
        QRadioButton radio;
        for (QWidget* box : {static_cast<QWidget*>(&check), static_cast<QWidget*>(&radio)}) {
            const QImage image = box->grab().toImage();
            int darkest = 255;
            int lightest = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const int light = qGray(image.pixel(x, y));
                    darkest = std::min(darkest, light);
                    lightest = std::max(lightest, light);
                }
            }
            EXPECT_GT(lightest - darkest, 60) << box->metaObject()->className();
        }
    }
    QApplication::setStyle(style);
    QApplication::setPalette(before);
}

} // namespace
} // namespace zov::app
