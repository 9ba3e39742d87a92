// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisColors.h"
#include "app/ibis/IbisCommands.h"
#include "app/ibis/IbisEditorFrm.h"
#include "app/ibis/IbisTextEdit.h"
#include "app/ibis/LargeTextView.h"
#include "base/File.h"
#include "support/SourcePaths.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>

#include <cstdio>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace zov::app {
namespace {

struct IbisEditorTest : testing::Test
{
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    std::filesystem::path Example() const
    {
        const std::filesystem::path copy = folder.Path() / "memory.ibs";
        std::filesystem::copy_file(test::SourceFolder() + "/examples/memory.ibs", copy);
        return copy;
    }
    void Open(const std::filesystem::path& path)
    {
        frame.OpenFile(Text(path));
        WaitIdle();
    }
    void WaitIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return frame.IsIdle(); }, 20000));
    }
    void Trigger(unsigned command) { frame.Actions().Action(command)->trigger(); }
    bool IsEnabled(unsigned command)
    {
        frame.OnIdleUpdateCmdUI();
        return frame.Actions().Action(command)->isEnabled();
    }
    template <class T>
    T& Child(const char* name) const
    {
        return *frame.findChild<T*>(QLatin1String(name));
    }
    QString TreeText() const
    {
        return Child<QTreeView>("IbisTree").currentIndex().siblingAtColumn(0).data().toString();
    }
    /// Line of the first text, from 1.
    static std::size_t LineOf(const std::string& text, std::string_view wanted)
    {
        return static_cast<std::size_t>(std::count(
                   text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find(wanted)),
                   '\n')) +
               1;
    }

    test::CTempFolder folder;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CIbisEditorFrm frame{log};
};

TEST_F(IbisEditorTest, TreeAndTextFollowEachOther)
{
    Open(Example());
    const std::string text = folder.Read("memory.ibs");
    auto& tree = Child<QTreeView>("IbisTree");
    ASSERT_GT(tree.model()->rowCount(), 5);
    for (int row = 0; row < tree.model()->rowCount(); ++row) {
        if (tree.model()->index(row, 0).data().toString() == QStringLiteral("[Model]")) {
            tree.setCurrentIndex(tree.model()->index(row, 0));
            break;
        }
    }
    EXPECT_EQ(frame.CurrentLine(), LineOf(text, "[Model]"));
    frame.GoToLine(LineOf(text, "[Pin]"));
    EXPECT_EQ(TreeText(), QStringLiteral("[Pin]"));
    frame.GoToLine(LineOf(text, "[Ramp]"));
    EXPECT_EQ(TreeText(), QStringLiteral("[Ramp]"));
    answers.ThenText(QStringLiteral("1"));
    Trigger(ID_IBIS_GO_TO_LINE);
    EXPECT_EQ(frame.CurrentLine(), 1U);
    Child<QLineEdit>("FindField").setText(QStringLiteral("[Component]"));
    Trigger(ID_IBIS_FIND_NEXT);
    EXPECT_EQ(frame.CurrentLine(), LineOf(text, "[Component]"));
}

TEST_F(IbisEditorTest, TablesAreDrawnWithTheirCorners)
{
    Open(Example());
    const std::string text = folder.Read("memory.ibs");
    frame.GoToLine(LineOf(text, "[Pulldown]"));
    auto& plot = Child<CCurvePlot>("CurvePlot");
    EXPECT_EQ(plot.Axes().xUnit, QStringLiteral("V"));
    EXPECT_EQ(plot.Axes().yUnit, QStringLiteral("A"));
    EXPECT_TRUE(Child<QDockWidget>("IbisCurvesPane")
                    .windowTitle()
                    .startsWith(QStringLiteral("[Pulldown]")));
    EXPECT_LT(plot.Window().xLow, plot.Window().xHigh);
    const std::size_t wave = text.find("[Rising Waveform]");
    if (wave != std::string::npos) {
        frame.GoToLine(LineOf(text, "[Rising Waveform]"));
        EXPECT_EQ(plot.Axes().xUnit, QStringLiteral("s"));
    }
}

