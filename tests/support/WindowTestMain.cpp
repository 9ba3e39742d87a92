// SPDX-License-Identifier: Apache-2.0
// Tests of windows: GoogleTest over an application without a screen.
#include <QApplication>

#include <clocale>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
