// SPDX-License-Identifier: Apache-2.0
// A board over a large library: the mapping can be watched and ended, and the window stays alive.
// With ZOV_LARGE=100 in the environment it is 10,000 components over 1,000,000 models; times and
// stalls are printed, see docs/testing.md.
#include "app/assignment/AssignFrameSupport.h"
#include "support/StallMeter.h"

#include <QProgressBar>

namespace zov::app::test {
namespace {

constexpr int kModels = 10'000;
constexpr int kComponents = 100;

struct LargeBoardTest : CAssignFrameTest
{
    const int factor = zov::test::LargeFactor();
    zov::test::CStallMeter meter;

    static std::string Number(int i)
    {
        const std::string digits = std::to_string(i);
        return std::string(8 - digits.size(), '0') + digits;
    }
    /// KP00000000-X7R and so on; each tenth has a keyword, each third a part number.
    std::filesystem::path MakeLibrary() const
    {
        CZovLibrary library;
        for (int i = 0; i < kModels * factor; ++i) {
            CZovRcdProps& record =
                library.Add(i % 2 == 0 ? ERecordType::Capacitor : ERecordType::Resistor);
            record.SetString(EPropId::ModelName, "KP" + Number(i) + "-X7R");
            if (i % 3 == 0) {
                record.SetString(EPropId::MfgPartNumber, "MPN-" + Number(i));
            }
            if (i % 10 == 0) {
                record.SetString(EPropId::Lookup, "KEY" + Number(i) + ";ALT" + Number(i));
            }
        }
        CNullLog silent;
        const std::filesystem::path path = folder.Path() / "large.zov";
        EXPECT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
        return path;
    }
    /// Of ten components: five are named like a model, two are a part of a name, one is a keyword,
    /// one a part number, one nothing.
    std::string Board() const
    {
        std::string lines = "Component,RefDes\n";
        for (int i = 0; i < kComponents * factor; ++i) {
            const int model = i * 97 % (kModels * factor) / 30 * 30;
            const std::string number = Number(model + i % 10);
            lines += i % 10 < 5    ? "KP" + number + "-X7R"
                     : i % 10 < 7  ? "P" + number + "-"
                     : i % 10 == 7 ? "KEY" + Number(model)
                     : i % 10 == 8 ? "MPN-" + Number(model)
                                   : "NONE-" + number;
            for (int ref = 0; ref < 4; ++ref) {
                lines += (ref == 0 ? ",U" : " U") + std::to_string(4 * i + ref);
            }
            lines += '\n';
        }
        return lines;
    }
    int RowsWithModel()
    {
        int count = 0;
        for (const AssignRow* row : frame.View().Table()->Rows()) {
            count += frame.View().Table()->ModelsOf(*row).empty() ? 0 : 1;
        }
        return count;
    }
    template <class F>
    void Measured(const char* what, F run)
    {
        QTest::qWait(20); // what the step before left
        meter.Begin();
        run();
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !session.Job().IsRunning() && !frame.View().IsBusy(); }, 600'000));
        meter.End(what);
    }
};

TEST_F(LargeBoardTest, MappingCanBeWatchedAndEnded)
{
    const std::filesystem::path library = MakeLibrary();
    const QString board = Text(folder.Write("board.csv", Board()));
    frame.show();
    Measured("library opened", [&] { session.OpenProject(library, questions); });
    ASSERT_EQ(session.ProjectLibrary()->Count(), static_cast<std::size_t>(kModels * factor));

    // Ended as soon as the search is under way: the view has its rows, none has a model.
    const auto connection =
        QObject::connect(&frame.View(), &CAssignModelView::DesignChanged, &frame, [this] {
            QTimer::singleShot(0, &frame, [this] {
                meter.Begin();
                QTest::keyClick(&frame, Qt::Key_Escape);
            });
        });
    frame.OpenDesign(board);
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame.View().HasDesign() && !frame.View().IsBusy(); },
                                600'000));
    meter.End("mapping cancelled");
    QObject::disconnect(connection);
    EXPECT_EQ(RowsWithModel(), 0) << "nothing is assigned then";

    int reports = 0;
    QObject::connect(&frame.View().Job(), &CBackgroundJob::Progress, &frame, [&] { ++reports; });
    Measured("mapping", [&] { frame.Actions().Action(ID_AUTO_MAPPING)->trigger(); });
    const int rows = static_cast<int>(frame.View().Table()->Rows().size());
    EXPECT_EQ(RowsWithModel(), rows - rows / 10);
    std::printf("%d of %d rows have a model; progress was told %d times\n", RowsWithModel(), rows,
                reports);

    Measured("statuses checked anew", [&] { Trigger(ID_REFRESH_STATUS); });
    Measured("all expanded", [&] { frame.Actions().Action(ID_EXPAND_MODEL)->trigger(); });
    Measured("designators shown", [&] { frame.Actions().Action(ID_SWITCH_VIEW)->trigger(); });
    Measured("rows found", [&] {
        frame.findChild<QComboBox*>(QStringLiteral("FindPattern"))
            ->setEditText(QStringLiteral("U1*, U2*"));
        frame.Actions().Action(ID_ZVMGR_FIND_ALL)->trigger();
    });
    Measured("components shown", [&] { frame.Actions().Action(ID_SWITCH_VIEW)->trigger(); });
    Measured("the why of ten rows, one after the other", [&] {
        for (int row = 0; row < 10; ++row) {
            Select({row});
            QTest::qWait(120);
        }
    });
    answers.ThenPath(Text(folder.Path() / "map.csv"));
    Measured("map file written", [&] { frame.Actions().Action(ID_EXPORT_MAP_FILE)->trigger(); });
    answers.ThenPath(Text(folder.Path() / "map.csv"));
    Measured("map file read", [&] { frame.Actions().Action(ID_IMPORT_MAP_FILE)->trigger(); });
    EXPECT_EQ(RowsWithModel(), rows - rows / 10);
    Measured("a record of the library edited", [&] {
        CLibraryChange change(session.ProjectLibrary());
        change.Replace(session.ProjectLibrary()->At(0)).SetString(EPropId::Lookup, "other");
        session.Edits().Apply(change, QStringLiteral("Edit"));
    });
    EXPECT_EQ(RowsWithModel(), rows - rows / 10);
}

} // namespace
} // namespace zov::app::test