TEST_F(IbisEditorTest, SavingChecksAgainAndTheReportLeadsToTheLine)
{
    const std::filesystem::path path = Example();
    Open(path);
    const QString clean = Child<QLabel>("Verdict").text();
    EXPECT_TRUE(clean.startsWith(QStringLiteral("0 errors"))) << clean.toStdString();
    EXPECT_FALSE(IsEnabled(ID_IBIS_SAVE));

    const std::string before = folder.Read("memory.ibs");
    const std::size_t line = LineOf(before, "[Manufacturer]");
    frame.GoToLine(line);
    auto& edit = Child<CIbisTextEdit>("IbisText");
    QTest::keyClicks(&edit, QStringLiteral("nonsense "));
    EXPECT_TRUE(frame.isWindowModified());
    EXPECT_TRUE(IsEnabled(ID_IBIS_SAVE));
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    EXPECT_FALSE(frame.isWindowModified());
    std::string expected = before;
    expected.insert(before.find("[Manufacturer]"), "nonsense ");
    EXPECT_EQ(folder.Read("memory.ibs"), expected) << "every other byte is as it was";
    EXPECT_NE(Child<QLabel>("Verdict").text(), clean);

    auto& list = Child<QTableView>("ReportList");
    ASSERT_GT(list.model()->rowCount(), 0);
    frame.GoToLine(1);
    Trigger(ID_IBIS_NEXT_MESSAGE);
    EXPECT_EQ(frame.CurrentLine(),
              list.currentIndex().siblingAtColumn(CReportModel::kLine).data().toULongLong());
    const QString code = list.currentIndex().siblingAtColumn(CReportModel::kCode).data().toString();
    EXPECT_TRUE(code.startsWith(QLatin1Char('E'))) << code.toStdString();
    EXPECT_TRUE(
        Child<QTextBrowser>("Explanation").toPlainText().contains(QStringLiteral("What to do")));
    const int all = list.model()->rowCount();
    Trigger(ID_IBIS_SHOW_ERRORS);
    EXPECT_LT(list.model()->rowCount(), all);
    Trigger(ID_IBIS_SHOW_ERRORS);
    Child<QLineEdit>("ReportSearch").setText(code);
    EXPECT_GT(list.model()->rowCount(), 0);
    Child<QLineEdit>("ReportSearch").setText(QStringLiteral("no such text"));
    EXPECT_EQ(list.model()->rowCount(), 0);
    EXPECT_FALSE(IsEnabled(ID_IBIS_NEXT_MESSAGE));
}

TEST_F(IbisEditorTest, AnEditedTextIsNotLost)
{
    const std::filesystem::path path = Example();
    Open(path);
    QTest::keyClicks(&Child<CIbisTextEdit>("IbisText"), QStringLiteral("|"));
    answers.Then(ui::EAnswer::Cancel);
    EXPECT_FALSE(frame.close());
    answers.Then(ui::EAnswer::Cancel);
    frame.OpenFile(Text(folder.Write("other.ibs", "[IBIS Ver] 4.2\n")));
    EXPECT_EQ(frame.Path(), Text(path));
    std::filesystem::remove(path);
    std::filesystem::create_directories(path / "in the way");
    Trigger(ID_IBIS_SAVE);
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    EXPECT_TRUE(frame.isWindowModified());
    answers.Then(ui::EAnswer::No);
    EXPECT_TRUE(frame.close());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, BytesThatAreNoUtf8AndCrLfStay)
{
    const std::string text = "[IBIS Ver] 4.2\r\n| \xB5 micro\r\n[File Name] odd.ibs\r\n[End]\r\n";
    Open(folder.Write("odd.ibs", text));
    frame.GoToLine(4);
    QTest::keyClicks(&Child<CIbisTextEdit>("IbisText"), QStringLiteral("|"));
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    std::string expected = text;
    expected.insert(expected.find("[End]"), "|");
    EXPECT_EQ(folder.Read("odd.ibs"), expected);
}

