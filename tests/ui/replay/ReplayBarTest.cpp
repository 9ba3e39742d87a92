// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ReplayBar.h"

#include "base/File.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace zov::ui::replay {
namespace {

struct ReplayBarTest : testing::Test
{
    ReplayBarTest()
    {
        auto* page = new QWidget(&main);
        auto* layout = new QVBoxLayout(page);
        layout->addWidget(edit);
        layout->addWidget(box);
        edit->setObjectName(QStringLiteral("Edit"));
        box->setObjectName(QStringLiteral("Box"));
        main.setCentralWidget(page);
        main.addToolBar(&bar);
        main.show();
    }
    QAction& Action(const char* text)
    {
        for (QAction* action : bar.actions()) {
            if (action->text() == QLatin1String(text)) {
                return *action;
            }
        }
        ADD_FAILURE() << text;
        return *bar.actions().first();
    }
    QString State() { return bar.findChild<QLabel*>(QStringLiteral("ReplayState"))->text(); }
    QString Path(const char* name)
    {
        return QString::fromStdString(PathText(folder.Path() / name));
    }

    test::CTempFolder folder;
    CVectorLog log;
    CScriptedAnswers answers;
    QMainWindow main;
    QLineEdit* edit = new QLineEdit;
    QCheckBox* box = new QCheckBox(QStringLiteral("Tolerances"));
    CReplayBar& bar = *new CReplayBar(
        main, [](const char*) { return std::nullopt; }, log);
};

TEST_F(ReplayBarTest, RecordsPlaysAndConverts)
{
    QStringList texts;
    for (const QAction* action : bar.actions()) {
        texts += action->text();
    }
    EXPECT_EQ(texts.join(QLatin1Char('|')).toStdString(),
              "Record|Stop|Play|Speed||Cursor|Convert|");
    EXPECT_EQ(bar.windowTitle(), QStringLiteral("ZOV - Replay"));
    EXPECT_FALSE(Action("Stop").isEnabled());

    answers.ThenPath(Path("typing.xml"));
    Action("Record").trigger();
    EXPECT_TRUE(bar.Recorder().IsRecording());
    EXPECT_FALSE(Action("Play").isEnabled());
    QTest::keyClicks(edit, QStringLiteral("ab"));
    EXPECT_EQ(State(), QStringLiteral("Recording: 4 events"));
    QTest::mouseClick(bar.findChild<QLabel*>(), Qt::LeftButton);
    EXPECT_EQ(bar.Recorder().Record().events.size(), 4U) << "the toolbar is no part of it";
    Action("Stop").trigger();
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "GUIReplay_typing.xml"));

    edit->clear();
    answers.ThenPath(Path("GUIReplay_typing.brf"));
    Action("Play").trigger();
    EXPECT_EQ(answers.Shown().back().text.toStdString(),
              "It is highly recommended that do not use mouse or keyboard while you are playing a "
              "recorded script.\nThese kinds of operations may (or may not if you're lucky) "
              "interrupt the playing process.");
    EXPECT_EQ(answers.Shown()[answers.Shown().size() - 2].title, QStringLiteral("Load GUI Record"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bar.Player().IsPlaying(); }));
    EXPECT_EQ(edit->text(), QStringLiteral("ab"));
    EXPECT_EQ(State(), QStringLiteral("Played, 0 check points passed"));
    EXPECT_EQ(log.Lines().back(), "Play Ended");

    std::filesystem::remove(folder.Path() / "GUIReplay_typing.brf");
    std::filesystem::rename(folder.Path() / "GUIReplay_typing.xml", folder.Path() / "old.re");
    answers.ThenPath(Path("old.re"));
    Action("Convert").trigger();
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "old.xml"));
    EXPECT_TRUE(folder.Read("old.brf").starts_with("##Version=1\n"));
    answers.ThenPath(Path("absent.xml"));
    Action("Play").trigger();
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("absent.xml")));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ReplayBarTest, TheCursorPicksAWidgetForACheckPoint)
{
    answers.ThenPath(Path("checks.xml"));
    Action("Record").trigger();
    Action("Cursor").trigger();
    EXPECT_TRUE(Action("Cursor").isChecked());
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_FALSE(Action("Cursor").isChecked());

    const auto pick = [&](const char* entry) {
        Action("Cursor").trigger();
        QTimer::singleShot(0, &bar, [entry] {
            QTimer::singleShot(0, [entry] {
                auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                ASSERT_NE(menu, nullptr);
                for (QAction* action : menu->actions()) {
                    if (action->text() == QLatin1String(entry)) {
                        menu->setActiveAction(action);
                        QTest::keyClick(menu, Qt::Key_Return);
                        return;
                    }
                }
                FAIL() << entry;
            });
        });
        QTest::mouseClick(box, Qt::LeftButton, {}, {8, box->height() / 2});
    };
    answers.ThenPath(Path("tolerances.ckp"));
    pick("Save Check Point...");
    pick("Watch Point");
    EXPECT_FALSE(box->isChecked()) << "the click only picks";
    EXPECT_EQ(folder.Read("tolerances.ckp"), "Box: Unchecked, Enabled\n");
    const std::vector<SRecordedEvent>& events = bar.Recorder().Record().events;
    ASSERT_EQ(events.size(), 2U) << "pointing is no part of the record";
    EXPECT_EQ(events[0].extraInfo, "tolerances.ckp");
    EXPECT_EQ(events[1].extraInfo, "WatchPoint");
    Action("Stop").trigger();
}

} // namespace
} // namespace zov::ui::replay
