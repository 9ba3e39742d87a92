// SPDX-License-Identifier: Apache-2.0
// Tests of windows: GoogleTest over an application without a screen.
#include <QApplication>

#include <clocale>
#include <gtest/gtest.h>
#include <memory>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZOV_LEAKS_ARE_SOUGHT
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ZOV_LEAKS_ARE_SOUGHT
#endif
#ifdef ZOV_LEAKS_ARE_SOUGHT
#include <sanitizer/lsan_interface.h>
using CNotOurLeaks = __lsan::ScopedDisabler; // the platform's plugin keeps its screen for ever
#else
struct CNotOurLeaks
{
};
#endif

namespace {

QApplication* MakeApplication(int& argc, char** argv)
{
    [[maybe_unused]] const CNotOurLeaks keptByThePlatform;
    return new QApplication(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    const std::unique_ptr<QApplication> app(MakeApplication(argc, argv));
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