TEST_F(IbisEditorTest, MixedLineEndsAndUndoneTextsAreSavedAsTheyWere)
{
    const std::string text =
        "[IBIS Ver] 4.2\n| a\rb\r\n| \xC2\xA0 c\r\n[File Name] odd.ibs\n[End]\n";
    Open(folder.Write("odd.ibs", text));
    auto& edit = Child<CIbisTextEdit>("IbisText");
    EXPECT_EQ(edit.blockCount(), 6) << "lines as the checker counts them";
    frame.GoToLine(4);
    QTest::keyClicks(&edit, QStringLiteral("| x"));
    QTest::keyClick(&edit, Qt::Key_Return);
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    std::string expected = text;
    expected.insert(expected.find("[File Name]"), "| x\n");
    EXPECT_EQ(folder.Read("odd.ibs"), expected);
    EXPECT_FALSE(IsEnabled(ID_IBIS_SAVE));
    while (IsEnabled(ID_IBIS_UNDO)) {
        Trigger(ID_IBIS_UNDO);
    }
    EXPECT_TRUE(IsEnabled(ID_IBIS_REDO));
    EXPECT_TRUE(frame.isWindowModified());
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    EXPECT_EQ(folder.Read("odd.ibs"), text);
}

TEST_F(IbisEditorTest, ObjectsAndMessagesFollowTheirLinesWhileTheTextIsEdited)
{
    const std::string text = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n[Nonsense] 1\n[Component] c\n"
                             "[Manufacturer] m\n[End]\n";
    Open(folder.Write("odd.ibs", text));
    auto& list = Child<QTableView>("ReportList");
    Child<QLineEdit>("ReportSearch").setText(QStringLiteral("nonsense"));
    ASSERT_EQ(list.model()->rowCount(), 1);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(frame.CurrentLine(), 3U);
    auto& edit = Child<CIbisTextEdit>("IbisText");
    const auto jump = [&] {
        list.setCurrentIndex({});
        list.setCurrentIndex(list.model()->index(0, 0));
        return frame.CurrentLine();
    };
    frame.GoToLine(1);
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(jump(), 5U) << "two lines more before it";
    frame.GoToLine(7);
    EXPECT_EQ(TreeText(), QStringLiteral("[Manufacturer]"));
    frame.GoToLine(2);
    QTest::keyClick(&edit, Qt::Key_Delete);
    EXPECT_EQ(jump(), 4U);
    Trigger(ID_IBIS_UNDO);
    EXPECT_EQ(jump(), 5U);
    frame.GoToLine(8);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(jump(), 5U) << "a line more behind it";
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    EXPECT_EQ(jump(), 5U) << "now counted in the saved file";
    EXPECT_EQ(list.model()->index(0, CReportModel::kLine).data().toInt(), 5);
}

