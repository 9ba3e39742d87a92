// SPDX-License-Identifier: Apache-2.0
#include "app/OutputPane.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

TEST(OutputPane, TheLastLineStaysInSightUntilTheUserScrollsUp)
{
    COutputPane pane;
    pane.resize(300, 120);
    pane.show();
    const auto write = [&](const std::string& text, int times) {
        for (int i = 0; i < times; ++i) {
            pane.Write(text);
            QCoreApplication::processEvents();
        }
    };
    const QScrollBar& bar = *pane.verticalScrollBar();
    write("short", 20);
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    write(std::string(200, 'x'), 1); // the horizontal bar takes room
    write("short", 3);
    EXPECT_TRUE(pane.horizontalScrollBar()->isVisible());
    EXPECT_EQ(bar.value(), bar.maximum());
    pane.resize(300, 80);
    write("short", 1);
    EXPECT_EQ(bar.value(), bar.maximum());

    pane.verticalScrollBar()->setValue(2);
    write("short", 5);
    EXPECT_EQ(bar.value(), 2);
    pane.verticalScrollBar()->setValue(bar.maximum());
    write("short", 5);
    EXPECT_EQ(bar.value(), bar.maximum());
}

} // namespace
} // namespace zov::app
