// SPDX-License-Identifier: Apache-2.0
// Typing into the search field over many models: what is found, and how long each key takes. With
// ZOV_LARGE=100 the list has 1,000,000 models.
#include "app/ModelListView.h"
#include "support/StallMeter.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace zov::app {
namespace {

constexpr int kModels = 10'000;
constexpr std::array kMakers = {"Norvik Components", "Kestrel Passives", "Tamarack Electronics"};
constexpr std::array kSizes = {"0402E", "0603E", "0805E", "1210E"};

std::shared_ptr<CZovLibrary> Capacitors(int count)
{
    auto library = std::make_shared<CZovLibrary>();
    library->Reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        CZovRcdProps& record = library->Add(ERecordType::Capacitor);
        const std::string number = std::to_string(i);
        record.SetString(EPropId::ModelName, "CAP-" + number);
        record.SetString(EPropId::MfgPartNumber, "NVC0402X7R" + number + "K16");
        record.SetString(EPropId::Manuf, kMakers[static_cast<std::size_t>(i) % kMakers.size()]);
        record.SetString(EPropId::Size, kSizes[static_cast<std::size_t>(i) % kSizes.size()]);
        record.SetDouble(EPropId::Cnom, 1e-9 * (1 + i % 1000));
    }
    return library;
}

TEST(LargeList, EachKeyIsAnswered)
{
    const int count = kModels * zov::test::LargeFactor();
    CModelListView view(1);
    view.resize(1000, 600);
    view.show();
    view.Model().SetLibraries({Capacitors(count)});
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == count; }, 60'000));
    view.SearchField().setFocus();
    QTest::qWait(500 * zov::test::LargeFactor() / 10); // the block of texts is made meanwhile

    struct STyped
    {
        const char* text;
        int found;
    };
    const STyped table[] = {
        {"norvik", (count + 2) / 3}, {"x7r 0402", count},
        {"0603e", count / 4},        {"cap-77", -1},
        {"tamarack -0805e", -1},     {"cnom 90nF..110nF", count / 1000 * 21},
    };
    zov::test::CStallMeter meter;
    for (const STyped& typed : table) {
        double worst = 0;
        double sum = 0;
        int keys = 0;
        meter.Begin();
        for (const char key : std::string(typed.text)) {
            QElapsedTimer timer;
            timer.start();
            QTest::keyClick(&view.SearchField(), key);
            while (view.Model().IsFilling()) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            }
            const double took = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
            worst = std::max(worst, took);
            sum += took;
            ++keys;
        }
        std::printf("'%s': %d found; a key takes %.1f ms, at worst %.1f; ", typed.text,
                    view.Model().rowCount(), sum / keys, worst);
        meter.End("all keys");
        if (typed.found >= 0) {
            EXPECT_EQ(view.Model().rowCount(), typed.found) << typed.text;
        } else {
            EXPECT_GT(view.Model().rowCount(), 0) << typed.text;
            EXPECT_LT(view.Model().rowCount(), count) << typed.text;
        }
        view.SearchField().clear();
        ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == count; }, 60'000));
    }
}

} // namespace
} // namespace zov::app