TEST_F(IbisEditorTest, AnotherProgramsChangeIsToldAndNotOverwritten)
{
    const std::string text = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n[End]\n";
    const std::filesystem::path path = folder.Write("odd.ibs", text);
    Open(path);
    frame.show();
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    auto& notice = Child<QWidget>("ChangedNotice");
    const auto comeBack = [&] {
        QEvent event(QEvent::ActivationChange);
        QApplication::sendEvent(&frame, &event);
        return notice.isVisible();
    };
    EXPECT_FALSE(comeBack());
    const std::string others = "[IBIS Ver] 5.0\n[File Name] odd.ibs\n| theirs\n[End]\n";
    folder.Write("odd.ibs", others);
    EXPECT_TRUE(comeBack());
    Child<QPushButton>("KeepText").click();
    EXPECT_FALSE(comeBack()) << "told once";
    auto& edit = Child<CIbisTextEdit>("IbisText");
    QTest::keyClicks(&edit, QStringLiteral("|"));
    answers.Then(ui::EAnswer::No);
    Trigger(ID_IBIS_SAVE);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("changed by another program")));
    EXPECT_EQ(folder.Read("odd.ibs"), others);
    EXPECT_TRUE(frame.isWindowModified());
    answers.Then(ui::EAnswer::No);
    Child<QPushButton>("ReadAgain").click();
    EXPECT_TRUE(frame.isWindowModified()) << "the changes are kept";
    answers.Then(ui::EAnswer::Yes);
    Child<QPushButton>("ReadAgain").click();
    WaitIdle();
    EXPECT_EQ(edit.Text().toStdString(), others);
    EXPECT_FALSE(frame.isWindowModified());
    EXPECT_EQ(edit.textCursor().position(), 1) << "behind what was typed before";
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClicks(&edit, QStringLiteral("|"));
    Trigger(ID_IBIS_SAVE);
    WaitIdle();
    EXPECT_EQ(folder.Read("odd.ibs"), "|" + others);
    std::filesystem::remove(path);
    EXPECT_TRUE(comeBack());
    EXPECT_FALSE(Child<QPushButton>("ReadAgain").isEnabled());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, ACheckShowsWhatAnotherProgramWrote)
{
    const std::string text = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n| a\n[End]\n";
    Open(folder.Write("odd.ibs", text));
    frame.GoToLine(3);
    auto& edit = Child<CIbisTextEdit>("IbisText");
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(frame.CurrentLine(), 3U);
    const std::string others = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n| a\n[Theirs]\n[End]\n";
    folder.Write("odd.ibs", others);
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(edit.Text().toStdString(), others);
    EXPECT_EQ(frame.CurrentLine(), 3U);
    auto& list = Child<QTableView>("ReportList");
    Child<QLineEdit>("ReportSearch").setText(QStringLiteral("theirs"));
    ASSERT_EQ(list.model()->rowCount(), 1);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(frame.CurrentLine(), 4U);
    frame.show();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("ERROR (line    4) - Invalid Keyword: Theirs"));
}

TEST_F(IbisEditorTest, SavingAndCheckingLeaveTheUsersPlace)
{
    std::string text = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n";
    for (int i = 0; i < 400; ++i) {
        text += "| line that is long enough to choose a part of " + std::to_string(i) + "\n";
    }
    Open(folder.Write("odd.ibs", text + "[End]\n"));
    frame.show();
    auto& edit = Child<CIbisTextEdit>("IbisText");
    const auto places = [&] {
        const QTextCursor cursor = edit.textCursor();
        return std::vector<int>{cursor.position(), cursor.anchor(),
                                edit.verticalScrollBar()->value()};
    };
    EXPECT_EQ(places(), (std::vector<int>{0, 0, 0})) << "a fresh file is shown from its top";
    frame.GoToLine(200);
    QTest::keyClick(&edit, Qt::Key_End);
    const int end = edit.textCursor().positionInBlock();
    // What is typed while the saved file is checked goes where the cursor is.
    QTest::keyClicks(&edit, QStringLiteral("ab"));
    Trigger(ID_IBIS_SAVE);
    QTest::keyClicks(&edit, QStringLiteral("cd"));
    WaitIdle();
    QTest::keyClicks(&edit, QStringLiteral("ef"));
    EXPECT_TRUE(edit.textCursor().block().text().endsWith(QStringLiteral("197abcdef")));
    EXPECT_EQ(edit.textCursor().positionInBlock(), end + 6);

    QTest::keyClick(&edit, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&edit, Qt::Key_Up, Qt::ShiftModifier);
    edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->value() + 3);
    const std::vector<int> before = places();
    EXPECT_NE(before[0], before[1]);
    answers.ThenPath(Text(folder.Path() / "other.ibs"));
    Trigger(ID_IBIS_SAVE_AS);
    WaitIdle();
    EXPECT_EQ(places(), before);
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(places(), before);
    folder.Write("other.ibs", folder.Read("other.ibs") + "| theirs\n");
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_TRUE(edit.Text().endsWith(QStringLiteral("| theirs\n")));
    EXPECT_EQ(places(), before) << "the same in a text that was read again";
    folder.Write("other.ibs", folder.Read("other.ibs") + "| more\n");
    Trigger(ID_IBIS_CHECK);
    QTest::keyClicks(&edit, QStringLiteral("typed"));
    WaitIdle();
    EXPECT_TRUE(edit.Text().contains(QStringLiteral("typed"))) << "not lost to what came in";
    EXPECT_TRUE(Child<QWidget>("ChangedNotice").isVisible());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, ArrowsStandInOneOrder)
{
    int bars = 0;
    for (const QToolBar* bar : frame.findChildren<QToolBar*>()) {
        const QList<QAction*> actions = bar->actions();
        const auto previous = actions.indexOf(frame.Actions().Action(ID_IBIS_PREVIOUS_MESSAGE));
        const auto next = actions.indexOf(frame.Actions().Action(ID_IBIS_NEXT_MESSAGE));
        if (next >= 0) {
            ++bars;
            EXPECT_EQ(next, previous + 1);
        }
    }
    EXPECT_EQ(bars, 2);
}

