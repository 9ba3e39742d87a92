// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ReplayBar.h"

#include "base/File.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>
#include <map>
#include <set>

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
    std::map<std::string, std::string> environment;
    CReplayBar& bar = *new CReplayBar(
        main,
        [this](const char* name) -> std::optional<std::string> {
            const auto at = environment.find(name);
            return at == environment.end() ? std::nullopt : std::optional(at->second);
        },
        log);
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
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("Tavrely GUI Record Files(*.xml)"));
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
    const SShownPrompt& asked = answers.Shown()[answers.Shown().size() - 2];
    EXPECT_EQ(asked.title, QStringLiteral("Load GUI Record"));
    EXPECT_EQ(asked.text, QStringLiteral("Tavrely GUI Record Files(*.re, *.xml, *.brf)"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bar.Player().IsPlaying(); }));
    EXPECT_EQ(edit->text(), QStringLiteral("ab"));
    EXPECT_EQ(State(), QStringLiteral("Played, 0 check points passed"));
    EXPECT_EQ(log.Lines().back(), "Play Ended");

    std::filesystem::remove(folder.Path() / "GUIReplay_typing.brf");
    std::filesystem::rename(folder.Path() / "GUIReplay_typing.xml", folder.Path() / "old.re");
    answers.ThenPath(Path("old.re"));
    Action("Convert").trigger();
    const SShownPrompt& chosen = answers.Shown()[answers.Shown().size() - 2];
    EXPECT_EQ(chosen.title, QStringLiteral("choose GUI Record"));
    EXPECT_TRUE(chosen.text.startsWith(QStringLiteral("Tavrely GUI Record Files(*.xml);;")));
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
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Save Check Point"));
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Check Point Files(*.ckp);;All File(*.*)"));
    pick("Watch Point");
    EXPECT_FALSE(box->isChecked()) << "the click only picks";
    EXPECT_EQ(folder.Read("tolerances.ckp"), "Box: Unchecked, Enabled\n");
    const std::vector<SRecordedEvent>& events = bar.Recorder().Record().events;
    ASSERT_EQ(events.size(), 2U) << "pointing is no part of the record";
    EXPECT_EQ(events[0].extraInfo, "tolerances.ckp");
    EXPECT_EQ(events[1].extraInfo, "WatchPoint");
    Action("Stop").trigger();
}

TEST_F(ReplayBarTest, SpeedsAreChosenFromAMenu)
{
    answers.ThenPath(Path("slow.xml"));
    Action("Record").trigger();
    QTest::keyClicks(edit, QStringLiteral("a"));
    QTest::qWait(400);
    QTest::keyClicks(edit, QStringLiteral("b"));
    Action("Stop").trigger();
    const auto choose = [&](const char* text) {
        QStringList seen;
        QTimer::singleShot(0, &bar, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                seen += action->text() + (action->isChecked() ? QStringLiteral("*") : QString());
                if (action->text() == QLatin1String(text)) {
                    menu->setActiveAction(action);
                }
            }
            QTest::keyClick(menu, Qt::Key_Return);
        });
        Action("Speed").trigger();
        return seen.join(QLatin1Char('|')).toStdString();
    };
    const auto play = [&] {
        edit->clear();
        answers.ThenPath(Path("GUIReplay_slow.xml"));
        QElapsedTimer timer;
        timer.start();
        Action("Play").trigger();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !bar.Player().IsPlaying(); }));
        EXPECT_EQ(edit->text(), QStringLiteral("ab"));
        return timer.elapsed();
    };
    EXPECT_GE(play(), 400);
    EXPECT_EQ(choose("Without delays"),
              "As recorded*|2 times faster|5 times faster|10 times faster|Without delays");
    EXPECT_LT(play(), 400);
    EXPECT_EQ(choose("2 times faster"),
              "As recorded|2 times faster|5 times faster|10 times faster|Without delays*");
    EXPECT_GE(play(), 200);
}

TEST_F(ReplayBarTest, PlaysByStepsWhereAskedFor)
{
    answers.ThenPath(Path("steps.xml"));
    Action("Record").trigger();
    QTest::keyClicks(edit, QStringLiteral("ab"));
    Action("Stop").trigger();
    edit->clear();
    environment["VRSHL_GUIREPLAY_MANUAL"] = "1";
    answers.ThenPath(Path("GUIReplay_steps.xml"));
    Action("Play").trigger();
    EXPECT_EQ(State(), QStringLiteral("0 of 4 played, Play does the next step"));
    for (const char* typed : {"a", "a", "ab", "ab"}) {
        EXPECT_TRUE(Action("Play").isEnabled());
        Action("Play").trigger();
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return bar.Player().IsWaiting() || !bar.Player().IsPlaying(); }));
        EXPECT_EQ(edit->text(), QLatin1String(typed));
    }
    Action("Play").trigger(); // behind the last step
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bar.Player().IsPlaying(); }));
    EXPECT_EQ(State(), QStringLiteral("Played, 0 check points passed"));
}

TEST_F(ReplayBarTest, KeysReachItFromADialog)
{
    answers.ThenPath(Path("dialog.xml"));
    Action("Record").trigger();
    QDialog dialog(&main);
    QLineEdit inside(&dialog);
    QTimer::singleShot(0, &dialog, [&] {
        QTest::keyClick(&inside, Qt::Key_F8, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(Action("Cursor").isChecked());
        QTest::keyClick(&inside, Qt::Key_Escape);
        EXPECT_FALSE(Action("Cursor").isChecked());
        QTest::keyClicks(&inside, QStringLiteral("x"));
        QTest::keyClick(&inside, Qt::Key_F9, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_FALSE(bar.Recorder().IsRecording());
        dialog.reject();
    });
    dialog.exec();
    std::set<std::int64_t> keys;
    for (const SRecordedEvent& event : bar.Recorder().Record().events) {
        keys.insert(event.fields.key);
    }
    EXPECT_TRUE(keys.contains(Qt::Key_X));
    for (const int key : {Qt::Key_F8, Qt::Key_F9, Qt::Key_Escape}) {
        EXPECT_FALSE(keys.contains(key)) << "keys of the bar are no part of the record";
    }
}

TEST_F(ReplayBarTest, WhatCannotBeWrittenIsToldBeforeTheWork)
{
    answers.ThenPath(Path("absent/new.xml"));
    Action("Record").trigger();
    EXPECT_FALSE(bar.Recorder().IsRecording());
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("GUIReplay_new.xml")));

    environment["RECFIXPATH"] = PathText(folder.Path());
    folder.Write("GUIReplay_old.xml", "precious");
    answers.ThenText(QStringLiteral("old")).Then(EAnswer::No);
    Action("Record").trigger();
    EXPECT_EQ(folder.Read("GUIReplay_old.xml"), "precious");
    answers.ThenText(QStringLiteral("new"));
    Action("Record").trigger();
    EXPECT_TRUE(bar.Recorder().IsRecording());
    QTest::keyClicks(edit, QStringLiteral("ab"));
    delete &bar; // with its window
    EXPECT_NE(folder.Read("GUIReplay_new.brf").find("KeyInputs \"ab\""), std::string::npos);
}

} // namespace
} // namespace zov::ui::replay