TEST_F(IbisEditorTest, TablesOfOneNameInTwoModelsAreDrawnEach)
{
    const auto model = [](const std::string& name, const std::string& amps) {
        return "[Model] " + name + "\nModel_type Output\n[Pulldown]\n0 0 0 0\n1 " + amps +
               " NA NA\n";
    };
    const std::string text = "[IBIS Ver] 4.2\n" + model("a", "1") + model("b", "2") + "[End]\n";
    Open(folder.Write("two.ibs", text));
    auto& plot = Child<CCurvePlot>("CurvePlot");
    auto& pane = Child<QDockWidget>("IbisCurvesPane");
    frame.GoToLine(4);
    EXPECT_EQ(pane.windowTitle(), QStringLiteral("[Pulldown] of a"));
    const double first = plot.Window().yHigh;
    frame.GoToLine(9);
    EXPECT_EQ(pane.windowTitle(), QStringLiteral("[Pulldown] of b"));
    EXPECT_NEAR(plot.Window().yHigh, 2.0 * first, 0.5 * first);
}

TEST_F(IbisEditorTest, AnEditedTextIsSavedBeforeACheck)
{
    const std::string text = "[IBIS Ver] 4.2\n[File Name] odd.ibs\n[End]\n";
    Open(folder.Write("odd.ibs", text));
    QTest::keyClicks(&Child<CIbisTextEdit>("IbisText"), QStringLiteral("|"));
    answers.Then(ui::EAnswer::No);
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("The text was edited. Save it and check the file?"));
    EXPECT_EQ(folder.Read("odd.ibs"), text);
    QString loaded;
    QObject::connect(&frame, &CIbisEditorFrm::LoaderAsked,
                     [&](const QString& path) { loaded = path; });
    answers.Then(ui::EAnswer::Cancel);
    Trigger(ID_IBIS_LOADER);
    EXPECT_EQ(loaded, QString()) << "the loader would read what is in the file";
    answers.Then(ui::EAnswer::Yes);
    Trigger(ID_IBIS_LOADER);
    EXPECT_EQ(loaded, frame.Path());
    EXPECT_EQ(folder.Read("odd.ibs"), "|" + text);
    QTest::keyClicks(&Child<CIbisTextEdit>("IbisText"), QStringLiteral("|"));
    answers.Then(ui::EAnswer::Yes);
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(folder.Read("odd.ibs"), "||" + text);
    answers.ThenPath(Text(folder.Path() / "other.ibs"));
    Trigger(ID_IBIS_SAVE_AS);
    WaitIdle();
    EXPECT_EQ(folder.Read("other.ibs"), "||" + text);
    EXPECT_EQ(frame.Path(), Text(folder.Path() / "other.ibs"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, CheckingIsStoppedAtOnce)
{
    std::string text = "[IBIS Ver] 5.0\n[File Name] slow.ibs\n";
    while (text.size() < 12U << 20U) {
        text += "[Nonsense] 1\n";
    }
    const std::filesystem::path slow = folder.Write("slow.ibs", text);
    const std::filesystem::path small = folder.Write("small.ibs", "[IBIS Ver] 4.2\n[End]\n");
    Open(small);
    frame.OpenFile(Text(slow));
    EXPECT_TRUE(IsEnabled(ID_IBIS_STOP));
    Trigger(ID_IBIS_STOP);
    EXPECT_TRUE(frame.IsIdle());
    EXPECT_EQ(frame.Path(), Text(small));
    EXPECT_FALSE(IsEnabled(ID_IBIS_STOP));
    EXPECT_EQ(Child<QLabel>("Verdict").text(), QStringLiteral("not checked"));
    // Another file takes the place of the one that comes in.
    frame.OpenFile(Text(slow));
    Open(small);
    EXPECT_TRUE(Child<QLabel>("Verdict").text().contains(QStringLiteral("errors")));
    // A window that is closed waits a moment for the check's next question, and not for its end.
    auto closed = std::make_unique<CIbisEditorFrm>(log);
    closed->OpenFile(Text(slow));
    QTest::qWait(50);
    EXPECT_TRUE(closed->close());
    QElapsedTimer clock;
    clock.start();
    closed.reset();
    EXPECT_LT(clock.elapsed(), 1000) << "even in a build without optimisation, beside other work";
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, TextsThatAreNoneAreShown)
{
    struct SCase
    {
        const char* name;
        std::string bytes;
        bool editable;
    };
    std::string noise;
    for (int i = 0; i < 5000; ++i) {
        noise += static_cast<char>(i * 7919 % 251);
    }
    const std::string longLine(CIbisEditorFrm::kEditableLine + 1, 'x');
    const SCase cases[] = {
        {"empty.ibs", {}, true},
        {"noise.ibs", noise, true},
        {"zeros.ebd", std::string(300, '\0'), true},
        {"long.ibs", "[IBIS Ver] 5.0\n| " + longLine + "\n[End]\n", false},
    };
    for (const SCase& one : cases) {
        Open(folder.Write(one.name, one.bytes));
        EXPECT_EQ(frame.Path(), Text(folder.Path() / one.name));
        EXPECT_EQ(IsEnabled(ID_IBIS_SAVE_AS), one.editable) << one.name;
        EXPECT_EQ(Child<QLabel>("ReadOnly").isHidden(), one.editable) << one.name;
        EXPECT_FALSE(frame.grab().isNull());
        EXPECT_FALSE(frame.isWindowModified()) << one.name;
    }
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisEditorTest, ThousandsOfSiblingsStandInGroups)
{
    constexpr int kPins = 12345;
    std::string text = "[IBIS Ver] 4.2\n[File Name] many.ibs\n[Component] c\n[Pin] signal model\n";
    for (int i = 0; i < kPins; ++i) {
        text += "P" + std::to_string(i) + " S GND\n";
    }
    Open(folder.Write("many.ibs", text + "[End]\n"));
    auto& tree = Child<QTreeView>("IbisTree");
    const QAbstractItemModel& model = *tree.model();
    frame.GoToLine(5 + 2500);
    EXPECT_EQ(TreeText(), QStringLiteral("P2500"));
    const QModelIndex group = tree.currentIndex().parent();
    EXPECT_EQ(group.data().toString(), QStringLiteral("P2000 ... P2999"));
    EXPECT_EQ(model.rowCount(group), 1000);
    EXPECT_EQ(group.parent().data().toString(), QStringLiteral("[Pin]"));
    EXPECT_EQ(model.rowCount(group.parent()), 13);
    EXPECT_EQ(model.rowCount(model.index(12, 0, group.parent())), kPins - 12000);
    frame.GoToLine(1);
    tree.setCurrentIndex(group);
    EXPECT_EQ(frame.CurrentLine(), 1U) << "a group has no line of its own";
    tree.setCurrentIndex(model.index(999, 0, group));
    EXPECT_EQ(frame.CurrentLine(), 5U + 2999U);
    EXPECT_FALSE(frame.grab().isNull());
}

TEST_F(IbisEditorTest, WhatIsNotFoundLeavesTheCursor)
{
    Open(Example());
    frame.GoToLine(12);
    auto& field = Child<QLineEdit>("FindField");
    field.setText(QStringLiteral("no such text"));
    Trigger(ID_IBIS_FIND_NEXT);
    EXPECT_EQ(frame.CurrentLine(), 12U);
    field.setText(QStringLiteral("[ibis ver]"));
    Trigger(ID_IBIS_FIND_PREVIOUS);
    EXPECT_EQ(frame.CurrentLine(), LineOf(folder.Read("memory.ibs"), "[IBIS Ver]"));
    Trigger(ID_IBIS_FIND_NEXT);
    EXPECT_EQ(frame.CurrentLine(), LineOf(folder.Read("memory.ibs"), "[IBIS Ver]"))
        << "once around";
}

TEST_F(IbisEditorTest, LargeFilesAreShownNotEdited)
{
    std::string text = "[IBIS Ver] 5.0\n[File Name] large.ibs\n[Component] c\n";
    while (text.size() <= CIbisEditorFrm::kEditableBytes) {
        text += "| padding padding padding padding padding padding padding padding\n";
    }
    const std::size_t last = LineOf(text + "@", "@");
    text += "[Manufacturer] m\n[End]\n";
    Open(folder.Write("large.ibs", text));
    EXPECT_FALSE(IsEnabled(ID_IBIS_SAVE_AS));
    auto& view = Child<CLargeTextView>("IbisLargeText");
    EXPECT_EQ(view.LineCount(), last + 2) << "and the empty one at the end";
    frame.resize(900, 600);
    frame.show();
    frame.GoToLine(last);
    EXPECT_EQ(TreeText(), QStringLiteral("[Manufacturer]"));
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(TreeText(), QStringLiteral("[IBIS Ver]"));
    QTest::keyClick(&view, Qt::Key_Up);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("[IBIS Ver] 5.0\n[File Name] large.ibs\n"));
    Child<QLineEdit>("FindField").setText(QStringLiteral("[manufacturer]"));
    Trigger(ID_IBIS_FIND_NEXT);
    WaitIdle();
    EXPECT_EQ(frame.CurrentLine(), last);
    const auto place = [&] {
        const CLargeTextView::SPlace at = view.Place();
        return std::vector<std::size_t>{at.current, at.anchor, static_cast<std::size_t>(at.top)};
    };
    QTest::keyClick(&view, Qt::Key_Up, Qt::ShiftModifier);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() - 5);
    const auto before = place();
    Trigger(ID_IBIS_CHECK);
    WaitIdle();
    EXPECT_EQ(place(), before) << "a check keeps the place";
    EXPECT_EQ(frame.CurrentLine(), last - 1);
    EXPECT_FALSE(frame.grab().isNull());
}

/// The longest time that no event was served while something was done and waited for.
struct SGap
{
    template <class F, class G>
    SGap(const char* what, F work, G isDone)
    {
        QElapsedTimer whole;
        QElapsedTimer since;
        QTimer beat;
        QObject::connect(&beat, &QTimer::timeout,
                         [&] { longestMs = std::max(longestMs, since.restart()); });
        whole.start();
        since.start();
        beat.start(1);
        work();
        EXPECT_TRUE(QTest::qWaitFor([&] { return isDone(); }, 600000)) << what;
        QTest::qWait(50); // what is painted behind it
        longestMs = std::max(longestMs, since.elapsed());
        std::printf("%-28s %8.2f s, longest gap %6lld ms\n", what,
                    static_cast<double>(whole.elapsed()) / 1000.0, longestMs);
    }
    qint64 longestMs = 0;
};

void PrintPeak(const char* what)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-28s %8ld MB\n", what, usage.ru_maxrss / 1024);
}

/// ZOV_LARGE_IBIS=FILE: how long the window takes with a large file, and how long it stands still.
TEST_F(IbisEditorTest, ALargeFileIsMeasured)
{
    const QString path = qEnvironmentVariable("ZOV_LARGE_IBIS");
    if (path.isEmpty()) {
        GTEST_SKIP() << "ZOV_LARGE_IBIS names no file";
    }
    const auto idle = [&] { return frame.IsIdle(); };
    const auto at = [&](std::size_t line) { return [this, line] { frame.GoToLine(line); }; };
    auto& tree = Child<QTreeView>("IbisTree");
    frame.show();
    SGap(
        "open", [&] { frame.OpenFile(path); }, idle);
    PrintPeak("peak memory of opening");
    const std::size_t lines = Child<CLargeTextView>("IbisLargeText").LineCount();
    SGap("to the last line", at(lines), idle);
    SGap("to the middle", at(lines / 2), idle);
    SGap(
        "expand the tree", [&] { tree.expandToDepth(0); }, idle);
    SGap(
        "next message", [&] { Trigger(ID_IBIS_NEXT_MESSAGE); }, idle);
    SGap(
        "filter the report",
        [&] { Child<QLineEdit>("ReportSearch").setText(QStringLiteral("clamp")); }, idle);
    Child<QLineEdit>("FindField").setText(QStringLiteral("no such text"));
    SGap(
        "search in vain", [&] { Trigger(ID_IBIS_FIND_NEXT); }, idle);
    SGap(
        "check again", [&] { Trigger(ID_IBIS_CHECK); }, idle);
    SGap(
        "stop in the middle",
        [&] {
            Trigger(ID_IBIS_CHECK);
            QTest::qWait(300);
            Trigger(ID_IBIS_STOP);
        },
        idle);
    SGap(
        "another file",
        [&] { frame.OpenFile(Text(folder.Write("small.ibs", "[IBIS Ver] 4.2\n[End]\n"))); }, idle);
    PrintPeak("peak memory");
}

TEST_F(IbisEditorTest, FilesWithoutObjectsAndMissingOnes)
{
    Open(folder.Write(
        "rx.ami",
        "(rx (Reserved_Parameters (AMI_Version (Usage Info) (Type String) (Value \"7.0\"))))\n"));
    EXPECT_EQ(Child<QTreeView>("IbisTree").model()->rowCount(), 0);
    EXPECT_NE(Child<QLabel>("Verdict").text(), QString());
    Open(folder.Path() / "gone.ibs");
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("gone.ibs")));
    for (const ui::SCommand& command : IbisCommands()) {
        EXPECT_NE(frame.FindTarget(command.id), nullptr) << command.name;
    }
}

TEST(IbisColors, PartsOfALine)
{
    const auto inks =
        InksOf(QStringLiteral("[Voltage Range] 3.3V NA -2.5e-3 name | [no] 5"), QLatin1Char('|'));
    const std::vector<SInkSpan> expected = {{0, 15, EIbisInk::Keyword},
                                            {16, 4, EIbisInk::Number},
                                            {24, 7, EIbisInk::Number},
                                            {37, 8, EIbisInk::Comment}};
    EXPECT_EQ(inks, expected);
    EXPECT_TRUE(InksOf({}, QLatin1Char('|')).empty());
    EXPECT_EQ(InksOf(QStringLiteral("[open"), QLatin1Char('|')).size(), 1U);
}

} // namespace
} // namespace zov::app
